#include "phy_link.h"

#include "phy_controls.h"

#include <algorithm>

namespace sim {

namespace {

constexpr Link down = {0, true};

Link fastest_of(soc_port_mode_t modes)
{
    for (int i = rate_count - 1; i >= 0; --i) {
        if (modes & rates[i].full_duplex) {
            return {rates[i].speed, true};
        }
        if (modes & rates[i].half_duplex) {
            return {rates[i].speed, false};
        }
    }
    return down;
}

soc_port_mode_t carried_by(const Cable &cable, soc_port_mode_t modes)
{
    for (const Rate &rate : rates) {
        if (!cable.carries(rate.speed)) {
            modes &= ~(rate.half_duplex | rate.full_duplex);
        }
    }
    return modes;
}

/// The link to be if nothing else stands in its way.
Link wanted(const Phy &phy, const Cable &cable, bool looped)
{
    const soc_phy_config_t &settings = phy.settings(cable);
    if (settings.autoneg_enable) {
        const soc_port_mode_t common = settings.autoneg_advert & phy.modes(cable);
        return fastest_of(looped ? common : carried_by(cable, common));
    }
    const Link forced = {settings.force_speed, settings.force_duplex != 0};
    const bool carried = looped || cable.carries(forced.speed);
    return carried && forced.speed <= phy.lanes_speed() ? forced : down;
}

bool passes_traffic(const Phy &phy)
{
    return phy.enabled && phy.stopped == 0 && has_power(phy);
}

/// Whether the PHY takes part in the line's link.
bool is_on_line(const PhyPort &port, const Phy &phy)
{
    const soc_port_medium_t medium = phy.medium(port.cable.media);
    return phy.media.at(medium).enable && port.cable.media >> medium & 1 && !disturbs_line(phy);
}

/// The link with a partner whose settings count too.
Link common(const PhyPort &port, const PhyPort &partner)
{
    const Phy &own = port.outer();
    const Phy &other = partner.outer();
    if (!passes_traffic(other) || other.line.loopback || !is_on_line(partner, other)) {
        return down;
    }
    const soc_phy_config_t &settings = own.settings(port.cable);
    const soc_phy_config_t &others = other.settings(partner.cable);
    if (settings.autoneg_enable && others.autoneg_enable) {
        const soc_port_mode_t modes = settings.autoneg_advert & own.modes(port.cable) & others.autoneg_advert
                                      & other.modes(partner.cable);
        return fastest_of(carried_by(port.cable, modes));
    }
    // Who negotiates finds out the speed of a partner that does not.
    const soc_phy_config_t &forced = settings.autoneg_enable ? others : settings;
    const int speed = forced.force_speed;
    const bool can_both = speed <= own.lanes_speed() && speed <= other.lanes_speed()
                          && can_do(own.ability(port.cable), speed, true)
                          && can_do(other.ability(partner.cable), speed, true);
    const bool agree =
        settings.autoneg_enable || others.autoneg_enable || settings.force_speed == others.force_speed;
    return can_both && agree && port.cable.carries(speed) ? Link{speed, forced.force_duplex != 0} : down;
}

/// The SerDes in front of a copper PHY follows it.
bool is_between(const PhyPort &port, const Phy &phy)
{
    return port.copper && &phy == &*port.serdes;
}

}  // namespace

Link link_of(const PhyPort &port, const Phy &phy)
{
    if (!passes_traffic(phy)) {
        return down;
    }
    if (is_between(port, phy)) {
        const Phy &next = *port.copper;
        const bool looped = phy.line.loopback || (next.system.loopback && passes_traffic(next));
        return looped ? wanted(next, port.cable, true) : link_of(port, next);
    }
    if (phy.line.loopback) {
        return wanted(phy, port.cable, true);
    }
    if (!is_on_line(port, phy)) {
        return down;
    }
    if (port.cable.partner) {
        const PhyPort *partner = partner_of(port);
        return partner != nullptr ? common(port, *partner) : down;
    }
    return wanted(phy, port.cable, false);
}

Link link_of(const PhyPort &port)
{
    if (!port.serdes) {
        return down;
    }
    const bool looped = port.mac_loopback || (port.serdes->system.loopback && passes_traffic(*port.serdes));
    return looped ? wanted(port.outer(), port.cable, true) : link_of(port, *port.serdes);
}

bool is_looped(const PhyPort &port)
{
    if (!port.serdes || !link_of(port).up()) {
        return false;
    }
    const Phy &next = *port.serdes;
    return port.mac_loopback || next.system.loopback || next.line.loopback
           || (port.copper && (port.copper->system.loopback || port.copper->line.loopback));
}

bool has_negotiated(const PhyPort &port, const Phy &phy)
{
    return phy.settings(port.cable).autoneg_enable && link_of(port, phy).up();
}

soc_port_mode_t partner_modes(const PhyPort &port, const Phy &phy)
{
    if (!has_negotiated(port, phy)) {
        return 0;
    }
    // Looped back, the PHY hears itself.
    if (phy.line.loopback) {
        return phy.settings(port.cable).autoneg_advert;
    }
    const PhyPort *partner = partner_of(port);
    if (partner != nullptr && !is_between(port, phy)) {
        const Phy &other = partner->outer();
        return has_negotiated(*partner, other) ? other.settings(partner->cable).autoneg_advert : 0;
    }
    return modes_of(phy.ability(port.cable), phy.ability(port.cable).speed_max);
}

soc_port_if_t interface_in_force(const PhyPort &port, const Phy &phy)
{
    const Link link = link_of(port, phy);
    const int speed = link.up() ? link.speed : phy.settings(port.cable).force_speed;
    if (carries(phy.interface, speed)) {
        return phy.interface;
    }
    for (soc_port_if_t interface = 0; interface < _SHR_PORT_IF_COUNT; ++interface) {
        if (phy.kind.interfaces >> interface & 1 && carries(interface, speed)) {
            return interface;
        }
    }
    return phy.interface;
}

bool joins(const PhyPort &port)
{
    return port.copper && passes_traffic(*port.serdes) && passes_traffic(*port.copper);
}

bool has_fault(const PhyPort &port, const Phy &phy)
{
    return passes_traffic(phy) && !link_of(port, phy).up();
}

void settle(PhyPort &port)
{
    for (std::optional<Phy> *phy : {&port.serdes, &port.copper}) {
        if (*phy) {
            const bool up = link_of(port, **phy).up();
            (*phy)->link_changes += up != (*phy)->link_up;
            (*phy)->link_up = up;
            (*phy)->link_lost = (*phy)->link_lost || !up;
        }
    }
    if (port.serdes) {
        const bool interrupted = port.outer().link_lost && port.outer().link_up;
        port.was_down = port.was_down || interrupted || !link_of(port).up();
    }
}

}  // namespace sim
