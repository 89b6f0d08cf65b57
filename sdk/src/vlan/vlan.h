/// The room of VLANs: which there are, who is in them, and their spanning tree groups.
#pragma once

#include "stg_table.h"
#include "switch.h"
#include "vlan_table.h"

#include <bcm/error.h>

namespace sim {

struct VlanState : RoomState {
    static constexpr Room room = Room::vlan;

    VlanTable vlans{front_ports()};
    StgTable groups;
};

inline VlanTable &vlans_of(Switch &sw)
{
    return sw.of<VlanState>().vlans;
}
inline const VlanTable &vlans_of(const Switch &sw)
{
    return sw.of<VlanState>().vlans;
}

/// A VLAN that exists: BCM_E_PARAM, BCM_E_NOT_FOUND.
inline auto existing_vlan(bcm_vlan_t vid)
{
    return [vid](Switch &sw, auto next) -> int {
        if (!VlanTable::valid(vid)) {
            return BCM_E_PARAM;
        }
        VlanTable &vlans = vlans_of(sw);
        return vlans.has(vid) ? next(vlans.at(vid)) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

/// The VLANs of a vector, each of which has to exist: BCM_E_PARAM (a bit outside 1..4094), BCM_E_NOT_FOUND.
int vlans_in(Switch &sw, const bcm_vlan_vector_t vector, std::vector<Vlan *> &found);

inline StgTable &groups_of(Switch &sw)
{
    return sw.of<VlanState>().groups;
}

}  // namespace sim
