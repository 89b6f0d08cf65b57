/// The program that a PHY runs.
#pragma once

#include "phy_state.h"

namespace sim {

/// The first word of what is loaded, lowest byte first; 0 if there is none.
uint32 firmware_version(const Phy &phy);

}  // namespace sim
