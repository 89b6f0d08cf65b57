/*
 * Class-of-service queueing: queues and schedulers of ports, their buffers, congestion and counters.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT (after bcm_cosq_detach), BCM_E_PARAM (null pointer, selector out of range, unknown flag
 * combination), BCM_E_PORT (no such port) and BCM_E_NOT_FOUND (no such gport). Rates are in kbit/s, or packets/s with
 * BCM_COSQ_BW_PACKET_MODE; sizes and thresholds in bytes unless said otherwise.
 *
 * A queue is named by a gport and a cosq, the queue's number within the gport; a cosq of -1 means all of
 * them. Schedulers and queue groups are gports as well, made by bcm_cosq_gport_add.
 */
#ifndef BCM_COSQ_H
#define BCM_COSQ_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define BCM_COSQ_GPORT_STAT_PROFILE_SIZE 4 /* counters that a statistics profile chooses */

/* mode of the schedulers: how they choose among their inputs. */
typedef enum bcm_cosq_mode_e {
    BCM_COSQ_NONE = 0,                 /* as the hardware does by default */
    BCM_COSQ_STRICT = 1,               /* the highest queue first */
    BCM_COSQ_ROUND_ROBIN = 2,          /* one packet of each */
    BCM_COSQ_WEIGHTED_ROUND_ROBIN = 3, /* weights in packets */
    BCM_COSQ_WEIGHTED_FAIR_QUEUING = 4,
    BCM_COSQ_DEFICIT_ROUND_ROBIN = 5,  /* weights in bytes, see bcm_cosq_sched_weight_max_get */
    BCM_COSQ_BOUNDED_DELAY = 6         /* weighted, a packet waits at most delay microseconds */
} bcm_cosq_mode_t;

/* weight that stands for strict priority within a weighted scheduler. */
#define BCM_COSQ_WEIGHT_STRICT 0

/* flags of the bandwidth functions. */
#define BCM_COSQ_BW_PACKET_MODE 0x00000001
#define BCM_COSQ_BW_MIN_SLOW_START 0x00000002

/* flags of bcm_cosq_discard_set and bcm_cosq_gport_discard_t: what is dropped at random, and how. */
typedef enum bcm_cosq_discard_flag_e {
    BCM_COSQ_DISCARD_ENABLE = 0x00000001,
    BCM_COSQ_DISCARD_CAP_AVERAGE = 0x00000002,     /* the average does not exceed the present length */
    BCM_COSQ_DISCARD_COLOR_GREEN = 0x00000004,
    BCM_COSQ_DISCARD_COLOR_YELLOW = 0x00000008,
    BCM_COSQ_DISCARD_COLOR_RED = 0x00000010,
    BCM_COSQ_DISCARD_NONTCP = 0x00000020,
    BCM_COSQ_DISCARD_TCP = 0x00000040,
    BCM_COSQ_DISCARD_PACKETS = 0x00000080,         /* thresholds count packets */
    BCM_COSQ_DISCARD_MARK_CONGESTION = 0x00000100, /* mark instead of dropping */
    BCM_COSQ_DISCARD_PERCENT = 0x00000200          /* thresholds are parts of the buffer */
} bcm_cosq_discard_flag_t;

/* flags of bcm_cosq_gport_add: what kind of gport is made. */
typedef enum bcm_cosq_gport_flag_e {
    BCM_COSQ_GPORT_WITH_ID = 0x00000001, /* *gport is the gport to use */
    BCM_COSQ_GPORT_UCAST_QUEUE_GROUP = 0x00000002,
    BCM_COSQ_GPORT_MCAST_QUEUE_GROUP = 0x00000004,
    BCM_COSQ_GPORT_SCHEDULER = 0x00000008,
    BCM_COSQ_GPORT_COMPOSITE_SCHEDULER = 0x00000010,
    BCM_COSQ_GPORT_VOQ_CONNECTOR = 0x00000020,
    BCM_COSQ_GPORT_VSQ = 0x00000040,
    BCM_COSQ_GPORT_SUBSCRIBER = 0x00000080,
    BCM_COSQ_GPORT_EGRESS_GROUP = 0x00000100
} bcm_cosq_gport_flag_t;

/* flags of bcm_cosq_gport_connection_t, exactly one: the side that the connection is made at. */
#define BCM_COSQ_GPORT_CONNECTION_INGRESS 0x00000001
#define BCM_COSQ_GPORT_CONNECTION_EGRESS 0x00000002

/* flags of the flow control functions and of bcm_cosq_fc_endpoint_t: what is told, and to whom. */
typedef enum bcm_cosq_fc_flag_e {
    BCM_COSQ_FC_PAUSE = 0x00000001, /* the whole port */
    BCM_COSQ_FC_PFC = 0x00000002,   /* single priorities */
    BCM_COSQ_FC_SAFC = 0x00000004,
    BCM_COSQ_FC_OUT_OF_BAND = 0x00000008,
    BCM_COSQ_FC_SOURCE = 0x00000010,
    BCM_COSQ_FC_TARGET = 0x00000020
} bcm_cosq_fc_flag_t;

/* flags of bcm_cosq_threshold_t: what the threshold is for. */
#define BCM_COSQ_THRESHOLD_INGRESS 0x00000001
#define BCM_COSQ_THRESHOLD_EGRESS 0x00000002
#define BCM_COSQ_THRESHOLD_PER_DP 0x00000004        /* dp counts */
#define BCM_COSQ_THRESHOLD_PER_TC 0x00000008        /* tc counts */

/* options of bcm_cosq_bst_stat_get and the like. */
#define BCM_COSQ_STAT_CLEAR 0x00000001              /* clear what was read */

/* flags of bcm_cosq_classifier_t: what is compared. */
#define BCM_COSQ_CLASSIFIER_VLAN 0x00000001
#define BCM_COSQ_CLASSIFIER_L2 0x00000002
#define BCM_COSQ_CLASSIFIER_L3 0x00000004
#define BCM_COSQ_CLASSIFIER_GPORT 0x00000008

/* Kinds of gports of this family, see bcm_cosq_gport_handle_get. */
typedef enum bcm_cosq_gport_type_e {
    bcmCosqGportTypeLocalPort = 0,
    bcmCosqGportTypeUcastQueueGroup,
    bcmCosqGportTypeMcastQueueGroup,
    bcmCosqGportTypeSystemMcastQueueGroup,
    bcmCosqGportTypeSystemRedQueueGroup,
    bcmCosqGportTypeCpuQueueGroup,
    bcmCosqGportTypeScheduler,
    bcmCosqGportTypeCompositeScheduler,
    bcmCosqGportTypeFabricPipeScheduler,
    bcmCosqGportTypeFabricMcastScheduler,
    bcmCosqGportTypeFabricReassemblyScheduler,
    bcmCosqGportTypeVoqConnector,
    bcmCosqGportTypeIngressQueueBundle,
    bcmCosqGportTypeEgressGroup,
    bcmCosqGportTypeEgressCore,
    bcmCosqGportTypeEgressCorePort,
    bcmCosqGportTypeEgressChannel,
    bcmCosqGportTypeEgressMcastQueue,
    bcmCosqGportTypeEgressUnscheduled,
    bcmCosqGportTypeEgressInterface,
    bcmCosqGportTypeEgressTrafficClass,
    bcmCosqGportTypeGlobalVsq,
    bcmCosqGportTypeCategoryTrafficClassVsq,
    bcmCosqGportTypeCategoryConnectionClassVsq,
    bcmCosqGportTypeSourcePortVsq,
    bcmCosqGportTypeProgrammableVsq,
    bcmCosqGportTypePriorityGroup,
    bcmCosqGportTypePriorityGroupHeadroom,
    bcmCosqGportTypeServicePool,
    bcmCosqGportTypeSubscriber,
    bcmCosqGportTypeEgressReplicationPort,
    bcmCosqGportTypeEgressPortTrafficClassGroup,
    bcmCosqGportTypeEgressPortTrafficClass,
    bcmCosqGportTypeRecyclePort,
    bcmCosqGportTypeMirrorQueueGroup,
    bcmCosqGportTypeLatencyFlow,
    bcmCosqGportTypeCount
} bcm_cosq_gport_type_t;

