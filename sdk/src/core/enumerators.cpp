#include "enumerators.h"

#include "number_text.h"

#include <algorithm>
#include <cstring>

namespace sim {

int Names::value(std::string_view name) const
{
    const std::string_view wanted = trimmed(name);
    for (const Enumerator &enumerator : enumerators_) {
        if (!is_count_of_all(enumerator)
            && (same_text(wanted, enumerator.name) || same_text(wanted, enumerator.name + prefix_.size()))) {
            return enumerator.value;
        }
    }
    return out_of_range();
}

std::string Names::name(int value, bool brief) const
{
    for (const Enumerator &enumerator : enumerators_) {
        if (enumerator.value == value && !is_count_of_all(enumerator)) {
            return enumerator.name + (brief ? prefix_.size() : 0);
        }
    }
    return "?";
}

int Names::out_of_range() const
{
    int highest = -1;
    for (const Enumerator &enumerator : enumerators_) {
        highest = is_count_of_all(enumerator) ? highest : std::max(highest, enumerator.value);
    }
    return highest + 1;
}

bool Names::is_count_of_all(const Enumerator &enumerator) const
{
    return same_text(enumerator.name + prefix_.size(), "Count");
}

}  // namespace sim
