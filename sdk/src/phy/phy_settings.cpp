/// Speed, duplex, interface, clock master and crossing of a port.
#include "phy_settings.h"

#include "begin.h"
#include "phy.h"
#include "sim_phyctrl.h"

#include <soc/phy_values.h>

#include <algorithm>

using namespace sim;

namespace {

bool is_flag(int value)
{
    return value == 0 || value == 1;
}

bool uses_pairs(const PhyPort &port)
{
    return port.outer().medium(port.cable.media) == _SHR_PORT_MEDIUM_COPPER;
}

/// A port that uses copper pairs, and the settings of that medium: SOC_E_UNAVAIL.
auto copper_pairs(soc_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        return ready_phy(port)(sw, [&](PhyPort &own) -> int {
            return uses_pairs(own) ? next(own, own.outer().settings(own.cable))
                                   : static_cast<int>(SOC_E_UNAVAIL);
        });
    };
}

}  // namespace

namespace sim {

int set_speed(PhyPort &port, Phy &phy, int speed)
{
    soc_phy_config_t &settings = phy.settings(port.cable);
    if (!phy.can_be_forced_to(port.cable, speed)) {
        return SOC_E_PARAM;
    }
    settings.force_speed = speed;
    settings.force_duplex |= !can_do(phy.ability(port.cable), speed, false);
    return SOC_E_NONE;
}

int force_speed(PhyPort &port, Phy &phy, int speed)
{
    const int rc = set_speed(port, phy, speed);
    return rc == SOC_E_NONE ? set_autonegotiation(port, phy, 0) : rc;
}

int speed_of(const PhyPort &port)
{
    const Phy &phy = port.outer();
    const soc_phy_config_t &settings = phy.settings(port.cable);
    return settings.autoneg_enable ? link_of(port, phy).speed : settings.force_speed;
}

int set_duplex(PhyPort &port, Phy &phy, int duplex)
{
    soc_phy_config_t &settings = phy.settings(port.cable);
    if (!is_flag(duplex)) {
        return SOC_E_PARAM;
    }
    if (!can_do(phy.ability(port.cable), settings.force_speed, duplex)) {
        return SOC_E_UNAVAIL;
    }
    settings.force_duplex = duplex;
    return SOC_E_NONE;
}

int set_autonegotiation(PhyPort &port, Phy &phy, int an)
{
    if (!is_flag(an)) {
        return SOC_E_PARAM;
    }
    phy.settings(port.cable).autoneg_enable = an;
    phy.link_lost = true;
    return SOC_E_NONE;
}

int set_interface(Phy &phy, soc_port_if_t interface)
{
    if (interface < 0 || interface >= _SHR_PORT_IF_COUNT) {
        return SOC_E_PARAM;
    }
    if (!(phy.kind.interfaces >> interface & 1)) {
        return SOC_E_UNAVAIL;
    }
    phy.interface = interface;
    return SOC_E_NONE;
}

void set_enabled(PhyPort &port, bool enabled)
{
    for (std::optional<Phy> *phy : {&port.serdes, &port.copper}) {
        if (*phy) {
            (*phy)->enabled = enabled;
        }
    }
    settle(port);
}

}  // namespace sim

extern "C" {

int sim_soc_phyctrl_enable_set(int unit, soc_port_t port, int enable)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        set_enabled(own, enable != 0);
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_enable_get(int unit, soc_port_t port, int *enable)
{
    return begin(unit, chip_runs, given(enable), ready_phy(port)).then([&](PhyPort &own) {
        *enable = own.serdes->enabled && own.outer().enabled;
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_speed_set(int unit, soc_port_t port, int speed)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        return set_speed(own, own.outer(), speed);
    });
}

int sim_soc_phyctrl_speed_get(int unit, soc_port_t port, int *speed)
{
    return begin(unit, chip_runs, given(speed), ready_phy(port)).then([&](PhyPort &own) {
        *speed = speed_of(own);
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_set_speed_max(int unit, soc_port_t port, int speed_max)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        Phy &phy = own.outer();
        const MediumAbility &ability = phy.ability(own.cable);
        if (!can_do(ability, speed_max, true)) {
            return SOC_E_PARAM;
        }
        phy.speed_max = speed_max;
        soc_phy_config_t &settings = phy.settings(own.cable);
        settings.force_speed = std::min(settings.force_speed, speed_max);
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_duplex_set(int unit, soc_port_t port, int duplex)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        return set_duplex(own, own.outer(), duplex);
    });
}

int sim_soc_phyctrl_duplex_get(int unit, soc_port_t port, int *duplex)
{
    return begin(unit, chip_runs, given(duplex), ready_phy(port)).then([&](PhyPort &own) {
        const soc_phy_config_t &settings = own.outer().settings(own.cable);
        *duplex = settings.autoneg_enable ? link_of(own, own.outer()).full_duplex : settings.force_duplex;
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_interface_set(int unit, soc_port_t port, soc_port_if_t pif)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        return set_interface(own.outer(), pif);
    });
}

int sim_soc_phyctrl_interface_get(int unit, soc_port_t port, soc_port_if_t *pif)
{
    return begin(unit, chip_runs, given(pif), ready_phy(port)).then([&](PhyPort &own) {
        *pif = interface_in_force(own, own.outer());
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_master_set(int unit, soc_port_t port, int master)
{
    return begin(unit, chip_runs, copper_pairs(port)).then([&](PhyPort &, soc_phy_config_t &settings) {
        if (master < 0 || master > SOC_PHY_MS_AUTO) {
            return SOC_E_PARAM;
        }
        settings.master = master;
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_master_get(int unit, soc_port_t port, int *master)
{
    return begin(unit, chip_runs, given(master), ready_phy(port)).then([&](PhyPort &own) {
        *master =
            uses_pairs(own) ? own.outer().settings(own.cable).master : static_cast<int>(SOC_PHY_MS_NONE);
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_mdix_set(int unit, soc_port_t port, soc_port_mdix_t mdix)
{
    return begin(unit, chip_runs, copper_pairs(port)).then([&](PhyPort &, soc_phy_config_t &settings) {
        if (mdix < 0 || mdix >= _SHR_PORT_MDIX_COUNT) {
            return SOC_E_PARAM;
        }
        settings.mdix = static_cast<_shr_port_mdix_t>(mdix);
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_mdix_get(int unit, soc_port_t port, soc_port_mdix_t *mdix)
{
    return begin(unit, chip_runs, given(mdix), copper_pairs(port))
        .then([&](PhyPort &, soc_phy_config_t &settings) {
            *mdix = settings.mdix;
            return SOC_E_NONE;
        });
}

int sim_soc_phyctrl_mdix_status_get(int unit, soc_port_t port, soc_port_mdix_status_t *status)
{
    return begin(unit, chip_runs, given(status), copper_pairs(port))
        .then([&](PhyPort &, soc_phy_config_t &settings) {
            // The cable is a straight one and the partner does not cross, so that this end has to.
            const bool finds_out = settings.mdix == _SHR_PORT_MDIX_FORCE_AUTO
                                   || (settings.mdix == _SHR_PORT_MDIX_AUTO && settings.autoneg_enable);
            *status = finds_out || settings.mdix == _SHR_PORT_MDIX_XOVER ? _SHR_PORT_MDIX_STATUS_XOVER
                                                                         : _SHR_PORT_MDIX_STATUS_NORMAL;
            return SOC_E_NONE;
        });
}

}  // extern "C"
