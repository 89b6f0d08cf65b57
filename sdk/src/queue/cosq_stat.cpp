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

/// The counter with its bytes behind it, of a stat that is one of the two.
uint64 one_of(const Packets &packets, bcm_cosq_stat_t stat, bcm_cosq_stat_t of_packets)
{
    return stat == of_packets ? packets.packets : packets.bytes;
}

/// None of what queues here do not count.
std::optional<uint64> counted(const Queue &queue, bcm_cosq_stat_t stat)
{
    const QueueCounters &counters = queue.counters;
    const Packets out = sum(counters.out), dropped = sum(counters.dropped);
    const Packets waiting = {queue.packets.size(), queue.bytes};
    switch (stat) {
    case bcmCosqStatDroppedPackets:
    case bcmCosqStatDroppedBytes:
        return one_of(dropped, stat, bcmCosqStatDroppedPackets);
    case bcmCosqStatBufferFullDroppedPackets:
    case bcmCosqStatBufferFullDroppedBytes:
        return one_of(dropped, stat, bcmCosqStatBufferFullDroppedPackets);
    case bcmCosqStatGreenDroppedPackets:
    case bcmCosqStatGreenDroppedBytes:
        return one_of(counters.dropped[0], stat, bcmCosqStatGreenDroppedPackets);
    case bcmCosqStatYellowDroppedPackets:
    case bcmCosqStatYellowDroppedBytes:
        return one_of(counters.dropped[1], stat, bcmCosqStatYellowDroppedPackets);
    case bcmCosqStatRedDroppedPackets:
    case bcmCosqStatRedDroppedBytes:
        return one_of(counters.dropped[2], stat, bcmCosqStatRedDroppedPackets);
    case bcmCosqStatOutPackets:
    case bcmCosqStatOutBytes:
        return one_of(out, stat, bcmCosqStatOutPackets);
    case bcmCosqStatDequeuedPackets:
    case bcmCosqStatDequeuedBytes:
        return one_of(out, stat, bcmCosqStatDequeuedPackets);
    case bcmCosqStatOutGreenPackets:
    case bcmCosqStatOutGreenBytes:
        return one_of(counters.out[0], stat, bcmCosqStatOutGreenPackets);
    case bcmCosqStatOutYellowPackets:
    case bcmCosqStatOutYellowBytes:
        return one_of(counters.out[1], stat, bcmCosqStatOutYellowPackets);
    case bcmCosqStatOutRedPackets:
    case bcmCosqStatOutRedBytes:
        return one_of(counters.out[2], stat, bcmCosqStatOutRedPackets);
    case bcmCosqStatEnqueuedPackets:
        return out.packets + waiting.packets + counters.flushed.packets;
    case bcmCosqStatEnqueuedBytes:
        return out.bytes + waiting.bytes + counters.flushed.bytes;
    case bcmCosqStatFlushedPackets:
    case bcmCosqStatFlushedBytes:
        return one_of(counters.flushed, stat, bcmCosqStatFlushedPackets);
    case bcmCosqStatCurrentPackets:
        return waiting.packets;
    case bcmCosqStatCurrentBytes:
        return waiting.bytes;
    case bcmCosqStatMaxPackets:
        return counters.most_packets;
    case bcmCosqStatMaxBytes:
        return counters.most_bytes;
    default:
        return {};
    }
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
