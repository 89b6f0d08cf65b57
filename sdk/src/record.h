/// The record of calls, as the public functions write it; tests read it through <sim/record.h>.
#pragma once

#include <atomic>
#include <cstddef>
#include <type_traits>
#include <vector>

namespace record {

/// Whether calls are recorded. Tested before a Call is made, so that a call costs one load otherwise.
extern std::atomic<bool> on;

/// One call with its arguments so far.
struct Entry {
    const char *function;
    std::vector<unsigned char> bytes;  // all arguments, one after the other
    std::vector<std::size_t> ends;     // where each one ends in bytes
};

/// Collects the arguments of one call, in order, and adds the call to the record when it goes out of scope.
class Call {
public:
    /// function has to stay valid for ever: a literal.
    explicit Call(const char *function) : entry_{function, {}, {}} {}
    ~Call();
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;

    /// The argument's own bytes; for a pointer, the address.
    template <class T>
    Call &value(const T &argument)
    {
        static_assert(std::is_trivially_copyable_v<T>, "arguments are plain C values");
        return array(&argument, sizeof argument);
    }

    /// What the argument points to, size bytes; none if it is null.
    Call &array(const void *argument, std::size_t size);

private:
    Entry entry_;
};

}  // namespace record
