/// VLANs and their members.
#include "begin.h"
#include "rule_store.h"
#include "sim_vlan.h"
#include "vlan.h"

#include <algorithm>
#include <new>
#include <vector>

using namespace sim;

namespace {

bool within_unit(const bcm_pbmp_t &ports)
{
    for (int port = port_max + 1; port < BCM_PBMP_PORT_MAX; ++port) {
        if (BCM_PBMP_MEMBER(ports, port)) {
            return false;
        }
    }
    return true;
}

/// change(member word, untagged word, word number) on each word of a VLAN's bitmaps.
template <class Change>
void change_members(Vlan &vlan, Change change)
{
    for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
        change(vlan.members.pbits[word], vlan.untagged.pbits[word], word);
    }
}

bool overlap(const bcm_pbmp_t &a, const bcm_pbmp_t &b)
{
    for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
        if (a.pbits[word] & b.pbits[word]) {
            return true;
        }
    }
    return false;
}

bool contains(const bcm_pbmp_t &all, const bcm_pbmp_t &part)
{
    for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
        if (part.pbits[word] & ~all.pbits[word]) {
            return false;
        }
    }
    return true;
}

/// The VLANs for which test(vlan) holds, as an array that bcm_vlan_list_destroy frees.
template <class Test>
int list(Switch &sw, bcm_vlan_data_t **listp, int *countp, Test test)
{
    std::vector<bcm_vlan_data_t> found;
    for (int id = VlanTable::id_min; id <= VlanTable::id_max; ++id) {
        const auto vid = static_cast<bcm_vlan_t>(id);
        if (vlans_of(sw).has(id) && test(vlans_of(sw).at(vid))) {
            found.push_back({vid, vlans_of(sw).at(vid).members, vlans_of(sw).at(vid).untagged});
        }
    }
    bcm_vlan_data_t *copy = nullptr;
    if (!found.empty()) {
        copy = new (std::nothrow) bcm_vlan_data_t[found.size()];
        if (copy == nullptr) {
            return BCM_E_MEMORY;
        }
        std::copy(found.begin(), found.end(), copy);
    }
    *listp = copy;
    *countp = static_cast<int>(found.size());
    return BCM_E_NONE;
}

}  // namespace

extern "C" {

void sim_bcm_vlan_data_t_init(bcm_vlan_data_t *vlan_data)
{
    if (vlan_data != nullptr) {
        *vlan_data = {};
    }
}

int sim_bcm_vlan_init(int unit)
{
    return begin(unit).then([](Switch &sw) -> int {
        vlans_of(sw) = VlanTable(front_ports());
        vlans_of(sw).at(BCM_VLAN_DEFAULT).group = groups_of(sw).default_id;
        rule_store_of(sw).initialise("vlan");
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_create(int unit, bcm_vlan_t vid)
{
    return begin(unit).then([&](Switch &sw) -> int {
        if (!VlanTable::valid(vid)) {
            return BCM_E_PARAM;
        }
        if (vlans_of(sw).has(vid)) {
            return BCM_E_EXISTS;
        }
        vlans_of(sw).at(vid) = {true, {}, {}, groups_of(sw).default_id, nullptr, nullptr};
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_destroy(int unit, bcm_vlan_t vid)
{
    return begin(unit, existing_vlan(vid)).then([&](Switch &sw, Vlan &vlan) -> int {
        if (vid == vlans_of(sw).default_id) {
            return BCM_E_BADID;
        }
        vlan = {};
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_destroy_all(int unit)
{
    return begin(unit).then([](Switch &sw) -> int {
        for (int id = VlanTable::id_min; id <= VlanTable::id_max; ++id) {
            if (id != vlans_of(sw).default_id) {
                vlans_of(sw).at(static_cast<bcm_vlan_t>(id)) = {};
            }
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_port_add(int unit, bcm_vlan_t vid, bcm_pbmp_t pbmp, bcm_pbmp_t ubmp)
{
    return begin(unit, existing_vlan(vid)).then([&](Vlan &vlan) -> int {
        if (!within_unit(pbmp) || !within_unit(ubmp)) {
            return BCM_E_PORT;
        }
        if (!contains(pbmp, ubmp)) {
            return BCM_E_PARAM;
        }
        change_members(vlan, [&](uint32 &members, uint32 &untagged, int word) {
            members |= pbmp.pbits[word];
            untagged = (untagged & ~pbmp.pbits[word]) | ubmp.pbits[word];
        });
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_port_remove(int unit, bcm_vlan_t vid, bcm_pbmp_t pbmp)
{
    return begin(unit, existing_vlan(vid)).then([&](Vlan &vlan) -> int {
        if (!within_unit(pbmp)) {
            return BCM_E_PORT;
        }
        change_members(vlan, [&](uint32 &members, uint32 &untagged, int word) {
            members &= ~pbmp.pbits[word];
            untagged &= ~pbmp.pbits[word];
        });
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_port_get(int unit, bcm_vlan_t vid, bcm_pbmp_t *pbmp, bcm_pbmp_t *ubmp)
{
    return begin(unit, given(pbmp, ubmp), existing_vlan(vid)).then([&](Vlan &vlan) -> int {
        *pbmp = vlan.members;
        *ubmp = vlan.untagged;
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_default_get(int unit, bcm_vlan_t *vid_ptr)
{
    return begin(unit, given(vid_ptr)).then([&](Switch &sw) -> int {
        *vid_ptr = vlans_of(sw).default_id;
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_default_set(int unit, bcm_vlan_t vid)
{
    return begin(unit, existing_vlan(vid)).then([&](Switch &sw, Vlan &) -> int {
        vlans_of(sw).default_id = vid;
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_list(int unit, bcm_vlan_data_t **listp, int *countp)
{
    return begin(unit, given(listp, countp)).then([&](Switch &sw) {
        return list(sw, listp, countp, [](const Vlan &) { return true; });
    });
}

int sim_bcm_vlan_list_by_pbmp(int unit, bcm_pbmp_t ports, bcm_vlan_data_t **listp, int *countp)
{
    return begin(unit, given(listp, countp)).then([&](Switch &sw) -> int {
        if (!within_unit(ports)) {
            return BCM_E_PORT;
        }
        return list(sw, listp, countp, [&](const Vlan &vlan) { return overlap(vlan.members, ports); });
    });
}

int sim_bcm_vlan_list_destroy(int unit, bcm_vlan_data_t *list, int)
{
    return begin(unit).then([&]() -> int {
        delete[] list;
        return BCM_E_NONE;
    });
}

}  // extern "C"
