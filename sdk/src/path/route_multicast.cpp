/// Routed multicasts: a packet for a group is bridged in its own VLAN, and copies of it leave by other interfaces.
#include "ip_header.h"
#include "l3.h"
#include "stages.h"

namespace sim {

namespace {

/// 224.0.0.0/24 and ff01::, ff02::, which no router forwards.
bool stays_on_link(const IpHeader &header)
{
    if (!header.is_ip6) {
        return to_ip4(header.to) >> 8 == 0xe00000;
    }
    const auto scope = header.to.high >> 48 & 0xf;
    return scope <= 2;
}

bool read_multicast(const Passage &passage, IpHeader &header)
{
    const unsigned type = passage.frame.type;
    const std::size_t begin = passage.frame.untagged_from + 2;
    const ByteView &bytes = passage.frame.bytes;
    return (type == type_ip4 || type == type_ip6)
           && header.read(bytes.data + begin, bytes.size - begin, type == type_ip6) && header.is_for_group();
}

/// Whether it came in where the entry says that it has to.
bool is_expected(Passage &passage, const bcm_ipmc_addr_t &entry, L3State &l3, const L3Interface *interface,
                 const IpHeader &header)
{
    if (entry.rp_id != 0 && l3.multicast.is_shared(passage.sw, header.to, header.is_ip6)) {
        if (!l3.multicast.leads_to(passage.sw, entry.rp_id, interface->record.l3a_intf_id)) {
            return false;
        }
    } else if (entry.ing_intf != 0 && l3.objects.interface(entry.ing_intf) != interface) {
        return false;
    }
    Destination from;
    const bool is_checked = entry.port_tgid != 0 && !(entry.flags & BCM_IPMC_SOURCE_PORT_NOCHECK);
    return !is_checked
           || (resolve(entry.mod_id, entry.port_tgid, &from) == BCM_E_NONE
               && trunks_of(passage.sw).ports().places[static_cast<std::size_t>(passage.port)] == from);
}

[[gnu::cold]] void tell(const Passage &passage, const IpHeader &header, unsigned vrf, const char *what)
{
    const IpText from(header.from(), header.is_ip6), to(header.to, header.is_ip6);
    tell_step(passage, simStageRoute, passage.port, "%s to %s in routing table %u: %s", from.text(),
              to.text(), vrf, what);
}

/// Where it goes in its own VLAN.
void bridge(Passage &passage, const bcm_ipmc_addr_t &entry, L3State &l3)
{
    if (entry.group_l2 == 0) {
        find_destination(passage);
    }
    if (!passage.is_for_many) {
        const bool is_for_one = entry.group_l2 == 0 && is_own_port(passage.to);
        passage.members = is_for_one ? PortSet::one(passage.to.id) : PortSet();
        passage.is_for_many = true;
        passage.member_index = &bcm_trunk_info_t::mc_index;
    }
    if (entry.group_l2 != 0) {
        const auto &lines = l2_of(passage.sw).multicast;
        const auto line = lines.find(entry.group_l2);
        passage.members = l3.multicast.members_of(passage.sw, entry.group_l2).bridged;
        if (line != lines.end()) {
            passage.members = passage.members | PortSet(line->second);
        }
    }
}

/// The copies of one interface pass the last stages by themselves.
void send_copies(Passage &passage, const RoutedCopies &copies, L3Multicast &multicast)
{
    Departures left;
    left.frame.fill(passage.frame.bytes);
    Passage routed(passage.sw, passage.port, left);
    const ByteView bytes = left.frame.bytes();
    routed.frame = passage.frame;
    routed.frame.bytes = bytes;
    routed.counts = passage.counts;
    routed.tags = passage.tags;
    routed.treatment = passage.treatment;
    if (routed.treatment) {
        routed.treatment->others_sent = 0;
    }
    routed.vid = copies.hop.interface->record.l3a_vid;
    routed.find_vlan();
    Vlan as_ports_say;
    if (copies.tag != MulticastTag::as_vlan_says) {
        as_ports_say.exists = true;
        as_ports_say.members = routed.vlan->members;
        as_ports_say.group = routed.vlan->group;
        copies.ports.each([&](int port) {
            if (copies.tag == MulticastTag::never) {
                BCM_PBMP_PORT_ADD(as_ports_say.untagged, port);
            }
        });
        routed.vlan = &as_ports_say;
    }
    routed.hop = &copies.hop;
    routed.is_for_many = true;
    routed.member_index = &bcm_trunk_info_t::mc_index;
    routed.members = copies.ports;
    for (const bcm_trunk_t id : copies.trunks) {
        if (const SendingTrunk *trunk = trunks_of(passage.sw).ports().find(id)) {
            routed.members = routed.members | trunk->senders;
        }
    }
    if (replicate(routed) == Onward::next && edit(routed) == Onward::next
        && change_headers(routed) == Onward::next) {
        leave(routed);
    }
    const auto count = [&](int port, ByteView sent) {
        bcm_ipmc_counters_t &counters = multicast.counters[static_cast<std::size_t>(port)];
        ++counters.out_packets;
        counters.out_bytes += length_with_checksum(sent);
    };
    for (std::size_t i = 0; i < left.count; ++i) {
        const ByteView sent = left.frame.written(left.heads[left.copies[i].head]);
        FrameBuffer own;
        own.fill(sent);
        count(left.copies[i].port, sent);
        passage.departures.add(left.copies[i].port, std::move(own));
        if (passage.treatment) {
            passage.treatment->note_other(left.copies[i].port);
        }
    }
    if (passage.treatment) {
        passage.treatment->others_sent += routed.treatment->others_sent;
        passage.treatment->cpu_sends_other |= routed.treatment->cpu_sends_other;
        passage.is_mirrored |= routed.is_mirrored;
    }
    if (left.others != nullptr) {
        for (Departures::Other &other : *left.others) {
            passage.departures.add(other.port, std::move(other.frame));
        }
    }
}

}  // namespace

[[gnu::noinline]] Onward route_multicast(Passage &passage)
{
    IpHeader header;
    L3State &l3 = l3_of(passage.sw);
    const L3Interface *interface = l3.addresses().of_vlan(passage.vid);
    if (interface == nullptr || !read_multicast(passage, header) || stays_on_link(header)) {
        return Onward::next;
    }
    MulticastKey key;
    key.source = header.from();
    key.group = header.to;
    key.is_ip6 = header.is_ip6;
    key.vid = passage.vid;
    const unsigned vrf = routing_table_of(passage, l3, interface);
    key.vrf = static_cast<int>(vrf);
    bcm_ipmc_counters_t &counters = l3.multicast.counters[static_cast<std::size_t>(passage.port)];
    const auto go_on = [&](uint64 &count, const char *why) {
        ++count;
        if (is_traced) {
            tell(passage, header, vrf, why);
        }
        return Onward::next;
    };
    MulticastEntry *entry = l3.multicast.for_packet(key);
    if (entry == nullptr) {
        return go_on(counters.no_entry_packets, "no entry, bridged only");
    }
    if (!is_expected(passage, entry->record, l3, interface, header)) {
        return go_on(counters.wrong_interface_packets, "came in where it is not to, bridged only");
    }
    entry->hit = true;
    if (header.ttl <= 1) {
        if (l3.settings.expired_to_cpu) {
            passage.copy_to_cpu(bcmRxReasonL3Ttl);
        }
        return go_on(counters.ttl_expired_packets, "its TTL is at its end, bridged only");
    }
    ++counters.in_packets;
    counters.in_bytes += passage.counts.length();
    if (entry->record.flags & BCM_IPMC_COPY_TO_CPU) {
        passage.copy_to_cpu(bcmRxReasonL3DestMarked);
    }
    if (is_traced) {
        tell(passage, header, vrf, "routed, too");
    }
    bridge(passage, entry->record, l3);
    passage.routed = &l3.multicast.members_of(passage.sw, entry->record.group);
    return Onward::decided;
}

[[gnu::noinline]] void send_routed_copies(Passage &passage)
{
    IpHeader header;
    L3Multicast &multicast = l3_of(passage.sw).multicast;
    if (!read_multicast(passage, header)) {
        return;
    }
    for (const RoutedCopies &copies : passage.routed->routed) {
        const bcm_l3_intf_t &interface = copies.hop.interface->record;
        // Where it came from, it is bridged.
        if (interface.l3a_vid == passage.vid || !vlans_of(passage.sw).has(interface.l3a_vid)) {
            continue;
        }
        const bool is_expired = static_cast<int>(header.ttl) <= interface.l3a_ttl;
        const bool is_too_long =
            interface.l3a_mtu != 0 && header.length > static_cast<std::size_t>(interface.l3a_mtu);
        if (is_expired || is_too_long) {
            copies.ports.each([&](int port) {
                bcm_ipmc_counters_t &counters = multicast.counters[static_cast<std::size_t>(port)];
                ++(is_expired ? counters.ttl_expired_packets : counters.mtu_exceeded_packets);
            });
            continue;
        }
        if (is_traced) {
            tell_step(passage, simStageReplicate, passage.port, "copies by interface %d in VLAN %d",
                      interface.l3a_intf_id, interface.l3a_vid);
        }
        send_copies(passage, copies, multicast);
    }
}

}  // namespace sim
