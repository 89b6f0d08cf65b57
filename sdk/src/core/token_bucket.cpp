#include "token_bucket.h"

#include <algorithm>

namespace sim {

void TokenBucket::fill()
{
    const Time now = clock_now();
    const Time passed = now - at_;
    at_ = now;
    if (rate_.number == 0) {
        return;
    }
    // Whole seconds apart: a second's tokens and their parts do not overflow, centuries of them would.
    const std::uint64_t per_second = rate_.number * (nanoseconds_per_second / rate_.nanoseconds);
    const std::uint64_t seconds = passed / nanoseconds_per_second;
    const std::uint64_t parts = passed % nanoseconds_per_second * rate_.number + part_;
    part_ = parts % rate_.nanoseconds;
    constexpr std::uint64_t most = ~std::uint64_t{0} / 4;
    std::uint64_t more = parts / rate_.nanoseconds;
    more = seconds > (most - more) / per_second ? most : more + seconds * per_second;
    spilt_ = std::min(spilt_ + add(more), most);
    if (tokens_ == depth_) {
        part_ = 0;
    }
}

std::uint64_t TokenBucket::tokens()
{
    fill();
    return tokens_;
}

bool TokenBucket::take(std::uint64_t tokens)
{
    fill();
    if (tokens_ < tokens) {
        return false;
    }
    tokens_ -= tokens;
    return true;
}

void TokenBucket::take_at_most(std::uint64_t tokens)
{
    fill();
    tokens_ -= std::min(tokens_, tokens);
}

std::uint64_t TokenBucket::add(std::uint64_t tokens)
{
    const std::uint64_t fitting = std::min(tokens, depth_ - tokens_);
    tokens_ += fitting;
    return tokens - fitting;
}

Time TokenBucket::time_until(std::uint64_t tokens)
{
    fill();
    if (tokens <= tokens_) {
        return 0;
    }
    if (tokens > depth_ || rate_.number == 0) {
        return never;
    }
    const std::uint64_t per_second = rate_.number * (nanoseconds_per_second / rate_.nanoseconds);
    const std::uint64_t missing = tokens - tokens_;
    const std::uint64_t seconds = missing / per_second;
    if (seconds > 1000000000) {
        return never;
    }
    // What the last second brings, rounded up; the parts that are there already come off.
    const std::uint64_t parts = missing % per_second * rate_.nanoseconds;
    Time time = seconds * nanoseconds_per_second;
    if (parts >= part_) {
        time += (parts - part_ + rate_.number - 1) / rate_.number;
    } else {
        time -= (part_ - parts) / rate_.number;
    }
    return time;
}

std::uint64_t TokenBucket::spilt()
{
    fill();
    const std::uint64_t told = spilt_;
    spilt_ = 0;
    return told;
}

}  // namespace sim
