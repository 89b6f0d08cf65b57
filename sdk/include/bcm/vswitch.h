/*
 * Virtual switches: switching instances whose members are ports of any kind, and pairs of ports that are
 * connected without a look at addresses.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM. On an error nothing is changed. A switching instance is named by a number of
 * the same kind as a VLAN's, and takes its place where packets are bridged.
 */
#ifndef BCM_VSWITCH_H
#define BCM_VSWITCH_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_vswitch_cross_connect_t. */
#define BCM_VSWITCH_CROSS_CONNECT_DIRECTIONAL 0x00000001 /* from port1 to port2 only */

/* Two ports, each of which sends what the other receives. */
typedef struct bcm_vswitch_cross_connect_s {
    uint32 flags;               /* BCM_VSWITCH_CROSS_CONNECT_* */
    bcm_gport_t port1;
    bcm_gport_t port2;
    int encap1;                 /* rewriting of what leaves through port1 */
    int encap2;
} bcm_vswitch_cross_connect_t;

/* Called once per entry. A negative result ends the traversal, which then returns it. */
typedef int (*bcm_vswitch_port_traverse_cb)(int unit, bcm_vlan_t vsi, bcm_gport_t port, void *user_data);
typedef int (*bcm_vswitch_cross_connect_traverse_cb)(int unit, bcm_vswitch_cross_connect_t *cross_connect,
                                                     void *user_data);

/* The module. init removes all instances and connections. */
int bcm_vswitch_init(int unit);
int bcm_vswitch_detach(int unit);

/*
 * Instances. create chooses a free one (BCM_E_FULL), create_with_id gives BCM_E_EXISTS; destroying one that
 * has ports takes these out first.
 */
int bcm_vswitch_create(int unit, bcm_vlan_t *vsi);
int bcm_vswitch_create_with_id(int unit, bcm_vlan_t vsi);
int bcm_vswitch_destroy(int unit, bcm_vlan_t vsi);
int bcm_vswitch_destroy_all(int unit);

/* Members. A port is in one instance at a time (BCM_E_EXISTS); get says in which (BCM_E_NOT_FOUND). */
int bcm_vswitch_port_add(int unit, bcm_vlan_t vsi, bcm_gport_t port);
int bcm_vswitch_port_delete(int unit, bcm_vlan_t vsi, bcm_gport_t port);
int bcm_vswitch_port_delete_all(int unit, bcm_vlan_t vsi);
int bcm_vswitch_port_get(int unit, bcm_gport_t port, bcm_vlan_t *vsi);
int bcm_vswitch_port_traverse(int unit, bcm_vlan_t vsi, bcm_vswitch_port_traverse_cb cb, void *user_data);

/* Connected pairs, by port1; get takes it from *cross_connect. */
void bcm_vswitch_cross_connect_t_init(bcm_vswitch_cross_connect_t *cross_connect);
int bcm_vswitch_cross_connect_add(int unit, bcm_vswitch_cross_connect_t *cross_connect);
int bcm_vswitch_cross_connect_delete(int unit, bcm_gport_t port1);
int bcm_vswitch_cross_connect_delete_all(int unit);
int bcm_vswitch_cross_connect_get(int unit, bcm_vswitch_cross_connect_t *cross_connect);
int bcm_vswitch_cross_connect_traverse(int unit, bcm_vswitch_cross_connect_traverse_cb cb, void *user_data);

#ifdef __cplusplus
}
#endif

#endif
