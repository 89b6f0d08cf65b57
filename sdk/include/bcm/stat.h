/*
 * Statistics: the counters of ports, flexible counters that are attached to forwarding objects, and the
 * counter engines behind them.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT
 * and BCM_E_PARAM (null pointer, selector out of range, unknown flag combination). A 32-bit
 * getter returns the low half of what the 64-bit one does. Arrays are the caller's; a count argument says
 * how many elements they have.
 */
#ifndef BCM_STAT_H
#define BCM_STAT_H

#include <bcm/error.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_stat_group_mode_id_create, bcm_stat_group_mode_id_config_t and bcm_stat_group_mode_hint_t. */
#define BCM_STAT_GROUP_MODE_INGRESS 0x00000001
#define BCM_STAT_GROUP_MODE_EGRESS 0x00000002
#define BCM_STAT_GROUP_MODE_WITH_ID 0x00000004     /* *mode_id is the id to use */
#define BCM_STAT_GROUP_MODE_PACKETS_ONLY 0x00000008

/* flags of bcm_stat_threshold_t. */
#define BCM_STAT_THRESHOLD_EVENT 0x00000001        /* raise an event when the threshold is crossed */
#define BCM_STAT_THRESHOLD_CLEAR_ON_READ 0x00000002

/* flags of the counter functions. */
#define BCM_STAT_COUNTER_CLEAR_ON_READ 0x00000001
#define BCM_STAT_COUNTER_BACKGROUND 0x00000002     /* read what the background thread collected */
#define BCM_STAT_COUNTER_NO_WRAP 0x00000004        /* stay at the greatest value */
#define BCM_STAT_COUNTER_REPLACE 0x00000008

/* flags of the LIF counting functions: which of the two directions, or both. */
#define BCM_STAT_LIF_COUNTING_INGRESS 0x00000001
#define BCM_STAT_LIF_COUNTING_EGRESS 0x00000002

#define BCM_STAT_COUNTER_SET_ENTRY_MAX 4           /* packet properties that choose a counter of a set */
#define BCM_STAT_COUNTER_SET_SIZE_MAX 64           /* mapped combinations of them */

