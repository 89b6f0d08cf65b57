#include "events.h"

#include "begin.h"
#include "enumerators.h"
#include "sim_switch.h"

#include <cinttypes>
#include <cstdio>

namespace sim {

namespace {

constexpr int actions_count = bcmSwitchEventControlCorrect + 1;

constexpr std::array<uint32, actions_count> controls_at_first = [] {
    std::array<uint32, actions_count> controls = {};
    controls[bcmSwitchEventControlEnable] = 1;
    controls[bcmSwitchEventControlCallback] = 1;
    controls[bcmSwitchEventControlStormWindow] = 1000;
    controls[bcmSwitchEventControlCorrect] = 1;
    return controls;
}();

void print(int unit, const Event &event)
{
    static const Names names(names_of_bcm_switch_event_e, "bcmSwitchEvent");
    std::printf("unit %d: event %s %" PRIu32 " %" PRIu32 " %" PRIu32 "\n", unit,
                names.name(event.event, true).c_str(), event.arg1, event.arg2, event.arg3);
}

}  // namespace

uint32 EventState::control(int event, uint32 arg1, int action) const
{
    for (const uint32 id : {arg1, uint32{0}}) {
        const auto found = controls_.find({event, id, action});
        if (found != controls_.end()) {
            return found->second;
        }
    }
    return controls_at_first[static_cast<std::size_t>(action)];
}

void EventState::set_control(int event, uint32 arg1, int action, uint32 value)
{
    if (arg1 == 0) {
        // All: what was set for some of them has to give way.
        for (auto one = controls_.lower_bound({event, 0, 0}); one != controls_.end();) {
            const auto &[of, id, what] = one->first;
            if (of != event) {
                break;
            }
            one = what == action ? controls_.erase(one) : std::next(one);
        }
    }
    controls_[{event, arg1, action}] = value;
}

bool EventState::pass(const Event &event)
{
    const uint32 limit = control(event.event, event.arg1, bcmSwitchEventControlStormLimit);
    const Time length =
        control(event.event, event.arg1, bcmSwitchEventControlStormWindow) * nanoseconds_per_millisecond;
    Window &window = windows_[static_cast<std::size_t>(event.event)];
    if (window.events == 0 || clock_now() - window.began >= length) {
        window = {clock_now(), 0};
    }
    window.events += window.events != UINT32_MAX ? 1 : 0;
    return limit == 0 || window.events <= limit;
}

bool is_looked_at(Switch &sw, const Event &event)
{
    return events_of(sw).control(event.event, event.arg1, bcmSwitchEventControlEnable) != 0;
}

void raise(Switch &sw, const Event &event)
{
    EventState &state = events_of(sw);
    if (!is_looked_at(sw, event) || !state.pass(event)) {
        return;
    }
    if (state.control(event.event, event.arg1, bcmSwitchEventControlLog) != 0) {
        print(sw.unit, event);
    }
    if (state.control(event.event, event.arg1, bcmSwitchEventControlCallback) != 0) {
        state.handlers.each([unit = sw.unit, event](const auto &handler) {
            handler.function(unit, event.event, event.arg1, event.arg2, event.arg3, handler.user_data);
        });
    }
}

}  // namespace sim

using namespace sim;

namespace {

/// An event that there is: BCM_E_PARAM.
auto known_event(int event)
{
    return [event](Switch &sw, auto next) -> int {
        return event >= 0 && event < events_count ? next(events_of(sw)) : static_cast<int>(BCM_E_PARAM);
    };
}

auto known_control(int event, const bcm_switch_event_control_t &control)
{
    return [event, action = control.action](Switch &sw, auto next) -> int {
        const bool is_known = action >= 0 && action < actions_count;
        return is_known ? known_event(event)(sw, next) : static_cast<int>(BCM_E_PARAM);
    };
}

}  // namespace

extern "C" {

int sim_bcm_switch_event_register(int unit, bcm_switch_event_cb_t cb, void *userdata)
{
    return begin(unit, given(cb)).then([&](Switch &sw) {
        return events_of(sw).handlers.add({cb, userdata});
    });
}

int sim_bcm_switch_event_unregister(int unit, bcm_switch_event_cb_t cb, void *userdata)
{
    return begin(unit, given(cb)).then([&](Switch &sw) {
        return events_of(sw).handlers.remove({cb, userdata});
    });
}

int sim_bcm_switch_event_control_set(int unit, bcm_switch_event_t event, bcm_switch_event_control_t type,
                                     uint32 value)
{
    return begin(unit, known_control(event, type)).then([&](EventState &state) {
        state.set_control(event, type.event_id, type.action, value);
    });
}

int sim_bcm_switch_event_control_get(int unit, bcm_switch_event_t event, bcm_switch_event_control_t type,
                                     uint32 *value)
{
    return begin(unit, given(value), known_control(event, type)).then([&](EventState &state) {
        *value = state.control(event, type.event_id, type.action);
    });
}

int sim_bcm_switch_event_inject(int unit, bcm_switch_event_t event, uint32 arg1, uint32 arg2, uint32 arg3)
{
    return begin(unit, known_event(event)).then([&](Switch &sw, EventState &) {
        raise(sw, {event, arg1, arg2, arg3});
    });
}

}  // extern "C"
