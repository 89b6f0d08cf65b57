#include "phy_tables.h"

#include <soc/phy_values.h>

namespace sim {

namespace {

// Not const, as the SDK hands names out.
char serdes_name[] = "SerDes 4x25G";
char copper_name[] = "10GBASE-T quad";

constexpr uint16 identifier_0 = 0x51d0;
constexpr uint16 serdes_identifier_1 = 0x2540;
constexpr uint16 copper_identifier_1 = 0x1040;

constexpr uint16 internal_buses = 0x80;
constexpr uint16 first_copper_address = 1;
constexpr sal_usecs_t serdes_autonegotiation = 500000;
constexpr sal_usecs_t copper_autonegotiation = 2000000;

constexpr soc_phy_info_t info_of(int port)
{
    soc_phy_info_t info = {};
    info.phy_addr = info.phy_addr_int = no_phy_address;
    info.chip_info.primary = port;
    if (has_serdes(port)) {
        const bool copper = has_copper_phy(port);
        info.phy_id0 = identifier_0;
        info.phy_id1 = copper ? copper_identifier_1 : serdes_identifier_1;
        info.phy_addr_int = static_cast<uint16>(internal_buses + port - 1);
        info.phy_name = copper ? copper_name : serdes_name;
        info.an_timeout = copper ? copper_autonegotiation : serdes_autonegotiation;
        if (copper) {
            info.phy_addr = static_cast<uint16>(first_copper_address + port - first_copper_port);
        }
        info.phy_flags = SOC_PHY_INFO_FIBER | SOC_PHY_INFO_SHARED;
        if (copper) {
            info.phy_flags |= SOC_PHY_INFO_CLAUSE45 | SOC_PHY_INFO_EXTERNAL | SOC_PHY_INFO_COPPER;
        }
        info.chip_info.offset = (port - 1) % ports_per_phy_chip;
        info.chip_info.primary = port - info.chip_info.offset;
    }
    return info;
}

constexpr void index(PhyTables &tables)
{
    for (soc_port_t &port : tables.by_address) {
        port = -1;
    }
    // From the last port on, so that the lowest one stays where several claim a place.
    for (int port = port_max; port >= 0; --port) {
        const soc_phy_info_t &info = tables.infos[static_cast<std::size_t>(port)];
        for (const uint16 address : {info.phy_addr_int, info.phy_addr}) {
            if (address < no_phy_address) {
                tables.by_address[address] = port;
            }
        }
    }
    for (soc_phy_info_t &info : tables.infos) {
        for (int &port : info.chip_info.offset_to_port) {
            port = -1;
        }
        for (int port = port_max; port >= 0; --port) {
            const soc_phy_chip_info_t &other = tables.infos[static_cast<std::size_t>(port)].chip_info;
            if (other.primary == info.chip_info.primary && other.offset >= 0
                && other.offset < phy_chip_offsets) {
                info.chip_info.offset_to_port[other.offset] = port;
            }
        }
    }
}

constexpr PhyTables made()
{
    PhyTables tables = {};
    for (int port = 0; port <= port_max; ++port) {
        tables.infos[static_cast<std::size_t>(port)] = info_of(port);
    }
    index(tables);
    return tables;
}

}  // namespace

// Not made by code at start-up: other libraries' may look at it.
PhyTables first_phy_tables = made();

int PhyTables::port_at(unsigned int address) const
{
    return address < phy_addresses ? by_address[address] : -1;
}

std::pair<uint16, uint16> identifier_of(const PhyKind &kind)
{
    return {identifier_0, &kind == &copper_kind ? copper_identifier_1 : serdes_identifier_1};
}

char *phy_name(int port)
{
    return info_of(port).phy_name;
}

void remake(PhyTables &tables)
{
    tables = made();
}

void reindex(PhyTables &tables)
{
    index(tables);
}

void publish(int unit, PhyTables *tables)
{
    phy_port_info[unit] = tables == nullptr ? nullptr : tables->infos.data();
    phy_rmap[unit] = tables == nullptr ? nullptr : tables->by_address.data();
}

}  // namespace sim

[[gnu::visibility("default")]] soc_phy_info_t *phy_port_info[SOC_MAX_NUM_DEVICES] = {
    sim::first_phy_tables.infos.data()};
[[gnu::visibility("default")]] soc_port_t *phy_rmap[SOC_MAX_NUM_DEVICES] = {
    sim::first_phy_tables.by_address.data()};
[[gnu::visibility("default")]] int (*soc_phy_cb_xlate_port_func)(int unit, int *port);
