/// Masks of IPv4 and IPv6 prefixes, and the prefix lengths of masks.
#include "sim_ip.h"

#include <iterator>

namespace {

constexpr int ip_bits = 32, ip6_bits = 128;

/// The first `length` bits of 8 are set; lengths outside 0..8 count as the nearest of these.
uint8 byte_mask(int length)
{
    return length <= 0 ? 0 : length >= 8 ? 0xff : static_cast<uint8>(0xff << (8 - length));
}

/// How many of the `size` bytes' leading bits are set, or BCM_E_PARAM if one is set behind the first that is
/// not.
int mask_length(const uint8 *bytes, int size)
{
    int length = 0;
    while (length < size * 8 && (bytes[length / 8] & 0x80 >> length % 8) != 0) {
        ++length;
    }
    for (int byte = 0; byte < size; ++byte) {
        if (bytes[byte] != byte_mask(length - byte * 8)) {
            return BCM_E_PARAM;
        }
    }
    return length;
}

}  // namespace

extern "C" {

bcm_ip_t sim_bcm_ip_mask_create(int len)
{
    return len <= 0 || len > ip_bits ? 0 : ~bcm_ip_t{0} << (ip_bits - len);
}

int sim_bcm_ip_mask_length(bcm_ip_t mask)
{
    const uint8 bytes[] = {static_cast<uint8>(mask >> 24), static_cast<uint8>(mask >> 16),
                           static_cast<uint8>(mask >> 8), static_cast<uint8>(mask)};
    return mask_length(bytes, std::size(bytes));
}

int sim_bcm_ip6_mask_create(bcm_ip6_t ip6, int len)
{
    if (ip6 == nullptr || len < 0 || len > ip6_bits) {
        return BCM_E_PARAM;
    }
    for (int byte = 0; byte < ip6_bits / 8; ++byte) {
        ip6[byte] = byte_mask(len - byte * 8);
    }
    return BCM_E_NONE;
}

int sim_bcm_ip6_mask_length(bcm_ip6_t mask)
{
    return mask != nullptr ? mask_length(mask, ip6_bits / 8) : static_cast<int>(BCM_E_PARAM);
}
}
