/// How a port tells the VLAN tags of packets, and what their priorities mean.
#pragma once

#include "packet.h"

#include <bcm/port.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace sim {

struct PortTags {
    static constexpr std::size_t outer_types_max = 4;
    static constexpr int packet_priorities = 8;
    static constexpr int priorities = 16;
    static constexpr int colors = 3;

    /// Of a packet in the switch.
    struct Class {
        std::uint8_t priority, color;
    };

    /// Of a tag.
    struct Mark {
        bool is_set;
        std::uint8_t priority, cfi;
    };

    PortTags()
    {
        for (std::size_t i = 0; i < classes.size(); ++i) {
            classes[i] = {static_cast<std::uint8_t>(i / 2), bcmColorGreen};
        }
    }

    bool is_outer(unsigned type) const
    {
        return std::find(outer_types.begin(), outer_types.end(), type) != outer_types.end();
    }

    /// What it sends outer tags with.
    unsigned outer_type() const { return outer_types.empty() ? type_vlan : outer_types.front(); }

    /// The place of a priority and CFI of a tag.
    static std::size_t of_tag(int priority, int cfi) { return static_cast<std::size_t>(2 * priority + cfi); }
    static std::size_t of_class(int priority, int color)
    {
        return static_cast<std::size_t>(colors * priority + color);
    }

    std::vector<std::uint16_t> outer_types = {type_vlan};  // that begin an outer tag; the first for sending
    std::uint16_t inner_type = type_vlan;
    int dtag_mode = BCM_PORT_DTAG_MODE_NONE;
    int untagged_priority = 0;
    std::array<Class, 2 * packet_priorities> classes;  // by of_tag
    std::array<Mark, priorities *colors> marks = {};   // by of_class; what is not set stays as it is

    // The maps of bcm_qos_port_map_set that these two are kept up with.
    static constexpr int no_map = -1;
    int map_of_classes = no_map, map_of_marks = no_map;
};

}  // namespace sim
