#include "vlan_table.h"

#include "vlan.h"

namespace sim {

VlanTable::VlanTable(const bcm_pbmp_t &members) : vlans_(id_max + 1)
{
    vlans_[BCM_VLAN_DEFAULT] = {true, members, members, BCM_STG_DEFAULT};
}

}  // namespace sim
