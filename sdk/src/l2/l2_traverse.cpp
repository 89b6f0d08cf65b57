/// Traversals of the address table.
#include "begin.h"
#include "l2.h"
#include "l2_match.h"
#include "sim_l2.h"

using namespace sim;

namespace {

/// Calls the user's function with a copy of each entry for which test(record) holds.
template <class Test>
int traverse(Switch &sw, bcm_l2_traverse_cb function, void *user_data, Test test)
{
    if (function == nullptr) {
        return BCM_E_PARAM;
    }
    return l2_of(sw).addresses.traverse([&](std::size_t position) -> int {
        bcm_l2_addr_t address = l2_of(sw).addresses.record(position);
        return test(address) ? function(sw.unit, &address, user_data) : static_cast<int>(BCM_E_NONE);
    });
}

}  // namespace

extern "C" {

int sim_bcm_l2_traverse(int unit, bcm_l2_traverse_cb trav_fn, void *user_data)
{
    return begin(unit, ready<L2State>).then([&](Switch &sw, L2State &) {
        return traverse(sw, trav_fn, user_data, [](const bcm_l2_addr_t &) { return true; });
    });
}

int sim_bcm_l2_matched_traverse(int unit, uint32 flags, bcm_l2_addr_t *match_addr, bcm_l2_traverse_cb trav_fn,
                                void *user_data)
{
    constexpr uint32 known = BCM_L2_TRAVERSE_MATCH_STATIC | BCM_L2_TRAVERSE_MATCH_DYNAMIC
                             | BCM_L2_TRAVERSE_MATCH_MAC | BCM_L2_TRAVERSE_MATCH_VLAN
                             | BCM_L2_TRAVERSE_MATCH_DEST;
    return begin(unit, ready<L2State>, given(match_addr)).then([&](Switch &sw, L2State &) -> int {
        L2Match match;
        const int rc = flags & ~known ? static_cast<int>(BCM_E_PARAM) : match.set(flags, *match_addr);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        return traverse(sw, trav_fn, user_data, [&](const bcm_l2_addr_t &address) {
            return match_kind(address, flags) && match(address);
        });
    });
}

int sim_bcm_l2_match_masked_traverse(int unit, uint32 flags, bcm_l2_addr_t *match_addr,
                                     bcm_l2_addr_t *mask_addr, bcm_l2_traverse_cb trav_fn, void *user_data)
{
    constexpr uint32 known = BCM_L2_TRAVERSE_MATCH_STATIC | BCM_L2_TRAVERSE_MATCH_DYNAMIC;
    return begin(unit, ready<L2State>, given(match_addr, mask_addr)).then([&](Switch &sw, L2State &) -> int {
        if (flags & ~known) {
            return BCM_E_PARAM;
        }
        const bcm_l2_addr_t wanted = *match_addr;
        const bcm_l2_addr_t mask = *mask_addr;
        return traverse(sw, trav_fn, user_data, [&](const bcm_l2_addr_t &address) {
            return match_kind(address, flags) && match_masked(address, wanted, mask);
        });
    });
}

}  // extern "C"
