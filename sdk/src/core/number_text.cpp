#include "number_text.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace sim {

namespace {

constexpr char blanks[] = " \t\r\n";

/// -1 for what is no digit.
int digit_value(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// Takes the prefix away.
unsigned take_base(std::string_view *digits)
{
    if (digits->size() < 2 || digits->front() != '0') {
        return 10;
    }
    const char letter = static_cast<char>((*digits)[1] | 0x20);
    if (letter == 'x' || letter == 'b') {
        digits->remove_prefix(2);
        return letter == 'x' ? 16 : 2;
    }
    digits->remove_prefix(1);
    return 8;
}

/// What does not fit is returned.
uint32 multiply_add(uint32 *words, int count, unsigned factor, unsigned summand)
{
    uint64 carry = summand;
    for (int i = 0; i < count; ++i) {
        carry += uint64{words[i]} * factor;
        words[i] = static_cast<uint32>(carry);
        carry >>= 32;
    }
    return static_cast<uint32>(carry);
}

/// To the two's complement; false if the magnitude has no negative counterpart.
bool negate(uint32 *words, int count)
{
    bool any = false;
    for (int i = 0; i < count; ++i) {
        words[i] = any ? ~words[i] : 0u - words[i];
        any = any || words[i] != 0;
    }
    return !any || words[count - 1] >> 31;
}

}  // namespace

NumberStatus read_number(std::string_view text, uint32 *words, int count)
{
    std::string_view digits = trimmed(text);
    const bool negative = !digits.empty() && digits.front() == '-';
    if (negative || (!digits.empty() && digits.front() == '+')) {
        digits.remove_prefix(1);
    }
    const unsigned base = take_base(&digits);
    if (digits.empty()) {
        return NumberStatus::malformed;
    }
    std::fill_n(words, count, 0u);
    bool too_large = false;
    for (char c : digits) {
        const int digit = digit_value(c);
        if (digit < 0 || static_cast<unsigned>(digit) >= base) {
            return NumberStatus::malformed;
        }
        too_large = too_large || multiply_add(words, count, base, static_cast<unsigned>(digit)) != 0;
    }
    if (negative && !too_large) {
        too_large = !negate(words, count);
    }
    return too_large ? NumberStatus::too_large : NumberStatus::ok;
}

bool read_integer(std::string_view text, int64 *value)
{
    // Three words, so that -1 and 18446744073709551615 are different.
    uint32 words[3];
    if (read_number(text, words, 3) != NumberStatus::ok) {
        return false;
    }
    const auto number = static_cast<int64>(uint64{words[1]} << 32 | words[0]);
    if (words[2] != (number < 0 ? ~0u : 0u)) {
        return false;
    }
    *value = number;
    return true;
}

bool read_int(std::string_view text, int *value)
{
    int64 number;
    if (!read_integer(text, &number) || number < INT_MIN || number > INT_MAX) {
        return false;
    }
    *value = static_cast<int>(number);
    return true;
}

bool read_range(std::string_view text, int legal_min, int legal_max, int *min, int *max)
{
    text = trimmed(text);
    int low = legal_min, high = legal_max;
    if (text != "*" && !same_text(text, "all")) {
        // A minus at the very start belongs to the number.
        const std::size_t dash = text.find('-', 1);
        if (!read_int(text.substr(0, dash), &low)) {
            return false;
        }
        high = low;
        if (dash != std::string_view::npos && !read_int(text.substr(dash + 1), &high)) {
            return false;
        }
    }
    if (low > high || low < legal_min || high > legal_max) {
        return false;
    }
    *min = low;
    *max = high;
    return true;
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool same_text(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

bool write_text(const std::string &text, char *buf, int size)
{
    if (buf == nullptr || size < 1) {
        return false;
    }
    const bool fits = text.size() < static_cast<std::size_t>(size);
    std::memcpy(buf, text.c_str(), fits ? text.size() + 1 : 0);
    if (!fits) {
        *buf = '\0';
    }
    return fits;
}

}  // namespace sim
