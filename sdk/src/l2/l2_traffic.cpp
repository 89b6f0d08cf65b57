/// A packet arrives: refreshing, learning and moving its source address.
#include "begin.h"
#include "packet.h"
#include "l2.h"
#include "l2_destination.h"
#include "port.h"
#include "trunk_selection.h"
#include "vlan.h"

#include <sim/traffic.h>

#include <algorithm>

using namespace sim;

namespace {

/// Whether a limit, if it is set, leaves room for one more address.
bool below_limit(const L2State &l2, uint32 selector, int id)
{
    const auto limit = l2.settings.learn_limits.find({selector, id});
    return limit == l2.settings.learn_limits.end() || l2.learnt.of(selector, id) < limit->second;
}

/// Whether an address may move to another port, as learn classes go.
bool may_move(const L2Settings &settings, const Destination &from, int to)
{
    if (!is_own_port(from)) {
        return true;
    }
    const auto class_of = [&](int port) -> const L2LearnClass & {
        const int number = settings.port_classes[static_cast<std::size_t>(port)];
        return settings.classes[static_cast<std::size_t>(number)];
    };
    const L2LearnClass &old_class = class_of(from.id);
    return (old_class.flags & BCM_L2_LEARN_CLASS_MOVE) || class_of(to).priority >= old_class.priority;
}

/// The source address of the packet has no entry for the place: learns it, or moves the entry at position.
int learn(Switch &sw, int port, const Destination &place, const unsigned char *mac, bcm_vlan_t vid,
          std::size_t position)
{
    L2State &l2 = l2_of(sw);
    const bool known = position != L2Table::none;
    bcm_l2_addr_t address = {};
    if (known) {
        address = l2.addresses.record(position);
    } else {
        std::copy_n(mac, sizeof address.mac, address.mac);
        address.vid = vid;
    }

    const bcm_l2_auth_addr_t *authorised = l2.authorised.find(l2_key(mac, vid));
    if ((address.flags & BCM_L2_STATIC) || (authorised != nullptr && authorised->src_port != port)) {
        return BCM_E_EXISTS;
    }
    Destination from = {};
    if (known && resolve_address(address, &from) == BCM_E_NONE && !may_move(l2.settings, from, port)) {
        return BCM_E_EXISTS;
    }

    const uint32 mode = port_of(sw, port).learn;
    set_destination(&address, place);
    if ((mode & BCM_PORT_LEARN_CPU) && !(mode & BCM_PORT_LEARN_ARL)) {
        l2_notify(sw, address, BCM_L2_CALLBACK_REPORT);
    }
    if (!(mode & BCM_PORT_LEARN_ARL) || l2.settings.freezes != 0) {
        return BCM_E_DISABLED;
    }
    // A learnt address that moves counts already, though not for the place.
    const bool counted = known && (l2.addresses.state(position) & l2_learnt);
    const bool on_trunk = place.kind == Destination::Kind::trunk;
    const bool room = below_limit(l2, on_trunk ? BCM_L2_LEARN_LIMIT_TRUNK : BCM_L2_LEARN_LIMIT_PORT, place.id)
                      && (counted || below_limit(l2, BCM_L2_LEARN_LIMIT_SYSTEM, 0))
                      && (counted || below_limit(l2, BCM_L2_LEARN_LIMIT_VLAN, vid));
    if (!room) {
        return BCM_E_RESOURCE;
    }
    if (mode & BCM_PORT_LEARN_PENDING) {
        address.flags |= BCM_L2_PENDING;
    }
    address.flags |= BCM_L2_SRC_HIT;
    return l2_enter(sw, address, l2_learnt, known ? BCM_L2_CALLBACK_MOVE_EVENT : BCM_L2_CALLBACK_LEARN_EVENT);
}

}  // namespace

namespace sim {

void l2_count(L2State &l2, L2Key key, bcm_l2_stat_t packets, bcm_l2_stat_t bytes, std::size_t length)
{
    const auto counters = l2.counters.find(key);
    if (counters != l2.counters.end()) {
        counters->second[bytes] += length;
        ++counters->second[packets];
    }
}

L2Arrival l2_arrive(Switch &sw, int port, const unsigned char *mac, bcm_vlan_t vid, std::size_t length)
{
    const Destination place = place_of_arrival(sw, port);
    L2Table &addresses = l2_of(sw).addresses;
    const L2Key key = l2_key(mac, vid);
    const std::size_t position = addresses.find(key);
    Destination at = {};
    const bool in_place = position != L2Table::none
                          && resolve_address(addresses.record(position), &at) == BCM_E_NONE && at == place;
    int status = BCM_E_NONE;
    if (in_place) {
        addresses.set_flags(position, addresses.flags(position) | BCM_L2_SRC_HIT);
    } else {
        status = learn(sw, port, place, mac, vid, position);
    }
    if (status == BCM_E_NONE) {
        l2_count(l2_of(sw), key, bcmL2StatInPackets, bcmL2StatInBytes, length);
    }
    return {status, in_place};
}

}  // namespace sim

extern "C" int sim_l2_learn(int unit, bcm_port_t port, const unsigned char *mac, bcm_vlan_t vid)
{
    return begin(unit, ready<L2State>, given(mac)).then([&](Switch &sw, L2State &) -> int {
        int arrival;
        const int rc = resolve_own_port(port, &arrival);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        const Port &own = port_of(sw, arrival);
        if (is_group(mac) || (vid != 0 && !VlanTable::valid(vid))) {
            return BCM_E_PARAM;
        }
        const bcm_vlan_t vlan = vid != 0 ? vid : own.untagged_vlan;
        if (!vlans_of(sw).has(vlan)) {
            return BCM_E_NOT_FOUND;
        }
        return own.enabled ? l2_arrive(sw, arrival, mac, vlan, frame_min).status
                           : static_cast<int>(BCM_E_DISABLED);
    });
}
