/// Ports by name or number.
#pragma once

#include <bcm/types.h>

#include <string_view>

namespace sim {

/// A port of the unit itself, by name or number; -1 if there is none.
int port_named(int unit, std::string_view text);

/// BCM_E_PARAM for text that cannot be a port's at all, BCM_E_PORT for a port that there is not.
int no_such_port(std::string_view text);

/// Any port: one of the unit's own, or a gport in a form that format_gport() writes.
int read_gport(int unit, std::string_view text, bcm_gport_t *gport);

}  // namespace sim
