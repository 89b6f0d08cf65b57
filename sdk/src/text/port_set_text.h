/// Sets of ports from text.
#pragma once

#include <bcm/types.h>

#include <string_view>

namespace sim {

/// What parse_bcm_pbmp() reads: BCM_E_NONE, BCM_E_PARAM or BCM_E_PORT. After a failure *wrong is the item at
/// fault, empty if there is no item.
int read_port_set(int unit, std::string_view text, bcm_pbmp_t *ports, std::string_view *wrong);

}  // namespace sim
