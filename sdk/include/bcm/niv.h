/*
 * Virtual network interfaces behind a port extender: packets carry a VN-tag that says between which of them
 * they travel, and each is a gport of its own.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, interface outside 0..16383). On an error nothing is changed.
 */
#ifndef BCM_NIV_H
#define BCM_NIV_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_niv_port_t. */
#define BCM_NIV_PORT_WITH_ID 0x00000001    /* niv_port_id is the gport to use */
#define BCM_NIV_PORT_REPLACE 0x00000002    /* replace the port of that gport */
#define BCM_NIV_PORT_MATCH_NONE 0x00000004 /* sends only; what arrives is matched by another port */

/* flags of bcm_niv_forward_t. */
#define BCM_NIV_FORWARD_MULTICAST 0x00000001 /* the destination is dest_multicast */
#define BCM_NIV_FORWARD_REPLACE 0x00000002   /* replace the entry of that interface */

/* A virtual interface as a port: what its packets arrive with. */
typedef struct bcm_niv_port_s {
    uint32 flags;                  /* BCM_NIV_PORT_* */
    bcm_gport_t niv_port_id;       /* out: the gport of the interface */
    bcm_gport_t port;              /* port at which the extender is */
    uint16 virtual_interface_id;   /* source in the tag, 12 bits */
    bcm_vlan_t match_vlan;         /* 0 for any */
    bcm_tpid_t match_service_tpid;
    int qos_map_id;
    uint32 if_class;
} bcm_niv_port_t;

/* Where an extender between others sends packets, by the destination in their tags. */
typedef struct bcm_niv_forward_s {
    uint32 flags;                  /* BCM_NIV_FORWARD_* */
    int name_space;                /* space of interface numbers, one per port or shared */
    uint16 virtual_interface_id;   /* destination in the tag, 14 bits */
    bcm_gport_t dest_port;
    bcm_multicast_t dest_multicast;
    bcm_failover_t failover_id;    /* what takes the place of dest_port when it is down */
} bcm_niv_forward_t;

/* How a packet to a virtual interface leaves. */
typedef struct bcm_niv_egress_s {
    uint32 flags;
    bcm_if_t intf;                 /* egress object of routed packets, 0 for bridged ones */
    bcm_gport_t dest_port;
    uint16 virtual_interface_id;   /* destination in the tag, 14 bits */
    bcm_vntag_action_t vntag_action;
    bcm_tpid_t service_tpid;
    bcm_vlan_t service_vlan;
    uint8 service_pri;             /* 0..7 */
    uint8 service_cfi;             /* 0 or 1 */
    int service_qos_map_id;        /* map that gives priority and CFI in their place, 0 for none */
} bcm_niv_egress_t;

/*
 * Called once per entry. Records are valid during the call. A negative result ends the traversal, which then
 * returns it.
 */
typedef int (*bcm_niv_port_traverse_cb)(int unit, bcm_niv_port_t *niv_port, void *user_data);
typedef int (*bcm_niv_forward_traverse_cb)(int unit, bcm_niv_forward_t *iv_fwd_entry, void *user_data);

/* The module. init removes all interfaces and entries. */
int bcm_niv_init(int unit);
int bcm_niv_cleanup(int unit);

/* Interfaces. add writes the gport to niv_port_id; delete_all takes those at a port, -1 for all. */
void bcm_niv_port_t_init(bcm_niv_port_t *niv_port);
int bcm_niv_port_add(int unit, bcm_niv_port_t *niv_port);
int bcm_niv_port_delete(int unit, bcm_gport_t niv_port_id);
int bcm_niv_port_delete_all(int unit, bcm_gport_t port);
int bcm_niv_port_get(int unit, bcm_gport_t niv_port_id, bcm_niv_port_t *niv_port);
int bcm_niv_port_traverse(int unit, bcm_niv_port_traverse_cb cb, void *user_data);

/* Entries of an extender, one per name space and interface; delete_all takes those of a space, -1 for all. */
void bcm_niv_forward_t_init(bcm_niv_forward_t *iv_fwd_entry);
int bcm_niv_forward_add(int unit, bcm_niv_forward_t *iv_fwd_entry);
int bcm_niv_forward_delete(int unit, int name_space, uint16 virtual_interface_id);
int bcm_niv_forward_delete_all(int unit, int name_space);
int bcm_niv_forward_get(int unit, int name_space, uint16 virtual_interface_id,
                        bcm_niv_forward_t *iv_fwd_entry);
int bcm_niv_forward_traverse(int unit, bcm_niv_forward_traverse_cb cb, void *user_data);

/*
 * Ways out of an interface, several for one that is reached over more than one path. set replaces all of
 * them; get writes at most array_size and says in *count how many there are.
 */
void bcm_niv_egress_t_init(bcm_niv_egress_t *niv_egress);
int bcm_niv_egress_add(int unit, bcm_gport_t niv_port, bcm_niv_egress_t *niv_egress);
int bcm_niv_egress_delete(int unit, bcm_gport_t niv_port, bcm_niv_egress_t *niv_egress);
int bcm_niv_egress_delete_all(int unit, bcm_gport_t niv_port);
int bcm_niv_egress_set(int unit, bcm_gport_t niv_port, int array_size, bcm_niv_egress_t *egress_array);
int bcm_niv_egress_get(int unit, bcm_gport_t niv_port, int array_size, bcm_niv_egress_t *egress_array,
                       int *count);

#ifdef __cplusplus
}
#endif

#endif