/* Counters of a queue, see bcm_cosq_stat_get and bcm_cosq_gport_statistic_get. */
typedef enum bcm_cosq_stat_e {
    /* Packets and bytes that went out, and that were dropped, by colour and kind. */
    bcmCosqStatDroppedPackets = 0,
    bcmCosqStatDroppedBytes,
    bcmCosqStatGreenDroppedPackets,
    bcmCosqStatGreenDroppedBytes,
    bcmCosqStatYellowDroppedPackets,
    bcmCosqStatYellowDroppedBytes,
    bcmCosqStatRedDroppedPackets,
    bcmCosqStatRedDroppedBytes,
    bcmCosqStatUcastDroppedPackets,
    bcmCosqStatUcastDroppedBytes,
    bcmCosqStatMcastDroppedPackets,
    bcmCosqStatMcastDroppedBytes,
    bcmCosqStatOutPackets,
    bcmCosqStatOutBytes,
    bcmCosqStatOutGreenPackets,
    bcmCosqStatOutGreenBytes,
    bcmCosqStatOutYellowPackets,
    bcmCosqStatOutYellowBytes,
    bcmCosqStatOutRedPackets,
    bcmCosqStatOutRedBytes,
    bcmCosqStatOutUcastPackets,
    bcmCosqStatOutUcastBytes,
    bcmCosqStatOutMcastPackets,
    bcmCosqStatOutMcastBytes,
    bcmCosqStatEnqueuedPackets,
    bcmCosqStatEnqueuedBytes,
    bcmCosqStatDequeuedPackets,
    bcmCosqStatDequeuedBytes,
    bcmCosqStatDeletedPackets,
    bcmCosqStatDeletedBytes,
    bcmCosqStatFlushedPackets,
    bcmCosqStatFlushedBytes,
    bcmCosqStatPreemptedPackets,
    bcmCosqStatReplicatedPackets,
    bcmCosqStatReplicatedBytes,

    /* Dropped or marked before the queue was full. */
    bcmCosqStatGreenWredDroppedPackets,
    bcmCosqStatGreenWredDroppedBytes,
    bcmCosqStatYellowWredDroppedPackets,
    bcmCosqStatYellowWredDroppedBytes,
    bcmCosqStatRedWredDroppedPackets,
    bcmCosqStatRedWredDroppedBytes,
    bcmCosqStatWredMarkedPackets,
    bcmCosqStatWredMarkedBytes,
    bcmCosqStatEcnMarkedPackets,
    bcmCosqStatEcnMarkedBytes,
    bcmCosqStatQcnNotificationsSent,
    bcmCosqStatElephantFlowPackets,
    bcmCosqStatElephantFlowBytes,

    /* Why packets were dropped. */
    bcmCosqStatAgedPackets,
    bcmCosqStatAgedBytes,
    bcmCosqStatBufferFullDroppedPackets,
    bcmCosqStatBufferFullDroppedBytes,
    bcmCosqStatSharedPoolDroppedPackets,
    bcmCosqStatSharedPoolDroppedBytes,
    bcmCosqStatHeadroomDroppedPackets,
    bcmCosqStatHeadroomDroppedBytes,
    bcmCosqStatDescriptorDroppedPackets,
    bcmCosqStatDescriptorDroppedBytes,
    bcmCosqStatLatencyDroppedPackets,
    bcmCosqStatLatencyDroppedBytes,
    bcmCosqStatPolicyDroppedPackets,
    bcmCosqStatPolicyDroppedBytes,
    bcmCosqStatRejectedUcastPackets,
    bcmCosqStatRejectedUcastBytes,
    bcmCosqStatRejectedMcastPackets,
    bcmCosqStatRejectedMcastBytes,

    /* What is in the queue now, and the most that has been. */
    bcmCosqStatCurrentBytes,
    bcmCosqStatCurrentPackets,
    bcmCosqStatCurrentDescriptors,
    bcmCosqStatMaxBytes,
    bcmCosqStatMaxPackets,
    bcmCosqStatMaxDescriptors,
    bcmCosqStatCurrentDelay,
    bcmCosqStatMaxDelay,

    /* Oversubscription buffers before the pipeline, by the traffic's priority there. */
    bcmCosqStatObmLossyHighPriDroppedPackets,
    bcmCosqStatObmLossyHighPriDroppedBytes,
    bcmCosqStatObmLossyLowPriDroppedPackets,
    bcmCosqStatObmLossyLowPriDroppedBytes,
    bcmCosqStatObmLosslessDroppedPackets,
    bcmCosqStatObmLosslessDroppedBytes,
    bcmCosqStatObmExpressDroppedPackets,
    bcmCosqStatObmExpressDroppedBytes,
    bcmCosqStatObmHighWatermark,
    bcmCosqStatObmFlowControlEvents,

    /* Buffers on the way in and out, shared by many queues. */
    bcmCosqStatIngressPortBufferCurrent,
    bcmCosqStatIngressPortBufferMax,
    bcmCosqStatIngressPriorityGroupCurrent,
    bcmCosqStatIngressPriorityGroupMax,
    bcmCosqStatIngressHeadroomCurrent,
    bcmCosqStatIngressHeadroomMax,
    bcmCosqStatIngressSharedPoolCurrent,
    bcmCosqStatIngressSharedPoolMax,
    bcmCosqStatEgressPortBufferCurrent,
    bcmCosqStatEgressPortBufferMax,
    bcmCosqStatEgressSharedPoolCurrent,
    bcmCosqStatEgressSharedPoolMax,
    bcmCosqStatExternalBufferCurrent,
    bcmCosqStatExternalBufferMax,
    bcmCosqStatExternalBufferWrittenPackets,
    bcmCosqStatExternalBufferReadPackets,

    /* Credits of a virtual output queue. */
    bcmCosqStatCreditRequests,
    bcmCosqStatCreditsGranted,
    bcmCosqStatCreditsExpired,
    bcmCosqStatCreditBalance,
    bcmCosqStatCreditWatchdogEvents,

    /* Flow control. */
    bcmCosqStatPfcXoffEvents,
    bcmCosqStatPfcXonEvents,
    bcmCosqStatPfcDeadlockEvents,
    bcmCosqStatPauseTime,
    bcmCosqStatPauseEvents,
    bcmCosqStatCount
} bcm_cosq_stat_t;

/* Counters that a statistics profile can choose, see bcm_cosq_gport_stat_get. */
typedef enum bcm_cosq_gport_stats_e {
    bcmCosqGportStatEnqueuedPackets = 0,
    bcmCosqGportStatEnqueuedBytes,
    bcmCosqGportStatDroppedPackets,
    bcmCosqGportStatDroppedBytes,
    bcmCosqGportStatTailDroppedPackets,
    bcmCosqGportStatTailDroppedBytes,
    bcmCosqGportStatAgedPackets,
    bcmCosqGportStatAgedBytes,
    bcmCosqGportStatGreenAcceptedPackets,
    bcmCosqGportStatGreenAcceptedBytes,
    bcmCosqGportStatGreenDroppedPackets,
    bcmCosqGportStatGreenDroppedBytes,
    bcmCosqGportStatYellowAcceptedPackets,
    bcmCosqGportStatYellowAcceptedBytes,
    bcmCosqGportStatYellowDroppedPackets,
    bcmCosqGportStatYellowDroppedBytes,
    bcmCosqGportStatRedAcceptedPackets,
    bcmCosqGportStatRedAcceptedBytes,
    bcmCosqGportStatRedDroppedPackets,
    bcmCosqGportStatRedDroppedBytes,
    bcmCosqGportStatNonWredDroppedPackets,
    bcmCosqGportStatNonWredDroppedBytes,
    bcmCosqGportStatHighPriorityPackets,
    bcmCosqGportStatHighPriorityBytes,
    bcmCosqGportStatLowPriorityPackets,
    bcmCosqGportStatLowPriorityBytes,
    bcmCosqGportStatCurrentBytes,
    bcmCosqGportStatMaxBytes,
    bcmCosqGportStatMaxDelay,
    bcmCosqGportStatCount
} bcm_cosq_gport_stats_t;

