/*
 * VLANs 1..4094 and their member ports, and how tags are matched, changed and counted.
 * BCM_E_PARAM: VLAN id out of range; BCM_E_NOT_FOUND: no such VLAN, but for those of tags; BCM_E_PORT: a
 * bitmap has a port that the unit has not.
 */
#ifndef BCM_VLAN_H
#define BCM_VLAN_H

#include <bcm/error.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* In place of a VLAN id: none, and any or all. */
#define BCM_VLAN_INVALID 4095
#define BCM_VLAN_NONE 0
#define BCM_VLAN_ALL BCM_VLAN_INVALID

/* flags of bcm_vlan_control_vlan_t. */
typedef enum bcm_vlan_control_flag_e {
    BCM_VLAN_LEARN_DISABLE = 0x00000001,
    BCM_VLAN_L2_LOOKUP_DISABLE = 0x00000002,
    BCM_VLAN_UNKNOWN_UCAST_DROP = 0x00000004,
    BCM_VLAN_UNKNOWN_IP4_MCAST_TOCPU = 0x00000008,
    BCM_VLAN_UNKNOWN_IP6_MCAST_TOCPU = 0x00000010,
    BCM_VLAN_COPY_TO_CPU = 0x00000020,
    BCM_VLAN_IP4_DISABLE = 0x00000040,
    BCM_VLAN_IP6_DISABLE = 0x00000080,
    BCM_VLAN_IP4_MCAST_DISABLE = 0x00000100,
    BCM_VLAN_IP6_MCAST_DISABLE = 0x00000200,
    BCM_VLAN_MPLS_DISABLE = 0x00000400,
    BCM_VLAN_FCOE_ROUTE_ENABLE = 0x00000800,
    BCM_VLAN_SERVICE_TAG_NONE = 0x00001000 /* the VLAN id stays off the wire */
} bcm_vlan_control_flag_t;

/* flags of bcm_vlan_gport_add and bcm_vlan_gport_get. */
#define BCM_VLAN_GPORT_ADD_UNTAGGED 0x00000001
#define BCM_VLAN_GPORT_ADD_EGRESS_ONLY 0x00000002
#define BCM_VLAN_GPORT_ADD_INGRESS_ONLY 0x00000004

/* flags of bcm_vlan_port_t. */
typedef enum bcm_vlan_port_flag_e {
    BCM_VLAN_PORT_REPLACE = 0x00000001,
    BCM_VLAN_PORT_WITH_ID = 0x00000002, /* vlan_port_id is the gport to use */
    BCM_VLAN_PORT_INNER_VLAN_ADD = 0x00000004,
    BCM_VLAN_PORT_OUTER_VLAN_REMOVE = 0x00000008,
    BCM_VLAN_PORT_FAILOVER = 0x00000010 /* used when its failover has switched over */
} bcm_vlan_port_flag_t;

/* flags of bcm_vlan_ip_t. */
#define BCM_VLAN_SUBNET_IP6 0x00000001         /* ip6 and prefix instead of ip4 and mask */

/* flags of bcm_vlan_action_set_t. */
#define BCM_VLAN_ACTION_SET_EGRESS 0x00000001
#define BCM_VLAN_ACTION_SET_INGRESS 0x00000002

/* The ..._action members of bcm_vlan_protocol_packet_ctrl_t. */
#define BCM_VLAN_PROTO_PKT_FORWARD_ENABLE 0x00000001
#define BCM_VLAN_PROTO_PKT_TOCPU_ENABLE 0x00000002
#define BCM_VLAN_PROTO_PKT_DROP_ENABLE 0x00000004
#define BCM_VLAN_PROTO_PKT_FLOOD_ENABLE 0x00000008

/* What identifies packets of a VLAN port. */
typedef enum bcm_vlan_port_match_e {
    BCM_VLAN_PORT_MATCH_INVALID = 0,
    BCM_VLAN_PORT_MATCH_PORT = 1,
    BCM_VLAN_PORT_MATCH_PORT_VLAN = 2,
    BCM_VLAN_PORT_MATCH_PORT_INNER_VLAN = 3,
    BCM_VLAN_PORT_MATCH_PORT_VLAN_STACKED = 4,
    BCM_VLAN_PORT_MATCH_PORT_CVLAN = 5,
    BCM_VLAN_PORT_MATCH_PORT_PCP_VLAN = 6,
    BCM_VLAN_PORT_MATCH_PORT_TUNNEL = 7,
    BCM_VLAN_PORT_MATCH_PORT_VLAN_ETHERTYPE = 8,
    BCM_VLAN_PORT_MATCH_COUNT = 9
} bcm_vlan_port_match_t;

/* What happens to a tag, or to one field of it. */
typedef enum bcm_vlan_action_e {
    bcmVlanActionNone = 0,
    bcmVlanActionAdd = 1,
    bcmVlanActionReplace = 2,
    bcmVlanActionDelete = 3,
    bcmVlanActionCopy = 4,          /* takes the value of the other tag */
    bcmVlanActionOuterAdd = 5,      /* takes the value of the outer tag that arrived */
    bcmVlanActionInnerAdd = 6,
    bcmVlanActionMappedAdd = 7,     /* adds with the value that a mapping table gives */
    bcmVlanActionMappedReplace = 8,
    bcmVlanActionCount = 9
} bcm_vlan_action_t;

/* What happens to the TPID of a tag. */
typedef enum bcm_vlan_tpid_action_e {
    bcmVlanTpidActionNone = 0,
    bcmVlanTpidActionModify = 1,
    bcmVlanTpidActionInner = 2,
    bcmVlanTpidActionOuter = 3,
    bcmVlanTpidActionCount = 4
} bcm_vlan_tpid_action_t;

/* What a translation looks up, each together with the port (or port class) that the call gives. */
typedef enum bcm_vlan_translate_key_e {
    bcmVlanTranslateKeyInvalid = 0,
    bcmVlanTranslateKeyDouble = 1,                 /* both VLAN ids, on any port */
    bcmVlanTranslateKeyOuter = 2,
    bcmVlanTranslateKeyInner = 3,
    bcmVlanTranslateKeyOuterTag = 4,               /* VLAN id, priority and CFI */
    bcmVlanTranslateKeyInnerTag = 5,
    bcmVlanTranslateKeyOuterPri = 6,
    bcmVlanTranslateKeyPortDouble = 7,
    bcmVlanTranslateKeyPortOuter = 8,
    bcmVlanTranslateKeyPortInner = 9,
    bcmVlanTranslateKeyPortOuterTag = 10,
    bcmVlanTranslateKeyPortInnerTag = 11,
    bcmVlanTranslateKeyPortOuterPri = 12,
    bcmVlanTranslateKeyPortPonTunnel = 13,
    bcmVlanTranslateKeyPortPonTunnelOuter = 14,
    bcmVlanTranslateKeyPortPonTunnelInner = 15,
    bcmVlanTranslateKeyPortPonTunnelDouble = 16,
    bcmVlanTranslateKeyPortPonTunnelOuterPri = 17,
    bcmVlanTranslateKeyPortGroupOuter = 18,
    bcmVlanTranslateKeyPortGroupInner = 19,
    bcmVlanTranslateKeyPortGroupDouble = 20,
    bcmVlanTranslateKeyVifOuter = 21,
    bcmVlanTranslateKeyVif = 22,
    bcmVlanTranslateKeyCount = 23
} bcm_vlan_translate_key_t;

