/// Whose packets are copied, and where to: by the unit's mirroring port, by a port's own, and by destinations.
#include "begin.h"
#include "mirror.h"
#include "sim_mirror.h"
#include "sim_port.h"
#include "vlan.h"

#include <algorithm>
#include <vector>

using namespace sim;

namespace {

constexpr uint32 known_flags = mirrors_in | mirrors_out | BCM_MIRROR_PORT_SFLOW;
constexpr std::size_t uses_max = 8;  // of a port, or of a VLAN of one

PortMirrors &at(MirrorState &mirrors, int port)
{
    return mirrors.ports[static_cast<std::size_t>(port)];
}

/// Of a port, or of a VLAN of one; made when it is asked for. BCM_E_PARAM for what is no VLAN.
auto uses_of(bcm_port_t port, bcm_vlan_t vlan, bool is_of_vlan)
{
    return [=](Switch &sw, auto next) -> int {
        return own_port(port)(sw, [&](int own) -> int {
            MirrorState &mirrors = mirrors_of(sw);
            if (!is_of_vlan) {
                return next(at(mirrors, own).uses);
            }
            if (!VlanTable::valid(vlan)) {
                return BCM_E_PARAM;
            }
            const auto place = mirrors.of_vlans.try_emplace({own, vlan}).first;
            const int rc = next(place->second);
            if (place->second.empty()) {
                mirrors.of_vlans.erase(place);
            }
            return rc;
        });
    };
}

bool is_known(uint32 flags)
{
    return flags != 0 && !(flags & ~known_flags);
}

template <class Uses>
int add(Switch &sw, MirrorState &mirrors, Uses &uses, uint32 flags, int id,
        const bcm_mirror_options_t &options)
{
    constexpr uint32 known_options = BCM_MIRROR_OPTION_SAMPLE | BCM_MIRROR_OPTION_PRIORITY;
    const bool has_share = options.flags & BCM_MIRROR_OPTION_SAMPLE;
    if (!is_known(flags) || (options.flags & ~known_options)
        || (has_share
            && (options.sample_rate_divisor == 0
                || options.sample_rate_dividend > options.sample_rate_divisor))) {
        return BCM_E_PARAM;
    }
    const auto destination = mirrors.destinations.find(id);
    if (destination == mirrors.destinations.end()) {
        return BCM_E_NOT_FOUND;
    }
    for (const MirrorUse &use : uses) {
        if (use.destination == id && (use.flags & flags)) {
            return BCM_E_EXISTS;
        }
    }
    if (uses.size() >= uses_max) {
        return BCM_E_FULL;
    }
    uses.push_back({id, flags, options, {}});
    ++destination->second.uses;
    update_copies(sw);
    return BCM_E_NONE;
}

/// Takes the flags away; uses that have none any more go. BCM_E_NOT_FOUND if there were none.
template <class Uses, class Test>
int remove(Switch &sw, MirrorState &mirrors, Uses &uses, uint32 flags, Test is_meant)
{
    if (!is_known(flags)) {
        return BCM_E_PARAM;
    }
    bool found = false;
    for (MirrorUse &use : uses) {
        if (is_meant(use) && (use.flags & flags)) {
            found = true;
            use.flags &= ~flags;
            // What says of nothing but samples which it takes, says of nothing.
            if (use.flags == BCM_MIRROR_PORT_SFLOW && !(flags & BCM_MIRROR_PORT_SFLOW)) {
                use.flags = 0;
            }
            mirrors.destinations.at(use.destination).uses -= use.flags == 0;
        }
    }
    uses.erase(std::remove_if(uses.begin(), uses.end(), [](const MirrorUse &use) { return use.flags == 0; }),
               uses.end());
    update_copies(sw);
    return found ? BCM_E_NONE : BCM_E_NOT_FOUND;
}

template <class Uses>
int remove_all(Switch &sw, MirrorState &mirrors, Uses &uses, uint32 flags)
{
    const int rc = remove(sw, mirrors, uses, flags, [](const MirrorUse &) { return true; });
    return rc == BCM_E_NOT_FOUND ? static_cast<int>(BCM_E_NONE) : rc;
}

template <class Uses>
int list(const Uses &uses, uint32 flags, int size, bcm_gport_t *ids, uint32 *flags_of, int *count)
{
    if (!is_known(flags) || size < 0 || (size != 0 && (ids == nullptr || flags_of == nullptr))) {
        return BCM_E_PARAM;
    }
    *count = 0;
    for (const MirrorUse &use : uses) {
        if ((use.flags & flags) && *count < size) {
            ids[*count] = use.destination;
            flags_of[*count] = use.flags;
            ++*count;
        }
    }
    return BCM_E_NONE;
}

template <class Change>
int change(int unit, bcm_port_t port, Change apply)
{
    return begin(unit, ready<MirrorState>, own_port(port))
        .then([&](Switch &sw, MirrorState &mirrors, int own) -> int {
            const int rc = apply(at(mirrors, own));
            update_copies(sw);
            return rc;
        });
}

template <class Read>
int look(int unit, bcm_port_t port, bool has_all, Read read)
{
    return begin(unit, ready<MirrorState>).then([&](Switch &sw, MirrorState &mirrors) -> int {
        return !has_all ? static_cast<int>(BCM_E_PARAM) : own_port(port)(sw, [&](int own) -> int {
            read(at(mirrors, own));
            return BCM_E_NONE;
        });
    });
}

bool is_tag(bcm_tpid_t tpid, bcm_vlan_t vlan, int priority)
{
    return tpid == 0 || (VlanTable::valid(vlan) && priority >= 0 && priority <= 7);
}

}  // namespace

