/// Addresses printed for people.
#include "checked.h"
#include "sim.h"

#include <cstdio>
#include <string>

using namespace sim;

namespace {

std::string key_text(const bcm_l2_addr_t &address)
{
    char text[40];
    const unsigned char *mac = address.mac;
    std::snprintf(text, sizeof text, "mac=%02x:%02x:%02x:%02x:%02x:%02x vlan=%d", mac[0], mac[1],
                  mac[2], mac[3], mac[4], mac[5], address.vid);
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
    static constexpr struct {
        uint32 flag;
        const char *name;
    } names[] = {{BCM_L2_DISCARD_SRC, "discard-source"}, {BCM_L2_COPY_TO_CPU, "copy-to-cpu"},
                 {BCM_L2_L3LOOKUP, "l3"},                {BCM_L2_PENDING, "pending"},
                 {BCM_L2_MIRROR, "mirror"},              {BCM_L2_SRC_HIT, "source-hit"},
                 {BCM_L2_DES_HIT, "destination-hit"}};
    std::string text = flags & BCM_L2_STATIC ? "static" : "dynamic";
    for (const auto &known : names) {
        if (flags & known.flag) {
            text += std::string(" ") + known.name;
        }
    }
    return text;
}

}  // namespace

extern "C" {

int sim_bcm_l2_addr_dump(int unit, bcm_l2_addr_t *entry)
{
    return on_l2(unit, {entry}, [&](Switch &) -> int {
        std::printf("%s %s %s\n", key_text(*entry).c_str(), destination_text(*entry).c_str(),
                    flags_text(entry->flags).c_str());
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_key_dump(int unit, char *pfx, bcm_l2_addr_t *entry, char *sfx)
{
    return on_l2(unit, {pfx, entry, sfx}, [&](Switch &) -> int {
        std::printf("%s%s%s", pfx, key_text(*entry).c_str(), sfx);
        return BCM_E_NONE;
    });
}

}  // extern "C"
