/// Frames on the MDIO buses, to the registers of whichever PHY answers.
#include "begin.h"
#include "mdio.h"
#include "phy.h"
#include "phy_registers.h"
#include "sim_mdio_bus.h"

#include <soc/phy_access.h>

using namespace sim;

namespace {

constexpr int device_shift = 16;
constexpr int all_lanes = -1;

/// A bus of the unit: SOC_E_PARAM.
auto mdio_bus(int bus)
{
    return [bus](Switch &sw, auto next) -> int {
        const bool is_bus = bus >= 0 && static_cast<std::size_t>(bus) < mdio_buses;
        return is_bus ? next(buses_of(sw)[static_cast<std::size_t>(bus)]) : static_cast<int>(SOC_E_PARAM);
    };
}

/// One that is enabled: SOC_E_DISABLED.
auto enabled_bus(int bus)
{
    return [bus](Switch &sw, auto next) -> int {
        return mdio_bus(bus)(sw, [&](MdioBus &own) -> int {
            return own.enabled ? next(own) : static_cast<int>(SOC_E_DISABLED);
        });
    };
}

PhyPlace answering(PhyUnit &phys, int bus, int address)
{
    return phy_at(phys, static_cast<unsigned>(bus * addresses_per_bus + address));
}

/// Counts a frame, and again if there is nobody to answer it.
void count(MdioBus &bus, uint32 soc_mdio_stat_t::*kind, const PhyPlace &place)
{
    ++(bus.frames.*kind);
    bus.frames.errors += place.phy == nullptr;
}

/// Where a frame goes, counted: flags and addr as decode() takes them. SOC_E_PARAM, SOC_E_DISABLED,
/// SOC_E_TIMEOUT.
auto register_on(int bus, uint8 address, uint32 flags, uint32 addr, uint32 soc_mdio_stat_t::*kind)
{
    return [=](Switch &sw, auto next) -> int {
        return mdio_bus(bus)(sw, [&](MdioBus &own) -> int {
            RegisterAddress place;
            if (address > SOC_MDIO_ADDRESS_MAX || !decode(flags, addr, &place)) {
                return SOC_E_PARAM;
            }
            if (!own.enabled) {
                return SOC_E_DISABLED;
            }
            const PhyPlace found = answering(phys_of(sw), bus, address);
            count(own, kind, found);
            if (found.phy == nullptr) {
                return SOC_E_TIMEOUT;
            }
            const int rc = next(*found.port, *found.phy, place);
            tell_changes(sw.unit, *found.port);
            return rc;
        });
    };
}

int read(int unit, int bus, uint8 address, uint32 flags, uint32 addr, uint16 *data)
{
    return begin(unit, chip_runs, given(data),
                 register_on(bus, address, flags, addr, &soc_mdio_stat_t::reads))
        .then([&](PhyPort &port, Phy &phy, const RegisterAddress &place) {
            *data = read_register(port, phy, all_lanes, place);
            return SOC_E_NONE;
        });
}

int write(int unit, int bus, uint8 address, uint32 flags, uint32 addr, uint16 data)
{
    return begin(unit, chip_runs, register_on(bus, address, flags, addr, &soc_mdio_stat_t::writes))
        .then([&](PhyPort &port, Phy &phy, const RegisterAddress &place) {
            write_register(port, phy, all_lanes, place, data);
            return SOC_E_NONE;
        });
}

uint32 clause45_address(uint8 device, uint16 reg)
{
    return static_cast<uint32>(device) << device_shift | reg;
}

}  // namespace

extern "C" {

int sim_soc_mdio_bus_count_get(int unit, int *count)
{
    return begin(unit, chip_runs, given(count), phy_unit).then([&](PhyUnit &) {
        *count = static_cast<int>(mdio_buses);
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_bus_reset(int unit, int bus)
{
    return begin(unit, chip_runs, mdio_bus(bus)).then([](MdioBus &own) {
        own = MdioBus();
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_bus_enable_set(int unit, int bus, int enable)
{
    return begin(unit, chip_runs, mdio_bus(bus)).then([&](MdioBus &own) {
        own.enabled = enable != 0;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_bus_enable_get(int unit, int bus, int *enable)
{
    return begin(unit, chip_runs, given(enable), mdio_bus(bus)).then([&](MdioBus &own) {
        *enable = own.enabled;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_clock_set(int unit, int bus, int khz)
{
    return begin(unit, chip_runs, mdio_bus(bus)).then([&](MdioBus &own) {
        if (khz < 1 || khz > SOC_MDIO_CLOCK_MAX) {
            return SOC_E_PARAM;
        }
        own.khz = khz;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_clock_get(int unit, int bus, int *khz)
{
    return begin(unit, chip_runs, given(khz), mdio_bus(bus)).then([&](MdioBus &own) {
        *khz = own.khz;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_probe(int unit, int bus, uint32 *present)
{
    return begin(unit, chip_runs, given(present), enabled_bus(bus)).then([&](Switch &sw, MdioBus &own) {
        uint32 answers = 0;
        for (int address = 0; address <= SOC_MDIO_ADDRESS_MAX; ++address) {
            const PhyPlace found = answering(phys_of(sw), bus, address);
            count(own, &soc_mdio_stat_t::reads, found);
            answers |= found.phy != nullptr ? 1u << address : 0;
        }
        *present = answers;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_read(int unit, int bus, uint8 address, uint8 reg, uint16 *data)
{
    return read(unit, bus, address, 0, reg, data);
}

int sim_soc_mdio_write(int unit, int bus, uint8 address, uint8 reg, uint16 data)
{
    return write(unit, bus, address, 0, reg, data);
}

int sim_soc_mdio_c45_read(int unit, int bus, uint8 address, uint8 device, uint16 reg, uint16 *data)
{
    return read(unit, bus, address, SOC_PHY_CLAUSE45, clause45_address(device, reg), data);
}

int sim_soc_mdio_c45_write(int unit, int bus, uint8 address, uint8 device, uint16 reg, uint16 data)
{
    return write(unit, bus, address, SOC_PHY_CLAUSE45, clause45_address(device, reg), data);
}

void sim_soc_mdio_stat_t_init(soc_mdio_stat_t *stat)
{
    if (stat != nullptr) {
        *stat = {};
    }
}

int sim_soc_mdio_stat_get(int unit, int bus, soc_mdio_stat_t *stat)
{
    return begin(unit, chip_runs, given(stat), mdio_bus(bus)).then([&](MdioBus &own) {
        *stat = own.frames;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_stat_clear(int unit, int bus)
{
    return begin(unit, chip_runs, mdio_bus(bus)).then([](MdioBus &own) {
        own.frames = {};
        return SOC_E_NONE;
    });
}

}  // extern "C"
