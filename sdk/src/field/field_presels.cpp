/// Conditions under which groups are looked up.
#include "field.h"
#include "sim_field.h"

#include <algorithm>

namespace sim {

namespace {

auto presel_of(bcm_field_presel_t presel)
{
    return [presel](Switch &sw, auto next) -> int {
        const bool is_there = fields_of(sw).presels.count(presel) != 0;
        return is_there ? next() : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

bool is_in_set(const bcm_field_presel_set_t &presels, int id)
{
    return SHR_BITGET(presels.w, static_cast<unsigned>(id)) != 0;
}

int add_all(const FieldQualified &qualifiers, FieldPattern &pattern)
{
    for (const auto &[subject, values] : qualifiers) {
        const int status = add_to_pattern(*field_qualifier(subject.qualifier), values, pattern);
        if (status != BCM_E_NONE) {
            return status;
        }
    }
    return BCM_E_NONE;
}

}  // namespace

int set_presel(FieldState &state, FieldPresel &presel, const FieldSubject &subject, const FieldValues *values)
{
    constexpr unsigned everywhere = (1u << field_stages) - 1;
    const FieldQualifier *known = field_qualifier(subject.qualifier);
    if (known == nullptr || known->stages != everywhere) {
        return BCM_E_UNAVAIL;
    }
    FieldQualified changed = presel.qualifiers;
    if (values != nullptr) {
        changed[subject] = *values;
    } else if (changed.erase(subject) == 0) {
        return BCM_E_NOT_FOUND;
    }
    FieldPattern pattern;
    const int status = add_all(changed, pattern);
    if (status == BCM_E_NONE) {
        presel.qualifiers.swap(changed);
        presel.pattern = pattern;
        state.presels_look_further =
            std::any_of(state.presels.begin(), state.presels.end(),
                        [](const auto &each) { return each.second.pattern.looks_further(); });
    }
    return status;
}

int select_field_group(FieldState &state, FieldGroup &group, const bcm_field_presel_set_t &presels)
{
    std::vector<const FieldPresel *> found;
    for (int id = 0; id < BCM_FIELD_PRESEL_MAX; ++id) {
        if (is_in_set(presels, id)) {
            const auto presel = state.presels.find(id);
            if (presel == state.presels.end()) {
                return BCM_E_NOT_FOUND;
            }
            found.push_back(&presel->second);
        }
    }
    group.presel_set = presels;
    group.presels = std::move(found);
    return BCM_E_NONE;
}

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_field_presel_create(int unit, bcm_field_presel_t *presel_id)
{
    return begin(unit, ready<FieldState>, given(presel_id)).then([&](FieldState &state) -> int {
        bcm_field_presel_t chosen = 0;
        while (state.presels.count(chosen) != 0) {
            ++chosen;
        }
        if (chosen >= BCM_FIELD_PRESEL_MAX) {
            return BCM_E_RESOURCE;
        }
        state.presels[chosen] = {};
        *presel_id = chosen;
        return BCM_E_NONE;
    });
}

int sim_bcm_field_presel_create_id(int unit, bcm_field_presel_t presel_id)
{
    return begin(unit, ready<FieldState>).then([&](FieldState &state) -> int {
        if (presel_id < 0 || presel_id >= BCM_FIELD_PRESEL_MAX) {
            return BCM_E_PARAM;
        }
        return state.presels.emplace(presel_id, FieldPresel()).second ? BCM_E_NONE : BCM_E_EXISTS;
    });
}

int sim_bcm_field_presel_destroy(int unit, bcm_field_presel_t presel_id)
{
    return begin(unit, ready<FieldState>, presel_of(presel_id)).then([&](FieldState &state) -> int {
        const bool is_used = std::any_of(state.groups.begin(), state.groups.end(), [&](const auto &each) {
            return is_in_set(each.second.presel_set, presel_id);
        });
        if (is_used) {
            return BCM_E_BUSY;
        }
        state.presels.erase(presel_id);
        return BCM_E_NONE;
    });
}

int sim_bcm_field_group_presel_set(int unit, bcm_field_group_t group, bcm_field_presel_set_t *presel)
{
    return begin(unit, ready<FieldState>, given(presel), field_group(group))
        .then(
            [&](FieldState &state, FieldGroup &found) { return select_field_group(state, found, *presel); });
}

int sim_bcm_field_group_presel_get(int unit, bcm_field_group_t group, bcm_field_presel_set_t *presel)
{
    return begin(unit, ready<FieldState>, given(presel), field_group(group))
        .then([&](FieldState &, const FieldGroup &found) { *presel = found.presel_set; });
}

}  // extern "C"
