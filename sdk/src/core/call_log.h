/// The log of calls, as the public functions write it; tests read it through <sim/call_log.h>.
#pragma once

#include <atomic>
#include <cstddef>
#include <initializer_list>
#include <type_traits>

namespace call_log {

/// Whether calls are logged. Tested before anything is written, so that a call costs one load otherwise.
extern std::atomic<bool> on;

/// An argument of a call: its own bytes, or for an array what it points to; none if that is null.
struct Argument {
    const void *bytes;
    std::size_t size;
};

/// The argument's own bytes; for a pointer, the address.
template <class T>
Argument value(const T &argument)
{
    static_assert(std::is_trivially_copyable_v<T>, "arguments are plain C values");
    return {&argument, sizeof argument};
}

/// Adds a call to the log. function has to stay valid for ever: a literal.
void write(const char *function, std::initializer_list<Argument> arguments);

}  // namespace call_log
