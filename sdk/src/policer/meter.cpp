#include "meter.h"

#include "rate_limits.h"

#include <algorithm>

namespace sim {

namespace {

TokenBucket bucket(uint32 rate, uint32 burst, uint32 flags)
{
    const bool is_full = flags & BCM_POLICER_BEGIN_WITH_BUCKET_FULL;
    if (flags & BCM_POLICER_MODE_PACKETS) {
        const TokenRate tokens = TokenRate::packets(rate);
        return TokenBucket(tokens, burst != 0 ? burst : std::max<std::uint64_t>(tokens.short_burst(), 1),
                           is_full);
    }
    const TokenRate tokens = TokenRate::kbits(rate);
    return TokenBucket(
        tokens,
        burst != 0 ? burst * TokenBucket::bits_per_kbit : std::max(tokens.short_burst(), longest_packet_bits),
        is_full);
}

}  // namespace

Meter::Meter(const bcm_policer_config_t &config)
    : mode_(config.mode),
      is_blind_(config.flags & BCM_POLICER_COLOR_BLIND),
      counts_packets_(config.flags & BCM_POLICER_MODE_PACKETS)
{
    const bool has_peak_only = mode_ == bcmPolicerModePeak;
    committed_ = bucket(has_peak_only ? config.pkbits_sec : config.ckbits_sec,
                        has_peak_only ? config.pkbits_burst : config.ckbits_burst, config.flags);
    // A single rate fills both.
    other_ = bucket(mode_ == bcmPolicerModeSrTcm ? 0 : config.pkbits_sec, config.pkbits_burst, config.flags);
}

bcm_color_t Meter::color(bcm_color_t came, std::size_t bytes)
{
    const std::uint64_t tokens = counts_packets_ ? 1 : bytes * TokenBucket::bits_per_byte;
    if (is_blind_ && mode_ != bcmPolicerModePassThrough) {
        came = bcmColorGreen;
    }
    switch (mode_) {
    case bcmPolicerModeCommitted:
    case bcmPolicerModePeak:
        return by_one(came, tokens);
    case bcmPolicerModeSrTcm:
        return by_single_rate(came, tokens);
    case bcmPolicerModeTrTcm:
        return by_two_rates(came, tokens);
    case bcmPolicerModeTrTcmDs:
        return by_two_buckets(came, tokens);
    case bcmPolicerModeCoupledTrTcmDs:
    case bcmPolicerModeMefBandwidthProfile:
        couple();
        return by_two_buckets(came, tokens);
    case bcmPolicerModeGreen:
        return bcmColorGreen;
    case bcmPolicerModeYellow:
        return bcmColorYellow;
    case bcmPolicerModeRed:
        return bcmColorRed;
    default:
        return came;
    }
}

bcm_color_t Meter::by_one(bcm_color_t came, std::uint64_t tokens)
{
    return came != bcmColorRed && committed_.take(tokens) ? came : bcmColorRed;
}

bcm_color_t Meter::by_single_rate(bcm_color_t came, std::uint64_t tokens)
{
    couple();
    return by_two_buckets(came, tokens);
}

bcm_color_t Meter::by_two_rates(bcm_color_t came, std::uint64_t tokens)
{
    // Here the other bucket is that of the peak rate, which all take from.
    if (came == bcmColorRed || !other_.take(tokens)) {
        return bcmColorRed;
    }
    return came == bcmColorGreen && committed_.take(tokens) ? bcmColorGreen : bcmColorYellow;
}

bcm_color_t Meter::by_two_buckets(bcm_color_t came, std::uint64_t tokens)
{
    if (came == bcmColorGreen && committed_.take(tokens)) {
        return bcmColorGreen;
    }
    return came != bcmColorRed && other_.take(tokens) ? bcmColorYellow : bcmColorRed;
}

void Meter::couple()
{
    other_.tokens();  // what its own rate brought comes first
    other_.add(committed_.spilt());
}

}  // namespace sim
