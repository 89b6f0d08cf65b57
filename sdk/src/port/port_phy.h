/// How functions of ports reach the PHY behind the port.
#pragma once

#include "phy_unit.h"

namespace sim {

/// call(soc_port_t) with the own port that is meant; BCM_E_UNIT, BCM_E_PARAM, BCM_E_PORT.
template <class Call>
int with_own_port(int unit, bcm_port_t port, Pointers pointers, Call call)
{
    return on_unit(unit, pointers, [&](Switch &) {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        return rc != BCM_E_NONE ? rc : static_cast<int>(call(own_port));
    });
}

/// Null for the CPU's port.
PhyPort *phy_of(const Switch &sw, int port);

/// Whether packets can pass: the port is enabled and, unless it is the CPU's, its MAC sees a link.
bool has_link(const Switch &sw, int port);

}  // namespace sim
