#include "switch.h"

#include <memory>

namespace sim {

namespace {

constexpr int unit_max = 16;

bcm_pbmp_t front_ports()
{
    bcm_pbmp_t ports = {};
    for (int port = cpu_port + 1; port <= port_max; ++port) {
        BCM_PBMP_PORT_ADD(ports, port);
    }
    return ports;
}

struct Units {
    Units() { switches[0] = std::make_unique<Switch>(0); }
    std::array<std::unique_ptr<Switch>, unit_max> switches;
};

}  // namespace

Switch::Switch(int unit_number) : unit(unit_number), vlans(front_ports())
{
    ports[cpu_port].speed_max = cpu_speed_max;
    ports[cpu_port].speed = cpu_speed_max;
}

Switch *attached(int unit)
{
    // Made on first use, so that it is there for other libraries' start-up code too; never destroyed, so
    // that it is still there for their clean-up.
    static Units &units = *new Units;
    if (unit < 0 || unit >= unit_max) {
        return nullptr;
    }
    return units.switches[static_cast<std::size_t>(unit)].get();
}

}  // namespace sim
