/// Where policers stand: at ports, VLANs, and ports in VLANs.
#include "begin.h"
#include "policer.h"
#include "sim_port.h"
#include "sim_vlan.h"

using namespace sim;

namespace {

/// A VLAN that is there: BCM_E_PARAM, BCM_E_NOT_FOUND.
auto own_vlan(bcm_vlan_t vid)
{
    return [vid](Switch &sw, auto next) -> int {
        if (!VlanTable::valid(vid)) {
            return BCM_E_PARAM;
        }
        return vlans_of(sw).has(vid) ? next() : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

int put(Switch &sw, Policers &state, PolicerSide side, const PolicerPlace &place, bcm_policer_t id)
{
    Policer *policer = state.find(id);
    if (id != 0 && policer == nullptr) {
        return BCM_E_NOT_FOUND;
    }
    state.take_away(side, place);
    if (id != 0) {
        state.places[static_cast<std::size_t>(side)][place] = id;
        ++policer->uses;
    }
    update_policing(sw);
    return BCM_E_NONE;
}

void look(const Policers &state, PolicerSide side, const PolicerPlace &place, bcm_policer_t *id)
{
    const auto &places = state.places[static_cast<std::size_t>(side)];
    const auto found = places.find(place);
    *id = found != places.end() ? found->second : 0;
}

int put_at_port(int unit, PolicerSide side, bcm_port_t port, bcm_policer_t id)
{
    return begin(unit, ready<PolicerState>, own_port(port))
        .then([&](Switch &sw, PolicerState &state, int own) {
            return put(sw, state, side, {own, 0}, id);
        });
}

int put_at_vlan(int unit, PolicerSide side, bcm_vlan_t vid, bcm_policer_t id)
{
    return begin(unit, ready<PolicerState>, own_vlan(vid)).then([&](Switch &sw, PolicerState &state) {
        return put(sw, state, side, {-1, vid}, id);
    });
}

int look_at_vlan(int unit, PolicerSide side, bcm_vlan_t vid, bcm_policer_t *id)
{
    return begin(unit, ready<PolicerState>, given(id), own_vlan(vid)).then([&](PolicerState &state) {
        look(state, side, {-1, vid}, id);
    });
}

int put_at_vlan_port(int unit, PolicerSide side, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t id)
{
    return begin(unit, ready<PolicerState>, own_vlan(vid), own_port(port))
        .then([&](Switch &sw, PolicerState &state, int own) {
            return put(sw, state, side, {own, vid}, id);
        });
}

int look_at_vlan_port(int unit, PolicerSide side, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t *id)
{
    return begin(unit, ready<PolicerState>, given(id), own_vlan(vid), own_port(port))
        .then([&](PolicerState &state, int own) {
            look(state, side, {own, vid}, id);
        });
}

}  // namespace

extern "C" {

int sim_bcm_port_policer_set(int unit, bcm_port_t port, bcm_policer_t policer_id)
{
    return put_at_port(unit, PolicerSide::in, port, policer_id);
}

int sim_bcm_port_policer_get(int unit, bcm_port_t port, bcm_policer_t *policer_id)
{
    return begin(unit, ready<PolicerState>, given(policer_id), own_port(port))
        .then([&](PolicerState &state, int own) {
            look(state, PolicerSide::in, {own, 0}, policer_id);
        });
}

int sim_bcm_port_egress_policer_set(int unit, bcm_port_t port, bcm_policer_t policer_id)
{
    return put_at_port(unit, PolicerSide::out, port, policer_id);
}

int sim_bcm_vlan_policer_set(int unit, bcm_vlan_t vid, bcm_policer_t policer_id)
{
    return put_at_vlan(unit, PolicerSide::in, vid, policer_id);
}

int sim_bcm_vlan_policer_get(int unit, bcm_vlan_t vid, bcm_policer_t *policer_id)
{
    return look_at_vlan(unit, PolicerSide::in, vid, policer_id);
}

int sim_bcm_vlan_egress_policer_set(int unit, bcm_vlan_t vid, bcm_policer_t policer_id)
{
    return put_at_vlan(unit, PolicerSide::out, vid, policer_id);
}

int sim_bcm_vlan_egress_policer_get(int unit, bcm_vlan_t vid, bcm_policer_t *policer_id)
{
    return look_at_vlan(unit, PolicerSide::out, vid, policer_id);
}

int sim_bcm_vlan_port_policer_set(int unit, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t policer_id)
{
    return put_at_vlan_port(unit, PolicerSide::in, vid, port, policer_id);
}

int sim_bcm_vlan_port_policer_get(int unit, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t *policer_id)
{
    return look_at_vlan_port(unit, PolicerSide::in, vid, port, policer_id);
}

int sim_bcm_vlan_port_egress_policer_set(int unit, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t policer_id)
{
    return put_at_vlan_port(unit, PolicerSide::out, vid, port, policer_id);
}

int sim_bcm_vlan_port_egress_policer_get(int unit, bcm_vlan_t vid, bcm_port_t port, bcm_policer_t *policer_id)
{
    return look_at_vlan_port(unit, PolicerSide::out, vid, port, policer_id);
}

}  // extern "C"