/* Counters of a port. */
typedef enum bcm_stat_val_e {
    /* Interfaces group (RFC 1213). */
    snmpIfInOctets = 0,
    snmpIfInUcastPkts,
    snmpIfInNUcastPkts,
    snmpIfInDiscards,
    snmpIfInErrors,
    snmpIfInUnknownProtos,
    snmpIfOutOctets,
    snmpIfOutUcastPkts,
    snmpIfOutNUcastPkts,
    snmpIfOutDiscards,
    snmpIfOutErrors,
    snmpIfOutQLen,

    /* Internet protocol group (RFC 1213). */
    snmpIpInReceives,
    snmpIpInHdrErrors,
    snmpIpForwDatagrams,
    snmpIpInDiscards,
    snmpIpInAddrErrors,
    snmpIpOutNoRoutes,

    /* Bridges (RFC 1493). */
    snmpDot1dBasePortDelayExceededDiscards,
    snmpDot1dBasePortMtuExceededDiscards,
    snmpDot1dTpPortInFrames,
    snmpDot1dTpPortOutFrames,
    snmpDot1dTpPortInDiscards,

    /* Bridges, counters of 64 bits (RFC 2674). */
    snmpDot1dTpHCPortInFrames,
    snmpDot1dTpHCPortOutFrames,
    snmpDot1dTpHCPortInDiscards,

    /* Remote monitoring (RFC 1757). */
    snmpEtherStatsDropEvents,
    snmpEtherStatsMulticastPkts,
    snmpEtherStatsBroadcastPkts,
    snmpEtherStatsUndersizePkts,
    snmpEtherStatsFragments,
    snmpEtherStatsPkts64Octets,
    snmpEtherStatsPkts65to127Octets,
    snmpEtherStatsPkts128to255Octets,
    snmpEtherStatsPkts256to511Octets,
    snmpEtherStatsPkts512to1023Octets,
    snmpEtherStatsPkts1024to1518Octets,
    snmpEtherStatsOversizePkts,
    snmpEtherStatsJabbers,
    snmpEtherStatsOctets,
    snmpEtherStatsPkts,
    snmpEtherStatsCollisions,
    snmpEtherStatsCRCAlignErrors,
    snmpEtherStatsTXNoErrors,
    snmpEtherStatsRXNoErrors,

    /* Ethernet-like interfaces (RFC 2665). */
    snmpDot3StatsAlignmentErrors,
    snmpDot3StatsFCSErrors,
    snmpDot3StatsSingleCollisionFrames,
    snmpDot3StatsMultipleCollisionFrames,
    snmpDot3StatsSQETestErrors,
    snmpDot3StatsDeferredTransmissions,
    snmpDot3StatsLateCollisions,
    snmpDot3StatsExcessiveCollisions,
    snmpDot3StatsInternalMacTransmitErrors,
    snmpDot3StatsCarrierSenseErrors,
    snmpDot3StatsFrameTooLongs,
    snmpDot3StatsInternalMacReceiveErrors,
    snmpDot3StatsSymbolErrors,
    snmpDot3ControlInUnknownOpcodes,
    snmpDot3InPauseFrames,
    snmpDot3OutPauseFrames,

    /* Interfaces group extensions (RFC 2233). */
    snmpIfInBroadcastPkts,
    snmpIfInMulticastPkts,
    snmpIfOutBroadcastPkts,
    snmpIfOutMulticastPkts,
    snmpIfHCInOctets,
    snmpIfHCInUcastPkts,
    snmpIfHCInMulticastPkts,
    snmpIfHCInBroadcastPkts,
    snmpIfHCOutOctets,
    snmpIfHCOutUcastPkts,
    snmpIfHCOutMulticastPkts,
    snmpIfHCOutBroadcastPkts,

    /* IPv6 interfaces (RFC 2465). */
    snmpIpv6IfStatsInReceives,
    snmpIpv6IfStatsInHdrErrors,
    snmpIpv6IfStatsInTooBigErrors,
    snmpIpv6IfStatsInNoRoutes,
    snmpIpv6IfStatsInAddrErrors,
    snmpIpv6IfStatsInUnknownProtos,
    snmpIpv6IfStatsInTruncatedPkts,
    snmpIpv6IfStatsInDiscards,
    snmpIpv6IfStatsInDelivers,
    snmpIpv6IfStatsInMcastPkts,
    snmpIpv6IfStatsOutForwDatagrams,
    snmpIpv6IfStatsOutRequests,
    snmpIpv6IfStatsOutDiscards,
    snmpIpv6IfStatsOutMcastPkts,
    snmpIpv6IfStatsOutFragOKs,
    snmpIpv6IfStatsOutFragFails,
    snmpIpv6IfStatsOutFragCreates,
    snmpIpv6IfStatsReasmReqds,
    snmpIpv6IfStatsReasmOKs,
    snmpIpv6IfStatsReasmFails,

    /* Priority flow control (IEEE 802.1Qbb). */
    snmpIeee8021PfcRequests,
    snmpIeee8021PfcIndications,

    /* Packets received, by length. */
    snmpBcmReceivedPkts64Octets,
    snmpBcmReceivedPkts65to127Octets,
    snmpBcmReceivedPkts128to255Octets,
    snmpBcmReceivedPkts256to511Octets,
    snmpBcmReceivedPkts512to1023Octets,
    snmpBcmReceivedPkts1024to1518Octets,
    snmpBcmReceivedPkts1519to2047Octets,
    snmpBcmReceivedPkts2048to4095Octets,
    snmpBcmReceivedPkts4096to9216Octets,
    snmpBcmReceivedPkts9217to16383Octets,
    snmpBcmReceivedUndersizePkts,
    snmpBcmReceivedOversizePkts,
    snmpBcmReceivedFragments,
    snmpBcmReceivedJabbers,

    /* Packets sent, by length. */
    snmpBcmTransmittedPkts64Octets,
    snmpBcmTransmittedPkts65to127Octets,
    snmpBcmTransmittedPkts128to255Octets,
    snmpBcmTransmittedPkts256to511Octets,
    snmpBcmTransmittedPkts512to1023Octets,
    snmpBcmTransmittedPkts1024to1518Octets,
    snmpBcmTransmittedPkts1519to2047Octets,
    snmpBcmTransmittedPkts2048to4095Octets,
    snmpBcmTransmittedPkts4096to9216Octets,
    snmpBcmTransmittedPkts9217to16383Octets,
    snmpBcmTransmittedUndersizePkts,
    snmpBcmTransmittedOversizePkts,
    snmpBcmTransmittedFragments,

    /* Packets of both directions beyond the standard lengths. */
    snmpBcmEtherStatsPkts1519to1522Octets,
    snmpBcmEtherStatsPkts1522to2047Octets,
    snmpBcmEtherStatsPkts2048to4095Octets,
    snmpBcmEtherStatsPkts4096to9216Octets,
    snmpBcmEtherStatsPkts9217to16383Octets,

    /* Frames that carry VLAN tags. */
    snmpBcmRxVlanTagFrame,
    snmpBcmRxDoubleVlanTagFrame,
    snmpBcmTxVlanTagFrame,
    snmpBcmTxDoubleVlanTagFrame,

    /* Priority flow control frames: all, those that stop a priority, those that release it. */
    snmpBcmRxPFCControlFrame,
    snmpBcmTxPFCControlFrame,
    snmpBcmRxPFCFramePriority0,
    snmpBcmRxPFCFramePriority1,
    snmpBcmRxPFCFramePriority2,
    snmpBcmRxPFCFramePriority3,
    snmpBcmRxPFCFramePriority4,
    snmpBcmRxPFCFramePriority5,
    snmpBcmRxPFCFramePriority6,
    snmpBcmRxPFCFramePriority7,
    snmpBcmTxPFCFramePriority0,
    snmpBcmTxPFCFramePriority1,
    snmpBcmTxPFCFramePriority2,
    snmpBcmTxPFCFramePriority3,
    snmpBcmTxPFCFramePriority4,
    snmpBcmTxPFCFramePriority5,
    snmpBcmTxPFCFramePriority6,
    snmpBcmTxPFCFramePriority7,
    snmpBcmRxPFCFrameXonPriority0,
    snmpBcmRxPFCFrameXonPriority1,
    snmpBcmRxPFCFrameXonPriority2,
    snmpBcmRxPFCFrameXonPriority3,
    snmpBcmRxPFCFrameXonPriority4,
    snmpBcmRxPFCFrameXonPriority5,
    snmpBcmRxPFCFrameXonPriority6,
    snmpBcmRxPFCFrameXonPriority7,
    snmpBcmTxPFCFrameXonPriority0,
    snmpBcmTxPFCFrameXonPriority1,
    snmpBcmTxPFCFrameXonPriority2,
    snmpBcmTxPFCFrameXonPriority3,
    snmpBcmTxPFCFrameXonPriority4,
    snmpBcmTxPFCFrameXonPriority5,
    snmpBcmTxPFCFrameXonPriority6,
    snmpBcmTxPFCFrameXonPriority7,

    /* Low-power idle (IEEE 802.3az): how often, and for how many microseconds. */
    snmpBcmRxLpiEventCount,
    snmpBcmRxLpiDuration,
    snmpBcmTxLpiEventCount,
    snmpBcmTxLpiDuration,

    /* Forward error correction (IEEE 802.3bj). */
    snmpBcmFecCorrectedCodewords,
    snmpBcmFecUncorrectedCodewords,
    snmpBcmFecSymbolErrors,
    snmpBcmPcsBipErrors,
    snmpBcmPcsBlockErrors,
    snmpBcmPcsBlockLockLoss,

    /* Interspersed express traffic (IEEE 802.3br). */
    snmpBcmMacMergeRxFragments,
    snmpBcmMacMergeRxVerifyFrame,
    snmpBcmMacMergeRxReplyFrame,
    snmpBcmMacMergeRxAssemblyOk,
    snmpBcmMacMergeRxAssemblyErrors,
    snmpBcmMacMergeRxSmdErrors,
    snmpBcmMacMergeRxFinalFragmentSizeErrors,
    snmpBcmMacMergeTxFragments,
    snmpBcmMacMergeTxVerifyFrame,
    snmpBcmMacMergeTxReplyFrame,
    snmpBcmMacMergeTxHoldRequests,

    /* Routed traffic. */
    snmpBcmIPMCBridgedPkts,
    snmpBcmIPMCRoutedPkts,
    snmpBcmIPMCInDroppedPkts,
    snmpBcmIPMCOutDroppedPkts,
    snmpBcmIPUcastRoutedPkts,
    snmpBcmIPTunnelPkts,
    snmpBcmIPTunnelErrors,
    snmpBcmIPTtlExpiredPkts,
    snmpBcmIPUrpfDiscards,

    /* Why received packets were not forwarded. */
    snmpBcmRxPolicyDiscards,
    snmpBcmRxPolicerDiscards,
    snmpBcmRxVlanFilterDiscards,
    snmpBcmRxVlanUnknownDiscards,
    snmpBcmRxTagTypeDiscards,
    snmpBcmRxStpStateDiscards,
    snmpBcmRxSourceMacDiscards,
    snmpBcmRxDestMacDiscards,
    snmpBcmRxSourceRouteDiscards,
    snmpBcmRxStormBroadcastDiscards,
    snmpBcmRxStormMulticastDiscards,
    snmpBcmRxStormUnknownUcastDiscards,
    snmpBcmRxBufferFullDiscards,
    snmpBcmRxParityErrors,

    /* Why packets were not sent. */
    snmpBcmTxPolicyDiscards,
    snmpBcmTxVlanFilterDiscards,
    snmpBcmTxAgedDiscards,
    snmpBcmTxBufferFullDiscards,
    snmpBcmTxWredDiscards,
    snmpBcmTxUnderruns,
    snmpBcmTxParityErrors,

    /* Explicit congestion notification. */
    snmpBcmTxEcnMarkedPkts,
    snmpBcmTxQcnFrames,

    /* Stacking ports. */
    snmpBcmRxStackControlFrame,
    snmpBcmRxStackHeaderErrors,
    snmpBcmTxStackControlFrame,

    snmpValCount
} bcm_stat_val_t;

