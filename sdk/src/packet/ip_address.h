/// IP addresses of both versions as numbers.
#pragma once

#include "packet.h"

#include <bcm/types.h>

#include <cstdint>

namespace sim {

/// The first bit is the highest of `high`. IPv4 fills the upper half of that, and the rest is 0.
struct IpAddress {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
};

inline bool operator==(const IpAddress &a, const IpAddress &b)
{
    return a.high == b.high && a.low == b.low;
}

constexpr unsigned ip4_bits = 32;
constexpr unsigned ip6_bits = 128;

/// The numbers in four and in eight bytes, which compilers make one instruction of.
inline std::uint32_t number4_at(const unsigned char *bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16
           | static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}
inline std::uint64_t number8_at(const unsigned char *bytes)
{
    return static_cast<std::uint64_t>(bytes[0]) << 56 | static_cast<std::uint64_t>(bytes[1]) << 48
           | static_cast<std::uint64_t>(bytes[2]) << 40 | static_cast<std::uint64_t>(bytes[3]) << 32
           | static_cast<std::uint64_t>(bytes[4]) << 24 | static_cast<std::uint64_t>(bytes[5]) << 16
           | static_cast<std::uint64_t>(bytes[6]) << 8 | bytes[7];
}

inline IpAddress ip4_address(bcm_ip_t address)
{
    return {static_cast<std::uint64_t>(address) << 32, 0};
}
inline IpAddress ip6_address(const unsigned char *bytes)
{
    return {number8_at(bytes), number8_at(bytes + 8)};
}

inline bcm_ip_t to_ip4(const IpAddress &address)
{
    return static_cast<bcm_ip_t>(address.high >> 32);
}
void to_ip6(const IpAddress &address, unsigned char *bytes);

/// The first bits of an address, the others 0. length: 0..128.
IpAddress network_of(const IpAddress &address, unsigned length);

/// How many bits a mask keeps, or -1 if they are not the first ones.
int mask_length(const IpAddress &mask, bool is_ip6);

/// An address in words.
class IpText {
public:
    IpText(const IpAddress &address, bool is_ip6);
    const char *text() const { return text_; }

private:
    char text_[40];
};

}  // namespace sim
