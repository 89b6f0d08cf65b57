/*
 * Selectors of the fabric: settings of units and links, thresholds, counters, and what predicates and actions
 * work on. Where a comment gives no unit, the setting is 0 for off and 1 for on.
 */
#ifndef BCM_FABRIC_CONTROLS_H
#define BCM_FABRIC_CONTROLS_H

/* Settings of a unit, see bcm_fabric_control_set. */
typedef enum bcm_fabric_control_e {
    /* The unit as a whole. */
    bcmFabricControlEnable = 0,
    bcmFabricControlIsolate,                     /* the other units stop sending to this one */
    bcmFabricControlDrain,                       /* no new packets enter, those inside leave */
    bcmFabricControlRedundancyMode,              /* bcm_fabric_redundancy_mode_t */
    bcmFabricControlRedundancySwitchTime,        /* us between a failure and the change to the standby */
    bcmFabricControlStage,                       /* of a fabric of several: 1 or 3, 2 for the middle */
    bcmFabricControlPipes,                       /* pipes that each link is divided into, 1..3 */
    bcmFabricControlGroupId,                     /* of units that are reached through the same links */
    bcmFabricControlRepeater,                    /* passes cells on without looking into them */
    bcmFabricControlClockFrequency,              /* kHz */
    bcmFabricControlStandalone,                  /* no fabric: packets stay within the unit */
    bcmFabricControlLocalSwitch,                 /* packets to own ports do not enter the fabric */

    /* Cells. */
    bcmFabricControlCellFormat,                  /* bcm_fabric_cell_format_t */
    bcmFabricControlCellSizeMax,                 /* bytes */
    bcmFabricControlCellPacking,                 /* a cell holds parts of several packets */
    bcmFabricControlCellPackingTimeout,          /* ns that a part of a packet waits for more */
    bcmFabricControlCellCrc,
    bcmFabricControlCellTtl,                     /* units that a cell may pass */
    bcmFabricControlCellSequenceCheck,
    bcmFabricControlControlCellPriority,         /* 0..3 */

    /* Reassembly of packets from cells. */
    bcmFabricControlReassemblyTimeout,           /* us that a packet waits for a missing cell */
    bcmFabricControlReassemblyContexts,          /* packets at a time */
    bcmFabricControlReassemblyDropOnGap,
    bcmFabricControlReassemblyMulticastReserve,  /* contexts for multicast packets alone */

    /* Reachability: messages by which units learn who is behind which link. */
    bcmFabricControlReachability,
    bcmFabricControlReachabilityInterval,        /* us between messages */
    bcmFabricControlReachabilityUpThreshold,     /* messages after which a link counts as good */
    bcmFabricControlReachabilityDownThreshold,   /* lost messages after which it does not */
    bcmFabricControlReachabilityLinksMin,        /* links below which a unit counts as unreachable */
    bcmFabricControlReachabilityStatic,          /* the tables are set by software alone */
    bcmFabricControlReachabilityFreeze,

    /* Credits, by which an egress allows an ingress to send. */
    bcmFabricControlCreditSize,                  /* bytes */
    bcmFabricControlCreditRate,                  /* percent of the port's rate */
    bcmFabricControlCreditWatchdog,
    bcmFabricControlCreditWatchdogInterval,      /* us without a credit after which one is asked for again */
    bcmFabricControlCreditCellPriority,          /* 0..3 */
    bcmFabricControlCreditDiscount,              /* bytes that a packet costs beyond its length */

    /* Congestion. */
    bcmFabricControlCongestionIndication,
    bcmFabricControlCongestionRateAdjust,        /* credits become fewer while the fabric is congested */
    bcmFabricControlLinkFlowControl,             /* links stop each other cell by cell */
    bcmFabricControlLinkFlowControlPriority,     /* lowest priority that may be stopped */
    bcmFabricControlLocalRoutePriority,          /* of packets that stay within the unit, 0..3 */
    bcmFabricControlBackpressureToIngress,

    /* Sharing traffic among links. */
    bcmFabricControlLoadBalance,                 /* bcm_fabric_load_balance_t */
    bcmFabricControlLoadBalanceSeed,
    bcmFabricControlLoadBalancePeriod,           /* cells after which the order of links changes */
    bcmFabricControlLinkWeighting,               /* links count by the bandwidth behind them */

    /* Multicast. */
    bcmFabricControlMulticastReplication,        /* bcm_fabric_multicast_replication_t */
    bcmFabricControlMulticastRateMax,            /* Mbit/s into the fabric */
    bcmFabricControlMulticastIdMax,
    bcmFabricControlMulticastLowPriorityDrop,

    /* Traffic that has bandwidth of its own. */
    bcmFabricControlTdm,
    bcmFabricControlTdmPriority,                 /* 0..3 */
    bcmFabricControlTdmPacketSize,               /* bytes */
    bcmFabricControlTdmBypass,                   /* past the queues of the egress */

    /* Faults. */
    bcmFabricControlErrorLinkShutdown,           /* a link with too many errors is taken out of use */
    bcmFabricControlErrorCellCapture             /* keeps the last bad cell for bcm_fabric_cell_receive */
} bcm_fabric_control_t;

