/// What queues count.
#include "begin.h"
#include "queue.h"
#include "queue_arguments.h"
#include "sim_cosq.h"

#include <optional>

using namespace sim;

namespace {

using Packets = QueueCounters::Packets;

Packets sum(const std::array<Packets, colors> &of)
{
    Packets all;
    for (const Packets &each : of) {
        all.packets += each.packets;
        all.bytes += each.bytes;
    }
    return all;
}

Packets waiting(const Queue &queue)
{
    return {queue.packets.size(), queue.bytes};
}

/// What came: whatever has gone since, and what is still there.
Packets enqueued(const Queue &queue)
{
    return sum({sum(queue.counters.out), waiting(queue), queue.counters.flushed});
}

/// Two stats of the same packets: how many, and how many bytes.
struct Counted {
    bcm_cosq_stat_t packets, bytes;
    Packets (*of)(const Queue &queue);
};

constexpr Counted counts[] = {
    {bcmCosqStatDroppedPackets, bcmCosqStatDroppedBytes,
     [](const Queue &queue) { return sum(queue.counters.dropped); }},
    {bcmCosqStatBufferFullDroppedPackets, bcmCosqStatBufferFullDroppedBytes,
     [](const Queue &queue) { return sum(queue.counters.dropped); }},
    {bcmCosqStatGreenDroppedPackets, bcmCosqStatGreenDroppedBytes,
     [](const Queue &queue) { return queue.counters.dropped[bcmColorGreen]; }},
    {bcmCosqStatYellowDroppedPackets, bcmCosqStatYellowDroppedBytes,
     [](const Queue &queue) { return queue.counters.dropped[bcmColorYellow]; }},
    {bcmCosqStatRedDroppedPackets, bcmCosqStatRedDroppedBytes,
     [](const Queue &queue) { return queue.counters.dropped[bcmColorRed]; }},
    {bcmCosqStatOutPackets, bcmCosqStatOutBytes, [](const Queue &queue) { return sum(queue.counters.out); }},
    {bcmCosqStatDequeuedPackets, bcmCosqStatDequeuedBytes,
     [](const Queue &queue) { return sum(queue.counters.out); }},
    {bcmCosqStatOutGreenPackets, bcmCosqStatOutGreenBytes,
     [](const Queue &queue) { return queue.counters.out[bcmColorGreen]; }},
    {bcmCosqStatOutYellowPackets, bcmCosqStatOutYellowBytes,
     [](const Queue &queue) { return queue.counters.out[bcmColorYellow]; }},
    {bcmCosqStatOutRedPackets, bcmCosqStatOutRedBytes,
     [](const Queue &queue) { return queue.counters.out[bcmColorRed]; }},
    {bcmCosqStatEnqueuedPackets, bcmCosqStatEnqueuedBytes, enqueued},
    {bcmCosqStatFlushedPackets, bcmCosqStatFlushedBytes,
     [](const Queue &queue) { return queue.counters.flushed; }},
    {bcmCosqStatCurrentPackets, bcmCosqStatCurrentBytes, waiting},
    {bcmCosqStatMaxPackets, bcmCosqStatMaxBytes,
     [](const Queue &queue) -> Packets {
         return {queue.counters.most_packets, queue.counters.most_bytes};
     }},
};

/// None of what queues here do not count.
std::optional<uint64> counted(const Queue &queue, bcm_cosq_stat_t stat)
{
    for (const Counted &one : counts) {
        if (stat == one.packets || stat == one.bytes) {
            const Packets found = one.of(queue);
            return stat == one.packets ? found.packets : found.bytes;
        }
    }
    return {};
}

bool is_stat(bcm_cosq_stat_t stat)
{
    return static_cast<uint32>(stat) < bcmCosqStatCount;
}

/// Of several queues the sum. BCM_E_PARAM, BCM_E_UNAVAIL.
int read(Switch &sw, const QueueRange &range, bcm_cosq_stat_t stat, uint64 *value)
{
    if (!is_stat(stat)) {
        return BCM_E_PARAM;
    }
    settle(sw, range.number);
    uint64 sum = 0;
    for (const Queue &queue : range) {
        const std::optional<uint64> found = counted(queue, stat);
        if (!found) {
            return BCM_E_UNAVAIL;
        }
        const auto zero = queue.zero_at.find(stat);
        sum += *found - (zero != queue.zero_at.end() ? zero->second : 0);
    }
    *value = sum;
    return BCM_E_NONE;
}

int get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat, uint64 *value)
{
    return begin(unit, ready<QueueState>, given(value), queues(gport, cosq))
        .then(
            [&](Switch &sw, QueueState &, const QueueRange &range) { return read(sw, range, stat, value); });
}