/*
 * Debugging counters of a port, which count packets for the reasons that bcm_stat_custom_add gives them:
 * first received, then sent packets.
 */
typedef enum bcm_custom_stat_trigger_e {
    /* IPv4, received. */
    bcmDbgCntRxIp4Pkts = 0,
    bcmDbgCntRxIp4UcastRouted,
    bcmDbgCntRxIp4HdrErrors,
    bcmDbgCntRxIp4ChecksumErrors,
    bcmDbgCntRxIp4TtlErrors,
    bcmDbgCntRxIp4OptionPkts,
    bcmDbgCntRxIp4RouteMiss,
    bcmDbgCntRxIp4UrpfDiscards,
    bcmDbgCntRxIp4Discards,
    bcmDbgCntRxIp4McastRouted,
    bcmDbgCntRxIp4McastMiss,
    bcmDbgCntRxIp4McastDiscards,

    /* IPv6, received. */
    bcmDbgCntRxIp6Pkts,
    bcmDbgCntRxIp6UcastRouted,
    bcmDbgCntRxIp6HdrErrors,
    bcmDbgCntRxIp6HopLimitErrors,
    bcmDbgCntRxIp6ExtHeaderPkts,
    bcmDbgCntRxIp6LinkLocalPkts,
    bcmDbgCntRxIp6RouteMiss,
    bcmDbgCntRxIp6UrpfDiscards,
    bcmDbgCntRxIp6Discards,
    bcmDbgCntRxIp6McastRouted,
    bcmDbgCntRxIp6McastMiss,
    bcmDbgCntRxIp6McastDiscards,

    /* Layer 2, received. */
    bcmDbgCntRxL2Ucast,
    bcmDbgCntRxL2Mcast,
    bcmDbgCntRxL2Bcast,
    bcmDbgCntRxL2UnknownUcast,
    bcmDbgCntRxL2UnknownMcast,
    bcmDbgCntRxL2SourceMiss,
    bcmDbgCntRxL2StationMove,
    bcmDbgCntRxL2StationMoveDiscards,
    bcmDbgCntRxL2SourceDiscards,
    bcmDbgCntRxL2DestDiscards,
    bcmDbgCntRxL2ReservedMacPkts,
    bcmDbgCntRxL2BpduPkts,
    bcmDbgCntRxL2PausePkts,

    /* VLANs and spanning tree, received. */
    bcmDbgCntRxVlanMiss,
    bcmDbgCntRxVlanMemberDiscards,
    bcmDbgCntRxVlanXlateMiss,
    bcmDbgCntRxVlanTagDiscards,
    bcmDbgCntRxStpDiscards,

    /* Labels and tunnels, received. */
    bcmDbgCntRxMplsPkts,
    bcmDbgCntRxMplsLabelMiss,
    bcmDbgCntRxMplsTtlErrors,
    bcmDbgCntRxTunnelPkts,
    bcmDbgCntRxTunnelErrors,

    /* Policy, received. */
    bcmDbgCntRxFieldDiscards,
    bcmDbgCntRxFieldRedirects,
    bcmDbgCntRxFieldCopyToCpu,
    bcmDbgCntRxPolicerYellow,
    bcmDbgCntRxPolicerRed,
    bcmDbgCntRxStormBroadcast,
    bcmDbgCntRxStormMcast,
    bcmDbgCntRxStormUnknownUcast,

    /* Attacks, received. */
    bcmDbgCntRxDosL2,
    bcmDbgCntRxDosL3,
    bcmDbgCntRxDosL4,
    bcmDbgCntRxDosFragment,

    /* Buffers, received. */
    bcmDbgCntRxBufferFull,
    bcmDbgCntRxHeadOfLineDiscards,
    bcmDbgCntRxParityErrors,

    /* IP, sent. */
    bcmDbgCntTxIp4Ucast,
    bcmDbgCntTxIp4Mcast,
    bcmDbgCntTxIp4TtlErrors,
    bcmDbgCntTxIp4MtuErrors,
    bcmDbgCntTxIp6Ucast,
    bcmDbgCntTxIp6Mcast,
    bcmDbgCntTxIp6HopLimitErrors,
    bcmDbgCntTxIp6MtuErrors,

    /* Layer 2, sent. */
    bcmDbgCntTxL2Ucast,
    bcmDbgCntTxL2Mcast,
    bcmDbgCntTxL2Bcast,
    bcmDbgCntTxPausePkts,
    bcmDbgCntTxMirrorPkts,
    bcmDbgCntTxCpuPkts,

    /* VLANs and spanning tree, sent. */
    bcmDbgCntTxVlanTagged,
    bcmDbgCntTxVlanUntagged,
    bcmDbgCntTxVlanMemberDiscards,
    bcmDbgCntTxVlanXlateMiss,
    bcmDbgCntTxStpDiscards,
    bcmDbgCntTxSplitHorizonDiscards,
    bcmDbgCntTxSamePortDiscards,
    bcmDbgCntTxEgressMaskDiscards,

    /* Labels and tunnels, sent. */
    bcmDbgCntTxMplsPkts,
    bcmDbgCntTxMplsErrors,
    bcmDbgCntTxTunnelPkts,
    bcmDbgCntTxTunnelErrors,

    /* Policy and buffers, sent. */
    bcmDbgCntTxFieldDiscards,
    bcmDbgCntTxAgedDiscards,
    bcmDbgCntTxWredGreenDiscards,
    bcmDbgCntTxWredYellowDiscards,
    bcmDbgCntTxWredRedDiscards,
    bcmDbgCntTxEcnMarked,
    bcmDbgCntTxBufferFull,
    bcmDbgCntTxParityErrors,

    bcmDbgCntCount
} bcm_custom_stat_trigger_t;

