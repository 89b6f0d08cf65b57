/*
 * Trunks: ports that act as one.
 */
#ifndef BCM_TRUNK_H
#define BCM_TRUNK_H

#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_trunk_member_t. */
#define BCM_TRUNK_MEMBER_EGRESS_DISABLE 0x00000001  /* sends nothing of the trunk's */
#define BCM_TRUNK_MEMBER_INGRESS_DISABLE 0x00000002 /* what comes in is not taken for the trunk's */

/* A member of a trunk. */
typedef struct bcm_trunk_member_s {
    uint32 flags;               /* BCM_TRUNK_MEMBER_* */
    bcm_gport_t gport;
    int dynamic_scaling_factor; /* weights of dynamic load balancing */
    int dynamic_load_weight;
    int dynamic_queue_size_weight;
} bcm_trunk_member_t;

#ifdef __cplusplus
}
#endif

#endif
