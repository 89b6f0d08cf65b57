#include "stages.h"

#include "ip_header.h"

#include <cstring>

namespace sim {

namespace {

/// One hop less, in an IPv4 header.
void count_hop(unsigned char *header)
{
    --header[ip4_ttl_at];
    // The checksum grows by what the word has lost, in arithmetic of ones' complement.
    const unsigned checksum = number_at(header + ip4_checksum_at) + 0x100;
    put_number(header + ip4_checksum_at, checksum >= 0xffff ? checksum + 1 : checksum);
}

/// What a router changes of the frame behind its addresses and tag, from its type on.
constexpr std::size_t routed_ip4_bytes = 2 + ip4_checksum_at + 2;
constexpr std::size_t routed_ip6_bytes = 2 + ip6_hop_limit_at + 1;

void write_tag(const Passage &passage, unsigned char *place)
{
    put_number(place, type_vlan);
    put_number(place + 2, passage.frame.tag_of(passage.vid));
}

/// Where the addresses of a beginning are to be written that replaces so much of the frame, and has so much behind
/// addresses and tag.
unsigned char *start(const Passage &passage, Head &head, bool is_tagged, std::size_t own)
{
    head.start(passage.frame.untagged_from + own, addresses_bytes + (is_tagged ? tag_bytes : 0) + own);
    if (is_tagged) {
        write_tag(passage, head.bytes() + addresses_bytes);
    }
    return head.bytes();
}

void edit_bridged(const Passage &passage, Head &head, bool is_tagged)
{
    std::memcpy(start(passage, head, is_tagged, 0), passage.frame.bytes.data, addresses_bytes);
}

/// What is routed has other addresses, and behind them and the tag what the router changes of the packet itself.
template <std::size_t own, std::size_t hops_at>
void edit_routed(const Passage &passage, Head &head, bool is_tagged)
{
    const Frame &frame = passage.frame;
    const NextHop &hop = *passage.hop;
    unsigned char *const addresses = start(passage, head, is_tagged, own);
    const bool keeps_to = hop.flags & (BCM_L3_KEEP_DSTMAC | BCM_L3_L2ONLY);
    const bool keeps_from = hop.flags & (BCM_L3_KEEP_SRCMAC | BCM_L3_L2ONLY);
    std::memcpy(addresses, keeps_to ? frame.to() : hop.mac, address_bytes);
    std::memcpy(addresses + address_bytes, keeps_from ? frame.from() : hop.interface->record.l3a_mac_addr,
                address_bytes);
    unsigned char *const packet = addresses + head.size() - own;
    std::memcpy(packet, frame.bytes.data + frame.untagged_from, own);
    if (hop.flags & (BCM_L3_KEEP_TTL | BCM_L3_L2ONLY)) {
        return;
    }
    if (hops_at == ip4_ttl_at) {
        count_hop(packet + 2);
    } else {
        --packet[2 + hops_at];
    }
}

[[gnu::noinline]] void edit_routed(const Passage &passage, Head &head, bool is_tagged)
{
    if (passage.frame.type == type_ip4) {
        edit_routed<routed_ip4_bytes, ip4_ttl_at>(passage, head, is_tagged);
    } else {
        edit_routed<routed_ip6_bytes, ip6_hop_limit_at>(passage, head, is_tagged);
    }
}

}  // namespace

Onward edit(Passage &passage)
{
    if (passage.copies.empty()) {
        return Onward::over;
    }
    const PortSet untagged(passage.vlan->untagged);
    passage.is_plain = !passage.tags && !passage.treatment
                       && (passage.copies & passage.sw.of<PortState>().special_out()).empty();
    // What changes beginnings may need both.
    const auto some_untagged = [&] { return !passage.is_plain || !(passage.copies & untagged).empty(); };
    const auto some_tagged = [&] { return !passage.is_plain || !(passage.copies - untagged).empty(); };
    auto &heads = passage.departures.heads;
    passage.departures.head_count = 2;
    if (passage.hop != nullptr) {
        if (some_untagged()) {
            edit_routed(passage, heads[0], false);
        }
        if (some_tagged()) {
            edit_routed(passage, heads[1], true);
        }
        return Onward::next;
    }
    const bool came_tagged = passage.frame.is_tagged();
    const bool is_of_its_tag = !came_tagged || passage.frame.vlan() == passage.vid;
    if (is_of_its_tag && !(came_tagged ? some_untagged() : some_tagged())) {
        // All of the frame as it came.
        heads[came_tagged].start(0, 0);
        return Onward::next;
    }
    edit_bridged(passage, heads[0], false);
    edit_bridged(passage, heads[1], true);
    return Onward::next;
}

}  // namespace sim
