/// Integers as people type them.
#pragma once

#include <string_view>

namespace sim {

/// Reads a whole text: decimal, 0x... or 0b..., a minus before it. False, and *value as it was, if it is
/// anything else or does not fit.
bool read_integer(std::string_view text, long long *value);
bool read_integer(std::string_view text, int *value);

}  // namespace sim
