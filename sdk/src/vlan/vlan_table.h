/// The VLANs of a unit and their members.
#pragma once

#include <bcm/stg.h>
#include <bcm/types.h>
#include <bcm/vlan.h>

#include <memory>
#include <vector>

namespace sim {

struct Vlan {
    bool exists = false;
    bcm_pbmp_t members = {};
    bcm_pbmp_t untagged = {};  // within members
    bcm_stg_t group = BCM_STG_DEFAULT;
    std::unique_ptr<bcm_vlan_control_vlan_t> settings = {};  // null until some are set
    std::unique_ptr<bcm_vlan_block_t> blocked = {};  // ports that get no packets of a kind; null for none

    bool learns() const { return settings == nullptr || !(settings->flags & BCM_VLAN_LEARN_DISABLE); }
};

class VlanTable {
public:
    static constexpr int id_min = 1;
    static constexpr int id_max = 4094;

    /// Has only BCM_VLAN_DEFAULT, with the given untagged members.
    explicit VlanTable(const bcm_pbmp_t &members);

    static bool valid(int id) { return id >= id_min && id <= id_max; }

    /// The VLAN's place, whether it exists or not; id has to be valid.
    Vlan &at(bcm_vlan_t id) { return vlans_[id]; }
    bool has(int id) const { return valid(id) && vlans_[static_cast<std::size_t>(id)].exists; }

    bcm_vlan_t default_id = BCM_VLAN_DEFAULT;

private:
    std::vector<Vlan> vlans_;
};

}  // namespace sim
