/// Limits on the packets of a kind that a port lets in, singly and all in one record.
#include "begin.h"
#include "port.h"
#include "sim_rate.h"

#include <bcm/rate.h>

using namespace sim;

namespace {

using Kind = StormLimit Port::*;

int set(int unit, bcm_port_t port, Kind kind, int rate, uint32 flags)
{
    return begin(unit, settings_of(port)).then([&](Port &own) -> int {
        if (rate < 0 || (flags & ~static_cast<uint32>(BCM_RATE_ENABLE | BCM_RATE_MODE_BYTES))) {
            return BCM_E_PARAM;
        }
        own.*kind = {rate, flags};
        return BCM_E_NONE;
    });
}

int get(int unit, bcm_port_t port, Kind kind, int *rate, uint32 *flags)
{
    return begin(unit, given(rate, flags), settings_of(port)).then([&](Port &own) {
        *rate = (own.*kind).rate;
        *flags = (own.*kind).flags;
    });
}

struct KindInRecord {
    Kind kind;
    uint32 flag;
    int bcm_rate_limit_t::*rate;
};
constexpr KindInRecord kinds[] = {
    {&Port::unknown_unicast, BCM_RATE_DLF, &bcm_rate_limit_t::dlf_limit},
    {&Port::multicast, BCM_RATE_MCAST, &bcm_rate_limit_t::mcast_limit},
    {&Port::broadcast, BCM_RATE_BCAST, &bcm_rate_limit_t::bcast_limit},
};

}  // namespace

extern "C" {

int sim_bcm_rate_dlf_set(int unit, bcm_port_t port, int pps, uint32 flags)
{
    return set(unit, port, &Port::unknown_unicast, pps, flags);
}

int sim_bcm_rate_dlf_get(int unit, bcm_port_t port, int *pps, uint32 *flags)
{
    return get(unit, port, &Port::unknown_unicast, pps, flags);
}

int sim_bcm_rate_mcast_set(int unit, bcm_port_t port, int pps, uint32 flags)
{
    return set(unit, port, &Port::multicast, pps, flags);
}

int sim_bcm_rate_mcast_get(int unit, bcm_port_t port, int *pps, uint32 *flags)
{
    return get(unit, port, &Port::multicast, pps, flags);
}

int sim_bcm_rate_bcast_set(int unit, bcm_port_t port, int pps, uint32 flags)
{
    return set(unit, port, &Port::broadcast, pps, flags);
}

int sim_bcm_rate_bcast_get(int unit, bcm_port_t port, int *pps, uint32 *flags)
{
    return get(unit, port, &Port::broadcast, pps, flags);
}

// The record has packets/s only.
int sim_bcm_rate_limit_set(int unit, bcm_port_t port, bcm_rate_limit_t *limit)
{
    return begin(unit, given(limit), settings_of(port)).then([&](Port &own) -> int {
        uint32 known = 0;
        for (const KindInRecord &kind : kinds) {
            known |= kind.flag;
            if (limit->*kind.rate < 0) {
                return BCM_E_PARAM;
            }
        }
        if (limit->flags & ~known) {
            return BCM_E_PARAM;
        }
        for (const KindInRecord &kind : kinds) {
            own.*kind.kind = {limit->*kind.rate, limit->flags & kind.flag ? uint32{BCM_RATE_ENABLE} : 0};
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_rate_limit_get(int unit, bcm_port_t port, bcm_rate_limit_t *limit)
{
    return begin(unit, given(limit), settings_of(port)).then([&](Port &own) {
        *limit = {};
        for (const KindInRecord &kind : kinds) {
            limit->*kind.rate = (own.*kind.kind).rate;
            limit->flags |= (own.*kind.kind).flags & BCM_RATE_ENABLE ? kind.flag : 0;
        }
    });
}

}  // extern "C"
