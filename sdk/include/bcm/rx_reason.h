/* Why a received packet came to the CPU, and sets of such reasons. */
#ifndef BCM_RX_REASON_H
#define BCM_RX_REASON_H

#include <shared/bitop.h>

/* A packet has every reason that applied to it, whether or not another one was enough. */
typedef enum bcm_rx_reason_e {
    bcmRxReasonInvalid = 0,

    /* Copied or mirrored for an observer. */
    bcmRxReasonMirror,
    bcmRxReasonEgressMirror,
    bcmRxReasonSampleSource,              /* sampled on arrival */
    bcmRxReasonSampleDest,                /* sampled on departure */
    bcmRxReasonFlowSample,
    bcmRxReasonTrace,                     /* a packet that was injected to see what becomes of it */
    bcmRxReasonSnoop,
    bcmRxReasonIpfixRecord,
    bcmRxReasonDropCopy,                  /* dropped, the CPU gets a copy */
    bcmRxReasonCongestionDropCopy,        /* the same, for want of buffers */

    /* Chosen by rule. */
    bcmRxReasonFilterMatch,
    bcmRxReasonVlanFilterMatch,           /* before the VLAN was assigned */
    bcmRxReasonEgressFilterMatch,
    bcmRxReasonExactMatch,
    bcmRxReasonPolicerExceeded,

    /* Protocols between neighbours. */
    bcmRxReasonControl,                   /* for the CPU by its destination, no reason given */
    bcmRxReasonBpdu,
    bcmRxReasonSlowProtocol,
    bcmRxReasonLacp,
    bcmRxReasonLldp,
    bcmRxReasonEapol,
    bcmRxReasonMvrp,
    bcmRxReasonMmrp,
    bcmRxReasonStreamReservation,
    bcmRxReasonPfc,
    bcmRxReasonPause,
    bcmRxReasonRingProtection,
    bcmRxReasonReservedMulticast,

    /* Protocols of hosts and routers. */
    bcmRxReasonArp,
    bcmRxReasonArpReply,
    bcmRxReasonArpGratuitous,
    bcmRxReasonRarp,
    bcmRxReasonDhcp,
    bcmRxReasonDhcp6,
    bcmRxReasonNeighborSolicit,
    bcmRxReasonNeighborAdvert,
    bcmRxReasonRouterSolicit,
    bcmRxReasonRouterAdvert,
    bcmRxReasonIcmpRedirect,
    bcmRxReasonIcmp6,
    bcmRxReasonIgmpQuery,
    bcmRxReasonIgmpReport,
    bcmRxReasonIgmpLeave,
    bcmRxReasonMldQuery,
    bcmRxReasonMldReport,
    bcmRxReasonMldDone,
    bcmRxReasonPim,
    bcmRxReasonOspf,
    bcmRxReasonRip,
    bcmRxReasonBgp,
    bcmRxReasonIsis,
    bcmRxReasonVrrp,

    /* Learning and bridging. */
    bcmRxReasonL2SourceMiss,
    bcmRxReasonL2SourceStaticMove,
    bcmRxReasonL2SourceDynamicMove,
    bcmRxReasonL2SourcePending,
    bcmRxReasonL2SourceReserved,          /* a group address as source, or all zero */
    bcmRxReasonL2DestMiss,
    bcmRxReasonL2DestMarked,              /* its entry asks for a copy */
    bcmRxReasonL2CacheHit,
    bcmRxReasonL2LearnLimit,
    bcmRxReasonL2MtuFail,
    bcmRxReasonSourceDestEqual,
    bcmRxReasonSamePort,                  /* would leave where it came from */
    bcmRxReasonMulticastMiss,
    bcmRxReasonMulticastIndexError,
    bcmRxReasonStormControl,
    bcmRxReasonAuthFail,
    bcmRxReasonIpSourceGuard,
    bcmRxReasonLocalCpu,

    /* VLANs. */
    bcmRxReasonVlanUnknown,
    bcmRxReasonVlanIngressFilter,
    bcmRxReasonVlanEgressFilter,
    bcmRxReasonVlanTranslateMiss,
    bcmRxReasonVlanEgressTranslateMiss,
    bcmRxReasonVlanTagMissing,
    bcmRxReasonVlanTagUnexpected,
    bcmRxReasonPrivateVlanMismatch,
    bcmRxReasonStpBlocked,

    /* Routing. */
    bcmRxReasonL3SourceMiss,
    bcmRxReasonL3SourceMove,
    bcmRxReasonL3DestMiss,
    bcmRxReasonL3DestMarked,
    bcmRxReasonL3HeaderError,
    bcmRxReasonL3HeaderMismatch,          /* destination addresses of layers 2 and 3 disagree */
    bcmRxReasonL3MtuFail,
    bcmRxReasonL3Ttl,
    bcmRxReasonL3Slowpath,
    bcmRxReasonL3SourceBindFail,
    bcmRxReasonL3NextHopIncomplete,
    bcmRxReasonL3NextHopDown,
    bcmRxReasonL3LocalAddress,
    bcmRxReasonIpOptions,
    bcmRxReasonIpFragment,
    bcmRxReasonIp6HopByHop,
    bcmRxReasonIp6ExtensionHeader,
    bcmRxReasonIp6RoutingHeader,
    bcmRxReasonUrpfFail,
    bcmRxReasonMartianSource,
    bcmRxReasonMartianDest,
    bcmRxReasonLinkLocalUnicast,
    bcmRxReasonLinkLocalMulticast,
    bcmRxReasonIpmcMiss,
    bcmRxReasonIpmcInterfaceMismatch,
    bcmRxReasonIpmcReserved,
    bcmRxReasonNatMiss,
    bcmRxReasonNatHairpin,
    bcmRxReasonNatError,

    /* Malformed or hostile. */
    bcmRxReasonParseError,
    bcmRxReasonLengthError,
    bcmRxReasonChecksumError,
    bcmRxReasonAttackLand,                /* source and destination address equal */
    bcmRxReasonAttackTcpFlags,
    bcmRxReasonAttackTcpFragment,
    bcmRxReasonAttackTinyFragment,
    bcmRxReasonAttackL4PortEqual,
    bcmRxReasonAttackBigIcmp,
    bcmRxReasonAttackIcmpFragment,
    bcmRxReasonAttackMacEqual,

    /* MPLS. */
    bcmRxReasonMplsLabelMiss,
    bcmRxReasonMplsTtl,
    bcmRxReasonMplsInvalidAction,
    bcmRxReasonMplsInvalidPayload,
    bcmRxReasonMplsSequenceNumber,
    bcmRxReasonMplsRouterAlertLabel,
    bcmRxReasonMplsReservedLabel,
    bcmRxReasonMplsControlWordError,

    /* Tunnels and overlays. */
    bcmRxReasonTunnelMiss,
    bcmRxReasonTunnelError,
    bcmRxReasonTunnelControl,
    bcmRxReasonGreSourceRoute,
    bcmRxReasonVxlanVnidMiss,
    bcmRxReasonVxlanSourceMiss,
    bcmRxReasonMimServiceMiss,
    bcmRxReasonTrillNicknameMiss,
    bcmRxReasonTrillAdjacencyFail,
    bcmRxReasonTrillRpfFail,
    bcmRxReasonTrillHopCount,
    bcmRxReasonTrillOptions,
    bcmRxReasonNivInterfaceMiss,
    bcmRxReasonNivTagError,
    bcmRxReasonWlanStationMiss,
    bcmRxReasonWlanKeepalive,
    bcmRxReasonWlanControlProtocol,
    bcmRxReasonFcoeSourceMiss,
    bcmRxReasonFcoeZoneFail,
    bcmRxReasonFipControl,

    /* Operation and maintenance, time. */
    bcmRxReasonOamSlowpath,
    bcmRxReasonOamUnknownEndpoint,
    bcmRxReasonOamLevelError,
    bcmRxReasonOamCcmMismatch,
    bcmRxReasonOamDefectChange,
    bcmRxReasonOamLossMeasurement,
    bcmRxReasonOamDelayMeasurement,
    bcmRxReasonBfdSlowpath,
    bcmRxReasonBfdUnknownSession,
    bcmRxReasonBfdStateChange,
    bcmRxReasonBfdError,
    bcmRxReasonTimesync,
    bcmRxReasonTimesyncUnknownVersion,

    /* Of the switch itself. */
    bcmRxReasonLoopback,
    bcmRxReasonStack,                     /* sent by the CPU of another unit */
    bcmRxReasonFabricDestUnknown,
    bcmRxReasonTableParityError,
    bcmRxReasonCount
} bcm_rx_reason_t;

/* A set of reasons; all zero is the empty one. */
typedef struct bcm_rx_reasons_s {
    SHR_BITDCL pbits[_SHR_BITDCLSIZE(bcmRxReasonCount)];
} bcm_rx_reasons_t;

/* Operations on a bcm_rx_reasons_t (not a pointer to one). */
#define BCM_RX_REASON_GET(reasons, reason) SHR_BITGET((reasons).pbits, reason)
#define BCM_RX_REASON_SET(reasons, reason) SHR_BITSET((reasons).pbits, reason)
#define BCM_RX_REASON_CLEAR(reasons, reason) SHR_BITCLR((reasons).pbits, reason)

#endif
