// The process-wide lock of the platform's object graph.
#pragma once

#include "vey/ptr.h"

#include <atomic>
#include <pthread.h>
#include <vector>

namespace Vey {

/// A mutex that notices when its own thread locks it again. Numbers are those of <cerrno>.
class Lock {
public:
    /// Throws ErrnoException.
    Lock();
    ~Lock();
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;

    /// Waits for the mutex. 0: this call took it; EDEADLK (35): this thread holds it already.
    int lock() noexcept;

    /// 0: released; EPERM: this thread does not hold it.
    int unlock() noexcept;

    bool heldByThisThread() const noexcept;

    /// Keeps the object until the thread that holds the lock now has released it. For objects whose end may run
    /// other people's code: that code might wait for a thread which waits for this lock.
    void dropAfterUnlock(Ptr<const PtrInterface> object);

    /// Lets tests see failures: the next lock() fails with lock_error, the next unlock() releases but answers
    /// unlock_error; 0 for one that is to go as usual.
    void failNext(int lock_error, int unlock_error) noexcept;

private:
    pthread_mutex_t mutex_;
    std::atomic<bool> held_{false};
    std::atomic<pthread_t> holder_{};  ///< valid while held_
    std::vector<Ptr<const PtrInterface>> leaving_;
    std::atomic<int> next_lock_error_{0}, next_unlock_error_{0};
};

/// Where the activity lock is found.
class ActivityLockAnchor {
public:
    /// Lives as long as the process.
    static Lock &lock();
};

}  // namespace Vey
