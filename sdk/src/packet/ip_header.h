/// The IP header of a frame, as a router looks at it.
#pragma once

#include "ip_address.h"

#include <cstddef>
#include <cstring>

namespace sim {

constexpr std::size_t ip4_header_bytes = 20;
constexpr std::size_t ip6_header_bytes = 40;
constexpr std::size_t ip4_service_at = 1;
constexpr std::size_t ip4_ttl_at = 8;
constexpr std::size_t ip4_checksum_at = 10;
constexpr std::size_t ip6_hop_limit_at = 7;

/// Whether the words of an IPv4 header of that size, checksum included, add up as they have to.
inline bool adds_up(const unsigned char *header, std::size_t size)
{
    // The order of the bytes makes no difference to a sum of all ones.
    const auto word = [&](std::size_t at) -> std::uint64_t {
        std::uint32_t bytes;
        std::memcpy(&bytes, header + at, sizeof bytes);
        return bytes;
    };
    std::uint64_t sum = word(0) + word(4) + word(8) + word(12) + word(16);
    for (std::size_t at = ip4_header_bytes; at < size; at += 4) {
        sum += word(at);
    }
    // What is 0 but for multiples of all ones is all ones itself.
    return sum % 0xffffu == 0;
}

/// Makes good a checksum of which one word has changed, in arithmetic of ones' complement.
inline void update_checksum(unsigned char *checksum, unsigned before, unsigned now)
{
    unsigned sum = (~number_at(checksum) & 0xffffu) + (~before & 0xffffu) + now;
    sum = (sum & 0xffffu) + (sum >> 16);
    sum = (sum & 0xffffu) + (sum >> 16);
    put_number(checksum, ~sum & 0xffffu);
}

/// Changes the bits of the mask of one byte of an IPv4 header, and its checksum with it.
inline void change_ip4(unsigned char *header, std::size_t at, unsigned mask, unsigned bits)
{
    unsigned char *const word = header + at / 2 * 2;
    const unsigned before = number_at(word);
    header[at] = static_cast<unsigned char>((header[at] & ~mask) | (bits & mask));
    update_checksum(header + ip4_checksum_at, before, number_at(word));
}

struct IpHeader {
    bool is_ip6;
    const unsigned char *bytes;
    std::size_t length;  ///< of the packet, with header
    unsigned ttl;        ///< or hop limit
    IpAddress to;

    /// Of the packet in the frame behind its header, of which that many bytes are there. False if it is no sound
    /// IP packet: of another version than the frame says, shorter than its header, longer than the frame, or, of
    /// IPv4, with a wrong checksum.
    bool read(const unsigned char *packet, std::size_t size, bool is_of_ip6);

    IpAddress from() const { return is_ip6 ? ip6_address(bytes + 8) : ip4_address(number4_at(bytes + 12)); }
    unsigned protocol() const { return bytes[is_ip6 ? 6 : 9]; }

    /// Source and destination port of TCP or UDP as one number, 0 if they are not there.
    std::uint32_t ports() const;

    bool has_options() const { return !is_ip6 && (bytes[0] & 15) > 5; }
    bool is_for_group() const { return is_ip6 ? to.high >> 56 == 0xff : to.high >> 60 == 0xe; }

    /// fe80::/10, which no router forwards.
    bool is_link_local() const { return is_ip6 && to.high >> 54 == 0x3fa; }
};

inline bool IpHeader::read(const unsigned char *packet, std::size_t size, bool is_of_ip6)
{
    bytes = packet;
    is_ip6 = is_of_ip6;
    if (is_ip6) {
        if (size < ip6_header_bytes || packet[0] >> 4 != 6) {
            return false;
        }
        length = ip6_header_bytes + number_at(packet + 4);
        ttl = packet[ip6_hop_limit_at];
        to = ip6_address(packet + 24);
        return length <= size;
    }
    const std::size_t header = (packet[0] & 15u) * 4;
    if (size < ip4_header_bytes || packet[0] >> 4 != 4 || header < ip4_header_bytes || header > size) {
        return false;
    }
    length = number_at(packet + 2);
    ttl = packet[ip4_ttl_at];
    to = ip4_address(number4_at(packet + 16));
    return length >= header && length <= size && adds_up(packet, header);
}

}  // namespace sim
