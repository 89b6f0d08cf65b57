/// Longest matching prefixes of IP addresses: which number stands for the network that an address is in.
///
/// A trie of nodes for six bits each. A node has two bitmaps: which prefixes end in it, and with which next six bits
/// it goes on; what belongs to the bits lies in two dense arrays, so a place is found by counting bits. What a
/// lookup costs depends on the length of the address, not on how many prefixes there are, and a change touches one
/// node.
#pragma once

#include "ip_address.h"

#include <cstdint>

namespace sim {

class PrefixTable {
public:
    static constexpr std::uint32_t none = UINT32_MAX;

    PrefixTable() = default;
    ~PrefixTable() { clear(); }
    PrefixTable(const PrefixTable &) = delete;
    PrefixTable &operator=(const PrefixTable &) = delete;

    bool empty() const { return root_.prefixes == 0 && root_.children == 0; }

    /// The number of the longest prefix of the address, or none.
    std::uint32_t longest(IpAddress address) const;

    /// The number of that very prefix, or none.
    std::uint32_t exact(IpAddress network, unsigned length) const;

    /// Enters a prefix, or gives it another number. std::bad_alloc leaves all as it was.
    void put(IpAddress network, unsigned length, std::uint32_t number);

    /// Of a prefix that is there.
    void remove(IpAddress network, unsigned length);

    void clear();

private:
    static constexpr unsigned stride = 6;

    /// Which bits of `prefixes` stand for the prefixes of the six bits: the prefix of n bits with value v is bit
    /// 2^n + v, so that longer ones are higher.
    struct Node {
        std::uint64_t prefixes = 0;
        std::uint64_t children = 0;
        std::uint32_t *numbers = nullptr;
        Node *nodes = nullptr;
    };

    template <bool by_instruction>
    std::uint32_t find_longest(IpAddress address) const;
    std::uint32_t longest_by_instruction(IpAddress address) const;

    static void put(Node &node, IpAddress network, unsigned length, std::uint32_t number);
    static void remove(Node &node, IpAddress network, unsigned length);
    static void clear(Node &node);

    Node root_;
};

}  // namespace sim
