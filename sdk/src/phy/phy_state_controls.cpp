/// The controls that stand for a PHY's state.
#include "phy_controls.h"
#include "crc32.h"
#include "phy_firmware.h"
#include "phy_registers.h"
#include "phy_settings.h"

#include <soc/phy_values.h>

#include <algorithm>
#include <iterator>

namespace sim {

namespace {

constexpr uint32 unlocked = 0xffffffff;

uint32 setting(const ControlPlace &place, int selector)
{
    return setting_value(place.phy, place.side, place.first_lane(), selector);
}

bool line_is_up(const ControlPlace &place)
{
    return link_of(place.port, place.phy).up();
}

bool is_plugged(const ControlPlace &place)
{
    return place.port.cable.media >> place.phy.medium(place.port.cable.media) & 1;
}

/// A counter that begins anew when it is read.
uint32 take(const ControlPlace &place, int selector)
{
    uint32 &counter = place.side.controls[{place.first_lane(), selector}];
    const uint32 count = counter;
    counter = 0;
    return count;
}

void count(const ControlPlace &place, int selector, uint32 more)
{
    const int last = place.lane < 0 ? place.phy.kind.lanes - 1 : place.lane;
    for (int lane = place.first_lane(); lane <= last; ++lane) {
        place.side.controls[{lane, selector}] += more;
    }
}

bool hears_itself(const ControlPlace &place)
{
    return place.side.loopback && has_power(place.phy) && place.phy.enabled;
}

/// The receiver has locked to the sequence that comes back from the transmitter.
uint32 prbs_lock(const ControlPlace &place)
{
    const bool inverted =
        setting(place, SOC_PHY_CONTROL_PRBS_TX_INVERT_DATA) ^ setting(place, SOC_PHY_CONTROL_TX_POLARITY)
        ^ setting(place, SOC_PHY_CONTROL_PRBS_RX_INVERT_DATA) ^ setting(place, SOC_PHY_CONTROL_RX_POLARITY);
    return hears_itself(place) && setting(place, SOC_PHY_CONTROL_PRBS_TX_ENABLE)
           && setting(place, SOC_PHY_CONTROL_PRBS_RX_ENABLE) && !inverted;
}

uint32 prbs_status(const ControlPlace &place)
{
    const uint32 errors = take(place, SOC_PHY_CONTROL_PRBS_RX_STATUS);
    return prbs_lock(place) ? errors : unlocked;
}

int inject_prbs_errors(const ControlPlace &place, uint32 errors)
{
    count(place, SOC_PHY_CONTROL_PRBS_RX_STATUS, errors);
    return SOC_E_NONE;
}

uint32 fec_active(const ControlPlace &place)
{
    return line_is_up(place) ? setting(place, SOC_PHY_CONTROL_FEC_MODE)
                             : static_cast<uint32>(SOC_PHY_FEC_NONE);
}

uint32 fec_lock(const ControlPlace &place)
{
    return fec_active(place) != SOC_PHY_FEC_NONE;
}

int inject_fec_errors(const ControlPlace &place, uint32 errors)
{
    if (!fec_lock(place)) {
        return SOC_E_DISABLED;
    }
    count(place, SOC_PHY_CONTROL_FEC_SYMBOL_ERRORS, errors);
    count(place,
          setting(place, SOC_PHY_CONTROL_FEC_BYPASS_CORRECTION) ? SOC_PHY_CONTROL_FEC_UNCORRECTED_BLOCKS
                                                                : SOC_PHY_CONTROL_FEC_CORRECTED_BLOCKS,
          errors != 0);
    return SOC_E_NONE;
}

uint32 fec_symbol_errors(const ControlPlace &place)
{
    return take(place, SOC_PHY_CONTROL_FEC_SYMBOL_ERRORS);
}

uint32 fec_corrected(const ControlPlace &place)
{
    return take(place, SOC_PHY_CONTROL_FEC_CORRECTED_BLOCKS);
}

uint32 fec_uncorrected(const ControlPlace &place)
{
    return take(place, SOC_PHY_CONTROL_FEC_UNCORRECTED_BLOCKS);
}

uint32 receiver_ready(const ControlPlace &place)
{
    return line_is_up(place);
}

uint32 signal_detected(const ControlPlace &place)
{
    return hears_itself(place) || (is_plugged(place) && place.phy.enabled && has_power(place.phy));
}

uint32 lanes_in_use(const ControlPlace &place)
{
    return static_cast<uint32>(place.phy.lanes_speed() / place.phy.kind.lane_speed);
}

int use_lanes(const ControlPlace &place, uint32 lanes)
{
    if (lanes == 0 || lanes > static_cast<uint32>(place.phy.kind.lanes)) {
        return SOC_E_PARAM;
    }
    place.phy.lane_mask = (1u << lanes) - 1;
    return SOC_E_NONE;
}

uint32 lane_rate(const ControlPlace &place)
{
    return static_cast<uint32>(place.phy.kind.lane_speed);
}

uint32 reads_zero(const ControlPlace &)
{
    return 0;
}

int interrupt_link(const ControlPlace &place, uint32 value)
{
    if (value > 1) {
        return SOC_E_PARAM;
    }
    place.phy.link_lost = place.phy.link_lost || value != 0;
    return SOC_E_NONE;
}

int restart_autonegotiation(const ControlPlace &place, uint32 value)
{
    return place.phy.settings(place.port.cable).autoneg_enable ? interrupt_link(place, value)
                                                               : static_cast<int>(SOC_E_DISABLED);
}

uint32 side_loopback(const ControlPlace &place)
{
    return place.side.loopback;
}

int set_side_loopback(const ControlPlace &place, uint32 value)
{
    if (value > 1) {
        return SOC_E_PARAM;
    }
    place.side.loopback = value != 0;
    return SOC_E_NONE;
}

uint32 internal_loopback(const ControlPlace &place)
{
    return place.port.serdes->line.loopback;
}

int set_internal_loopback(const ControlPlace &place, uint32 value)
{
    if (value > 1) {
        return SOC_E_PARAM;
    }
    place.port.serdes->line.loopback = value != 0;
    return SOC_E_NONE;
}

uint32 training_done(const ControlPlace &place)
{
    return setting(place, SOC_PHY_CONTROL_LINK_TRAINING) && line_is_up(place);
}

uint32 training_failure(const ControlPlace &place)
{
    return setting(place, SOC_PHY_CONTROL_LINK_TRAINING) && !line_is_up(place);
}

uint32 link_changes(const ControlPlace &place)
{
    const uint32 changes = place.phy.link_changes;
    place.phy.link_changes = 0;
    return changes;
}

uint32 local_fault(const ControlPlace &place)
{
    return has_fault(place.port, place.phy);
}

uint32 module_present(const ControlPlace &place)
{
    return place.port.cable.media >> _SHR_PORT_MEDIUM_FIBER & 1;
}

uint32 cable_length(const ControlPlace &place)
{
    return place.port.cable.media >> _SHR_PORT_MEDIUM_COPPER & 1
               ? static_cast<uint32>(place.port.cable.metres)
               : 0;
}

uint32 crosses_without_negotiation(const ControlPlace &place)
{
    return place.phy.media.at(_SHR_PORT_MEDIUM_COPPER).mdix == _SHR_PORT_MDIX_FORCE_AUTO;
}

int cross_without_negotiation(const ControlPlace &place, uint32 value)
{
    if (value > 1) {
        return SOC_E_PARAM;
    }
    place.phy.media.at(_SHR_PORT_MEDIUM_COPPER).mdix =
        value ? _SHR_PORT_MDIX_FORCE_AUTO : _SHR_PORT_MDIX_AUTO;
    return SOC_E_NONE;
}

uint32 temperature(const ControlPlace &place)
{
    constexpr uint32 cold = 30, idle = 42, busy = 51;
    return !has_power(place.phy) ? cold : line_is_up(place) ? busy : idle;
}

uint32 eee_partner(const ControlPlace &place)
{
    return has_negotiated(place.port, place.phy);
}

uint32 pll_lock(const ControlPlace &place)
{
    return has_power(place.phy);
}

uint32 firmware_size(const ControlPlace &place)
{
    return static_cast<uint32>(place.phy.firmware.size());
}

uint32 firmware_size_max(const ControlPlace &place)
{
    return static_cast<uint32>(place.phy.kind.firmware_max);
}

uint32 firmware_checksum(const ControlPlace &place)
{
    return crc32(place.phy.firmware.data(), place.phy.firmware.size());
}

uint32 firmware_version_read(const ControlPlace &place)
{
    return firmware_version(place.phy);
}

uint32 firmware_runs(const ControlPlace &place)
{
    return place.phy.firmware_started && has_power(place.phy);
}

uint32 system_link(const ControlPlace &place)
{
    return joins(place.port);
}

uint32 system_autonegotiation(const ControlPlace &place)
{
    return place.phy.system.autonegotiation;
}

int set_system_autonegotiation(const ControlPlace &place, uint32 value)
{
    if (value > 1) {
        return SOC_E_PARAM;
    }
    place.phy.system.autonegotiation = value != 0;
    return SOC_E_NONE;
}

uint32 loopback_mode(const ControlPlace &place)
{
    return place.side.loopback                               ? SOC_PHY_LOOPBACK_PMD
           : setting(place, SOC_PHY_CONTROL_LOOPBACK_REMOTE) ? SOC_PHY_LOOPBACK_REMOTE
                                                             : SOC_PHY_LOOPBACK_NONE;
}

int set_loopback_mode(const ControlPlace &place, uint32 mode)
{
    if (mode > SOC_PHY_LOOPBACK_REMOTE) {
        return SOC_E_PARAM;
    }
    if (mode == SOC_PHY_LOOPBACK_PCS) {
        return SOC_E_UNAVAIL;
    }
    place.side.loopback = mode == SOC_PHY_LOOPBACK_PMD;
    return set_control(place, SOC_PHY_CONTROL_LOOPBACK_REMOTE, mode == SOC_PHY_LOOPBACK_REMOTE);
}

uint32 kind(const ControlPlace &place)
{
    return &place.phy.kind == &copper_kind ? copperPhy : serdesPhy;
}

int dump(const ControlPlace &place, uint32)
{
    print_registers(place.port, place.phy);
    return SOC_E_NONE;
}

constexpr StateControl controls[] = {
    {SOC_PHY_CONTROL_LANE_COUNT, on_serdes, lanes_in_use, use_lanes},
    {SOC_PHY_CONTROL_LANE_RATE, on_both, lane_rate, nullptr},
    {SOC_PHY_CONTROL_RX_SIGNAL_DETECT, on_both, signal_detected, nullptr},
    {SOC_PHY_CONTROL_RX_CLOCK_LOCK, on_both, signal_detected, nullptr},
    {SOC_PHY_CONTROL_RX_SEQ_DONE, on_both, receiver_ready, nullptr},
    {SOC_PHY_CONTROL_RX_BLOCK_LOCK, on_both, receiver_ready, nullptr},
    {SOC_PHY_CONTROL_RX_LANE_ALIGNMENT, on_serdes, receiver_ready, nullptr},
    {SOC_PHY_CONTROL_RX_RESTART, on_both, reads_zero, interrupt_link},
    {SOC_PHY_CONTROL_TX_RESET, on_both, reads_zero, interrupt_link},
    {SOC_PHY_CONTROL_RX_RESET, on_both, reads_zero, interrupt_link},
    {SOC_PHY_CONTROL_LANE_RESET, on_serdes, reads_zero, interrupt_link},
    {SOC_PHY_CONTROL_PRBS_RX_LOCK, on_serdes, prbs_lock, nullptr},
    {SOC_PHY_CONTROL_PRBS_RX_STATUS, on_serdes, prbs_status, nullptr},
    {SOC_PHY_CONTROL_PRBS_ERROR_INJECT, on_serdes, nullptr, inject_prbs_errors},
    {SOC_PHY_CONTROL_LOOPBACK_MODE, on_both, loopback_mode, set_loopback_mode},
    {SOC_PHY_CONTROL_LOOPBACK_PMD, on_both, side_loopback, set_side_loopback},
    {SOC_PHY_CONTROL_LOOPBACK_INTERNAL, on_both, internal_loopback, set_internal_loopback},
    {SOC_PHY_CONTROL_FEC_ACTIVE, on_serdes, fec_active, nullptr},
    {SOC_PHY_CONTROL_FEC_LOCK, on_serdes, fec_lock, nullptr},
    {SOC_PHY_CONTROL_FEC_CORRECTED_BLOCKS, on_serdes, fec_corrected, nullptr},
    {SOC_PHY_CONTROL_FEC_UNCORRECTED_BLOCKS, on_serdes, fec_uncorrected, nullptr},
    {SOC_PHY_CONTROL_FEC_SYMBOL_ERRORS, on_serdes, fec_symbol_errors, nullptr},
    {SOC_PHY_CONTROL_FEC_ERROR_INJECT, on_serdes, nullptr, inject_fec_errors},
    {SOC_PHY_CONTROL_AUTONEG_RESTART, on_both, reads_zero, restart_autonegotiation},
    {SOC_PHY_CONTROL_LINK_TRAINING_DONE, on_serdes, training_done, nullptr},
    {SOC_PHY_CONTROL_LINK_TRAINING_FAILURE, on_serdes, training_failure, nullptr},
    {SOC_PHY_CONTROL_LINK_CHANGES, on_both, link_changes, nullptr},
    {SOC_PHY_CONTROL_LOCAL_FAULT, on_both, local_fault, nullptr},
    {SOC_PHY_CONTROL_KIND, on_both, kind, nullptr},
    {SOC_PHY_CONTROL_MODULE_PRESENT, on_both, module_present, nullptr},
    {SOC_PHY_CONTROL_CABLE_LENGTH, on_copper, cable_length, nullptr},
    {SOC_PHY_CONTROL_CROSSOVER_WITHOUT_AUTONEG, on_copper, crosses_without_negotiation,
     cross_without_negotiation},
    {SOC_PHY_CONTROL_TEMPERATURE, on_both, temperature, nullptr},
    {SOC_PHY_CONTROL_EEE_PARTNER, on_copper, eee_partner, nullptr},
    {SOC_PHY_CONTROL_PLL_LOCK, on_serdes, pll_lock, nullptr},
    {SOC_PHY_CONTROL_FIRMWARE_VERSION, on_both, firmware_version_read, nullptr},
    {SOC_PHY_CONTROL_FIRMWARE_SIZE, on_both, firmware_size, nullptr},
    {SOC_PHY_CONTROL_FIRMWARE_SIZE_MAX, on_both, firmware_size_max, nullptr},
    {SOC_PHY_CONTROL_FIRMWARE_CRC, on_both, firmware_checksum, nullptr},
    {SOC_PHY_CONTROL_FIRMWARE_RUNNING, on_both, firmware_runs, nullptr},
    {SOC_PHY_CONTROL_SYSTEM_LINK, on_copper, system_link, nullptr},
    {SOC_PHY_CONTROL_SYSTEM_AUTONEG, on_copper, system_autonegotiation, set_system_autonegotiation},
    {SOC_PHY_CONTROL_DUMP, on_both, nullptr, dump},
};

}  // namespace

bool begins_anew_when_read(int selector)
{
    constexpr int counters[] = {SOC_PHY_CONTROL_PRBS_RX_STATUS, SOC_PHY_CONTROL_FEC_SYMBOL_ERRORS,
                                SOC_PHY_CONTROL_FEC_CORRECTED_BLOCKS, SOC_PHY_CONTROL_FEC_UNCORRECTED_BLOCKS,
                                SOC_PHY_CONTROL_LINK_CHANGES};
    return std::find(std::begin(counters), std::end(counters), selector) != std::end(counters);
}

const StateControl *state_control_of(int selector)
{
    const StateControl *found =
        std::find_if(std::begin(controls), std::end(controls),
                     [&](const StateControl &one) { return one.selector == selector; });
    return found == std::end(controls) ? nullptr : found;
}

bool has_power(const Phy &phy)
{
    return setting_value(phy, phy.line, 0, SOC_PHY_CONTROL_POWER) != SOC_PHY_POWER_OFF;
}

bool disturbs_line(const Phy &phy)
{
    static constexpr int disturbing[] = {SOC_PHY_CONTROL_TX_POLARITY,        SOC_PHY_CONTROL_RX_POLARITY,
                                         SOC_PHY_CONTROL_TX_LANE_SQUELCH,    SOC_PHY_CONTROL_RX_LANE_SQUELCH,
                                         SOC_PHY_CONTROL_PRBS_TX_ENABLE,     SOC_PHY_CONTROL_PATTERN_ENABLE,
                                         SOC_PHY_CONTROL_TX_ELECTRICAL_IDLE, SOC_PHY_CONTROL_LOOPBACK_REMOTE,
                                         SOC_PHY_CONTROL_MODULE_TX_DISABLE,  SOC_PHY_CONTROL_SUPERISOLATE};
    for (int lane = 0; lane < phy.kind.lanes; ++lane) {
        for (const int selector : disturbing) {
            if (phy.lane_mask >> lane & 1 && setting_value(phy, phy.line, lane, selector) != 0) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace sim
