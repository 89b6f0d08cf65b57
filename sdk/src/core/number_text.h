/// Numbers in text, by the rules of <appl/parse_number.h>.
#pragma once

#include <sal/types.h>

#include <string>
#include <string_view>

namespace sim {

enum class NumberStatus { ok, malformed, too_large };

/// Into count words, the least significant one first. They are only complete if the status is ok.
NumberStatus read_number(std::string_view text, uint32 *words, int count);

/// A number that 64 bits hold with its sign.
bool read_integer(std::string_view text, int64 *value);

/// A number that an int holds.
bool read_int(std::string_view text, int *value);

/// A range, both ends included; see parse_num_range().
bool read_range(std::string_view text, int legal_min, int legal_max, int *min, int *max);

/// Without the blanks around it.
std::string_view trimmed(std::string_view text);

/// Whether the texts are equal but for the case of their letters.
bool same_text(std::string_view a, std::string_view b);

/// Copies text and a terminator into buf; only the terminator if size is too small, nothing if it is below 1
/// or buf is null. Returns whether it fitted.
bool write_text(const std::string &text, char *buf, int size);

}  // namespace sim
