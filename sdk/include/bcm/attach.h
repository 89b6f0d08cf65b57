/*
 * Units: attaching a device or a remote unit as one, taking it off again, what it is.
 *
 * A unit is attached through a driver, which type names; subtype says which of its variants. Functions
 * return BCM_E_NONE or an error, BCM_E_UNIT for a number outside the range of units or of one that nothing
 * is attached to.
 */
#ifndef BCM_ATTACH_H
#define BCM_ATTACH_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* capability of bcm_info_t. */
typedef enum bcm_info_capability_e {
    BCM_INFO_SWITCH = 0x00000001, /* forwards between ports */
    BCM_INFO_L3 = 0x00000002,     /* routes */
    BCM_INFO_IPMC = 0x00000004,   /* routes multicast */
    BCM_INFO_MPLS = 0x00000008,
    BCM_INFO_FABRIC = 0x00000010, /* joins other devices */
    BCM_INFO_TRAFFIC_MANAGER = 0x00000020,
    BCM_INFO_REMOTE = 0x00000040  /* belongs to another CPU */
} bcm_info_capability_t;

/* What a unit is. */
typedef struct bcm_info_s {
    uint32 vendor;
    uint32 device;
    uint32 revision;
    uint32 capability;                 /* BCM_INFO_* */
    int num_pipes;
} bcm_info_t;

/* With which parameters a unit was attached. The strings are the SDK's. */
typedef struct bcm_attach_info_s {
    int unit;
    const char *type;
    const char *subtype;
    int remunit;                       /* its number where it is local */
} bcm_attach_info_t;

/* How long detaching waits for calls that are under way. */
typedef struct bcm_detach_retry_s {
    int num_retries;
    uint32 poll_usecs;                 /* microseconds between two tries */
} bcm_detach_retry_t;

/* Called after a unit was attached (attach 1), or before it is detached (0). info is valid for the call. */
typedef void (*bcm_attach_cb_t)(int unit, int attach, bcm_attach_info_t *info, void *user_data);

/*
 * Attaches a unit: the given one, or with unit -1 the lowest free number, which is then the result. A null
 * type stands for the driver of local devices. BCM_E_EXISTS: the unit is taken; BCM_E_CONFIG: no such
 * driver. early_txrx leaves out what packets do not need; bcm_init completes it.
 */
int bcm_attach(int unit, char *type, char *subtype, int remunit);
int bcm_attach_early_txrx(int unit, char *type, char *subtype, int remunit);

/* Whether something is attached to unit: BCM_E_NONE or BCM_E_UNIT. */
int bcm_attach_check(int unit);

/* The highest number of a unit that is attached, -1 if there is none. */
int bcm_attach_max(int *max_units);

/* Callbacks, for one unit or with -1 for all; the triple of arguments counts. */
int bcm_attach_register(int unit, bcm_attach_cb_t cb, void *user_data);
int bcm_attach_unregister(int unit, bcm_attach_cb_t cb, void *user_data);

void bcm_attach_info_t_init(bcm_attach_info_t *info);

/* Detaches a unit; late_txrx leaves alone what packets need. BCM_E_BUSY: calls did not end in time. */
int bcm_detach(int unit);
int bcm_detach_late_txrx(int unit);
int bcm_detach_retry_get(int unit, bcm_detach_retry_t *retry);
int bcm_detach_retry_set(int unit, bcm_detach_retry_t *retry);
void bcm_detach_retry_t_init(bcm_detach_retry_t *retry);

/* The unit that was attached with these parameters, or BCM_E_NOT_FOUND. */
int bcm_find(char *type, char *subtype, int remunit);

int bcm_info_get(int unit, bcm_info_t *info);
void bcm_info_t_init(bcm_info_t *info);

/* Attached units: at most unit_max of them into unit_arr, or the highest number that the SDK allows. */
int bcm_unit_list(int unit_max, int *unit_arr, int *unit_count);
int bcm_unit_max_get(int *unit_max);

/* Whether unit is a number in range with something attached; whether this CPU drives it; its number there. */
int bcm_unit_valid_get(int unit, int *valid);
int bcm_unit_local_get(int unit, int *local);
int bcm_unit_remote_get(int unit, int *remunit);

/* The variant of the driver, as bcm_attach was given it; size: bytes of subtype with the closing 0. */
int bcm_unit_subtype_get(int unit, char *subtype, int size);

#ifdef __cplusplus
}
#endif

#endif
