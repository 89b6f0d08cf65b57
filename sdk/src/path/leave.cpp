#include "stages.h"

#include <optional>

namespace sim {

namespace {

[[gnu::cold]] void tell_copy(const Passage &passage, int port, bool tagged, std::size_t length)
{
    if (tagged) {
        tell_step(passage, simStageLeave, port, "%zu bytes, with a tag of VLAN %d", length, passage.vid);
    } else {
        tell_step(passage, simStageLeave, port, "%zu bytes, without tag", length);
    }
}

/// Whether one of the unit's ports is in the bitmap.
bool is_in(const bcm_pbmp_t &ports, int port)
{
    return ports.pbits[static_cast<unsigned>(port) / 32] >> (static_cast<unsigned>(port) % 32) & 1;
}

/// Checks a copy and sends it.
void send(Passage &passage, int port, bool tagged, const FrameCounts &counts)
{
    const Port &own = port_of(passage.sw, port);
    if ((own.vlan_filter & BCM_PORT_VLAN_MEMBER_EGRESS) && !is_in(passage.vlan->members, port)) {
        passage.drop_at(port, Discard::vlan_filter_to_send);
    } else if (counts.length() > static_cast<std::size_t>(own.frame_max)) {
        passage.drop_at(port, Discard::too_long_to_send);
    } else {
        counts.sent(passage.counters_at(port));
        if (is_traced) {
            tell_copy(passage, port, tagged, counts.length());
        }
        Departures &left = passage.departures;
        left.copies[left.count++] = {static_cast<std::uint8_t>(port), tagged};
    }
}

}  // namespace

Onward leave(Passage &passage)
{
    // The CPU's copies do not depend on a link until here.
    if (passage.copies.has(cpu_port) && !has_link(passage.sw, cpu_port)) {
        passage.drop_at(cpu_port, Discard::no_link);
        passage.copies.remove(cpu_port);
    }
    const bool came_tagged = passage.frame.is_tagged();
    std::optional<FrameCounts> changed;
    passage.copies.each([&](int port) {
        const bool tagged = !is_in(passage.vlan->untagged, port);
        // What leaves as it came counts as it did.
        const FrameCounts *counts = &passage.counts;
        if (tagged != came_tagged) {
            if (!changed) {
                changed.emplace(passage.departures.frame.written(passage.departures.heads[tagged]));
            }
            counts = &*changed;
        }
        send(passage, port, tagged, *counts);
    });
    return Onward::over;
}

}  // namespace sim
