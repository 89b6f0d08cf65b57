/// Where address records lead.
#pragma once

#include "destination.h"

#include <bcm/l2.h>

namespace sim {

/// The destination of an address record, as its flags and members say; errors as for resolve.
int resolve_address(const bcm_l2_addr_t &address, Destination *to);

/// Writes a destination into the record: the flags for it, and port, modid, tgid or l2mc_group.
void set_destination(bcm_l2_addr_t *address, const Destination &to);

}  // namespace sim
