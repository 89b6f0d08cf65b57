/// Frames on the MDIO buses, to the registers of whichever PHY answers.
#include "phy_registers.h"
#include "phy_unit.h"
#include "sim.h"

#include <soc/phy_access.h>

using namespace sim;

namespace {

constexpr int device_shift = 16;
constexpr int all_lanes = -1;

/// body(PhyUnit &, MdioBus &); SOC_E_PARAM if there is no such bus.
template <class Body>
int on_bus(int unit, int bus, Pointers pointers, Body body)
{
    return on_phy_unit(unit, pointers, [&](PhyUnit &phys) {
        const bool is_bus = bus >= 0 && static_cast<std::size_t>(bus) < mdio_buses;
        return is_bus ? static_cast<int>(body(phys, phys.buses[static_cast<std::size_t>(bus)]))
                      : static_cast<int>(SOC_E_PARAM);
    });
}

/// The same on a bus that is enabled; SOC_E_DISABLED.
template <class Body>
int on_enabled_bus(int unit, int bus, Pointers pointers, Body body)
{
    return on_bus(unit, bus, pointers, [&](PhyUnit &phys, MdioBus &own) {
        return own.enabled ? static_cast<int>(body(phys, own)) : static_cast<int>(SOC_E_DISABLED);
    });
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

/// body(PhyPort &, Phy &, const RegisterAddress &) at the register: flags and addr as decode() takes them.
template <class Body>
int exchange(int unit, int bus, uint8 address, uint32 flags, uint32 addr, uint32 soc_mdio_stat_t::*kind,
             Pointers pointers, Body body)
{
    RegisterAddress place;
    if (address > SOC_MDIO_ADDRESS_MAX || !decode(flags, addr, &place)) {
        return on_bus(unit, bus, pointers, [](PhyUnit &, MdioBus &) { return SOC_E_PARAM; });
    }
    return on_enabled_bus(unit, bus, pointers, [&](PhyUnit &phys, MdioBus &own) {
        const PhyPlace found = answering(phys, bus, address);
        count(own, kind, found);
        if (found.phy == nullptr) {
            return SOC_E_TIMEOUT;
        }
        body(*found.port, *found.phy, place);
        tell_changes(unit, *found.port);
        return SOC_E_NONE;
    });
}

int read(int unit, int bus, uint8 address, uint32 flags, uint32 addr, uint16 *data)
{
    return exchange(unit, bus, address, flags, addr, &soc_mdio_stat_t::reads, {data},
                    [&](PhyPort &port, Phy &phy, const RegisterAddress &place) {
                        *data = read_register(port, phy, all_lanes, place);
                    });
}

int write(int unit, int bus, uint8 address, uint32 flags, uint32 addr, uint16 data)
{
    return exchange(unit, bus, address, flags, addr, &soc_mdio_stat_t::writes, {},
                    [&](PhyPort &port, Phy &phy, const RegisterAddress &place) {
                        write_register(port, phy, all_lanes, place, data);
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
    return on_phy_unit(unit, {count}, [&](PhyUnit &) {
        *count = static_cast<int>(mdio_buses);
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_bus_reset(int unit, int bus)
{
    return on_bus(unit, bus, {}, [](PhyUnit &, MdioBus &own) {
        own = MdioBus();
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_bus_enable_set(int unit, int bus, int enable)
{
    return on_bus(unit, bus, {}, [&](PhyUnit &, MdioBus &own) {
        own.enabled = enable != 0;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_bus_enable_get(int unit, int bus, int *enable)
{
    return on_bus(unit, bus, {enable}, [&](PhyUnit &, MdioBus &own) {
        *enable = own.enabled;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_clock_set(int unit, int bus, int khz)
{
    return on_bus(unit, bus, {}, [&](PhyUnit &, MdioBus &own) {
        if (khz < 1 || khz > SOC_MDIO_CLOCK_MAX) {
            return SOC_E_PARAM;
        }
        own.khz = khz;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_clock_get(int unit, int bus, int *khz)
{
    return on_bus(unit, bus, {khz}, [&](PhyUnit &, MdioBus &own) {
        *khz = own.khz;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_probe(int unit, int bus, uint32 *present)
{
    return on_enabled_bus(unit, bus, {present}, [&](PhyUnit &phys, MdioBus &own) {
        uint32 answers = 0;
        for (int address = 0; address <= SOC_MDIO_ADDRESS_MAX; ++address) {
            const PhyPlace found = answering(phys, bus, address);
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
    return on_bus(unit, bus, {stat}, [&](PhyUnit &, MdioBus &own) {
        *stat = own.frames;
        return SOC_E_NONE;
    });
}

int sim_soc_mdio_stat_clear(int unit, int bus)
{
    return on_bus(unit, bus, {}, [](PhyUnit &, MdioBus &own) {
        own.frames = {};
        return SOC_E_NONE;
    });
}

}  // extern "C"
