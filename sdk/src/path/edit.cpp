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

template <std::size_t size>
void copy(unsigned char *untagged, unsigned char *tagged, const unsigned char *bytes)
{
    std::memcpy(untagged, bytes, size);
    std::memcpy(tagged, bytes, size);
}

void write_tag(const Passage &passage, Head &tagged)
{
    put_number(tagged.bytes() + addresses_bytes, type_vlan);
    put_number(tagged.bytes() + addresses_bytes + 2, passage.frame.tag_of(passage.vid));
}

/// The beginnings of a packet that is routed: other addresses, and behind them and the tag what the router changes of the
/// packet itself.
[[gnu::noinline]] void edit_routed(const Passage &passage, Head &untagged, Head &tagged)
{
    const Frame &frame = passage.frame;
    const NextHop &hop = *passage.hop;
    const bool is_ip4 = frame.type == type_ip4;
    const std::size_t own = is_ip4 ? routed_ip4_bytes : routed_ip6_bytes;
    untagged.start(frame.untagged_from + own, addresses_bytes + own);
    tagged.start(frame.untagged_from + own, addresses_bytes + tag_bytes + own);
    unsigned char *const addresses = untagged.bytes(), *const tagged_addresses = tagged.bytes();
    copy<addresses_bytes>(addresses, tagged_addresses, frame.bytes.data);
    write_tag(passage, tagged);
    if (!(hop.flags & (BCM_L3_KEEP_DSTMAC | BCM_L3_L2ONLY))) {
        copy<address_bytes>(addresses, tagged_addresses, hop.mac);
    }
    if (!(hop.flags & (BCM_L3_KEEP_SRCMAC | BCM_L3_L2ONLY))) {
        copy<address_bytes>(addresses + address_bytes, tagged_addresses + address_bytes,
                            hop.interface->record.l3a_mac_addr);
    }
    unsigned char *const packet = addresses + addresses_bytes;
    unsigned char *const tagged_packet = tagged_addresses + addresses_bytes + tag_bytes;
    const unsigned char *const came = frame.bytes.data + frame.untagged_from;
    const bool counts_hop = !(hop.flags & (BCM_L3_KEEP_TTL | BCM_L3_L2ONLY));
    if (is_ip4) {
        copy<routed_ip4_bytes>(packet, tagged_packet, came);
        if (counts_hop) {
            count_hop(packet + 2);
            std::memcpy(tagged_packet, packet, routed_ip4_bytes);
        }
    } else {
        copy<routed_ip6_bytes>(packet, tagged_packet, came);
        packet[2 + ip6_hop_limit_at] -= counts_hop;
        tagged_packet[2 + ip6_hop_limit_at] -= counts_hop;
    }
}

}  // namespace

Onward edit(Passage &passage)
{
    if (passage.copies.empty()) {
        return Onward::over;
    }
    Head &untagged = passage.departures.heads[0], &tagged = passage.departures.heads[1];
    passage.departures.head_count = 2;
    if (passage.hop != nullptr) {
        edit_routed(passage, untagged, tagged);
        return Onward::next;
    }
    const Frame &frame = passage.frame;
    untagged.start(frame.untagged_from, addresses_bytes);
    tagged.start(frame.untagged_from, addresses_bytes + tag_bytes);
    copy<addresses_bytes>(untagged.bytes(), tagged.bytes(), frame.bytes.data);
    write_tag(passage, tagged);
    return Onward::next;
}

}  // namespace sim
