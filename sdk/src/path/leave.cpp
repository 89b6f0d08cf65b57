#include "policer.h"
#include "queue.h"
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

/// What ports do before they send that only some do: police, let wait, and copy. Whether it leaves now.
[[gnu::cold, gnu::noinline]] bool may_leave_now(Passage &passage, int port, bool tagged,
                                                const FrameCounts &counts)
{
    const PortState &ports = passage.sw.of<PortState>();
    const Head &head = passage.departures.heads[tagged];
    PolicerDecision decision = PolicerDecision::none();
    decision.color = passage.color();
    if (ports.polices_out.has(port)) {
        police(passage.sw, PolicerSide::out, port, passage.vid, counts.length(), decision);
        if (decision.drops) {
            passage.drop_at(port, Discard::policer_to_send);
            return false;
        }
    }
    const auto priority =
        static_cast<std::size_t>(decision.priority >= 0 ? decision.priority : passage.priority());
    const int chosen =
        decision.queue < 0 && passage.policed != nullptr ? passage.policed->queue : decision.queue;
    const int queue = chosen >= 0 ? chosen : queues_at(passage.sw, port).queue_of[priority];
    const Queueing becomes = ports.queues_out.has(port) ? enqueue(passage.sw, port, queue, decision.color,
                                                                  passage.departures.frame.written(head))
                                                        : Queueing::leaves;
    if (becomes == Queueing::dropped) {
        passage.drop_at(port, Discard::queue_full);
        return false;
    }
    if (ports.copies_out.has(port)) {
        copy_departure(passage, port, head);
    }
    if (becomes == Queueing::waits) {
        if (is_traced) {
            tell_step(passage, simStageQueue, port, "waits in queue %d", queue);
        }
        return false;
    }
    count_departure(passage.sw, port, queue, decision.color, counts.length());
    return true;
}

/// Checks a copy and sends it.
void send(Passage &passage, int port, bool tagged, const FrameCounts &counts, bool is_plain)
{
    const Port &own = port_of(passage.sw, port);
    if ((own.vlan_filter & BCM_PORT_VLAN_MEMBER_EGRESS) && !is_in(passage.vlan->members, port)) {
        passage.drop_at(port, Discard::vlan_filter_to_send);
    } else if (counts.length() > static_cast<std::size_t>(own.frame_max)) {
        passage.drop_at(port, Discard::too_long_to_send);
    } else if (is_plain || may_leave_now(passage, port, tagged, counts)) {
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
    const bool is_plain = passage.policed == nullptr && passage.frame.tag >> 13 == 0
                          && (passage.copies & passage.sw.of<PortState>().special_out()).empty();
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
        send(passage, port, tagged, *counts, is_plain);
    });
    return Onward::over;
}

}  // namespace sim
