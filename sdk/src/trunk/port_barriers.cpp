/// Where packets from a port may go: private ports, and floods that stop between two of them. Kept as the rules keep
/// values; trunks.ports() has what follows.
#include "begin.h"
#include "rules.h"
#include "sim_port.h"
#include "rule_store.h"
#include "trunk.h"

#include <cstring>
#include <map>
#include <string>
#include <utility>

using namespace sim;

namespace {

constexpr rules::Table allowed = {"bcm_port_egress", "port"};
constexpr rules::Table blocked = {"bcm_port_flood_block", "port"};

/// The unit itself, which -1 stands for too: BCM_E_BADID.
auto own_module_only(int modid)
{
    return [modid](Switch &, auto next) -> int {
        Destination to;
        const int rc = resolve(modid, 1, &to);
        return rc == BCM_E_NONE && to.module != own_module ? static_cast<int>(BCM_E_BADID)
               : rc == BCM_E_NONE                          ? next()
                                                           : rc;
    };
}

template <class T>
T part(const std::string &bytes, std::size_t place)
{
    T found;
    std::memcpy(&found, bytes.data() + place, sizeof found);
    return found;
}

/// visit(port, control, value) for each control of a port that was set.
template <class Visit>
void each_control(const RuleStore &store, Visit visit)
{
    for (const auto &[key, value] : store.records("bcm_port_control")) {
        visit(part<int>(key, 0), part<bcm_port_control_t>(key, sizeof(int)), part<int>(value, 0));
    }
}

}  // namespace

namespace sim {

TrunkState::TrunkState(Switch &sw) : trunks(rule_store_of(sw))
{
    for (const char *table : {allowed.name, blocked.name, "bcm_port_control"}) {
        rule_store_of(sw).watch(
            table, [](void *datum) { static_cast<TrunkTable *>(datum)->touch(); }, &trunks);
    }
}

void TrunkTable::bar(TrunkPorts &ports) const
{
    const auto barred = [&](int port) -> PortSet & { return ports.origins[static_cast<std::size_t>(port)]; };
    for (const SendingTrunk &trunk : ports.trunks) {
        (PortSet::all() - trunk.trunk->users).each([&](int port) {
            barred(port) = barred(port) | trunk.ports;
        });
    }
    std::map<std::pair<int, int>, PortSet>
        groups;  // of ports that do not reach each other, by control and value
    each_control(store_, [&](int port, bcm_port_control_t control, int value) {
        if (control == bcmPortControlBridge && value != 0 && !ports.in_trunks.has(port)) {
            barred(port).remove(port);
        } else if ((control == bcmPortControlPvlanIsolated || control == bcmPortControlProtectedGroup
                    || control == bcmPortControlSplitHorizonGroup)
                   && value != 0) {
            groups[{control, control == bcmPortControlPvlanIsolated ? 1 : value}].add(port);
        }
    });
    for (const auto &group : groups) {
        group.second.each(
            [&](int port) { barred(port) = barred(port) | (group.second - PortSet::one(port)); });
    }
    for (const auto &[key, value] : store_.records(allowed.name)) {
        const int port = part<int>(key, 0);
        barred(port) = barred(port) | (PortSet::all() - PortSet(part<bcm_pbmp_t>(value, 0)));
    }
    for (const auto &[key, value] : store_.records(blocked.name)) {
        const int from = part<int>(key, 0), to = part<int>(key, sizeof(int));
        const auto flags = part<uint32>(value, 0);
        auto &unflooded = ports.unflooded[static_cast<std::size_t>(from)];
        const auto block = [&](uint32 flag, Flood flood) {
            if (flags & flag) {
                unflooded[static_cast<std::size_t>(flood)].add(to);
            }
        };
        block(BCM_PORT_FLOOD_BLOCK_BCAST, Flood::broadcast);
        block(BCM_PORT_FLOOD_BLOCK_UNKNOWN_MCAST, Flood::unknown_multicast);
        block(BCM_PORT_FLOOD_BLOCK_UNKNOWN_UCAST, Flood::unknown_unicast);
        if (flags & BCM_PORT_FLOOD_BLOCK_ALL) {
            barred(from).add(to);
        }
    }
}

}  // namespace sim

extern "C" {

int sim_bcm_port_egress_set(int unit, bcm_port_t port, int modid, bcm_pbmp_t pbmp)
{
    return begin(unit, own_port(port), own_module_only(modid)).then([&](int own) -> int {
        for (int beyond = port_max + 1; beyond < BCM_PBMP_PORT_MAX; ++beyond) {
            if (BCM_PBMP_MEMBER(pbmp, beyond)) {
                return BCM_E_PORT;
            }
        }
        return rules::set(allowed, unit, {rules::own_port(own), rules::given(pbmp)});
    });
}

int sim_bcm_port_egress_get(int unit, bcm_port_t port, int modid, bcm_pbmp_t *pbmp)
{
    return begin(unit, given(pbmp), own_port(port), own_module_only(modid)).then([&](int own) -> int {
        const int rc =
            rules::find(allowed, unit, {rules::own_port(own), rules::result_at(pbmp, sizeof *pbmp)});
        if (rc == BCM_E_NOT_FOUND) {
            *pbmp = front_ports();
            BCM_PBMP_PORT_ADD(*pbmp, cpu_port);
            return BCM_E_NONE;
        }
        return rc;
    });
}

int sim_bcm_port_modid_egress_set(int unit, bcm_port_t port, int modid, bcm_pbmp_t pbmp)
{
    return sim_bcm_port_egress_set(unit, port, modid, pbmp);
}

int sim_bcm_port_modid_egress_get(int unit, bcm_port_t port, int modid, bcm_pbmp_t *pbmp)
{
    return sim_bcm_port_egress_get(unit, port, modid, pbmp);
}

int sim_bcm_port_flood_block_set(int unit, bcm_port_t ingress_port, bcm_port_t egress_port, uint32 flags)
{
    constexpr uint32 known = BCM_PORT_FLOOD_BLOCK_BCAST | BCM_PORT_FLOOD_BLOCK_UNKNOWN_UCAST
                             | BCM_PORT_FLOOD_BLOCK_UNKNOWN_MCAST | BCM_PORT_FLOOD_BLOCK_ALL;
    const rules::Arguments arguments = {rules::own_port(ingress_port), rules::own_port(egress_port),
                                        rules::given(flags)};
    return flags & ~known ? rules::refuse(blocked, unit, arguments) : rules::set(blocked, unit, arguments);
}

}  // extern "C"
