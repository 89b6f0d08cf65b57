/// What entries do with packets.
#pragma once

#include "destination.h"
#include "field_qualifier.h"
#include "port_set.h"

#include <bcm/field_actions.h>
#include <bcm/field_types.h>
#include <bcm/types.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sim {

/// What is decided about a packet, each by one entry: of two that want to, by that of the group of higher priority.
enum class FieldDecision : std::uint8_t {
    drop,
    copy_to_cpu,
    switch_to_cpu,  ///< what the switch itself wants for the CPU: only to be cancelled
    trap,           ///< to the CPU and nowhere else
    cpu_reason,
    cpu_match,
    cpu_queue,
    destination,
    egress_ports,
    vlan,
    not_learnt,
    unicast_queue,
    multicast_queue,
    priority,  ///< within the switch
    color,
    outer_priority,  ///< this and the next ones: of the tags
    outer_cfi,
    outer_type,
    inner_vlan,
    inner_priority,
    inner_cfi,
    inner_type,
    service,  ///< DSCP, or the upper bits of it
    ecn,
    ttl,  ///< of what is routed
    source_mac,
    destination_mac,
    policer,            ///< of level 0; they are the entry's own, so that none is asked for a packet
    second_policer,     ///< of level 1
    mirror_in,          ///< what has arrived is mirrored
    mirror_out,         ///< what leaves
    count_too,          ///< by these counters; they are the entry's own, too
    no_arrival_filter,  ///< of VLANs
    no_leaving_filter,
    not_routed,
    routing_table,
    source_check,    ///< of routed packets
    not_limited,     ///< as a storm
    snoop,           ///< one more copy for the CPU's sake, which only its own actions take back
    not_snooped,     ///< the CPU gets no copy of it for its protocol
    bpdu_passes,     ///< what bridges say to each other goes on as any multicast
    tree_state,      ///< of the port where it came in
    source_passes,   ///< whatever the entry of its source address says
    may_return,      ///< copies may leave where it came in
    trunk_member,    ///< the place among the members of a trunk that can send
    sample_in,       ///< what has arrived is one of those of which a part is taken
    sample_rate_in,  ///< of so many, one
    sample_out,      ///< the same of what leaves
    sample_rate_out,
    sample_to,  ///< the destination of mirrors that gets the samples; 0 for the CPU
    source_ip,  ///< of IPv4
    destination_ip,
    source_l4_port,  ///< of TCP and UDP
    destination_l4_port,
    ether_type,
    flow_label,
    color_blind,         ///< the entry's own policers take each packet for green
    not_looked_up,       ///< no entry of ingress is asked
    not_looked_up_last,  ///< nor one of egress
    first_class,         ///< a class of the packet, in the order of FieldClass
    count = first_class + field_classes
};

/// A set of them.
class FieldDecisions {
public:
    constexpr FieldDecisions() = default;

    template <class... More>
    static constexpr FieldDecisions of(More... decisions)
    {
        FieldDecisions all;
        (all.add(decisions), ...);
        return all;
    }

    constexpr void add(FieldDecision one)
    {
        const auto number = static_cast<unsigned>(one);
        (number < 64 ? first_ : second_) |= std::uint64_t{1} << number % 64;
    }
    constexpr bool has_any(const FieldDecisions &others) const
    {
        return ((first_ & others.first_) | (second_ & others.second_)) != 0;
    }
    constexpr bool is_empty() const { return (first_ | second_) == 0; }

    constexpr FieldDecisions operator|(const FieldDecisions &others) const
    {
        FieldDecisions both;
        both.first_ = first_ | others.first_;
        both.second_ = second_ | others.second_;
        return both;
    }

private:
    static_assert(static_cast<unsigned>(FieldDecision::count) <= 128, "two words hold a set");

    std::uint64_t first_ = 0, second_ = 0;
};

constexpr FieldDecision decision_of(FieldClass which)
{
    return static_cast<FieldDecision>(static_cast<std::size_t>(FieldDecision::first_class)
                                      + static_cast<std::size_t>(which));
}

/// Whether it is about a class.
constexpr bool is_class(FieldDecision decision)
{
    return decision >= FieldDecision::first_class;
}

/// All classes.
constexpr FieldDecisions class_decisions = [] {
    FieldDecisions all;
    for (std::size_t which = 0; which < field_classes; ++which) {
        all.add(decision_of(static_cast<FieldClass>(which)));
    }
    return all;
}();

/// What has to hold of a packet for an action to be taken.
enum class FieldCondition : std::uint8_t {
    always,
    green,  ///< this and the next two in the order of bcm_color_t
    yellow,
    red,
    arp,  ///< what it is, this and the next ones
    dhcp,
    igmp,
    mld,
    neighbor_discovery,
    time,     ///< the precision time protocol
    moved,    ///< its source address was known elsewhere
    flooded,  ///< it goes to all members of its VLAN, as one of the next three
    unknown_unicast,
    unknown_multicast,
    broadcast,
};

/// A set of them.
using FieldConditions = std::uint32_t;

constexpr FieldConditions one_of(FieldCondition condition)
{
    return FieldConditions{1} << static_cast<unsigned>(condition);
}

/// What holds of packets of the colour.
constexpr FieldConditions of_color(unsigned color)
{
    return one_of(FieldCondition::green) << color;
}

