#include "ip_header.h"

#include <cstring>

namespace sim {

namespace {

/// Whether the words of an IPv4 header, checksum included, add up as they have to.
bool adds_up(const unsigned char *header, std::size_t size)
{
    std::uint64_t sum = 0;
    for (std::size_t at = 0; at < size; at += 4) {
        std::uint32_t word;
        std::memcpy(&word, header + at, sizeof word);
        sum += word;  // the order of the bytes makes no difference to a sum of all ones
    }
    sum = (sum >> 32) + (sum & 0xffffffffu);
    sum = (sum >> 16) + (sum & 0xffffu);
    sum = (sum >> 16) + (sum & 0xffffu);
    return (sum >> 16) + (sum & 0xffffu) == 0xffffu;
}

std::uint32_t word_at(const unsigned char *bytes)
{
    return static_cast<std::uint32_t>(number_at(bytes)) << 16 | number_at(bytes + 2);
}

}  // namespace

bool IpHeader::read(const unsigned char *packet, std::size_t size, bool is_of_ip6)
{
    bytes = packet;
    is_ip6 = is_of_ip6;
    if (is_ip6) {
        if (size < ip6_header_bytes || packet[0] >> 4 != 6) {
            return false;
        }
        length = ip6_header_bytes + number_at(packet + 4);
        ttl = packet[ip6_hop_limit_at];
        from = ip6_address(packet + 8);
        to = ip6_address(packet + 24);
        return length <= size;
    }
    const std::size_t header = (packet[0] & 15u) * 4;
    if (size < ip4_header_bytes || packet[0] >> 4 != 4 || header < ip4_header_bytes || header > size) {
        return false;
    }
    length = number_at(packet + 2);
    ttl = packet[ip4_ttl_at];
    from = ip4_address(word_at(packet + 12));
    to = ip4_address(word_at(packet + 16));
    return length >= header && length <= size && adds_up(packet, header);
}

std::uint32_t IpHeader::ports() const
{
    constexpr unsigned tcp = 6, udp = 17;
    const std::size_t header = is_ip6 ? ip6_header_bytes : (bytes[0] & 15u) * 4;
    const bool is_fragment = !is_ip6 && (number_at(bytes + 6) & 0x3fff) != 0;
    if ((protocol() != tcp && protocol() != udp) || is_fragment || length < header + 4) {
        return 0;
    }
    return word_at(bytes + header);
}

}  // namespace sim
