/*
 * MPLS: pushing, swapping and popping labels, and pseudowires as ports of switching instances.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, label above 1048575, EXP above 7). On an error nothing is
 * changed. Calls about a port take the instance in which it is; BCM_E_NOT_FOUND if there is no such instance,
 * or no such port in it. Arrays that a function fills are given with the number of elements for which they
 * have room, and how many were written comes back in the count.
 */
#ifndef BCM_MPLS_H
#define BCM_MPLS_H

#include <bcm/error.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_mpls_vpn_config_t. */
#define BCM_MPLS_VPN_WITH_ID 0x00000001           /* vpn is the instance to use */
#define BCM_MPLS_VPN_VPWS 0x00000002              /* two ports that are connected, without addresses */

/* flags of bcm_mpls_port_t. */
#define BCM_MPLS_PORT_WITH_ID 0x00000001          /* mpls_port_id is the gport to use */
#define BCM_MPLS_PORT_REPLACE 0x00000002          /* replace the port of that gport */
#define BCM_MPLS_PORT_NETWORK 0x00000004          /* a pseudowire, not a port to a customer */
#define BCM_MPLS_PORT_CONTROL_WORD 0x00000008     /* packets bear a control word below the labels */

/* flags of bcm_mpls_tunnel_switch_t. */
#define BCM_MPLS_SWITCH_REPLACE 0x00000001        /* replaces an existing entry, else BCM_E_EXISTS */
#define BCM_MPLS_SWITCH_TTL_DECREMENT 0x00000002  /* the TTL of the label goes on, less one */

/* flags of bcm_mpls_egress_label_t: without them EXP and TTL come from the packet. */
#define BCM_MPLS_EGRESS_LABEL_EXP_SET 0x00000001  /* exp */
#define BCM_MPLS_EGRESS_LABEL_TTL_SET 0x00000002  /* ttl */

/* flags of bcm_mpls_exp_map_create: exactly one. */
#define BCM_MPLS_EXP_MAP_INGRESS 0x00000001       /* from EXP to priority and colour */
#define BCM_MPLS_EXP_MAP_EGRESS 0x00000002        /* from priority and colour to EXP and VLAN tag */

/* What identifies packets of a port. */
typedef enum bcm_mpls_port_match_e {
    BCM_MPLS_PORT_MATCH_INVALID = 0,
    BCM_MPLS_PORT_MATCH_PORT = 1,
    BCM_MPLS_PORT_MATCH_PORT_VLAN = 2,
    BCM_MPLS_PORT_MATCH_PORT_INNER_VLAN = 3,
    BCM_MPLS_PORT_MATCH_PORT_VLAN_STACKED = 4,
    BCM_MPLS_PORT_MATCH_LABEL = 5,
    BCM_MPLS_PORT_MATCH_LABEL_PORT = 6,           /* label, on one port only */
    BCM_MPLS_PORT_MATCH_LABEL_VLAN = 7
} bcm_mpls_port_match_t;

/* Counters of labels and ports. */
typedef enum bcm_mpls_stat_e {
    bcmMplsInBytes = 0,
    bcmMplsInPackets = 1,
    bcmMplsOutBytes = 2,
    bcmMplsOutPackets = 3
} bcm_mpls_stat_t;

/* One line of an EXP map. */
typedef struct bcm_mpls_exp_map_s {
    int priority;                                 /* 0..15 */
    bcm_color_t color;
    uint8 exp;                                    /* 0..7 */
    uint8 pkt_pri;                                /* 0..7 */
    uint8 pkt_cfi;                                /* 0 or 1 */
    int policer_offset;                           /* policer of the group, counted from its first */
} bcm_mpls_exp_map_t;

