/// What a port counts of the frames that pass it, and how the statistics of the SDK are made up from that.
#pragma once

#include "packet.h"

#include <bcm/stat.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>

namespace sim {

/// Of each direction. Lengths are those on the wire, with tag and checksum.
enum class FrameCounter : std::uint8_t {
    octets,
    unicast,  // this and the next two: without errors
    multicast,
    broadcast,
    undersize,  // errors
    too_long,
    size_64,  // this and the next ones: up to the next
    size_65,
    size_128,
    size_256,
    size_512,
    size_1024,
    size_1519,
    size_1523,
    size_2048,
    size_4096,
    size_9217,
    untagged,  // this and the next ones: by the type that follows the addresses
    single_tagged,
    double_tagged,
    pause,
    priority_pause,
    unknown_control,
    count
};

/// Why a frame without errors goes no further.
enum class Discard {
    // On arrival.
    port_takes_none,
    rate_in,
    policer,
    tag_type,
    translation,
    vlan_unknown,
    vlan_filter,
    stp_state,
    source_address,
    destination_address,
    ip_header,
    ip_source,
    no_route,
    null_route,
    unresolved,
    ttl,
    mtu,
    no_destination,
    storm_unknown_unicast,
    storm_multicast,
    storm_broadcast,
    field_rule,
    // Instead of being sent.
    no_link,
    stp_state_to_send,
    vlan_filter_to_send,
    too_long_to_send,
    policer_to_send,
    queue_full,
    translation_to_send,
    field_rule_to_send,
    count
};

constexpr Discard first_discard_to_send = Discard::no_link;

enum class Direction { received, sent };

constexpr std::size_t frame_counters = static_cast<std::size_t>(FrameCounter::count);
constexpr std::size_t counters_of_a_port = 2 * frame_counters + static_cast<std::size_t>(Discard::count);

/// The places of counters in the array.
constexpr std::size_t place(Direction direction, FrameCounter counter)
{
    return static_cast<std::size_t>(direction) * frame_counters + static_cast<std::size_t>(counter);
}

constexpr std::size_t place(Discard reason)
{
    return 2 * frame_counters + static_cast<std::size_t>(reason);
}

struct PortCounters {
    /// All is 0 from now on but for what was sent in all.
    void clear();

    std::array<uint64, counters_of_a_port> counts = {};
    uint64 packets_sent_before = 0, octets_sent_before = 0;  // until it was cleared
    std::map<bcm_stat_val_t, uint64> zero_at;  // of statistics that were set, since they share counters
};

inline void count_discard(PortCounters &counters, Discard reason)
{
    ++counters.counts[place(reason)];
}

/// Packets and octets that were sent, whatever was cleared.
uint64 packets_sent(const PortCounters &counters);
uint64 octets_sent(const PortCounters &counters);

/// What a frame counts in, the same at each port that it passes.
class FrameCounts {
public:
    explicit FrameCounts(ByteView frame);

    /// Counts it as the MAC sees it. False if it is too short, or longer than frame_max: it has errors then.
    bool arrived(PortCounters &counters, int frame_max) const
    {
        const bool is_too_long = length_ > static_cast<std::size_t>(frame_max);
        if (is_too_long || length_ < frame_min) {
            return arrived_with_error(counters, is_too_long);
        }
        add_all(counters, Direction::received);
        return true;
    }

    /// Counts one without errors.
    void sent(PortCounters &counters) const { add_all(counters, Direction::sent); }

    std::size_t length() const { return length_; }

    /// It goes to another address.
    void readdress(const unsigned char *to);

private:
    bool arrived_with_error(PortCounters &counters, bool is_too_long) const;

    void add_all(PortCounters &counters, Direction direction) const
    {
        counters.counts[place(direction, FrameCounter::octets)] += length_;
        for (const FrameCounter counter : {size_, addresses_, type_}) {
            ++counters.counts[place(direction, counter)];
        }
    }

    std::uint32_t length_;
    FrameCounter size_, addresses_, type_;
};

/// The value of a statistic, 0 if no packet here can ever move it.
uint64 statistic(const PortCounters &counters, bcm_stat_val_t type);

/// From now on it counts from that value; the other statistics go on.
void set_statistic(PortCounters &counters, bcm_stat_val_t type, uint64 value);

}  // namespace sim
