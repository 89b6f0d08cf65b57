/*
 * VLANs 1..4094 and their member ports. BCM_E_PARAM: VLAN id out of range; BCM_E_NOT_FOUND: no such VLAN;
 * BCM_E_PORT: a bitmap has a port that the unit has not.
 */
#ifndef BCM_VLAN_H
#define BCM_VLAN_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct bcm_vlan_data_s {
    bcm_vlan_t vlan_tag;
    bcm_pbmp_t port_bitmap;    /* all members */
    bcm_pbmp_t ut_port_bitmap; /* those that send untagged */
} bcm_vlan_data_t;

void bcm_vlan_data_t_init(bcm_vlan_data_t *vlan_data);

/*
 * A new VLAN has no members. The default VLAN cannot be destroyed (BCM_E_BADID), and destroy_all leaves
 * it. Addresses of a destroyed VLAN stay in the address table until deleted or aged out.
 */
int bcm_vlan_create(int unit, bcm_vlan_t vid);
int bcm_vlan_destroy(int unit, bcm_vlan_t vid);
int bcm_vlan_destroy_all(int unit);

/*
 * Members. Those added that are also in ubmp send untagged, the others tagged, whatever they did before;
 * ubmp must lie within pbmp (BCM_E_PARAM). Removing a port that is no member is no error.
 */
int bcm_vlan_port_add(int unit, bcm_vlan_t vid, bcm_pbmp_t pbmp, bcm_pbmp_t ubmp);
int bcm_vlan_port_remove(int unit, bcm_vlan_t vid, bcm_pbmp_t pbmp);
int bcm_vlan_port_get(int unit, bcm_vlan_t vid, bcm_pbmp_t *pbmp, bcm_pbmp_t *ubmp);

/* The default VLAN, at first BCM_VLAN_DEFAULT with all front ports untagged. A new one has to exist. */
int bcm_vlan_default_get(int unit, bcm_vlan_t *vid_ptr);
int bcm_vlan_default_set(int unit, bcm_vlan_t vid);

/*
 * All VLANs, or those with any of the ports as members, by ascending id. *listp is allocated for the
 * caller, who gives it back with bcm_vlan_list_destroy; it is null if there are none.
 */
int bcm_vlan_list(int unit, bcm_vlan_data_t **listp, int *countp);
int bcm_vlan_list_by_pbmp(int unit, bcm_pbmp_t ports, bcm_vlan_data_t **listp, int *countp);
int bcm_vlan_list_destroy(int unit, bcm_vlan_data_t *list, int count);

#ifdef __cplusplus
}
#endif

#endif