/* Ready-made ways of choosing a counter of an object's counter group by properties of the packet. */
typedef enum bcm_stat_group_mode_e {
    bcmStatGroupModeSingle = 0,           /* one counter for all packets */
    bcmStatGroupModeTrafficType,          /* known and unknown, unicast, multicast, broadcast */
    bcmStatGroupModeCastType,
    bcmStatGroupModeDlfAll,               /* unknown destination, all */
    bcmStatGroupModeDlfIntPri,
    bcmStatGroupModeTyped,                /* known unicast, unknown unicast, multicast, broadcast */
    bcmStatGroupModeTypedAll,
    bcmStatGroupModeTypedIntPri,
    bcmStatGroupModeSingleWithControl,    /* control packets apart */
    bcmStatGroupModeIntPri,
    bcmStatGroupModeIntPriColor,
    bcmStatGroupModeColor,
    bcmStatGroupModeColorAll,
    bcmStatGroupModeDot1P,
    bcmStatGroupModeInnerDot1P,
    bcmStatGroupModeDscp,
    bcmStatGroupModeDscpAll,
    bcmStatGroupModeEcn,
    bcmStatGroupModeMplsExp,
    bcmStatGroupModeDvpType,
    bcmStatGroupModeSvpType,
    bcmStatGroupModeTagState,             /* untagged, single, double */
    bcmStatGroupModePacketLength,
    bcmStatGroupModeDropReason,
    bcmStatGroupModeIntCn,                /* congestion notification */
    bcmStatGroupModeIpVersion,
    bcmStatGroupModeTunnelState,
    bcmStatGroupModeFlexIntPri,
    bcmStatGroupModeFlexDscp,
    bcmStatGroupModeCount
} bcm_stat_group_mode_t;

