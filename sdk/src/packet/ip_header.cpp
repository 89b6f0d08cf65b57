#include "ip_header.h"

namespace sim {

std::uint32_t IpHeader::ports() const
{
    constexpr unsigned tcp = 6, udp = 17;
    const std::size_t header = is_ip6 ? ip6_header_bytes : (bytes[0] & 15u) * 4;
    const bool is_fragment = !is_ip6 && (number_at(bytes + 6) & 0x3fff) != 0;
    if ((protocol() != tcp && protocol() != udp) || is_fragment || length < header + 4) {
        return 0;
    }
    return number4_at(bytes + header);
}

}  // namespace sim
