#include "phy_state.h"

#include <soc/phy_values.h>

#include <algorithm>

namespace sim {

namespace {

soc_phy_config_t config_at_reset(const MediumAbility &ability, bool preferred)
{
    soc_phy_config_t config = {};
    config.enable = 1;
    config.preferred = preferred;
    config.autoneg_enable = ability.autonegotiation_at_reset;
    config.autoneg_advert = modes_of(ability, ability.speed_max);
    config.force_speed = ability.speed_max;
    config.force_duplex = 1;
    config.master = SOC_PHY_MS_AUTO;
    config.mdix = _SHR_PORT_MDIX_AUTO;
    return config;
}

constexpr int cable_length_at_start = 10;  // metres

}  // namespace

Cable::Cable(uint32 plugged, int length) : media(plugged), metres(length)
{
    pairs.fill({_SHR_PORT_CABLE_STATE_OK, length});
}

Cable Cable::at_start(int port)
{
    const auto medium = has_copper_phy(port) ? _SHR_PORT_MEDIUM_COPPER : _SHR_PORT_MEDIUM_FIBER;
    return Cable(has_serdes(port) ? 1u << medium : 0, cable_length_at_start);
}

bool Cable::carries(int speed) const
{
    const std::ptrdiff_t needed = speed <= 100 ? 2 : _SHR_PORT_CABLE_PAIRS;
    return std::all_of(pairs.begin(), pairs.begin() + needed,
                       [](const CablePair &pair) { return pair.state == _SHR_PORT_CABLE_STATE_OK; });
}

Phy::Phy(const PhyKind &phy_kind) : kind(phy_kind)
{
    reset();
}

void Phy::reset()
{
    line = system = PhySide();
    enabled = true;
    stopped = 0;
    speed_max = 0;
    for (const MediumAbility &ability : kind.media) {
        speed_max = std::max(speed_max, ability.speed_max);
        media[ability.medium] = config_at_reset(ability, &ability == kind.media);
    }
    interface = kind.interface_at_reset;
    lane_mask = (1u << kind.lanes) - 1;
    link_lost = true;
}

soc_port_medium_t Phy::medium(uint32 plugged) const
{
    soc_port_medium_t best = kind.media[0].medium;
    int best_rank = 0;
    for (const MediumAbility &ability : kind.media) {
        const soc_phy_config_t &config = media.at(ability.medium);
        const bool is_plugged = plugged >> ability.medium & 1;
        const int rank = (config.enable ? 4 : 0) + (is_plugged ? 2 : 0) + (config.preferred ? 1 : 0);
        if (rank > best_rank) {
            best = ability.medium;
            best_rank = rank;
        }
    }
    return best;
}

soc_port_mode_t Phy::modes(const Cable &cable) const
{
    return modes_of(ability(cable), std::min(speed_max, lanes_speed()));
}

int Phy::lanes_speed() const
{
    int speed = 0;
    for (int lane = 0; lane < kind.lanes; ++lane) {
        speed += lane_mask >> lane & 1 ? kind.lane_speed : 0;
    }
    return speed;
}

PhyPort::PhyPort(int port) : number(port), cable(Cable::at_start(port))
{
    restart();
}

void PhyPort::restart()
{
    if (has_serdes(number)) {
        serdes.emplace(serdes_kind);
    }
    if (has_copper_phy(number)) {
        copper.emplace(copper_kind);
    }
    probed = initialised = true;
    mac_loopback = false;
    was_down = true;
    reported_link = false;
    own_reset = default_reset = ResetFunction();
    watchers.clear();
    reported_medium = serdes ? medium_in_use() : static_cast<soc_port_medium_t>(SOC_PHY_MEDIUM_NONE);
}

soc_port_medium_t PhyPort::medium_in_use() const
{
    const soc_port_medium_t medium = outer().medium(cable.media);
    const bool in_use = outer().media.at(medium).enable && cable.media >> medium & 1;
    return in_use ? medium : static_cast<soc_port_medium_t>(SOC_PHY_MEDIUM_NONE);
}

void PhyPort::reset_phys()
{
    for (std::optional<Phy> *phy : {&serdes, &copper}) {
        if (*phy) {
            (*phy)->reset();
        }
    }
}

}  // namespace sim
