#include "field.h"
#include "sim_field.h"

#include <algorithm>

namespace sim {

namespace {

/// BCM_E_PARAM: it gives no class; BCM_E_UNAVAIL: none that this switch has.
auto class_action(int action)
{
    return [action](Switch &, auto next) -> int {
        const bool is_one = action >= bcmFieldActionClassSourceSet
                            && action <= bcmFieldActionMulticastClassNew
                            && action != bcmFieldActionEgressClassCancel;
        return !is_one               ? static_cast<int>(BCM_E_PARAM)
               : gives_class(action) ? next()
                                     : static_cast<int>(BCM_E_UNAVAIL);
    };
}

/// BCM_E_PARAM: no such action.
auto field_action(bcm_field_action_t action)
{
    return [is_one = static_cast<int>(action) >= 0 && action < bcmFieldActionCount](
               Switch &, auto next) -> int { return is_one ? next() : static_cast<int>(BCM_E_PARAM); };
}

FieldAction parameters_of(uint32 first, uint32 second, uint32 third)
{
    FieldAction with;
    with.parameters = {{first, second, third}};
    return with;
}

int add_action(const FieldState &state, FieldEntry &entry, bcm_field_action_t action,
               const FieldAction &given_action)
{
    const FieldGroup &group = state.groups.at(entry.group);
    if (group.has_aset && !BCM_FIELD_ASET_TEST(group.aset, static_cast<unsigned>(action))) {
        return BCM_E_PARAM;
    }
    return entry.actions.emplace(action, given_action).second ? BCM_E_NONE : BCM_E_EXISTS;
}

/// BCM_E_PARAM: not of that many bits, or of a qualifier that the group has not got.
int check_pieces(const FieldGroup &group, uint32 count, const bcm_field_extraction_field_t *pieces)
{
    constexpr unsigned most_bits = 32;
    unsigned bits = 0;
    for (const auto *piece = pieces; piece != pieces + count; ++piece) {
        const bool is_constant = piece->flags == BCM_FIELD_EXTRACTION_FIELD_CONSTANT;
        if (piece->bits == 0 || piece->bits > most_bits - bits || (!is_constant && piece->flags != 0)) {
            return BCM_E_PARAM;
        }
        bits += piece->bits;
        const bool is_there = is_constant ? (std::uint64_t{piece->value} >> piece->bits) == 0
                                          : static_cast<unsigned>(piece->qualifier) < bcmFieldQualifyCount
                                                && has_qualifier(group.qset, piece->qualifier);
        if (!is_there) {
            return BCM_E_PARAM;
        }
    }
    return count != 0 ? BCM_E_NONE : BCM_E_PARAM;
}

}  // namespace

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_field_action_add(int unit, bcm_field_entry_t entry, bcm_field_action_t action, uint32 param0,
                             uint32 param1, uint32 param2)
{
    return begin(unit, ready<FieldState>, field_action(action), field_entry(entry))
        .then([&](FieldState &state, FieldEntry &found) {
            return add_action(state, found, action, parameters_of(param0, param1, param2));
        });
}

int sim_bcm_field_action_ports_add(int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                                   bcm_pbmp_t pbmp)
{
    return begin(unit, ready<FieldState>, field_action(action), field_entry(entry))
        .then([&](FieldState &state, FieldEntry &found) {
            FieldAction with;
            with.ports = pbmp;
            with.has_ports = true;
            return add_action(state, found, action, with);
        });
}

int sim_bcm_field_action_mac_add(int unit, bcm_field_entry_t entry, bcm_field_action_t action, bcm_mac_t mac)
{
    return begin(unit, ready<FieldState>, given(mac), field_action(action), field_entry(entry))
        .then([&](FieldState &state, FieldEntry &found) {
            FieldAction with;
            std::copy_n(mac, with.mac.size(), with.mac.begin());
            with.has_mac = true;
            return add_action(state, found, action, with);
        });
}

int sim_bcm_field_direct_extraction_action_add(int unit, bcm_field_entry_t entry,
                                               bcm_field_extraction_action_t action, uint32 count,
                                               bcm_field_extraction_field_t *extraction_arr)
{
    return begin(unit, ready<FieldState>, given(extraction_arr), field_action(action.action),
                 field_entry(entry))
        .then([&](FieldState &state, FieldEntry &found) -> int {
            const int status = check_pieces(state.groups.at(found.group), count, extraction_arr);
            if (status != BCM_E_NONE) {
                return status;
            }
            FieldAction with = parameters_of(action.bias, 0, 0);
            with.pieces.assign(extraction_arr, extraction_arr + count);
            return add_action(state, found, action.action, with);
        });
}

int sim_bcm_field_direct_extraction_action_get(int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                                               uint32 *bias, uint32 max_count,
                                               bcm_field_extraction_field_t *extraction_arr, uint32 *count)
{
    return begin(unit, ready<FieldState>, given(bias, extraction_arr, count), field_action(action),
                 field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) -> int {
            const auto at = found.actions.find(action);
            if (at == found.actions.end() || at->second.pieces.empty()) {
                return BCM_E_NOT_FOUND;
            }
            const auto &pieces = at->second.pieces;
            *bias = at->second.parameters[0];
            std::copy_n(pieces.begin(), std::min<std::size_t>(max_count, pieces.size()), extraction_arr);
            *count = static_cast<uint32>(pieces.size());
            return BCM_E_NONE;
        });
}

