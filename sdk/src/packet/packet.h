/// The room of packets: Ethernet frames by themselves, and buffers of bytes.
#pragma once

#include <bcm/types.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sim {

/// A frame on the wire from the destination address on, without checksum.
using FrameBytes = std::vector<unsigned char>;

constexpr std::size_t checksum_bytes = 4;
constexpr std::size_t frame_header_bytes = 14;
constexpr std::size_t frame_min = 64;  // with checksum, as all lengths of frames
constexpr std::size_t frame_longest = 16383;

constexpr std::size_t address_bytes = 6;
constexpr std::size_t tag_bytes = 4;
constexpr unsigned type_vlan = 0x8100;
constexpr unsigned type_mac_control = 0x8808;
constexpr unsigned type_ip4 = 0x0800;
constexpr unsigned type_ip6 = 0x86dd;

inline std::size_t length_with_checksum(const FrameBytes &bytes)
{
    return bytes.size() + checksum_bytes;
}

/// The number in two bytes, 0 behind the end.
unsigned number_at(const FrameBytes &bytes, std::size_t place);

bool is_group(const unsigned char *mac);
bool is_broadcast(const unsigned char *mac);

/// Whether bridges keep packets to the address to themselves.
bool is_reserved(const unsigned char *mac);

/// A frame in the switch: its outermost VLAN tag apart from the rest.
class Frame {
public:
    explicit Frame(const FrameBytes &bytes);

    const unsigned char *to() const { return untagged_.data(); }
    const unsigned char *from() const { return untagged_.data() + address_bytes; }

    /// Of the tag; 0 without one, or if it has a priority only.
    bcm_vlan_t vlan() const { return static_cast<bcm_vlan_t>(tag_ & vlan_mask); }

    /// The same frame with a tag of that VLAN, at its own priority, or without one.
    FrameBytes tagged(bcm_vlan_t vlan) const;
    FrameBytes untagged() const;

    /// Source and destination address of an IP packet, one behind the other; empty for another.
    FrameBytes ip_addresses() const;

private:
    static constexpr unsigned vlan_mask = 0xfff;

    FrameBytes untagged_;
    unsigned tag_ = 0;  // priority and VLAN
};

}  // namespace sim
