/// Hosts: single addresses.
#include "begin.h"
#include "events.h"
#include "l3.h"
#include "l3_way.h"
#include "record_bytes.h"
#include "sim_l3.h"

#include <cstring>

using namespace sim;

namespace {

using Details = L3Details<bcm_l3_host_t>;

IpAddress address_of(const bcm_l3_host_t &host)
{
    return host.l3a_flags & BCM_L3_IP6 ? ip6_address(host.l3a_ip6_addr) : ip4_address(host.l3a_ip_addr);
}

/// The record of an entry without details.
bcm_l3_host_t plain_record(const L3Entry &entry)
{
    bcm_l3_host_t host;
    std::memset(&host, 0, sizeof host);
    host.l3a_flags = entry.flags;
    host.l3a_vrf = entry.vrf;
    if (entry.is_ip6()) {
        to_ip6(entry.network, host.l3a_ip6_addr);
    } else {
        host.l3a_ip_addr = to_ip4(entry.network);
    }
    host.l3a_intf = entry.interface;
    return host;
}

bcm_l3_host_t record_of(const L3Hosts &hosts, std::uint32_t place)
{
    const L3Entry &entry = hosts.at(place);
    const Details *details = hosts.details(place);
    bcm_l3_host_t host = details != nullptr ? details->records.front() : plain_record(entry);
    host.l3a_flags = entry.flags | ((entry.state & l3_hit) != 0 ? std::uint32_t{BCM_L3_HIT} : 0u);
    return host;
}

std::uint32_t find(const L3State &l3, const bcm_l3_host_t &host)
{
    const bool is_ip6 = host.l3a_flags & BCM_L3_IP6;
    return is_vrf(host.l3a_vrf) ? l3.hosts.find(address_of(host), static_cast<unsigned>(host.l3a_vrf), is_ip6)
                                : L3Hosts::none;
}

void remove(L3State &l3, std::uint32_t place)
{
    l3_count(l3, l3.hosts.at(place), -1);
    l3.hosts.remove(place);
}

int add(L3State &l3, const bcm_l3_host_t &host)
{
    const bool is_ip6 = host.l3a_flags & BCM_L3_IP6;
    if (!is_vrf(host.l3a_vrf)) {
        return BCM_E_PARAM;
    }
    if ((host.l3a_flags & ~(l3_entry_flags | l3_how_flags)) != 0 || host.l3a_flags2 != 0
        || host.l3a_ipmc_ptr != 0) {
        return BCM_E_UNAVAIL;
    }
    L3Entry entry;
    entry.network = address_of(host);
    entry.interface = host.l3a_intf;
    entry.flags = host.l3a_flags & ~l3_how_flags;
    entry.vrf = static_cast<std::uint16_t>(host.l3a_vrf);
    entry.length = is_ip6 ? ip6_bits : ip4_bits;
    entry.state = is_ip6 ? l3_ip6 : 0;
    std::unique_ptr<Details> details;
    const int rc = l3_way(l3.objects, host, &entry.way, &details);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    const bcm_l3_host_t plain = plain_record(entry);
    bcm_l3_host_t stored = host;
    stored.l3a_flags = entry.flags;
    if (details == nullptr && !alike(plain, stored)) {
        details = std::make_unique<Details>();
        details->records = {stored};
    }
    const std::uint32_t old = find(l3, host);
    if (old == L3Hosts::none) {
        if (!l3.hosts.insert(entry, std::move(details))) {
            return BCM_E_FULL;
        }
    } else if (host.l3a_flags & BCM_L3_REPLACE) {
        const L3Entry before = l3.hosts.at(old);
        l3.hosts.replace(old, entry, std::move(details));
        l3_count(l3, before, -1);
    } else {
        return BCM_E_EXISTS;
    }
    l3_count(l3, entry, 1);
    return BCM_E_NONE;
}

/// Removes the hosts for which test(entry) holds.
template <class Test>
void remove_if(L3State &l3, bool is_ip6, Test test)
{
    l3.hosts.traverse(is_ip6, 0, UINT32_MAX, [&](std::uint32_t place) {
        if (test(l3.hosts.at(place))) {
            remove(l3, place);
        }
        return 0;
    });
}

int set_valid(int unit, bcm_vrf_t vrf, bcm_ip_t address, bool valid)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if (!is_vrf(vrf)) {
            return BCM_E_PARAM;
        }
        const std::uint32_t place = l3.hosts.find(ip4_address(address), static_cast<unsigned>(vrf), false);
        if (place == L3Hosts::none) {
            return BCM_E_NOT_FOUND;
        }
        std::uint8_t &state = l3.hosts.at(place).state;
        state = static_cast<std::uint8_t>(valid ? state & ~l3_invalid : state | l3_invalid);
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_l3_host_add(int unit, bcm_l3_host_t *info)
{
    return begin(unit, ready<L3State>, given(info), tells_if_full(bcmSwitchObjectL3HostMax))
        .then([&](L3State &l3) { return add(l3, *info); });
}

int sim_bcm_l3_host_find(int unit, bcm_l3_host_t *info)
{
    return begin(unit, ready<L3State>, given(info)).then([&](L3State &l3) -> int {
        const std::uint32_t place = find(l3, *info);
        if (place == L3Hosts::none) {
            return BCM_E_NOT_FOUND;
        }
        const bool clears = info->l3a_flags & BCM_L3_HIT_CLEAR;
        *info = record_of(l3.hosts, place);
        if (clears) {
            l3.hosts.at(place).state &= static_cast<std::uint8_t>(~l3_hit);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_host_delete(int unit, bcm_l3_host_t *ip_addr)
{
    return begin(unit, ready<L3State>, given(ip_addr)).then([&](L3State &l3) -> int {
        const std::uint32_t place = find(l3, *ip_addr);
        if (place == L3Hosts::none) {
            return BCM_E_NOT_FOUND;
        }
        remove(l3, place);
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_host_delete_by_network(int unit, bcm_l3_route_t *ip_addr)
{
    return begin(unit, ready<L3State>, given(ip_addr)).then([&](L3State &l3) -> int {
        const bool is_ip6 = ip_addr->l3a_flags & BCM_L3_IP6;
        const IpAddress mask =
            is_ip6 ? ip6_address(ip_addr->l3a_ip6_mask) : ip4_address(ip_addr->l3a_ip_mask);
        const IpAddress address =
            is_ip6 ? ip6_address(ip_addr->l3a_ip6_net) : ip4_address(ip_addr->l3a_subnet);
        const int length = mask_length(mask, is_ip6);
        if (length < 0 || !is_vrf(ip_addr->l3a_vrf)) {
            return BCM_E_PARAM;
        }
        const auto bits = static_cast<unsigned>(length);
        const IpAddress network = network_of(address, bits);
        remove_if(l3, is_ip6, [&](const L3Entry &entry) {
            return entry.vrf == ip_addr->l3a_vrf && network_of(entry.network, bits) == network;
        });
        return BCM_E_NONE;
    });
}

int sim_bcm_l3_host_delete_by_interface(int unit, bcm_l3_host_t *info)
{
    return begin(unit, ready<L3State>, given(info)).then([&](L3State &l3) {
        for (const bool is_ip6 : {false, true}) {
            remove_if(l3, is_ip6, [&](const L3Entry &entry) { return entry.interface == info->l3a_intf; });
        }
    });
}

int sim_bcm_l3_host_delete_all(int unit, bcm_l3_host_t *)
{
    return begin(unit, ready<L3State>).then([](L3State &l3) {
        for (const bool is_ip6 : {false, true}) {
            remove_if(l3, is_ip6, [](const L3Entry &) { return true; });
        }
    });
}

int sim_bcm_l3_host_age(int unit, uint32 flags, bcm_l3_host_traverse_cb age_cb, void *user_data)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) {
        return l3.hosts.traverse(flags & BCM_L3_IP6, 0, UINT32_MAX, [&](std::uint32_t place) {
            L3Entry &entry = l3.hosts.at(place);
            if (entry.state & l3_hit) {
                entry.state &= static_cast<std::uint8_t>(~l3_hit);
                return 0;
            }
            bcm_l3_host_t copy = record_of(l3.hosts, place);
            remove(l3, place);
            return age_cb != nullptr ? age_cb(unit, static_cast<int>(place), &copy, user_data) : 0;
        });
    });
}

int sim_bcm_l3_host_traverse(int unit, uint32 flags, uint32 start, uint32 end, bcm_l3_host_traverse_cb cb,
                             void *user_data)
{
    return begin(unit, ready<L3State>).then([&](L3State &l3) -> int {
        if (cb == nullptr || start > end) {
            return BCM_E_PARAM;
        }
        return l3.hosts.traverse(flags & BCM_L3_IP6, start, end, [&](std::uint32_t place) {
            bcm_l3_host_t copy = record_of(l3.hosts, place);
            return cb(unit, static_cast<int>(place), &copy, user_data);
        });
    });
}

int sim_bcm_l3_host_invalidate_entry(int unit, bcm_vrf_t vrf, bcm_ip_t info)
{
    return set_valid(unit, vrf, info, false);
}

int sim_bcm_l3_host_validate_entry(int unit, bcm_vrf_t vrf, bcm_ip_t info)
{
    return set_valid(unit, vrf, info, true);
}

}  // extern "C"
