#include "vlan_table.h"

#include "vlan.h"

namespace sim {

VlanTable::VlanTable(const bcm_pbmp_t &members) : vlans_(id_max + 1)
{
    vlans_[BCM_VLAN_DEFAULT] = {true, members, members, BCM_STG_DEFAULT, nullptr};
}

int vlans_in(Switch &sw, const bcm_vlan_vector_t vector, std::vector<Vlan *> &found)
{
    for (int id = 0; id <= VlanTable::id_max + 1; ++id) {
        if (!SHR_BITGET(vector, id)) {
            continue;
        }
        if (!vlans_of(sw).has(id)) {
            return VlanTable::valid(id) ? BCM_E_NOT_FOUND : BCM_E_PARAM;
        }
        found.push_back(&vlans_of(sw).at(static_cast<bcm_vlan_t>(id)));
    }
    return BCM_E_NONE;
}

}  // namespace sim