int sim_bcm_field_action_delete(int unit, bcm_field_entry_t entry, bcm_field_action_t action, uint32 param0,
                                uint32 param1, uint32 param2)
{
    return begin(unit, ready<FieldState>, field_action(action), field_entry(entry))
        .then([&](FieldState &, FieldEntry &found) -> int {
            const auto at = found.actions.find(action);
            if (at == found.actions.end()
                || at->second.parameters != std::array<uint32, 3>{{param0, param1, param2}}) {
                return BCM_E_NOT_FOUND;
            }
            found.actions.erase(at);
            return BCM_E_NONE;
        });
}

int sim_bcm_field_action_get(int unit, bcm_field_entry_t entry, bcm_field_action_t action, uint32 *param0,
                             uint32 *param1, uint32 *param2)
{
    return begin(unit, ready<FieldState>, given(param0, param1, param2), field_action(action),
                 field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) -> int {
            const auto at = found.actions.find(action);
            if (at == found.actions.end()) {
                return BCM_E_NOT_FOUND;
            }
            *param0 = at->second.parameters[0];
            *param1 = at->second.parameters[1];
            *param2 = at->second.parameters[2];
            return BCM_E_NONE;
        });
}

int sim_bcm_field_action_ports_get(int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                                   bcm_pbmp_t *pbmp)
{
    return begin(unit, ready<FieldState>, given(pbmp), field_action(action), field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) -> int {
            const auto at = found.actions.find(action);
            if (at == found.actions.end() || !at->second.has_ports) {
                return BCM_E_NOT_FOUND;
            }
            *pbmp = at->second.ports;
            return BCM_E_NONE;
        });
}

int sim_bcm_field_action_mac_get(int unit, bcm_field_entry_t entry, bcm_field_action_t action, bcm_mac_t *mac)
{
    return begin(unit, ready<FieldState>, given(mac), field_action(action), field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) -> int {
            const auto at = found.actions.find(action);
            if (at == found.actions.end() || !at->second.has_mac) {
                return BCM_E_NOT_FOUND;
            }
            std::copy(at->second.mac.begin(), at->second.mac.end(), *mac);
            return BCM_E_NONE;
        });
}

int sim_bcm_field_action_class_add(int unit, bcm_field_entry_t entry, bcm_field_class_info_t *class_info)
{
    return begin(unit, ready<FieldState>, given(class_info)).then([&](FieldState &) {
        return begin(unit, ready<FieldState>, class_action(class_info->action), field_entry(entry))
            .then([&](FieldState &state, FieldEntry &found) -> int {
                return class_info->class_id >> field_class_bits != 0
                           ? static_cast<int>(BCM_E_PARAM)
                           : add_action(state, found, class_info->action,
                                        parameters_of(class_info->class_id, 0, 0));
            });
    });
}

int sim_bcm_field_action_class_get(int unit, bcm_field_entry_t entry, bcm_field_class_info_t *class_info)
{
    return begin(unit, ready<FieldState>, given(class_info), field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) -> int {
            const auto at = found.actions.find(class_info->action);
            if (at == found.actions.end() || !gives_class(class_info->action)) {
                return BCM_E_NOT_FOUND;
            }
            class_info->class_id = at->second.parameters[0];
            return BCM_E_NONE;
        });
}

int sim_bcm_field_class_size_get(int unit, bcm_field_action_t action, uint32 *size)
{
    return begin(unit, ready<FieldState>, given(size), class_action(action)).then([&](FieldState &) {
        *size = field_class_bits;
    });
}

int sim_bcm_field_action_remove(int unit, bcm_field_entry_t entry, bcm_field_action_t action)
{
    return begin(unit, ready<FieldState>, field_action(action), field_entry(entry))
        .then([&](FieldState &, FieldEntry &found) -> int {
            return found.actions.erase(action) != 0 ? BCM_E_NONE : BCM_E_NOT_FOUND;
        });
}

int sim_bcm_field_action_remove_all(int unit, bcm_field_entry_t entry)
{
    return begin(unit, ready<FieldState>, field_entry(entry)).then([](FieldState &, FieldEntry &found) {
        found.actions.clear();
    });
}

}  // extern "C"
