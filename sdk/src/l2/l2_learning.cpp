/// What learning is held to: limits, classes, and who is told.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"
#include "vlan.h"

using namespace sim;

namespace {

/// What a limit record limits: its selector flag and the id of the VLAN, port or trunk.
int limited(const bcm_l2_learn_limit_t &limit, std::pair<uint32, int> *key)
{
    constexpr uint32 selectors = BCM_L2_LEARN_LIMIT_SYSTEM | BCM_L2_LEARN_LIMIT_VLAN | BCM_L2_LEARN_LIMIT_PORT
                                 | BCM_L2_LEARN_LIMIT_TRUNK | BCM_L2_LEARN_LIMIT_TUNNEL;
    constexpr uint32 known = selectors | BCM_L2_LEARN_LIMIT_ACTION_DROP | BCM_L2_LEARN_LIMIT_ACTION_CPU;
    if (limit.flags & ~known) {
        return BCM_E_PARAM;
    }
    const uint32 selector = limit.flags & selectors;
    int id = 0;
    int rc = BCM_E_NONE;
    Destination trunk;
    switch (selector) {
    case BCM_L2_LEARN_LIMIT_SYSTEM:
        break;
    case BCM_L2_LEARN_LIMIT_VLAN:
        id = limit.vlan;
        rc = VlanTable::valid(id) ? BCM_E_NONE : BCM_E_PARAM;
        break;
    case BCM_L2_LEARN_LIMIT_PORT:
        rc = resolve_own_port(limit.port, &id);
        break;
    case BCM_L2_LEARN_LIMIT_TRUNK:
        id = limit.trunk;
        rc = resolve_trunk(limit.trunk, &trunk);
        break;
    case BCM_L2_LEARN_LIMIT_TUNNEL:
        return BCM_E_UNAVAIL;
    default:
        return BCM_E_PARAM;
    }
    *key = {selector, id};
    return rc;
}

bool valid_class(int lclass)
{
    return lclass >= 0 && lclass < learn_classes;
}

}  // namespace

extern "C" {

int sim_bcm_l2_learn_limit_set(int unit, bcm_l2_learn_limit_t *limit)
{
    return begin(unit, ready<L2State>, given(limit)).then([&](L2State &l2) -> int {
        std::pair<uint32, int> key;
        const int rc = limited(*limit, &key);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (limit->limit < -1) {
            return BCM_E_PARAM;
        }
        if (limit->limit == -1) {
            l2.settings.learn_limits.erase(key);
        } else {
            l2.settings.learn_limits[key] = limit->limit;
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_learn_limit_get(int unit, bcm_l2_learn_limit_t *limit)
{
    return begin(unit, ready<L2State>, given(limit)).then([&](L2State &l2) -> int {
        std::pair<uint32, int> key;
        const int rc = limited(*limit, &key);
        if (rc == BCM_E_NONE) {
            const auto found = l2.settings.learn_limits.find(key);
            limit->limit = found != l2.settings.learn_limits.end() ? found->second : -1;
        }
        return rc;
    });
}

int sim_bcm_l2_learn_class_set(int unit, int lclass, int lclass_prio, uint32 flags)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        if (!valid_class(lclass) || lclass_prio < 0 || (flags & ~uint32{BCM_L2_LEARN_CLASS_MOVE})) {
            return BCM_E_PARAM;
        }
        l2.settings.classes[static_cast<std::size_t>(lclass)] = {lclass_prio, flags};
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_learn_class_get(int unit, int lclass, int *lclass_prio, uint32 *flags)
{
    return begin(unit, ready<L2State>, given(lclass_prio, flags)).then([&](L2State &l2) -> int {
        if (!valid_class(lclass)) {
            return BCM_E_PARAM;
        }
        const L2LearnClass &found = l2.settings.classes[static_cast<std::size_t>(lclass)];
        *lclass_prio = found.priority;
        *flags = found.flags;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_learn_port_class_set(int unit, bcm_gport_t port, int lclass)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (!valid_class(lclass)) {
            return BCM_E_PARAM;
        }
        l2.settings.port_classes[static_cast<std::size_t>(own_port)] = lclass;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_learn_port_class_get(int unit, bcm_gport_t port, int *lclass)
{
    return begin(unit, ready<L2State>, given(lclass)).then([&](L2State &l2) -> int {
        int own_port;
        const int rc = resolve_own_port(port, &own_port);
        if (rc == BCM_E_NONE) {
            *lclass = l2.settings.port_classes[static_cast<std::size_t>(own_port)];
        }
        return rc;
    });
}

// There is no other chip to which learning messages and events could go, so that the next four only keep
// what they are given.

int sim_bcm_l2_learn_msgs_config_set(int unit, bcm_l2_learn_msgs_config_t *learn_msgs_config)
{
    return begin(unit, ready<L2State>, given(learn_msgs_config)).then([&](L2State &l2) -> int {
        Destination to;
        if (!(learn_msgs_config->flags & BCM_L2_LEARN_MSG_DEST_MULTICAST)) {
            const int rc = resolve(own_module, learn_msgs_config->dest_port, &to);
            if (rc != BCM_E_NONE) {
                return rc;
            }
        }
        l2.settings.learn_messages = *learn_msgs_config;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_learn_msgs_config_get(int unit, bcm_l2_learn_msgs_config_t *learn_msgs_config)
{
    return begin(unit, ready<L2State>, given(learn_msgs_config)).then([&](L2State &l2) -> int {
        *learn_msgs_config = l2.settings.learn_messages;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_addr_msg_distribute_set(int unit, bcm_l2_addr_distribute_t *addr_distribute)
{
    return begin(unit, ready<L2State>, given(addr_distribute)).then([&](L2State &l2) -> int {
        if (!VlanTable::valid(addr_distribute->vid)) {
            return BCM_E_PARAM;
        }
        l2.settings.distribution[addr_distribute->vid] = addr_distribute->flags;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_addr_msg_distribute_get(int unit, bcm_l2_addr_distribute_t *addr_distribute)
{
    return begin(unit, ready<L2State>, given(addr_distribute)).then([&](L2State &l2) -> int {
        if (!VlanTable::valid(addr_distribute->vid)) {
            return BCM_E_PARAM;
        }
        const auto found = l2.settings.distribution.find(addr_distribute->vid);
        addr_distribute->flags = found != l2.settings.distribution.end() ? found->second : 0;
        return BCM_E_NONE;
    });
}

}  // extern "C"