/* How far unknown multicasts of a VLAN go. */
typedef enum bcm_vlan_mcast_flood_e {
    bcmVlanMcastFloodAll = 0,
    bcmVlanMcastFloodUnknown = 1,
    bcmVlanMcastFloodNone = 2
} bcm_vlan_mcast_flood_t;

/* How packets of a VLAN are forwarded. */
typedef enum bcm_vlan_forward_e {
    bcmVlanForwardBridging = 0,
    bcmVlanForwardSingleCrossConnect = 1,
    bcmVlanForwardDoubleCrossConnect = 2,
    bcmVlanForwardFabric = 3
} bcm_vlan_forward_t;

/* Check of the source address of routed packets against the routing table. */
typedef enum bcm_vlan_urpf_mode_e {
    bcmVlanUrpfDisable = 0,
    bcmVlanUrpfLoose = 1,
    bcmVlanUrpfStrict = 2
} bcm_vlan_urpf_mode_t;

/* How multicasts are copied to the virtual ports of a VLAN. */
typedef enum bcm_vlan_vp_mc_ctrl_e {
    bcmVlanVpMcastReplicateByGroup = 0,
    bcmVlanVpMcastReplicateByVlan = 1,
    bcmVlanVpMcastReplicateNever = 2
} bcm_vlan_vp_mc_ctrl_t;

/* Settings of a unit. */
typedef enum bcm_vlan_control_e {
    bcmVlanDropUnknown = 0,
    bcmVlanPreferIP4 = 1,                 /* subnet before MAC assignment */
    bcmVlanPreferMAC = 2,
    bcmVlanShared = 3,                    /* all VLANs share one address table */
    bcmVlanSharedID = 4,                  /* VLAN id that the shared table uses */
    bcmVlanIgnorePriorityTag = 5,
    bcmVlanTranslate = 6,
    bcmVlanFlushOnDestroy = 7,
    bcmVlanItagTpidSelect = 8,
    bcmVlanRangeCheckEnable = 9,
    bcmVlanCrossConnectEnable = 10,
    bcmVlanEgressFilterAllPorts = 11,
    bcmVlanLearnByInnerVlan = 12,
    bcmVlanDoubleTagLookupFirst = 13,
    bcmVlanSubnetLookupBits = 14,
    bcmVlanPriorityMapShared = 15,
    bcmVlanStatByColor = 16,
    bcmVlanControlCount = 17
} bcm_vlan_control_t;

/* Settings of a port. */
typedef enum bcm_vlan_control_port_e {
    bcmVlanPortPreferIP4 = 0,
    bcmVlanPortPreferMAC = 1,
    bcmVlanTranslateIngressEnable = 2,
    bcmVlanTranslateIngressMissDrop = 3,
    bcmVlanTranslateIngressHitDrop = 4,
    bcmVlanTranslateEgressEnable = 5,
    bcmVlanTranslateEgressMissDrop = 6,
    bcmVlanTranslateEgressMissUntagToUnmodified = 7,
    bcmVlanTranslateEgressKey = 8,
    bcmVlanTranslateUseOuterTag = 9,
    bcmVlanTranslateUsePortDefault = 10,
    bcmVlanLookupMACEnable = 11,
    bcmVlanLookupIPEnable = 12,
    bcmVlanLookupProtocolEnable = 13,
    bcmVlanPortUseInnerPri = 14,
    bcmVlanPortTranslateKeyFirst = 15,
    bcmVlanPortTranslateKeySecond = 16,
    bcmVlanPortTranslateKeyFirstRangeEnable = 17,
    bcmVlanPortTranslateKeySecondRangeEnable = 18,
    bcmVlanPortTranslateKeyFirstOuterTpidMatch = 19,
    bcmVlanPortTranslateKeySecondOuterTpidMatch = 20,
    bcmVlanPortDoubleLookupEnable = 21,
    bcmVlanPortUntaggedDrop = 22,
    bcmVlanPortTaggedDrop = 23,
    bcmVlanPortPriTaggedDrop = 24,
    bcmVlanPortEgressInnerTpid = 25,
    bcmVlanPortOuterTpidSelect = 26,
    bcmVlanPortIngressFilterBypass = 27,
    bcmVlanPortControlCount = 28
} bcm_vlan_control_port_t;

/* Counters of a VLAN, a VLAN on a port, or a translation. */
typedef enum bcm_vlan_stat_e {
    bcmVlanStatBytes = 0,                 /* received and sent */
    bcmVlanStatPackets = 1,
    bcmVlanStatUnicastPackets = 2,
    bcmVlanStatUnicastBytes = 3,
    bcmVlanStatNonUnicastPackets = 4,
    bcmVlanStatNonUnicastBytes = 5,
    bcmVlanStatForwardDropPackets = 6,    /* dropped by forwarding: no route, blocked, split horizon */
    bcmVlanStatForwardDropBytes = 7,
    bcmVlanStatIngressPackets = 8,
    bcmVlanStatIngressBytes = 9,
    bcmVlanStatEgressPackets = 10,
    bcmVlanStatEgressBytes = 11,
    bcmVlanStatIngressUnicastPackets = 12,
    bcmVlanStatIngressUnicastBytes = 13,
    bcmVlanStatIngressMulticastPackets = 14,
    bcmVlanStatIngressMulticastBytes = 15,
    bcmVlanStatIngressBroadcastPackets = 16,
    bcmVlanStatIngressBroadcastBytes = 17,
    bcmVlanStatIngressUnknownUnicastPackets = 18,
    bcmVlanStatIngressUnknownUnicastBytes = 19,
    bcmVlanStatIngressDropPackets = 20,
    bcmVlanStatIngressDropBytes = 21,
    bcmVlanStatEgressUnicastPackets = 22,
    bcmVlanStatEgressUnicastBytes = 23,
    bcmVlanStatEgressMulticastPackets = 24,
    bcmVlanStatEgressMulticastBytes = 25,
    bcmVlanStatEgressDropPackets = 26,
    bcmVlanStatEgressDropBytes = 27,
    bcmVlanStatGreenPackets = 28,
    bcmVlanStatGreenBytes = 29,
    bcmVlanStatYellowPackets = 30,
    bcmVlanStatYellowBytes = 31,
    bcmVlanStatRedPackets = 32,
    bcmVlanStatRedBytes = 33,
    bcmVlanStatCount = 34
} bcm_vlan_stat_t;

/*
 * What is done to the tags of a packet. The packets are told apart by what they arrive with: dt_ both tags,
 * ot_ outer only, it_ inner only, ut_ untagged; the second word is the tag that is changed. _prio stands
 * for VLAN priority as the switch sees it, _pkt_prio and _cfi for the tag's own bits.
 */
