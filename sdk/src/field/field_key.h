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
    llc,
    snap,
    label1,  ///< MPLS, this and the next ones from outside
    label2,
    label3,
    i_tag,  ///< of MAC in MAC
    l2_gre,
    vxlan,
    inner_ethernet,  ///< this and the next ones in a tunnel
    inner_ip4,
    inner_ip6,
    inner_ip,
    inner_l4_ports,
    router,         ///< it is for a router, which looks its addresses up
    l3_ingress,     ///< its VLAN has an interface of layer 3 for what comes in
    egress_object,  ///< it is routed by one
    l3_group,       ///< by one of such a group
    learnt,         ///< its source address was not known where it came in, and is now
    out_place,      ///< one destination, a port or a trunk
    trill,
    fcoe,
    fibre_channel,  ///< in FCoE, and a fabric's tag before it
    fabric_tag,
    vn_tag,
    e_tag,
    cn_tag,
    ethernet_oam,
    channel,      ///< behind labels, beside what they carry
    mpls_oam,     ///< a message in it
    maintenance,  ///< either of both
    bfd,
    trill_payload,
};

/// A set of them.
using FieldHeaders = std::uint64_t;

constexpr FieldHeaders bit_of(FieldHeader header)
{
    return FieldHeaders{1} << static_cast<unsigned>(header);
}

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
    l2_format{10, 38, 10}, arp_operation{10, 48, 6}, second_extension{10, 54, 8};
constexpr FieldPlace tcp_sequence_zero{11, 0, 1}, same_ip{11, 1, 1}, same_l4_port{11, 2, 1},
    vlan_format{11, 3, 2}, not_later_fragment{11, 5, 1}, drop{11, 6, 1}, source_hit{11, 7, 1},
    source_static{11, 8, 1}, destination_hit{11, 9, 1}, color{11, 10, 2}, dhcp{11, 12, 1},
    broadcast{11, 13, 1}, multicast{11, 14, 1}, has_l4_ports{11, 15, 1}, extension{11, 16, 8},
    extension_code{11, 24, 8};
constexpr FieldPlace ranges{12, 0, 64};
constexpr FieldPlace in_ports{13, 0, 64}, out_ports{15, 0, 64};  // two words each, the lower half first
constexpr FieldPlace in_port{17, 0, 8}, out_port{17, 8, 8}, in_trunk{17, 16, 16}, out_trunk{17, 32, 16},
    out_group{17, 48, 16};
constexpr FieldPlace arp_sender{18, 0, 32}, arp_target{18, 32, 32};
constexpr FieldPlace payload{19, 0, 64};

// From here on: what is only looked for where an entry asks for it.
constexpr FieldPlace label1{20, 0, 32}, label2{20, 32, 32}, label3{21, 0, 32}, control_word{21, 32, 32};
constexpr FieldPlace tunnel_type{22, 0, 24}, has_control_word{22, 24, 1}, has_router_alert{22, 25, 1},
    has_channel_label{22, 26, 1}, icmp_error{22, 27, 1}, l2_gre_type{22, 32, 16};
constexpr FieldPlace vxlan_flags{23, 0, 8}, vxlan_before{23, 8, 24}, vxlan_network{23, 32, 24},
    vxlan_behind{23, 56, 8};
constexpr FieldPlace virtual_subnet{24, 0, 24}, flow_id{24, 24, 8}, service_id{24, 32, 24};
constexpr FieldPlace llc{25, 0, 24}, snap{25, 24, 40};
constexpr FieldPlace inner_destination_mac{26, 0, 48}, inner_ether_type{26, 48, 16},
    inner_source_mac{27, 0, 48};
constexpr FieldPlace inner_source_ip{28, 0, 32}, inner_destination_ip{28, 32, 32};
constexpr FieldPlace inner_source_ip6{29, 0, 64}, inner_destination_ip6{31, 0, 64};  // two words each
constexpr FieldPlace inner_source_l4_port{33, 0, 16}, inner_destination_l4_port{33, 16, 16},
    inner_protocol{33, 32, 8}, inner_hops{33, 40, 8}, inner_service{33, 48, 8};
