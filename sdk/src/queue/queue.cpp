#include "queue.h"

#include <algorithm>
#include <utility>

namespace sim {

namespace {

std::size_t at(bcm_color_t color)
{
    return static_cast<std::size_t>(color);
}

bool has_tokens(Shaper &shaper, std::size_t length)
{
    return shaper.rate == 0 || shaper.bucket.time_until(shaper.tokens_of(length)) == 0;
}

void take_tokens(Shaper &shaper, std::size_t length)
{
    if (shaper.rate != 0) {
        shaper.bucket.take(shaper.tokens_of(length));
    }
}

Time wait_for_tokens(Shaper &shaper, std::size_t length)
{
    return shaper.rate == 0 ? 0 : shaper.bucket.time_until(shaper.tokens_of(length));
}

/// Ports that pass a packet on at once, if nothing waits for its turn.
bool may_leave(PortQueues &own, Queue &queue, std::size_t length)
{
    return queue.sends && own.paused_until <= clock_now() && has_tokens(own.shaper, length)
           && has_tokens(queue.most, length);
}

void take_for(PortQueues &own, Queue &queue, std::size_t length)
{
    take_tokens(own.shaper, length);
    take_tokens(queue.most, length);
    if (queue.least.rate != 0) {
        queue.least.bucket.take_at_most(queue.least.tokens_of(length));
    }
}

Scheduler::Candidates candidates(PortQueues &own)
{
    Scheduler::Candidates all;
    const bool is_strict = own.mode == BCM_COSQ_STRICT, is_plain = own.mode == BCM_COSQ_ROUND_ROBIN;
    for (std::size_t i = 0; i < all.size(); ++i) {
        Queue &queue = own.queues[i];
        if (!queue.packets.empty()) {
            const std::size_t length = queue.packets.front().length();
            all[i] = {may_leave(own, queue, length), static_cast<std::uint32_t>(length),
                      is_strict || queue.weight == BCM_COSQ_WEIGHT_STRICT ? 0
                      : is_plain                                          ? 1
                                 : static_cast<std::uint32_t>(queue.weight)};
        }
    }
    return all;
}

/// Those that have not had what they are to have at least.
Scheduler::Candidates below_least(PortQueues &own, Scheduler::Candidates all)
{
    for (std::size_t i = 0; i < all.size(); ++i) {
        Shaper &least = own.queues[i].least;
        all[i].can_send = all[i].can_send && least.rate != 0 && has_tokens(least, all[i].length);
    }
    return all;
}

/// Those that have waited too long, the oldest of them.
std::size_t longest_waiting(const PortQueues &own, const Scheduler::Candidates &all)
{
    const Time delay = static_cast<Time>(own.delay) * nanoseconds_per_microsecond;
    std::size_t oldest = Scheduler::none;
    for (std::size_t i = all.size(); i-- > 0;) {
        if (!all[i].can_send) {
            continue;
        }
        const Time since = own.queues[i].packets.front().since;
        if (clock_now() - since >= delay
            && (oldest == Scheduler::none || since < own.queues[oldest].packets.front().since)) {
            oldest = i;
        }
    }
    return oldest;
}

std::size_t choose(PortQueues &own)
{
    const Scheduler::Candidates all = candidates(own);
    const std::size_t owed = Scheduler::highest(below_least(own, all));
    if (owed != Scheduler::none) {
        return owed;
    }
    switch (own.mode) {
    case BCM_COSQ_DEFICIT_ROUND_ROBIN:
        return own.scheduler.by_bytes(all);
    case BCM_COSQ_WEIGHTED_FAIR_QUEUING:
        return own.scheduler.by_fairness(all);
    case BCM_COSQ_BOUNDED_DELAY: {
        const std::size_t late = longest_waiting(own, all);
        return late != Scheduler::none ? late : own.scheduler.by_packets(all);
    }
    default:
        return own.scheduler.by_packets(all);
    }
}

/// When one of those that wait may be able to leave.
Time next_time(PortQueues &own)
{
    Time next = TokenBucket::never;
    for (Queue &queue : own.queues) {
        if (queue.packets.empty() || !queue.sends) {
            continue;
        }
        const std::size_t length = queue.packets.front().length();
        const Time now = clock_now();
        const Time pause = own.paused_until > now ? own.paused_until - now : 0;
        next = std::min(next, std::max({pause, wait_for_tokens(own.shaper, length),
                                        wait_for_tokens(queue.most, length)}));
    }
    return next;
}

void wait(QueueState &state, int port)
{
    const Time next = next_time(state.ports[static_cast<std::size_t>(port)]);
    auto timer = state.timers.find(port);
    if (next == TokenBucket::never) {
        if (timer != state.timers.end()) {
            timer->second.stop();
        }
        return;
    }
    if (timer == state.timers.end()) {
        timer = state.timers.try_emplace(port, [&state, port] { state.may_send(port); }).first;
    }
    timer->second.start(next);
}

void flush(PortQueues &own)
{
    for (Queue &queue : own.queues) {
        for (const QueuedPacket &packet : queue.packets) {
            queue.counters.flushed.add(packet.length());
        }
        queue.packets.clear();
        queue.bytes = 0;
    }
    own.scheduler.forget();
}

}  // namespace

void Shaper::set(uint32 new_rate, uint32 new_burst, bool by_packets)
{
    rate = new_rate;
    burst = new_burst;
    counts_packets = by_packets;
    const TokenRate tokens = by_packets ? TokenRate::packets(rate) : TokenRate::kbits(rate);
    const std::uint64_t given = by_packets ? burst : burst * TokenBucket::bits_per_kbit;
    // A packet of any length has to pass some time.
    bucket = TokenBucket(
        tokens, std::max(given != 0 ? given : tokens.short_burst(), by_packets ? 1 : longest_packet_bits));
}

bool PortQueues::is_empty() const
{
    return std::all_of(queues.begin(), queues.end(),
                       [](const Queue &queue) { return queue.packets.empty(); });
}

QueueState::QueueState(Switch &sw)
{
    reset(sw);
}

void QueueState::reset(Switch &sw)
{
    initialised = true;
    count = queues_max;
    queue_of = PortQueues().queue_of;
    groups.clear();
    timers.clear();
    for (int port = 0; port <= port_max; ++port) {
        PortQueues &own = ports[static_cast<std::size_t>(port)];
        // A port's shaper is the port's, not the module's.
        const Shaper shaper = own.shaper;
        own = PortQueues();
        own.shaper = shaper;
        own.settled_packets = packets_sent(counters_of(sw, port));
        own.settled_bytes = octets_sent(counters_of(sw, port));
        sw.of<PortState>().queues_out.put(port, shaper.rate != 0);
    }
    sw.of<PortState>().update_special_out();
}

void follow_limits(Switch &sw, int port)
{
    PortQueues &own = queues_at(sw, port);
    const bool has_limits = own.shaper.rate != 0 || own.paused_until > clock_now() || !own.is_empty()
                            || std::any_of(own.queues.begin(), own.queues.end(), [](const Queue &queue) {
                                   return !queue.sends || queue.most.rate != 0;
                               });
    auto &ports = sw.of<PortState>();
    ports.queues_out.put(port, has_limits);
    ports.update_special_out();
}

void change_limits(Switch &sw, int port)
{
    follow_limits(sw, port);
    if (!queues_at(sw, port).is_empty()) {
        queues_of(sw).may_send(port);
    }
}

Queueing enqueue(Switch &sw, int port, int number, bcm_color_t color, ByteView frame)
{
    PortQueues &own = queues_at(sw, port);
    Queue &queue = own.queues[static_cast<std::size_t>(number)];
    const std::size_t length = length_with_checksum(frame);
    if (own.is_empty() && may_leave(own, queue, length)) {
        take_for(own, queue, length);
        return Queueing::leaves;
    }
    if (queue.bytes + length > queue.bytes_max) {
        queue.counters.dropped[at(color)].add(length);
        return Queueing::dropped;
    }
    queue.packets.push_back({{}, color, clock_now()});
    queue.packets.back().frame.fill(frame);
    queue.bytes += length;
    queue.counters.most_bytes = std::max(queue.counters.most_bytes, queue.bytes);
    queue.counters.most_packets = std::max<uint64>(queue.counters.most_packets, queue.packets.size());
    wait(queues_of(sw), port);
    return Queueing::waits;
}

void count_departure(Switch &sw, int port, int number, bcm_color_t color, std::size_t length)
{
    PortQueues &own = queues_at(sw, port);
    own.queues[static_cast<std::size_t>(number)].counters.out[at(color)].add(length);
    ++own.settled_packets;
    own.settled_bytes += length;
}

bool dequeue(Switch &sw, int port, FrameBuffer *frame)
{
    PortQueues &own = queues_at(sw, port);
    if (!has_link(sw, port)) {
        flush(own);
    }
    const std::size_t number = choose(own);
    if (number == Scheduler::none) {
        wait(queues_of(sw), port);
        return false;
    }
    Queue &queue = own.queues[number];
    QueuedPacket packet = std::move(queue.packets.front());
    queue.packets.pop_front();
    const std::size_t length = packet.length();
    queue.bytes -= length;
    take_for(own, queue, length);
    count_departure(sw, port, static_cast<int>(number), packet.color, length);
    *frame = std::move(packet.frame);
    return true;
}

void pause(Switch &sw, int port, Time time)
{
    PortQueues &own = queues_at(sw, port);
    own.paused_until = clock_now() + time;
    follow_limits(sw, port);
}

void settle(Switch &sw, int port)
{
    PortQueues &own = queues_at(sw, port);
    const uint64 packets = packets_sent(counters_of(sw, port)), bytes = octets_sent(counters_of(sw, port));
    QueueCounters::Packets &out = own.queues[own.queue_of[0]].counters.out[at(bcmColorGreen)];
    out.packets += packets - own.settled_packets;
    out.bytes += bytes - own.settled_bytes;
    own.settled_packets = packets;
    own.settled_bytes = bytes;
}

}  // namespace sim
