/// The checks with which nearly every function begins, in their order: unit, module, pointers, port.
#pragma once

#include "switch.h"

#include <bcm/error.h>

#include <algorithm>
#include <initializer_list>

namespace sim {

/// Arguments that must not be null.
using Pointers = std::initializer_list<const void *>;

inline bool any_null(Pointers pointers)
{
    return std::any_of(pointers.begin(), pointers.end(), [](const void *p) { return p == nullptr; });
}

/// body(Switch &) on the unit; BCM_E_UNIT, BCM_E_PARAM.
template <class Body>
int on_unit(int unit, Pointers pointers, Body body)
{
    Switch *found = attached(unit);
    if (found == nullptr) {
        return BCM_E_UNIT;
    }
    return any_null(pointers) ? BCM_E_PARAM : body(*found);
}

/// body(Switch &, Port &) on a port of the unit; BCM_E_UNIT, BCM_E_PARAM, BCM_E_PORT.
template <class Body>
int on_port(int unit, bcm_port_t port, Pointers pointers, Body body)
{
    return on_unit(unit, pointers, [&](Switch &sw) {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        return rc != BCM_E_NONE ? rc : body(sw, sw.ports[static_cast<std::size_t>(own_port)]);
    });
}

/// body(Switch &) on a unit whose layer 2 is initialised; BCM_E_UNIT, BCM_E_INIT, BCM_E_PARAM.
template <class Body>
int on_l2(int unit, Pointers pointers, Body body)
{
    return on_unit(unit, {}, [&](Switch &sw) {
        if (!sw.l2.initialised) {
            return static_cast<int>(BCM_E_INIT);
        }
        const SwitchesInUse in_use;
        return any_null(pointers) ? static_cast<int>(BCM_E_PARAM) : static_cast<int>(body(sw));
    });
}

}  // namespace sim
