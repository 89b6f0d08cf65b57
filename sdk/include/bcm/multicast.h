/*
 * Multicast groups: the ports to which a packet is copied, and how each copy is rewritten.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT, BCM_E_PARAM and, for a group or member that does not exist, BCM_E_NOT_FOUND. On an error
 * nothing is changed. A member is a port and an encapsulation id, which says how its copy is rewritten; the
 * ..._encap_get functions give the id for each kind of destination. Arrays that a function fills are given
 * with the number of elements for which they have room, and how many were written comes back in the count.
 */
#ifndef BCM_MULTICAST_H
#define BCM_MULTICAST_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Kind of a group, given when it is created. */
typedef enum bcm_multicast_type_e {
    BCM_MULTICAST_TYPE_L2 = 0x00000001,
    BCM_MULTICAST_TYPE_L3 = 0x00000002,
    BCM_MULTICAST_TYPE_VPLS = 0x00000004,
    BCM_MULTICAST_TYPE_SUBPORT = 0x00000008,
    BCM_MULTICAST_TYPE_MIM = 0x00000010,
    BCM_MULTICAST_TYPE_WLAN = 0x00000020,
    BCM_MULTICAST_TYPE_VLAN = 0x00000040,
    BCM_MULTICAST_TYPE_TRILL = 0x00000080,
    BCM_MULTICAST_TYPE_NIV = 0x00000100,
    BCM_MULTICAST_TYPE_VXLAN = 0x00000200
} bcm_multicast_type_t;

/* Further flags of create, and where the copies of a group are made. */
#define BCM_MULTICAST_WITH_ID 0x00001000        /* *group is the id to use */
#define BCM_MULTICAST_INGRESS_GROUP 0x00002000  /* copies are made before the queues */
#define BCM_MULTICAST_EGRESS_GROUP 0x00004000   /* copies are made at the egress */

/* Settings of a group, see bcm_multicast_control_set. */
typedef enum bcm_multicast_control_e {
    bcmMulticastControlMtu = 0,         /* bytes, 0 for no limit */
    bcmMulticastRemapGroup = 1,         /* group that takes its place after an update */
    bcmMulticastVpTrunkResolve = 2,     /* copies go to one member only of a trunk of virtual ports */
    bcmMulticastControlSourceKnockout = 3 /* no copy to where the packet came from */
} bcm_multicast_control_t;

/* A member of a group. */
typedef struct bcm_multicast_replication_s {
    uint32 flags;
    bcm_gport_t port;
    bcm_if_t encap1;                    /* encapsulation id */
    bcm_if_t encap2;                    /* a second one, for copies that are rewritten twice */
} bcm_multicast_replication_t;

/* Called once per group with its kind. A negative result ends the traversal, which then returns it. */
typedef int (*bcm_multicast_group_traverse_cb_t)(int unit, bcm_multicast_t group, uint32 flags,
                                                 void *user_data);

/* The module. init removes all groups. */
int bcm_multicast_init(int unit);
int bcm_multicast_detach(int unit);

/*
 * Groups. create chooses a free one of the kind that flags give, or takes the one given with
 * BCM_MULTICAST_WITH_ID (BCM_E_EXISTS); multi_alloc takes several with consecutive ids. group_get reads the
 * kind and the number of members; the traversal visits groups of one kind, or all with flags 0.
 */
int bcm_multicast_create(int unit, uint32 flags, bcm_multicast_t *group);
int bcm_multicast_multi_alloc(int unit, uint32 flags, int nof_groups, bcm_multicast_t *base_group);
int bcm_multicast_destroy(int unit, bcm_multicast_t group);
int bcm_multicast_group_get(int unit, bcm_multicast_t group, uint32 *flags, int *rep_count);
int bcm_multicast_group_is_free(int unit, bcm_multicast_t group, int *is_free);
int bcm_multicast_group_free_range_get(int unit, uint32 flags, bcm_multicast_t *group_min,
                                       bcm_multicast_t *group_max);
int bcm_multicast_group_traverse(int unit, bcm_multicast_group_traverse_cb_t trav_fn, uint32 flags,
                                 void *user_data);

/* Settings. */
int bcm_multicast_control_set(int unit, bcm_multicast_t group, bcm_multicast_control_t type, int arg);
int bcm_multicast_control_get(int unit, bcm_multicast_t group, bcm_multicast_control_t type, int *arg);

/*
 * Members, whatever the place where copies are made; BCM_MULTICAST_*_GROUP in flags says which. After an
 * error, *done_count says how many elements of rep_array were dealt with.
 */
void bcm_multicast_replication_t_init(bcm_multicast_replication_t *replication);
int bcm_multicast_set(int unit, bcm_multicast_t group, uint32 flags, int nof_replications,
                      bcm_multicast_replication_t *rep_array, int *done_count);
int bcm_multicast_add(int unit, bcm_multicast_t group, uint32 flags, int nof_replications,
                      bcm_multicast_replication_t *rep_array, int *done_count);
int bcm_multicast_delete(int unit, bcm_multicast_t group, uint32 flags, int nof_replications,
                         bcm_multicast_replication_t *rep_array, int *done_count);
