#include "begin.h"
#include "phy_controls.h"

#include "phy.h"
#include "sim_phyctrl.h"

using namespace sim;

namespace {

/// Refused, but only after the unit and the port.
constexpr int no_lane = -2;

bool in_range(const Setting &setting, uint32 value)
{
    const long long number =
        setting.least < 0 ? static_cast<long long>(static_cast<int32>(value)) : static_cast<long long>(value);
    return number >= setting.least && number <= setting.most;
}

void keep(const ControlPlace &place, const Setting &setting, uint32 value)
{
    const bool single = setting.per_lane && place.lane >= 0;
    const int last = setting.per_lane ? place.phy.kind.lanes - 1 : 0;
    for (int lane = single ? place.lane : 0; lane <= (single ? place.lane : last); ++lane) {
        place.side.controls[{lane, setting.selector}] = value;
    }
}

bool is_selector(int selector)
{
    return selector >= 0 && selector < SOC_PHY_CONTROL_COUNT;
}

int any_set(int unit, soc_port_t port, int lane, soc_phy_control_t ctrl_type, uint32 value)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        return set_control({own, own.outer(), own.outer().line, lane}, ctrl_type, value);
    });
}

int any_get(int unit, soc_port_t port, int lane, soc_phy_control_t ctrl_type, uint32 *value)
{
    return begin(unit, chip_runs, given(value), ready_phy(port)).then([&](PhyPort &own) {
        return get_control({own, own.outer(), own.outer().line, lane}, ctrl_type, value);
    });
}

}  // namespace

namespace sim {

int set_control(const ControlPlace &place, int selector, uint32 value)
{
    if (!place.is_lane() || !is_selector(selector)) {
        return SOC_E_PARAM;
    }
    const unsigned kind = kind_bit(place.phy);
    if (const Setting *setting = setting_of(selector)) {
        if (!(setting->kinds & kind)) {
            return SOC_E_UNAVAIL;
        }
        if (!in_range(*setting, value)) {
            return SOC_E_PARAM;
        }
        keep(place, *setting, value);
        return SOC_E_NONE;
    }
    const StateControl *control = state_control_of(selector);
    const bool can = control != nullptr && control->kinds & kind && control->write != nullptr;
    return can ? control->write(place, value) : static_cast<int>(SOC_E_UNAVAIL);
}

int get_control(const ControlPlace &place, int selector, uint32 *value)
{
    if (!place.is_lane() || !is_selector(selector)) {
        return SOC_E_PARAM;
    }
    const unsigned kind = kind_bit(place.phy);
    if (const Setting *setting = setting_of(selector)) {
        if (!(setting->kinds & kind)) {
            return SOC_E_UNAVAIL;
        }
        *value = setting_value(place.phy, place.side, place.first_lane(), selector);
        return SOC_E_NONE;
    }
    const StateControl *control = state_control_of(selector);
    if (control == nullptr || !(control->kinds & kind) || control->read == nullptr) {
        return SOC_E_UNAVAIL;
    }
    *value = control->read(place);
    return SOC_E_NONE;
}

}  // namespace sim

extern "C" {

int sim_soc_phyctrl_control_set(int unit, soc_port_t port, soc_phy_control_t ctrl_type, uint32 value)
{
    return any_set(unit, port, -1, ctrl_type, value);
}

int sim_soc_phyctrl_control_get(int unit, soc_port_t port, soc_phy_control_t ctrl_type, uint32 *value)
{
    return any_get(unit, port, -1, ctrl_type, value);
}

int sim_soc_phyctrl_lane_control_set(int unit, soc_port_t port, int lane, soc_phy_control_t ctrl_type,
                                     uint32 value)
{
    return any_set(unit, port, lane < 0 ? no_lane : lane, ctrl_type, value);
}

int sim_soc_phyctrl_lane_control_get(int unit, soc_port_t port, int lane, soc_phy_control_t ctrl_type,
                                     uint32 *value)
{
    return any_get(unit, port, lane < 0 ? no_lane : lane, ctrl_type, value);
}

}  // extern "C"
