/// Comparison of whole records of the SDK.
#pragma once

#include <cstring>
#include <type_traits>

namespace sim {

/// Whether two records are alike in every byte, those between their members too: records begin as their _init function
/// leaves them, all zero. For what may take two that are alike for different, but never the other way round.
template <class Record>
bool alike(const Record &a, const Record &b)
{
    static_assert(std::is_trivially_copyable_v<Record>, "a record of C");
    const void *const first = &a, *const second = &b;
    return std::memcmp(first, second, sizeof a) == 0;
}

}  // namespace sim