/* Packet properties that a counter of a group can depend on (bcm_stat_group_mode_attr_selector_t). */
typedef enum bcm_stat_group_mode_attr_e {
    bcmStatGroupModeAttrInvalid = 0,
    bcmStatGroupModeAttrColor,
    bcmStatGroupModeAttrIntPri,
    bcmStatGroupModeAttrVlan,
    bcmStatGroupModeAttrOuterPri,
    bcmStatGroupModeAttrInnerPri,
    bcmStatGroupModeAttrOuterCfi,
    bcmStatGroupModeAttrInnerCfi,
    bcmStatGroupModeAttrPort,
    bcmStatGroupModeAttrTosDscp,
    bcmStatGroupModeAttrTosEcn,
    bcmStatGroupModeAttrPktType,
    bcmStatGroupModeAttrIngNetworkGroup,
    bcmStatGroupModeAttrEgrNetworkGroup,
    bcmStatGroupModeAttrDrop,
    bcmStatGroupModeAttrPacketTypeIp,
    bcmStatGroupModeAttrUdf,
    bcmStatGroupModeAttrFieldIngressColor,
    bcmStatGroupModeAttrFieldEgressColor,
    bcmStatGroupModeAttrTunnelTerminated,
    bcmStatGroupModeAttrPktLength,
    bcmStatGroupModeAttrMplsLabelStack,
    bcmStatGroupModeAttrVrf,
    bcmStatGroupModeAttrL3Intf,
    bcmStatGroupModeAttrSourceVp,
    bcmStatGroupModeAttrDestVp,
    bcmStatGroupModeAttrCount
} bcm_stat_group_mode_attr_t;

/* Values of bcmStatGroupModeAttrPktType. */
typedef enum bcm_stat_group_mode_attr_pkt_type_e {
    bcmStatGroupModeAttrPktTypeAll = 0,
    bcmStatGroupModeAttrPktTypeUnknown,
    bcmStatGroupModeAttrPktTypeControl,
    bcmStatGroupModeAttrPktTypeOam,
    bcmStatGroupModeAttrPktTypeBfd,
    bcmStatGroupModeAttrPktTypeBpdu,
    bcmStatGroupModeAttrPktTypePtp,
    bcmStatGroupModeAttrPktTypeUnknownL2Ucast,
    bcmStatGroupModeAttrPktTypeKnownL2Ucast,
    bcmStatGroupModeAttrPktTypeUnknownL2Mcast,
    bcmStatGroupModeAttrPktTypeKnownL2Mcast,
    bcmStatGroupModeAttrPktTypeL2Bcast,
    bcmStatGroupModeAttrPktTypeKnownL3Ucast,
    bcmStatGroupModeAttrPktTypeUnknownL3Ucast,
    bcmStatGroupModeAttrPktTypeKnownIpmc,
    bcmStatGroupModeAttrPktTypeUnknownIpmc,
    bcmStatGroupModeAttrPktTypeMpls,
    bcmStatGroupModeAttrPktTypeMplsMcast,
    bcmStatGroupModeAttrPktTypeTrill,
    bcmStatGroupModeAttrPktTypeMim,
    bcmStatGroupModeAttrPktTypeNiv,
    bcmStatGroupModeAttrPktTypeVxlan,
    bcmStatGroupModeAttrPktTypeL2Gre,
    bcmStatGroupModeAttrPktTypeCount
} bcm_stat_group_mode_attr_pkt_type_t;

/* Side of the switch that flexible counters belong to. */
typedef enum bcm_stat_flex_direction_e {
    bcmStatFlexDirectionIngress = 0,
    bcmStatFlexDirectionEgress,
    bcmStatFlexDirectionCount
} bcm_stat_flex_direction_t;

/* What a flexible counter counts. */
typedef enum bcm_stat_flex_counter_e {
    bcmStatFlexStatPackets = 0,
    bcmStatFlexStatBytes,
    bcmStatFlexStatCount
} bcm_stat_flex_counter_t;

/* Where in the device a counter engine gets its commands from. */
typedef enum bcm_stat_counter_interface_type_e {
    bcmStatCounterInterfaceIngressField = 0,
    bcmStatCounterInterfaceIngressVoq,
    bcmStatCounterInterfaceIngressVsq,
    bcmStatCounterInterfaceIngressLif,
    bcmStatCounterInterfaceIngressOam,
    bcmStatCounterInterfaceIngressLatency,
    bcmStatCounterInterfaceIngressCnm,
    bcmStatCounterInterfaceEgressField,
    bcmStatCounterInterfaceEgressTransmitPp,
    bcmStatCounterInterfaceEgressReceivePp,
    bcmStatCounterInterfaceEgressReceiveQueue,
    bcmStatCounterInterfaceEgressLif,
    bcmStatCounterInterfaceEgressOam,
    bcmStatCounterInterfaceEgressLatency,
    bcmStatCounterInterfaceCount
} bcm_stat_counter_interface_type_t;

