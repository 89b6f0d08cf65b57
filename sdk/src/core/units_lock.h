/// One thread at a time works on units.
///
/// As long as no thread of the simulated switch's own runs, its callers see to that, and nothing is locked. From
/// share_units() on, whoever works on units holds one lock, which each thread may take again. It is one for all
/// units: a frame goes from one to another over a cable, and much is common to them. Threads get it in the order
/// in which they asked for it.
#pragma once

#include <atomic>

namespace sim {

class UnitsLock {
public:
    UnitsLock() : held_(sharing_.load(std::memory_order_acquire))
    {
        if (held_) {
            take();
        }
    }
    ~UnitsLock()
    {
        if (held_) {
            give();
        }
    }
    UnitsLock(const UnitsLock &) = delete;
    UnitsLock &operator=(const UnitsLock &) = delete;

private:
    friend void share_units();
    friend void own_units();
    friend void forget_other_threads();

    static void take();
    static void give();

    static std::atomic<bool> sharing_;
    const bool held_;
};

/// From now on there is another thread that works on units. The caller is in no function of the SDK.
void share_units();

/// The thread that takes the lock as the last of the simulated switch's own says so, with the lock held.
void own_units();

/// What a thread that waits does before and after, so that nobody has to wait for it: it may hold a lock of its
/// own. Either may be null.
struct WaitHooks {
    void *(*begins)();
    void (*ends)(void *state);
};
void set_wait_hooks(WaitHooks hooks);

/// Waits for something else as for the lock.
class Wait {
public:
    Wait();
    ~Wait();
    Wait(const Wait &) = delete;
    Wait &operator=(const Wait &) = delete;

private:
    const WaitHooks hooks_;
    void *const state_;
};

}  // namespace sim
