/// Deleting the addresses that have something in common.
#include "begin.h"
#include "l2.h"
#include "l2_match.h"
#include "sim_l2.h"
#include "vlan.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

using namespace sim;

namespace {

/// What the entries to delete have in common: each part counts if it is given.
struct Common {
    const unsigned char *mac = nullptr;
    const bcm_vlan_t *vid = nullptr;
    const Destination *to = nullptr;
};

int remove_common(Switch &sw, const Common &common, uint32 flags)
{
    if (common.vid != nullptr && !VlanTable::valid(*common.vid)) {
        return BCM_E_PARAM;
    }
    return l2_remove_if(sw, flags, [&](const bcm_l2_addr_t &address) {
        return (common.mac == nullptr || std::memcmp(address.mac, common.mac, sizeof address.mac) == 0)
               && (common.vid == nullptr || address.vid == *common.vid)
               && (common.to == nullptr || goes_to(address, *common.to));
    });
}

int remove_by_port(int unit, Common common, bcm_module_t mod, bcm_port_t port, uint32 flags)
{
    return begin(unit, ready<L2State>).then([&](Switch &sw, L2State &) -> int {
        Destination to;
        const int rc = resolve(mod, port, &to);
        common.to = &to;
        return rc == BCM_E_NONE ? remove_common(sw, common, flags) : rc;
    });
}

int remove_by_trunk(int unit, Common common, bcm_trunk_t tid, uint32 flags)
{
    return begin(unit, ready<L2State>).then([&](Switch &sw, L2State &) -> int {
        Destination to;
        const int rc = resolve_trunk(tid, &to);
        common.to = &to;
        return rc == BCM_E_NONE ? remove_common(sw, common, flags) : rc;
    });
}

}  // namespace

extern "C" {

int sim_bcm_l2_addr_delete_by_port(int unit, bcm_module_t mod, bcm_port_t port, uint32 flags)
{
    return remove_by_port(unit, {}, mod, port, flags);
}

int sim_bcm_l2_addr_delete_by_mac(int unit, bcm_mac_t mac, uint32 flags)
{
    return begin(unit, ready<L2State>, given(mac)).then([&](Switch &sw, L2State &) {
        return remove_common(sw, {mac, nullptr, nullptr}, flags);
    });
}

int sim_bcm_l2_addr_delete_by_vlan(int unit, bcm_vlan_t vid, uint32 flags)
{
    return begin(unit, ready<L2State>).then([&](Switch &sw, L2State &) {
        return remove_common(sw, {nullptr, &vid, nullptr}, flags);
    });
}

int sim_bcm_l2_addr_delete_by_trunk(int unit, bcm_trunk_t tid, uint32 flags)
{
    return remove_by_trunk(unit, {}, tid, flags);
}

int sim_bcm_l2_addr_delete_by_mac_port(int unit, bcm_mac_t mac, bcm_module_t mod, bcm_port_t port,
                                       uint32 flags)
{
    return begin(unit, ready<L2State>, given(mac)).then([&](L2State &) {
        return remove_by_port(unit, {mac, nullptr, nullptr}, mod, port, flags);
    });
}

int sim_bcm_l2_addr_delete_by_vlan_port(int unit, bcm_vlan_t vid, bcm_module_t mod, bcm_port_t port,
                                        uint32 flags)
{
    return remove_by_port(unit, {nullptr, &vid, nullptr}, mod, port, flags);
}

int sim_bcm_l2_addr_delete_by_vlan_trunk(int unit, bcm_vlan_t vid, bcm_trunk_t tid, uint32 flags)
{
    return remove_by_trunk(unit, {nullptr, &vid, nullptr}, tid, flags);
}

int sim_bcm_l2_addr_delete_by_vlan_gport_multi(int unit, int count, bcm_vlan_t *vid_arr,
                                               bcm_gport_t *gport_arr, uint32 flags)
{
    return begin(unit, ready<L2State>, given(vid_arr, gport_arr)).then([&](Switch &sw, L2State &) -> int {
        if (count < 0) {
            return BCM_E_PARAM;
        }
        std::vector<std::pair<bcm_vlan_t, Destination>> pairs;
        for (int i = 0; i < count; ++i) {
            Destination to;
            const int rc = resolve(own_module, gport_arr[i], &to);
            if (rc != BCM_E_NONE) {
                return rc;
            }
            if (!VlanTable::valid(vid_arr[i])) {
                return BCM_E_PARAM;
            }
            pairs.emplace_back(vid_arr[i], to);
        }
        return l2_remove_if(sw, flags, [&](const bcm_l2_addr_t &address) {
            return std::any_of(pairs.begin(), pairs.end(), [&](const auto &pair) {
                return address.vid == pair.first && goes_to(address, pair.second);
            });
        });
    });
}

}  // extern "C"
