/// Giving many addresses a new destination or other new members at once.
#include "begin.h"
#include "l2.h"
#include "l2_destination.h"
#include "l2_flags.h"
#include "l2_match.h"
#include "sim_l2.h"

#include <algorithm>

using namespace sim;

namespace {

int operation_of(uint32 flags)
{
    return flags & BCM_L2_REPLACE_NO_CALLBACKS ? l2_silent : BCM_L2_CALLBACK_ADD;
}

/// Whether static entries are left out.
bool spared(const bcm_l2_addr_t &address, uint32 flags)
{
    return (address.flags & BCM_L2_STATIC) && !(flags & BCM_L2_REPLACE_MATCH_STATIC);
}

/// Enters change(record) in place of each entry for which test(record) holds. Nothing is changed, and the
/// error returned, if what becomes of any of them cannot be entered.
template <class Test, class Change>
int replace_if(Switch &sw, int operation, Test test, Change change)
{
    L2Table &addresses = l2_of(sw).addresses;
    int rc = addresses.traverse([&](std::size_t position) -> int {
        bcm_l2_addr_t address = addresses.record(position);
        if (!test(address)) {
            return BCM_E_NONE;
        }
        address = change(address);
        Destination to;
        return resolve_address(address, &to);
    });
    if (rc != BCM_E_NONE) {
        return rc;
    }
    return addresses.traverse([&](std::size_t position) -> int {
        bcm_l2_addr_t address = addresses.record(position);
        if (!test(address)) {
            return BCM_E_NONE;
        }
        address = change(address);
        Destination to;
        resolve_address(address, &to);
        set_destination(&address, to);
        return l2_enter(sw, address, addresses.state(position), operation);
    });
}

template <class Test>
int remove_if(Switch &sw, uint32 flags, Test test)
{
    uint32 delete_flags = BCM_L2_DELETE_STATIC;
    if (flags & BCM_L2_REPLACE_NO_CALLBACKS) {
        delete_flags |= BCM_L2_DELETE_NO_CALLBACKS;
    }
    return l2_remove_if(sw, delete_flags, test);
}

bool touches_key(const bcm_l2_addr_t &mask)
{
    return mask.vid != 0
           || std::any_of(mask.mac, mask.mac + sizeof mask.mac, [](int byte) { return byte != 0; });
}

template <std::size_t words>
bool any_bit(const SHR_BITDCL (&vector)[words])
{
    return std::any_of(vector, vector + words, [](SHR_BITDCL word) { return word != 0; });
}

}  // namespace

extern "C" {

int sim_bcm_l2_replace(int unit, uint32 flags, bcm_l2_addr_t *match_addr, bcm_module_t new_module,
                       bcm_port_t new_port, bcm_trunk_t new_trunk)
{
    constexpr uint32 members =
        BCM_L2_REPLACE_MATCH_MAC | BCM_L2_REPLACE_MATCH_VLAN | BCM_L2_REPLACE_MATCH_DEST;
    constexpr uint32 known = members | BCM_L2_REPLACE_MATCH_STATIC | BCM_L2_REPLACE_DELETE
                             | BCM_L2_REPLACE_NEW_TRUNK | BCM_L2_REPLACE_NO_CALLBACKS;
    static_assert(uint32{BCM_L2_REPLACE_MATCH_MAC} == BCM_L2_TRAVERSE_MATCH_MAC
                      && uint32{BCM_L2_REPLACE_MATCH_VLAN} == BCM_L2_TRAVERSE_MATCH_VLAN
                      && uint32{BCM_L2_REPLACE_MATCH_DEST} == BCM_L2_TRAVERSE_MATCH_DEST,
                  "L2Match takes the flags of both");
    return begin(unit, ready<L2State>, given(match_addr)).then([&](Switch &sw, L2State &) -> int {
        if (!(flags & members) || (flags & ~known)) {
            return BCM_E_PARAM;
        }
        L2Match match;
        int rc = match.set(flags, *match_addr);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        const auto test = [&](const bcm_l2_addr_t &address) {
            return !spared(address, flags) && match(address);
        };
        if (flags & BCM_L2_REPLACE_DELETE) {
            return remove_if(sw, flags, test);
        }
        Destination to;
        rc = flags & BCM_L2_REPLACE_NEW_TRUNK ? resolve_trunk(new_trunk, &to)
                                              : resolve(new_module, new_port, &to);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        return replace_if(sw, operation_of(flags), test, [&](bcm_l2_addr_t address) {
            set_destination(&address, to);
            return address;
        });
    });
}

int sim_bcm_l2_replace_match(int unit, uint32 flags, bcm_l2_addr_t *match_addr, bcm_l2_addr_t *mask_addr,
                             bcm_l2_addr_t *replace_addr, bcm_l2_addr_t *replace_mask_addr)
{
    constexpr uint32 known =
        BCM_L2_REPLACE_MATCH_STATIC | BCM_L2_REPLACE_DELETE | BCM_L2_REPLACE_NO_CALLBACKS;
    return begin(unit, ready<L2State>, given(match_addr, mask_addr)).then([&](Switch &sw, L2State &) -> int {
        if (flags & ~known) {
            return BCM_E_PARAM;
        }
        const auto test = [&, wanted = *match_addr, mask = *mask_addr](const bcm_l2_addr_t &address) {
            return !spared(address, flags) && match_masked(address, wanted, mask);
        };
        if (flags & BCM_L2_REPLACE_DELETE) {
            return remove_if(sw, flags, test);
        }
        if (replace_addr == nullptr || replace_mask_addr == nullptr || touches_key(*replace_mask_addr)
            || (replace_addr->flags & replace_mask_addr->flags & ~l2_known_flags) != 0) {
            return BCM_E_PARAM;
        }
        return replace_if(sw, operation_of(flags), test,
                          [&, bits = *replace_addr, mask = *replace_mask_addr](const bcm_l2_addr_t &address) {
                              return merge_masked(address, bits, mask);
                          });
    });
}

int sim_bcm_l2_ring_replace(int unit, bcm_l2_ring_t *l2_ring)
{
    return begin(unit, ready<L2State>, given(l2_ring)).then([&](Switch &sw, L2State &) -> int {
        if (any_bit(l2_ring->vpn_vector)) {
            return BCM_E_UNAVAIL;
        }
        const bcm_l2_ring_t ring = *l2_ring;
        Destination ends[2];
        int rc = resolve(own_module, ring.port0, &ends[0]);
        if (rc == BCM_E_NONE) {
            rc = resolve(own_module, ring.port1, &ends[1]);
        }
        if (rc != BCM_E_NONE) {
            return rc;
        }
        const auto test = [&](const bcm_l2_addr_t &address) {
            return !(address.flags & BCM_L2_STATIC) && SHR_BITGET(ring.vlan_vector, address.vid)
                   && (goes_to(address, ends[0]) || goes_to(address, ends[1]));
        };
        return replace_if(sw, BCM_L2_CALLBACK_ADD, test, [&](bcm_l2_addr_t address) {
            set_destination(&address, goes_to(address, ends[0]) ? ends[1] : ends[0]);
            return address;
        });
    });
}

}  // extern "C"
