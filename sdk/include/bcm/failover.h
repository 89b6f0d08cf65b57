/*
 * Failover: objects that switch traffic from working to protecting paths, all users of an object at once.
 *
 * Tunnels, virtual ports and next hops name a failover object and the path to take when it is on. All
 * functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, unknown flag). Functions that take an object give
 * BCM_E_NOT_FOUND if it does not exist.
 */
#ifndef BCM_FAILOVER_H
#define BCM_FAILOVER_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_failover_create. */
#define BCM_FAILOVER_WITH_ID 0x00000001 /* *failover_id is the id to use */
#define BCM_FAILOVER_INGRESS 0x00000002 /* chooses among packets that come in on both paths */
#define BCM_FAILOVER_FAST 0x00000004    /* the chip itself switches when a path's OAM session goes down */

/* flags of bcm_failover_ring_t. */
#define BCM_FAILOVER_RING_MASTER 0x00000001 /* this switch blocks the ring while it is whole */

/* Who is affected by a failover: exactly one of the members from failover_id on is meant, the rest -1. */
typedef struct bcm_failover_element_s {
    uint32 flags;                  /* BCM_FAILOVER_* of the object */
    bcm_failover_t failover_id;
    bcm_if_t intf;                 /* next hop or tunnel */
    bcm_gport_t port;
} bcm_failover_element_t;

/* A protected ring: the two ports on it, and what switches with them. */
typedef struct bcm_failover_ring_s {
    uint32 flags;                  /* BCM_FAILOVER_RING_* */
    bcm_gport_t port0;
    bcm_gport_t port1;
    bcm_failover_t failover_id;
    bcm_vlan_vector_t vlan_vector;
} bcm_failover_ring_t;

/* The module. init and cleanup destroy all objects. */
int bcm_failover_init(int unit);
int bcm_failover_cleanup(int unit);

/* Integer members zero, ids and gports -1. */
void bcm_failover_element_t_init(bcm_failover_element_t *failover);
void bcm_failover_ring_t_init(bcm_failover_ring_t *failover_ring);

/* Objects, off at first. BCM_E_EXISTS and BCM_E_FULL. A path may name one that is no more. */
int bcm_failover_create(int unit, uint32 flags, bcm_failover_t *failover_id);
int bcm_failover_destroy(int unit, bcm_failover_t failover_id);

/* Whether traffic takes the protecting path: of one object, or of what an element names. */
int bcm_failover_set(int unit, bcm_failover_t failover_id, int enable);
int bcm_failover_get(int unit, bcm_failover_t failover_id, int *enable);
int bcm_failover_status_set(int unit, bcm_failover_element_t *failover, int value);
int bcm_failover_status_get(int unit, bcm_failover_element_t *failover, int *value);

/* Rings; config_get takes port0 and port1. */
int bcm_failover_ring_config_set(int unit, bcm_failover_ring_t *failover_ring);
int bcm_failover_ring_config_get(int unit, bcm_failover_ring_t *failover_ring);

#ifdef __cplusplus
}
#endif

#endif
