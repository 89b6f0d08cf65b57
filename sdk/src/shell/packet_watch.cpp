#include "packet_watch.h"

#include "begin.h"
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "sim_rx.h"
#include "sim_shell.h"
#include "switch.h"

#include <array>
#include <cstdio>
#include <string>

namespace sim {

namespace {

constexpr uint8 watcher_priority = 1;

struct Watch {
    bool runs = false;
    bool receives = false;  // the unit hands packets over
    bool prints = false;
    unsigned long packets = 0;
};

std::array<Watch, unit_max> watches;

Watch *watch_of(int unit)
{
    return unit >= 0 && unit < unit_max ? &watches[static_cast<std::size_t>(unit)] : nullptr;
}

bcm_rx_t on_packet(int unit, bcm_pkt_t *pkt, void *)
{
    Watch *watch = watch_of(unit);
    if (watch != nullptr && pkt != nullptr) {
        ++watch->packets;
        if (watch->prints) {
            std::printf("pw: unit %d, packet %lu: port %d, %d bytes\n", unit, watch->packets,
                        static_cast<int>(pkt->src_port), static_cast<int>(pkt->pkt_len));
        }
    }
    return BCM_RX_NOT_HANDLED;
}

cmd_result_t start(int unit, Arguments &args)
{
    Watch &watch = *watch_of(unit);
    if (watch.runs) {
        return fail(args, "runs already");
    }
    const int rc = bcm_rx_register(unit, "packet watcher", on_packet, watcher_priority, nullptr, 0);
    if (rc < 0 && rc != BCM_E_UNAVAIL) {
        return done_or_fail(args, "start", rc);
    }
    watch = {};
    watch.runs = true;
    watch.receives = rc >= 0;
    if (!watch.receives) {
        std::printf("pw: the unit hands no packets over\n");
    }
    return CMD_OK;
}

cmd_result_t stop(int unit, Arguments &args)
{
    return stop_packet_watch(unit) ? CMD_OK : fail(args, "does not run");
}

cmd_result_t print(int unit, Arguments &args)
{
    std::size_t place;
    if (!next_choice(args, {"on", "off"}, &place)) {
        return CMD_USAGE;
    }
    watch_of(unit)->prints = place == 0;
    return CMD_OK;
}

cmd_result_t report(int unit, Arguments &)
{
    const Watch &watch = *watch_of(unit);
    std::printf("pw: %s, %lu packets, printing %s\n", watch.runs ? "runs" : "does not run", watch.packets,
                watch.prints ? "on" : "off");
    return CMD_OK;
}

constexpr Form pw_forms[] = {
    {"report", "", report, "tell whether it runs and how many packets it has seen"},
    {"start", "", start, "watch from now on"},
    {"stop", "", stop, "watch no longer"},
    {"print", "on|off", print, "print a line for each packet, or do not"},
};

constexpr Command commands[] = {
    {"pw", "watch the packets that the CPU receives", pw_forms, "pw start; pw print on; pw report; pw stop"},
};

}  // namespace

const CommandGroup packet_commands = {"Packets", commands, true};

bool stop_packet_watch(int unit)
{
    Watch *watch = watch_of(unit);
    if (watch == nullptr || !watch->runs) {
        return false;
    }
    if (watch->receives) {
        bcm_rx_unregister(unit, on_packet, watcher_priority);
    }
    watch->runs = false;
    return true;
}

}  // namespace sim

extern "C" {

int sim_pw_running(int unit)
{
    const sim::Watch *watch = sim::watch_of(unit);
    return watch != nullptr && watch->runs;
}

cmd_result_t sim_pw_stop(int unit, int)
{
    return sim::stop_packet_watch(unit) ? CMD_OK : CMD_FAIL;
}

}  // extern "C"
