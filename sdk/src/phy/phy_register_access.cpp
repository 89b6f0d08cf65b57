/// Registers of PHYs, and those that the ports of a PHY chip share.
#include "begin.h"
#include "phy.h"
#include "phy_registers.h"
#include "sim_phyctrl.h"

#include <soc/phy_access.h>

using namespace sim;

namespace {

constexpr uint32 known_flags = SOC_PHY_INTERNAL | SOC_PHY_CLAUSE45 | SOC_PHY_NOMAP;
constexpr uint32 register_max = 0xffff;
constexpr int all_lanes = -1;

/// The PHY at an address on the management bus, and its port: SOC_E_NOT_FOUND, SOC_E_INIT.
auto phy_on_bus(int address)
{
    return [address](Switch &sw, auto next) -> int {
        PhyUnit &phys = phys_of(sw);
        const PhyPlace found = phy_at(phys, static_cast<unsigned>(address));
        if (!phys.has_tables || found.phy == nullptr) {
            return SOC_E_NOT_FOUND;
        }
        if (!is_ready(phys, *found.port)) {
            return SOC_E_INIT;
        }
        const int rc = next(*found.port, *found.phy);
        tell_changes(sw.unit, *found.port);
        return rc;
    };
}

/// Where a register is, by the port or by the address of its PHY; also SOC_E_PARAM.
auto phy_register(soc_port_t port, int lane, uint32 flags, uint32 addr)
{
    return [=](Switch &sw, auto next) -> int {
        const auto at = [&](PhyPort &own, Phy &phy) -> int {
            RegisterAddress address;
            const bool is_lane = lane >= all_lanes && lane < phy.kind.lanes;
            if (!is_lane || flags & ~known_flags || !decode(flags, addr, &address)) {
                return SOC_E_PARAM;
            }
            return next(own, phy, address);
        };
        if (flags & SOC_PHY_NOMAP) {
            return phy_on_bus(port)(sw, at);
        }
        return ready_phy(port)(
            sw, [&](PhyPort &own) { return at(own, flags & SOC_PHY_INTERNAL ? *own.serdes : own.outer()); });
    };
}

int read(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr, uint32 *data)
{
    return begin(unit, chip_runs, given(data), phy_register(port, lane, flags, addr))
        .then([&](PhyPort &own, Phy &phy, RegisterAddress address) {
            *data = read_register(own, phy, lane, address);
            return SOC_E_NONE;
        });
}

int write(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr, uint32 data)
{
    return begin(unit, chip_runs, phy_register(port, lane, flags, addr))
        .then([&](PhyPort &own, Phy &phy, RegisterAddress address) {
            if (data > register_max) {
                return SOC_E_PARAM;
            }
            write_register(own, phy, lane, address, static_cast<uint16>(data));
            return SOC_E_NONE;
        });
}

/// Of a function that takes one lane only.
constexpr int no_lane = -2;

int one_lane(int lane)
{
    return lane < 0 ? no_lane : lane;
}

/// A register that the port's PHY chip has once: SOC_E_INIT; SOC_E_PARAM: not the chip's first port.
auto shared_register(soc_port_t port, soc_port_t primary_port, uint8 reg_offset)
{
    return [=](Switch &sw, auto next) -> int {
        return phy_port(port)(sw, [&](PhyUnit &phys, PhyPort &own) -> int {
            if (!phys.has_common) {
                return SOC_E_INIT;
            }
            if (primary_port != phys.tables.of(own.number).chip_info.primary) {
                return SOC_E_PARAM;
            }
            return next(phys.shared_registers[primary_port][reg_offset]);
        });
    };
}

}  // namespace

extern "C" {

int sim_soc_phyctrl_reg_read(int unit, soc_port_t port, uint32 flags, uint32 addr, uint32 *data)
{
    return read(unit, port, all_lanes, flags, addr, data);
}

int sim_soc_phyctrl_reg_write(int unit, soc_port_t port, uint32 flags, uint32 addr, uint32 data)
{
    return write(unit, port, all_lanes, flags, addr, data);
}

int sim_soc_phyctrl_reg_modify(int unit, soc_port_t port, uint32 flags, uint32 addr, uint32 data, uint32 mask)
{
    return begin(unit, chip_runs, phy_register(port, all_lanes, flags, addr))
        .then([&](PhyPort &own, Phy &phy, RegisterAddress address) {
            if (data > register_max || mask > register_max) {
                return SOC_E_PARAM;
            }
            const uint32 before = read_register(own, phy, all_lanes, address);
            const uint32 after = (before & ~mask) | (data & mask);
            write_register(own, phy, all_lanes, address, static_cast<uint16>(after));
            return SOC_E_NONE;
        });
}

int sim_soc_phyctrl_lane_reg_read(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr,
                                  uint32 *data)
{
    return read(unit, port, one_lane(lane), flags, addr, data);
}

int sim_soc_phyctrl_lane_reg_write(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr,
                                   uint32 data)
{
    return write(unit, port, one_lane(lane), flags, addr, data);
}

int sim_soc_phyctrl_toplvl_reg_read(int unit, soc_port_t port, soc_port_t primary_port, uint8 reg_offset,
                                    uint16 *data)
{
    return begin(unit, chip_runs, given(data), shared_register(port, primary_port, reg_offset))
        .then([&](uint16 &kept) {
            *data = kept;
            return SOC_E_NONE;
        });
}

int sim_soc_phyctrl_toplvl_reg_write(int unit, soc_port_t port, soc_port_t primary_port, uint8 reg_offset,
                                     uint16 data)
{
    return begin(unit, chip_runs, shared_register(port, primary_port, reg_offset)).then([&](uint16 &kept) {
        kept = data;
        return SOC_E_NONE;
    });
}

}  // extern "C"
