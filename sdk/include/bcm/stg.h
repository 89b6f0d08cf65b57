/*
 * Spanning tree groups: VLANs that share the states of ports in a spanning tree.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT
 * and BCM_E_PARAM (null pointer, group or VLAN id out of range). Functions that take a group give
 * BCM_E_NOT_FOUND if it does not exist. Each VLAN is in exactly one group, at first in the default one.
 */
#ifndef BCM_STG_H
#define BCM_STG_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* States of a port in a spanning tree. */
typedef enum bcm_stg_stp_e {
    BCM_STG_STP_DISABLE = 0, /* the port is not part of the tree; drops everything */
    BCM_STG_STP_BLOCK = 1,   /* takes only protocol packets, also called discarding */
    BCM_STG_STP_LISTEN = 2,  /* the same while the tree is being made */
    BCM_STG_STP_LEARN = 3,   /* also learns addresses */
    BCM_STG_STP_FORWARD = 4
} bcm_stg_stp_t;

/* The default group, until bcm_stg_default_set names another. The default one cannot be destroyed. */
#define BCM_STG_DEFAULT 1

/* init destroys all groups but the default one; clear also moves all VLANs there. */
int bcm_stg_init(int unit);
int bcm_stg_clear(int unit);

/* Number of groups that there can be. */
int bcm_stg_count_get(int unit, int *max_stg);

/*
 * Groups. create takes the lowest free id, BCM_E_FULL; create_id the one given, BCM_E_EXISTS. The VLANs of a
 * destroyed group fall to the default one; BCM_E_BUSY for that one itself.
 */
int bcm_stg_create(int unit, bcm_stg_t *stg_ptr);
int bcm_stg_create_id(int unit, bcm_stg_t stg);
int bcm_stg_destroy(int unit, bcm_stg_t stg);

/*
 * All groups by ascending id. *list is allocated for the caller, who gives it back with
 * bcm_stg_list_destroy.
 */
int bcm_stg_list(int unit, bcm_stg_t **list, int *count);
int bcm_stg_list_destroy(int unit, bcm_stg_t *list, int count);

/* The group that VLANs are in at first, and fall to; at the start BCM_STG_DEFAULT. */
int bcm_stg_default_set(int unit, bcm_stg_t stg);
int bcm_stg_default_get(int unit, bcm_stg_t *stg_ptr);

/* VLANs of a group; added, one leaves the group in which it was, and removed, it falls to the default one. */
int bcm_stg_vlan_add(int unit, bcm_stg_t stg, bcm_vlan_t vid);
int bcm_stg_vlan_remove(int unit, bcm_stg_t stg, bcm_vlan_t vid);
int bcm_stg_vlan_remove_all(int unit, bcm_stg_t stg);

/* The VLANs of a group by ascending id, allocated as by bcm_stg_list; null if there are none. */
int bcm_stg_vlan_list(int unit, bcm_stg_t stg, bcm_vlan_t **list, int *count);
int bcm_stg_vlan_list_destroy(int unit, bcm_vlan_t *list, int count);

/*
 * The state of a port in a group, BCM_STG_STP_*; at first BCM_STG_STP_FORWARD in the default group, else
 * BCM_STG_STP_DISABLE.
 */
int bcm_stg_stp_set(int unit, bcm_stg_t stg, bcm_port_t port, int stp_state);
int bcm_stg_stp_get(int unit, bcm_stg_t stg, bcm_port_t port, int *stp_state);

#ifdef __cplusplus
}
#endif

#endif
