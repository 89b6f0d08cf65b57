#include "trunk_selection.h"

#include "switch.h"
#include "trunk.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <utility>

namespace sim {

namespace {

Destination own_destination(int port)
{
    return {Destination::Kind::port, own_module, port};
}

/// FNV-1a, with the bits mixed, since few of them select.
class Hash {
public:
    Hash &add(const unsigned char *bytes, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i) {
            state_ = (state_ ^ bytes[i]) * 16777619u;
        }
        return *this;
    }

    std::uint32_t value() const
    {
        const std::uint32_t once = (state_ ^ state_ >> 16) * 0x85ebca6bu;
        return once ^ once >> 13;
    }

private:
    std::uint32_t state_ = 2166136261u;
};

/// Of a port that is a member.
uint32 flags_of(const Trunk &trunk, int port)
{
    return trunk.members[static_cast<std::size_t>(member_index(trunk, own_destination(port)))].flags;
}

enum Part : unsigned { source = 1, target = 2, mac = 4, ip = 8 };

/// A hash of those parts. A packet without IP addresses goes by its MAC addresses.
std::uint32_t hash_of(const Flow &flow, unsigned parts)
{
    Hash hash;
    const ByteView addresses = parts & ip ? flow.frame.ip_addresses() : ByteView();
    const std::size_t half = addresses.size / 2;
    if (parts & source) {
        hash.add(addresses.data, half);
    }
    if (parts & target) {
        hash.add(addresses.data + half, half);
    }
    const bool by_mac = parts & mac || addresses.size == 0;
    if (by_mac && parts & source) {
        hash.add(flow.frame.from(), address_bytes);
    }
    if (by_mac && parts & target) {
        hash.add(flow.frame.to(), address_bytes);
    }
    return hash.value();
}

std::uint32_t number_by(int criterion, Switch &sw, Trunk &trunk, const Flow &flow)
{
    switch (criterion) {
    case BCM_TRUNK_PSC_SRCMAC:
        return hash_of(flow, source | mac);
    case BCM_TRUNK_PSC_DSTMAC:
        return hash_of(flow, target | mac);
    case BCM_TRUNK_PSC_SRCIP:
        return hash_of(flow, source | ip);
    case BCM_TRUNK_PSC_DSTIP:
        return hash_of(flow, target | ip);
    case BCM_TRUNK_PSC_SRCDSTIP:
        return hash_of(flow, source | target | ip);
    case BCM_TRUNK_PSC_PORTINDEX:
        return static_cast<std::uint32_t>(flow.source_port);
    case BCM_TRUNK_PSC_ROUND_ROBIN:
        return trunk.turns++;
    case BCM_TRUNK_PSC_RANDOM:
        return static_cast<std::uint32_t>(trunks_of(sw).chance() >> 8);
    case BCM_TRUNK_PSC_PORTFLOW:
    case BCM_TRUNK_PSC_DYNAMIC:  // no member has any load
    case BCM_TRUNK_PSC_DYNAMIC_ASSIGNED:
        return hash_of(flow, source | target | mac | ip);
    default:
        return hash_of(flow, source | target | mac);
    }
}

}  // namespace

int resolve_port(bcm_gport_t gport, Destination *port)
{
    const int rc = resolve(own_module, gport, port);
    return rc == BCM_E_NONE && port->kind != Destination::Kind::port ? static_cast<int>(BCM_E_PORT) : rc;
}

int member_index(const Trunk &trunk, const Destination &port)
{
    const auto is_it = [&](const bcm_trunk_member_t &member) {
        Destination own;
        return resolve_port(member.gport, &own) == BCM_E_NONE && own == port;
    };
    const auto found = std::find_if(trunk.members.begin(), trunk.members.end(), is_it);
    return found != trunk.members.end() ? static_cast<int>(found - trunk.members.begin()) : -1;
}

std::vector<int> own_ports(const Trunk &trunk)
{
    std::vector<int> ports;
    for (const bcm_trunk_member_t &member : trunk.members) {
        int port;
        if (resolve_own_port(member.gport, &port) == BCM_E_NONE) {
            ports.push_back(port);
        }
    }
    return ports;
}

const SendingTrunk *TrunkPorts::find(bcm_trunk_t id) const
{
    const auto found =
        std::lower_bound(trunks.begin(), trunks.end(), id,
                         [](const SendingTrunk &trunk, bcm_trunk_t key) { return trunk.id < key; });
    return found != trunks.end() && found->id == id ? &*found : nullptr;
}

