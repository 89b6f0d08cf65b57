/// The room of queues: in which a packet waits until its port may send it, which goes first, and what is dropped.
///
/// A queue builds only where something limits a port: a shaper, a queue that is limited or does not send, a pause. At
/// all other ports packets leave at once.
#pragma once

#include "frame_buffer.h"
#include "port.h"
#include "scheduler.h"

#include <bcm/cosq.h>

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>

namespace sim {

constexpr int queues_max = 8;  // of a port
constexpr int priorities = 8;
constexpr std::size_t colors = 3;

/// What a queue counts; bytes with checksum.
struct QueueCounters {
    struct Packets {
        uint64 packets = 0;
        uint64 bytes = 0;

        void add(std::size_t length)
        {
            ++packets;
            bytes += length;
        }
    };
    std::array<Packets, colors> out, dropped;
    Packets flushed;
    uint64 most_bytes = 0, most_packets = 0;
};

/// A rate that a queue, or a port, has at least or at most.
struct Shaper {
    uint32 rate = 0;  // kbit/s, or packets/s; 0: none
    uint32 burst = 0;
    bool counts_packets = false;
    TokenBucket bucket;

    void set(uint32 new_rate, uint32 new_burst, bool by_packets);
    std::uint64_t tokens_of(std::size_t length) const
    {
        return counts_packets ? 1 : length * TokenBucket::bits_per_byte;
    }
};

struct QueuedPacket {
    FrameBuffer frame;
    bcm_color_t color;
    Time since;

    std::size_t length() const { return length_with_checksum(frame.bytes()); }
};

struct Queue {
    std::deque<QueuedPacket> packets;
    uint64 bytes = 0;
    uint32 bytes_min = 0, bytes_max = 1 << 20;
    bool sends = true;
    Shaper least, most;
    int weight = 1;  // BCM_COSQ_WEIGHT_STRICT: before those that have weights
    QueueCounters counters;
    std::map<bcm_cosq_stat_t, uint64> zero_at;  // of counters that were set
};

struct PortQueues {
    std::array<Queue, queues_max> queues;
    std::array<std::uint8_t, priorities> queue_of = {0, 1, 2, 3, 4, 5, 6, 7};
    int mode = BCM_COSQ_STRICT;
    int delay = 0;  // microseconds
    Scheduler scheduler;
    Shaper shaper;
    Time paused_until = 0;
    // Packets that left at once with nothing special are not counted one by one: the port's counters have them.
    uint64 settled_packets = 0, settled_bytes = 0;

    bool is_empty() const;
};

/// A gport that names a port's queues, the first so many of them.
struct QueueGroup {
    int port;
    int count;
    uint32 flags;
};

struct QueueState : RoomState {
    static constexpr Room room = Room::queue;

    explicit QueueState(Switch &sw);

    void retire() override { timers.clear(); }

    /// As they are when new. What waits is lost.
    void reset(Switch &sw);

    bool initialised = true;
    int count = queues_max;  // of queues per port
    std::array<std::uint8_t, priorities> queue_of = {0, 1, 2, 3, 4, 5, 6, 7};
    std::array<PortQueues, port_max + 1> ports;
    std::map<int, QueueGroup> groups;  // by gport

    /// Called when a port may be able to send what waits.
    std::function<void(int port)> may_send;

    /// When that is next to be tried.
    std::map<int, Timer> timers;
};

inline QueueState &queues_of(Switch &sw)
{
    return sw.of<QueueState>();
}

inline PortQueues &queues_at(Switch &sw, int port)
{
    return queues_of(sw).ports[static_cast<std::size_t>(port)];
}

/// Works out again whether packets at a port have to take the way through queues.
void follow_limits(Switch &sw, int port);

/// The same after a change, which may let something leave.
void change_limits(Switch &sw, int port);

/// What becomes of a packet at a port that queues.
enum class Queueing { leaves, waits, dropped };

/// It leaves at once only if nothing waits there. For one that leaves the caller counts what the port counts.
Queueing enqueue(Switch &sw, int port, int queue, bcm_color_t color, ByteView frame);

/// One that leaves at a port that does not queue.
void count_departure(Switch &sw, int port, int queue, bcm_color_t color, std::size_t length);

/// Takes the next packet that may leave the port now. Without one the frame is empty, and the port tries again when
/// one may.
bool dequeue(Switch &sw, int port, FrameBuffer *frame);

/// Who is at the other end asks not to send for so long.
void pause(Switch &sw, int port, Time time);

/// Brings the counters up to what the port has sent.
void settle(Switch &sw, int port);

}  // namespace sim
