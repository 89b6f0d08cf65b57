#include "shell_values.h"

#include "destination.h"
#include "number_text.h"
#include "port_set_text.h"
#include "shell.h"
#include "shell_commands.h"
#include "sim_text.h"

#include <algorithm>
#include <cctype>

namespace sim {

namespace {

bool refused(const Arguments &args, const std::string &what)
{
    refuse(args, what);
    return false;
}

std::string quoted(const std::string &word)
{
    return "'" + word + "'";
}

/// The next word; what is optional in the command's form may be missing.
std::string next_word(Arguments &args)
{
    return args.left() > 0 ? args.next() : "";
}

bool read_mac(const std::string &text, bcm_mac_t mac)
{
    constexpr int octets = 6;
    std::size_t begin = 0;
    for (int octet = 0; octet < octets; ++octet) {
        const std::size_t end = octet < octets - 1 ? text.find(':', begin) : text.size();
        if (end == std::string::npos || end == begin || end - begin > 2) {
            return false;
        }
        int value = 0;
        for (std::size_t i = begin; i < end; ++i) {
            const int digit = sim_xdigit2i(text[i]);
            if (digit < 0) {
                return false;
            }
            value = 16 * value + digit;
        }
        mac[octet] = static_cast<uint8>(value);
        begin = end + 1;
    }
    return true;
}

}  // namespace

bool next_number(Arguments &args, const char *what, int *value, int least)
{
    const std::string word = next_word(args);
    if (read_int(word, value) && *value >= least) {
        return true;
    }
    const std::string from = least != INT_MIN ? " from " + std::to_string(least) + " on" : "";
    return refused(args, what + (" " + quoted(word)) + " is no number" + from);
}

bool next_choice(Arguments &args, const std::vector<std::string> &choices, std::size_t *place)
{
    const std::string word = next_word(args);
    const auto found = std::find(choices.begin(), choices.end(), word);
    *place = static_cast<std::size_t>(found - choices.begin());
    return found != choices.end() || refused(args, none_of(word, choices));
}

bool next_setting(Arguments &args, std::string *key, std::string *value)
{
    const std::string word = next_word(args);
    return split_setting(word, key, value)
           || refused(args, quoted(word) + " sets nothing: no " + (word[0] == '=' ? "name" : "'='"));
}

bool next_ports(int unit, Arguments &args, std::vector<int> *ports)
{
    const std::string word = args.left() > 0 ? args.next() : "all";
    bcm_pbmp_t set = {};
    if (word == "all") {
        for (int port = cpu_port + 1; port <= port_max; ++port) {
            BCM_PBMP_PORT_ADD(set, port);
        }
    } else {
        std::string_view wrong;
        const int rc = read_port_set(unit, word, &set, &wrong);
        const std::string item = quoted(std::string(wrong));
        if (rc != BCM_E_NONE) {
            return refused(args, rc == BCM_E_PORT ? "no port " + item : item + " is no set of ports");
        }
    }
    ports->clear();
    for (int port = 0; port < BCM_PBMP_PORT_MAX; ++port) {
        if (BCM_PBMP_MEMBER(set, port)) {
            ports->push_back(port);
        }
    }
    return true;
}

bool next_port(int unit, Arguments &args, int *port)
{
    const std::string word = args.left() > 0 ? args.peek() : "";
    std::vector<int> ports;
    if (!next_ports(unit, args, &ports)) {
        return false;
    }
    if (ports.size() != 1) {
        return refused(args, quoted(word) + " is not one port");
    }
    *port = ports.front();
    return true;
}

bool next_vlan(Arguments &args, bcm_vlan_t *vid)
{
    const std::string word = next_word(args);
    int number;
    if (!read_int(word, &number) || number != static_cast<bcm_vlan_t>(number)) {
        return refused(args, quoted(word) + " is no VLAN");
    }
    *vid = static_cast<bcm_vlan_t>(number);
    return true;
}

bool next_mac(Arguments &args, bcm_mac_t mac)
{
    const std::string word = next_word(args);
    return read_mac(word, mac) || refused(args, quoted(word) + " is no MAC address");
}

}  // namespace sim