void TrunkTable::work_out()
{
    TrunkPorts fresh;
    for (int port = 0; port <= port_max; ++port) {
        fresh.places[static_cast<std::size_t>(port)] = own_destination(port);
        fresh.origins[static_cast<std::size_t>(port)] = PortSet::one(port);
    }
    for (auto &[id, trunk] : trunks_) {
        SendingTrunk sending = {id, &trunk, {}, {}, {}, {}};
        for (const int port : own_ports(trunk)) {
            const uint32 flags = flags_of(trunk, port);
            sending.ports.add(port);
            if (!(flags & BCM_TRUNK_MEMBER_INGRESS_DISABLE)) {
                fresh.places[static_cast<std::size_t>(port)] = {Destination::Kind::trunk, 0, id};
            }
            if (trunk.is_up() && !(flags & BCM_TRUNK_MEMBER_EGRESS_DISABLE)
                && trunk.is_active(own_destination(port))) {
                sending.senders.add(port);
                sending.order.push_back(port);
            }
        }
        const bool all_covered = trunk.info.flags & BCM_TRUNK_FLAG_FAILOVER_NEXT;
        const auto &failovers = trunk.failovers;
        sending.senders.each(
            [&](int port) { sending.covered.put(port, all_covered || failovers.count(port) != 0); });
        sending.ports.each([&](int port) { fresh.origins[static_cast<std::size_t>(port)] = sending.ports; });
        fresh.in_trunks = fresh.in_trunks | sending.ports;
        fresh.trunks.push_back(std::move(sending));
    }
    bar(fresh);
    ports_ = std::move(fresh);
    is_worked_out_ = true;
}

namespace {

/// One of a set of the trunk's members, in their order.
int select_from(Switch &sw, const SendingTrunk &trunk, const PortSet &members, int criterion,
                const Flow &flow)
{
    const auto count = static_cast<std::uint32_t>(members.count());
    std::uint32_t left = number_by(criterion, sw, *trunk.trunk, flow) % count;
    return *std::find_if(trunk.order.begin(), trunk.order.end(),
                         [&](int port) { return members.has(port) && left-- == 0; });
}

/// Each flow ranks all members by itself, so that who comes or goes only moves its own flows.
int select_resiliently(Switch &sw, const SendingTrunk &trunk, const PortSet &able, const Flow &flow)
{
    const std::uint32_t number = number_by(trunk.trunk->info.psc, sw, *trunk.trunk, flow);
    int chosen = able.lowest();
    std::uint32_t highest = 0;
    able.each([&](int port) {
        std::array<unsigned char, 5> bytes = {static_cast<unsigned char>(port)};
        for (std::size_t i = 1; i < bytes.size(); ++i) {
            bytes[i] = static_cast<unsigned char>(number >> (8 * i - 8));
        }
        const std::uint32_t rank = Hash().add(bytes.data(), bytes.size()).value();
        if (rank >= highest) {
            highest = rank;
            chosen = port;
        }
    });
    return chosen;
}

/// Who takes the traffic of a member that is down.
int select_for(Switch &sw, const SendingTrunk &trunk, int down, const PortSet &able, const Flow &flow)
{
    const auto failover = trunk.trunk->failovers.find(down);
    if (failover != trunk.trunk->failovers.end()) {
        PortSet to;
        for (const int port : failover->second.to) {
            to.add(port);
        }
        to = to & able;
        return to.empty() ? select_from(sw, trunk, able, trunk.trunk->info.psc, flow)
                          : select_from(sw, trunk, to, failover->second.psc, flow);
    }
    // The next one.
    auto next = std::find(trunk.order.begin(), trunk.order.end(), down);
    do {
        next = std::next(next) == trunk.order.end() ? trunk.order.begin() : std::next(next);
    } while (!able.has(*next));
    return *next;
}

}  // namespace

int select_by_criterion(Switch &sw, const SendingTrunk &trunk, const PortSet &able, const Flow &flow)
{
    if (trunk.trunk->info.flags & BCM_TRUNK_FLAG_RESILIENT) {
        return select_resiliently(sw, trunk, able, flow);
    }
    const int chosen = select_from(sw, trunk, able | trunk.covered, trunk.trunk->info.psc, flow);
    return able.has(chosen) ? chosen : select_for(sw, trunk, chosen, able, flow);
}

int select_by_index(const Trunk &trunk, int index, const PortSet &able, const Flow &flow)
{
    int chosen;
    if (index >= 0 && static_cast<std::size_t>(index) < trunk.members.size()
        && resolve_own_port(trunk.members[static_cast<std::size_t>(index)].gport, &chosen) == BCM_E_NONE
        && able.has(chosen)) {
        return chosen;
    }
    PortSet left = able;
    for (std::uint32_t skip = hash_of(flow, source | target | mac) % static_cast<std::uint32_t>(able.count());
         skip > 0; --skip) {
        left.remove(left.lowest());
    }
    return left.lowest();
}

}  // namespace sim
