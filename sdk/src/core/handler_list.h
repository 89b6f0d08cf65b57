/// Functions of the SDK's callers that are called when something happens.
///
/// At an event they are called in the order in which they were registered, each pair of function and datum
/// once. What a function does is in force at once: one that it unregisters is not called any more, one that
/// it registers is called from the next event on, and when the list is cleared or ends, as when the unit is
/// detached, nobody else is called. An event may happen within an event.
#pragma once

#include <bcm/error.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace sim {

/// A function with the datum that it is to get back.
template <class Function>
struct Callback {
    Function function;
    void *user_data;

    bool operator==(const Callback &other) const
    {
        return function == other.function && user_data == other.user_data;
    }
};

template <class Handler>
class HandlerList {
public:
    HandlerList() = default;
    HandlerList(HandlerList &&) noexcept = default;
    HandlerList &operator=(HandlerList &&other) noexcept
    {
        clear();
        registrations_ = std::move(other.registrations_);
        return *this;
    }
    ~HandlerList() { clear(); }

    bool empty() const { return registrations_ == nullptr || registrations_->list.empty(); }

    /// BCM_E_EXISTS
    int add(const Handler &handler)
    {
        if (registrations_ == nullptr) {
            registrations_ = std::make_shared<Registrations>();
        }
        auto &[list, next_number] = *registrations_;
        if (find(handler) != list.end()) {
            return BCM_E_EXISTS;
        }
        list.push_back({handler, next_number++});
        return BCM_E_NONE;
    }

    /// BCM_E_NOT_FOUND
    int remove(const Handler &handler)
    {
        if (empty() || find(handler) == registrations_->list.end()) {
            return BCM_E_NOT_FOUND;
        }
        registrations_->list.erase(find(handler));
        return BCM_E_NONE;
    }

    void clear()
    {
        if (registrations_ != nullptr) {
            registrations_->list.clear();
        }
    }

    /// An event: call(const Handler &) for each. The list itself may end meanwhile.
    template <class Call>
    void each(Call call) const
    {
        if (empty()) {
            return;
        }
        const std::shared_ptr<Registrations> registrations = registrations_;
        const std::uint64_t end = registrations->next_number;
        std::uint64_t number = 0;
        while (const Registration *next = registrations->first_from(number)) {
            if (next->number >= end) {
                break;
            }
            number = next->number + 1;
            const Handler handler = next->handler;
            call(handler);
        }
    }

private:
    struct Registration {
        Handler handler;
        std::uint64_t number;  ///< ascending, never used again
    };

    struct Registrations {
        std::vector<Registration> list;
        std::uint64_t next_number = 0;

        /// Null if there is none.
        const Registration *first_from(std::uint64_t number) const
        {
            const auto found = std::find_if(list.begin(), list.end(),
                                            [&](const Registration &one) { return one.number >= number; });
            return found != list.end() ? &*found : nullptr;
        }
    };

    auto find(const Handler &handler)
    {
        return std::find_if(registrations_->list.begin(), registrations_->list.end(),
                            [&](const Registration &one) { return one.handler == handler; });
    }

    std::shared_ptr<Registrations> registrations_;  ///< shared with the events that are going on
};

}  // namespace sim
