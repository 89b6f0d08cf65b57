/// The spanning tree groups of a unit, and the states of its ports in them.
#pragma once

#include "destination.h"

#include <bcm/stg.h>

#include <array>
#include <map>

namespace sim {

struct StgGroup {
    std::array<int, port_max + 1> states = {};  // BCM_STG_STP_*
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
        const auto found = groups.find(id);
        return found == groups.end() ? nullptr : &found->second;
    }

    /// Only the default group, where all ports forward.
    void reset()
    {
        std::map<int, StgGroup> only_default;
        only_default[BCM_STG_DEFAULT].states.fill(BCM_STG_STP_FORWARD);
        groups.swap(only_default);
        default_id = BCM_STG_DEFAULT;
    }

    bcm_stg_t default_id;
    int state_of_new = BCM_STG_STP_DISABLE;  // of all ports in a group that is made
    std::map<int, StgGroup> groups;
};

}  // namespace sim