int bcm_multicast_get(int unit, bcm_multicast_t group, uint32 flags, int replications_max,
                      bcm_multicast_replication_t *out_rep_array, int *out_rep_count);

/* Members whose copies are made at the egress. set replaces all of them. */
int bcm_multicast_egress_add(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_if_t encap_id);
int bcm_multicast_egress_delete(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_if_t encap_id);
int bcm_multicast_egress_delete_all(int unit, bcm_multicast_t group);
int bcm_multicast_egress_set(int unit, bcm_multicast_t group, int port_count, bcm_gport_t *port_array,
                             bcm_if_t *encap_id_array);
int bcm_multicast_egress_get(int unit, bcm_multicast_t group, int port_max, bcm_gport_t *port_array,
                             bcm_if_t *encap_id_array, int *port_count);

/* Members whose copies are made before the queues. */
int bcm_multicast_ingress_add(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_if_t encap_id);
int bcm_multicast_ingress_delete(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_if_t encap_id);
int bcm_multicast_ingress_delete_all(int unit, bcm_multicast_t group);
int bcm_multicast_ingress_set(int unit, bcm_multicast_t group, int port_count, bcm_gport_t *port_array,
                              bcm_if_t *encap_id_array);
int bcm_multicast_ingress_get(int unit, bcm_multicast_t group, int port_max, bcm_gport_t *port_array,
                              bcm_if_t *encap_id_array, int *port_count);

/* Members with a queue of their own for each subscriber. */
int bcm_multicast_egress_subscriber_add(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_if_t encap_id,
                                        bcm_gport_t subscriber_queue);
int bcm_multicast_egress_subscriber_delete(int unit, bcm_multicast_t group, bcm_gport_t port,
                                           bcm_if_t encap_id, bcm_gport_t subscriber_queue);
int bcm_multicast_egress_subscriber_set(int unit, bcm_multicast_t group, int port_count,
                                        bcm_gport_t *port_array, bcm_if_t *encap_id_array,
                                        bcm_gport_t *subscriber_queue_array);
int bcm_multicast_egress_subscriber_get(int unit, bcm_multicast_t group, int port_max,
                                        bcm_gport_t *port_array, bcm_if_t *encap_id_array,
                                        bcm_gport_t *subscriber_queue_array, int *port_count);

/*
 * A port seen from its groups, of one kind, or all with flags 0: which have it as a member and with which
 * encapsulation; and out of all of them.
 */
int bcm_multicast_port_groups_get(int unit, bcm_gport_t port, uint32 flags, int group_max,
                                  bcm_multicast_t *group_array, bcm_if_t *encap_id_array, int *group_count);
int bcm_multicast_port_delete(int unit, bcm_gport_t port, uint32 flags, int *group_count);

/* VLANs of which a port gets a copy each, by line of the table of routed groups. */
int bcm_multicast_repl_set(int unit, int mc_index, bcm_port_t port, bcm_vlan_vector_t vlan_vec);
int bcm_multicast_repl_get(int unit, int mc_index, bcm_port_t port, bcm_vlan_vector_t vlan_vec);

/* How a group is spread over the links of the fabric. */
int bcm_multicast_fabric_distribution_set(int unit, bcm_multicast_t group, bcm_fabric_distribution_t ds_id);
int bcm_multicast_fabric_distribution_get(int unit, bcm_multicast_t group,
                                          bcm_fabric_distribution_t *ds_id);

/* Encapsulation ids: of a bridged, a routed and a rewritten copy, and of one to each kind of virtual port. */
int bcm_multicast_l2_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_vlan_t vlan,
                               bcm_if_t *encap_id);
int bcm_multicast_l3_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_if_t intf,
                               bcm_if_t *encap_id);
int bcm_multicast_egress_object_encap_get(int unit, bcm_multicast_t group, bcm_if_t intf,
                                          bcm_if_t *encap_id);
int bcm_multicast_vpls_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_gport_t mpls_port_id,
                                 bcm_if_t *encap_id);
int bcm_multicast_mim_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_gport_t mim_port_id,
                                bcm_if_t *encap_id);
int bcm_multicast_wlan_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_gport_t wlan_port_id,
                                 bcm_if_t *encap_id);
int bcm_multicast_vlan_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_gport_t vlan_port_id,
                                 bcm_if_t *encap_id);
int bcm_multicast_subport_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_gport_t subport,
                                    bcm_if_t *encap_id);
int bcm_multicast_trill_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_if_t intf,
                                  bcm_if_t *encap_id);
int bcm_multicast_niv_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port, bcm_gport_t niv_port_id,
                                bcm_if_t *encap_id);
int bcm_multicast_l2gre_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port,
                                  bcm_gport_t l2gre_port_id, bcm_if_t *encap_id);
int bcm_multicast_vxlan_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port,
                                  bcm_gport_t vxlan_port_id, bcm_if_t *encap_id);
int bcm_multicast_extender_encap_get(int unit, bcm_multicast_t group, bcm_gport_t port,
                                     bcm_gport_t extender_port_id, bcm_if_t *encap_id);

#ifdef __cplusplus
}
#endif

#endif