extern "C" {

int sim_bcm_mirror_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        mirrors_of(sw).reset();
        update_copies(sw);
    });
}

int sim_bcm_mirror_detach(int unit)
{
    return begin(unit, ready<MirrorState>).then([](Switch &sw, MirrorState &mirrors) {
        mirrors.reset();
        mirrors.initialised = false;
        update_copies(sw);
    });
}

int sim_bcm_mirror_mode_set(int unit, int mode)
{
    return begin(unit, ready<MirrorState>).then([&](Switch &sw, MirrorState &mirrors) -> int {
        if (mode < BCM_MIRROR_DISABLE || mode > BCM_MIRROR_DESTINATIONS) {
            return BCM_E_PARAM;
        }
        mirrors.mode = mode;
        update_copies(sw);
        return BCM_E_NONE;
    });
}

int sim_bcm_mirror_mode_get(int unit, int *mode)
{
    return begin(unit, ready<MirrorState>, given(mode)).then([&](MirrorState &mirrors) {
        *mode = mirrors.mode;
    });
}

int sim_bcm_mirror_to_set(int unit, bcm_port_t port)
{
    return begin(unit, ready<MirrorState>, own_port(port)).then([&](MirrorState &mirrors, int own) {
        mirrors.to = own;
        for (PortMirrors &each : mirrors.ports) {
            each.to = PortSet::one(own);
        }
    });
}

int sim_bcm_mirror_to_get(int unit, bcm_port_t *port)
{
    return begin(unit, ready<MirrorState>, given(port)).then([&](MirrorState &mirrors) {
        *port = mirrors.to;
    });
}

int sim_bcm_mirror_to_pbmp_set(int unit, bcm_port_t port, bcm_pbmp_t pbmp)
{
    return change(unit, port, [&](PortMirrors &own) -> int {
        own.to = PortSet(pbmp);
        return BCM_E_NONE;
    });
}

int sim_bcm_mirror_to_pbmp_get(int unit, bcm_port_t port, bcm_pbmp_t *pbmp)
{
    return look(unit, port, pbmp != nullptr, [&](const PortMirrors &own) {
        BCM_PBMP_CLEAR(*pbmp);
        own.to.each([&](int to) { BCM_PBMP_PORT_ADD(*pbmp, to); });
    });
}

int sim_bcm_mirror_ingress_set(int unit, bcm_port_t port, int val)
{
    return change(unit, port, [&](PortMirrors &own) -> int {
        own.is_in = val != 0;
        return BCM_E_NONE;
    });
}

