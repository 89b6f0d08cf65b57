/// The addresses at which tunnels end.
#include "checked.h"
#include "sim.h"

using namespace sim;

extern "C" {

int sim_bcm_l2_tunnel_add(int unit, bcm_mac_t mac, bcm_vlan_t vlan)
{
    return on_l2(unit, {mac}, [&](Switch &sw) -> int {
        if (!VlanTable::valid(vlan)) {
            return BCM_E_PARAM;
        }
        const L2Key key = l2_key(mac, vlan);
        if (sw.l2.tunnels.find(key) != nullptr) {
            return BCM_E_EXISTS;
        }
        return sw.l2.tunnels.put(key, true);
    });
}

int sim_bcm_l2_tunnel_delete(int unit, bcm_mac_t mac, bcm_vlan_t vlan)
{
    return on_l2(unit, {mac}, [&](Switch &sw) -> int {
        if (!VlanTable::valid(vlan)) {
            return BCM_E_PARAM;
        }
        return sw.l2.tunnels.erase(l2_key(mac, vlan));
    });
}

int sim_bcm_l2_tunnel_delete_all(int unit)
{
    return on_l2(unit, {}, [](Switch &sw) -> int {
        sw.l2.tunnels.clear();
        return BCM_E_NONE;
    });
}

}  // extern "C"
