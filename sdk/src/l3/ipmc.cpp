/// Entries of routed multicasts, and what is counted of them.
#include "begin.h"
#include "events.h"
#include "l3.h"
#include "rule_store.h"
#include "sim_ipmc.h"
#include "vlan.h"

#include <algorithm>
#include <iterator>

using namespace sim;

namespace {

using Address = bcm_ipmc_addr_t;

constexpr uint32 how_flags = BCM_IPMC_REPLACE | BCM_IPMC_HIT | BCM_IPMC_HIT_CLEAR;
constexpr uint32 known_flags = BCM_IPMC_IP6 | BCM_IPMC_COPY_TO_CPU | BCM_IPMC_SOURCE_PORT_NOCHECK | how_flags;

/// The module, which has to be initialised: BCM_E_INIT.
constexpr auto ready_multicast = [](Switch &sw, auto next) -> int {
    return rule_store_of(sw).is_initialised("ipmc") ? next(l3_of(sw).multicast)
                                                    : static_cast<int>(BCM_E_INIT);
};

constexpr IpAddress none = {};
constexpr IpAddress whole4 = {0xffffffff00000000u, 0}, whole6 = {~std::uint64_t{0}, ~std::uint64_t{0}};

IpAddress masked(const IpAddress &address, const IpAddress &mask)
{
    return {address.high & mask.high, address.low & mask.low};
}

/// Masks count if one of them is neither none nor whole; what has none is whole then, or any source.
void put_masks(const IpAddress &source, const IpAddress &group, MulticastKey *key)
{
    const IpAddress &whole = key->is_ip6 ? whole6 : whole4;
    const auto is_partial = [&](const IpAddress &mask) { return !(mask == none) && !(mask == whole); };
    if (is_partial(source) || is_partial(group)) {
        key->masks.source = source == none && !(key->source == none) ? whole : source;
        key->masks.group = group == none ? whole : group;
        key->source = masked(key->source, key->masks.source);
        key->group = masked(key->group, key->masks.group);
    }
}

/// BCM_E_PARAM
int key_of(const Address &address, MulticastKey *key)
{
    key->is_ip6 = address.flags & BCM_IPMC_IP6;
    key->source = key->is_ip6 ? ip6_address(address.s_ip6_addr) : ip4_address(address.s_ip_addr);
    key->group = key->is_ip6 ? ip6_address(address.mc_ip6_addr) : ip4_address(address.mc_ip_addr);
    key->vrf = address.vrf;
    key->vid = address.vid;
    const bool is_group = key->is_ip6 ? key->group.high >> 56 == 0xff : key->group.high >> 60 == 0xe;
    if (!is_group || !is_vrf(address.vrf) || (address.vid != 0 && !VlanTable::valid(address.vid))
        || (address.flags & ~known_flags) != 0) {
        return BCM_E_PARAM;
    }
    if (key->is_ip6) {
        put_masks(ip6_address(address.s_ip6_mask), ip6_address(address.mc_ip6_mask), key);
    } else {
        put_masks(ip4_address(address.s_ip_mask), ip4_address(address.mc_ip_mask), key);
    }
    return BCM_E_NONE;
}

Address record_of(const MulticastEntry &entry)
{
    Address record = entry.record;
    record.flags |= entry.hit ? uint32{BCM_IPMC_HIT} : 0;
    return record;
}

/// The first error of the record, or what the body says of its key.
template <class Body>
int with_key(int unit, const Address *address, Body body)
{
    return begin(unit, ready_multicast, given(address)).then([&](L3Multicast &multicast) -> int {
        MulticastKey key;
        const int rc = key_of(*address, &key);
        return rc == BCM_E_NONE ? body(multicast, key) : rc;
    });
}

int enter(L3Multicast &multicast, const MulticastKey &key, const Address &address, int *index)
{
    if (address.group < 0 || address.group_l2 < 0 || address.ing_intf < 0) {
        return BCM_E_PARAM;
    }
    MulticastEntry made;
    made.key = key;
    made.record = address;
    made.record.flags &= ~how_flags;
    int place = -1;
    if (MulticastEntry *entry = multicast.find(key, &place)) {
        if (!(address.flags & BCM_IPMC_REPLACE)) {
            return BCM_E_EXISTS;
        }
        *entry = made;
    } else {
        place = multicast.add(made);
        if (place < 0) {
            return BCM_E_FULL;
        }
    }
    *index = place;
    return BCM_E_NONE;
}

/// The number of a line: BCM_E_PARAM.
auto line(int index)
{
    return [index](Switch &, auto next) -> int {
        constexpr bcm_multicast_t lines = 65536;
        bcm_multicast_t number = index;
        return number >= 0 && number < lines ? next(number) : static_cast<int>(BCM_E_PARAM);
    };
}

/// visit(place, entry) for each of a version of IP that is there at its turn; it may change the table in any way.
template <class Visit>
int visit_all(int unit, L3Multicast &multicast, bool is_ip6, Visit visit)
{
    Switch *const sw = attached(unit);
    for (int place = 0; attached(unit) == sw;) {
        const auto next = multicast.entries().lower_bound(place);
        if (next == multicast.entries().end()) {
            break;
        }
        place = next->first + 1;
        const int rc = next->second.key.is_ip6 == is_ip6 ? visit(next->first, *multicast.at(next->first)) : 0;
        if (rc < 0) {
            return rc;
        }
    }
    return BCM_E_NONE;
}

}  // namespace

