#include "events.h"
#include "field.h"
#include "sim_field.h"

#include <algorithm>

namespace sim {

namespace {

/// Makes an entry of that id, or of one above all others if there is none, and writes it.
int make_entry(FieldState &state, bcm_field_group_t group, bcm_field_entry_t *id, bool is_id_given)
{
    bcm_field_entry_t chosen = *id;
    if (is_id_given) {
        if ((chosen & presel_entry) != 0) {
            return BCM_E_PARAM;
        }
        if (state.entries.count(chosen) != 0) {
            return BCM_E_EXISTS;
        }
    } else {
        chosen = state.entries.empty() ? 1 : state.entries.rbegin()->first + 1;
        while (chosen == 0 || (chosen & presel_entry) != 0 || state.entries.count(chosen) != 0) {
            ++chosen;
        }
    }
    if (state.entries.size() >= field_entry_max) {
        return BCM_E_RESOURCE;
    }
    const auto made = state.entries.emplace(chosen, group).first;
    try {
        state.groups.at(group).entries[chosen] = &made->second;
    } catch (...) {
        state.entries.erase(made);
        throw;
    }
    *id = chosen;
    return BCM_E_NONE;
}

int copy(FieldState &state, const FieldEntry &from, bcm_field_entry_t *id, bool is_id_given)
{
    FieldEntry twin(from.group);
    twin.qualifiers = from.qualifiers;
    twin.ranges = from.ranges;
    twin.data = from.data;
    twin.actions = from.actions;
    const int status = make_entry(state, from.group, id, is_id_given);
    if (status != BCM_E_NONE) {
        return status;
    }
    FieldEntry &made = state.entries.at(*id);
    made.priority = from.priority;
    made.qualifiers.swap(twin.qualifiers);
    made.ranges.swap(twin.ranges);
    made.data.swap(twin.data);
    made.actions.swap(twin.actions);
    for (const auto &[key, inverted] : made.ranges) {
        ++state.ranges.at(key.second).uses;
    }
    return BCM_E_NONE;
}

}  // namespace

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_field_entry_create(int unit, bcm_field_group_t group, bcm_field_entry_t *entry)
{
    return begin(unit, ready<FieldState>, given(entry), field_group(group))
        .then([&](FieldState &state, FieldGroup &) { return make_entry(state, group, entry, false); });
}

int sim_bcm_field_entry_create_id(int unit, bcm_field_group_t group, bcm_field_entry_t entry)
{
    return begin(unit, ready<FieldState>, field_group(group)).then([&](FieldState &state, FieldGroup &) {
        return make_entry(state, group, &entry, true);
    });
}

int sim_bcm_field_entry_multi_get(int unit, bcm_field_group_t group, int max_count,
                                  bcm_field_entry_t *entry_arr, int *prio_arr, int *count)
{
    return begin(unit, ready<FieldState>, given(entry_arr, prio_arr, count), field_group(group))
        .then([&](FieldState &, const FieldGroup &found) -> int {
            if (max_count < 0) {
                return BCM_E_PARAM;
            }
            int written = 0;
            for (const auto &[id, entry] : found.entries) {
                if (written < max_count) {
                    entry_arr[written] = id;
                    prio_arr[written++] = entry->priority;
                }
            }
            *count = static_cast<int>(found.entries.size());
            return BCM_E_NONE;
        });
}

int sim_bcm_field_entry_destroy(int unit, bcm_field_entry_t entry)
{
    return begin(unit, ready<FieldState>, field_entry(entry)).then([&](FieldState &state, FieldEntry &) {
        destroy_field(state, entry);
    });
}

int sim_bcm_field_entry_destroy_all(int unit)
{
    return begin(unit, ready<FieldState>).then([](FieldState &state) {
        while (!state.entries.empty()) {
            destroy_field(state, state.entries.begin()->first);
        }
    });
}

int sim_bcm_field_entry_copy(int unit, bcm_field_entry_t src_entry, bcm_field_entry_t *dst_entry)
{
    return begin(unit, ready<FieldState>, given(dst_entry), field_entry(src_entry))
        .then([&](FieldState &state, FieldEntry &from) { return copy(state, from, dst_entry, false); });
}

int sim_bcm_field_entry_copy_id(int unit, bcm_field_entry_t src_entry, bcm_field_entry_t dst_entry)
{
    return begin(unit, ready<FieldState>, field_entry(src_entry))
        .then([&](FieldState &state, FieldEntry &from) { return copy(state, from, &dst_entry, true); });
}

int sim_bcm_field_entry_install(int unit, bcm_field_entry_t entry)
{
    return begin(unit, ready<FieldState>, field_entry(entry), tells_if_full(bcmSwitchObjectFieldEntryMax))
        .then([&](FieldState &state, FieldEntry &found) { return install_field(state, entry, found); });
}

int sim_bcm_field_entry_reinstall(int unit, bcm_field_entry_t entry)
{
    return sim_bcm_field_entry_install(unit, entry);
}

int sim_bcm_field_entry_remove(int unit, bcm_field_entry_t entry)
{
    return begin(unit, ready<FieldState>, field_entry(entry)).then([](FieldState &state, FieldEntry &found) {
        remove_field(state, found);
    });
}

int sim_bcm_field_entry_operation(int unit, uint32 num_entries, bcm_field_entry_oper_t *entry_oper,
                                  uint32 *num_done)
{
    return begin(unit, ready<FieldState>, given(entry_oper, num_done),
                 tells_if_full(bcmSwitchObjectFieldEntryMax))
        .then([&](FieldState &state) -> int {
            *num_done = 0;
            for (const bcm_field_entry_oper_t *step = entry_oper; step != entry_oper + num_entries; ++step) {
                const auto found = state.entries.find(step->entry_id);
                if (found == state.entries.end()) {
                    return BCM_E_NOT_FOUND;
                }
                int status = BCM_E_NONE;
                if (step->flags == BCM_FIELD_ENTRY_OPER_INSTALL) {
                    status = install_field(state, found->first, found->second);
                } else if (step->flags == BCM_FIELD_ENTRY_OPER_REMOVE) {
                    remove_field(state, found->second);
                } else {
                    status = BCM_E_PARAM;
                }
                if (status != BCM_E_NONE) {
                    return status;
                }
                ++*num_done;
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_field_entry_enable_set(int unit, bcm_field_entry_t entry, int enable)
{
    return begin(unit, ready<FieldState>, field_entry(entry)).then([&](FieldState &state, FieldEntry &found) {
        if (found.is_enabled == (enable != 0)) {
            return;
        }
        if (found.installed != nullptr) {
            FieldGroup &group = state.groups.at(found.group);
            enable != 0 ? begin_to_act(state, group, entry, *found.installed)
                        : end_to_act(state, group, *found.installed);
        }
        found.is_enabled = enable != 0;
        state.update_lookups();
    });
}

int sim_bcm_field_entry_enable_get(int unit, bcm_field_entry_t entry, int *enable)
{
    return begin(unit, ready<FieldState>, given(enable), field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) { *enable = found.is_enabled; });
}

int sim_bcm_field_entry_prio_set(int unit, bcm_field_entry_t entry, int prio)
{
    return begin(unit, ready<FieldState>, field_entry(entry)).then([&](FieldState &, FieldEntry &found) {
        found.priority = prio;
    });
}

int sim_bcm_field_entry_prio_get(int unit, bcm_field_entry_t entry, int *prio)
{
    return begin(unit, ready<FieldState>, given(prio), field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) { *prio = found.priority; });
}

int sim_bcm_field_resync(int unit)
{
    // The tables of the chip are the entries.
    return begin(unit, ready<FieldState>).then([](FieldState &) {});
}

}  // extern "C"