/* What a counter of an engine holds. */
typedef enum bcm_stat_counter_format_type_e {
    bcmStatCounterFormatPackets = 0,
    bcmStatCounterFormatBytes,
    bcmStatCounterFormatPacketsAndBytes,
    bcmStatCounterFormatMaxOccupancy,
    bcmStatCounterFormatDiffTimestamp,
    bcmStatCounterFormatIncBy,
    bcmStatCounterFormatCount
} bcm_stat_counter_format_type_t;

/* Packet properties that choose a counter of a counter set. */
typedef enum bcm_stat_counter_set_type_e {
    bcmStatCounterSetNone = 0,
    bcmStatCounterSetOffset,              /* the command's own offset */
    bcmStatCounterSetForward,             /* forwarded, dropped */
    bcmStatCounterSetDropReason,
    bcmStatCounterSetTrafficClass,
    bcmStatCounterSetColorIngress,
    bcmStatCounterSetColorEgress,
    bcmStatCounterSetTrafficTypeMc,
    bcmStatCounterSetDram,                /* went through external memory */
    bcmStatCounterSetMirror,
    bcmStatCounterSetLatency,
    bcmStatCounterSetPacketLength,
    bcmStatCounterSetEcn,
    bcmStatCounterSetDestPort,
    bcmStatCounterSetCount
} bcm_stat_counter_set_type_t;

/* Bytes that a counter engine can leave out of a packet's length, and packets that it can leave out. */
typedef enum bcm_stat_counter_filter_type_e {
    bcmStatCounterFilterCrcSizeExclude = 0,
    bcmStatCounterFilterSystemHeaderExclude,
    bcmStatCounterFilterIngressMirrorOnly,
    bcmStatCounterFilterForwardedOnly,
    bcmStatCounterFilterDroppedOnly,
    bcmStatCounterFilterInvalidColorExclude,
    bcmStatCounterFilterCount
} bcm_stat_counter_filter_type_t;

/* Lengths that the counters of logical interfaces add up. */
typedef enum bcm_stat_lif_counting_length_e {
    bcmStatLifCountingLengthOriginal = 0, /* as received */
    bcmStatLifCountingLengthEdited,       /* as sent */
    bcmStatLifCountingLengthPayload,      /* without the headers removed and added */
    bcmStatLifCountingLengthCount
} bcm_stat_lif_counting_length_t;

/* A limit on a counter; passing it can raise an event. */
typedef struct bcm_stat_threshold_s {
    uint32 flags;                         /* BCM_STAT_THRESHOLD_* */
    uint64 value;
} bcm_stat_threshold_t;

/* How full a pool of flexible counters is. */
typedef struct bcm_stat_flex_pool_stat_info_s {
    uint32 pool_id;
    uint32 pool_size;                     /* counters in the pool */
    uint32 used_entries;
} bcm_stat_flex_pool_stat_info_t;

/* Packets whose attr has attr_value are counted by the counter counter_offset of the group. */
typedef struct bcm_stat_group_mode_attr_selector_s {
    uint32 counter_offset;
    bcm_stat_group_mode_attr_t attr;
    uint32 attr_value;
} bcm_stat_group_mode_attr_selector_t;

/* Which objects a group mode is meant for, so that it is placed in pools that these can reach. */
typedef struct bcm_stat_group_mode_hint_s {
    uint32 flags;                         /* BCM_STAT_GROUP_MODE_INGRESS, _EGRESS */
    bcm_stat_object_t object;
} bcm_stat_group_mode_hint_t;

typedef struct bcm_stat_group_mode_id_config_s {
    uint32 flags;                         /* BCM_STAT_GROUP_MODE_* */
    uint32 total_counters;                /* counters in a group of the mode */
    bcm_stat_group_mode_hint_t hint;
} bcm_stat_group_mode_id_config_t;

/* Counters start..end of an engine. */
typedef struct bcm_stat_counter_pointer_range_s {
    int start;
    int end;
} bcm_stat_counter_pointer_range_t;

/* A source of counting commands. */
typedef struct bcm_stat_counter_source_s {
    bcm_core_t core;
    bcm_stat_counter_interface_type_t engine_source;
    int command_id;                       /* which of the source's commands */
} bcm_stat_counter_source_t;

/* One property of a packet and the value that it has to have. */
typedef struct bcm_stat_counter_set_entry_s {
    bcm_stat_counter_set_type_t type;
    int value;
} bcm_stat_counter_set_entry_t;

/*
 * Packets with all of these properties are counted by the counter counter_offset of the set. Entries that
 * are not needed are bcmStatCounterSetNone.
 */
typedef struct bcm_stat_counter_set_entry_mapping_s {
    bcm_stat_counter_set_entry_t entry[BCM_STAT_COUNTER_SET_ENTRY_MAX];
    int counter_offset;
} bcm_stat_counter_set_entry_mapping_t;

typedef struct bcm_stat_counter_set_mapping_s {
    uint32 num_of_entries;
    bcm_stat_counter_set_entry_mapping_t entry_mapping[BCM_STAT_COUNTER_SET_SIZE_MAX];
} bcm_stat_counter_set_mapping_t;

/* Layout of a counter; widths in bits, 0 for what it does not hold. */
typedef struct bcm_stat_counter_format_s {
    bcm_stat_counter_format_type_t format_type;
    int packet_width;
    int byte_width;
} bcm_stat_counter_format_t;

