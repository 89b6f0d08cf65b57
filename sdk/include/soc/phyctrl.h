/*
 * Control of a port's PHY, whichever driver it has.
 *
 * Functions return an SDK status unless stated: SOC_E_UNIT for a unit that is not there, SOC_E_PORT for a
 * port that it has not, SOC_E_PARAM for a null pointer or a value out of range, SOC_E_UNAVAIL for what the
 * PHY cannot do, SOC_E_INIT before the PHY is initialised. A getter writes nothing on failure.
 */
#ifndef SOC_PHYCTRL_H
#define SOC_PHYCTRL_H

#include <sal/types.h>
#include <bcm/types.h>
#include <soc/phy.h>
#include <soc/phy_access.h>
#include <soc/phy_control.h>
#include <soc/phy_diag.h>
#include <soc/phy_event.h>
#include <soc/phy_values.h>
#include <soc/port_ability.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Life of a PHY: finding its driver, setting it up, putting it away. */
int soc_phyctrl_init(int unit, soc_port_t port);
int soc_phyctrl_probe(int unit, soc_port_t port);
int soc_phyctrl_detach(int unit, soc_port_t port);

/* Probes and initialises the ports of a set; okay_pbmp: those where it succeeded. */
int soc_phyctrl_pbm_probe_init(int unit, pbmp_t pbmp, pbmp_t *okay_pbmp);

/* The drivers' own data of a unit and of a port, without an access to the hardware. */
int soc_phyctrl_software_init(int unit);
int soc_phyctrl_software_deinit(int unit);
int soc_phyctrl_software_port_init(int unit, soc_port_t port);

/* Resets the PHY; user_arg goes to the registered reset function in place of its own datum unless null. */
int soc_phyctrl_reset(int unit, soc_port_t port, void *user_arg);

/* The function that resets the port's external PHY, owned by the SDK; null for none. */
void *soc_phyctrl_ext_phy_reset(int unit, soc_port_t port);

/* Name of the driver, owned by the SDK, null for none; or copied, at most len bytes with the final NUL. */
char *soc_phyctrl_drv_name(int unit, soc_port_t port);
int soc_phyctrl_drv_name_get(int unit, soc_port_t port, char *name, int len);

/* What the driver does when the link has come up or gone down, and when something else happens. */
int soc_phyctrl_linkup_evt(int unit, soc_port_t port);
int soc_phyctrl_linkdn_evt(int unit, soc_port_t port);
int soc_phyctrl_notify(int unit, soc_port_t port, soc_phy_event_t event, uint32 data);

/* Link: 1 up, 0 down; change has the new link state in and out; fault is 1 for a local or remote fault. */
int soc_phyctrl_link_get(int unit, soc_port_t port, int *link);
int soc_phyctrl_link_change(int unit, soc_port_t port, int *link);
int soc_phyctrl_linkfault_get(int unit, soc_port_t port, int *fault);

/* Transmitter and receiver on (1) or off. */
int soc_phyctrl_enable_set(int unit, soc_port_t port, int enable);
int soc_phyctrl_enable_get(int unit, soc_port_t port, int *enable);

/* Forced or negotiated: full duplex 1, half 0; speed in Mbit/s, 0 while unknown. */
int soc_phyctrl_duplex_set(int unit, soc_port_t port, int duplex);
int soc_phyctrl_duplex_get(int unit, soc_port_t port, int *duplex);
int soc_phyctrl_speed_set(int unit, soc_port_t port, int speed);
int soc_phyctrl_speed_get(int unit, soc_port_t port, int *speed);
int soc_phyctrl_set_speed_max(int unit, soc_port_t port, int speed_max);

/* Clock master on copper: SOC_PHY_MS_*. */
int soc_phyctrl_master_set(int unit, soc_port_t port, int master);
int soc_phyctrl_master_get(int unit, soc_port_t port, int *master);

/* Autonegotiation on (1) or off, and whether it has finished. */
int soc_phyctrl_auto_negotiate_set(int unit, soc_port_t port, int an);
int soc_phyctrl_auto_negotiate_get(int unit, soc_port_t port, int *an, int *an_done);

/* What this end advertises, what the other end does and what the PHY can do: a set of SOC_PHY_ABILITY_*. */
int soc_phyctrl_adv_local_set(int unit, soc_port_t port, soc_port_mode_t mode);
int soc_phyctrl_adv_local_get(int unit, soc_port_t port, soc_port_mode_t *mode);
int soc_phyctrl_adv_remote_get(int unit, soc_port_t port, soc_port_mode_t *mode);
int soc_phyctrl_ability_get(int unit, soc_port_t port, soc_port_mode_t *mode);

/* The same, by kind. */
int soc_phyctrl_ability_advert_set(int unit, soc_port_t port, soc_port_ability_t *ability);
int soc_phyctrl_ability_advert_get(int unit, soc_port_t port, soc_port_ability_t *ability);
int soc_phyctrl_ability_local_get(int unit, soc_port_t port, soc_port_ability_t *ability);
int soc_phyctrl_ability_remote_get(int unit, soc_port_t port, soc_port_ability_t *ability);

/*
 * Loopback in the PHY. serdes_linkup_wait not 0: returns when the SerDes has its link, or with SOC_E_TIMEOUT.
 * en_int_phy not 0: in the internal PHY, even of a port with an external one.
 */
int soc_phyctrl_loopback_set(int unit, soc_port_t port, int enable, int serdes_linkup_wait);
int soc_phyctrl_loopback_extended_set(int unit, soc_port_t port, int enable, int serdes_linkup_wait,
                                      uint32 en_int_phy);