constexpr FieldPlace inner_flow_label{34, 0, 20}, inner_ip_type{34, 20, 21}, inner_ip_fragment{34, 41, 5};
constexpr FieldPlace priority{35, 0, 8}, is_routed{35, 8, 1}, forwarding_type{35, 16, 16},
    packet_result{35, 32, 8};
constexpr FieldPlace translated_outer_tag{36, 0, 16}, translated_inner_tag{36, 16, 16},
    translated_format{36, 32, 2}, vlan_is_valid{36, 34, 1}, are_translated{36, 35, 1};
constexpr FieldPlace classes{37, 0, 64};  // three words, of four classes each

constexpr unsigned data_words = 8;
constexpr FieldPlace data_holds{40, 0, data_words},
    data{41, 0, 64};  // that many words, a bit for the first of each

constexpr FieldPlace egress_object{50, 0, 32}, l3_group{50, 32, 32};
constexpr FieldPlace routing_table{51, 0, 16}, station_hit{51, 16, 1}, destination_is_host{51, 17, 1},
    destination_is_route{51, 18, 1}, source_is_host{51, 19, 1}, source_is_route{51, 20, 1},
    destination_is_local{51, 21, 1}, has_moved{51, 22, 1}, is_learnt{51, 23, 1}, is_replicated{51, 24, 1},
    is_first{51, 25, 1}, l3_ingress{51, 32, 32};
constexpr FieldPlace in_gport{52, 0, 32}, in_port_gport{52, 32, 32}, out_gport{53, 0, 32};
constexpr FieldPlace stage{53, 32, 16}, learn_vlan{53, 48, 12};
constexpr FieldPlace vlan_class{54, 0, 32}, incoming_class{54, 32, 32};  // that tables give
constexpr FieldPlace outgoing_class{55, 0, 32};

constexpr FieldPlace fibre_originator{49, 0, 16}, fibre_responder{49, 16, 16};
constexpr FieldPlace trill_ingress{55, 32, 16}, trill_egress{55, 48, 16};
constexpr FieldPlace trill_version{56, 0, 2}, trill_is_for_many{56, 2, 1}, trill_options{56, 3, 5},
    trill_hops{56, 8, 6}, fcoe_start{56, 16, 8}, fcoe_version_is_zero{56, 24, 1}, has_fabric_tag{56, 25, 1},
    inner_protocol_kind{56, 26, 12}, fabric_version{56, 38, 2}, fabric_priority{56, 40, 3},
    fabric_hops{56, 43, 8}, fabric{56, 51, 12};
constexpr FieldPlace fibre_destination{57, 0, 24}, fibre_routing{57, 24, 8}, fibre_source{57, 32, 24},
    fibre_class{57, 56, 8};
constexpr FieldPlace fibre_type{58, 0, 8}, fibre_frame{58, 8, 24}, fibre_data{58, 32, 8};

constexpr unsigned payload_bytes = 32;
constexpr FieldPlace payload_holds{59, 0, payload_bytes},  // a bit for each byte
    payload_word{60, 0, 64};                               // as many as hold them, the first byte uppermost
constexpr FieldPlace vn_tag{64, 0, 32}, i_tag{64, 32, 32}, e_tag{65, 0, 48}, cn_tag{65, 48, 16};
constexpr FieldPlace extended_channel{66, 0, 22}, incoming_extended_channel{66, 22, 20},
    maintenance_level{66, 42, 3}, is_only_gal{66, 45, 1}, label_control{66, 46, 7};
constexpr FieldPlace maintenance_bits{67, 0, 64};
constexpr FieldPlace channel{68, 0, 32}, bfd_discriminator{68, 32, 32};
constexpr FieldPlace maintenance{69, 0, 25}, outer_fibre_channel{69, 25, 6}, inner_fibre_channel{69, 31, 6};
constexpr FieldPlace lookup_class_of_port{73, 0, 32}, class_of_port{73, 32, 32},
    processing_class_of_port{74, 0, 32}, port_class{74, 32, 32};
