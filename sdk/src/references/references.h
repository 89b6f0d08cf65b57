/// The room of references: what rules ask of other rooms, or leave to them (field_arguments.h). `part` is the number that
/// a record of a rule has.
#pragma once

#include "field_arguments.h"
#include "switch.h"

namespace sim {

/// A bcm_vlan_t, a bcm_trunk_t, a bcm_if_t of a router interface.
bool vlan_exists(Switch &sw, const void *part);
bool trunk_exists(Switch &sw, const void *part);
bool interface_exists(Switch &sw, const void *part);

/// A bcm_gport_t that names something else than a port.
bool gport_exists(Switch &sw, const void *part);

}  // namespace sim
