/// What a chip needs before packets pass.
#pragma once

#include "chip.h"

namespace sim {

/// The settings of soc_misc_init().
void configure(Chip &chip);

}  // namespace sim
