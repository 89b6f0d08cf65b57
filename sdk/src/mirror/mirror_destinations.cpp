/// Destinations of mirrors, with what wraps copies on their way there.
#include "begin.h"
#include "mirror.h"
#include "sim_mirror.h"

#include <algorithm>
#include <iterator>

using namespace sim;

namespace {

using Settings = bcm_mirror_destination_t;

constexpr int first_id = BCM_GPORT_MAKE(26, 1);
constexpr int capacity = 64;

/// What packets' copies are not given here.
constexpr uint32 not_built = BCM_MIRROR_DEST_TUNNEL_VNTAG | BCM_MIRROR_DEST_TUNNEL_ETAG
                             | BCM_MIRROR_DEST_MULTICAST | BCM_MIRROR_DEST_TIMESTAMP
                             | BCM_MIRROR_DEST_DROP_ONLY;
constexpr uint32 known_flags = BCM_MIRROR_DEST_WITH_ID | BCM_MIRROR_DEST_REPLACE | mirror_tunnels | not_built;

constexpr bool is_one_bit(uint32 bits)
{
    return (bits & (bits - 1)) == 0;
}

bool asks_for_more(const Settings &settings)
{
    const bcm_mirror_pkt_header_updates_t &updates = settings.packet_control_updates;
    return (settings.flags & not_built) || settings.policer_id != 0 || settings.stat_id != 0
           || settings.encap_id != 0 || settings.tunnel_id != 0 || settings.recycle_context != 0
           || settings.egress_if != 0 || settings.failover_id != 0 || settings.timestamp_mode != 0
           || settings.observation_domain != 0 || updates.update_fields != 0 || updates.strip_length != 0;
}

bool is_in_range(const Settings &settings)
{
    constexpr uint32 over_ip = BCM_MIRROR_DEST_TUNNEL_IP_GRE | BCM_MIRROR_DEST_TUNNEL_UDP;
    constexpr unsigned sessions = 1024;
    const bool has_version = settings.version == 0 || settings.version == 4 || settings.version == 6;
    const bool has_tag = settings.flags & (over_ip | BCM_MIRROR_DEST_TUNNEL_L2);
    const bool needs_vlan = settings.flags & BCM_MIRROR_DEST_TUNNEL_L2;
    return !(settings.flags & ~known_flags) && is_one_bit(settings.flags & mirror_tunnels)
           && !(settings.flags & over_ip && (!has_version || settings.span_id >= sessions))
           && !(has_tag && (settings.vlan_id > BCM_VLAN_MAX || settings.vlan_prio > 7))
           && !(needs_vlan && settings.vlan_id == 0) && settings.truncate_length >= 0
           && settings.sample_rate_dividend <= settings.sample_rate_divisor;
}

/// Whether a member is the same in both; arrays element by element.
template <class Member>
bool same(const Member &a, const Member &b)
{
    if constexpr (std::is_array_v<Member>) {
        return std::equal(std::begin(a), std::end(a), std::begin(b));
    } else {
        return a == b;
    }
}

template <class Record, class... Members>
bool all_same(const Record &a, const Record &b, Members Record::*...members)
{
    return (same(a.*members, b.*members) && ...);
}

/// Equal but for the id and how that was chosen. What destinations cannot have is 0 in both.
bool is_equal(const Settings &a, const Settings &b)
{
    constexpr uint32 choosing = BCM_MIRROR_DEST_WITH_ID | BCM_MIRROR_DEST_REPLACE;
    using S = Settings;
    return ((a.flags ^ b.flags) & ~choosing) == 0
           && all_same(a, b, &S::gport, &S::multicast_group, &S::src_mac, &S::dst_mac, &S::tpid, &S::vlan_id,
                       &S::vlan_prio, &S::version, &S::tos, &S::ttl, &S::df, &S::src_addr, &S::dst_addr,
                       &S::src6_addr, &S::dst6_addr, &S::flow_label, &S::hop_limit, &S::gre_protocol,
                       &S::udp_src_port, &S::udp_dst_port, &S::span_id, &S::int_pri, &S::cosq, &S::color,
                       &S::sample_rate_dividend, &S::sample_rate_divisor, &S::truncate_length,
                       &S::sequence_number)
           && !asks_for_more(a);
}

/// A destination by its id: BCM_E_NOT_FOUND.
auto destination_of(bcm_gport_t id)
{
    return [id](Switch &sw, auto next) -> int {
        auto &destinations = mirrors_of(sw).destinations;
        const auto found = destinations.find(id);
        return found != destinations.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

/// The id for a new destination, or that of the one to be replaced.
int choose_id(const std::map<int, MirrorDestination> &destinations, const Settings &settings, int *id)
{
    const bool replaces = settings.flags & BCM_MIRROR_DEST_REPLACE;
    if (replaces || (settings.flags & BCM_MIRROR_DEST_WITH_ID)) {
        *id = settings.mirror_dest_id;
        if (*id < first_id || *id >= first_id + capacity) {
            return BCM_E_PARAM;
        }
        const bool exists = destinations.count(*id) != 0;
        return exists == replaces ? BCM_E_NONE : exists ? BCM_E_EXISTS : BCM_E_NOT_FOUND;
    }
    for (*id = first_id; *id < first_id + capacity; ++*id) {
        if (destinations.count(*id) == 0) {
            return BCM_E_NONE;
        }
    }
    return BCM_E_FULL;
}

auto stat_of(bcm_mirror_stat_t stat)
{
    return [stat](Switch &, auto next) -> int {
        const auto place = static_cast<std::size_t>(stat);
        return place < std::tuple_size_v<decltype(MirrorDestination::counts)> ? next(place)
                                                                              : static_cast<int>(BCM_E_PARAM);
    };
}

}  // namespace

extern "C" {

int sim_bcm_mirror_destination_create(int unit, bcm_mirror_destination_t *mirror_dest)
{
    return begin(unit, ready<MirrorState>, given(mirror_dest))
        .then([&](Switch &sw, MirrorState &mirrors) -> int {
            Destination to;
            if (!is_in_range(*mirror_dest)) {
                return BCM_E_PARAM;
            }
            if (asks_for_more(*mirror_dest)) {
                return BCM_E_UNAVAIL;
            }
            int rc = resolve(own_module, mirror_dest->gport, &to);
            if (rc != BCM_E_NONE) {
                return rc;
            }
            if (to.kind != Destination::Kind::trunk && !is_own_port(to)) {
                return BCM_E_UNAVAIL;
            }
            int id = 0;
            rc = choose_id(mirrors.destinations, *mirror_dest, &id);
            if (rc != BCM_E_NONE) {
                return rc;
            }
            MirrorDestination &destination = mirrors.destinations[id];
            mirror_dest->mirror_dest_id = id;
            destination.settings = *mirror_dest;
            destination.to = to;
            destination.sequence = mirror_dest->sequence_number;
            update_copies(sw);
            return BCM_E_NONE;
        });
}

int sim_bcm_mirror_destination_destroy(int unit, bcm_gport_t mirror_dest_id)
{
    return begin(unit, ready<MirrorState>, destination_of(mirror_dest_id))
        .then([&](MirrorState &mirrors, MirrorDestination &destination) -> int {
            if (destination.used() != 0) {
                return BCM_E_BUSY;
            }
            mirrors.destinations.erase(mirror_dest_id);
            return BCM_E_NONE;
        });
}

int sim_bcm_mirror_destination_get(int unit, bcm_gport_t mirror_dest_id,
                                   bcm_mirror_destination_t *mirror_dest, int *use_count)
{
    return begin(unit, ready<MirrorState>, given(mirror_dest, use_count), destination_of(mirror_dest_id))
        .then([&](MirrorState &, MirrorDestination &destination) {
            *mirror_dest = destination.settings;
            *use_count = destination.used();
        });
}

int sim_bcm_mirror_destination_find(int unit, bcm_mirror_destination_t *mirror_dest,
                                    bcm_gport_t *mirror_dest_id)
{
    return begin(unit, ready<MirrorState>, given(mirror_dest, mirror_dest_id))
        .then([&](MirrorState &mirrors) -> int {
            for (const auto &[id, destination] : mirrors.destinations) {
                if (is_equal(*mirror_dest, destination.settings)) {
                    *mirror_dest_id = id;
                    return BCM_E_NONE;
                }
            }
            return BCM_E_NOT_FOUND;
        });
}

int sim_bcm_mirror_destination_traverse(int unit, bcm_mirror_destination_traverse_cb cb, void *user_data)
{
    return begin(unit, ready<MirrorState>, given(cb)).then([&](Switch &sw, MirrorState &mirrors) -> int {
        // Who is told may make and destroy some, and the unit.
        auto next = mirrors.destinations.begin();
        while (next != mirrors.destinations.end()) {
            const int id = next->first;
            Settings settings = next->second.settings;
            const int rc = cb(unit, &settings, user_data);
            if (rc < 0 || attached(unit) != &sw) {
                return rc < 0 ? rc : static_cast<int>(BCM_E_NONE);
            }
            next = mirrors.destinations.upper_bound(id);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_mirror_destination_enable_set(int unit, bcm_gport_t mirror_dest_id, int enable)
{
    return begin(unit, ready<MirrorState>, destination_of(mirror_dest_id))
        .then([&](MirrorState &, MirrorDestination &destination) { destination.is_on = enable != 0; });
}

int sim_bcm_mirror_destination_enable_get(int unit, bcm_gport_t mirror_dest_id, int *enable)
{
    return begin(unit, ready<MirrorState>, given(enable), destination_of(mirror_dest_id))
        .then([&](MirrorState &, MirrorDestination &destination) { *enable = destination.is_on; });
}

int sim_bcm_mirror_stat_get(int unit, bcm_gport_t mirror_dest_id, bcm_mirror_stat_t stat, uint64 *value)
{
    return begin(unit, ready<MirrorState>, given(value), stat_of(stat), destination_of(mirror_dest_id))
        .then([&](MirrorState &, std::size_t place, MirrorDestination &destination) {
            *value = destination.counts[place];
        });
}

int sim_bcm_mirror_stat_get32(int unit, bcm_gport_t mirror_dest_id, bcm_mirror_stat_t stat, uint32 *value)
{
    return begin(unit, ready<MirrorState>, given(value), stat_of(stat), destination_of(mirror_dest_id))
        .then([&](MirrorState &, std::size_t place, MirrorDestination &destination) {
            *value = static_cast<uint32>(destination.counts[place]);
        });
}

int sim_bcm_mirror_stat_set(int unit, bcm_gport_t mirror_dest_id, bcm_mirror_stat_t stat, uint64 value)
{
    return begin(unit, ready<MirrorState>, stat_of(stat), destination_of(mirror_dest_id))
        .then([&](MirrorState &, std::size_t place, MirrorDestination &destination) {
            destination.counts[place] = value;
        });
}

}  // extern "C"
