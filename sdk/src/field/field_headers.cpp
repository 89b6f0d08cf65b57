#include "field_key.h"

#include "packet.h"
#include "port_tags.h"

#include <bcm/field_types.h>

#include <algorithm>
#include <cstring>

namespace sim {

namespace {

namespace at = field_places;

constexpr unsigned least_type = 0x600;  // below, it is a length
constexpr unsigned type_arp = 0x0806, type_rarp = 0x8035, type_mpls = 0x8847, type_mpls_multicast = 0x8848,
                   type_trill = 0x22f3, type_mim = 0x88e7, type_pppoe_discovery = 0x8863, type_pppoe = 0x8864,
                   type_cn = 0x22e9, type_fcoe = 0x8906;
constexpr unsigned protocol_icmp = 1, protocol_igmp = 2, protocol_tcp = 6, protocol_udp = 17,
                   protocol_gre = 47, protocol_esp = 50, protocol_ah = 51, protocol_icmp6 = 58,
                   protocol_ospf = 89, protocol_sctp = 132;
constexpr unsigned next_hop_by_hop = 0, next_routing = 43, next_fragment = 44, next_options = 60;

constexpr FieldWord bit(int kind)
{
    return FieldWord{1} << kind;
}

using Rest = FieldRest;

/// Where the parts of a tag go.
struct TagPlaces {
    FieldHeader header;
    FieldPlace type, content;
    unsigned format;
};

void read_tag(const TagPlaces &places, Rest &rest, FieldKey &key)
{
    if (!rest.has(tag_bytes + 2)) {
        return;
    }
    key.put(places.type, number_at(rest.data));
    key.put(places.content, number_at(rest.data + 2));
    key.put(at::vlan_format, places.format);
    key.has(places.header);
    rest.skip(tag_bytes);
}

void read_l4(unsigned protocol, Rest rest, bool is_ip6, FieldKey &key)
{
    const bool has_ports = protocol == protocol_tcp || protocol == protocol_udp || protocol == protocol_sctp;
    if (has_ports && rest.has(4)) {
        const unsigned from = number_at(rest.data), to = number_at(rest.data + 2);
        key.put(at::source_l4_port, from);
        key.put(at::destination_l4_port, to);
        key.put(at::same_l4_port, from == to);
        key.put(at::has_l4_ports, 1);
        key.has(FieldHeader::l4_ports);
    }
    if (protocol == protocol_tcp && rest.has(20)) {
        key.put(at::tcp_sequence_zero, number_of(rest.data + 4, 4) == 0);
        key.put(at::tcp_header, rest.data[12] >> 4);
        key.put(at::tcp_flags, rest.data[13]);
        key.has(FieldHeader::tcp);
    } else if (protocol == protocol_udp && rest.has(8)) {
        const unsigned from = number_at(rest.data), to = number_at(rest.data + 2);
        const auto is_server_or_client = [is_ip6](unsigned port) {
            return is_ip6 ? port == 546 || port == 547 : port == 67 || port == 68;
        };
        key.put(at::dhcp, is_server_or_client(from) && is_server_or_client(to));
        key.has(FieldHeader::udp);
    } else if (protocol == (is_ip6 ? protocol_icmp6 : protocol_icmp) && rest.has(4)) {
        key.put(at::type_code, number_at(rest.data));
        key.has(FieldHeader::icmp);
    } else if (protocol == protocol_igmp && !is_ip6 && rest.has(8)) {
        key.put(at::type_code, number_at(rest.data));
        key.has(FieldHeader::igmp);
    }
}

void put_protocol(unsigned protocol, FieldKey &key)
{
    struct Kind {
        unsigned protocol;
        FieldWord bits;
    };
    static constexpr Kind kinds[] = {
        {protocol_tcp, bit(bcmFieldIpProtocolCommonTcp) | bit(bcmFieldIpProtocolCommonTcpUdp)},
        {protocol_udp, bit(bcmFieldIpProtocolCommonUdp) | bit(bcmFieldIpProtocolCommonTcpUdp)},
        {protocol_igmp, bit(bcmFieldIpProtocolCommonIgmp)},
        {protocol_icmp, bit(bcmFieldIpProtocolCommonIcmp)},
        {protocol_icmp6, bit(bcmFieldIpProtocolCommonIp6Icmp)},
        {protocol_sctp, bit(bcmFieldIpProtocolCommonSctp)},
        {protocol_gre, bit(bcmFieldIpProtocolCommonGre)},
        {protocol_esp, bit(bcmFieldIpProtocolCommonEsp)},
        {protocol_ah, bit(bcmFieldIpProtocolCommonAh)},
        {protocol_ospf, bit(bcmFieldIpProtocolCommonOspf)},
    };
    key.put(at::protocol, protocol);
    for (const Kind &kind : kinds) {
        if (kind.protocol == protocol) {
            key.put(at::protocol_kind, kind.bits);
        }
    }
}

/// Which piece of a packet it is, by where it begins and whether more follow. True for the first, or all of it.
bool put_fragment(unsigned offset, bool more, FieldKey &key)
{
    const bool is_whole = offset == 0 && !more;
    key.put(at::not_later_fragment, offset == 0);
    key.put(at::ip_fragment,
            is_whole      ? bit(bcmFieldIpFragNon) | bit(bcmFieldIpFragNonOrFirst)
            : offset == 0 ? bit(bcmFieldIpFragFirst) | bit(bcmFieldIpFragNonOrFirst) | bit(bcmFieldIpFragAny)
                          : bit(bcmFieldIpFragNotFirst) | bit(bcmFieldIpFragAny));
    return offset == 0;
}

void read_ip4(Rest rest, FieldKey &key)
{
    const std::size_t header = rest.has(20) ? std::size_t{4} * (rest.data[0] & 15) : 0;
    if (header < 20 || rest.data[0] >> 4 != 4 || !rest.has(header)) {
        return;
    }
    const unsigned char *ip = rest.data;
    const FieldWord from = number_of(ip + 12, 4), to = number_of(ip + 16, 4);
    const bool has_options = header > 20;
    key.ip = ip;
    key.has(FieldHeader::ip4);
    key.has(FieldHeader::ip);
    key.put(at::ip_type, bit(bcmFieldIpTypeIp) | bit(bcmFieldIpTypeIpv4Any) | bit(bcmFieldIpTypeIpv4Not6)
                             | bit(has_options ? bcmFieldIpTypeIpv4WithOpts : bcmFieldIpTypeIpv4NoOpts));
    key.put(at::service, ip[1]);
    key.put(at::ip_flags, ip[6] >> 5 & 3);
    key.put(at::hops, ip[8]);
    key.put(at::source_ip, from);
    key.put(at::destination_ip, to);
    key.put(at::same_ip, from == to);
    const unsigned flags_and_offset = number_at(ip + 6), protocol = ip[9];
    put_protocol(protocol, key);
    const bool is_first = put_fragment(flags_and_offset & 0x1fff, (flags_and_offset & 0x2000) != 0, key);
    const std::size_t length = number_at(ip + 2);
    rest.end_at(std::max(length, header));
    rest.skip(header);
    if (is_first) {
        key.behind_ip = rest;
        read_l4(protocol, rest, false, key);
    }
}

void read_ip6(Rest rest, FieldKey &key)
{
    if (!rest.has(40) || rest.data[0] >> 4 != 6) {
        return;
    }
    const unsigned char *ip = rest.data;
    key.ip = ip;
    key.has(FieldHeader::ip6);
    key.has(FieldHeader::ip);
    key.put(at::service, number_at(ip) >> 4);
    key.put(at::flow_label, number_of(ip, 4));
    key.put(at::hops, ip[7]);
    for (unsigned half = 0; half < 2; ++half) {
        key.words[at::source_ip6.word + half] = number_of(ip + 8 + std::size_t{8} * half, 8);
        key.words[at::destination_ip6.word + half] = number_of(ip + 24 + std::size_t{8} * half, 8);
    }
    key.put(at::same_ip, std::memcmp(ip + 8, ip + 24, 16) == 0);
    unsigned next = ip[6], extensions = 0;
    const std::size_t length = number_at(ip + 4);
    rest.skip(40);
    rest.end_at(length);
    bool is_first = true, has_fragment = false;
    const unsigned first = next;
    for (; rest.has(8); ++extensions) {
        const unsigned current = next, code = rest.data[2];
        if (next == next_hop_by_hop || next == next_routing || next == next_options) {
            const std::size_t size = std::size_t{8} * (rest.data[1] + 1u);
            if (!rest.has(size)) {
                break;
            }
            next = rest.data[0];
            rest.skip(size);
        } else if (next == next_fragment) {
            const unsigned offset_and_more = number_at(rest.data + 2);
            has_fragment = true;
            is_first = put_fragment(offset_and_more >> 3, (offset_and_more & 1) != 0, key);
            next = rest.data[0];
            rest.skip(8);
        } else {
            break;
        }
        if (extensions == 1) {
            key.put(at::second_extension, current);
        } else if (extensions == 0 && current != next_fragment) {
            key.put(at::extension_code, code);
        }
        if (!is_first) {
            ++extensions;
            break;
        }
    }
    if (!has_fragment) {
        put_fragment(0, false, key);
    }
    key.put(at::extension, extensions != 0 ? first : 0);
    put_protocol(next, key);
    if (first == next_hop_by_hop) {
        key.put(at::protocol_kind, bit(bcmFieldIpProtocolCommonIp6HopByHop));
    }
    key.put(at::ip_type, bit(bcmFieldIpTypeIp) | bit(bcmFieldIpTypeIpv6) | bit(bcmFieldIpTypeIpv6Not4)
                             | (extensions == 0   ? bit(bcmFieldIpTypeIpv6NoExtHdr)
                                : extensions == 1 ? bit(bcmFieldIpTypeIpv6OneExtHdr)
                                                  : bit(bcmFieldIpTypeIpv6TwoExtHdr)));
    if (is_first) {
        key.behind_ip = rest;
        read_l4(next, rest, true, key);
    }
}

void read_arp(const Rest &rest, FieldKey &key)
{
    constexpr unsigned char over_ethernet[] = {0, 1, 8, 0, 6, 4};
    if (!rest.has(28) || std::memcmp(rest.data, over_ethernet, sizeof over_ethernet) != 0) {
        return;
    }
    static constexpr int operations[] = {-1,
                                         bcmFieldArpOpcodeRequest,
                                         bcmFieldArpOpcodeReply,
                                         bcmFieldArpOpcodeReverseRequest,
                                         bcmFieldArpOpcodeReverseReply,
                                         -1,
                                         -1,
                                         -1,
                                         bcmFieldArpOpcodeInverseRequest,
                                         bcmFieldArpOpcodeInverseReply};
    const unsigned operation = number_at(rest.data + 6);
    key.has(FieldHeader::arp);
    if (operation < std::size(operations) && operations[operation] >= 0) {
        key.put(at::arp_operation, bit(operations[operation]));
    }
    key.put(at::ip_type, operation == 1   ? bit(bcmFieldIpTypeArp) | bit(bcmFieldIpTypeArpRequest)
                         : operation == 2 ? bit(bcmFieldIpTypeArp) | bit(bcmFieldIpTypeArpReply)
                                          : bit(bcmFieldIpTypeArp));
    key.put(at::arp_sender, number_of(rest.data + 14, 4));
    key.put(at::arp_target, number_of(rest.data + 24, 4));
}

/// What is told by the EtherType alone.
void put_type(unsigned type, FieldKey &key)
{
    struct Kind {
        unsigned type;
        FieldPlace place;
        int kind;
    };
    static constexpr Kind kinds[] = {
        {type_mpls, at::ip_type, bcmFieldIpTypeMplsUnicast},
        {type_mpls_multicast, at::ip_type, bcmFieldIpTypeMplsMulticast},
        {type_trill, at::ip_type, bcmFieldIpTypeTrill},
        {type_mim, at::ip_type, bcmFieldIpTypeMim},
        {type_fcoe, at::ip_type, bcmFieldIpTypeFibreChan},
        {type_mim, at::l2_format, bcmFieldL2FormatMim},
        {type_pppoe, at::l2_format, bcmFieldL2FormatPPPoE},
        {type_pppoe_discovery, at::l2_format, bcmFieldL2FormatPPPoE},
        {type_cn, at::l2_format, bcmFieldL2FormatCnTag},
        {type_fcoe, at::l2_format, bcmFieldL2FormatFibreChan},
    };
    key.put(at::ether_type, type);
    key.has(FieldHeader::ether_type);
    for (const Kind &kind : kinds) {
        if (kind.type == type) {
            key.put(kind.place, bit(kind.kind));
        }
    }
}

}  // namespace

void read_type(unsigned type, const FieldRest &rest, FieldKey &key)
{
    put_type(type, key);
    key.behind_type = rest;
    if (type == type_ip4) {
        read_ip4(rest, key);
    } else if (type == type_ip6) {
        read_ip6(rest, key);
    } else if (type == type_arp || type == type_rarp) {
        read_arp(rest, key);
    }
}

namespace {

/// A frame with its length in place of a type.
void read_llc(unsigned length, Rest rest, FieldKey &key)
{
    rest.end_at(length);
    key.logical_link = rest;
    constexpr unsigned char snap[] = {0xaa, 0xaa, 3};
    key.put(at::l2_format, bit(bcmFieldL2Format802dot3));
    if (!rest.has(sizeof snap)) {
        return;
    }
    if (!rest.has(8) || std::memcmp(rest.data, snap, sizeof snap) != 0) {
        key.put(at::l2_format, bit(bcmFieldL2FormatLlc));
        return;
    }
    const FieldWord organisation = number_of(rest.data + 3, 3);
    const unsigned type = number_at(rest.data + 6);
    key.put(at::l2_format, bit(organisation == 0 ? bcmFieldL2FormatSnap : bcmFieldL2FormatSnapPrivate));
    rest.skip(8);
    if (organisation == 0 && type >= least_type) {
        read_type(type, rest, key);
    }
}

}  // namespace

void read_headers(ByteView frame, const PortTags &port, FieldKey &key)
{
    key.put(at::destination_mac, number_of(frame.data, 6));
    key.put(at::source_mac, number_of(frame.data + address_bytes, 6));
    const bool is_for_all = is_broadcast(frame.data);
    key.put(at::broadcast, is_for_all);
    key.put(at::multicast, is_group(frame.data) && !is_for_all);
    key.put(at::packet_length, length_with_checksum(frame));
    key.put(at::ip_type, bit(bcmFieldIpTypeAny));
    key.put(at::l2_format, bit(bcmFieldL2FormatAny));

    Rest rest{frame.data + addresses_bytes, frame.size - addresses_bytes};
    const bool to_customers = port.dtag_mode == BCM_PORT_DTAG_MODE_EXTERNAL;
    if (!to_customers && port.is_outer(number_at(rest.data))) {
        read_tag({FieldHeader::outer_tag, at::outer_tpid, at::outer_tag, BCM_FIELD_VLAN_FORMAT_OUTER_TAGGED},
                 rest, key);
    }
    const unsigned next = number_at(rest.data);
    if (next == port.inner_type || (to_customers && port.is_outer(next))) {
        read_tag({FieldHeader::inner_tag, at::inner_tpid, at::inner_tag, BCM_FIELD_VLAN_FORMAT_INNER_TAGGED},
                 rest, key);
    }
    const unsigned type = number_at(rest.data);
    rest.skip(2);
    key.behind_tags = rest;
    if (rest.has(8)) {
        key.put(at::payload, number_of(rest.data, 8));
        key.has(FieldHeader::payload);
    }
    if (type < least_type) {
        read_llc(type, rest, key);
    } else {
        key.put(at::l2_format, bit(bcmFieldL2FormatEthII));
        read_type(type, rest, key);
    }
    if (!key.is(FieldHeader::ip)) {
        key.put(at::ip_type, bit(bcmFieldIpTypeNonIp));
    }
}

}  // namespace sim
