#include "linkscan.h"

#include "begin.h"
#include "events.h"
#include "marked.h"
#include "port.h"
#include "sim_link.h"
#include "sim_port.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

using namespace sim;

namespace {

/// A link that comes back within this time has flapped.
constexpr Time flap_longest = nanoseconds_per_second;

/// The unit's link scan, which has to be initialised: BCM_E_INIT.
constexpr auto link_scan = [](Switch &sw, auto next) -> int {
    LinkScan &links = links_of(sw);
    return links.initialised ? next(links) : static_cast<int>(BCM_E_INIT);
};

/// A port that can be watched: BCM_E_PORT, BCM_E_UNAVAIL.
auto watched_link(bcm_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        return own_port(port)(sw, [&](int own) -> int {
            return has_serdes(own) ? next(own) : static_cast<int>(BCM_E_UNAVAIL);
        });
    };
}

/// visit(int port) for each that can be watched; BCM_E_PORT if the unit has not all of the ports.
template <class Visit>
int visit_links(const bcm_pbmp_t &ports, Visit visit)
{
    for (int port = port_max + 1; port < BCM_PBMP_PORT_MAX; ++port) {
        if (BCM_PBMP_MEMBER(ports, port)) {
            return BCM_E_PORT;
        }
    }
    for (int port = 0; port <= port_max; ++port) {
        if (BCM_PBMP_MEMBER(ports, port) && has_serdes(port)) {
            visit(port);
        }
    }
    return BCM_E_NONE;
}

/// Null if the unit has gone, its link scan is not initialised, or it does not watch the port. Handlers may
/// bring all that about.
LinkScan *watching(int unit, int port)
{
    Switch *sw = attached(unit);
    const bool watches =
        sw != nullptr && links_of(*sw).initialised && links_of(*sw).of(port).mode != BCM_LINKSCAN_MODE_NONE;
    return watches ? &links_of(*sw) : nullptr;
}

/// Whether the link can be asked for: the chip runs and the PHY's driver is there.
bool can_ask(int unit, const PhyPort &port)
{
    return begin(unit, chip_runs).then([&] {
        return is_ready(*phys_of(unit), port) ? SOC_E_NONE : SOC_E_INIT;
    }) == SOC_E_NONE;
}

void call_handlers(int unit, int port)
{
    bcm_port_info_t info;
    if (sim_bcm_port_info_get(unit, port, &info) != BCM_E_NONE) {
        return;
    }
    // Each gets a record of its own, as long as the unit is there and the port is watched.
    LinkScan *const links = &links_of(*attached(unit));
    const auto tell = [&](auto call) {
        if (watching(unit, port) == links) {
            bcm_port_info_t told = info;
            call(&told);
        }
    };
    links->handlers.each([&](bcm_linkscan_handler_t handler) {
        tell([&](bcm_port_info_t *told) { handler(unit, port, told); });
    });
    if (watching(unit, port) == links) {
        links->of(port).handlers.each([&](const auto &handler) {
            tell([&](bcm_port_info_t *told) { handler.function(unit, port, told, handler.user_data); });
        });
    }
}

/// False if there is nothing to tell.
bool scan_once(int unit, int port)
{
    LinkScan *links = watching(unit, port);
    if (links == nullptr || !can_ask(unit, phys_of(unit)->of(port))) {
        return false;
    }
    WatchedLink &link = links->of(port);
    const bool up = has_link(*attached(unit), port);
    if (up == link.up && !link.is_due) {
        return false;
    }
    const bool flapped = up && !link.up && link.went_down != 0 && clock_now() - link.went_down < flap_longest;
    link.went_down = !up && link.up ? std::max<Time>(clock_now(), 1) : link.went_down;
    link.up = up;
    link.is_due = false;
    sim_bcm_port_update(unit, port, up);
    call_handlers(unit, port);
    if (flapped && watching(unit, port) == links) {
        raise(*attached(unit), {bcmSwitchEventLinkFlap, static_cast<uint32>(port)});
    }
    return true;
}

