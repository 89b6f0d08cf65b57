/// The way of a packet through a unit: its stages one after the other.
#include "begin.h"
#include "stages.h"

#include <sim/traffic.h>

using namespace sim;

namespace {

/// Goes through the stages until one does not say next.
template <Stage &...stages>
Onward run(Passage &passage)
{
    Onward onward = Onward::next;
    ((onward = stages(passage), onward == Onward::next) && ...);
    return onward;
}

struct Watcher {
    sim_packet_watcher_t call = nullptr;
    void *datum = nullptr;
};

Watcher watcher;

void tell(int unit, const Departures &departures)
{
    for (std::size_t i = 0; i < departures.count && watcher.call != nullptr; ++i) {
        const Departures::Copy &copy = departures.copies[i];
        const ByteView frame = departures.frame.written(departures.heads[copy.head]);
        watcher.call(unit, copy.port, frame.data, static_cast<int>(frame.size), watcher.datum);
    }
}

}  // namespace

extern "C" {

void sim_packet_watch(sim_packet_watcher_t call, void *datum)
{
    watcher = {call, datum};
}

int sim_packet_arrive(int unit, bcm_port_t port, const unsigned char *frame, int length)
{
    Departures departures;
    const int status = begin(unit, ready<L2State>, given(frame)).then([&](Switch &sw, L2State &) -> int {
        constexpr int longest = static_cast<int>(frame_longest - checksum_bytes);
        int arrival;
        const int rc = resolve_own_port(port, &arrival);
        if (rc != BCM_E_NONE || arrival == cpu_port) {
            return BCM_E_PORT;
        }
        if (length < static_cast<int>(frame_header_bytes) || length > longest) {
            return BCM_E_PARAM;
        }
        if (!has_link(sw, arrival)) {
            return BCM_E_DISABLED;
        }
        departures.frame.fill({frame, static_cast<std::size_t>(length)});
        Passage passage(sw, arrival, departures);
        const Onward onward =
            run<arrive, admit, classify, look_at_tree, look_at_source, find_destination>(passage);
        if (onward == Onward::decided) {
            run<replicate, edit, leave>(passage);
        }
        return BCM_E_NONE;
    });
    tell(unit, departures);
    return status;
}

}  // extern "C"
