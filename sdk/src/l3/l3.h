/// The room of layer 3: which packets are routed, where their addresses lead and how they leave.
///
/// It offers the packet path lookups; what is in a packet beyond its addresses it does not know.
#pragma once

#include "ip_header.h"
#include "l3_hosts.h"
#include "l3_multicast.h"
#include "l3_objects.h"
#include "l3_routes.h"
#include "keyed_table.h"
#include "router_addresses.h"
#include "switch.h"

namespace sim {

/// What can be set and is not a table; init puts back the defaults.
struct L3Settings {
    bool routes = true;  // bcm_l3_enable_set, bcmSwitchL3RoutingEnable
    // What goes to the CPU in place of being dropped: bcmSwitch...ToCpu.
    bool header_errors_to_cpu = false;
    bool unknown_to_cpu = false;
    bool expired_to_cpu = false;
    bool too_long_to_cpu = false;
    bool unexpected_sources_to_cpu = false;
    bool null_routes_to_cpu = false;
    int paths_max = 1024;  // bcm_l3_route_max_ecmp_set
};

struct L3State : RoomState {
    static constexpr Room room = Room::l3;

    static constexpr int paths_max = 1024;  ///< of a group

    explicit L3State(Switch &sw) : multicast(sw), l2_(sw.of<L2State>()) {}

    bool initialised = true;
    L3Settings settings;

    L3Objects objects;
    L3Hosts hosts;
    L3Routes routes;
    VirtualRouters virtual_routers;
    L3Multicast multicast;
    ObjectTable<bcm_l3_ingress_t> ingress{16384};
    int source_discards = 0;  ///< hosts and routes with BCM_L3_SRC_DISCARD

    /// The addresses for which packets are routed.
    const RouterAddresses &addresses()
    {
        if (!addresses_are_worked_out_) {
            addresses_.work_out(objects, virtual_routers);
            addresses_are_worked_out_ = true;
        }
        return addresses_;
    }

    /// Interfaces, virtual routers or entries of multicasts have changed, or whether packets are routed at all.
    void change_addresses();

    /// Empties all tables.
    void clear();

    void retire() override { clear(); }

private:
    L2State &l2_;
    RouterAddresses addresses_;
    bool addresses_are_worked_out_ = false;
};

inline L3State &l3_of(Switch &sw)
{
    return sw.of<L3State>();
}

/// A routing table: BCM_E_PARAM.
inline bool is_vrf(int vrf)
{
    return vrf >= 0 && vrf < L3Routes::vrf_max;
}

/// What leads to an address, for packets and for who asks: a valid host, else the longest prefix of a route. Null if
/// nothing does.
struct L3Found {
    L3Entry *entry = nullptr;
    bool is_host = false;
};
inline L3Found l3_find(L3State &l3, const IpAddress &address, unsigned vrf, bool is_ip6)
{
    const std::uint32_t host = l3.hosts.find(address, vrf, is_ip6);
    if (host != L3Hosts::none && !(l3.hosts.at(host).state & l3_invalid)) {
        return {&l3.hosts.at(host), true};
    }
    const std::uint32_t route = l3.routes.longest(address, vrf, is_ip6);
    return {route != L3Routes::none ? &l3.routes.at(route) : nullptr, false};
}

/// The class that the same says of the address; 0 if nothing leads there.
inline std::uint32_t l3_lookup_class(L3State &l3, const IpAddress &address, unsigned vrf, bool is_ip6)
{
    const auto class_of = [](const auto *details) {
        return details != nullptr ? static_cast<std::uint32_t>(details->records.front().l3a_lookup_class) : 0;
    };
    const std::uint32_t host = l3.hosts.find(address, vrf, is_ip6);
    if (host != L3Hosts::none && !(l3.hosts.at(host).state & l3_invalid)) {
        return class_of(l3.hosts.details(host));
    }
    const std::uint32_t route = l3.routes.longest(address, vrf, is_ip6);
    return route != L3Routes::none ? class_of(l3.routes.details(route)) : 0;
}

}  // namespace sim
