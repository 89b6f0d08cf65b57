/// Memory that a record of the caller's points to. Where the pointer or the length is wrong, it cannot be read or
/// written: that is found out, and does not end the process.
#pragma once

#include <cstddef>

namespace sim {

/// Copies from or to the caller's memory. False if not all of it is there; what was copied until then is not said.
bool read_callers(const void *from, void *to, std::size_t bytes);
bool write_callers(void *to, const void *from, std::size_t bytes);

}  // namespace sim
