/// Settings of the field processor as a whole.
#include "field.h"
#include "sim_field.h"

#include <algorithm>
#include <iterator>

using namespace sim;

namespace {

/// A setting that packets meet, within its limits.
struct Setting {
    bcm_field_control_t control;
    int FieldSettings::*place;
    int least, highest;
};

constexpr int shortest_frame = 64, longest_addition = 255;

constexpr Setting settings[] = {
    {bcmFieldControlStatPacketBytesAdjust, &FieldSettings::counted_besides, -shortest_frame,
     longest_addition},
    {bcmFieldControlLookupEnable, &FieldSettings::looks_before_tables, 0, 1},
    {bcmFieldControlDropWinsOverCopy, &FieldSettings::drops_copies, 0, 1},
};

/// One that is as the switch is.
struct Fact {
    bcm_field_control_t control;
    uint32 value;
};

constexpr Fact facts[] = {
    {bcmFieldControlStatSyncInterval, 0},  // counters are read as they are
    {bcmFieldControlStatSyncPause, 0},
    {bcmFieldControlMetersSharing, 1},       // entries can have one policer
    {bcmFieldControlPriorityMoveEnable, 1},  // a new entry is never in the way of others
    {bcmFieldControlEntryAtomicUpdate, 1},   // each packet meets one or the other
    {bcmFieldControlGroupAutoExpand, 1},
    {bcmFieldControlGroupSharedPriority, 1},
    {bcmFieldControlExactMatchEnable, 0},
    {bcmFieldControlExternalEnable, 0},
    {bcmFieldControlInnerHeaderEnable, 1},
    {bcmFieldControlTunnelHeaderEnable, 1},
    {bcmFieldControlColorAware, 1},
};

/// known(setting) or fixed(fact) of a control. BCM_E_PARAM: none; BCM_E_UNAVAIL: one of what the switch has not got.
template <class Known, class Fixed>
int with_control(bcm_field_control_t control, Known known, Fixed fixed)
{
    if (static_cast<unsigned>(control) >= bcmFieldControlCount) {
        return BCM_E_PARAM;
    }
    const auto is_it = [control](const auto &each) { return each.control == control; };
    const auto setting = std::find_if(std::begin(settings), std::end(settings), is_it);
    if (setting != std::end(settings)) {
        return known(*setting);
    }
    const auto fact = std::find_if(std::begin(facts), std::end(facts), is_it);
    return fact != std::end(facts) ? fixed(*fact) : static_cast<int>(BCM_E_UNAVAIL);
}

}  // namespace

extern "C" {

int sim_bcm_field_control_set(int unit, bcm_field_control_t control, uint32 state)
{
    return begin(unit, ready<FieldState>).then([&](FieldState &fields) -> int {
        const auto change = [&](const Setting &setting) -> int {
            const auto number = static_cast<int>(state);
            if (number < setting.least || number > setting.highest) {
                return BCM_E_PARAM;
            }
            fields.settings.*setting.place = number;
            fields.update_lookups();
            return BCM_E_NONE;
        };
        return with_control(control, change, [&](const Fact &fact) -> int {
            return state == fact.value ? BCM_E_NONE : BCM_E_UNAVAIL;
        });
    });
}

int sim_bcm_field_control_get(int unit, bcm_field_control_t control, uint32 *state)
{
    return begin(unit, ready<FieldState>, given(state)).then([&](FieldState &fields) -> int {
        const auto read = [&](const Setting &setting) -> int {
            *state = static_cast<uint32>(fields.settings.*setting.place);
            return BCM_E_NONE;
        };
        return with_control(control, read, [&](const Fact &fact) -> int {
            *state = fact.value;
            return BCM_E_NONE;
        });
    });
}

}  // extern "C"