typedef struct bcm_vlan_action_set_s {
    bcm_vlan_t new_outer_vlan;
    bcm_vlan_t new_inner_vlan;
    uint8 new_inner_pkt_prio;      /* 0..7 */
    uint8 new_outer_cfi;
    uint8 new_inner_cfi;
    bcm_if_t ingress_if;           /* L3 interface, 0 for none */
    int priority;                  /* internal priority, or -1 to leave it */
    bcm_vlan_action_t dt_outer;
    bcm_vlan_action_t dt_outer_prio;
    bcm_vlan_action_t dt_outer_pkt_prio;
    bcm_vlan_action_t dt_outer_cfi;
    bcm_vlan_action_t dt_inner;
    bcm_vlan_action_t dt_inner_prio;
    bcm_vlan_action_t dt_inner_pkt_prio;
    bcm_vlan_action_t dt_inner_cfi;
    bcm_vlan_action_t ot_outer;
    bcm_vlan_action_t ot_outer_prio;
    bcm_vlan_action_t ot_outer_pkt_prio;
    bcm_vlan_action_t ot_outer_cfi;
    bcm_vlan_action_t ot_inner;
    bcm_vlan_action_t ot_inner_pkt_prio;
    bcm_vlan_action_t ot_inner_cfi;
    bcm_vlan_action_t it_outer;
    bcm_vlan_action_t it_outer_pkt_prio;
    bcm_vlan_action_t it_outer_cfi;
    bcm_vlan_action_t it_inner;
    bcm_vlan_action_t it_inner_prio;
    bcm_vlan_action_t it_inner_pkt_prio;
    bcm_vlan_action_t it_inner_cfi;
    bcm_vlan_action_t ut_outer;
    bcm_vlan_action_t ut_outer_pkt_prio;
    bcm_vlan_action_t ut_outer_cfi;
    bcm_vlan_action_t ut_inner;
    bcm_vlan_action_t ut_inner_pkt_prio;
    bcm_vlan_action_t ut_inner_cfi;
    bcm_vlan_action_t outer_pcp;
    bcm_vlan_action_t inner_pcp;
    bcm_policer_t policer_id;
    bcm_tpid_t outer_tpid;
    bcm_tpid_t inner_tpid;
    bcm_vlan_tpid_action_t outer_tpid_action;
    bcm_vlan_tpid_action_t inner_tpid_action;
    int action_id;                 /* edit command on chips that number them */
    uint32 class_id;               /* class that field rules can match */
    uint32 flags;                  /* BCM_VLAN_ACTION_SET_* */
} bcm_vlan_action_set_t;

typedef struct bcm_vlan_data_s {
    bcm_vlan_t vlan_tag;
    bcm_pbmp_t port_bitmap;    /* all members */
    bcm_pbmp_t ut_port_bitmap; /* those that send untagged */
} bcm_vlan_data_t;

/* Which edit command packets get, by VLAN edit class and tag format class. */
typedef struct bcm_vlan_translate_action_class_s {
    uint32 flags;
    uint32 vlan_edit_class_id;
    uint32 tag_format_class_id;
    int vlan_translation_action_id;
} bcm_vlan_translate_action_class_t;

/* Source subnet that decides about the VLAN of untagged packets. */
typedef struct bcm_vlan_ip_s {
    uint32 flags;              /* BCM_VLAN_SUBNET_* */
    bcm_ip_t ip4;
    bcm_ip_t mask;
    bcm_ip6_t ip6;
    int prefix;                /* bits, 0..128 */
    bcm_vlan_t vid;
    int prio;                  /* 0..7 */
} bcm_vlan_ip_t;

/* What happens to control packets of a VLAN, BCM_VLAN_PROTO_PKT_* per protocol. */
typedef struct bcm_vlan_protocol_packet_ctrl_s {
    uint32 mmrp_action;
    uint32 srp_action;
    uint32 arp_reply_action;
    uint32 arp_request_action;
    uint32 nd_action;
    uint32 dhcp_action;
    uint32 igmp_report_leave_action;
    uint32 igmp_query_action;
    uint32 igmp_unknown_msg_action;
    uint32 mld_report_done_action;
    uint32 mld_query_action;
    uint32 ip4_rsvd_mc_action;
    uint32 ip6_rsvd_mc_action;
    uint32 ip4_mc_router_adv_action;
    uint32 ip6_mc_router_adv_action;
    int flood_action_according_to_pfm;
} bcm_vlan_protocol_packet_ctrl_t;

/* Settings of one VLAN. */
typedef struct bcm_vlan_control_vlan_s {
    bcm_vrf_t vrf;
    bcm_vlan_t forwarding_vlan;                   /* VLAN id under which addresses are looked up */
    bcm_if_t ingress_if;
    bcm_tpid_t outer_tpid;
    uint32 flags;                                 /* BCM_VLAN_* */
    bcm_vlan_mcast_flood_t ip6_mcast_flood_mode;
    bcm_vlan_mcast_flood_t ip4_mcast_flood_mode;
    bcm_vlan_mcast_flood_t l2_mcast_flood_mode;
    int if_class;
    bcm_vlan_forward_t forwarding_mode;
    bcm_vlan_urpf_mode_t urpf_mode;
    bcm_cos_queue_t cosq;
    int qos_map_id;
    bcm_fabric_distribution_t distribution_class;
    bcm_multicast_t broadcast_group;
    bcm_multicast_t unknown_multicast_group;
    bcm_multicast_t unknown_unicast_group;
    bcm_multicast_t trill_nonunicast_group;
    int source_trill_name;
    int trunk_index;
    bcm_vlan_protocol_packet_ctrl_t protocol_pkt;
    int nat_realm_id;
    int l3_if_class;
    bcm_vlan_vp_mc_ctrl_t vp_mc_ctrl;
    int aging_cycles;
    int entropy_id;
    bcm_vpn_t vpn;
    bcm_vlan_t egress_vlan;
} bcm_vlan_control_vlan_t;

/* Ports to which packets of a VLAN are not sent, by kind of packet. */
typedef struct bcm_vlan_block_s {
    bcm_pbmp_t known_multicast;
    bcm_pbmp_t unknown_multicast;
    bcm_pbmp_t unknown_unicast;
    bcm_pbmp_t broadcast;
} bcm_vlan_block_t;

/* A virtual port: packets of one or two tags on a port, and how they leave it. */
typedef struct bcm_vlan_port_s {
    bcm_vlan_port_match_t criteria;
    uint32 flags;                       /* BCM_VLAN_PORT_* */
    bcm_vlan_t vsi;                     /* switching instance, 0 to assign it later */
    bcm_vlan_t match_vlan;
    bcm_vlan_t match_inner_vlan;
    uint8 match_pcp;                    /* 0..7 */
    bcm_tunnel_id_t match_tunnel_value;
    bcm_ethertype_t match_ethertype;
    bcm_gport_t port;
    int pkt_pri;                        /* 0..7 */
    int pkt_cfi;
    bcm_tpid_t egress_service_tpid;
    bcm_vlan_t egress_vlan;
    bcm_vlan_t egress_inner_vlan;
    bcm_tunnel_id_t egress_tunnel_value;
    bcm_if_t encap_id;
    int qos_map_id;
    bcm_policer_t policer_id;
    bcm_policer_t egress_policer_id;
    bcm_failover_t failover_id;
    bcm_gport_t failover_port_id;
    bcm_gport_t vlan_port_id;           /* out: the gport of the virtual port */
    bcm_multicast_t failover_mc_group;
    bcm_failover_t ingress_failover_id;
    bcm_failover_t egress_failover_id;
    bcm_gport_t egress_failover_port_id;
    bcm_switch_network_group_t ingress_network_group_id;
    bcm_switch_network_group_t egress_network_group_id;
    int inlif_counting_profile;
    int outlif_counting_profile;
} bcm_vlan_port_t;

