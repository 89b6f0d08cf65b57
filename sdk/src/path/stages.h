/// The stages of a packet's way, in their order. Each is a function of the passage and of the rooms' states, and
/// can be read alone; sim/traffic.h tells what they do in the words of users.
#pragma once

#include "l3.h"
#include "passage.h"
#include "policer.h"

#include <initializer_list>

namespace sim {

enum class Onward {
    next,     ///< to the next stage
    decided,  ///< it is known where to: to replicate
    over
};

using Stage = Onward(Passage &);

/// The MAC: counts, drops what has errors, and takes control frames for itself.
Onward arrive(Passage &passage);

/// Copies of what arrived, for mirrors and as samples.
Onward copy_arrival(Passage &passage);

/// The same for mirrors of the packet's VLAN.
Onward copy_in_vlan(Passage &passage);

/// The same of what leaves a port.
void copy_departure(Passage &passage, int port, ByteView sent);

/// The CPU gets the frame as a sample, if it is to get any (bcmSwitchSampleIngressToCpu, ...EgressToCpu). Which packets
/// are samples, Sampling::takes() says (mirror.h).
void send_sample(Passage &passage, Direction direction, ByteView frame);

/// Copies for one destination of mirrors, of what arrived and of what leaves a port.
void mirror_arrival(Passage &passage, int destination);
void mirror_departure(Passage &passage, int port, ByteView sent, int destination);

/// The same, perhaps, as samples.
void sample_arrival(Passage &passage, const Sample &sample);
void sample_departure(Passage &passage, int port, ByteView sent, const Sample &sample);

/// What the port takes.
Onward admit(Passage &passage);

/// The VLAN of the packet.
Onward classify(Passage &passage);

/// The same, where the field processor has a say before: it drops the packet, or chooses another VLAN.
Onward classify_by_fields(Passage &passage);

/// That VLAN, 0 for none, and whether the packet goes on.
Onward look_up_first_fields(Passage &passage, bcm_vlan_t *vid);

/// What the address table knows of the source before it is learnt, for the field processor.
void remember_source(Passage &passage);

/// Whether it was not known there and is now.
bool is_source_learnt(const Passage &passage);

/// The state of the port in the VLAN's spanning tree group; what bridges keep to themselves goes to the CPU.
Onward look_at_tree(Passage &passage);

/// The same, where the field processor may have said what that state is.
Onward look_at_tree_by_fields(Passage &passage);
int tree_state_by_fields(const Passage &passage);

/// The source address: learnt, and perhaps unwanted.
Onward look_at_source(Passage &passage);

/// The same, where the field processor may have said that it is not to be learnt.
Onward look_at_source_by_fields(Passage &passage);

/// The policers of the port and the VLAN.
Onward police_arrival(Passage &passage);

/// What policers have decided about the packet. False: it is dropped.
bool take_policed(Passage &passage, const PolicerDecision &decision);

/// What is addressed to the router: where its IP address leads.
Onward route(Passage &passage);

/// The same, where the field processor may have said that it is to be bridged, and may ask what is looked up.
Onward route_by_fields(Passage &passage);

/// The routing table of what a router receives in the packet's VLAN, through that interface if there is one.
unsigned routing_table_of(Passage &passage, L3State &l3, const L3Interface *interface);

/// Where a multicast goes that has an entry: decided, with copies that are routed. Next: it is bridged only.
Onward route_multicast(Passage &passage);

/// Those copies join what leaves.
void send_routed_copies(Passage &passage);

/// An IP packet goes where an egress object leads, or one of a group: decided, or over if it ends here. Next: it is
/// none.
Onward route_by_object(Passage &passage, bcm_if_t object);

/// The CPU's copies of packets of protocols.
Onward copy_protocols(Passage &passage);

/// Where the destination address leads.
Onward find_destination(Passage &passage);

/// What the field processor says when it is known where the packet goes.
Onward look_up_fields(Passage &passage);

/// What the port lets in of broadcast, multicast and unknown unicast packets.
Onward limit_storms(Passage &passage);

/// The ports that send a copy.
Onward replicate(Passage &passage);

/// The same, where the field processor may have said that they may leave where the packet came in, or by which member
/// of a trunk.
Onward replicate_by_fields(Passage &passage);

/// How the copies begin.
Onward edit(Passage &passage);

/// What the field processor changes in all copies, when edit has said how they begin.
Onward change_headers(Passage &passage);

/// The tags that the packet has in the switch. To be asked before the first copy is written, which is where they are.
PacketTags tags_of(Passage &passage);

/// What an IP header becomes; its TTL only if that is said. It is whole, of IPv4 that is.
void change_ip(unsigned char *header, const HeaderChanges &changes, bool with_ttl);

/// The same of addresses and ports, which are in the frame from its start on. IPv4 has its header's checksum at those places.
void change_flow(unsigned char *frame, const HeaderChanges &changes,
                 std::initializer_list<unsigned char *> ip_checksums);

/// What the field processor says of a copy that a port is about to send.
struct LastFields {
    bool is_dropped = false, is_changed = false;
    FrameBuffer frame;  ///< that is sent if it is changed
    bcm_color_t color = bcmColorGreen;
    int priority = 0;
    int mirror_out = 0;  ///< the destination for a copy of it; 0 for none
    Sample sample;
};
void pass_last_fields(Passage &passage, int port, ByteView copy, LastFields &last);

/// Counters of the field processor that wait for what becomes of the packet, and of those that came before it in the
/// way: their number, to be asked before entries are.
std::size_t undecided_counters(Switch &sw);
/// All since then count.
void settle_counters(Passage &passage, std::size_t from);

/// What each port checks before it sends.
Onward leave(Passage &passage);

/// In place of all of that, for what the CPU sends: it leaves through the ports that can send it, without its tag
/// through those of the second set.
void send_through(Passage &passage, const PortSet &ports, const PortSet &without_tag);

/// What waits at a port and may leave now, leaves.
void add_what_waited(Switch &sw, int port, Departures &departures);

}  // namespace sim
