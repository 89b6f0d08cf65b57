/// The time of the simulated switches, and what waits for it. See <sim/clock.h>.
#pragma once

#include <cstdint>
#include <functional>

namespace sim {

/// Nanoseconds.
using Time = std::uint64_t;

constexpr Time nanoseconds_per_microsecond = 1000;
constexpr Time nanoseconds_per_second = 1000000000;

Time clock_now();

/// Whether it runs with the machine's clock: who lets something happen then calls sim_clock_catch_up() before.
extern bool clock_runs;

/// Something that is done when its time has come: once, or again and again. It is not done any more when the
/// timer is stopped or gone, which it may be while it is being done.
class Timer {
public:
    explicit Timer(std::function<void()> action);
    ~Timer() { stop(); }
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;

    /// After so much time from now, in place of what it was set to before.
    void start(Time delay);
    /// Whenever so much time, which is not 0, has passed from now on.
    void repeat(Time period);
    void stop();

    Time due() const { return due_; }

private:
    friend class Clock;

    void enter(Time delay);

    std::function<void()> action_;
    Time period_ = 0;  // 0: once
    bool waits_ = false;
    Time due_ = 0;
    std::uint64_t number_ = 0;  // of those due at the same time, the lowest first
};

}  // namespace sim