/* VLANs that a virtual port gives its packets. */
typedef struct bcm_vlan_port_translation_s {
    uint32 flags;                       /* BCM_VLAN_ACTION_SET_* */
    bcm_gport_t gport;
    bcm_vlan_t new_outer_vlan;
    bcm_vlan_t new_inner_vlan;
    uint32 vlan_edit_class_id;
} bcm_vlan_port_translation_t;

/* The VLAN and switching instance to which a gport belongs. */
typedef struct bcm_vlan_gport_info_s {
    uint32 flags;
    bcm_vlan_t vlan;
    bcm_vlan_t vsi;
    bcm_gport_t gport;
} bcm_vlan_gport_info_t;

/* A switching instance, and where packets without known destination go. */
typedef struct bcm_vlan_vpn_config_s {
    uint32 flags;
    bcm_vpn_t vpn;
    bcm_multicast_t broadcast_group;
    bcm_multicast_t unknown_unicast_group;
    bcm_multicast_t unknown_multicast_group;
} bcm_vlan_vpn_config_t;

/*
 * Called once per entry of the table that is traversed. Records are valid during the call. A negative
 * result ends the traversal, which then returns it.
 */
typedef int (*bcm_vlan_port_protocol_action_traverse_cb)(int unit, bcm_port_t port,
                                                         bcm_port_frametype_t frame,
                                                         bcm_port_ethertype_t ether,
                                                         bcm_vlan_action_set_t *action, void *user_data);
typedef int (*bcm_vlan_mac_action_traverse_cb)(int unit, bcm_mac_t mac, bcm_vlan_action_set_t *action,
                                               void *user_data);
typedef int (*bcm_vlan_translate_egress_action_traverse_cb)(int unit, int port_class, bcm_vlan_t outer_vlan,
                                                            bcm_vlan_t inner_vlan,
                                                            bcm_vlan_action_set_t *action, void *user_data);
typedef int (*bcm_vlan_translate_action_traverse_cb)(int unit, bcm_gport_t port,
                                                     bcm_vlan_translate_key_t key_type,
                                                     bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                                     bcm_vlan_action_set_t *action, void *user_data);
typedef int (*bcm_vlan_translate_traverse_cb)(int unit, bcm_port_t port, bcm_vlan_t old_vid,
                                              bcm_vlan_t new_vid, int prio, void *user_data);
typedef int (*bcm_vlan_translate_egress_traverse_cb)(int unit, bcm_port_t port, bcm_vlan_t old_vid,
                                                     bcm_vlan_t new_vid, int prio, void *user_data);
typedef int (*bcm_vlan_translate_action_range_traverse_cb)(int unit, bcm_gport_t port,
                                                           bcm_vlan_t outer_vlan_low,
                                                           bcm_vlan_t outer_vlan_high,
                                                           bcm_vlan_t inner_vlan_low,
                                                           bcm_vlan_t inner_vlan_high,
                                                           bcm_vlan_action_set_t *action, void *user_data);
typedef int (*bcm_vlan_translate_range_traverse_cb)(int unit, bcm_port_t port, bcm_vlan_t old_vid_low,
                                                    bcm_vlan_t old_vid_high, bcm_vlan_t new_vid,
                                                    int int_prio, void *user_data);
typedef int (*bcm_vlan_dtag_traverse_cb)(int unit, bcm_port_t port, bcm_vlan_t inner_vid, bcm_vlan_t new_vid,
                                         int prio, void *user_data);
typedef int (*bcm_vlan_dtag_range_traverse_cb)(int unit, bcm_port_t port, bcm_vlan_t inner_vid_low,
                                               bcm_vlan_t inner_vid_high, bcm_vlan_t new_vid, int int_prio,
                                               void *user_data);
typedef int (*bcm_vlan_ip_action_traverse_cb)(int unit, bcm_vlan_ip_t *vlan_ip,
                                              bcm_vlan_action_set_t *action, void *user_data);
typedef int (*bcm_vlan_cross_connect_traverse_cb)(int unit, bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                                  bcm_gport_t port_1, bcm_gport_t port_2, void *user_data);
typedef int (*bcm_vlan_vpn_traverse_cb)(int unit, bcm_vlan_vpn_config_t *info, void *user_data);

/*
 * Members. Those added that are also in ubmp send untagged, the others tagged, whatever they did before;
 * ubmp must lie within pbmp (BCM_E_PARAM). Removing a port that is no member is no error.
 */
int bcm_vlan_port_get(int unit, bcm_vlan_t vid, bcm_pbmp_t *pbmp, bcm_pbmp_t *ubmp);
int bcm_vlan_port_add(int unit, bcm_vlan_t vid, bcm_pbmp_t pbmp, bcm_pbmp_t ubmp);
int bcm_vlan_port_remove(int unit, bcm_vlan_t vid, bcm_pbmp_t pbmp);

/* What is done to packets for which no translation is found, on arrival and on leaving. */
int bcm_vlan_port_default_action_get(int unit, bcm_port_t port, bcm_vlan_action_set_t *action);
int bcm_vlan_port_default_action_set(int unit, bcm_port_t port, bcm_vlan_action_set_t *action);
int bcm_vlan_port_default_action_delete(int unit, bcm_port_t port);
int bcm_vlan_port_egress_default_action_get(int unit, bcm_port_t port, bcm_vlan_action_set_t *action);
int bcm_vlan_port_egress_default_action_set(int unit, bcm_port_t port, bcm_vlan_action_set_t *action);
int bcm_vlan_port_egress_default_action_delete(int unit, bcm_port_t port);

/* Actions by protocol: frame is one of BCM_PORT_FRAMETYPE_*, ether the Ethernet type. */
int bcm_vlan_port_protocol_action_add(int unit, bcm_port_t port, bcm_port_frametype_t frame,
                                      bcm_port_ethertype_t ether, bcm_vlan_action_set_t *action);
int bcm_vlan_port_protocol_action_get(int unit, bcm_port_t port, bcm_port_frametype_t frame,
                                      bcm_port_ethertype_t ether, bcm_vlan_action_set_t *action);
int bcm_vlan_port_protocol_action_delete(int unit, bcm_port_t port, bcm_port_frametype_t frame,
                                         bcm_port_ethertype_t ether);
int bcm_vlan_port_protocol_action_delete_all(int unit, bcm_port_t port);
int bcm_vlan_port_protocol_action_traverse(int unit, bcm_vlan_port_protocol_action_traverse_cb cb,
                                           void *user_data);

/* Policers of a VLAN on a port, by direction; 0 for none. */
int bcm_vlan_port_policer_get(int unit, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t *policer_id);
int bcm_vlan_port_policer_set(int unit, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t policer_id);
int bcm_vlan_port_egress_policer_set(int unit, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t policer_id);
int bcm_vlan_port_egress_policer_get(int unit, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t *policer_id);

