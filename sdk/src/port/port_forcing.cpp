/// Ports from which everything goes to one destination.
#include "begin.h"
#include "port.h"
#include "sim_port.h"

using namespace sim;

namespace {

int force(int unit, bcm_port_t port, bcm_port_t to, bool enable)
{
    return begin(unit, settings_of(port)).then([&](Switch &, Port &own) -> int {
        int own_to;
        const int rc = resolve_own_port(to, &own_to);
        // Where to does not matter to what is off.
        if (rc != BCM_E_NONE && enable) {
            return rc;
        }
        own.is_forced = enable;
        own.forced_to = enable ? own_to : 0;
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_port_force_forward_set(int unit, bcm_port_t port, bcm_port_t egr_port, int enable)
{
    return force(unit, port, egr_port, enable != 0);
}

int sim_bcm_port_force_forward_get(int unit, bcm_port_t port, bcm_port_t *egr_port, int *enable)
{
    return begin(unit, given(egr_port, enable), settings_of(port)).then([&](Port &own) {
        *enable = own.is_forced;
        *egr_port = own.forced_to;
    });
}

int sim_bcm_port_force_dest_set(int unit, bcm_port_t port, int enable, bcm_port_dest_info_t *dest)
{
    return begin(unit, given(dest), own_port(port)).then([&](int own) -> int {
        // Only ports, and packets keep their class.
        const bool is_plain = dest->flags == 0 && dest->priority == -1 && dest->dp == -1;
        return enable != 0 && !is_plain ? static_cast<int>(BCM_E_UNAVAIL)
                                        : force(unit, own, dest->gport, enable != 0);
    });
}

int sim_bcm_port_force_dest_get(int unit, bcm_port_t port, int *enable, bcm_port_dest_info_t *dest)
{
    return begin(unit, given(enable, dest), settings_of(port)).then([&](Port &own) {
        *enable = own.is_forced;
        *dest = {0, own.forced_to, -1, -1};
    });
}

}  // extern "C"
