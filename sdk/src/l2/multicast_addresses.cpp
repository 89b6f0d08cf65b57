/// Layer-2 multicast by address: entries of the address table that lead to a line of ports.
#include "begin.h"
#include "l2.h"
#include "l2_destination.h"
#include "l2_match.h"
#include "packet.h"
#include "sim_mcast.h"
#include "sim_trunk.h"
#include "vlan.h"

#include <algorithm>
#include <utility>

using namespace sim;

namespace {

using Address = bcm_mcast_addr_t;

constexpr uint32 known_flags = BCM_MCAST_L2_COPY_TO_CPU | BCM_MCAST_L2_INDEX_GIVEN;

/// BCM_E_INIT
auto ready_multicast(Switch &sw)
{
    return l2_of(sw).multicast_initialised ? BCM_E_NONE : BCM_E_INIT;
}

/// The module is initialised, and that can be an address of a group in a VLAN: BCM_E_INIT, BCM_E_PARAM.
auto group_of_vlan(const unsigned char *mac, bcm_vlan_t vid)
{
    return [mac, vid](Switch &sw, auto next) -> int {
        const int rc = ready_multicast(sw);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        return mac != nullptr && is_group(mac) && VlanTable::valid(vid) ? next(l2_of(sw))
                                                                        : static_cast<int>(BCM_E_PARAM);
    };
}

/// The same of a record.
auto group_of(const Address *address)
{
    return group_of_vlan(address != nullptr ? address->mac : nullptr,
                         address != nullptr ? address->vid : bcm_vlan_t{0});
}

bool within_unit(const bcm_pbmp_t &ports)
{
    for (int beyond = port_max + 1; beyond < BCM_PBMP_PORT_MAX; ++beyond) {
        if (BCM_PBMP_MEMBER(ports, beyond)) {
            return false;
        }
    }
    return true;
}

bool leads_to_line(const bcm_l2_addr_t &entry)
{
    return (entry.flags & BCM_L2_MCAST) && is_group(entry.mac);
}

/// The position of the entry, or none if there is none that leads to a line.
std::size_t find(const L2State &l2, const unsigned char *mac, bcm_vlan_t vid)
{
    const std::size_t position = l2.addresses.find(l2_key(mac, vid));
    return position != L2Table::none && leads_to_line(l2.addresses.record(position)) ? position
                                                                                     : L2Table::none;
}

bcm_pbmp_t &ports_of(L2State &l2, std::size_t position)
{
    return l2.multicast[l2.addresses.record(position).l2mc_group];
}

/// The lowest line from 1 on that nobody has used; multicast_lines if there is none.
int free_line(const L2State &l2)
{
    int line = 1;
    for (auto used = l2.multicast.lower_bound(1); used != l2.multicast.end() && used->first == line; ++used) {
        ++line;
    }
    return line;
}

void tell(Switch &sw, std::size_t position, Address *address)
{
    L2State &l2 = l2_of(sw);
    const bcm_l2_addr_t entry = l2.addresses.record(position);
    *address = {};
    address->flags = entry.flags & BCM_L2_COPY_TO_CPU ? BCM_MCAST_L2_COPY_TO_CPU : 0;
    std::copy_n(entry.mac, address_bytes, address->mac);
    address->vid = entry.vid;
    address->cos_dst = entry.cos_dst;
    address->pbmp = ports_of(l2, position);
    if (vlans_of(sw).has(entry.vid)) {
        for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
            address->ubmp.pbits[word] =
                address->pbmp.pbits[word] & vlans_of(sw).at(entry.vid).untagged.pbits[word];
        }
    }
    address->l2mc_index = entry.l2mc_group;
    address->distribution_class = entry.distribution_class;
}

/// Enters an address without entry. BCM_E_FULL
int enter(Switch &sw, const Address &address)
{
    L2State &l2 = l2_of(sw);
    const int line = address.flags & BCM_MCAST_L2_INDEX_GIVEN ? address.l2mc_index : free_line(l2);
    if (line >= multicast_lines) {
        return BCM_E_FULL;
    }
    bcm_l2_addr_t entry = {};
    std::copy_n(address.mac, address_bytes, entry.mac);
    entry.vid = address.vid;
    set_destination(&entry, {Destination::Kind::group, 0, line});
    entry.flags |= BCM_L2_STATIC | (address.flags & BCM_MCAST_L2_COPY_TO_CPU ? BCM_L2_COPY_TO_CPU : 0);
    entry.cos_dst = address.cos_dst;
    entry.distribution_class = address.distribution_class;
    l2.multicast[line] = address.pbmp;
    return l2_enter(sw, entry, 0, BCM_L2_CALLBACK_ADD);
}

