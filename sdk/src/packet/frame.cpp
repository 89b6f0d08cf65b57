#include "packet.h"

#include <algorithm>
#include <iterator>

namespace sim {

bool is_broadcast(const unsigned char *mac)
{
    return std::all_of(mac, mac + address_bytes, [](unsigned char byte) { return byte == 0xff; });
}

bool is_reserved(const unsigned char *mac)
{
    static constexpr unsigned char first[] = {0x01, 0x80, 0xc2, 0x00, 0x00};
    return std::equal(std::begin(first), std::end(first), mac) && mac[5] < 0x10;
}

ByteView Frame::ip_addresses() const
{
    struct Addresses {
        unsigned type;
        std::size_t place, size;
    };
    static constexpr Addresses of_versions[] = {{type_ip4, 12, 8}, {type_ip6, 8, 32}};

    for (const Addresses &addresses : of_versions) {
        const std::size_t begin = untagged_from + 2 + addresses.place;
        if (type == addresses.type && begin + addresses.size <= bytes.size) {
            return {bytes.data + begin, addresses.size};
        }
    }
    return {};
}

}  // namespace sim
