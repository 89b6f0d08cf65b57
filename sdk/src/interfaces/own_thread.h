/// A thread of the simulated switch's own. std::thread would need a newer C++ library than the oldest systems have.
#pragma once

#include "refusal.h"

#include <cerrno>

#include <pthread.h>

namespace sim {

class OwnThread {
public:
    /// Throws a Refusal. Of one that has been joined or is new.
    template <class Work>
    void start(Work &work)
    {
        errno = pthread_create(
            &thread_, nullptr,
            [](void *datum) -> void * {
                (*static_cast<Work *>(datum))();
                return nullptr;
            },
            &work);
        is_started_ = errno == 0;
        if (!is_started_) {
            refuse("starting a thread");
        }
    }

    bool is_started() const { return is_started_; }

    void join()
    {
        pthread_join(thread_, nullptr);
        is_started_ = false;
    }

private:
    pthread_t thread_ = {};
    bool is_started_ = false;
};

}  // namespace sim
