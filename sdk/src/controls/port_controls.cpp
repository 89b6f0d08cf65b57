/// Controls of ports: those of the port family and those of the VLAN family.
#include "begin.h"
#include "controls.h"
#include "port.h"
#include "sim_port.h"
#include "sim_vlan.h"
#include "tags.h"

#include <iterator>

using namespace sim;

namespace {

int get_learn(int unit, int port, int *value)
{
    uint32 flags;
    const int rc =
        value != nullptr ? sim_bcm_port_learn_get(unit, port, &flags) : static_cast<int>(BCM_E_PARAM);
    if (rc == BCM_E_NONE) {
        *value = static_cast<int>(flags);
    }
    return rc;
}

int set_learn(int unit, int port, int value)
{
    return sim_bcm_port_learn_set(unit, port, static_cast<uint32>(value));
}

int get_filter_bypass(int unit, int port, int *value)
{
    const int rc = sim_bcm_port_ifilter_get(unit, port, value);
    if (rc == BCM_E_NONE) {
        *value = !*value;
    }
    return rc;
}

int set_filter_bypass(int unit, int port, int value)
{
    return sim_bcm_port_ifilter_set(unit, port, !value);
}

/// Which packets a port drops: one mode stands for untagged, tagged, both or none.
struct Dropped {
    bool untagged, tagged;
};

Dropped dropped(const Port &port)
{
    const bool all = port.discard == BCM_PORT_DISCARD_ALL;
    return {all || port.discard == BCM_PORT_DISCARD_UNTAG, all || port.discard == BCM_PORT_DISCARD_TAG};
}

template <bool Dropped::*kind>
int get_drop(int unit, int port, int *value)
{
    return begin(unit, given(value), settings_of(port)).then([&](Port &own) { *value = dropped(own).*kind; });
}

template <bool Dropped::*kind>
int set_drop(int unit, int port, int value)
{
    return begin(unit, settings_of(port)).then([&](Port &own) {
        Dropped kinds = dropped(own);
        kinds.*kind = value != 0;
        own.discard = kinds.untagged ? kinds.tagged ? BCM_PORT_DISCARD_ALL : BCM_PORT_DISCARD_UNTAG
                      : kinds.tagged ? BCM_PORT_DISCARD_TAG
                                     : BCM_PORT_DISCARD_NONE;
    });
}

// Moved addresses are learnt as new ones are: that cannot be set apart. Where samples go, the switch has for all ports.
constexpr Tie port_ties[] = {
    {bcmPortControlL2Learn, get_learn, set_learn},
    {bcmPortControlL2Move, nullptr, nullptr},
    {bcmPortControlSampleIngressDest, nullptr, nullptr},
    {bcmPortControlSampleEgressDest, nullptr, nullptr},
};
constexpr Controls port_controls = {
    {"bcm_port_control", "port"}, bcmPortControlCount, std::begin(port_ties), std::end(port_ties)};

// What is not looked at by packets.
constexpr Tie absent(int control)
{
    return {control, nullptr, nullptr};
}

constexpr rules::Table vlan_table = {"bcm_vlan_control_port", "vlan"};

/// On until it is set.
template <bcm_vlan_control_port_t control>
int get_enabled(int unit, int port, int *value)
{
    const bcm_vlan_control_port_t type = control;
    const int rc = rules::find(
        vlan_table, unit, {rules::own_port(port), rules::key(type), rules::result_at(value, sizeof *value)});
    if (rc == BCM_E_NOT_FOUND) {
        *value = 1;
        return BCM_E_NONE;
    }
    return rc;
}

template <bcm_vlan_control_port_t control>
int set_switch(int unit, int port, int value)
{
    const bcm_vlan_control_port_t type = control;
    const int on = value != 0;
    return rules::set(vlan_table, unit, {rules::own_port(port), rules::key(type), rules::given(on)});
}

template <bcm_vlan_control_port_t control>
constexpr Tie enabled()
{
    return {control, get_enabled<control>, set_switch<control>};
}

template <bcm_vlan_control_port_t control>
int get_value(int unit, int port, int *value)
{
    const bcm_vlan_control_port_t type = control;
    return rules::get(vlan_table, unit,
                      {rules::own_port(port), rules::key(type), rules::result_at(value, sizeof *value)});
}

/// A type of key that packets have, or none.
template <bcm_vlan_control_port_t control>
int set_key(int unit, int port, int value)
{
    const bcm_vlan_control_port_t type = control;
    const rules::Arguments arguments = {rules::own_port(port), rules::key(type), rules::given(value)};
    const bool is_type = value >= bcmVlanTranslateKeyInvalid && value < bcmVlanTranslateKeyCount;
    const bool is_here = value == bcmVlanTranslateKeyInvalid || key_type_of(value).part != KeyPart::none;
    return !is_type   ? rules::refuse(vlan_table, unit, arguments)
           : !is_here ? rules::unavailable(vlan_table, unit, arguments)
                      : rules::set(vlan_table, unit, arguments);
}

constexpr Tie vlan_ties[] = {
    enabled<bcmVlanTranslateIngressEnable>(),
    enabled<bcmVlanTranslateEgressEnable>(),
    enabled<bcmVlanLookupMACEnable>(),
    enabled<bcmVlanLookupIPEnable>(),
    enabled<bcmVlanLookupProtocolEnable>(),
    {bcmVlanPortTranslateKeyFirst, get_value<bcmVlanPortTranslateKeyFirst>,
     set_key<bcmVlanPortTranslateKeyFirst>},
    {bcmVlanPortTranslateKeySecond, get_value<bcmVlanPortTranslateKeySecond>,
     set_key<bcmVlanPortTranslateKeySecond>},
    absent(bcmVlanPortPreferMAC),
    absent(bcmVlanTranslateEgressMissUntagToUnmodified),
    absent(bcmVlanTranslateEgressKey),
    absent(bcmVlanTranslateUseOuterTag),
    absent(bcmVlanTranslateUsePortDefault),
    absent(bcmVlanPortUseInnerPri),
    absent(bcmVlanPortTranslateKeyFirstRangeEnable),
    absent(bcmVlanPortTranslateKeySecondRangeEnable),
    absent(bcmVlanPortTranslateKeyFirstOuterTpidMatch),
    absent(bcmVlanPortTranslateKeySecondOuterTpidMatch),
    absent(bcmVlanPortDoubleLookupEnable),
    absent(bcmVlanPortPriTaggedDrop),
    absent(bcmVlanPortEgressInnerTpid),
    absent(bcmVlanPortOuterTpidSelect),
    {bcmVlanPortUntaggedDrop, get_drop<&Dropped::untagged>, set_drop<&Dropped::untagged>},
    {bcmVlanPortTaggedDrop, get_drop<&Dropped::tagged>, set_drop<&Dropped::tagged>},
    {bcmVlanPortIngressFilterBypass, get_filter_bypass, set_filter_bypass},
};
constexpr rules::Table unit_table = {"bcm_vlan_control", "vlan"};

int get_translates(int unit, int, int *value)
{
    const bcm_vlan_control_t type = bcmVlanTranslate;
    const int rc = rules::find(unit_table, unit, {rules::key(type), rules::result_at(value, sizeof *value)});
    if (rc == BCM_E_NOT_FOUND) {
        *value = 1;
        return BCM_E_NONE;
    }
    return rc;
}

int set_translates(int unit, int, int value)
{
    const bcm_vlan_control_t type = bcmVlanTranslate;
    const int on = value != 0;
    return rules::set(unit_table, unit, {rules::key(type), rules::given(on)});
}

// Of the VLAN family's controls of a unit, packets look at one.
constexpr Tie unit_ties[] = {
    absent(bcmVlanDropUnknown),
    absent(bcmVlanPreferIP4),
    absent(bcmVlanPreferMAC),
    absent(bcmVlanShared),
    absent(bcmVlanSharedID),
    absent(bcmVlanIgnorePriorityTag),
    {bcmVlanTranslate, get_translates, set_translates},
    absent(bcmVlanFlushOnDestroy),
    absent(bcmVlanItagTpidSelect),
    absent(bcmVlanRangeCheckEnable),
    absent(bcmVlanCrossConnectEnable),
    absent(bcmVlanEgressFilterAllPorts),
    absent(bcmVlanLearnByInnerVlan),
    absent(bcmVlanDoubleTagLookupFirst),
    absent(bcmVlanSubnetLookupBits),
    absent(bcmVlanPriorityMapShared),
    absent(bcmVlanStatByColor),
};
constexpr Controls unit_controls = {unit_table, bcmVlanControlCount, std::begin(unit_ties),
                                    std::end(unit_ties)};

constexpr Controls vlan_controls = {vlan_table, bcmVlanPortControlCount, std::begin(vlan_ties),
                                    std::end(vlan_ties)};

}  // namespace

