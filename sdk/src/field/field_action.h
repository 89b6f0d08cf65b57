/// What entries do with packets.
#pragma once

#include "destination.h"
#include "field_qualifier.h"
#include "port_set.h"

#include <bcm/field_actions.h>
#include <bcm/types.h>

#include <array>
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
    source_check,  ///< of routed packets
    not_limited,   ///< as a storm
    first_class,   ///< a class of the packet, in the order of FieldClass
    count = first_class + field_classes
};

/// A set of them.
using FieldDecisions = std::uint64_t;

constexpr FieldDecisions one_of(FieldDecision decision)
{
    static_assert(static_cast<unsigned>(FieldDecision::count) <= 64, "a word holds a set");
    return FieldDecisions{1} << static_cast<unsigned>(decision);
}

constexpr FieldDecision decision_of(FieldClass which)
{
    return static_cast<FieldDecision>(static_cast<std::size_t>(FieldDecision::first_class)
                                      + static_cast<std::size_t>(which));
}

/// All classes.
constexpr FieldDecisions class_decisions = ((FieldDecisions{1} << field_classes) - 1)
                                           << static_cast<unsigned>(FieldDecision::first_class);

/// Whether the action gives a class that entries can ask for.
bool gives_class(int action);

/// An action as an entry was given it.
struct FieldAction {
    std::array<uint32, 3> parameters = {};
    bcm_pbmp_t ports = {};  ///< of bcm_field_action_ports_add
    bool has_ports = false;
    std::array<std::uint8_t, 6> mac = {};  ///< of bcm_field_action_mac_add
    bool has_mac = false;
};

/// The same as packets meet it.
struct FieldEffect {
    enum class Kind : std::uint8_t {
        cancel,  ///< of the decision
        act,     ///< what the decision says, with the number
        to_destination,
        to_object,        ///< an egress object of layer 3, or a group of them
        to_members,       ///< of a VLAN
        to_ports,         ///< in place of where it goes
        also_to_ports,    ///< besides
        not_to_ports,     ///< without
        new_tag,          ///< act, if there is a tag or not
        no_tag,           ///< none
        new_precedence,   ///< of the service the upper three bits
        from_precedence,  ///< act, with the packet's IP precedence
        from_inner_tag,   ///< with the priority of its inner tag
        from_hops,        ///< with its TTL or hop limit
        from_inner_vlan,  ///< with the VLAN of its inner tag
        from_outer_vlan,
        from_outer_tag,  ///< with the priority of its outer tag
    };

    FieldDecision decision;
    Kind kind;
    std::uint8_t colors;  ///< of packets that meet it, a bit for each
    Destination to = {Destination::Kind::discard, 0, 0};
    PortSet ports = {};
    std::array<std::uint8_t, 6> mac = {};
    unsigned number = 0;
    unsigned entry = 0;  ///< its id

    /// The number for the packet; none if it has not got what it is taken from.
    std::optional<unsigned> number_for(const FieldKey &key) const;
};

/// What all entries that matched have decided. Entries are asked by descending priority of their groups.
class FieldVerdict {
public:
    void add(const std::vector<FieldEffect> &effects, unsigned color)
    {
        for (const FieldEffect &effect : effects) {
            const FieldEffect *&place = decided_[static_cast<std::size_t>(effect.decision)];
            if (place == nullptr && (effect.colors >> color & 1)) {
                place = &effect;
                made_ |= one_of(effect.decision);
            }
        }
    }

    bool is_empty() const { return made_ == 0; }
    bool has_any(FieldDecisions decisions) const { return (made_ & decisions) != 0; }

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
    FieldDecisions made_ = 0;
};

/// Adds what the action of that entry does in the stage. BCM_E_UNAVAIL: the switch or the stage cannot do it;
/// BCM_E_PORT, BCM_E_PARAM: wrong parameters.
int add_effects(int action, const FieldAction &given, FieldStage stage, unsigned entry,
                std::vector<FieldEffect> &effects);

/// The name, without what all have in common.
std::string field_action_name(int action);

}  // namespace sim
