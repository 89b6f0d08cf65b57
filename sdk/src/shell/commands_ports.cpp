/// Commands on ports and VLANs.
#include "enumerators.h"
#include "number_text.h"
#include "shell.h"
#include "shell_commands.h"
#include "shell_ports.h"
#include "sim_gport.h"
#include "sim_port.h"
#include "sim_stat.h"
#include "sim_vlan.h"

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace sim {

namespace {

/// Reads the next word as ports; without one, all of them. False if it cannot be read.
bool next_ports(int unit, Arguments *args, std::vector<int> *ports)
{
    return read_ports(unit, args->left() > 0 ? args->next() : "all", ports);
}

std::string learning_text(uint32 flags)
{
    std::string text;
    text += flags & BCM_PORT_LEARN_ARL ? 'L' : '-';
    text += flags & BCM_PORT_LEARN_FWD ? 'F' : '-';
    text += flags & BCM_PORT_LEARN_CPU ? 'C' : '-';
    return text;
}

int print_status(int unit, int port)
{
    int enabled = 0, link = 0, speed = 0, tx = 0, rx = 0;
    uint32 learn = 0;
    bcm_vlan_t vlan = 0;
    for (const int rc :
         {bcm_port_enable_get(unit, port, &enabled), bcm_port_link_status_get(unit, port, &link),
          bcm_port_speed_get(unit, port, &speed), bcm_port_pause_get(unit, port, &tx, &rx),
          bcm_port_learn_get(unit, port, &learn), bcm_port_untagged_vlan_get(unit, port, &vlan)}) {
        if (rc < 0) {
            return rc;
        }
    }
    const char *name = mod_port_name(unit, -1, port);
    std::printf("%-6s %4d  %-8s %-4s %6d  %-2s %-2s  %4d  %s\n", name != nullptr ? name : "?", port,
                enabled ? "enabled" : "disabled", link ? "up" : "down", speed, tx ? "tx" : "", rx ? "rx" : "",
                vlan, learning_text(learn).c_str());
    return BCM_E_NONE;
}

cmd_result_t ps(int unit, args_t *a)
{
    Arguments args(a);
    std::vector<int> ports;
    if (!next_ports(unit, &args, &ports) || args.left() != 0) {
        return CMD_USAGE;
    }
    std::printf("port          state    link  Mbit/s  pause  vlan  learning\n");
    for (const int port : ports) {
        const int rc = print_status(unit, port);
        if (rc < 0) {
            return done_or_fail(args, "port " + std::to_string(port), rc);
        }
    }
    return CMD_OK;
}

struct PortSetting {
    const char *key;
    int (*set)(int unit, int port, int value);
};

const PortSetting port_settings[] = {
    {"enable", bcm_port_enable_set},
    {"speed", bcm_port_speed_set},
    {"pause", [](int unit, int port, int value) { return bcm_port_pause_set(unit, port, value, value); }},
    {"vlan",
     [](int unit, int port, int value) {
         return value == static_cast<bcm_vlan_t>(value)
                    ? bcm_port_untagged_vlan_set(unit, port, static_cast<bcm_vlan_t>(value))
                    : static_cast<int>(BCM_E_PARAM);
     }},
    {"learn", [](int unit, int port, int value) {
         return bcm_port_learn_set(unit, port, static_cast<uint32>(value));
     }}};

const PortSetting *find_port_setting(const std::string &key)
{
    for (const PortSetting &setting : port_settings) {
        if (key == setting.key) {
            return &setting;
        }
    }
    return nullptr;
}

cmd_result_t port(int unit, args_t *a)
{
    Arguments args(a);
    std::vector<int> ports;
    if (args.left() < 2 || !next_ports(unit, &args, &ports)) {
        return CMD_USAGE;
    }
    // All words are read before the first is carried out, so that a misspelt line changes nothing.
    std::vector<std::pair<const PortSetting *, int>> changes;
    while (args.left() > 0) {
        std::string key, text;
        int value;
        const PortSetting *setting = args.next_setting(&key, &text) ? find_port_setting(key) : nullptr;
        if (setting == nullptr || !read_int(text, &value)) {
            return CMD_USAGE;
        }
        changes.emplace_back(setting, value);
    }
    for (const auto &[setting, value] : changes) {
        for (const int number : ports) {
            const int rc = setting->set(unit, number, value);
            if (rc < 0) {
                return done_or_fail(args, setting->key + (" of port " + std::to_string(number)), rc);
            }
        }
    }
    return CMD_OK;
}

int print_counters(int unit, int port)
{
    for (const Enumerator &statistic : names_of_bcm_stat_val_e) {
        const auto type = static_cast<bcm_stat_val_t>(statistic.value);
        uint64 value = 0;
        const int rc =
            type < snmpValCount ? bcm_stat_sync_get(unit, port, type, &value) : static_cast<int>(BCM_E_NONE);
        if (rc < 0) {
            return rc;
        }
        if (value != 0) {
            std::printf("%4d  %-38s %20llu\n", port, statistic.name, static_cast<unsigned long long>(value));
        }
    }
    return BCM_E_NONE;
}

cmd_result_t counters(int unit, args_t *a)
{
    Arguments args(a);
    const bool clears = args.left() > 0 && std::string(args.peek()) == "clear";
    if (clears) {
        args.next();
    }
    std::vector<int> ports;
    if (!next_ports(unit, &args, &ports) || args.left() != 0) {
        return CMD_USAGE;
    }
    for (const int port : ports) {
        const int rc = clears ? bcm_stat_clear(unit, port) : print_counters(unit, port);
        if (rc < 0) {
            return done_or_fail(args, "port " + std::to_string(port), rc);
        }
    }
    return CMD_OK;
}

/// "1-3,7"
std::string port_list(const bcm_pbmp_t &ports)
{
    std::string text;
    for (int first = 0; first < BCM_PBMP_PORT_MAX; ++first) {
        if (!BCM_PBMP_MEMBER(ports, first)) {
            continue;
        }
        int last = first;
        while (last + 1 < BCM_PBMP_PORT_MAX && BCM_PBMP_MEMBER(ports, last + 1)) {
            ++last;
        }
        text += (text.empty() ? "" : ",") + std::to_string(first);
        text += last > first ? "-" + std::to_string(last) : "";
        first = last;
    }
    return text;
}

cmd_result_t show_vlans(int unit, const Arguments &args)
{
    bcm_vlan_data_t *list = nullptr;
    int count = 0;
    const int rc = bcm_vlan_list(unit, &list, &count);
    if (rc < 0) {
        return done_or_fail(args, "show", rc);
    }
    for (int i = 0; i < count; ++i) {
        std::printf("vlan %d: ports %s; untagged %s\n", list[i].vlan_tag,
                    port_list(list[i].port_bitmap).c_str(), port_list(list[i].ut_port_bitmap).c_str());
    }
    bcm_vlan_list_destroy(unit, list, count);
    return CMD_OK;
}

bcm_pbmp_t bitmap(const std::vector<int> &ports)
{
    bcm_pbmp_t bits = {};
    for (const int number : ports) {
        BCM_PBMP_PORT_ADD(bits, number);
    }
    return bits;
}

cmd_result_t vlan(int unit, args_t *a)
{
    Arguments args(a);
    const std::string action = args.left() > 0 ? args.next() : "show";
    if (action == "show") {
        return args.left() == 0 ? show_vlans(unit, args) : CMD_USAGE;
    }
    int id;
    if (!args.next_integer(&id) || id != static_cast<bcm_vlan_t>(id)) {
        return CMD_USAGE;
    }
    const bcm_vlan_t vid = static_cast<bcm_vlan_t>(id);
    const std::string what = action + " " + std::to_string(id);
    if ((action == "create" || action == "destroy") && args.left() == 0) {
        const int rc = action == "create" ? bcm_vlan_create(unit, vid) : bcm_vlan_destroy(unit, vid);
        return done_or_fail(args, what, rc);
    }
    std::vector<int> ports;
    if ((action != "add" && action != "remove") || args.left() == 0 || !next_ports(unit, &args, &ports)) {
        return CMD_USAGE;
    }
    const bool untagged = args.left() > 0;
    if (untagged && (action != "add" || std::string(args.next()) != "untagged")) {
        return CMD_USAGE;
    }
    if (args.left() != 0) {
        return CMD_USAGE;
    }
    const bcm_pbmp_t members = bitmap(ports);
    const int rc = action == "add" ? bcm_vlan_port_add(unit, vid, members, untagged ? members : bcm_pbmp_t{})
                                   : bcm_vlan_port_remove(unit, vid, members);
    return done_or_fail(args, what, rc);
}

constexpr cmd_t commands[] = {
    command("ps", ps, "[PORTS]", "show the ports' status"),
    command("port", port, "PORTS SETTING=NUMBER...",
            "set enable, speed (Mbit/s), pause, vlan or learn (flags)"),
    command("counters", counters, "[clear] [PORTS]", "show the ports' counters that are not 0, or clear all"),
    command("vlan", vlan, "[show | create ID | destroy ID | add ID PORTS [untagged] | remove ID PORTS]",
            "look at VLANs and their ports, or change them"),
};

}  // namespace

const CommandGroup port_commands = {"Ports", commands, std::size(commands), true};

}  // namespace sim
