/*
 * MAC-in-MAC: customer packets carried over a provider network in frames of the provider's own, IEEE 802.1ah.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM. On an error nothing is changed. Calls about a port take the instance in which
 * it is; BCM_E_NOT_FOUND if there is no such instance, or no such port in it.
 */
#ifndef BCM_MIM_H
#define BCM_MIM_H

#include <bcm/error.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_mim_vpn_config_t. */
#define BCM_MIM_VPN_WITH_ID 0x00000001      /* vpn is the instance to use */
#define BCM_MIM_VPN_REPLACE 0x00000002

/* flags of bcm_mim_port_t. */
#define BCM_MIM_PORT_WITH_ID 0x00000001     /* mim_port_id is the gport to use */
#define BCM_MIM_PORT_REPLACE 0x00000002
#define BCM_MIM_PORT_NETWORK 0x00000004     /* towards the provider network, not towards a customer */
#define BCM_MIM_PORT_EGRESS_SERVICE_TAGGED 0x00000008

/* What identifies packets of a port. */
typedef enum bcm_mim_port_match_e {
    bcmMimPortMatchInvalid = 0,
    bcmMimPortMatchPort = 1,
    bcmMimPortMatchPortVlan = 2,
    bcmMimPortMatchPortVlanStacked = 3,
    bcmMimPortMatchTunnelVlanSrcMac = 4,    /* VLAN and source address of the outer frame */
    bcmMimPortMatchLabel = 5
} bcm_mim_port_match_t;

/* Counters of a port. */
typedef enum bcm_mim_stat_e {
    bcmMimUnicastPackets = 0,
    bcmMimUnicastBytes = 1,
    bcmMimNonUnicastPackets = 2,
    bcmMimNonUnicastBytes = 3,
    bcmMimDropPackets = 4
} bcm_mim_stat_t;

/* A service: the customer ports and provider tunnels that belong together. */
typedef struct bcm_mim_vpn_config_s {
    uint32 flags;                           /* BCM_MIM_VPN_* */
    bcm_vpn_t vpn;
    uint32 lookup_id;                       /* service number in the outer frame, 24 bits */
    bcm_tpid_t match_service_tpid;
    bcm_tpid_t egress_service_tpid;
    bcm_multicast_t broadcast_group;
    bcm_multicast_t unknown_unicast_group;
    bcm_multicast_t unknown_multicast_group;
    int qos_map_id;
    bcm_policer_t policer_id;
} bcm_mim_vpn_config_t;

/* A customer port, or the tunnel to another edge of the provider network. */
typedef struct bcm_mim_port_s {
    uint32 flags;                           /* BCM_MIM_PORT_* */
    bcm_gport_t mim_port_id;                /* out: the gport */
    bcm_mim_port_match_t criteria;
    bcm_gport_t port;
    bcm_vlan_t match_vlan;
    bcm_vlan_t match_inner_vlan;
    bcm_mpls_label_t match_label;
    bcm_mac_t match_tunnel_srcmac;
    bcm_vlan_t match_tunnel_vlan;
    bcm_if_t intf_id;                       /* egress object of the tunnel */
    bcm_mac_t egress_tunnel_srcmac;
    bcm_mac_t egress_tunnel_dstmac;
    bcm_vlan_t egress_tunnel_vlan;
    bcm_tpid_t egress_tunnel_tpid;
    uint8 egress_tunnel_pri;                /* 0..7 */
    uint8 egress_tunnel_cfi;                /* 0 or 1 */
    int egress_tunnel_qos_map_id;
    bcm_vlan_t egress_service_vlan;
    bcm_tpid_t egress_service_tpid;
    int egress_service_qos_map_id;
    int qos_map_id;
    int int_pri;                            /* priority of what arrives, -1 for the port's */
    bcm_policer_t policer_id;
    bcm_policer_t egress_policer_id;
    bcm_failover_t failover_id;
    bcm_gport_t failover_port_id;
    bcm_multicast_t failover_mc_group;
    bcm_switch_network_group_t ingress_network_group_id;
    bcm_switch_network_group_t egress_network_group_id;
    uint32 if_class;
    int mtu;                                /* bytes, 0 for no limit */
    bcm_if_t encap_id;
    uint32 multicast_flags;
    uint32 learn_flags;                     /* BCM_PORT_LEARN_* */
} bcm_mim_port_t;

