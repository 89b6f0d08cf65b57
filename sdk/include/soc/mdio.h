/*
 * The chip's MDIO buses: registers of the PHYs on them by the PHYs' addresses, whatever port they belong to.
 *
 * A PHY address as soc_phy_addr_of_port() and soc_phy_addr_int_of_port() give it is 32 times the bus plus
 * the address on that bus; at the start external PHYs are on bus 0, the SerDes in the chip on buses 4 and 5.
 * Registers are those of soc_phyctrl_reg_read() and _write(). A PHY answers whether or not its driver is
 * initialised; what drivers do by themselves neither needs a bus to be enabled nor counts.
 *
 * Functions return an SDK status: SOC_E_UNIT for a unit that is not there, SOC_E_INIT for a chip that does
 * not run, SOC_E_PARAM for a null pointer, a bus that there is not or a value out of range. A getter writes
 * nothing on failure.
 */
#ifndef SOC_MDIO_H
#define SOC_MDIO_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Frames on a bus since it was reset or its counters were cleared; an access by clause 45 is one. */
typedef struct soc_mdio_stat_s {
    uint32 reads;
    uint32 writes;
    uint32 errors; /* of these, frames that no PHY answered */
} soc_mdio_stat_t;

/* Addresses on a bus are 0..31, clocks are in kHz. */
#define SOC_MDIO_ADDRESS_MAX 31
#define SOC_MDIO_CLOCK_DEFAULT 2500
#define SOC_MDIO_CLOCK_MAX 25000

/*
 * The buses are 0..count - 1. Frames on one that is disabled give SOC_E_DISABLED. A reset enables the bus,
 * sets the default clock and clears the counters.
 */
int soc_mdio_bus_count_get(int unit, int *count);
int soc_mdio_bus_reset(int unit, int bus);
int soc_mdio_bus_enable_set(int unit, int bus, int enable);
int soc_mdio_bus_enable_get(int unit, int bus, int *enable);
int soc_mdio_clock_set(int unit, int bus, int khz);
int soc_mdio_clock_get(int unit, int bus, int *khz);

/* The addresses at which a PHY answers, as bits; asks each address with a read. */
int soc_mdio_probe(int unit, int bus, uint32 *present);

/*
 * Frames by clause 22 (reg 0..31) and by clause 45 (device 1..31) of the MDIO standard; SOC_E_TIMEOUT if no
 * PHY answers. A device that the PHY has not reads as all ones.
 */
int soc_mdio_read(int unit, int bus, uint8 address, uint8 reg, uint16 *data);
int soc_mdio_write(int unit, int bus, uint8 address, uint8 reg, uint16 data);
int soc_mdio_c45_read(int unit, int bus, uint8 address, uint8 device, uint16 reg, uint16 *data);
int soc_mdio_c45_write(int unit, int bus, uint8 address, uint8 device, uint16 reg, uint16 data);

/* Counters. */
void soc_mdio_stat_t_init(soc_mdio_stat_t *stat);
int soc_mdio_stat_get(int unit, int bus, soc_mdio_stat_t *stat);
int soc_mdio_stat_clear(int unit, int bus);

#ifdef __cplusplus
}
#endif

#endif
