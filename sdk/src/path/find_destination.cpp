#include "stages.h"

namespace sim {

namespace {

void flood(Passage &passage, const PortSet &members, int bcm_trunk_info_t::*member_index)
{
    passage.is_for_many = true;
    passage.members = members;
    passage.member_index = member_index;
}

/// The members of its VLAN that get a packet which no entry leads.
PortSet members_for(Passage &passage)
{
    const unsigned char *to = passage.frame.to();
    const Flood flood = !is_group(to)      ? Flood::unknown_unicast
                        : is_broadcast(to) ? Flood::broadcast
                                           : Flood::unknown_multicast;
    PortSet members(passage.vlan->members);
    members = members
              - trunks_of(passage.sw)
                    .ports()
                    .unflooded[static_cast<std::size_t>(passage.port)][static_cast<std::size_t>(flood)];
    if (const bcm_vlan_block_t *blocked = passage.vlan->blocked.get()) {
        members = members
                  - PortSet(flood == Flood::broadcast           ? blocked->broadcast
                            : flood == Flood::unknown_multicast ? blocked->unknown_multicast
                                                                : blocked->unknown_unicast);
    }
    const bcm_vlan_control_vlan_t *settings = passage.vlan->settings.get();
    const bool none_of_vlan =
        settings != nullptr
        && (flood == Flood::unknown_unicast     ? (settings->flags & BCM_VLAN_UNKNOWN_UCAST_DROP) != 0
            : flood == Flood::unknown_multicast ? settings->l2_mcast_flood_mode == bcmVlanMcastFloodNone
                                                : false);
    const bool none_of_port =
        flood == Flood::unknown_multicast && passage.own().pfm == bcmPortPfmForwardRegistered;
    return none_of_vlan || none_of_port ? PortSet() : members;
}

/// The VLAN is not as it is at first. True: addresses are not looked up in it.
[[gnu::noinline]] bool look_at_settings(Passage &passage)
{
    const bcm_vlan_control_vlan_t &settings = *passage.vlan->settings;
    if (settings.flags & BCM_VLAN_COPY_TO_CPU) {
        passage.copies.add(cpu_port);
    }
    return settings.flags & BCM_VLAN_L2_LOOKUP_DISABLE;
}

[[gnu::cold]] void tell_entry(const Passage &passage, bool leads_somewhere, uint32 flags)
{
    static constexpr const char *kinds[] = {"port", "trunk", "group", "nowhere:"};
    const MacText address(passage.frame.to());
    const Destination &to = passage.to;
    const char *kind = flags & BCM_L2_STATIC ? "static" : "dynamic";
    if (!leads_somewhere) {
        tell_step(passage, simStageDestination, passage.port, "%s leads nowhere, %s", address.text(), kind);
    } else if (to.kind == Destination::Kind::port && !is_own_port(to)) {
        tell_step(passage, simStageDestination, passage.port, "%s is at port %d of module %d, %s",
                  address.text(), to.id, to.module, kind);
    } else {
        tell_step(passage, simStageDestination, passage.port, "%s leads to %s %d, %s%s", address.text(),
                  kinds[static_cast<int>(to.kind)], to.id, kind,
                  flags & BCM_L2_COPY_TO_CPU ? ", with a copy to the CPU" : "");
    }
}

}  // namespace

Onward find_destination(Passage &passage)
{
    L2State &l2 = l2_of(passage.sw);
    const unsigned char *address = passage.frame.to();
    const L2Key key = l2_key(address, passage.vid);
    const bool is_ignored = passage.vlan->settings != nullptr && look_at_settings(passage);
    const std::size_t position = is_ignored ? L2Table::none : l2.addresses.find(key);
    if (position == L2Table::none) {
        if (is_traced) {
            tell_step(passage, simStageDestination, passage.port, "%s is not %s: to the VLAN's members",
                      MacText(address).text(), is_ignored ? "looked up" : "known");
        }
        if (is_group(address) ? l2.settings.unknown_multicast_to_cpu && !is_broadcast(address)
                              : l2.settings.unknown_unicast_to_cpu) {
            passage.copy_to_cpu(is_group(address) ? bcmRxReasonMulticastMiss : bcmRxReasonL2DestMiss);
        }
        flood(passage, members_for(passage),
              is_group(address) ? &bcm_trunk_info_t::mc_index : &bcm_trunk_info_t::dlf_index);
        return Onward::decided;
    }
    const uint32 flags = l2.addresses.flags(position);
    l2.addresses.set_flags(position, flags | BCM_L2_DES_HIT);
    l2_count(l2, key, bcmL2StatOutPackets, bcmL2StatOutBytes, length_with_checksum(passage.frame.bytes));

    const bool leads_somewhere = l2_destination(l2.addresses, position, &passage.to) == BCM_E_NONE;
    if (is_traced) {
        tell_entry(passage, leads_somewhere, flags);
    }
    if (flags & BCM_L2_COPY_TO_CPU) {
        passage.copy_to_cpu(bcmRxReasonL2DestMarked);
    }
    if (!leads_somewhere || (passage.to.kind == Destination::Kind::port && !is_own_port(passage.to))) {
        passage.drop(Discard::no_destination);
        passage.to = {Destination::Kind::discard, 0, 0};
    } else if (passage.to.kind == Destination::Kind::discard) {
        passage.drop(Discard::destination_address);
    } else if (passage.to.kind == Destination::Kind::group) {
        const auto line = l2.multicast.find(passage.to.id);
        PortSet members = line != l2.multicast.end() ? PortSet(line->second) : PortSet();
        if (passage.vlan->blocked != nullptr) {
            members = members - PortSet(passage.vlan->blocked->known_multicast);
        }
        flood(passage, members, &bcm_trunk_info_t::mc_index);
    }
    return Onward::decided;
}

}  // namespace sim
