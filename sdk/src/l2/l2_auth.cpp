/// Authorised addresses: the one port on which each may appear.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"
#include "vlan.h"

using namespace sim;

namespace {

/// The key of an authorised address: BCM_E_PARAM.
auto key_of(const bcm_l2_auth_addr_t *addr)
{
    return [addr](Switch &, auto next) -> int {
        if (!VlanTable::valid(addr->vlan)) {
            return BCM_E_PARAM;
        }
        const L2Key key = l2_key(addr->sa_mac, addr->vlan);
        return next(key);
    };
}

}  // namespace

extern "C" {

int sim_bcm_l2_auth_add(int unit, bcm_l2_auth_addr_t *addr)
{
    return begin(unit, ready<L2State>, given(addr), key_of(addr)).then([&](L2State &l2, L2Key key) {
        bcm_l2_auth_addr_t stored = *addr;
        const int rc = resolve_own_port(addr->src_port, &stored.src_port);
        return rc == BCM_E_NONE ? l2.authorised.put(key, stored) : rc;
    });
}

int sim_bcm_l2_auth_get(int unit, bcm_l2_auth_addr_t *addr)
{
    return begin(unit, ready<L2State>, given(addr), key_of(addr)).then([&](L2State &l2, L2Key key) {
        return l2.authorised.get(key, addr);
    });
}

int sim_bcm_l2_auth_delete(int unit, bcm_l2_auth_addr_t *addr)
{
    return begin(unit, ready<L2State>, given(addr), key_of(addr)).then([](L2State &l2, L2Key key) {
        return l2.authorised.erase(key);
    });
}

int sim_bcm_l2_auth_delete_all(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        l2.authorised.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_auth_traverse(int unit, bcm_l2_auth_traverse_cb trav_fn, void *user_data)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        if (trav_fn == nullptr) {
            return BCM_E_PARAM;
        }
        return l2.authorised.traverse(
            [&](L2Key, bcm_l2_auth_addr_t &addr) { return trav_fn(unit, &addr, user_data); });
    });
}

}  // extern "C"
