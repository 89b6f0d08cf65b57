/// The settings that are only kept: their limits and what they are after a reset.
#include "phy_controls.h"

#include <soc/phy_values.h>

#include <algorithm>
#include <iterator>

namespace sim {

namespace {

constexpr bool each_lane = true, whole = false;

constexpr Setting settings[] = {
    // Transmitter.
    {SOC_PHY_CONTROL_PREEMPHASIS, on_both, each_lane, 8, 0, 63},
    {SOC_PHY_CONTROL_DRIVER_CURRENT, on_serdes, each_lane, 4, 0, 15},
    {SOC_PHY_CONTROL_PRE_DRIVER_CURRENT, on_serdes, each_lane, 4, 0, 15},
    {SOC_PHY_CONTROL_TX_SWING, on_serdes, each_lane, 900, 100, 1200},
    {SOC_PHY_CONTROL_TX_FIR_PRE2, on_serdes, each_lane, 0, -15, 15},
    {SOC_PHY_CONTROL_TX_FIR_PRE, on_serdes, each_lane, 12, -31, 31},
    {SOC_PHY_CONTROL_TX_FIR_MAIN, on_serdes, each_lane, 100, 0, 127},
    {SOC_PHY_CONTROL_TX_FIR_POST, on_serdes, each_lane, 0, -63, 63},
    {SOC_PHY_CONTROL_TX_FIR_POST2, on_serdes, each_lane, 0, -15, 15},
    {SOC_PHY_CONTROL_TX_FIR_POST3, on_serdes, each_lane, 0, -7, 7},
    {SOC_PHY_CONTROL_TX_FIR_FORCE, on_serdes, each_lane, 0, 0, 1},

    // Receiver.
    {SOC_PHY_CONTROL_EQUALIZER_BOOST, on_serdes, each_lane, 7, 0, 15},
    {SOC_PHY_CONTROL_EQUALIZER_ADAPTATION, on_serdes, each_lane, 1, 0, 1},
    {SOC_PHY_CONTROL_RX_PEAK_FILTER, on_serdes, each_lane, 7, 0, 15},
    {SOC_PHY_CONTROL_RX_LOW_FREQ_PEAK_FILTER, on_serdes, each_lane, 2, 0, 15},
    {SOC_PHY_CONTROL_RX_VGA, on_serdes, each_lane, 24, 0, 44},
    {SOC_PHY_CONTROL_RX_DFE_TAP1, on_serdes, each_lane, 0, -63, 63},
    {SOC_PHY_CONTROL_RX_DFE_TAP2, on_serdes, each_lane, 0, -31, 31},
    {SOC_PHY_CONTROL_RX_DFE_TAP3, on_serdes, each_lane, 0, -15, 15},
    {SOC_PHY_CONTROL_RX_DFE_TAP4, on_serdes, each_lane, 0, -7, 7},
    {SOC_PHY_CONTROL_RX_DFE_TAP5, on_serdes, each_lane, 0, -7, 7},
    {SOC_PHY_CONTROL_RX_DFE_ENABLE, on_serdes, each_lane, 1, 0, 1},
    {SOC_PHY_CONTROL_RX_DFE_LOW_POWER, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_RX_DFE_FREEZE, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_RX_SIGNAL_DETECT_THRESHOLD, on_serdes, each_lane, 80, 0, 400},

    // Lanes.
    {SOC_PHY_CONTROL_TX_POLARITY, on_both, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_RX_POLARITY, on_both, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_TX_LANE_SQUELCH, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_RX_LANE_SQUELCH, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_TX_ELECTRICAL_IDLE, on_serdes, each_lane, 0, 0, 1},

    // Test sequences.
    {SOC_PHY_CONTROL_PRBS_POLYNOMIAL, on_serdes, each_lane, 0, 0, SOC_PHY_PRBS_POLYNOMIAL_X31_X28},
    {SOC_PHY_CONTROL_PRBS_TX_ENABLE, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_PRBS_TX_INVERT_DATA, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_PRBS_RX_ENABLE, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_PRBS_RX_INVERT_DATA, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_PATTERN_LENGTH, on_serdes, each_lane, 32, 1, 32},
    {SOC_PHY_CONTROL_PATTERN_DATA, on_serdes, each_lane, 0, 0, 0xffffffff},
    {SOC_PHY_CONTROL_PATTERN_ENABLE, on_serdes, each_lane, 0, 0, 1},
    {SOC_PHY_CONTROL_LOOPBACK_REMOTE, on_both, whole, 0, 0, 1},

    // The line.
    {SOC_PHY_CONTROL_SCRAMBLER, on_serdes, whole, 1, 0, 1},
    {SOC_PHY_CONTROL_FEC_MODE, on_serdes, whole, SOC_PHY_FEC_NONE, 0, SOC_PHY_FEC_RS_272},
    {SOC_PHY_CONTROL_FEC_BYPASS_CORRECTION, on_serdes, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_FEC_BYPASS_INDICATION, on_serdes, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_LINK_TRAINING, on_serdes, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_LINK_UP_DELAY, on_both, whole, 0, 0, 10000},
    {SOC_PHY_CONTROL_LINK_DOWN_DELAY, on_both, whole, 0, 0, 10000},
    {SOC_PHY_CONTROL_MODULE_TX_DISABLE, on_both, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_SUPERISOLATE, on_copper, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_CABLE_DIAG_MODE, on_copper, whole, 0, 0, 2},

    // Power.
    {SOC_PHY_CONTROL_POWER, on_both, whole, SOC_PHY_POWER_FULL, 0, SOC_PHY_POWER_OFF},
    {SOC_PHY_CONTROL_POWER_AUTO_SLEEP_TIME, on_copper, whole, 2700, 0, 10000},
    {SOC_PHY_CONTROL_POWER_AUTO_WAKE_TIME, on_copper, whole, 84, 0, 10000},
    {SOC_PHY_CONTROL_EEE, on_copper, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_EEE_AUTO, on_copper, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_EEE_AUTO_FIXED_LATENCY, on_copper, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_EEE_AUTO_IDLE_THRESHOLD, on_copper, whole, 20, 0, 65535},

    // Clocks.
    {SOC_PHY_CONTROL_CLOCK_ENABLE, on_both, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_CLOCK_SOURCE, on_both, whole, SOC_PHY_CLOCK_SOURCE_LOCAL, 0,
     SOC_PHY_CLOCK_SOURCE_EXTERNAL},
    {SOC_PHY_CONTROL_CLOCK_SQUELCH_ON_LINK_LOSS, on_both, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_PRIMARY_RECOVERED_CLOCK, on_both, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_BACKUP_RECOVERED_CLOCK, on_both, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_RECOVERED_CLOCK_DIVIDER, on_serdes, whole, 40, 1, 1024},

    // Firmware and lamps.
    {SOC_PHY_CONTROL_FIRMWARE_MODE, on_serdes, each_lane, 1, 0, 3},
    {SOC_PHY_CONTROL_FIRMWARE_LANE_ADAPTATION, on_serdes, each_lane, 1, 0, 1},
    {SOC_PHY_CONTROL_LED_MODE, on_copper, whole, 0, 0, 15},
    {SOC_PHY_CONTROL_LED_BLINK_RATE, on_copper, whole, 84, 0, 1000},
    {SOC_PHY_CONTROL_LED_INVERT, on_copper, whole, 0, 0, 1},
    {SOC_PHY_CONTROL_LED_FORCE, on_copper, whole, 0, 0, 15},
};

}  // namespace

const Setting *setting_of(int selector)
{
    const Setting *found = std::find_if(std::begin(settings), std::end(settings),
                                        [&](const Setting &one) { return one.selector == selector; });
    return found == std::end(settings) ? nullptr : found;
}

uint32 setting_value(const Phy &phy, const PhySide &side, int lane, int selector)
{
    const Setting *setting = setting_of(selector);
    if (setting == nullptr || !(setting->kinds & kind_bit(phy))) {
        return 0;
    }
    const auto kept = side.controls.find({setting->per_lane ? lane : 0, selector});
    return kept == side.controls.end() ? setting->at_reset : kept->second;
}

}  // namespace sim
