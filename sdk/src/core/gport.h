/// What a gport names, as its kind tells.
#pragma once

#include <bcm/types.h>

namespace sim {

/// Whether it is a port, of this module or another, and not a trunk, queue, tunnel or the like.
inline bool names_port(bcm_gport_t gport)
{
    return !BCM_GPORT_IS_SET(gport) || BCM_GPORT_IS_LOCAL(gport) || BCM_GPORT_IS_MODPORT(gport)
           || BCM_GPORT_IS_SYSTEM_PORT(gport);
}

}  // namespace sim
