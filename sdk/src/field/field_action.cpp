#include "field_action.h"

#include "enumerators.h"
#include "sim_parse.h"

#include <bcm/error.h>
#include <bcm/vlan.h>

#include <algorithm>
#include <iterator>

namespace sim {

namespace {

using Kind = FieldEffect::Kind;
using Decision = FieldDecision;

constexpr unsigned in_lookup = 1, in_ingress = 2, in_egress = 4;

/// Where the parameters of an action are.
enum class Parameters : std::uint8_t {
    none,
    gport,
    module_port,
    trunk,
    group,
    ports,
    vlan,
};

struct ActionRow {
    bcm_field_action_t action;
    Decision decision;
    Kind kind;
    Parameters parameters;
    unsigned stages;
};

constexpr ActionRow actions[] = {
    {bcmFieldActionDrop, Decision::drop, Kind::drop, Parameters::none, in_lookup | in_ingress | in_egress},
    {bcmFieldActionDropCancel, Decision::drop, Kind::cancel, Parameters::none,
     in_lookup | in_ingress | in_egress},
    {bcmFieldActionCopyToCpu, Decision::copy_to_cpu, Kind::copy_to_cpu, Parameters::none, in_ingress},
    {bcmFieldActionCopyToCpuCancel, Decision::copy_to_cpu, Kind::cancel, Parameters::none, in_ingress},
    {bcmFieldActionRedirect, Decision::destination, Kind::to_destination, Parameters::gport, in_ingress},
    {bcmFieldActionRedirectPort, Decision::destination, Kind::to_destination, Parameters::module_port,
     in_ingress},
    {bcmFieldActionRedirectTrunk, Decision::destination, Kind::to_destination, Parameters::trunk, in_ingress},
    {bcmFieldActionRedirectMcast, Decision::destination, Kind::to_destination, Parameters::group, in_ingress},
    {bcmFieldActionRedirectPbmp, Decision::destination, Kind::to_ports, Parameters::ports, in_ingress},
    {bcmFieldActionRedirectBlackHole, Decision::drop, Kind::drop, Parameters::none, in_ingress},
    {bcmFieldActionRedirectCancel, Decision::destination, Kind::cancel, Parameters::none, in_ingress},
    {bcmFieldActionEgressMask, Decision::egress_ports, Kind::not_to_ports, Parameters::ports, in_ingress},
    {bcmFieldActionRedirectPbmpRemove, Decision::egress_ports, Kind::not_to_ports, Parameters::ports,
     in_ingress},
    {bcmFieldActionEgressPortsAdd, Decision::egress_ports, Kind::also_to_ports, Parameters::ports,
     in_ingress},
    {bcmFieldActionOuterVlanNew, Decision::vlan, Kind::vlan, Parameters::vlan, in_lookup},
    {bcmFieldActionVlanNew, Decision::vlan, Kind::vlan, Parameters::vlan, in_lookup},
};

}  // namespace

int add_effects(int action, const FieldAction &given, FieldStage stage, std::vector<FieldEffect> &effects)
{
    const auto row = std::find_if(std::begin(actions), std::end(actions),
                                  [&](const ActionRow &each) { return each.action == action; });
    if (row == std::end(actions) || !(row->stages >> static_cast<unsigned>(stage) & 1)) {
        return BCM_E_UNAVAIL;
    }
    FieldEffect effect{row->decision, row->kind};
    const auto first = static_cast<int>(given.parameters[0]), second = static_cast<int>(given.parameters[1]);
    switch (row->parameters) {
    case Parameters::none:
        break;
    case Parameters::gport: {
        const int status = resolve(-1, first, &effect.to);
        if (status != BCM_E_NONE) {
            return status;
        }
        break;
    }
    case Parameters::module_port: {
        const int status = resolve(first, second, &effect.to);
        if (status != BCM_E_NONE) {
            return status;
        }
        break;
    }
    case Parameters::trunk: {
        const int status = resolve_trunk(first, &effect.to);
        if (status != BCM_E_NONE) {
            return status;
        }
        break;
    }
    case Parameters::group:
        effect.to = {Destination::Kind::group, 0, first};
        break;
    case Parameters::ports:
        if (!given.has_ports) {
            return BCM_E_PARAM;
        }
        effect.ports = PortSet(given.ports);
        break;
    case Parameters::vlan:
        if (first < 1 || first >= BCM_VLAN_INVALID) {
            return BCM_E_PARAM;
        }
        effect.number = static_cast<unsigned>(first);
        break;
    }
    const bool is_elsewhere = row->kind == Kind::to_destination && effect.to.kind == Destination::Kind::port
                              && !is_own_port(effect.to);
    if (is_elsewhere) {
        return BCM_E_PORT;
    }
    effects.push_back(effect);
    return BCM_E_NONE;
}

std::string field_action_name(int action)
{
    static const Names names(names_of_bcm_field_action_e, "bcmFieldAction");
    return names.name(action, true);
}

}  // namespace sim
