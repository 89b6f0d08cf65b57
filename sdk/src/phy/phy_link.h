/// How a PHY's settings, its cable and the partner at the other end make up a link.
///
/// Unless the cable leads to a port, the partner is always ready and can do all that the medium allows.
#pragma once

#include "phy_state.h"

namespace sim {

/// Speed 0: no link.
struct Link {
    int speed;
    bool full_duplex;

    bool up() const { return speed != 0; }
};

/// The port at the other end of the cable; null if it leads to none, or there is no such unit.
const PhyPort *partner_of(const PhyPort &port);

/// The link of the port as the MAC sees it.
Link link_of(const PhyPort &port);

/// The link of one of its PHYs on the side of the line.
Link link_of(const PhyPort &port, const Phy &phy);

/// What the partner advertises to a PHY; 0 before autonegotiation has ended.
soc_port_mode_t partner_modes(const PhyPort &port, const Phy &phy);

/// Whether a PHY's autonegotiation is on and has ended.
bool has_negotiated(const PhyPort &port, const Phy &phy);

/// The interface between MAC and PHY in force: the one set, or the first that carries the speed.
soc_port_if_t interface_in_force(const PhyPort &port, const Phy &phy);

/// Whether what the MAC sends comes back to it, and goes no further.
bool is_looped(const PhyPort &port);

/// Whether the SerDes and the copper PHY behind it reach each other.
bool joins(const PhyPort &port);

/// Whether a PHY that is to have a link has none.
bool has_fault(const PhyPort &port, const Phy &phy);

/// Notes links that have changed since the last time.
void settle(PhyPort &port);

}  // namespace sim
