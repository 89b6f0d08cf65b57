/// A unit's PHY tables, to which the SDK's variables point: what is known of each port's PHY, and which port
/// has an address on the management bus.
#pragma once

#include "destination.h"
#include "phy_kind.h"

#include <soc/phy.h>

#include <array>
#include <utility>

namespace sim {

constexpr std::size_t phy_addresses = 256;
constexpr uint16 no_phy_address = 0xff;
constexpr int ports_per_phy_chip = 4;
constexpr int phy_chip_offsets = 8;

struct PhyTables {
    std::array<soc_phy_info_t, port_max + 1> infos;
    std::array<soc_port_t, phy_addresses> by_address;

    /// The port's entry; the port has to be one of the unit.
    soc_phy_info_t &of(int port) { return infos[static_cast<std::size_t>(port)]; }

    /// The port at an address; -1 for none.
    int port_at(unsigned int address) const;
};

/// What a kind of PHY has in its two identifier registers.
std::pair<uint16, uint16> identifier_of(const PhyKind &kind);

/// The name of the port's driver, which stays the SDK's; null without a PHY.
char *phy_name(int port);

/// The tables as they are when made.
void remake(PhyTables &tables);

/// Brings the ports by address and by offset in their chip in line with the entries.
void reindex(PhyTables &tables);

/// Shows a unit's tables in the SDK's variables; null hides them.
void publish(int unit, PhyTables *tables);

/// Those of unit 0, which are there before any code of the SDK has run.
extern PhyTables first_phy_tables;

}  // namespace sim