/// Removes the entry, and its line if no other has that.
void remove(Switch &sw, std::size_t position)
{
    L2State &l2 = l2_of(sw);
    const int line = l2.addresses.record(position).l2mc_group;
    l2_remove(sw, position, BCM_L2_CALLBACK_DELETE);
    const int others = l2.addresses.traverse([&](std::size_t at) -> int {
        const bcm_l2_addr_t entry = l2.addresses.record(at);
        return leads_to_line(entry) && entry.l2mc_group == line ? BCM_E_BUSY : BCM_E_NONE;
    });
    if (others == BCM_E_NONE) {
        l2.multicast.erase(line);
    }
}

int remove_all(Switch &sw, bcm_vlan_t vid)
{
    L2State &l2 = l2_of(sw);
    return l2.addresses.traverse([&](std::size_t position) -> int {
        const bcm_l2_addr_t entry = l2.addresses.record(position);
        if (leads_to_line(entry) && (vid == 0 || entry.vid == vid)) {
            l2.multicast.erase(entry.l2mc_group);
            l2_remove(sw, position, BCM_L2_CALLBACK_DELETE);
        }
        return BCM_E_NONE;
    });
}

/// Adds ports to the entry of an address, or makes one. BCM_E_EXISTS: it has one that leads elsewhere; BCM_E_FULL.
int join(Switch &sw, const unsigned char *mac, bcm_vlan_t vid, const bcm_pbmp_t &ports)
{
    L2State &l2 = l2_of(sw);
    const std::size_t position = find(l2, mac, vid);
    if (position == L2Table::none && l2.addresses.find(l2_key(mac, vid)) != L2Table::none) {
        return BCM_E_EXISTS;
    }
    if (position == L2Table::none) {
        Address address = {};
        std::copy_n(mac, address_bytes, address.mac);
        address.vid = vid;
        address.pbmp = ports;
        return enter(sw, address);
    }
    bcm_pbmp_t &there = ports_of(l2, position);
    for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
        there.pbits[word] |= ports.pbits[word];
    }
    return BCM_E_NONE;
}

/// The ports of a record are added to its entry, or taken out: BCM_E_NOT_FOUND.
template <class Change>
int change_ports(int unit, const Address *address, Change change)
{
    return begin(unit, group_of(address)).then([&](Switch &, L2State &l2) -> int {
        if (!within_unit(address->pbmp)) {
            return BCM_E_PARAM;
        }
        const std::size_t position = find(l2, address->mac, address->vid);
        if (position == L2Table::none) {
            return BCM_E_NOT_FOUND;
        }
        bcm_pbmp_t &ports = ports_of(l2, position);
        for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
            change(ports.pbits[word], address->pbmp.pbits[word]);
        }
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_mcast_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        l2_of(sw).multicast_initialised = true;
        return remove_all(sw, 0);
    });
}

int sim_bcm_mcast_detach(int unit)
{
    return begin(unit).then([](Switch &sw) {
        const int rc = ready_multicast(sw);
        l2_of(sw).multicast_initialised = false;
        return rc == BCM_E_NONE ? remove_all(sw, 0) : rc;
    });
}

int sim_bcm_mcast_addr_add(int unit, bcm_mcast_addr_t *mcaddr)
{
    return begin(unit, group_of(mcaddr)).then([&](Switch &sw, L2State &l2) -> int {
        const bool has_line = mcaddr->flags & BCM_MCAST_L2_INDEX_GIVEN;
        const bool is_line = mcaddr->l2mc_index >= 0 && mcaddr->l2mc_index < multicast_lines;
        bool is_within = true;
        for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
            is_within = is_within && !(mcaddr->ubmp.pbits[word] & ~mcaddr->pbmp.pbits[word]);
        }
        if ((mcaddr->flags & ~known_flags) || (has_line && !is_line) || !is_within
            || !within_unit(mcaddr->pbmp)) {
            return BCM_E_PARAM;
        }
        return l2.addresses.find(l2_key(mcaddr->mac, mcaddr->vid)) != L2Table::none
                   ? static_cast<int>(BCM_E_EXISTS)
                   : enter(sw, *mcaddr);
    });
}

