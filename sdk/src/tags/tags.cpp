#include "tags.h"

#include "rule_store.h"

#include <algorithm>

namespace sim {

TagState::TagState(Switch &sw) : ports_(sw.of<PortState>())
{
    const auto changed = [](void *datum) { static_cast<TagState *>(datum)->touch(); };
    for (const char *table : TagTables::sources()) {
        rule_store_of(sw).watch(table, changed, this);
    }
}

void TagState::touch()
{
    is_stale_ = true;
    ports_.tag_writers = PortSet::all();
    ports_.update_special_out();
    for (Port &port : ports_.ports) {
        port.reads_tags = true;
    }
}

const TagTables &TagState::tables(Switch &sw)
{
    if (is_stale_) {
        tables_ = TagTables(rule_store_of(sw));
        is_stale_ = false;
    }
    return tables_;
}

namespace {

const TagTables &tables_of(Switch &sw)
{
    return sw.of<TagState>().tables(sw);
}

bool has_classes(const PortTags &port)
{
    const PortTags plain;
    return !std::equal(
        port.classes.begin(), port.classes.end(), plain.classes.begin(),
        [](const auto &a, const auto &b) { return a.priority == b.priority && a.color == b.color; });
}

}  // namespace

const LookupClasses &lookup_classes_of(Switch &sw, int port)
{
    return tables_of(sw).lookup_classes(port);
}

bool reads_tags(Switch &sw, int port)
{
    Port &own = port_of(sw, port);
    const PortTags &tags = own.tags;
    const bool is_plain = tags.outer_types.size() == 1 && tags.outer_type() == type_vlan
                          && tags.inner_type == type_vlan && tags.untagged_priority == 0
                          && tags.dtag_mode != BCM_PORT_DTAG_MODE_EXTERNAL && !has_classes(tags);
    own.reads_tags = !is_plain || tables_of(sw).reads(port);
    return own.reads_tags;
}

bool writes_tags(Switch &sw, int port)
{
    const PortTags &tags = port_of(sw, port).tags;
    const bool has_marks = std::any_of(tags.marks.begin(), tags.marks.end(),
                                       [](const PortTags::Mark &mark) { return mark.is_set; });
    const bool writes = tags.outer_type() != type_vlan || tags.dtag_mode != BCM_PORT_DTAG_MODE_NONE
                        || has_marks || tables_of(sw).writes(port);
    auto &ports = sw.of<PortState>();
    ports.tag_writers.put(port, writes);
    ports.update_special_out();
    return writes;
}

Assignment assign_vlan(Switch &sw, int port, ByteView frame, PacketTags &tags)
{
    const TagTables &tables = tables_of(sw);
    const char *by = tags.outer.is_there ? "of the tag" : "the port's untagged VLAN";
    const TagAction *action = tables.translation(port, tags);
    if (action != nullptr) {
        by = "by translation";
        tags.are_translated = true;
    }
    const TagTables::Controls &controls = tables.controls(port);
    const bool came_with_tag = tags.outer.is_there || tags.inner.is_there;
    if (action != nullptr ? controls.drops_found
                          : controls.drops_missed && controls.translates && came_with_tag) {
        return {by, true};
    }
    if (action == nullptr && !tags.outer.is_there) {
        action = tables.assignment(port, frame, tags.payload_from, &by);
    }
    if (action == nullptr) {
        action = tables.default_of(port);
    }
    if (action != nullptr) {
        apply(*action, tags);
    }
    // What it came with is not what it leaves with, unless an action says so.
    if (action == nullptr || action->outer_tpid_action == bcmVlanTpidActionNone) {
        tags.outer.type = 0;
    }
    if (!tags.outer.is_there) {
        tags.outer.is_there = true;
        tags.outer.vlan = port_of(sw, port).untagged_vlan;
    }
    if (tags.inner.is_there && tags.inner.type == 0) {
        tags.inner.type = port_of(sw, port).tags.inner_type;
    }
    return {by, false};
}

bool leave_with_tags(Switch &sw, int port, bool is_untagged, PacketTags &tags)
{
    const PortTags &own = port_of(sw, port).tags;
    const TagTables &tables = tables_of(sw);
    const TagAction *action = tables.translation_to_send(port, tags);
    const TagTables::Controls &controls = tables.controls(port);
    if (action == nullptr && controls.drops_missed_to_send && controls.translates_to_send) {
        return false;
    }
    if (action == nullptr) {
        action = tables.default_to_send(port);
    }
    const PortTags::Mark &mark = own.marks[PortTags::of_class(tags.priority, tags.color)];
    if (mark.is_set) {
        tags.outer.priority = mark.priority;
        tags.outer.cfi = mark.cfi;
    }
    if (tags.outer.type == 0) {
        tags.outer.type = own.outer_type();
    }
    if (action != nullptr) {
        apply(*action, tags);
    }
    if (own.dtag_mode == BCM_PORT_DTAG_MODE_EXTERNAL
        || (is_untagged && own.dtag_mode != BCM_PORT_DTAG_MODE_INTERNAL)) {
        tags.outer.is_there = false;
    }
    const TagTables::Forced &forced = tables.forced(port);
    if (forced.flags & BCM_PORT_FORCE_VLAN_UNTAG) {
        tags.outer.is_there = false;
    } else if (forced.flags & BCM_PORT_FORCE_VLAN_ENABLE) {
        tags.outer.is_there = true;
        tags.outer.vlan = forced.vlan;
    }
    if (forced.flags & BCM_PORT_FORCE_VLAN_PKT_PRIO) {
        tags.outer.priority = forced.priority;
    }
    if (tags.inner.is_there && tags.inner.type == 0) {
        tags.inner.type = own.inner_type;
    }
    return true;
}

}  // namespace sim
