/*
 * TRILL: bridging over a network of routing bridges, which know each other by short names and send multicasts
 * along trees.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, name outside 1..65535). On an error nothing is changed.
 */
#ifndef BCM_TRILL_H
#define BCM_TRILL_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int bcm_trill_name_t;               /* nickname of a routing bridge, 0 for none */

/* flags of bcm_trill_vpn_config_t. */
#define BCM_TRILL_VPN_WITH_ID 0x00000001    /* vpn is the instance to use */
#define BCM_TRILL_VPN_REPLACE 0x00000002

/* flags of bcm_trill_port_t. */
#define BCM_TRILL_PORT_WITH_ID 0x00000001   /* trill_port_id is the gport to use */
#define BCM_TRILL_PORT_REPLACE 0x00000002
#define BCM_TRILL_PORT_NETWORK 0x00000004   /* towards another routing bridge, not towards hosts */

/* A switching instance whose packets may cross the network. */
typedef struct bcm_trill_vpn_config_s {
    uint32 flags;                           /* BCM_TRILL_VPN_* */
    bcm_vpn_t vpn;
    bcm_vlan_t vid;                         /* VLAN that packets bear in the network */
    bcm_multicast_t broadcast_group;
    bcm_multicast_t unknown_unicast_group;
    bcm_multicast_t unknown_multicast_group;
    uint32 if_class;
} bcm_trill_vpn_config_t;

/* A port to hosts, or to a routing bridge. */
typedef struct bcm_trill_port_s {
    uint32 flags;                           /* BCM_TRILL_PORT_* */
    bcm_gport_t trill_port_id;              /* out: the gport */
    bcm_gport_t port;
    bcm_trill_name_t name;                  /* routing bridge to which packets are sent through it */
    bcm_if_t egress_if;                     /* egress object with the addresses of the next hop */
    int hopcount;                           /* hops that a packet may take, 1..63 */
    int mtu;                                /* bytes, 0 for no limit */
    uint32 if_class;
    int qos_map_id;
    int egress_qos_map_id;
    bcm_switch_network_group_t network_group_id;
    bcm_if_t encap_id;
} bcm_trill_port_t;

/* Another routing bridge, and the way to it. */
typedef struct bcm_trill_rbridge_s {
    uint32 flags;
    bcm_trill_name_t name;
    bcm_gport_t trill_port_id;
    bcm_if_t egress_if;                     /* egress object, or group of them */
    int hopcount;
    bcm_failover_t failover_id;
} bcm_trill_rbridge_t;

/* Where multicasts go that come along a tree. */
typedef struct bcm_trill_multicast_entry_s {
    uint32 flags;
    bcm_trill_name_t root_name;             /* root of the tree */
    bcm_vlan_t c_vlan;                      /* VLAN of the hosts, 0 for any */
    bcm_mac_t c_dmac;                       /* multicast address, all zero for any */
    bcm_multicast_t group;
    int lookup_class;
} bcm_trill_multicast_entry_t;

/* A neighbour in a tree: multicasts along it are accepted from that port only. */
typedef struct bcm_trill_multicast_adjacency_s {
    uint32 flags;
    bcm_trill_name_t root_name;
    bcm_trill_name_t adjacent_name;
    bcm_gport_t port;
    bcm_if_t encap_id;
} bcm_trill_multicast_adjacency_t;

/*
 * Called once per entry. Records are valid during the call. A negative result ends the traversal, which then
 * returns it.
 */
typedef int (*bcm_trill_vpn_traverse_cb)(int unit, bcm_trill_vpn_config_t *info, void *user_data);
typedef int (*bcm_trill_multicast_entry_traverse_cb)(int unit, bcm_trill_multicast_entry_t *trill_addr,
                                                     void *user_data);
typedef int (*bcm_trill_multicast_source_traverse_cb)(int unit, bcm_trill_name_t root_name,
                                                      bcm_trill_name_t source_name, void *user_data);
typedef int (*bcm_trill_multicast_adjacency_traverse_cb)(int unit,
                                                         bcm_trill_multicast_adjacency_t *trill_adjacent,
                                                         void *user_data);

