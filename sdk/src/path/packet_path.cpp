/// The way of a packet through the switch, in the steps that sim/traffic.h tells.
#include "begin.h"
#include "l2.h"
#include "l2_destination.h"
#include "port.h"
#include "trunk.h"
#include "trunk_selection.h"
#include "vlan.h"

#include <sim/traffic.h>

#include <algorithm>
#include <map>
#include <vector>

using namespace sim;

namespace {

struct Watcher {
    sim_packet_watcher_t call = nullptr;
    void *datum = nullptr;
};

Watcher watcher;

struct Departure {
    int port;
    FrameBytes bytes;
};

/// One packet from the MAC of a port to those of others.
class Passage {
public:
    Passage(Switch &sw, int port, const FrameBytes &bytes)
        : sw_(sw),
          port_(port),
          arrived_(bytes),
          frame_(bytes),
          own_(port_at(port)),
          vid_(frame_.vlan() != 0 ? frame_.vlan() : own_.untagged_vlan)
    {
    }

    void run();

    /// What left, in that order.
    std::vector<Departure> departures;

private:
    Port &port_at(int port) { return port_of(sw_, port); }
    PortCounters &counters_at(int port) { return counters_of(sw_, port); }
    void drop(Discard reason) { count_discard(counters_at(port_), reason); }

    bool takes_control_frame() const { return number_at(arrived_, 2 * address_bytes) == type_mac_control; }
    bool is_admitted();
    int state_of(int port);
    bool is_source_accepted();

    void to_destination();
    void to_port(int port);
    void to_trunk(bcm_trunk_t id);
    void to_ports(const bcm_pbmp_t &ports, int bcm_trunk_info_t::*index);

    bool came_from(int port) const { return port == port_ || (trunk_ >= 0 && trunk_of(sw_, port) == trunk_); }
    bool can_send(int port) { return has_link(sw_, port) && state_of(port) == BCM_STG_STP_FORWARD; }
    void send(int port);

