/// The layer-3 module as a whole.
#include "begin.h"
#include "l3.h"
#include "rule_store.h"
#include "sim_l3.h"

#include <set>

using namespace sim;

namespace sim {

void L3State::change_addresses()
{
    const auto &[ip4, ip6] = virtual_routers.of_version;
    addresses_are_worked_out_ = false;
    l2_.put_takers(
        L2State::routers_take,
        initialised && settings.routes && (!objects.interfaces.empty() || !ip4.empty() || !ip6.empty()));
    l2_.put_takers(L2State::multicast_routers_take,
                   initialised && settings.routes && multicast.is_enabled && !multicast.entries().empty());
    multicast.touch();
}

void L3State::clear()
{
    routes.remove_all();
    hosts.remove_all();
    objects.clear();
    ingress.clear();
    for (auto &routers : virtual_routers.of_version) {
        routers.clear();
    }
    source_discards = 0;
    change_addresses();
}

}  // namespace sim

namespace {

void reset(L3State &l3, bool initialised)
{
    l3.settings = {};
    l3.initialised = initialised;
    l3.clear();
}

int used_vrfs(const L3State &l3)
{
    std::set<int> used;
    for (const auto &[id, interface] : l3.objects.interfaces) {
        used.insert(interface.record.l3a_vrf);
    }
    for (const bool is_ip6 : {false, true}) {
        l3.hosts.traverse(is_ip6, 0, UINT32_MAX, [&](std::uint32_t place) {
            used.insert(l3.hosts.at(place).vrf);
            return 0;
        });
        l3.routes.traverse(is_ip6, 0, UINT32_MAX, [&](std::uint32_t place) {
            used.insert(l3.routes.at(place).vrf);
            return 0;
        });
    }
    return static_cast<int>(used.size());
}

}  // namespace

extern "C" {

int sim_bcm_l3_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        reset(l3_of(sw), true);
        rule_store_of(sw).initialise("l3");
    });
}

int sim_bcm_l3_cleanup(int unit)
{
    return begin(unit, ready<L3State>).then([](Switch &sw, L3State &l3) {
        reset(l3, false);
        rule_store_of(sw).detach("l3");
    });
}

int sim_bcm_l3_enable_set(int unit, int enable)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) {
        l3.settings.routes = enable != 0;
        l3.change_addresses();
    });
}

int sim_bcm_l3_info(int unit, bcm_l3_info_t *l3info)
{
    return begin(unit, ready<L3State>, given(l3info)).then([&](L3State &l3) {
        const auto number = [](std::size_t count) { return static_cast<int>(count); };
        bcm_l3_info_t info = {};
        info.l3info_max_vrf = L3Routes::vrf_max;
        info.l3info_used_vrf = used_vrfs(l3);
        info.l3info_max_intf = number(L3Objects::interface_max);
        info.l3info_used_intf = number(l3.objects.interfaces.size());
        info.l3info_max_host = number(L3Hosts::capacity);
        info.l3info_used_host_ip4 = number(l3.hosts.count(false));
        info.l3info_used_host_ip6 = number(l3.hosts.count(true));
        info.l3info_used_host = info.l3info_used_host_ip4 + info.l3info_used_host_ip6;
        info.l3info_max_route = number(L3Routes::ip4_capacity + L3Routes::ip6_capacity);
        info.l3info_used_route = number(l3.routes.count(false) + l3.routes.count(true));
        info.l3info_max_l3 = info.l3info_max_host;
        info.l3info_used_l3 = info.l3info_used_host;
        info.l3info_max_defip = info.l3info_max_route;
        info.l3info_used_defip = info.l3info_used_route;
        info.l3info_max_nexthop = number(L3Objects::egress_max);
        info.l3info_used_nexthop = number(l3.objects.egress.size());
        info.l3info_max_ecmp_groups = number(L3Objects::group_max);
        info.l3info_max_ecmp = l3.settings.paths_max;
        *l3info = info;
    });
}

}  // extern "C"
