/// MAC addresses of the ports themselves.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"

using namespace sim;

extern "C" {

int sim_bcm_l2_mac_port_create(int unit, bcm_l2_mac_port_t *mac_port)
{
    return begin(unit, ready<L2State>, given(mac_port)).then([&](L2State &l2) -> int {
        Destination to;
        int rc = resolve(own_module, mac_port->port, &to);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        constexpr uint32 how = BCM_L2_MAC_PORT_WITH_ID | BCM_L2_MAC_PORT_REPLACE;
        bcm_l2_mac_port_t stored = *mac_port;
        stored.flags &= ~how;
        int id = mac_port->mac_port_id;
        rc = l2.mac_ports.create(stored, mac_port->flags & BCM_L2_MAC_PORT_WITH_ID,
                                 mac_port->flags & BCM_L2_MAC_PORT_REPLACE, &id);
        if (rc == BCM_E_NONE) {
            mac_port->mac_port_id = id;
            stored.mac_port_id = id;
            l2.mac_ports.put(id, stored);
        }
        return rc;
    });
}

int sim_bcm_l2_mac_port_destroy(int unit, int mac_port_id)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) { return l2.mac_ports.erase(mac_port_id); });
}

int sim_bcm_l2_mac_port_destroy_all(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        l2.mac_ports.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_mac_port_get(int unit, int mac_port_id, bcm_l2_mac_port_t *mac_port)
{
    return begin(unit, ready<L2State>, given(mac_port)).then([&](L2State &l2) {
        return l2.mac_ports.get(mac_port_id, mac_port);
    });
}

int sim_bcm_l2_mac_port_traverse(int unit, bcm_l2_mac_port_traverse_cb cb, void *user_data)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        if (cb == nullptr) {
            return BCM_E_PARAM;
        }
        return l2.mac_ports.traverse(
            [&](int, bcm_l2_mac_port_t &mac_port) { return cb(unit, &mac_port, user_data); });
    });
}

}  // extern "C"
