/// Autonegotiation: what both ends can do, what they advertise, and what has come of it.
#include "begin.h"
#include "phy.h"
#include "phy_settings.h"
#include "sim_phyctrl.h"

using namespace sim;

namespace {

constexpr soc_port_mode_t other_abilities = _SHR_PM_AUTONEG | _SHR_PM_LB_PHY;

soc_port_mode_t half_duplex_modes()
{
    soc_port_mode_t modes = 0;
    for (const Rate &rate : rates) {
        modes |= rate.half_duplex;
    }
    return modes;
}

soc_port_mode_t full_duplex_modes()
{
    soc_port_mode_t modes = 0;
    for (const Rate &rate : rates) {
        modes |= rate.full_duplex;
    }
    return modes;
}

soc_port_ability_t by_kind(soc_port_mode_t modes)
{
    soc_port_ability_t ability = {};
    ability.speed_half_duplex = modes & half_duplex_modes();
    ability.speed_full_duplex = modes & full_duplex_modes();
    ability.pause = modes & pause_modes;
    ability.flags = modes & _SHR_PM_AUTONEG;
    ability.loopback = modes & _SHR_PM_LB_PHY;
    return ability;
}

bool is_well_formed(const soc_port_ability_t &ability)
{
    return !(ability.speed_half_duplex & ~half_duplex_modes())
           && !(ability.speed_full_duplex & ~full_duplex_modes()) && !(ability.pause & ~pause_modes);
}

template <class Read>
int read_modes(int unit, soc_port_t port, soc_port_mode_t *modes, Read read)
{
    return begin(unit, chip_runs, given(modes), ready_phy(port)).then([&](PhyPort &own) {
        *modes = read(own, own.outer());
        return SOC_E_NONE;
    });
}

template <class Read>
int read_ability(int unit, soc_port_t port, soc_port_ability_t *ability, Read read)
{
    return begin(unit, chip_runs, given(ability), ready_phy(port)).then([&](PhyPort &own) {
        *ability = by_kind(read(own, own.outer()));
        return SOC_E_NONE;
    });
}

soc_port_mode_t advert_of(const PhyPort &port, const Phy &phy)
{
    return phy.settings(port.cable).autoneg_advert;
}

soc_port_mode_t remote_of(const PhyPort &port, const Phy &phy)
{
    return partner_modes(port, phy);
}

}  // namespace

namespace sim {

soc_port_mode_t ability_of(const PhyPort &port, const Phy &phy)
{
    return phy.modes(port.cable) | other_abilities;
}

int set_advert(PhyPort &port, Phy &phy, soc_port_mode_t modes)
{
    if (modes & ~ability_of(port, phy)) {
        return SOC_E_UNAVAIL;
    }
    soc_phy_config_t &settings = phy.settings(port.cable);
    settings.autoneg_advert = modes & ~other_abilities;
    phy.link_lost = phy.link_lost || settings.autoneg_enable;
    return SOC_E_NONE;
}

}  // namespace sim

extern "C" {

int sim_soc_phyctrl_auto_negotiate_set(int unit, soc_port_t port, int an)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        return set_autonegotiation(own, own.outer(), an);
    });
}

int sim_soc_phyctrl_auto_negotiate_get(int unit, soc_port_t port, int *an, int *an_done)
{
    return begin(unit, chip_runs, given(an, an_done), ready_phy(port)).then([&](PhyPort &own) {
        *an = own.outer().settings(own.cable).autoneg_enable;
        *an_done = has_negotiated(own, own.outer());
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_adv_local_set(int unit, soc_port_t port, soc_port_mode_t mode)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        return set_advert(own, own.outer(), mode);
    });
}

int sim_soc_phyctrl_adv_local_get(int unit, soc_port_t port, soc_port_mode_t *mode)
{
    return read_modes(unit, port, mode, advert_of);
}

int sim_soc_phyctrl_adv_remote_get(int unit, soc_port_t port, soc_port_mode_t *mode)
{
    return read_modes(unit, port, mode, remote_of);
}

int sim_soc_phyctrl_ability_get(int unit, soc_port_t port, soc_port_mode_t *mode)
{
    return read_modes(unit, port, mode, ability_of);
}

int sim_soc_phyctrl_ability_advert_set(int unit, soc_port_t port, soc_port_ability_t *ability)
{
    return begin(unit, chip_runs, given(ability), ready_phy(port)).then([&](PhyPort &own) {
        if (!is_well_formed(*ability)) {
            return static_cast<int>(SOC_E_PARAM);
        }
        return set_advert(own, own.outer(),
                          ability->speed_half_duplex | ability->speed_full_duplex | ability->pause);
    });
}

int sim_soc_phyctrl_ability_advert_get(int unit, soc_port_t port, soc_port_ability_t *ability)
{
    return read_ability(unit, port, ability, advert_of);
}

int sim_soc_phyctrl_ability_remote_get(int unit, soc_port_t port, soc_port_ability_t *ability)
{
    return read_ability(unit, port, ability, remote_of);
}

int sim_soc_phyctrl_ability_local_get(int unit, soc_port_t port, soc_port_ability_t *ability)
{
    return begin(unit, chip_runs, given(ability), ready_phy(port)).then([&](PhyPort &own) {
        const Phy &phy = own.outer();
        *ability = by_kind(ability_of(own, phy));
        ability->interface = phy.kind.interfaces;
        for (const MediumAbility &one : phy.kind.media) {
            ability->medium |= 1u << one.medium;
        }
        return SOC_E_NONE;
    });
}

}  // extern "C"