/* Settings of queues, schedulers and their buffers, see bcm_cosq_control_set; enables are 0 or 1. */
typedef enum bcm_cosq_control_e {
    /* Bandwidth and its measurement. */
    bcmCosqControlBandwidthBurstMin = 0,
    bcmCosqControlBandwidthBurstMax,
    bcmCosqControlBandwidthFlowControl,
    bcmCosqControlBandwidthShapingMode,
    bcmCosqControlBandwidthShapingPackets,
    bcmCosqControlPacketLengthAdjust,
    bcmCosqControlPacketLengthAdjustSource,
    bcmCosqControlPacketLengthAdjustProfile,
    bcmCosqControlShaperQuantum,

    /* Schedulers. */
    bcmCosqControlSchedulerMode,
    bcmCosqControlSchedulerWeight,
    bcmCosqControlSchedulerWeightCompensation,
    bcmCosqControlSchedulerLinkEnable,
    bcmCosqControlSchedulerEnableLowJitter,
    bcmCosqControlSchedulerNodeLevel,
    bcmCosqControlSchedulerExpedite,
    bcmCosqControlSchedulerPreemptionEnable,
    bcmCosqControlSchedulerSpeculativePrefetch,
    bcmCosqControlSchedulerInputsMax,
    bcmCosqControlStrictPriorityOverride,

    /* Admission on the way in: shared pools, minimum and headroom of ports and priority groups. */
    bcmCosqControlIngressPool,
    bcmCosqControlIngressPoolLimitBytes,
    bcmCosqControlIngressPoolLimitEnable,
    bcmCosqControlIngressPortMinBytes,
    bcmCosqControlIngressPortPoolMinBytes,
    bcmCosqControlIngressPortPoolMaxBytes,
    bcmCosqControlIngressPortPoolResumeBytes,
    bcmCosqControlIngressPortPGMinBytes,
    bcmCosqControlIngressPortPGSharedLimitBytes,
    bcmCosqControlIngressPortPGSharedDynamicEnable,
    bcmCosqControlIngressPortPGSharedAlpha,
    bcmCosqControlIngressPortPGHeadroomBytes,
    bcmCosqControlIngressPortPGHeadroomEnable,
    bcmCosqControlIngressPortPGResetFloorBytes,
    bcmCosqControlIngressPortPGResetOffsetBytes,
    bcmCosqControlIngressPortPGLossless,
    bcmCosqControlIngressHeadroomPool,
    bcmCosqControlIngressHeadroomPoolLimitBytes,
    bcmCosqControlIngressDeviceHeadroomBytes,
    bcmCosqControlIngressReassemblyLimit,
    bcmCosqControlIngressIntPriToPriorityGroupProfile,
    bcmCosqControlIngressPriorityGroupToPoolProfile,
    bcmCosqControlIngressPfcToPriorityGroupProfile,

    /* Admission on the way out. */
    bcmCosqControlEgressPool,
    bcmCosqControlEgressPoolLimitBytes,
    bcmCosqControlEgressPoolLimitEnable,
    bcmCosqControlEgressPoolYellowLimitBytes,
    bcmCosqControlEgressPoolRedLimitBytes,
    bcmCosqControlEgressPoolResumeBytes,
    bcmCosqControlEgressPortPoolLimitBytes,
    bcmCosqControlEgressPortPoolYellowLimitBytes,
    bcmCosqControlEgressPortPoolRedLimitBytes,
    bcmCosqControlEgressPortMinBytes,
    bcmCosqControlEgressPortSharedAlpha,
    bcmCosqControlEgressMCPoolLimitBytes,
    bcmCosqControlEgressMCPoolDescriptorLimit,
    bcmCosqControlEgressUCQueueMinBytes,
    bcmCosqControlEgressUCQueueSharedLimitBytes,
    bcmCosqControlEgressUCQueueSharedDynamicEnable,
    bcmCosqControlEgressUCQueueSharedAlpha,
    bcmCosqControlEgressUCQueueLimitEnable,
    bcmCosqControlEgressUCQueueDescriptorMax,
    bcmCosqControlEgressUCQueueGroup,
    bcmCosqControlEgressUCQueueGroupMinBytes,
    bcmCosqControlEgressUCQueueGroupMaxBytes,
    bcmCosqControlEgressMCQueueMinBytes,
    bcmCosqControlEgressMCQueueSharedLimitBytes,
    bcmCosqControlEgressMCQueueSharedDynamicEnable,
    bcmCosqControlEgressMCQueueSharedAlpha,
    bcmCosqControlEgressMCQueueLimitEnable,
    bcmCosqControlEgressMCQueueDescriptorMin,
    bcmCosqControlEgressMCQueueDescriptorMax,
    bcmCosqControlEgressMCQueueDropGroup,
    bcmCosqControlEgressColorLimitDynamicEnable,
    bcmCosqControlEgressYellowLimitPercent,
    bcmCosqControlEgressRedLimitPercent,
    bcmCosqControlEgressQueueResumeOffsetBytes,
    bcmCosqControlEgressIntPriToQueueProfile,

    /* Ports as a whole. */
    bcmCosqControlDropLimitAlpha,
    bcmCosqControlDropDestConflictEnable,
    bcmCosqControlCutThroughEnable,
    bcmCosqControlCutThroughThreshold,
    bcmCosqControlPortDrainEnable,
    bcmCosqControlPortQueueUcast,
    bcmCosqControlPortQueueMcast,
    bcmCosqControlPortCreditThreshold,
    bcmCosqControlSharedBufferCellLimit,
    bcmCosqControlMirrorBufferLimit,
    bcmCosqControlMcastReplicationLimit,
    bcmCosqControlMcastIngressPriority,
    bcmCosqControlCpuQueueLimit,

    /* Congestion. */
    bcmCosqControlCongestionManagedQueue,
    bcmCosqControlCongestionProxy,
    bcmCosqControlCongestionMarkEnable,
    bcmCosqControlCongestionMarkThreshold,
    bcmCosqControlEcnResponsiveOnly,
    bcmCosqControlWredByteMode,
    bcmCosqControlWredAverageTime,
    bcmCosqControlWredAverageUpdateTime,
    bcmCosqControlQcnSampleInterval,
    bcmCosqControlLatencyDropEnable,
    bcmCosqControlLatencyDropThreshold,
    bcmCosqControlElephantFlowDetectEnable,
    bcmCosqControlElephantFlowThreshold,
    bcmCosqControlElephantFlowColor,

    /* Flow control. */
    bcmCosqControlFlowControlEnable,
    bcmCosqControlFlowControlSource,
    bcmCosqControlFlowControlRefreshTime,
    bcmCosqControlFlowControlThresholdBytes,
    bcmCosqControlFlowControlHysteresisBytes,
    bcmCosqControlPfcTransmitEnable,
    bcmCosqControlPfcReceiveEnable,
    bcmCosqControlPfcXoffTransmitInterval,
    bcmCosqControlPfcDeadlockRecoveryAction,
    bcmCosqControlPfcDeadlockTimerGranularity,
    bcmCosqControlLatencyMonitorThreshold,
    bcmCosqControlFlowControlIgnore,

    /* Ageing. */
    bcmCosqControlAgingEnable,
    bcmCosqControlAgingLimit,

    /* Virtual output queues and their credits. */
    bcmCosqControlCreditSize,
    bcmCosqControlCreditRequestEnable,
    bcmCosqControlCreditBalanceMax,
    bcmCosqControlCreditWatchdogTime,
    bcmCosqControlVoqDelayTolerance,
    bcmCosqControlVoqRateClass,
    bcmCosqControlVoqTailDropBytes,
    bcmCosqControlVoqFlushEnable,
    bcmCosqControlVoqDeleteThreshold,
    bcmCosqControlFabricConnectMode,
    bcmCosqControlFabricPipePriority,

    /* Packet buffers outside the device. */
    bcmCosqControlExternalBufferEnable,
    bcmCosqControlExternalBufferEnterThreshold,
    bcmCosqControlExternalBufferLeaveThreshold,
    bcmCosqControlExternalBufferBurstSize,

    /* Oversubscription buffers. */
    bcmCosqControlObmClassificationMode,
    bcmCosqControlObmPortPriority,
    bcmCosqControlObmLossyHighThreshold,
    bcmCosqControlObmLossyLowThreshold,
    bcmCosqControlObmLosslessThreshold,
    bcmCosqControlObmFlowControlEnable,

    /* Statistics. */
    bcmCosqControlStatCountDropped,
    bcmCosqControlStatPerColor,
    bcmCosqControlBstTrackingMode,
    bcmCosqControlWatermarkClearOnRead,
    bcmCosqControlWatermarkEventEnable,
    bcmCosqControlWatermarkEventThreshold,
    bcmCosqControlCount
} bcm_cosq_control_t;

/* Buffer use that is tracked, see bcm_cosq_bst_stat_get. */
typedef enum bcm_cosq_bst_stat_id_e {
    bcmCosqBstStatIdDevice = 0,
    bcmCosqBstStatIdEgrPool,
    bcmCosqBstStatIdEgrMcastPool,
    bcmCosqBstStatIdIngPool,
    bcmCosqBstStatIdPortPool,
    bcmCosqBstStatIdPriGroupShared,
    bcmCosqBstStatIdPriGroupHeadroom,
    bcmCosqBstStatIdHeadroomPool,
    bcmCosqBstStatIdUcast,
    bcmCosqBstStatIdUcastGroup,
    bcmCosqBstStatIdMcast,
    bcmCosqBstStatIdEgrUcastPortShared,
    bcmCosqBstStatIdEgrMcastPortShared,
    bcmCosqBstStatIdEgrUcastPool,
    bcmCosqBstStatIdReplicationQueue,
    bcmCosqBstStatIdReplicationPool,
    bcmCosqBstStatIdCpuQueue,
    bcmCosqBstStatIdMirrorQueue,
    bcmCosqBstStatIdIngressObm,
    bcmCosqBstStatIdEgressDescriptorPool,
    bcmCosqBstStatIdExternalBuffer,
    bcmCosqBstStatIdPortHeadroom,
    bcmCosqBstStatIdCount
} bcm_cosq_bst_stat_id_t;

/* What is tracked of a buffer's use (bcmCosqControlBstTrackingMode). */
typedef enum bcm_cosq_bst_tracking_mode_e {
    bcmCosqBstTrackingModeCurrent = 0,
    bcmCosqBstTrackingModePeak,
    bcmCosqBstTrackingModeCount
} bcm_cosq_bst_tracking_mode_t;

/* Resources that a threshold can be set for (bcm_cosq_threshold_t). */
typedef enum bcm_cosq_threshold_type_e {
    bcmCosqThresholdAvailableBytes = 0,
    bcmCosqThresholdAvailableBufferDescriptors,
    bcmCosqThresholdAvailableSramBuffers,
    bcmCosqThresholdAvailableSramDescriptors,
    bcmCosqThresholdUsedBytes,
    bcmCosqThresholdUsedBufferDescriptors,
    bcmCosqThresholdUsedSramBuffers,
    bcmCosqThresholdUsedSramDescriptors,
    bcmCosqThresholdReservedBytes,
    bcmCosqThresholdHeadroomBytes,
    bcmCosqThresholdXoffBytes,
    bcmCosqThresholdXonBytes,
    bcmCosqThresholdDropBytes,
    bcmCosqThresholdEcnMarkBytes,
    bcmCosqThresholdLatencyDropTime,
    bcmCosqThresholdAlphaDynamic,
    bcmCosqThresholdTypeCount
} bcm_cosq_threshold_type_t;

