#include "queue.h"
#include "stages.h"

#include <algorithm>

namespace sim {

namespace {

[[gnu::cold]] void tell_arrival(const Passage &passage)
{
    const Frame &frame = passage.frame;
    const MacText to(frame.to()), from(frame.from());
    if (frame.is_tagged()) {
        tell_step(passage, simStageArrive, passage.port,
                  "%zu bytes from %s to %s, tag of VLAN %d at priority %u, type 0x%04x",
                  passage.counts.length(), from.text(), to.text(), frame.vlan(), frame.tag >> 13, frame.type);
    } else {
        tell_step(passage, simStageArrive, passage.port, "%zu bytes from %s to %s, type 0x%04x",
                  passage.counts.length(), from.text(), to.text(), frame.type);
    }
}

/// Who is at the other end asks for a pause, or that it is over.
[[gnu::cold, gnu::noinline]] void obey_pause(Passage &passage)
{
    constexpr unsigned opcode_of_pause = 1, bits_of_quantum = 512;
    const ByteView frame = passage.frame.bytes;
    if (number_at(frame, frame_header_bytes) != opcode_of_pause) {
        return;
    }
    // Bits in a microsecond, of a port that has a link.
    const auto speed = static_cast<Time>(std::max(speed_of(passage.sw, passage.port), 1));
    const Time bits = Time{bits_of_quantum} * number_at(frame, frame_header_bytes + 2);
    pause(passage.sw, passage.port, bits * nanoseconds_per_microsecond / speed);
    add_what_waited(passage.sw, passage.port, passage.departures);
}

}  // namespace

Onward arrive(Passage &passage)
{
    const bool has_no_error =
        passage.counts.arrived(passage.counters_at(passage.port), passage.own().frame_max);
    const bool is_for_mac = passage.frame.type == type_mac_control && !passage.frame.is_tagged();
    if (has_no_error && is_for_mac && passage.own().pause_rx) {
        obey_pause(passage);
    }
    if (is_traced) {
        tell_arrival(passage);
        if (!has_no_error) {
            tell_kept_by_mac(passage,
                             passage.counts.length() < frame_min ? simDropUndersize : simDropTooLong);
        } else if (is_for_mac) {
            tell_kept_by_mac(passage, simDropControl);
        }
    }
    return has_no_error && !is_for_mac ? Onward::next : Onward::over;
}

}  // namespace sim
