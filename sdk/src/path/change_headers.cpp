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
}

namespace {

/// The heads of a packet that is routed have the IP header, as far as it changes.
void change_ip(Passage &passage, const HeaderChanges &changes)
{
    constexpr std::size_t type_bytes = 2;
    auto &heads = passage.departures.heads;
    if (passage.hop == nullptr) {
        change_ip(passage.departures.frame.shared() + changes.ip_from, changes, false);
        return;
    }
    change_ip(heads[0].bytes() + addresses_bytes + type_bytes, changes, true);
    change_ip(heads[1].bytes() + addresses_bytes + tag_bytes + type_bytes, changes, true);
}

[[gnu::cold, gnu::noinline]] void change(Passage &passage, const HeaderChanges &changes)
{
    if (changes.ip_from != 0) {
        change_ip(passage, changes);
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
