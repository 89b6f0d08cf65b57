#include "packet_tags.h"

#include "port_tags.h"

#include <bcm/error.h>

namespace sim {

namespace {

using Action = bcm_vlan_action_set_t;
using Change = bcm_vlan_action_t Action::*;

/// What is done to one tag of packets of one kind. Not all of it can be said of all.
struct TagChanges {
    Change tag, priority, packet_priority, cfi;
};

struct Changes {
    TagChanges outer, inner;
};

constexpr Changes changes_of[2][2] = {
    {{{&Action::ut_outer, nullptr, &Action::ut_outer_pkt_prio, &Action::ut_outer_cfi},
      {&Action::ut_inner, nullptr, &Action::ut_inner_pkt_prio, &Action::ut_inner_cfi}},
     {{&Action::it_outer, nullptr, &Action::it_outer_pkt_prio, &Action::it_outer_cfi},
      {&Action::it_inner, &Action::it_inner_prio, &Action::it_inner_pkt_prio, &Action::it_inner_cfi}}},
    {{{&Action::ot_outer, &Action::ot_outer_prio, &Action::ot_outer_pkt_prio, &Action::ot_outer_cfi},
      {&Action::ot_inner, nullptr, &Action::ot_inner_pkt_prio, &Action::ot_inner_cfi}},
     {{&Action::dt_outer, &Action::dt_outer_prio, &Action::dt_outer_pkt_prio, &Action::dt_outer_cfi},
      {&Action::dt_inner, &Action::dt_inner_prio, &Action::dt_inner_pkt_prio, &Action::dt_inner_cfi}}}};

/// What came, and which of it is the tag that is changed.
struct Came {
    const Tag &own, &other, &outer, &inner;

