/// The room of tags: which VLAN packets belong to, by what they bring and where, and with which tags they leave.
///
/// What ports are told about tags is in the room of ports (`PortTags`). Translations, and VLANs by source address,
/// subnet and protocol, are tables that rules keep (rules/rules.h); they are read here when they have changed.
#pragma once

#include "packet_tags.h"
#include "port.h"
#include "switch.h"
#include "tag_tables.h"

namespace sim {

struct TagState : RoomState {
    static constexpr Room room = Room::tags;

    explicit TagState(Switch &sw);

    /// As the rules keep them now.
    const TagTables &tables(Switch &sw);

    /// What the rules keep, or a port's PortTags, has changed: packets meet it.
    void touch();

private:
    PortState &ports_;
    TagTables tables_;
    bool is_stale_ = true;
};

const LookupClasses &lookup_classes_of(Switch &sw, int port);

/// Whether the port reads tags in its own way, or assigns VLANs: sets Port::reads_tags to that.
bool reads_tags(Switch &sw, int port);

/// The same when it sends, and PortState::tag_writers.
bool writes_tags(Switch &sw, int port);

/// How the VLAN of a packet was found, for traces.
struct Assignment {
    const char *by;  ///< in words
    bool is_refused;
};

/// The tags that the packet has in the switch: `outer` is that of its VLAN, which need not exist.
Assignment assign_vlan(Switch &sw, int port, ByteView frame, PacketTags &tags);

/// From those in the switch to those with which a copy leaves the port: is_untagged says what the VLAN says. False:
/// it is not to leave.
bool leave_with_tags(Switch &sw, int port, bool is_untagged, PacketTags &tags);

}  // namespace sim
