/// Controls of ports: those of the port family and those of the VLAN family.
#include "begin.h"
#include "controls.h"
#include "port.h"
#include "sim_port.h"
#include "sim_vlan.h"

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

// Moved addresses are learnt as new ones are: that cannot be set apart.
constexpr Tie port_ties[] = {
    {bcmPortControlL2Learn, get_learn, set_learn},
    {bcmPortControlL2Move, nullptr, nullptr},
};
constexpr Controls port_controls = {
    {"bcm_port_control", "port"}, bcmPortControlCount, std::begin(port_ties), std::end(port_ties)};

constexpr Tie vlan_ties[] = {
    {bcmVlanPortUntaggedDrop, get_drop<&Dropped::untagged>, set_drop<&Dropped::untagged>},
    {bcmVlanPortTaggedDrop, get_drop<&Dropped::tagged>, set_drop<&Dropped::tagged>},
    {bcmVlanPortIngressFilterBypass, get_filter_bypass, set_filter_bypass},
};
constexpr Controls vlan_controls = {
    {"bcm_vlan_control_port", "vlan"}, bcmVlanPortControlCount, std::begin(vlan_ties), std::end(vlan_ties)};

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