int soc_phyctrl_loopback_get(int unit, soc_port_t port, int *enable);

/* Interface between MAC and PHY: SOC_PHY_INTERFACE_*. */
int soc_phyctrl_interface_set(int unit, soc_port_t port, soc_port_if_t pif);
int soc_phyctrl_interface_get(int unit, soc_port_t port, soc_port_if_t *pif);

/* Crossing of the copper pairs: how it is decided (SOC_PHY_MDIX_*), and SOC_PHY_MDIX_STATUS_*. */
int soc_phyctrl_mdix_set(int unit, soc_port_t port, soc_port_mdix_t mdix);
int soc_phyctrl_mdix_get(int unit, soc_port_t port, soc_port_mdix_t *mdix);
int soc_phyctrl_mdix_status_get(int unit, soc_port_t port, soc_port_mdix_status_t *status);

/* Medium in use, SOC_PHY_MEDIUM_*, and the settings of each medium. */
int soc_phyctrl_medium_get(int unit, soc_port_t port, soc_port_medium_t *medium);
int soc_phyctrl_medium_config_set(int unit, soc_port_t port, soc_port_medium_t medium, soc_phy_config_t *cfg);
int soc_phyctrl_medium_config_get(int unit, soc_port_t port, soc_port_medium_t medium, soc_phy_config_t *cfg);

/* Tests the cable; interrupts the link. */
int soc_phyctrl_cable_diag(int unit, soc_port_t port, soc_port_cable_diag_t *status);

/* Settings and state that only some PHYs have, of the port and of one lane from 0. */
int soc_phyctrl_control_set(int unit, soc_port_t port, soc_phy_control_t ctrl_type, uint32 value);
int soc_phyctrl_control_get(int unit, soc_port_t port, soc_phy_control_t ctrl_type, uint32 *value);
int soc_phyctrl_lane_control_set(int unit, soc_port_t port, int lane, soc_phy_control_t ctrl_type,
                                 uint32 value);
int soc_phyctrl_lane_control_get(int unit, soc_port_t port, int lane, soc_phy_control_t ctrl_type,
                                 uint32 *value);

/*
 * Registers of the PHY: flags as in soc/phy_access.h, addr SOC_PHY_REGISTER_* or another register number,
 * with clause 45 SOC_PHY_DEVICE_* in bits 16 to 20. A modification changes the bits that are set in mask to
 * those of data.
 */
int soc_phyctrl_reg_read(int unit, soc_port_t port, uint32 flags, uint32 addr, uint32 *data);
int soc_phyctrl_reg_write(int unit, soc_port_t port, uint32 flags, uint32 addr, uint32 data);
int soc_phyctrl_reg_modify(int unit, soc_port_t port, uint32 flags, uint32 addr, uint32 data, uint32 mask);
int soc_phyctrl_lane_reg_read(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr, uint32 *data);
int soc_phyctrl_lane_reg_write(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr, uint32 data);

/* Registers that all ports of a PHY chip share, reached through its first port. */
int soc_phyctrl_toplvl_reg_read(int unit, soc_port_t port, soc_port_t primary_port, uint8 reg_offset,
                                uint16 *data);
int soc_phyctrl_toplvl_reg_write(int unit, soc_port_t port, soc_port_t primary_port, uint8 reg_offset,
                                 uint16 data);

/*
 * Bytes of a device behind the PHY (a transceiver module): at most max_size, and how many were read. dev_addr
 * is an address on its I2C bus.
 */
int soc_phyctrl_port_phy_multi_get(int unit, soc_port_t port, uint32 flags, uint32 dev_addr, uint32 offset,
                                   int max_size, uint8 *data, int *actual_size);

/* Loads len bytes of firmware from an offset of the PHY's program memory on; flags SOC_PHY_FIRMWARE_*. */
int soc_phyctrl_firmware_set(int unit, soc_port_t port, uint32 flags, int offset, uint8 *array, int len);

/* First port of the PHY chip, and the port's offset in it. */
int soc_phyctrl_primary_set(int unit, soc_port_t port, soc_port_t primary);
int soc_phyctrl_primary_get(int unit, soc_port_t port, soc_port_t *primary);
int soc_phyctrl_offset_set(int unit, soc_port_t port, int offset);
int soc_phyctrl_offset_get(int unit, soc_port_t port, soc_port_t *offset);

/*
 * Diagnostics: unit, port, which PHY and lane, PHY_DIAG_CTRL_*, the operation in that class and its argument.
 * See soc/phy_diag.h.
 */
int soc_phyctrl_diag_ctrl(int arg1, soc_port_t arg2, uint32 arg3, int arg4, int arg5, void *arg6);

/*
 * One PHY of a chain of them: phyn counts from the MAC (0, the internal one), phy_lane is a lane of it or -1
 * for all, sys_side 1 the side towards the MAC and 0 that towards the line.
 */
int soc_phyctrl_redirect_auto_negotiate_set(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                            int an);
int soc_phyctrl_redirect_auto_negotiate_get(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                            int *an, int *an_done);
int soc_phyctrl_redirect_control_set(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                     soc_phy_control_t ctrl_type, uint32 value);
int soc_phyctrl_redirect_control_get(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                     soc_phy_control_t ctrl_type, uint32 *value);
int soc_phyctrl_redirect_loopback_set(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                      int enable, int serdes_linkup_wait);
int soc_phyctrl_redirect_loopback_get(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                      int *enable);

#ifdef __cplusplus
}
#endif

#endif
