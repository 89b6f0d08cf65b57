/// Link scan of one unit: which ports are watched, and who is told.
///
/// There is no thread. A port of which something may have changed the link is due to be looked at: by the chip, or
/// where nobody lets time pass, at once, in the call that did; else at the end of the interval, where the clock's timer
/// is. Handlers run there.
#pragma once

#include "clock.h"
#include "destination.h"
#include "handler_list.h"
#include "port_set.h"

#include <bcm/link.h>

#include <array>
#include <cstddef>
#include <memory>

namespace sim {

class PhyPort;

struct WatchedLink {
    int mode = BCM_LINKSCAN_MODE_SW;
    bool up = false;      ///< at the last scan
    Time went_down = 0;   ///< when that was seen
    bool is_due = false;  ///< to be told of at the next scan even if it is as before
    HandlerList<Callback<bcm_linkscan_port_handler_t>> handlers;
};

struct LinkScan {
    bool initialised = true;
    int interval = 0;  ///< microseconds, 0: off
    Time began = 0;    ///< when it was set: intervals are counted from then
    PortSet due;
    std::unique_ptr<Timer> next;  ///< the scan at which they are looked at; null if there never was one
    std::array<WatchedLink, port_max + 1> ports;
    HandlerList<bcm_linkscan_handler_t> handlers;

    void forget_functions()
    {
        handlers.clear();
        for (WatchedLink &link : ports) {
            link.handlers.clear();
        }
    }

    WatchedLink &of(int port) { return ports[static_cast<std::size_t>(port)]; }
};

/// Something may have changed the port's link.
void follow_link(int unit, PhyPort &port);

}  // namespace sim
