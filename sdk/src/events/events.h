/// The room of events: what a unit tells without being asked, of what, and to whom.
#pragma once

#include "clock.h"
#include "handler_list.h"
#include "switch.h"

#include <bcm/error.h>
#include <bcm/switch.h>

#include <array>
#include <map>
#include <tuple>

namespace sim {

constexpr int events_count = bcmSwitchEventModuleRemoved + 1;

/// What happened. The arguments are those of <bcm/switch_event.h>.
struct Event {
    bcm_switch_event_t event;
    uint32 arg1 = 0;
    uint32 arg2 = 0;
    uint32 arg3 = 0;
};

class EventState : public RoomState {
public:
    static constexpr Room room = Room::events;

    void forget_functions(Switch &) override { handlers.clear(); }
    void retire() override { handlers.clear(); }

    /// What is set for an event with that first argument, or else for all.
    uint32 control(int event, uint32 arg1, int action) const;
    void set_control(int event, uint32 arg1, int action, uint32 value);

    /// Counts one more of an event. False if there have been too many.
    bool pass(const Event &event);

    HandlerList<Callback<bcm_switch_event_cb_t>> handlers;

private:
    struct Window {
        Time began = 0;
        uint32 events = 0;
    };

    std::map<std::tuple<int, uint32, int>, uint32> controls_;  ///< by event, first argument and action
    std::array<Window, events_count> windows_;
};

inline EventState &events_of(Switch &sw)
{
    return sw.of<EventState>();
}

/// Whether anybody looks at events like that: what the unit does about one by itself, it does only then.
bool is_looked_at(Switch &sw, const Event &event);

/// The event happens: who is told may have done anything, even had the unit detached.
void raise(Switch &sw, const Event &event);

/// A check for functions that enter objects of a kind: of BCM_E_FULL an event tells, when all else is done.
inline auto tells_if_full(bcm_switch_object_t object)
{
    return [object](Switch &sw, auto next) -> int {
        const int rc = next();
        if (rc == BCM_E_FULL) {
            raise(sw, {bcmSwitchEventTableFull, static_cast<uint32>(object)});
        }
        return rc;
    };
}

}  // namespace sim
