/// The time of the simulated switches, and what waits for it. See <sim/clock.h>.
#pragma once

#include <sim/clock.h>

#include <cstdint>
#include <functional>

namespace sim {

/// Nanoseconds.
using Time = std::uint64_t;

constexpr Time nanoseconds_per_microsecond = 1000;
constexpr Time nanoseconds_per_millisecond = 1000000;
constexpr Time nanoseconds_per_second = 1000000000;

Time clock_now();

extern sim_clock_mode_t clock_mode;

/// Lets a clock that runs reach the present. Called before something happens to a unit, with the lock held and while
/// no function works on one, since whatever is due happens.
inline void keep_up_with_time()
{
    if (clock_mode == simClockRuns) {
        sim_clock_catch_up();
    }
}

/// Waits at most so long until the condition holds, as the clock's mode says; whether it does in the end. The caller
/// works on no unit. In a callback of the clock there is no waiting.
bool wait_until(const std::function<bool()> &condition, Time longest);

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

    bool waits() const { return waits_; }
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
