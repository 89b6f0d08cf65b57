/// What the kinds of PHY can do, as data.
#pragma once

#include "destination.h"

#include <shared/port.h>
#include <soc/phy.h>
#include <soc/port_ability.h>

#include <cstddef>

namespace sim {

/// A speed in Mbit/s with its bits in port modes and in the standard control register. Some have no mode:
/// they can only be forced.
struct Rate {
    int speed;
    soc_port_mode_t half_duplex, full_duplex;
    uint16 selection;
};

constexpr int rate_count = 9;
extern const Rate rates[rate_count];  ///< slowest first

/// Null for a speed that there is not.
const Rate *rate_of(int speed);

constexpr soc_port_mode_t pause_modes = _SHR_PM_PAUSE_TX | _SHR_PM_PAUSE_RX;

/// What a PHY can do over one medium.
struct MediumAbility {
    soc_port_medium_t medium;
    int speed_min, speed_max;
    int half_duplex_max;  ///< fastest speed in half duplex, 0 for none
    bool autonegotiation_at_reset;
};

struct PhyKind {
    bool clause45;
    int lanes, lane_speed;
    MediumAbility media[2];  ///< the preferred one first
    uint32 interfaces;       ///< bit n for _shr_port_if_t n
    soc_port_if_t interface_at_reset;
    std::size_t firmware_max;  ///< bytes of program memory
    sal_usecs_t autonegotiation_time;

    /// Null for a medium that the PHY has not.
    const MediumAbility *over(soc_port_medium_t medium) const;
};

/// Whether the PHY can be forced to it over that medium.
bool can_do(const MediumAbility &medium, int speed, bool full_duplex);

/// Modes up to a speed, pause included.
soc_port_mode_t modes_of(const MediumAbility &medium, int speed_max);

/// Whether an interface between MAC and PHY is fast enough.
bool carries(soc_port_if_t interface, int speed);

extern const PhyKind serdes_kind, copper_kind;

/// Each front port has a SerDes in the chip; these have a copper PHY behind it.
constexpr int first_copper_port = 33;
constexpr int last_copper_port = 48;

constexpr bool has_serdes(int port)
{
    return port > cpu_port && port <= port_max;
}

constexpr bool has_copper_phy(int port)
{
    return port >= first_copper_port && port <= last_copper_port;
}

}  // namespace sim
