#include "integer.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace sim {

bool read_integer(std::string_view text, long long *value)
{
    const bool negative = !text.empty() && text.front() == '-';
    text.remove_prefix(negative ? 1 : 0);
    int base = 10;
    const char letter = text.size() > 2 && text[0] == '0' ? static_cast<char>(text[1] | 0x20) : '\0';
    if (letter == 'x' || letter == 'b') {
        base = letter == 'x' ? 16 : 2;
        text.remove_prefix(2);
    }
    unsigned long long magnitude = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    const unsigned long long greatest = std::numeric_limits<long long>::max();
    const bool whole = !text.empty() && error == std::errc() && end == text.data() + text.size();
    if (!whole || magnitude > greatest + negative) {
        return false;
    }
    *value = static_cast<long long>(negative ? 0 - magnitude : magnitude);
    return true;
}

bool read_integer(std::string_view text, int *value)
{
    long long wide;
    if (!read_integer(text, &wide) || wide < std::numeric_limits<int>::min()
        || wide > std::numeric_limits<int>::max()) {
        return false;
    }
    *value = static_cast<int>(wide);
    return true;
}

}  // namespace sim
