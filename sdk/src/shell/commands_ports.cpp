/// Commands on ports and VLANs.
#include "clock.h"
#include "enumerators.h"
#include "number_text.h"
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "sim_gport.h"
#include "sim_port.h"
#include "sim_stat.h"
#include "sim_vlan.h"

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace sim {

namespace {

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

cmd_result_t ps(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
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
    bool is_switch;  ///< on or off
    int (*set)(int unit, int port, int value);
};

const PortSetting port_settings[] = {
    {"enable", true, bcm_port_enable_set},
    {"speed", false, bcm_port_speed_set},
    {"pause", true,
     [](int unit, int port, int value) { return bcm_port_pause_set(unit, port, value, value); }},
    {"vlan", false,
     [](int unit, int port, int value) {
         return value == static_cast<bcm_vlan_t>(value)
                    ? bcm_port_untagged_vlan_set(unit, port, static_cast<bcm_vlan_t>(value))
                    : static_cast<int>(BCM_E_PARAM);
     }},
    {"learn", false, [](int unit, int port, int value) {
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

std::vector<std::string> setting_keys()
{
    std::vector<std::string> keys;
    for (const PortSetting &setting : port_settings) {
        keys.emplace_back(setting.key);
    }
    return keys;
}

bool read_setting_value(const PortSetting &setting, const std::string &text, int *value)
{
    if (setting.is_switch && (text == "on" || text == "off")) {
        *value = text == "on";
        return true;
    }
    return read_int(text, value) && (!setting.is_switch || *value == 0 || *value == 1);
}

struct PortChange {
    const PortSetting *setting;
    int value;
};

/// Reads the words that are left; false if one is refused.
bool next_changes(Arguments &args, std::vector<PortChange> *changes)
{
    while (args.left() > 0) {
        const std::string word = args.peek();
        std::string key, text;
        if (!next_setting(args, &key, &text)) {
            return false;
        }
        PortChange change = {find_port_setting(key), 0};
        if (change.setting == nullptr) {
            refuse(args, "'" + word + "' sets none of " + listed(setting_keys()));
            return false;
        }
        if (!read_setting_value(*change.setting, text, &change.value)) {
            refuse(args, key
                             + (change.setting->is_switch ? " is on or off, not '" + text + "'"
                                                          : " '" + text + "' is no number"));
            return false;
        }
        changes->push_back(change);
    }
    return true;
}

cmd_result_t port(int unit, Arguments &args)
{
    // All words are read before the first is carried out, so that a misspelt line changes nothing.
    std::vector<int> ports;
    std::vector<PortChange> changes;
    if (!next_ports(unit, args, &ports) || !next_changes(args, &changes)) {
        return CMD_USAGE;
    }
    for (const PortChange &change : changes) {
        for (const int number : ports) {
            const int rc = change.setting->set(unit, number, change.value);
            if (rc < 0) {
                return done_or_fail(args,
                                    std::string(change.setting->key) + "=" + std::to_string(change.value)
                                        + " of port " + std::to_string(number),
                                    rc);
            }
        }
    }
    return CMD_OK;
}

/// visit(const Enumerator &statistic, uint64 value) for each; an error of the port.
template <class Visit>
int visit_counters(int unit, int port, Visit visit)
{
    for (const Enumerator &statistic : names_of_bcm_stat_val_e) {
        const auto type = static_cast<bcm_stat_val_t>(statistic.value);
        uint64 value = 0;
        const int rc =
            type < snmpValCount ? bcm_stat_sync_get(unit, port, type, &value) : static_cast<int>(BCM_E_NONE);
        if (rc < 0) {
            return rc;
        }
        visit(statistic, value);
    }
    return BCM_E_NONE;
}

int print_counters(int unit, int port)
{
    return visit_counters(unit, port, [&](const Enumerator &statistic, uint64 value) {
        if (value != 0) {
            std::printf("%4d  %-38s %20llu\n", port, statistic.name, static_cast<unsigned long long>(value));
        }
    });
}

/// What a port's counters were when their rates were asked for.
struct Look {
    Time time;
    std::map<int, uint64> values;
};

/// By unit and port. Never destroyed, as units are.
Look &latest_look(int unit, int port)
{
    static auto &all = *new std::map<std::pair<int, int>, Look>;
    return all[{unit, port}];
}

int print_rates(int unit, int port)
{
    Look &before = latest_look(unit, port);
    Look now = {clock_now(), {}};
    if (before.values.empty()) {
        std::printf("%4d  is looked at from now on\n", port);
    }
    const double seconds = static_cast<double>(now.time - before.time) / nanoseconds_per_second;
    const int rc = visit_counters(unit, port, [&](const Enumerator &statistic, uint64 value) {
        now.values[statistic.value] = value;
        const auto found = before.values.find(statistic.value);
        if (found == before.values.end() || found->second == value) {
            return;
        }
        // One that has been cleared counts from 0.
        const uint64 moved = value - (found->second < value ? found->second : 0);
        std::printf("%4d  %-38s %20llu", port, statistic.name, static_cast<unsigned long long>(moved));
        if (seconds > 0) {
            std::printf("  %14.1f/s", static_cast<double>(moved) / seconds);
        }
        std::printf("\n");
    });
    if (rc == BCM_E_NONE) {
        before = std::move(now);
    }
    return rc;
}

cmd_result_t on_counters(int unit, Arguments &args, int (*action)(int unit, int port))
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    for (const int port : ports) {
        const int rc = action(unit, port);
        if (rc < 0) {
            return done_or_fail(args, "port " + std::to_string(port), rc);
        }
    }
    return CMD_OK;
}

cmd_result_t show_counters(int unit, Arguments &args)
{
    return on_counters(unit, args, print_counters);
}

cmd_result_t show_rates(int unit, Arguments &args)
{
    return on_counters(unit, args, print_rates);
}

cmd_result_t clear_counters(int unit, Arguments &args)
{
    return on_counters(unit, args, bcm_stat_clear);
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

cmd_result_t vlan_done(const Arguments &args, bcm_vlan_t vid, int status)
{
    return done_or_fail(args, args.form()->action + (" " + std::to_string(vid)), status);
}

cmd_result_t show_vlans(int unit, Arguments &args)
{
    bcm_vlan_t only = 0;
    const bool all = args.left() == 0;
    if (!all && !next_vlan(args, &only)) {
        return CMD_USAGE;
    }
    bcm_vlan_data_t *list = nullptr;
    int count = 0;
    const int rc = bcm_vlan_list(unit, &list, &count);
    if (rc < 0) {
        return done_or_fail(args, "show", rc);
    }
    bool any = false;
    for (int i = 0; i < count; ++i) {
        if (all || list[i].vlan_tag == only) {
            any = true;
            std::printf("vlan %d: ports %s; untagged %s\n", list[i].vlan_tag,
                        port_list(list[i].port_bitmap).c_str(), port_list(list[i].ut_port_bitmap).c_str());
        }
    }
    bcm_vlan_list_destroy(unit, list, count);
    return all || any ? CMD_OK : vlan_done(args, only, BCM_E_NOT_FOUND);
}

bcm_pbmp_t bitmap(const std::vector<int> &ports)
{
    bcm_pbmp_t bits = {};
    for (const int number : ports) {
        BCM_PBMP_PORT_ADD(bits, number);
    }
    return bits;
}

cmd_result_t create_vlan(int unit, Arguments &args)
{
    bcm_vlan_t vid;
    return next_vlan(args, &vid) ? vlan_done(args, vid, bcm_vlan_create(unit, vid)) : CMD_USAGE;
}

cmd_result_t destroy_vlan(int unit, Arguments &args)
{
    bcm_vlan_t vid;
    return next_vlan(args, &vid) ? vlan_done(args, vid, bcm_vlan_destroy(unit, vid)) : CMD_USAGE;
}

cmd_result_t add_to_vlan(int unit, Arguments &args)
{
    bcm_vlan_t vid;
    std::vector<int> ports;
    if (!next_vlan(args, &vid) || !next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    std::size_t place;
    const bool untagged = args.left() > 0;
    if (untagged && !next_choice(args, {"untagged"}, &place)) {
        return CMD_USAGE;
    }
    const bcm_pbmp_t members = bitmap(ports);
    return vlan_done(args, vid, bcm_vlan_port_add(unit, vid, members, untagged ? members : bcm_pbmp_t{}));
}

cmd_result_t remove_from_vlan(int unit, Arguments &args)
{
    bcm_vlan_t vid;
    std::vector<int> ports;
    if (!next_vlan(args, &vid) || !next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    return vlan_done(args, vid, bcm_vlan_port_remove(unit, vid, bitmap(ports)));
}

constexpr Form ps_forms[] = {{"", "[PORTS]", ps, ""}};

constexpr Form port_forms[] = {
    {"", "PORTS SETTING=VALUE...", port, "enable, pause: on or off; speed in Mbit/s; vlan; learn: flags"}};

constexpr Form counters_forms[] = {
    {"", "[PORTS]", show_counters, "show the counters that are not 0"},
    {"rates", "[PORTS]", show_rates,
     "show what has moved since this was last asked, and how fast by the clock"},
    {"clear", "[PORTS]", clear_counters, "set them to 0"},
};

constexpr Form vlan_forms[] = {
    {"show", "[ID]", show_vlans, "list all VLANs or one, with their ports"},
    {"create", "ID", create_vlan, "create a VLAN without ports"},
    {"destroy", "ID", destroy_vlan, "remove a VLAN"},
    {"add", "ID PORTS [untagged]", add_to_vlan,
     "add ports, whose packets leave tagged unless it says untagged"},
    {"remove", "ID PORTS", remove_from_vlan, "remove ports"},
};

constexpr Command commands[] = {
    {"ps", "show the ports' status", ps_forms, "ps 1-4,ce62"},
    {"port", "set enable, speed, pause, vlan or learn", port_forms, "port 1-4 speed=40000 enable=on"},
    {"counters", "show the ports' counters, or clear them", counters_forms,
     "counters clear 1-4; counters 1-4"},
    {"vlan", "look at VLANs and their ports, or change them", vlan_forms,
     "vlan create 100; vlan add 100 1-4 untagged; vlan show"},
};

}  // namespace

const CommandGroup port_commands = {"Ports", commands, true};

}  // namespace sim
