/// What ports are told about tags: their types, double tagging, priorities and colours.
#include "begin.h"
#include "port.h"
#include "sim_port.h"

#include <algorithm>
#include <vector>

using namespace sim;

namespace {

/// change(PortTags &) of a port, whose packets then meet it.
template <class Change>
int change(int unit, bcm_port_t port, Change change)
{
    return begin(unit, own_port(port)).then([&](Switch &sw, int own) -> int {
        const int rc = change(port_of(sw, own).tags);
        auto &ports = sw.of<PortState>();
        ports.ports[static_cast<std::size_t>(own)].reads_tags = true;
        ports.tag_writers.add(own);
        ports.update_special_out();
        return rc;
    });
}

bool is_within(int number, int limit)
{
    return number >= 0 && number < limit;
}

bool is_tag_priority(int priority, int cfi)
{
    return is_within(priority, PortTags::packet_priorities) && is_within(cfi, 2);
}

bool is_class(int priority, bcm_color_t color)
{
    return is_within(priority, PortTags::priorities) && is_within(static_cast<int>(color), PortTags::colors);
}

/// read(tags) of a port, what is at that place of the tag's priorities.
auto class_of_tag(int priority, int cfi)
{
    return [=](PortTags &tags) -> PortTags::Class & { return tags.classes[PortTags::of_tag(priority, cfi)]; };
}

}  // namespace