/* Called once per instance. A negative result ends the traversal, which then returns it. */
typedef int (*bcm_mim_vpn_traverse_cb)(int unit, bcm_mim_vpn_config_t *info, void *user_data);

/* The module. init removes all instances and ports. */
int bcm_mim_init(int unit);
int bcm_mim_detach(int unit);

/* Instances. create writes the number to vpn; destroy takes out the ports first, get tells how many. */
void bcm_mim_vpn_config_t_init(bcm_mim_vpn_config_t *info);
int bcm_mim_vpn_create(int unit, bcm_mim_vpn_config_t *info);
int bcm_mim_vpn_destroy(int unit, bcm_vpn_t vpn);
int bcm_mim_vpn_destroy_all(int unit);
int bcm_mim_vpn_get(int unit, bcm_vpn_t vpn, bcm_mim_vpn_config_t *info, int *port_count);
int bcm_mim_vpn_traverse(int unit, bcm_mim_vpn_traverse_cb cb, void *user_data);

/* Ports. add writes the gport to mim_port_id; get_all writes at most port_max. */
void bcm_mim_port_t_init(bcm_mim_port_t *mim_port);
int bcm_mim_port_add(int unit, bcm_vpn_t vpn, bcm_mim_port_t *mim_port);
int bcm_mim_port_delete(int unit, bcm_vpn_t vpn, bcm_gport_t mim_port_id);
int bcm_mim_port_delete_all(int unit, bcm_vpn_t vpn);
int bcm_mim_port_get(int unit, bcm_vpn_t vpn, bcm_gport_t mim_port_id, bcm_mim_port_t *mim_port);
int bcm_mim_port_get_all(int unit, bcm_vpn_t vpn, int port_max, bcm_mim_port_t *port_array, int *port_count);

/*
 * Counters of a port, by class of service, -1 for all. They count while enabled; the 32-bit getters cut off.
 */
int bcm_mim_stat_enable_set(int unit, bcm_vpn_t vpn, bcm_gport_t port, int enable);
int bcm_mim_stat_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_cos_t cos, bcm_mim_stat_t stat,
                     uint64 *val);
int bcm_mim_stat_get32(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_cos_t cos, bcm_mim_stat_t stat,
                       uint32 *val);
int bcm_mim_stat_multi_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_cos_t cos, int nstat,
                           bcm_mim_stat_t *stat_arr, uint64 *value_arr);
int bcm_mim_stat_multi_get32(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_cos_t cos, int nstat,
                             bcm_mim_stat_t *stat_arr, uint32 *value_arr);
int bcm_mim_stat_clear(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_cos_t cos, bcm_mim_stat_t stat);

/* Flexible counters of a port. */
int bcm_mim_port_stat_attach(int unit, bcm_vpn_t vpn, bcm_gport_t port, uint32 stat_counter_id);
int bcm_mim_port_stat_detach(int unit, bcm_vpn_t vpn, bcm_gport_t port);
int bcm_mim_port_stat_counter_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_mim_stat_t stat,
                                  uint32 num_entries, uint32 *counter_indexes,
                                  bcm_stat_value_t *counter_values);
int bcm_mim_port_stat_counter_sync_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_mim_stat_t stat,
                                       uint32 num_entries, uint32 *counter_indexes,
                                       bcm_stat_value_t *counter_values);
int bcm_mim_port_stat_counter_set(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_mim_stat_t stat,
                                  uint32 num_entries, uint32 *counter_indexes,
                                  bcm_stat_value_t *counter_values);
int bcm_mim_port_stat_id_get(int unit, bcm_vpn_t vpn, bcm_gport_t port, bcm_mim_stat_t stat,
                             uint32 *stat_counter_id);

#ifdef __cplusplus
}
#endif

#endif
