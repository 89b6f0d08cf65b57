#include "packet_watch.h"

#include "begin.h"
#include "shell.h"
#include "shell_commands.h"
#include "sim_rx.h"
#include "sim_shell.h"
#include "switch.h"

#include <array>
#include <cstdio>
#include <iterator>
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

cmd_result_t start(int unit, const Arguments &args)
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

void report(int unit)
{
    const Watch &watch = *watch_of(unit);
    std::printf("pw: %s, %lu packets, printing %s\n", watch.runs ? "runs" : "does not run", watch.packets,
                watch.prints ? "on" : "off");
}

cmd_result_t pw(int unit, args_t *a)
{
    Arguments args(a);
    const std::string action = args.left() > 0 ? args.next() : "report";
    const std::string option = args.left() > 0 ? args.next() : "";
    if (args.left() != 0 || (action != "print" && !option.empty())) {
        return CMD_USAGE;
    }
    if (action == "start") {
        return start(unit, args);
    }
    if (action == "stop") {
        return stop_packet_watch(unit) ? CMD_OK : fail(args, "does not run");
    }
    if (action == "print" && (option == "on" || option == "off")) {
        watch_of(unit)->prints = option == "on";
        return CMD_OK;
    }
    if (action == "report") {
        report(unit);
        return CMD_OK;
    }
    return CMD_USAGE;
}

constexpr cmd_t commands[] = {
    command("pw", pw, "[start | stop | report | print on|off]", "watch the packets that the CPU receives"),
};

}  // namespace

const CommandGroup packet_commands = {"Packets", commands, std::size(commands), true};

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
