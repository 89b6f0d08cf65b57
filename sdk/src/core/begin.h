/// How a function of the SDK begins: what it needs is checked in the order that the headers promise, and
/// found.
///
///     return begin(unit, ready<L2State>, given(l2addr), own_port(port))
///         .then([&](Switch &sw, L2State &l2, int own) { ... });
///
/// A check is a function of the switch and of what comes next. It calls next(found...) and returns its
/// status, or returns an error instead; what is to be done after the function's own work it does then. Rooms
/// have checks of their own.
#pragma once

#include "clock.h"
#include "destination.h"
#include "switch.h"

#include <bcm/error.h>

#include <array>
#include <cstddef>
#include <tuple>
#include <type_traits>

namespace sim {

template <class... Checks>
class Beginning {
public:
    explicit Beginning(int unit, const Checks &...checks) : unit_(unit), checks_(checks...) {}

    /// BCM_E_UNIT; the first failing check's error; or what body([Switch &,] found...) returns, BCM_E_NONE
    /// for void. The body may have the unit detached: its switch stays in memory until the end.
    template <class Body>
    int then(Body body) const
    {
        const UnitsLock lock;
        return then(lock, body);
    }

    /// The same, where the caller holds the lock already.
    template <class Body>
    int then(const UnitsLock &lock, Body body) const
    {
        if (clock_mode == simClockRuns && !SwitchesInUse::any()) {
            sim_clock_catch_up();
        }
        const SwitchesInUse in_use(lock);
        Switch *sw = attached(unit_);
        if (sw == nullptr) {
            return BCM_E_UNIT;
        }
        return check_from<0>(*sw, [&](auto &...found) -> int {
            if constexpr (std::is_invocable_v<Body &, Switch &, decltype(found)...>) {
                return status_of(body, *sw, found...);
            } else {
                return status_of(body, found...);
            }
        });
    }

private:
    template <class Body, class... Arguments>
    static int status_of(Body &body, Arguments &...arguments)
    {
        if constexpr (std::is_void_v<std::invoke_result_t<Body &, Arguments &...>>) {
            body(arguments...);
            return BCM_E_NONE;
        } else {
            return body(arguments...);
        }
    }

    template <std::size_t index, class Next>
    int check_from(Switch &sw, const Next &next) const
    {
        if constexpr (index == sizeof...(Checks)) {
            return next();
        } else {
            return std::get<index>(checks_)(sw, [&](auto &...found) -> int {
                return check_from<index + 1>(sw,
                                             [&](auto &...more) -> int { return next(found..., more...); });
            });
        }
    }

    int unit_;
    std::tuple<Checks...> checks_;
};

template <class... Checks>
Beginning<Checks...> begin(int unit, const Checks &...checks)
{
    return Beginning<Checks...>(unit, checks...);
}

/// Pointers that must not be null: BCM_E_PARAM.
template <class... Pointers>
auto given(Pointers... pointers)
{
    return [has_all = (... && (pointers != nullptr))](Switch &, auto next) -> int {
        return has_all ? next() : static_cast<int>(BCM_E_PARAM);
    };
}

/// A room's state, which has to be initialised: BCM_E_INIT.
template <class State>
constexpr auto ready = [](Switch &sw, auto next) -> int {
    State &state = sw.of<State>();
    return state.initialised ? next(state) : static_cast<int>(BCM_E_INIT);
};

/// The number of the unit's own port that an argument means: BCM_E_PORT.
inline auto own_port(bcm_port_t port)
{
    return [port](Switch &, auto next) -> int {
        int number;
        const int rc = resolve_own_port(port, &number);
        return rc == BCM_E_NONE ? next(number) : rc;
    };
}

}  // namespace sim
