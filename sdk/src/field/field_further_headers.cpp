/// What is further in than most entries look: MPLS labels, tunnels and the packets in them, and logical links.
#include "field_key.h"
#include "packet.h"

#include <bcm/field_values.h>

namespace sim {

namespace {

namespace at = field_places;

constexpr unsigned type_teb = 0x6558;  // Ethernet within GRE
constexpr unsigned type_mpls = 0x8847, type_mpls_multicast = 0x8848, type_trill = 0x22f3, type_mim = 0x88e7,
                   type_fcoe = 0x8906;
constexpr unsigned protocol_ip4 = 4, protocol_ip6 = 41, protocol_gre = 47, protocol_udp = 17;
constexpr unsigned least_type = 0x600;

void put_tunnel(int type, FieldKey &key)
{
    key.put(at::tunnel_type, FieldWord{1} << type);
}

/// Where something of a packet is, and where it is if the packet is carried by another.
struct InnerPlace {
    FieldPlace own, inner;
};

struct InnerHeader {
    FieldHeader own, inner;
};

/// The packet of that type, which another carries, read as any other.
void read_inner(unsigned type, const FieldRest &rest, FieldKey &key)
{
    static constexpr InnerPlace places[] = {
        {at::source_ip, at::inner_source_ip},
        {at::destination_ip, at::inner_destination_ip},
        {at::source_l4_port, at::inner_source_l4_port},
        {at::destination_l4_port, at::inner_destination_l4_port},
        {at::protocol, at::inner_protocol},
        {at::hops, at::inner_hops},
        {at::service, at::inner_service},
        {at::flow_label, at::inner_flow_label},
        {at::ip_type, at::inner_ip_type},
        {at::ip_fragment, at::inner_ip_fragment},
        {at::protocol_kind, at::inner_protocol_kind},
    };
    static constexpr InnerHeader headers[] = {
        {FieldHeader::ip4, FieldHeader::inner_ip4},
        {FieldHeader::ip6, FieldHeader::inner_ip6},
        {FieldHeader::ip, FieldHeader::inner_ip},
        {FieldHeader::l4_ports, FieldHeader::inner_l4_ports},
    };
    FieldKey carried;
    read_type(type, rest, carried);
    carried.put(at::ip_type, FieldWord{1} << bcmFieldIpTypeAny
                                 | FieldWord{!carried.is(FieldHeader::ip)} << bcmFieldIpTypeNonIp);
    for (const InnerPlace &place : places) {
        key.put(place.inner, carried.get(place.own));
    }
    for (unsigned half = 0; half < 2; ++half) {
        key.words[at::inner_source_ip6.word + half] = carried.words[at::source_ip6.word + half];
        key.words[at::inner_destination_ip6.word + half] = carried.words[at::destination_ip6.word + half];
    }
    for (const InnerHeader &header : headers) {
        if (carried.is(header.own)) {
            key.has(header.inner);
        }
    }
}

/// A frame that is carried, of which tags do not count.
void read_inner_ethernet(FieldRest rest, FieldKey &key)
{
    if (!rest.has(addresses_bytes + 2)) {
        return;
    }
    key.has(FieldHeader::inner_ethernet);
    key.put(at::inner_destination_mac, number_of(rest.data, address_bytes));
    key.put(at::inner_source_mac, number_of(rest.data + address_bytes, address_bytes));
    rest.skip(addresses_bytes);
    unsigned type = number_at(rest.data);
    if (type == type_vlan && rest.has(tag_bytes + 2)) {
        rest.skip(tag_bytes);
        type = number_at(rest.data);
    }
    rest.skip(2);
    key.put(at::inner_ether_type, type);
    if (type >= least_type) {
        read_inner(type, rest, key);
    }
}

void put_control(int kind, bool is_one, FieldKey &key)
{
    key.put(at::label_control, FieldWord{is_one} << kind);
}

void read_labels(FieldRest rest, FieldKey &key)
{
    struct Label {
        FieldHeader header;
        FieldPlace place;
    };
    static constexpr Label labels[] = {
        {FieldHeader::label1, at::label1},
        {FieldHeader::label2, at::label2},
        {FieldHeader::label3, at::label3},
    };
    constexpr unsigned router_alert = 1, generic_associated_channel = 13;
    put_tunnel(bcmFieldTunnelTypeMpls, key);
    bool is_last = false, tells_channel = false;
    for (std::size_t i = 0; !is_last; ++i) {
        if (!rest.has(4)) {
            return;
        }
        const FieldWord entry = number_of(rest.data, 4);
        const FieldWord label = entry >> 12;
        rest.skip(4);
        if (i < std::size(labels)) {
            key.put(labels[i].place, entry);
            key.has(labels[i].header);
        }
        key.put(at::has_router_alert, label == router_alert);
        key.put(at::has_channel_label, label == generic_associated_channel);
        is_last = (entry >> 8 & 1) != 0;
        tells_channel = is_last && label == generic_associated_channel;
        key.put(at::is_only_gal, i == 0 && tells_channel);
    }
    put_control(bcmFieldMplsOamControlGal, tells_channel, key);
    put_control(bcmFieldMplsOamControlRouterAlert, key.get(at::has_router_alert) != 0, key);
    put_control(bcmFieldMplsOamControlTtlExpired, (key.get(at::label1) & 0xff) <= 1, key);
    // What follows says by its first bits what it is.
    const unsigned version = rest.has(4) ? rest.data[0] >> 4 : 0xfu;
    if (version == 0) {
        key.put(at::has_control_word, 1);
        key.put(at::control_word, number_of(rest.data, 4));
    } else if (version == 1) {
        put_control(tells_channel ? bcmFieldMplsOamControlGalAndAch : bcmFieldMplsOamControlAch, true, key);
        read_channel(rest, tells_channel, key);
    } else if (version == 4 || version == 6) {
        read_inner(version == 4 ? type_ip4 : type_ip6, rest, key);
        constexpr FieldWord ping = 3503;
        put_control(
            bcmFieldMplsOamControlLspPing,
            key.get(at::inner_protocol) == protocol_udp && key.get(at::inner_destination_l4_port) == ping,
            key);
    }
}

void read_gre(FieldRest rest, FieldKey &key)
{
    constexpr unsigned has_checksum = 0x8000, has_key = 0x2000, has_sequence = 0x1000, unknown = 0x4fff;
    if (!rest.has(4) || (number_at(rest.data) & unknown) != 0) {
        return;
    }
    const unsigned flags = number_at(rest.data), type = number_at(rest.data + 2);
    const auto size_of = [&](unsigned flag) { return (flags & flag) != 0 ? std::size_t{4} : 0; };
    const std::size_t before_key = 4 + size_of(has_checksum);
    const std::size_t size = before_key + size_of(has_key) + size_of(has_sequence);
    if (!rest.has(size)) {
        return;
    }
    put_tunnel(key.is(FieldHeader::ip4) ? bcmFieldTunnelTypeGreIp4 : bcmFieldTunnelTypeGreIp6, key);
    if (type == type_teb) {
        put_tunnel(bcmFieldTunnelTypeL2Gre, key);
        key.has(FieldHeader::l2_gre);
        key.put(at::l2_gre_type, type);
        if ((flags & has_key) != 0) {
            put_tunnel(bcmFieldTunnelTypeNvgre, key);
            key.put(at::virtual_subnet, number_of(rest.data + before_key, 3));
            key.put(at::flow_id, rest.data[before_key + 3]);
        }
    }
    rest.skip(size);
    if (type == type_teb) {
        read_inner_ethernet(rest, key);
    } else {
        read_inner(type, rest, key);
    }
}

void read_udp_tunnel(FieldRest rest, FieldKey &key)
{
    constexpr std::size_t udp_bytes = 8, vxlan_bytes = 8;
    rest.skip(udp_bytes);
    switch (key.get(at::destination_l4_port)) {
    case 4789:
        if (!rest.has(vxlan_bytes)) {
            return;
        }
        put_tunnel(bcmFieldTunnelTypeVxlan, key);
        key.has(FieldHeader::vxlan);
        key.put(at::vxlan_flags, rest.data[0]);
        key.put(at::vxlan_before, number_of(rest.data + 1, 3));
        key.put(at::vxlan_network, number_of(rest.data + 4, 3));
        key.put(at::vxlan_behind, rest.data[7]);
        rest.skip(vxlan_bytes);
        read_inner_ethernet(rest, key);
        return;
    case 6081:
        put_tunnel(bcmFieldTunnelTypeGeneve, key);
        return;
    case 2152:
        put_tunnel(bcmFieldTunnelTypeGtp, key);
        return;
    case 5246:
    case 5247:
        put_tunnel(bcmFieldTunnelTypeCapwap, key);
        return;
    default:
        return;
    }
}

void read_in_ip(FieldKey &key)
{
    const bool is_ip4 = key.is(FieldHeader::ip4);
    switch (key.get(at::protocol)) {
    case protocol_ip4:
        put_tunnel(bcmFieldTunnelTypeIp, key);
        put_tunnel(is_ip4 ? bcmFieldTunnelTypeIp4InIp4 : bcmFieldTunnelTypeIp4InIp6, key);
        read_inner(type_ip4, key.behind_ip, key);
        return;
    case protocol_ip6:
        put_tunnel(bcmFieldTunnelTypeIp, key);
        put_tunnel(is_ip4 ? bcmFieldTunnelTypeIp6InIp4 : bcmFieldTunnelTypeIp6InIp6, key);
        read_inner(type_ip6, key.behind_ip, key);
        return;
    case protocol_gre:
        read_gre(key.behind_ip, key);
        return;
    default:
        if (key.is(FieldHeader::udp)) {
            read_udp_tunnel(key.behind_ip, key);
        }
    }
}

/// The header is read though no bridge here takes part in TRILL.
void read_trill(FieldRest rest, FieldKey &key)
{
    constexpr std::size_t header_bytes = 6, option_bytes = 4;
    if (!rest.has(header_bytes)) {
        return;
    }
    const unsigned first = number_at(rest.data), options = first >> 6;
    key.has(FieldHeader::trill);
    key.put(at::trill_version, first >> 14);
    key.put(at::trill_is_for_many, first >> 11);
    key.put(at::trill_options, options);
    key.put(at::trill_hops, first);
    key.put(at::trill_egress, number_at(rest.data + 2));
    key.put(at::trill_ingress, number_at(rest.data + 4));
    FieldRest behind = rest;
    behind.skip(header_bytes);
    if (behind.has(8)) {
        key.put(at::trill_payload, number_of(behind.data, 8));
        key.has(FieldHeader::trill_payload);
    }
    const std::size_t before_frame = header_bytes + option_bytes * key.get(at::trill_options);
    if (rest.has(before_frame)) {
        rest.skip(before_frame);
        read_inner_ethernet(rest, key);
    }
}

/// The tag of a virtual fabric, if the Fibre Channel frame begins with one.
void read_fabric_tag(FieldRest &rest, FieldKey &key)
{
    constexpr std::size_t tag_size = 8;
    constexpr unsigned of_tag = 0x50;  // in place of the routing control
    if (!rest.has(tag_size) || rest.data[0] != of_tag) {
        return;
    }
    const unsigned priority_and_fabric = number_at(rest.data + 2);
    key.has(FieldHeader::fabric_tag);
    key.put(at::fabric_version, rest.data[1] >> 6);
    key.put(at::fabric_priority, priority_and_fabric >> 13);
    key.put(at::fabric, priority_and_fabric >> 1);
    key.put(at::fabric_hops, rest.data[4]);
    rest.skip(tag_size);
}

/// The kind of a Fibre Channel header, and how long it is if others follow.
int fibre_channel_kind(const FieldRest &rest, std::size_t *extended)
{
    struct Extended {
        unsigned routing;
        int kind;
        std::size_t bytes;
    };
    static constexpr Extended all[] = {
        {0x50, bcmFieldFibreChanVirtual, 8},
        {0x51, bcmFieldFibreChanRouted, 8},
        {0x52, bcmFieldFibreChanEncap, 24},
    };
    for (const Extended &each : all) {
        if (rest.has(each.bytes) && rest.data[0] == each.routing) {
            *extended = each.bytes;
            return each.kind;
        }
    }
    *extended = 0;
    return rest.has(24) ? bcmFieldFibreChanStandard : bcmFieldFibreChanNone;
}

void put_fibre_channel_kinds(FieldRest rest, FieldKey &key)
{
    std::size_t extended = 0;
    key.put(at::outer_fibre_channel, FieldWord{1} << fibre_channel_kind(rest, &extended));
    rest.skip(extended);
    const int inner = extended != 0 ? fibre_channel_kind(rest, &extended) : bcmFieldFibreChanNone;
    key.put(at::inner_fibre_channel, FieldWord{1} << inner);
}

void read_fcoe(FieldRest rest, FieldKey &key)
{
    constexpr std::size_t encapsulation_bytes = 14, header_bytes = 24;
    if (!rest.has(encapsulation_bytes)) {
        return;
    }
    key.has(FieldHeader::fcoe);
    key.put(at::fcoe_version_is_zero, rest.data[0] >> 4 == 0);
    key.put(at::fcoe_start, rest.data[encapsulation_bytes - 1]);
    rest.skip(encapsulation_bytes);
    put_fibre_channel_kinds(rest, key);
    read_fabric_tag(rest, key);
    if (!rest.has(header_bytes)) {
        return;
    }
    const unsigned char *const header = rest.data;
    key.has(FieldHeader::fibre_channel);
    key.put(at::has_fabric_tag, key.is(FieldHeader::fabric_tag));
    key.put(at::fibre_routing, header[0]);
    key.put(at::fibre_destination, number_of(header + 1, 3));
    key.put(at::fibre_class, header[4]);
    key.put(at::fibre_source, number_of(header + 5, 3));
    key.put(at::fibre_type, header[8]);
    key.put(at::fibre_frame, number_of(header + 9, 3));
    key.put(at::fibre_data, header[13]);
    key.put(at::fibre_originator, number_at(header + 16));
    key.put(at::fibre_responder, number_at(header + 18));
}

void read_logical_link(FieldKey &key)
{
    constexpr FieldWord to_snap = 0xaaaa03;
    const FieldRest &rest = key.logical_link;
    if (!rest.has(3)) {
        return;
    }
    key.has(FieldHeader::llc);
    key.put(at::llc, number_of(rest.data, 3));
    if (key.get(at::llc) == to_snap && rest.has(8)) {
        key.has(FieldHeader::snap);
        key.put(at::snap, number_of(rest.data + 3, 5));
    }
}

/// The bytes that bcm_field_qualify_L2PayLoad asks for.
void read_payload(FieldKey &key)
{
    const FieldRest &rest = key.behind_tags;
    for (unsigned i = 0; i < at::payload_bytes && rest.has(i + 1); ++i) {
        key.put(at::payload_byte(i), rest.data[i]);
        key.words[at::payload_holds.word] |= FieldWord{1} << i;
    }
}

/// Whether it tells of what became of another packet.
bool tells_of_error(const FieldKey &key)
{
    const FieldWord type = key.get(at::type_code) >> 8;
    return key.is(FieldHeader::icmp)
           && (key.is(FieldHeader::ip6) ? type < 128
                                        : type == 3 || type == 4 || type == 5 || type == 11 || type == 12);
}

/// Tags that stand in place of a type, of which none is taken off.
void read_other_tag(FieldWord type, const FieldRest &rest, FieldKey &key)
{
    constexpr FieldWord type_vn = 0x8926, type_e = 0x893f, type_cn = 0x22e9;
    if (type == type_vn && rest.has(4)) {
        key.put(at::vn_tag, number_of(rest.data, 4));
        key.has(FieldHeader::vn_tag);
    } else if (type == type_cn && rest.has(2)) {
        key.put(at::cn_tag, number_at(rest.data));
        key.has(FieldHeader::cn_tag);
    } else if (type == type_e && rest.has(6)) {
        const FieldWord tag = number_of(rest.data, 6);
        key.put(at::e_tag, tag);
        key.has(FieldHeader::e_tag);
        // The extensions of both channels are in its last two bytes.
        key.put(at::extended_channel, (tag >> 16 & 0x3fff) << 8 | (tag & 0xff));
        key.put(at::incoming_extended_channel, (tag >> 32 & 0xfff) << 8 | (tag >> 8 & 0xff));
    }
}

}  // namespace

void read_further_headers(FieldKey &key)
{
    read_payload(key);
    read_logical_link(key);
    key.put(at::icmp_error, tells_of_error(key));
    const FieldWord type = key.is(FieldHeader::ether_type) ? key.get(at::ether_type) : 0;
    if (key.behind_ip.data != nullptr) {
        read_in_ip(key);
    } else if (type == type_mpls || type == type_mpls_multicast) {
        read_labels(key.behind_type, key);
    } else if (type == type_trill) {
        put_tunnel(bcmFieldTunnelTypeTrill, key);
        read_trill(key.behind_type, key);
    } else if (type == type_fcoe) {
        read_fcoe(key.behind_type, key);
    } else if (type == type_mim && key.behind_type.has(4)) {
        put_tunnel(bcmFieldTunnelTypeMim, key);
        key.has(FieldHeader::i_tag);
        key.put(at::service_id, number_of(key.behind_type.data + 1, 3));
        key.put(at::i_tag, number_of(key.behind_type.data, 4));
        FieldRest rest = key.behind_type;
        rest.skip(4);
        read_inner_ethernet(rest, key);
    }
    read_other_tag(type, key.behind_type, key);
    read_maintenance(key);
    recognise(key);
    if (key.get(at::tunnel_type) == 0) {
        put_tunnel(bcmFieldTunnelTypeNone, key);
    }
    put_tunnel(bcmFieldTunnelTypeAny, key);
    if (key.get(at::label_control) == 0) {
        put_control(bcmFieldMplsOamControlNone, true, key);
    }
    if (!key.is(FieldHeader::fcoe)) {
        key.put(at::outer_fibre_channel, FieldWord{1} << bcmFieldFibreChanNone);
        key.put(at::inner_fibre_channel, FieldWord{1} << bcmFieldFibreChanNone);
    }
    key.put(at::outer_fibre_channel, FieldWord{1} << bcmFieldFibreChanAny);
    key.put(at::inner_fibre_channel, FieldWord{1} << bcmFieldFibreChanAny);
}

}  // namespace sim
