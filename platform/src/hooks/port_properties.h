// The board's wiring as SOC properties.
#pragma once

#include "configuration.h"
#include "quorel_api/port_map.h"

/// All that BelvokInit() tells of a port: what does not apply, or everything if the record is null, is not to
/// be set.
std::vector<Property> portProperties(int port, const tridentPortMap_t *map);
