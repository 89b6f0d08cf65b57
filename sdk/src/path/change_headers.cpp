#include "stages.h"

#include "ip_header.h"

#include <cstring>

namespace sim {

void change_ip(unsigned char *header, const HeaderChanges &changes, bool with_ttl)
{
    const bool sets_ttl = with_ttl && changes.ttl >= 0;
    const auto ttl = static_cast<unsigned>(changes.ttl);
    if (header[0] >> 4 == 4) {
        if (changes.service_mask != 0) {
            change_ip4(header, ip4_service_at, changes.service_mask, changes.service);
        }
        if (sets_ttl) {
            change_ip4(header, ip4_ttl_at, 0xff, ttl);
        }
        return;
    }
    // Between version and flow label.
    constexpr unsigned shift = 4;
    const unsigned mask = changes.service_mask << shift;
    put_number(header, (number_at(header) & ~mask) | (changes.service << shift & mask));
    if (sets_ttl) {
        header[ip6_hop_limit_at] = static_cast<unsigned char>(ttl);
    }
    if (changes.flow_label >= 0) {
        const auto label = static_cast<unsigned>(changes.flow_label);
        header[1] = static_cast<unsigned char>((header[1] & 0xf0u) | label >> 16);
        put_number(header + 2, label & 0xffffu);
    }
}

void change_flow(unsigned char *frame, const HeaderChanges &changes,
                 std::initializer_list<unsigned char *> ip_checksums)
{
    constexpr std::size_t source_at = 12, destination_at = 16, udp_checksum_at = 6, tcp_checksum_at = 16;
    unsigned char *const l4 = frame + changes.l4_from;
    unsigned char *const carried = l4 + (changes.is_udp ? udp_checksum_at : tcp_checksum_at);
    // UDP can do without.
    const bool has_checksum = changes.l4_from != 0 && !(changes.is_udp && number_at(carried) == 0);
    const auto put = [&](unsigned char *word, unsigned number) {
        if (has_checksum) {
            update_checksum(carried, number_at(word), number);
        }
        put_number(word, number);
    };
    const auto put_address = [&](std::size_t at, std::int64_t address) {
        if (address < 0) {
            return;
        }
        unsigned char *const place = frame + changes.ip_from + at;
        const unsigned halves[] = {static_cast<unsigned>(address >> 16),
                                   static_cast<unsigned>(address & 0xffff)};
        for (std::size_t half = 0; half < 2; ++half) {
            unsigned char *const word = place + 2 * half;
            for (unsigned char *checksum : ip_checksums) {
                update_checksum(checksum, number_at(word), halves[half]);
            }
            put(word, halves[half]);
        }
    };
    const auto put_port = [&](std::size_t at, int port) {
        if (port >= 0) {
            put(l4 + at, static_cast<unsigned>(port));
        }
    };
    put_address(source_at, changes.source_ip);
    put_address(destination_at, changes.destination_ip);
    put_port(0, changes.source_l4_port);
    put_port(2, changes.destination_l4_port);
    if (has_checksum && changes.is_udp && number_at(carried) == 0) {
        put_number(carried, 0xffff);
    }
}

namespace {

constexpr std::size_t type_bytes = 2;

/// The heads of a packet that is routed have the IP header, as far as it changes.
void change_ip(Passage &passage, const HeaderChanges &changes)
{
    auto &heads = passage.departures.heads;
    unsigned char *const frame = passage.departures.frame.shared();
    if (passage.hop == nullptr) {
        unsigned char *const header = frame + changes.ip_from;
        change_ip(header, changes, false);
        change_flow(frame, changes, {header + ip4_checksum_at});
        return;
    }
    unsigned char *const headers[] = {heads[0].bytes() + addresses_bytes + type_bytes,
                                      heads[1].bytes() + addresses_bytes + tag_bytes + type_bytes};
    for (unsigned char *header : headers) {
        change_ip(header, changes, true);
    }
    change_flow(frame, changes, {headers[0] + ip4_checksum_at, headers[1] + ip4_checksum_at});
}

/// That of a packet that is routed is in the heads.
void change_type(Passage &passage, const HeaderChanges &changes)
{
    const auto type = static_cast<unsigned>(changes.ether_type);
    auto &heads = passage.departures.heads;
    if (passage.hop == nullptr) {
        put_number(passage.departures.frame.shared() + changes.type_from, type);
    } else {
        put_number(heads[0].bytes() + addresses_bytes, type);
        put_number(heads[1].bytes() + addresses_bytes + tag_bytes, type);
    }
}

[[gnu::cold, gnu::noinline]] void change(Passage &passage, const HeaderChanges &changes)
{
    if (changes.ip_from != 0) {
        change_ip(passage, changes);
    }
    if (changes.ether_type >= 0) {
        change_type(passage, changes);
    }
    for (std::size_t head = 0; head < passage.departures.head_count; ++head) {
        unsigned char *addresses = passage.departures.heads[head].bytes();
        if (changes.to != nullptr) {
            std::memcpy(addresses, changes.to, address_bytes);
        }
        if (changes.from != nullptr) {
            std::memcpy(addresses + address_bytes, changes.from, address_bytes);
        }
    }
    if (changes.to != nullptr) {
        passage.counts.readdress(changes.to);
    }
}

}  // namespace

Onward change_headers(Passage &passage)
{
    if (passage.treatment && passage.treatment->changes_headers) {
        change(passage, passage.treatment->changes);
    }
    return Onward::next;
}

}  // namespace sim