/* A label that is put on packets. */
typedef struct bcm_mpls_egress_label_s {
    uint32 flags;                                 /* BCM_MPLS_EGRESS_LABEL_* */
    bcm_mpls_label_t label;
    bcm_mpls_egress_action_t action;
    int qos_map_id;                               /* egress EXP map, 0 for none */
    uint8 exp;                                    /* 0..7 */
    uint8 ttl;
    uint8 pkt_pri;                                /* of the VLAN tag outside, 0..7 */
    uint8 pkt_cfi;                                /* 0 or 1 */
    bcm_gport_t tunnel_id;
    bcm_if_t l3_intf_id;
    int outlif_counting_profile;
} bcm_mpls_egress_label_t;

/* A port to a customer, or a pseudowire. */
typedef struct bcm_mpls_port_s {
    uint32 flags;                                 /* BCM_MPLS_PORT_* */
    bcm_gport_t mpls_port_id;                     /* out: the gport */
    bcm_mpls_port_match_t criteria;
    bcm_gport_t port;
    bcm_vlan_t match_vlan;
    bcm_vlan_t match_inner_vlan;
    bcm_mpls_label_t match_label;
    bcm_gport_t match_tunnel_id;                  /* tunnel in which match_label counts, 0 for any */
    bcm_mpls_egress_label_t egress_label;         /* label of the pseudowire */
    bcm_if_t egress_tunnel_if;                    /* interface with the labels of the tunnel */
    bcm_gport_t egress_tunnel_id;
    bcm_vlan_t egress_service_vlan;
    bcm_tpid_t egress_service_tpid;
    bcm_tpid_t service_tpid;                      /* of the tag that tells customers apart */
    int vccv_type;                                /* how control packets in the pseudowire are marked, 0..4 */
    uint32 pw_seq_number;                         /* next number, of pseudowires that number their packets */
    bcm_if_t encap_id;
    int qos_map_id;
    int exp_map;                                  /* ingress EXP map, 0 for none */
    int int_pri;                                  /* priority of what arrives, -1 for the port's */
    bcm_policer_t policer_id;
    bcm_policer_t egress_policer_id;
    bcm_failover_t failover_id;
    bcm_gport_t failover_port_id;
    bcm_multicast_t failover_mc_group;
    bcm_failover_t ingress_failover_id;
    bcm_switch_network_group_t ingress_network_group_id;
    bcm_switch_network_group_t egress_network_group_id;
    uint32 if_class;
    int mtu;                                      /* bytes, 0 for no limit */
    uint32 learn_flags;                           /* BCM_PORT_LEARN_* */
    uint32 oam_global_context_id;
    int inlif_counting_profile;
    int outlif_counting_profile;
} bcm_mpls_port_t;

/* An incoming label, and what is done with it. */
typedef struct bcm_mpls_tunnel_switch_s {
    uint32 flags;                                 /* BCM_MPLS_SWITCH_* */
    bcm_mpls_label_t label;
    bcm_mpls_label_t second_label;                /* next one below, of entries that look at two */
    bcm_gport_t port;                             /* port on which it counts, BCM_GPORT_INVALID for all */
    bcm_if_t match_intf;                          /* interface on which it counts, 0 for all */
    bcm_mpls_egress_action_t action;              /* of a label with others below */
    bcm_mpls_egress_action_t action_if_bos;       /* of the last one */
    bcm_mpls_egress_label_t egress_label;         /* what it is swapped for */
    bcm_if_t egress_if;                           /* egress object of a swapped packet */
    bcm_gport_t egress_port;                      /* virtual port of a popped packet */
    bcm_if_t ingress_if;                          /* interface at which a popped packet arrives */
    bcm_multicast_t mc_group;
    bcm_vpn_t vpn;                                /* routing table or instance of a popped packet */
    bcm_vlan_t vlan;
    int qos_map_id;
    int exp_map;                                  /* ingress EXP map, 0 for none */
    int int_pri;                                  /* -1 for that of the EXP map */
    bcm_policer_t policer_id;
    int mtu;                                      /* bytes, 0 for no limit */
    bcm_gport_t tunnel_id;                        /* out: of an entry made by create */
    bcm_failover_t failover_id;
    bcm_gport_t failover_tunnel_id;
    uint32 if_class;
    uint32 oam_global_context_id;
    int inlif_counting_profile;
} bcm_mpls_tunnel_switch_t;

