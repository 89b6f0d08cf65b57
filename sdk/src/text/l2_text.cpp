/// Layer-2 entries printed with a prefix.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"
#include "sim_parse.h"

#include <cstdio>

using namespace sim;

extern "C" {

void sim_dump_l2_addr(int unit, char *pfx, bcm_l2_addr_t *l2addr)
{
    begin(unit, ready<L2State>, given(l2addr)).then([&](L2State &) -> int {
        std::fputs(pfx != nullptr ? pfx : "", stdout);
        sim_bcm_l2_addr_dump(unit, l2addr);
        return std::fflush(stdout);
    });
}

void sim_dump_l2_cache_addr(int unit, char *pfx, bcm_l2_cache_addr_t *l2caddr)
{
    begin(unit, ready<L2State>, given(l2caddr)).then([&](L2State &) -> int {
        const bcm_l2_cache_addr_t &entry = *l2caddr;
        const auto octets = [](const char *name, const bcm_mac_t mac) {
            std::printf(" %s=%02x:%02x:%02x:%02x:%02x:%02x", name, mac[0], mac[1], mac[2], mac[3], mac[4],
                        mac[5]);
        };
        std::fputs(pfx != nullptr ? pfx : "", stdout);
        std::printf("flags=0x%x", entry.flags);
        octets("mac", entry.mac);
        octets("mask", entry.mac_mask);
        std::printf(" vlan=%d/0x%x", entry.vlan, entry.vlan_mask);
        if (entry.flags & BCM_L2_CACHE_DISCARD) {
            std::puts(" discard");
        } else if (entry.flags & BCM_L2_CACHE_TRUNK) {
            std::printf(" trunk=%d\n", entry.dest_trunk);
        } else {
            std::printf(" module=%d port=%d\n", entry.dest_modid, entry.dest_port);
        }
        return std::fflush(stdout);
    });
}

}  // extern "C"
