/// Numbers from text and back.
#include "begin.h"
#include "number_text.h"
#include "sim_parse.h"
#include "sim_text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

using namespace sim;

namespace {

/// Words as the parsers return them: 0 for what is no number, all ones for what does not fit.
void parse_words(std::string_view text, uint32 *words, int count)
{
    const NumberStatus status = read_number(text, words, count);
    if (status != NumberStatus::ok) {
        std::fill_n(words, count, status == NumberStatus::too_large ? ~0u : 0u);
    }
}

uint32 parse_word(const char *text)
{
    uint32 word = 0;
    if (text != nullptr) {
        parse_words(text, &word, 1);
    }
    return word;
}

/// "1,234,567" to "1234567"; other text as it is.
std::string without_groups(std::string_view text)
{
    std::string_view digits = trimmed(text);
    std::string joined;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const bool at_group = (digits.size() - i) % 4 == 0;
        if (digits[i] != ',' || !at_group) {
            joined += digits[i];
        }
    }
    const std::size_t commas = digits.size() - joined.size();
    const std::size_t sign = !joined.empty() && (joined[0] == '-' || joined[0] == '+');
    const bool complete = commas > 0 && joined.size() > sign && joined[sign] != '0'
                          && commas == (joined.size() - sign - 1) / 3
                          && joined.find_first_not_of("0123456789", sign) == std::string::npos;
    return complete ? joined : std::string(text);
}

std::string hexadecimal(const uint32 *words, int count, bool all_digits)
{
    std::string text = "0x";
    char digits[9];
    for (int i = count - 1; i >= 0; --i) {
        const bool leading = text.size() == 2 && !all_digits;
        if (leading && words[i] == 0 && i > 0) {
            continue;
        }
        std::snprintf(digits, sizeof digits, leading ? "%x" : "%08x", words[i]);
        text += digits;
    }
    return text;
}

void format_words(char *buf, const uint32 *val, int nval, bool all_digits)
{
    if (buf != nullptr && val != nullptr && nval > 0) {
        std::strcpy(buf, hexadecimal(val, nval, all_digits).c_str());
    }
}

}  // namespace

extern "C" {

uint32 sim_parse_integer(char *str)
{
    return parse_word(str);
}

uint64 sim_parse_uint64(char *str)
{
    uint32 words[2] = {};
    if (str != nullptr) {
        parse_words(without_groups(str), words, 2);
    }
    return uint64{words[1]} << 32 | words[0];
}

sal_vaddr_t sim_parse_address(char *str)
{
    return parse_word(str);
}

void sim_parse_long_integer(uint32 *val, int nval, char *str)
{
    if (val != nullptr && nval > 0) {
        parse_words(str != nullptr ? str : "", val, nval);
    }
}

int sim_parse_num_range(int unit, char *s, int *min, int *max, int legal_min, int legal_max)
{
    return begin(unit, given(s, min, max)).then([&]() -> int {
        return read_range(s, legal_min, legal_max, min, max) ? BCM_E_NONE : BCM_E_PARAM;
    });
}

void sim_format_long_integer(char *buf, uint32 *val, int nval)
{
    format_words(buf, val, nval, false);
}

void sim_format_spec_long_integer(char *buf, uint32 *val, int nval)
{
    format_words(buf, val, nval, true);
}

void sim_format_uint64(char *buf, uint64 n)
{
    const uint32 words[2] = {static_cast<uint32>(n), static_cast<uint32>(n >> 32)};
    format_words(buf, words, 2, false);
}

void sim_format_uint64_decimal(char *buf, uint64 n, int comma)
{
    if (buf == nullptr) {
        return;
    }
    std::string text = std::to_string(n);
    for (std::size_t place = text.size(); comma != 0 && place > 3;) {
        place -= 3;
        text.insert(place, 1, ',');
    }
    std::strcpy(buf, text.c_str());
}

int sim_isint(char *text)
{
    uint32 word;
    return text != nullptr && read_number(text, &word, 1) == NumberStatus::ok;
}

}  // extern "C"