/* Ways of grouping packets into virtual statistics queues. */
typedef enum bcm_cosq_vsq_category_e {
    bcmCosqVsqCategoryGlobal = 0,
    bcmCosqVsqCategoryTrafficClass,
    bcmCosqVsqCategoryConnectionClass,
    bcmCosqVsqCategoryConnectionClassTrafficClass,
    bcmCosqVsqCategoryConnectionClassTypeTrafficClass,
    bcmCosqVsqCategorySourcePort,
    bcmCosqVsqCategoryPriorityGroup,
    bcmCosqVsqCategoryProgrammable,
    bcmCosqVsqCategoryCount
} bcm_cosq_vsq_category_t;

/* Traffic that a threshold of an egress queue is for. */
typedef enum bcm_cosq_threshold_priority_e {
    bcmCosqThresholdPriorityLow = 0,
    bcmCosqThresholdPriorityHigh,
    bcmCosqThresholdPriorityCount
} bcm_cosq_threshold_priority_t;

/* Profiles that a queue can use, see bcm_cosq_profile_mapping_set. */
typedef enum bcm_cosq_profile_type_e {
    bcmCosqProfileRate = 0,
    bcmCosqProfileDiscard,
    bcmCosqProfileDelay,
    bcmCosqProfilePacketSize,
    bcmCosqProfileShaper,
    bcmCosqProfileEcn,
    bcmCosqProfileLatency,
    bcmCosqProfileAging,
    bcmCosqProfileStatistics,
    bcmCosqProfilePriorityMapping,
    bcmCosqProfileFlowControl,
    bcmCosqProfileCreditRequest,
    bcmCosqProfileScheduler,
    bcmCosqProfileTypeCount
} bcm_cosq_profile_type_t;

/* Settings of a scheduler, see bcm_cosq_gport_sched_config_set. */
typedef enum bcm_cosq_sched_config_type_e {
    bcmCosqSchedConfigMode = 0,
    bcmCosqSchedConfigWeights,
    bcmCosqSchedConfigNumLevels,
    bcmCosqSchedConfigNumStrictInputs,
    bcmCosqSchedConfigDualShaper,
    bcmCosqSchedConfigLowLatency,
    bcmCosqSchedConfigPreemptionEnable,
    bcmCosqSchedConfigTypeCount
} bcm_cosq_sched_config_type_t;

/* What a pool of packet buffers is for (bcm_cosq_service_pool_t). */
typedef enum bcm_cosq_service_pool_type_e {
    bcmCosqServicePoolLossy = 0,
    bcmCosqServicePoolLossless,
    bcmCosqServicePoolControl,
    bcmCosqServicePoolMcast,
    bcmCosqServicePoolCpu,
    bcmCosqServicePoolTypeCount
} bcm_cosq_service_pool_type_t;

/*
 * Presets of bcm_cosq_delay_tolerance_level_set: rate of the queue, in Gbit/s, and how bursts are treated.
 */
typedef enum bcm_cosq_delay_tolerance_level_e {
    bcmCosqDelayTolerance1GSlowEnabled = 0,
    bcmCosqDelayTolerance10GSlowEnabled,
    bcmCosqDelayTolerance40GSlowEnabled,
    bcmCosqDelayTolerance100GSlowEnabled,
    bcmCosqDelayTolerance200GSlowEnabled,
    bcmCosqDelayTolerance400GSlowEnabled,
    bcmCosqDelayTolerance10GLowDelay,
    bcmCosqDelayTolerance40GLowDelay,
    bcmCosqDelayTolerance100GLowDelay,
    bcmCosqDelayTolerance200GLowDelay,
    bcmCosqDelayTolerance400GLowDelay,
    bcmCosqDelayToleranceLevelCount
} bcm_cosq_delay_tolerance_level_t;

/* Rates of queues (bcm_cosq_queue_attributes_t). */
typedef enum bcm_cosq_rate_class_e {
    bcmCosqRateClass1G = 0,
    bcmCosqRateClass10G,
    bcmCosqRateClass25G,
    bcmCosqRateClass40G,
    bcmCosqRateClass50G,
    bcmCosqRateClass100G,
    bcmCosqRateClass200G,
    bcmCosqRateClass400G,
    bcmCosqRateClassCount
} bcm_cosq_rate_class_t;

/* Resources that bcm_cosq_resource_allocation_set shares out, as a bit mask of its flags. */
typedef enum bcm_cosq_resource_e {
    bcmCosqResourceBytes = 0,
    bcmCosqResourceSramBuffers,
    bcmCosqResourceSramDescriptors,
    bcmCosqResourceDramBuffers,
    bcmCosqResourceCount
} bcm_cosq_resource_t;

/* What becomes of a queue that flow control holds for too long. */
typedef enum bcm_cosq_pfc_deadlock_recovery_action_e {
    bcmCosqPfcDeadlockRecoveryActionTransmit = 0,
    bcmCosqPfcDeadlockRecoveryActionDrop,
    bcmCosqPfcDeadlockRecoveryActionNone,
    bcmCosqPfcDeadlockRecoveryActionCount
} bcm_cosq_pfc_deadlock_recovery_action_t;

/* What tells traffic apart before the pipeline (bcmCosqControlObmClassificationMode). */
typedef enum bcm_cosq_obm_classification_e {
    bcmCosqObmClassificationNone = 0,
    bcmCosqObmClassificationVlanPri,
    bcmCosqObmClassificationEtagPri,
    bcmCosqObmClassificationDscp,
    bcmCosqObmClassificationMplsExp,
    bcmCosqObmClassificationDestMac,
    bcmCosqObmClassificationCount
} bcm_cosq_obm_classification_t;

/* Flow control that a queue obeys (bcmCosqControlFlowControlSource). */
typedef enum bcm_cosq_fc_type_e {
    bcmCosqFcTypePause = 0,
    bcmCosqFcTypePfc,
    bcmCosqFcTypeSafc,
    bcmCosqFcTypeOutOfBand,
    bcmCosqFcTypeInternal,
    bcmCosqFcTypeCount
} bcm_cosq_fc_type_t;

/* When a priority of a port tells its peer to stop, and to go on; *_bd in buffer descriptors. */
typedef struct bcm_cosq_pfc_config_s {
    uint32 xoff_threshold;
    uint32 xon_threshold;
    uint32 xoff_threshold_bd;
    uint32 xon_threshold_bd;
    uint32 drop_threshold;
    uint32 reserved_buffers;
    int lossless;
} bcm_cosq_pfc_config_t;

/* Which bits of a received congestion message stop a queue. */
typedef struct bcm_cosq_congestion_mapping_info_s {
    uint32 flow_control_bits;
} bcm_cosq_congestion_mapping_info_t;

/* How a queue that gets long drops at random. Averages are of the queue's length. */
typedef struct bcm_cosq_gport_discard_s {
    uint32 flags;                /* BCM_COSQ_DISCARD_* */
    uint32 min_thresh;           /* from here on packets may be dropped */
    uint32 max_thresh;           /* from here on all are */
    int drop_probability;        /* just below max_thresh, in percent */
    int gain;                    /* weight of the present length is 2^-gain */
    int ecn_thresh;
    int refresh_time;            /* microseconds between two averages */
} bcm_cosq_gport_discard_t;

/* The counters that a queue's statistics show. */
typedef struct bcm_cosq_gport_stat_profile_s {
    bcm_cosq_gport_stats_t stats[BCM_COSQ_GPORT_STAT_PROFILE_SIZE];
} bcm_cosq_gport_stat_profile_t;

/* Class of service of each priority. */
typedef struct bcm_cosq_gport_priority_profile_s {
    bcm_cos_t pri[8];
} bcm_cosq_gport_priority_profile_t;

/* Buffer limits of a queue; size_max is left out where a share size_alpha_max of the free buffer counts. */
typedef struct bcm_cosq_gport_size_s {
    uint32 size_min;
    uint32 size_max;
    int size_alpha_max;          /* the share is 2^size_alpha_max */
} bcm_cosq_gport_size_t;

/* The queue of a subscriber's packets. */
typedef struct bcm_cosq_subscriber_map_s {
    uint32 flags;
    bcm_gport_t port;
    bcm_vlan_t vlan;
    int encap_id;
    bcm_gport_t queue_id;
} bcm_cosq_subscriber_map_t;

/* Where virtual output queues of a remote device ask for credits. */
typedef struct bcm_cosq_voq_connector_gport_s {
    uint32 flags;
    bcm_gport_t port;
    int numq;
    bcm_module_t remote_modid;
    int nof_remote_cores;
} bcm_cosq_voq_connector_gport_t;

typedef struct bcm_cosq_queue_attributes_s {
    int delay_tolerance_level;   /* see bcm_cosq_delay_tolerance_level_set */
    bcm_cosq_rate_class_t rate_class;
} bcm_cosq_queue_attributes_t;

/* Virtual output queues in a row, numq of them, 1..8. */
typedef struct bcm_cosq_ingress_queue_bundle_gport_config_s {
    uint32 flags;
    bcm_gport_t port;
    bcm_core_t local_core_id;
    int numq;
    bcm_cosq_queue_attributes_t queue_atrributes[8];
} bcm_cosq_ingress_queue_bundle_gport_config_t;

