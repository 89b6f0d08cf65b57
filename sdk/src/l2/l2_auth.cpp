/// Authorised addresses: the one port on which each may appear.
#include "checked.h"
#include "sim.h"

using namespace sim;

namespace {

/// The checks that every function on one authorised address makes, then body(table, key).
template <class Body>
int on_address(int unit, bcm_l2_auth_addr_t *addr, Body body)
{
    return on_l2(unit, {addr}, [&](Switch &sw) -> int {
        if (!VlanTable::valid(addr->vlan)) {
            return BCM_E_PARAM;
        }
        return body(sw.l2.authorised, l2_key(addr->sa_mac, addr->vlan));
    });
}

}  // namespace

extern "C" {

int sim_bcm_l2_auth_add(int unit, bcm_l2_auth_addr_t *addr)
{
    return on_address(unit, addr, [&](auto &table, L2Key key) {
        bcm_l2_auth_addr_t stored = *addr;
        const int rc = resolve_own_port(addr->src_port, &stored.src_port);
        return rc == BCM_E_NONE ? table.put(key, stored) : rc;
    });
}

int sim_bcm_l2_auth_get(int unit, bcm_l2_auth_addr_t *addr)
{
    return on_address(unit, addr, [&](auto &table, L2Key key) { return table.get(key, addr); });
}

int sim_bcm_l2_auth_delete(int unit, bcm_l2_auth_addr_t *addr)
{
    return on_address(unit, addr, [](auto &table, L2Key key) { return table.erase(key); });
}

int sim_bcm_l2_auth_delete_all(int unit)
{
    return on_l2(unit, {}, [](Switch &sw) -> int {
        sw.l2.authorised.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_auth_traverse(int unit, bcm_l2_auth_traverse_cb trav_fn, void *user_data)
{
    return on_l2(unit, {}, [&](Switch &sw) -> int {
        if (trav_fn == nullptr) {
            return BCM_E_PARAM;
        }
        return sw.l2.authorised.traverse(
            [&](L2Key, bcm_l2_auth_addr_t &addr) { return trav_fn(unit, &addr, user_data); });
    });
}

}  // extern "C"
