/// The table of hosts: single addresses by routing table, found by a hash.
#pragma once

#include "l3_entries.h"

namespace sim {

class L3Hosts : public L3Entries<bcm_l3_host_t> {
public:
    static constexpr std::size_t capacity = 65536;

    /// The place of an address, or none.
    std::uint32_t find(const IpAddress &address, unsigned vrf, bool is_ip6) const
    {
        if (index_.empty()) {
            return none;
        }
        const std::uint32_t found = index_[slot_of(address, vrf, is_ip6)];
        return found != 0 ? found - 1 : none;
    }

    /// False if the table is full.
    bool insert(const L3Entry &entry, std::unique_ptr<Details> details);
    void remove(std::uint32_t place);
    void remove_all();

private:
    static std::uint64_t hash(const IpAddress &address, unsigned vrf)
    {
        const std::uint64_t mixed = (address.high ^ (address.low * 0xff51afd7ed558ccdu)) + vrf;
        return (mixed ^ (mixed >> 32)) * 0x9e3779b97f4a7c15u;
    }

    /// The slot that holds the address, or the free one where it would go. The index has one.
    std::size_t slot_of(const IpAddress &address, unsigned vrf, bool is_ip6) const
    {
        const std::size_t mask = index_.size() - 1;
        std::size_t slot = static_cast<std::size_t>(hash(address, vrf) >> 32) & mask;
        while (index_[slot] != 0 && !is_of(at(index_[slot] - 1), address, vrf, is_ip6)) {
            slot = (slot + 1) & mask;
        }
        return slot;
    }
    static bool is_of(const L3Entry &entry, const IpAddress &address, unsigned vrf, bool is_ip6)
    {
        return entry.network == address && entry.vrf == vrf && entry.is_ip6() == is_ip6;
    }

    std::size_t size() const { return count(false) + count(true); }

    std::vector<std::uint32_t>
        index_;  // place + 1, or 0; a power of two of slots, at most half of them in use
};

}  // namespace sim