/* Labels below which there is another that only serves to spread flows. */
typedef struct bcm_mpls_entropy_identifier_s {
    uint32 flags;
    bcm_mpls_label_t label;
    bcm_mpls_label_t label_mask;
} bcm_mpls_entropy_identifier_t;

/* A switching instance over pseudowires, and where packets without known destination go. */
typedef struct bcm_mpls_vpn_config_s {
    uint32 flags;                                 /* BCM_MPLS_VPN_* */
    bcm_vpn_t vpn;
    uint32 lookup_id;                             /* number under which addresses are looked up */
    bcm_multicast_t broadcast_group;
    bcm_multicast_t unknown_unicast_group;
    bcm_multicast_t unknown_multicast_group;
    bcm_policer_t policer_id;
    int qos_map_id;
    uint32 if_class;
} bcm_mpls_vpn_config_t;

/* What is done with the labels of a range that have no entry of their own. */
typedef struct bcm_mpls_range_action_s {
    uint32 flags;
    bcm_mpls_egress_action_t action;
    bcm_if_t ingress_if;
    int exp_map;
    int int_pri;
    uint32 if_class;
} bcm_mpls_range_action_t;

/*
 * Called once per entry. Records are valid during the call. A negative result ends the traversal, which then
 * returns it.
 */
typedef int (*bcm_mpls_vpn_traverse_cb)(int unit, bcm_mpls_vpn_config_t *info, void *user_data);
typedef int (*bcm_mpls_tunnel_switch_traverse_cb)(int unit, bcm_mpls_tunnel_switch_t *info, void *user_data);
typedef int (*bcm_mpls_entropy_identifier_traverse_cb)(int unit, bcm_mpls_entropy_identifier_t *info,
                                                       void *user_data);

/* The module. init removes everything below. */
int bcm_mpls_init(int unit);
int bcm_mpls_cleanup(int unit);

/*
 * Switching instances. create writes the number to vpn; destroy takes out the ports first, get says how many
 * there are.
 */
void bcm_mpls_vpn_config_t_init(bcm_mpls_vpn_config_t *info);
int bcm_mpls_vpn_id_create(int unit, bcm_mpls_vpn_config_t *info);
int bcm_mpls_vpn_id_destroy(int unit, bcm_vpn_t vpn);
int bcm_mpls_vpn_id_destroy_all(int unit);
int bcm_mpls_vpn_id_get(int unit, bcm_vpn_t vpn, bcm_mpls_vpn_config_t *info, int *port_count);
int bcm_mpls_vpn_traverse(int unit, bcm_mpls_vpn_traverse_cb cb, void *user_data);

/* Ports. add writes the gport to mpls_port_id; get also says whether packets can be sent to it, 0 or 1. */
void bcm_mpls_port_t_init(bcm_mpls_port_t *mpls_port);
int bcm_mpls_port_add(int unit, bcm_vpn_t vpn, bcm_mpls_port_t *mpls_port);
int bcm_mpls_port_delete(int unit, bcm_vpn_t vpn, bcm_gport_t mpls_port_id);
int bcm_mpls_port_delete_all(int unit, bcm_vpn_t vpn);
int bcm_mpls_port_get(int unit, bcm_vpn_t vpn, bcm_gport_t mpls_port_id, bcm_mpls_port_t *mpls_port, int *up);
int bcm_mpls_port_get_all(int unit, bcm_vpn_t vpn, int port_max, bcm_mpls_port_t *port_array,
                          int *port_count);

/* Labels that an interface pushes, the outermost first; set gives it those, create also *tunnel_id. */
void bcm_mpls_egress_label_t_init(bcm_mpls_egress_label_t *label);
int bcm_mpls_tunnel_initiator_set(int unit, bcm_if_t intf, int num_labels,
                                  bcm_mpls_egress_label_t *label_array);
int bcm_mpls_tunnel_initiator_create(int unit, bcm_if_t intf, int num_labels,
                                     bcm_mpls_egress_label_t *label_array, bcm_gport_t *tunnel_id);
