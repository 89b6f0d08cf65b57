#include "packet.h"

#include <algorithm>
#include <iterator>

namespace sim {

namespace {

constexpr std::size_t type_place = 2 * address_bytes;

FrameBytes padded(FrameBytes bytes)
{
    bytes.resize(std::max(bytes.size(), frame_min - checksum_bytes));
    return bytes;
}

}  // namespace

unsigned number_at(const FrameBytes &bytes, std::size_t place)
{
    return place + 1 < bytes.size() ? static_cast<unsigned>(bytes[place] << 8 | bytes[place + 1]) : 0;
}

bool is_group(const unsigned char *mac)
{
    return mac[0] & 1;
}

bool is_broadcast(const unsigned char *mac)
{
    return std::all_of(mac, mac + address_bytes, [](unsigned char byte) { return byte == 0xff; });
}

bool is_reserved(const unsigned char *mac)
{
    static constexpr unsigned char first[] = {0x01, 0x80, 0xc2, 0x00, 0x00};
    return std::equal(std::begin(first), std::end(first), mac) && mac[5] < 0x10;
}

Frame::Frame(const FrameBytes &bytes) : untagged_(bytes)
{
    if (number_at(bytes, type_place) == type_vlan) {
        tag_ = number_at(bytes, type_place + 2);
        const auto tag = untagged_.begin() + type_place;
        untagged_.erase(tag, tag + std::min<std::ptrdiff_t>(tag_bytes, untagged_.end() - tag));
    }
}

FrameBytes Frame::tagged(bcm_vlan_t vlan) const
{
    const unsigned tag = (tag_ & ~vlan_mask) | vlan;
    const unsigned char bytes[tag_bytes] = {type_vlan >> 8, type_vlan & 0xff,
                                            static_cast<unsigned char>(tag >> 8),
                                            static_cast<unsigned char>(tag & 0xff)};
    FrameBytes whole = untagged_;
    whole.insert(whole.begin() + type_place, std::begin(bytes), std::end(bytes));
    return padded(whole);
}

FrameBytes Frame::untagged() const
{
    return padded(untagged_);
}

FrameBytes Frame::ip_addresses() const
{
    struct Addresses {
        unsigned type;
        std::size_t place, size;
    };
    static constexpr Addresses of_versions[] = {{type_ip4, 12, 8}, {type_ip6, 8, 32}};

    for (const Addresses &addresses : of_versions) {
        const std::size_t begin = frame_header_bytes + addresses.place;
        const std::size_t end = begin + addresses.size;
        if (number_at(untagged_, type_place) == addresses.type && end <= untagged_.size()) {
            return {untagged_.data() + begin, untagged_.data() + end};
        }
    }
    return {};
}

}  // namespace sim
