/// Where packets go: a port of some module, a trunk, a multicast group, or nowhere.
#pragma once

#include <bcm/error.h>
#include <bcm/types.h>

namespace sim {

/// Front ports are 1..port_max, port 0 is the CPU. The unit is module 0 of its stack.
constexpr int cpu_port = 0;
constexpr int port_max = 64;
constexpr int own_module = 0;

struct Destination {
    enum class Kind { port, trunk, group, discard };
    Kind kind;
    int module;  // of a port, else 0
    int id;      // port, trunk or group, else 0
};

inline bool operator==(const Destination &a, const Destination &b)
{
    return a.kind == b.kind && a.module == b.module && a.id == b.id;
}

inline bool is_own_port(const Destination &to)
{
    return to.kind == Destination::Kind::port && to.module == own_module;
}

/// A port of a module (own_module or -1 for the unit itself), or a gport of any kind.
/// BCM_E_PORT: no such port; BCM_E_BADID: no such module or trunk.
int resolve(bcm_module_t module, bcm_port_t port, Destination *to);

/// The same for a port argument that has to mean a port of this unit; else BCM_E_PORT.
int resolve_own_port(bcm_port_t port, int *own_port);

/// BCM_E_BADID: no such trunk.
int resolve_trunk(bcm_trunk_t trunk, Destination *to);

/// All ports but the CPU's.
bcm_pbmp_t front_ports();

}  // namespace sim
