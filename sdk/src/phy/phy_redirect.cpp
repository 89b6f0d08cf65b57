/// One PHY of the port's chain and one side of it.
#include "begin.h"
#include "phy.h"
#include "phy_controls.h"
#include "phy_settings.h"
#include "sim_phyctrl.h"

using namespace sim;

namespace {

/// What the caller means: SOC_E_PARAM if the port has no such PHY, lane or side.
auto redirected(soc_port_t port, int phyn, int phy_lane, int sys_side)
{
    return [=](Switch &sw, auto next) -> int {
        return ready_phy(port)(sw, [&](PhyPort &own) -> int {
            const int last = own.copper ? 1 : 0;
            if (phyn < 0 || phyn > last || (sys_side != 0 && sys_side != 1)) {
                return SOC_E_PARAM;
            }
            Phy &phy = phyn == 0 ? *own.serdes : *own.copper;
            const ControlPlace place = {own, phy, phy.side(sys_side), phy_lane};
            return place.is_lane() ? next(place) : static_cast<int>(SOC_E_PARAM);
        });
    };
}

bool is_system_side(const ControlPlace &place)
{
    return &place.side == &place.phy.system;
}

/// Towards the MAC, only a PHY outside the chip has something to negotiate with.
bool negotiates(const ControlPlace &place)
{
    return !is_system_side(place) || place.port.copper;
}

}  // namespace

extern "C" {

int sim_soc_phyctrl_redirect_auto_negotiate_set(int unit, soc_port_t port, int phyn, int phy_lane,
                                                int sys_side, int an)
{
    return begin(unit, chip_runs, redirected(port, phyn, phy_lane, sys_side))
        .then([&](const ControlPlace &place) {
            if (an != 0 && an != 1) {
                return static_cast<int>(SOC_E_PARAM);
            }
            if (!negotiates(place)) {
                return static_cast<int>(SOC_E_UNAVAIL);
            }
            if (!is_system_side(place)) {
                return set_autonegotiation(place.port, place.phy, an);
            }
            place.side.autonegotiation = an != 0;
            return static_cast<int>(SOC_E_NONE);
        });
}

int sim_soc_phyctrl_redirect_auto_negotiate_get(int unit, soc_port_t port, int phyn, int phy_lane,
                                                int sys_side, int *an, int *an_done)
{
    return begin(unit, chip_runs, given(an, an_done), redirected(port, phyn, phy_lane, sys_side))
        .then([&](const ControlPlace &place) {
            if (!negotiates(place)) {
                return SOC_E_UNAVAIL;
            }
            if (is_system_side(place)) {
                *an = place.side.autonegotiation;
                *an_done = place.side.autonegotiation && joins(place.port);
            } else {
                *an = place.phy.settings(place.port.cable).autoneg_enable;
                *an_done = has_negotiated(place.port, place.phy);
            }
            return SOC_E_NONE;
        });
}

int sim_soc_phyctrl_redirect_control_set(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                         soc_phy_control_t ctrl_type, uint32 value)
{
    return begin(unit, chip_runs, redirected(port, phyn, phy_lane, sys_side))
        .then([&](const ControlPlace &place) { return set_control(place, ctrl_type, value); });
}

int sim_soc_phyctrl_redirect_control_get(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                         soc_phy_control_t ctrl_type, uint32 *value)
{
    return begin(unit, chip_runs, given(value), redirected(port, phyn, phy_lane, sys_side))
        .then([&](const ControlPlace &place) { return get_control(place, ctrl_type, value); });
}

int sim_soc_phyctrl_redirect_loopback_set(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                          int enable, int serdes_linkup_wait)
{
    return begin(unit, chip_runs, redirected(port, phyn, phy_lane, sys_side))
        .then([&](const ControlPlace &place) {
            place.side.loopback = enable != 0;
            const bool in_vain = enable != 0 && serdes_linkup_wait != 0 && !link_of(place.port).up();
            return in_vain ? SOC_E_TIMEOUT : SOC_E_NONE;
        });
}

int sim_soc_phyctrl_redirect_loopback_get(int unit, soc_port_t port, int phyn, int phy_lane, int sys_side,
                                          int *enable)
{
    return begin(unit, chip_runs, given(enable), redirected(port, phyn, phy_lane, sys_side))
        .then([&](const ControlPlace &place) {
            *enable = place.side.loopback;
            return SOC_E_NONE;
        });
}

}  // extern "C"
