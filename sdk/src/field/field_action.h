/// What entries do with packets.
#pragma once

#include "destination.h"
#include "field_qualifier.h"
#include "port_set.h"

#include <bcm/field_actions.h>
#include <bcm/types.h>

#include <array>
#include <string>
#include <vector>

namespace sim {

/// What is decided about a packet, each by one entry: of two that want to, by that of the group of higher priority.
enum class FieldDecision : std::uint8_t { drop, copy_to_cpu, destination, egress_ports, vlan, count };

/// An action as an entry was given it.
struct FieldAction {
    std::array<uint32, 3> parameters = {};
    bcm_pbmp_t ports = {};  ///< of bcm_field_action_ports_add
    bool has_ports = false;
};

/// The same as packets meet it.
struct FieldEffect {
    enum class Kind : std::uint8_t {
        cancel,  ///< of the decision
        drop,
        copy_to_cpu,
        to_destination,
        to_ports,       ///< in place of where it goes
        also_to_ports,  ///< besides
        not_to_ports,
        vlan,
    };

    FieldDecision decision;
    Kind kind;
    Destination to = {Destination::Kind::discard, 0, 0};
    PortSet ports = {};
    unsigned number = 0;
};

/// What all entries that matched have decided. Entries are asked by descending priority of their groups.
class FieldVerdict {
public:
    void add(const std::vector<FieldEffect> &effects)
    {
        for (const FieldEffect &effect : effects) {
            const FieldEffect *&place = decided_[static_cast<std::size_t>(effect.decision)];
            place = place == nullptr ? &effect : place;
        }
    }

    /// Null if nobody decided; valid until an entry changes.
    const FieldEffect *of(FieldDecision decision) const
    {
        return decided_[static_cast<std::size_t>(decision)];
    }
    bool is(FieldDecision decision, FieldEffect::Kind kind) const
    {
        return of(decision) != nullptr && of(decision)->kind == kind;
    }

private:
    std::array<const FieldEffect *, static_cast<std::size_t>(FieldDecision::count)> decided_ = {};
};

/// Adds what the action does in the stage. BCM_E_UNAVAIL: the switch or the
/// stage cannot do it; BCM_E_PORT, BCM_E_PARAM: wrong parameters.
int add_effects(int action, const FieldAction &given, FieldStage stage, std::vector<FieldEffect> &effects);

/// The name, without what all have in common.
std::string field_action_name(int action);

}  // namespace sim
