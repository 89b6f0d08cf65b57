#include "queue.h"
#include "stages.h"

#include <utility>

namespace sim {

[[gnu::cold, gnu::noinline]] void add_what_waited(Switch &sw, int port, Departures &departures)
{
    FrameBuffer frame;
    while (dequeue(sw, port, &frame)) {
        const FrameCounts counts(frame.bytes());
        counts.sent(counters_of(sw, port));
        if (is_traced) {
            tell_at(sw.unit, simStageQueue, port, simDropNone, "%u bytes have waited and leave",
                    static_cast<unsigned>(counts.length()));
        }
        departures.add(port, std::move(frame));
    }
    follow_limits(sw, port);
}

}  // namespace sim
