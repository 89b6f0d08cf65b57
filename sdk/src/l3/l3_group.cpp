/// Groups of egress objects: the same groups by ids of members, by a record of the group, and by records of members.
#include "l3_group.h"

#include "begin.h"
#include "events.h"
#include "sim_l3.h"

#include <algorithm>
#include <cstring>

using namespace sim;

namespace sim {

void l3_work_out_paths(L3State &l3, L3Group &group)
{
    std::vector<const NextHop *> paths;
    for (const bcm_l3_ecmp_member_t &member : group.members) {
        const L3Egress *egress = l3.objects.egress_object(member.egress_if);
        if (egress->status == BCM_L3_ECMP_DYNAMIC_MEMBER_FORCE_UP) {
            paths.push_back(&egress->hop);
        }
    }
    group.paths.swap(paths);
}

}  // namespace sim

namespace {

using Members = std::vector<bcm_l3_ecmp_member_t>;

bcm_l3_ecmp_member_t member_of(bcm_if_t egress)
{
    bcm_l3_ecmp_member_t member = {};
    member.egress_if = egress;
    return member;
}

/// The members that an array of count ids names. BCM_E_PARAM
int members_of(int count, const bcm_if_t *ids, Members *members)
{
    if (count < 0 || (count > 0 && ids == nullptr)) {
        return BCM_E_PARAM;
    }
    std::transform(ids, ids + count, std::back_inserter(*members), member_of);
    return BCM_E_NONE;
}

int members_of(int count, const bcm_l3_ecmp_member_t *records, Members *members)
{
    if (count < 0 || (count > 0 && records == nullptr)) {
        return BCM_E_PARAM;
    }
    members->assign(records, records + count);
    return BCM_E_NONE;
}

/// BCM_E_UNAVAIL, BCM_E_NOT_FOUND (egress object)
int check(L3State &l3, const Members &members)
{
    for (const bcm_l3_ecmp_member_t &member : members) {
        if (member.flags != 0 || member.failover_id != 0 || member.failover_egress_if != 0) {
            return BCM_E_UNAVAIL;
        }
        if (l3.objects.egress_object(member.egress_if) == nullptr) {
            return BCM_E_NOT_FOUND;
        }
    }
    return BCM_E_NONE;
}

void sort(const bcm_l3_egress_ecmp_t &record, Members &members)
{
    if (!(record.ecmp_group_flags & BCM_L3_ECMP_PATH_NO_SORTING)) {
        std::stable_sort(members.begin(), members.end(),
                         [](const auto &a, const auto &b) { return a.egress_if < b.egress_if; });
    }
}

/// The group gets these members, which were checked. std::bad_alloc leaves all as it was.
void set_members(L3State &l3, L3Group &group, Members members)
{
    sort(group.record, members);
    group.members.swap(members);
    try {
        l3_work_out_paths(l3, group);
    } catch (...) {
        group.members.swap(members);
        throw;
    }
    for (const bcm_l3_ecmp_member_t &old : members) {
        l3.objects.count_use(old.egress_if, -1);
    }
    for (const bcm_l3_ecmp_member_t &member : group.members) {
        l3.objects.count_use(member.egress_if, 1);
    }
}

/// Of a record with the id to use, if it is given; writes the id there. max_paths 0: as many as there can be.
int create(L3State &l3, bool with_id, bool replaces, bcm_l3_egress_ecmp_t *record, Members members)
{
    const int paths_max = record->max_paths != 0 ? record->max_paths : l3.settings.paths_max;
    if (record->max_paths < 0 || paths_max > l3.settings.paths_max
        || members.size() > static_cast<std::size_t>(paths_max)) {
        return BCM_E_PARAM;
    }
    if (record->dynamic_mode != BCM_L3_ECMP_DYNAMIC_MODE_DISABLED
        || (record->ecmp_group_flags & ~uint32{BCM_L3_ECMP_PATH_NO_SORTING}) != 0) {
        return BCM_E_UNAVAIL;
    }
    int rc = check(l3, members);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    L3Group *group;
    const std::size_t before = l3.objects.groups.size();
    rc = l3.objects.place(l3.objects.groups, L3Objects::group_max, with_id, replaces, &record->ecmp_intf,
                          &group);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    const bcm_l3_egress_ecmp_t old = group->record;
    group->record = *record;
    group->record.flags &= ~(BCM_L3_WITH_ID | BCM_L3_REPLACE);
    group->record.max_paths = paths_max;
    try {
        set_members(l3, *group, std::move(members));
    } catch (...) {
        group->record = old;
        if (l3.objects.groups.size() != before) {
            l3.objects.erase(l3.objects.groups, record->ecmp_intf);
        }
        throw;
    }
    record->max_paths = paths_max;
    return BCM_E_NONE;
}

/// A group that exists: BCM_E_NOT_FOUND.
auto existing_group(bcm_if_t id)
{
    return [id](Switch &sw, auto next) -> int {
        L3Group *group = l3_of(sw).objects.group(id);
        return group != nullptr ? next(*group) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

int destroy(int unit, bcm_if_t id)
{
    return begin(unit, ready<L3State>, existing_group(id)).then([&](L3State &l3, L3Group &group) -> int {
        if (group.is_used()) {
            return BCM_E_BUSY;
        }
        for (const bcm_l3_ecmp_member_t &member : group.members) {
            l3.objects.count_use(member.egress_if, -1);
        }
        l3.objects.erase(l3.objects.groups, id);
        return BCM_E_NONE;
    });
}

int add(int unit, bcm_if_t id, const bcm_l3_ecmp_member_t &member)
{
    return begin(unit, ready<L3State>, existing_group(id)).then([&](L3State &l3, L3Group &group) -> int {
        const int rc = check(l3, {member});
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (group.members.size() >= static_cast<std::size_t>(group.record.max_paths)) {
            return BCM_E_FULL;
        }
        Members members = group.members;
        members.push_back(member);
        set_members(l3, group, std::move(members));
        return BCM_E_NONE;
    });
}

/// One of the members with that object.
int remove(int unit, bcm_if_t id, bcm_if_t egress)
{
    return begin(unit, ready<L3State>, existing_group(id)).then([&](L3State &l3, L3Group &group) -> int {
        Members members = group.members;
        const auto found = std::find_if(members.begin(), members.end(),
                                        [&](const auto &member) { return member.egress_if == egress; });
        if (found == members.end()) {
            return BCM_E_NOT_FOUND;
        }
        members.erase(found);
        set_members(l3, group, std::move(members));
        return BCM_E_NONE;
    });
}

void write(bcm_if_t *element, const bcm_l3_ecmp_member_t &member)
{
    *element = member.egress_if;
}

void write(bcm_l3_ecmp_member_t *element, const bcm_l3_ecmp_member_t &member)
{
    *element = member;
}

/// The members, as far as there is room, and how many there are; the record, unless null.
template <class Element>
int get(int unit, bcm_if_t id, bcm_l3_egress_ecmp_t *record, int room, Element *array, int *count)
{
    return begin(unit, ready<L3State>, given(count), existing_group(id))
        .then([&](L3State &, L3Group &group) -> int {
            if (room < 0 || (room > 0 && array == nullptr)) {
                return BCM_E_PARAM;
            }
            const std::size_t written = std::min(group.members.size(), static_cast<std::size_t>(room));
            for (std::size_t i = 0; i < written; ++i) {
                write(array + i, group.members[i]);
            }
            *count = static_cast<int>(group.members.size());
            if (record != nullptr) {
                *record = group.record;
            }
            return BCM_E_NONE;
        });
}

std::vector<bcm_if_t> sorted_ids(const Members &members)
{
    std::vector<bcm_if_t> ids;
    std::transform(members.begin(), members.end(), std::back_inserter(ids),
                   [](const auto &member) { return member.egress_if; });
    std::sort(ids.begin(), ids.end());
    return ids;
}

/// The group with the lowest id that has these members, in whatever order: BCM_E_NOT_FOUND; errors as for members_of.
template <class Member>
int find(L3State &l3, int count, const Member *given_members, const L3Group **found)
{
    Members members;
    const int rc = members_of(count, given_members, &members);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    const std::vector<bcm_if_t> wanted = sorted_ids(members);
    for (const auto &[id, group] : l3.objects.groups) {
        if (sorted_ids(group.members) == wanted) {
            *found = &group;
            return BCM_E_NONE;
        }
    }
    return BCM_E_NOT_FOUND;
}

/// visit(record, members) with copies of each, by ascending id; a negative result ends it.
template <class Visit>
int traverse(int unit, bool has_callback, Visit visit)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if (!has_callback) {
            return BCM_E_PARAM;
        }
        auto &groups = l3.objects.groups;
        for (auto next = groups.begin(); next != groups.end();) {
            bcm_l3_egress_ecmp_t record = next->second.record;
            const bcm_if_t id = next->first;
            Members members = next->second.members;
            const int rc = visit(record, members);
            if (rc < 0) {
                return rc;
            }
            next = groups.upper_bound(id);
        }
        return BCM_E_NONE;
    });
}