int sim_bcm_mirror_ingress_get(int unit, bcm_port_t port, int *val)
{
    return look(unit, port, val != nullptr, [&](const PortMirrors &own) { *val = own.is_in; });
}

int sim_bcm_mirror_egress_set(int unit, bcm_port_t port, int val)
{
    return change(unit, port, [&](PortMirrors &own) -> int {
        own.is_out = val != 0;
        return BCM_E_NONE;
    });
}

int sim_bcm_mirror_egress_get(int unit, bcm_port_t port, int *val)
{
    return look(unit, port, val != nullptr, [&](const PortMirrors &own) { *val = own.is_out; });
}

int sim_bcm_mirror_port_set(int unit, bcm_port_t port, bcm_module_t dest_mod, bcm_port_t dest_port,
                            uint32 flags)
{
    return change(unit, port, [&](PortMirrors &own) -> int {
        if (flags & ~known_flags) {
            return BCM_E_PARAM;
        }
        Destination to = {Destination::Kind::discard, 0, 0};
        const int rc = flags != 0 ? resolve(dest_mod, dest_port, &to) : static_cast<int>(BCM_E_NONE);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (flags != 0 && to.kind != Destination::Kind::trunk && !is_own_port(to)) {
            return BCM_E_UNAVAIL;
        }
        own.own_to = to;
        own.own_flags = flags;
        return BCM_E_NONE;
    });
}

int sim_bcm_mirror_port_get(int unit, bcm_port_t port, bcm_module_t *dest_mod, bcm_port_t *dest_port,
                            uint32 *flags)
{
    const bool has_all = dest_mod != nullptr && dest_port != nullptr && flags != nullptr;
    return look(unit, port, has_all, [&](const PortMirrors &own) {
        *dest_mod = own.own_to.module;
        *dest_port = own.own_to.id;
        if (own.own_to.kind == Destination::Kind::trunk) {
            BCM_GPORT_TRUNK_SET(*dest_port, own.own_to.id);
        }
        *flags = own.own_flags;
    });
}

int sim_bcm_mirror_vlan_set(int unit, bcm_port_t port, bcm_tpid_t tpid, bcm_vlan_t vlan, int pri)
{
    return change(unit, port, [&](PortMirrors &own) -> int {
        if (!is_tag(tpid, vlan, pri)) {
            return BCM_E_PARAM;
        }
        own.tag = {tpid, vlan, pri};
        return BCM_E_NONE;
    });
}

int sim_bcm_mirror_vlan_get(int unit, bcm_port_t port, bcm_tpid_t *tpid, bcm_vlan_t *vlan, int *pri)
{
    return look(unit, port, tpid != nullptr && vlan != nullptr && pri != nullptr,
                [&](const PortMirrors &own) {
                    *tpid = own.tag.type;
                    *vlan = own.tag.vlan;
                    *pri = own.tag.priority;
                });
}

int sim_bcm_mirror_port_info_set(int unit, bcm_port_t port, bcm_mirror_port_info_t *info)
{
    return begin(unit, ready<MirrorState>, given(info), own_port(port))
        .then([&](MirrorState &mirrors, int own) -> int {
            if ((info->flags & ~(mirrors_in | mirrors_out))
                || !is_tag(info->tpid, info->vlan, info->vlan_prio)) {
                return BCM_E_PARAM;
            }
            at(mirrors, own).info = *info;
            return BCM_E_NONE;
        });
}

int sim_bcm_mirror_port_info_get(int unit, bcm_port_t port, bcm_mirror_port_info_t *info)
{
    return look(unit, port, info != nullptr, [&](const PortMirrors &own) { *info = own.info; });
}

int sim_bcm_mirror_port_destination_add(int unit, bcm_port_t port, uint32 flags, bcm_gport_t mirror_dest_id,
                                        bcm_mirror_options_t options)
{
    return begin(unit, ready<MirrorState>, uses_of(port, 0, false))
        .then([&](Switch &sw, MirrorState &mirrors, auto &uses) {
            return add(sw, mirrors, uses, flags, mirror_dest_id, options);
        });
}