extern "C" {

int sim_bcm_port_control_set(int unit, bcm_port_t port, bcm_port_control_t type, int value)
{
    return port_controls.set(unit, port, type, value,
                             {rules::own_port(port), rules::key(type), rules::given(value)});
}

int sim_bcm_port_control_get(int unit, bcm_port_t port, bcm_port_control_t type, int *value)
{
    return port_controls.get(
        unit, port, type, value,
        {rules::own_port(port), rules::key(type), rules::result_at(value, sizeof *value)});
}

int sim_bcm_vlan_control_set(int unit, bcm_vlan_control_t control, int arg)
{
    return unit_controls.set(unit, 0, control, arg, {rules::key(control), rules::given(arg)});
}

int sim_bcm_vlan_control_get(int unit, bcm_vlan_control_t control, int *arg)
{
    return unit_controls.get(unit, 0, control, arg,
                             {rules::key(control), rules::result_at(arg, sizeof *arg)});
}

int sim_bcm_vlan_control_port_set(int unit, bcm_port_t port, bcm_vlan_control_port_t type, int arg)
{
    return vlan_controls.set(unit, port, type, arg,
                             {rules::own_port(port), rules::key(type), rules::given(arg)});
}

int sim_bcm_vlan_control_port_get(int unit, bcm_port_t port, bcm_vlan_control_port_t type, int *arg)
{
    return vlan_controls.get(unit, port, type, arg,
                             {rules::own_port(port), rules::key(type), rules::result_at(arg, sizeof *arg)});
}

}  // extern "C"
