/// Single entries of the address table, and lists of them.
#include "begin.h"
#include "l2.h"
#include "l2_match.h"
#include "sim_l2.h"
#include "vlan.h"

using namespace sim;

namespace {

int add(Switch &sw, bcm_l2_addr_t address)
{
    const int rc = l2_check(sw, &address);
    return rc == BCM_E_NONE ? l2_enter(sw, address, l2_recent, BCM_L2_CALLBACK_ADD) : rc;
}

/// Position of an entry; BCM_E_PARAM, BCM_E_NOT_FOUND.
int find(Switch &sw, const unsigned char *mac, bcm_vlan_t vid, std::size_t *position)
{
    if (!VlanTable::valid(vid)) {
        return BCM_E_PARAM;
    }
    *position = l2_of(sw).addresses.find(l2_key(mac, vid));
    return *position != L2Table::none ? BCM_E_NONE : BCM_E_NOT_FOUND;
}

int remove(Switch &sw, const unsigned char *mac, bcm_vlan_t vid)
{
    std::size_t position;
    const int rc = find(sw, mac, vid, &position);
    if (rc == BCM_E_NONE) {
        l2_remove(sw, position, BCM_L2_CALLBACK_DELETE);
    }
    return rc;
}

/// Applies change(sw, address) to each, notes each result, and returns the first error.
template <class Change>
int change_each(int unit, int count, bcm_l2_addr_t *addresses, int *results, Change change)
{
    return begin(unit, ready<L2State>, given(addresses)).then([&](Switch &sw, L2State &) -> int {
        if (count < 0) {
            return BCM_E_PARAM;
        }
        int first_error = BCM_E_NONE;
        for (int i = 0; i < count; ++i) {
            const int rc = change(sw, addresses[i]);
            if (results != nullptr) {
                results[i] = rc;
            }
            if (first_error == BCM_E_NONE) {
                first_error = rc;
            }
        }
        return first_error;
    });
}

}  // namespace

extern "C" {

int sim_bcm_l2_addr_add(int unit, bcm_l2_addr_t *l2addr)
{
    return begin(unit, ready<L2State>, given(l2addr)).then([&](Switch &sw, L2State &) {
        return add(sw, *l2addr);
    });
}

int sim_bcm_l2_addr_delete(int unit, bcm_mac_t mac, bcm_vlan_t vid)
{
    return begin(unit, ready<L2State>, given(mac)).then([&](Switch &sw, L2State &) {
        return remove(sw, mac, vid);
    });
}

int sim_bcm_l2_addr_get(int unit, bcm_mac_t mac_addr, bcm_vlan_t vid, bcm_l2_addr_t *l2addr)
{
    return begin(unit, ready<L2State>, given(mac_addr, l2addr)).then([&](Switch &sw, L2State &l2) {
        std::size_t position;
        const int rc = find(sw, mac_addr, vid, &position);
        if (rc == BCM_E_NONE) {
            *l2addr = l2.addresses.record(position);
        }
        return rc;
    });
}

int sim_bcm_l2_addr_multi_add(int unit, int count, bcm_l2_addr_t *addr_arr, int *status_arr)
{
    return change_each(unit, count, addr_arr, status_arr, add);
}

int sim_bcm_l2_addr_multi_delete(int unit, int count, bcm_l2_addr_t *addr_arr, int *status_arr)
{
    return change_each(unit, count, addr_arr, status_arr, [](Switch &sw, const bcm_l2_addr_t &address) {
        return remove(sw, address.mac, address.vid);
    });
}

int sim_bcm_l2_conflict_get(int unit, bcm_l2_addr_t *addr, bcm_l2_addr_t *cf_array, int cf_max, int *cf_count)
{
    return begin(unit, ready<L2State>, given(addr, cf_count)).then([&](L2State &l2) -> int {
        if (cf_max < 0 || (cf_max > 0 && cf_array == nullptr) || !VlanTable::valid(addr->vid)) {
            return BCM_E_PARAM;
        }
        const L2Key key = l2_key(addr->mac, addr->vid);
        int count = 0;
        l2.addresses.traverse([&](std::size_t position) -> int {
            const L2Key other = l2.addresses.key(position);
            if (count < cf_max && other != key && L2Table::bucket(other) == L2Table::bucket(key)) {
                cf_array[count++] = l2.addresses.record(position);
            }
            return BCM_E_NONE;
        });
        *cf_count = count;
        return BCM_E_NONE;
    });
}

}  // extern "C"
