/// The room of the MDIO buses: their state. Who is on them, the PHY tables say.
#pragma once

#include "phy_tables.h"
#include "switch.h"

#include <soc/mdio.h>

#include <array>

namespace sim {

constexpr int addresses_per_bus = SOC_MDIO_ADDRESS_MAX + 1;
constexpr std::size_t mdio_buses = phy_addresses / addresses_per_bus;

struct MdioBus {
    bool enabled = true;
    int khz = SOC_MDIO_CLOCK_DEFAULT;
    soc_mdio_stat_t frames = {};
};

using MdioBuses = std::array<MdioBus, mdio_buses>;

struct MdioState : RoomState {
    static constexpr Room room = Room::mdio;

    MdioBuses buses;
};

inline MdioBuses &buses_of(Switch &sw)
{
    return sw.of<MdioState>().buses;
}

}  // namespace sim
