/// One packet on its way through a unit: where it came from, what was found in it and what has been decided.
#pragma once

#include "cpu_copy.h"
#include "field_key.h"
#include "frame_buffer.h"
#include "l2.h"
#include "l3.h"
#include "l3_multicast.h"
#include "port.h"
#include "queue.h"
#include "tags.h"
#include "trace.h"
#include "trunk.h"
#include "vlan.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace sim {

/// What leaves the unit: copies of one frame in the order in which they were sent.
struct Departures {
    struct Copy {
        std::uint8_t port;
        std::uint8_t head;
    };

    /// A frame of its own that leaves with them: a mirrored copy, or one that has waited.
    struct Other {
        int port;
        FrameBuffer frame;
        CpuCopy about;  ///< of the CPU's
    };

    void add(int port, FrameBuffer other, const CpuCopy &about = CpuCopy::of_nothing_known())
    {
        if (others == nullptr) {
            others = std::make_unique<std::vector<Other>>();
        }
        others->push_back({port, std::move(other), about});
    }

    FrameBuffer frame;
    std::array<Head, 2 + port_max + 1> heads;  // without a tag, with one, and those of ports that change tags
    std::uint8_t head_count = 0;
    std::array<Copy, port_max + 1> copies;
    std::size_t count = 0;
    std::unique_ptr<std::vector<Other>> others;  // null as long as there are none
    CpuCopy cpu_copy;                            // of the CPU's, if there is one
};

/// What is changed in a packet beside its tags, for all copies. -1 and null: nothing.
struct HeaderChanges {
    std::size_t ip_from = 0;  ///< place of the IP header; 0 without
    unsigned service_mask = 0, service = 0;
    int ttl = -1;  ///< of what is routed
    const unsigned char *to = nullptr, *from = nullptr;
    std::size_t type_from = 0;
    int ether_type = -1;
    int flow_label = -1;                               ///< of IPv6
    std::int64_t source_ip = -1, destination_ip = -1;  ///< of IPv4
    std::size_t l4_from = 0;                           ///< place of a header of TCP or UDP; 0 without
    bool is_udp = false;
    int source_l4_port = -1, destination_l4_port = -1;
};

/// That a packet is one of those of which a part is taken.
struct Sample {
    int rate = 0;         ///< of so many, one; 0 for none
    int destination = 0;  ///< of mirrors, that gets it; 0 for the CPU
};

/// What becomes of a packet besides where it goes, as policers and entries of the field processor say.
struct Treatment {
    Treatment(bcm_color_t color_, int priority_) : color(color_), priority(priority_) {}

    /// The queue where it leaves, in place of the priority's; -1 for that.
    int queue_at(int port) const { return port == cpu_port ? cpu_queue : queue; }

    bcm_color_t color;
    int priority;  ///< within the switch
    int queue = -1, cpu_queue = -1;
    bool is_learnt = true;                                            ///< its source address
    bool skips_arrival_filter = false, skips_leaving_filter = false;  ///< of VLANs
    bool is_routed = true;                                            ///< if it is for a router
    bool is_limited = true;                                           ///< as part of a storm
    bool is_snooped = true;                                           ///< by the switch, for its protocol
    bool forwards_bpdus = false;  ///< what bridges say to each other is forwarded as any multicast
    bool source_passes = false;   ///< whatever the entry of its source address says
    bool is_looked_up = true, is_looked_up_last = true;  ///< by the field processor: in ingress, in egress
    bool may_return = false;                             ///< copies may leave where it came in
    int tree_state = -1;                                 ///< of the port where it came in; -1 for its own
    int trunk_member = -1;            ///< that sends it, if it can; -1 for what the trunk says
    int vrf = -1, source_check = -1;  ///< where it is routed; -1 for what its VLAN and its interface say
    FieldClasses classes = {};
    uint32 cpu_match = 0;  ///< what the CPU is told of the entry that sends it there
    int mirror_out = 0;    ///< the destination that gets a copy of what leaves; 0 for none
    Sample sample_out;     ///< of what leaves
    bool changes_headers = false;
    HeaderChanges changes;

    bool is_redirected = false;  ///< where it goes an entry has said
    int others_sent = 0;         ///< by front ports: copies that are not told by how they begin
    bool cpu_sends_other = false;

    /// A copy that is a frame of its own leaves, or waits.
    void note_other(int port)
    {
        others_sent += port != cpu_port;
        cpu_sends_other |= port == cpu_port;
    }
};

