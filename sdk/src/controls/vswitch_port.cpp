/// The switching instance of a port, which rules keep by instance and port.
#include "begin.h"
#include "rule_store.h"
#include "sim_vswitch.h"

#include <cstring>

using namespace sim;

namespace {

constexpr rules::Table table = {"bcm_vswitch_port", "vswitch"};

struct Member {
    bcm_vlan_t instance;
    bcm_gport_t port;
};

Member member_of(const std::string &key)
{
    Member member = {};
    std::memcpy(&member.instance, key.data(), sizeof member.instance);
    std::memcpy(&member.port, key.data() + sizeof member.instance, sizeof member.port);
    return member;
}

}  // namespace

extern "C" int sim_bcm_vswitch_port_get(int unit, bcm_gport_t port, bcm_vlan_t *vsi)
{
    return begin(unit).then([&](Switch &sw) -> int {
        const RuleStore &store = rule_store_of(sw);
        if (!store.is_initialised(table.module)) {
            return BCM_E_INIT;
        }
        if (vsi == nullptr) {
            return BCM_E_PARAM;
        }
        for (const auto &[key, value] : store.records(table.name)) {
            const Member member = member_of(key);
            if (member.port == port) {
                *vsi = member.instance;
                return BCM_E_NONE;
            }
        }
        return BCM_E_NOT_FOUND;
    });
}
