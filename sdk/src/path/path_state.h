/// What the path keeps of a unit: that it is told when something that waited may leave.
#pragma once

#include "queue.h"

namespace sim {

/// Lets what waits at a port leave, as far as it may now, with all that this brings about.
void send_what_waited(int unit, int port);

struct PathState : RoomState {
    static constexpr Room room = Room::path;

    explicit PathState(Switch &sw)
    {
        queues_of(sw).may_send = [unit = sw.unit](int port) { send_what_waited(unit, port); };
    }
};

}  // namespace sim