/* Settings of a link, see bcm_fabric_link_control_set. */
typedef enum bcm_fabric_link_control_e {
    bcmFabricLinkControlTransmit = 0,
    bcmFabricLinkControlReceive,
    bcmFabricLinkControlIsolate,                 /* reachability messages say that nobody is behind it */
    bcmFabricLinkControlCast,                    /* bcm_fabric_cast_t, what the link may carry */
    bcmFabricLinkControlWeight,                  /* 1..15, its share of the traffic */
    bcmFabricLinkControlPriorityMin,             /* lowest priority that the link carries */
    bcmFabricLinkControlCellFormat,              /* bcm_fabric_cell_format_t */
    bcmFabricLinkControlFlowControlReceive,
    bcmFabricLinkControlFlowControlTransmit,
    bcmFabricLinkControlLowLatency,              /* a cell is sent on before it has come in whole */
    bcmFabricLinkControlRateLimit,               /* percent, 0 for none */
    bcmFabricLinkControlErrorBucketSize,         /* errors after which the link is out of use */
    bcmFabricLinkControlErrorBucketLeak,         /* us in which an error is forgotten */
    bcmFabricLinkControlKeepAlive,               /* idle cells on an unused link */
    bcmFabricLinkControlFecBypass,
    bcmFabricLinkControlLoopback,                /* cells come back to their sender */
    bcmFabricLinkControlPowerDown,
    bcmFabricLinkControlErrorReport,             /* redundancy handlers are told of its faults */
    bcmFabricLinkControlCableLength              /* m, for the flow control's reserve */
} bcm_fabric_link_control_t;

/* Levels of a link's buffers, in cells, see bcm_fabric_link_threshold_set. */
typedef enum bcm_fabric_link_threshold_e {
    bcmFabricLinkThresholdRxFlowControlOn = 0,
    bcmFabricLinkThresholdRxFlowControlOff,
    bcmFabricLinkThresholdRxMulticastDrop,
    bcmFabricLinkThresholdRxLowPriorityDrop,
    bcmFabricLinkThresholdRxFull,
    bcmFabricLinkThresholdRxCongestion,
    bcmFabricLinkThresholdTxCongestion,
    bcmFabricLinkThresholdTxAlmostFull,
    bcmFabricLinkThresholdTxFull,
    bcmFabricLinkThresholdTxMulticastDrop,
    bcmFabricLinkThresholdTxLowPriorityDrop,
    bcmFabricLinkThresholdTxTdmReserve,
    bcmFabricLinkThresholdMiddleCongestion,      /* between receive and transmit side */
    bcmFabricLinkThresholdMiddleMulticastDrop,
    bcmFabricLinkThresholdMiddleLowPriorityDrop,
    bcmFabricLinkThresholdMiddleFull
} bcm_fabric_link_threshold_t;

/* The state of a link, bits of bcm_fabric_link_status_get. */
typedef enum bcm_fabric_link_status_e {
    bcmFabricLinkStatusSignalLoss = 0x0001,
    bcmFabricLinkStatusAlignmentLoss = 0x0002,
    bcmFabricLinkStatusCodeErrors = 0x0004,
    bcmFabricLinkStatusCrcErrors = 0x0008,
    bcmFabricLinkStatusErrorBucketFull = 0x0010,
    bcmFabricLinkStatusNoReachability = 0x0020,  /* no messages come */
    bcmFabricLinkStatusSizeErrors = 0x0040,      /* cells that are too long or too short */
    bcmFabricLinkStatusMisconnected = 0x0080,    /* not the neighbour that was expected */
    bcmFabricLinkStatusIsolated = 0x0100
} bcm_fabric_link_status_t;