/* Which virtual output queues get their credits through which connector. */
typedef struct bcm_cosq_gport_connection_s {
    uint32 flags;                /* BCM_COSQ_GPORT_CONNECTION_* */
    bcm_module_t remote_modid;
    bcm_gport_t voq;
    bcm_gport_t voq_connector;
} bcm_cosq_gport_connection_t;

/* When a virtual output queue asks for credits. Thresholds are in bytes of the queue or of its balance. */
typedef struct bcm_cosq_delay_tolerance_s {
    int credit_request_watchdog_status_msg_gen;
    int credit_request_watchdog_delete_queue_thresh;
    int credit_request_hungry_off_to_slow_thresh;
    int credit_request_hungry_off_to_normal_thresh;
    int credit_request_hungry_slow_to_normal_thresh;
    int credit_request_hungry_normal_to_slow_thresh;
    int credit_request_hungry_multiplier;
    int credit_request_satisfied_backoff_enter_thresh;
    int credit_request_satisfied_backoff_exit_thresh;
    int credit_request_satisfied_backlog_enter_thresh;
    int credit_request_satisfied_backlog_exit_thresh;
    int credit_request_satisfied_backslow_enter_thresh;
    int credit_request_satisfied_backslow_exit_thresh;
    int credit_request_satisfied_empty_queue_thresh;
    int credit_request_satisfied_empty_queue_max_balance_thresh;
    int credit_request_satisfied_empty_queue_exceed_thresh;
    uint32 flags;
    int slow_level_thresh_up;
    int slow_level_thresh_down;
} bcm_cosq_delay_tolerance_t;

/* Priority of multicast packets within the egress, scheduled and unscheduled. */
typedef struct bcm_cosq_egress_multicast_config_s {
    int scheduled_dp;            /* drop precedence, 0..3 */
    int priority;
    int unscheduled_se;          /* shaping element */
    int unscheduled_sp;          /* strict priority */
} bcm_cosq_egress_multicast_config_t;

/* A virtual statistics queue; which of the members count depends on its kind. */
typedef struct bcm_cosq_vsq_info_s {
    uint32 flags;
    int ct_id;                   /* connection class type */
    int cc_id;                   /* connection class */
    bcm_cos_t traffic_class;
    bcm_gport_t src_port;
    int pp_vsq_id;               /* of a programmable one */
    bcm_core_t core_id;
} bcm_cosq_vsq_info_t;

/* A priority group of a port. */
typedef struct bcm_cosq_pg_vsq_attributes_s {
    uint32 cosq_bitmap;          /* one bit per class of service */
    int ocb_only;                /* uses the buffer within the device only */
    bcm_service_pool_id_t pool_id;
    int is_lossles;
} bcm_cosq_pg_vsq_attributes_t;

/* The priority groups of a port, numq of them, 1..8. */
typedef struct bcm_cosq_src_vsqs_gport_config_s {
    uint32 flags;
    int numq;
    bcm_cosq_pg_vsq_attributes_t pg_attributes[8];
} bcm_cosq_src_vsqs_gport_config_t;

/* A threshold of a queue or a group of queues. */
typedef struct bcm_cosq_threshold_s {
    uint32 flags;                /* BCM_COSQ_THRESHOLD_* */
    int dp;                      /* drop precedence, 0..3 */
    bcm_cosq_threshold_type_t type;
    int value;                   /* in the unit of type */
    bcm_cos_t tc;
    bcm_cosq_vsq_category_t vsq_category;
    int valid;
    bcm_cosq_threshold_priority_t priority;
} bcm_cosq_threshold_t;

/* What bcm_cosq_gport_handle_get looks a gport up by, and what it found beside it. */
typedef struct bcm_cosq_gport_info_s {
    bcm_gport_t in_gport;
    bcm_cos_queue_t cosq;
    bcm_gport_t out_gport;
} bcm_cosq_gport_info_t;

/* The same for devices of several cores. */
typedef struct bcm_cosq_gport_info_core_s {
    bcm_cosq_gport_type_t gport_type;
    bcm_gport_t in_gport;
    bcm_cos_queue_t cosq;
    uint32 flags;
} bcm_cosq_gport_info_core_t;

/* An end of a flow control path. */
typedef struct bcm_cosq_fc_endpoint_s {
    uint32 flags;                /* BCM_COSQ_FC_* */
    bcm_gport_t port;
    bcm_cos_queue_t cosq;
    int calender_index;          /* slot of an out-of-band interface */
    int priority;                /* 0..7, with BCM_COSQ_FC_PFC */
} bcm_cosq_fc_endpoint_t;

/* Lengths that divide reports of a queue's length into classes, ascending. */
typedef struct bcm_cosq_report_threshold_s {
    int threshold0;
    int threshold1;
    int threshold2;
    int threshold3;
} bcm_cosq_report_threshold_t;

/* Where a congestion message comes from and goes to. */
typedef struct bcm_cosq_congestion_info_s {
    bcm_module_t fabric_modid;
    bcm_port_t fabric_port;
    bcm_module_t dest_modid;
    bcm_port_t dest_port;
} bcm_cosq_congestion_info_t;

/* Use of a buffer from which on an event is raised. */
typedef struct bcm_cosq_bst_profile_s {
    uint32 byte;
} bcm_cosq_bst_profile_t;

/* What a flow is told by; members whose flag is not set do not count. */
typedef struct bcm_cosq_classifier_s {
    uint32 flags;                /* BCM_COSQ_CLASSIFIER_* */
    bcm_vlan_t vlan;
    bcm_mac_t mac;
    bcm_vrf_t vrf;
    bcm_ip_t ip_addr;
    bcm_ip6_t ip6_addr;
    bcm_gport_t gport;
    int vfi_index;
} bcm_cosq_classifier_t;

/* Sampling of a queue for congestion notification (IEEE 802.1Qau). */
typedef struct bcm_cosq_qcn_config_s {
    int size;                    /* of a sampled packet's part that is sent back */
    int weight;                  /* of the queue's growth, against its length */
    int nbr_samples;
    int sample_bytes;
    int max_feedback;
    int quantization;
    int randomize_sample_threshold;
} bcm_cosq_qcn_config_t;

typedef struct bcm_cosq_service_pool_s {
    bcm_cosq_service_pool_type_t type;
    int enabled;
} bcm_cosq_service_pool_t;

/* Lower and upper end of a control that has two. */
typedef struct bcm_cosq_range_s {
    int is_enabled;
    int range_start;
    int range_end;
} bcm_cosq_range_t;

/* Who gets resources of bcm_cosq_resource_allocation_set, and from which pool. */
typedef struct bcm_cosq_allocation_entity_s {
    bcm_gport_t gport;
    bcm_color_t color;
    bcm_service_pool_id_t pool_id;
    int is_ocb_only;             /* the buffer within the device only */
} bcm_cosq_allocation_entity_t;

typedef struct bcm_cosq_resource_amounts_s {
    uint32 flags;                /* one bit per bcm_cosq_resource_t that is meant */
    uint32 reserved;
    uint32 max_shared_pool;
    uint32 max_headroom;
} bcm_cosq_resource_amounts_t;

/* A level of a slow profile: queues under it get credits at a lower rate. */
typedef struct bcm_cosq_slow_level_s {
    bcm_core_t core;
    int profile;
    int level;
    uint32 flags;
} bcm_cosq_slow_level_t;

typedef struct bcm_cosq_slow_profile_attributes_s {
    uint32 max_rate;
} bcm_cosq_slow_profile_attributes_t;

/* Queues that a flow control class stops. Elements that are not used are BCM_GPORT_INVALID. */
typedef struct bcm_cosq_pfc_class_mapping_s {
    int class_id;                /* 0..7 */
    bcm_gport_t gport_list[16];
} bcm_cosq_pfc_class_mapping_t;

typedef struct bcm_cosq_safc_class_mapping_s {
    int class_id;
    bcm_gport_t gport_list[16];
} bcm_cosq_safc_class_mapping_t;

/* Times after which a stopped priority counts as deadlocked, and is looked at again; milliseconds. */
typedef struct bcm_cosq_pfc_deadlock_config_s {
    int detection_timer;
    int recovery_timer;
} bcm_cosq_pfc_deadlock_config_t;

typedef struct bcm_cosq_pfc_deadlock_queue_config_s {
    int enable;
} bcm_cosq_pfc_deadlock_queue_config_t;

typedef struct bcm_cosq_pfc_deadlock_info_s {
    bcm_pbmp_t enabled_pbmp;     /* ports that are watched */
    bcm_pbmp_t deadlock_pbmp;    /* those that are deadlocked now */
} bcm_cosq_pfc_deadlock_info_t;

/* What a link of a passive optical network is granted. */
typedef struct bcm_cos_pon_link_sla_s {
    uint32 fixed_bandwidth;      /* kbit/s, as those below */
    uint32 assured_bandwidth;
    uint32 max_bandwidth;
    int grant_priority;          /* 0..7 */
} bcm_cos_pon_link_sla_t;

/*
 * Called once per gport, or subscriber. A record is a copy that is valid during the call. A negative
 * result ends the traversal, which then returns it.
 */
typedef int (*bcm_cosq_gport_traverse_cb)(int unit, bcm_port_t port, int numq, uint32 flags,
                                          bcm_gport_t gport, void *user_data);
