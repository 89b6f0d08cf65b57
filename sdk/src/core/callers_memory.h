/// Memory and functions that a record of the caller's points to. Where the pointer or the length is wrong, it cannot be
/// read, written or called: that is found out, and does not end the process.
#pragma once

#include <cstddef>

namespace sim {

/// Copies from or to the caller's memory. False if not all of it is there; what was copied until then is not said.
bool read_callers(const void *from, void *to, std::size_t bytes);
bool write_callers(void *to, const void *from, std::size_t bytes);

/// Whether code can be there. Asked with the units' lock held; a few instructions and a system call, but for the first
/// function of a library.
bool is_code(const void *function);

template <class Result, class... Parameters>
bool can_be_called(Result (*function)(Parameters...))
{
    return is_code(reinterpret_cast<const void *>(function));
}

}  // namespace sim
