#include "rate_limits.h"

namespace sim {

namespace {

constexpr std::uint64_t bits_of_burst_packet = 1518 * TokenBucket::bits_per_byte;

TokenBucket bucket_of(const StormControl::Limit &limit)
{
    const auto rate = static_cast<uint32>(limit.rate);
    const auto burst = static_cast<std::uint64_t>(limit.burst);
    const bool by_bytes = limit.flags & BCM_RATE_MODE_BYTES;
    const TokenRate tokens = by_bytes ? TokenRate::kbits(rate) : TokenRate::packets(rate);
    // One that is less than a packet would never let one pass.
    const std::uint64_t depth = burst != 0  ? burst * (by_bytes ? bits_of_burst_packet : 1)
                                : rate == 0 ? 0
                                : by_bytes  ? std::max(tokens.short_burst(), longest_packet_bits)
                                            : std::max<std::uint64_t>(tokens.short_burst(), 1);
    return TokenBucket(tokens, depth);
}

}  // namespace

void PortRate::set(uint32 kbits_sec, uint32 kbits_burst)
{
    rate = kbits_sec;
    burst = kbits_burst;
    const TokenRate tokens = TokenRate::kbits(kbits_sec);
    bucket = TokenBucket(tokens, kbits_burst != 0 ? kbits_burst * TokenBucket::bits_per_kbit
                                                  : std::max(tokens.short_burst(), longest_packet_bits));
}

void StormControl::set(Kind kind, const Limit &limit)
{
    limits_[kind] = limit;
    restart();
}

void StormControl::share(uint32 kinds_together)
{
    sharing_ = kinds_together;
    restart();
}

void StormControl::restart()
{
    std::size_t lowest = none;
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        const bool is_on = limits_[kind].flags & BCM_RATE_ENABLE;
        metered_by_[kind] = is_on ? kind : none;
        buckets_[kind] = bucket_of(limits_[kind]);
        if (is_on && (sharing_ >> kind & 1)
            && (lowest == none || limits_[kind].rate < limits_[lowest].rate)) {
            lowest = kind;
        }
    }
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        if (sharing_ >> kind & 1) {
            metered_by_[kind] = lowest;
        }
    }
}

bool StormControl::admits(Kind kind, std::size_t length)
{
    const std::size_t by = metered_by_[kind];
    if (by == none) {
        return true;
    }
    const bool by_bytes = limits_[by].flags & BCM_RATE_MODE_BYTES;
    return buckets_[by].take(by_bytes ? length * TokenBucket::bits_per_byte : 1);
}

}  // namespace sim
