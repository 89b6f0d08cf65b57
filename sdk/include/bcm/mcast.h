/*
 * Layer-2 multicast by address: which ports get packets to a multicast MAC address of a VLAN.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT, BCM_E_PARAM (not a multicast address, VLAN outside 1..4094) and, for an address that has no
 * entry, BCM_E_NOT_FOUND. On an error nothing is changed.
 */
#ifndef BCM_MCAST_H
#define BCM_MCAST_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_mcast_addr_t. */
#define BCM_MCAST_L2_COPY_TO_CPU 0x00000001
#define BCM_MCAST_L2_INDEX_GIVEN 0x00000002 /* l2mc_index is the line to use, not chosen */

/* A multicast address of a VLAN and its ports. */
typedef struct bcm_mcast_addr_s {
    uint32 flags;                                /* BCM_MCAST_L2_* */
    bcm_mac_t mac;
    bcm_vlan_t vid;
    bcm_cos_t cos_dst;
    bcm_pbmp_t pbmp;
    bcm_pbmp_t ubmp;                             /* those of pbmp that send untagged */
    int l2mc_index;                              /* line of the table of port sets */
    bcm_fabric_distribution_t distribution_class;
} bcm_mcast_addr_t;

/* The module. init removes all entries. */
int bcm_mcast_init(int unit);
int bcm_mcast_detach(int unit);

/* All members zero but those given. */
void bcm_mcast_addr_t_init(bcm_mcast_addr_t *mcaddr, bcm_mac_t mac, bcm_vlan_t vid);

/*
 * Entries, one per address and VLAN. add gives BCM_E_EXISTS; port_get reads one; remove_all takes those of a
 * VLAN, 0 for all.
 */
int bcm_mcast_addr_add(int unit, bcm_mcast_addr_t *mcaddr);
int bcm_mcast_addr_remove(int unit, bcm_mac_t mac, bcm_vlan_t vid);
int bcm_mcast_addr_remove_all(int unit, bcm_vlan_t vid);
int bcm_mcast_port_get(int unit, bcm_mac_t mac, bcm_vlan_t vid, bcm_mcast_addr_t *mcaddr);

/* Adds the ports of mcaddr to an entry, or takes them out. */
int bcm_mcast_port_add(int unit, bcm_mcast_addr_t *mcaddr);
int bcm_mcast_port_remove(int unit, bcm_mcast_addr_t *mcaddr);

/*
 * One port, as a membership report or leave message asks. The first join makes an entry, after the last
 * leave it is gone; both write what the entry then is to mcaddr.
 */
int bcm_mcast_join(int unit, bcm_mac_t mcMacAddr, bcm_vlan_t vid, bcm_port_t port, bcm_mcast_addr_t *mcaddr);
int bcm_mcast_leave(int unit, bcm_mac_t mcMacAddr, bcm_vlan_t vid, bcm_port_t port,
                    bcm_mcast_addr_t *mcaddr);

/* Sets of ports by line of their table, 0..*max, without regard to the addresses that use it. */
int bcm_mcast_bitmap_max(int unit, int *max);
int bcm_mcast_bitmap_set(int unit, int mcindex, bcm_pbmp_t pbmp);
int bcm_mcast_bitmap_get(int unit, int mcindex, bcm_pbmp_t *pbmp);
int bcm_mcast_bitmap_del(int unit, int mcindex, bcm_pbmp_t pbmp);

#ifdef __cplusplus
}
#endif

#endif
