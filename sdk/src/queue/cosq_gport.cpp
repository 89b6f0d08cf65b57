/// Queues by themselves: their rates, sizes, whether they send, and the groups that name them; and rates of ports.
#include "begin.h"
#include "queue.h"
#include "queue_arguments.h"
#include "sim_cosq.h"
#include "sim_port.h"

#include <algorithm>

using namespace sim;

namespace {

constexpr uint32 known_bandwidth_flags = BCM_COSQ_BW_PACKET_MODE;

constexpr int first_group = BCM_GPORT_MAKE(19, 1);
constexpr int groups_max = 1024;

int set_bandwidth(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 least, uint32 most, uint32 flags)
{
    return begin(unit, ready<QueueState>, queues(gport, cosq))
        .then([&](Switch &sw, QueueState &, const QueueRange &range) -> int {
            if ((flags & ~known_bandwidth_flags) || (most != 0 && least > most)) {
                return flags & BCM_COSQ_BW_MIN_SLOW_START ? BCM_E_UNAVAIL : BCM_E_PARAM;
            }
            for (Queue &queue : range) {
                queue.least.set(least, 0, flags & BCM_COSQ_BW_PACKET_MODE);
                queue.most.set(most, 0, flags & BCM_COSQ_BW_PACKET_MODE);
            }
            change_limits(sw, range.number);
            return BCM_E_NONE;
        });
}

int get_bandwidth(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 *least, uint32 *most,
                  uint32 *flags)
{
    return begin(unit, ready<QueueState>, given(least, most, flags), queues(gport, cosq))
        .then([&](QueueState &, const QueueRange &range) {
            const Queue &queue = *range.begin();
            *least = queue.least.rate;
            *most = queue.most.rate;
            *flags = queue.most.counts_packets ? BCM_COSQ_BW_PACKET_MODE : 0;
        });
}

int set_rate(int unit, bcm_port_t port, uint32 rate, uint32 burst, bool by_packets)
{
    return begin(unit, own_port(port)).then([&](Switch &sw, int own) {
        queues_at(sw, own).shaper.set(rate, burst, by_packets);
        change_limits(sw, own);
    });
}

int get_rate(int unit, bcm_port_t port, uint32 *rate, uint32 *burst, bool by_packets)
{
    return begin(unit, given(rate, burst), own_port(port)).then([&](Switch &sw, int own) {
        const Shaper &shaper = queues_at(sw, own).shaper;
        const bool is_said = shaper.counts_packets == by_packets;
        *rate = is_said ? shaper.rate : 0;
        *burst = is_said ? shaper.burst : 0;
    });
}

/// A queue group: BCM_E_NOT_FOUND.
auto group_of(bcm_gport_t gport)
{
    return [gport](Switch &sw, auto next) -> int {
        auto &groups = queues_of(sw).groups;
        const auto found = groups.find(gport);
        return found != groups.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

}  // namespace

extern "C" {

int sim_bcm_cosq_port_bandwidth_set(int unit, bcm_port_t port, bcm_cos_queue_t cosq, uint32 kbits_sec_min,
                                    uint32 kbits_sec_max, uint32 flags)
{
    return set_bandwidth(unit, port, cosq, kbits_sec_min, kbits_sec_max, flags);
}

int sim_bcm_cosq_port_bandwidth_get(int unit, bcm_port_t port, bcm_cos_queue_t cosq, uint32 *kbits_sec_min,
                                    uint32 *kbits_sec_max, uint32 *flags)
{
    return get_bandwidth(unit, port, cosq, kbits_sec_min, kbits_sec_max, flags);
}

int sim_bcm_cosq_gport_bandwidth_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 kbits_sec_min,
                                     uint32 kbits_sec_max, uint32 flags)
{
    return set_bandwidth(unit, gport, cosq, kbits_sec_min, kbits_sec_max, flags);
}

int sim_bcm_cosq_gport_bandwidth_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 *kbits_sec_min,
                                     uint32 *kbits_sec_max, uint32 *flags)
{
    return get_bandwidth(unit, gport, cosq, kbits_sec_min, kbits_sec_max, flags);
}

int sim_bcm_cosq_gport_size_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 bytes_min,
                                uint32 bytes_max)
{
    return begin(unit, ready<QueueState>, queues(gport, cosq))
        .then([&](QueueState &, const QueueRange &range) -> int {
            if (bytes_min > bytes_max) {
                return BCM_E_PARAM;
            }
            for (Queue &queue : range) {
                queue.bytes_min = bytes_min;
                queue.bytes_max = bytes_max;
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_cosq_gport_size_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, uint32 *bytes_min,
                                uint32 *bytes_max)
{
    return begin(unit, ready<QueueState>, given(bytes_min, bytes_max), queues(gport, cosq))
        .then([&](QueueState &, const QueueRange &range) {
            *bytes_min = range.begin()->bytes_min;
            *bytes_max = range.begin()->bytes_max;
        });
}

int sim_bcm_cosq_gport_enable_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int enable)
{
    return begin(unit, ready<QueueState>, queues(gport, cosq))
        .then([&](Switch &sw, QueueState &, const QueueRange &range) {
            for (Queue &queue : range) {
                queue.sends = enable != 0;
            }
            change_limits(sw, range.number);
        });
}

int sim_bcm_cosq_gport_enable_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *enable)
{
    return begin(unit, ready<QueueState>, given(enable), queues(gport, cosq))
        .then([&](QueueState &, const QueueRange &range) { *enable = range.begin()->sends; });
}

int sim_bcm_cosq_gport_add(int unit, bcm_port_t port, int numq, uint32 flags, bcm_gport_t *gport)
{
    constexpr uint32 kinds = BCM_COSQ_GPORT_UCAST_QUEUE_GROUP | BCM_COSQ_GPORT_MCAST_QUEUE_GROUP
                             | BCM_COSQ_GPORT_SCHEDULER | BCM_COSQ_GPORT_COMPOSITE_SCHEDULER
                             | BCM_COSQ_GPORT_VOQ_CONNECTOR | BCM_COSQ_GPORT_VSQ | BCM_COSQ_GPORT_SUBSCRIBER
                             | BCM_COSQ_GPORT_EGRESS_GROUP;
    return begin(unit, ready<QueueState>, given(gport), own_port(port))
        .then([&](QueueState &state, int own) -> int {
            const uint32 kind = flags & kinds;
            if ((flags & ~(kinds | BCM_COSQ_GPORT_WITH_ID)) || (kind & (kind - 1)) || numq < 1
                || numq > state.count) {
                return BCM_E_PARAM;
            }
            if (kind != BCM_COSQ_GPORT_UCAST_QUEUE_GROUP) {
                return BCM_E_UNAVAIL;
            }
            int id = first_group;
            if (flags & BCM_COSQ_GPORT_WITH_ID) {
                id = *gport;
                if (id < first_group || id >= first_group + groups_max) {
                    return BCM_E_PARAM;
                }
                if (state.groups.count(id) != 0) {
                    return BCM_E_EXISTS;
                }
            } else {
                while (state.groups.count(id) != 0) {
                    ++id;
                }
                if (id >= first_group + groups_max) {
                    return BCM_E_FULL;
                }
            }
            state.groups[id] = {own, numq, flags};
            *gport = id;
            return BCM_E_NONE;
        });
}

int sim_bcm_cosq_gport_delete(int unit, bcm_gport_t gport)
{
    return begin(unit, ready<QueueState>, group_of(gport)).then([&](QueueState &state, QueueGroup &) {
        state.groups.erase(gport);
    });
}

int sim_bcm_cosq_gport_get(int unit, bcm_gport_t gport, bcm_port_t *port, int *numq, uint32 *flags)
{
    return begin(unit, ready<QueueState>, given(port, numq, flags), group_of(gport))
        .then([&](QueueState &, QueueGroup &group) {
            *port = group.port;
            *numq = group.count;
            *flags = group.flags;
        });
}

int sim_bcm_cosq_gport_traverse(int unit, bcm_cosq_gport_traverse_cb cb, void *user_data)
{
    return begin(unit, ready<QueueState>, given(cb)).then([&](Switch &sw, QueueState &state) -> int {
        auto next = state.groups.begin();
        while (next != state.groups.end()) {
            const auto [gport, group] = *next;
            const int rc = cb(unit, group.port, group.count, group.flags, gport, user_data);
            if (rc < 0 || attached(unit) != &sw) {
                return rc < 0 ? rc : static_cast<int>(BCM_E_NONE);
            }
            next = state.groups.upper_bound(gport);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_port_rate_egress_set(int unit, bcm_port_t port, uint32 kbits_sec, uint32 kbits_burst)
{
    return set_rate(unit, port, kbits_sec, kbits_burst, false);
}

int sim_bcm_port_rate_egress_get(int unit, bcm_port_t port, uint32 *kbits_sec, uint32 *kbits_burst)
{
    return get_rate(unit, port, kbits_sec, kbits_burst, false);
}

int sim_bcm_port_rate_egress_pps_set(int unit, bcm_port_t port, uint32 pps, uint32 burst)
{
    return set_rate(unit, port, pps, burst, true);
}

int sim_bcm_port_rate_egress_pps_get(int unit, bcm_port_t port, uint32 *pps, uint32 *burst)
{
    return get_rate(unit, port, pps, burst, true);
}

}  // extern "C"
