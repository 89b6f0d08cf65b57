/// Trunks: their settings and members.
#include "begin.h"
#include "sim_trunk.h"
#include "trunk.h"
#include "trunk_selection.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

using namespace sim;

namespace {

bool valid(bcm_trunk_t tid)
{
    return tid >= 0 && tid <= BCM_TRUNK_MAX;
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

/// Who comes back later is active again.
void forget_absent_members(Trunk &trunk)
{
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
    return begin(unit).then([](Switch &sw) -> int {
        trunks_of(sw).trunks().clear();
        return BCM_E_NONE;
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
    return begin(unit, given(tid)).then([&](Switch &sw) -> int {
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
    return begin(unit).then([&](Switch &sw) -> int {
        if (!valid(tid)) {
            return BCM_E_PARAM;
        }
        return trunks_of(sw).trunks().erase(tid) != 0 ? BCM_E_NONE : BCM_E_NOT_FOUND;
    });
}

int sim_bcm_trunk_set(int unit, bcm_trunk_t tid, bcm_trunk_info_t *trunk_info, int member_count,
                      bcm_trunk_member_t *member_array)
{
    return begin(unit, given(trunk_info), existing_trunk(tid)).then([&](Switch &sw, Trunk &trunk) -> int {
        if (member_count < 0 || (member_count > 0 && member_array == nullptr)
            || !valid_psc(trunk_info->psc)) {
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
    return begin(unit, given(member_count), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
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
    return begin(unit, given(member), existing_trunk(tid)).then([&](Switch &sw, Trunk &trunk) {
        return append_members(sw, trunk, member, 1);
    });
}

int sim_bcm_trunk_member_delete(int unit, bcm_trunk_t tid, bcm_trunk_member_t *member)
{
    const bcm_gport_t gport = member != nullptr ? member->gport : BCM_GPORT_INVALID;
    return begin(unit, given(member), existing_member(tid, gport))
        .then([](Trunk &trunk, const Destination &port) -> int {
            trunk.members.erase(trunk.members.begin() + member_index(trunk, port));
            forget_absent_members(trunk);
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_member_delete_all(int unit, bcm_trunk_t tid)
{
    return begin(unit, existing_trunk(tid)).then([](Trunk &trunk) -> int {
        trunk.members.clear();
        trunk.inactive.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_find(int unit, bcm_module_t modid, bcm_port_t port, bcm_trunk_t *tid, int *index)
{
    return begin(unit, given(tid, index)).then([&](Switch &sw) -> int {
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
    return begin(unit, given(member_count), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
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
    return begin(unit, existing_member(tid, member)).then([&](Trunk &trunk, const Destination &port) -> int {
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
    return begin(unit, given(status), existing_member(tid, member))
        .then([&](Trunk &trunk, const Destination &port) -> int {
            *status = trunk.is_active(port);
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_min_links_set(int unit, bcm_trunk_t tid, int min_links)
{
    return begin(unit, existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        if (min_links < 0 || min_links > TrunkTable::member_max) {
            return BCM_E_PARAM;
        }
        trunk.min_links = min_links;
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_min_links_get(int unit, bcm_trunk_t tid, int *min_links)
{
    return begin(unit, given(min_links), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        *min_links = trunk.min_links;
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_status_get(int unit, bcm_trunk_t tid, int *up, int *active_count)
{
    return begin(unit, given(up, active_count), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        *active_count = trunk.active_members();
        *up = trunk.is_up();
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_bitmap_expand(int unit, bcm_pbmp_t *pbmp)
{
    return begin(unit, given(pbmp)).then([&](Switch &sw) -> int {
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
    return begin(unit, existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        if (!valid_psc(psc)) {
            return BCM_E_PARAM;
        }
        trunk.info.psc = psc;
        return BCM_E_NONE;
    });
}

int sim_bcm_trunk_psc_get(int unit, bcm_trunk_t tid, int *psc)
{
    return begin(unit, given(psc), existing_trunk(tid)).then([&](Trunk &trunk) -> int {
        *psc = trunk.info.psc;
        return BCM_E_NONE;
    });
}

}  // extern "C"