/* Which counters of an engine a source uses, and how. */
typedef struct bcm_stat_counter_config_s {
    uint32 flags;                         /* BCM_STAT_COUNTER_* */
    bcm_stat_counter_source_t source;
    bcm_stat_counter_format_t format;
    int counter_set_size;                 /* counters per object */
    bcm_stat_counter_pointer_range_t pointer_range;
} bcm_stat_counter_config_t;

/* A counter engine, one of those of a core. */
typedef struct bcm_stat_counter_engine_s {
    bcm_core_t core;
    int engine_id;
    bcm_stat_flex_direction_t direction;
    int enable;
} bcm_stat_counter_engine_t;

/* Which bits of a logical interface's counting profile choose the command. */
typedef struct bcm_stat_counter_lif_mask_s {
    uint32 value;
    uint32 mask;
} bcm_stat_counter_lif_mask_t;

/* Counter pointers that are meant for logical interfaces, start..end, for a counting profile. */
typedef struct bcm_stat_counter_lif_counting_range_s {
    int start;
    int end;
    int counting_profile;
} bcm_stat_counter_lif_counting_range_t;

/* Logical interfaces of a direction that are counted, by their counting profile. */
typedef struct bcm_stat_lif_counting_source_s {
    bcm_stat_flex_direction_t direction;
    int counting_profile;
} bcm_stat_lif_counting_source_t;

typedef struct bcm_stat_lif_counting_s {
    int enable;
    bcm_stat_lif_counting_length_t length;
} bcm_stat_lif_counting_t;

/*
 * Counters of ports. init clears all counters and starts their collection; get and multi_get return what
 * was collected last, sync_get and sync_multi_get read the device. Elements of value_arr belong to those
 * of stat_arr, nstat of each.
 */
int bcm_stat_init(int unit);
int bcm_stat_sync(int unit);
int bcm_stat_clear(int unit, bcm_port_t port);
int bcm_stat_clear_single(int unit, bcm_port_t port, bcm_stat_val_t type);
int bcm_stat_get(int unit, bcm_port_t port, bcm_stat_val_t type, uint64 *value);
int bcm_stat_get32(int unit, bcm_port_t port, bcm_stat_val_t type, uint32 *value);
int bcm_stat_sync_get(int unit, bcm_port_t port, bcm_stat_val_t type, uint64 *value);
int bcm_stat_sync_get32(int unit, bcm_port_t port, bcm_stat_val_t type, uint32 *value);
int bcm_stat_multi_get(int unit, bcm_port_t port, int nstat, bcm_stat_val_t *stat_arr, uint64 *value_arr);
int bcm_stat_multi_get32(int unit, bcm_port_t port, int nstat, bcm_stat_val_t *stat_arr, uint32 *value_arr);
int bcm_stat_sync_multi_get(int unit, bcm_port_t port, int nstat, bcm_stat_val_t *stat_arr,
                            uint64 *value_arr);
int bcm_stat_sync_multi_get32(int unit, bcm_port_t port, int nstat, bcm_stat_val_t *stat_arr,
                              uint32 *value_arr);

/* Microseconds between two collections, 0 to stop collecting. */
int bcm_stat_interval_set(int unit, uint32 interval);
int bcm_stat_interval_get(int unit, uint32 *interval);

/* Limits on counters of ports. */
void bcm_stat_threshold_t_init(bcm_stat_threshold_t *threshold);
int bcm_stat_threshold_set(int unit, bcm_port_t port, bcm_stat_val_t type, bcm_stat_threshold_t *threshold);
int bcm_stat_threshold_get(int unit, bcm_port_t port, bcm_stat_val_t type, bcm_stat_threshold_t *threshold);

/*
 * Debugging counters: which reasons a counter of a port (type: a counter that the device lets choose)
 * counts. check tells whether a reason is chosen by BCM_E_NONE, else BCM_E_NOT_FOUND.
 */
int bcm_stat_custom_add(int unit, bcm_port_t port, bcm_stat_val_t type, bcm_custom_stat_trigger_t trigger);
int bcm_stat_custom_delete(int unit, bcm_port_t port, bcm_stat_val_t type, bcm_custom_stat_trigger_t trigger);
int bcm_stat_custom_delete_all(int unit, bcm_port_t port, bcm_stat_val_t type);
int bcm_stat_custom_check(int unit, bcm_port_t port, bcm_stat_val_t type, bcm_custom_stat_trigger_t trigger,
                          int *result);

/*
 * Groups of flexible counters for an object: by a ready-made mode, or by one that a mode id stands for.
 * *num_entries says how many counters the group has; stat_counter_id is what the object's own attach
 * function takes. destroy gives BCM_E_BUSY while the group is attached.
 */
int bcm_stat_group_create(int unit, bcm_stat_object_t object, bcm_stat_group_mode_t group_mode,
                          uint32 *stat_counter_id, uint32 *num_entries);
int bcm_stat_custom_group_create(int unit, uint32 mode_id, bcm_stat_object_t object, uint32 *stat_counter_id,
                                 uint32 *num_entries);
int bcm_stat_group_destroy(int unit, uint32 stat_counter_id);
int bcm_stat_id_get_all(int unit, bcm_stat_object_t object, int stat_max, uint32 *stat_array,
                        int *stat_count);

