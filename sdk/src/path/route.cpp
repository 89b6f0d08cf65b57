#include "stages.h"

#include "field.h"
#include "ip_header.h"
#include "l3.h"

namespace sim {

namespace {

constexpr unsigned type_arp = 0x806;
constexpr unsigned type_rarp = 0x8035;

/// Where a packet came in, to a router.
struct Ingress {
    unsigned vrf = 0;
    const bcm_l3_ingress_t *own = nullptr;  ///< what the VLAN says of it
    int source_check = bcmL3IntfUrpfDisable;
    bool takes_default_route = false;  ///< for the check
};

/// What the field processor says of it.
[[gnu::noinline]] void obey(const Treatment &treatment, Ingress &ingress)
{
    if (treatment.vrf >= 0) {
        ingress.vrf = static_cast<unsigned>(treatment.vrf);
    }
    if (treatment.source_check >= 0) {
        ingress.source_check = treatment.source_check;
    }
}

[[gnu::always_inline]] inline Ingress ingress_of(Passage &passage, L3State &l3, const L3Interface *interface)
{
    Ingress ingress;
    if (interface != nullptr) {
        ingress.vrf = static_cast<unsigned>(interface->record.l3a_vrf);
    }
    if (const auto &settings = passage.vlan->settings) {
        if (interface == nullptr && is_vrf(settings->vrf)) {
            ingress.vrf = static_cast<unsigned>(settings->vrf);
        }
        ingress.source_check = static_cast<int>(settings->urpf_mode);
        ingress.own = l3.ingress.find(settings->ingress_if);
        if (ingress.own != nullptr) {
            ingress.vrf = static_cast<unsigned>(ingress.own->vrf);
            ingress.source_check = ingress.own->urpf_mode;
            ingress.takes_default_route = ingress.own->flags & BCM_L3_INGRESS_URPF_DEFAULT_ROUTE_CHECK;
        }
    }
    if (passage.treatment) {
        obey(*passage.treatment, ingress);
    }
    return ingress;
}

/// What a station says of packets to its address.
unsigned taken_by(const bcm_l2_station_t &station)
{
    const auto is = [&](uint32 flag, unsigned takes) { return station.flags & flag ? takes : 0u; };
    return is(BCM_L2_STATION_IPV4, takes_ip4) | is(BCM_L2_STATION_IPV6, takes_ip6)
           | is(BCM_L2_STATION_ARP_RARP, takes_arp) | is(BCM_L2_STATION_COPY_TO_CPU, takes_copy);
}

bool is_for(const bcm_l2_station_t &station, const Passage &passage)
{
    const unsigned char *mac = passage.frame.to();
    for (std::size_t i = 0; i < address_bytes; ++i) {
        if (((mac[i] ^ station.dst_mac[i]) & station.dst_mac_mask[i]) != 0) {
            return false;
        }
    }
    return ((passage.vid ^ station.vlan) & station.vlan_mask) == 0
           && ((passage.port ^ station.src_port) & station.src_port_mask) == 0;
}

[[gnu::always_inline]] inline RouterAddresses::Match match_of(Passage &passage, L3State &l3,
                                                              const L2State &l2)
{
    RouterAddresses::Match match;
    if (l2.takers & L2State::routers_take) {
        match = l3.addresses().find(l2_key(passage.frame.to(), passage.vid));
    }
    if (match.takes != 0 || !l3.initialised || !l3.settings.routes) {
        return match;
    }
    for (const bcm_l2_station_t &station : l2.stations_by_priority) {
        if (is_for(station, passage)) {
            return {taken_by(station), l3.addresses().of_vlan(passage.vid)};
        }
    }
    return match;
}

/// What a packet that ends for that reason comes to the CPU for.
bcm_rx_reason_t cpu_reason_of(Discard reason)
{
    switch (reason) {
    case Discard::ttl:
        return bcmRxReasonL3Ttl;
    case Discard::mtu:
        return bcmRxReasonL3MtuFail;
    case Discard::ip_header:
        return bcmRxReasonL3HeaderError;
    case Discard::ip_source:
        return bcmRxReasonUrpfFail;
    case Discard::unresolved:
        return bcmRxReasonL3NextHopIncomplete;
    default:
        return bcmRxReasonL3DestMiss;
    }
}

Onward to_cpu(Passage &passage, bcm_rx_reason_t reason)
{
    passage.cpu_reasons.add(reason);
    passage.to = {Destination::Kind::port, own_module, cpu_port};
    return Onward::decided;
}

/// It is not routed: to the CPU, or nowhere.
Onward give_up(Passage &passage, Discard reason, bool goes_to_cpu)
{
    if (!goes_to_cpu) {
        passage.drop(reason);
        return Onward::over;
    }
    if (is_traced) {
        tell_diverted(passage, reason);
    }
    return to_cpu(passage, cpu_reason_of(reason));
}

/// A number that is the same for all packets of a flow.
std::uint32_t flow_hash(const IpHeader &header)
{
    constexpr std::uint64_t odd = 0x9e3779b97f4a7c15u;
    const IpAddress from = header.from();
    std::uint64_t hash = from.high * odd + from.low;
    hash = (hash ^ hash >> 32) * odd + header.to.high;
    hash = (hash ^ hash >> 32) * odd + header.to.low;
    hash = (hash ^ hash >> 32) * odd + (static_cast<std::uint64_t>(header.protocol()) << 32 | header.ports());
    hash = (hash ^ hash >> 32) * odd;
    return static_cast<std::uint32_t>(hash >> 32);
}

/// The next hop of a way, or null if it has none yet.
[[gnu::always_inline]] inline const NextHop *hop_of(const L3Way &way, const IpHeader &header)
{
    if (way.group == nullptr) {
        return way.hop;
    }
    const std::vector<const NextHop *> &paths = way.group->paths;
    if (paths.empty()) {
        return nullptr;
    }
    // The hash as a fraction of all hashes.
    return paths[static_cast<std::size_t>(std::uint64_t{flow_hash(header)} * paths.size() >> 32)];
}

bool leads_through(const NextHop *hop, bcm_vlan_t vid)
{
    return hop != nullptr && hop->interface != nullptr && hop->interface->record.l3a_vid == vid;
}

/// Whether a packet from there may come in here.
bool is_source_expected(Passage &passage, L3State &l3, const Ingress &ingress, const IpHeader &header)
{
    const L3Found source = l3_find(l3, header.from(), ingress.vrf, header.is_ip6);
    if (source.entry != nullptr && (source.entry->flags & BCM_L3_SRC_DISCARD)) {
        return false;
    }
    if (ingress.source_check == bcmL3IntfUrpfDisable) {
        return true;
    }
    if (source.entry == nullptr || (source.entry->length == 0 && !ingress.takes_default_route)) {
        return false;
    }
    if (ingress.source_check == bcmL3IntfUrpfLoose) {
        return true;
    }
    const L3Way &way = source.entry->way;
    if (way.group == nullptr) {
        return leads_through(way.hop, passage.vid);
    }
    for (const NextHop *hop : way.group->paths) {
        if (leads_through(hop, passage.vid)) {
            return true;
        }
    }
    return false;
}

[[gnu::cold]] void tell_found(const Passage &passage, const IpHeader &header, unsigned vrf,
                              const L3Found &found)
{
    const IpText to(header.to, header.is_ip6);
    if (found.entry == nullptr) {
        tell_step(passage, simStageRoute, passage.port, "no route to %s in routing table %u", to.text(), vrf);
    } else if (found.is_host) {
        tell_step(passage, simStageRoute, passage.port, "%s is a host in routing table %u, by object %d",
                  to.text(), vrf, found.entry->interface);
    } else {
        const IpText network(found.entry->network, header.is_ip6);
        tell_step(passage, simStageRoute, passage.port, "%s is in %s/%d of routing table %u, by object %d",
                  to.text(), network.text(), found.entry->length, vrf, found.entry->interface);
    }
}

[[gnu::cold]] void tell_hop(const Passage &passage, const NextHop &hop)
{
    static constexpr const char *kinds[] = {"port", "trunk", "group", "nowhere:"};
    if (hop.flags & BCM_L3_L2ONLY) {
        tell_step(passage, simStageRoute, passage.port, "bridged to %s %d in VLAN %d",
                  kinds[static_cast<int>(hop.to.kind)], hop.to.id, passage.vid);
    } else {
        tell_step(passage, simStageRoute, passage.port, "next hop %s at %s %d in VLAN %d",
                  MacText(hop.mac).text(), kinds[static_cast<int>(hop.to.kind)], hop.to.id, passage.vid);
    }
}

/// The packet leaves by that hop, if it is not at its end.
[[gnu::always_inline]] inline Onward leave_by(Passage &passage, L3State &l3, const NextHop &hop,
                                              const IpHeader &header)
{
    const bcm_l3_intf_t &interface = hop.interface->record;
    const bool keeps_ttl = hop.flags & (BCM_L3_KEEP_TTL | BCM_L3_L2ONLY);
    if (!keeps_ttl && (header.ttl <= 1 || static_cast<int>(header.ttl) <= interface.l3a_ttl)) {
        return give_up(passage, Discard::ttl, l3.settings.expired_to_cpu);
    }
    if (interface.l3a_mtu != 0 && header.length > static_cast<std::size_t>(interface.l3a_mtu)) {
        return give_up(passage, Discard::mtu, l3.settings.too_long_to_cpu);
    }
    const bcm_vlan_t vid = hop.flags & BCM_L3_L2ONLY      ? hop.vlan
                           : hop.flags & BCM_L3_KEEP_VLAN ? passage.vid
                                                          : interface.l3a_vid;
    if (!vlans_of(passage.sw).has(vid)) {
        passage.drop(Discard::vlan_unknown);
        return Onward::over;
    }
    passage.vid = vid;
    passage.find_vlan();
    passage.hop = &hop;
    passage.to = hop.to;
    if (hop.has_cpu_copy) {
        passage.copy_to_cpu(bcmRxReasonL3DestMarked);
    }
    if (is_traced) {
        tell_hop(passage, hop);
    }
    if (hop.to.kind == Destination::Kind::port && !is_own_port(hop.to)) {
        passage.drop(Discard::no_destination);
        return Onward::over;
    }
    return Onward::decided;
}

/// To the hop, which may be none.
[[gnu::always_inline]] inline Onward follow(Passage &passage, L3State &l3, const NextHop *hop,
                                            bool is_discarded, const IpHeader &header)
{
    if (is_discarded || (hop != nullptr && hop->kind == NextHop::Kind::discard)) {
        return give_up(passage, Discard::null_route, l3.settings.null_routes_to_cpu);
    }
    if (hop == nullptr || hop->kind == NextHop::Kind::unresolved) {
        return give_up(passage, Discard::unresolved, l3.settings.unknown_to_cpu);
    }
    if (hop->kind == NextHop::Kind::cpu) {
        if (is_traced) {
            tell_step(passage, simStageRoute, passage.port, "for the CPU, as it came");
        }
        return to_cpu(passage, bcmRxReasonL3LocalAddress);
    }
    return leave_by(passage, l3, *hop, header);
}

/// The header of the packet; false if it is no sound one.
[[gnu::always_inline]] inline bool read_ip(const Passage &passage, IpHeader &header)
{
    const std::size_t begin = passage.frame.untagged_from + 2;
    const ByteView &bytes = passage.frame.bytes;
    return header.read(bytes.data + begin, bytes.size - begin, passage.frame.type == type_ip6);
}

Onward route_ip(Passage &passage, L3State &l3, const RouterAddresses::Match &match)
{
    IpHeader header;
    if (!read_ip(passage, header) || header.is_for_group()) {
        return give_up(passage, Discard::ip_header, l3.settings.header_errors_to_cpu);
    }
    if (header.is_link_local()) {
        if (is_traced) {
            tell_step(passage, simStageRoute, passage.port, "no router forwards to %s: to the CPU",
                      IpText(header.to, true).text());
        }
        return to_cpu(passage, bcmRxReasonLinkLocalUnicast);
    }
    const Ingress ingress = ingress_of(passage, l3, match.interface);
    if ((ingress.source_check != bcmL3IntfUrpfDisable || l3.source_discards != 0)
        && !is_source_expected(passage, l3, ingress, header)) {
        return give_up(passage, Discard::ip_source, l3.settings.unexpected_sources_to_cpu);
    }
    const L3Found found = l3_find(l3, header.to, ingress.vrf, header.is_ip6);
    if (is_traced) {
        tell_found(passage, header, ingress.vrf, found);
    }
    if (found.entry == nullptr) {
        return give_up(passage, Discard::no_route, l3.settings.unknown_to_cpu);
    }
    found.entry->state |= l3_hit;
    const uint32 flags = found.entry->flags;
    if ((flags & BCM_L3_COPY_TO_CPU) || (match.takes & takes_copy)) {
        passage.copy_to_cpu(bcmRxReasonL3DestMarked);
    }
    return follow(passage, l3, hop_of(found.entry->way, header), flags & BCM_L3_DST_DISCARD, header);
}

/// Of a switch that routes at all.
[[gnu::noinline]] Onward route_if_own(Passage &passage)
{
    L3State &l3 = l3_of(passage.sw);
    const L2State &l2 = l2_of(passage.sw);
    if ((l2.takers & L2State::multicast_routers_take) && is_group(passage.frame.to())) {
        return route_multicast(passage);
    }
    const RouterAddresses::Match match = match_of(passage, l3, l2);
    if (match.takes == 0) {
        return Onward::next;
    }
    const unsigned type = passage.frame.type;
    if ((type == type_ip4 && (match.takes & takes_ip4)) || (type == type_ip6 && (match.takes & takes_ip6))) {
        return route_ip(passage, l3, match);
    }
    const bool is_arp = type == type_arp || type == type_rarp;
    if (!(match.takes & (is_arp ? takes_arp | takes_rest : takes_rest))) {
        return Onward::next;
    }
    if (is_traced) {
        tell_step(passage, simStageRoute, passage.port,
                  "%s is the router, which does not route type 0x%04x: to the CPU",
                  MacText(passage.frame.to()).text(), type);
    }
    return to_cpu(passage, type == type_arp ? bcmRxReasonArp : bcmRxReasonControl);
}

/// The part of it that is about IP addresses.
void look_up_addresses(const Passage &passage, L3State &l3, Findings &found)
{
    IpHeader header;
    if (!read_ip(passage, header) || header.is_for_group() || header.is_link_local()) {
        return;
    }
    found.is_looked_up = true;
    found.to = l3_find(l3, header.to, found.vrf, header.is_ip6);
    found.from = l3_find(l3, header.from(), found.vrf, header.is_ip6);
    found.to_class = l3_lookup_class(l3, header.to, found.vrf, header.is_ip6);
    found.from_class = l3_lookup_class(l3, header.from(), found.vrf, header.is_ip6);
    if (found.to.entry != nullptr) {
        const L3Way &way = found.to.entry->way;
        const NextHop *const hop = hop_of(way, header);
        found.is_local = hop != nullptr && hop->kind == NextHop::Kind::cpu;
        found.group = way.group != nullptr ? way.group->record.ecmp_intf : 0;
    }
}

/// What routing is about to find.
[[gnu::noinline]] void remember_findings(Passage &passage)
{
    L3State &l3 = l3_of(passage.sw);
    const L2State &l2 = l2_of(passage.sw);
    Findings &found = passage.findings.emplace();
    const bool is_routed =
        l2.takers != L2State::no_takers && !(passage.treatment && !passage.treatment->is_routed);
    const RouterAddresses::Match match = is_routed ? match_of(passage, l3, l2) : RouterAddresses::Match();
    const Ingress ingress = ingress_of(passage, l3, match.interface);
    found.vid = passage.vid;
    found.is_learnt = is_source_learnt(passage);
    found.is_for_router = match.takes != 0;
    found.vrf = ingress.vrf;
    if (const auto &settings = passage.vlan->settings) {
        found.ingress_if = ingress.own != nullptr ? settings->ingress_if : 0;
        found.vlan_class = static_cast<uint32>(settings->if_class);
        found.interface_class = static_cast<uint32>(settings->l3_if_class);
    }
    if (ingress.own != nullptr) {
        found.interface_class = ingress.own->intf_class;
    } else if (match.interface != nullptr) {
        found.interface_class = match.interface->record.l3a_intf_class;
    }
    const unsigned type = passage.frame.type;
    if ((type == type_ip4 && (match.takes & takes_ip4)) || (type == type_ip6 && (match.takes & takes_ip6))) {
        look_up_addresses(passage, l3, found);
    }
}

}  // namespace

unsigned routing_table_of(Passage &passage, L3State &l3, const L3Interface *interface)
{
    return ingress_of(passage, l3, interface).vrf;
}

Onward route(Passage &passage)
{
    return l2_of(passage.sw).takers != L2State::no_takers ? route_if_own(passage) : Onward::next;
}

Onward route_by_fields(Passage &passage)
{
    if (asks_for_findings(fields_of(passage.sw))) {
        remember_findings(passage);
    }
    return passage.treatment && !passage.treatment->is_routed ? Onward::next : route(passage);
}

[[gnu::noinline]] Onward route_by_object(Passage &passage, bcm_if_t object)
{
    const unsigned type = passage.frame.type;
    IpHeader header;
    if ((type != type_ip4 && type != type_ip6) || !read_ip(passage, header)) {
        return Onward::next;
    }
    L3State &l3 = l3_of(passage.sw);
    const L3Egress *egress = l3.objects.egress_object(object);
    const L3Group *group = l3.objects.group(object);
    const NextHop *hop = egress != nullptr  ? &egress->hop
                         : group != nullptr ? hop_of({nullptr, group}, header)
                                            : nullptr;
    return follow(passage, l3, hop, false, header);
}

}  // namespace sim
