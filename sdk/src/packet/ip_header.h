/// The IP header of a frame, as a router looks at it.
#pragma once

#include "ip_address.h"

#include <cstddef>

namespace sim {

constexpr std::size_t ip4_header_bytes = 20;
constexpr std::size_t ip6_header_bytes = 40;
constexpr std::size_t ip4_ttl_at = 8;
constexpr std::size_t ip4_checksum_at = 10;
constexpr std::size_t ip6_hop_limit_at = 7;

struct IpHeader {
    bool is_ip6;
    const unsigned char *bytes;
    std::size_t length;  ///< of the packet, with header
    unsigned ttl;        ///< or hop limit
    IpAddress from, to;

    /// Of the packet in the frame behind its header, of which that many bytes are there. False if it is no sound
    /// IP packet: of another version than the frame says, shorter than its header, longer than the frame, or, of
    /// IPv4, with a wrong checksum.
    bool read(const unsigned char *packet, std::size_t size, bool is_of_ip6);

    unsigned protocol() const { return bytes[is_ip6 ? 6 : 9]; }

    /// Source and destination port of TCP or UDP as one number, 0 if they are not there.
    std::uint32_t ports() const;

    bool has_options() const { return !is_ip6 && (bytes[0] & 15) > 5; }
    bool is_for_group() const { return is_ip6 ? to.high >> 56 == 0xff : to.high >> 60 == 0xe; }

    /// fe80::/10, which no router forwards.
    bool is_link_local() const { return is_ip6 && to.high >> 54 == 0x3fa; }
};

}  // namespace sim