/// One handler's change of the link is told to all when they have heard of the one before. Handlers that change it
/// every time have to wait for the next scan.
void scan(int unit, int port, int most_in_a_row = 16)
{
    PhyUnit *phys = phys_of(unit);
    if (phys == nullptr || phys->of(port).in_link_scan) {
        return;
    }
    const Marked marked(phys->of(port).in_link_scan);
    for (int i = 0; i < most_in_a_row && scan_once(unit, port); ++i) {
    }
}

void scan_due(int unit)
{
    Switch *sw = attached(unit);
    if (sw != nullptr) {
        std::exchange(links_of(*sw).due, {}).each([&](int port) { scan(unit, port, 1); });
    }
}

void look_at_next_scan(int unit, LinkScan &links, int port)
{
    links.due.add(port);
    if (links.next == nullptr) {
        links.next = std::make_unique<Timer>([unit] { scan_due(unit); });
    }
    if (!links.next->waits()) {
        const Time interval = static_cast<Time>(links.interval) * nanoseconds_per_microsecond;
        links.next->start(interval - (clock_now() - links.began) % interval);
    }
}

bool is_on(int unit, int port)
{
    const LinkScan *links = watching(unit, port);
    return links != nullptr && links->interval > 0;
}

/// Has the port looked at in its time, if link scan is on and watches it.
void look_at(int unit, int port)
{
    if (!is_on(unit, port)) {
        return;
    }
    LinkScan &links = links_of(*attached(unit));
    if (clock_mode == simClockStands || links.of(port).mode == BCM_LINKSCAN_MODE_HW) {
        scan(unit, port);
    } else {
        look_at_next_scan(unit, links, port);
    }
}

bool is_mode(int mode)
{
    return mode >= BCM_LINKSCAN_MODE_NONE && mode <= BCM_LINKSCAN_MODE_HW;
}

void set_mode(int unit, int port, int mode)
{
    // The handlers of a port before may have done anything.
    if (Switch *sw = attached(unit)) {
        links_of(*sw).of(port).mode = mode;
        look_at(unit, port);
    }
}

const char *mode_name(int mode)
{
    static constexpr const char *names[] = {"none", "sw", "hw"};
    return names[mode];
}

}  // namespace

namespace sim {

void follow_link(int unit, PhyPort &port)
{
    look_at(unit, port.number);
}

}  // namespace sim

extern "C" {

int sim_bcm_linkscan_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        links_of(sw) = LinkScan();
        return BCM_E_NONE;
    });
}

int sim_bcm_linkscan_detach(int unit)
{
    return begin(unit, link_scan).then([](LinkScan &links) {
        links = LinkScan();
        links.initialised = false;
        return BCM_E_NONE;
    });
}

