/// The room of ports: their settings, what they count, and whether they have a link.
///
/// It offers the packet path each port's settings and counters; to others it is how they reach the PHY of a
/// port.
#pragma once

#include "linkscan.h"
#include "phy.h"
#include "port_counters.h"
#include "port_set.h"
#include "port_tags.h"
#include "rate_limits.h"

#include <bcm/port.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace sim {

constexpr int front_speed_max = 100000;  // Mbit/s
constexpr int cpu_speed_max = 10000;

constexpr int frame_max_default = 9216;  // bytes, with checksum

/// What few ports do with what arrives. A packet at any other asks of all of it at once.
struct ArrivalExtras {
    std::uint8_t discard = BCM_PORT_DISCARD_NONE;
    bool limits_rate = false;      // as PortState::rates_in says
    bool limits_storms = false;    // as PortState::storms says
    bool copies_in = false;        // mirrored or sampled on arrival
    bool copies_of_vlans = false;  // mirrored in a VLAN on arrival
    bool polices_in = false;       // packets that arrive pass a policer
    bool is_forced = false;        // to Port::forced_to

    /// Whether tags of packets that arrive are more to the port than is plain. May be set without need: who meets it
    /// then finds out.
    bool reads_tags = true;

    bool matches_fields = false;  // the field processor has entries for what arrives

    bool has_extras() const
    {
        std::uint64_t first;
        static_assert(sizeof first + sizeof matches_fields == sizeof *this);
        std::memcpy(&first, this, sizeof first);
        return (first | matches_fields) != 0;
    }
};
static_assert(BCM_PORT_DISCARD_NONE == 0);

struct Port : ArrivalExtras {
    int speed_max = front_speed_max;
    int speed = front_speed_max;  // of a port without PHY
    bool pause_tx = false;
    bool pause_rx = false;
    std::array<unsigned char, 6> pause_address = {};
    bcm_vlan_t untagged_vlan = BCM_VLAN_DEFAULT;
    uint32 learn = BCM_PORT_LEARN_ARL | BCM_PORT_LEARN_FWD;
    int frame_max = frame_max_default;
    uint32 vlan_filter = 0;  // BCM_PORT_VLAN_MEMBER_*
    PortTags tags;
    int forced_to = 0;  // port to which everything goes that arrives, if it is forced
    int pfm = bcmPortPfmForwardAll;
};

struct PortState : RoomState {
    static constexpr Room room = Room::port;

    explicit PortState(Switch &sw);

    /// Settings of ports as they are when new.
    void reset();

    void forget_functions(Switch &) override { links.forget_functions(); }
    void retire() override { links.next.reset(); }

    std::array<Port, port_max + 1> ports;
    PortSet enabled;
    PortSet tag_writers;  // the same as Port::reads_tags, for what they send
    // Where sending is more than that: packets are mirrored or sampled, may have to wait, pass a policer, or are
    // looked up by the field processor.
    PortSet copies_out, queues_out, polices_out, matches_out;
    /// All of these; after a change of one of them.
    void update_special_out()
    {
        special_out_ = tag_writers | copies_out | queues_out | polices_out | matches_out;
    }
    const PortSet &special_out() const { return special_out_; }

    std::array<PortRate, port_max + 1> rates_in;
    std::array<StormControl, port_max + 1> storms;
    std::array<PortCounters, port_max + 1> counters;
    LinkScan links;

private:
    PortSet special_out_;
};

inline Port &port_of(Switch &sw, int port)
{
    return sw.of<PortState>().ports[static_cast<std::size_t>(port)];
}
inline const Port &port_of(const Switch &sw, int port)
{
    return sw.of<PortState>().ports[static_cast<std::size_t>(port)];
}

inline PortCounters &counters_of(Switch &sw, int port)
{
    return sw.of<PortState>().counters[static_cast<std::size_t>(port)];
}

/// The limit on all that arrives at a port.
inline PortRate &rate_in_at(Switch &sw, int port)
{
    return sw.of<PortState>().rates_in[static_cast<std::size_t>(port)];
}

inline StormControl &storms_at(Switch &sw, int port)
{
    return sw.of<PortState>().storms[static_cast<std::size_t>(port)];
}

inline LinkScan &links_of(Switch &sw)
{
    return sw.of<PortState>().links;
}

/// The settings of the unit's own port that an argument means: BCM_E_PORT.
inline auto settings_of(bcm_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        return own_port(port)(sw, [&](int own) -> int { return next(port_of(sw, own)); });
    };
}

/// Null for the CPU's port.
PhyPort *phy_of(Switch &sw, int port);

/// Of the PHY, if the port has one.
int speed_of(Switch &sw, int port);

/// The ports where packets can pass: they are enabled and, but for the CPU's, their MAC sees a link.
inline PortSet linked_ports(Switch &sw)
{
    return sw.of<PortState>().enabled & (phys_of(sw).linked() | PortSet::one(cpu_port));
}

inline bool has_link(Switch &sw, int port)
{
    return linked_ports(sw).has(port);
}

/// Brings the chip's registers in line with the port.
void write_registers(Switch &sw, int port);

}  // namespace sim