extern "C" {

int sim_bcm_port_tpid_set(int unit, bcm_port_t port, uint16 tpid)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        tags.outer_types.assign(1, tpid);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_tpid_get(int unit, bcm_port_t port, uint16 *tpid)
{
    return begin(unit, given(tpid), settings_of(port)).then([&](Port &own) {
        *tpid = static_cast<uint16>(own.tags.outer_type());
    });
}

int sim_bcm_port_tpid_add(int unit, bcm_port_t port, uint16 tpid, int color_select)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        // The colour is that of the tag's priority and CFI.
        if (color_select != 0) {
            return color_select < 0 ? BCM_E_PARAM : BCM_E_UNAVAIL;
        }
        if (tags.is_outer(tpid)) {
            return BCM_E_EXISTS;
        }
        if (tags.outer_types.size() == PortTags::outer_types_max) {
            return BCM_E_FULL;
        }
        tags.outer_types.push_back(tpid);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_tpid_delete(int unit, bcm_port_t port, uint16 tpid)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        const auto found = std::find(tags.outer_types.begin(), tags.outer_types.end(), tpid);
        if (found == tags.outer_types.end()) {
            return BCM_E_NOT_FOUND;
        }
        tags.outer_types.erase(found);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_tpid_delete_all(int unit, bcm_port_t port)
{
    return change(unit, port, [](PortTags &tags) -> int {
        tags.outer_types.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_port_tpid_get_all(int unit, bcm_port_t port, int size, uint16 *tpid_array, int *color_array,
                              int *count)
{
    return begin(unit, given(tpid_array, color_array, count), settings_of(port)).then([&](Port &own) -> int {
        if (size < 0) {
            return BCM_E_PARAM;
        }
        const std::vector<std::uint16_t> &types = own.tags.outer_types;
        const auto written = std::min(types.size(), static_cast<std::size_t>(size));
        std::copy_n(types.begin(), written, tpid_array);
        std::fill_n(color_array, written, 0);
        *count = static_cast<int>(written);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_inner_tpid_set(int unit, bcm_port_t port, uint16 tpid)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        tags.inner_type = tpid;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_inner_tpid_get(int unit, bcm_port_t port, uint16 *tpid)
{
    return begin(unit, given(tpid), settings_of(port)).then([&](Port &own) { *tpid = own.tags.inner_type; });
}

int sim_bcm_port_dtag_mode_set(int unit, bcm_port_t port, int mode)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        if (mode < BCM_PORT_DTAG_MODE_NONE || mode > BCM_PORT_DTAG_MODE_EXTERNAL) {
            return BCM_E_PARAM;
        }
        tags.dtag_mode = mode;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_dtag_mode_get(int unit, bcm_port_t port, int *mode)
{
    return begin(unit, given(mode), settings_of(port)).then([&](Port &own) { *mode = own.tags.dtag_mode; });
}

int sim_bcm_port_untagged_priority_set(int unit, bcm_port_t port, int priority)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        if (!is_within(priority, PortTags::packet_priorities)) {
            return BCM_E_PARAM;
        }
        tags.untagged_priority = priority;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_untagged_priority_get(int unit, bcm_port_t port, int *priority)
{
    return begin(unit, given(priority), settings_of(port)).then([&](Port &own) {
        *priority = own.tags.untagged_priority;
    });
}

int sim_bcm_port_vlan_priority_map_set(int unit, bcm_port_t port, int pkt_pri, int cfi, int internal_pri,
                                       bcm_color_t color)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        if (!is_tag_priority(pkt_pri, cfi) || !is_class(internal_pri, color)) {
            return BCM_E_PARAM;
        }
        class_of_tag(pkt_pri, cfi)(tags) = {static_cast<std::uint8_t>(internal_pri),
                                            static_cast<std::uint8_t>(color)};
        return BCM_E_NONE;
    });
}

int sim_bcm_port_vlan_priority_map_get(int unit, bcm_port_t port, int pkt_pri, int cfi, int *internal_pri,
                                       bcm_color_t *color)
{
    return begin(unit, given(internal_pri, color), settings_of(port)).then([&](Port &own) -> int {
        if (!is_tag_priority(pkt_pri, cfi)) {
            return BCM_E_PARAM;
        }
        const PortTags::Class found = class_of_tag(pkt_pri, cfi)(own.tags);
        *internal_pri = found.priority;
        *color = static_cast<bcm_color_t>(found.color);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_vlan_pri_map_set(int unit, bcm_port_t port, int pkt_pri, int cfi, int internal_pri,
                                  bcm_color_t color)
{
    return sim_bcm_port_vlan_priority_map_set(unit, port, pkt_pri, cfi, internal_pri, color);
}

int sim_bcm_port_vlan_pri_map_get(int unit, bcm_port_t port, int pkt_pri, int cfi, int *internal_pri,
                                  bcm_color_t *color)
{
    return sim_bcm_port_vlan_priority_map_get(unit, port, pkt_pri, cfi, internal_pri, color);
}

int sim_bcm_port_vlan_priority_unmap_set(int unit, bcm_port_t port, int internal_pri, bcm_color_t color,
                                         int pkt_pri, int cfi)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        if (!is_tag_priority(pkt_pri, cfi) || !is_class(internal_pri, color)) {
            return BCM_E_PARAM;
        }
        tags.marks[PortTags::of_class(internal_pri, color)] = {true, static_cast<std::uint8_t>(pkt_pri),
                                                               static_cast<std::uint8_t>(cfi)};
        return BCM_E_NONE;
    });
}

int sim_bcm_port_vlan_priority_unmap_get(int unit, bcm_port_t port, int internal_pri, bcm_color_t color,
                                         int *pkt_pri, int *cfi)
{
    return begin(unit, given(pkt_pri, cfi), settings_of(port)).then([&](Port &own) -> int {
        if (!is_class(internal_pri, color)) {
            return BCM_E_PARAM;
        }
        const PortTags::Mark &mark = own.tags.marks[PortTags::of_class(internal_pri, color)];
        if (!mark.is_set) {
            return BCM_E_NOT_FOUND;
        }
        *pkt_pri = mark.priority;
        *cfi = mark.cfi;
        return BCM_E_NONE;
    });
}

// Of both CFIs, and of all priorities: the same colours as above.
int sim_bcm_port_priority_color_set(int unit, bcm_port_t port, int prio, bcm_color_t color)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        if (!is_tag_priority(prio, 0) || !is_class(0, color)) {
            return BCM_E_PARAM;
        }
        for (int cfi = 0; cfi < 2; ++cfi) {
            class_of_tag(prio, cfi)(tags).color = static_cast<std::uint8_t>(color);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_port_priority_color_get(int unit, bcm_port_t port, int prio, bcm_color_t *color)
{
    int priority;
    return sim_bcm_port_vlan_priority_map_get(unit, port, prio, 0, &priority, color);
}

int sim_bcm_port_cfi_color_set(int unit, bcm_port_t port, int cfi, bcm_color_t color)
{
    return change(unit, port, [&](PortTags &tags) -> int {
        if (!is_tag_priority(0, cfi) || !is_class(0, color)) {
            return BCM_E_PARAM;
        }
        for (int prio = 0; prio < PortTags::packet_priorities; ++prio) {
            class_of_tag(prio, cfi)(tags).color = static_cast<std::uint8_t>(color);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_port_cfi_color_get(int unit, bcm_port_t port, int cfi, bcm_color_t *color)
{
    int priority;
    return sim_bcm_port_vlan_priority_map_get(unit, port, 0, cfi, &priority, color);
}

}  // extern "C"