extern "C" {

int sim_bcm_ipmc_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        rule_store_of(sw).initialise("ipmc");
        l3_of(sw).multicast.clear();
        l3_of(sw).change_addresses();
    });
}

int sim_bcm_ipmc_detach(int unit)
{
    return begin(unit, ready_multicast).then([](Switch &sw, L3Multicast &multicast) {
        rule_store_of(sw).detach("ipmc");
        multicast.clear();
        l3_of(sw).change_addresses();
    });
}

int sim_bcm_ipmc_enable(int unit, int enable)
{
    return begin(unit, ready_multicast).then([&](Switch &sw, L3Multicast &multicast) {
        multicast.is_enabled = enable != 0;
        l3_of(sw).change_addresses();
    });
}

int sim_bcm_ipmc_add(int unit, bcm_ipmc_addr_t *ipmc, int *index)
{
    return begin(unit, ready_multicast, given(index), tells_if_full(bcmSwitchObjectIpmcEntryMax))
        .then([&](Switch &sw, L3Multicast &) {
            const int rc = with_key(unit, ipmc, [&](L3Multicast &multicast, const MulticastKey &key) {
                return enter(multicast, key, *ipmc, index);
            });
            l3_of(sw).change_addresses();
            return rc;
        });
}

int sim_bcm_ipmc_find(int unit, bcm_ipmc_addr_t *ipmc, int *index)
{
    return begin(unit, ready_multicast, given(index)).then([&](L3Multicast &) {
        return with_key(unit, ipmc, [&](L3Multicast &multicast, const MulticastKey &key) -> int {
            MulticastEntry *entry = multicast.find(key, index);
            if (entry == nullptr) {
                return BCM_E_NOT_FOUND;
            }
            const bool clears = ipmc->flags & BCM_IPMC_HIT_CLEAR;
            *ipmc = record_of(*entry);
            entry->hit = entry->hit && !clears;
            return BCM_E_NONE;
        });
    });
}

