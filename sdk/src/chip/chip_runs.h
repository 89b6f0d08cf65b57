/// Whether a unit's chip runs, for rooms that need no more of it.
#pragma once

#include "begin.h"

#include <soc/error.h>

namespace sim {

bool has_running_chip(Switch &sw);

/// A check: SOC_E_INIT.
constexpr auto chip_runs = [](Switch &sw, auto next) -> int {
    return has_running_chip(sw) ? next() : static_cast<int>(SOC_E_INIT);
};

}  // namespace sim
