/* Initialisation of all families of a unit. */
#ifndef BCM_INIT_H
#define BCM_INIT_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* module_num: families that are initialised as one. */
typedef enum bcm_module_num_e {
    BCM_MODULE_PORT = 0,
    BCM_MODULE_L2 = 1,
    BCM_MODULE_VLAN = 2,
    BCM_MODULE_TRUNK = 3,
    BCM_MODULE_COSQ = 4,
    BCM_MODULE_MCAST = 5,
    BCM_MODULE_LINKSCAN = 6,
    BCM_MODULE_STAT = 7,
    BCM_MODULE_MIRROR = 8,
    BCM_MODULE_L3 = 9,
    BCM_MODULE_STACK = 10,
    BCM_MODULE_TX = 11,
    BCM_MODULE_AUTH = 12,
    BCM_MODULE_RX = 13,
    BCM_MODULE_FIELD = 14,
    BCM_MODULE_FABRIC = 15
} bcm_module_num_t;

/*
 * Initialises what attaching a unit has not: everything that bcm_attach does by itself; or only one family,
 * which empties its tables. check says whether the former has been done: BCM_E_NONE or BCM_E_INIT.
 */
int bcm_init(int unit);
int bcm_init_selective(int unit, int module_num);
int bcm_init_check(int unit);

/* Empties all tables and returns settings to what they are after bcm_init. Packets stop meanwhile. */
int bcm_clear(int unit);

/* Looks for the PHYs of every port and puts them into their default state. Links go down for that time. */
int bcm_phy_init(int unit);

/* Name of a family for messages; null if there is none of that number. The string is the SDK's. */
char *bcm_module_name(int unit, int module_num);

#ifdef __cplusplus
}
#endif

#endif
