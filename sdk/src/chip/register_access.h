/// Reading and writing registers as callers name them, with snoops and stand-ins.
#pragma once

#include "chip.h"

namespace sim {

/// Widths in bits, both included.
struct Widths {
    int least;
    int most;
};
constexpr Widths any_width = {32, 32 * SOC_REG_ABOVE_64_MAX_SIZE_U32};

/// By identifier, through a stand-in if one is registered for registers of that width. The status is that of
/// the public calls; SOC_E_PARAM for another width.
int get_register(int unit, soc_reg_t reg, int port, int index, Widths widths, Words *value);
int set_register(int unit, soc_reg_t reg, int port, int index, Widths widths, const Words &value);

}  // namespace sim
