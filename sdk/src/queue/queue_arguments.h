/// Checks of arguments that name queues.
#pragma once

#include "begin.h"
#include "gport.h"
#include "queue.h"

namespace sim {

/// One queue of a port, or all of them.
struct QueueRange {
    PortQueues *port;
    int number;  // of the port
    int first, last;

    Queue *begin() const { return port->queues.data() + first; }
    Queue *end() const { return port->queues.data() + last; }
};

/// The port that a gport means, itself or that of a queue group, and how many of its queues: BCM_E_PORT,
/// BCM_E_NOT_FOUND for what is neither.
inline auto queueing_port(bcm_gport_t gport)
{
    return [gport](Switch &sw, auto next) -> int {
        const auto group = queues_of(sw).groups.find(gport);
        if (group != queues_of(sw).groups.end()) {
            return next(group->second.port, group->second.count);
        }
        if (!names_port(gport)) {
            return BCM_E_NOT_FOUND;
        }
        return own_port(gport)(sw, [&](int port) -> int { return next(port, queues_of(sw).count); });
    };
}

/// BCM_E_PORT; BCM_E_PARAM for a queue that is not there. A cosq of -1 means all.
inline auto queues(bcm_gport_t gport, bcm_cos_queue_t cosq)
{
    return [gport, cosq](Switch &sw, auto next) -> int {
        return queueing_port(gport)(sw, [&](int port, int count) -> int {
            QueueState &state = queues_of(sw);
            if (cosq < -1 || cosq >= count) {
                return BCM_E_PARAM;
            }
            PortQueues *own = &state.ports[static_cast<std::size_t>(port)];
            const QueueRange range =
                cosq == -1 ? QueueRange{own, port, 0, count} : QueueRange{own, port, cosq, cosq + 1};
            return next(range);
        });
    };
}

}  // namespace sim
