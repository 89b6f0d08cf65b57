#include "field.h"
#include "rules.h"
#include "sim_field.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace sim {

namespace {

/// The stage that the qualifiers say; false if it is one that the switch has not got.
bool find_stage(const bcm_field_qset_t &qset, FieldStage *stage)
{
    for (const int other :
         {bcmFieldQualifyStageExternal, bcmFieldQualifyStageHash, bcmFieldQualifyStageExactMatch,
          bcmFieldQualifyStagePortClass, bcmFieldQualifyStagePrelookup}) {
        if (has_qualifier(qset, other)) {
            return false;
        }
    }
    *stage = has_qualifier(qset, bcmFieldQualifyStageLookup)   ? FieldStage::lookup
             : has_qualifier(qset, bcmFieldQualifyStageEgress) ? FieldStage::egress
                                                               : FieldStage::ingress;
    return true;
}

/// Whether entries of the switch's only table can be that wide. All are kept alike.
bool is_mode(bcm_field_group_mode_t mode)
{
    return mode <= bcmFieldGroupModeIntraDouble;
}

/// Makes a group of that id, or of the lowest that is free if there is none, and writes it.
int make_group(FieldState &state, const FieldGroup &group, bcm_field_group_t *id, bool is_id_given)
{
    if (static_cast<int>(group.mode) < 0 || group.mode >= bcmFieldGroupModeCount) {
        return BCM_E_PARAM;
    }
    FieldStage stage;
    if (!is_mode(group.mode) || !find_stage(group.qset, &stage)) {
        return BCM_E_UNAVAIL;
    }
    bcm_field_group_t chosen = *id;
    if (is_id_given) {
        if (chosen < 0) {
            return BCM_E_PARAM;
        }
        if (state.groups.count(chosen) != 0) {
            return BCM_E_EXISTS;
        }
    } else {
        chosen = 1;
        while (state.groups.count(chosen) != 0) {
            ++chosen;
        }
    }
    if (state.groups.size() >= static_cast<std::size_t>(field_group_max)) {
        return BCM_E_RESOURCE;
    }
    FieldGroup &made = state.groups[chosen];
    made.qset = group.qset;
    made.aset = group.aset;
    made.has_aset = group.has_aset;
    made.priority = group.priority;
    made.mode = group.mode;
    made.ports = group.ports;
    made.stage = stage;
    made.presel_set = group.presel_set;
    made.presels = group.presels;
    *id = chosen;
    return BCM_E_NONE;
}

FieldGroup group_of(const bcm_field_qset_t &qset, int priority, bcm_field_group_mode_t mode,
                    const PortSet &ports = PortSet::all())
{
    FieldGroup group;
    group.qset = qset;
    group.priority = priority;
    group.mode = mode;
    group.ports = ports;
    return group;
}

int create(int unit, const bcm_field_qset_t &qset, int priority, bcm_field_group_mode_t mode,
           bcm_field_group_t *group)
{
    return begin(unit, ready<FieldState>, given(group)).then([&](FieldState &state) {
        return make_group(state, group_of(qset, priority, mode), group, false);
    });
}

int create_id(int unit, const bcm_field_qset_t &qset, int priority, bcm_field_group_mode_t mode,
              bcm_field_group_t group)
{
    return begin(unit, ready<FieldState>).then([&](FieldState &state) {
        return make_group(state, group_of(qset, priority, mode), &group, true);
    });
}

/// Those of the bitmap, which has to have none that the unit lacks: BCM_E_PORT.
auto own_ports(const bcm_pbmp_t &ports)
{
    return [&ports](Switch &, auto next) -> int {
        bcm_pbmp_t rest = ports;
        const bcm_pbmp_t front = front_ports();
        rest.pbits[0] &= ~1u;
        for (unsigned word = 0; word < std::size(rest.pbits); ++word) {
            if ((rest.pbits[word] & ~front.pbits[word]) != 0) {
                return BCM_E_PORT;
            }
        }
        PortSet found(ports);
        return next(found);
    };
}

/// Whether an entry of the group uses a qualifier that is not in the set.
bool uses_other(const FieldGroup &group, const bcm_field_qset_t &qset)
{
    return std::any_of(group.entries.begin(), group.entries.end(), [&](const auto &each) {
        const FieldEntry &entry = *each.second;
        return std::any_of(entry.qualifiers.begin(), entry.qualifiers.end(),
                           [&](const auto &used) { return !has_qualifier(qset, used.first.qualifier); })
               || std::any_of(entry.ranges.begin(), entry.ranges.end(),
                              [&](const auto &used) { return !has_qualifier(qset, used.first.first); })
               || std::any_of(entry.data.begin(), entry.data.end(), [&](const auto &used) {
                      return !has_qualifier(qset, bcmFieldQualifyCount + used.first);
                  });
    });
}

}  // namespace

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_field_init(int unit)
{
    const int status = rules::initialise("field", unit);
    return status != BCM_E_NONE ? status : begin(unit).then([](Switch &sw) {
        fields_of(sw).reset();
        fields_of(sw).initialised = true;
    });
}

