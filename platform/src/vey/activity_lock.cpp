#include "vey/activity_lock.h"

#include "vey/activity_lock_control.h"
#include "vey/exception.h"

namespace Vey {

Lock::Lock()
{
    pthread_mutexattr_t attributes;
    int error = pthread_mutexattr_init(&attributes);
    if (error == 0) {
        pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_ERRORCHECK);
        error = pthread_mutex_init(&mutex_, &attributes);
        pthread_mutexattr_destroy(&attributes);
    }
    if (error != 0) {
        throw ErrnoException("Failed to make a lock", error);
    }
}

Lock::~Lock()
{
    pthread_mutex_destroy(&mutex_);
}

int Lock::lock() noexcept
{
    if (int error = next_lock_error_.exchange(0)) {
        return error;
    }
    int error = pthread_mutex_lock(&mutex_);
    if (error == 0) {
        holder_ = pthread_self();
        held_ = true;
    }
    return error;
}

int Lock::unlock() noexcept
{
    if (!heldByThisThread()) {
        return pthread_mutex_unlock(&mutex_);
    }
    // Taken out while the lock still protects them, ended when it no longer does.
    std::vector<Ptr<const PtrInterface>> leaving;
    leaving.swap(leaving_);
    held_ = false;
    int error = pthread_mutex_unlock(&mutex_);
    if (int wanted = next_unlock_error_.exchange(0)) {
        error = wanted;
    }
    return error;
}

bool Lock::heldByThisThread() const noexcept
{
    return held_ && pthread_equal(holder_, pthread_self());
}

void Lock::dropAfterUnlock(Ptr<const PtrInterface> object)
{
    if (object) {
        leaving_.push_back(std::move(object));
    }
}

void Lock::failNext(int lock_error, int unlock_error) noexcept
{
    next_lock_error_ = lock_error;
    next_unlock_error_ = unlock_error;
}

Lock &ActivityLockAnchor::lock()
{
    // Never destroyed: other libraries' clean-up may still take it.
    static Lock &lock = *new Lock;
    return lock;
}

}  // namespace Vey

int vey_activity_lock(void)
{
    return Vey::ActivityLockAnchor::lock().lock();
}

int vey_activity_unlock(void)
{
    return Vey::ActivityLockAnchor::lock().unlock();
}

void vey_activity_lock_fail_next(int lock_error, int unlock_error)
{
    Vey::ActivityLockAnchor::lock().failNext(lock_error, unlock_error);
}