/* The module. init removes everything below. */
int bcm_trill_init(int unit);
int bcm_trill_cleanup(int unit);

/* Switching instances. create writes the number to vpn; get says how many ports an instance has, too. */
void bcm_trill_vpn_config_t_init(bcm_trill_vpn_config_t *info);
int bcm_trill_vpn_create(int unit, bcm_trill_vpn_config_t *info);
int bcm_trill_vpn_destroy(int unit, bcm_vpn_t vpn);
int bcm_trill_vpn_destroy_all(int unit);
int bcm_trill_vpn_get(int unit, bcm_vpn_t vpn, bcm_trill_vpn_config_t *info, int *port_count);
int bcm_trill_vpn_traverse(int unit, bcm_trill_vpn_traverse_cb cb, void *user_data);

/* Ports. add writes the gport to trill_port_id; delete_all takes those at port, BCM_GPORT_INVALID for all. */
void bcm_trill_port_t_init(bcm_trill_port_t *trill_port);
int bcm_trill_port_add(int unit, bcm_trill_port_t *trill_port);
int bcm_trill_port_delete(int unit, bcm_gport_t trill_port_id);
int bcm_trill_port_delete_all(int unit, bcm_gport_t port);
int bcm_trill_port_get(int unit, bcm_gport_t trill_port_id, bcm_trill_port_t *trill_port);

/* Routing bridges, by name. */
void bcm_trill_rbridge_t_init(bcm_trill_rbridge_t *rbridge);
int bcm_trill_rbridge_add(int unit, bcm_trill_rbridge_t *rbridge);
int bcm_trill_rbridge_delete(int unit, bcm_trill_name_t name);
int bcm_trill_rbridge_delete_all(int unit);
int bcm_trill_rbridge_get(int unit, bcm_trill_name_t name, bcm_trill_rbridge_t *rbridge);

/* Multicasts along a tree, by root, VLAN and address. */
void bcm_trill_multicast_entry_t_init(bcm_trill_multicast_entry_t *trill_addr);
int bcm_trill_multicast_entry_add(int unit, bcm_trill_multicast_entry_t *trill_addr);
int bcm_trill_multicast_entry_delete(int unit, bcm_trill_multicast_entry_t *trill_addr);
int bcm_trill_multicast_entry_delete_all(int unit, bcm_trill_name_t root_name);
int bcm_trill_multicast_entry_get(int unit, bcm_trill_multicast_entry_t *trill_addr);
int bcm_trill_multicast_entry_traverse(int unit, bcm_trill_multicast_entry_traverse_cb cb, void *user_data);

/* Routing bridges that may send along a tree. */
int bcm_trill_multicast_source_add(int unit, bcm_trill_name_t root_name, bcm_trill_name_t source_name);
int bcm_trill_multicast_source_delete(int unit, bcm_trill_name_t root_name, bcm_trill_name_t source_name);
int bcm_trill_multicast_source_delete_all(int unit, bcm_trill_name_t root_name);
int bcm_trill_multicast_source_traverse(int unit, bcm_trill_multicast_source_traverse_cb cb,
                                        void *user_data);

/* Neighbours in a tree, by root and port. */
void bcm_trill_multicast_adjacency_t_init(bcm_trill_multicast_adjacency_t *trill_adjacent);
int bcm_trill_multicast_adjacency_add(int unit, bcm_trill_multicast_adjacency_t *trill_adjacent);
int bcm_trill_multicast_adjacency_delete(int unit, bcm_trill_name_t root_name, bcm_gport_t port);
int bcm_trill_multicast_adjacency_delete_all(int unit, bcm_trill_name_t root_name);
int bcm_trill_multicast_adjacency_get(int unit, bcm_trill_name_t root_name, bcm_gport_t port,
                                      bcm_trill_multicast_adjacency_t *trill_adjacent);
int bcm_trill_multicast_adjacency_traverse(int unit, bcm_trill_multicast_adjacency_traverse_cb cb,
                                           void *user_data);

#ifdef __cplusplus
}
#endif

#endif