int sim_bcm_field_detach(int unit)
{
    const int status = rules::detach("field", unit);
    return status != BCM_E_NONE ? status : begin(unit).then([](Switch &sw) {
        fields_of(sw).reset();
        fields_of(sw).initialised = false;
    });
}

int sim_bcm_field_group_create(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_t *group)
{
    return create(unit, qset, pri, bcmFieldGroupModeDefault, group);
}

int sim_bcm_field_group_create_id(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_t group)
{
    return create_id(unit, qset, pri, bcmFieldGroupModeDefault, group);
}

int sim_bcm_field_group_create_mode(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_mode_t mode,
                                    bcm_field_group_t *group)
{
    return create(unit, qset, pri, mode, group);
}

int sim_bcm_field_group_create_mode_id(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_mode_t mode,
                                       bcm_field_group_t group)
{
    return create_id(unit, qset, pri, mode, group);
}

int sim_bcm_field_group_port_create_mode(int unit, bcm_port_t port, bcm_field_qset_t qset, int pri,
                                         bcm_field_group_mode_t mode, bcm_field_group_t *group)
{
    return begin(unit, ready<FieldState>, given(group), own_port(port)).then([&](FieldState &state, int own) {
        return make_group(state, group_of(qset, pri, mode, PortSet::one(own)), group, false);
    });
}

int sim_bcm_field_group_port_create_mode_id(int unit, bcm_port_t port, bcm_field_qset_t qset, int pri,
                                            bcm_field_group_mode_t mode, bcm_field_group_t group)
{
    return begin(unit, ready<FieldState>, own_port(port)).then([&](FieldState &state, int own) {
        return make_group(state, group_of(qset, pri, mode, PortSet::one(own)), &group, true);
    });
}

int sim_bcm_field_group_ports_create_mode(int unit, bcm_pbmp_t pbmp, bcm_field_qset_t qset, int pri,
                                          bcm_field_group_mode_t mode, bcm_field_group_t *group)
{
    return begin(unit, ready<FieldState>, given(group), own_ports(pbmp))
        .then([&](FieldState &state, const PortSet &ports) {
            return make_group(state, group_of(qset, pri, mode, ports), group, false);
        });
}

int sim_bcm_field_group_ports_create_mode_id(int unit, bcm_pbmp_t pbmp, bcm_field_qset_t qset, int pri,
                                             bcm_field_group_mode_t mode, bcm_field_group_t group)
{
    return begin(unit, ready<FieldState>, own_ports(pbmp)).then([&](FieldState &state, const PortSet &ports) {
        return make_group(state, group_of(qset, pri, mode, ports), &group, true);
    });
}

