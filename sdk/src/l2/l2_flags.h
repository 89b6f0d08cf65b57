/// The flags that an address can have.
#pragma once

#include <bcm/l2.h>

namespace sim {

/// How many there are, from bit 0 on. bcm_l2_flags_count says so to others, who may write it.
constexpr int l2_flags = 14;
constexpr uint32 l2_known_flags = (uint32{1} << l2_flags) - 1;

}  // namespace sim