typedef int (*bcm_cosq_subscriber_map_traverse_cb)(int unit, bcm_cosq_subscriber_map_t *map,
                                                   void *user_data);

/*
 * The module. init gives every port its default queues; after detach every function but init returns
 * BCM_E_INIT. config: queues per port, 1..8, 8 at first.
 */
int bcm_cosq_init(int unit);
int bcm_cosq_detach(int unit);
int bcm_cosq_config_set(int unit, int numq);
int bcm_cosq_config_get(int unit, int *numq);

/* Queue of each priority, 0..7: of all ports, or of one. multi_get writes at most array_max pairs. */
int bcm_cosq_mapping_set(int unit, bcm_cos_t priority, bcm_cos_queue_t cosq);
int bcm_cosq_mapping_get(int unit, bcm_cos_t priority, bcm_cos_queue_t *cosq);
int bcm_cosq_port_mapping_set(int unit, bcm_port_t port, bcm_cos_t priority, bcm_cos_queue_t cosq);
int bcm_cosq_port_mapping_get(int unit, bcm_port_t port, bcm_cos_t priority, bcm_cos_queue_t *cosq);
int bcm_cosq_port_mapping_multi_set(int unit, bcm_port_t port, int array_count, bcm_cos_t *priority_array,
                                    bcm_cos_queue_t *cosq_array);
int bcm_cosq_port_mapping_multi_get(int unit, bcm_port_t port, int array_max, bcm_cos_t *priority_array,
                                    bcm_cos_queue_t *cosq_array, int *array_count);

/*
 * Scheduling of all ports, or of those of pbm; get is about the first of these. mode: BCM_COSQ_STRICT to
 * BCM_COSQ_BOUNDED_DELAY; a weight per queue; delay in microseconds, used with the latter only.
 */
int bcm_cosq_sched_set(int unit, int mode, const int weights[8], int delay);
int bcm_cosq_sched_get(int unit, int *mode, int weights[8], int *delay);
int bcm_cosq_sched_weight_max_get(int unit, int mode, int *weight_max);
int bcm_cosq_port_sched_set(int unit, bcm_pbmp_t pbm, int mode, const int weights[8], int delay);
int bcm_cosq_port_sched_get(int unit, bcm_pbmp_t pbm, int *mode, int weights[8], int *delay);

/* Rates that a queue of a port is given at least, and at most; 0 for no limit. */
int bcm_cosq_port_bandwidth_set(int unit, bcm_port_t port, bcm_cos_queue_t cosq, uint32 kbits_sec_min,
                                uint32 kbits_sec_max, uint32 flags);
int bcm_cosq_port_bandwidth_get(int unit, bcm_port_t port, bcm_cos_queue_t cosq, uint32 *kbits_sec_min,
                                uint32 *kbits_sec_max, uint32 *flags);

/*
 * Random early drop: of all ports, or of packets of a colour (BCM_COSQ_DISCARD_COLOR_*) in a queue.
 * drop_start in percent of the queue, drop_slope in degrees, average_time in microseconds.
 */
int bcm_cosq_discard_set(int unit, uint32 flags);
int bcm_cosq_discard_get(int unit, uint32 *flags);
int bcm_cosq_discard_port_set(int unit, bcm_port_t port, bcm_cos_queue_t cosq, uint32 color, int drop_start,
                              int drop_slope, int average_time);
int bcm_cosq_discard_port_get(int unit, bcm_port_t port, bcm_cos_queue_t cosq, uint32 color, int *drop_start,
                              int *drop_slope, int *average_time);

/* Settings by selector. */
int bcm_cosq_control_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_control_t type, int arg);
int bcm_cosq_control_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_control_t type,
                         int *arg);
int bcm_cosq_control_range_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_control_t type,
                               bcm_cosq_range_t *range);
int bcm_cosq_control_range_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_control_t type,
                               bcm_cosq_range_t *range);

/* Classes of service of a queue's priorities, and the priority of the queue. */
int bcm_cosq_priority_profile_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                  bcm_cosq_gport_priority_profile_t *profile);
int bcm_cosq_priority_profile_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                  bcm_cosq_gport_priority_profile_t *profile);
int bcm_cosq_priority_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int priority);
int bcm_cosq_priority_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *priority);

/* All members zero, of the record that bcm_cosq_gport_discard_set takes. */
void bcm_cosq_gport_discard_t_init(bcm_cosq_gport_discard_t *discard);

/* What a gport was made with. */
int bcm_cosq_gport_get(int unit, bcm_gport_t gport, bcm_port_t *port, int *numq, uint32 *flags);
int bcm_cosq_gport_traverse(int unit, bcm_cosq_gport_traverse_cb cb, void *user_data);

/* Buffer that a queue is given at least, and at most; 1 MB at first. */
int bcm_cosq_gport_size_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 bytes_min,
                            uint32 bytes_max);
int bcm_cosq_gport_size_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 *bytes_min,
                            uint32 *bytes_max);
int bcm_cosq_gport_color_size_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_color_t color,
                                  uint32 flags, bcm_cosq_gport_size_t *gport_size);
int bcm_cosq_gport_color_size_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_color_t color,
                                  uint32 flags, bcm_cosq_gport_size_t *gport_size);

/*
 * Whether a queue sends, and its counters as far as a profile chooses them. get returns what was collected
 * last, sync_get reads the device. lgl_gport is the logical gport that shows the counters.
 */
int bcm_cosq_gport_enable_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int enable);
int bcm_cosq_gport_stat_sync_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                 bcm_cosq_gport_stats_t stat, uint64 *value);
int bcm_cosq_gport_enable_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *enable);
int bcm_cosq_gport_stat_enable_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int enable);
int bcm_cosq_gport_stat_enable_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *enable);
int bcm_cosq_gport_stat_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_gport_stats_t stat,
                            uint64 *value);
int bcm_cosq_gport_stat_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_gport_stats_t stat,
                            uint64 value);
int bcm_cosq_gport_stat_config_get(int unit, bcm_gport_t gport, bcm_gport_t lgl_gport, bcm_cos_queue_t cosq,
                                   uint32 flags, bcm_cosq_gport_stat_profile_t *profile);
int bcm_cosq_gport_stat_config_set(int unit, bcm_gport_t gport, bcm_gport_t lgl_gport, bcm_cos_queue_t cosq,
                                   uint32 flags, bcm_cosq_gport_stat_profile_t profile);

/* All counters of a queue; nstat elements in each of the arrays. */
int bcm_cosq_gport_statistic_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                                 uint64 *value);
int bcm_cosq_gport_statistic_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                                 uint64 value);
int bcm_cosq_gport_statistic_multi_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int nstat,
                                       bcm_cosq_stat_t *stat_arr, uint64 *value_arr);
int bcm_cosq_gport_statistic_multi_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int nstat,
                                       bcm_cosq_stat_t *stat_arr, uint64 *value_arr);

/*
 * Making of gports. add makes one of the kind that flags say, with numq queues or inputs, at port.
 */
int bcm_cosq_gport_add(int unit, bcm_port_t port, int numq, uint32 flags, bcm_gport_t *gport);
int bcm_cosq_gport_delete(int unit, bcm_gport_t gport);

/* Which queue of gport takes packets of a priority that came in at ing_port. */
int bcm_cosq_gport_mapping_set(int unit, bcm_port_t ing_port, bcm_cos_t int_pri, uint32 flags,
                               bcm_gport_t gport, bcm_cos_queue_t cosq);
int bcm_cosq_gport_mapping_get(int unit, bcm_port_t ing_port, bcm_cos_t int_pri, uint32 flags,
                               bcm_gport_t *gport, bcm_cos_queue_t *cosq);

/* Rates of a queue, and how the scheduler that it is an input of treats it. */
int bcm_cosq_gport_bandwidth_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 kbits_sec_min,
                                 uint32 kbits_sec_max, uint32 flags);
int bcm_cosq_gport_bandwidth_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 *kbits_sec_min,
                                 uint32 *kbits_sec_max, uint32 *flags);
int bcm_cosq_gport_sched_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int mode, int weight);
int bcm_cosq_gport_sched_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *mode, int *weight);
int bcm_cosq_gport_dynamic_sched_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int enable);
int bcm_cosq_gport_dynamic_sched_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *enable);

/* Random early drop of a queue. discard->flags say the colours, in a get too. */
int bcm_cosq_gport_discard_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                               bcm_cosq_gport_discard_t *discard);
int bcm_cosq_gport_discard_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                               bcm_cosq_gport_discard_t *discard);

/* Settings of a scheduler as a whole; cosq tells it from others of the same gport. */
int bcm_cosq_gport_sched_config_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                    bcm_cosq_sched_config_type_t type, int value);
int bcm_cosq_gport_sched_config_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                    bcm_cosq_sched_config_type_t type, int *value);

/* Flow control that a queue obeys, BCM_COSQ_FC_*. */
int bcm_cosq_gport_flow_control_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 flags);
int bcm_cosq_gport_flow_control_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 *flags);

/*
 * The scheduling tree: input_gport is attached to the input cosq of sched_gport; see
 * bcm_cosq_gport_reattach. The getters give BCM_E_NOT_FOUND if nothing is attached.
 */
