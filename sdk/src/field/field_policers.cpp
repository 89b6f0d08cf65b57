/// Policers that entries have.
#include "field.h"
#include "sim_field.h"

using namespace sim;

namespace {

/// BCM_E_PARAM.
auto policer_level(int level)
{
    return [level](Switch &, auto next) -> int {
        auto at = static_cast<std::size_t>(level);
        return at < std::tuple_size_v<FieldPolicers> ? next(at) : static_cast<int>(BCM_E_PARAM);
    };
}

}  // namespace

extern "C" {

int sim_bcm_field_entry_policer_attach(int unit, bcm_field_entry_t entry, int level, bcm_policer_t policer_id)
{
    return begin(unit, ready<FieldState>, policer_level(level), field_entry(entry))
        .then([&](FieldState &state, std::size_t at, FieldEntry &found) -> int {
            const PolicerUse use = state.policers.use(policer_id);
            if (use.id == 0) {
                return BCM_E_NOT_FOUND;
            }
            if (found.policers[at].id != 0) {
                return BCM_E_EXISTS;
            }
            found.policers[at] = use;
            return BCM_E_NONE;
        });
}

int sim_bcm_field_entry_policer_detach(int unit, bcm_field_entry_t entry, int level)
{
    return begin(unit, ready<FieldState>, policer_level(level), field_entry(entry))
        .then([&](FieldState &, std::size_t at, FieldEntry &found) -> int {
            if (found.policers[at].id == 0) {
                return BCM_E_NOT_FOUND;
            }
            found.policers[at] = {};
            return BCM_E_NONE;
        });
}

int sim_bcm_field_entry_policer_detach_all(int unit, bcm_field_entry_t entry)
{
    return begin(unit, ready<FieldState>, field_entry(entry)).then([&](FieldState &, FieldEntry &found) {
        found.policers = {};
    });
}

int sim_bcm_field_entry_policer_get(int unit, bcm_field_entry_t entry, int level, bcm_policer_t *policer_id)
{
    return begin(unit, ready<FieldState>, given(policer_id), policer_level(level), field_entry(entry))
        .then([&](FieldState &, std::size_t at, const FieldEntry &found) -> int {
            if (found.policers[at].id == 0) {
                return BCM_E_NOT_FOUND;
            }
            *policer_id = found.policers[at].id;
            return BCM_E_NONE;
        });
}

}  // extern "C"
