#include "status_name.h"

#include <bcm/error.h>

namespace sim {

const char *status_name(int status)
{
    switch (status) {
    case BCM_E_NONE:
        return "BCM_E_NONE";
    case BCM_E_INTERNAL:
        return "BCM_E_INTERNAL";
    case BCM_E_MEMORY:
        return "BCM_E_MEMORY";
    case BCM_E_UNIT:
        return "BCM_E_UNIT";
    case BCM_E_PARAM:
        return "BCM_E_PARAM";
    case BCM_E_EMPTY:
        return "BCM_E_EMPTY";
    case BCM_E_FULL:
        return "BCM_E_FULL";
    case BCM_E_NOT_FOUND:
        return "BCM_E_NOT_FOUND";
    case BCM_E_EXISTS:
        return "BCM_E_EXISTS";
    case BCM_E_TIMEOUT:
        return "BCM_E_TIMEOUT";
    case BCM_E_BUSY:
        return "BCM_E_BUSY";
    case BCM_E_FAIL:
        return "BCM_E_FAIL";
    case BCM_E_DISABLED:
        return "BCM_E_DISABLED";
    case BCM_E_BADID:
        return "BCM_E_BADID";
    case BCM_E_RESOURCE:
        return "BCM_E_RESOURCE";
    case BCM_E_CONFIG:
        return "BCM_E_CONFIG";
    case BCM_E_UNAVAIL:
        return "BCM_E_UNAVAIL";
    case BCM_E_INIT:
        return "BCM_E_INIT";
    case BCM_E_PORT:
        return "BCM_E_PORT";
    }
    return "unknown status";
}

}  // namespace sim
