/// Spanning tree groups.
#include "checked.h"
#include "sim.h"

#include <algorithm>
#include <new>
#include <vector>

using namespace sim;

namespace {

/// body(Switch &, StgGroup &) on an existing group; BCM_E_UNIT, BCM_E_PARAM, BCM_E_NOT_FOUND.
template <class Body>
int on_group(int unit, bcm_stg_t stg, Pointers pointers, Body body)
{
    return on_unit(unit, pointers, [&](Switch &sw) -> int {
        if (!StgTable::valid(stg)) {
            return BCM_E_PARAM;
        }
        StgGroup *group = sw.groups.find(stg);
        return group != nullptr ? body(sw, *group) : static_cast<int>(BCM_E_NOT_FOUND);
    });
}

bool valid_state(int stp_state)
{
    return stp_state >= BCM_STG_STP_DISABLE && stp_state <= BCM_STG_STP_FORWARD;
}

int create(Switch &sw, int id)
{
    return sw.groups.groups.emplace(id, StgGroup{}).second ? BCM_E_NONE : BCM_E_EXISTS;
}

/// Moves the VLANs of one group, or of all for 0, to another.
void move_vlans(Switch &sw, bcm_stg_t from, bcm_stg_t to)
{
    for (int id = VlanTable::id_min; id <= VlanTable::id_max; ++id) {
        Vlan &vlan = sw.vlans.at(static_cast<bcm_vlan_t>(id));
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
    return on_unit(unit, {}, [&](Switch &) -> int {
        delete[] list;
        return BCM_E_NONE;
    });
}

int put_vlan(int unit, bcm_stg_t stg, bcm_vlan_t vid, bool remove)
{
    return on_group(unit, stg, {}, [&](Switch &sw, StgGroup &) -> int {
        if (!VlanTable::valid(vid)) {
            return BCM_E_PARAM;
        }
        Vlan &vlan = sw.vlans.at(vid);
        if (!vlan.exists || (remove && vlan.group != stg)) {
            return BCM_E_NOT_FOUND;
        }
        vlan.group = remove ? sw.groups.default_id : stg;
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_stg_init(int unit)
{
    return on_unit(unit, {}, [](Switch &sw) -> int {
        sw.groups.reset();
        move_vlans(sw, 0, sw.groups.default_id);
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_clear(int unit)
{
    return sim_bcm_stg_init(unit);
}

int sim_bcm_stg_count_get(int unit, int *max_stg)
{
    return on_unit(unit, {max_stg}, [&](Switch &) -> int {
        *max_stg = StgTable::id_max;
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_create(int unit, bcm_stg_t *stg_ptr)
{
    return on_unit(unit, {stg_ptr}, [&](Switch &sw) -> int {
        int id = StgTable::id_min;
        while (sw.groups.find(id) != nullptr) {
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
    return on_unit(unit, {}, [&](Switch &sw) -> int {
        return StgTable::valid(stg) ? create(sw, stg) : static_cast<int>(BCM_E_PARAM);
    });
}

int sim_bcm_stg_destroy(int unit, bcm_stg_t stg)
{
    return on_group(unit, stg, {}, [&](Switch &sw, StgGroup &) -> int {
        if (stg == sw.groups.default_id) {
            return BCM_E_BUSY;
        }
        move_vlans(sw, stg, sw.groups.default_id);
        sw.groups.groups.erase(stg);
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_list(int unit, bcm_stg_t **list, int *count)
{
    return on_unit(unit, {list, count}, [&](Switch &sw) -> int {
        std::vector<bcm_stg_t> ids;
        for (const auto &entry : sw.groups.groups) {
            ids.push_back(entry.first);
        }
        return give(ids, list, count);
    });
}

int sim_bcm_stg_list_destroy(int unit, bcm_stg_t *list, int)
{
    return destroy_list(unit, list);
}

int sim_bcm_stg_default_set(int unit, bcm_stg_t stg)
{
    return on_group(unit, stg, {}, [&](Switch &sw, StgGroup &) -> int {
        sw.groups.default_id = stg;
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_default_get(int unit, bcm_stg_t *stg_ptr)
{
    return on_unit(unit, {stg_ptr}, [&](Switch &sw) -> int {
        *stg_ptr = sw.groups.default_id;
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
    return on_group(unit, stg, {}, [&](Switch &sw, StgGroup &) -> int {
        move_vlans(sw, stg, sw.groups.default_id);
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_vlan_list(int unit, bcm_stg_t stg, bcm_vlan_t **list, int *count)
{
    return on_group(unit, stg, {list, count}, [&](Switch &sw, StgGroup &) -> int {
        std::vector<bcm_vlan_t> ids;
        for (int id = VlanTable::id_min; id <= VlanTable::id_max; ++id) {
            const auto vid = static_cast<bcm_vlan_t>(id);
            if (sw.vlans.has(id) && sw.vlans.at(vid).group == stg) {
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
    return on_group(unit, stg, {}, [&](Switch &, StgGroup &group) -> int {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (!valid_state(stp_state)) {
            return BCM_E_PARAM;
        }
        group.states[static_cast<std::size_t>(own_port)] = stp_state;
        return BCM_E_NONE;
    });
}

int sim_bcm_stg_stp_get(int unit, bcm_stg_t stg, bcm_port_t port, int *stp_state)
{
    return on_group(unit, stg, {stp_state}, [&](Switch &, StgGroup &group) -> int {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        if (rc == BCM_E_NONE) {
            *stp_state = group.states[static_cast<std::size_t>(own_port)];
        }
        return rc;
    });
}

int sim_bcm_port_stp_set(int unit, bcm_port_t port, int state)
{
    return on_unit(unit, {}, [&](Switch &sw) -> int {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (!valid_state(state)) {
            return BCM_E_PARAM;
        }
        for (auto &[id, group] : sw.groups.groups) {
            group.states[static_cast<std::size_t>(own_port)] = state;
        }
        return BCM_E_NONE;
    });
}

// Of the groups, which may differ, the default one speaks.
int sim_bcm_port_stp_get(int unit, bcm_port_t port, int *state)
{
    return on_unit(unit, {state}, [&](Switch &sw) -> int {
        return sim_bcm_stg_stp_get(unit, sw.groups.default_id, port, state);
    });
}

int sim_bcm_vlan_stg_get(int unit, bcm_vlan_t vid, bcm_stg_t *stg_ptr)
{
    return on_unit(unit, {stg_ptr}, [&](Switch &sw) -> int {
        if (!VlanTable::valid(vid)) {
            return BCM_E_PARAM;
        }
        if (!sw.vlans.has(vid)) {
            return BCM_E_NOT_FOUND;
        }
        *stg_ptr = sw.vlans.at(vid).group;
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_stg_set(int unit, bcm_vlan_t vid, bcm_stg_t stg)
{
    return put_vlan(unit, stg, vid, false);
}

}  // extern "C"
