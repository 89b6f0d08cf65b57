/// The ports of trunks: which trunk one is in, and which of them sends a packet.
#pragma once

#include "destination.h"
#include "packet.h"

#include <vector>

namespace sim {

class Switch;
struct Trunk;

/// The port behind a gport, which may have other names; BCM_E_PORT, BCM_E_BADID.
int resolve_port(bcm_gport_t gport, Destination *port);

/// The place of a port among the trunk's members, or -1.
int member_index(const Trunk &trunk, const Destination &port);

/// The trunk's ports of this unit, in the order of its members.
std::vector<int> own_ports(const Trunk &trunk);

/// The lowest trunk that the port is a member of, or -1.
bcm_trunk_t trunk_of(const Switch &sw, int port);

/// Where addresses of packets that arrive at the port are learnt: its trunk, or the port itself.
Destination place_of_arrival(const Switch &sw, int port);

/// The own ports of a trunk that may send for it, in their order; whether they can is not looked at.
std::vector<int> senders(const Trunk &trunk);

/// What a trunk selects a member by.
struct Flow {
    const Frame &frame;
    int source_port;
};

/// One of the ports, which are not none, for a packet to an entry's trunk: by the trunk's criterion.
int select_by_criterion(Switch &sw, Trunk &trunk, const std::vector<int> &ports, const Flow &flow);

/// One of the ports for a packet to many: the member of that index if it is among them, else by a hash of the
/// MAC addresses.
int select_by_index(const Trunk &trunk, int index, const std::vector<int> &ports, const Flow &flow);

}  // namespace sim