int bcm_mpls_tunnel_initiator_clear(int unit, bcm_if_t intf);
int bcm_mpls_tunnel_initiator_clear_all(int unit);
int bcm_mpls_tunnel_initiator_get(int unit, bcm_if_t intf, int label_max,
                                  bcm_mpls_egress_label_t *label_array, int *label_count);

/*
 * Incoming labels, by label, second label, port and interface; create gives an entry a tunnel id as well.
 * delete_all takes those on a port, BCM_GPORT_INVALID for all; size_get says how many there can be, and are.
 */
void bcm_mpls_tunnel_switch_t_init(bcm_mpls_tunnel_switch_t *info);
int bcm_mpls_tunnel_switch_add(int unit, bcm_mpls_tunnel_switch_t *info);
int bcm_mpls_tunnel_switch_create(int unit, bcm_mpls_tunnel_switch_t *info);
int bcm_mpls_tunnel_switch_delete(int unit, bcm_mpls_label_t label, bcm_mpls_label_t second_label,
                                  bcm_gport_t port, bcm_if_t match_intf);
int bcm_mpls_tunnel_switch_delete_all(int unit, bcm_gport_t port);
int bcm_mpls_tunnel_switch_get(int unit, bcm_mpls_label_t label, bcm_mpls_label_t second_label,
                               bcm_gport_t port, bcm_if_t match_intf, bcm_mpls_tunnel_switch_t *info);
int bcm_mpls_tunnel_switch_traverse(int unit, bcm_mpls_tunnel_switch_traverse_cb cb, void *user_data);
int bcm_mpls_tunnel_switch_size_get(int unit, int *size, int *used);

/* Ranges of labels, which may not overlap (BCM_E_EXISTS). */
void bcm_mpls_range_action_t_init(bcm_mpls_range_action_t *action);
int bcm_mpls_range_action_add(int unit, bcm_mpls_label_t label_low, bcm_mpls_label_t label_high,
                              bcm_mpls_range_action_t *action);
int bcm_mpls_range_action_remove(int unit, bcm_mpls_label_t label_low, bcm_mpls_label_t label_high);
int bcm_mpls_range_action_get(int unit, bcm_mpls_label_t label_low, bcm_mpls_label_t label_high,
                              bcm_mpls_range_action_t *action);

/* Labels that announce an entropy label. options has no flags yet. */
void bcm_mpls_entropy_identifier_t_init(bcm_mpls_entropy_identifier_t *info);
int bcm_mpls_entropy_identifier_add(int unit, uint32 options, bcm_mpls_entropy_identifier_t *info);
int bcm_mpls_entropy_identifier_delete(int unit, bcm_mpls_label_t label, bcm_mpls_label_t label_mask);
int bcm_mpls_entropy_identifier_delete_all(int unit);
int bcm_mpls_entropy_identifier_get(int unit, bcm_mpls_label_t label, bcm_mpls_label_t label_mask,
                                    bcm_mpls_entropy_identifier_t *info);
int bcm_mpls_entropy_identifier_traverse(int unit, bcm_mpls_entropy_identifier_traverse_cb cb,
                                         void *user_data);

/* EXP maps. A line is known by exp in an ingress map, by priority and colour in an egress map. */
void bcm_mpls_exp_map_t_init(bcm_mpls_exp_map_t *exp_map);
int bcm_mpls_exp_map_create(int unit, uint32 flags, int *exp_map_id);
int bcm_mpls_exp_map_destroy(int unit, int exp_map_id);
int bcm_mpls_exp_map_set(int unit, int exp_map_id, bcm_mpls_exp_map_t *exp_map);
int bcm_mpls_exp_map_get(int unit, int exp_map_id, bcm_mpls_exp_map_t *exp_map);

/*
 * Counters of an incoming label on a port, BCM_GPORT_INVALID for all, by class of service, -1 for all. They
 * count while enabled; the sync getters read the chip, the others what was collected last; the 32-bit getters
 * cut off.
 */
