/// MAC addresses of the ports themselves.
#include "checked.h"
#include "sim.h"

using namespace sim;

extern "C" {

int sim_bcm_l2_mac_port_create(int unit, bcm_l2_mac_port_t *mac_port)
{
    return on_l2(unit, {mac_port}, [&](Switch &sw) -> int {
        Destination to;
        int rc = resolve(own_module, mac_port->port, &to);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        constexpr uint32 how = BCM_L2_MAC_PORT_WITH_ID | BCM_L2_MAC_PORT_REPLACE;
        bcm_l2_mac_port_t stored = *mac_port;
        stored.flags &= ~how;
        int id = mac_port->mac_port_id;
        rc = sw.l2.mac_ports.create(stored, mac_port->flags & BCM_L2_MAC_PORT_WITH_ID,
                                    mac_port->flags & BCM_L2_MAC_PORT_REPLACE, &id);
        if (rc == BCM_E_NONE) {
            mac_port->mac_port_id = id;
            stored.mac_port_id = id;
            sw.l2.mac_ports.put(id, stored);
        }
        return rc;
    });
}

int sim_bcm_l2_mac_port_destroy(int unit, int mac_port_id)
{
    return on_l2(unit, {}, [&](Switch &sw) { return sw.l2.mac_ports.erase(mac_port_id); });
}

int sim_bcm_l2_mac_port_destroy_all(int unit)
{
    return on_l2(unit, {}, [](Switch &sw) -> int {
        sw.l2.mac_ports.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_mac_port_get(int unit, int mac_port_id, bcm_l2_mac_port_t *mac_port)
{
    return on_l2(unit, {mac_port}, [&](Switch &sw) { return sw.l2.mac_ports.get(mac_port_id, mac_port); });
}

int sim_bcm_l2_mac_port_traverse(int unit, bcm_l2_mac_port_traverse_cb cb, void *user_data)
{
    return on_l2(unit, {}, [&](Switch &sw) -> int {
        if (cb == nullptr) {
            return BCM_E_PARAM;
        }
        return sw.l2.mac_ports.traverse(
            [&](int, bcm_l2_mac_port_t &mac_port) { return cb(unit, &mac_port, user_data); });
    });
}

}  // extern "C"