int sim_bcm_linkscan_enable_set(int unit, int us)
{
    return begin(unit, link_scan).then([&](LinkScan &links) {
        if (us < 0) {
            return BCM_E_PARAM;
        }
        links.interval = us;
        links.began = clock_now();
        links.next.reset();
        for (int port = 0; port <= port_max; ++port) {
            if (has_serdes(port) && is_on(unit, port)) {
                scan(unit, port);
            }
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_linkscan_enable_get(int unit, int *us)
{
    return begin(unit, link_scan, given(us)).then([&](LinkScan &links) {
        *us = links.interval;
        return BCM_E_NONE;
    });
}

int sim_bcm_linkscan_enable_port_get(int unit, bcm_port_t port)
{
    return begin(unit, link_scan, watched_link(port)).then([](LinkScan &links, int own) {
        const bool watched = links.interval > 0 && links.of(own).mode != BCM_LINKSCAN_MODE_NONE;
        return watched ? BCM_E_NONE : BCM_E_DISABLED;
    });
}

int sim_bcm_linkscan_mode_set(int unit, bcm_port_t port, int mode)
{
    return begin(unit, link_scan, watched_link(port)).then([&](LinkScan &, int own) {
        if (!is_mode(mode)) {
            return BCM_E_PARAM;
        }
        set_mode(unit, own, mode);
        return BCM_E_NONE;
    });
}

int sim_bcm_linkscan_mode_set_pbm(int unit, bcm_pbmp_t pbm, int mode)
{
    return begin(unit, link_scan).then([&](LinkScan &) {
        return is_mode(mode) ? visit_links(pbm, [&](int port) { set_mode(unit, port, mode); })
                             : static_cast<int>(BCM_E_PARAM);
    });
}

int sim_bcm_linkscan_mode_get(int unit, bcm_port_t port, int *mode)
{
    return begin(unit, link_scan, given(mode), watched_link(port)).then([&](LinkScan &links, int own) {
        *mode = links.of(own).mode;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_linkscan_set(int unit, bcm_port_t port, int linkscan)
{
    return sim_bcm_linkscan_mode_set(unit, port, linkscan);
}

int sim_bcm_port_linkscan_get(int unit, bcm_port_t port, int *linkscan)
{
    return sim_bcm_linkscan_mode_get(unit, port, linkscan);
}

int sim_bcm_linkscan_register(int unit, bcm_linkscan_handler_t f)
{
    return begin(unit, link_scan, given(f)).then([&](LinkScan &links) { return links.handlers.add(f); });
}

int sim_bcm_linkscan_unregister(int unit, bcm_linkscan_handler_t f)
{
    return begin(unit, link_scan, given(f)).then([&](LinkScan &links) { return links.handlers.remove(f); });
}

int sim_bcm_linkscan_port_register(int unit, bcm_port_t port, bcm_linkscan_port_handler_t f, void *user_data)
{
    return begin(unit, link_scan, given(f), watched_link(port)).then([&](LinkScan &links, int own) {
        return links.of(own).handlers.add({f, user_data});
    });
}

int sim_bcm_linkscan_port_unregister(int unit, bcm_port_t port, bcm_linkscan_port_handler_t f,
                                     void *user_data)
{
    return begin(unit, link_scan, given(f), watched_link(port)).then([&](LinkScan &links, int own) {
        return links.of(own).handlers.remove({f, user_data});
    });
}

int sim_bcm_linkscan_update(int unit, bcm_pbmp_t pbm)
{
    return begin(unit, link_scan).then([&](LinkScan &) {
        return visit_links(pbm, [&](int port) { scan(unit, port); });
    });
}

int sim_bcm_linkscan_dump(int unit)
{
    return begin(unit, link_scan).then([&](LinkScan &links) {
        std::printf("link scan every %d us\nport  mode  link\n", links.interval);
        for (int port = 0; port <= port_max; ++port) {
            if (has_serdes(port)) {
                const WatchedLink &link = links.of(port);
                std::printf("%4d  %-4s  %s\n", port, mode_name(link.mode), link.up ? "up" : "down");
            }
        }
        std::fflush(stdout);
        return BCM_E_NONE;
    });
}

int sim_bcm_link_change(int unit, bcm_pbmp_t pbmp)
{
    return begin(unit, link_scan).then([&](LinkScan &) {
        return visit_links(pbmp, [&](int port) {
            if (LinkScan *links = watching(unit, port)) {
                links->of(port).is_due = true;
                look_at(unit, port);
            }
        });
    });
}

int sim_bcm_link_wait(int unit, bcm_pbmp_t *pbmp, int us)
{
    int rc = BCM_E_NONE;
    bcm_pbmp_t up = {};
    const auto look = [&](LinkScan &) {
        if (us < 0) {
            return static_cast<int>(BCM_E_PARAM);
        }
        up = {};
        const int found = visit_links(*pbmp, [&](int port) {
            if (has_link(*attached(unit), port)) {
                BCM_PBMP_PORT_ADD(up, port);
            }
        });
        const bool all_up = std::equal(std::begin(up.pbits), std::end(up.pbits), std::begin(pbmp->pbits));
        return found != BCM_E_NONE || all_up ? found : static_cast<int>(BCM_E_TIMEOUT);
    };
    const auto is_over = [&] {
        rc = begin(unit, link_scan, given(pbmp)).then(look);
        return rc != BCM_E_TIMEOUT;
    };
    wait_until(is_over, static_cast<Time>(std::max(us, 0)) * nanoseconds_per_microsecond);
    if (rc == BCM_E_NONE || rc == BCM_E_TIMEOUT) {
        *pbmp = up;
    }
    return rc;
}

}  // extern "C"