    Switch &sw_;
    int port_;
    const FrameBytes &arrived_;
    Frame frame_;
    Port &own_;
    bcm_vlan_t vid_;
    bcm_trunk_t trunk_ = trunk_of(sw_, port_);
};

void Passage::run()
{
    const bool has_no_error = count_frame(counters_at(port_), Direction::received, arrived_, own_.frame_max);
    if (!has_no_error || takes_control_frame() || !is_admitted()) {
        return;
    }
    const int state = state_of(port_);
    if (state != BCM_STG_STP_DISABLE && is_reserved(frame_.to())) {
        send(cpu_port);
    } else if (state < BCM_STG_STP_LEARN) {
        drop(Discard::stp_state);
    } else if (!is_source_accepted()) {
        drop(Discard::source_address);
    } else if (state != BCM_STG_STP_FORWARD) {
        drop(Discard::stp_state);
    } else {
        to_destination();
    }
}

bool Passage::is_admitted()
{
    const bool is_tagged = frame_.vlan() != 0;
    if (own_.discard == BCM_PORT_DISCARD_ALL) {
        drop(Discard::port_takes_none);
    } else if (own_.discard == (is_tagged ? BCM_PORT_DISCARD_TAG : BCM_PORT_DISCARD_UNTAG)) {
        drop(Discard::tag_type);
    } else if (!vlans_of(sw_).has(vid_)) {
        drop(Discard::vlan_unknown);
    } else if ((own_.vlan_filter & BCM_PORT_VLAN_MEMBER_INGRESS)
               && !BCM_PBMP_MEMBER(vlans_of(sw_).at(vid_).members, port_)) {
        drop(Discard::vlan_filter);
    } else {
        return true;
    }
    return false;
}

/// In the VLAN's spanning tree group. The CPU is no part of any tree.
int Passage::state_of(int port)
{
    if (port == cpu_port) {
        return BCM_STG_STP_FORWARD;
    }
    const StgGroup *group = groups_of(sw_).find(vlans_of(sw_).at(vid_).group);
    return group != nullptr ? group->states[static_cast<std::size_t>(port)] : BCM_STG_STP_DISABLE;
}

bool Passage::is_source_accepted()
{
    if (is_group(frame_.from())) {
        return false;
    }
    const L2Arrival arrival = l2_arrive(sw_, port_, frame_.from(), vid_, length_with_checksum(arrived_));
    const bool has_gone = attached(sw_.unit) != &sw_;  // by a callback that was told of the address
    if (has_gone || (!arrival.was_in_place && !(own_.learn & BCM_PORT_LEARN_FWD))) {
        return false;
    }
    const std::size_t position = l2_of(sw_).addresses.find(l2_key(frame_.from(), vid_));
    return position == L2Table::none || !(l2_of(sw_).addresses.flags(position) & BCM_L2_DISCARD_SRC);
}

void Passage::to_destination()
{
    L2Table &addresses = l2_of(sw_).addresses;
    const L2Key key = l2_key(frame_.to(), vid_);
    const std::size_t position = addresses.find(key);
    if (position == L2Table::none) {
        to_ports(vlans_of(sw_).at(vid_).members,
                 is_group(frame_.to()) ? &bcm_trunk_info_t::mc_index : &bcm_trunk_info_t::dlf_index);
        return;
    }
    addresses.set_flags(position, addresses.flags(position) | BCM_L2_DES_HIT);
    l2_count(l2_of(sw_), key, bcmL2StatOutPackets, bcmL2StatOutBytes, length_with_checksum(arrived_));

    const bcm_l2_addr_t entry = addresses.record(position);
    Destination to = {Destination::Kind::discard, 0, 0};
    const bool leads_somewhere = resolve_address(entry, &to) == BCM_E_NONE;
    const bool is_for_cpu = is_own_port(to) && to.id == cpu_port;
    if ((entry.flags & BCM_L2_COPY_TO_CPU) && !is_for_cpu) {
        send(cpu_port);
    }
    if (!leads_somewhere || (to.kind == Destination::Kind::port && !is_own_port(to))) {
        drop(Discard::no_destination);
    } else if (to.kind == Destination::Kind::port) {
        to_port(to.id);
    } else if (to.kind == Destination::Kind::trunk) {
        to_trunk(to.id);
    } else if (to.kind == Destination::Kind::discard) {
        drop(Discard::destination_address);
    } else {
        const auto line = l2_of(sw_).multicast.find(to.id);
        to_ports(line != l2_of(sw_).multicast.end() ? line->second : bcm_pbmp_t{},
                 &bcm_trunk_info_t::mc_index);
    }
}

void Passage::to_port(int port)
{
    if (came_from(port)) {
        drop(Discard::no_destination);
    } else if (!has_link(sw_, port)) {
        count_discard(counters_at(port), Discard::no_link);
    } else if (state_of(port) != BCM_STG_STP_FORWARD) {
        count_discard(counters_at(port), Discard::stp_state_to_send);
    } else {
        send(port);
    }
}

void Passage::to_trunk(bcm_trunk_t id)
{
    const auto found = trunks_of(sw_).trunks.find(id);
    std::vector<int> able;
    if (found != trunks_of(sw_).trunks.end() && id != trunk_) {
        able = senders(found->second);
        able.erase(std::remove_if(able.begin(), able.end(), [&](int port) { return !can_send(port); }),
                   able.end());
    }
    if (able.empty()) {
        drop(Discard::no_destination);
    } else {
        send(select_by_criterion(sw_, found->second, able, {frame_, port_}));
    }
}

/// Copies to all of the ports that can send; to one of those of a trunk.
void Passage::to_ports(const bcm_pbmp_t &ports, int bcm_trunk_info_t::*index)
{
    std::vector<int> chosen;
    std::map<bcm_trunk_t, std::vector<int>> of_trunks;
    for (int port = 0; port <= port_max; ++port) {
        if (!BCM_PBMP_MEMBER(ports, port) || came_from(port) || !can_send(port)) {
            continue;
        }
        const bcm_trunk_t id = trunk_of(sw_, port);
        if (id < 0) {
            chosen.push_back(port);
            continue;
        }
        const std::vector<int> may_send = senders(trunks_of(sw_).trunks.at(id));
        if (std::find(may_send.begin(), may_send.end(), port) != may_send.end()) {
            of_trunks[id].push_back(port);
        }
    }
    for (const auto &[id, able] : of_trunks) {
        const Trunk &trunk = trunks_of(sw_).trunks.at(id);
        chosen.push_back(select_by_index(trunk, trunk.info.*index, able, {frame_, port_}));
    }
    if (chosen.empty()) {
        drop(Discard::no_destination);
    }
    std::sort(chosen.begin(), chosen.end());
    for (const int port : chosen) {
        send(port);
    }
}

/// The port, which may be the CPU's without link, checks the packet and sends it.
void Passage::send(int port)
{
    const Vlan &vlan = vlans_of(sw_).at(vid_);
    const Port &to = port_at(port);
    const FrameBytes bytes = BCM_PBMP_MEMBER(vlan.untagged, port) ? frame_.untagged() : frame_.tagged(vid_);
    PortCounters &counters = counters_at(port);
    if (!has_link(sw_, port)) {
        count_discard(counters, Discard::no_link);
    } else if ((to.vlan_filter & BCM_PORT_VLAN_MEMBER_EGRESS) && !BCM_PBMP_MEMBER(vlan.members, port)) {
        count_discard(counters, Discard::vlan_filter_to_send);
    } else if (length_with_checksum(bytes) > static_cast<std::size_t>(to.frame_max)) {
        count_discard(counters, Discard::too_long_to_send);
    } else {
        count_frame(counters, Direction::sent, bytes, to.frame_max);
        departures.push_back({port, bytes});
    }
}

}  // namespace

extern "C" {

void sim_packet_watch(sim_packet_watcher_t call, void *datum)
{
    watcher = {call, datum};
}

int sim_packet_arrive(int unit, bcm_port_t port, const unsigned char *frame, int length)
{
    std::vector<Departure> departures;
    const int status = begin(unit, ready<L2State>, given(frame)).then([&](Switch &sw, L2State &) -> int {
        constexpr int longest = static_cast<int>(frame_longest - checksum_bytes);
        int arrival;
        const int rc = resolve_own_port(port, &arrival);
        if (rc != BCM_E_NONE || arrival == cpu_port) {
            return BCM_E_PORT;
        }
        if (length < static_cast<int>(frame_header_bytes) || length > longest) {
            return BCM_E_PARAM;
        }
        if (!has_link(sw, arrival)) {
            return BCM_E_DISABLED;
        }
        const FrameBytes bytes(frame, frame + length);
        Passage passage(sw, arrival, bytes);
        passage.run();
        departures = std::move(passage.departures);
        return BCM_E_NONE;
    });
    for (const Departure &departure : departures) {
        if (watcher.call != nullptr) {
            const int size = static_cast<int>(departure.bytes.size());
            watcher.call(unit, departure.port, departure.bytes.data(), size, watcher.datum);
        }
    }
    return status;
}

}  // extern "C"
