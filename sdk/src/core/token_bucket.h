/// What measures a rate: a bucket that fills with tokens as the simulator's time passes, up to its depth, and out of
/// which every packet takes its own.
#pragma once

#include "clock.h"

#include <cstdint>

namespace sim {

/// Tokens per second, exactly.
struct TokenRate {
    std::uint32_t number = 0;
    Time nanoseconds = nanoseconds_per_second;  ///< in which so many tokens come

    /// Tokens are packets.
    static TokenRate packets(std::uint32_t per_second) { return {per_second, nanoseconds_per_second}; }
    /// Tokens are bits.
    static TokenRate kbits(std::uint32_t per_second) { return {per_second, nanoseconds_per_second / 1000}; }

    /// What comes in 10 ms: the depth of a bucket for which none was given.
    std::uint64_t short_burst() const { return number * (nanoseconds_per_second / nanoseconds) / 100; }
};

class TokenBucket {
public:
    static constexpr std::uint64_t bits_per_byte = 8;
    static constexpr std::uint64_t bits_per_kbit = 1000;

    /// Empty, and without rate.
    TokenBucket() = default;

    TokenBucket(TokenRate rate, std::uint64_t depth, bool is_full = true)
        : rate_(rate), depth_(depth), tokens_(is_full ? depth : 0), at_(clock_now())
    {
    }

    /// Those that are there now.
    std::uint64_t tokens();

    /// Takes so many if they are there; else none.
    bool take(std::uint64_t tokens);

    /// Takes what is there of so many.
    void take_at_most(std::uint64_t tokens);

    /// Puts more in, from elsewhere. What does not fit is returned.
    std::uint64_t add(std::uint64_t tokens);

    /// How long it takes until so many are there; never if they do not fit or none come.
    Time time_until(std::uint64_t tokens);
    static constexpr Time never = ~Time{0};

    std::uint64_t depth() const { return depth_; }
    TokenRate rate() const { return rate_; }

    /// What came since the last time and did not fit is kept, for another bucket, and told once.
    std::uint64_t spilt();

private:
    void fill();

    TokenRate rate_;
    std::uint64_t depth_ = 0;
    std::uint64_t tokens_ = 0;
    std::uint64_t part_ = 0;  // of the next token, in its nanoseconds' parts
    std::uint64_t spilt_ = 0;
    Time at_ = 0;
};

}  // namespace sim
