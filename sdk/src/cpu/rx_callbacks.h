/// Who is given received packets, in the order of priority.
///
/// Those of one priority are asked in the order in which they were registered. What a callback changes is in force
/// at once: one that was unregistered is not called any more, one that was registered is called with the next packet.
#pragma once

#include <bcm/rx.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace sim {

struct RxCallback {
    static constexpr int all_queues = -1;

    int queue;
    bcm_rx_cb_f function;
    int priority;
    void *cookie = nullptr;
    std::string name = {};
    std::uint64_t number = 0;

    /// What unregistering goes by.
    bool is_same(const RxCallback &other) const
    {
        return queue == other.queue && function == other.function && priority == other.priority;
    }

    /// The order in which they are asked.
    std::pair<int, std::uint64_t> place() const { return {-priority, number}; }
};

class RxCallbacks {
public:
    /// BCM_E_EXISTS
    int add(RxCallback callback)
    {
        if (find(callback) != all_.end()) {
            return BCM_E_EXISTS;
        }
        callback.number = next_number_++;
        const auto next = std::find_if(all_.begin(), all_.end(),
                                       [&](const RxCallback &one) { return one.place() > callback.place(); });
        all_.insert(next, std::move(callback));
        return BCM_E_NONE;
    }

    /// BCM_E_NOT_FOUND
    int remove(const RxCallback &callback)
    {
        const auto found = find(callback);
        if (found == all_.end()) {
            return BCM_E_NOT_FOUND;
        }
        all_.erase(found);
        return BCM_E_NONE;
    }

    void clear() { all_.clear(); }

    const std::vector<RxCallback> &all() const { return all_; }

    /// Asks call(function, cookie) of each for a packet of that queue until one does not answer
    /// BCM_RX_NOT_HANDLED, and returns its answer, or that.
    template <class Call>
    bcm_rx_t ask(int queue, Call call) const
    {
        const std::uint64_t end = next_number_;
        std::pair<int, std::uint64_t> last = {-BCM_RX_PRIO_MAX - 1, 0};
        for (;;) {
            const auto next = std::find_if(all_.begin(), all_.end(), [&](const RxCallback &one) {
                return one.place() > last && one.number < end
                       && (one.queue == queue || one.queue == RxCallback::all_queues);
            });
            if (next == all_.end()) {
                return BCM_RX_NOT_HANDLED;
            }
            last = next->place();
            const bcm_rx_t answer = call(next->function, next->cookie);
            if (answer == BCM_RX_HANDLED || answer == BCM_RX_HANDLED_OWNED) {
                return answer;
            }
        }
    }

private:
    std::vector<RxCallback>::iterator find(const RxCallback &callback)
    {
        return std::find_if(all_.begin(), all_.end(),
                            [&](const RxCallback &one) { return one.is_same(callback); });
    }

    std::vector<RxCallback> all_;
    std::uint64_t next_number_ = 0;
};

}  // namespace sim
