/// The MAC addresses for which packets are routed.
#pragma once

#include "l2.h"
#include "l3_objects.h"

#include <set>
#include <utility>
#include <vector>

namespace sim {

/// What the switch takes for itself of the packets to an address.
enum RouterTakes : unsigned {
    takes_ip4 = 1,
    takes_ip6 = 2,
    takes_arp = 4,   // goes to the CPU
    takes_rest = 8,  // goes to the CPU, ARP too
    takes_copy = 16  // of what is routed: the CPU gets a copy
};

/// Keys of virtual routers: VLAN and number, by version of IP.
struct VirtualRouters {
    static constexpr std::size_t capacity = 2048;
    std::set<std::pair<bcm_vlan_t, uint32>> of_version[2];
};

/// The addresses of interfaces and virtual routers with their VLANs, and the interface of each VLAN.
class RouterAddresses {
public:
    struct Match {
        unsigned takes = 0;  ///< RouterTakes bits; 0: the address is none of the router's
        const L3Interface *interface =
            nullptr;  ///< where the packet is thought to arrive; null if there is none
    };

    /// As interfaces and virtual routers are now.
    void work_out(const L3Objects &objects, const VirtualRouters &virtual_routers);

    Match find(L2Key key) const
    {
        if (slots_.empty()) {
            return {};
        }
        for (std::size_t slot = home(key);; slot = (slot + 1) & mask_) {
            if (slots_[slot].key == key) {
                return slots_[slot].match;
            }
            if (slots_[slot].key == 0) {
                return {};
            }
        }
    }

    /// That with the lowest id in the VLAN, or null.
    const L3Interface *of_vlan(bcm_vlan_t vid) const
    {
        return vid < of_vlans_.size() ? of_vlans_[vid] : nullptr;
    }

private:
    struct Slot {
        L2Key key = 0;
        Match match;
    };

    std::size_t home(L2Key key) const
    {
        const std::uint64_t hash = (key ^ (key >> 32)) * 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(hash >> 32) & mask_;
    }
    void add(L2Key key, const Match &match);

    std::vector<Slot> slots_;                    // a power of two, at most half of them in use
    std::size_t mask_ = 0;                       // of the place of a slot
    std::vector<const L3Interface *> of_vlans_;  // as far as there are interfaces
};

}  // namespace sim
