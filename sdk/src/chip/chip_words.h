/// Values of any width as words, least significant first, and the bits of a field in them.
#pragma once

#include "chip_layout.h"

#include <array>

namespace sim {

/// Room for any register or memory entry; words beyond its width are 0.
using Words = std::array<uint32, SOC_REG_ABOVE_64_MAX_SIZE_U32>;

Words words_of(uint64 value);
Words words_of(const uint32 *words, std::size_t count);
uint64 low_64(const Words &words);

Words field_of(const Words &words, const Field &field);

/// Takes the low bits of the value, as many as the field has.
void put_field(Words &words, const Field &field, const Words &value);

/// Whether no bit of the value is beyond the field.
bool fits(const Words &value, const Field &field);

/// All bits of fields, other than those with any of the flags.
Words mask_of(const Layout &layout, uint32 without_flags);

/// Bits of the new value where the mask has ones, else of the old.
Words merge(const Words &old_value, const Words &new_value, const Words &mask);

}  // namespace sim
