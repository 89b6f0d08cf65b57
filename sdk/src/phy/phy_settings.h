/// Changes of a PHY's settings, by whichever way they are asked for. They answer SOC_E_PARAM or SOC_E_UNAVAIL
/// and then change nothing.
#pragma once

#include "phy_link.h"

namespace sim {

int set_speed(PhyPort &port, Phy &phy, int speed);
/// Without autonegotiation.
int force_speed(PhyPort &port, Phy &phy, int speed);

int set_duplex(PhyPort &port, Phy &phy, int duplex);
int set_autonegotiation(PhyPort &port, Phy &phy, int an);
int set_advert(PhyPort &port, Phy &phy, soc_port_mode_t modes);
int set_interface(Phy &phy, soc_port_if_t interface);

/// Of the port's outer PHY: negotiated, 0 while it is not, or forced.
int speed_of(const PhyPort &port);

/// All PHYs of the port.
void set_enabled(PhyPort &port, bool enabled);

/// Modes and other bits of soc_port_mode_t that the PHY can do now.
soc_port_mode_t ability_of(const PhyPort &port, const Phy &phy);

}  // namespace sim