/* What a neighbour of a link is. */
typedef enum bcm_fabric_link_neighbor_e {
    bcmFabricLinkNeighborNone = 0,
    bcmFabricLinkNeighborAccess,                 /* a unit with front panel ports */
    bcmFabricLinkNeighborElement,                /* a unit that only switches cells */
    bcmFabricLinkNeighborRepeater
} bcm_fabric_link_neighbor_t;

/* What is counted, see bcm_fabric_stat_get; of a link unless something else is said. */
typedef enum bcm_fabric_stat_e {
    bcmFabricStatRxCells = 0,
    bcmFabricStatTxCells,
    bcmFabricStatRxControlCells,
    bcmFabricStatTxControlCells,
    bcmFabricStatRxUnicastCells,
    bcmFabricStatTxUnicastCells,
    bcmFabricStatRxMulticastCells,
    bcmFabricStatTxMulticastCells,
    bcmFabricStatRxTdmCells,
    bcmFabricStatTxTdmCells,
    bcmFabricStatRxReachabilityMessages,
    bcmFabricStatTxReachabilityMessages,
    bcmFabricStatRxCrcErrors,
    bcmFabricStatRxSizeErrors,
    bcmFabricStatRxCodeErrors,
    bcmFabricStatRxFecCorrected,
    bcmFabricStatRxFecUncorrectable,
    bcmFabricStatRxFlowControl,                  /* times that the neighbour stopped the link */
    bcmFabricStatTxFlowControl,
    bcmFabricStatRxBufferLevelMax,               /* highest level since the last reading */
    bcmFabricStatTxBufferLevelMax,
    bcmFabricStatDroppedMulticastCells,
    bcmFabricStatDroppedLowPriorityCells,
    bcmFabricStatDroppedUnreachableCells,
    bcmFabricStatDroppedTtlCells,
    bcmFabricStatDroppedErrorCells,
    bcmFabricStatReassemblyTimeouts,             /* of the unit, like those below */
    bcmFabricStatReassemblyGaps,
    bcmFabricStatReassemblyNoContext,
    bcmFabricStatReassembledPackets,
    bcmFabricStatCreditsReceived,
    bcmFabricStatCreditsSent,
    bcmFabricStatLatencyMean,                    /* ns, as below */
    bcmFabricStatLatencyMax
} bcm_fabric_stat_t;

/* Kinds of traffic, one bit each, so that they can be combined. */
typedef enum bcm_fabric_cast_e {
    bcmFabricCastUnicast = 0x1,
    bcmFabricCastMulticast = 0x2,
    bcmFabricCastTdm = 0x4,
    bcmFabricCastAll = 0x7
} bcm_fabric_cast_t;

/* Layouts of a cell's header. */
typedef enum bcm_fabric_cell_format_e {
    bcmFabricCellFormatVariable = 0,             /* cells of any length up to the largest */
    bcmFabricCellFormatFixed,
    bcmFabricCellFormatVariablePacked            /* several packets in a cell */
} bcm_fabric_cell_format_t;

/* How traffic is shared among links. */
typedef enum bcm_fabric_load_balance_e {
    bcmFabricLoadBalanceRoundRobin = 0,
    bcmFabricLoadBalanceRandom,
    bcmFabricLoadBalanceShortestQueue,
    bcmFabricLoadBalanceFlowHash                 /* a flow stays on a link */
} bcm_fabric_load_balance_t;

/* Where multicast packets are copied. */
typedef enum bcm_fabric_multicast_replication_e {
    bcmFabricMulticastReplicationIngress = 0,
    bcmFabricMulticastReplicationSpread,         /* in the fabric's first stage */
    bcmFabricMulticastReplicationEgress          /* in its last stage */
} bcm_fabric_multicast_replication_t;

/* How many crossbars carry traffic, and what a change of them was caused by. */
typedef enum bcm_fabric_redundancy_mode_e {
    bcmFabricRedundancyModeNone = 0,
    bcmFabricRedundancyModeLoadSharing,          /* all carry traffic, the rest carries on */
    bcmFabricRedundancyModeOnePlusOne,
    bcmFabricRedundancyModeManyPlusOne
} bcm_fabric_redundancy_mode_t;

