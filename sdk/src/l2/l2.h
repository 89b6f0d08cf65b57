/// The room of layer 2: the table of MAC addresses, the tables around it, ageing, learning and who is told.
///
/// It offers the packet path lookups, learning and counting, and nothing of what is in a packet but its
/// addresses.
#pragma once

#include "clock.h"
#include "handler_list.h"
#include "keyed_table.h"
#include "l2_destination.h"
#include "l2_rows.h"
#include "l2_table.h"
#include "protocol.h"
#include "switch.h"
#include "trunk.h"

#include <array>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace sim {

constexpr int learn_classes = 32;
constexpr int age_seconds_default = 300;
constexpr int multicast_lines = 8192;

struct L2LearnClass {
    int priority = 0;
    uint32 flags = 0;  // BCM_L2_LEARN_CLASS_*
};

/// What can be set and is not a table; init puts back the defaults.
struct L2Settings {
    int age_seconds = age_seconds_default;
    int freezes = 0;
    bool learns = true;                     // bcmSwitchL2LearnEnable
    bool ages = true;                       // bcmSwitchL2AgeEnable
    Protocols cpu_protocols = 0;            // of which the CPU gets copies
    bool unknown_unicast_to_cpu = false;    // bcmSwitchUnknownUcastToCpu
    bool unknown_multicast_to_cpu = false;  // bcmSwitchUnknownMcastToCpu
    HandlerList<Callback<bcm_l2_addr_callback_t>> subscribers;
    std::map<std::pair<uint32, int>, int> learn_limits;  // by BCM_L2_LEARN_LIMIT_* selector and id
    std::array<L2LearnClass, learn_classes> classes;
    std::array<int, port_max + 1> port_classes = {};
    bcm_l2_learn_msgs_config_t learn_messages = {};
    std::map<bcm_vlan_t, uint32> distribution;  // BCM_L2_ADDR_DIST_* by VLAN
};

/// How many entries were learnt, in all and by VLAN, port and trunk: what learn limits are held against.
class L2LearnCounts {
public:
    void add(const bcm_l2_addr_t &address, int change);
    int of(uint32 selector, int id) const;
    void clear() { counts_.clear(); }

private:
    std::map<std::pair<uint32, int>, int> counts_;  // keys as in L2Settings::learn_limits
};

using L2Counters = std::array<uint64, bcmL2StatCount>;

struct L2State : RoomState {
    static constexpr Room room = Room::l2;

    explicit L2State(Switch &sw);

    void forget_functions(Switch &) override { settings.subscribers.clear(); }

    /// Sweeps from now on whenever so many seconds have passed; 0: never.
    void age_every(int seconds);

    bool initialised = true;
    bool multicast_initialised = true;
    L2Settings settings;

    L2Table addresses;
    L2LearnCounts learnt;
    std::unordered_map<L2Key, L2Counters> counters;  // of the entries that have them enabled

    KeyedTable<int, bcm_l2_cache_addr_t> cache{128};
    KeyedTable<L2Key, bool> tunnels{1024};  // the value says nothing
    KeyedTable<L2Key, bcm_l2_auth_addr_t> authorised{4096};
    ObjectTable<bcm_l2_station_t> stations{512};
    // The same as packets see them, worked out at each change.
    std::vector<bcm_l2_station_t> stations_by_priority;

    /// Who may take packets that else are bridged: stations, and routers, as layer 3 says; of multicasts, copies.
    enum Takers : unsigned { no_takers, stations_take = 1, routers_take = 2, multicast_routers_take = 4 };
    unsigned takers = no_takers;
    void put_takers(Takers which, bool are_there)
    {
        takers = are_there ? takers | which : takers & ~unsigned{which};
    }

    ObjectTable<bcm_l2_egress_t> egress{16384};
    ObjectTable<bcm_l2_mac_port_t> mac_ports{1024};

    std::map<int, bcm_pbmp_t>
        multicast;  // sets of ports by line; neither cleared nor initialised with the rest

