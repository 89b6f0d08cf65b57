/// Enumerators by name. The tables are generated from the SDK's headers; sim_FAMILY.h declares them.
#pragma once

#include <string>
#include <string_view>

namespace sim {

struct Enumerator {
    const char *name;
    int value;
};

/// All enumerators of an enumeration, as declared.
struct Enumerators {
    const Enumerator *first;
    const Enumerator *last;  ///< one behind

    const Enumerator *begin() const { return first; }
    const Enumerator *end() const { return last; }
};

/// The enumerators that users know by name: all but the ...Count or ..._COUNT at the end, with or without the prefix that
/// they share.
class Names {
public:
    /// All names have to begin with the prefix. The arguments have to stay for ever.
    constexpr Names(const Enumerators &enumerators, std::string_view prefix)
        : enumerators_(enumerators), prefix_(prefix)
    {
    }

    /// The value of a name in either form and in either case; out_of_range() if there is none.
    int value(std::string_view name) const;

    /// "?" for what is no value. Of several names of one value, the first.
    std::string name(int value, bool brief) const;

    /// One above the highest value.
    int out_of_range() const;

private:
    bool is_count_of_all(const Enumerator &enumerator) const;

    const Enumerators &enumerators_;
    std::string_view prefix_;
};

}  // namespace sim