int sim_bcm_mcast_addr_remove(int unit, bcm_mac_t mac, bcm_vlan_t vid)
{
    return begin(unit, group_of_vlan(mac, vid)).then([&](Switch &sw, L2State &l2) -> int {
        const std::size_t position = find(l2, mac, vid);
        if (position == L2Table::none) {
            return BCM_E_NOT_FOUND;
        }
        remove(sw, position);
        return BCM_E_NONE;
    });
}

int sim_bcm_mcast_addr_remove_all(int unit, bcm_vlan_t vid)
{
    return begin(unit).then([&](Switch &sw) -> int {
        const int rc = ready_multicast(sw);
        return rc != BCM_E_NONE                     ? rc
               : vid != 0 && !VlanTable::valid(vid) ? static_cast<int>(BCM_E_PARAM)
                                                    : remove_all(sw, vid);
    });
}

int sim_bcm_mcast_port_get(int unit, bcm_mac_t mac, bcm_vlan_t vid, bcm_mcast_addr_t *mcaddr)
{
    return begin(unit, group_of_vlan(mac, vid), given(mcaddr)).then([&](Switch &sw, L2State &l2) -> int {
        const std::size_t position = find(l2, mac, vid);
        if (position == L2Table::none) {
            return BCM_E_NOT_FOUND;
        }
        tell(sw, position, mcaddr);
        return BCM_E_NONE;
    });
}

int sim_bcm_mcast_port_add(int unit, bcm_mcast_addr_t *mcaddr)
{
    return change_ports(unit, mcaddr, [](uint32 &ports, uint32 more) { ports |= more; });
}

int sim_bcm_mcast_port_remove(int unit, bcm_mcast_addr_t *mcaddr)
{
    return change_ports(unit, mcaddr, [](uint32 &ports, uint32 fewer) { ports &= ~fewer; });
}

int sim_bcm_mcast_join(int unit, bcm_mac_t mac, bcm_vlan_t vid, bcm_port_t port, bcm_mcast_addr_t *mcaddr)
{
    return begin(unit, group_of_vlan(mac, vid), given(mcaddr), own_port(port))
        .then([&](Switch &sw, L2State &l2, int own) -> int {
            bcm_pbmp_t ports = {};
            BCM_PBMP_PORT_ADD(ports, own);
            const int rc = join(sw, mac, vid, ports);
            if (rc == BCM_E_NONE) {
                tell(sw, find(l2, mac, vid), mcaddr);
            }
            return rc;
        });
}

int sim_bcm_mcast_leave(int unit, bcm_mac_t mac, bcm_vlan_t vid, bcm_port_t port, bcm_mcast_addr_t *mcaddr)
{
    return begin(unit, group_of_vlan(mac, vid), given(mcaddr), own_port(port))
        .then([&](Switch &sw, L2State &l2, int own) -> int {
            const std::size_t position = find(l2, mac, vid);
            if (position == L2Table::none) {
                return BCM_E_NOT_FOUND;
            }
            bcm_pbmp_t &ports = ports_of(l2, position);
            BCM_PBMP_PORT_REMOVE(ports, own);
            tell(sw, position, mcaddr);
            if (PortSet(ports).empty()) {
                remove(sw, position);
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_trunk_mcast_join(int unit, bcm_trunk_t tid, bcm_vlan_t vid, bcm_mac_t mac)
{
    return begin(unit, ready<TrunkState>, given(mac)).then([&](Switch &sw, TrunkState &) -> int {
        if (tid < 0 || tid > BCM_TRUNK_MAX || !is_group(mac) || !VlanTable::valid(vid)) {
            return BCM_E_PARAM;
        }
        const auto &trunks = std::as_const(trunks_of(sw)).trunks();
        const auto trunk = trunks.find(tid);
        if (trunk == trunks.end()) {
            return BCM_E_NOT_FOUND;
        }
        // One of them is selected for each packet.
        bcm_pbmp_t ports = {};
        for (const int port : own_ports(trunk->second)) {
            BCM_PBMP_PORT_ADD(ports, port);
        }
        return join(sw, mac, vid, ports);
    });
}

}  // extern "C"
