#include "units_lock.h"

#include <condition_variable>
#include <mutex>
#include <new>
#include <thread>

#include <pthread.h>

namespace sim {

std::atomic<bool> UnitsLock::sharing_{false};

namespace {

struct Turns {
    std::mutex guard;
    std::condition_variable changed;
    std::thread::id owner;
    unsigned depth = 0;
    unsigned long last_ticket = 0, in_turn = 0;
    WaitHooks hooks = {};
};

/// Never destroyed: threads may still wait when the process ends.
Turns &turns()
{
    static Turns &all = *new Turns;
    return all;
}

WaitHooks hooks()
{
    const std::lock_guard<std::mutex> guard(turns().guard);
    return turns().hooks;
}

}  // namespace

/// The child of a fork has no other threads, and its own may hold the lock.
void forget_other_threads()
{
    const WaitHooks kept = turns().hooks;
    new (&turns()) Turns;
    turns().hooks = kept;
    UnitsLock::sharing_ = false;
}

void share_units()
{
    static const int registered = pthread_atfork(nullptr, nullptr, forget_other_threads);
    static_cast<void>(registered);
    UnitsLock::sharing_ = true;
}

void own_units()
{
    UnitsLock::sharing_ = false;
}

void UnitsLock::take()
{
    Turns &all = turns();
    const std::thread::id self = std::this_thread::get_id();
    std::unique_lock<std::mutex> guard(all.guard);
    if (all.owner == self) {
        ++all.depth;
        return;
    }
    const unsigned long ticket = all.last_ticket++;
    if (ticket == all.in_turn) {
        all.owner = self;
        all.depth = 1;
        return;
    }
    guard.unlock();
    const Wait wait;
    guard.lock();
    all.changed.wait(guard, [&] { return ticket == all.in_turn; });
    all.owner = self;
    all.depth = 1;
    guard.unlock();
}

void UnitsLock::give()
{
    Turns &all = turns();
    const std::lock_guard<std::mutex> guard(all.guard);
    // After a fork it is nobody's.
    if (all.owner == std::this_thread::get_id() && --all.depth == 0) {
        all.owner = {};
        ++all.in_turn;
        all.changed.notify_all();
    }
}

void set_wait_hooks(WaitHooks given)
{
    const std::lock_guard<std::mutex> guard(turns().guard);
    turns().hooks = given;
}

Wait::Wait() : hooks_(hooks()), state_(hooks_.begins != nullptr ? hooks_.begins() : nullptr) {}

Wait::~Wait()
{
    if (hooks_.ends != nullptr) {
        hooks_.ends(state_);
    }
}

}  // namespace sim
