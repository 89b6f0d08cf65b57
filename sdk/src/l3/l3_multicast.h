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
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

namespace sim {

class RuleStore;

/// Which bits of the addresses count, where these stand for several. 0: all of them, or any source if that is 0.
struct MulticastMasks {
    IpAddress source, group;

    bool operator==(const MulticastMasks &other) const
    {
        return source == other.source && group == other.group;
    }
};

/// What an entry is found by. All sources are the address 0, any VLAN is 0. Bits that do not count are 0.
struct MulticastKey {
    IpAddress source, group;
    MulticastMasks masks;
    int vrf = 0;
    bcm_vlan_t vid = 0;
    bool is_ip6 = false;

    bool is_masked() const { return !(masks == MulticastMasks()); }

    bool operator==(const MulticastKey &other) const
    {
        return source == other.source && group == other.group && masks == other.masks && vrf == other.vrf
               && vid == other.vid && is_ip6 == other.is_ip6;
    }
};

struct MulticastEntry {
    MulticastKey key;
    bcm_ipmc_addr_t record = {};
    bool hit = false;
};

/// Whether copies leave with a tag.
enum class MulticastTag : std::uint8_t { as_vlan_says, never, always };

/// The copies that leave by one interface.
struct RoutedCopies {
    NextHop hop;  ///< which keeps the address that they are sent to
    PortSet ports;
    std::vector<bcm_trunk_t> trunks;
    MulticastTag tag = MulticastTag::as_vlan_says;
};

/// How a port sends the copies of lines that it is in: none as long as it has no VLAN.
struct MulticastSending {
    bcm_mac_t mac = {};
    bcm_vlan_t vid = 0;
    bool is_untagged = false;
    int ttl = 0;  ///< below which packets are dropped
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

    /// To be changed with touch(): the ports of lines, and how ports send their copies.
    std::map<bcm_multicast_t, PortSet> lines;
    std::array<MulticastSending, port_max + 1> sending = {};

    /// By place in the table.
    const std::map<int, MulticastEntry> &entries() const { return entries_; }

    /// The entry of exactly that key, or null; its place to *index.
    MulticastEntry *find(const MulticastKey &key, int *index = nullptr);
    MulticastEntry *at(int index);

    /// The entry for a packet: its own source goes before all, its VLAN before any, whole addresses before masked ones,
    /// and among these the higher priority, then the lower place. Null if there is none.
    MulticastEntry *for_packet(MulticastKey key);

    /// The place, or -1 if the table is full.
    int add(const MulticastEntry &entry);
    void remove(int index);
    void clear();

    /// What has been said of a group.
    const MulticastMembers &members_of(Switch &sw, bcm_multicast_t group);

    /// Whether packets of the group may come in by any interface of its rendezvous point.
    bool is_shared(Switch &sw, const IpAddress &group, bool is_ip6);
    bool leads_to(Switch &sw, int rendezvous_point, bcm_if_t interface);

    /// Groups, interfaces, ranges or rendezvous points have changed.
    void touch() { is_worked_out_ = false; }

private:
    struct Hash {
        std::size_t operator()(const MulticastKey &key) const;
    };

    /// Entries with the same masks.
    struct Masked {
        MulticastMasks masks;
        bool is_ip6;
        std::size_t count;
    };

    struct Range {
        IpAddress group, mask;
        bool is_ip6;
    };

    void work_out(Switch &sw);
    void work_out_lines();
    void work_out_ranges(const RuleStore &store);
    MulticastEntry *masked_for_packet(const MulticastKey &of_packet);
    void count_masked(const MulticastKey &key, std::size_t more);

    std::map<int, MulticastEntry> entries_;
    std::unordered_map<MulticastKey, int, Hash> index_;
    std::vector<Masked> masked_;
    bool is_worked_out_ = false;
    std::unordered_map<bcm_multicast_t, MulticastMembers> members_;
    std::map<int, L3Interface> sending_interfaces_;  // of ports
    std::vector<Range> ranges_;
    std::set<std::pair<int, bcm_if_t>> rendezvous_interfaces_;
};

}  // namespace sim
