/// The room of mirrors: whose packets are copied for somebody to look at, where the copies go, and how they are
/// wrapped. Sampling is its too: which packets are taken.
///
/// It offers the packet path what becomes of a packet at a port: sampled or not, and its copies, ready to be sent.
#pragma once

#include "holders.h"
#include "packet.h"
#include "port.h"

#include <bcm/mirror.h>

#include <array>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace sim {

constexpr uint32 mirrors_in = BCM_MIRROR_PORT_INGRESS;
constexpr uint32 mirrors_out = BCM_MIRROR_PORT_EGRESS | BCM_MIRROR_PORT_EGRESS_TRUE;

constexpr uint32 mirror_tunnels =
    BCM_MIRROR_DEST_TUNNEL_L2 | BCM_MIRROR_DEST_TUNNEL_IP_GRE | BCM_MIRROR_DEST_TUNNEL_UDP;

/// Takes a part of what passes: evenly, so that a script sees the same each time.
class Share {
public:
    /// Of so many packets, so many; none of 0.
    bool takes(uint32 dividend, uint32 divisor);

private:
    std::uint64_t due_ = 0;
};

/// Samples of what arrives, or of what leaves: which packets they are, and what becomes of them. Which, a generator of
/// random numbers says, so that traffic that repeats is sampled fairly, and the same for the same seed.
class Sampling {
public:
    bool to_cpu = true, to_mirrors = true;
    std::size_t bytes = 0;  ///< of a packet; 0 for all of it

    /// Whether a packet is a sample, if one of so many is to be; none of 0.
    bool takes(int rate);

    int seed() const { return seed_; }
    /// Begins anew.
    void sow(int seed);

private:
    int seed_ = 0;
    std::uint64_t state_ = 0;
};

/// A tag that copies get; none with a type of 0.
struct MirrorTag {
    bcm_tpid_t type = 0;
    bcm_vlan_t vlan = 0;
    int priority = 0;
};

struct MirrorDestination {
    bcm_mirror_destination_t settings = {};
    Destination to = {};
    bool is_on = true;
    int uses = 0;  // by ports
    Holders holders;
    uint32 sequence = 0;                // of the next copy
    uint16 datagram = 0;                // the next IP datagram's identification
    std::array<uint64, 3> counts = {};  // by bcm_mirror_stat_t

    int used() const { return uses + holders.count(); }

    /// A copy of so many bytes, with checksum, has left, or was dropped.
    void count(bool has_left, std::size_t length)
    {
        ++counts[has_left ? bcmMirrorStatPackets : bcmMirrorStatDroppedPackets];
        counts[bcmMirrorStatBytes] += has_left ? length : 0;
    }
    Share share;
};

/// That a port's packets, or those in a VLAN of it, go to a destination.
struct MirrorUse {
    int destination;
    uint32 flags;  // BCM_MIRROR_PORT_*
    bcm_mirror_options_t options;
    Share share;
};

struct PortMirrors {
    // By the unit's one mirroring port.
    PortSet to = PortSet::one(cpu_port);
    bool is_in = false, is_out = false;
    // By the port's own one.
    Destination own_to = {Destination::Kind::discard, 0, 0};
    uint32 own_flags = 0;
    // By destinations.
    std::vector<MirrorUse> uses;

    bcm_mirror_port_info_t info = {};  // the tag of its packets' copies
    MirrorTag tag;                     // of the copies that it sends

    // Sampling: of so many one, 0 for none.
    int sample_in = 0, sample_out = 0;
};

struct MirrorState : RoomState {
    static constexpr Room room = Room::mirror;

    /// As it is when new, but for sampling, which belongs to the ports and to the switch.
    void reset();

    bool initialised = true;
    int mode = BCM_MIRROR_DESTINATIONS;
    int to = cpu_port;  // the unit's mirroring port
    std::map<int, MirrorDestination> destinations;
    std::array<PortMirrors, port_max + 1> ports;
    std::map<std::pair<int, bcm_vlan_t>, std::vector<MirrorUse>> of_vlans;
    Sampling samples_in, samples_out;
};

inline MirrorState &mirrors_of(Switch &sw)
{
    return sw.of<MirrorState>();
}

/// Tells the ports which of them have copies. After each change.
void update_copies(Switch &sw);

/// A copy that is to be sent, without checksum.
struct MirrorCopy {
    Destination to;
    std::vector<unsigned char> frame;
    MirrorDestination *destination;  // which counts it; null if none does
};

inline Sampling &sampling_of(Switch &sw, Direction direction)
{
    return direction == Direction::received ? mirrors_of(sw).samples_in : mirrors_of(sw).samples_out;
}

/// Of how many packets of the port one is to be a sample; 0: of none.
int sample_rate(Switch &sw, int port, Direction direction);

/// The copies of a frame at a port, in one direction (mirrors_in, mirrors_out): vlan 0: those of the port, else those
/// of its VLAN. Some flags of uses only count for samples.
std::vector<MirrorCopy> mirror_copies(Switch &sw, int port, bcm_vlan_t vlan, uint32 direction,
                                      bool is_sampled, ByteView frame);

/// The copy for one destination; none if it is not there or does not take it.
std::vector<MirrorCopy> mirror_copy(Switch &sw, int port, int destination, uint32 direction, ByteView frame);

/// The frame as a destination wraps it. Destinations that wrap number what they send.
std::vector<unsigned char> wrapped(MirrorDestination &destination, ByteView frame);

/// With one more tag.
std::vector<unsigned char> with_tag(const MirrorTag &tag, ByteView frame);

}  // namespace sim
