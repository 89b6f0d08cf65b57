/// Controls of the switch as a whole.
#include "begin.h"
#include "controls.h"
#include "l2.h"
#include "l3.h"
#include "sim_switch.h"
#include "vlan.h"

#include <iterator>

using namespace sim;

namespace {

template <bool L2Settings::*setting>
int get_l2(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) { *value = l2_of(sw).settings.*setting; });
}

template <bool L2Settings::*setting>
int set_l2(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) { l2_of(sw).settings.*setting = value != 0; });
}

template <bool L3Settings::*setting>
int get_l3(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) { *value = l3_of(sw).settings.*setting; });
}

template <bool L3Settings::*setting>
int set_l3(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) {
        l3_of(sw).settings.*setting = value != 0;
        l3_of(sw).change_addresses();
    });
}

template <bool L3Settings::*setting>
constexpr Tie l3_tie(int control)
{
    return {control, get_l3<setting>, set_l3<setting>};
}

int get_new_state(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) { *value = groups_of(sw).state_of_new; });
}

int set_new_state(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) -> int {
        if (!StgTable::valid_state(value)) {
            return BCM_E_PARAM;
        }
        groups_of(sw).state_of_new = value;
        return BCM_E_NONE;
    });
}

constexpr Tie ties[] = {
    {bcmSwitchL2LearnEnable, get_l2<&L2Settings::learns>, set_l2<&L2Settings::learns>},
    {bcmSwitchL2AgeEnable, get_l2<&L2Settings::ages>, set_l2<&L2Settings::ages>},
    {bcmSwitchStpStateDefault, get_new_state, set_new_state},
    l3_tie<&L3Settings::routes>(bcmSwitchL3RoutingEnable),
    l3_tie<&L3Settings::header_errors_to_cpu>(bcmSwitchL3HeaderErrorToCpu),
    l3_tie<&L3Settings::unknown_to_cpu>(bcmSwitchUnknownL3DestToCpu),
    l3_tie<&L3Settings::expired_to_cpu>(bcmSwitchL3UcTtlErrToCpu),
    l3_tie<&L3Settings::too_long_to_cpu>(bcmSwitchL3UcMtuFailToCpu),
    l3_tie<&L3Settings::unexpected_sources_to_cpu>(bcmSwitchL3UrpfFailToCpu),
    l3_tie<&L3Settings::null_routes_to_cpu>(bcmSwitchL3NullRouteToCpu),
};
// The last of the enumeration, which does not say how many there are.
constexpr int count = bcmSwitchHashMulticastTable + 1;
constexpr Controls controls = {{"bcm_switch_control", "switch"}, count, std::begin(ties), std::end(ties)};

}  // namespace

extern "C" {

int sim_bcm_switch_control_set(int unit, bcm_switch_control_t type, int arg)
{
    return controls.set(unit, 0, type, arg, {rules::key(type), rules::given(arg)});
}

int sim_bcm_switch_control_get(int unit, bcm_switch_control_t type, int *arg)
{
    return controls.get(unit, 0, type, arg, {rules::key(type), rules::result_at(arg, sizeof *arg)});
}

}  // extern "C"
