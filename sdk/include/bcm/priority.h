/* How priority and colour of a packet correspond to those that its tag says. */
#ifndef BCM_PRIORITY_H
#define BCM_PRIORITY_H

#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct bcm_priority_mapping_s {
    int pkt_pri;          /* priority in the tag, 0..7 */
    int cfi;              /* 0 or 1 */
    int internal_pri;
    bcm_color_t color;
    int policer_offset;   /* of the policer within its group that meters such packets */
} bcm_priority_mapping_t;

void bcm_priority_mapping_t_init(bcm_priority_mapping_t *priority_map);

#ifdef __cplusplus
}
#endif

#endif
