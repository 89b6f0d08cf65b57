/// Registers of PHYs, and those that the ports of a PHY chip share.
#include "phy_registers.h"
#include "phy_unit.h"
#include "sim.h"

#include <soc/phy_access.h>

using namespace sim;

namespace {

constexpr uint32 known_flags = SOC_PHY_INTERNAL | SOC_PHY_CLAUSE45 | SOC_PHY_NOMAP;
constexpr uint32 register_max = 0xffff;
constexpr int all_lanes = -1;

/// body(PhyPort &, Phy &) of the PHY at an address on the management bus; SOC_E_NOT_FOUND if none is there.
template <class Body>
int on_bus_address(int unit, int address, Pointers pointers, Body body)
{
    return on_phy_unit(unit, pointers, [&](PhyUnit &phys) {
        const PhyPlace found = phy_at(phys, static_cast<unsigned>(address));
        if (!phys.has_tables || found.phy == nullptr) {
            return static_cast<int>(SOC_E_NOT_FOUND);
        }
        if (!is_ready(phys, *found.port)) {
            return static_cast<int>(SOC_E_INIT);
        }
        const int rc = body(*found.port, *found.phy);
        tell_changes(unit, *found.port);
        return rc;
    });
}

/// body(PhyPort &, Phy &, RegisterAddress) where the register is. SOC_E_PARAM.
template <class Body>
int on_register(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr, Pointers pointers, Body body)
{
    const auto access = [&](PhyPort &own, Phy &phy) {
        RegisterAddress address;
        const bool is_lane = lane >= all_lanes && lane < phy.kind.lanes;
        if (!is_lane || flags & ~known_flags || !decode(flags, addr, &address)) {
            return static_cast<int>(SOC_E_PARAM);
        }
        return static_cast<int>(body(own, phy, address));
    };
    if (flags & SOC_PHY_NOMAP) {
        return on_bus_address(unit, port, pointers, access);
    }
    return on_phy(unit, port, pointers, [&](PhyPort &own) {
        return access(own, flags & SOC_PHY_INTERNAL ? *own.serdes : own.outer());
    });
}

int read(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr, uint32 *data)
{
    return on_register(unit, port, lane, flags, addr, {data},
                       [&](PhyPort &own, Phy &phy, RegisterAddress address) {
                           *data = read_register(own, phy, lane, address);
                           return SOC_E_NONE;
                       });
}

int write(int unit, soc_port_t port, int lane, uint32 flags, uint32 addr, uint32 data)
{
    return on_register(unit, port, lane, flags, addr, {},
                       [&](PhyPort &own, Phy &phy, RegisterAddress address) {
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

/// body(uint16 &) of a register that the port's PHY chip has once. SOC_E_PARAM: not the chip's first port.
template <class Body>
int on_shared_register(int unit, soc_port_t port, soc_port_t primary_port, uint8 reg_offset,
                       Pointers pointers, Body body)
{
    return on_phy_port(unit, port, pointers, [&](PhyUnit &phys, PhyPort &own) {
        if (!phys.has_common) {
            return SOC_E_INIT;
        }
        if (primary_port != phys.tables.of(own.number).chip_info.primary) {
            return SOC_E_PARAM;
        }
        body(phys.shared_registers[primary_port][reg_offset]);
        return SOC_E_NONE;
    });
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
    return on_register(unit, port, all_lanes, flags, addr, {},
                       [&](PhyPort &own, Phy &phy, RegisterAddress address) {
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
    return on_shared_register(unit, port, primary_port, reg_offset, {data},
                              [&](uint16 &kept) { *data = kept; });
}

int sim_soc_phyctrl_toplvl_reg_write(int unit, soc_port_t port, soc_port_t primary_port, uint8 reg_offset,
                                     uint16 data)
{
    return on_shared_register(unit, port, primary_port, reg_offset, {}, [&](uint16 &kept) { kept = data; });
}

}  // extern "C"