/* Counters of a VLAN on a port. The _multi_ functions take nstat entries in both arrays. */
int bcm_vlan_port_stat_enable_set(int unit, bcm_vlan_t vid, bcm_port_t port, int enable);
int bcm_vlan_port_stat_enable_get(int unit, bcm_vlan_t vid, bcm_port_t port, int *enable);
int bcm_vlan_port_stat_get(int unit, bcm_vlan_t vlan, bcm_port_t port, bcm_cos_t cos, bcm_vlan_stat_t stat,
                           uint64 *val);
int bcm_vlan_port_stat_multi_get(int unit, bcm_vlan_t vlan, bcm_port_t port, bcm_cos_t cos, int nstat,
                                 bcm_vlan_stat_t *stat_arr, uint64 *value_arr);
int bcm_vlan_port_stat_get32(int unit, bcm_vlan_t vlan, bcm_port_t port, bcm_cos_t cos, bcm_vlan_stat_t stat,
                             uint32 *val);
int bcm_vlan_port_stat_multi_get32(int unit, bcm_vlan_t vlan, bcm_port_t port, bcm_cos_t cos, int nstat,
                                   bcm_vlan_stat_t *stat_arr, uint32 *value_arr);
int bcm_vlan_port_stat_set(int unit, bcm_vlan_t vlan, bcm_port_t port, bcm_cos_t cos, bcm_vlan_stat_t stat,
                           uint64 val);
int bcm_vlan_port_stat_set32(int unit, bcm_vlan_t vlan, bcm_port_t port, bcm_cos_t cos, bcm_vlan_stat_t stat,
                             uint32 val);
int bcm_vlan_port_stat_multi_set(int unit, bcm_vlan_t vlan, bcm_port_t port, bcm_cos_t cos, int nstat,
                                 bcm_vlan_stat_t *stat_arr, uint64 *value_arr);
int bcm_vlan_port_stat_multi_set32(int unit, bcm_vlan_t vlan, bcm_port_t port, bcm_cos_t cos, int nstat,
                                   bcm_vlan_stat_t *stat_arr, uint32 *value_arr);

/* Virtual ports. create writes the gport to vlan_port_id; find fills in the rest for a vlan_port_id. */
void bcm_vlan_port_t_init(bcm_vlan_port_t *vlan_port);
int bcm_vlan_port_create(int unit, bcm_vlan_port_t *vlan_port);
int bcm_vlan_port_destroy(int unit, bcm_gport_t gport);
int bcm_vlan_port_find(int unit, bcm_vlan_port_t *vlan_port);
void bcm_vlan_port_translation_t_init(bcm_vlan_port_translation_t *port_trans);
int bcm_vlan_port_translation_set(int unit, bcm_vlan_port_translation_t *port_trans);
int bcm_vlan_port_translation_get(int unit, bcm_gport_t gport, bcm_vlan_port_translation_t *port_trans);

/* Members that are gports, BCM_VLAN_GPORT_ADD_* flags. get_all writes at most array_max of them. */
int bcm_vlan_gport_add(int unit, bcm_vlan_t vlan, bcm_gport_t port, uint32 flags);
int bcm_vlan_gport_delete(int unit, bcm_vlan_t vlan, bcm_gport_t port);
int bcm_vlan_gport_extended_delete(int unit, bcm_vlan_t vlan, bcm_gport_t port, uint32 flags);
int bcm_vlan_gport_delete_all(int unit, bcm_vlan_t vlan);
int bcm_vlan_gport_get(int unit, bcm_vlan_t vlan, bcm_gport_t port, uint32 *flags);
int bcm_vlan_gport_get_all(int unit, bcm_vlan_t vlan, int array_max, bcm_gport_t *gport_array,
                           uint32 *flags_array, int *array_size);
void bcm_vlan_gport_info_t_init(bcm_vlan_gport_info_t *gport_info);
int bcm_vlan_gport_info_get(int unit, bcm_gport_t gport, bcm_vlan_gport_info_t *gport_info);

/*
 * All VLANs, or those with any of the ports as members, by ascending id. *listp is allocated for the
 * caller, who gives it back with bcm_vlan_list_destroy; it is null if there are none.
 */
int bcm_vlan_list(int unit, bcm_vlan_data_t **listp, int *countp);
int bcm_vlan_list_by_pbmp(int unit, bcm_pbmp_t ports, bcm_vlan_data_t **listp, int *countp);
int bcm_vlan_list_destroy(int unit, bcm_vlan_data_t *list, int count);

/* VLAN or actions by source MAC address. */
int bcm_vlan_mac_add(int unit, bcm_mac_t mac, bcm_vlan_t vid, int prio);
int bcm_vlan_mac_delete(int unit, bcm_mac_t mac);
int bcm_vlan_mac_delete_all(int unit);
int bcm_vlan_mac_action_traverse(int unit, bcm_vlan_mac_action_traverse_cb cb, void *user_data);
int bcm_vlan_mac_action_add(int unit, bcm_mac_t mac, bcm_vlan_action_set_t *action);
int bcm_vlan_mac_action_get(int unit, bcm_mac_t mac, bcm_vlan_action_set_t *action);
int bcm_vlan_mac_action_delete(int unit, bcm_mac_t mac);
int bcm_vlan_mac_action_delete_all(int unit);

/* Translation of VLAN ids on arrival, by port; prio is the new priority, or -1 to leave it. */
int bcm_vlan_translate_add(int unit, bcm_port_t port, bcm_vlan_t old_vid, bcm_vlan_t new_vid, int prio);
int bcm_vlan_translate_get(int unit, bcm_port_t port, bcm_vlan_t old_vid, bcm_vlan_t *new_vid, int *prio);
int bcm_vlan_translate_delete(int unit, bcm_port_t port, bcm_vlan_t old_vid);
int bcm_vlan_translate_delete_all(int unit);

/* Actions on arrival. add replaces an existing translation, create gives BCM_E_EXISTS. */
int bcm_vlan_translate_action_add(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                  bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                  bcm_vlan_action_set_t *action);
int bcm_vlan_translate_action_create(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                     bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                     bcm_vlan_action_set_t *action);
int bcm_vlan_translate_action_get(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                  bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                  bcm_vlan_action_set_t *action);
int bcm_vlan_translate_action_delete(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                     bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan);

/* Translation on leaving, by port, and actions by class of the port (bcmPortClassVlanTranslateEgress). */
int bcm_vlan_translate_egress_add(int unit, bcm_port_t port, bcm_vlan_t old_vid, bcm_vlan_t new_vid,
                                  int prio);
int bcm_vlan_translate_egress_get(int unit, bcm_port_t port, bcm_vlan_t old_vid, bcm_vlan_t *new_vid,
                                  int *prio);
int bcm_vlan_translate_egress_delete(int unit, bcm_port_t port, bcm_vlan_t old_vid);
int bcm_vlan_translate_egress_delete_all(int unit);
int bcm_vlan_translate_egress_action_add(int unit, int port_class, bcm_vlan_t outer_vlan,
                                         bcm_vlan_t inner_vlan, bcm_vlan_action_set_t *action);
