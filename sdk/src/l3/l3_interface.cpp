/// Router interfaces.
#include "begin.h"
#include "events.h"
#include "l3.h"
#include "l3_way.h"
#include "sim_l3.h"
#include "vlan.h"

using namespace sim;

namespace {

/// What nothing here can do.
bool is_unavailable(const bcm_l3_intf_t &intf)
{
    return (intf.l3a_flags & ~(BCM_L3_WITH_ID | BCM_L3_REPLACE)) != 0 || intf.l3a_inner_vlan != 0
           || intf.l3a_tunnel_idx != 0 || intf.vlan_qos.flags != 0 || intf.inner_vlan_qos.flags != 0
           || intf.dscp_qos.flags != 0 || intf.l3a_ip4_options_profile_id != 0 || intf.l3a_nat_realm_id != 0
           || intf.native_routing_vlan_tags != 0;
}

/// Another interface of the same address in the VLAN.
bool has_twin(const L3State &l3, const bcm_l3_intf_t &intf, bcm_if_t own)
{
    if (is_zero(intf.l3a_mac_addr)) {
        return false;
    }
    for (const auto &[id, other] : l3.objects.interfaces) {
        if (id != own && other.record.l3a_vid == intf.l3a_vid
            && std::equal(intf.l3a_mac_addr, intf.l3a_mac_addr + address_bytes, other.record.l3a_mac_addr)) {
            return true;
        }
    }
    return false;
}

int create(const Switch &sw, L3State &l3, bcm_l3_intf_t *intf)
{
    if (!VlanTable::valid(intf->l3a_vid) || !is_vrf(intf->l3a_vrf) || is_group(intf->l3a_mac_addr)
        || intf->l3a_ttl < 0 || intf->l3a_ttl > 255 || intf->l3a_mtu < 0) {
        return BCM_E_PARAM;
    }
    if (is_unavailable(*intf)) {
        return BCM_E_UNAVAIL;
    }
    if (!vlans_of(sw).has(intf->l3a_vid)) {
        return BCM_E_NOT_FOUND;
    }
    const bool replaces = intf->l3a_flags & BCM_L3_REPLACE;
    if (has_twin(l3, *intf, replaces ? intf->l3a_intf_id : 0)) {
        return BCM_E_EXISTS;
    }
    L3Interface *interface;
    const int rc =
        l3.objects.place(l3.objects.interfaces, L3Objects::interface_max, intf->l3a_flags & BCM_L3_WITH_ID,
                         replaces, &intf->l3a_intf_id, &interface);
    if (rc == BCM_E_NONE) {
        interface->record = *intf;
        interface->record.l3a_flags = 0;
        l3.change_addresses();
    }
    return rc;
}

template <class Test>
int find(L3State &l3, bcm_l3_intf_t *intf, Test test)
{
    for (const auto &[id, interface] : l3.objects.interfaces) {
        if (test(interface.record)) {
            *intf = interface.record;
            return BCM_E_NONE;
        }
    }
    return BCM_E_NOT_FOUND;
}

}  // namespace

extern "C" {

int sim_bcm_l3_intf_create(int unit, bcm_l3_intf_t *intf)
{
    return begin(unit, ready<L3State>, given(intf), tells_if_full(bcmSwitchObjectL3InterfaceMax))
        .then([&](Switch &sw, L3State &l3) { return create(sw, l3, intf); });
}

int sim_bcm_l3_intf_delete(int unit, bcm_l3_intf_t *intf)
{
    return begin(unit, ready<L3State>, given(intf)).then([&](L3State &l3) -> int {
        const L3Interface *interface = l3.objects.interface(intf->l3a_intf_id);
        if (interface == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        if (interface->uses != 0) {
            return BCM_E_BUSY;
        }
        l3.objects.erase(l3.objects.interfaces, intf->l3a_intf_id);
        l3.change_addresses();
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_intf_delete_all(int unit)
{
    return begin(unit, ready<L3State>).then([](L3State &l3) -> int {
        auto &interfaces = l3.objects.interfaces;
        if (std::any_of(interfaces.begin(), interfaces.end(),
                        [](const auto &one) { return one.second.uses != 0; })) {
            return BCM_E_BUSY;
        }
        while (!interfaces.empty()) {
            l3.objects.erase(interfaces, interfaces.begin()->first);
        }
        l3.change_addresses();
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_intf_get(int unit, bcm_l3_intf_t *intf)
{
    return begin(unit, ready<L3State>, given(intf)).then([&](L3State &l3) -> int {
        const L3Interface *interface = l3.objects.interface(intf->l3a_intf_id);
        if (interface == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        *intf = interface->record;
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_intf_find(int unit, bcm_l3_intf_t *intf)
{
    return begin(unit, ready<L3State>, given(intf)).then([&](L3State &l3) {
        return find(l3, intf, [&](const bcm_l3_intf_t &record) {
            return record.l3a_vid == intf->l3a_vid
                   && std::equal(record.l3a_mac_addr, record.l3a_mac_addr + address_bytes,
                                 intf->l3a_mac_addr);
        });
    });
}

int sim_bcm_l3_intf_find_vlan(int unit, bcm_l3_intf_t *intf)
{
    return begin(unit, ready<L3State>, given(intf)).then([&](L3State &l3) {
        return find(l3, intf, [&](const bcm_l3_intf_t &record) { return record.l3a_vid == intf->l3a_vid; });
    });
}

}  // extern "C"