    /// Stations have changed.
    void order_stations();

    /// Empties all tables and tells nobody.
    void clear();

    void retire() override;

    L2Rows rows;  // of the chip's memory of addresses

private:
    Timer ageing_;
};

inline L2State &l2_of(Switch &sw)
{
    return sw.of<L2State>();
}

/// Operation of l2_enter and l2_remove that tells nobody; the others are BCM_L2_CALLBACK_*.
constexpr int l2_silent = 0;

/// Checks an address to be entered, and resolves its destination into plain port, module and trunk.
/// BCM_E_PARAM, BCM_E_NOT_FOUND (VLAN), BCM_E_PORT, BCM_E_BADID.
int l2_check(const Switch &sw, bcm_l2_addr_t *address);

/// Enters a checked address, with L2EntryState bits, or replaces it, and calls the callbacks: when replacing
/// with BCM_L2_CALLBACK_ADD, first as deleted. BCM_E_FULL.
int l2_enter(Switch &sw, const bcm_l2_addr_t &address, unsigned state, int operation);

void l2_remove(Switch &sw, std::size_t position, int operation);

/// What became of a packet's source address.
struct L2Arrival {
    int status;  // as of sim_l2_learn

    /// Its entry said so already; if not, those who are told of addresses may have done anything.
    bool was_in_place;

    uint32 flags;  // of the entry that was in place
};

/// Where an entry leads; errors as for resolve.
inline int l2_destination(const L2Table &addresses, std::size_t position, Destination *to)
{
    // Most lead to a port, and need no record for that.
    constexpr uint32 elsewhere = BCM_L2_DISCARD_DST | BCM_L2_MCAST | BCM_L2_TRUNK_MEMBER | BCM_L2_LOCAL_CPU;
    const L2Table::Place place = addresses.place(position);
    if (!(addresses.flags(position) & elsewhere) && place.modid == own_module
        && static_cast<unsigned>(place.port) <= port_max) {
        *to = {Destination::Kind::port, own_module, place.port};
        return BCM_E_NONE;
    }
    return resolve_address(addresses.record(position), to);
}

/// Counts a packet for the entry, if it has counters.
inline void l2_count(L2State &l2, L2Key key, bcm_l2_stat_t packets, bcm_l2_stat_t bytes, std::size_t length)
{
    if (l2.counters.empty()) {
        return;
    }
    const auto counters = l2.counters.find(key);
    if (counters != l2.counters.end()) {
        counters->second[bytes] += length;
        ++counters->second[packets];
    }
}

/// Of an address without entry for the place where it arrived, or none at that position.
L2Arrival l2_arrive_elsewhere(Switch &sw, int port, const Destination &place, const unsigned char *mac,
                              bcm_vlan_t vid, std::size_t position, std::size_t length);

/// A packet of that length arrives at the port: notes, learns or moves its source address, and counts for it.
inline L2Arrival l2_arrive(Switch &sw, int port, const unsigned char *mac, bcm_vlan_t vid, std::size_t length)
{
    const Destination &place = trunks_of(sw).ports().places[static_cast<std::size_t>(port)];
    L2State &l2 = l2_of(sw);
    const L2Key key = l2_key(mac, vid);
    const std::size_t position = l2.addresses.find(key);
    Destination at;
    if (position == L2Table::none || l2_destination(l2.addresses, position, &at) != BCM_E_NONE
        || !(at == place)) {
        return l2_arrive_elsewhere(sw, port, Destination(place), mac, vid, position, length);
    }
    const uint32 flags = l2.addresses.flags(position) | BCM_L2_SRC_HIT;
    l2.addresses.set_flags(position, flags);
    l2_count(l2, key, bcmL2StatInPackets, bcmL2StatInBytes, length);
    return {BCM_E_NONE, true, flags};
}

/// Calls the callbacks.
void l2_notify(Switch &sw, const bcm_l2_addr_t &address, int operation);

}  // namespace sim
