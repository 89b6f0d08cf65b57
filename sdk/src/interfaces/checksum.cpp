#include "checksum.h"

#include <cstdint>

namespace sim {

namespace {

constexpr unsigned ip4 = 0x0800, ip6 = 0x86dd, vlan = 0x8100, service_vlan = 0x88a8;
constexpr unsigned tcp = 6, udp = 17;

unsigned number_at(const unsigned char *place)
{
    return static_cast<unsigned>(place[0] << 8 | place[1]);
}

}  // namespace

void complete_checksum(unsigned char *frame, std::size_t length)
{
    std::size_t place = 12;
    unsigned type = length >= place + 2 ? number_at(frame + place) : 0;
    while ((type == vlan || type == service_vlan) && length >= place + 6) {
        place += 4;
        type = number_at(frame + place);
    }
    const std::size_t header = place + 2;
    std::size_t start, end;
    unsigned protocol;
    if (type == ip4 && length >= header + 20) {
        start = header + 4 * (frame[header] & 0xf);
        end = header + number_at(frame + header + 2);
        protocol = frame[header + 9];
    } else if (type == ip6 && length >= header + 40) {
        start = header + 40;
        end = start + number_at(frame + header + 4);
        protocol = frame[header + 6];
    } else {
        return;
    }
    const std::size_t field = start + (protocol == tcp ? 16 : 6);
    if ((protocol != tcp && protocol != udp) || end > length || field + 2 > end) {
        return;
    }
    std::uint64_t sum = 0;
    for (std::size_t i = start; i + 1 < end; i += 2) {
        sum += number_at(frame + i);
    }
    if ((end - start) % 2 != 0) {
        sum += static_cast<unsigned>(frame[end - 1] << 8);
    }
    while (sum >> 16 != 0) {
        sum = (sum & 0xffff) + (sum >> 16);
    }
    // Of UDP, 0 says that there is none.
    const unsigned checksum =
        sum == 0xffff && protocol == udp ? 0xffff : static_cast<unsigned>(~sum & 0xffff);
    frame[field] = static_cast<unsigned char>(checksum >> 8);
    frame[field + 1] = static_cast<unsigned char>(checksum);
}

}  // namespace sim
