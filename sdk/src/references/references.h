/// The room of references: what rules ask of other rooms. `part` is the number that a record of a rule has.
#pragma once

#include "switch.h"

namespace sim {

/// A bcm_vlan_t, a bcm_trunk_t.
bool vlan_exists(Switch &sw, const void *part);
bool trunk_exists(Switch &sw, const void *part);

}  // namespace sim