    /// The tag that an action takes a value from; null if it takes none from a tag, or that was not there.
    const Tag *source(bcm_vlan_action_t action) const
    {
        const Tag *from = action == bcmVlanActionCopy       ? &other
                          : action == bcmVlanActionOuterAdd ? &outer
                          : action == bcmVlanActionInnerAdd ? &inner
                                                            : nullptr;
        return from != nullptr && from->is_there ? from : nullptr;
    }
};

bool gives_new(bcm_vlan_action_t action)
{
    return action == bcmVlanActionAdd || action == bcmVlanActionReplace;
}

void change_tag(Tag &tag, bcm_vlan_action_t action, bcm_vlan_t new_vlan, const Came &came)
{
    if (action == bcmVlanActionAdd || (action == bcmVlanActionReplace && tag.is_there)) {
        tag.is_there = true;
        tag.vlan = new_vlan;
    } else if (action == bcmVlanActionDelete) {
        tag.is_there = false;
    } else if (const Tag *from = came.source(action)) {
        if (!tag.is_there) {
            tag.priority = from->priority;
            tag.cfi = from->cfi;
        }
        tag.is_there = true;
        tag.vlan = from->vlan;
    }
}

/// A field of a tag; a new value below 0 leaves it.
void change_field(unsigned &field, bcm_vlan_action_t action, int new_value, const Came &came,
                  unsigned Tag::*which)
{
    if (gives_new(action)) {
        field = new_value >= 0 ? static_cast<unsigned>(new_value) : field;
    } else if (action == bcmVlanActionDelete) {
        field = 0;
    } else if (const Tag *from = came.source(action)) {
        field = from->*which;
    }
}

void change_type(Tag &tag, bcm_vlan_tpid_action_t action, unsigned new_type, const Came &came)
{
    if (action == bcmVlanTpidActionModify) {
        tag.type = new_type;
    } else if (action == bcmVlanTpidActionInner && came.inner.is_there) {
        tag.type = came.inner.type;
    } else if (action == bcmVlanTpidActionOuter && came.outer.is_there) {
        tag.type = came.outer.type;
    }
}

void change_class(PacketTags &tags, bcm_vlan_action_t action, int new_priority, const Came &came)
{
    if (gives_new(action)) {
        tags.priority = new_priority >= 0 ? new_priority : tags.priority;
    } else if (const Tag *from = came.source(action)) {
        tags.priority = static_cast<int>(from->priority);
    }
}

struct NewTag {
    bcm_vlan_t vlan;
    int packet_priority, cfi;
};

void change(Tag &tag, const TagChanges &changes, const Action &action, const NewTag &given, const Came &came)
{
    change_tag(tag, action.*changes.tag, given.vlan, came);
    change_field(tag.priority, action.*changes.packet_priority, given.packet_priority, came, &Tag::priority);
    change_field(tag.cfi, action.*changes.cfi, given.cfi, came, &Tag::cfi);
}

constexpr unsigned tag_actions = bcmVlanActionMappedAdd;

bool is_below(unsigned value, unsigned limit)
{
    return value < limit;
}

}  // namespace

PacketTags read_tags(const PortTags &port, ByteView frame)
{
    PacketTags tags;
    const auto type_here = [&] { return number_at(frame.data + tags.payload_from); };
    const auto take = [&](Tag &tag, unsigned type) {
        tag.set_content(number_at(frame.data + tags.payload_from + 2));
        tag.is_there = tag.vlan != 0;
        tag.type = type;
        tags.payload_from += tag_bytes;
    };
    const bool to_customers = port.dtag_mode == BCM_PORT_DTAG_MODE_EXTERNAL;
    unsigned type = type_here();
    tags.outer.priority = static_cast<unsigned>(port.untagged_priority);
    tags.priority = port.untagged_priority;
    if (port.is_outer(type) && !to_customers) {
        take(tags.outer, type);
        const PortTags::Class &own = port.classes[PortTags::of_tag(static_cast<int>(tags.outer.priority),
                                                                   static_cast<int>(tags.outer.cfi))];
        tags.priority = own.priority;
        tags.color = own.color;
        type = type_here();
    }
    if (type == port.inner_type || (to_customers && port.is_outer(type))) {
        take(tags.inner, type);
    }
    return tags;
}

void apply(const Action &action, PacketTags &tags)
{
    const PacketTags came = tags;
    const Changes &changes = changes_of[came.outer.is_there][came.inner.is_there];
    const Came outer = {came.outer, came.inner, came.outer, came.inner};
    const Came inner = {came.inner, came.outer, came.outer, came.inner};
    const int packet_priority = action.priority < 0 ? -1 : action.priority & 7;

    change(tags.outer, changes.outer, action, {action.new_outer_vlan, packet_priority, action.new_outer_cfi},
           outer);
    change(tags.inner, changes.inner, action,
           {action.new_inner_vlan, action.new_inner_pkt_prio, action.new_inner_cfi}, inner);
    change_field(tags.outer.priority, action.outer_pcp, packet_priority, outer, &Tag::priority);
    change_field(tags.inner.priority, action.inner_pcp, action.new_inner_pkt_prio, inner, &Tag::priority);
    change_type(tags.outer, action.outer_tpid_action, action.outer_tpid, outer);
    change_type(tags.inner, action.inner_tpid_action, action.inner_tpid, inner);

    // Without an outer tag, the priority of the one that is made is that of the packet too.
    change_class(tags,
                 changes.outer.priority != nullptr ? action.*changes.outer.priority
                                                   : action.*changes.outer.packet_priority,
                 action.priority, outer);
    if (changes.inner.priority != nullptr) {
        change_class(tags, action.*changes.inner.priority, action.new_inner_pkt_prio, inner);
    }
}

int check_action(const Action &action)
{
    bool is_mapped = false, is_known = true;
    const auto look = [&](Change change) {
        if (change != nullptr) {
            const auto number = static_cast<unsigned>(action.*change);
            is_known = is_known && is_below(number, bcmVlanActionCount);
            is_mapped = is_mapped || !is_below(number, tag_actions);
        }
    };
    for (const auto &by_inner : changes_of) {
        for (const Changes &changes : by_inner) {
            for (const TagChanges &of : {changes.outer, changes.inner}) {
                look(of.tag);
                look(of.priority);
                look(of.packet_priority);
                look(of.cfi);
            }
        }
    }
    look(&Action::outer_pcp);
    look(&Action::inner_pcp);
    constexpr uint32 known_flags = BCM_VLAN_ACTION_SET_EGRESS | BCM_VLAN_ACTION_SET_INGRESS;
    if (!is_known || !is_below(static_cast<unsigned>(action.outer_tpid_action), bcmVlanTpidActionCount)
        || !is_below(static_cast<unsigned>(action.inner_tpid_action), bcmVlanTpidActionCount)
        || action.new_outer_vlan > BCM_VLAN_INVALID || action.new_inner_vlan > BCM_VLAN_INVALID
        || action.new_inner_pkt_prio >= PortTags::packet_priorities || action.new_outer_cfi > 1
        || action.new_inner_cfi > 1 || action.priority < -1 || action.priority >= PortTags::priorities
        || (action.flags & ~known_flags)) {
        return BCM_E_PARAM;
    }
    const bool is_here = !is_mapped && action.ingress_if == 0 && action.policer_id == 0
                         && action.action_id == 0 && action.class_id == 0;
    return is_here ? BCM_E_NONE : BCM_E_UNAVAIL;
}

}  // namespace sim
