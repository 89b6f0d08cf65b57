/// Virtual routers: addresses that several routers share, by VLAN.
#include "begin.h"
#include "l3.h"
#include "sim_l3.h"
#include "vlan.h"

using namespace sim;

namespace {

/// BCM_E_PARAM: flags other than BCM_L3_IP6, or a number out of range.
int add(int unit, uint32 flags, bcm_vlan_t vlan, uint32 vrid)
{
    return begin(unit, ready<L3State>, existing_vlan(vlan)).then([&](L3State &l3, Vlan &) -> int {
        if ((flags & ~uint32{BCM_L3_IP6}) != 0 || vrid < 1 || vrid > 255) {
            return BCM_E_PARAM;
        }
        auto &[ip4, ip6] = l3.virtual_routers.of_version;
        if (ip4.size() + ip6.size() >= VirtualRouters::capacity) {
            return BCM_E_FULL;
        }
        if (!(flags & BCM_L3_IP6 ? ip6 : ip4).insert({vlan, vrid}).second) {
            return BCM_E_EXISTS;
        }
        l3.change_addresses();
        return BCM_E_NONE;
    });
}

int remove(int unit, uint32 flags, bcm_vlan_t vlan, uint32 vrid)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if ((flags & ~uint32{BCM_L3_IP6}) != 0 || vrid < 1 || vrid > 255) {
            return BCM_E_PARAM;
        }
        if (l3.virtual_routers.of_version[(flags & BCM_L3_IP6) != 0].erase({vlan, vrid}) == 0) {
            return BCM_E_NOT_FOUND;
        }
        l3.change_addresses();
        return BCM_E_NONE;
    });
}

int remove_all(int unit, uint32 flags, bcm_vlan_t vlan)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if ((flags & ~uint32{BCM_L3_IP6}) != 0) {
            return BCM_E_PARAM;
        }
        auto &routers = l3.virtual_routers.of_version[(flags & BCM_L3_IP6) != 0];
        routers.erase(routers.lower_bound({vlan, 0}), routers.upper_bound({vlan, UINT32_MAX}));
        l3.change_addresses();
        return BCM_E_NONE;
    });
}

int list(int unit, uint32 flags, bcm_vlan_t vlan, int alloc_size, int *vrid_array, int *count)
{
    return begin(unit, ready<L3State>, given(count)).then([&](L3State &l3) -> int {
        if ((flags & ~uint32{BCM_L3_IP6}) != 0 || alloc_size < 0
            || (alloc_size > 0 && vrid_array == nullptr)) {
            return BCM_E_PARAM;
        }
        const auto &routers = l3.virtual_routers.of_version[(flags & BCM_L3_IP6) != 0];
        int found = 0;
        for (auto router = routers.lower_bound({vlan, 0}); router != routers.end() && router->first == vlan;
             ++router) {
            if (found < alloc_size) {
                vrid_array[found] = static_cast<int>(router->second);
            }
            ++found;
        }
        *count = found;
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_l3_vrrp_add(int unit, bcm_vlan_t vlan, uint32 vrid)
{
    return add(unit, 0, vlan, vrid);
}

int sim_bcm_l3_vrrp_delete(int unit, bcm_vlan_t vlan, uint32 vrid)
{
    return remove(unit, 0, vlan, vrid);
}

int sim_bcm_l3_vrrp_delete_all(int unit, bcm_vlan_t vlan)
{
    return remove_all(unit, 0, vlan);
}

int sim_bcm_l3_vrrp_get(int unit, bcm_vlan_t vlan, int alloc_size, int *vrid_array, int *count)
{
    return list(unit, 0, vlan, alloc_size, vrid_array, count);
}

int sim_bcm_l3_vrrp_config_add(int unit, uint32 flags, bcm_vlan_t vlan, uint32 vrid)
{
    return add(unit, flags, vlan, vrid);
}

int sim_bcm_l3_vrrp_config_delete(int unit, uint32 flags, bcm_vlan_t vlan, uint32 vrid)
{
    return remove(unit, flags, vlan, vrid);
}

int sim_bcm_l3_vrrp_config_delete_all(int unit, uint32 flags, bcm_vlan_t vlan)
{
    return remove_all(unit, flags, vlan);
}

int sim_bcm_l3_vrrp_config_get(int unit, uint32 flags, bcm_vlan_t vlan, int alloc_size, int *vrid_array,
                               int *count)
{
    return list(unit, flags, vlan, alloc_size, vrid_array, count);
}

}  // extern "C"
