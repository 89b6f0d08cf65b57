#include "stages.h"

#include "ip_header.h"

#include <cstring>

namespace sim {

namespace {

/// How much of an IP packet a router changes, from its start.
std::size_t changed_bytes(const Passage &passage)
{
    return passage.frame.type == type_ip6 ? ip6_hop_limit_at + 1 : ip4_checksum_at + 2;
}

/// One hop less.
void count_hop(unsigned char *header, bool is_ip6)
{
    if (is_ip6) {
        --header[ip6_hop_limit_at];
        return;
    }
    --header[ip4_ttl_at];
    // The checksum grows by what the word has lost, in arithmetic of ones' complement.
    const unsigned checksum = number_at(header + ip4_checksum_at) + 0x100;
    put_number(header + ip4_checksum_at, checksum >= 0xffff ? checksum + 1 : checksum);
}

void write_addresses(const Passage &passage, unsigned char *bytes)
{
    std::memcpy(bytes, passage.frame.bytes.data, addresses_bytes);
    if (passage.hop == nullptr || (passage.hop->flags & BCM_L3_L2ONLY)) {
        return;
    }
    const NextHop &hop = *passage.hop;
    if (!(hop.flags & BCM_L3_KEEP_DSTMAC)) {
        std::memcpy(bytes, hop.mac, address_bytes);
    }
    if (!(hop.flags & BCM_L3_KEEP_SRCMAC)) {
        std::memcpy(bytes + address_bytes, hop.interface->record.l3a_mac_addr, address_bytes);
    }
}

/// The type and the beginning of a packet that is routed.
void write_packet(const Passage &passage, unsigned char *bytes, std::size_t size)
{
    std::memcpy(bytes, passage.frame.bytes.data + passage.frame.untagged_from, size);
    if (!(passage.hop->flags & (BCM_L3_KEEP_TTL | BCM_L3_L2ONLY))) {
        count_hop(bytes + 2, passage.frame.type == type_ip6);
    }
}

}  // namespace

Onward edit(Passage &passage)
{
    if (passage.copies.empty()) {
        return Onward::over;
    }
    Head &untagged = passage.departures.heads[0], &tagged = passage.departures.heads[1];
    const Frame &frame = passage.frame;
    const std::size_t own = passage.hop != nullptr ? 2 + changed_bytes(passage) : 0;
    untagged.start(frame.untagged_from + own, addresses_bytes + own);
    tagged.start(frame.untagged_from + own, addresses_bytes + tag_bytes + own);
    write_addresses(passage, untagged.bytes());
    write_addresses(passage, tagged.bytes());
    put_number(tagged.bytes() + addresses_bytes, type_vlan);
    put_number(tagged.bytes() + addresses_bytes + 2, frame.tag_of(passage.vid));
    if (own != 0) {
        write_packet(passage, untagged.bytes() + addresses_bytes, own);
        write_packet(passage, tagged.bytes() + addresses_bytes + tag_bytes, own);
    }
    passage.departures.head_count = 2;
    return Onward::next;
}

}  // namespace sim
