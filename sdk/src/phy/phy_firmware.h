/// The program that a PHY runs.
#pragma once

#include "phy_state.h"

namespace sim {

/// CRC-32 of IEEE 802.3.
uint32 crc32(const std::vector<uint8> &bytes);

/// The first word of what is loaded, lowest byte first; 0 if there is none.
uint32 firmware_version(const Phy &phy);

}  // namespace sim
