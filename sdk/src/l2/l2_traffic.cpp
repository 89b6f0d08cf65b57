/// A packet arrives: refreshing, learning and moving its source address.
#include "begin.h"
#include "events.h"
#include "packet.h"
#include "l2.h"
#include "l2_destination.h"
#include "port.h"
#include "trunk.h"
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

bcm_l2_addr_t new_address(const unsigned char *mac, bcm_vlan_t vid)
{
    bcm_l2_addr_t address = {};
    std::copy_n(mac, sizeof address.mac, address.mac);
    address.vid = vid;
    return address;
}

/// Whether an address, entered or new, may be learnt at that port.
bool may_come_to(const L2State &l2, const bcm_l2_addr_t &address, bool entered, int port)
{
    const bcm_l2_auth_addr_t *authorised = l2.authorised.find(l2_key(address.mac, address.vid));
    if ((address.flags & BCM_L2_STATIC) || (authorised != nullptr && authorised->src_port != port)) {
        return false;
    }
    Destination from = {};
    return !entered || resolve_address(address, &from) != BCM_E_NONE || may_move(l2.settings, from, port);
}

/// Whether limits leave room at a place for an address that counts already, though elsewhere, or does not.
bool has_room(const L2State &l2, const Destination &place, bcm_vlan_t vid, bool counted)
{
    const bool on_trunk = place.kind == Destination::Kind::trunk;
    return below_limit(l2, on_trunk ? BCM_L2_LEARN_LIMIT_TRUNK : BCM_L2_LEARN_LIMIT_PORT, place.id)
           && (counted
               || (below_limit(l2, BCM_L2_LEARN_LIMIT_SYSTEM, 0)
                   && below_limit(l2, BCM_L2_LEARN_LIMIT_VLAN, vid)));
}

/// The source address of the packet has no entry for the place: learns it, or moves the entry at position.
int learn(Switch &sw, int port, const Destination &place, const unsigned char *mac, bcm_vlan_t vid,
          std::size_t position)
{
    L2State &l2 = l2_of(sw);
    const bool entered = position != L2Table::none;
    bcm_l2_addr_t address = entered ? l2.addresses.record(position) : new_address(mac, vid);
    if (!may_come_to(l2, address, entered, port)) {
        return BCM_E_EXISTS;
    }
    set_destination(&address, place);
    const uint32 mode = port_of(sw, port).learn;
    if (!(mode & BCM_PORT_LEARN_ARL)) {
        l2_notify(sw, address, mode & BCM_PORT_LEARN_CPU ? BCM_L2_CALLBACK_REPORT : l2_silent);
        return BCM_E_DISABLED;
    }
    if (l2.settings.freezes != 0 || !l2.settings.learns || !vlans_of(sw).at(vid).learns()) {
        return BCM_E_DISABLED;
    }
    if (!has_room(l2, place, vid, entered && (l2.addresses.state(position) & l2_learnt))) {
        raise(sw, {bcmSwitchEventLearnOverflow});
        return BCM_E_RESOURCE;
    }
    address.flags |= BCM_L2_SRC_HIT | (mode & BCM_PORT_LEARN_PENDING ? BCM_L2_PENDING : 0);
    return l2_enter(sw, address, l2_learnt,
                    entered ? BCM_L2_CALLBACK_MOVE_EVENT : BCM_L2_CALLBACK_LEARN_EVENT);
}

}  // namespace

namespace sim {

L2Arrival l2_arrive_elsewhere(Switch &sw, int port, const Destination &place, const unsigned char *mac,
                              bcm_vlan_t vid, std::size_t position, std::size_t length)
{
    const int status = learn(sw, port, place, mac, vid, position);
    if (status == BCM_E_NONE) {
        l2_count(l2_of(sw), l2_key(mac, vid), bcmL2StatInPackets, bcmL2StatInBytes, length);
    }
    return {status, false, 0};
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
        return sw.of<PortState>().enabled.has(arrival) ? l2_arrive(sw, arrival, mac, vlan, frame_min).status
                                                       : static_cast<int>(BCM_E_DISABLED);
    });
}
