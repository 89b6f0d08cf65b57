#include "field_action.h"

#include "enumerators.h"
#include "l3_routes.h"
#include "sim_parse.h"

#include <bcm/error.h>
#include <bcm/rx_reason.h>
#include <bcm/stg.h>
#include <bcm/vlan.h>

#include <algorithm>
#include <climits>

namespace sim {

namespace {

using Kind = FieldEffect::Kind;
using Decision = FieldDecision;

constexpr unsigned in_lookup = 1, in_ingress = 2, in_egress = 4;
constexpr unsigned on_arrival = in_lookup | in_ingress, anywhere = on_arrival | in_egress;
constexpr unsigned after_tables = in_ingress | in_egress, before_and_after = in_lookup | in_egress;

constexpr unsigned highest_priority = 7, highest_queue = 7, highest_vlan = BCM_VLAN_INVALID - 1;
constexpr unsigned least_type = 0x600, highest_type = 0xffff;  // of a tag

/// Where the parameters of an action are.
enum class Parameters : std::uint8_t {
    none,
    number,  // from ActionRow::least to ActionRow::highest
    gport,
    module_port,
    system_port,
    trunk,
    group,
    ports,
    mac,
};

/// What an action does. One that does several things has several rows.
struct ActionRow {
    bcm_field_action_t action;
    Decision decision;
    Kind kind;
    unsigned stages;
    Parameters parameters = Parameters::none;
    unsigned highest = 0, least = 0;
    bool has_color_forms = false;  // the next three are the same for green, yellow and red packets
    FieldCondition condition = FieldCondition::always;
};

constexpr ActionRow of_colors(bcm_field_action_t action, Decision decision, Kind kind, unsigned stages,
                              Parameters parameters = Parameters::none, unsigned highest = 0)
{
    return {action, decision, kind, stages, parameters, highest, 0, true};
}

constexpr ActionRow of_packets(FieldCondition condition, bcm_field_action_t action, Decision decision,
                               Kind kind, unsigned stages, Parameters parameters = Parameters::none)
{
    return {action, decision, kind, stages, parameters, 0, 0, false, condition};
}

constexpr ActionRow number_of_colors(bcm_field_action_t action, Decision decision, unsigned stages,
                                     unsigned highest)
{
    return of_colors(action, decision, Kind::act, stages, Parameters::number, highest);
}

constexpr ActionRow class_row(bcm_field_action_t action, FieldClass which)
{
    return {action,     decision_of(which), Kind::act,
            on_arrival, Parameters::number, (1u << field_class_bits) - 1};
}

constexpr ActionRow actions[] = {
    of_colors(bcmFieldActionDrop, Decision::drop, Kind::act, anywhere),
    of_colors(bcmFieldActionDropCancel, Decision::drop, Kind::cancel, anywhere),
    number_of_colors(bcmFieldActionCopyToCpu, Decision::copy_to_cpu, in_ingress, bcmRxReasonCount - 1),
    of_colors(bcmFieldActionCopyToCpuCancel, Decision::copy_to_cpu, Kind::cancel, in_ingress),
    of_colors(bcmFieldActionSwitchToCpuCancel, Decision::switch_to_cpu, Kind::cancel, in_ingress),
    {bcmFieldActionTrap, Decision::trap, Kind::act, in_ingress, Parameters::number, bcmRxReasonCount - 1},
    {bcmFieldActionTrapCancel, Decision::trap, Kind::cancel, in_ingress},
    {bcmFieldActionSnoop, Decision::snoop, Kind::act, in_ingress, Parameters::number, bcmRxReasonCount - 1},
    {bcmFieldActionSnoopCancel, Decision::snoop, Kind::cancel, in_ingress},
    of_packets(FieldCondition::arp, bcmFieldActionArpToCpu, Decision::copy_to_cpu, Kind::for_reason,
               in_ingress),
    of_packets(FieldCondition::arp, bcmFieldActionArpDrop, Decision::drop, Kind::act, on_arrival),
    of_packets(FieldCondition::dhcp, bcmFieldActionDhcpToCpu, Decision::copy_to_cpu, Kind::for_reason,
               in_ingress),
    of_packets(FieldCondition::dhcp, bcmFieldActionDhcpDrop, Decision::drop, Kind::act, on_arrival),
    of_packets(FieldCondition::igmp, bcmFieldActionIgmpToCpu, Decision::copy_to_cpu, Kind::for_reason,
               in_ingress),
    of_packets(FieldCondition::time, bcmFieldActionPtpToCpu, Decision::copy_to_cpu, Kind::for_reason,
               in_ingress),
    of_packets(FieldCondition::neighbor_discovery, bcmFieldActionNeighborDiscoveryToCpu,
               Decision::copy_to_cpu, Kind::for_reason, in_ingress),
    of_packets(FieldCondition::moved, bcmFieldActionMacMoveToCpu, Decision::copy_to_cpu, Kind::for_reason,
               in_ingress),
    of_packets(FieldCondition::moved, bcmFieldActionMacMoveDrop, Decision::drop, Kind::act, in_ingress),
    of_packets(FieldCondition::igmp, bcmFieldActionIgmpSnoopDisable, Decision::not_snooped, Kind::act,
               in_lookup),
    of_packets(FieldCondition::mld, bcmFieldActionMldSnoopDisable, Decision::not_snooped, Kind::act,
               in_lookup),
    {bcmFieldActionBpduForward, Decision::bpdu_passes, Kind::act, in_lookup},
    {bcmFieldActionCpuReasonNew, Decision::cpu_reason, Kind::act, in_ingress, Parameters::number,
     bcmRxReasonCount - 1, 1},
    {bcmFieldActionCpuReasonCancel, Decision::cpu_reason, Kind::cancel, in_ingress},
    {bcmFieldActionCpuMatchIdNew, Decision::cpu_match, Kind::act, in_ingress, Parameters::number, UINT_MAX},

    {bcmFieldActionRedirect, Decision::destination, Kind::to_destination, in_ingress, Parameters::gport},
    {bcmFieldActionRedirectPort, Decision::destination, Kind::to_destination, in_ingress,
     Parameters::module_port},
    {bcmFieldActionRedirectSystemPort, Decision::destination, Kind::to_destination, in_ingress,
     Parameters::system_port},
    {bcmFieldActionRedirectTrunk, Decision::destination, Kind::to_destination, in_ingress, Parameters::trunk},
    {bcmFieldActionRedirectMcast, Decision::destination, Kind::to_destination, in_ingress, Parameters::group},
    {bcmFieldActionRedirectPbmp, Decision::destination, Kind::to_ports, in_ingress, Parameters::ports},
    {bcmFieldActionRedirectBlackHole, Decision::drop, Kind::act, in_ingress},
    {bcmFieldActionRedirectEgrNextHop, Decision::destination, Kind::to_object, in_ingress, Parameters::number,
     INT_MAX, 1},
    {bcmFieldActionRedirectEcmp, Decision::destination, Kind::to_object, in_ingress, Parameters::number,
     INT_MAX, 1},
    {bcmFieldActionL3Switch, Decision::destination, Kind::to_object, in_ingress, Parameters::number, INT_MAX,
     1},
    {bcmFieldActionL3SwitchCancel, Decision::destination, Kind::cancel, in_ingress},
    {bcmFieldActionForwardToSourcePort, Decision::destination, Kind::to_source, in_ingress},
    {bcmFieldActionForwardToSourcePort, Decision::may_return, Kind::act, in_ingress},
    of_packets(FieldCondition::broadcast, bcmFieldActionRedirectBcastPbmp, Decision::destination,
               Kind::to_ports, in_ingress, Parameters::ports),
    {bcmFieldActionRedirectVlan, Decision::destination, Kind::to_members, in_ingress, Parameters::number,
     highest_vlan, 1},
    {bcmFieldActionRedirectCancel, Decision::destination, Kind::cancel, in_ingress},
    {bcmFieldActionEgressMask, Decision::egress_ports, Kind::not_to_ports, in_ingress, Parameters::ports},
    {bcmFieldActionRedirectPbmpRemove, Decision::egress_ports, Kind::not_to_ports, in_ingress,
     Parameters::ports},
    of_packets(FieldCondition::flooded, bcmFieldActionFloodDisable, Decision::drop, Kind::act, in_ingress),
    of_packets(FieldCondition::unknown_unicast, bcmFieldActionUnknownUcastMaskNew, Decision::egress_ports,
               Kind::not_to_ports, in_ingress, Parameters::ports),
    of_packets(FieldCondition::unknown_multicast, bcmFieldActionUnknownMcastMaskNew, Decision::egress_ports,
               Kind::not_to_ports, in_ingress, Parameters::ports),
    of_packets(FieldCondition::broadcast, bcmFieldActionBroadcastMaskNew, Decision::egress_ports,
               Kind::not_to_ports, in_ingress, Parameters::ports),
    {bcmFieldActionSourcePruneDisable, Decision::may_return, Kind::act, in_ingress},
    {bcmFieldActionTrunkMemberSelect, Decision::trunk_member, Kind::act, in_ingress, Parameters::number,
     INT_MAX},
    {bcmFieldActionEgressPortsAdd, Decision::egress_ports, Kind::also_to_ports, in_ingress,
     Parameters::ports},
    {bcmFieldActionEgressPortMaskClear, Decision::egress_ports, Kind::cancel, in_ingress},

    {bcmFieldActionOuterVlanNew, Decision::vlan, Kind::act, before_and_after, Parameters::number,
     highest_vlan, 1},
    {bcmFieldActionOuterVlanCopyInner, Decision::vlan, Kind::from_inner_vlan, before_and_after},
    {bcmFieldActionVlanNew, Decision::vlan, Kind::act, in_lookup, Parameters::number, highest_vlan, 1},
    {bcmFieldActionForwardingVlanNew, Decision::vlan, Kind::act, in_lookup, Parameters::number, highest_vlan,
     1},
    {bcmFieldActionIngressVlanFilterDisable, Decision::no_arrival_filter, Kind::act, in_lookup},
    {bcmFieldActionDoNotCheckVlan, Decision::no_arrival_filter, Kind::act, in_lookup},
    {bcmFieldActionDoNotCheckVlan, Decision::no_leaving_filter, Kind::act, in_lookup},
    {bcmFieldActionDoNotCheckStp, Decision::tree_state, Kind::forwarding, in_lookup},
    {bcmFieldActionStpStateOverride, Decision::tree_state, Kind::act, in_lookup, Parameters::number,
     BCM_STG_STP_FORWARD},
    {bcmFieldActionDoNotCheckSourceMac, Decision::source_passes, Kind::act, in_lookup},
    {bcmFieldActionEgressVlanFilterDisable, Decision::no_leaving_filter, Kind::act, on_arrival},
    {bcmFieldActionL3RouteDisable, Decision::not_routed, Kind::act, in_lookup},
    {bcmFieldActionDoNotLearn, Decision::not_learnt, Kind::act, in_lookup},
    {bcmFieldActionDoLearn, Decision::not_learnt, Kind::cancel, in_lookup},

    number_of_colors(bcmFieldActionCosQNew, Decision::unicast_queue, in_ingress, highest_queue),
    number_of_colors(bcmFieldActionCosQNew, Decision::multicast_queue, in_ingress, highest_queue),
    number_of_colors(bcmFieldActionUcastCosQNew, Decision::unicast_queue, in_ingress, highest_queue),
    number_of_colors(bcmFieldActionMcastCosQNew, Decision::multicast_queue, in_ingress, highest_queue),
    number_of_colors(bcmFieldActionCosQCpuNew, Decision::cpu_queue, in_ingress, highest_queue),

    number_of_colors(bcmFieldActionPrioIntNew, Decision::priority, anywhere, highest_priority),
    of_colors(bcmFieldActionPrioIntTos, Decision::priority, Kind::from_precedence, anywhere),
    number_of_colors(bcmFieldActionPrioPktNew, Decision::outer_priority, anywhere, highest_priority),
    of_colors(bcmFieldActionPrioPktTos, Decision::outer_priority, Kind::from_precedence, anywhere),
    of_colors(bcmFieldActionPrioPktCopy, Decision::outer_priority, Kind::from_inner_tag, anywhere),
    number_of_colors(bcmFieldActionPrioPktAndIntNew, Decision::priority, anywhere, highest_priority),
    number_of_colors(bcmFieldActionPrioPktAndIntNew, Decision::outer_priority, anywhere, highest_priority),
    of_colors(bcmFieldActionPrioPktAndIntTos, Decision::priority, Kind::from_precedence, anywhere),
    of_colors(bcmFieldActionPrioPktAndIntTos, Decision::outer_priority, Kind::from_precedence, anywhere),
    number_of_colors(bcmFieldActionOuterVlanPrioNew, Decision::outer_priority, anywhere, highest_priority),
    {bcmFieldActionOuterVlanPrioCopyInner, Decision::outer_priority, Kind::from_inner_tag, anywhere},
    {bcmFieldActionOuterVlanCfiNew, Decision::outer_cfi, Kind::act, anywhere, Parameters::number, 1},
    number_of_colors(bcmFieldActionDropPrecedence, Decision::color, anywhere, bcmColorRed),

    {bcmFieldActionOuterTpidNew, Decision::outer_type, Kind::act, after_tables, Parameters::number,
     highest_type, least_type},
    {bcmFieldActionInnerVlanNew, Decision::inner_vlan, Kind::act, after_tables, Parameters::number,
     highest_vlan, 1},
    {bcmFieldActionInnerVlanCopyOuter, Decision::inner_vlan, Kind::from_outer_vlan, after_tables},
    {bcmFieldActionInnerVlanPrioCopyOuter, Decision::inner_priority, Kind::from_outer_tag, after_tables},
    {bcmFieldActionInnerVlanAdd, Decision::inner_vlan, Kind::new_tag, in_ingress, Parameters::number,
     highest_vlan, 1},
    {bcmFieldActionInnerVlanDelete, Decision::inner_vlan, Kind::no_tag, in_ingress},
    number_of_colors(bcmFieldActionInnerVlanPrioNew, Decision::inner_priority, after_tables,
                     highest_priority),
    {bcmFieldActionInnerVlanCfiNew, Decision::inner_cfi, Kind::act, after_tables, Parameters::number, 1},
    {bcmFieldActionInnerTpidNew, Decision::inner_type, Kind::act, after_tables, Parameters::number,
     highest_type, least_type},

    number_of_colors(bcmFieldActionDscpNew, Decision::service, after_tables, 63),
    of_colors(bcmFieldActionDscpCancel, Decision::service, Kind::cancel, after_tables),
    of_colors(bcmFieldActionTosNew, Decision::service, Kind::new_precedence, after_tables, Parameters::number,
              7),
    of_colors(bcmFieldActionTosCancel, Decision::service, Kind::cancel, after_tables),
    of_colors(bcmFieldActionTosCopy, Decision::service, Kind::copied_precedence, after_tables),
    number_of_colors(bcmFieldActionEcnNew, Decision::ecn, after_tables, 3),
    of_colors(bcmFieldActionEcnCancel, Decision::ecn, Kind::cancel, after_tables),
    {bcmFieldActionTtlSet, Decision::ttl, Kind::act, in_ingress, Parameters::number, 255},
    {bcmFieldActionTtlDecrementDisable, Decision::ttl, Kind::from_hops, in_ingress},
    {bcmFieldActionSrcMacNew, Decision::source_mac, Kind::act, after_tables, Parameters::mac},
    {bcmFieldActionDestMacNew, Decision::destination_mac, Kind::act, after_tables, Parameters::mac},

    {bcmFieldActionSrcIpNew, Decision::source_ip, Kind::act, after_tables, Parameters::number, UINT_MAX},
    {bcmFieldActionDestIpNew, Decision::destination_ip, Kind::act, after_tables, Parameters::number,
     UINT_MAX},
    {bcmFieldActionSrcL4PortNew, Decision::source_l4_port, Kind::act, after_tables, Parameters::number,
     0xffff},
    {bcmFieldActionDestL4PortNew, Decision::destination_l4_port, Kind::act, after_tables, Parameters::number,
     0xffff},
    {bcmFieldActionEtherTypeNew, Decision::ether_type, Kind::act, after_tables, Parameters::number,
     highest_type, least_type},
    {bcmFieldActionFlowLabelNew, Decision::flow_label, Kind::act, after_tables, Parameters::number, 0xfffff},
    {bcmFieldActionLookupDisable, Decision::not_looked_up, Kind::act, in_lookup},
    {bcmFieldActionEgressLookupDisable, Decision::not_looked_up_last, Kind::act, on_arrival},
    {bcmFieldActionPolicerColorBlind, Decision::color_blind, Kind::act, in_ingress},

    {bcmFieldActionPolicerLevel0Set, Decision::policer, Kind::act, in_ingress, Parameters::number, INT_MAX,
     1},
    {bcmFieldActionPolicerLevel1Set, Decision::second_policer, Kind::act, in_ingress, Parameters::number,
     INT_MAX, 1},
    {bcmFieldActionStatSet, Decision::count_too, Kind::act, anywhere, Parameters::number, INT_MAX, 1},
    {bcmFieldActionMirrorIngress, Decision::mirror_in, Kind::act, in_ingress, Parameters::number, INT_MAX, 1},
    {bcmFieldActionMirrorEgress, Decision::mirror_out, Kind::act, after_tables, Parameters::number, INT_MAX,
     1},
    {bcmFieldActionMirrorIngressCancel, Decision::mirror_in, Kind::cancel, in_ingress},
    {bcmFieldActionMirrorEgressCancel, Decision::mirror_out, Kind::cancel, after_tables},
    {bcmFieldActionMirrorCancel, Decision::mirror_in, Kind::cancel, in_ingress},
    {bcmFieldActionMirrorCancel, Decision::mirror_out, Kind::cancel, after_tables},

    {bcmFieldActionIngressSampleEnable, Decision::sample_in, Kind::act, in_ingress},
    {bcmFieldActionIngressSampleRateNew, Decision::sample_rate_in, Kind::act, in_ingress, Parameters::number,
     INT_MAX, 1},
    {bcmFieldActionEgressSampleEnable, Decision::sample_out, Kind::act, after_tables},
    {bcmFieldActionEgressSampleRateNew, Decision::sample_rate_out, Kind::act, after_tables,
     Parameters::number, INT_MAX, 1},
    {bcmFieldActionSampleToCpu, Decision::sample_to, Kind::act, after_tables},
    {bcmFieldActionSampleToMirror, Decision::sample_to, Kind::act, after_tables, Parameters::number, INT_MAX,
     1},
    {bcmFieldActionSampleCancel, Decision::sample_in, Kind::cancel, in_ingress},
    {bcmFieldActionSampleCancel, Decision::sample_out, Kind::cancel, after_tables},

    {bcmFieldActionVrfSet, Decision::routing_table, Kind::act, in_lookup, Parameters::number,
     L3Routes::vrf_max - 1},
    {bcmFieldActionL3UrpfModeNew, Decision::source_check, Kind::act, in_lookup, Parameters::number,
     bcmL3IntfUrpfStrict},
    {bcmFieldActionL3UrpfDisable, Decision::source_check, Kind::act, in_lookup},
    {bcmFieldActionStormControlDisable, Decision::not_limited, Kind::act, in_lookup},

    class_row(bcmFieldActionClassSourceSet, FieldClass::source),
    class_row(bcmFieldActionClassDestSet, FieldClass::destination),
    class_row(bcmFieldActionClassFieldNew, FieldClass::flow),
    class_row(bcmFieldActionIngressClassNew, FieldClass::ingress),
    class_row(bcmFieldActionEgressClassNew, FieldClass::egress),
    class_row(bcmFieldActionL2SrcClassNew, FieldClass::l2_source),
    class_row(bcmFieldActionL2DestClassNew, FieldClass::l2_destination),
    class_row(bcmFieldActionL3SrcClassNew, FieldClass::l3_source),
    class_row(bcmFieldActionL3DestClassNew, FieldClass::l3_destination),
    class_row(bcmFieldActionPortClassNew, FieldClass::port),
    class_row(bcmFieldActionUdfClassNew, FieldClass::user_defined),
    {bcmFieldActionEgressClassCancel, decision_of(FieldClass::egress), Kind::cancel, on_arrival},
};

/// For which packets the row is that action's; none if it is another's.
std::optional<FieldCondition> condition_of(const ActionRow &row, int action)
{
    constexpr FieldCondition forms[] = {FieldCondition::green, FieldCondition::yellow, FieldCondition::red};
    if (action == row.action) {
        return row.condition;
    }
    const int form = action - row.action - 1;
    const bool is_form = row.has_color_forms && form >= 0 && form < static_cast<int>(std::size(forms));
    return is_form ? std::optional<FieldCondition>(forms[form]) : std::nullopt;
}

/// Whether what is decided is a number for each packet, and not the name of something.
bool is_for_packets(Decision decision)
{
    return decision == Decision::cpu_match || decision == Decision::vlan || is_class(decision)
           || (decision >= Decision::unicast_queue && decision <= Decision::ttl)
           || (decision >= Decision::source_ip && decision <= Decision::flow_label)
           || decision == Decision::cpu_queue;
}

/// BCM_E_UNAVAIL: not of that action, or of a qualifier that is no number; BCM_E_PARAM: bits that it has not got.
int extract(const FieldAction &given, FieldEffect &effect)
{
    if (!is_for_packets(effect.decision)) {
        return BCM_E_UNAVAIL;
    }
    auto extraction = std::make_shared<FieldExtraction>();
    for (const bcm_field_extraction_field_t &piece : given.pieces) {
        if ((piece.flags & BCM_FIELD_EXTRACTION_FIELD_CONSTANT) != 0) {
            extraction->append(FieldWord{piece.value}, piece.bits);
            continue;
        }
        const FieldQualifier *const qualifier = field_qualifier(piece.qualifier);
        if (qualifier == nullptr || qualifier->layout != FieldLayout::number) {
            return BCM_E_UNAVAIL;
        }
        if (std::uint64_t{piece.lsb} + piece.bits > qualifier->place.width) {
            return BCM_E_PARAM;
        }
        extraction->append(*qualifier, piece.lsb, piece.bits);
    }
    extraction->add(given.parameters[0]);
    effect.extraction = std::move(extraction);
    return BCM_E_NONE;
}

int read_parameters(const ActionRow &row, const FieldAction &given, FieldEffect &effect)
{
    if (!given.pieces.empty() && row.parameters != Parameters::number) {
        return BCM_E_UNAVAIL;
    }
    const auto first = static_cast<int>(given.parameters[0]), second = static_cast<int>(given.parameters[1]);
    switch (row.parameters) {
    case Parameters::none:
        return BCM_E_NONE;
    case Parameters::number:
        if (!given.pieces.empty()) {
            effect.least = row.least;
            effect.highest = row.highest;
            return extract(given, effect);
        }
        effect.number = given.parameters[0];
        return effect.number >= row.least && effect.number <= row.highest ? BCM_E_NONE : BCM_E_PARAM;
    case Parameters::gport:
        return resolve(-1, first, &effect.to);
    case Parameters::module_port:
        return resolve(first, second, &effect.to);
    case Parameters::system_port: {
        bcm_gport_t port = 0;
        BCM_GPORT_SYSTEM_PORT_ID_SET(port, first);
        return BCM_GPORT_SYSTEM_PORT_ID_GET(port) == first ? resolve(-1, port, &effect.to) : BCM_E_PORT;
    }
    case Parameters::trunk:
        return resolve_trunk(first, &effect.to);
    case Parameters::group:
        effect.to = {Destination::Kind::group, 0, first};
        return BCM_E_NONE;
    case Parameters::ports:
        effect.ports = PortSet(given.ports);
        return given.has_ports ? BCM_E_NONE : BCM_E_PARAM;
    case Parameters::mac:
        effect.mac = given.mac;
        return given.has_mac ? BCM_E_NONE : BCM_E_PARAM;
    }
    return BCM_E_INTERNAL;
}

/// Of a tag, if it is there and has one.
std::optional<unsigned> vlan_of(const FieldKey &key, FieldHeader tag, FieldPlace place)
{
    const auto vlan = static_cast<unsigned>(key.get(place)) & unsigned{BCM_VLAN_INVALID};
    return key.is(tag) && vlan >= 1 && vlan <= highest_vlan ? std::optional<unsigned>(vlan) : std::nullopt;
}

}  // namespace

void FieldExtraction::append(const FieldQualifier &qualifier, unsigned lsb, unsigned bits)
{
    const FieldPlace place{qualifier.place.word, static_cast<std::uint8_t>(qualifier.place.shift + lsb),
                           static_cast<std::uint8_t>(bits)};
    pieces_.push_back({place, bits_, 0});
    looked_at_.require(place, 0, field_ones(bits));
    looked_at_.value.has(qualifier.header);
    bits_ += bits;
}

void FieldExtraction::append(FieldWord constant, unsigned bits)
{
    pieces_.push_back({{0, 0, 0}, bits_, constant});
    bits_ += bits;
}

std::optional<unsigned> FieldExtraction::of(const FieldKey &key) const
{
    if ((key.headers & looked_at_.value.headers) != looked_at_.value.headers) {
        return std::nullopt;
    }
    FieldWord number = 0;
    for (const Piece &piece : pieces_) {
        number |= (piece.constant | key.get(piece.place)) << piece.at;
    }
    return static_cast<unsigned>(number) + bias_;
}

std::optional<unsigned> FieldEffect::number_for(const FieldKey &key) const
{
    constexpr unsigned above_priority = 13, above_precedence = 5;
    if (extraction != nullptr) {
        const std::optional<unsigned> found = extraction->of(key);
        return found && *found >= least && *found <= highest ? found : std::nullopt;
    }
    switch (kind) {
    case Kind::forwarding:
        return BCM_STG_STP_FORWARD;
    case Kind::from_precedence:
        return key.is(FieldHeader::ip)
                   ? std::optional<unsigned>(key.get(field_places::service) >> above_precedence)
                   : std::nullopt;
    case Kind::from_hops:
        return key.is(FieldHeader::ip) ? std::optional<unsigned>(key.get(field_places::hops)) : std::nullopt;
    case Kind::from_inner_vlan:
        return vlan_of(key, FieldHeader::inner_tag, field_places::inner_tag);
    case Kind::from_outer_vlan:
        return vlan_of(key, FieldHeader::outer_tag, field_places::outer_tag);
    case Kind::from_outer_tag:
    case Kind::copied_precedence:
        return key.is(FieldHeader::outer_tag)
                   ? std::optional<unsigned>(key.get(field_places::outer_tag) >> above_priority)
                   : std::nullopt;
    case Kind::from_inner_tag:
        return key.is(FieldHeader::inner_tag)
                   ? std::optional<unsigned>(key.get(field_places::inner_tag) >> above_priority)
                   : std::nullopt;
    default:
        return number;
    }
}

int add_effects(int action, const FieldAction &given, FieldStage stage, unsigned entry,
                std::vector<FieldEffect> &effects)
{
    bool is_known = false;
    for (const ActionRow &row : actions) {
        const std::optional<FieldCondition> condition = condition_of(row, action);
        if (!condition || !(row.stages >> static_cast<unsigned>(stage) & 1)) {
            continue;
        }
        FieldEffect effect = {};
        effect.decision = row.decision;
        effect.kind = row.kind;
        effect.condition = *condition;
        is_known = true;
        effect.entry = entry;
        const int status = read_parameters(row, given, effect);
        if (status != BCM_E_NONE) {
            return status;
        }
        const bool is_elsewhere = row.kind == Kind::to_destination
                                  && effect.to.kind == Destination::Kind::port && !is_own_port(effect.to);
        if (is_elsewhere) {
            return BCM_E_PORT;
        }
        // What an entry does with some packets, such as those of one colour, counts before what it does with all.
        const bool is_for_all = effect.condition == FieldCondition::always;
        const auto place = is_for_all ? effects.end() : effects.begin();
        effects.insert(place, effect);
    }
    return is_known ? BCM_E_NONE : BCM_E_UNAVAIL;
}

bool gives_class(int action)
{
    return std::any_of(std::begin(actions), std::end(actions), [&](const ActionRow &row) {
        return row.action == action && row.kind == Kind::act && is_class(row.decision);
    });
}

std::string field_action_name(int action)
{
    static const Names names(names_of_bcm_field_action_e, "bcmFieldAction");
    return names.name(action, true);
}

}  // namespace sim
