/// Trunks: their settings and members.
#include "begin.h"
#include "rule_store.h"
#include "sim_trunk.h"
#include "trunk.h"
#include "trunk_selection.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

using namespace sim;

namespace {

bool valid(bcm_trunk_t tid)
{
    return tid >= 0 && tid <= BCM_TRUNK_MAX;
}

/// begin() of a function of the module: BCM_E_INIT.
template <class... Checks>
auto with_trunks(int unit, const Checks &...checks)
{
    const auto ready = [](Switch &sw, auto next) -> int {
        return sw.of<TrunkState>().initialised ? next() : static_cast<int>(BCM_E_INIT);
    };
    return begin(unit, ready, checks...);
}

/// A trunk that exists: BCM_E_PARAM, BCM_E_NOT_FOUND.
auto existing_trunk(bcm_trunk_t tid)
{
    return [tid](Switch &sw, auto next) -> int {
        if (!valid(tid)) {
            return BCM_E_PARAM;
        }
        std::map<bcm_trunk_t, Trunk> &trunks = trunks_of(sw).trunks();
        const auto found = trunks.find(tid);
        return found != trunks.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

constexpr uint32 failover_flags =
    BCM_TRUNK_FLAG_FAILOVER_NEXT | BCM_TRUNK_FLAG_FAILOVER_ALL | BCM_TRUNK_FLAG_FAILOVER_LOCAL;
constexpr uint32 info_flags = failover_flags | BCM_TRUNK_FLAG_MCAST_HASH | BCM_TRUNK_FLAG_RESILIENT;

/// Who comes back later is active again, and fails over to nobody.
void forget_absent_members(Trunk &trunk)
{
    for (auto failover = trunk.failovers.begin(); failover != trunk.failovers.end();) {
        const Destination port = {Destination::Kind::port, own_module, failover->first};
        failover = member_index(trunk, port) < 0 ? trunk.failovers.erase(failover) : std::next(failover);
    }
    std::vector<Destination> &ports = trunk.inactive;
    const auto absent = [&](const Destination &port) { return member_index(trunk, port) < 0; };
    ports.erase(std::remove_if(ports.begin(), ports.end(), absent), ports.end());
}

/// An existing trunk and the port of a member of it; also BCM_E_PORT, BCM_E_BADID.
auto existing_member(bcm_trunk_t tid, bcm_gport_t gport)
{
    return [=](Switch &sw, auto next) -> int {
        return existing_trunk(tid)(sw, [&](Trunk &trunk) -> int {
            Destination port;
            const int rc = resolve_port(gport, &port);
            if (rc != BCM_E_NONE) {
                return rc;
            }
            return member_index(trunk, port) >= 0 ? next(trunk, port) : static_cast<int>(BCM_E_NOT_FOUND);
        });
    };
}

/// Appends members whose ports are in no trunk yet: BCM_E_PORT, BCM_E_BADID, BCM_E_EXISTS, BCM_E_FULL.
int append_members(Switch &sw, Trunk &trunk, const bcm_trunk_member_t *members, int count)
{
    for (int i = 0; i < count; ++i) {
        Destination port;
        const int rc = resolve_port(members[i].gport, &port);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        for (const auto &entry : std::as_const(trunks_of(sw)).trunks()) {
            if (member_index(entry.second, port) >= 0) {
                return BCM_E_EXISTS;
            }
        }
        if (trunk.members.size() == TrunkTable::member_max) {
            return BCM_E_FULL;
        }
        trunk.members.push_back(members[i]);
    }
    return BCM_E_NONE;
}

bool valid_psc(int psc)
{
    return psc >= BCM_TRUNK_PSC_SRCMAC && psc <= BCM_TRUNK_PSC_DYNAMIC_ASSIGNED;
}

}  // namespace

extern "C" {

int sim_bcm_trunk_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        trunks_of(sw).trunks().clear();
        rule_store_of(sw).initialise("trunk");
        sw.of<TrunkState>().initialised = true;
    });
}

