/// What entries of the field processor are compared with: the headers of a packet and what is known of it, each at its
/// place in a row of words. An entry is the same row twice, value and mask.
///
/// What is one of several kinds, or of ports, is a bit for each of them, so that any set of them is a mask as well.
/// What a packet lacks is zero, and the bit of `FieldHeader` that says so is part of each comparison with it.
#pragma once

#include "frame_buffer.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace sim {

struct PortTags;

/// What a packet can lack.
enum class FieldHeader : std::uint8_t {
    ether_type,
    outer_tag,
    inner_tag,
    ip4,
    ip6,
    ip,  ///< either of them
    l4_ports,
    tcp,
    udp,
    icmp,  ///< of either IP
    igmp,
    arp,  ///< for IP addresses over Ethernet
    vlan,
    in_trunk,
    out_port,  ///< one destination, which is a port
    out_trunk,
    out_group,
    payload,  ///< eight bytes or more behind the Ethernet header
    always,
};

/// A part of a word.
struct FieldPlace {
    std::uint8_t word, shift, width;  // bits
};

namespace field_places {

constexpr FieldPlace destination_mac{0, 0, 48}, ether_type{0, 48, 16};
constexpr FieldPlace source_mac{1, 0, 48}, forwarding_vlan{1, 48, 12}, tree_state{1, 60, 3};
constexpr FieldPlace outer_tag{2, 0, 16}, inner_tag{2, 16, 16}, outer_tpid{2, 32, 16}, inner_tpid{2, 48, 16};
constexpr FieldPlace source_ip{3, 0, 32}, destination_ip{3, 32, 32};
constexpr FieldPlace source_ip6{4, 0, 64}, destination_ip6{6, 0, 64};  // two words each, the upper half first
constexpr FieldPlace source_l4_port{8, 0, 16}, destination_l4_port{8, 16, 16}, protocol{8, 32, 8},
    hops{8, 40, 8}, type_code{8, 48, 16};
constexpr FieldPlace service{9, 0, 8}, tcp_flags{9, 8, 8}, ip_flags{9, 16, 2}, flow_label{9, 20, 20},
    tcp_header{9, 40, 4}, packet_length{9, 48, 16};
constexpr FieldPlace ip_type{10, 0, 21}, ip_fragment{10, 21, 5}, protocol_kind{10, 26, 12},
    l2_format{10, 38, 10}, arp_operation{10, 48, 6};
constexpr FieldPlace tcp_sequence_zero{11, 0, 1}, same_ip{11, 1, 1}, same_l4_port{11, 2, 1},
    vlan_format{11, 3, 2}, not_later_fragment{11, 5, 1}, drop{11, 6, 1}, source_hit{11, 7, 1},
    source_static{11, 8, 1}, destination_hit{11, 9, 1}, color{11, 10, 2}, dhcp{11, 12, 1},
    broadcast{11, 13, 1}, multicast{11, 14, 1}, extension{11, 16, 8};
constexpr FieldPlace ranges{12, 0, 64};
constexpr FieldPlace in_ports{13, 0, 64}, out_ports{15, 0, 64};  // two words each, the lower half first
constexpr FieldPlace in_port{17, 0, 8}, out_port{17, 8, 8}, in_trunk{17, 16, 16}, out_trunk{17, 32, 16},
    out_group{17, 48, 16};
constexpr FieldPlace arp_sender{18, 0, 32}, arp_target{18, 32, 32};
constexpr FieldPlace payload{19, 0, 64};

constexpr std::size_t words = 20;

}  // namespace field_places

using FieldWord = std::uint64_t;

constexpr FieldWord field_ones(unsigned width)
{
    return width >= 64 ? ~FieldWord{0} : (FieldWord{1} << width) - 1;
}

struct FieldKey {
    std::array<FieldWord, field_places::words> words = {};
    std::uint32_t headers = 1u << static_cast<unsigned>(FieldHeader::always);
    const unsigned char *ip = nullptr;  ///< in the frame, of a packet of either IP

    void put(FieldPlace place, FieldWord number)
    {
        words[place.word] |= (number & field_ones(place.width)) << place.shift;
    }
    void replace(FieldPlace place, FieldWord number)
    {
        words[place.word] &= ~(field_ones(place.width) << place.shift);
        put(place, number);
    }
    FieldWord get(FieldPlace place) const
    {
        return words[place.word] >> place.shift & field_ones(place.width);
    }
    void has(FieldHeader header) { headers |= 1u << static_cast<unsigned>(header); }
    bool is(FieldHeader header) const { return headers >> static_cast<unsigned>(header) & 1; }
};

/// Puts what is in the frame, whose tags are told as those of the port are.
void read_headers(ByteView frame, const PortTags &port, FieldKey &key);

}  // namespace sim
