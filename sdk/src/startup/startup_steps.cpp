#include "startup_steps.h"

#include "config.h"
#include "destination.h"
#include "sim_cosq.h"
#include "sim_field.h"
#include "sim_gport.h"
#include "sim_l2.h"
#include "sim_l3.h"
#include "sim_link.h"
#include "sim_phyctrl.h"
#include "sim_policer.h"
#include "sim_port.h"
#include "sim_rx.h"
#include "sim_stat.h"
#include "sim_stk.h"
#include "sim_vlan.h"
#include "switch.h"

#include <cstdio>
#include <string>

namespace sim {

namespace {

using Init = int (*)(int unit);

constexpr Init modules[] = {bcm_port_init,  bcm_vlan_init, bcm_l2_init,     bcm_l3_init,
                            bcm_field_init, bcm_stat_init, bcm_policer_init};

constexpr int link_scan_usecs = 250000;

/// Success if the chip has no such part.
int unless_unavailable(int rc)
{
    return rc == BCM_E_UNAVAIL ? static_cast<int>(BCM_E_NONE) : rc;
}

/// A port's value: of its own property, else of that for all ports.
int port_property(int unit, const std::string &name, int port, int *value)
{
    const int rc = integer_property(unit, name + "_" + mod_port_name(unit, -1, port), value);
    return rc == BCM_E_NOT_FOUND ? integer_property(unit, name, value) : rc;
}

/// Hands a port's property, if there is one, to what sets it.
template <class Set>
int apply_to_port(int unit, const char *name, int port, Set set)
{
    int value = 0;
    const int rc = port_property(unit, name, port, &value);
    if (rc != BCM_E_NONE) {
        return rc == BCM_E_NOT_FOUND ? BCM_E_NONE : rc;
    }
    if (set(unit, port, value) < 0) {
        std::fprintf(stderr, "unit %d: port %s: %s=%d is refused\n", unit, mod_port_name(unit, -1, port),
                     name, value);
        return BCM_E_CONFIG;
    }
    return BCM_E_NONE;
}

int set_learning(int unit, int port, int learn)
{
    if (learn != 0 && learn != 1) {
        return BCM_E_PARAM;
    }
    return bcm_port_learn_set(unit, port, BCM_PORT_LEARN_FWD | (learn ? BCM_PORT_LEARN_ARL : 0));
}

int set_negotiation(int unit, int port, int negotiate)
{
    if (negotiate != 0 && negotiate != 1) {
        return BCM_E_PARAM;
    }
    return soc_phyctrl_auto_negotiate_set(unit, port, negotiate);
}

int set_enabled(int unit, int port, int enable)
{
    if (enable != 0 && enable != 1) {
        return BCM_E_PARAM;
    }
    return bcm_port_enable_set(unit, port, enable);
}

int apply_to_ports(int unit)
{
    for (int port = cpu_port + 1; port <= port_max; ++port) {
        int rc = apply_to_port(unit, "port_init_speed", port, bcm_port_speed_set);
        rc = rc < 0 ? rc : apply_to_port(unit, "port_init_autoneg", port, set_negotiation);
        rc = rc < 0 ? rc : apply_to_port(unit, "port_init_enable", port, set_enabled);
        rc = rc < 0 ? rc : apply_to_port(unit, "port_init_learn", port, set_learning);
        if (rc < 0) {
            return rc;
        }
    }
    return BCM_E_NONE;
}

}  // namespace

int init_modules(int unit, bool queueing)
{
    for (const Init module : modules) {
        const int rc = unless_unavailable(module(unit));
        if (rc < 0) {
            return rc;
        }
    }
    return queueing ? unless_unavailable(bcm_cosq_init(unit)) : static_cast<int>(BCM_E_NONE);
}

int init_stacking(int unit, int module)
{
    const int rc = unless_unavailable(bcm_stk_init(unit));
    return rc < 0 || module < 0 ? rc : unless_unavailable(bcm_stk_modid_set(unit, module));
}

int init_reception(int unit)
{
    return unless_unavailable(bcm_rx_init(unit));
}

int init_link_scan(int unit)
{
    return unless_unavailable(bcm_linkscan_enable_set(unit, link_scan_usecs));
}

int apply_properties(int unit)
{
    int seconds;
    int rc = integer_property(unit, "l2_age_timer", &seconds);
    if (rc == BCM_E_NONE) {
        rc = bcm_l2_age_timer_set(unit, seconds) < 0 ? BCM_E_CONFIG : BCM_E_NONE;
    }
    return rc < 0 && rc != BCM_E_NOT_FOUND ? rc : apply_to_ports(unit);
}

}  // namespace sim
