/// Limits on what ports let in: on packets of a kind (storm control), and on all that comes.
#pragma once

#include "packet.h"
#include "token_bucket.h"

#include <bcm/rate.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace sim {

/// What a bucket has to hold so that every packet can pass.
constexpr std::uint64_t longest_packet_bits = (frame_longest + 1) * TokenBucket::bits_per_byte;

/// A limit on all that passes a port in one direction.
struct PortRate {
    uint32 rate = 0;   // kbit/s, 0: none
    uint32 burst = 0;  // kbit
    TokenBucket bucket;

    void set(uint32 kbits_sec, uint32 kbits_burst);
};

/// The limits of one port on broadcast, multicast and unknown unicast packets.
class StormControl {
public:
    /// In the order of the bits BCM_RATE_*.
    enum Kind : std::size_t { unknown_unicast, multicast, broadcast, kinds };

    static constexpr uint32 all_kinds = BCM_RATE_DLF | BCM_RATE_MCAST | BCM_RATE_BCAST;

    struct Limit {
        int rate = 0;      // packets/s, or kbit/s with BCM_RATE_MODE_BYTES
        uint32 flags = 0;  // BCM_RATE_ENABLE, BCM_RATE_MODE_BYTES
        int burst = 0;     // packets
    };

    const Limit &limit(Kind kind) const { return limits_[kind]; }
    uint32 sharing() const { return sharing_; }

    /// Whether a kind is limited.
    bool any() const
    {
        return std::any_of(limits_.begin(), limits_.end(),
                           [](const Limit &limit) { return limit.flags & BCM_RATE_ENABLE; });
    }

    /// Each begins with full buckets.
    void set(Kind kind, const Limit &limit);
    /// BCM_RATE_*: those have the lowest of their limits together.
    void share(uint32 kinds_together);

    /// Whether a packet of so many bytes, with checksum, is within the limit.
    bool admits(Kind kind, std::size_t length);

private:
    void restart();

    static constexpr std::size_t none = kinds;

    std::array<Limit, kinds> limits_;
    uint32 sharing_ = 0;
    std::array<std::size_t, kinds> metered_by_ = {none, none, none};  // whose limit and bucket counts
    std::array<TokenBucket, kinds> buckets_;
};

}  // namespace sim
