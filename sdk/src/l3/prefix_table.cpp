#include "prefix_table.h"

#include <cpuid.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace sim {

namespace {

constexpr std::uint64_t one = 1;

/// Without an instruction for it; a library's function would take twice as many.
inline unsigned bits_in(std::uint64_t bits)
{
    bits -= bits >> 1 & 0x5555555555555555u;
    bits = (bits & 0x3333333333333333u) + (bits >> 2 & 0x3333333333333333u);
    bits = (bits + (bits >> 4)) & 0x0f0f0f0f0f0f0f0fu;
    return static_cast<unsigned>(bits * 0x0101010101010101u >> 56);
}

/// Whether the processor counts bits. All do since 2008, but this is compiled for older ones.
bool counts_bits()
{
    unsigned a, b, c = 0, d;
    return __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & bit_POPCNT) != 0;
}

const bool has_bit_count = counts_bits();

/// The place of a bit's element among those of all bits that are set.
inline std::size_t place_of(std::uint64_t bits, unsigned bit)
{
    return bits_in(bits & ((one << bit) - 1));
}

inline unsigned first_bits(const IpAddress &address, unsigned count)
{
    return count == 0 ? 0 : static_cast<unsigned>(address.high >> (64 - count));
}

inline IpAddress without_first_bits(const IpAddress &address, unsigned count)
{
    return {address.high << count | address.low >> (64 - count), address.low << count};
}

/// The bits of a node's prefixes that match six bits, by their complement.
constexpr std::array<std::uint64_t, 64> matches_of_complements()
{
    std::array<std::uint64_t, 64> matches = {};
    for (unsigned value = 0; value < 64; ++value) {
        for (unsigned length = 0; length < 6; ++length) {
            matches[63 - value] |= one << ((1u << length) + (value >> (6 - length)));
        }
    }
    return matches;
}

constexpr std::array<std::uint64_t, 64> matches = matches_of_complements();

inline unsigned prefix_bit(const IpAddress &network, unsigned length)
{
    return (1u << length) + first_bits(network, length);
}

/// Of some bits those that are below the highest one of others, moved up.
inline std::uint64_t bits_below_highest(std::uint64_t bits, std::uint64_t others)
{
    return bits << __builtin_clzll(others) << 1;
}

/// The array with one more element at the place; the old one is gone.
template <class Element>
Element *with_inserted(Element *old, std::size_t count, std::size_t place, const Element &element)
{
    auto *grown = new Element[count + 1];
    std::copy(old, old + place, grown);
    grown[place] = element;
    std::copy(old + place, old + count, grown + place + 1);
    delete[] old;
    return grown;
}

/// Takes one out. Gives back memory with the last one only, so that it needs none.
template <class Element>
void take_out(Element *&elements, std::size_t count, std::size_t place)
{
    std::copy(elements + place + 1, elements + count, elements + place);
    if (count == 1) {
        delete[] elements;
        elements = nullptr;
    }
}

}  // namespace

template <bool by_instruction>
[[gnu::always_inline]] inline std::uint32_t PrefixTable::find_longest(IpAddress address) const
{
    const auto count = [](std::uint64_t bits) __attribute__((always_inline))
    {
        return by_instruction ? static_cast<unsigned>(__builtin_popcountll(bits)) : bits_in(bits);
    };
    constexpr unsigned steps_in_half = 10;
    const Node *node = &root_;
    const Node *best = nullptr;
    std::uint64_t best_matches = 0;
    for (;;) {
        // The complement of six bits is how far up theirs is from the highest of 64.
        std::uint64_t rest = ~address.high;
        for (unsigned steps = steps_in_half; steps != 0; --steps) {
            const auto complement = static_cast<unsigned>(rest >> (64 - stride));
            const std::uint64_t found = node->prefixes & matches[complement];
            if (found != 0) {
                best = node;
                best_matches = found;
            }
            const std::uint64_t up_to_value = node->children << complement;
            std::uint64_t before_value;
            // The highest bit, which leaves, is that of the value.
            if (!__builtin_add_overflow(up_to_value, up_to_value, &before_value)) {
                return best != nullptr
                           ? best->numbers[count(bits_below_highest(best->prefixes, best_matches))]
                           : none;
            }
            node = node->nodes + count(before_value);
            rest <<= stride;
        }
        address = without_first_bits(address, steps_in_half * stride);
    }
}

[[gnu::target("popcnt")]] std::uint32_t PrefixTable::longest_by_instruction(IpAddress address) const
{
    return find_longest<true>(address);
}

std::uint32_t PrefixTable::longest(IpAddress address) const
{
    return has_bit_count ? longest_by_instruction(address) : find_longest<false>(address);
}

std::uint32_t PrefixTable::exact(IpAddress network, unsigned length) const
{
    const Node *node = &root_;
    for (; length >= stride; length -= stride, network = without_first_bits(network, stride)) {
        const unsigned value = first_bits(network, stride);
        if (!(node->children >> value & 1)) {
            return none;
        }
        node = node->nodes + place_of(node->children, value);
    }
    const unsigned bit = prefix_bit(network, length);
    return node->prefixes >> bit & 1 ? node->numbers[place_of(node->prefixes, bit)] : none;
}

void PrefixTable::put(IpAddress network, unsigned length, std::uint32_t number)
{
    put(root_, network, length, number);
}

void PrefixTable::remove(IpAddress network, unsigned length)
{
    remove(root_, network, length);
}

void PrefixTable::clear()
{
    clear(root_);
}

void PrefixTable::put(Node &node, IpAddress network, unsigned length, std::uint32_t number)
{
    if (length < stride) {
        const unsigned bit = prefix_bit(network, length);
        const std::size_t place = place_of(node.prefixes, bit);
        if (node.prefixes >> bit & 1) {
            node.numbers[place] = number;
        } else {
            node.numbers = with_inserted(node.numbers, bits_in(node.prefixes), place, number);
            node.prefixes |= one << bit;
        }
        return;
    }
    const unsigned value = first_bits(network, stride);
    const std::size_t place = place_of(node.children, value);
    // Made whole before it joins the others.
    const IpAddress rest = without_first_bits(network, stride);
    if (node.children >> value & 1) {
        put(node.nodes[place], rest, length - stride, number);
        return;
    }
    Node made;
    try {
        put(made, rest, length - stride, number);
        node.nodes = with_inserted(node.nodes, bits_in(node.children), place, made);
    } catch (...) {
        clear(made);
        throw;
    }
    node.children |= one << value;
}

void PrefixTable::remove(Node &node, IpAddress network, unsigned length)
{
    if (length < stride) {
        const unsigned bit = prefix_bit(network, length);
        take_out(node.numbers, bits_in(node.prefixes), place_of(node.prefixes, bit));
        node.prefixes &= ~(one << bit);
        return;
    }
    const unsigned value = first_bits(network, stride);
    const std::size_t place = place_of(node.children, value);
    Node &child = node.nodes[place];
    remove(child, without_first_bits(network, stride), length - stride);
    if (child.prefixes == 0 && child.children == 0) {
        take_out(node.nodes, bits_in(node.children), place);
        node.children &= ~(one << value);
    }
}

void PrefixTable::clear(Node &node)
{
    for (unsigned i = 0; i < bits_in(node.children); ++i) {
        clear(node.nodes[i]);
    }
    delete[] node.nodes;
    delete[] node.numbers;
    node = {};
}

}  // namespace sim