int bcm_cosq_gport_attach(int unit, bcm_gport_t sched_gport, bcm_gport_t input_gport, bcm_cos_queue_t cosq);
int bcm_cosq_gport_detach(int unit, bcm_gport_t sched_gport, bcm_gport_t input_gport, bcm_cos_queue_t cosq);
int bcm_cosq_gport_attach_get(int unit, bcm_gport_t sched_gport, bcm_gport_t *input_gport,
                              bcm_cos_queue_t *cosq);
int bcm_cosq_gport_child_get(int unit, bcm_gport_t in_gport, bcm_cos_queue_t cosq, bcm_gport_t *out_gport);
int bcm_cosq_gport_parent_get(int unit, bcm_gport_t in_gport, bcm_cos_queue_t in_cosq,
                              bcm_gport_t *out_gport, bcm_cos_queue_t *out_cosq);

/* Egress queues that a queue feeds. */
int bcm_cosq_gport_queue_attach(int unit, uint32 flags, bcm_gport_t queue, bcm_gport_t egress_queue);
int bcm_cosq_gport_queue_detach(int unit, uint32 flags, bcm_gport_t queue, bcm_gport_t egress_queue);
int bcm_cosq_gport_queue_attach_get(int unit, uint32 flags, bcm_gport_t queue, bcm_gport_t *egress_queue);

/* The connector that virtual output queues get their credits through. */
int bcm_cosq_gport_connection_set(int unit, bcm_cosq_gport_connection_t *connection);
int bcm_cosq_gport_connection_get(int unit, bcm_cosq_gport_connection_t *connection);

/* Priority and colour at the egress, from those at the ingress. */
int bcm_cosq_gport_egress_map_set(int unit, bcm_gport_t gport, bcm_cos_t ing_pri, bcm_color_t ing_dp,
                                  bcm_cos_t egr_pri, bcm_color_t egr_dp);
int bcm_cosq_gport_egress_map_get(int unit, bcm_gport_t gport, bcm_cos_t ing_pri, bcm_color_t ing_dp,
                                  bcm_cos_t *egr_pri, bcm_color_t *egr_dp);

/* Multicast packets within the egress. */
int bcm_cosq_gport_egress_multicast_config_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                               uint32 flags, bcm_cosq_egress_multicast_config_t *config);
int bcm_cosq_gport_egress_multicast_config_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                               uint32 flags, bcm_cosq_egress_multicast_config_t *config);

/* Virtual statistics queues; get writes at most size of those that were added. */
int bcm_cosq_gport_vsq_create(int unit, uint32 flags, bcm_cosq_vsq_info_t *vsq, bcm_gport_t *gport);
int bcm_cosq_gport_vsq_destroy(int unit, bcm_gport_t gport);
int bcm_cosq_gport_vsq_add(int unit, bcm_gport_t gport, bcm_cosq_vsq_info_t *vsq);
int bcm_cosq_gport_vsq_delete(int unit, bcm_gport_t gport, bcm_cosq_vsq_info_t *vsq);
int bcm_cosq_gport_vsq_delete_all(int unit, bcm_gport_t gport);
int bcm_cosq_gport_vsq_get(int unit, bcm_gport_t gport, int size, bcm_cosq_vsq_info_t *vsq_array, int *count);

/* Thresholds by selector; threshold->type and, if the flags say so, dp and tc are read in a get too. */
int bcm_cosq_gport_threshold_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                 bcm_cosq_threshold_t *threshold);
int bcm_cosq_gport_threshold_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                 bcm_cosq_threshold_t *threshold);

/* Gports of a kind by what they belong to; *gport, or *out_gport, says which. */
int bcm_cosq_gport_handle_get(int unit, bcm_cosq_gport_type_t gport_type, bcm_gport_t *gport,
                              bcm_cosq_gport_info_t *gport_info);
int bcm_cosq_gport_handle_core_get(int unit, bcm_cosq_gport_info_core_t *gport_info_core,
                                   bcm_gport_t *out_gport);

/* Destinations of virtual output queues, and the paths to them, each with its share of the traffic. */
int bcm_cosq_gport_destmod_attach(int unit, bcm_gport_t gport, bcm_port_t ingress_port,
                                  bcm_module_t dest_modid, bcm_port_t fabric_egress_port);
int bcm_cosq_gport_destmod_detach(int unit, bcm_gport_t gport, bcm_port_t ingress_port,
                                  bcm_module_t dest_modid, bcm_port_t fabric_egress_port);
int bcm_cosq_gport_multipath_add(int unit, bcm_gport_t gport, bcm_gport_t member_gport, int weight);
int bcm_cosq_gport_multipath_get(int unit, bcm_gport_t gport, int size, bcm_gport_t *member_gport_array,
                                 int *weight_array, int *count);
int bcm_cosq_gport_multipath_delete(int unit, bcm_gport_t gport, bcm_gport_t member_gport);

/* Whether a queue is reported, and at which lengths. */
int bcm_cosq_gport_report_threshold_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *enable,
                                        bcm_cosq_report_threshold_t *threshold);
int bcm_cosq_gport_report_threshold_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int enable,
                                        bcm_cosq_report_threshold_t *threshold);

/* Queue of each priority and colour at the egress. */
int bcm_cosq_gport_egress_mapping_set(int unit, bcm_gport_t gport, bcm_cos_t priority, bcm_color_t color,
                                      bcm_cos_queue_t cosq);
int bcm_cosq_gport_egress_mapping_get(int unit, bcm_gport_t gport, bcm_cos_t priority, bcm_color_t color,
                                      bcm_cos_queue_t *cosq);

/* Whether messages are sent about a queue's congestion, and where. */
int bcm_cosq_gport_congestion_config_set(int unit, bcm_gport_t gport, int enable,
                                         bcm_cosq_congestion_info_t *config);
int bcm_cosq_gport_congestion_config_get(int unit, bcm_gport_t gport, int *enable,
                                         bcm_cosq_congestion_info_t *config);

/* What a link of a passive optical network is granted, queue by queue. */
int bcm_cosq_gport_pon_link_sla_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                    bcm_cos_pon_link_sla_t *sla);
int bcm_cosq_gport_pon_link_sla_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                    bcm_cos_pon_link_sla_t *sla);

/* Attaches what is attached already elsewhere in the scheduling tree, without dropping packets. */
int bcm_cosq_gport_reattach(int unit, bcm_gport_t sched_gport, bcm_gport_t input_gport, bcm_cos_queue_t cosq);

/* Flow control that a subport obeys, and paths of flow control from one end to another. */
int bcm_cosq_subport_flow_control_set(int unit, bcm_gport_t subport, bcm_cos_queue_t cosq, uint32 flags);
int bcm_cosq_subport_flow_control_get(int unit, bcm_gport_t subport, bcm_cos_queue_t cosq, uint32 *flags);
int bcm_cosq_fc_path_add(int unit, bcm_cosq_fc_endpoint_t *source, bcm_cosq_fc_endpoint_t *target);
int bcm_cosq_fc_path_get(int unit, bcm_cosq_fc_endpoint_t *source, bcm_cosq_fc_endpoint_t *target);
int bcm_cosq_fc_path_delete(int unit, bcm_cosq_fc_endpoint_t *source, bcm_cosq_fc_endpoint_t *target);

/* Shares of the fabric, and gports that are more than a number of queues. */
int bcm_cosq_fabric_distribution_add(int unit, bcm_fabric_distribution_t ds_id, bcm_gport_t gport,
                                     bcm_cos_queue_t cosq);
int bcm_cosq_fabric_distribution_get(int unit, bcm_fabric_distribution_t ds_id, bcm_gport_t gport,
                                     bcm_cos_queue_t *cosq);
int bcm_cosq_voq_connector_gport_add(int unit, bcm_cosq_voq_connector_gport_t *config, bcm_gport_t *gport);
int bcm_cosq_ingress_queue_bundle_gport_add(int unit, bcm_cosq_ingress_queue_bundle_gport_config_t *config,
                                            bcm_gport_t *gport);

/* Presets of when virtual output queues ask for credits. */
int bcm_cosq_delay_tolerance_level_set(int unit, int delay_tolerance_level,
                                       bcm_cosq_delay_tolerance_t *delay_tolerance);
int bcm_cosq_delay_tolerance_level_get(int unit, int delay_tolerance_level,
                                       bcm_cosq_delay_tolerance_t *delay_tolerance);

/* Priority groups of a port. */
int bcm_cosq_src_vsqs_gport_add(int unit, bcm_gport_t port, bcm_cosq_src_vsqs_gport_config_t *config,
                                bcm_gport_t *gport);
int bcm_cosq_src_vsqs_gport_get(int unit, bcm_gport_t gport, bcm_cosq_src_vsqs_gport_config_t *config);

/* All members zero, of the record that bcm_cosq_gport_threshold_set takes. */
void bcm_cosq_threshold_t_init(bcm_cosq_threshold_t *threshold);

/* Congestion: messages from the fabric, and notification of the sources (IEEE 802.1Qau). */
void bcm_cosq_congestion_mapping_info_t_init(bcm_cosq_congestion_mapping_info_t *mapping);
int bcm_cosq_congestion_mapping_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                    bcm_cosq_congestion_mapping_info_t *mapping);
int bcm_cosq_congestion_mapping_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                    bcm_cosq_congestion_mapping_info_t *mapping);
void bcm_cosq_congestion_info_t_init(bcm_cosq_congestion_info_t *config);
int bcm_cosq_qcn_config_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int enable,
                            bcm_cosq_qcn_config_t *config);