int bcm_mpls_label_stat_enable_set(int unit, bcm_mpls_label_t label, bcm_gport_t port, int enable);
int bcm_mpls_label_stat_get(int unit, bcm_mpls_label_t label, bcm_gport_t port, bcm_cos_t cos,
                            bcm_mpls_stat_t stat, uint64 *val);
int bcm_mpls_label_stat_get32(int unit, bcm_mpls_label_t label, bcm_gport_t port, bcm_cos_t cos,
                              bcm_mpls_stat_t stat, uint32 *val);
int bcm_mpls_label_stat_sync_get(int unit, bcm_mpls_label_t label, bcm_gport_t port, bcm_cos_t cos,
                                 bcm_mpls_stat_t stat, uint64 *val);
int bcm_mpls_label_stat_sync_get32(int unit, bcm_mpls_label_t label, bcm_gport_t port, bcm_cos_t cos,
                                   bcm_mpls_stat_t stat, uint32 *val);
int bcm_mpls_label_stat_clear(int unit, bcm_mpls_label_t label, bcm_gport_t port, bcm_cos_t cos,
                              bcm_mpls_stat_t stat);

/* Flexible counters of an incoming label. */
int bcm_mpls_label_stat_attach(int unit, bcm_mpls_label_t label, bcm_gport_t port, uint32 stat_counter_id);
int bcm_mpls_label_stat_detach(int unit, bcm_mpls_label_t label, bcm_gport_t port);
int bcm_mpls_label_stat_counter_get(int unit, bcm_mpls_label_t label, bcm_gport_t port, bcm_mpls_stat_t stat,
                                    uint32 num_entries, uint32 *counter_indexes,
                                    bcm_stat_value_t *counter_values);
int bcm_mpls_label_stat_counter_sync_get(int unit, bcm_mpls_label_t label, bcm_gport_t port,
                                         bcm_mpls_stat_t stat, uint32 num_entries, uint32 *counter_indexes,
                                         bcm_stat_value_t *counter_values);
int bcm_mpls_label_stat_counter_set(int unit, bcm_mpls_label_t label, bcm_gport_t port, bcm_mpls_stat_t stat,
                                    uint32 num_entries, uint32 *counter_indexes,
                                    bcm_stat_value_t *counter_values);
int bcm_mpls_label_stat_id_get(int unit, bcm_mpls_label_t label, bcm_gport_t port, bcm_mpls_stat_t stat,
                               uint32 *stat_counter_id);

/* Counters of a port, likewise. */
int bcm_mpls_port_stat_enable_set(int unit, bcm_vpn_t vpn, bcm_gport_t port, int enable);
int bcm_mpls_port_stat_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_cos_t cos, bcm_mpls_stat_t stat,
                           uint64 *val);
int bcm_mpls_port_stat_get32(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_cos_t cos, bcm_mpls_stat_t stat,
                             uint32 *val);
int bcm_mpls_port_stat_clear(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_cos_t cos, bcm_mpls_stat_t stat);

/* Flexible counters of a port. */
int bcm_mpls_port_stat_attach(int unit, bcm_vpn_t vpn, bcm_gport_t port, uint32 stat_counter_id);
int bcm_mpls_port_stat_detach(int unit, bcm_vpn_t vpn, bcm_gport_t port);
int bcm_mpls_port_stat_counter_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_mpls_stat_t stat,
                                   uint32 num_entries, uint32 *counter_indexes,
                                   bcm_stat_value_t *counter_values);
int bcm_mpls_port_stat_counter_sync_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_mpls_stat_t stat,
                                        uint32 num_entries, uint32 *counter_indexes,
                                        bcm_stat_value_t *counter_values);
int bcm_mpls_port_stat_counter_set(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_mpls_stat_t stat,
                                   uint32 num_entries, uint32 *counter_indexes,
                                   bcm_stat_value_t *counter_values);
int bcm_mpls_port_stat_id_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_mpls_stat_t stat,
                              uint32 *stat_counter_id);

#ifdef __cplusplus
}
#endif

#endif
