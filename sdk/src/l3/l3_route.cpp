/// Routes: networks and the ways to them.
#include "begin.h"
#include "events.h"
#include "l3.h"
#include "l3_way.h"
#include "record_bytes.h"
#include "sim_l3.h"

#include <cstring>

using namespace sim;

namespace {

using Details = L3Details<bcm_l3_route_t>;

/// What a route is known by.
struct Key {
    IpAddress network;
    unsigned length;
    unsigned vrf;
    bool is_ip6;
};

/// BCM_E_PARAM: no such routing table, or a mask whose bits are not the first ones.
int key_of(const bcm_l3_route_t &route, Key *key)
{
    key->is_ip6 = route.l3a_flags & BCM_L3_IP6;
    const IpAddress mask = key->is_ip6 ? ip6_address(route.l3a_ip6_mask) : ip4_address(route.l3a_ip_mask);
    const int length = mask_length(mask, key->is_ip6);
    if (length < 0 || !is_vrf(route.l3a_vrf)) {
        return BCM_E_PARAM;
    }
    key->length = static_cast<unsigned>(length);
    key->vrf = static_cast<unsigned>(route.l3a_vrf);
    key->network =
        network_of(key->is_ip6 ? ip6_address(route.l3a_ip6_net) : ip4_address(route.l3a_subnet), key->length);
    return BCM_E_NONE;
}

/// The record of an entry without details.
bcm_l3_route_t plain_record(const L3Entry &entry)
{
    bcm_l3_route_t route;
    std::memset(&route, 0, sizeof route);
    route.l3a_flags = entry.flags;
    route.l3a_vrf = entry.vrf;
    constexpr std::uint64_t ones = ~std::uint64_t{0};
    const IpAddress mask = network_of({ones, ones}, entry.length);
    if (entry.is_ip6()) {
        to_ip6(entry.network, route.l3a_ip6_net);
        to_ip6(mask, route.l3a_ip6_mask);
    } else {
        route.l3a_subnet = to_ip4(entry.network);
        route.l3a_ip_mask = to_ip4(mask);
    }
    route.l3a_intf = entry.interface;
    return route;
}

bcm_l3_route_t record_of(const L3Routes &routes, std::uint32_t place)
{
    const L3Entry &entry = routes.at(place);
    const Details *details = routes.details(place);
    bcm_l3_route_t route = details != nullptr ? details->records.front() : plain_record(entry);
    route.l3a_flags = entry.flags | ((entry.state & l3_hit) != 0 ? std::uint32_t{BCM_L3_HIT} : 0u);
    return route;
}

void remove(L3State &l3, std::uint32_t place)
{
    l3_count(l3, l3.routes.at(place), -1);
    l3.routes.remove(place);
}

bool is_unavailable(const bcm_l3_route_t &route)
{
    return (route.l3a_flags & ~(l3_entry_flags | l3_how_flags)) != 0 || route.l3a_flags2 != 0
           || route.l3a_ipmc_flags != 0 || route.l3a_tunnel_option != 0 || route.l3a_mpls_label != 0
           || route.l3a_mc_group != 0 || route.l3a_rp != 0;
}

int add(L3State &l3, const bcm_l3_route_t &route)
{
    Key key;
    int rc = key_of(route, &key);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    if (is_unavailable(route)) {
        return BCM_E_UNAVAIL;
    }
    L3Entry entry;
    entry.network = key.network;
    entry.interface = route.l3a_intf;
    entry.flags = route.l3a_flags & ~l3_how_flags;
    entry.vrf = static_cast<std::uint16_t>(key.vrf);
    entry.length = static_cast<std::uint8_t>(key.length);
    entry.state = key.is_ip6 ? l3_ip6 : 0;
    std::unique_ptr<Details> details;
    rc = l3_way(l3.objects, route, &entry.way, &details);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    const bcm_l3_route_t plain = plain_record(entry);
    bcm_l3_route_t stored = route;
    stored.l3a_flags = entry.flags;
    if (details == nullptr && !alike(plain, stored)) {
        details = std::make_unique<Details>();
        details->records = {stored};
    }
    const std::uint32_t old = l3.routes.exact(key.network, key.length, key.vrf, key.is_ip6);
    if (old == L3Routes::none) {
        if (!l3.routes.insert(entry, std::move(details))) {
            return BCM_E_FULL;
        }
    } else if (route.l3a_flags & BCM_L3_REPLACE) {
        const L3Entry before = l3.routes.at(old);
        l3.routes.replace(old, entry, std::move(details));
        l3_count(l3, before, -1);
    } else {
        return BCM_E_EXISTS;
    }
    l3_count(l3, entry, 1);
    return BCM_E_NONE;
}

/// The place of the route of the record's network: BCM_E_PARAM, BCM_E_NOT_FOUND.
int find(const L3State &l3, const bcm_l3_route_t &route, std::uint32_t *place)
{
    Key key;
    const int rc = key_of(route, &key);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    *place = l3.routes.exact(key.network, key.length, key.vrf, key.is_ip6);
    return *place != L3Routes::none ? BCM_E_NONE : BCM_E_NOT_FOUND;
}

template <class Test>
void remove_if(L3State &l3, Test test)
{
    for (const bool is_ip6 : {false, true}) {
        l3.routes.traverse(is_ip6, 0, UINT32_MAX, [&](std::uint32_t place) {
            if (test(l3.routes.at(place))) {
                remove(l3, place);
            }
            return 0;
        });
    }
}

/// The route that a packet to the host takes; is_attached: of those to attached networks.
int find_for_host(int unit, const bcm_l3_host_t *host, bcm_l3_route_t *route, bool is_attached)
{
    return begin(unit, ready<L3State>, given(host, route)).then([&](L3State &l3) -> int {
        if (!is_vrf(host->l3a_vrf)) {
            return BCM_E_PARAM;
        }
        const bool is_ip6 = host->l3a_flags & BCM_L3_IP6;
        const IpAddress address = is_ip6 ? ip6_address(host->l3a_ip6_addr) : ip4_address(host->l3a_ip_addr);
        for (int length = is_ip6 ? ip6_bits : ip4_bits; length >= 0; --length) {
            const auto bits = static_cast<unsigned>(length);
            const std::uint32_t place = l3.routes.exact(network_of(address, bits), bits,
                                                        static_cast<unsigned>(host->l3a_vrf), is_ip6);
            if (place != L3Routes::none && (!is_attached || (l3.routes.at(place).flags & BCM_L3_DEFLOCAL))) {
                *route = record_of(l3.routes, place);
                return BCM_E_NONE;
            }
        }
        return BCM_E_NOT_FOUND;
    });
}

}  // namespace