/// What tables say of the addresses of a packet before it is routed, for the field processor.
struct Findings {
    bool is_for_router = false;  ///< its destination address is one that routes
    bool is_looked_up = false;   ///< and its IP addresses were looked up in the table:
    unsigned vrf = 0;
    L3Found to, from;
    bool is_local = false;    ///< the address is the CPU's
    bcm_if_t group = 0;       ///< of egress objects, where the address leads; 0 for none
    bcm_if_t ingress_if = 0;  ///< what the packet's VLAN has; 0 for none
    uint32 vlan_class = 0, interface_class = 0, from_class = 0, to_class = 0;
    bcm_vlan_t vid = 0;  ///< before it is routed
    bool is_learnt = false;
};

struct Passage {
    /// The frame is that of the departures.
    Passage(Switch &sw_, int port_, Departures &departures_)
        : sw(sw_), port(port_), departures(departures_), own_(port_of(sw_, port_))
    {
    }

    Port &own() { return own_; }
    PortCounters &counters_at(int at) { return counters_of(sw, at); }

    /// The packet ends here, and the port that it came from counts why.
    void drop(Discard reason) { drop_at(port, reason); }

    /// The same of the copy for a port.
    void drop_at(int at, Discard reason)
    {
        count_discard(counters_at(at), reason);
        if (is_traced) {
            tell_drop(*this, at, reason);
        }
    }

    /// The CPU gets a copy, whatever else becomes of the packet.
    void copy_to_cpu(bcm_rx_reason_t reason)
    {
        copies.add(cpu_port);
        cpu_reasons.add(reason);
    }

    /// The state of its port in the VLAN's spanning tree group. The CPU is no part of any tree.
    int tree_state() const { return group != nullptr ? group->state(port) : BCM_STG_STP_DISABLE; }
    bool is_forwarding(int at) const
    {
        return group != nullptr ? group->forwarding().has(at) : at == cpu_port;
    }
    PortSet forwarding() const { return group != nullptr ? group->forwarding() : PortSet::one(cpu_port); }

    /// What becomes of it, to be changed.
    Treatment &treat()
    {
        if (!treatment) {
            treatment.emplace(color(), priority());
        }
        return *treatment;
    }

    /// Finds VLAN and group again, after callbacks that may have changed all of it.
    void find_vlan()
    {
        vlan = &vlans_of(sw).at(vid);
        group = groups_of(sw).find(vlan->group);
    }

    Switch &sw;
    const int port;  ///< that it came from

    Departures &departures;
    Frame frame = Frame(departures.frame.bytes());
    FrameCounts counts = FrameCounts(frame.bytes);

    /// Where the port reads tags in its own way: all tags as they are in the switch. The frame then has the outer one,
    /// and none of the others.
    std::optional<PacketTags> tags;

    bcm_vlan_t vid = 0;
    const Vlan *vlan = nullptr;
    const StgGroup *group = nullptr;  ///< null if the VLAN's is gone

    /// One destination, or a set of ports of which a trunk's index picks one of each trunk's.
    Destination to = {Destination::Kind::discard, 0, 0};
    PortSet members;
    int bcm_trunk_info_t::*member_index = nullptr;
    bool is_for_many = false;

    const NextHop *hop =
        nullptr;  ///< by which it is routed; vid, VLAN and group are those in which it leaves then
    const MulticastMembers *routed = nullptr;  ///< copies that are routed besides, of what is for many
    bool is_sampled = false;                   ///< on arrival
    bool is_mirrored = false;
    /// Before it was learnt, if the field processor asks.
    bool source_was_known = false, source_was_static = false;
    /// The same if it asks for more than that: whether it was known there, and what else was looked up.
    bool source_was_in_place = false;
    std::optional<Findings> findings;
    std::optional<Treatment> treatment;  ///< none if nobody asks for one

    /// Within the switch, as queues know it: what is above the highest is that.
    int priority() const
    {
        return treatment ? treatment->priority
               : tags    ? std::min(tags->priority, priorities - 1)
                         : static_cast<int>(frame.tag >> 13);
    }
    bcm_color_t color() const
    {
        return treatment ? treatment->color : tags ? static_cast<bcm_color_t>(tags->color) : bcmColorGreen;
    }

    PortSet copies;          ///< the ports that are to send it
    bool is_plain = false;   ///< nothing is done to its copies but what their VLAN says of tags
    CpuReasons cpu_reasons;  ///< why the CPU is among them, but for the destination

private:
    Port &own_;
};

}  // namespace sim