int bcm_vlan_translate_egress_action_get(int unit, int port_class, bcm_vlan_t outer_vlan,
                                         bcm_vlan_t inner_vlan, bcm_vlan_action_set_t *action);
int bcm_vlan_translate_egress_action_delete(int unit, int port_class, bcm_vlan_t outer_vlan,
                                            bcm_vlan_t inner_vlan);

/* Translation of ranges of VLAN ids, limits included. */
int bcm_vlan_translate_range_add(int unit, bcm_port_t port, bcm_vlan_t old_vid_low, bcm_vlan_t old_vid_high,
                                 bcm_vlan_t new_vid, int int_prio);
int bcm_vlan_translate_range_get(int unit, bcm_port_t port, bcm_vlan_t old_vid_low, bcm_vlan_t old_vid_high,
                                 bcm_vlan_t *new_vid, int *int_prio);
int bcm_vlan_translate_range_delete(int unit, bcm_port_t port, bcm_vlan_t old_vid_low,
                                    bcm_vlan_t old_vid_high);
int bcm_vlan_translate_range_delete_all(int unit);
int bcm_vlan_translate_action_range_add(int unit, bcm_gport_t port, bcm_vlan_t outer_vlan_low,
                                        bcm_vlan_t outer_vlan_high, bcm_vlan_t inner_vlan_low,
                                        bcm_vlan_t inner_vlan_high, bcm_vlan_action_set_t *action);
int bcm_vlan_translate_action_range_get(int unit, bcm_gport_t port, bcm_vlan_t outer_vlan_low,
                                        bcm_vlan_t outer_vlan_high, bcm_vlan_t inner_vlan_low,
                                        bcm_vlan_t inner_vlan_high, bcm_vlan_action_set_t *action);
int bcm_vlan_translate_action_range_delete(int unit, bcm_gport_t port, bcm_vlan_t outer_vlan_low,
                                           bcm_vlan_t outer_vlan_high, bcm_vlan_t inner_vlan_low,
                                           bcm_vlan_t inner_vlan_high);
int bcm_vlan_translate_action_range_delete_all(int unit);

/* Traversals of the translations above. */
int bcm_vlan_translate_egress_action_traverse(int unit, bcm_vlan_translate_egress_action_traverse_cb cb,
                                              void *user_data);
int bcm_vlan_translate_action_traverse(int unit, bcm_vlan_translate_action_traverse_cb cb, void *user_data);
int bcm_vlan_translate_traverse(int unit, bcm_vlan_translate_traverse_cb cb, void *user_data);
int bcm_vlan_translate_egress_traverse(int unit, bcm_vlan_translate_egress_traverse_cb cb, void *user_data);
int bcm_vlan_translate_action_range_traverse(int unit, bcm_vlan_translate_action_range_traverse_cb cb,
                                             void *user_data);
int bcm_vlan_translate_range_traverse(int unit, bcm_vlan_translate_range_traverse_cb cb, void *user_data);

/* Numbered edit commands, BCM_VLAN_ACTION_SET_* flags, and the classes that select them. */
int bcm_vlan_translate_action_id_create(int unit, uint32 flags, int *action_id);
int bcm_vlan_translate_action_id_destroy(int unit, uint32 flags, int action_id);
int bcm_vlan_translate_action_id_destroy_all(int unit, uint32 flags);
int bcm_vlan_translate_action_id_set(int unit, uint32 flags, int action_id, bcm_vlan_action_set_t *action);
int bcm_vlan_translate_action_id_get(int unit, uint32 flags, int action_id, bcm_vlan_action_set_t *action);
void bcm_vlan_translate_action_class_t_init(bcm_vlan_translate_action_class_t *action_class);
int bcm_vlan_translate_action_class_set(int unit, bcm_vlan_translate_action_class_t *action_class);
int bcm_vlan_translate_action_class_get(int unit, uint32 vlan_edit_class_id, uint32 tag_format_class_id,
                                        bcm_vlan_translate_action_class_t *action_class);

/* Counters of a translation on arrival. The _sync_ functions read the chip, not the last sweep's copy. */
int bcm_vlan_translate_stat_get(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                uint64 *val);
int bcm_vlan_translate_stat_sync_get(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                     bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                     uint64 *val);
int bcm_vlan_translate_stat_get32(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                  bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                  uint32 *val);
int bcm_vlan_translate_stat_sync_get32(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                       bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                       uint32 *val);
int bcm_vlan_translate_stat_id_get(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                   bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                   uint32 *stat_counter_id);
int bcm_vlan_translate_stat_set(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                uint64 val);
int bcm_vlan_translate_stat_set32(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                  bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                  uint32 val);
int bcm_vlan_translate_stat_enable_set(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                       bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, int enable);
int bcm_vlan_translate_stat_multi_get(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                      bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, int nstat,
                                      bcm_vlan_stat_t *stat_arr, uint64 *value_arr);
int bcm_vlan_translate_stat_multi_get32(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                        bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, int nstat,
                                        bcm_vlan_stat_t *stat_arr, uint32 *value_arr);
int bcm_vlan_translate_stat_multi_set(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                      bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, int nstat,
                                      bcm_vlan_stat_t *stat_arr, uint64 *value_arr);
int bcm_vlan_translate_stat_multi_set32(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                        bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, int nstat,
                                        bcm_vlan_stat_t *stat_arr, uint32 *value_arr);

/* The same for a translation on leaving. */
int bcm_vlan_translate_egress_stat_get(int unit, int port_class, bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                       bcm_vlan_stat_t stat, uint64 *val);
int bcm_vlan_translate_egress_stat_sync_get(int unit, int port_class, bcm_vlan_t outer_vlan,
                                            bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat, uint64 *val);
int bcm_vlan_translate_egress_stat_get32(int unit, int port_class, bcm_vlan_t outer_vlan,
                                         bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat, uint32 *val);
int bcm_vlan_translate_egress_stat_sync_get32(int unit, int port_class, bcm_vlan_t outer_vlan,
                                              bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat, uint32 *val);
int bcm_vlan_translate_egress_stat_id_get(int unit, int port_class, bcm_vlan_t outer_vlan,
                                          bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                          uint32 *stat_counter_id);
int bcm_vlan_translate_egress_stat_set(int unit, int port_class, bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                       bcm_vlan_stat_t stat, uint64 val);
int bcm_vlan_translate_egress_stat_set32(int unit, int port_class, bcm_vlan_t outer_vlan,
                                         bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat, uint32 val);
int bcm_vlan_translate_egress_stat_enable_set(int unit, int port_class, bcm_vlan_t outer_vlan,
                                              bcm_vlan_t inner_vlan, int enable);
int bcm_vlan_translate_egress_stat_multi_get(int unit, int port_class, bcm_vlan_t outer_vlan,
                                             bcm_vlan_t inner_vlan, int nstat, bcm_vlan_stat_t *stat_arr,
                                             uint64 *value_arr);
int bcm_vlan_translate_egress_stat_multi_get32(int unit, int port_class, bcm_vlan_t outer_vlan,
                                               bcm_vlan_t inner_vlan, int nstat, bcm_vlan_stat_t *stat_arr,
                                               uint32 *value_arr);
