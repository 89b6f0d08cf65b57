/// Diagnostics of one PHY, side and lane of a port: operations in classes.
#include "phy.h"
#include "phy_controls.h"
#include "phy_registers.h"
#include "sim_phyctrl.h"

#include <soc/phy_access.h>
#include <soc/phy_diag.h>
#include <soc/phy_values.h>

#include <algorithm>
#include <iterator>

using namespace sim;

namespace {

constexpr uint32 instance_part(uint32 instance, uint32 shift, uint32 mask)
{
    return instance >> shift & mask;
}

/// Null if the port has no such PHY.
Phy *phy_of(PhyPort &port, uint32 device)
{
    switch (device) {
    case PHY_DIAG_DEVICE_OUTERMOST:
        return &port.outer();
    case PHY_DIAG_DEVICE_INTERNAL:
        return &*port.serdes;
    case PHY_DIAG_DEVICE_EXTERNAL:
        return port.copper ? &*port.copper : nullptr;
    default:
        return nullptr;
    }
}

int get(const ControlPlace &place, int selector, uint32 *value)
{
    return value == nullptr ? static_cast<int>(SOC_E_PARAM) : get_control(place, selector, value);
}

int set(const ControlPlace &place, int selector, const uint32 *value)
{
    return value == nullptr ? static_cast<int>(SOC_E_PARAM) : set_control(place, selector, *value);
}

int access_register(const ControlPlace &place, bool writes, int number, uint32 *argument)
{
    constexpr uint32 register_max = 0xffff;
    RegisterAddress address;
    if (argument == nullptr || number < 0 || !decode(0, static_cast<uint32>(number), &address)
        || (writes && *argument > register_max)) {
        return SOC_E_PARAM;
    }
    if (writes) {
        write_register(place.port, place.phy, place.lane, address, static_cast<uint16>(*argument));
    } else {
        *argument = read_register(place.port, place.phy, place.lane, address);
    }
    return SOC_E_NONE;
}

int measure_receiver(const ControlPlace &place, XGPHY_DIAG_DATA_t *measured)
{
    if (measured == nullptr) {
        return SOC_E_PARAM;
    }
    constexpr int best_ratio = 40, metres_per_decibel = 10, worst_ratio = 10;
    uint32 value = 0;
    XGPHY_DIAG_DATA_t data = {};
    data.flags = XGPHY_DIAG_BLOCK_LOCK | XGPHY_DIAG_TEMPERATURE;
    data.block_lock = link_of(place.port, place.phy).up();
    get_control(place, SOC_PHY_CONTROL_TEMPERATURE, &value);
    data.digital_temp = data.analog_temp = static_cast<uint16>(value);
    if (get_control(place, SOC_PHY_CONTROL_FEC_SYMBOL_ERRORS, &data.serr) == SOC_E_NONE
        && get_control(place, SOC_PHY_CONTROL_FEC_CORRECTED_BLOCKS, &data.cerr) == SOC_E_NONE) {
        data.flags |= XGPHY_DIAG_SYMBOL_ERRORS | XGPHY_DIAG_CORRECTED_ERRORS;
    }
    if (data.block_lock) {
        data.flags |= XGPHY_DIAG_SNR;
        data.block_point_id = static_cast<uint16>(place.first_lane());
        const int ratio = std::max(worst_ratio, best_ratio - place.port.cable.metres / metres_per_decibel);
        std::fill(std::begin(data.snr_block), std::end(data.snr_block), static_cast<uint8>(ratio));
    }
    *measured = data;
    return SOC_E_NONE;
}

/// An operation of a class that numbers them, with what it needs to know.
struct Operation {
    int group, operation;
    int (*run)(const ControlPlace &place, const Operation &own, uint32 *argument);
    int selector = 0;
    uint32 value = 0;
};

int read_control(const ControlPlace &place, const Operation &own, uint32 *argument)
{
    return get(place, own.selector, argument);
}

int write_control(const ControlPlace &place, const Operation &own, uint32 *argument)
{
    return set(place, own.selector, argument);
}

int set_to_value(const ControlPlace &place, const Operation &own, uint32 *)
{
    return set_control(place, own.selector, own.value);
}

int start_prbs(const ControlPlace &place, const Operation &, uint32 *polynomial)
{
    const int rc = set(place, SOC_PHY_CONTROL_PRBS_POLYNOMIAL, polynomial);
    if (rc != SOC_E_NONE) {
        return rc;
    }
    set_control(place, SOC_PHY_CONTROL_PRBS_TX_ENABLE, 1);
    return set_control(place, SOC_PHY_CONTROL_PRBS_RX_ENABLE, 1);
}

int stop_prbs(const ControlPlace &place, const Operation &, uint32 *)
{
    set_control(place, SOC_PHY_CONTROL_PRBS_RX_ENABLE, 0);
    return set_control(place, SOC_PHY_CONTROL_PRBS_TX_ENABLE, 0);
}

int tell(bool state, uint32 *argument)
{
    if (argument == nullptr) {
        return SOC_E_PARAM;
    }
    *argument = state;
    return SOC_E_NONE;
}

int read_link(const ControlPlace &place, const Operation &, uint32 *argument)
{
    return tell(link_of(place.port, place.phy).up(), argument);
}

int read_negotiation(const ControlPlace &place, const Operation &, uint32 *argument)
{
    return tell(has_negotiated(place.port, place.phy), argument);
}

int not_there(const ControlPlace &, const Operation &, uint32 *)
{
    return SOC_E_UNAVAIL;
}

// clang-format off
constexpr Operation operations[] = {
    {PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_SIGNAL, read_control, SOC_PHY_CONTROL_RX_SIGNAL_DETECT},
    {PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_CLOCK_LOCK, read_control, SOC_PHY_CONTROL_RX_CLOCK_LOCK},
    {PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_BLOCK_LOCK, read_control, SOC_PHY_CONTROL_RX_BLOCK_LOCK},
    {PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_LINK, read_link},
    {PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_AUTONEG_DONE, read_negotiation},
    {PHY_DIAG_CTRL_LOOPBACK, PHY_DIAG_LOOPBACK_OFF, set_to_value, SOC_PHY_CONTROL_LOOPBACK_MODE,
     SOC_PHY_LOOPBACK_NONE},
    {PHY_DIAG_CTRL_LOOPBACK, PHY_DIAG_LOOPBACK_LOCAL, set_to_value, SOC_PHY_CONTROL_LOOPBACK_MODE,
     SOC_PHY_LOOPBACK_PMD},
    {PHY_DIAG_CTRL_LOOPBACK, PHY_DIAG_LOOPBACK_REMOTE, set_to_value, SOC_PHY_CONTROL_LOOPBACK_MODE,
     SOC_PHY_LOOPBACK_REMOTE},
    {PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_START, start_prbs},
    {PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_STOP, stop_prbs},
    {PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_LOCK, read_control, SOC_PHY_CONTROL_PRBS_RX_LOCK},
    {PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_ERRORS, read_control, SOC_PHY_CONTROL_PRBS_RX_STATUS},
    {PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_ERROR_INJECT, write_control, SOC_PHY_CONTROL_PRBS_ERROR_INJECT},
    {PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_START, not_there},
    {PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_STOP, not_there},
    {PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_MARGIN_LEFT, not_there},
    {PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_MARGIN_RIGHT, not_there},
    {PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_MARGIN_UPPER, not_there},
    {PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_MARGIN_LOWER, not_there},
    {PHY_DIAG_CTRL_BER, PHY_DIAG_BER_START, not_there},
    {PHY_DIAG_CTRL_BER, PHY_DIAG_BER_ERRORS, not_there},
    {PHY_DIAG_CTRL_FIRMWARE, PHY_DIAG_FIRMWARE_VERSION, read_control, SOC_PHY_CONTROL_FIRMWARE_VERSION},
    {PHY_DIAG_CTRL_FIRMWARE, PHY_DIAG_FIRMWARE_CRC, read_control, SOC_PHY_CONTROL_FIRMWARE_CRC},
};
// clang-format on

int operate(const ControlPlace &place, int group, int operation, void *argument)
{
    auto *number = static_cast<uint32 *>(argument);
    switch (group) {
    case PHY_DIAG_CTRL_REGISTER_READ:
    case PHY_DIAG_CTRL_REGISTER_WRITE:
        return access_register(place, group == PHY_DIAG_CTRL_REGISTER_WRITE, operation, number);
    case PHY_DIAG_CTRL_CONTROL_GET:
        return get(place, operation, number);
    case PHY_DIAG_CTRL_CONTROL_SET:
        return set(place, operation, number);
    case PHY_DIAG_CTRL_RECEIVER:
        return measure_receiver(place, static_cast<XGPHY_DIAG_DATA_t *>(argument));
    default:
        break;
    }
    const auto found = std::find_if(std::begin(operations), std::end(operations), [&](const Operation &one) {
        return one.group == group && one.operation == operation;
    });
    return found != std::end(operations) ? found->run(place, *found, number) : static_cast<int>(SOC_E_PARAM);
}

}  // namespace

