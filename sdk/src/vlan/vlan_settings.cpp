/// Settings of a VLAN: all in one record, some of its members, or one alone.
#include "begin.h"
#include "destination.h"
#include "sim_vlan.h"
#include "vlan.h"

#include <utility>

using namespace sim;

namespace {

using Settings = bcm_vlan_control_vlan_t;

/// The members of the record in their order, by which valid_fields names them.
template <class Use>
void for_each_member(Use use)
{
    const auto all = [&](auto... members) {
        uint32 bit = 1;
        ((use(members, bit), bit <<= 1), ...);
    };
    all(&Settings::vrf, &Settings::forwarding_vlan, &Settings::ingress_if, &Settings::outer_tpid,
        &Settings::flags, &Settings::ip6_mcast_flood_mode, &Settings::ip4_mcast_flood_mode,
        &Settings::l2_mcast_flood_mode, &Settings::if_class, &Settings::forwarding_mode, &Settings::urpf_mode,
        &Settings::cosq, &Settings::qos_map_id, &Settings::distribution_class, &Settings::broadcast_group,
        &Settings::unknown_multicast_group, &Settings::unknown_unicast_group,
        &Settings::trill_nonunicast_group, &Settings::source_trill_name, &Settings::trunk_index,
        &Settings::protocol_pkt, &Settings::nat_realm_id, &Settings::l3_if_class, &Settings::vp_mc_ctrl,
        &Settings::aging_cycles, &Settings::entropy_id, &Settings::vpn, &Settings::egress_vlan);
}

uint32 all_members()
{
    uint32 all = 0;
    for_each_member([&](auto, uint32 bit) { all |= bit; });
    return all;
}

constexpr uint32 known_flags = 2 * BCM_VLAN_SERVICE_TAG_NONE - 1;

/// Enumerations are compared as numbers, since a caller can pass any.
template <class Enumeration>
bool up_to(Enumeration value, Enumeration last)
{
    return static_cast<unsigned>(value) <= static_cast<unsigned>(last);
}

bool valid(const Settings &settings)
{
    return !(settings.flags & ~known_flags) && up_to(settings.ip6_mcast_flood_mode, bcmVlanMcastFloodNone)
           && up_to(settings.ip4_mcast_flood_mode, bcmVlanMcastFloodNone)
           && up_to(settings.l2_mcast_flood_mode, bcmVlanMcastFloodNone)
           && up_to(settings.forwarding_mode, bcmVlanForwardFabric)
           && up_to(settings.urpf_mode, bcmVlanUrpfStrict)
           && up_to(settings.vp_mc_ctrl, bcmVlanVpMcastReplicateNever);
}

Settings settings_of(const Vlan &vlan)
{
    return vlan.settings != nullptr ? *vlan.settings : Settings{};
}

void keep(Vlan &vlan, const Settings &settings)
{
    if (vlan.settings != nullptr) {
        *vlan.settings = settings;
    } else {
        vlan.settings = std::make_unique<Settings>(settings);
    }
}

int change(Vlan &vlan, const Settings &settings)
{
    if (!valid(settings)) {
        return BCM_E_PARAM;
    }
    keep(vlan, settings);
    return BCM_E_NONE;
}

}  // namespace

extern "C" {

int sim_bcm_vlan_control_vlan_get(int unit, bcm_vlan_t vlan, bcm_vlan_control_vlan_t *control)
{
    return begin(unit, given(control), existing_vlan(vlan)).then([&](Vlan &found) {
        *control = settings_of(found);
    });
}

int sim_bcm_vlan_control_vlan_set(int unit, bcm_vlan_t vlan, bcm_vlan_control_vlan_t control)
{
    return begin(unit, existing_vlan(vlan)).then([&](Vlan &found) { return change(found, control); });
}

int sim_bcm_vlan_control_vlan_selective_get(int unit, bcm_vlan_t vlan, uint32 valid_fields,
                                            bcm_vlan_control_vlan_t *control)
{
    return begin(unit, given(control), existing_vlan(vlan)).then([&](Vlan &found) -> int {
        if (valid_fields & ~all_members()) {
            return BCM_E_PARAM;
        }
        const Settings settings = settings_of(found);
        for_each_member([&](auto member, uint32 bit) {
            if (valid_fields & bit) {
                control->*member = settings.*member;
            }
        });
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_control_vlan_selective_set(int unit, bcm_vlan_t vlan, uint32 valid_fields,
                                            bcm_vlan_control_vlan_t *control)
{
    return begin(unit, given(control), existing_vlan(vlan)).then([&](Vlan &found) -> int {
        if (valid_fields & ~all_members()) {
            return BCM_E_PARAM;
        }
        Settings settings = settings_of(found);
        for_each_member([&](auto member, uint32 bit) {
            if (valid_fields & bit) {
                settings.*member = control->*member;
            }
        });
        return change(found, settings);
    });
}

int sim_bcm_vlan_block_get(int unit, bcm_vlan_t vlan, bcm_vlan_block_t *block)
{
    return begin(unit, given(block), existing_vlan(vlan)).then([&](Vlan &found) {
        *block = found.blocked != nullptr ? *found.blocked : bcm_vlan_block_t{};
    });
}

int sim_bcm_vlan_block_set(int unit, bcm_vlan_t vlan, bcm_vlan_block_t *block)
{
    return begin(unit, given(block), existing_vlan(vlan)).then([&](Vlan &found) -> int {
        for (const bcm_pbmp_t *ports : {&block->known_multicast, &block->unknown_multicast,
                                        &block->unknown_unicast, &block->broadcast}) {
            for (int beyond = port_max + 1; beyond < BCM_PBMP_PORT_MAX; ++beyond) {
                if (BCM_PBMP_MEMBER(*ports, beyond)) {
                    return BCM_E_PORT;
                }
            }
        }
        found.blocked = std::make_unique<bcm_vlan_block_t>(*block);
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_mcast_flood_get(int unit, bcm_vlan_t vlan, bcm_vlan_mcast_flood_t *mode)
{
    return begin(unit, given(mode), existing_vlan(vlan)).then([&](Vlan &found) {
        *mode = settings_of(found).l2_mcast_flood_mode;
    });
}

int sim_bcm_vlan_mcast_flood_set(int unit, bcm_vlan_t vlan, bcm_vlan_mcast_flood_t mode)
{
    return begin(unit, existing_vlan(vlan)).then([&](Vlan &found) {
        Settings settings = settings_of(found);
        settings.l2_mcast_flood_mode = mode;
        return change(found, settings);
    });
}

int sim_bcm_vlan_vector_flags_set(int unit, bcm_vlan_vector_t vlan_vector, uint32 flags_mask,
                                  uint32 flags_value)
{
    return begin(unit, given(vlan_vector)).then([&](Switch &sw) -> int {
        std::vector<Vlan *> vlans;
        const int rc = vlans_in(sw, vlan_vector, vlans);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if ((flags_mask | flags_value) & ~known_flags) {
            return BCM_E_PARAM;
        }
        for (Vlan *vlan : vlans) {
            Settings settings = settings_of(*vlan);
            settings.flags = (settings.flags & ~flags_mask) | (flags_value & flags_mask);
            keep(*vlan, settings);
        }
        return BCM_E_NONE;
    });
}

}  // extern "C"
