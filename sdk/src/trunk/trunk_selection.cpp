#include "trunk_selection.h"

#include "switch.h"
#include "trunk.h"

#include <algorithm>
#include <cstdint>

namespace sim {

namespace {

Destination own_port(int port)
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
    return trunk.members[static_cast<std::size_t>(member_index(trunk, own_port(port)))].flags;
}

enum Part : unsigned { source = 1, target = 2, mac = 4, ip = 8 };

/// A hash of those parts. A packet without IP addresses goes by its MAC addresses.
std::uint32_t hash_of(const Flow &flow, unsigned parts)
{
    Hash hash;
    const FrameBytes addresses = parts & ip ? flow.frame.ip_addresses() : FrameBytes();
    const std::size_t half = addresses.size() / 2;
    if (parts & source) {
        hash.add(addresses.data(), half);
    }
    if (parts & target) {
        hash.add(addresses.data() + half, half);
    }
    const bool by_mac = parts & mac || addresses.empty();
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

bcm_trunk_t trunk_of(const Switch &sw, int port)
{
    for (const auto &[id, trunk] : trunks_of(sw).trunks) {
        if (member_index(trunk, own_port(port)) >= 0) {
            return id;
        }
    }
    return -1;
}

Destination place_of_arrival(const Switch &sw, int port)
{
    const bcm_trunk_t id = trunk_of(sw, port);
    const bool is_of_trunk =
        id >= 0 && !(flags_of(trunks_of(sw).trunks.at(id), port) & BCM_TRUNK_MEMBER_INGRESS_DISABLE);
    return is_of_trunk ? Destination{Destination::Kind::trunk, 0, id} : own_port(port);
}

std::vector<int> senders(const Trunk &trunk)
{
    if (!trunk.is_up()) {
        return {};
    }
    std::vector<int> ports = own_ports(trunk);
    const auto may_not = [&](int port) {
        return flags_of(trunk, port) & BCM_TRUNK_MEMBER_EGRESS_DISABLE || !trunk.is_active(own_port(port));
    };
    ports.erase(std::remove_if(ports.begin(), ports.end(), may_not), ports.end());
    return ports;
}

int select_by_criterion(Switch &sw, Trunk &trunk, const std::vector<int> &ports, const Flow &flow)
{
    return ports[number_by(trunk.info.psc, sw, trunk, flow) % ports.size()];
}

int select_by_index(const Trunk &trunk, int index, const std::vector<int> &ports, const Flow &flow)
{
    int chosen;
    if (index >= 0 && static_cast<std::size_t>(index) < trunk.members.size()
        && resolve_own_port(trunk.members[static_cast<std::size_t>(index)].gport, &chosen) == BCM_E_NONE
        && std::find(ports.begin(), ports.end(), chosen) != ports.end()) {
        return chosen;
    }
    return ports[hash_of(flow, source | target | mac) % ports.size()];
}

}  // namespace sim