typedef enum bcm_fabric_redundancy_event_e {
    bcmFabricRedundancyEventCrossbarDown = 0,
    bcmFabricRedundancyEventCrossbarUp,
    bcmFabricRedundancyEventArbiterSwitch,
    bcmFabricRedundancyEventBelowMinimum         /* too few crossbars for the full rate */
} bcm_fabric_redundancy_event_t;

/* Members of bcm_fabric_predicate_info_t, one bit each. */
typedef enum bcm_fabric_predicate_field_e {
    bcmFabricPredicateFieldCast = 0x01,
    bcmFabricPredicateFieldLink = 0x02,
    bcmFabricPredicateFieldSrcModid = 0x04,
    bcmFabricPredicateFieldDestModid = 0x08,
    bcmFabricPredicateFieldMulticastGroup = 0x10,
    bcmFabricPredicateFieldTrafficClass = 0x20,
    bcmFabricPredicateFieldColor = 0x40,
    bcmFabricPredicateFieldPriority = 0x80
} bcm_fabric_predicate_field_t;

/* What an action does with a cell. */
typedef enum bcm_fabric_action_type_e {
    bcmFabricActionTypeForward = 0,
    bcmFabricActionTypeDrop,
    bcmFabricActionTypeTrap,                     /* to the CPU */
    bcmFabricActionTypeMirror,                   /* to the CPU as well */
    bcmFabricActionTypeRedirect,                 /* to dest_modid */
    bcmFabricActionTypeReplicate,                /* to multicast_group */
    bcmFabricActionTypeRemark,                   /* new class, colour and priority */
    bcmFabricActionTypeEdit                      /* header fields are rewritten */
} bcm_fabric_action_type_t;

/* Where the new value of a header field comes from. */
typedef enum bcm_fabric_action_field_source_e {
    bcmFabricActionFieldSourceConstant = 0,
    bcmFabricActionFieldSourceSrcModid,
    bcmFabricActionFieldSourceDestModid,
    bcmFabricActionFieldSourceMulticastGroup,
    bcmFabricActionFieldSourceTrafficClass,
    bcmFabricActionFieldSourceColor,
    bcmFabricActionFieldSourceTimestamp
} bcm_fabric_action_field_source_t;

/* How a table of queues is indexed, see bcm_fabric_qsel_create. */
typedef enum bcm_fabric_qsel_type_e {
    bcmFabricQselTypeUnicast = 0,                /* by destination */
    bcmFabricQselTypeMulticast,                  /* by group */
    bcmFabricQselTypeCpu,                        /* by trap */
    bcmFabricQselTypeFlow                        /* by flow */
} bcm_fabric_qsel_type_t;

/* Which packets share cells. */
typedef enum bcm_fabric_pcp_mode_e {
    bcmFabricPcpModeDisable = 0,
    bcmFabricPcpModeSimple,                      /* packets of the same queue */
    bcmFabricPcpModeContinuous                   /* likewise, and a cell need not begin with a packet */
} bcm_fabric_pcp_mode_t;

/* Layouts of the header of a packet that has bandwidth of its own. */
typedef enum bcm_fabric_tdm_format_e {
    bcmFabricTdmFormatRaw = 0,                   /* none */
    bcmFabricTdmFormatOptimized,                 /* the destination only */
    bcmFabricTdmFormatStandard                   /* that of other packets */
} bcm_fabric_tdm_format_t;

/* What is taken for congestion of the fabric, one bit each. */
typedef enum bcm_fabric_congestion_source_e {
    bcmFabricCongestionSourceCellBuffers = 0x1,
    bcmFabricCongestionSourceLinks = 0x2,        /* too few of them up */
    bcmFabricCongestionSourceEgressQueues = 0x4
} bcm_fabric_congestion_source_t;

/* What a full buffer drops. */
typedef enum bcm_fabric_discard_policy_e {
    bcmFabricDiscardPolicyNone = 0,
    bcmFabricDiscardPolicyTail,                  /* what comes last */
    bcmFabricDiscardPolicyWeighted,              /* at random, more as the level rises */
    bcmFabricDiscardPolicyPriority               /* the lowest priority */
} bcm_fabric_discard_policy_t;

/* Members among which a distribution shares. */
typedef enum bcm_fabric_distribution_type_e {
    bcmFabricDistributionTypeLinks = 0,
    bcmFabricDistributionTypeModules
} bcm_fabric_distribution_type_t;

#endif