std::vector<bcm_if_t> ids_of(const Members &members)
{
    std::vector<bcm_if_t> ids;
    for (const bcm_l3_ecmp_member_t &member : members) {
        ids.push_back(member.egress_if);
    }
    return ids;
}

int create_by_ids(int unit, uint32 flags, int max_paths, int count, bcm_if_t *ids, bcm_if_t *id)
{
    return begin(unit, ready<L3State>, given(id), tells_if_full(bcmSwitchObjectEcmpGroupMax))
        .then([&](L3State &l3) -> int {
            Members members;
            if ((flags & ~(BCM_L3_WITH_ID | BCM_L3_REPLACE)) != 0
                || members_of(count, ids, &members) != BCM_E_NONE) {
                return BCM_E_PARAM;
            }
            bcm_l3_egress_ecmp_t record = {};
            record.ecmp_intf = *id;
            record.max_paths = max_paths;
            const int rc =
                create(l3, flags & BCM_L3_WITH_ID, flags & BCM_L3_REPLACE, &record, std::move(members));
            if (rc == BCM_E_NONE) {
                *id = record.ecmp_intf;
            }
            return rc;
        });
}

}  // namespace

extern "C" {

int sim_bcm_l3_egress_multipath_create(int unit, uint32 flags, int intf_count, bcm_if_t *intf_array,
                                       bcm_if_t *mpintf)
{
    return create_by_ids(unit, flags, 0, intf_count, intf_array, mpintf);
}

int sim_bcm_l3_egress_multipath_max_create(int unit, uint32 flags, int max_paths, int intf_count,
                                           bcm_if_t *intf_array, bcm_if_t *mpintf)
{
    if (max_paths < 1) {
        return begin(unit, ready<L3State>).then([](L3State &) -> int { return BCM_E_PARAM; });
    }
    return create_by_ids(unit, flags, max_paths, intf_count, intf_array, mpintf);
}

int sim_bcm_l3_egress_multipath_destroy(int unit, bcm_if_t mpintf)
{
    return destroy(unit, mpintf);
}

int sim_bcm_l3_egress_multipath_get(int unit, bcm_if_t mpintf, int intf_size, bcm_if_t *intf_array,
                                    int *intf_count)
{
    return get(unit, mpintf, nullptr, intf_size, intf_array, intf_count);
}

int sim_bcm_l3_egress_multipath_add(int unit, bcm_if_t mpintf, bcm_if_t intf)
{
    return add(unit, mpintf, member_of(intf));
}

int sim_bcm_l3_egress_multipath_delete(int unit, bcm_if_t mpintf, bcm_if_t intf)
{
    return remove(unit, mpintf, intf);
}

int sim_bcm_l3_egress_multipath_find(int unit, int intf_count, bcm_if_t *intf_array, bcm_if_t *mpintf)
{
    return begin(unit, ready<L3State>, given(mpintf)).then([&](L3State &l3) {
        const L3Group *found;
        const int rc = find(l3, intf_count, intf_array, &found);
        if (rc == BCM_E_NONE) {
            *mpintf = found->record.ecmp_intf;
        }
        return rc;
    });
}

int sim_bcm_l3_egress_multipath_traverse(int unit, bcm_l3_egress_multipath_traverse_cb trav_fn,
                                         void *user_data)
{
    return traverse(unit, trav_fn != nullptr, [&](bcm_l3_egress_ecmp_t &record, const Members &members) {
        std::vector<bcm_if_t> ids = ids_of(members);
        return trav_fn(unit, record.ecmp_intf, static_cast<int>(ids.size()), ids.data(), user_data);
    });
}

int sim_bcm_l3_egress_ecmp_create(int unit, bcm_l3_egress_ecmp_t *ecmp, int intf_count, bcm_if_t *intf_array)
{
    return begin(unit, ready<L3State>, given(ecmp), tells_if_full(bcmSwitchObjectEcmpGroupMax))
        .then([&](L3State &l3) -> int {
            Members members;
            if ((ecmp->flags & ~(BCM_L3_WITH_ID | BCM_L3_REPLACE)) != 0
                || members_of(intf_count, intf_array, &members) != BCM_E_NONE) {
                return BCM_E_PARAM;
            }
            return create(l3, ecmp->flags & BCM_L3_WITH_ID, ecmp->flags & BCM_L3_REPLACE, ecmp,
                          std::move(members));
        });
}

int sim_bcm_l3_egress_ecmp_destroy(int unit, bcm_l3_egress_ecmp_t *ecmp)
{
    return ecmp == nullptr ? begin(unit, ready<L3State>, given(ecmp)).then([](L3State &) {})
                           : destroy(unit, ecmp->ecmp_intf);
}

int sim_bcm_l3_egress_ecmp_get(int unit, bcm_l3_egress_ecmp_t *ecmp, int intf_size, bcm_if_t *intf_array,
                               int *intf_count)
{
    return ecmp == nullptr ? begin(unit, ready<L3State>, given(ecmp)).then([](L3State &) {})
                           : get(unit, ecmp->ecmp_intf, ecmp, intf_size, intf_array, intf_count);
}

int sim_bcm_l3_egress_ecmp_add(int unit, bcm_l3_egress_ecmp_t *ecmp, bcm_if_t intf)
{
    return ecmp == nullptr ? begin(unit, ready<L3State>, given(ecmp)).then([](L3State &) {})
                           : add(unit, ecmp->ecmp_intf, member_of(intf));
}

int sim_bcm_l3_egress_ecmp_delete(int unit, bcm_l3_egress_ecmp_t *ecmp, bcm_if_t intf)
{
    return ecmp == nullptr ? begin(unit, ready<L3State>, given(ecmp)).then([](L3State &) {})
                           : remove(unit, ecmp->ecmp_intf, intf);
}

int sim_bcm_l3_egress_ecmp_find(int unit, int intf_count, bcm_if_t *intf_array, bcm_l3_egress_ecmp_t *ecmp)
{
    return begin(unit, ready<L3State>, given(ecmp)).then([&](L3State &l3) {
        const L3Group *found;
        const int rc = find(l3, intf_count, intf_array, &found);
        if (rc == BCM_E_NONE) {
            *ecmp = found->record;
        }
        return rc;
    });
}

int sim_bcm_l3_egress_ecmp_traverse(int unit, bcm_l3_egress_ecmp_traverse_cb trav_fn, void *user_data)
{
    return traverse(unit, trav_fn != nullptr, [&](bcm_l3_egress_ecmp_t &record, const Members &members) {
        std::vector<bcm_if_t> ids = ids_of(members);
        return trav_fn(unit, &record, static_cast<int>(ids.size()), ids.data(), user_data);
    });
}

int sim_bcm_l3_ecmp_create(int unit, uint32 options, bcm_l3_egress_ecmp_t *ecmp_info, int ecmp_member_count,
                           bcm_l3_ecmp_member_t *ecmp_member_array)
{
    return begin(unit, ready<L3State>, given(ecmp_info), tells_if_full(bcmSwitchObjectEcmpGroupMax))
        .then([&](L3State &l3) -> int {
            Members members;
            if ((options & ~uint32{BCM_L3_ECMP_O_CREATE_WITH_ID | BCM_L3_ECMP_O_REPLACE}) != 0
                || members_of(ecmp_member_count, ecmp_member_array, &members) != BCM_E_NONE) {
                return BCM_E_PARAM;
            }
            return create(l3, options & BCM_L3_ECMP_O_CREATE_WITH_ID, options & BCM_L3_ECMP_O_REPLACE,
                          ecmp_info, std::move(members));
        });
}

int sim_bcm_l3_ecmp_destroy(int unit, bcm_if_t ecmp_group_id)
{
    return destroy(unit, ecmp_group_id);
}

int sim_bcm_l3_ecmp_get(int unit, bcm_l3_egress_ecmp_t *ecmp_info, int ecmp_member_size,
                        bcm_l3_ecmp_member_t *ecmp_member_array, int *ecmp_member_count)
{
    return ecmp_info == nullptr ? begin(unit, ready<L3State>, given(ecmp_info)).then([](L3State &) {})
                                : get(unit, ecmp_info->ecmp_intf, ecmp_info, ecmp_member_size,
                                      ecmp_member_array, ecmp_member_count);
}

int sim_bcm_l3_ecmp_member_add(int unit, bcm_if_t ecmp_group_id, bcm_l3_ecmp_member_t *ecmp_member)
{
    return ecmp_member == nullptr ? begin(unit, ready<L3State>, given(ecmp_member)).then([](L3State &) {})
                                  : add(unit, ecmp_group_id, *ecmp_member);
}

int sim_bcm_l3_ecmp_member_delete(int unit, bcm_if_t ecmp_group_id, bcm_l3_ecmp_member_t *ecmp_member)
{
    return ecmp_member == nullptr ? begin(unit, ready<L3State>, given(ecmp_member)).then([](L3State &) {})
                                  : remove(unit, ecmp_group_id, ecmp_member->egress_if);
}

int sim_bcm_l3_ecmp_member_delete_all(int unit, bcm_if_t ecmp_group_id)
{
    return begin(unit, ready<L3State>, existing_group(ecmp_group_id)).then([](L3State &l3, L3Group &group) {
        set_members(l3, group, {});
    });
}

int sim_bcm_l3_ecmp_find(int unit, int ecmp_member_count, bcm_l3_ecmp_member_t *ecmp_member_array,
                         bcm_if_t *ecmp_group_id)
{
    return begin(unit, ready<L3State>, given(ecmp_group_id)).then([&](L3State &l3) {
        const L3Group *found = nullptr;
        const int rc = find(l3, ecmp_member_count, ecmp_member_array, &found);
        if (rc == BCM_E_NONE) {
            *ecmp_group_id = found->record.ecmp_intf;
        }
        return rc;
    });
}

int sim_bcm_l3_ecmp_traverse(int unit, bcm_l3_ecmp_traverse_cb trav_fn, void *user_data)
{
    return traverse(unit, trav_fn != nullptr, [&](bcm_l3_egress_ecmp_t &record, Members &members) {
        return trav_fn(unit, &record, static_cast<int>(members.size()), members.data(), user_data);
    });
}

int sim_bcm_l3_egress_ecmp_member_status_set(int unit, bcm_if_t intf, int status)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        L3Egress *object = l3.objects.egress_object(intf);
        if (object == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        if (status != BCM_L3_ECMP_DYNAMIC_MEMBER_FORCE_DOWN
            && status != BCM_L3_ECMP_DYNAMIC_MEMBER_FORCE_UP) {
            return status == BCM_L3_ECMP_DYNAMIC_MEMBER_HW ? BCM_E_UNAVAIL : BCM_E_PARAM;
        }
        object->status = status;
        for (auto &[id, group] : l3.objects.groups) {
            l3_work_out_paths(l3, group);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_egress_ecmp_member_status_get(int unit, bcm_if_t intf, int *status)
{
    return begin(unit, ready<L3State>, given(status)).then([&](L3State &l3) -> int {
        const L3Egress *object = l3.objects.egress_object(intf);
        if (object == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        *status = object->status;
        return BCM_E_NONE;
    });
}

}  // extern "C"
