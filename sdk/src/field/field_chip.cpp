/// What functions ask of the chip that has the groups: how many tables and cores it has, and how calls reach it.
#include "field.h"
#include "sim_field.h"

#include <algorithm>

using namespace sim;

namespace {

/// BCM_E_PARAM: no such stage; BCM_E_UNAVAIL: not of this switch.
auto field_stage(bcm_field_stage_t stage)
{
    return [stage](Switch &, auto next) -> int {
        FieldStage found = FieldStage::ingress;
        switch (stage) {
        case bcmFieldStageDefault:
        case bcmFieldStageIngress:
            break;
        case bcmFieldStageLookup:
            found = FieldStage::lookup;
            break;
        case bcmFieldStageEgress:
            found = FieldStage::egress;
            break;
        default:
            return static_cast<int>(stage) < 0 || stage >= bcmFieldStageCount ? BCM_E_PARAM : BCM_E_UNAVAIL;
        }
        return next(found);
    };
}

/// The only table of the chip, and the only core: BCM_E_PARAM.
auto only_table(int dbidx)
{
    return
        [dbidx](Switch &, auto next) -> int { return dbidx == 0 ? next() : static_cast<int>(BCM_E_PARAM); };
}

auto only_core(int count)
{
    return
        [count](Switch &, auto next) -> int { return count == 1 ? next() : static_cast<int>(BCM_E_PARAM); };
}

}  // namespace

extern "C" {

int sim_bcm_field_stage_info_get(int unit, bcm_field_stage_t stage, bcm_field_stage_info_t *stage_info,
                                 int *group_count)
{
    return begin(unit, ready<FieldState>, given(stage_info, group_count), field_stage(stage))
        .then([&](FieldState &state, FieldStage found) {
            *stage_info = {};
            stage_info->field_presel_max_id = BCM_FIELD_PRESEL_MAX - 1;
            *group_count =
                static_cast<int>(std::count_if(state.groups.begin(), state.groups.end(),
                                               [&](const auto &each) { return each.second.stage == found; }));
        });
}

int sim_bcm_field_group_oper_mode_set(int unit, bcm_field_stage_t stage, bcm_field_group_oper_mode_t mode)
{
    return begin(unit, ready<FieldState>, field_stage(stage)).then([&](FieldState &, FieldStage) -> int {
        // What is written is there when the call returns.
        return mode == bcmFieldGroupOperSync    ? BCM_E_NONE
               : mode == bcmFieldGroupOperAsync ? BCM_E_UNAVAIL
                                                : BCM_E_PARAM;
    });
}

int sim_bcm_field_group_oper_mode_get(int unit, bcm_field_stage_t stage, bcm_field_group_oper_mode_t *mode)
{
    return begin(unit, ready<FieldState>, given(mode), field_stage(stage))
        .then([&](FieldState &, FieldStage) { *mode = bcmFieldGroupOperSync; });
}

int sim_bcm_field_group_config_create_with_dbidx(int unit, bcm_field_group_config_t *group_config, int dbidx)
{
    return begin(unit, ready<FieldState>, only_table(dbidx)).then([&](FieldState &) {
        return sim_bcm_field_group_config_create(unit, group_config);
    });
}

int sim_bcm_field_group_action_set_with_dbidx(int unit, bcm_field_group_t group, bcm_field_aset_t aset,
                                              int dbidx)
{
    return begin(unit, ready<FieldState>, only_table(dbidx)).then([&](FieldState &) {
        return sim_bcm_field_group_action_set(unit, group, aset);
    });
}

int sim_bcm_field_action_config_add(int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                                    int core_count, bcm_field_action_core_config_t *core_config_arr)
{
    return begin(unit, ready<FieldState>, given(core_config_arr), only_core(core_count))
        .then([&](FieldState &) {
            const bcm_field_action_core_config_t &config = *core_config_arr;
            return sim_bcm_field_action_add(unit, entry, action, config.param0, config.param1, config.param2);
        });
}

}  // extern "C"
