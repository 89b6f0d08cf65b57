/// Settings of single ports.
#include "begin.h"
#include "driver_registers.h"
#include "front_port.h"
#include "phy_settings.h"
#include "port.h"
#include "sim_port.h"
#include "vlan.h"

#include <algorithm>
#include <iterator>

using namespace sim;

namespace {

int number_of(Switch &sw, const Port &own)
{
    return static_cast<int>(&own - &port_of(sw, 0));
}

PhyPort *phy_of(Switch &sw, const Port &own)
{
    return phy_of(sw, number_of(sw, own));
}

constexpr int speeds[] = {10, 100, 1000, 10000, 25000, 40000, 50000, 100000};

bool is_port_speed(int speed)
{
    return std::find(std::begin(speeds), std::end(speeds), speed) != std::end(speeds);
}

}  // namespace

bool sim::can_start_at(int unit, int port, int speed)
{
    const PhyPort started = restarted(unit, port);
    return is_port_speed(speed) && started.outer().can_be_forced_to(started.cable, speed);
}

extern "C" {

int sim_bcm_port_enable_set(int unit, bcm_port_t port, int enable)
{
    return begin(unit, settings_of(port)).then([&](Switch &sw, Port &own) -> int {
        sw.of<PortState>().enabled.put(number_of(sw, own), enable != 0);
        PhyPort *phy = phy_of(sw, own);
        if (phy != nullptr) {
            set_enabled(*phy, enable != 0);
        }
        write_registers(sw, number_of(sw, own));
        // Who is told may do anything, detach the unit too.
        if (phy != nullptr) {
            tell_changes(unit, *phy);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_port_enable_get(int unit, bcm_port_t port, int *enable)
{
    return begin(unit, given(enable), own_port(port)).then([&](Switch &sw, int own) -> int {
        *enable = sw.of<PortState>().enabled.has(own);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_link_status_get(int unit, bcm_port_t port, int *status)
{
    return begin(unit, given(status), settings_of(port)).then([&](Switch &sw, Port &own) -> int {
        *status = has_link(sw, number_of(sw, own));
        return BCM_E_NONE;
    });
}

int sim_bcm_port_speed_set(int unit, bcm_port_t port, int speed)
{
    return begin(unit, settings_of(port)).then([&](Switch &sw, Port &own) -> int {
        if (!is_port_speed(speed) || speed > own.speed_max) {
            return BCM_E_PARAM;
        }
        int rc = BCM_E_NONE;
        PhyPort *phy = phy_of(sw, own);
        if (phy != nullptr) {
            rc = force_speed(*phy, phy->outer(), speed);
        } else {
            own.speed = speed;
        }
        write_registers(sw, number_of(sw, own));
        if (phy != nullptr) {
            tell_changes(unit, *phy);
        }
        return rc;
    });
}

int sim_bcm_port_speed_get(int unit, bcm_port_t port, int *speed)
{
    return begin(unit, given(speed), settings_of(port)).then([&](Switch &sw, Port &own) -> int {
        *speed = speed_of(sw, number_of(sw, own));
        return BCM_E_NONE;
    });
}

int sim_bcm_port_speed_max(int unit, bcm_port_t port, int *speed)
{
    return begin(unit, given(speed), settings_of(port)).then([&](Port &own) -> int {
        *speed = own.speed_max;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_pause_set(int unit, bcm_port_t port, int pause_tx, int pause_rx)
{
    return begin(unit, settings_of(port)).then([&](Port &own) -> int {
        own.pause_tx = pause_tx != 0;
        own.pause_rx = pause_rx != 0;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_pause_get(int unit, bcm_port_t port, int *pause_tx, int *pause_rx)
{
    return begin(unit, given(pause_tx, pause_rx), settings_of(port)).then([&](Port &own) -> int {
        *pause_tx = own.pause_tx;
        *pause_rx = own.pause_rx;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_pause_addr_set(int unit, bcm_port_t port, bcm_mac_t mac)
{
    return begin(unit, given(mac), settings_of(port)).then([&](Port &own) -> int {
        std::copy_n(mac, own.pause_address.size(), own.pause_address.begin());
        return BCM_E_NONE;
    });
}

int sim_bcm_port_pause_addr_get(int unit, bcm_port_t port, bcm_mac_t mac)
{
    return begin(unit, given(mac), settings_of(port)).then([&](Port &own) -> int {
        std::copy(own.pause_address.begin(), own.pause_address.end(), mac);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_pause_sym_set(int unit, bcm_port_t port, int pause)
{
    return sim_bcm_port_pause_set(unit, port, pause, pause);
}

int sim_bcm_port_pause_sym_get(int unit, bcm_port_t port, int *pause)
{
    return begin(unit, given(pause), settings_of(port)).then([&](Port &own) -> int {
        *pause = own.pause_tx && own.pause_rx;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_untagged_vlan_set(int unit, bcm_port_t port, bcm_vlan_t vid)
{
    return begin(unit, settings_of(port)).then([&](Switch &sw, Port &own) -> int {
        if (!VlanTable::valid(vid)) {
            return BCM_E_PARAM;
        }
        if (!vlans_of(sw).has(vid)) {
            return BCM_E_NOT_FOUND;
        }
        own.untagged_vlan = vid;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_untagged_vlan_get(int unit, bcm_port_t port, bcm_vlan_t *vid_ptr)
{
    return begin(unit, given(vid_ptr), settings_of(port)).then([&](Port &own) -> int {
        *vid_ptr = own.untagged_vlan;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_learn_set(int unit, bcm_port_t port, uint32 flags)
{
    constexpr uint32 known =
        BCM_PORT_LEARN_ARL | BCM_PORT_LEARN_CPU | BCM_PORT_LEARN_FWD | BCM_PORT_LEARN_PENDING;
    return begin(unit, settings_of(port)).then([&](Port &own) -> int {
        if (flags & ~known) {
            return BCM_E_PARAM;
        }
        own.learn = flags;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_learn_modify(int unit, bcm_port_t port, uint32 add, uint32 remove)
{
    return begin(unit, settings_of(port)).then([&](Port &own) {
        return sim_bcm_port_learn_set(unit, port, (own.learn | add) & ~remove);
    });
}

int sim_bcm_port_learn_get(int unit, bcm_port_t port, uint32 *flags)
{
    return begin(unit, given(flags), settings_of(port)).then([&](Port &own) -> int {
        *flags = own.learn;
        return BCM_E_NONE;
    });
}

}  // extern "C"
