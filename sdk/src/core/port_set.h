/// Sets of a unit's ports, the CPU's among them.
#pragma once

#include "destination.h"

#include <bcm/types.h>

#include <array>
#include <cstdint>

namespace sim {

class PortSet {
public:
    constexpr PortSet() = default;

    /// Those of the bitmap that a unit has.
    explicit PortSet(const bcm_pbmp_t &ports)
        : words_{static_cast<Word>(ports.pbits[1]) << 32 | ports.pbits[0], ports.pbits[2] & 1u}
    {
    }

    static constexpr PortSet all() { return PortSet(~Word{0}, 1); }
    static constexpr PortSet one(int port)
    {
        PortSet set;
        set.add(port);
        return set;
    }

    constexpr bool has(int port) const { return word_of(port) >> (port & 63) & 1; }
    constexpr bool empty() const { return (words_[0] | words_[1]) == 0; }
    constexpr void add(int port) { words_[index(port)] |= bit(port); }
    constexpr void remove(int port) { words_[index(port)] &= ~bit(port); }
    constexpr void put(int port, bool in) { in ? add(port) : remove(port); }

    int count() const { return __builtin_popcountll(words_[0]) + static_cast<int>(words_[1]); }

    /// Of a set that is not empty.
    int lowest() const { return words_[0] != 0 ? __builtin_ctzll(words_[0]) : 64; }

    friend constexpr PortSet operator&(const PortSet &a, const PortSet &b)
    {
        return PortSet(a.words_[0] & b.words_[0], a.words_[1] & b.words_[1]);
    }
    friend constexpr PortSet operator|(const PortSet &a, const PortSet &b)
    {
        return PortSet(a.words_[0] | b.words_[0], a.words_[1] | b.words_[1]);
    }
    /// Those of a that are not in b.
    friend constexpr PortSet operator-(const PortSet &a, const PortSet &b)
    {
        return PortSet(a.words_[0] & ~b.words_[0], a.words_[1] & ~b.words_[1]);
    }
    friend constexpr bool operator==(const PortSet &a, const PortSet &b)
    {
        return a.words_[0] == b.words_[0] && a.words_[1] == b.words_[1];
    }

    /// visit(int port) for each, in ascending order.
    template <class Visit>
    void each(Visit visit) const
    {
        for (PortSet left = *this; !left.empty();) {
            const int port = left.lowest();
            left.remove(port);
            visit(port);
        }
    }

private:
    using Word = std::uint64_t;
    static_assert(port_max == 64, "two words hold the ports");

    constexpr PortSet(Word low, Word high) : words_{low, high} {}

    static constexpr std::size_t index(int port) { return static_cast<std::size_t>(port) >> 6; }
    static constexpr Word bit(int port) { return Word{1} << (port & 63); }
    constexpr Word word_of(int port) const { return words_[index(port)]; }

    std::array<Word, 2> words_ = {};
};

}  // namespace sim