int sim_bcm_ipmc_remove(int unit, bcm_ipmc_addr_t *ipmc)
{
    return with_key(unit, ipmc, [&](L3Multicast &multicast, const MulticastKey &key) -> int {
        int index;
        if (multicast.find(key, &index) == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        multicast.remove(index);
        return BCM_E_NONE;
    });
}

int sim_bcm_ipmc_remove_all(int unit, bcm_vrf_t vrf)
{
    return begin(unit, ready_multicast).then([&](L3Multicast &multicast) -> int {
        if (vrf != -1 && !is_vrf(vrf)) {
            return BCM_E_PARAM;
        }
        for (const bool is_ip6 : {false, true}) {
            visit_all(unit, multicast, is_ip6, [&](int place, const MulticastEntry &entry) {
                if (vrf == -1 || entry.key.vrf == vrf) {
                    multicast.remove(place);
                }
                return 0;
            });
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_ipmc_get_by_index(int unit, int index, bcm_ipmc_addr_t *ipmc)
{
    return begin(unit, ready_multicast, given(ipmc)).then([&](L3Multicast &multicast) -> int {
        const MulticastEntry *entry = multicast.at(index);
        if (entry == nullptr) {
            const bool is_place = index >= 0 && static_cast<std::size_t>(index) < L3Multicast::capacity;
            return is_place ? BCM_E_NOT_FOUND : BCM_E_PARAM;
        }
        *ipmc = record_of(*entry);
        return BCM_E_NONE;
    });
}

int sim_bcm_ipmc_age(int unit, uint32 flags, bcm_ipmc_traverse_cb age_cb, void *user_data)
{
    return begin(unit, ready_multicast).then([&](L3Multicast &multicast) {
        return visit_all(unit, multicast, flags & BCM_IPMC_IP6, [&](int place, MulticastEntry &entry) {
            if (entry.hit) {
                entry.hit = false;
                return 0;
            }
            Address copy = record_of(entry);
            multicast.remove(place);
            return age_cb != nullptr ? age_cb(unit, &copy, user_data) : 0;
        });
    });
}

int sim_bcm_ipmc_traverse(int unit, uint32 flags, bcm_ipmc_traverse_cb cb, void *user_data)
{
    return begin(unit, ready_multicast).then([&](L3Multicast &multicast) -> int {
        if (cb == nullptr) {
            return BCM_E_PARAM;
        }
        return visit_all(unit, multicast, flags & BCM_IPMC_IP6, [&](int, MulticastEntry &entry) {
            if ((flags & BCM_IPMC_HIT) && !entry.hit) {
                return 0;
            }
            Address copy = record_of(entry);
            entry.hit = entry.hit && !(flags & BCM_IPMC_HIT_CLEAR);
            return cb(unit, &copy, user_data);
        });
    });
}

int sim_bcm_ipmc_egress_port_set(int unit, bcm_port_t port, bcm_mac_t mac, int untag, bcm_vlan_t vid,
                                 int ttl_threshold)
{
    return begin(unit, ready_multicast, given(mac), own_port(port))
        .then([&](L3Multicast &multicast, int own) -> int {
            constexpr int ttl_max = 255;
            if ((vid != 0 && !VlanTable::valid(vid)) || ttl_threshold < 0 || ttl_threshold > ttl_max) {
                return BCM_E_PARAM;
            }
            MulticastSending &sending = multicast.sending[static_cast<std::size_t>(own)];
            std::copy(mac, mac + sizeof sending.mac, sending.mac);
            sending.vid = vid;
            sending.is_untagged = untag != 0;
            sending.ttl = ttl_threshold;
            multicast.touch();
            return BCM_E_NONE;
        });
}

int sim_bcm_ipmc_egress_port_get(int unit, bcm_port_t port, bcm_mac_t mac, int *untag, bcm_vlan_t *vid,
                                 int *ttl_threshold)
{
    return begin(unit, ready_multicast, given(mac, untag, vid, ttl_threshold), own_port(port))
        .then([&](L3Multicast &multicast, int own) {
            const MulticastSending &sending = multicast.sending[static_cast<std::size_t>(own)];
            std::copy(std::begin(sending.mac), std::end(sending.mac), mac);
            *untag = sending.is_untagged;
            *vid = sending.vid;
            *ttl_threshold = sending.ttl;
        });
}

int sim_bcm_ipmc_bitmap_set(int unit, int mc_index, bcm_pbmp_t pbmp)
{
    return begin(unit, ready_multicast, line(mc_index)).then([&](L3Multicast &multicast, bcm_multicast_t of) {
        const PortSet ports(pbmp);
        if (ports.empty()) {
            multicast.lines.erase(of);
        } else {
            multicast.lines[of] = ports;
        }
        multicast.touch();
    });
}

int sim_bcm_ipmc_bitmap_get(int unit, int mc_index, bcm_pbmp_t *pbmp)
{
    return begin(unit, ready_multicast, given(pbmp), line(mc_index))
        .then([&](L3Multicast &multicast, bcm_multicast_t of) {
            BCM_PBMP_CLEAR(*pbmp);
            const auto found = multicast.lines.find(of);
            if (found != multicast.lines.end()) {
                found->second.each([&](int port) { BCM_PBMP_PORT_ADD(*pbmp, port); });
            }
        });
}

int sim_bcm_ipmc_bitmap_del(int unit, int mc_index, bcm_pbmp_t pbmp)
{
    return begin(unit, ready_multicast, line(mc_index)).then([&](L3Multicast &multicast, bcm_multicast_t of) {
        const auto found = multicast.lines.find(of);
        if (found != multicast.lines.end()) {
            found->second = found->second - PortSet(pbmp);
            multicast.touch();
        }
    });
}

int sim_bcm_ipmc_counters_get(int unit, bcm_port_t port, bcm_ipmc_counters_t *counters)
{
    return begin(unit, ready_multicast, given(counters), own_port(port))
        .then([&](L3Multicast &multicast, int own) {
            *counters = multicast.counters[static_cast<std::size_t>(own)];
        });
}

int sim_bcm_ipmc_counters_clear(int unit, bcm_port_t port)
{
    return begin(unit, ready_multicast, own_port(port)).then([&](L3Multicast &multicast, int own) {
        multicast.counters[static_cast<std::size_t>(own)] = {};
    });
}

}  // extern "C"
