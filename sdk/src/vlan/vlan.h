/// The room of VLANs: which there are, who is in them, and their spanning tree groups.
#pragma once

#include "stg_table.h"
#include "switch.h"
#include "vlan_table.h"

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

inline StgTable &groups_of(Switch &sw)
{
    return sw.of<VlanState>().groups;
}

}  // namespace sim
