/// What layer 2 knows of ports: whose they are, and where a gport leads.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"

using namespace sim;

extern "C" {

int sim_bcm_l2_port_native(int unit, bcm_module_t modid, bcm_port_t port)
{
    return begin(unit, ready<L2State>).then([&](L2State &) -> int {
        Destination to;
        const int rc = resolve(modid, port, &to);
        return rc == BCM_E_NONE ? static_cast<int>(is_own_port(to)) : rc;
    });
}

int sim_bcm_l2_gport_forward_info_get(int unit, bcm_gport_t gport, bcm_l2_gport_forward_info_t *info)
{
    return begin(unit, ready<L2State>, given(info)).then([&](L2State &) -> int {
        Destination to;
        const int rc = resolve(own_module, gport, &to);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (to.kind != Destination::Kind::port) {
            return BCM_E_PARAM;
        }
        *info = {};
        if (is_own_port(to)) {
            BCM_GPORT_LOCAL_SET(info->phy_gport, to.id);
        } else {
            BCM_GPORT_MODPORT_SET(info->phy_gport, to.module, to.id);
        }
        return BCM_E_NONE;
    });
}

}  // extern "C"
