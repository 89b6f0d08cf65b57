/*
 * The way of one packet through a switch, see bcm_switch_pkt_trace_info_get.
 */
#ifndef BCM_SWITCH_TRACE_H
#define BCM_SWITCH_TRACE_H

#include <bcm/types.h>

#define BCM_SWITCH_PKT_TRACE_RAW_SIZE 128 /* bytes that the device delivers about a packet */
#define BCM_SWITCH_PKT_TRACE_LOOKUP_WORDS 2

/* options of bcm_switch_pkt_trace_info_get. */
#define BCM_SWITCH_PKT_TRACE_LEARN 0x00000001   /* the source address is learnt */
#define BCM_SWITCH_PKT_TRACE_FORWARD 0x00000002 /* the packet is sent; without it, it ends in the device */

/* Lookups of a packet that found something: bits of pkt_trace_lookup_status_bitmap. */
typedef enum bcm_switch_pkt_trace_lookup_e {
    /* Which VLAN and which station. */
    bcmSwitchPktTraceLookupPortVlanTranslateHit = 0,
    bcmSwitchPktTraceLookupVlanTranslateHit,
    bcmSwitchPktTraceLookupVlanMacHit,
    bcmSwitchPktTraceLookupVlanSubnetHit,
    bcmSwitchPktTraceLookupVlanProtocolHit,
    bcmSwitchPktTraceLookupStationHit,

    /* Bridging. */
    bcmSwitchPktTraceLookupL2SourceHit,
    bcmSwitchPktTraceLookupL2DestHit,
    bcmSwitchPktTraceLookupL2CacheHit,

    /* Routing. */
    bcmSwitchPktTraceLookupL3SourceHostHit,
    bcmSwitchPktTraceLookupL3DestHostHit,
    bcmSwitchPktTraceLookupL3SourceRouteHit,
    bcmSwitchPktTraceLookupL3DestRouteHit,
    bcmSwitchPktTraceLookupIpmcGroupHit,

    /* Tunnels and labels. */
    bcmSwitchPktTraceLookupTunnelHit,
    bcmSwitchPktTraceLookupMplsFirstLabelHit,
    bcmSwitchPktTraceLookupMplsSecondLabelHit,
    bcmSwitchPktTraceLookupMplsThirdLabelHit,
    bcmSwitchPktTraceLookupTrillHit,

    /* Rules and others. */
    bcmSwitchPktTraceLookupFieldVlanHit,
    bcmSwitchPktTraceLookupFieldIngressHit,
    bcmSwitchPktTraceLookupExactMatchHit,
    bcmSwitchPktTraceLookupOamEndpointHit,
    bcmSwitchPktTraceLookupBfdSessionHit
} bcm_switch_pkt_trace_lookup_t;

/* What the packet was taken for in the end. */
typedef enum bcm_switch_pkt_trace_resolution_e {
    /* For the switch itself. */
    bcmSwitchPktTraceResolutionUnknown = 0,
    bcmSwitchPktTraceResolutionControlPkt,
    bcmSwitchPktTraceResolutionOamPkt,
    bcmSwitchPktTraceResolutionBfdPkt,

    /* Bridged. */
    bcmSwitchPktTraceResolutionKnownL2Ucast,
    bcmSwitchPktTraceResolutionUnknownL2Ucast,
    bcmSwitchPktTraceResolutionKnownL2Mcast,
    bcmSwitchPktTraceResolutionUnknownL2Mcast,
    bcmSwitchPktTraceResolutionL2Broadcast,

    /* Routed. */
    bcmSwitchPktTraceResolutionKnownL3Ucast,
    bcmSwitchPktTraceResolutionUnknownL3Ucast,
    bcmSwitchPktTraceResolutionKnownIpMcast,
    bcmSwitchPktTraceResolutionUnknownIpMcast,

    /* By label or tunnel. */
    bcmSwitchPktTraceResolutionKnownMpls,
    bcmSwitchPktTraceResolutionUnknownMpls,
    bcmSwitchPktTraceResolutionKnownTrill,
    bcmSwitchPktTraceResolutionUnknownTrill,

    /* Nowhere. */
    bcmSwitchPktTraceResolutionDropped
} bcm_switch_pkt_trace_resolution_t;

/* State of the port that the packet came in by. */
typedef enum bcm_switch_pkt_trace_stp_state_e {
    bcmSwitchPktTraceStpDisabled = 0,
    bcmSwitchPktTraceStpBlocked,
    bcmSwitchPktTraceStpLearning,
    bcmSwitchPktTraceStpForwarding
} bcm_switch_pkt_trace_stp_state_t;

typedef struct bcm_switch_pkt_trace_lookup_result_s {
    /* Bits bcm_switch_pkt_trace_lookup_t, of the ingress and the egress half of the device. */
    SHR_BITDCL pkt_trace_lookup_status_bitmap[2][BCM_SWITCH_PKT_TRACE_LOOKUP_WORDS];
} bcm_switch_pkt_trace_lookup_result_t;

/* flags of bcm_switch_pkt_trace_hashing_info_t: the choices that were made, each with its members. */
#define BCM_SWITCH_PKT_TRACE_ECMP 0x00000001
#define BCM_SWITCH_PKT_TRACE_TRUNK 0x00000002

/* Where there was a choice among paths: of which group, and which path. */
typedef struct bcm_switch_pkt_trace_hashing_info_s {
    uint32 flags;                           /* BCM_SWITCH_PKT_TRACE_* above */
    bcm_if_t ecmp_group;
    bcm_if_t ecmp_egress;
    bcm_if_t ecmp_underlay_group;           /* of the tunnel, after the choice above */
    bcm_if_t ecmp_underlay_egress;
    bcm_trunk_t trunk;
    bcm_gport_t trunk_member;
    bcm_trunk_t fabric_trunk;
    bcm_gport_t fabric_trunk_member;
} bcm_switch_pkt_trace_hashing_info_t;

typedef struct bcm_switch_pkt_trace_info_s {
    uint8 pkt_trace_raw_data[BCM_SWITCH_PKT_TRACE_RAW_SIZE]; /* as the device delivers it */
    bcm_switch_pkt_trace_lookup_result_t pkt_trace_lookup_status;
    bcm_switch_pkt_trace_resolution_t pkt_trace_resolution;
    bcm_switch_pkt_trace_hashing_info_t pkt_trace_hashing_info;
    bcm_switch_pkt_trace_stp_state_t pkt_trace_stp_state;
    bcm_vlan_t pkt_trace_vlan;              /* that the packet was put into */
    bcm_gport_t pkt_trace_dest_port;        /* BCM_GPORT_INVALID if dropped, or for a group */
    int pkt_trace_dest_pipe;
} bcm_switch_pkt_trace_info_t;

#endif
