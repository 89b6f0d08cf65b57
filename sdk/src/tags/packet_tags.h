/// The VLAN tags of one packet, and how an action changes them.
#pragma once

#include "packet.h"

#include <bcm/vlan.h>

#include <cstddef>
#include <cstdint>

namespace sim {

struct PortTags;

struct Tag {
    bool is_there = false;
    bcm_vlan_t vlan = 0;
    unsigned priority = 0;  // 0..7
    unsigned cfi = 0;
    unsigned type = 0;  // 0: what the port that sends it has

    unsigned content() const { return priority << 13 | cfi << 12 | vlan; }
    void set_content(unsigned content)
    {
        vlan = static_cast<bcm_vlan_t>(content & Frame::vlan_mask);
        cfi = content >> 12 & 1;
        priority = content >> 13;
    }
};

/// The outer tag is that of the VLAN in the switch. A tag without VLAN id is not there, but what else it says is.
struct PacketTags {
    Tag outer, inner;
    std::size_t payload_from = addresses_bytes;  ///< place of the type behind all tags
    int priority = 0;                            ///< in the switch
    int color = bcmColorGreen;
    bool are_translated = false;  ///< by an entry for their VLANs
};

/// What a port makes of the tags of a frame, behind which there are at least eight more bytes.
PacketTags read_tags(const PortTags &port, ByteView frame);

/// Changes the tags as the action says for packets with such tags. On the way out the outer tag is always there.
void apply(const bcm_vlan_action_set_t &action, PacketTags &tags);

/// BCM_E_PARAM for what no action can be, BCM_E_UNAVAIL for what is none here: mappings, policers, interfaces, classes
/// and edit commands.
int check_action(const bcm_vlan_action_set_t &action);

}  // namespace sim
