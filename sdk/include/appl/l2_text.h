/*
 * Layer-2 entries printed, each on a line of its own after the prefix pfx (none if null). Nothing is printed
 * for a null entry or a unit without layer 2.
 */
#ifndef APPL_L2_TEXT_H
#define APPL_L2_TEXT_H

#include <bcm/l2.h>

#ifdef __cplusplus
extern "C" {
#endif

void dump_l2_addr(int unit, char *pfx, bcm_l2_addr_t *l2addr);
void dump_l2_cache_addr(int unit, char *pfx, bcm_l2_cache_addr_t *l2caddr);

#ifdef __cplusplus
}
#endif

#endif