int sim_bcm_field_group_config_create(int unit, bcm_field_group_config_t *group_config)
{
    static const bcm_pbmp_t none = {};
    const bool has_ports =
        group_config != nullptr && (group_config->flags & BCM_FIELD_GROUP_CREATE_WITH_PORTS) != 0;
    return begin(unit, ready<FieldState>, given(group_config),
                 own_ports(has_ports ? group_config->ports : none))
        .then([&](FieldState &state, const PortSet &ports) -> int {
            constexpr uint32 known = BCM_FIELD_GROUP_CREATE_WITH_ID | BCM_FIELD_GROUP_CREATE_WITH_PORTS
                                     | BCM_FIELD_GROUP_CREATE_WITH_MODE | BCM_FIELD_GROUP_CREATE_WITH_ASET
                                     | BCM_FIELD_GROUP_CREATE_WITH_PRESELSET;
            bcm_field_group_config_t &config = *group_config;
            if ((config.flags & ~known) != 0) {
                return BCM_E_UNAVAIL;
            }
            const bool has_mode = (config.flags & BCM_FIELD_GROUP_CREATE_WITH_MODE) != 0;
            FieldGroup group =
                group_of(config.qset, config.priority, has_mode ? config.mode : bcmFieldGroupModeDefault,
                         has_ports ? ports : PortSet::all());
            if ((config.flags & BCM_FIELD_GROUP_CREATE_WITH_ASET) != 0) {
                group.aset = config.aset;
                group.has_aset = true;
            }
            if ((config.flags & BCM_FIELD_GROUP_CREATE_WITH_PRESELSET) != 0) {
                const int status = select_field_group(state, group, config.preselset);
                if (status != BCM_E_NONE) {
                    return status;
                }
            }
            return make_group(state, group, &config.group,
                              (config.flags & BCM_FIELD_GROUP_CREATE_WITH_ID) != 0);
        });
}

int sim_bcm_field_group_mode_get(int unit, bcm_field_group_t group, bcm_field_group_mode_t *mode)
{
    return begin(unit, ready<FieldState>, given(mode), field_group(group))
        .then([&](FieldState &, const FieldGroup &found) { *mode = found.mode; });
}

