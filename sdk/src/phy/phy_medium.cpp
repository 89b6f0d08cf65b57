/// Media of ports: which one is in use, how each is treated, the cable, and who is told of changes.
#include "begin.h"
#include "marked.h"
#include "phy.h"
#include "phy_settings.h"
#include "sim_phy.h"
#include "sim_phyctrl.h"

#include <soc/phy_values.h>

#include <algorithm>

using namespace sim;

namespace {

void call_watchers(int unit, PhyPort &port, soc_port_medium_t medium)
{
    if (port.in_report) {
        return;
    }
    const Marked marked(port.in_report);
    port.watchers.each(
        [&](const auto &watcher) { watcher.function(unit, port.number, medium, watcher.user_data); });
}

bool is_flag(int value)
{
    return value == 0 || value == 1;
}

bool fits(const MediumAbility &ability, const soc_phy_config_t &config)
{
    return is_flag(config.enable) && is_flag(config.preferred) && is_flag(config.autoneg_enable)
           && is_flag(config.force_duplex) && can_do(ability, config.force_speed, config.force_duplex != 0)
           && !(config.autoneg_advert & ~modes_of(ability, ability.speed_max))
           && config.master >= SOC_PHY_MS_SLAVE && config.master <= SOC_PHY_MS_NONE
           && static_cast<int>(config.mdix) >= 0 && config.mdix < _SHR_PORT_MDIX_COUNT;
}

/// A port with a ready PHY, and what its outer PHY can do over a medium: SOC_E_PARAM, SOC_E_UNAVAIL.
auto medium_of(soc_port_t port, soc_port_medium_t medium)
{
    return [=](Switch &sw, auto next) -> int {
        return ready_phy(port)(sw, [&](PhyPort &own) -> int {
            if (medium <= _SHR_PORT_MEDIUM_NONE || medium >= _SHR_PORT_MEDIUM_COUNT) {
                return SOC_E_PARAM;
            }
            const MediumAbility *ability = own.outer().kind.over(medium);
            return ability == nullptr ? static_cast<int>(SOC_E_UNAVAIL) : next(own, *ability);
        });
    };
}

_shr_port_cable_state_t summary(const soc_port_cable_diag_t &diag)
{
    _shr_port_cable_state_t state = _SHR_PORT_CABLE_STATE_OK;
    for (const _shr_port_cable_state_t pair : diag.pair_state) {
        if (pair == _SHR_PORT_CABLE_STATE_OK || pair == state) {
            continue;
        }
        const bool open_or_short =
            state <= _SHR_PORT_CABLE_STATE_OPENSHORT && pair <= _SHR_PORT_CABLE_STATE_OPENSHORT;
        if (state == _SHR_PORT_CABLE_STATE_OK) {
            state = pair;
        } else {
            state = open_or_short ? _SHR_PORT_CABLE_STATE_OPENSHORT : _SHR_PORT_CABLE_STATE_UNKNOWN;
        }
    }
    return state;
}

}  // namespace

namespace sim {

void report_medium(int unit, PhyPort &port)
{
    const soc_port_medium_t medium = port.medium_in_use();
    if (medium != port.reported_medium) {
        port.reported_medium = medium;
        call_watchers(unit, port, medium);
    }
}

}  // namespace sim

extern "C" {

int sim_soc_phyctrl_medium_get(int unit, soc_port_t port, soc_port_medium_t *medium)
{
    return begin(unit, chip_runs, given(medium), ready_phy(port)).then([&](PhyPort &own) {
        *medium = own.medium_in_use();
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_medium_config_set(int unit, soc_port_t port, soc_port_medium_t medium,
                                      soc_phy_config_t *cfg)
{
    return begin(unit, chip_runs, given(cfg), medium_of(port, medium))
        .then([&](PhyPort &own, const MediumAbility &ability) {
            if (!fits(ability, *cfg)) {
                return SOC_E_PARAM;
            }
            // One medium at most is preferred.
            for (auto &[other, config] : own.outer().media) {
                config.preferred = config.preferred && !cfg->preferred;
            }
            own.outer().media.at(medium) = *cfg;
            return SOC_E_NONE;
        });
}

int sim_soc_phyctrl_medium_config_get(int unit, soc_port_t port, soc_port_medium_t medium,
                                      soc_phy_config_t *cfg)
{
    return begin(unit, chip_runs, given(cfg), medium_of(port, medium))
        .then([&](PhyPort &own, const MediumAbility &) {
            *cfg = own.outer().media.at(medium);
            return SOC_E_NONE;
        });
}

int sim_soc_phyctrl_cable_diag(int unit, soc_port_t port, soc_port_cable_diag_t *status)
{
    return begin(unit, chip_runs, given(status), medium_of(port, _SHR_PORT_MEDIUM_COPPER))
        .then([&](PhyPort &own, const MediumAbility &) {
            constexpr int precision = 5;
            soc_port_cable_diag_t diag = {};
            const bool is_plugged = own.cable.media >> _SHR_PORT_MEDIUM_COPPER & 1;
            diag.npairs = _SHR_PORT_CABLE_PAIRS;
            diag.fuzz_len = precision;
            for (std::size_t pair = 0; pair < own.cable.pairs.size(); ++pair) {
                diag.pair_state[pair] = is_plugged ? own.cable.pairs[pair].state : _SHR_PORT_CABLE_STATE_OPEN;
                diag.pair_len[pair] = is_plugged ? own.cable.pairs[pair].metres : 0;
            }
            diag.state = summary(diag);
            own.outer().link_lost = true;
            *status = diag;
            return SOC_E_NONE;
        });
}

int sim_soc_phy_medium_status_register(int unit, soc_port_t port, soc_port_medium_status_cb_t cb,
                                       void *user_data)
{
    return begin(unit, chip_runs, given(cb), phy_port(port)).then([&](PhyUnit &, PhyPort &own) {
        return own.watchers.add({cb, user_data});
    });
}

int sim_soc_phy_medium_status_unregister(int unit, soc_port_t port, soc_port_medium_status_cb_t cb,
                                         void *user_data)
{
    return begin(unit, chip_runs, given(cb), phy_port(port)).then([&](PhyUnit &, PhyPort &own) {
        return own.watchers.remove({cb, user_data});
    });
}

void sim_soc_phy_medium_status_notify(int unit, soc_port_t port, soc_port_medium_t medium)
{
    begin(unit, chip_runs, phy_port(port)).then([&](PhyUnit &, PhyPort &own) {
        if (medium < 0 || medium >= _SHR_PORT_MEDIUM_COUNT) {
            return SOC_E_PARAM;
        }
        call_watchers(unit, own, medium);
        return SOC_E_NONE;
    });
}

}  // extern "C"