int sim_bcm_mirror_port_destination_delete(int unit, bcm_port_t port, uint32 flags,
                                           bcm_gport_t mirror_dest_id)
{
    return begin(unit, ready<MirrorState>, uses_of(port, 0, false))
        .then([&](Switch &sw, MirrorState &mirrors, auto &uses) {
            return remove(sw, mirrors, uses, flags,
                          [&](const MirrorUse &use) { return use.destination == mirror_dest_id; });
        });
}

int sim_bcm_mirror_port_destination_delete_all(int unit, bcm_port_t port, uint32 flags)
{
    return begin(unit, ready<MirrorState>, uses_of(port, 0, false))
        .then([&](Switch &sw, MirrorState &mirrors, auto &uses) {
            return remove_all(sw, mirrors, uses, flags);
        });
}

int sim_bcm_mirror_port_destination_get(int unit, bcm_port_t port, uint32 flags, int mirror_dest_size,
                                        bcm_gport_t *mirror_dest, uint32 *mirror_flags,
                                        int *mirror_dest_count)
{
    return begin(unit, ready<MirrorState>, given(mirror_dest_count), uses_of(port, 0, false))
        .then([&](Switch &, MirrorState &, auto &uses) {
            return list(uses, flags, mirror_dest_size, mirror_dest, mirror_flags, mirror_dest_count);
        });
}

int sim_bcm_mirror_port_vlan_destination_add(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags,
                                             bcm_gport_t mirror_dest_id, bcm_mirror_options_t options)
{
    return begin(unit, ready<MirrorState>, uses_of(port, vlan, true))
        .then([&](Switch &sw, MirrorState &mirrors, auto &uses) {
            return add(sw, mirrors, uses, flags, mirror_dest_id, options);
        });
}

int sim_bcm_mirror_port_vlan_destination_delete(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags,
                                                bcm_gport_t mirror_dest_id)
{
    return begin(unit, ready<MirrorState>, uses_of(port, vlan, true))
        .then([&](Switch &sw, MirrorState &mirrors, auto &uses) {
            return remove(sw, mirrors, uses, flags,
                          [&](const MirrorUse &use) { return use.destination == mirror_dest_id; });
        });
}

int sim_bcm_mirror_port_vlan_destination_delete_all(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags)
{
    return begin(unit, ready<MirrorState>, uses_of(port, vlan, true))
        .then([&](Switch &sw, MirrorState &mirrors, auto &uses) {
            return remove_all(sw, mirrors, uses, flags);
        });
}

int sim_bcm_mirror_port_vlan_destination_get(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags,
                                             int mirror_dest_size, bcm_gport_t *mirror_dest,
                                             uint32 *mirror_flags, int *mirror_dest_count)
{
    return begin(unit, ready<MirrorState>, given(mirror_dest_count), uses_of(port, vlan, true))
        .then([&](Switch &, MirrorState &, auto &uses) {
            return list(uses, flags, mirror_dest_size, mirror_dest, mirror_flags, mirror_dest_count);
        });
}

int sim_bcm_port_sample_rate_set(int unit, bcm_port_t port, int ingress_rate, int egress_rate)
{
    return begin(unit, own_port(port)).then([&](Switch &sw, int own) -> int {
        if (ingress_rate < 0 || egress_rate < 0) {
            return BCM_E_PARAM;
        }
        PortMirrors &mirrors = at(mirrors_of(sw), own);
        mirrors.sample_in = ingress_rate;
        mirrors.sample_out = egress_rate;
        update_copies(sw);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_sample_rate_get(int unit, bcm_port_t port, int *ingress_rate, int *egress_rate)
{
    return begin(unit, given(ingress_rate, egress_rate), own_port(port)).then([&](Switch &sw, int own) {
        *ingress_rate = at(mirrors_of(sw), own).sample_in;
        *egress_rate = at(mirrors_of(sw), own).sample_out;
    });
}

}  // extern "C"
