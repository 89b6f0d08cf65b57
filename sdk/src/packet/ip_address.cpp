#include "ip_address.h"

#include <cstdio>

namespace sim {

namespace {

constexpr std::uint64_t ones = ~std::uint64_t{0};

constexpr std::uint64_t first_ones(unsigned count)
{
    return count == 0 ? 0 : ones << (64 - count);
}

}  // namespace

void to_ip6(const IpAddress &address, unsigned char *bytes)
{
    for (unsigned i = 0; i < 8; ++i) {
        bytes[i] = static_cast<unsigned char>(address.high >> (56 - 8 * i));
        bytes[8 + i] = static_cast<unsigned char>(address.low >> (56 - 8 * i));
    }
}

IpAddress network_of(const IpAddress &address, unsigned length)
{
    return {address.high & first_ones(length < 64 ? length : 64),
            address.low & first_ones(length < 64 ? 0 : length - 64)};
}

int mask_length(const IpAddress &mask, bool is_ip6)
{
    const unsigned bits = is_ip6 ? ip6_bits : ip4_bits;
    for (unsigned length = 0; length <= bits; ++length) {
        if (network_of({is_ip6 ? ones : first_ones(ip4_bits), is_ip6 ? ones : 0}, length) == mask) {
            return static_cast<int>(length);
        }
    }
    return -1;
}

IpText::IpText(const IpAddress &address, bool is_ip6)
{
    if (!is_ip6) {
        const bcm_ip_t ip = to_ip4(address);
        std::snprintf(text_, sizeof text_, "%u.%u.%u.%u", ip >> 24, ip >> 16 & 255, ip >> 8 & 255, ip & 255);
        return;
    }
    // The longest run of zeros, of two words at least, is left out.
    unsigned words[8];
    for (unsigned i = 0; i < 4; ++i) {
        words[i] = static_cast<unsigned>(address.high >> (48 - 16 * i)) & 0xffff;
        words[4 + i] = static_cast<unsigned>(address.low >> (48 - 16 * i)) & 0xffff;
    }
    unsigned longest = 0, at = 8;
    for (unsigned i = 0; i < 8; ++i) {
        unsigned run = 0;
        while (i + run < 8 && words[i + run] == 0) {
            ++run;
        }
        if (run > longest) {
            longest = run;
            at = i;
        }
    }
    if (longest < 2) {
        longest = 0;
        at = 8;
    }
    char *end = text_;
    for (unsigned i = 0; i < 8; ++i) {
        if (i == at) {
            end += std::snprintf(end, 3, "::");
            i += longest - 1;
            continue;
        }
        const bool follows = i != 0 && i != at + longest;
        end += std::snprintf(end, 6, follows ? ":%x" : "%x", words[i]);
    }
}

}  // namespace sim
