#include "protocol.h"

namespace sim {

namespace {

constexpr unsigned type_arp_packet = 0x0806;

enum IpProtocol : unsigned {
    ip_igmp = 2,
    ip_tcp = 6,
    ip_udp = 17,
    ip_icmp6 = 58,
    ip_ospf = 89,
    ip_pim = 103,
    ip_vrrp = 112
};

unsigned byte_at(ByteView bytes, std::size_t place)
{
    return place < bytes.size ? bytes.data[place] : 0;
}

bool is_one_of_ports(ByteView packet, unsigned first, unsigned second)
{
    const unsigned from = number_at(packet, 0), to = number_at(packet, 2);
    return from == first || from == second || to == first || to == second;
}

Protocol igmp_of(unsigned type)
{
    switch (type) {
    case 0x11:
        return Protocol::igmp_query;
    case 0x12:
    case 0x16:
    case 0x22:
        return Protocol::igmp_report;
    case 0x17:
        return Protocol::igmp_leave;
    default:
        return Protocol::none;
    }
}

Protocol icmp6_of(unsigned type)
{
    switch (type) {
    case 130:
        return Protocol::mld_query;
    case 131:
    case 143:
        return Protocol::mld_report;
    case 132:
        return Protocol::mld_done;
    case 133:
        return Protocol::router_solicit;
    case 134:
        return Protocol::router_advert;
    case 135:
        return Protocol::neighbor_solicit;
    case 136:
        return Protocol::neighbor_advert;
    case 137:
        return Protocol::icmp_redirect;
    default:
        return Protocol::none;
    }
}

/// Of what an IP packet carries.
Protocol protocol_of(unsigned ip_protocol, ByteView carried, bool is_ip6)
{
    switch (ip_protocol) {
    case ip_igmp:
        return is_ip6 ? Protocol::none : igmp_of(byte_at(carried, 0));
    case ip_icmp6:
        return is_ip6 ? icmp6_of(byte_at(carried, 0)) : Protocol::none;
    case ip_tcp:
        return is_one_of_ports(carried, 179, 179) ? Protocol::bgp : Protocol::none;
    case ip_udp:
        return is_one_of_ports(carried, 520, 520)             ? Protocol::rip
               : !is_ip6 && is_one_of_ports(carried, 67, 68)  ? Protocol::dhcp
               : is_ip6 && is_one_of_ports(carried, 546, 547) ? Protocol::dhcp6
                                                              : Protocol::none;
    case ip_ospf:
        return Protocol::ospf;
    case ip_pim:
        return Protocol::pim;
    case ip_vrrp:
        return Protocol::vrrp;
    default:
        return Protocol::none;
    }
}

ByteView behind(ByteView bytes, std::size_t place)
{
    return place < bytes.size ? ByteView{bytes.data + place, bytes.size - place} : ByteView();
}

}  // namespace

Protocol protocol_of(const Frame &frame)
{
    const ByteView packet = behind(frame.bytes, frame.untagged_from + 2);
    if (frame.type == type_arp_packet) {
        const unsigned operation = number_at(packet, 6);
        return operation == 1 ? Protocol::arp_request : operation == 2 ? Protocol::arp_reply : Protocol::none;
    }
    if (frame.type == type_ip4) {
        constexpr unsigned fragment_offset = 0x1fff;
        const std::size_t header = 4 * (byte_at(packet, 0) & 15);
        return number_at(packet, 6) & fragment_offset
                   ? Protocol::none
                   : protocol_of(byte_at(packet, 9), behind(packet, header), false);
    }
    if (frame.type == type_ip6) {
        constexpr std::size_t header = 40;
        constexpr unsigned hop_by_hop = 0;
        unsigned next = byte_at(packet, 6);
        std::size_t place = header;
        // Those who ask for group members put their option there.
        if (next == hop_by_hop) {
            next = byte_at(packet, place);
            place += 8 + 8 * byte_at(packet, place + 1);
        }
        return protocol_of(next, behind(packet, place), true);
    }
    return Protocol::none;
}

}  // namespace sim
