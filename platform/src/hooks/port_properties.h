// The board's wiring as SOC properties.
#pragma once

#include "quorel_api/port_map.h"

#include <optional>
#include <string>
#include <vector>

/// A SOC property, and the value that it is to have; nothing: it is not to be set.
struct Property {
    std::string name;
    std::optional<std::string> value;
};

/// All that BelvokInit() tells of a port: what does not apply, or everything if the record is null, is not to
/// be set.
std::vector<Property> portProperties(int port, const tridentPortMap_t *map);
