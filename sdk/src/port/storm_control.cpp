/// Limits on the packets of a kind that a port lets in, singly and all in one record; and on all that comes.
#include "begin.h"
#include "port.h"
#include "sim_port.h"
#include "sim_rate.h"

#include <bcm/rate.h>

using namespace sim;

namespace {

using Kind = StormControl::Kind;

constexpr uint32 known_flags = BCM_RATE_ENABLE | BCM_RATE_MODE_BYTES;

/// Keeps a limit; the burst stays.
void set_limit(Switch &sw, int port, Kind kind, int rate, uint32 flags)
{
    StormControl &storms = storms_at(sw, port);
    storms.set(kind, {rate, flags, storms.limit(kind).burst});
    port_of(sw, port).limits_storms = storms.any();
}

int set(int unit, bcm_port_t port, Kind kind, int rate, uint32 flags)
{
    return begin(unit, own_port(port)).then([&](Switch &sw, int own) -> int {
        if (rate < 0 || (flags & ~known_flags)) {
            return BCM_E_PARAM;
        }
        set_limit(sw, own, kind, rate, flags);
        return BCM_E_NONE;
    });
}

int get(int unit, bcm_port_t port, Kind kind, int *rate, uint32 *flags)
{
    return begin(unit, given(rate, flags), own_port(port)).then([&](Switch &sw, int own) {
        const StormControl::Limit &limit = storms_at(sw, own).limit(kind);
        *rate = limit.rate;
        *flags = limit.flags;
    });
}

struct KindInRecord {
    Kind kind;
    uint32 flag;
    int bcm_rate_limit_t::*rate;
};
constexpr KindInRecord kinds[] = {
    {StormControl::unknown_unicast, BCM_RATE_DLF, &bcm_rate_limit_t::dlf_limit},
    {StormControl::multicast, BCM_RATE_MCAST, &bcm_rate_limit_t::mcast_limit},
    {StormControl::broadcast, BCM_RATE_BCAST, &bcm_rate_limit_t::bcast_limit},
};

/// The one kind that an argument means: BCM_E_PARAM.
auto kind_of(uint32 type)
{
    return [type](Switch &, auto next) -> int {
        for (const KindInRecord &each : kinds) {
            if (each.flag == type) {
                return next(each.kind);
            }
        }
        return BCM_E_PARAM;
    };
}

}  // namespace

extern "C" {

int sim_bcm_rate_dlf_set(int unit, bcm_port_t port, int pps, uint32 flags)
{
    return set(unit, port, StormControl::unknown_unicast, pps, flags);
}

int sim_bcm_rate_dlf_get(int unit, bcm_port_t port, int *pps, uint32 *flags)
{
    return get(unit, port, StormControl::unknown_unicast, pps, flags);
}

int sim_bcm_rate_mcast_set(int unit, bcm_port_t port, int pps, uint32 flags)
{
    return set(unit, port, StormControl::multicast, pps, flags);
}

int sim_bcm_rate_mcast_get(int unit, bcm_port_t port, int *pps, uint32 *flags)
{
    return get(unit, port, StormControl::multicast, pps, flags);
}

int sim_bcm_rate_bcast_set(int unit, bcm_port_t port, int pps, uint32 flags)
{
    return set(unit, port, StormControl::broadcast, pps, flags);
}

int sim_bcm_rate_bcast_get(int unit, bcm_port_t port, int *pps, uint32 *flags)
{
    return get(unit, port, StormControl::broadcast, pps, flags);
}

// The record has packets/s only.
int sim_bcm_rate_limit_set(int unit, bcm_port_t port, bcm_rate_limit_t *limit)
{
    return begin(unit, given(limit), own_port(port)).then([&](Switch &sw, int own) -> int {
        for (const KindInRecord &kind : kinds) {
            if (limit->*kind.rate < 0) {
                return BCM_E_PARAM;
            }
        }
        if (limit->flags & ~StormControl::all_kinds) {
            return BCM_E_PARAM;
        }
        for (const KindInRecord &kind : kinds) {
            set_limit(sw, own, kind.kind, limit->*kind.rate,
                      limit->flags & kind.flag ? uint32{BCM_RATE_ENABLE} : 0);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_rate_limit_get(int unit, bcm_port_t port, bcm_rate_limit_t *limit)
{
    return begin(unit, given(limit), own_port(port)).then([&](Switch &sw, int own) {
        *limit = {};
        for (const KindInRecord &kind : kinds) {
            const StormControl::Limit &kept = storms_at(sw, own).limit(kind.kind);
            limit->*kind.rate = kept.rate;
            limit->flags |= kept.flags & BCM_RATE_ENABLE ? kind.flag : 0;
        }
    });
}

int sim_bcm_rate_burst_set(int unit, bcm_port_t port, uint32 type, int packets)
{
    return begin(unit, own_port(port), kind_of(type)).then([&](Switch &sw, int own, Kind kind) -> int {
        if (packets < 0) {
            return BCM_E_PARAM;
        }
        StormControl &storms = storms_at(sw, own);
        const StormControl::Limit &limit = storms.limit(kind);
        storms.set(kind, {limit.rate, limit.flags, packets});
        return BCM_E_NONE;
    });
}

int sim_bcm_rate_burst_get(int unit, bcm_port_t port, uint32 type, int *packets)
{
    return begin(unit, given(packets), own_port(port), kind_of(type))
        .then([&](Switch &sw, int own, Kind kind) { *packets = storms_at(sw, own).limit(kind).burst; });
}

int sim_bcm_rate_type_set(int unit, bcm_port_t port, uint32 type_mask)
{
    return begin(unit, own_port(port)).then([&](Switch &sw, int own) -> int {
        if (type_mask & ~StormControl::all_kinds) {
            return BCM_E_PARAM;
        }
        storms_at(sw, own).share(type_mask);
        return BCM_E_NONE;
    });
}

int sim_bcm_rate_type_get(int unit, bcm_port_t port, uint32 *type_mask)
{
    return begin(unit, given(type_mask), own_port(port)).then([&](Switch &sw, int own) {
        *type_mask = storms_at(sw, own).sharing();
    });
}

int sim_bcm_port_rate_ingress_set(int unit, bcm_port_t port, uint32 kbits_sec, uint32 kbits_burst)
{
    return begin(unit, own_port(port)).then([&](Switch &sw, int own) {
        rate_in_at(sw, own).set(kbits_sec, kbits_burst);
        port_of(sw, own).limits_rate = kbits_sec != 0;
    });
}

int sim_bcm_port_rate_ingress_get(int unit, bcm_port_t port, uint32 *kbits_sec, uint32 *kbits_burst)
{
    return begin(unit, given(kbits_sec, kbits_burst), own_port(port)).then([&](Switch &sw, int own) {
        *kbits_sec = rate_in_at(sw, own).rate;
        *kbits_burst = rate_in_at(sw, own).burst;
    });
}

}  // extern "C"
