/// What packets are recognised as, by all of their headers: protocols, and the kind of packet by its headers.
#include "field_key.h"
#include "packet.h"

#include <bcm/field_values.h>

#include <algorithm>

namespace sim {

namespace {

namespace at = field_places;
using Header = FieldHeader;

constexpr unsigned type_arp = 0x0806, type_oam = 0x8902;
constexpr FieldWord to_all_bridges = 0x0180c2000000, link_of_bridges = 0x424203, link_of_systems = 0xfefe03;
constexpr FieldPlace icmp_type{at::type_code.word, at::type_code.shift + 8, 8};

constexpr FieldWord bit(int kind)
{
    return FieldWord{1} << kind;
}

constexpr FieldHeaders both(Header one, Header other)
{
    return bit_of(one) | bit_of(other);
}

/// What packets have that have those headers, and the number at the place.
struct Sign {
    int kind;
    FieldHeaders headers;
    FieldPlace place;
    FieldWord number;
};

constexpr FieldPlace nothing{0, 0, 0};

constexpr Sign protocols[] = {
    {bcmFieldAppTypeArp, bit_of(Header::ether_type), at::ether_type, type_arp},
    {bcmFieldAppTypeRarp, bit_of(Header::ether_type), at::ether_type, 0x8035},
    {bcmFieldAppTypeLldp, bit_of(Header::ether_type), at::ether_type, type_lldp},
    {bcmFieldAppTypeEapol, bit_of(Header::ether_type), at::ether_type, type_eapol},
    {bcmFieldAppTypeSlowProtocol, bit_of(Header::ether_type), at::ether_type, type_slow},
    {bcmFieldAppTypeCfm, bit_of(Header::ether_type), at::ether_type, type_oam},
    {bcmFieldAppTypeMvrp, bit_of(Header::ether_type), at::ether_type, 0x88f5},
    {bcmFieldAppTypeMmrp, bit_of(Header::ether_type), at::ether_type, 0x88f6},
    {bcmFieldAppTypeMsrp, bit_of(Header::ether_type), at::ether_type, 0x22ea},
    {bcmFieldAppTypePtp, bit_of(Header::ether_type), at::ether_type, 0x88f7},
    {bcmFieldAppTypePtpOverIp4, both(Header::udp, Header::ip4), at::destination_l4_port, 319},
    {bcmFieldAppTypePtpOverIp4, both(Header::udp, Header::ip4), at::destination_l4_port, 320},
    {bcmFieldAppTypePtpOverIp6, both(Header::udp, Header::ip6), at::destination_l4_port, 319},
    {bcmFieldAppTypePtpOverIp6, both(Header::udp, Header::ip6), at::destination_l4_port, 320},
    {bcmFieldAppTypeDhcp4, both(Header::udp, Header::ip4), at::dhcp, 1},
    {bcmFieldAppTypeDhcp6, both(Header::udp, Header::ip6), at::dhcp, 1},
    {bcmFieldAppTypeIgmp, bit_of(Header::igmp), nothing, 0},
    {bcmFieldAppTypeMld, both(Header::icmp, Header::ip6), icmp_type, 130},
    {bcmFieldAppTypeMld, both(Header::icmp, Header::ip6), icmp_type, 131},
    {bcmFieldAppTypeMld, both(Header::icmp, Header::ip6), icmp_type, 132},
    {bcmFieldAppTypeMld, both(Header::icmp, Header::ip6), icmp_type, 143},
    {bcmFieldAppTypeIcmp4, both(Header::icmp, Header::ip4), nothing, 0},
    {bcmFieldAppTypeIcmp6, both(Header::icmp, Header::ip6), nothing, 0},
    {bcmFieldAppTypeRouterSolicitation, both(Header::icmp, Header::ip6), icmp_type, 133},
    {bcmFieldAppTypeRouterAdvertisement, both(Header::icmp, Header::ip6), icmp_type, 134},
    {bcmFieldAppTypeNeighborSolicitation, both(Header::icmp, Header::ip6), icmp_type, 135},
    {bcmFieldAppTypeNeighborAdvertisement, both(Header::icmp, Header::ip6), icmp_type, 136},
    {bcmFieldAppTypeBgp, bit_of(Header::tcp), at::source_l4_port, 179},
    {bcmFieldAppTypeBgp, bit_of(Header::tcp), at::destination_l4_port, 179},
    {bcmFieldAppTypeOspf, bit_of(Header::ip), at::protocol, 89},
    {bcmFieldAppTypeRip, both(Header::udp, Header::ip4), at::destination_l4_port, 520},
    {bcmFieldAppTypeRip, both(Header::udp, Header::ip6), at::destination_l4_port, 521},
    {bcmFieldAppTypePim, bit_of(Header::ip), at::protocol, 103},
    {bcmFieldAppTypeVrrp, bit_of(Header::ip), at::protocol, 112},
    {bcmFieldAppTypeRsvp, bit_of(Header::ip), at::protocol, 46},
    {bcmFieldAppTypeLdp, bit_of(Header::udp), at::destination_l4_port, 646},
    {bcmFieldAppTypeLdp, bit_of(Header::tcp), at::source_l4_port, 646},
    {bcmFieldAppTypeLdp, bit_of(Header::tcp), at::destination_l4_port, 646},
    {bcmFieldAppTypeBfd, bit_of(Header::bfd), nothing, 0},
    {bcmFieldAppTypeDns, bit_of(Header::udp), at::source_l4_port, 53},
    {bcmFieldAppTypeDns, bit_of(Header::udp), at::destination_l4_port, 53},
    {bcmFieldAppTypeDns, bit_of(Header::tcp), at::source_l4_port, 53},
    {bcmFieldAppTypeDns, bit_of(Header::tcp), at::destination_l4_port, 53},
    {bcmFieldAppTypeIsIs, bit_of(Header::llc), at::llc, link_of_systems},
};

/// Of these, the first one counts.
constexpr Sign formats[] = {
    {bcmFieldHeaderFormatVxlan, bit_of(Header::vxlan), nothing, 0},
    {bcmFieldHeaderFormatGre, bit_of(Header::ip4), at::tunnel_type, bit(bcmFieldTunnelTypeGreIp4)},
    {bcmFieldHeaderFormatGre, bit_of(Header::ip6), at::tunnel_type, bit(bcmFieldTunnelTypeGreIp6)},
    {bcmFieldHeaderFormatIp4InIp4, bit_of(Header::ip4), at::tunnel_type, bit(bcmFieldTunnelTypeIp4InIp4)},
    {bcmFieldHeaderFormatIp6InIp4, bit_of(Header::ip4), at::tunnel_type, bit(bcmFieldTunnelTypeIp6InIp4)},
    {bcmFieldHeaderFormatIp4InIp6, bit_of(Header::ip6), at::tunnel_type, bit(bcmFieldTunnelTypeIp4InIp6)},
    {bcmFieldHeaderFormatIp6InIp6, bit_of(Header::ip6), at::tunnel_type, bit(bcmFieldTunnelTypeIp6InIp6)},
    {bcmFieldHeaderFormatIp4, bit_of(Header::ip4), nothing, 0},
    {bcmFieldHeaderFormatIp6, bit_of(Header::ip6), nothing, 0},
    {bcmFieldHeaderFormatFcoe, bit_of(Header::fcoe), nothing, 0},
    {bcmFieldHeaderFormatTrill, bit_of(Header::trill), nothing, 0},
    {bcmFieldHeaderFormatMim, bit_of(Header::i_tag), nothing, 0},
    {bcmFieldHeaderFormatMplsPseudowire, bit_of(Header::channel), nothing, 0},
    {bcmFieldHeaderFormatMplsPseudowire, bit_of(Header::label1), at::has_control_word, 1},
    {bcmFieldHeaderFormatMplsIp4, both(Header::label1, Header::inner_ip4), nothing, 0},
    {bcmFieldHeaderFormatMplsIp6, both(Header::label1, Header::inner_ip6), nothing, 0},
    {bcmFieldHeaderFormatMpls, bit_of(Header::label1), nothing, 0},
    {bcmFieldHeaderFormatETag, bit_of(Header::e_tag), nothing, 0},
    {bcmFieldHeaderFormatVnTag, bit_of(Header::vn_tag), nothing, 0},
    {bcmFieldHeaderFormatOam, bit_of(Header::ethernet_oam), nothing, 0},
    {bcmFieldHeaderFormatEthernetSnap, bit_of(Header::snap), nothing, 0},
    {bcmFieldHeaderFormatEthernetLlc, bit_of(Header::llc), nothing, 0},
    {bcmFieldHeaderFormatEthernetDoubleVlan, both(Header::outer_tag, Header::inner_tag), nothing, 0},
    {bcmFieldHeaderFormatEthernetVlan, bit_of(Header::outer_tag), nothing, 0},
    {bcmFieldHeaderFormatEthernetVlan, bit_of(Header::inner_tag), nothing, 0},
    {bcmFieldHeaderFormatEthernet, bit_of(Header::always), nothing, 0},
};

bool holds(const Sign &sign, const FieldKey &key)
{
    // Of kinds, a packet may have others, too.
    const FieldWord asked =
        sign.place.word == at::tunnel_type.word && sign.place.shift == at::tunnel_type.shift
            ? sign.number
            : field_ones(sign.place.width);
    return (key.headers & sign.headers) == sign.headers && (key.get(sign.place) & asked) == sign.number;
}

}  // namespace

FieldWord protocols_of(const FieldKey &key)
{
    FieldWord found = 0;
    for (const Sign &sign : protocols) {
        found |= holds(sign, key) ? bit(sign.kind) : 0;
    }
    const FieldWord type = key.is(Header::ether_type) ? key.get(at::ether_type) : 0;
    const unsigned first = key.behind_type.has(2) ? number_at(key.behind_type.data) : 0;
    const FieldWord arp = type == type_arp ? key.get(at::ip_type) : 0;
    const auto add = [&](int kind, bool is_one) { found |= is_one ? bit(kind) : 0; };
    add(bcmFieldAppTypeArpRequest, (arp & bit(bcmFieldIpTypeArpRequest)) != 0);
    add(bcmFieldAppTypeArpReply, (arp & bit(bcmFieldIpTypeArpReply)) != 0);
    add(bcmFieldAppTypeStp, key.is(Header::llc) && key.get(at::llc) == link_of_bridges
                                && key.get(at::destination_mac) == to_all_bridges);
    add(bcmFieldAppTypeLacp, type == type_slow && first >> 8 == 1);
    add(bcmFieldAppTypeEthernetAps, type == type_oam && (first & 0xff) == 39);
    return found;
}

void recognise(FieldKey &key)
{
    key.put(at::protocol_of, protocols_of(key));
    const Sign *const format = std::find_if(std::begin(formats), std::end(formats),
                                            [&](const Sign &sign) { return holds(sign, key); });
    key.put(at::header_format, bit(format->kind));
}

}  // namespace sim
