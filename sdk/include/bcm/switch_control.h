/*
 * Settings of a switch, by subject, see bcm_switch_control_set.
 *
 * A setting is on (1) or off (0) unless its comment says something else. ...ToCpu copies packets to the CPU,
 * ...Drop drops them, ...Event calls the event callbacks. Sizes are bytes, or entries of a table. What a
 * device does not have gives BCM_E_UNAVAIL.
 */
#ifndef BCM_SWITCH_CONTROL_H
#define BCM_SWITCH_CONTROL_H

typedef enum bcm_switch_control_e {
    /* Protocol packets to the CPU: 1 copies such packets, as well as forwarding them. */
    bcmSwitchArpRequestToCpu = 0,
    bcmSwitchArpReplyToCpu,
    bcmSwitchNdPktToCpu,
    bcmSwitchDhcpPktToCpu,
    bcmSwitchDhcp6PktToCpu,
    bcmSwitchIgmpPktToCpu,
    bcmSwitchIgmpQueryToCpu,
    bcmSwitchIgmpReportLeaveToCpu,
    bcmSwitchMldPktToCpu,
    bcmSwitchMldQueryToCpu,
    bcmSwitchMldReportDoneToCpu,
    bcmSwitchPimPktToCpu,
    bcmSwitchRipPktToCpu,
    bcmSwitchOspfPktToCpu,
    bcmSwitchBgpPktToCpu,
    bcmSwitchVrrpPktToCpu,
    bcmSwitchLldpPktToCpu,
    bcmSwitchEapolPktToCpu,
    bcmSwitchSlowProtocolToCpu,
    bcmSwitchGarpPktToCpu,
    bcmSwitchPppoeDiscoveryToCpu,
    bcmSwitchBpduToCpu,
    bcmSwitchBfdPktToCpu,
    bcmSwitchTimesyncPktToCpu,
    bcmSwitchSrpPktToCpu,
    bcmSwitchCfmPktToCpu,
    bcmSwitchFipPktToCpu,                 /* FCoE initialisation */
    bcmSwitchIsisPktToCpu,                /* of layer 2, also within TRILL */
    bcmSwitchMplsRouterAlertToCpu,
    bcmSwitchIpRouterAlertToCpu,
    bcmSwitchSelfAddressedToCpu,          /* to an address of a router interface */

    /* Protocol packets dropped: 1 drops them, whether or not a copy goes to the CPU. */
    bcmSwitchArpRequestDrop,
    bcmSwitchArpReplyDrop,
    bcmSwitchNdPktDrop,
    bcmSwitchDhcpPktDrop,
    bcmSwitchDhcp6PktDrop,
    bcmSwitchIgmpQueryDrop,
    bcmSwitchIgmpReportLeaveDrop,
    bcmSwitchMldQueryDrop,
    bcmSwitchMldReportDoneDrop,
    bcmSwitchPimPktDrop,
    bcmSwitchLldpPktDrop,
    bcmSwitchEapolPktDrop,
    bcmSwitchSlowProtocolDrop,
    bcmSwitchGarpPktDrop,
    bcmSwitchBpduDrop,
    bcmSwitchFlowControlPktDrop,          /* MAC control frames that ports did not consume */

    /* Protocol packets flooded: 1 floods them in their VLAN in spite of a table entry. */
    bcmSwitchDhcpPktFlood,
    bcmSwitchIgmpQueryFlood,
    bcmSwitchMldQueryFlood,
    bcmSwitchIgmpReportLeaveFlood,
    bcmSwitchMldReportDoneFlood,
    bcmSwitchBpduFlood,

    /* Protocol packets suppressed: 1 answers or converts where the device can. */
    bcmSwitchArpRequestSuppress,
    bcmSwitchNdSolicitationSuppress,
    bcmSwitchDirectedArpTrust,            /* requests to a station's own address */
    bcmSwitchDhcpLearn,                   /* 0: client packets do not teach addresses */
    bcmSwitchArpSenderCheck,              /* 1: sender address and source MAC have to agree */
    bcmSwitchIgmpSourceSpecific,          /* 1: IGMP version 3 reports are recognised */
    bcmSwitchMldSourceSpecific,           /* likewise of MLD version 2 */
    bcmSwitchIgmpReservedAddressFlood,    /* 224.0.0.x goes everywhere, whatever was reported */
    bcmSwitchIp6LinkLocalFlood,

    /* Queue of copies: the CPU queue that they are put into, 0..47. */
    bcmSwitchCpuProtoArpQueue,
    bcmSwitchCpuProtoNdQueue,
    bcmSwitchCpuProtoDhcpQueue,
    bcmSwitchCpuProtoIgmpQueue,
    bcmSwitchCpuProtoMldQueue,
    bcmSwitchCpuProtoBpduQueue,
    bcmSwitchCpuProtoTimesyncQueue,
    bcmSwitchCpuProtoBfdQueue,
    bcmSwitchCpuProtoOamQueue,
    bcmSwitchCpuProtoRouterAlertQueue,
    bcmSwitchCpuSamplingQueue,
    bcmSwitchCpuMirrorQueue,
    bcmSwitchCpuUnknownQueue,
    bcmSwitchCpuStationMoveQueue,
    bcmSwitchCpuLearnQueue,
    bcmSwitchCpuTtlErrorQueue,
    bcmSwitchCpuMtuErrorQueue,
    bcmSwitchCpuIcmpRedirectQueue,
    bcmSwitchCpuMulticastMissQueue,
    bcmSwitchCpuSourceMissQueue,
    bcmSwitchCpuDefaultQueue,

    /* Copies in general. */
    bcmSwitchCpuCopyTruncateLength,       /* bytes, 0 for whole packets */
    bcmSwitchCpuCopyDropPrecedence,       /* bcm_color_t */
    bcmSwitchCpuCopyOncePerPacket,        /* 1: several reasons make one copy */
    bcmSwitchCpuCopyTimestamp,            /* 1: each with the time of its arrival */
    bcmSwitchCpuRateLimit,                /* packets per second of all queues, 0 for none */
    bcmSwitchCpuVlanTagMode,              /* 0: as received, 1: always tagged */
    bcmSwitchCpuToCpuForward,             /* 1: packets for other CPUs pass */

    /* Unknown destinations and sources: 1 copies to the CPU. */
    bcmSwitchUnknownUcastToCpu,
    bcmSwitchUnknownMcastToCpu,
    bcmSwitchUnknownVlanToCpu,
    bcmSwitchUnknownL3SourceToCpu,
    bcmSwitchUnknownL3DestToCpu,
    bcmSwitchUnknownIpMcastToCpu,
    bcmSwitchUnknownIp6McastToCpu,
    bcmSwitchUnknownTunnelToCpu,
    bcmSwitchUnknownMplsLabelToCpu,
    bcmSwitchUnknownSubportToCpu,
    bcmSwitchUnknownL3DestDrop,
    bcmSwitchUnknownVlanDrop,
    bcmSwitchUnknownIpMcastFlood,
    bcmSwitchUnknownIp6McastFlood,

    /* Routing errors: 1 copies to the CPU. */
    bcmSwitchL3HeaderErrorToCpu,
    bcmSwitchIp4HeaderChecksumErrorToCpu,
    bcmSwitchIp4OptionsToCpu,
    bcmSwitchIp4SourceRouteToCpu,
    bcmSwitchIp6HeaderErrorToCpu,
    bcmSwitchIp6HopByHopToCpu,
    bcmSwitchIp6RoutingHeaderToCpu,
    bcmSwitchIp6FragmentHeaderToCpu,
    bcmSwitchL3UcTtlErrToCpu,             /* unicast */
    bcmSwitchL3McTtlErrToCpu,             /* multicast */
    bcmSwitchL3UcMtuFailToCpu,
    bcmSwitchL3McMtuFailToCpu,
    bcmSwitchL3SlowpathToCpu,
    bcmSwitchL3SourceBindFailToCpu,
    bcmSwitchL3UrpfFailToCpu,
    bcmSwitchL3NullRouteToCpu,
    bcmSwitchL3MartianToCpu,
    bcmSwitchIcmpRedirectToCpu,           /* routed back into the VLAN it came from */
    bcmSwitchL3LinkLocalToCpu,
    bcmSwitchL3ProtocolMismatchToCpu,     /* unicast address in a multicast frame, or the reverse */
    bcmSwitchTunnelTtlErrToCpu,
    bcmSwitchTunnelMtuFailToCpu,
    bcmSwitchTunnelHeaderErrorToCpu,
    bcmSwitchMplsTtlErrToCpu,
    bcmSwitchMplsReservedLabelToCpu,
    bcmSwitchMplsSequenceErrToCpu,
    bcmSwitchMplsBottomOfStackErrToCpu,

    /* Routing errors: 1 drops. */
    bcmSwitchL3UcTtlErrDrop,
    bcmSwitchL3McTtlErrDrop,
    bcmSwitchL3UcMtuFailDrop,
    bcmSwitchL3SourceBindFailDrop,
    bcmSwitchL3MartianDrop,
    bcmSwitchIp4OptionsDrop,
    bcmSwitchIp4SourceRouteDrop,
    bcmSwitchIp6RoutingHeaderDrop,
    bcmSwitchIp4ZeroAddressDrop,
    bcmSwitchIp4LoopbackAddressDrop,
    bcmSwitchIp4LimitedBroadcastDrop,
    bcmSwitchIp6LinkLocalDrop,
    bcmSwitchIp6UnspecifiedAddressDrop,
    bcmSwitchIp6Ip4MappedDrop,
    bcmSwitchL3LocalSourceDrop,           /* source address of the router itself */
    bcmSwitchMplsTtlErrDrop,
    bcmSwitchTunnelTtlErrDrop,

    /* Attacks: 1 drops such packets. */
    bcmSwitchDosAttackSipEqualDip,
    bcmSwitchDosAttackMacSaEqualMacDa,
    bcmSwitchDosAttackV4FirstFrag,
    bcmSwitchDosAttackTcpFlagsZero,
    bcmSwitchDosAttackTcpFlagsFinUrgPsh,
    bcmSwitchDosAttackTcpFlagsSynFin,
    bcmSwitchDosAttackTcpSynWithData,
    bcmSwitchDosAttackTcpPortsEqual,
    bcmSwitchDosAttackTcpFragment,
    bcmSwitchDosAttackTcpOffsetOne,
    bcmSwitchDosAttackTcpHeaderPartial,
    bcmSwitchDosAttackUdpPortsEqual,
    bcmSwitchDosAttackIcmpFragment,
    bcmSwitchDosAttackIcmp4LargePkt,
    bcmSwitchDosAttackIcmp6LargePkt,
    bcmSwitchDosAttackPingOfDeath,
    bcmSwitchDosAttackIp6TinyFragment,
    bcmSwitchDosAttackSourceMulticast,
    bcmSwitchDosAttackBroadcastEcho,
    bcmSwitchDosAttackMacSaZero,

    /* Limits of these checks. */
    bcmSwitchDosAttackTcpHeaderMin,       /* bytes of a TCP header in a first fragment */
    bcmSwitchDosAttackIcmp4SizeMax,       /* bytes */
    bcmSwitchDosAttackIcmp6SizeMax,
    bcmSwitchDosAttackIp6FragmentMin,     /* bytes of a fragment that is not the last */
    bcmSwitchDosAttackToCpu,              /* 1: what is dropped is copied */

    /* Learning. */
    bcmSwitchL2LearnEnable,               /* 0: no port learns */
    bcmSwitchL2LearnHardware,             /* 0: software enters what was learnt */
    bcmSwitchL2LearnSourceMcast,          /* 1: multicast sources too */
    bcmSwitchL2LearnZeroSource,
    bcmSwitchL2LearnRateLimit,            /* addresses per second, 0 for none */
    bcmSwitchL2LearnEventQueueDepth,      /* events that wait for the CPU */
    bcmSwitchL2LearnEventBatch,           /* events that are told at once */
    bcmSwitchL2LearnEventTimeout,         /* microseconds after which fewer are */
    bcmSwitchL2LearnLimitSystem,          /* most addresses, 0 for no limit */
    bcmSwitchL2LearnLimitToCpu,           /* 1: packets over a limit are copied */
    bcmSwitchL2LearnLimitDrop,
    bcmSwitchL2LearnLimitEvent,           /* 1: the callbacks hear of it */
    bcmSwitchL2LearnOnDrop,               /* 1: a packet that is dropped teaches its source */
    bcmSwitchL2LearnOnTrap,
    bcmSwitchL2LearnSharedVlan,           /* 1: one table for all VLANs */
    bcmSwitchL2LearnAcrossTrunk,          /* 1: other members of a trunk are no move */
    bcmSwitchL2LearnTunnelSource,         /* 1: learns which tunnel leads to an address */

    /* Moves of stations. */
    bcmSwitchStationMoveEnable,           /* 0: addresses stay where they were learnt */
    bcmSwitchStationMoveToCpu,
    bcmSwitchStationMoveDrop,
    bcmSwitchStationMoveStaticToCpu,
    bcmSwitchStationMoveStaticDrop,
    bcmSwitchStationMovePrioritized,      /* 1: as by bcm_l2_learn_class_set */
    bcmSwitchStationMoveRateLimit,        /* moves of an address per second */
    bcmSwitchStationMoveDampTime,         /* seconds for which an unruly address is held */
    bcmSwitchStationMoveEvent,

    /* Ageing. */
    bcmSwitchL2AgeEnable,
    bcmSwitchL2AgeScanPeriod,             /* milliseconds for one pass over the table */
    bcmSwitchL2AgeEntriesPerScan,         /* entries */
    bcmSwitchL2AgeOnDestHit,              /* 1: use as a destination counts too */
    bcmSwitchL2AgeRemoteEntries,          /* 1: entries learnt on other units too */
    bcmSwitchL2AgeByProfile,              /* 1: times are those of VLAN profiles */
    bcmSwitchL2AgeEvent,

    /* The address table and forwarding by it. */
    bcmSwitchL2HitEnable,                 /* 0: use is not marked */
    bcmSwitchL2SourceHitEnable,
    bcmSwitchL2DestHitEnable,
    bcmSwitchL2OverflowEnable,            /* 1: entries without room are put aside */
    bcmSwitchL2OverflowEvent,
    bcmSwitchL2MoveBuckets,               /* entries that are moved at most to make room */
    bcmSwitchL2CacheFirst,                /* 1: masked entries win over exact ones */
    bcmSwitchL2StaticOverwrite,           /* 1: add replaces static entries */
    bcmSwitchL2SourceFilter,              /* 1: packets go not back to their source port */
    bcmSwitchL2PortBlocking,
    bcmSwitchL2McastMissFlood,            /* 1: unknown groups go to all ports */
    bcmSwitchL2UcastMissFlood,
    bcmSwitchL2BroadcastAsMcast,
    bcmSwitchL2McastRangeSplit,           /* first group id of layer-3 multicast */
    bcmSwitchL2ThreadInterval,            /* microseconds between looks at the table */
    bcmSwitchL2DestDiscardToCpu,
    bcmSwitchL2SourceDiscardToCpu,
    bcmSwitchL2InvalidFrameToCpu,         /* type and length fields that cannot be */
    bcmSwitchL2RuntToCpu,
    bcmSwitchL2LengthCheck,               /* 1: frames shorter than their length are dropped */

    /* VLANs. */
    bcmSwitchVlanIngressFilter,           /* default of new ports */
    bcmSwitchVlanEgressFilter,
    bcmSwitchVlanSubnetLookup,
    bcmSwitchVlanMacLookup,
    bcmSwitchVlanProtocolLookup,
    bcmSwitchVlanLookupMacFirst,          /* 1: by MAC before by network */
    bcmSwitchVlanTranslateIngressEnable,
    bcmSwitchVlanTranslateEgressEnable,
    bcmSwitchVlanTranslateMissDropIngress,
    bcmSwitchVlanTranslateMissDropEgress,
    bcmSwitchVlanTranslateHitMark,
    bcmSwitchVlanTranslateKeyPortGroup,   /* 1: port groups, not ports, are the key */
    bcmSwitchVlanTpidCheck,
    bcmSwitchVlanPriorityTaggedAsUntagged,
    bcmSwitchVlanCfiDrop,                 /* 1: frames with the bit set are dropped */
    bcmSwitchVlanCfiAsDei,
    bcmSwitchVlanPrivateEnable,
    bcmSwitchVlanDoubleTagEnable,
    bcmSwitchVlanInnerTagPreserve,
    bcmSwitchVlanSharedForwardingIds,
    bcmSwitchVlanMemberLookupByProfile,
    bcmSwitchVlanStpPerPort,              /* 1: all VLANs of a port share its state */
    bcmSwitchVlanIsolationToCpu,
    bcmSwitchVlanIsolationDrop,
    bcmSwitchVlanCrossConnectEnable,
    bcmSwitchVlanQueueMapEnable,
    bcmSwitchVlanFloodUnicastGroupBase,   /* first group of the floods, then VLAN by VLAN */
    bcmSwitchVlanFloodMulticastGroupBase,
    bcmSwitchVlanFloodBroadcastGroupBase,

    /* Spanning tree. */
    bcmSwitchStpBlockedToCpu,             /* what blocked ports receive */
    bcmSwitchStpHardwareFlush,            /* 1: a blocked port loses its addresses */
    bcmSwitchStpStateDefault,             /* of ports in new groups, as in bcm_stg_stp_set */

    /* Routing. */
    bcmSwitchL3EgressMode,                /* 1: hosts and routes lead to egress objects */
    bcmSwitchL3IngressMode,               /* 1: ingress interfaces are set apart from VLANs */
    bcmSwitchL3RoutingEnable,
    bcmSwitchL3RoutedLearn,               /* 1: routed packets teach their source */
    bcmSwitchL3SourceMacRewrite,
    bcmSwitchL3TtlDecrement,
    bcmSwitchL3TtlPropagate,              /* 1: into the header of a tunnel */
    bcmSwitchL3HostHitEnable,
    bcmSwitchL3RouteHitEnable,
    bcmSwitchL3HostAgeEvent,
    bcmSwitchL3HostAsRoute,               /* 1: hosts without room go to the routes */
    bcmSwitchL3RouteMaxLookups,           /* tables searched for one address */
    bcmSwitchL3RouteScaleAlgorithmic,     /* 1: more routes, slower changes */
    bcmSwitchL3RouteMoveBatch,            /* routes moved at once for a change */
    bcmSwitchL3RouteUrpfSpace,            /* 1: half of the table serves source checks */
    bcmSwitchL3UrpfMode,                  /* 0: off, 1: loose, 2: strict */
    bcmSwitchL3UrpfDefaultRoute,          /* 1: a default route is as good */
    bcmSwitchL3UrpfMultipathLimit,        /* paths that are compared */
    bcmSwitchL3DefaultVrf,                /* of packets that no interface claims */
    bcmSwitchL3VrfGlobalFallback,         /* 1: routes of VRF 0 hold everywhere */
    bcmSwitchL3VrfGlobalFirst,            /* 1: before the routes of the packet's own VRF */
    bcmSwitchL3SlowpathEnable,            /* 1: what the device cannot route goes to the CPU */
    bcmSwitchL3HostSourceLookup,          /* 1: hosts serve source checks */
    bcmSwitchL3MtuByInterface,            /* 0: by VLAN */
    bcmSwitchL3MtuIncludeHeader,
    bcmSwitchL3Ip6PrefixMax,              /* longest prefix held in full */
    bcmSwitchL3Ip6PrefixMapEnable,        /* 1: see bcm_l3_ip6_prefix_map_add */
    bcmSwitchL3NatEnable,
    bcmSwitchL3NatMissToCpu,
    bcmSwitchL3NatHairpinToCpu,           /* between two translated addresses */
    bcmSwitchL3RouterMacPerPort,
    bcmSwitchL3VirtualRouterCheck,        /* 1: VRRP addresses by VLAN */
    bcmSwitchL3NexthopResolveDepth,       /* steps from a route to its port */
    bcmSwitchL3PolicyRouteFirst,          /* 1: field actions before routes */
    bcmSwitchL3DirectedBroadcastRoute,
    bcmSwitchL3DirectedBroadcastToCpu,

    /* Multicast routing. */
    bcmSwitchIpmcEnable,
    bcmSwitchIpmcSourceLookup,            /* 0: by group alone */
    bcmSwitchIpmcVlanLookup,              /* 1: the VLAN is part of the key */
    bcmSwitchIpmcReplicationShared,       /* 1: equal lists are kept once */
    bcmSwitchIpmcReplicationThreshold,    /* copies from which lists are used */
    bcmSwitchIpmcRpfCheck,
    bcmSwitchIpmcRpfFailToCpu,
    bcmSwitchIpmcRpfFailDrop,
    bcmSwitchIpmcHitEnable,
    bcmSwitchIpmcTtlThresholdCheck,
    bcmSwitchIpmcSameVlanPrune,           /* 1: no bridged copy if there is a routed one */
    bcmSwitchIpmcStarGroupFallback,       /* 1: (*,G) if there is no (S,G) */
    bcmSwitchIpmcBidirectional,
    bcmSwitchIpmcL2FallbackOnMiss,
    bcmSwitchIpmcGroupMtu,                /* 1: groups have a limit of their own */
    bcmSwitchIpmcTunnelReplicate,
    bcmSwitchIpmcPortMissToCpu,           /* source on an unexpected port */
    bcmSwitchIpmcReservedRangeForward,    /* 1: 224.0.0.x is routed like others */

    /* Replication. */
    bcmSwitchMulticastIngressReplicationMax, /* copies of a packet */
    bcmSwitchMulticastEgressReplicationMax, /* copies of a packet */
    bcmSwitchMulticastGroupHardwareBase,  /* first group that the device picks itself */
    bcmSwitchMulticastFabricReplication,
    bcmSwitchMulticastDropOnFullQueue,
    bcmSwitchMulticastCounterPerGroup,

    /* MPLS. */
    bcmSwitchMplsEnable,
    bcmSwitchMplsTtlPipe,                 /* 0: uniform model */
    bcmSwitchMplsExpPipe,
    bcmSwitchMplsEntropyEnable,
    bcmSwitchMplsEntropyLabelMin,
    bcmSwitchMplsEntropyLabelMax,
    bcmSwitchMplsEntropyIndicator,        /* label that announces an entropy label */
    bcmSwitchMplsPhpTtlCopy,
    bcmSwitchMplsControlWordSequence,
    bcmSwitchMplsControlWordCheck,
    bcmSwitchMplsPortLabelSpace,          /* 1: labels count per port */
    bcmSwitchMplsLabelRangeStart,         /* of labels that the device picks itself */
    bcmSwitchMplsLabelRangeEnd,
    bcmSwitchMplsStackDepthMax,           /* labels */
    bcmSwitchMplsLookupLabels,            /* labels used in one lookup */
    bcmSwitchMplsExplicitNullKeep,
    bcmSwitchMplsExplicitNullAllow,
    bcmSwitchMplsFlowLabelEnable,
    bcmSwitchMplsGalToOam,
    bcmSwitchMplsPwAchToCpu,              /* control channels of pseudowires */
    bcmSwitchMplsPwCounters,
    bcmSwitchMplsPwSplitHorizon,
    bcmSwitchMplsPwTaggedMode,
    bcmSwitchMplsUpstreamAssigned,        /* 1: labels of the upstream EtherType have a space of their own */
    bcmSwitchMplsProtectionSwitchover,
    bcmSwitchMplsExpMapPerTunnel,
    bcmSwitchMplsIp6ExplicitNull,
    bcmSwitchMplsSegmentRoutingDepth,     /* labels pushed at once */
    bcmSwitchMplsTunnelMtuCheck,
    bcmSwitchMplsSwapHitMark,
    bcmSwitchMplsEtherTypeDefault,        /* 0x8847 */
    bcmSwitchMplsEtherTypeUpstream,       /* 0x8848 */

    /* Tunnels over IP. */
    bcmSwitchTunnelIp4Enable,
    bcmSwitchTunnelIp6Enable,
    bcmSwitchTunnelIp6To4Enable,
    bcmSwitchTunnelIsatapEnable,
    bcmSwitchTunnelGreEnable,
    bcmSwitchTunnelAutoEnable,
    bcmSwitchTunnelIp6To4PrefixCheck,
    bcmSwitchTunnelSourceLookup,          /* 1: the source is part of the key */
    bcmSwitchTunnelKeyIncludesVrf,
    bcmSwitchTunnelTtlCopy,
    bcmSwitchTunnelDscpCopy,
    bcmSwitchTunnelEcnCopy,
    bcmSwitchTunnelChecksumUdpZero,
    bcmSwitchTunnelChecksumGre,
    bcmSwitchTunnelFragmentIdMode,        /* 0: constant, 1: counts, 2: random */
    bcmSwitchTunnelDontFragment,          /* 0: clear, 1: set, 2: as the packet's */
    bcmSwitchTunnelUdpSourcePortEntropy,
    bcmSwitchTunnelUdpSourcePortBase,     /* lowest port */
    bcmSwitchTunnelTerminationHitMark,
    bcmSwitchTunnelMulticastTermination,

    /* Virtual networks. */
    bcmSwitchVxlanEnable,
    bcmSwitchVxlanUdpDestPort,            /* 4789 */
    bcmSwitchVxlanUdpSourceHash,
    bcmSwitchVxlanVnIdLookupByPort,
    bcmSwitchVxlanSplitHorizon,
    bcmSwitchVxlanReservedBitsCheck,
    bcmSwitchVxlanRoutingEnable,          /* 1: inner packets are routed in one pass */
    bcmSwitchVxlanGroupPolicyTag,
    bcmSwitchVxlanGpeUdpDestPort,         /* 4790 */
    bcmSwitchL2GreEnable,
    bcmSwitchL2GreVpnIdShift,             /* bits of the key below the network id */
    bcmSwitchL2GreVpnIdLength,            /* bits */
    bcmSwitchL2GreSplitHorizon,
    bcmSwitchNvgreFlowIdHash,             /* 1: the flow id is part of hashes */
    bcmSwitchGeneveEnable,
    bcmSwitchGeneveUdpDestPort,           /* 6081 */
    bcmSwitchGeneveOptionSkip,
    bcmSwitchGtpEnable,
    bcmSwitchGtpUdpDestPort,              /* 2152 */
    bcmSwitchMimEnable,
    bcmSwitchMimBackboneTpid,             /* 0x88a8 */
    bcmSwitchMimServiceTpid,              /* 0x88e7 */
    bcmSwitchMimLearnFromBackbone,
    bcmSwitchMimMissToCpu,
    bcmSwitchTrillEnable,
    bcmSwitchTrillEtherType,              /* 0x22f3 */
    bcmSwitchTrillTtlErrToCpu,
    bcmSwitchTrillRpfFailToCpu,
    bcmSwitchTrillUnknownRbridgeToCpu,
    bcmSwitchTrillAdjacencyFailDrop,
    bcmSwitchTrillDesignatedVlan,         /* VLAN id */
    bcmSwitchNivEnable,
    bcmSwitchNivEtherType,                /* 0x8926 */
    bcmSwitchNivRpfFailToCpu,
    bcmSwitchNivUplinkPruneMode,          /* 1: no flood back to the uplink it came from */
    bcmSwitchEtagEtherType,               /* 0x893f */
    bcmSwitchEtagEnable,
    bcmSwitchEtagPriorityCopy,
    bcmSwitchFcoeEnable,
    bcmSwitchFcoeRoutingEnable,
    bcmSwitchFcoeEtherType,               /* 0x8906 */
    bcmSwitchFcoeSourceCheckDrop,
    bcmSwitchFcoeZoneCheck,
    bcmSwitchFcoeZoneMissToCpu,
    bcmSwitchWlanEnable,
    bcmSwitchWlanRoamPortErrToCpu,
    bcmSwitchWlanCapwapUdpPort,           /* 5247 */
    bcmSwitchSubportEnable,
    bcmSwitchSubportTagEtherType,         /* EtherType of tags that say the subport */
    bcmSwitchSubportLinkPhyEnable,

    /* Load balancing over paths of a route. */
    bcmSwitchEcmpLevels,                  /* 1 or 2 */
    bcmSwitchEcmpGroupSizeMax,            /* paths */
    bcmSwitchEcmpMemberWeights,
    bcmSwitchEcmpEqualSpread,             /* 1: random fill so that shares are exact */
    bcmSwitchEcmpDeadPathFailover,
    bcmSwitchEcmpLinkDownShrink,
    bcmSwitchEcmpResilientEnable,
    bcmSwitchEcmpResilientSeed,
    bcmSwitchEcmpResilientTableSize,      /* flows that are told apart */
    bcmSwitchEcmpDynamicEnable,
    bcmSwitchEcmpDynamicSampleRate,       /* load measurements per second */
    bcmSwitchEcmpDynamicPortLoadWeight,   /* percent */
    bcmSwitchEcmpDynamicQueueLoadWeight,  /* percent */
    bcmSwitchEcmpDynamicPortLoadMax,      /* kbit/s that stand for full load */
    bcmSwitchEcmpDynamicPortLoadMin,      /* kbit/s that stand for none */
    bcmSwitchEcmpDynamicQueueSizeMax,     /* bytes that stand for a full queue */
    bcmSwitchEcmpDynamicQueueSizeMin,     /* bytes that stand for an empty one */
    bcmSwitchEcmpDynamicFlowletAge,       /* microseconds */
    bcmSwitchEcmpDynamicRandomSeed,
    bcmSwitchEcmpDynamicFlowTableSize,    /* flows that are told apart */
    bcmSwitchEcmpRoundRobinEnable,
    bcmSwitchEcmpRandomEnable,
    bcmSwitchEcmpMonitorWindow,           /* microseconds of a monitor's average */
    bcmSwitchEcmpMonitorImbalanceEvent,   /* percent */

    /* Trunks. */
    bcmSwitchTrunkGroupSizeMax,           /* members */
    bcmSwitchTrunkFailoverEnable,
    bcmSwitchTrunkLinkDownShrink,
    bcmSwitchTrunkUnknownUcastSpread,     /* 1: over all members, 0: through one */
    bcmSwitchTrunkMulticastSpread,        /* likewise */
    bcmSwitchTrunkBroadcastSpread,        /* likewise */
    bcmSwitchTrunkIpMulticastHash,
    bcmSwitchTrunkResilientEnable,
    bcmSwitchTrunkResilientSeed,
    bcmSwitchTrunkResilientTableSize,     /* flows that are told apart */
    bcmSwitchTrunkDynamicEnable,
    bcmSwitchTrunkDynamicSampleRate,      /* load measurements per second */
    bcmSwitchTrunkDynamicPortLoadWeight,  /* percent */
    bcmSwitchTrunkDynamicQueueLoadWeight, /* percent */
    bcmSwitchTrunkDynamicFlowletAge,      /* microseconds */
    bcmSwitchTrunkDynamicFlowTableSize,   /* flows that are told apart */
    bcmSwitchTrunkMemberHitlessChange,
    bcmSwitchTrunkLocalPreference,        /* 1: own members before those of other units */

    /* Links between devices. */
    bcmSwitchFabricTrunkEnable,
    bcmSwitchFabricTrunkDynamicEnable,
    bcmSwitchFabricTrunkDynamicSampleRate, /* load measurements per second */
    bcmSwitchFabricTrunkFailoverEnable,
    bcmSwitchFabricTrunkResilientEnable,
    bcmSwitchFabricTrunkMulticastSpread,  /* 1: over all members, 0: through one */
    bcmSwitchFabricLinkKeepaliveInterval, /* microseconds */
    bcmSwitchFabricLinkKeepaliveLoss,     /* missed ones until the link is down */
    bcmSwitchStackHeaderVersion,          /* 1 or 2 */
    bcmSwitchStackHeaderCheck,
    bcmSwitchStackModuleIds,              /* how many this unit takes */
    bcmSwitchStackModuleIdBase,           /* the first of them */
    bcmSwitchStackHopLimit,               /* units */
    bcmSwitchStackLoopDrop,
    bcmSwitchStackSourceModuleLookup,
    bcmSwitchStackUnknownModuleToCpu,
    bcmSwitchStackControlPriority,        /* of packets between CPUs */
    bcmSwitchStackPauseForward,
    bcmSwitchStackVlanFromHeader,         /* 0: from the packet's tag */
    bcmSwitchStackMirrorOverStack,
    bcmSwitchStackRemoteLearn,
    bcmSwitchStackSystemPortLookup,

    /* Mirroring. */
    bcmSwitchMirrorEnable,
    bcmSwitchMirrorIngressFirst,          /* destinations kept for incoming packets */
    bcmSwitchMirrorEgressTrueCopy,        /* 1: as the packet leaves */
    bcmSwitchMirrorUnmodified,
    bcmSwitchMirrorSessionsMax,           /* sessions */
    bcmSwitchMirrorPktTruncateLength,     /* bytes, 0 for whole packets */
    bcmSwitchMirrorMultiDestEnable,
    bcmSwitchMirrorEncapTtlDefault,       /* TTL */
    bcmSwitchMirrorEncapDscpDefault,      /* 0..63 */
    bcmSwitchMirrorEncapSequence,         /* 1: copies are numbered */
    bcmSwitchMirrorDropPrecedence,        /* bcm_color_t */
    bcmSwitchMirrorQueue,                 /* queue of the copies */
    bcmSwitchMirrorProbabilityScale,      /* parts in which probabilities are given */
    bcmSwitchMirrorInvalidVlanDrop,
    bcmSwitchMirrorRemoteTpid,            /* TPID of the tag of remote mirroring */
    bcmSwitchMirrorOnDropEnable,
    bcmSwitchMirrorOnDropAgeInterval,     /* milliseconds between reports of a flow */

    /* Samples of packets. */
    bcmSwitchSampleIngressRandomSeed,     /* seed */
    bcmSwitchSampleEgressRandomSeed,      /* seed */
    bcmSwitchSampleIngressMirror,         /* mirrors with BCM_MIRROR_PORT_SFLOW get them; 1 at first */
    bcmSwitchSampleEgressMirror,
    bcmSwitchSampleIngressToCpu,          /* 1 at first */
    bcmSwitchSampleEgressToCpu,
    bcmSwitchSampleHashBased,
    bcmSwitchSampleHeaderLength,          /* bytes of a packet that the CPU gets, 0 for all */
    bcmSwitchSampleLossyOnly,             /* 1: only those that lossless queues do not hold */

    /* Telemetry within packets. */
    bcmSwitchTelemetryEnable,
    bcmSwitchTelemetryNodeId,             /* what this device writes into packets */
    bcmSwitchTelemetryHopLimit,           /* devices that write into a packet */
    bcmSwitchTelemetryMetadataLength,     /* bytes that each writes */
    bcmSwitchTelemetryProbeMarker,        /* value by which probes are known */
    bcmSwitchTelemetryQueueDepth,
    bcmSwitchTelemetryTimestampFormat,    /* 0: of the network time protocol, 1: of IEEE 1588 */
    bcmSwitchTelemetryLatencyUnit,        /* nanoseconds */
    bcmSwitchTelemetryReportInterval,     /* milliseconds */
    bcmSwitchLatencyMonitorEnable,
    bcmSwitchLatencyMonitorThreshold,     /* nanoseconds */
    bcmSwitchLatencyMonitorMirror,

    /* Flow records. */
    bcmSwitchFlowExportEnable,
    bcmSwitchFlowExportPacketMax,         /* records in a packet */
    bcmSwitchFlowExportRecordAge,         /* seconds */
    bcmSwitchFlowExportIdleAge,           /* seconds */
    bcmSwitchFlowExportUdpPort,           /* UDP port */
    bcmSwitchFlowExportSampling,          /* one packet in so many */

    /* Priorities and colours. */
    bcmSwitchQosTrustDefault,             /* of new ports: 0 none, 1 VLAN, 2 DSCP, 3 both */
    bcmSwitchQosDscpMapPerPort,
    bcmSwitchQosL2RemarkEnable,
    bcmSwitchQosL3RemarkEnable,
    bcmSwitchQosInnerTagRemark,
    bcmSwitchQosUntaggedPriority,         /* 0..7 */
    bcmSwitchQosInternalPriorityMax,      /* the highest priority */
    bcmSwitchQosEcnMarkOnCongestion,
    bcmSwitchQosEcnNonIpAsDrop,           /* 1: what cannot be marked is dropped */
    bcmSwitchQosControlPriority,          /* of the device's own control packets */
    bcmSwitchQosPriorityByField,          /* 1: field actions before maps */
    bcmSwitchColorSelectDei,              /* 0: colours from the CFI map */
    bcmSwitchColorDefault,                /* bcm_color_t */
    bcmSwitchColorCarryOverStack,

    /* Meters. */
    bcmSwitchMeterPacketMode,
    bcmSwitchMeterAdjustInterFrameGap,    /* bytes added to each packet */
    bcmSwitchMeterAdjustPreamble,         /* bytes */
    bcmSwitchMeterAdjustHeader,           /* bytes */
    bcmSwitchMeterRefreshInterval,        /* nanoseconds */
    bcmSwitchMeterGranularity,            /* 0: fine, low rates; 1: coarse, high rates */
    bcmSwitchMeterColorBlindDefault,
    bcmSwitchMeterPoolsSplit,
    bcmSwitchStormControlPacketMode,
    bcmSwitchStormControlIncludeKnownMcast,

    /* Schedulers and shapers. */
    bcmSwitchShaperAdjustInterFrameGap,   /* bytes added to each packet */
    bcmSwitchShaperPacketMode,
    bcmSwitchShaperBucketMax,             /* kbit */
    bcmSwitchShaperRefreshInterval,       /* nanoseconds */
    bcmSwitchSchedulerDefaultMode,        /* 0: strict priority, 1: weights */
    bcmSwitchSchedulerWeightUnit,         /* bytes */
    bcmSwitchSchedulerQuantum,            /* bytes */
    bcmSwitchSchedulerHierarchyLevels,    /* levels */
    bcmSwitchSchedulerPreemptionEnable,

    /* Buffers. */
    bcmSwitchBufferCellSize,              /* bytes, read only */
    bcmSwitchBufferTotalCells,            /* cells, read only */
    bcmSwitchBufferSharedMode,            /* 0: fixed shares, 1: dynamic */
    bcmSwitchBufferSharedLimit,           /* cells */
    bcmSwitchBufferAlphaDefault,          /* share of what is free, as a power of two */
    bcmSwitchBufferReservedPort,          /* cells */
    bcmSwitchBufferReservedQueue,         /* cells */
    bcmSwitchBufferReservedCpu,           /* cells */
    bcmSwitchBufferHeadroomPool,          /* cells */
    bcmSwitchBufferPoolsIngress,          /* pools */
    bcmSwitchBufferPoolsEgress,           /* pools */
    bcmSwitchBufferOversubscribeEnable,
    bcmSwitchBufferCutThroughEnable,
    bcmSwitchBufferCutThroughMinSpeed,    /* Mbit/s of the slower port */
    bcmSwitchBufferYellowLimit,           /* percent of a queue's limit */
    bcmSwitchBufferRedLimit,              /* percent */
    bcmSwitchBufferSnapshotTrigger,       /* cells from which a snapshot is taken */
    bcmSwitchBufferSnapshotInterval,      /* microseconds */
    bcmSwitchBufferPeakClearOnRead,
    bcmSwitchBufferThresholdEvent,
    bcmSwitchBufferLosslessDefault,
    bcmSwitchBufferMulticastLimit,        /* cells */
    bcmSwitchBufferDescriptorLimit,       /* packets */
    bcmSwitchBufferExternalEnable,
    bcmSwitchBufferExternalChannels,      /* channels */
    bcmSwitchBufferExternalRefresh,       /* microseconds */

    /* Flow control. */
    bcmSwitchPauseHonourDefault,
    bcmSwitchPauseSendDefault,
    bcmSwitchPauseQuanta,                 /* units of 512 bits */
    bcmSwitchPauseRefreshInterval,        /* microseconds */
    bcmSwitchPfcEnable,
    bcmSwitchPfcClassQuanta,              /* units of 512 bits */
    bcmSwitchPfcDeadlockDetectTime,       /* milliseconds */
    bcmSwitchPfcDeadlockRecoveryTime,     /* milliseconds */
    bcmSwitchPfcDeadlockAction,           /* 0: transmit, 1: drop */
    bcmSwitchPfcDeadlockEvent,
    bcmSwitchCongestionNotifyEnable,
    bcmSwitchCongestionNotifyEtherType,   /* EtherType */
    bcmSwitchCongestionNotifyInterval,    /* microseconds */
    bcmSwitchCongestionPointIdBase,       /* id of the first queue */

    /* Field processor. */
    bcmSwitchFieldStages,                 /* stages, read only */
    bcmSwitchFieldMultipipe,              /* 1: each pipe has rules of its own */
    bcmSwitchFieldSliceRebalance,
    bcmSwitchFieldRuleHitMark,            /* 1: entries remember that they matched */
    bcmSwitchFieldPresel,                 /* 1: groups choose the packets that they look at */
    bcmSwitchFieldStackPortLookup,
    bcmSwitchFieldCpuPortLookup,
    bcmSwitchFieldEgressAllPorts,
    bcmSwitchFieldIntraSliceDoubleWide,
    bcmSwitchFieldKeyCompression,         /* 1: addresses in keys are mapped to shorter values */
    bcmSwitchFieldRangeCheckers,          /* checkers kept for rules */
    bcmSwitchFieldUdfBytes,               /* user-defined bytes of a key */
    bcmSwitchFieldExactMatchEnable,
    bcmSwitchFieldExactMatchAge,          /* seconds */
    bcmSwitchFieldExactMatchOverflow,
    bcmSwitchFieldAtomicUpdate,
    bcmSwitchFieldActionConflictEvent,
    bcmSwitchFieldStatHardwareAttach,
    bcmSwitchFieldSourceClassMode,
    bcmSwitchFieldPriorityMoveBatch,      /* entries moved at once for a change */

    /* Counters. */
    bcmSwitchCounterCollectEnable,
    bcmSwitchCounterCollectInterval,      /* microseconds */
    bcmSwitchCounterCollectDma,
    bcmSwitchCounterClearOnRead,
    bcmSwitchCounterSaturate,             /* 0: counters start again at 0 */
    bcmSwitchCounterIncludeCrc,
    bcmSwitchCounterIncludeStackHeader,
    bcmSwitchCounterIncludeVlanTag,
    bcmSwitchCounterJumboSize,            /* bytes from which a packet counts as oversize */
    bcmSwitchCounterFlexPoolsIngress,     /* pools */
    bcmSwitchCounterFlexPoolsEgress,      /* pools */
    bcmSwitchCounterFlexEvictEnable,
    bcmSwitchCounterFlexEvictThreshold,   /* count at which a counter is moved to memory */
    bcmSwitchCounterDropReasonGroups,     /* groups */
    bcmSwitchCounterRateWindow,           /* milliseconds */
    bcmSwitchCounterSnapshotEnable,
    bcmSwitchCounterStpDropSeparate,
    bcmSwitchCounterL3DropSeparate,

    /* Operation and maintenance of paths. */
    bcmSwitchOamEnable,
    bcmSwitchOamVersion,                  /* 0: of 2007, 1: of 2011 */
    bcmSwitchOamCcmEtherType,             /* 0x8902 */
    bcmSwitchOamCcmInterval,              /* base unit in microseconds */
    bcmSwitchOamCcmToCpuFirst,
    bcmSwitchOamCcmLossThreshold,         /* missed messages until a fault */
    bcmSwitchOamHeaderErrorToCpu,
    bcmSwitchOamUnknownEndpointToCpu,
    bcmSwitchOamUnknownVersionToCpu,
    bcmSwitchOamLowerLevelToCpu,
    bcmSwitchOamLowerLevelDrop,
    bcmSwitchOamSlowPathOffload,
    bcmSwitchOamFaultEvent,
    bcmSwitchOamRdiReflect,
    bcmSwitchOamLossMeasureIncludeDrops,
    bcmSwitchOamDelayTimestampFormat,     /* 0: of the network time protocol, 1: of IEEE 1588 */
    bcmSwitchOamProtectionEvent,
    bcmSwitchBfdEnable,
    bcmSwitchBfdUdpDestPort,              /* 3784 */
    bcmSwitchBfdMultihopUdpDestPort,      /* 4784 */
    bcmSwitchBfdMicroUdpDestPort,         /* 6784 */
    bcmSwitchBfdEchoEnable,
    bcmSwitchBfdDetectMultiplierMin,      /* packets */
    bcmSwitchBfdTtlCheck,
    bcmSwitchBfdDiscriminatorCheck,
    bcmSwitchBfdAuthenticate,
    bcmSwitchBfdEncapTtl,                 /* TTL */
    bcmSwitchApsSwitchoverHardware,
    bcmSwitchApsWaitToRestore,            /* milliseconds */
    bcmSwitchApsGroupFailover,

    /* Time. */
    bcmSwitchTimesyncEnable,
    bcmSwitchTimesyncTimestampFormat,     /* 0: 32 bits, 1: 48 bits */
    bcmSwitchTimesyncOneStep,
    bcmSwitchTimesyncTransparentClock,
    bcmSwitchTimesyncEtherType,           /* 0x88f7 */
    bcmSwitchTimesyncUdpEventPort,        /* 319 */
    bcmSwitchTimesyncUdpGeneralPort,      /* 320 */
    bcmSwitchTimesyncPathDelay,           /* nanoseconds */
    bcmSwitchTimesyncCorrectionSign,      /* 1: corrections may be negative */
    bcmSwitchTimesyncIngressLatency,      /* nanoseconds */
    bcmSwitchTimesyncEgressLatency,       /* nanoseconds */
    bcmSwitchTimesyncDomain,              /* number of the clock domain */
    bcmSwitchTimesyncSourceMac,           /* 1: that of the port, 0: that of the device */
    bcmSwitchTimesyncCounterWidth,        /* bits */
    bcmSwitchTimesyncMplsEncap,
    bcmSwitchTimesyncMessageBitmap,       /* bit per message type that is stamped */
    bcmSwitchClockReference,              /* 0: own crystal, 1: external, 2: recovered */
    bcmSwitchClockRecoveredPort,          /* port */
    bcmSwitchClockRecoveredBackupPort,    /* port */
    bcmSwitchClockRecoveredSquelch,       /* 1: silent while the link is down */
    bcmSwitchClockFrequencyAdjust,        /* parts in 10^12 */
    bcmSwitchClockFrameSyncPeriod,        /* microseconds */

    /* Links and ports in general. */
    bcmSwitchLinkFlapDamp,                /* changes in the window from which a port stays down, 0: off */
    bcmSwitchLinkFlapWindow,              /* seconds */
    bcmSwitchLinkDownInform,
    bcmSwitchLinkDownFlushAddresses,
    bcmSwitchLinkDownFlushQueues,
    bcmSwitchLinkFaultLocalDetect,
    bcmSwitchLinkFaultRemoteDetect,
    bcmSwitchLinkSoftwareFailover,
    bcmSwitchPortMtuDefault,              /* bytes */
    bcmSwitchPortLearnDefault,
    bcmSwitchPortAutonegDefault,
    bcmSwitchPortInterFrameGapDefault,    /* bits */
    bcmSwitchPortFecDefault,              /* 1: forward error correction */
    bcmSwitchPortEeeWakeTime,             /* nanoseconds */
    bcmSwitchPortEeeIdleTime,             /* microseconds */
    bcmSwitchPortCrcErrorForward,
    bcmSwitchPortRuntSize,                /* bytes */
    bcmSwitchPortUnusedPowerDown,
    bcmSwitchPortGroupSpeedMixed,

    /* Processor interface. */
    bcmSwitchDmaTableReadEnable,
    bcmSwitchDmaTableWriteEnable,
    bcmSwitchDmaTableBatch,               /* entries of one transfer */
    bcmSwitchDmaTimeout,                  /* microseconds */
    bcmSwitchDmaPollInterval,             /* microseconds */
    bcmSwitchBusTimeout,                  /* microseconds */
    bcmSwitchBusErrorEvent,
    bcmSwitchInterruptEnable,
    bcmSwitchInterruptModeMsi,
    bcmSwitchInterruptPollInterval,       /* microseconds */
    bcmSwitchInterruptHoldoff,            /* microseconds */
    bcmSwitchInterruptStormLimit,         /* interrupts in a second */
    bcmSwitchMdioClock,                   /* kHz */
    bcmSwitchMdioTimeout,                 /* microseconds */
    bcmSwitchMdioExternalMaster,
    bcmSwitchMdioScanPorts,
    bcmSwitchI2cClock,                    /* kHz */
    bcmSwitchTableCacheEnable,            /* 1: reads come from a copy in memory */
    bcmSwitchTableCacheVerify,            /* 1: the copy is compared on every write */
    bcmSwitchTableInsertRetry,            /* tries */
    bcmSwitchTableLockTimeout,            /* microseconds */
    bcmSwitchEmbeddedCoreEnable,
    bcmSwitchEmbeddedCoreFirmwareVersion, /* read only */

    /* Received and sent packets. */
    bcmSwitchPacketDmaChannelsRx,         /* bit per channel */
    bcmSwitchPacketDmaChannelsTx,         /* bit per channel */
    bcmSwitchPacketBufferSize,            /* bytes */
    bcmSwitchPacketMetadataLength,        /* bytes, read only */
    bcmSwitchPacketTxCrcReplace,
    bcmSwitchPacketTxPad,
    bcmSwitchPacketTxTimeout,             /* microseconds */
    bcmSwitchPacketRxCrcStrip,
    bcmSwitchPacketSourceModuleFromCpu,

    /* Errors in memories. */
    bcmSwitchMemScanEnable,
    bcmSwitchMemScanInterval,             /* microseconds, 0: as with MemScanEnable 0 */
    bcmSwitchMemScanEntriesPerPass,       /* entries */
    bcmSwitchMemScanCorrect,
    bcmSwitchMemEccEnable,
    bcmSwitchMemEccSingleBitEvent,
    bcmSwitchMemParityEnable,
    bcmSwitchMemParityCorrect,
    bcmSwitchMemParityLog,
    bcmSwitchMemParityEventLimit,         /* events in a second */
    bcmSwitchMemParityForceHit,           /* 1: a damaged entry matches */
    bcmSwitchMemTcamScanEnable,
    bcmSwitchMemTcamScanInterval,         /* microseconds */
    bcmSwitchMemTcamCorrect,
    bcmSwitchMemCorrectFromCache,
    bcmSwitchMemCorrectTimeout,           /* microseconds */
    bcmSwitchMemErrorInjection,           /* 1: errors may be put in for tests */
    bcmSwitchMemErrorFatalReset,
    bcmSwitchMemErrorInterruptMask,       /* bit per kind of error */
    bcmSwitchMemBufferErrorDrop,
    bcmSwitchMemLowPowerEnable,

    /* Restart with the network running. */
    bcmSwitchWarmBootSupport,             /* 1: bcm_detach keeps the state for the next bcm_attach */
    bcmSwitchWarmBootAutosync,            /* 1: every call is followed by a sync */
    bcmSwitchWarmBootSyncInterval,        /* milliseconds */
    bcmSwitchWarmBootSync,                /* any value: write the state now */
    bcmSwitchWarmBootVerify,
    bcmSwitchWarmBootCompress,
    bcmSwitchWarmBootEventQuiet,          /* 1: no events until recovery is done */
    bcmSwitchWarmBootFormatVersion,       /* version */
    bcmSwitchWarmBootStoreSize,           /* bytes */
    bcmSwitchStandbyMode,                 /* 1: changes nothing in the device */
    bcmSwitchStandbyTakeover,             /* any value: the standby becomes active */

    /* Power, temperature, lamps and pins. */
    bcmSwitchPowerSaveEnable,
    bcmSwitchPowerSaveIdleLanes,
    bcmSwitchPowerSaveTcamBlocks,
    bcmSwitchVoltageScaling,              /* 0: fixed, 1: as the device asks for */
    bcmSwitchCoreClock,                   /* kHz */
    bcmSwitchCoreTemperature,             /* tenths of a degree, read only */
    bcmSwitchTemperatureWarn,             /* tenths of a degree */
    bcmSwitchTemperatureShutdown,         /* tenths of a degree */
    bcmSwitchTemperatureInterval,         /* milliseconds */
    bcmSwitchTemperatureHysteresis,       /* tenths of a degree */
    bcmSwitchLedProcessorEnable,
    bcmSwitchLedProgram,                  /* number of the built-in program */
    bcmSwitchLedRefreshInterval,          /* milliseconds */
    bcmSwitchGpioInterruptPins,           /* bit per pin */
    bcmSwitchGpioDebounce,                /* microseconds */
    bcmSwitchWatchdogEnable,
    bcmSwitchWatchdogTimeout,             /* milliseconds */

    /* Diagnosis. */
    bcmSwitchDiagSelfTestOnInit,
    bcmSwitchDiagTraceBuffer,             /* lines */
    bcmSwitchDiagTraceToLog,
    bcmSwitchDiagVisibilityEnable,
    bcmSwitchDiagVisibilityDropReasons,   /* bit per reason */
    bcmSwitchDiagDropCaptureEnable,
    bcmSwitchDiagRegisterLog,
    bcmSwitchDiagAccessCheck,

    /* Modes of the device. */
    bcmSwitchModeStoreForward,
    bcmSwitchModePipelineBypass,
    bcmSwitchModeOversubscribed,
    bcmSwitchModeLowLatency,              /* 1: layer 2 alone */
    bcmSwitchModeExternalLookup,
    bcmSwitchModeFabricAttached,
    bcmSwitchModeTableProfile,            /* number of the profile of shared tables */

    /* Hashing, in general. */
    bcmSwitchHashControl,                 /* BCM_HASH_CONTROL_* */
    bcmSwitchHashSeed0,                   /* of the first hash */
    bcmSwitchHashSeed1,                   /* of the second */
    bcmSwitchHashFunction0,               /* bcm_switch_hash_function_t */
    bcmSwitchHashFunction0Secondary,      /* of the upper half of its result */
    bcmSwitchHashFunction1,
    bcmSwitchHashFunction1Secondary,      /* likewise */
    bcmSwitchHashPreProcessEnable0,       /* 1: fields are stirred before they are hashed */
    bcmSwitchHashPreProcessEnable1,
    bcmSwitchHashXorFold,                 /* 1: 32 bits are folded to 16 */
    bcmSwitchHashSymmetricEnable,         /* 1: both directions of a flow have equal hashes */
    bcmSwitchHashSymmetricIp4,
    bcmSwitchHashSymmetricIp6,
    bcmSwitchHashSymmetricFcoe,
    bcmSwitchHashSymmetricL4Ports,
    bcmSwitchHashMacroFlowEnable,         /* 1: functions change from flow to flow */
    bcmSwitchHashMacroFlowMinIndex,
    bcmSwitchHashMacroFlowMaxIndex,
    bcmSwitchHashMacroFlowConcat,         /* 1: two functions make one result */
    bcmSwitchHashMacroFlowSeed,           /* seed */
    bcmSwitchHashMacroFlowRotate,         /* 1: the result is turned by the choice too */
    bcmSwitchHashMultiModuleRotation,     /* so that devices in a row differ */
    bcmSwitchHashNodeId,                  /* number of this device among those in a row */
    bcmSwitchHashTrunkAsPort,             /* 1: ports of a trunk count as one port */
    bcmSwitchHashUdfEnable,               /* 1: user-defined bytes count as BCM_HASH_FIELD_UDF */
    bcmSwitchHashUserFields0,             /* value that is hashed along */
    bcmSwitchHashUserFields1,             /* likewise */
    bcmSwitchHashL4PortRanges,            /* 1: ranges of L4 ports in place of ports */
    bcmSwitchHashEntropySource,           /* which hash makes entropy labels */
    bcmSwitchHashUserWord0,               /* fields of the first user-defined word, BCM_HASH_FIELD_* */
    bcmSwitchHashUserWord1,               /* fields of the second */
    bcmSwitchHashIngressEnable,           /* 0: fields are those of the headers that leave */
    bcmSwitchHashTimestampInclude,
    bcmSwitchHashSourcePortInclude,
    bcmSwitchHashSourceModuleInclude,
    bcmSwitchHashVlanInclude,
    bcmSwitchHashInnerVlanInclude,

    /* Fields that are hashed, BCM_HASH_FIELD_* of the first and the second hash, by packet. */
    bcmSwitchHashL2Fields0,
    bcmSwitchHashL2Fields1,
    bcmSwitchHashIp4Fields0,
    bcmSwitchHashIp4Fields1,
    bcmSwitchHashIp4TcpUdpFields0,
    bcmSwitchHashIp4TcpUdpFields1,
    bcmSwitchHashIp4PortsEqualFields0,
    bcmSwitchHashIp4PortsEqualFields1,
    bcmSwitchHashIp4FragmentFields0,
    bcmSwitchHashIp4FragmentFields1,
    bcmSwitchHashIp6Fields0,
    bcmSwitchHashIp6Fields1,
    bcmSwitchHashIp6TcpUdpFields0,
    bcmSwitchHashIp6TcpUdpFields1,
    bcmSwitchHashIp6PortsEqualFields0,
    bcmSwitchHashIp6PortsEqualFields1,
    bcmSwitchHashIp6ExtensionFields0,
    bcmSwitchHashIp6ExtensionFields1,
    bcmSwitchHashMplsTunnelFields0,
    bcmSwitchHashMplsTunnelFields1,
    bcmSwitchHashMplsTerminationFields0,
    bcmSwitchHashMplsTerminationFields1,
    bcmSwitchHashMimFields0,
    bcmSwitchHashMimFields1,
    bcmSwitchHashMimTunnelFields0,
    bcmSwitchHashMimTunnelFields1,
    bcmSwitchHashTrillFields0,
    bcmSwitchHashTrillFields1,
    bcmSwitchHashTrillTunnelFields0,
    bcmSwitchHashTrillTunnelFields1,
    bcmSwitchHashFcoeFields0,
    bcmSwitchHashFcoeFields1,
    bcmSwitchHashStackProxyFields0,
    bcmSwitchHashStackProxyFields1,
    bcmSwitchHashTunnelIp4InIp4Fields0,
    bcmSwitchHashTunnelIp4InIp4Fields1,
    bcmSwitchHashTunnelIp6InIp6Fields0,
    bcmSwitchHashTunnelIp6InIp6Fields1,
    bcmSwitchHashVxlanInnerFields0,
    bcmSwitchHashVxlanInnerFields1,
    bcmSwitchHashL2GreInnerFields0,
    bcmSwitchHashL2GreInnerFields1,
    bcmSwitchHashGtpInnerFields0,
    bcmSwitchHashGtpInnerFields1,
    bcmSwitchHashRoceFields0,
    bcmSwitchHashRoceFields1,

    /* Which header the fields come from: 1 for the inner one. */
    bcmSwitchHashSelectInnerIpInIp,
    bcmSwitchHashSelectInnerGre,
    bcmSwitchHashSelectInnerMpls,
    bcmSwitchHashSelectInnerMim,
    bcmSwitchHashSelectInnerTrill,
    bcmSwitchHashSelectInnerVxlan,
    bcmSwitchHashSelectInnerL2Gre,

    /* IPv6. */
    bcmSwitchHashIp6AddressCollapse,      /* addresses to 32 bits: 0 by exclusive or, 1 the low ones */
    bcmSwitchHashIp6FlowLabelUse,         /* 1: in place of the L4 ports */

    /* What a hash chooses: which of the two (Use), 0 or 1, and from which bit of it (Offset), 0..63. */
    bcmSwitchHashUseEcmp,
    bcmSwitchHashOffsetEcmp,
    bcmSwitchHashUseEcmpUnderlay,
    bcmSwitchHashOffsetEcmpUnderlay,
    bcmSwitchHashUseTrunkUcast,
    bcmSwitchHashOffsetTrunkUcast,
    bcmSwitchHashUseTrunkNonUcast,
    bcmSwitchHashOffsetTrunkNonUcast,
    bcmSwitchHashUseFabricTrunkUcast,
    bcmSwitchHashOffsetFabricTrunkUcast,
    bcmSwitchHashUseFabricTrunkNonUcast,
    bcmSwitchHashOffsetFabricTrunkNonUcast,
    bcmSwitchHashUseFailover,
    bcmSwitchHashOffsetFailover,
    bcmSwitchHashUseEntropyLabel,
    bcmSwitchHashOffsetEntropyLabel,
    bcmSwitchHashUseTunnelEntropy,
    bcmSwitchHashOffsetTunnelEntropy,
    bcmSwitchHashUseDynamicFlowSet,
    bcmSwitchHashOffsetDynamicFlowSet,
    bcmSwitchHashUsePlacement,
    bcmSwitchHashOffsetPlacement,
    bcmSwitchHashUseSampling,
    bcmSwitchHashOffsetSampling,

    /* Hashes of tables, BCM_HASH_ZERO and following. */
    bcmSwitchHashL2Table,
    bcmSwitchHashL2TableOverflow,
    bcmSwitchHashL3Table,
    bcmSwitchHashL3TableOverflow,
    bcmSwitchHashVlanTranslateTable,
    bcmSwitchHashMplsTable,
    bcmSwitchHashEgressTranslateTable,
    bcmSwitchHashExactMatchTable,
    bcmSwitchHashWlanClientTable,
    bcmSwitchHashMulticastTable
} bcm_switch_control_t;

#endif
