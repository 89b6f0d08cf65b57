/// Settings of the PHY by their names at ports.
#include "begin.h"
#include "port.h"
#include "sim_phyctrl.h"
#include "sim_port.h"

#include <soc/phy_values.h>

#include <algorithm>
#include <iterator>

using namespace sim;

namespace {

struct Counterpart {
    bcm_port_phy_control_t type;
    soc_phy_control_t selector;
};

// Their values mean the same.
constexpr Counterpart counterparts[] = {
    {bcmPortPhyControlWanMode, SOC_PHY_CONTROL_WAN},
    {bcmPortPhyControlPreemphasis, SOC_PHY_CONTROL_PREEMPHASIS},
    {bcmPortPhyControlDriverCurrent, SOC_PHY_CONTROL_DRIVER_CURRENT},
    {bcmPortPhyControlEqualizerBoost, SOC_PHY_CONTROL_EQUALIZER_BOOST},
    {bcmPortPhyControlTxFirPre, SOC_PHY_CONTROL_TX_FIR_PRE},
    {bcmPortPhyControlTxFirMain, SOC_PHY_CONTROL_TX_FIR_MAIN},
    {bcmPortPhyControlTxFirPost, SOC_PHY_CONTROL_TX_FIR_POST},
    {bcmPortPhyControlTxSwing, SOC_PHY_CONTROL_TX_SWING},
    {bcmPortPhyControlTxPolarity, SOC_PHY_CONTROL_TX_POLARITY},
    {bcmPortPhyControlRxPolarity, SOC_PHY_CONTROL_RX_POLARITY},
    {bcmPortPhyControlTxLaneMap, SOC_PHY_CONTROL_TX_LANE_MAP},
    {bcmPortPhyControlRxLaneMap, SOC_PHY_CONTROL_RX_LANE_MAP},
    {bcmPortPhyControlTxReset, SOC_PHY_CONTROL_TX_RESET},
    {bcmPortPhyControlRxReset, SOC_PHY_CONTROL_RX_RESET},
    {bcmPortPhyControlTxLaneSquelch, SOC_PHY_CONTROL_TX_LANE_SQUELCH},
    {bcmPortPhyControlRxLaneSquelch, SOC_PHY_CONTROL_RX_LANE_SQUELCH},
    {bcmPortPhyControlRxPeakFilter, SOC_PHY_CONTROL_RX_PEAK_FILTER},
    {bcmPortPhyControlRxLowFreqPeakFilter, SOC_PHY_CONTROL_RX_LOW_FREQ_PEAK_FILTER},
    {bcmPortPhyControlRxVga, SOC_PHY_CONTROL_RX_VGA},
    {bcmPortPhyControlRxDfeTap1, SOC_PHY_CONTROL_RX_DFE_TAP1},
    {bcmPortPhyControlRxDfeTap2, SOC_PHY_CONTROL_RX_DFE_TAP2},
    {bcmPortPhyControlRxDfeTap3, SOC_PHY_CONTROL_RX_DFE_TAP3},
    {bcmPortPhyControlRxDfeTap4, SOC_PHY_CONTROL_RX_DFE_TAP4},
    {bcmPortPhyControlRxDfeTap5, SOC_PHY_CONTROL_RX_DFE_TAP5},
    {bcmPortPhyControlRxSignalDetect, SOC_PHY_CONTROL_RX_SIGNAL_DETECT},
    {bcmPortPhyControlRxSeqDone, SOC_PHY_CONTROL_RX_SEQ_DONE},
    {bcmPortPhyControlRxPpm, SOC_PHY_CONTROL_RX_PPM},
    {bcmPortPhyControlPrbsPolynomial, SOC_PHY_CONTROL_PRBS_POLYNOMIAL},
    {bcmPortPhyControlPrbsTxInvertData, SOC_PHY_CONTROL_PRBS_TX_INVERT_DATA},
    {bcmPortPhyControlPrbsTxEnable, SOC_PHY_CONTROL_PRBS_TX_ENABLE},
    {bcmPortPhyControlPrbsRxEnable, SOC_PHY_CONTROL_PRBS_RX_ENABLE},
    {bcmPortPhyControlPrbsRxStatus, SOC_PHY_CONTROL_PRBS_RX_STATUS},
    {bcmPortPhyControlLoopbackPmd, SOC_PHY_CONTROL_LOOPBACK_PMD},
    {bcmPortPhyControlLoopbackRemote, SOC_PHY_CONTROL_LOOPBACK_REMOTE},
    // Clause 72 is the training of links.
    {bcmPortPhyControlCl72, SOC_PHY_CONTROL_LINK_TRAINING},
    {bcmPortPhyControlCl72Status, SOC_PHY_CONTROL_LINK_TRAINING_DONE},
    {bcmPortPhyControlForwardErrorCorrection, SOC_PHY_CONTROL_FEC_MODE},
    {bcmPortPhyControlScrambler, SOC_PHY_CONTROL_SCRAMBLER},
    {bcmPortPhyControlOverCurrent, SOC_PHY_CONTROL_OVER_CURRENT},
    {bcmPortPhyControlPower, SOC_PHY_CONTROL_POWER},
    {bcmPortPhyControlPowerAutoSleepTime, SOC_PHY_CONTROL_POWER_AUTO_SLEEP_TIME},
    {bcmPortPhyControlPowerAutoWakeTime, SOC_PHY_CONTROL_POWER_AUTO_WAKE_TIME},
    {bcmPortPhyControlLedMode, SOC_PHY_CONTROL_LED_MODE},
    {bcmPortPhyControlLedBlinkRate, SOC_PHY_CONTROL_LED_BLINK_RATE},
    {bcmPortPhyControlCableDiagMode, SOC_PHY_CONTROL_CABLE_DIAG_MODE},
    {bcmPortPhyControlLongreachSpeed, SOC_PHY_CONTROL_LONGREACH_SPEED},
    {bcmPortPhyControlLongreachPairs, SOC_PHY_CONTROL_LONGREACH_PAIRS},
    {bcmPortPhyControlLongreachActive, SOC_PHY_CONTROL_LONGREACH_ACTIVE},
    {bcmPortPhyControlLongreachEnable, SOC_PHY_CONTROL_LONGREACH_ENABLE},
    {bcmPortPhyControlEee, SOC_PHY_CONTROL_EEE},
    {bcmPortPhyControlEeeAuto, SOC_PHY_CONTROL_EEE_AUTO},
    {bcmPortPhyControlEeeAutoLatency, SOC_PHY_CONTROL_EEE_AUTO_FIXED_LATENCY},
    {bcmPortPhyControlEeeAutoIdleThreshold, SOC_PHY_CONTROL_EEE_AUTO_IDLE_THRESHOLD},
    {bcmPortPhyControlClockEnable, SOC_PHY_CONTROL_CLOCK_ENABLE},
    {bcmPortPhyControlClockSource, SOC_PHY_CONTROL_CLOCK_SOURCE},
    {bcmPortPhyControlClockFrequency, SOC_PHY_CONTROL_CLOCK_FREQUENCY},
    {bcmPortPhyControlPrimaryRecoveredClock, SOC_PHY_CONTROL_PRIMARY_RECOVERED_CLOCK},
    {bcmPortPhyControlBackupRecoveredClock, SOC_PHY_CONTROL_BACKUP_RECOVERED_CLOCK},
    {bcmPortPhyControlFirmwareMode, SOC_PHY_CONTROL_FIRMWARE_MODE},
    {bcmPortPhyControlMediaType, SOC_PHY_CONTROL_MEDIA_TYPE},
    {bcmPortPhyControlLinkTraining, SOC_PHY_CONTROL_LINK_TRAINING},
    {bcmPortPhyControlLinkTrainingDone, SOC_PHY_CONTROL_LINK_TRAINING_DONE},
    {bcmPortPhyControlFailover, SOC_PHY_CONTROL_FAILOVER},
    {bcmPortPhyControlDump, SOC_PHY_CONTROL_DUMP},
};

static_assert(static_cast<int>(bcmPortPrbsPolynomial31) == static_cast<int>(SOC_PHY_PRBS_POLYNOMIAL_X31_X28),
              "polynomials are counted alike");

/// The PHY's setting of that name: BCM_E_PARAM: no such setting, BCM_E_UNAVAIL: without counterpart.
auto selector_of(bcm_port_phy_control_t type)
{
    return [type](Switch &, auto next) -> int {
        if (static_cast<int>(type) < 0 || type >= bcmPortPhyControlCount) {
            return BCM_E_PARAM;
        }
        const Counterpart *found = std::find_if(std::begin(counterparts), std::end(counterparts),
                                                [&](const Counterpart &one) { return one.type == type; });
        return found == std::end(counterparts) ? static_cast<int>(BCM_E_UNAVAIL) : next(found->selector);
    };
}

}  // namespace

extern "C" {

int sim_bcm_port_phy_control_set(int unit, bcm_port_t port, bcm_port_phy_control_t type, uint32 value)
{
    return begin(unit, own_port(port), selector_of(type))
        .then([&](soc_port_t own, soc_phy_control_t selector) {
            return sim_soc_phyctrl_control_set(unit, own, selector, value);
        });
}

int sim_bcm_port_phy_control_get(int unit, bcm_port_t port, bcm_port_phy_control_t type, uint32 *value)
{
    return begin(unit, given(value), own_port(port), selector_of(type))
        .then([&](soc_port_t own, soc_phy_control_t selector) {
            return sim_soc_phyctrl_control_get(unit, own, selector, value);
        });
}

}  // extern "C"