/// Those that are not known without looking for them.
constexpr FieldConditions looked_for_conditions =
    ~(one_of(FieldCondition::always) | of_color(0) | of_color(1) | of_color(2));

/// Whether the action gives a class that entries can ask for.
bool gives_class(int action);

/// A number that is put together of what packets have, and of constants.
class FieldExtraction {
public:
    /// Appends as many bits above those that there are.
    void append(const FieldQualifier &qualifier, unsigned lsb, unsigned bits);
    void append(FieldWord constant, unsigned bits);
    void add(unsigned bias) { bias_ += bias; }

    /// None of a packet that has not got all of it.
    std::optional<unsigned> of(const FieldKey &key) const;

    /// What it looks at.
    const FieldPattern &looked_at() const { return looked_at_; }

private:
    struct Piece {
        FieldPlace place;  // of no bits for a constant
        unsigned at;       // in the number
        FieldWord constant;
    };
    std::vector<Piece> pieces_;
    FieldPattern looked_at_;
    unsigned bits_ = 0, bias_ = 0;
};

/// An action as an entry was given it.
struct FieldAction {
    std::array<uint32, 3> parameters = {};
    bcm_pbmp_t ports = {};  ///< of bcm_field_action_ports_add
    bool has_ports = false;
    std::array<std::uint8_t, 6> mac = {};  ///< of bcm_field_action_mac_add
    bool has_mac = false;
    /// Of bcm_field_direct_extraction_action_add, with what is added to the number in place of the first parameter.
    std::vector<bcm_field_extraction_field_t> pieces;
};

/// The same as packets meet it.
struct FieldEffect {
    enum class Kind : std::uint8_t {
        cancel,  ///< of the decision
        act,     ///< what the decision says, with the number
        to_destination,
        to_object,          ///< an egress object of layer 3, or a group of them
        to_members,         ///< of a VLAN
        to_ports,           ///< in place of where it goes
        also_to_ports,      ///< besides
        not_to_ports,       ///< without
        new_tag,            ///< act, if there is a tag or not
        no_tag,             ///< none
        new_precedence,     ///< of the service the upper three bits
        copied_precedence,  ///< the same, of the priority of the packet's outer tag
        from_precedence,    ///< act, with the packet's IP precedence
        from_inner_tag,     ///< with the priority of its inner tag
        from_hops,          ///< with its TTL or hop limit
        from_inner_vlan,    ///< with the VLAN of its inner tag
        from_outer_vlan,
        from_outer_tag,  ///< with the priority of its outer tag
        for_reason,      ///< act, for the reason for the CPU that the condition has
        to_source,       ///< where it came in
        forwarding,      ///< act, with that state of a spanning tree
    };

    FieldDecision decision;
    Kind kind;
    FieldCondition condition;  ///< of the packets that it is for
    Destination to = {Destination::Kind::discard, 0, 0};
    PortSet ports = {};
    std::array<std::uint8_t, 6> mac = {};
    unsigned number = 0;
    unsigned entry = 0;  ///< its id
    std::shared_ptr<const FieldExtraction>
        extraction;  ///< in place of the number, from least to highest; or null
    unsigned least = 0, highest = 0;

    /// The number for the packet; none if it has not got what it is taken from.
    std::optional<unsigned> number_for(const FieldKey &key) const;
};

/// What all entries that matched have decided. Entries are asked by descending priority of their groups.
class FieldVerdict {
public:
    /// `others`: what holds of the packet beside its colour.
    explicit FieldVerdict(FieldConditions others) : conditions_(others | one_of(FieldCondition::always)) {}

    void add(const std::vector<FieldEffect> &effects, unsigned color)
    {
        const FieldConditions hold = conditions_ | of_color(color);
        for (const FieldEffect &effect : effects) {
            const FieldEffect *&place = decided_[static_cast<std::size_t>(effect.decision)];
            if (place == nullptr && (hold >> static_cast<unsigned>(effect.condition) & 1)) {
                place = &effect;
                made_.add(effect.decision);
            }
        }
    }

    bool is_empty() const { return made_.is_empty(); }
    bool has_any(const FieldDecisions &decisions) const { return made_.has_any(decisions); }

    /// What is to be done; null if nobody decided so, or an entry decided against it. Valid until an entry changes.
    const FieldEffect *of(FieldDecision decision) const
    {
        const FieldEffect *effect = decided_[static_cast<std::size_t>(decision)];
        return effect == nullptr || effect->kind == FieldEffect::Kind::cancel ? nullptr : effect;
    }

    bool cancels(FieldDecision decision) const
    {
        const FieldEffect *effect = decided_[static_cast<std::size_t>(decision)];
        return effect != nullptr && effect->kind == FieldEffect::Kind::cancel;
    }

private:
    std::array<const FieldEffect *, static_cast<std::size_t>(FieldDecision::count)> decided_ = {};
    FieldDecisions made_;
    FieldConditions conditions_;
};

/// Adds what the action of that entry does in the stage. BCM_E_UNAVAIL: the switch or the stage cannot do it;
/// BCM_E_PORT, BCM_E_PARAM: wrong parameters.
int add_effects(int action, const FieldAction &given, FieldStage stage, unsigned entry,
                std::vector<FieldEffect> &effects);

/// The name, without what all have in common.
std::string field_action_name(int action);

}  // namespace sim
