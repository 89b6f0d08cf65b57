/// Layer-2 egress objects.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"

#include <cstring>
#include <tuple>

using namespace sim;

namespace {

/// Member by member, since the record has padding.
bool same(const bcm_l2_egress_t &a, const bcm_l2_egress_t &b)
{
    const auto members = [](const bcm_l2_egress_t &e) {
        return std::make_tuple(e.flags, e.outer_vlan, e.inner_vlan, e.ethertype, e.dest_port, e.encap_id,
                               e.outer_tpid, e.outer_prio, e.inner_tpid, e.l3_intf, e.vlan_qos_map_id,
                               e.mpls_extended_label_value);
    };
    return members(a) == members(b) && std::memcmp(a.dest_mac, b.dest_mac, sizeof a.dest_mac) == 0
           && std::memcmp(a.src_mac, b.src_mac, sizeof a.src_mac) == 0;
}

}  // namespace

extern "C" {

int sim_bcm_l2_egress_create(int unit, uint32 flags, bcm_l2_egress_t *egr, bcm_if_t *intf)
{
    constexpr uint32 known = BCM_L2_EGRESS_WITH_ID | BCM_L2_EGRESS_REPLACE;
    return begin(unit, ready<L2State>, given(egr, intf)).then([&](L2State &l2) -> int {
        if (flags & ~known) {
            return BCM_E_PARAM;
        }
        Destination to;
        const int rc = resolve(own_module, egr->dest_port, &to);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        return l2.egress.create(*egr, flags & BCM_L2_EGRESS_WITH_ID, flags & BCM_L2_EGRESS_REPLACE, intf);
    });
}

int sim_bcm_l2_egress_destroy(int unit, bcm_if_t intf)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) { return l2.egress.erase(intf); });
}

int sim_bcm_l2_egress_get(int unit, bcm_if_t intf, bcm_l2_egress_t *egr)
{
    return begin(unit, ready<L2State>, given(egr)).then([&](L2State &l2) {
        return l2.egress.get(intf, egr);
    });
}

int sim_bcm_l2_egress_find(int unit, bcm_l2_egress_t *egr, bcm_if_t *intf)
{
    return begin(unit, ready<L2State>, given(egr, intf)).then([&](L2State &l2) -> int {
        const auto equals = [&](const bcm_l2_egress_t &known) { return same(known, *egr); };
        const bcm_if_t *found = l2.egress.find_if(equals);
        if (found == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        *intf = *found;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_egress_traverse(int unit, bcm_l2_egress_traverse_cb trav_fn, void *user_data)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        if (trav_fn == nullptr) {
            return BCM_E_PARAM;
        }
        return l2.egress.traverse(
            [&](bcm_if_t intf, bcm_l2_egress_t &egress) { return trav_fn(unit, intf, &egress, user_data); });
    });
}

}  // extern "C"
