/*
 * Members of link aggregation groups, by system port.
 */
#ifndef SOC_PPD_LAG_H
#define SOC_PPD_LAG_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define SOC_PPD_LAG_MAX 255            /* groups are 0..255 */
#define SOC_PPD_LAG_MEMBER_ID_MAX 255  /* places in a group are 0..255 */
#define SOC_PPD_LAG_MEMBERS_MAX 64     /* of which so many may be taken at a time */
#define SOC_PPD_LAG_SYS_PORT_MAX 0xffffff

typedef struct soc_ppd_lag_member_s {
    uint32 member_id; /* place in the group */
    uint32 sys_port;
} SOC_PPD_LAG_MEMBER;

/* Why a member was not added. */
typedef enum soc_ppd_lag_failure_e {
    SOC_PPD_LAG_FAILURE_NONE,        /* it was, or an argument was at fault */
    SOC_PPD_LAG_FAILURE_PLACE_TAKEN, /* a port has its place in the group already */
    SOC_PPD_LAG_FAILURE_PORT_TAKEN,  /* the port is a member already, of this group or another */
    SOC_PPD_LAG_FAILURE_NO_SPACE     /* the group has as many members as it can */
} SOC_PPD_LAG_FAILURE;

/* All members 0. */
void SOC_PPD_LAG_MEMBER_clear(SOC_PPD_LAG_MEMBER *info);

/*
 * Adds a member to group lag_ndx, or removes the one that has both port and place of the record. Return
 *   BCM_E_NONE
 *   BCM_E_EXISTS     not added: *failure says whether port or place is taken
 *   BCM_E_FULL       not added: no space in the group
 *   BCM_E_NOT_FOUND  not removed: no such member
 *   BCM_E_PARAM      group, port or place out of range, or a null pointer
 *   BCM_E_UNIT       no such unit
 */
int soc_ppd_lag_member_add(int unit, uint32 lag_ndx, SOC_PPD_LAG_MEMBER *member,
                           SOC_PPD_LAG_FAILURE *failure);
int soc_ppd_lag_member_remove(int unit, uint32 lag_ndx, SOC_PPD_LAG_MEMBER *member);

#ifdef __cplusplus
}
#endif

#endif