extern "C" {

int sim_soc_phyctrl_diag_ctrl(int arg1, soc_port_t arg2, uint32 arg3, int arg4, int arg5, void *arg6)
{
    return begin(arg1, chip_runs, ready_phy(arg2)).then([&](PhyPort &own) {
        constexpr uint32 instance_bits = PHY_DIAG_LANE_MASK << PHY_DIAG_LANE_SHIFT
                                         | PHY_DIAG_SIDE_MASK << PHY_DIAG_SIDE_SHIFT
                                         | PHY_DIAG_DEVICE_MASK << PHY_DIAG_DEVICE_SHIFT;
        const uint32 lane = instance_part(arg3, PHY_DIAG_LANE_SHIFT, PHY_DIAG_LANE_MASK);
        const uint32 side = instance_part(arg3, PHY_DIAG_SIDE_SHIFT, PHY_DIAG_SIDE_MASK);
        Phy *phy = phy_of(own, instance_part(arg3, PHY_DIAG_DEVICE_SHIFT, PHY_DIAG_DEVICE_MASK));
        if (arg3 & ~instance_bits || phy == nullptr || side > PHY_DIAG_SIDE_SYSTEM) {
            return static_cast<int>(SOC_E_PARAM);
        }
        const ControlPlace place = {own, *phy, phy->side(side == PHY_DIAG_SIDE_SYSTEM),
                                    lane == PHY_DIAG_LANE_ALL ? -1 : static_cast<int>(lane)};
        return place.is_lane() ? operate(place, arg4, arg5, arg6) : static_cast<int>(SOC_E_PARAM);
    });
}

}  // extern "C"