constexpr FieldPlace source_l3_class{75, 0, 32},
    destination_l3_class{75, 32, 32};  // like port_class, also by entries
constexpr FieldPlace protocol_of{70, 0, 39}, header_format{71, 0, 31}, trill_payload{72, 0, 64};

/// Of byte `number` of a row of words, of which the first is uppermost.
constexpr FieldPlace byte_of(FieldPlace row, std::size_t number)
{
    return {static_cast<std::uint8_t>(row.word + number / 8),
            static_cast<std::uint8_t>(56 - 8 * (number % 8)), 8};
}

constexpr FieldPlace payload_byte(std::size_t number)
{
    return byte_of(payload_word, number);
}

constexpr std::size_t first_further_word = label1.word;
constexpr std::size_t words = source_l3_class.word + 1;

}  // namespace field_places

using FieldWord = std::uint64_t;

/// Classes that entries give packets, for entries of later stages; 0 for none.
enum class FieldClass : std::uint8_t {
    source,
    destination,
    flow,
    ingress,
    egress,
    l2_source,
    l2_destination,
    l3_source,
    l3_destination,
    port,
    user_defined,
    count
};

constexpr std::size_t field_classes = static_cast<std::size_t>(FieldClass::count);
constexpr unsigned field_class_bits = 16;
using FieldClasses = std::array<std::uint16_t, field_classes>;

constexpr FieldPlace class_place(FieldClass which)
{
    constexpr unsigned in_a_word = 4;
    const auto number = static_cast<unsigned>(which);
    return {static_cast<std::uint8_t>(field_places::classes.word + number / in_a_word),
            static_cast<std::uint8_t>(number % in_a_word * field_class_bits), field_class_bits};
}

constexpr FieldWord field_ones(unsigned width)
{
    return width >= 64 ? ~FieldWord{0} : (FieldWord{1} << width) - 1;
}

/// What is left of a frame behind the headers that were read.
struct FieldRest {
    const unsigned char *data = nullptr;
    std::size_t size = 0;

    bool has(std::size_t bytes) const { return size >= bytes; }
    void skip(std::size_t bytes)
    {
        data += bytes;
        size -= bytes;
    }
    /// What is behind the end by the packet's own length is filling.
    void end_at(std::size_t bytes) { size = size < bytes ? size : bytes; }
};

struct FieldKey {
    std::array<FieldWord, field_places::words> words = {};
    FieldHeaders headers = bit_of(FieldHeader::always);
    const unsigned char *ip = nullptr;  ///< in the frame, of a packet of either IP
    FieldRest behind_tags;              ///< what is behind the type, or the length in its place
    FieldRest logical_link;             ///< behind a length in place of the type
    FieldRest behind_type;
    FieldRest behind_ip;  ///< but of later fragments

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
    void has(FieldHeader header) { headers |= bit_of(header); }
    bool is(FieldHeader header) const { return (headers & bit_of(header)) != 0; }
};

/// Of bytes as they are sent.
inline FieldWord number_of(const unsigned char *bytes, std::size_t count)
{
    FieldWord number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        number = number << 8 | bytes[i];
    }
    return number;
}

/// Puts what is in the frame, whose tags are told as those of the port are.
void read_headers(ByteView frame, const PortTags &port, FieldKey &key);

/// Puts what a type and what is behind it say.
void read_type(unsigned type, const FieldRest &rest, FieldKey &key);

/// Puts what is further in: labels, tunnels and what they carry, logical links. After `read_headers`.
void read_further_headers(FieldKey &key);

/// Parts of that: what looks after links and paths, in a channel behind labels, of which the last says so or not, and
/// elsewhere; and what the packet is, by all of its headers.
void read_channel(FieldRest rest, bool is_labelled, FieldKey &key);
void read_maintenance(FieldKey &key);
void recognise(FieldKey &key);

/// What protocols the packet is of: a bit for each bcmFieldAppType*. Those of LLC and BFD need the further headers.
FieldWord protocols_of(const FieldKey &key);

}  // namespace sim
