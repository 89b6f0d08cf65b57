#include "chip_words.h"

#include <algorithm>

namespace sim {

namespace {

constexpr int word_bits = 32;

std::size_t word_of(int bit)
{
    return static_cast<std::size_t>(bit / word_bits);
}

bool bit_of(const Words &words, int bit)
{
    return words[word_of(bit)] >> bit % word_bits & 1;
}

void put_bit(Words &words, int bit, bool value)
{
    const uint32 mask = 1u << bit % word_bits;
    words[word_of(bit)] = value ? words[word_of(bit)] | mask : words[word_of(bit)] & ~mask;
}

}  // namespace

Words words_of(uint64 value)
{
    return {static_cast<uint32>(value), static_cast<uint32>(value >> word_bits)};
}

Words words_of(const uint32 *words, std::size_t count)
{
    Words copy = {};
    std::copy_n(words, count, copy.begin());
    return copy;
}

uint64 low_64(const Words &words)
{
    return words[0] | static_cast<uint64>(words[1]) << word_bits;
}

Words field_of(const Words &words, const Field &field)
{
    Words value = {};
    for (int bit = 0; bit < field.length; ++bit) {
        put_bit(value, bit, bit_of(words, field.bit + bit));
    }
    return value;
}

void put_field(Words &words, const Field &field, const Words &value)
{
    for (int bit = 0; bit < field.length; ++bit) {
        put_bit(words, field.bit + bit, bit_of(value, bit));
    }
}

bool fits(const Words &value, const Field &field)
{
    const Field from_zero = {field.id, 0, field.length};
    return field_of(value, from_zero) == value;
}

Words mask_of(const Layout &layout, uint32 without_flags)
{
    Words ones;
    ones.fill(0xffffffff);
    Words mask = {};
    for (const Field &field : layout) {
        if ((field.flags & without_flags) == 0) {
            put_field(mask, field, ones);
        }
    }
    return mask;
}

Words merge(const Words &old_value, const Words &new_value, const Words &mask)
{
    Words merged;
    for (std::size_t word = 0; word < merged.size(); ++word) {
        merged[word] = (old_value[word] & ~mask[word]) | (new_value[word] & mask[word]);
    }
    return merged;
}

}  // namespace sim
