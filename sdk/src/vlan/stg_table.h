/// The spanning tree groups of a unit, and the states of its ports in them.
#pragma once

#include "port_set.h"

#include <bcm/stg.h>

#include <array>
#include <cstdint>
#include <vector>

namespace sim {

/// The CPU is part of no tree, whatever state its port was given.
class StgGroup {
public:
    /// None.
    StgGroup() = default;

    /// With all ports in one state.
    explicit StgGroup(int state) : exists(true)
    {
        for (int port = 0; port <= port_max; ++port) {
            set_state(port, state);
        }
    }

    /// BCM_STG_STP_*
    int state(int port) const { return states_[static_cast<std::size_t>(port)]; }

    void set_state(int port, int state)
    {
        states_[static_cast<std::size_t>(port)] = static_cast<std::uint8_t>(state);
        forwarding_.put(port, port == cpu_port || state == BCM_STG_STP_FORWARD);
    }

    const PortSet &forwarding() const { return forwarding_; }

    bool exists = false;

private:
    std::array<std::uint8_t, port_max + 1> states_ = {};
    PortSet forwarding_ = PortSet::one(cpu_port);
};

class StgTable {
public:
    static constexpr int id_min = 1;
    static constexpr int id_max = 255;

    StgTable() { reset(); }

    static bool valid(int id) { return id >= id_min && id <= id_max; }
    static bool valid_state(int state)
    {
        return state >= BCM_STG_STP_DISABLE && state <= BCM_STG_STP_FORWARD;
    }

    /// The group, or null.
    StgGroup *find(int id)
    {
        StgGroup *group = valid(id) ? &groups_[static_cast<std::size_t>(id)] : nullptr;
        return group != nullptr && group->exists ? group : nullptr;
    }
    const StgGroup *find(int id) const { return const_cast<StgTable *>(this)->find(id); }

    /// False if it is there already; the id has to be valid.
    bool create(int id)
    {
        const bool is_new = find(id) == nullptr;
        if (is_new) {
            groups_[static_cast<std::size_t>(id)] = StgGroup(state_of_new);
        }
        return is_new;
    }

    void destroy(int id) { groups_[static_cast<std::size_t>(id)].exists = false; }

    /// Only the default group, where all ports forward.
    void reset()
    {
        groups_.assign(id_max + 1, StgGroup());
        default_id = BCM_STG_DEFAULT;
        groups_[BCM_STG_DEFAULT] = StgGroup(BCM_STG_STP_FORWARD);
    }

    /// visit(int id, StgGroup &) for each, in ascending order.
    template <class Visit>
    void each(Visit visit)
    {
        for (int id = id_min; id <= id_max; ++id) {
            if (StgGroup *group = find(id)) {
                visit(id, *group);
            }
        }
    }

    bcm_stg_t default_id;
    int state_of_new = BCM_STG_STP_DISABLE;  // of all ports in a group that is made

private:
    std::vector<StgGroup> groups_;
};

}  // namespace sim
