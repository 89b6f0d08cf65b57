/// What a unit keeps when it is detached and attached again, if it supports that (bcmSwitchWarmBootSupport): all that it
/// knows and counts, its registers, memories and links. Who is told of anything is not kept, nor what waits for the CPU.
#pragma once

#include "switch.h"

namespace sim {

bool boots_warm(Switch &sw);

/// In place of detach.
void detach_warm(Switch &sw);

/// In place of attach; false if nothing was kept.
bool attach_warm(int unit);

}  // namespace sim
