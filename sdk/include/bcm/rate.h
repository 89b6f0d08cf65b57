/*
 * Storm control: limits on what a port lets in of broadcast, multicast and unknown unicast packets.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_PORT and BCM_E_PARAM (null pointer, rate out of range, unknown kind or flag). There are no limits at
 * first; one that is set begins with its whole burst. What bridges keep to themselves is not limited.
 */
#ifndef BCM_RATE_H
#define BCM_RATE_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Kinds of packets that can be limited. */
#define BCM_RATE_DLF 0x00000001        /* unicast packets of unknown destination */
#define BCM_RATE_MCAST 0x00000002
#define BCM_RATE_BCAST 0x00000004

/* flags of the limits of one kind. */
#define BCM_RATE_ENABLE 0x00000010     /* the kind is limited; without it pps is kept but not applied */
#define BCM_RATE_MODE_BYTES 0x00000020 /* the limit is in kbit/s instead of packets/s */

/* The limits of a port. */
typedef struct bcm_rate_limit_s {
    uint32 flags;                      /* BCM_RATE_DLF, _MCAST, _BCAST: the kinds that are limited */
    int dlf_limit;                     /* packets/s, as those below */
    int mcast_limit;
    int bcast_limit;
} bcm_rate_limit_t;

/* All limits of a port; all zero at first. */
void bcm_rate_limit_t_init(bcm_rate_limit_t *limit);
int bcm_rate_limit_set(int unit, bcm_port_t port, bcm_rate_limit_t *limit);
int bcm_rate_limit_get(int unit, bcm_port_t port, bcm_rate_limit_t *limit);

/* The limit of one kind. */
int bcm_rate_bcast_set(int unit, bcm_port_t port, int pps, uint32 flags);
int bcm_rate_bcast_get(int unit, bcm_port_t port, int *pps, uint32 *flags);
int bcm_rate_mcast_set(int unit, bcm_port_t port, int pps, uint32 flags);
int bcm_rate_mcast_get(int unit, bcm_port_t port, int *pps, uint32 *flags);
int bcm_rate_dlf_set(int unit, bcm_port_t port, int pps, uint32 flags);
int bcm_rate_dlf_get(int unit, bcm_port_t port, int *pps, uint32 *flags);

/* Packets of a kind in a row before the limit applies, of 1518 bytes if in bytes. 0: what comes in 10 ms. */
int bcm_rate_burst_set(int unit, bcm_port_t port, uint32 type, int packets);
int bcm_rate_burst_get(int unit, bcm_port_t port, uint32 type, int *packets);

/* Kinds that share one limit of a port, the lowest of theirs, instead of having one each. */
int bcm_rate_type_set(int unit, bcm_port_t port, uint32 type_mask);
int bcm_rate_type_get(int unit, bcm_port_t port, uint32 *type_mask);

#ifdef __cplusplus
}
#endif

#endif