extern "C" {

int sim_bcm_l3_route_add(int unit, bcm_l3_route_t *info)
{
    const bool is_ip6 = info != nullptr && (info->l3a_flags & BCM_L3_IP6) != 0;
    const auto object = is_ip6 ? bcmSwitchObjectL3RouteIp6Max : bcmSwitchObjectL3RouteIp4Max;
    return begin(unit, ready<L3State>, given(info), tells_if_full(object)).then([&](L3State &l3) {
        return add(l3, *info);
    });
}

int sim_bcm_l3_route_delete(int unit, bcm_l3_route_t *info)
{
    return begin(unit, ready<L3State>, given(info)).then([&](L3State &l3) {
        std::uint32_t place;
        const int rc = find(l3, *info, &place);
        if (rc == BCM_E_NONE) {
            remove(l3, place);
        }
        return rc;
    });
}

int sim_bcm_l3_route_delete_by_interface(int unit, bcm_l3_route_t *info)
{
    return begin(unit, ready<L3State>, given(info)).then([&](L3State &l3) {
        remove_if(l3, [&](const L3Entry &entry) { return entry.interface == info->l3a_intf; });
    });
}

int sim_bcm_l3_route_delete_all(int unit, bcm_l3_route_t *)
{
    return begin(unit, ready<L3State>).then([](L3State &l3) {
        remove_if(l3, [](const L3Entry &) { return true; });
    });
}

int sim_bcm_l3_route_get(int unit, bcm_l3_route_t *info)
{
    return begin(unit, ready<L3State>, given(info)).then([&](L3State &l3) {
        std::uint32_t place;
        const int rc = find(l3, *info, &place);
        if (rc == BCM_E_NONE) {
            const bool clears = info->l3a_flags & BCM_L3_HIT_CLEAR;
            *info = record_of(l3.routes, place);
            if (clears) {
                l3.routes.at(place).state &= static_cast<std::uint8_t>(~l3_hit);
            }
        }
        return rc;
    });
}

int sim_bcm_l3_route_age(int unit, uint32 flags, bcm_l3_route_traverse_cb age_out, void *user_data)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) {
        return l3.routes.traverse(flags & BCM_L3_IP6, 0, UINT32_MAX, [&](std::uint32_t place) {
            L3Entry &entry = l3.routes.at(place);
            if (entry.state & l3_hit) {
                entry.state &= static_cast<std::uint8_t>(~l3_hit);
                return 0;
            }
            bcm_l3_route_t copy = record_of(l3.routes, place);
            remove(l3, place);
            return age_out != nullptr ? age_out(unit, static_cast<int>(place), &copy, user_data) : 0;
        });
    });
}

int sim_bcm_l3_route_traverse(int unit, uint32 flags, uint32 start, uint32 end,
                              bcm_l3_route_traverse_cb trav_fn, void *user_data)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if (trav_fn == nullptr || start > end) {
            return BCM_E_PARAM;
        }
        return l3.routes.traverse(flags & BCM_L3_IP6, start, end, [&](std::uint32_t place) {
            bcm_l3_route_t copy = record_of(l3.routes, place);
            return trav_fn(unit, static_cast<int>(place), &copy, user_data);
        });
    });
}

int sim_bcm_l3_route_find(int unit, bcm_l3_host_t *host, bcm_l3_route_t *route)
{
    return find_for_host(unit, host, route, false);
}

int sim_bcm_l3_subnet_route_find(int unit, bcm_l3_host_t *host, bcm_l3_route_t *route)
{
    return find_for_host(unit, host, route, true);
}

int sim_bcm_l3_route_max_ecmp_set(int unit, int max)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if (max < 1 || max > L3State::paths_max) {
            return BCM_E_PARAM;
        }
        l3.settings.paths_max = max;
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_route_max_ecmp_get(int unit, int *max)
{
    return begin(unit, ready<L3State>, given(max)).then([&](L3State &l3) { *max = l3.settings.paths_max; });
}

}  // extern "C"