/*
 * Modes of one's own. get fills in at most num_selectors selectors and says in *actual_num_selectors how
 * many the mode has. The config variants also take a hint.
 */
int bcm_stat_group_mode_id_create(int unit, uint32 flags, uint32 total_counters, uint32 num_selectors,
                                  bcm_stat_group_mode_attr_selector_t *attr_selectors, uint32 *mode_id);
int bcm_stat_group_mode_id_get(int unit, uint32 mode_id, uint32 *flags, uint32 *total_counters,
                               uint32 num_selectors, bcm_stat_group_mode_attr_selector_t *attr_selectors,
                               uint32 *actual_num_selectors);
int bcm_stat_group_mode_id_destroy(int unit, uint32 mode_id);
void bcm_stat_group_mode_id_config_t_init(bcm_stat_group_mode_id_config_t *mode_config);
int bcm_stat_group_mode_id_config_create(int unit, bcm_stat_group_mode_id_config_t *mode_config,
                                         uint32 num_selectors,
                                         bcm_stat_group_mode_attr_selector_t *attr_selectors,
                                         uint32 *mode_id);
int bcm_stat_group_mode_id_config_get(int unit, uint32 mode_id, bcm_stat_group_mode_id_config_t *mode_config,
                                      uint32 num_selectors,
                                      bcm_stat_group_mode_attr_selector_t *attr_selectors,
                                      uint32 *actual_num_selectors);

/* Pools of flexible counters, at most num_pools into flex_pool_stat. */
int bcm_stat_flex_pool_info_multi_get(int unit, bcm_stat_flex_direction_t direction, uint32 num_pools,
                                      bcm_stat_flex_pool_stat_info_t *flex_pool_stat,
                                      uint32 *actual_num_pools);

/* Counters counter_indexes of a group, num_entries of them. */
void bcm_stat_value_t_init(bcm_stat_value_t *value);
int bcm_stat_flex_counter_get(int unit, uint32 stat_counter_id, bcm_stat_flex_counter_t stat,
                              uint32 num_entries, uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_stat_flex_counter_sync_get(int unit, uint32 stat_counter_id, bcm_stat_flex_counter_t stat,
                                   uint32 num_entries, uint32 *counter_indexes,
                                   bcm_stat_value_t *counter_values);
int bcm_stat_flex_counter_set(int unit, uint32 stat_counter_id, bcm_stat_flex_counter_t stat,
                              uint32 num_entries, uint32 *counter_indexes, bcm_stat_value_t *counter_values);

/* Counter engines: whether they count, and what is assigned to which of their counters. */
int bcm_stat_counter_engine_set(int unit, uint32 flags, bcm_stat_counter_engine_t *engine);
int bcm_stat_counter_engine_get(int unit, uint32 flags, bcm_stat_counter_engine_t *engine);
void bcm_stat_counter_config_t_init(bcm_stat_counter_config_t *config);
int bcm_stat_counter_config_set(int unit, int engine_id, bcm_stat_counter_config_t *config);
int bcm_stat_counter_config_get(int unit, int engine_id, bcm_stat_counter_config_t *config);

/* Which counter of its set counts a packet. */
int bcm_stat_counter_set_mapping_set(int unit, uint32 flags, bcm_stat_counter_source_t *counter_source,
                                     bcm_stat_counter_set_mapping_t *mapping);
int bcm_stat_counter_set_mapping_get(int unit, uint32 flags, bcm_stat_counter_source_t *counter_source,
                                     bcm_stat_counter_set_mapping_t *mapping);

/*
 * Filters of a source. set replaces them by those given, num_filters of them; get writes at most
 * max_num_filters of the active ones.
 */
int bcm_stat_counter_filter_set(int unit, bcm_stat_counter_source_t counter_source, uint32 num_filters,
                                bcm_stat_counter_filter_type_t *filter_arr);
int bcm_stat_counter_filter_get(int unit, bcm_stat_counter_source_t counter_source, uint32 max_num_filters,
                                bcm_stat_counter_filter_type_t *filter_arr, uint32 *num_filters);
int bcm_stat_counter_filter_is_active_get(int unit, bcm_stat_counter_source_t counter_source,
                                          bcm_stat_counter_filter_type_t filter, int *is_active);

/* Counting of logical interfaces. */
int bcm_stat_counter_lif_mask_set(int unit, bcm_stat_counter_source_t *counter_source,
                                  bcm_stat_counter_lif_mask_t *lif_mask);
int bcm_stat_counter_lif_mask_get(int unit, bcm_stat_counter_source_t *counter_source,
                                  bcm_stat_counter_lif_mask_t *lif_mask);
int bcm_stat_counter_lif_counting_range_set(int unit, uint32 flags, bcm_stat_counter_source_t *counter_source,
                                            bcm_stat_counter_lif_counting_range_t *range);
int bcm_stat_counter_lif_counting_range_get(int unit, uint32 flags, bcm_stat_counter_source_t *counter_source,
                                            bcm_stat_counter_lif_counting_range_t *range);
int bcm_stat_lif_counting_set(int unit, uint32 flags, bcm_stat_lif_counting_source_t *counting_source,
                              bcm_stat_lif_counting_t *lif_counting);
int bcm_stat_lif_counting_get(int unit, uint32 flags, bcm_stat_lif_counting_source_t *counting_source,
                              bcm_stat_lif_counting_t *lif_counting);

#ifdef __cplusplus
}
#endif

#endif