int bcm_cosq_qcn_config_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *enable,
                            bcm_cosq_qcn_config_t *config);

/* Bytes that a credit of a destination stands for. */
int bcm_cosq_dest_credit_size_set(int unit, bcm_module_t dest_modid, bcm_port_t dest_port, int credit_size);
int bcm_cosq_dest_credit_size_get(int unit, bcm_module_t dest_modid, bcm_port_t dest_port, int *credit_size);

/* Whether a queue to the CPU is served. */
int bcm_cosq_cpu_cosq_enable_set(int unit, bcm_cos_queue_t cosq, int enable);
int bcm_cosq_cpu_cosq_enable_get(int unit, bcm_cos_queue_t cosq, int *enable);

/* Profiles of a queue by kind. */
int bcm_cosq_profile_mapping_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                 bcm_cosq_profile_type_t type, int profile_id);
int bcm_cosq_profile_mapping_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq,
                                 bcm_cosq_profile_type_t type, int *profile_id);

/* Shared buffers: pools, and what queues and colours get of them. */
int bcm_cosq_service_pool_set(int unit, bcm_service_pool_id_t id, bcm_cosq_service_pool_t cosq_service_pool);
int bcm_cosq_service_pool_get(int unit, bcm_service_pool_id_t id, bcm_cosq_service_pool_t *cosq_service_pool);
void bcm_cosq_service_pool_t_init(bcm_cosq_service_pool_t *cosq_service_pool);
int bcm_cosq_resource_allocation_set(int unit, uint32 flags, bcm_cosq_allocation_entity_t *entity,
                                     bcm_cosq_resource_amounts_t *amounts);
int bcm_cosq_resource_allocation_get(int unit, uint32 flags, bcm_cosq_allocation_entity_t *entity,
                                     bcm_cosq_resource_amounts_t *amounts);

/* Rates at which queues under a slow profile get credits. */
int bcm_cosq_slow_profile_set(int unit, bcm_cosq_slow_level_t *slow_level,
                              bcm_cosq_slow_profile_attributes_t *attributes);
int bcm_cosq_slow_profile_get(int unit, bcm_cosq_slow_level_t *slow_level,
                              bcm_cosq_slow_profile_attributes_t *attributes);

/*
 * Counters of a queue of a port. get returns what was collected last, sync_get reads the device; a 32-bit
 * getter returns the low half; BCM_E_UNAVAIL for what queues do not count. config: whether a counter counts.
 */
int bcm_cosq_stat_get(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat, uint64 *value);
int bcm_cosq_stat_get32(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                        uint32 *value);
int bcm_cosq_stat_sync_get(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                           uint64 *value);
int bcm_cosq_stat_sync_get32(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                             uint32 *value);
int bcm_cosq_stat_set(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat, uint64 value);
int bcm_cosq_stat_set32(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat, uint32 value);
int bcm_cosq_stat_config_set(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                             int enable);
int bcm_cosq_stat_config_get(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                             int *enable);

/*
 * Tracking of buffer use. sync collects it from the device, get returns what was collected. options:
 * BCM_COSQ_STAT_CLEAR or 0.
 */
void bcm_cosq_bst_profile_t_init(bcm_cosq_bst_profile_t *profile);
int bcm_cosq_bst_profile_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_bst_stat_id_t bid,
                             bcm_cosq_bst_profile_t *profile);
int bcm_cosq_bst_profile_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_bst_stat_id_t bid,
                             bcm_cosq_bst_profile_t *profile);
int bcm_cosq_bst_stat_sync(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_bst_stat_id_t bid);
int bcm_cosq_bst_stat_clear(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_bst_stat_id_t bid);
int bcm_cosq_bst_stat_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_bst_stat_id_t bid,
                          uint32 options, uint64 *value);
int bcm_cosq_bst_stat_get32(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_bst_stat_id_t bid,
                            uint32 options, uint32 *value);
int bcm_cosq_bst_stat_multi_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 options,
                                int max_values, bcm_cosq_bst_stat_id_t *id_list, uint64 *values);
int bcm_cosq_bst_stat_multi_get32(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 options,
                                  int max_values, bcm_cosq_bst_stat_id_t *id_list, uint32 *values);

/*
 * Priority flow control: whether a priority's buffer takes part and its thresholds, queues that a received
 * class stops. set takes array_count mappings, get writes at most array_max of them.
 */
int bcm_cosq_pfc_config_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int enable,
                            bcm_cosq_pfc_config_t *config);
int bcm_cosq_pfc_config_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *enable,
                            bcm_cosq_pfc_config_t *config);
void bcm_cosq_pfc_class_mapping_t_init(bcm_cosq_pfc_class_mapping_t *mapping);
int bcm_cosq_pfc_class_mapping_set(int unit, bcm_gport_t gport, int array_count,
                                   bcm_cosq_pfc_class_mapping_t *mapping_array);
int bcm_cosq_pfc_class_mapping_get(int unit, bcm_gport_t gport, int array_max,
                                   bcm_cosq_pfc_class_mapping_t *mapping_array, int *array_count);
void bcm_cosq_safc_class_mapping_t_init(bcm_cosq_safc_class_mapping_t *mapping);
int bcm_cosq_safc_class_mapping_set(int unit, bcm_gport_t gport, int array_count,
                                    bcm_cosq_safc_class_mapping_t *mapping_array);
int bcm_cosq_safc_class_mapping_get(int unit, bcm_gport_t gport, int array_max,
                                    bcm_cosq_safc_class_mapping_t *mapping_array, int *array_count);

/*
 * Queues that flow control holds for too long, by priority 0..7, how often there were any; *deadlock: 0 or 1.
 */
void bcm_cosq_pfc_deadlock_config_t_init(bcm_cosq_pfc_deadlock_config_t *config);
void bcm_cosq_pfc_deadlock_queue_config_t_init(bcm_cosq_pfc_deadlock_queue_config_t *config);
void bcm_cosq_pfc_deadlock_info_t_init(bcm_cosq_pfc_deadlock_info_t *info);
int bcm_cosq_pfc_deadlock_config_set(int unit, int priority, bcm_cosq_pfc_deadlock_config_t *config);
int bcm_cosq_pfc_deadlock_config_get(int unit, int priority, bcm_cosq_pfc_deadlock_config_t *config);
int bcm_cosq_pfc_deadlock_info_get(int unit, int priority, bcm_cosq_pfc_deadlock_info_t *info,
                                   int *detections);
int bcm_cosq_pfc_deadlock_queue_config_set(int unit, bcm_gport_t gport, int priority,
                                           bcm_cosq_pfc_deadlock_queue_config_t *config);
int bcm_cosq_pfc_deadlock_queue_config_get(int unit, bcm_gport_t gport, int priority,
                                           bcm_cosq_pfc_deadlock_queue_config_t *config);
int bcm_cosq_pfc_deadlock_queue_status_get(int unit, bcm_gport_t gport, int priority, int *deadlock);

/* Queues of subscribers; add gives BCM_E_EXISTS, get and delete give BCM_E_NOT_FOUND. delete_all takes those of port, -1 for all. */
int bcm_cosq_subscriber_map_add(int unit, bcm_cosq_subscriber_map_t *map);
int bcm_cosq_subscriber_map_delete(int unit, bcm_cosq_subscriber_map_t *map);
int bcm_cosq_subscriber_map_delete_all(int unit, bcm_gport_t port);
int bcm_cosq_subscriber_map_get(int unit, bcm_cosq_subscriber_map_t *map);
int bcm_cosq_subscriber_traverse(int unit, bcm_cosq_subscriber_map_traverse_cb cb, void *user_data);

/* Classifiers, and which queues of queue_group the flows that they tell use at port, by priority. */
void bcm_cosq_classifier_t_init(bcm_cosq_classifier_t *classifier);
int bcm_cosq_classifier_create(int unit, bcm_cosq_classifier_t *classifier, int *classifier_id);
int bcm_cosq_classifier_destroy(int unit, int classifier_id);
int bcm_cosq_classifier_get(int unit, int classifier_id, bcm_cosq_classifier_t *classifier);
int bcm_cosq_classifier_mapping_set(int unit, bcm_gport_t port, int classifier_id, bcm_gport_t queue_group,
                                    bcm_cos_t priority, bcm_cos_queue_t cosq);
int bcm_cosq_classifier_mapping_multi_set(int unit, bcm_gport_t port, int classifier_id,
                                          bcm_gport_t queue_group, int array_count,
                                          bcm_cos_t *priority_array, bcm_cos_queue_t *cosq_array);
int bcm_cosq_classifier_mapping_get(int unit, bcm_gport_t port, int classifier_id, bcm_gport_t *queue_group,
                                    bcm_cos_t priority, bcm_cos_queue_t *cosq);
int bcm_cosq_classifier_mapping_multi_get(int unit, bcm_gport_t port, int classifier_id,
                                          bcm_gport_t *queue_group, int array_max, bcm_cos_t *priority_array,
                                          bcm_cos_queue_t *cosq_array, int *array_count);
int bcm_cosq_classifier_mapping_clear(int unit, bcm_gport_t port, int classifier_id, bcm_gport_t queue_group);

#ifdef __cplusplus
}
#endif

#endif
