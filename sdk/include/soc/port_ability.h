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

#define SOC_PHY_LONGREACH_5MB 0x0001
#define SOC_PHY_LONGREACH_10MB 0x0002
#define SOC_PHY_LONGREACH_20MB 0x0004
#define SOC_PHY_LONGREACH_25MB 0x0008
#define SOC_PHY_LONGREACH_33MB 0x0010
#define SOC_PHY_LONGREACH_50MB 0x0020
#define SOC_PHY_LONGREACH_100MB 0x0040
#define SOC_PHY_LONGREACH_PAIR1 0x0100
#define SOC_PHY_LONGREACH_PAIR2 0x0200
#define SOC_PHY_LONGREACH_PAIR4 0x0400
#define SOC_PHY_LONGREACH_PAUSE 0x1000
#define SOC_PHY_LONGREACH_PAUSE_ASYM 0x2000

#endif