int sim_bcm_trunk_detach(int unit)
{
    return with_trunks(unit).then([](Switch &sw) {
        trunks_of(sw).trunks().clear();
        rule_store_of(sw).detach("trunk");
        sw.of<TrunkState>().initialised = false;
    });
}

void sim_bcm_trunk_info_t_init(bcm_trunk_info_t *trunk_info)
{
    if (trunk_info == nullptr) {
        return;
    }
    *trunk_info = {};
    trunk_info->psc = trunk_info->ipmc_psc = BCM_TRUNK_PSC_DEFAULT;
    trunk_info->dlf_index = trunk_info->mc_index = trunk_info->ipmc_index = -1;
    trunk_info->backup_tid = -1;
}

void sim_bcm_trunk_member_t_init(bcm_trunk_member_t *trunk_member)
{
    if (trunk_member != nullptr) {
        *trunk_member = {};
        trunk_member->gport = BCM_GPORT_INVALID;
    }
}

int sim_bcm_trunk_create(int unit, uint32 flags, bcm_trunk_t *tid)
{
    return with_trunks(unit, given(tid)).then([&](Switch &sw) -> int {
        if (flags & ~static_cast<uint32>(BCM_TRUNK_FLAG_WITH_ID | BCM_TRUNK_FLAG_VP)) {
            return BCM_E_PARAM;
        }
        std::map<bcm_trunk_t, Trunk> &trunks = trunks_of(sw).trunks();
        bcm_trunk_t id = *tid;
        if (!(flags & BCM_TRUNK_FLAG_WITH_ID)) {
            for (id = 0; trunks.count(id) != 0; ++id) {
            }
            if (!valid(id)) {
                return BCM_E_FULL;
            }
        }
        if (!valid(id)) {
            return BCM_E_PARAM;
        }
        if (trunks.count(id) != 0) {
            return BCM_E_EXISTS;
        }
        Trunk &trunk = trunks[id];
        trunk.flags = flags;
        sim_bcm_trunk_info_t_init(&trunk.info);
        *tid = id;
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_destroy(int unit, bcm_trunk_t tid)
{
    return with_trunks(unit).then([&](Switch &sw) -> int {
        if (!valid(tid)) {
            return BCM_E_PARAM;
        }
        return trunks_of(sw).trunks().erase(tid) != 0 ? BCM_E_NONE : BCM_E_NOT_FOUND;
    });
}

int sim_bcm_trunk_set(int unit, bcm_trunk_t tid, bcm_trunk_info_t *trunk_info, int member_count,
                      bcm_trunk_member_t *member_array)
{
    return with_trunks(unit, given(trunk_info), existing_trunk(tid))
        .then([&](Switch &sw, Trunk &trunk) -> int {
            if (member_count < 0 || (member_count > 0 && member_array == nullptr)
                || !valid_psc(trunk_info->psc) || (trunk_info->flags & ~info_flags)) {
                return BCM_E_PARAM;
            }
            if (member_count > TrunkTable::member_max) {
                return BCM_E_FULL;
            }
            std::vector<bcm_trunk_member_t> before;
            before.reserve(static_cast<std::size_t>(member_count));
            before.swap(trunk.members);
            const int rc = append_members(sw, trunk, member_array, member_count);
            if (rc != BCM_E_NONE) {
                trunk.members.swap(before);
                return rc;
            }
            forget_absent_members(trunk);
            trunk.info = *trunk_info;
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_get(int unit, bcm_trunk_t tid, bcm_trunk_info_t *trunk_info, int member_max,
                      bcm_trunk_member_t *member_array, int *member_count)
{
    return with_trunks(unit, given(member_count), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        if (member_max < 0 || (member_max > 0 && member_array == nullptr)) {
            return BCM_E_PARAM;
        }
        if (trunk_info != nullptr) {
            *trunk_info = trunk.info;
        }
        const int all = static_cast<int>(trunk.members.size());
        *member_count = member_max == 0 ? all : std::min(all, member_max);
        if (member_max > 0) {
            std::copy_n(trunk.members.begin(), *member_count, member_array);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_member_add(int unit, bcm_trunk_t tid, bcm_trunk_member_t *member)
{
    return with_trunks(unit, given(member), existing_trunk(tid)).then([&](Switch &sw, Trunk &trunk) {
        return append_members(sw, trunk, member, 1);
    });
}

int sim_bcm_trunk_member_delete(int unit, bcm_trunk_t tid, bcm_trunk_member_t *member)
{
    const bcm_gport_t gport = member != nullptr ? member->gport : BCM_GPORT_INVALID;
    return with_trunks(unit, given(member), existing_member(tid, gport))
        .then([](Trunk &trunk, const Destination &port) -> int {
            trunk.members.erase(trunk.members.begin() + member_index(trunk, port));
            forget_absent_members(trunk);
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_member_delete_all(int unit, bcm_trunk_t tid)
{
    return with_trunks(unit, existing_trunk(tid)).then([](Trunk &trunk) -> int {
        trunk.members.clear();
        forget_absent_members(trunk);
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_find(int unit, bcm_module_t modid, bcm_port_t port, bcm_trunk_t *tid, int *index)
{
    return with_trunks(unit, given(tid, index)).then([&](Switch &sw) -> int {
        Destination wanted;
        const int rc = resolve(modid, port, &wanted);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        for (const auto &entry : std::as_const(trunks_of(sw)).trunks()) {
            const int place = member_index(entry.second, wanted);
            if (place >= 0) {
                *tid = entry.first;
                *index = place;
                return BCM_E_NONE;
            }
        }
        return BCM_E_NOT_FOUND;
    });
}

int sim_bcm_trunk_local_members_get(int unit, bcm_trunk_t tid, int member_max, bcm_port_t *member_array,
                                    int *status_array, int *member_count)
{
    return with_trunks(unit, given(member_count), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        if (member_max < 0 || (member_max > 0 && (member_array == nullptr || status_array == nullptr))) {
            return BCM_E_PARAM;
        }
        int written = 0;
        for (const int port : own_ports(trunk)) {
            if (written < member_max) {
                member_array[written] = port;
                status_array[written++] = trunk.is_active({Destination::Kind::port, own_module, port});
            }
        }
        *member_count = written;
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_member_status_set(int unit, bcm_trunk_t tid, bcm_gport_t member, int status)
{
    return with_trunks(unit, existing_member(tid, member))
        .then([&](Trunk &trunk, const Destination &port) -> int {
            if (status != BCM_TRUNK_MEMBER_STATUS_INACTIVE && status != BCM_TRUNK_MEMBER_STATUS_ACTIVE) {
                return BCM_E_PARAM;
            }
            std::vector<Destination> &ports = trunk.inactive;
            ports.erase(std::remove(ports.begin(), ports.end(), port), ports.end());
            if (status == BCM_TRUNK_MEMBER_STATUS_INACTIVE) {
                ports.push_back(port);
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_member_status_get(int unit, bcm_trunk_t tid, bcm_gport_t member, int *status)
{
    return with_trunks(unit, given(status), existing_member(tid, member))
        .then([&](Trunk &trunk, const Destination &port) -> int {
            *status = trunk.is_active(port);
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_min_links_set(int unit, bcm_trunk_t tid, int min_links)
{
    return with_trunks(unit, existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        if (min_links < 0 || min_links > TrunkTable::member_max) {
            return BCM_E_PARAM;
        }
        trunk.min_links = min_links;
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_min_links_get(int unit, bcm_trunk_t tid, int *min_links)
{
    return with_trunks(unit, given(min_links), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        *min_links = trunk.min_links;
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_egress_set(int unit, bcm_trunk_t tid, bcm_pbmp_t pbmp)
{
    return with_trunks(unit, existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        for (int beyond = port_max + 1; beyond < BCM_PBMP_PORT_MAX; ++beyond) {
            if (BCM_PBMP_MEMBER(pbmp, beyond)) {
                return BCM_E_PORT;
            }
        }
        trunk.users = PortSet(pbmp);
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_egress_get(int unit, bcm_trunk_t tid, bcm_pbmp_t *pbmp)
{
    return with_trunks(unit, given(pbmp), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        *pbmp = {};
        trunk.users.each([&](int port) { BCM_PBMP_PORT_ADD(*pbmp, port); });
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_failover_set(int unit, bcm_trunk_t tid, bcm_gport_t failport, int psc, uint32 flags,
                               int count, bcm_gport_t *fail_to_array)
{
    return with_trunks(unit, existing_member(tid, failport))
        .then([&](Trunk &trunk, const Destination &port) -> int {
            if (count < 0 || (count > 0 && (fail_to_array == nullptr || !valid_psc(psc)))
                || (flags & ~failover_flags)) {
                return BCM_E_PARAM;
            }
            Trunk::Failover failover = {psc, flags, {}};
            for (int i = 0; i < count; ++i) {
                Destination to;
                const int rc = resolve_port(fail_to_array[i], &to);
                if (rc != BCM_E_NONE) {
                    return rc;
                }
                if (member_index(trunk, to) < 0 || !is_own_port(to) || to == port) {
                    return BCM_E_NOT_FOUND;
                }
                failover.to.push_back(to.id);
            }
            if (!is_own_port(port)) {
                return BCM_E_PORT;
            }
            trunk.failovers.erase(port.id);
            if (count > 0) {
                trunk.failovers.emplace(port.id, failover);
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_failover_get(int unit, bcm_trunk_t tid, bcm_gport_t failport, int *psc, uint32 *flags,
                               int array_size, bcm_gport_t *fail_to_array, int *array_count)
{
    return with_trunks(unit, given(psc, flags, array_count), existing_member(tid, failport))
        .then([&](Trunk &trunk, const Destination &port) -> int {
            if (array_size < 0 || (array_size > 0 && fail_to_array == nullptr)) {
                return BCM_E_PARAM;
            }
            const auto found = trunk.failovers.find(port.id);
            const Trunk::Failover failover = found != trunk.failovers.end()
                                                 ? found->second
                                                 : Trunk::Failover{BCM_TRUNK_PSC_DEFAULT, 0, {}};
            *psc = failover.psc;
            *flags = failover.flags;
            *array_count = std::min(array_size, static_cast<int>(failover.to.size()));
            std::copy_n(failover.to.begin(), *array_count, fail_to_array);
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_status_get(int unit, bcm_trunk_t tid, int *up, int *active_count)
{
    return with_trunks(unit, given(up, active_count), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        *active_count = trunk.active_members();
        *up = trunk.is_up();
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_bitmap_expand(int unit, bcm_pbmp_t *pbmp)
{
    return with_trunks(unit, given(pbmp)).then([&](Switch &sw) -> int {
        const bcm_pbmp_t given = *pbmp;
        for (const auto &entry : std::as_const(trunks_of(sw)).trunks()) {
            const std::vector<int> ports = own_ports(entry.second);
            const auto is_given = [&](int port) { return BCM_PBMP_MEMBER(given, port) != 0; };
            if (std::any_of(ports.begin(), ports.end(), is_given)) {
                for (const int port : ports) {
                    BCM_PBMP_PORT_ADD(*pbmp, port);
                }
            }
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_psc_set(int unit, bcm_trunk_t tid, int psc)
{
    return with_trunks(unit, existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        if (!valid_psc(psc)) {
            return BCM_E_PARAM;
        }
        trunk.info.psc = psc;
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_psc_get(int unit, bcm_trunk_t tid, int *psc)
{
    return with_trunks(unit, given(psc), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        *psc = trunk.info.psc;
        return BCM_E_NONE;
    });
}

}  // extern "C"
