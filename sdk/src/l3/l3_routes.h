/// The tables of routes: networks by routing table, found by their longest prefix.
#pragma once

#include "l3_entries.h"
#include "prefix_table.h"

namespace sim {

class L3Routes : public L3Entries<bcm_l3_route_t> {
public:
    static constexpr std::size_t ip4_capacity = 524288;
    static constexpr std::size_t ip6_capacity = 131072;
    static constexpr int vrf_max = 1024;  ///< routing tables are 0..vrf_max - 1

    /// The place of the longest prefix of an address, or none.
    std::uint32_t longest(const IpAddress &address, unsigned vrf, bool is_ip6) const
    {
        const Prefixes *prefixes = prefixes_of(vrf);
        return prefixes != nullptr ? prefixes->of_version[is_ip6].longest(address) : none;
    }

    /// The place of that very network, or none.
    std::uint32_t exact(const IpAddress &network, unsigned length, unsigned vrf, bool is_ip6) const
    {
        const Prefixes *prefixes = prefixes_of(vrf);
        return prefixes != nullptr ? prefixes->of_version[is_ip6].exact(network, length) : none;
    }

    /// False if the table is full.
    bool insert(const L3Entry &entry, std::unique_ptr<Details> details);
    void remove(std::uint32_t place);
    void remove_all();

private:
    struct Prefixes {
        PrefixTable of_version[2];  // IPv4 and IPv6
    };

    const Prefixes *prefixes_of(unsigned vrf) const
    {
        return vrf < tables_.size() ? tables_[vrf].get() : nullptr;
    }

    std::vector<std::unique_ptr<Prefixes>> tables_;  // by routing table, as far as there are routes
};

static_assert(PrefixTable::none == L3Routes::none, "what is not found is the same to both");

}  // namespace sim
