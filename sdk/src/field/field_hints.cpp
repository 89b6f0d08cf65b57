/// Lists of hints to the layout of groups. They are kept: groups of this switch find room wherever there is some.
#include "field.h"
#include "sim_field.h"

#include <algorithm>

using namespace sim;

namespace {

constexpr int field_hints_max = 256;  // lists

auto hints_of(bcm_field_hintid_t id)
{
    return [id](Switch &sw, auto next) -> int {
        const auto found = fields_of(sw).hints.find(id);
        return found != fields_of(sw).hints.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

bool is_hint(const bcm_field_hint_t &hint)
{
    return static_cast<unsigned>(hint.hint_type) < bcmFieldHintTypeCount
           && static_cast<unsigned>(hint.qual) < bcmFieldQualifyCount && hint.flags == 0
           && hint.start_bit <= hint.end_bit;
}

/// That of the same type and qualifier.
FieldHints::iterator find_hint(FieldHints &hints, const bcm_field_hint_t &like)
{
    return std::find_if(hints.begin(), hints.end(), [&](const bcm_field_hint_t &each) {
        return each.hint_type == like.hint_type && each.qual == like.qual;
    });
}

}  // namespace

extern "C" {

int sim_bcm_field_hints_create(int unit, bcm_field_hintid_t *hint_id)
{
    return begin(unit, ready<FieldState>, given(hint_id)).then([&](FieldState &state) -> int {
        bcm_field_hintid_t chosen = 1;
        while (state.hints.count(chosen) != 0) {
            ++chosen;
        }
        if (chosen > field_hints_max) {
            return BCM_E_RESOURCE;
        }
        state.hints[chosen] = {};
        *hint_id = chosen;
        return BCM_E_NONE;
    });
}

int sim_bcm_field_hints_add(int unit, bcm_field_hintid_t hint_id, bcm_field_hint_t *hint)
{
    return begin(unit, ready<FieldState>, given(hint), hints_of(hint_id))
        .then([&](FieldState &, FieldHints &hints) -> int {
            if (!is_hint(*hint)) {
                return BCM_E_PARAM;
            }
            if (find_hint(hints, *hint) != hints.end()) {
                return BCM_E_EXISTS;
            }
            hints.push_back(*hint);
            return BCM_E_NONE;
        });
}

int sim_bcm_field_hints_get(int unit, bcm_field_hintid_t hint_id, bcm_field_hint_t *hint)
{
    return begin(unit, ready<FieldState>, given(hint), hints_of(hint_id))
        .then([&](FieldState &, FieldHints &hints) -> int {
            const auto found = find_hint(hints, *hint);
            if (found == hints.end()) {
                return BCM_E_NOT_FOUND;
            }
            *hint = *found;
            return BCM_E_NONE;
        });
}

int sim_bcm_field_hints_delete(int unit, bcm_field_hintid_t hint_id, bcm_field_hint_t *hint)
{
    return begin(unit, ready<FieldState>, given(hint), hints_of(hint_id))
        .then([&](FieldState &, FieldHints &hints) -> int {
            const auto found = find_hint(hints, *hint);
            if (found == hints.end()) {
                return BCM_E_NOT_FOUND;
            }
            hints.erase(found);
            return BCM_E_NONE;
        });
}

int sim_bcm_field_hints_delete_all(int unit, bcm_field_hintid_t hint_id)
{
    return begin(unit, ready<FieldState>, hints_of(hint_id)).then([](FieldState &, FieldHints &hints) {
        hints.clear();
    });
}

int sim_bcm_field_hints_destroy(int unit, bcm_field_hintid_t hint_id)
{
    return begin(unit, ready<FieldState>, hints_of(hint_id)).then([&](FieldState &state, FieldHints &) {
        state.hints.erase(hint_id);
    });
}

}  // extern "C"
