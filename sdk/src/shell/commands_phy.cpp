/// Commands on the ports' PHYs.
#include "enumerators.h"
#include "number_text.h"
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "sim_phy.h"
#include "sim_phyctrl.h"

#include <fnmatch.h>
#include <soc/error.h>
#include <soc/phy_access.h>
#include <soc/phy_diag.h>
#include <soc/phy_values.h>

#include <cstdio>
#include <string>
#include <vector>

namespace sim {

namespace {

const Names controls(names_of_soc_phy_control_e, "SOC_PHY_CONTROL_");
const Names devices(names_of_soc_phy_device_e, "SOC_PHY_DEVICE_");
const Names registers(names_of_soc_phy_register_e, "SOC_PHY_REGISTER_");
const Names media(names_of_soc_phy_medium_e, "SOC_PHY_MEDIUM_");
const Names cable_states(names_of_soc_phy_cable_state_e, "SOC_PHY_CABLE_STATE_");
const Names loopbacks(names_of_soc_phy_loopback_e, "SOC_PHY_LOOPBACK_");

cmd_result_t port_done(const Arguments &args, int port, const std::string &what, int status)
{
    return done_or_fail(args, what + " of port " + std::to_string(port), status);
}

/// action(port), which returns a status, on each port until one fails; `what` is then in the message.
template <class Action>
cmd_result_t on_ports(const Arguments &args, const std::vector<int> &ports, const std::string &what,
                      Action action)
{
    for (const int port : ports) {
        const int rc = action(port);
        if (rc < 0) {
            return port_done(args, port, what, rc);
        }
    }
    return CMD_OK;
}

int print_phy(int unit, int port)
{
    soc_phy_info_t info = {};
    int link = 0, speed = 0, negotiates = 0, negotiated = 0, loopback = 0;
    soc_port_medium_t medium = 0;
    for (const int rc :
         {soc_phy_info_get(unit, port, &info), soc_phyctrl_link_get(unit, port, &link),
          soc_phyctrl_speed_get(unit, port, &speed),
          soc_phyctrl_auto_negotiate_get(unit, port, &negotiates, &negotiated),
          soc_phyctrl_loopback_get(unit, port, &loopback), soc_phyctrl_medium_get(unit, port, &medium)}) {
        if (rc < 0) {
            return rc;
        }
    }
    const std::string address =
        info.phy_flags & SOC_PHY_INFO_EXTERNAL ? std::to_string(info.phy_addr) : "none";
    std::printf("%4d  %04x%04x  %7s  %8d  %-9s  %-4s  %6d  %-10s  %-8s  %s\n", port, info.phy_id0,
                info.phy_id1, address.c_str(), info.phy_addr_int, media.name(medium, true).c_str(),
                link ? "up" : "down", speed, negotiates ? (negotiated ? "done" : "unfinished") : "off",
                loopback ? "on" : "off", info.phy_name != nullptr ? info.phy_name : "none");
    return SOC_E_NONE;
}

cmd_result_t list(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    std::printf("port  id        address  internal  medium     link  Mbit/s  autoneg     loopback  name\n");
    return on_ports(args, ports, "state", [&](int port) { return print_phy(unit, port); });
}

// --- registers ---------------------------------------------------------------

constexpr int device_shift = 16;
constexpr int device_max = 31;
constexpr int number_max = 0xffff;

/// "1", "STATUS", "3.1" or "PCS.1"
bool read_register_number(const std::string &text, uint32 *address)
{
    const std::size_t dot = text.find('.');
    int device = 0, number = registers.value(text);
    if (dot != std::string::npos) {
        device = devices.value(text.substr(0, dot));
        if (device == devices.out_of_range()
            && (!read_int(text.substr(0, dot), &device) || device < 1 || device > device_max)) {
            return false;
        }
    }
    if (dot != std::string::npos || number == registers.out_of_range()) {
        if (!read_int(text.substr(dot + 1), &number)) {
            return false;
        }
    }
    *address = static_cast<uint32>(device << device_shift | number);
    return number >= 0 && number <= number_max;
}

bool next_register(Arguments &args, uint32 *address)
{
    const std::string word = args.next();
    if (!read_register_number(word, address)) {
        refuse(args, "'" + word + "' is no register");
        return false;
    }
    return true;
}

/// The word "internal", if there is one.
bool next_flags(Arguments &args, uint32 *flags)
{
    std::size_t place;
    *flags = args.left() > 0 ? SOC_PHY_INTERNAL : 0;
    return args.left() == 0 || next_choice(args, {"internal"}, &place);
}

uint32 flags_of(uint32 address, uint32 flags)
{
    return address >> device_shift != 0 ? flags | SOC_PHY_CLAUSE45 : flags;
}

cmd_result_t read(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    const std::string name = args.peek();
    uint32 address, flags;
    if (!next_register(args, &address) || !next_flags(args, &flags)) {
        return CMD_USAGE;
    }
    return on_ports(args, ports, "register " + name, [&](int port) {
        uint32 value = 0;
        const int rc = soc_phyctrl_reg_read(unit, port, flags_of(address, flags), address, &value);
        if (rc >= 0) {
            std::printf("port %d: %s = 0x%04x\n", port, name.c_str(), value);
        }
        return rc;
    });
}

bool next_value(Arguments &args, const char *what, uint32 *value)
{
    int number;
    if (!next_number(args, what, &number, 0)) {
        return false;
    }
    *value = static_cast<uint32>(number);
    if (number > number_max) {
        refuse(args, std::string(what) + " has 16 bits: '" + std::to_string(number) + "' does not fit");
    }
    return number <= number_max;
}

cmd_result_t write(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    const std::string name = args.peek();
    uint32 address, value, flags;
    if (!next_register(args, &address) || !next_value(args, "VALUE", &value) || !next_flags(args, &flags)) {
        return CMD_USAGE;
    }
    return on_ports(args, ports, "register " + name, [&](int port) {
        return soc_phyctrl_reg_write(unit, port, flags_of(address, flags), address, value);
    });
}

cmd_result_t modify(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    const std::string name = args.peek();
    uint32 address, value, mask, flags;
    if (!next_register(args, &address) || !next_value(args, "VALUE", &value)
        || !next_value(args, "MASK", &mask) || !next_flags(args, &flags)) {
        return CMD_USAGE;
    }
    return on_ports(args, ports, "register " + name, [&](int port) {
        return soc_phyctrl_reg_modify(unit, port, flags_of(address, flags), address, value, mask);
    });
}

// --- controls ----------------------------------------------------------------

std::vector<int> matching_controls(const std::string &pattern)
{
    std::vector<int> found;
    for (int control = 0; control < controls.out_of_range(); ++control) {
        if (fnmatch(pattern.c_str(), controls.name(control, true).c_str(), FNM_CASEFOLD) == 0) {
            found.push_back(control);
        }
    }
    return found;
}

cmd_result_t get(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    const std::string pattern = args.left() > 0 ? args.next() : "*";
    const std::vector<int> chosen = matching_controls(pattern);
    if (chosen.empty()) {
        return refuse(args, "no control '" + pattern + "'");
    }
    return on_ports(args, ports, "control " + pattern, [&](int port) {
        bool any = false;
        for (const int control : chosen) {
            uint32 value = 0;
            const int rc =
                soc_phyctrl_control_get(unit, port, static_cast<soc_phy_control_t>(control), &value);
            if (rc >= 0) {
                any = true;
                std::printf("port %d: %s = %u (0x%x)\n", port, controls.name(control, true).c_str(), value,
                            value);
            } else if (rc != SOC_E_UNAVAIL) {
                return rc;
            }
        }
        return static_cast<int>(any ? SOC_E_NONE : SOC_E_UNAVAIL);
    });
}

struct ControlSetting {
    soc_phy_control_t control;
    std::string word;
    uint32 value;
};

bool next_controls(Arguments &args, std::vector<ControlSetting> *settings)
{
    while (args.left() > 0) {
        const std::string word = args.peek();
        std::string name, text;
        int64 number;
        if (!next_setting(args, &name, &text)) {
            return false;
        }
        const int control = controls.value(name);
        if (control == controls.out_of_range()) {
            refuse(args, "no control '" + name + "'");
            return false;
        }
        // Negative values are given in two's complement.
        if (!read_integer(text, &number) || number < INT32_MIN || number > UINT32_MAX) {
            refuse(args, name + " '" + text + "' is no number of 32 bits");
            return false;
        }
        settings->push_back({static_cast<soc_phy_control_t>(control), word, static_cast<uint32>(number)});
    }
    return true;
}

cmd_result_t set(int unit, Arguments &args)
{
    std::vector<int> ports;
    std::vector<ControlSetting> settings;
    if (!next_ports(unit, args, &ports) || !next_controls(args, &settings)) {
        return CMD_USAGE;
    }
    cmd_result_t result = CMD_OK;
    for (auto setting = settings.begin(); setting != settings.end() && result == CMD_OK; ++setting) {
        result = on_ports(args, ports, setting->word, [&](int port) {
            return soc_phyctrl_control_set(unit, port, setting->control, setting->value);
        });
    }
    return result;
}

// --- tests -------------------------------------------------------------------

cmd_result_t loopback(int unit, Arguments &args)
{
    std::vector<int> ports;
    std::size_t place;
    if (!next_ports(unit, args, &ports) || !next_choice(args, {"on", "off"}, &place)) {
        return CMD_USAGE;
    }
    const bool on = place == 0;
    return on_ports(args, ports, "loopback",
                    [&](int port) { return soc_phyctrl_loopback_set(unit, port, on, on); });
}

cmd_result_t test_cable(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    return on_ports(args, ports, "cable test", [&](int port) {
        soc_port_cable_diag_t found = {};
        const int rc = soc_phyctrl_cable_diag(unit, port, &found);
        if (rc < 0) {
            return rc;
        }
        std::printf("port %d: %s, within %d m\n", port, cable_states.name(found.state, true).c_str(),
                    found.fuzz_len);
        for (int pair = 0; pair < found.npairs; ++pair) {
            std::printf("    pair %d: %-9s %4d m\n", pair,
                        cable_states.name(found.pair_state[pair], true).c_str(), found.pair_len[pair]);
        }
        return rc;
    });
}

struct Reading {
    const char *name;
    int group, operation;
};

constexpr Reading readings[] = {
    {"link", PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_LINK},
    {"signal", PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_SIGNAL},
    {"clock locked", PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_CLOCK_LOCK},
    {"blocks locked", PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_BLOCK_LOCK},
    {"negotiated", PHY_DIAG_CTRL_STATE, PHY_DIAG_STATE_AUTONEG_DONE},
    {"eye left, thousandths", PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_MARGIN_LEFT},
    {"eye right, thousandths", PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_MARGIN_RIGHT},
    {"eye upper, mV", PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_MARGIN_UPPER},
    {"eye lower, mV", PHY_DIAG_CTRL_EYE, PHY_DIAG_EYE_MARGIN_LOWER},
    {"firmware", PHY_DIAG_CTRL_FIRMWARE, PHY_DIAG_FIRMWARE_VERSION},
};

/// A uint32, or what the class of operations takes.
int diagnose(int unit, int port, int group, int operation, void *argument)
{
    constexpr uint32 outermost_line_side = 0;
    return soc_phyctrl_diag_ctrl(unit, port, outermost_line_side, group, operation, argument);
}

void print_receiver(const XGPHY_DIAG_DATA_t &data)
{
    if (data.flags & XGPHY_DIAG_TEMPERATURE) {
        std::printf("    %-24s %d\n", "temperature, C", data.digital_temp);
    }
    if (data.flags & XGPHY_DIAG_SNR) {
        std::printf("    %-24s %d\n", "signal to noise, dB", data.snr_block[0]);
    }
    if (data.flags & XGPHY_DIAG_SYMBOL_ERRORS) {
        std::printf("    %-24s %u\n", "symbol errors", data.serr);
    }
    if (data.flags & XGPHY_DIAG_CORRECTED_ERRORS) {
        std::printf("    %-24s %u\n", "corrected errors", data.cerr);
    }
}

int print_diagnosis(int unit, int port)
{
    std::printf("port %d\n", port);
    for (const Reading &reading : readings) {
        uint32 value = 0;
        const int rc = diagnose(unit, port, reading.group, reading.operation, &value);
        if (rc >= 0) {
            std::printf("    %-24s %u\n", reading.name, value);
        } else if (rc != SOC_E_UNAVAIL) {
            return rc;
        }
    }
    uint32 mode = 0;
    if (diagnose(unit, port, PHY_DIAG_CTRL_CONTROL_GET, SOC_PHY_CONTROL_LOOPBACK_MODE, &mode) >= 0) {
        std::printf("    %-24s %s\n", "loopback", loopbacks.name(static_cast<int>(mode), true).c_str());
    }
    XGPHY_DIAG_DATA_t receiver = {};
    const int rc = diagnose(unit, port, PHY_DIAG_CTRL_RECEIVER, 0, &receiver);
    if (rc >= 0) {
        print_receiver(receiver);
    }
    return rc == SOC_E_UNAVAIL ? static_cast<int>(SOC_E_NONE) : rc;
}

cmd_result_t show_diagnosis(int unit, Arguments &args)
{
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return CMD_USAGE;
    }
    return on_ports(args, ports, "diagnosis", [&](int port) { return print_diagnosis(unit, port); });
}

int print_bit_errors(int unit, int port)
{
    uint32 lock = 0, errors = 0;
    for (const int rc : {diagnose(unit, port, PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_LOCK, &lock),
                         diagnose(unit, port, PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_ERRORS, &errors)}) {
        if (rc < 0) {
            return rc;
        }
    }
    if (lock != 0) {
        std::printf("port %d: locked, %u wrong bits\n", port, errors);
    } else {
        std::printf("port %d: not locked\n", port);
    }
    return SOC_E_NONE;
}

cmd_result_t test_bits(int unit, Arguments &args)
{
    std::vector<int> ports;
    std::size_t action;
    if (!next_ports(unit, args, &ports) || !next_choice(args, {"start", "stop", "show"}, &action)) {
        return CMD_USAGE;
    }
    return on_ports(args, ports, "test sequence", [&](int port) {
        uint32 polynomial = SOC_PHY_PRBS_POLYNOMIAL_X31_X28;
        switch (action) {
        case 0:
            return diagnose(unit, port, PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_START, &polynomial);
        case 1:
            return diagnose(unit, port, PHY_DIAG_CTRL_PRBS, PHY_DIAG_PRBS_STOP, nullptr);
        }
        return print_bit_errors(unit, port);
    });
}

constexpr Form phy_forms[] = {
    {"list", "[PORTS]", list, "what the PHYs are and how they are"},
    {"read", "PORTS REGISTER [internal]", read,
     "REGISTER is 0 to 31, a name such as STATUS, or DEVICE.NUMBER"},
    {"write", "PORTS REGISTER VALUE [internal]", write,
     "internal means the SerDes of a port with a PHY outside"},
    {"modify", "PORTS REGISTER VALUE MASK [internal]", modify, "change the bits that MASK has"},
    {"get", "PORTS [PATTERN]", get, "show controls; a count since the last read begins anew"},
    {"set", "PORTS CONTROL=VALUE...", set, "set controls"},
    {"diag", "[PORTS]", show_diagnosis, "state of link and receiver, eye, firmware"},
    {"cable", "PORTS", test_cable, "test the copper cable, which interrupts the link"},
    {"loopback", "PORTS on|off", loopback, "send back what the MAC sends"},
    {"prbs", "PORTS start|stop|show", test_bits, "send a test sequence and count wrong bits"},
};

constexpr Command commands[] = {
    {"phy", "look at PHYs, their registers and controls, or test them", phy_forms,
     "phy list 33-34; phy read 33-34 STATUS; phy get 33 TEMPERATURE*; phy cable 33"},
};

}  // namespace

const CommandGroup phy_commands = {"PHYs", commands, true};

}  // namespace sim
