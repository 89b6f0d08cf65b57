#include "crc32.h"

namespace sim {

std::uint32_t crc32(const unsigned char *bytes, std::size_t size)
{
    constexpr std::uint32_t polynomial = 0xedb88320;
    std::uint32_t remainder = 0xffffffff;
    for (std::size_t i = 0; i < size; ++i) {
        remainder ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            remainder = remainder >> 1 ^ (remainder & 1 ? polynomial : 0);
        }
    }
    return ~remainder;
}

}  // namespace sim
