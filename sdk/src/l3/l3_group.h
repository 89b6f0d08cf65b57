/// Groups of egress objects.
#pragma once

#include "l3.h"

namespace sim {

/// The paths of a group, whose members or their states have changed. std::bad_alloc leaves them as they were.
void l3_work_out_paths(L3State &l3, L3Group &group);

}  // namespace sim