int sim_bcm_field_group_traverse(int unit, bcm_field_group_traverse_cb callback, void *user_data)
{
    return begin(unit, ready<FieldState>, given(callback)).then([&](Switch &sw, FieldState &state) -> int {
        std::vector<bcm_field_group_t> ids;
        for (const auto &[id, group] : state.groups) {
            ids.push_back(id);
        }
        for (const bcm_field_group_t id : ids) {
            // Who is called may have changed anything.
            if (attached(unit) != &sw) {
                break;
            }
            const int status = state.groups.count(id) != 0 ? callback(unit, id, user_data) : 0;
            if (status < 0) {
                return status;
            }
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_field_group_flush(int unit, bcm_field_group_t group)
{
    return begin(unit, ready<FieldState>, field_group(group)).then([&](FieldState &state, FieldGroup &found) {
        while (!found.entries.empty()) {
            destroy_field(state, found.entries.begin()->first);
        }
    });
}

int sim_bcm_field_group_set(int unit, bcm_field_group_t group, bcm_field_qset_t qset)
{
    return begin(unit, ready<FieldState>, field_group(group))
        .then([&](FieldState &, FieldGroup &found) -> int {
            FieldStage stage;
            if (!find_stage(qset, &stage)) {
                return BCM_E_UNAVAIL;
            }
            if (uses_other(found, qset) || (stage != found.stage && !found.entries.empty())) {
                return BCM_E_BUSY;
            }
            found.qset = qset;
            found.stage = stage;
            return BCM_E_NONE;
        });
}

int sim_bcm_field_group_get(int unit, bcm_field_group_t group, bcm_field_qset_t *qset)
{
    return begin(unit, ready<FieldState>, given(qset), field_group(group))
        .then([&](FieldState &, const FieldGroup &found) { *qset = found.qset; });
}

int sim_bcm_field_group_action_set(int unit, bcm_field_group_t group, bcm_field_aset_t aset)
{
    return begin(unit, ready<FieldState>, field_group(group))
        .then([&](FieldState &, FieldGroup &found) -> int {
            for (const auto &[id, entry] : found.entries) {
                for (const auto &[action, given_action] : entry->actions) {
                    if (!BCM_FIELD_ASET_TEST(aset, static_cast<unsigned>(action))) {
                        return BCM_E_BUSY;
                    }
                }
            }
            found.aset = aset;
            found.has_aset = true;
            return BCM_E_NONE;
        });
}

int sim_bcm_field_group_action_get(int unit, bcm_field_group_t group, bcm_field_aset_t *aset)
{
    return begin(unit, ready<FieldState>, given(aset), field_group(group))
        .then([&](FieldState &, const FieldGroup &found) { *aset = found.aset; });
}

int sim_bcm_field_group_destroy(int unit, bcm_field_group_t group)
{
    return begin(unit, ready<FieldState>, field_group(group))
        .then([&](FieldState &state, const FieldGroup &found) -> int {
            const auto is_its_own = [&](const auto &each) { return each.second.group == group; };
            if (!found.entries.empty()) {
                return BCM_E_BUSY;
            }
            // Nobody has its counters any more.
            for (auto stat = std::find_if(state.stats.begin(), state.stats.end(), is_its_own);
                 stat != state.stats.end();
                 stat = std::find_if(state.stats.begin(), state.stats.end(), is_its_own)) {
                state.stats.erase(stat);
            }
            state.groups.erase(group);
            return BCM_E_NONE;
        });
}

int sim_bcm_field_group_compress(int unit, bcm_field_group_t group)
{
    // There are no gaps between entries.
    return begin(unit, ready<FieldState>, field_group(group)).then([](FieldState &, const FieldGroup &) {});
}

int sim_bcm_field_group_priority_set(int unit, bcm_field_group_t group, int priority)
{
    return begin(unit, ready<FieldState>, field_group(group)).then([&](FieldState &state, FieldGroup &found) {
        found.priority = priority;
        state.update_lookups();
    });
}

int sim_bcm_field_group_priority_get(int unit, bcm_field_group_t group, int *priority)
{
    return begin(unit, ready<FieldState>, given(priority), field_group(group))
        .then([&](FieldState &, const FieldGroup &found) { *priority = found.priority; });
}

int sim_bcm_field_group_status_get(int unit, bcm_field_group_t group, bcm_field_group_status_t *status)
{
    return begin(unit, ready<FieldState>, given(status), field_group(group))
        .then([&](FieldState &state, const FieldGroup &found) {
            const auto counters =
                static_cast<int>(std::count_if(state.stats.begin(), state.stats.end(),
                                               [&](const auto &each) { return each.second.group == group; }));
            *status = {};
            status->prio_min = INT_MIN;
            status->prio_max = INT_MAX;
            status->entries_free =
                field_installed_max - state.installed[static_cast<std::size_t>(found.stage)];
            status->entry_count = found.installed;
            status->entries_total = status->entries_free + found.installed;
            status->counters_free = field_stat_max - static_cast<int>(state.stats.size());
            status->counter_count = counters;
            status->counters_total = status->counters_free + counters;
        });
}

int sim_bcm_field_group_enable_set(int unit, bcm_field_group_t group, int enable)
{
    return begin(unit, ready<FieldState>, field_group(group)).then([&](FieldState &state, FieldGroup &found) {
        found.is_enabled = enable != 0;
        state.update_lookups();
    });
}

int sim_bcm_field_group_enable_get(int unit, bcm_field_group_t group, int *enable)
{
    return begin(unit, ready<FieldState>, given(enable), field_group(group))
        .then([&](FieldState &, const FieldGroup &found) { *enable = found.is_enabled; });
}

int sim_bcm_field_group_install(int unit, bcm_field_group_t group)
{
    return begin(unit, ready<FieldState>, field_group(group))
        .then([&](FieldState &state, const FieldGroup &found) -> int {
            for (const auto &[id, entry] : found.entries) {
                const int status = install_field(state, id, *entry);
                if (status != BCM_E_NONE) {
                    return status;
                }
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_field_group_remove(int unit, bcm_field_group_t group)
{
    return begin(unit, ready<FieldState>, field_group(group))
        .then([&](FieldState &state, const FieldGroup &found) {
            for (const auto &[id, entry] : found.entries) {
                remove_field(state, *entry);
            }
        });
}

}  // extern "C"
