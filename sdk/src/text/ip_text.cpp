/// IPv4 addresses from text and back.
#include "number_text.h"
#include "sim_parse.h"

#include <cstdio>
#include <string_view>

using namespace sim;

namespace {

bool read_octets(std::string_view text, ip_addr_t *address)
{
    ip_addr_t value = 0;
    for (int octet = 0; octet < 4; ++octet) {
        const std::size_t dot = octet < 3 ? text.find('.') : text.size();
        if (dot == std::string_view::npos || dot == 0 || dot > 3) {
            return false;
        }
        unsigned number = 0;
        for (char c : text.substr(0, dot)) {
            if (c < '0' || c > '9') {
                return false;
            }
            number = number * 10 + static_cast<unsigned>(c - '0');
        }
        if (number > 255) {
            return false;
        }
        value = value << 8 | number;
        text.remove_prefix(octet < 3 ? dot + 1 : dot);
    }
    *address = value;
    return true;
}

void write_octets(char *buf, ip_addr_t address)
{
    std::snprintf(buf, IPADDR_STR_LEN, "%u.%u.%u.%u", address >> 24, address >> 16 & 255, address >> 8 & 255,
                  address & 255);
}

}  // namespace

extern "C" {

int sim_parse_ipaddr(char *str, ip_addr_t *ipaddr)
{
    if (str == nullptr || ipaddr == nullptr) {
        return BCM_E_PARAM;
    }
    ip_addr_t address;
    if (!read_octets(trimmed(str), &address) && read_number(str, &address, 1) != NumberStatus::ok) {
        return BCM_E_PARAM;
    }
    *ipaddr = address;
    return BCM_E_NONE;
}

void sim_format_ipaddr(ip_addr_text_t buf, ip_addr_t ipaddr)
{
    if (buf != nullptr) {
        write_octets(buf, ipaddr);
    }
}

void sim_format_ipaddr_mask(char *buf, ip_addr_t ipaddr, ip_addr_t mask)
{
    if (buf == nullptr) {
        return;
    }
    char address[IPADDR_STR_LEN], mask_text[IPADDR_STR_LEN];
    write_octets(address, ipaddr);
    write_octets(mask_text, mask);
    const uint32 host_bits = ~mask;
    if ((host_bits & (host_bits + 1)) == 0) {
        std::snprintf(mask_text, sizeof mask_text, "%d", __builtin_popcount(mask));
    }
    std::snprintf(buf, 2 * IPADDR_STR_LEN, "%s/%s", address, mask_text);
}

}  // extern "C"
