/// Commands on what surrounds the simulated switch: packets, cables, time, captures.
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "sim_phyctrl.h"
#include "sim_port.h"
#include "sim_text.h"

#include <sim/cable.h>
#include <sim/capture.h>
#include <sim/clock.h>
#include <sim/trace.h>
#include <sim/traffic.h>

#include <cstdio>
#include <string>
#include <vector>

namespace sim {

namespace {

/// Two hexadecimal digits each; at least a header, filled up to the shortest frame.
bool next_frame(Arguments &args, std::vector<unsigned char> *frame)
{
    constexpr std::size_t header = 14, shortest = 60;
    const std::string word = args.next();
    for (std::size_t i = 0; i < word.size(); i += 2) {
        const int high = sim_xdigit2i(word[i]);
        const int low = i + 1 < word.size() ? sim_xdigit2i(word[i + 1]) : -1;
        if (high < 0 || low < 0) {
            refuse(args, "'" + word + "' are not bytes of two hexadecimal digits");
            return false;
        }
        frame->push_back(static_cast<unsigned char>(16 * high + low));
    }
    if (frame->size() < header) {
        refuse(args, "'" + word + "' has less than " + std::to_string(header) + " bytes");
        return false;
    }
    if (frame->size() < shortest) {
        frame->resize(shortest);
    }
    return true;
}

void print_copy(int unit, bcm_port_t port, const unsigned char *frame, int length, void *)
{
    std::printf("unit %d port %d: ", unit, port);
    for (int i = 0; i < length; ++i) {
        std::printf("%02x", frame[i]);
    }
    std::printf("\n");
}

cmd_result_t send(int unit, Arguments &args, bool traced)
{
    int port;
    std::vector<unsigned char> frame;
    if (!next_port(unit, args, &port) || !next_frame(args, &frame)) {
        return CMD_USAGE;
    }
    if (traced) {
        sim_trace_begin();
    }
    const int rc = sim_packet_send(unit, port, frame.data(), static_cast<int>(frame.size()),
                                   traced ? nullptr : print_copy, nullptr);
    if (traced) {
        sim_trace_end();
        std::printf("%s", sim_trace_text());
    }
    return done_or_fail(args, "send", rc);
}

cmd_result_t send_packet(int unit, Arguments &args)
{
    return send(unit, args, false);
}

cmd_result_t trace_packet(int unit, Arguments &args)
{
    return send(unit, args, true);
}

cmd_result_t show_cables(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    for (const int port : ports) {
        int link, other_unit, other_port;
        soc_port_medium_t medium;
        if (sim_soc_phyctrl_medium_get(unit, port, &medium) < 0
            || sim_bcm_port_link_status_get(unit, port, &link) < 0) {
            continue;
        }
        std::printf("%4d  %-8s  %-9s", port, link ? "link" : "no link",
                    medium == static_cast<int>(SOC_PHY_MEDIUM_NONE) ? "no cable" : "cable");
        if (sim_cable_partner_get(unit, port, &other_unit, &other_port) == BCM_E_NONE) {
            std::printf("  to port %d of unit %d", other_port, other_unit);
        }
        std::printf("\n");
    }
    return CMD_OK;
}

cmd_result_t pull_cable(int unit, Arguments &args)
{
    int port;
    if (!next_port(unit, args, &port)) {
        return CMD_USAGE;
    }
    return done_or_fail(args, "pull", sim_cable_pull(unit, port));
}

cmd_result_t plug_cable(int unit, Arguments &args)
{
    int port, metres = 10;
    std::size_t medium;
    if (!next_port(unit, args, &port) || !next_choice(args, {"copper", "fiber"}, &medium)
        || (args.left() > 0 && !next_number(args, "METRES", &metres, 1))) {
        return CMD_USAGE;
    }
    const uint32 media = 1u << (medium == 0 ? SOC_PHY_MEDIUM_COPPER : SOC_PHY_MEDIUM_FIBER);
    return done_or_fail(args, "plug", sim_cable_plug(unit, port, media, metres));
}

cmd_result_t flap_cable(int unit, Arguments &args)
{
    int port, times = 1;
    if (!next_port(unit, args, &port) || (args.left() > 0 && !next_number(args, "TIMES", &times, 1))) {
        return CMD_USAGE;
    }
    return done_or_fail(args, "flap", sim_cable_flap(unit, port, times));
}

cmd_result_t join_cable(int unit, Arguments &args)
{
    int port, other_unit, other_port;
    if (!next_port(unit, args, &port) || !next_number(args, "UNIT", &other_unit, 0)
        || !next_port(unit, args, &other_port)) {
        return CMD_USAGE;
    }
    return done_or_fail(args, "join", sim_cable_join(unit, port, other_unit, other_port, 10));
}

cmd_result_t show_clock(int, Arguments &)
{
    const uint64 now = sim_clock_now();
    constexpr uint64 second = 1000000000;
    static constexpr const char *modes[simClockModeCount] = {"stands still", "is stepped", "runs"};
    std::printf("clock: %llu.%09llu s, %s\n", now / second, now % second, modes[sim_clock_mode_get()]);
    return CMD_OK;
}

cmd_result_t advance_clock(int, Arguments &args)
{
    int milliseconds;
    if (!next_number(args, "MILLISECONDS", &milliseconds, 0)) {
        return CMD_USAGE;
    }
    return done_or_fail(args, "advance", sim_clock_advance(static_cast<uint64>(milliseconds) * 1000000));
}

cmd_result_t start_clock(int, Arguments &args)
{
    return done_or_fail(args, "start", sim_clock_mode_set(simClockRuns));
}

cmd_result_t stop_clock(int, Arguments &args)
{
    return done_or_fail(args, "stop", sim_clock_mode_set(simClockStands));
}

cmd_result_t step_clock(int, Arguments &args)
{
    return done_or_fail(args, "step", sim_clock_mode_set(simClockSteps));
}

int shell_capture = 0;  // 0: none

cmd_result_t fail_capture(const Arguments &args, const char *what, int rc)
{
    const std::string problem = sim_capture_problem();
    return problem.empty() ? done_or_fail(args, what, rc) : fail(args, problem);
}

cmd_result_t start_capture(int unit, Arguments &args)
{
    const std::string file = args.next();
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    if (shell_capture != 0) {
        return fail(args, "runs already");
    }
    int rc = sim_capture_open(file.c_str(), simCapturePcapng, &shell_capture);
    if (rc < 0) {
        return fail_capture(args, "start", rc);
    }
    for (const int port : ports) {
        rc = sim_capture_port(shell_capture, unit, port, SIM_CAPTURE_RECEIVED | SIM_CAPTURE_SENT);
        if (rc < 0) {
            return fail_capture(args, "start", rc);
        }
    }
    return CMD_OK;
}

cmd_result_t stop_capture(int, Arguments &args)
{
    if (shell_capture == 0) {
        return fail(args, "does not run");
    }
    int packets = 0;
    sim_capture_count(shell_capture, &packets);
    const int rc = sim_capture_close(shell_capture);
    shell_capture = 0;
    if (rc < 0) {
        return fail_capture(args, "stop", rc);
    }
    std::printf("capture: %d packets\n", packets);
    return CMD_OK;
}

constexpr Form packet_forms[] = {
    {"send", "PORT BYTES", send_packet, "let a packet arrive, and show what leaves"},
    {"trace", "PORT BYTES", trace_packet, "let a packet arrive, and tell its way step by step"},
};
constexpr Form cable_forms[] = {
    {"show", "[PORTS]", show_cables, "tell which ports have a cable, and where it leads"},
    {"pull", "PORT", pull_cable, "take the cables out"},
    {"plug", "PORT copper|fiber [METRES]", plug_cable, "put a cable in that leads to some partner"},
    {"flap", "PORT [TIMES]", flap_cable, "take the cable out and put it in again"},
    {"join", "PORT UNIT PORT", join_cable, "put a cable between two ports"},
};
constexpr Form clock_forms[] = {
    {"show", "", show_clock, "tell the simulator's time"},
    {"advance", "MILLISECONDS", advance_clock, "let time pass"},
    {"start", "", start_clock, "let it run with the machine's clock"},
    {"stop", "", stop_clock, "let it stand still"},
    {"step", "", step_clock, "let it pass by 'clock advance' and 'sleep' alone"},
};
constexpr Form capture_forms[] = {
    {"start", "FILE [PORTS]", start_capture, "write what passes ports to a pcapng file"},
    {"stop", "", stop_capture, "end the file"},
};

constexpr Command commands[] = {
    {"packet", "let a packet arrive at a port", packet_forms, "packet trace 1 ffffffffffff02005e0000010806"},
    {"cable", "look at cables, plug and pull them", cable_forms, "cable flap 5; cable show 1-5"},
    {"clock", "look at the simulator's time, or let it pass", clock_forms, "clock advance 1000; clock show"},
    {"capture", "write packets to a file", capture_forms, "capture start /dev/null 1-4; capture stop"},
};

}  // namespace

const CommandGroup simulator_commands = {"Simulator", commands, true};

}  // namespace sim
