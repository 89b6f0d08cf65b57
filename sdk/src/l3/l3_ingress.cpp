/// Ingress interfaces: how packets that arrive in the VLANs that name one are treated.
#include "begin.h"
#include "l3.h"
#include "record_bytes.h"
#include "sim_l3.h"

using namespace sim;

namespace {

constexpr uint32 how_flags = BCM_L3_INGRESS_WITH_ID | BCM_L3_INGRESS_REPLACE;
constexpr uint32 known_flags = how_flags | BCM_L3_INGRESS_URPF_DEFAULT_ROUTE_CHECK;

}  // namespace

extern "C" {

int sim_bcm_l3_ingress_create(int unit, bcm_l3_ingress_t *ing_intf, bcm_if_t *intf_id)
{
    return begin(unit, ready<L3State>, given(ing_intf, intf_id)).then([&](L3State &l3) -> int {
        if (!is_vrf(ing_intf->vrf) || ing_intf->urpf_mode < bcmL3IntfUrpfDisable
            || ing_intf->urpf_mode > bcmL3IntfUrpfStrict) {
            return BCM_E_PARAM;
        }
        if ((ing_intf->flags & ~known_flags) != 0 || ing_intf->qos_map_id != 0
            || ing_intf->ip4_options_profile_id != 0 || ing_intf->nat_realm_id != 0) {
            return BCM_E_UNAVAIL;
        }
        bcm_l3_ingress_t stored = *ing_intf;
        stored.flags &= ~how_flags;
        return l3.ingress.create(stored, ing_intf->flags & BCM_L3_INGRESS_WITH_ID,
                                 ing_intf->flags & BCM_L3_INGRESS_REPLACE, intf_id);
    });
}

int sim_bcm_l3_ingress_destroy(int unit, bcm_if_t intf_id)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) { return l3.ingress.erase(intf_id); });
}

int sim_bcm_l3_ingress_get(int unit, bcm_if_t intf, bcm_l3_ingress_t *ing_intf)
{
    return begin(unit, ready<L3State>, given(ing_intf)).then([&](L3State &l3) {
        return l3.ingress.get(intf, ing_intf);
    });
}

int sim_bcm_l3_ingress_find(int unit, bcm_l3_ingress_t *ing_intf, bcm_if_t *intf_id)
{
    return begin(unit, ready<L3State>, given(ing_intf, intf_id)).then([&](L3State &l3) -> int {
        bcm_l3_ingress_t wanted = *ing_intf;
        wanted.flags &= ~how_flags;
        const int *id =
            l3.ingress.find_if([&](const bcm_l3_ingress_t &record) { return alike(record, wanted); });
        if (id == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        *intf_id = *id;
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_ingress_traverse(int unit, bcm_l3_ingress_traverse_cb trav_fn, void *user_data)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if (trav_fn == nullptr) {
            return BCM_E_PARAM;
        }
        return l3.ingress.traverse(
            [&](int id, bcm_l3_ingress_t &record) { return trav_fn(unit, id, &record, user_data); });
    });
}

}  // extern "C"