int get32(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat, uint32 *value)
{
    uint64 wide = 0;
    const int rc = get(unit, gport, cosq, stat, value != nullptr ? &wide : nullptr);
    if (rc == BCM_E_NONE) {
        *value = static_cast<uint32>(wide);
    }
    return rc;
}

/// Other counters that share packets with it go on.
int write(Switch &sw, const QueueRange &range, bcm_cosq_stat_t stat, uint64 value)
{
    if (!is_stat(stat)) {
        return BCM_E_PARAM;
    }
    settle(sw, range.number);
    for (Queue &queue : range) {
        if (stat == bcmCosqStatMaxBytes || stat == bcmCosqStatMaxPackets) {
            (stat == bcmCosqStatMaxBytes ? queue.counters.most_bytes : queue.counters.most_packets) = value;
            continue;
        }
        const std::optional<uint64> found = counted(queue, stat);
        if (!found || stat == bcmCosqStatCurrentBytes || stat == bcmCosqStatCurrentPackets) {
            return BCM_E_UNAVAIL;
        }
        queue.zero_at[stat] = *found - value;
    }
    return BCM_E_NONE;
}

int set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat, uint64 value)
{
    return begin(unit, ready<QueueState>, queues(gport, cosq))
        .then(
            [&](Switch &sw, QueueState &, const QueueRange &range) { return write(sw, range, stat, value); });
}

/// Arrays of stats with their values.
auto arrays(int count, const void *stats, const void *values)
{
    return [=](Switch &, auto next) -> int {
        return count < 0 || (count != 0 && (stats == nullptr || values == nullptr))
                   ? static_cast<int>(BCM_E_PARAM)
                   : next();
    };
}

}  // namespace

extern "C" {

int sim_bcm_cosq_stat_get(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                          uint64 *value)
{
    return get(unit, port, cosq, stat, value);
}

int sim_bcm_cosq_stat_get32(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                            uint32 *value)
{
    return get32(unit, port, cosq, stat, value);
}

int sim_bcm_cosq_stat_sync_get(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                               uint64 *value)
{
    return get(unit, port, cosq, stat, value);
}

int sim_bcm_cosq_stat_sync_get32(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                                 uint32 *value)
{
    return get32(unit, port, cosq, stat, value);
}

int sim_bcm_cosq_stat_set(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                          uint64 value)
{
    return set(unit, port, cosq, stat, value);
}

int sim_bcm_cosq_stat_set32(int unit, bcm_gport_t port, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                            uint32 value)
{
    return set(unit, port, cosq, stat, value);
}

int sim_bcm_cosq_gport_statistic_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                                     uint64 *value)
{
    return get(unit, gport, cosq, stat, value);
}

int sim_bcm_cosq_gport_statistic_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, bcm_cosq_stat_t stat,
                                     uint64 value)
{
    return set(unit, gport, cosq, stat, value);
}

int sim_bcm_cosq_gport_statistic_multi_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int nstat,
                                           bcm_cosq_stat_t *stat_arr, uint64 *value_arr)
{
    return begin(unit, ready<QueueState>, arrays(nstat, stat_arr, value_arr), queues(gport, cosq))
        .then([&](Switch &sw, QueueState &, const QueueRange &range) -> int {
            int rc = BCM_E_NONE;
            for (int i = 0; i < nstat && rc == BCM_E_NONE; ++i) {
                rc = read(sw, range, stat_arr[i], &value_arr[i]);
            }
            return rc;
        });
}

int sim_bcm_cosq_gport_statistic_multi_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int nstat,
                                           bcm_cosq_stat_t *stat_arr, uint64 *value_arr)
{
    return begin(unit, ready<QueueState>, arrays(nstat, stat_arr, value_arr), queues(gport, cosq))
        .then([&](Switch &sw, QueueState &, const QueueRange &range) -> int {
            int rc = BCM_E_NONE;
            for (int i = 0; i < nstat && rc == BCM_E_NONE; ++i) {
                rc = write(sw, range, stat_arr[i], value_arr[i]);
            }
            return rc;
        });
}

}  // extern "C"