int bcm_vlan_translate_egress_stat_multi_set(int unit, int port_class, bcm_vlan_t outer_vlan,
                                             bcm_vlan_t inner_vlan, int nstat, bcm_vlan_stat_t *stat_arr,
                                             uint64 *value_arr);
int bcm_vlan_translate_egress_stat_multi_set32(int unit, int port_class, bcm_vlan_t outer_vlan,
                                               bcm_vlan_t inner_vlan, int nstat, bcm_vlan_stat_t *stat_arr,
                                               uint32 *value_arr);

/* Counters that the stat family made, attached to translations; num_entries entries in both arrays. */
int bcm_vlan_translate_stat_attach(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                   bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, uint32 stat_counter_id);
int bcm_vlan_translate_stat_detach(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                   bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan);
int bcm_vlan_translate_stat_counter_get(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                        bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                        uint32 num_entries, uint32 *counter_indexes,
                                        bcm_stat_value_t *counter_values);
int bcm_vlan_translate_stat_counter_sync_get(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                             bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                             bcm_vlan_stat_t stat, uint32 num_entries,
                                             uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_vlan_translate_stat_counter_set(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                        bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                        uint32 num_entries, uint32 *counter_indexes,
                                        bcm_stat_value_t *counter_values);
int bcm_vlan_translate_egress_stat_attach(int unit, int port_class, bcm_vlan_t outer_vlan,
                                          bcm_vlan_t inner_vlan, uint32 stat_counter_id);
int bcm_vlan_translate_egress_stat_detach(int unit, int port_class, bcm_vlan_t outer_vlan,
                                          bcm_vlan_t inner_vlan);
int bcm_vlan_translate_egress_stat_counter_get(int unit, int port_class, bcm_vlan_t outer_vlan,
                                               bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                               uint32 num_entries, uint32 *counter_indexes,
                                               bcm_stat_value_t *counter_values);
int bcm_vlan_translate_egress_stat_counter_sync_get(int unit, int port_class, bcm_vlan_t outer_vlan,
                                                    bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                                    uint32 num_entries, uint32 *counter_indexes,
                                                    bcm_stat_value_t *counter_values);
int bcm_vlan_translate_egress_stat_counter_set(int unit, int port_class, bcm_vlan_t outer_vlan,
                                               bcm_vlan_t inner_vlan, bcm_vlan_stat_t stat,
                                               uint32 num_entries, uint32 *counter_indexes,
                                               bcm_stat_value_t *counter_values);

/* Outer tag that packets with a given inner VLAN id get on arrival, singly and by range. */
int bcm_vlan_dtag_add(int unit, bcm_port_t port, bcm_vlan_t inner_vid, bcm_vlan_t new_vid, int prio);
int bcm_vlan_dtag_get(int unit, bcm_port_t port, bcm_vlan_t inner_vid, bcm_vlan_t *new_vid, int *prio);
int bcm_vlan_dtag_delete(int unit, bcm_port_t port, bcm_vlan_t inner_vid);
int bcm_vlan_dtag_delete_all(int unit);
int bcm_vlan_dtag_range_add(int unit, bcm_port_t port, bcm_vlan_t inner_vid_low, bcm_vlan_t inner_vid_high,
                            bcm_vlan_t new_vid, int int_prio);
int bcm_vlan_dtag_range_get(int unit, bcm_port_t port, bcm_vlan_t inner_vid_low, bcm_vlan_t inner_vid_high,
                            bcm_vlan_t *new_vid, int *int_prio);
int bcm_vlan_dtag_range_delete(int unit, bcm_port_t port, bcm_vlan_t inner_vid_low,
                               bcm_vlan_t inner_vid_high);
int bcm_vlan_dtag_range_delete_all(int unit);
int bcm_vlan_dtag_traverse(int unit, bcm_vlan_dtag_traverse_cb cb, void *user_data);
int bcm_vlan_dtag_range_traverse(int unit, bcm_vlan_dtag_range_traverse_cb cb, void *user_data);

/* VLAN or actions by source subnet. */
void bcm_vlan_ip_t_init(bcm_vlan_ip_t *vlan_ip);
int bcm_vlan_ip_add(int unit, bcm_vlan_ip_t *vlan_ip);
int bcm_vlan_ip_delete(int unit, bcm_vlan_ip_t *vlan_ip);
int bcm_vlan_ip_delete_all(int unit);
int bcm_vlan_ip_action_add(int unit, bcm_vlan_ip_t *vlan_ip, bcm_vlan_action_set_t *action);
int bcm_vlan_ip_action_get(int unit, bcm_vlan_ip_t *vlan_ip, bcm_vlan_action_set_t *action);
int bcm_vlan_ip_action_delete(int unit, bcm_vlan_ip_t *vlan_ip);
int bcm_vlan_ip_action_delete_all(int unit);
int bcm_vlan_ip_action_traverse(int unit, bcm_vlan_ip_action_traverse_cb cb, void *user_data);

/*
 * Settings of the unit, of a port and of a VLAN. Bit n of valid_fields stands for member n of the record,
 * counted from 0; the selective functions leave all other members alone.
 */
int bcm_vlan_control_get(int unit, bcm_vlan_control_t control, int *arg);
int bcm_vlan_control_set(int unit, bcm_vlan_control_t control, int arg);
int bcm_vlan_control_port_get(int unit, bcm_port_t port, bcm_vlan_control_port_t type, int *arg);
int bcm_vlan_control_port_set(int unit, bcm_port_t port, bcm_vlan_control_port_t type, int arg);
void bcm_vlan_control_vlan_t_init(bcm_vlan_control_vlan_t *control);
int bcm_vlan_control_vlan_selective_get(int unit, bcm_vlan_t vlan, uint32 valid_fields,
                                        bcm_vlan_control_vlan_t *control);
int bcm_vlan_control_vlan_selective_set(int unit, bcm_vlan_t vlan, uint32 valid_fields,
                                        bcm_vlan_control_vlan_t *control);
int bcm_vlan_control_vlan_get(int unit, bcm_vlan_t vlan, bcm_vlan_control_vlan_t *control);
int bcm_vlan_control_vlan_set(int unit, bcm_vlan_t vlan, bcm_vlan_control_vlan_t control);

/* Ports to which packets of a VLAN are not sent. */
void bcm_vlan_block_t_init(bcm_vlan_block_t *block);
int bcm_vlan_block_get(int unit, bcm_vlan_t vlan, bcm_vlan_block_t *block);
int bcm_vlan_block_set(int unit, bcm_vlan_t vlan, bcm_vlan_block_t *block);

/* Cross-connects: what arrives with the tags on one of the two gports leaves by the other. */
int bcm_vlan_cross_connect_add(int unit, bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan, bcm_gport_t port_1,
                               bcm_gport_t port_2);
int bcm_vlan_cross_connect_delete(int unit, bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan);
int bcm_vlan_cross_connect_delete_all(int unit);
int bcm_vlan_cross_connect_traverse(int unit, bcm_vlan_cross_connect_traverse_cb cb, void *user_data);

/* Counters of a VLAN; cos is the class of service counted, or -1 for all. */
int bcm_vlan_stat_get(int unit, bcm_vlan_t vlan, bcm_cos_t cos, bcm_vlan_stat_t stat, uint64 *val);
int bcm_vlan_stat_sync_get(int unit, bcm_vlan_t vlan, bcm_cos_t cos, bcm_vlan_stat_t stat, uint64 *val);
int bcm_vlan_stat_get32(int unit, bcm_vlan_t vlan, bcm_cos_t cos, bcm_vlan_stat_t stat, uint32 *val);
int bcm_vlan_stat_sync_get32(int unit, bcm_vlan_t vlan, bcm_cos_t cos, bcm_vlan_stat_t stat, uint32 *val);
int bcm_vlan_stat_set(int unit, bcm_vlan_t vlan, bcm_cos_t cos, bcm_vlan_stat_t stat, uint64 val);
int bcm_vlan_stat_set32(int unit, bcm_vlan_t vlan, bcm_cos_t cos, bcm_vlan_stat_t stat, uint32 val);
int bcm_vlan_stat_id_get(int unit, bcm_vlan_t vlan, bcm_vlan_stat_t stat, uint32 *stat_counter_id);
int bcm_vlan_stat_enable_set(int unit, bcm_vlan_t vlan, int enable);
int bcm_vlan_stat_multi_get(int unit, bcm_vlan_t vlan, bcm_cos_t cos, int nstat, bcm_vlan_stat_t *stat_arr,
                            uint64 *value_arr);
int bcm_vlan_stat_multi_get32(int unit, bcm_vlan_t vlan, bcm_cos_t cos, int nstat, bcm_vlan_stat_t *stat_arr,
                              uint32 *value_arr);
int bcm_vlan_stat_multi_set(int unit, bcm_vlan_t vlan, bcm_cos_t cos, int nstat, bcm_vlan_stat_t *stat_arr,
                            uint64 *value_arr);
int bcm_vlan_stat_multi_set32(int unit, bcm_vlan_t vlan, bcm_cos_t cos, int nstat, bcm_vlan_stat_t *stat_arr,
                              uint32 *value_arr);
int bcm_vlan_stat_attach(int unit, bcm_vlan_t vlan, uint32 stat_counter_id);
int bcm_vlan_stat_detach(int unit, bcm_vlan_t vlan);
int bcm_vlan_stat_detach_with_id(int unit, bcm_vlan_t vlan, uint32 stat_counter_id);
int bcm_vlan_stat_counter_get(int unit, bcm_vlan_t vlan, bcm_vlan_stat_t stat, uint32 num_entries,
                              uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_vlan_stat_counter_sync_get(int unit, bcm_vlan_t vlan, bcm_vlan_stat_t stat, uint32 num_entries,
                                   uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_vlan_stat_counter_set(int unit, bcm_vlan_t vlan, bcm_vlan_stat_t stat, uint32 num_entries,
                              uint32 *counter_indexes, bcm_stat_value_t *counter_values);

/* Queue maps: queue by packet priority and CFI, attached to VLANs. */
int bcm_vlan_queue_map_create(int unit, uint32 flags, int *qmap_id);
int bcm_vlan_queue_map_destroy(int unit, int qmap_id);
int bcm_vlan_queue_map_destroy_all(int unit);
int bcm_vlan_queue_map_set(int unit, int qmap_id, int pkt_prio, int cfi, bcm_cos_queue_t queue,
                           bcm_color_t color);
int bcm_vlan_queue_map_get(int unit, int qmap_id, int pkt_prio, int cfi, bcm_cos_queue_t *queue,
                           bcm_color_t *color);
int bcm_vlan_queue_map_attach(int unit, bcm_vlan_t vlan, int qmap_id);
int bcm_vlan_queue_map_attach_get(int unit, bcm_vlan_t vlan, int *qmap_id);
int bcm_vlan_queue_map_detach(int unit, bcm_vlan_t vlan);
int bcm_vlan_queue_map_detach_all(int unit);

/* Switching instances. create writes the id to vpn; get says how many ports an instance has, too. */
void bcm_vlan_vpn_config_t_init(bcm_vlan_vpn_config_t *info);
int bcm_vlan_vpn_create(int unit, bcm_vlan_vpn_config_t *info);
int bcm_vlan_vpn_destroy(int unit, bcm_vpn_t vpn);
int bcm_vlan_vpn_destroy_all(int unit);
int bcm_vlan_vpn_get(int unit, bcm_vpn_t vpn, bcm_vlan_vpn_config_t *info, int *port_count);
int bcm_vlan_vpn_traverse(int unit, bcm_vlan_vpn_traverse_cb cb, void *user_data);

/*
 * A new VLAN has no members. The default VLAN cannot be destroyed (BCM_E_BADID), and destroy_all leaves
 * it. Addresses of a destroyed VLAN stay in the address table until deleted or aged out.
 */
int bcm_vlan_init(int unit);
int bcm_vlan_create(int unit, bcm_vlan_t vid);
int bcm_vlan_destroy(int unit, bcm_vlan_t vid);
int bcm_vlan_destroy_all(int unit);

/* The default VLAN, at first BCM_VLAN_DEFAULT with all front ports untagged. A new one has to exist. */
int bcm_vlan_default_get(int unit, bcm_vlan_t *vid_ptr);
int bcm_vlan_default_set(int unit, bcm_vlan_t vid);

/* Spanning tree group of a VLAN, and the state of a port in it (BCM_STG_STP_*), also for many VLANs. */
int bcm_vlan_stg_get(int unit, bcm_vlan_t vid, bcm_stg_t *stg_ptr);
int bcm_vlan_stg_set(int unit, bcm_vlan_t vid, bcm_stg_t stg);
int bcm_vlan_stp_get(int unit, bcm_vlan_t vid, bcm_port_t port, int *stp_state);
int bcm_vlan_stp_set(int unit, bcm_vlan_t vid, bcm_port_t port, int stp_state);
int bcm_vlan_vector_stp_set(int unit, bcm_vlan_vector_t vlan_vector, bcm_port_t port, int stp_state);

/* Sets the flags (those of bcm_vlan_control_vlan_t) that are in flags_mask to flags_value. */
int bcm_vlan_vector_flags_set(int unit, bcm_vlan_vector_t vlan_vector, uint32 flags_mask,
                              uint32 flags_value);

/* All actions none. */
void bcm_vlan_action_set_t_init(bcm_vlan_action_set_t *action);

/* Flooding of unknown multicasts. */
int bcm_vlan_mcast_flood_get(int unit, bcm_vlan_t vlan, bcm_vlan_mcast_flood_t *mode);
int bcm_vlan_mcast_flood_set(int unit, bcm_vlan_t vlan, bcm_vlan_mcast_flood_t mode);

void bcm_vlan_data_t_init(bcm_vlan_data_t *vlan_data);

/* Policers of a VLAN, by direction; 0 for none. */
int bcm_vlan_egress_policer_get(int unit, bcm_vlan_t vid, bcm_policer_t *policer_id);
int bcm_vlan_egress_policer_set(int unit, bcm_vlan_t vid, bcm_policer_t policer_id);
int bcm_vlan_policer_get(int unit, bcm_vlan_t vid, bcm_policer_t *policer_id);
int bcm_vlan_policer_set(int unit, bcm_vlan_t vid, bcm_policer_t policer_id);

#ifdef __cplusplus
}
#endif

#endif
