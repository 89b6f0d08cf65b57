/// Routed multicasts: where the packets of a source to a group go, and by which interfaces their copies leave.
#pragma once

#include "ip_address.h"
#include "l3_objects.h"
#include "port_set.h"
#include "switch.h"

#include <bcm/ipmc.h>
#include <bcm/trunk.h>

#include <array>
#include <cstddef>
#include <map>
#include <unordered_map>
#include <vector>

namespace sim {

/// What an entry is found by. All sources are the address 0, any VLAN is 0.
struct MulticastKey {
    IpAddress source, group;
    int vrf = 0;
    bcm_vlan_t vid = 0;
    bool is_ip6 = false;

    bool operator==(const MulticastKey &other) const
    {
        return source == other.source && group == other.group && vrf == other.vrf && vid == other.vid
               && is_ip6 == other.is_ip6;
    }
};

struct MulticastEntry {
    MulticastKey key;
    bcm_ipmc_addr_t record = {};
    bool hit = false;
};

/// The copies that leave by one interface.
struct RoutedCopies {
    NextHop hop;  ///< which keeps the address that they are sent to
    PortSet ports;
    std::vector<bcm_trunk_t> trunks;
};

/// The members of a group of the SDK's.
struct MulticastMembers {
    std::vector<RoutedCopies> routed;
    PortSet bridged;  ///< members that are not rewritten
};

class L3Multicast {
public:
    static constexpr std::size_t capacity = 8192;

    explicit L3Multicast(Switch &sw);

    bool is_enabled = true;
    std::array<bcm_ipmc_counters_t, port_max + 1> counters = {};

    /// By place in the table.
    const std::map<int, MulticastEntry> &entries() const { return entries_; }

    /// The entry of exactly that key, or null; its place to *index.
    MulticastEntry *find(const MulticastKey &key, int *index = nullptr);
    MulticastEntry *at(int index);

    /// The entry for a packet: its own source goes before all, its VLAN before any. Null if there is none.
    MulticastEntry *for_packet(MulticastKey key);

    /// The place, or -1 if the table is full.
    int add(const MulticastEntry &entry);
    void remove(int index);
    void clear();

    /// What has been said of a group.
    const MulticastMembers &members_of(Switch &sw, bcm_multicast_t group);

    /// Groups or interfaces have changed.
    void touch() { is_worked_out_ = false; }

private:
    struct Hash {
        std::size_t operator()(const MulticastKey &key) const;
    };

    void work_out(Switch &sw);

    std::map<int, MulticastEntry> entries_;
    std::unordered_map<MulticastKey, int, Hash> index_;
    bool is_worked_out_ = false;
    std::unordered_map<bcm_multicast_t, MulticastMembers> members_;
};

}  // namespace sim
