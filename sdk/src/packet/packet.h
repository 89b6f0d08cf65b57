/// The room of packets: Ethernet frames by themselves, what is in them and where they are kept.
#pragma once

#include <bcm/types.h>

#include <cstddef>
#include <cstdint>

namespace sim {

constexpr std::size_t checksum_bytes = 4;
constexpr std::size_t frame_header_bytes = 14;
constexpr std::size_t frame_min = 64;  // with checksum, as all lengths of frames
constexpr std::size_t frame_longest = 16383;

constexpr std::size_t address_bytes = 6;
constexpr std::size_t addresses_bytes = 2 * address_bytes;
constexpr std::size_t tag_bytes = 4;
constexpr unsigned type_vlan = 0x8100;
constexpr unsigned type_mac_control = 0x8808;
constexpr unsigned type_slow = 0x8809;
constexpr unsigned type_eapol = 0x888e;
constexpr unsigned type_lldp = 0x88cc;
constexpr unsigned slow_lacp = 1;  // the subtype, a byte behind the type
constexpr unsigned type_ip4 = 0x0800;
constexpr unsigned type_ip6 = 0x86dd;

/// Bytes that belong to somebody else. Of a frame: on the wire from the destination address on, without
/// checksum.
struct ByteView {
    const unsigned char *data = nullptr;
    std::size_t size = 0;
};

inline std::size_t length_with_checksum(ByteView frame)
{
    return frame.size + checksum_bytes;
}

/// The number in two bytes.
inline unsigned number_at(const unsigned char *bytes)
{
    return static_cast<unsigned>(bytes[0] << 8 | bytes[1]);
}

/// The same, 0 behind the end.
inline unsigned number_at(ByteView bytes, std::size_t place)
{
    return place + 1 < bytes.size ? number_at(bytes.data + place) : 0;
}

inline void put_number(unsigned char *bytes, unsigned number)
{
    bytes[0] = static_cast<unsigned char>(number >> 8);
    bytes[1] = static_cast<unsigned char>(number);
}

inline bool is_group(const unsigned char *mac)
{
    return mac[0] & 1;
}

bool is_broadcast(const unsigned char *mac);

/// Whether bridges keep packets to the address to themselves.
bool is_reserved(const unsigned char *mac);

/// What is in a frame, behind which there are at least four more bytes: its outermost VLAN tag apart from the rest.
struct Frame {
    explicit Frame(ByteView frame)
        : bytes(frame), untagged_from(addresses_bytes), type(number_at(frame.data + addresses_bytes))
    {
        if (type == type_vlan) {
            tag = number_at(frame.data + addresses_bytes + 2);
            untagged_from += tag_bytes;
            type = number_at(frame.data + untagged_from);
        }
    }

    const unsigned char *to() const { return bytes.data; }
    const unsigned char *from() const { return bytes.data + address_bytes; }

    bool is_tagged() const { return untagged_from != addresses_bytes; }

    /// Of the tag; 0 without one, or if it has a priority only.
    bcm_vlan_t vlan() const { return static_cast<bcm_vlan_t>(tag & vlan_mask); }

    /// What a tag of that VLAN says, at the frame's own priority.
    unsigned tag_of(bcm_vlan_t vlan) const { return (tag & ~vlan_mask) | vlan; }

    /// Source and destination address of an IP packet, one behind the other; empty for another.
    ByteView ip_addresses() const;

    static constexpr unsigned vlan_mask = 0xfff;

    ByteView bytes;
    std::size_t untagged_from;  ///< place behind the addresses and the tag
    unsigned type;              ///< there
    unsigned tag = 0;           ///< priority and VLAN
};

}  // namespace sim
