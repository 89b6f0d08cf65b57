/*
 * PHY tables.
 */
#ifndef SOC_PHY_H
#define SOC_PHY_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define SOC_MAX_NUM_DEVICES 66

typedef int soc_port_t;
typedef int sal_usecs_t; /* microseconds */

/* Where a port stands among those that share a PHY chip. */
typedef struct soc_phy_chip_info_s {
    int primary;           /* first port of the chip */
    int offset;            /* of the port in the chip */
    int offset_to_port[8]; /* port at each offset, -1 for none */
} soc_phy_chip_info_t;

typedef struct soc_phy_info_s {
    uint16 phy_id0;
    uint16 phy_id1;
    uint16 phy_addr;     /* MDIO address of the external PHY */
    uint16 phy_addr_int; /* of the internal one */
    char *phy_name;
    uint32 phy_flags;
    sal_usecs_t an_timeout;
    soc_phy_chip_info_t chip_info;
} soc_phy_info_t;

/* Per unit: an array of all ports' PHYs, and of the ports' numbers in the PHYs' order. Null where unset. */
extern soc_phy_info_t *phy_port_info[SOC_MAX_NUM_DEVICES];
extern soc_port_t *phy_rmap[SOC_MAX_NUM_DEVICES];

/* Translates a unit's port (in the pointer, in and out) before PHY access, or null. Returns an SDK status. */
extern int (*soc_phy_cb_xlate_port_func)(int unit, int *port);

#ifdef __cplusplus
}
#endif

#endif
