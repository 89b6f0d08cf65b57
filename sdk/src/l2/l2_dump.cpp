/// Addresses printed for people.
#include "begin.h"
#include "l2.h"
#include "l2_destination.h"
#include "l2_flags.h"
#include "sim_l2.h"

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

using namespace sim;

namespace {

// Not const, as the SDK hands them out.
char flag_words[][16] = {"src-priority", "discard-src", "discard-dst", "copy-to-cpu", "l3",
                         "static",       "pending",     "trunk",       "mirror",      "set-priority",
                         "multicast",    "src-hit",     "dst-hit",     "cpu"};

std::string key_text(const bcm_l2_addr_t &address)
{
    char text[40];
    const unsigned char *mac = address.mac;
    std::snprintf(text, sizeof text, "mac=%02x:%02x:%02x:%02x:%02x:%02x vlan=%d", mac[0], mac[1], mac[2],
                  mac[3], mac[4], mac[5], address.vid);
    return text;
}

std::string destination_text(const bcm_l2_addr_t &address)
{
    Destination to;
    if (resolve_address(address, &to) != BCM_E_NONE) {
        return "nowhere";
    }
    switch (to.kind) {
    case Destination::Kind::port:
        return "module=" + std::to_string(to.module) + " port=" + std::to_string(to.id);
    case Destination::Kind::trunk:
        return "trunk=" + std::to_string(to.id);
    case Destination::Kind::group:
        return "group=" + std::to_string(to.id);
    case Destination::Kind::discard:
        break;
    }
    return "discard";
}

std::string flags_text(uint32 flags)
{
    std::string text = flags & BCM_L2_STATIC ? "static" : "dynamic";
    for (int bit = 0; bit < l2_flags; ++bit) {
        const uint32 flag = uint32{1} << bit;
        if ((flags & flag) && flag != BCM_L2_STATIC) {
            text += std::string(" ") + flag_words[bit];
        }
    }
    return text;
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] char *bcm_l2_flags_str[] = {
    flag_words[0],  flag_words[1],  flag_words[2],  flag_words[3], flag_words[4],
    flag_words[5],  flag_words[6],  flag_words[7],  flag_words[8], flag_words[9],
    flag_words[10], flag_words[11], flag_words[12], flag_words[13]};
static_assert(std::size(flag_words) == l2_flags && std::size(bcm_l2_flags_str) == l2_flags);
[[gnu::visibility("default")]] int bcm_l2_flags_count = l2_flags;

int sim_bcm_l2_addr_dump(int unit, bcm_l2_addr_t *entry)
{
    return begin(unit, ready<L2State>, given(entry)).then([&](L2State &) -> int {
        std::printf("%s %s %s\n", key_text(*entry).c_str(), destination_text(*entry).c_str(),
                    flags_text(entry->flags).c_str());
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_key_dump(int unit, char *pfx, bcm_l2_addr_t *entry, char *sfx)
{
    return begin(unit, ready<L2State>, given(pfx, entry, sfx)).then([&](L2State &) -> int {
        std::printf("%s%s%s", pfx, key_text(*entry).c_str(), sfx);
        return BCM_E_NONE;
    });
}

}  // extern "C"
