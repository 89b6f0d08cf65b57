/// Where ports are on the chip: half of the front ports on each core, the CPU's on the first.
#pragma once

#include "chip.h"

namespace sim {

/// Enters each port's egress interface in the chip's table.
void map_ports_to_interfaces(Chip &chip);

}  // namespace sim
