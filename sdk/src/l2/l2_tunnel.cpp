/// The addresses at which tunnels end.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"
#include "vlan.h"

using namespace sim;

extern "C" {

int sim_bcm_l2_tunnel_add(int unit, bcm_mac_t mac, bcm_vlan_t vlan)
{
    return begin(unit, ready<L2State>, given(mac)).then([&](L2State &l2) -> int {
        if (!VlanTable::valid(vlan)) {
            return BCM_E_PARAM;
        }
        const L2Key key = l2_key(mac, vlan);
        if (l2.tunnels.find(key) != nullptr) {
            return BCM_E_EXISTS;
        }
        return l2.tunnels.put(key, true);
    });
}

int sim_bcm_l2_tunnel_delete(int unit, bcm_mac_t mac, bcm_vlan_t vlan)
{
    return begin(unit, ready<L2State>, given(mac)).then([&](L2State &l2) -> int {
        if (!VlanTable::valid(vlan)) {
            return BCM_E_PARAM;
        }
        return l2.tunnels.erase(l2_key(mac, vlan));
    });
}

int sim_bcm_l2_tunnel_delete_all(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        l2.tunnels.clear();
        return BCM_E_NONE;
    });
}

}  // extern "C"
