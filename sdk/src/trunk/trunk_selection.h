/// The ports of trunks: which trunk one is in, and which of them sends a packet.
#pragma once

#include "destination.h"
#include "packet.h"
#include "port_set.h"

#include <vector>

namespace sim {

class Switch;
struct SendingTrunk;
struct Trunk;

/// The port behind a gport, which may have other names; BCM_E_PORT, BCM_E_BADID.
int resolve_port(bcm_gport_t gport, Destination *port);

/// The place of a port among the trunk's members, or -1.
int member_index(const Trunk &trunk, const Destination &port);

/// The trunk's ports of this unit, in the order of its members.
std::vector<int> own_ports(const Trunk &trunk);

/// What a trunk selects a member by.
struct Flow {
    const Frame &frame;
    int source_port;
};

/// One of the senders of the trunk that can send, which are not none, for a packet to an entry's trunk: by the
/// trunk's criterion.
int select_by_criterion(Switch &sw, const SendingTrunk &trunk, const PortSet &able, const Flow &flow);

/// One of the ports for a packet to many: the member of that index if it is among them, else by a hash of the
/// MAC addresses.
int select_by_index(const Trunk &trunk, int index, const PortSet &able, const Flow &flow);

}  // namespace sim
