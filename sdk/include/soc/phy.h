/*
 * PHYs of a chip's ports: what is known of each, how it is addressed on the MDIO bus, and who is told of its
 * resets and changes of medium. Settings and state of one port's PHY are in soc/phyctrl.h.
 *
 * Functions return an SDK status unless stated: SOC_E_UNIT for a unit that is not there, SOC_E_PORT for a
 * port that it has not, SOC_E_PARAM for a null pointer or a value out of range.
 */
#ifndef SOC_PHY_H
#define SOC_PHY_H

#include <sal/types.h>
#include <shared/port.h>
#include <soc/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define SOC_MAX_NUM_DEVICES 66

/* SOC_PHY_INTERFACE_*, SOC_PHY_MDIX_*, SOC_PHY_MDIX_STATUS_* and SOC_PHY_MEDIUM_*, as plain numbers. */
typedef int soc_port_if_t;
typedef int soc_port_mdix_t;
typedef int soc_port_mdix_status_t;
typedef int soc_port_medium_t;

/* How a PHY with several media treats one of them, and the outcome of a cable test. */
typedef _shr_phy_config_t soc_phy_config_t;
typedef _shr_port_cable_diag_t soc_port_cable_diag_t;

/* Where a port stands among those that share a PHY chip. */
typedef struct soc_phy_chip_info_s {
    int primary;           /* first port of the chip */
    int offset;            /* of the port in the chip */
    int offset_to_port[8]; /* port at each offset, -1 for none */
} soc_phy_chip_info_t;

typedef struct soc_phy_info_s {
    uint16 phy_id0;         /* identifier, upper half; 0 without a PHY */
    uint16 phy_id1;         /* lower half */
    uint16 phy_addr;        /* MDIO address of the external PHY */
    uint16 phy_addr_int;    /* of the internal one */
    char *phy_name;         /* null without a PHY */
    uint32 phy_flags;       /* set of SOC_PHY_INFO_* */
    sal_usecs_t an_timeout; /* how long autonegotiation may take */
    soc_phy_chip_info_t chip_info;
} soc_phy_info_t;

/* What a 10 Gbit/s PHY measures of its receiver. */
typedef struct {
    int flags;             /* set of XGPHY_DIAG_*: which members hold something */
    uint32 serr;           /* symbol errors */
    uint32 cerr;           /* corrected errors */
    uint16 block_lock;     /* 1 while the receiver is locked to blocks */
    uint16 block_point_id; /* which measuring point snr_block comes from */
    uint16 digital_temp;   /* degrees Celsius */
    uint16 analog_temp;
    uint8 snr_block[48];   /* signal to noise ratio per slice, in decibels */
} XGPHY_DIAG_DATA_t;

/* Per unit: an array of all ports' PHYs, and of the ports' numbers by PHY address. Null while detached. */
extern soc_phy_info_t *phy_port_info[SOC_MAX_NUM_DEVICES];
extern soc_port_t *phy_rmap[SOC_MAX_NUM_DEVICES];

/* Translates a unit's port (in the pointer, in and out) before PHY access, or null. Returns an SDK status. */
extern int (*soc_phy_cb_xlate_port_func)(int unit, int *port);

/*
 * Called with a port's new medium (the status is not looked at), and before a PHY is reset (an error status
 * stops the reset). Both return an SDK status.
 */
typedef int (*soc_port_medium_status_cb_t)(int unit, soc_port_t port, soc_port_medium_t medium,
                                           void *user_data);
typedef int (*soc_port_phy_reset_cb_t)(int unit, soc_port_t port, void *user_data);

/* The unit's PHY tables: made and freed; may be called again. */
int soc_phy_init(int unit);
int soc_phy_deinit(int unit);

/* What all PHY drivers of a unit share. */
int soc_phy_common_init(int unit);
int soc_phy_common_detach(int unit);

/* Sets up one port's PHY, and puts it into its reset state, calling the port's registered reset function. */
int soc_phy_port_init(int unit, soc_port_t port);
int soc_phy_reset(int unit, soc_port_t port);

/* 1 when the port's PHY is addressed by clause 45 of IEEE 802.3, 0 when by clause 22, or an error status. */
int soc_phy_is_c45_miim(int unit, soc_port_t port);

/* The identifier registers as read at start, and MDIO addresses; 0 for a port that there is not. */
uint16 soc_phy_id0reg_get(int unit, soc_port_t port);
uint16 soc_phy_id1reg_get(int unit, soc_port_t port);
uint16 soc_phy_addr_of_port(int unit, soc_port_t port);
uint16 soc_phy_addr_int_of_port(int unit, soc_port_t port);

/* The port with a PHY at this MDIO address, or -1. */
soc_port_t soc_phy_addr_to_port(int unit, uint16 phy_id);

/* How long autonegotiation may take, in microseconds; 0 for a port that there is not. */
sal_usecs_t soc_phy_an_timeout_get(int unit, soc_port_t port);

/* Name of the PHY, owned by the SDK; null for a port without one. */
char *soc_phy_name_get(int unit, soc_port_t port);

/* Copies what phy_port_info has of the port; phy_name stays the SDK's. */
int soc_phy_info_get(int unit, soc_port_t port, soc_phy_info_t *pi);

/* MDIO address in the configuration: flags SOC_PHY_INTERNAL for the internal PHY, 0 for the external one. */
int soc_phy_cfg_addr_get(int unit, soc_port_t port, int flags, uint16 *addr_ptr);
int soc_phy_cfg_addr_set(int unit, soc_port_t port, int flags, uint16 addr);

/* First port of the PHY chip, and the port's offset in it. */
int soc_phy_primary_and_offset_get(int unit, soc_port_t port, soc_port_t *primary_port, int *offset);

/*
 * Functions to call when a port's medium changes. Unregistering takes the same pair of function and datum;
 * SOC_E_NOT_FOUND when there is none.
 */
int soc_phy_medium_status_register(int unit, soc_port_t port, soc_port_medium_status_cb_t cb,
                                   void *user_data);
int soc_phy_medium_status_unregister(int unit, soc_port_t port, soc_port_medium_status_cb_t cb,
                                     void *user_data);
void soc_phy_medium_status_notify(int unit, soc_port_t port, soc_port_medium_t medium);

/*
 * The function that resets a port's PHY. reg_default not 0: it is the driver's own, over which one registered
 * with 0 takes precedence. Unregistering takes the same pair, as above.
 */
int soc_phy_reset_register(int unit, soc_port_t port, soc_port_phy_reset_cb_t callback, void *user_data,
                           int reg_default);
int soc_phy_reset_unregister(int unit, soc_port_t port, soc_port_phy_reset_cb_t callback, void *user_data);

/* SerDes lanes that a 100 Gbit/s port uses: bit n for lane n. */
int soc_serdes_mask_100G_get(int unit, soc_port_t port, uint32 *mask);
int soc_serdes_mask_100G_set(int unit, soc_port_t port, uint32 mask);

#ifdef __cplusplus
}
#endif

#endif
