/// Policers and their actions as objects, with what they count.
#include "begin.h"
#include "policer.h"
#include "rule_store.h"
#include "sim_policer.h"

using namespace sim;

namespace {

using Config = bcm_policer_config_t;

constexpr std::size_t policers_max = 4096;
constexpr std::size_t actions_max = 256;
constexpr uint32 known_flags = BCM_POLICER_WITH_ID | BCM_POLICER_REPLACE | BCM_POLICER_COLOR_BLIND
                               | BCM_POLICER_COLOR_MERGE | BCM_POLICER_DROP_RED | BCM_POLICER_MODE_BYTES
                               | BCM_POLICER_MODE_PACKETS | BCM_POLICER_GLOBAL | BCM_POLICER_EGRESS
                               | BCM_POLICER_BEGIN_WITH_BUCKET_FULL;

auto policer_of(bcm_policer_t id)
{
    return [id](Switch &sw, auto next) -> int {
        Policer *policer = policers_of(sw).find(id);
        return policer != nullptr ? next(*policer) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

auto action_of(uint32 id)
{
    return [id](Switch &sw, auto next) -> int {
        auto &actions = policers_of(sw).actions;
        const auto found = actions.find(id);
        return found != actions.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

/// There is one core: 0, or -1 for all.
auto core_of(bcm_core_t core)
{
    return [core](Switch &, auto next) -> int {
        return core == -1 || core == 0 ? next() : static_cast<int>(BCM_E_PARAM);
    };
}

/// BCM_E_PARAM; BCM_E_UNAVAIL for what meters here do not do; BCM_E_NOT_FOUND for an action.
int check(const Policers &state, const Config &config)
{
    constexpr uint32 units = BCM_POLICER_MODE_BYTES | BCM_POLICER_MODE_PACKETS;
    const auto is_below = [](auto value, auto end) {
        return static_cast<uint32>(value) < static_cast<uint32>(end);
    };
    if ((config.flags & ~known_flags) || (config.flags & units) == units
        || !is_below(config.mode, bcmPolicerModeCount) || !is_below(config.level, bcmPolicerLevelCount)
        || !is_below(config.sharing_mode, bcmPolicerSharingModeCount)) {
        return BCM_E_PARAM;
    }
    if ((config.flags & BCM_POLICER_COLOR_MERGE) || config.mode == bcmPolicerModeSrTcmModified
        || config.sharing_mode != bcmPolicerSharingModeNone || config.share_with != 0
        || config.max_ckbits_sec != 0 || config.max_pkbits_sec != 0) {
        return BCM_E_UNAVAIL;
    }
    return config.action_id == 0 || state.actions.count(static_cast<uint32>(config.action_id)) != 0
               ? BCM_E_NONE
               : BCM_E_NOT_FOUND;
}

int choose_id(const Policers &state, uint32 flags, bcm_policer_t *id)
{
    if (flags & (BCM_POLICER_WITH_ID | BCM_POLICER_REPLACE)) {
        if (*id < 1) {
            return BCM_E_PARAM;
        }
        const bool replaces = flags & BCM_POLICER_REPLACE;
        const bool exists = state.policers.count(*id) != 0;
        if (exists != replaces) {
            return exists ? BCM_E_EXISTS : BCM_E_NOT_FOUND;
        }
        return exists || state.policers.size() < policers_max ? BCM_E_NONE : BCM_E_FULL;
    }
    if (state.policers.size() >= policers_max) {
        return BCM_E_FULL;
    }
    int free = 1;
    for (const auto &each : state.policers) {
        if (each.first != free) {
            break;
        }
        ++free;
    }
    *id = free;
    return BCM_E_NONE;
}

bool is_color(bcm_color_t color)
{
    return color == bcmColorGreen || color == bcmColorYellow || color == bcmColorRed;
}

/// Whether packets can be given what the action says. BCM_E_PARAM, BCM_E_UNAVAIL.
int check_action(bcm_policer_action_t action, uint32 parameter)
{
    constexpr uint32 highest_priority = 7, highest_queue = 7;
    switch (action) {
    case bcmPolicerActionNone:
    case bcmPolicerActionDrop:
    case bcmPolicerActionCopyToCpu:
    case bcmPolicerActionTrapToCpu:
        return BCM_E_NONE;
    case bcmPolicerActionDropPrecedence:
        return is_color(static_cast<bcm_color_t>(parameter)) ? BCM_E_NONE : BCM_E_PARAM;
    case bcmPolicerActionIntPrioNew:
        return parameter <= highest_priority ? BCM_E_NONE : BCM_E_PARAM;
    case bcmPolicerActionCosqNew:
        return parameter <= highest_queue ? BCM_E_NONE : BCM_E_PARAM;
    default:
        return static_cast<uint32>(action) < bcmPolicerActionCount ? BCM_E_UNAVAIL : BCM_E_PARAM;
    }
}

auto stat_of(bcm_policer_stat_t stat)
{
    return [stat](Switch &, auto next) -> int {
        return static_cast<uint32>(stat) < bcmPolicerStatCount ? next() : static_cast<int>(BCM_E_PARAM);
    };
}

}  // namespace

extern "C" {

int sim_bcm_policer_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        policers_of(sw).reset();
        update_policing(sw);
        rule_store_of(sw).initialise("policer");
    });
}

int sim_bcm_policer_create(int unit, bcm_policer_config_t *config, bcm_policer_t *policer_id)
{
    return begin(unit, ready<PolicerState>, given(config, policer_id)).then([&](PolicerState &state) -> int {
        int rc = check(state, *config);
        if (rc == BCM_E_NONE) {
            rc = choose_id(state, config->flags, policer_id);
        }
        if (rc != BCM_E_NONE) {
            return rc;
        }
        Policer &policer = state.policers[*policer_id];
        policer.config = *config;
        policer.meter = Meter(*config);
        return BCM_E_NONE;
    });
}

int sim_bcm_policer_destroy(int unit, bcm_policer_t policer_id)
{
    return begin(unit, ready<PolicerState>, policer_of(policer_id))
        .then([&](PolicerState &state, Policer &policer) -> int {
            if (policer.uses != 0) {
                return BCM_E_BUSY;
            }
            state.policers.erase(policer_id);
            return BCM_E_NONE;
        });
}

int sim_bcm_policer_destroy_all(int unit)
{
    return begin(unit, ready<PolicerState>).then([](Switch &sw, PolicerState &state) {
        state.places = {};
        state.policers.clear();
        update_policing(sw);
    });
}

int sim_bcm_policer_get(int unit, bcm_policer_t policer_id, bcm_policer_config_t *config)
{
    return begin(unit, ready<PolicerState>, given(config), policer_of(policer_id))
        .then([&](PolicerState &, Policer &policer) { *config = policer.config; });
}

int sim_bcm_policer_set(int unit, bcm_policer_t policer_id, bcm_policer_config_t *config)
{
    return begin(unit, ready<PolicerState>, given(config), policer_of(policer_id))
        .then([&](PolicerState &state, Policer &policer) -> int {
            const int rc = check(state, *config);
            if (rc == BCM_E_NONE) {
                policer.config = *config;
                policer.meter = Meter(*config);
            }
            return rc;
        });
}

int sim_bcm_policer_traverse(int unit, bcm_policer_traverse_cb cb, void *user_data)
{
    return begin(unit, ready<PolicerState>, given(cb)).then([&](Switch &sw, PolicerState &state) -> int {
        // Who is told may make and destroy some, and the unit.
        auto next = state.policers.begin();
        while (next != state.policers.end()) {
            const bcm_policer_t id = next->first;
            Config config = next->second.config;
            const int rc = cb(unit, id, &config, user_data);
            if (rc < 0 || attached(unit) != &sw) {
                return rc < 0 ? rc : static_cast<int>(BCM_E_NONE);
            }
            next = state.policers.upper_bound(id);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_policer_action_create(int unit, uint32 *action_id)
{
    return begin(unit, ready<PolicerState>, given(action_id)).then([&](PolicerState &state) -> int {
        for (uint32 id = 1; id <= actions_max; ++id) {
            if (state.actions.try_emplace(id).second) {
                *action_id = id;
                return BCM_E_NONE;
            }
        }
        return BCM_E_FULL;
    });
}

int sim_bcm_policer_action_destroy(int unit, uint32 action_id)
{
    return begin(unit, ready<PolicerState>, action_of(action_id))
        .then([&](PolicerState &state, PolicerActions &) -> int {
            for (const auto &each : state.policers) {
                if (static_cast<uint32>(each.second.config.action_id) == action_id) {
                    return BCM_E_BUSY;
                }
            }
            state.actions.erase(action_id);
            return BCM_E_NONE;
        });
}

int sim_bcm_policer_action_add(int unit, uint32 action_id, bcm_color_t color, bcm_policer_action_t action,
                               uint32 param0, uint32 param1)
{
    return begin(unit, ready<PolicerState>, action_of(action_id))
        .then([&](PolicerState &, PolicerActions &actions) -> int {
            const int rc = is_color(color) ? check_action(action, param0) : static_cast<int>(BCM_E_PARAM);
            if (rc != BCM_E_NONE) {
                return rc;
            }
            return actions.insert({{color, action}, {param0, param1}}).second ? BCM_E_NONE : BCM_E_EXISTS;
        });
}

int sim_bcm_policer_action_get(int unit, uint32 action_id, bcm_color_t color, bcm_policer_action_t action,
                               uint32 *param0, uint32 *param1)
{
    return begin(unit, ready<PolicerState>, given(param0, param1), action_of(action_id))
        .then([&](PolicerState &, PolicerActions &actions) -> int {
            if (!is_color(color) || static_cast<uint32>(action) >= bcmPolicerActionCount) {
                return BCM_E_PARAM;
            }
            const auto found = actions.find({color, action});
            if (found == actions.end()) {
                return BCM_E_NOT_FOUND;
            }
            *param0 = found->second.first;
            *param1 = found->second.second;
            return BCM_E_NONE;
        });
}

int sim_bcm_policer_stat_enable_set(int unit, bcm_policer_t policer_id, int enable)
{
    return begin(unit, ready<PolicerState>, policer_of(policer_id))
        .then([&](PolicerState &, Policer &policer) { policer.counts = enable != 0; });
}

int sim_bcm_policer_stat_get(int unit, bcm_policer_t policer_id, bcm_core_t core, bcm_policer_stat_t stat,
                             uint64 *value)
{
    return begin(unit, ready<PolicerState>, given(value), core_of(core), stat_of(stat),
                 policer_of(policer_id))
        .then([&](PolicerState &, Policer &policer) { *value = policer.counters[stat]; });
}

int sim_bcm_policer_stat_get32(int unit, bcm_policer_t policer_id, bcm_core_t core, bcm_policer_stat_t stat,
                               uint32 *value)
{
    return begin(unit, ready<PolicerState>, given(value), core_of(core), stat_of(stat),
                 policer_of(policer_id))
        .then(
            [&](PolicerState &, Policer &policer) { *value = static_cast<uint32>(policer.counters[stat]); });
}

int sim_bcm_policer_stat_set(int unit, bcm_policer_t policer_id, bcm_core_t core, bcm_policer_stat_t stat,
                             uint64 value)
{
    return begin(unit, ready<PolicerState>, core_of(core), stat_of(stat), policer_of(policer_id))
        .then([&](PolicerState &, Policer &policer) { policer.counters[stat] = value; });
}

int sim_bcm_policer_control_set(int unit, bcm_core_t core, bcm_policer_control_t type, int arg)
{
    return begin(unit, ready<PolicerState>, core_of(core)).then([&](PolicerState &state) -> int {
        switch (type) {
        case bcmPolicerControlEnable:
            state.is_on = arg != 0;
            return BCM_E_NONE;
        case bcmPolicerControlPacketLengthAdjust:
            state.length_adjust = arg;
            return BCM_E_NONE;
        case bcmPolicerControlPacketLength:
            if (arg < 0 || arg >= bcmPolicerPacketLengthCount) {
                return BCM_E_PARAM;
            }
            state.length_of = static_cast<bcm_policer_packet_length_t>(arg);
            return BCM_E_NONE;
        default:
            return static_cast<uint32>(type) < bcmPolicerControlCount ? BCM_E_UNAVAIL : BCM_E_PARAM;
        }
    });
}

int sim_bcm_policer_control_get(int unit, bcm_core_t core, bcm_policer_control_t type, int *arg)
{
    return begin(unit, ready<PolicerState>, given(arg), core_of(core)).then([&](PolicerState &state) -> int {
        switch (type) {
        case bcmPolicerControlEnable:
            *arg = state.is_on;
            return BCM_E_NONE;
        case bcmPolicerControlPacketLengthAdjust:
            *arg = state.length_adjust;
            return BCM_E_NONE;
        case bcmPolicerControlPacketLength:
            *arg = state.length_of;
            return BCM_E_NONE;
        default:
            return static_cast<uint32>(type) < bcmPolicerControlCount ? BCM_E_UNAVAIL : BCM_E_PARAM;
        }
    });
}

}  // extern "C"
