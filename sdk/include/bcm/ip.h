/* Masks of IP networks. */
#ifndef BCM_IP_H
#define BCM_IP_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * The mask with len leading ones, 0..32 (0 for any other len); and how many leading ones a mask has,
 * BCM_E_PARAM if there is a one behind the first zero.
 */
bcm_ip_t bcm_ip_mask_create(int len);
int bcm_ip_mask_length(bcm_ip_t mask);

/* The same for IPv6: fills in ip6, len 0..128; BCM_E_PARAM for any other len. */
int bcm_ip6_mask_create(bcm_ip6_t ip6, int len);
int bcm_ip6_mask_length(bcm_ip6_t mask);

#ifdef __cplusplus
}
#endif

#endif
