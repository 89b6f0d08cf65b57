/// Egress objects.
#include "begin.h"
#include "events.h"
#include "l3.h"
#include "l3_way.h"
#include "record_bytes.h"
#include "sim_l3.h"
#include "vlan.h"

using namespace sim;

namespace {

constexpr uint32 keep_flags =
    BCM_L3_KEEP_SRCMAC | BCM_L3_KEEP_DSTMAC | BCM_L3_KEEP_VLAN | BCM_L3_KEEP_TTL | BCM_L3_L2ONLY;
constexpr uint32 known_flags = keep_flags | BCM_L3_TGID | BCM_L3_DST_DISCARD | BCM_L3_COPY_TO_CPU | BCM_L3_IP6
                               | BCM_L3_WITH_ID | BCM_L3_REPLACE;

/// What nothing here can do.
bool is_unavailable(uint32 flags, const bcm_l3_egress_t &egress)
{
    return ((flags | egress.flags) & ~known_flags) != 0 || egress.flags2 != 0 || egress.mpls_flags != 0
           || egress.mpls_label != 0 || egress.mpls_action != 0 || egress.failover_id != 0
           || egress.failover_if_id != 0 || egress.failover_mc_group != 0 || egress.vntag_action != 0
           || egress.etag_action != 0 || egress.multicast_flags != 0 || egress.oam_global_context_id != 0;
}

/// What packets need of it. BCM_E_NOT_FOUND (interface), BCM_E_PARAM, BCM_E_PORT, BCM_E_BADID.
int make_hop(L3State &l3, const bcm_l3_egress_t &egress, NextHop *hop)
{
    const bool is_bridged = egress.flags & BCM_L3_L2ONLY;
    if (egress.intf != 0) {
        const L3Interface *interface = l3.objects.interface(egress.intf);
        if (interface == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        const bool is_trunk = egress.flags & BCM_L3_TGID;
        const int rc = l3_next_hop(*interface, is_trunk, egress.module, is_trunk ? egress.trunk : egress.port,
                                   egress.mac_addr, hop);
        if (rc != BCM_E_NONE) {
            return rc;
        }
    }
    if (is_group(egress.mac_addr) || (is_bridged && !VlanTable::valid(egress.vlan))) {
        return BCM_E_PARAM;
    }
    hop->flags = egress.flags & keep_flags;
    hop->vlan = egress.vlan;
    hop->has_cpu_copy = egress.flags & BCM_L3_COPY_TO_CPU;
    if (egress.flags & BCM_L3_DST_DISCARD) {
        hop->kind = NextHop::Kind::discard;
    } else if (hop->kind == NextHop::Kind::unresolved && hop->interface != nullptr
               && (hop->flags & (BCM_L3_KEEP_DSTMAC | BCM_L3_L2ONLY))) {
        hop->kind = NextHop::Kind::forward;
    }
    return BCM_E_NONE;
}

int create(L3State &l3, uint32 flags, const bcm_l3_egress_t &given, bcm_if_t *id)
{
    if (is_unavailable(flags, given)) {
        return BCM_E_UNAVAIL;
    }
    NextHop hop;
    int rc = make_hop(l3, given, &hop);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    L3Egress *object;
    rc = l3.objects.place(l3.objects.egress, L3Objects::egress_max, flags & BCM_L3_WITH_ID,
                          flags & BCM_L3_REPLACE, id, &object);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    l3.objects.count_use(object->record.intf, -1);
    l3.objects.count_use(given.intf, 1);
    object->record = given;
    object->hop = hop;
    object->hop.object = *id;
    return BCM_E_NONE;
}

}  // namespace

extern "C" {

int sim_bcm_l3_egress_create(int unit, uint32 flags, bcm_l3_egress_t *egr, bcm_if_t *if_id)
{
    return begin(unit, ready<L3State>, given(egr, if_id), tells_if_full(bcmSwitchObjectL3EgressMax))
        .then([&](L3State &l3) { return create(l3, flags, *egr, if_id); });
}

int sim_bcm_l3_egress_destroy(int unit, bcm_if_t intf)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        const L3Egress *object = l3.objects.egress_object(intf);
        if (object == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        if (object->is_used()) {
            return BCM_E_BUSY;
        }
        l3.objects.count_use(object->record.intf, -1);
        l3.objects.erase(l3.objects.egress, intf);
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_egress_get(int unit, bcm_if_t intf, bcm_l3_egress_t *egr)
{
    return begin(unit, ready<L3State>, given(egr)).then([&](L3State &l3) -> int {
        const L3Egress *object = l3.objects.egress_object(intf);
        if (object == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        *egr = object->record;
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_egress_find(int unit, bcm_l3_egress_t *egr, bcm_if_t *intf)
{
    return begin(unit, ready<L3State>, given(egr, intf)).then([&](L3State &l3) -> int {
        for (const auto &[id, object] : l3.objects.egress) {
            if (alike(object.record, *egr)) {
                *intf = id;
                return BCM_E_NONE;
            }
        }
        return BCM_E_NOT_FOUND;
    });
}

int sim_bcm_l3_egress_traverse(int unit, bcm_l3_egress_traverse_cb trav_fn, void *user_data)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if (trav_fn == nullptr) {
            return BCM_E_PARAM;
        }
        auto &objects = l3.objects.egress;
        for (auto next = objects.begin(); next != objects.end();) {
            const bcm_if_t id = next->first;
            bcm_l3_egress_t copy = next->second.record;
            const int rc = trav_fn(unit, id, &copy, user_data);
            if (rc < 0) {
                return rc;
            }
            next = objects.upper_bound(id);
        }
        return BCM_E_NONE;
    });
}

}  // extern "C"
