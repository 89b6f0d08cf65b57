/// Which addresses a call means: by flags and members, by masks, or any test.
#pragma once

#include "l2.h"
#include "switch.h"

namespace sim {

/// Static and dynamic entries apart: the bits of BCM_L2_TRAVERSE_MATCH_STATIC and _DYNAMIC, neither for both.
bool match_kind(const bcm_l2_addr_t &address, uint32 flags);

/// Agreement with another address in the members that flags names, destinations resolved.
class L2Match {
public:
    /// flags: BCM_L2_TRAVERSE_MATCH_*, other bits are not looked at. BCM_E_PARAM: VLAN id out of range;
    /// BCM_E_PORT, BCM_E_BADID: no such destination. Only members that flags names are checked.
    int set(uint32 flags, const bcm_l2_addr_t &address);

    bool operator()(const bcm_l2_addr_t &address) const;

private:
    uint32 flags_ = 0;
    bcm_l2_addr_t wanted_ = {};
    Destination destination_ = {};
};

/// Agreement in the bits of the mask.
bool match_masked(const bcm_l2_addr_t &address, const bcm_l2_addr_t &wanted, const bcm_l2_addr_t &mask);

/// The address with the bits of the mask taken from new_bits.
bcm_l2_addr_t merge_masked(const bcm_l2_addr_t &address, const bcm_l2_addr_t &new_bits,
                           const bcm_l2_addr_t &mask);

/// Whether the entry goes to that destination.
bool goes_to(const bcm_l2_addr_t &address, const Destination &to);

/// Removes the entries for which test(record) holds, as BCM_L2_DELETE_* flags say; BCM_E_PARAM for others.
template <class Test>
int l2_remove_if(Switch &sw, uint32 flags, Test test)
{
    constexpr uint32 known = BCM_L2_DELETE_STATIC | BCM_L2_DELETE_PENDING | BCM_L2_DELETE_NO_CALLBACKS;
    if (flags & ~known) {
        return BCM_E_PARAM;
    }
    const int operation = flags & BCM_L2_DELETE_NO_CALLBACKS ? l2_silent : BCM_L2_CALLBACK_DELETE;
    return l2_of(sw).addresses.traverse([&](std::size_t position) -> int {
        const uint32 entry_flags = l2_of(sw).addresses.flags(position);
        const bool spared = ((entry_flags & BCM_L2_STATIC) && !(flags & BCM_L2_DELETE_STATIC))
                            || (!(entry_flags & BCM_L2_PENDING) && (flags & BCM_L2_DELETE_PENDING));
        if (!spared && test(l2_of(sw).addresses.record(position))) {
            l2_remove(sw, position, operation);
        }
        return BCM_E_NONE;
    });
}

}  // namespace sim
