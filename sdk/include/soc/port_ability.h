/*
 * What a port or its PHY can do, as the chip level passes it around.
 */
#ifndef SOC_PORT_ABILITY_H
#define SOC_PORT_ABILITY_H

#include <sal/types.h>
#include <shared/port.h>

/* A set of _SHR_PM_*. */
typedef uint32 soc_port_mode_t;

typedef _shr_port_ability_t soc_port_ability_t;

/* Ethernet over long copper cables: a set of rates, in Mbit/s, and of wire pairs to use for them. */
typedef uint32 soc_phy_control_longreach_ability_t;

typedef enum soc_phy_longreach_e {
    SOC_PHY_LONGREACH_5MB = 0x0001,
    SOC_PHY_LONGREACH_10MB = 0x0002,
    SOC_PHY_LONGREACH_20MB = 0x0004,
    SOC_PHY_LONGREACH_25MB = 0x0008,
    SOC_PHY_LONGREACH_33MB = 0x0010,
    SOC_PHY_LONGREACH_50MB = 0x0020,
    SOC_PHY_LONGREACH_100MB = 0x0040,
    SOC_PHY_LONGREACH_PAIR1 = 0x0100,
    SOC_PHY_LONGREACH_PAIR2 = 0x0200,
    SOC_PHY_LONGREACH_PAIR4 = 0x0400,
    SOC_PHY_LONGREACH_PAUSE = 0x1000,
    SOC_PHY_LONGREACH_PAUSE_ASYM = 0x2000
} soc_phy_longreach_t;

#endif
