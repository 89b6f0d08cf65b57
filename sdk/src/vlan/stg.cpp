/// Spanning tree groups.
#include "begin.h"
#include "sim_port.h"
#include "sim_stg.h"
#include "sim_vlan.h"
#include "vlan.h"

#include <algorithm>
#include <new>
#include <vector>

using namespace sim;

namespace {

/// A group that exists: BCM_E_PARAM, BCM_E_NOT_FOUND.
auto existing_group(bcm_stg_t stg)
{
    return [stg](Switch &sw, auto next) -> int {
        if (!StgTable::valid(stg)) {
            return BCM_E_PARAM;
        }
        StgGroup *group = groups_of(sw).find(stg);
        return group != nullptr ? next(*group) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

int create(Switch &sw, int id)
{
    return groups_of(sw).create(id) ? BCM_E_NONE : BCM_E_EXISTS;
}

/// Moves the VLANs of one group, or of all for 0, to another.
void move_vlans(Switch &sw, bcm_stg_t from, bcm_stg_t to)
{
    for (int id = VlanTable::id_min; id <= VlanTable::id_max; ++id) {
        Vlan &vlan = vlans_of(sw).at(static_cast<bcm_vlan_t>(id));
        if (from == 0 || vlan.group == from) {
            vlan.group = to;
        }
    }
}

/// An array of the values that the matching destroy function frees.
template <class Value>
int give(const std::vector<Value> &values, Value **list, int *count)
{
    Value *copy = nullptr;
    if (!values.empty()) {
        copy = new (std::nothrow) Value[values.size()];
        if (copy == nullptr) {
            return BCM_E_MEMORY;
        }
        std::copy(values.begin(), values.end(), copy);
    }
    *list = copy;
    *count = static_cast<int>(values.size());
    return BCM_E_NONE;
}

template <class Value>
int destroy_list(int unit, Value *list)
{
    return begin(unit).then([&]() -> int {
        delete[] list;
        return BCM_E_NONE;
    });
}

int put_vlan(int unit, bcm_stg_t stg, bcm_vlan_t vid, bool remove)
{
    return begin(unit, existing_group(stg)).then([&](Switch &sw, StgGroup &) -> int {
        if (!VlanTable::valid(vid)) {
            return BCM_E_PARAM;
        }
        Vlan &vlan = vlans_of(sw).at(vid);
        if (!vlan.exists || (remove && vlan.group != stg)) {
            return BCM_E_NOT_FOUND;
        }
        vlan.group = remove ? groups_of(sw).default_id : stg;
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_stg_init(int unit)
{
    return begin(unit).then([](Switch &sw) -> int {
        groups_of(sw).reset();
        move_vlans(sw, 0, groups_of(sw).default_id);
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_clear(int unit)
{
    return sim_bcm_stg_init(unit);
}

int sim_bcm_stg_count_get(int unit, int *max_stg)
{
    return begin(unit, given(max_stg)).then([&]() -> int {
        *max_stg = StgTable::id_max;
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_create(int unit, bcm_stg_t *stg_ptr)
{
    return begin(unit, given(stg_ptr)).then([&](Switch &sw) -> int {
        int id = StgTable::id_min;
        while (groups_of(sw).find(id) != nullptr) {
            ++id;
        }
        if (id > StgTable::id_max) {
            return BCM_E_FULL;
        }
        *stg_ptr = id;
        return create(sw, id);
    });
}

int sim_bcm_stg_create_id(int unit, bcm_stg_t stg)
{
    return begin(unit).then([&](Switch &sw) -> int {
        return StgTable::valid(stg) ? create(sw, stg) : static_cast<int>(BCM_E_PARAM);
    });
}

int sim_bcm_stg_destroy(int unit, bcm_stg_t stg)
{
    return begin(unit, existing_group(stg)).then([&](Switch &sw, StgGroup &) -> int {
        if (stg == groups_of(sw).default_id) {
            return BCM_E_BUSY;
        }
        move_vlans(sw, stg, groups_of(sw).default_id);
        groups_of(sw).destroy(stg);
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_list(int unit, bcm_stg_t **list, int *count)
{
    return begin(unit, given(list, count)).then([&](Switch &sw) -> int {
        std::vector<bcm_stg_t> ids;
        groups_of(sw).each([&](int id, const StgGroup &) { ids.push_back(id); });
        return give(ids, list, count);
    });
}

int sim_bcm_stg_list_destroy(int unit, bcm_stg_t *list, int)
{
    return destroy_list(unit, list);
}

int sim_bcm_stg_default_set(int unit, bcm_stg_t stg)
{
    return begin(unit, existing_group(stg)).then([&](Switch &sw, StgGroup &) -> int {
        groups_of(sw).default_id = stg;
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_default_get(int unit, bcm_stg_t *stg_ptr)
{
    return begin(unit, given(stg_ptr)).then([&](Switch &sw) -> int {
        *stg_ptr = groups_of(sw).default_id;
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_vlan_add(int unit, bcm_stg_t stg, bcm_vlan_t vid)
{
    return put_vlan(unit, stg, vid, false);
}

int sim_bcm_stg_vlan_remove(int unit, bcm_stg_t stg, bcm_vlan_t vid)
{
    return put_vlan(unit, stg, vid, true);
}

int sim_bcm_stg_vlan_remove_all(int unit, bcm_stg_t stg)
{
    return begin(unit, existing_group(stg)).then([&](Switch &sw, StgGroup &) -> int {
        move_vlans(sw, stg, groups_of(sw).default_id);
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_vlan_list(int unit, bcm_stg_t stg, bcm_vlan_t **list, int *count)
{
    return begin(unit, given(list, count), existing_group(stg)).then([&](Switch &sw, StgGroup &) -> int {
        std::vector<bcm_vlan_t> ids;
        for (int id = VlanTable::id_min; id <= VlanTable::id_max; ++id) {
            const auto vid = static_cast<bcm_vlan_t>(id);
            if (vlans_of(sw).has(id) && vlans_of(sw).at(vid).group == stg) {
                ids.push_back(vid);
            }
        }
        return give(ids, list, count);
    });
}

int sim_bcm_stg_vlan_list_destroy(int unit, bcm_vlan_t *list, int)
{
    return destroy_list(unit, list);
}

int sim_bcm_stg_stp_set(int unit, bcm_stg_t stg, bcm_port_t port, int stp_state)
{
    return begin(unit, existing_group(stg)).then([&](StgGroup &group) -> int {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (!StgTable::valid_state(stp_state)) {
            return BCM_E_PARAM;
        }
        group.set_state(own_port, stp_state);
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_stp_get(int unit, bcm_stg_t stg, bcm_port_t port, int *stp_state)
{
    return begin(unit, given(stp_state), existing_group(stg)).then([&](StgGroup &group) -> int {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        if (rc == BCM_E_NONE) {
            *stp_state = group.state(own_port);
        }
        return rc;
    });
}

int sim_bcm_port_stp_set(int unit, bcm_port_t port, int state)
{
    return begin(unit).then([&](Switch &sw) -> int {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (!StgTable::valid_state(state)) {
            return BCM_E_PARAM;
        }
        groups_of(sw).each([&](int, StgGroup &group) { group.set_state(own_port, state); });
        return BCM_E_NONE;
    });
}

// Of the groups, which may differ, the default one speaks.
int sim_bcm_port_stp_get(int unit, bcm_port_t port, int *state)
{
    return begin(unit, given(state)).then([&](Switch &sw) -> int {
        return sim_bcm_stg_stp_get(unit, groups_of(sw).default_id, port, state);
    });
}

int sim_bcm_vlan_stg_get(int unit, bcm_vlan_t vid, bcm_stg_t *stg_ptr)
{
    return begin(unit, given(stg_ptr), existing_vlan(vid)).then([&](Vlan &vlan) -> int {
        *stg_ptr = vlan.group;
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_stg_set(int unit, bcm_vlan_t vid, bcm_stg_t stg)
{
    return put_vlan(unit, stg, vid, false);
}

// A VLAN has the states of its group.

int sim_bcm_vlan_stp_set(int unit, bcm_vlan_t vid, bcm_port_t port, int stp_state)
{
    return begin(unit, existing_vlan(vid)).then([&](Vlan &vlan) {
        return sim_bcm_stg_stp_set(unit, vlan.group, port, stp_state);
    });
}

int sim_bcm_vlan_stp_get(int unit, bcm_vlan_t vid, bcm_port_t port, int *stp_state)
{
    return begin(unit, given(stp_state), existing_vlan(vid)).then([&](Vlan &vlan) {
        return sim_bcm_stg_stp_get(unit, vlan.group, port, stp_state);
    });
}

int sim_bcm_vlan_vector_stp_set(int unit, bcm_vlan_vector_t vlan_vector, bcm_port_t port, int stp_state)
{
    return begin(unit, given(vlan_vector), own_port(port)).then([&](Switch &sw, int) -> int {
        std::vector<Vlan *> vlans;
        int rc = vlans_in(sw, vlan_vector, vlans);
        // What one group refuses, the first refuses too.
        for (std::size_t i = 0; i < vlans.size() && rc == BCM_E_NONE; ++i) {
            rc = sim_bcm_stg_stp_set(unit, vlans[i]->group, port, stp_state);
        }
        return rc;
    });
}

}  // extern "C"
