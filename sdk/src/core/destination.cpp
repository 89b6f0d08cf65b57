#include "destination.h"

namespace sim {

namespace {

int resolve_module_port(int module, int port, Destination *to)
{
    if (module == -1) {
        module = own_module;
    }
    if (module < 0 || module > BCM_MODULE_MAX) {
        return BCM_E_BADID;
    }
    // What ports another module has is not known here.
    const int highest = module == own_module ? port_max : BCM_PBMP_PORT_MAX - 1;
    if (port < 0 || port > highest) {
        return BCM_E_PORT;
    }
    *to = {Destination::Kind::port, module, port};
    return BCM_E_NONE;
}

}  // namespace

int resolve_trunk(bcm_trunk_t trunk, Destination *to)
{
    if (trunk < 0 || trunk > BCM_TRUNK_MAX) {
        return BCM_E_BADID;
    }
    *to = {Destination::Kind::trunk, 0, trunk};
    return BCM_E_NONE;
}

int resolve(bcm_module_t module, bcm_port_t port, Destination *to)
{
    if (!BCM_GPORT_IS_SET(port)) {
        return resolve_module_port(module, port, to);
    }
    if (BCM_GPORT_IS_BLACK_HOLE(port)) {
        *to = {Destination::Kind::discard, 0, 0};
        return BCM_E_NONE;
    }
    if (BCM_GPORT_IS_LOCAL(port)) {
        return resolve_module_port(own_module, BCM_GPORT_VALUE(port), to);
    }
    if (BCM_GPORT_IS_MODPORT(port)) {
        return resolve_module_port(BCM_GPORT_MODPORT_MODID_GET(port), BCM_GPORT_MODPORT_PORT_GET(port), to);
    }
    if (BCM_GPORT_IS_TRUNK(port)) {
        return resolve_trunk(BCM_GPORT_TRUNK_GET(port), to);
    }
    // System ports are numbered as the physical ports are.
    if (BCM_GPORT_IS_SYSTEM_PORT(port)) {
        return resolve_module_port(own_module, BCM_GPORT_SYSTEM_PORT_ID_GET(port), to);
    }
    return BCM_E_PORT;
}

int resolve_own_port(bcm_port_t port, int *own_port)
{
    if (port >= 0 && port <= port_max) {
        *own_port = port;
        return BCM_E_NONE;
    }
    Destination to;
    if (resolve(own_module, port, &to) != BCM_E_NONE || !is_own_port(to)) {
        return BCM_E_PORT;
    }
    *own_port = to.id;
    return BCM_E_NONE;
}

bcm_pbmp_t front_ports()
{
    bcm_pbmp_t ports = {};
    for (int port = cpu_port + 1; port <= port_max; ++port) {
        BCM_PBMP_PORT_ADD(ports, port);
    }
    return ports;
}

}  // namespace sim
