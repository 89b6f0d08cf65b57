/// Link scan of one unit: which ports are watched, and who is told.
///
/// There is no thread. While it is on, the next scan is taken to come as soon as something may have changed a
/// link, in the call that did; handlers run there.
#pragma once

#include "destination.h"
#include "handler_list.h"

#include <bcm/link.h>

#include <array>
#include <cstddef>

namespace sim {

class PhyPort;

struct WatchedLink {
    int mode = BCM_LINKSCAN_MODE_SW;
    bool up = false;      ///< at the last scan
    bool is_due = false;  ///< to be told of at the next scan even if it is as before
    HandlerList<Callback<bcm_linkscan_port_handler_t>> handlers;
};

struct LinkScan {
    bool initialised = true;
    int interval = 0;  ///< microseconds, 0: off
    std::array<WatchedLink, port_max + 1> ports;
    HandlerList<bcm_linkscan_handler_t> handlers;

    WatchedLink &of(int port) { return ports[static_cast<std::size_t>(port)]; }
};

/// Scans the port if link scan is on and watches it.
void follow_link(int unit, PhyPort &port);

}  // namespace sim
