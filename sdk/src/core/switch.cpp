#include "switch.h"

#include "chip.h"
#include "phy_unit.h"
#include "soc_control.h"

#include <memory>
#include <utility>
#include <vector>

namespace sim {

namespace {

using Switches = std::array<std::unique_ptr<Switch>, unit_max>;

Switches *first_attached()
{
    Switches *switches = new Switches;
    switches->front() = std::make_unique<Switch>(0);
    return switches;
}

/// The place of a unit, or null if there can be no such unit.
std::unique_ptr<Switch> *place(int unit)
{
    // Made on first use, so that it is there for other libraries' start-up code too; never destroyed, so
    // that it is still there for their clean-up.
    static Switches &switches = *first_attached();
    return unit >= 0 && unit < unit_max ? &switches[static_cast<std::size_t>(unit)] : nullptr;
}

int uses = 0;

/// Switches without a unit that somebody may still be working on.
std::vector<std::unique_ptr<Switch>> &retired()
{
    static auto &switches = *new std::vector<std::unique_ptr<Switch>>;
    return switches;
}

void retire(std::unique_ptr<Switch> &old)
{
    if (old != nullptr && uses != 0) {
        // What goes through the tables comes to an end, and nobody is told of a unit that is gone.
        old->l2.clear();
        old->l2.settings.subscribers.clear();
        retired().push_back(std::move(old));
    }
    old.reset();
}

}  // namespace

bcm_pbmp_t front_ports()
{
    bcm_pbmp_t ports = {};
    for (int port = cpu_port + 1; port <= port_max; ++port) {
        BCM_PBMP_PORT_ADD(ports, port);
    }
    return ports;
}

Switch::Switch(int unit_number) : unit(unit_number), vlans(front_ports())
{
    reset_ports();
}

void Switch::reset_ports()
{
    ports.fill({});
    ports[cpu_port].speed_max = cpu_speed_max;
    ports[cpu_port].speed = cpu_speed_max;
    for (int port = first_copper_port; port <= last_copper_port; ++port) {
        ports[static_cast<std::size_t>(port)].speed_max = copper_kind.media[0].speed_max;
    }
}

Switch *attached(int unit)
{
    std::unique_ptr<Switch> *found = place(unit);
    return found != nullptr ? found->get() : nullptr;
}

bool attach(int unit)
{
    std::unique_ptr<Switch> *free = place(unit);
    if (free != nullptr) {
        retire(*free);
        *free = std::make_unique<Switch>(unit);
        start_phys(unit);
        renew_chip(unit);
        publish_control(unit, true);
    }
    return free != nullptr;
}

bool detach(int unit)
{
    std::unique_ptr<Switch> *found = place(unit);
    const bool was_attached = found != nullptr && *found != nullptr;
    if (was_attached) {
        publish_control(unit, false);
        stop_phys(unit);
        leave_chip(unit);
        retire(*found);
    }
    return was_attached;
}

SwitchesInUse::SwitchesInUse()
{
    ++uses;
}

SwitchesInUse::~SwitchesInUse()
{
    if (--uses == 0) {
        retired().clear();
    }
}

}  // namespace sim
