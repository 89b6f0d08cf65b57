#include "l2_match.h"

#include "vlan.h"
#include "l2_destination.h"

#include <cstring>

namespace sim {

bool match_kind(const bcm_l2_addr_t &address, uint32 flags)
{
    constexpr uint32 both = BCM_L2_TRAVERSE_MATCH_STATIC | BCM_L2_TRAVERSE_MATCH_DYNAMIC;
    if (!(flags & both)) {
        return true;
    }
    const uint32 kind =
        address.flags & BCM_L2_STATIC ? BCM_L2_TRAVERSE_MATCH_STATIC : BCM_L2_TRAVERSE_MATCH_DYNAMIC;
    return (flags & kind) != 0;
}

int L2Match::set(uint32 flags, const bcm_l2_addr_t &address)
{
    flags_ = flags;
    wanted_ = address;
    if ((flags & BCM_L2_TRAVERSE_MATCH_VLAN) && !VlanTable::valid(address.vid)) {
        return BCM_E_PARAM;
    }
    return flags & BCM_L2_TRAVERSE_MATCH_DEST ? resolve_address(address, &destination_)
                                              : static_cast<int>(BCM_E_NONE);
}

bool L2Match::operator()(const bcm_l2_addr_t &address) const
{
    const bool same_mac = std::memcmp(address.mac, wanted_.mac, sizeof wanted_.mac) == 0;
    if ((flags_ & BCM_L2_TRAVERSE_MATCH_MAC) && !same_mac) {
        return false;
    }
    if ((flags_ & BCM_L2_TRAVERSE_MATCH_VLAN) && address.vid != wanted_.vid) {
        return false;
    }
    return !(flags_ & BCM_L2_TRAVERSE_MATCH_DEST) || goes_to(address, destination_);
}

// The record has no padding and consists of integers, so that its bytes are its members' bits.

bool match_masked(const bcm_l2_addr_t &address, const bcm_l2_addr_t &wanted, const bcm_l2_addr_t &mask)
{
    const auto *a = reinterpret_cast<const unsigned char *>(&address);
    const auto *w = reinterpret_cast<const unsigned char *>(&wanted);
    const auto *m = reinterpret_cast<const unsigned char *>(&mask);
    unsigned difference = 0;
    for (std::size_t i = 0; i < sizeof address; ++i) {
        difference |= (a[i] ^ w[i]) & m[i];
    }
    return difference == 0;
}

bcm_l2_addr_t merge_masked(const bcm_l2_addr_t &address, const bcm_l2_addr_t &new_bits,
                           const bcm_l2_addr_t &mask)
{
    bcm_l2_addr_t merged = address;
    auto *a = reinterpret_cast<unsigned char *>(&merged);
    const auto *n = reinterpret_cast<const unsigned char *>(&new_bits);
    const auto *m = reinterpret_cast<const unsigned char *>(&mask);
    for (std::size_t i = 0; i < sizeof merged; ++i) {
        a[i] = static_cast<unsigned char>((a[i] & ~m[i]) | (n[i] & m[i]));
    }
    return merged;
}

bool goes_to(const bcm_l2_addr_t &address, const Destination &to)
{
    Destination destination;
    return resolve_address(address, &destination) == BCM_E_NONE && destination == to;
}

}  // namespace sim
