#include "clock.h"
#include "units_lock.h"

#include <time.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <map>
#include <utility>

namespace sim {

sim_clock_mode_t clock_mode = simClockStands;

class Clock {
public:
    Time now() const { return now_; }

    void enter(Timer &timer, Time due)
    {
        leave(timer);
        timer.due_ = due;
        timer.number_ = next_number_++;
        waiting_.emplace(key_of(timer), &timer);
        timer.waits_ = true;
    }

    void leave(Timer &timer)
    {
        if (timer.waits_) {
            waiting_.erase(key_of(timer));
            timer.waits_ = false;
        }
    }

    /// Null if nobody waits.
    const Timer *next() const { return waiting_.empty() ? nullptr : waiting_.begin()->second; }

    /// A clock that runs goes on from there.
    int advance(Time by)
    {
        const int rc = advance_to(now_ + by);
        ahead_ = now_ - machine();
        return rc;
    }

    int advance_to(Time end)
    {
        if (advances_) {
            return BCM_E_BUSY;
        }
        advances_ = true;
        struct Ends {
            ~Ends() { flag = false; }
            bool &flag;
        } ends{advances_};
        while (!waiting_.empty() && waiting_.begin()->second->due_ <= end) {
            Timer &timer = *waiting_.begin()->second;
            now_ = timer.due_;
            leave(timer);
            if (timer.period_ != 0 && timer.period_ <= std::numeric_limits<Time>::max() - now_) {
                enter(timer, now_ + timer.period_);
            }
            // Who acts may do away with the timer.
            const std::function<void()> action = timer.action_;
            action();
        }
        now_ = end;
        return BCM_E_NONE;
    }

    int set_mode(sim_clock_mode_t mode)
    {
        if (advances_) {
            return BCM_E_BUSY;
        }
        const int rc = catch_up();
        clock_mode = mode;
        ahead_ = now_ - machine();
        return rc;
    }

    /// When a wait ends that begins now.
    Time end_of_wait(Time longest)
    {
        const UnitsLock lock;
        catch_up();
        return now_ + std::min(longest, std::numeric_limits<Time>::max() - now_);
    }

    /// Waits for a while that does not pass the end. False if that has come, or if it cannot be waited for.
    bool wait_a_bit(Time end)
    {
        Time nap;
        {
            const UnitsLock lock;
            if (advances_ || now_ >= end) {
                return false;
            }
            if (clock_mode == simClockSteps) {
                return advance_to(waiting_.empty() ? end : std::min(end, next()->due())) == BCM_E_NONE;
            }
            nap = std::min(end - now_, longest_nap);
        }
        {
            const Wait wait;
            const timespec duration = {0, static_cast<long>(nap)};
            ::nanosleep(&duration, nullptr);
        }
        const UnitsLock lock;
        return (clock_mode == simClockRuns ? catch_up() : advance_to(now_ + nap)) == BCM_E_NONE;
    }

    int catch_up()
    {
        if (clock_mode != simClockRuns) {
            return BCM_E_NONE;
        }
        const Time present = machine() + ahead_;
        return advances_ ? static_cast<int>(BCM_E_BUSY) : advance_to(present > now_ ? present : now_);
    }

private:
    using Key = std::pair<Time, std::uint64_t>;

    static constexpr Time longest_nap = 10000000;

    static Key key_of(const Timer &timer) { return {timer.due_, timer.number_}; }

    static Time machine()
    {
        const auto time = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<Time>(std::chrono::duration_cast<std::chrono::nanoseconds>(time).count());
    }

    Time now_ = 0;
    bool advances_ = false;
    Time ahead_ = 0;  // of the machine's clock, while it runs
    std::uint64_t next_number_ = 0;
    std::map<Key, Timer *> waiting_;
};

namespace {

/// Made on first use and never destroyed, as units are.
Clock &the_clock()
{
    static Clock &clock = *new Clock;
    return clock;
}

}  // namespace

Time clock_now()
{
    return the_clock().now();
}

bool wait_until(const std::function<bool()> &condition, Time longest)
{
    Clock &clock = the_clock();
    const Time end = clock.end_of_wait(longest);
    bool holds = condition();
    while (!holds && clock.wait_a_bit(end)) {
        holds = condition();
    }
    return holds;
}

Timer::Timer(std::function<void()> action) : action_(std::move(action)) {}

void Timer::start(Time delay)
{
    period_ = 0;
    enter(delay);
}

void Timer::repeat(Time period)
{
    period_ = period;
    enter(period);
}

void Timer::enter(Time delay)
{
    if (delay <= std::numeric_limits<Time>::max() - clock_now()) {
        the_clock().enter(*this, clock_now() + delay);
    } else {
        stop();
    }
}

void Timer::stop()
{
    the_clock().leave(*this);
}

}  // namespace sim

extern "C" {

uint64 sim_clock_now(void)
{
    return sim::clock_now();
}

int sim_clock_advance(uint64 nanoseconds)
{
    const sim::UnitsLock lock;
    const sim::Time now = sim::clock_now();
    return nanoseconds > std::numeric_limits<sim::Time>::max() - now ? static_cast<int>(BCM_E_PARAM)
                                                                     : sim::the_clock().advance(nanoseconds);
}

int sim_clock_mode_set(sim_clock_mode_t mode)
{
    const sim::UnitsLock lock;
    return mode < simClockModeCount ? sim::the_clock().set_mode(mode) : static_cast<int>(BCM_E_PARAM);
}

sim_clock_mode_t sim_clock_mode_get(void)
{
    return sim::clock_mode;
}

int sim_clock_catch_up(void)
{
    const sim::UnitsLock lock;
    return sim::the_clock().catch_up();
}

int sim_clock_wait(uint64 nanoseconds)
{
    sim::Clock &clock = sim::the_clock();
    const sim::Time end = clock.end_of_wait(nanoseconds);
    return clock.wait_a_bit(end) || clock.now() >= end ? BCM_E_NONE : BCM_E_BUSY;
}

int sim_clock_next(uint64 *nanoseconds)
{
    if (nanoseconds == nullptr) {
        return BCM_E_PARAM;
    }
    const sim::Timer *next = sim::the_clock().next();
    if (next == nullptr) {
        return BCM_E_NOT_FOUND;
    }
    *nanoseconds = next->due();
    return BCM_E_NONE;
}

}  // extern "C"
