/// What words of commands stand for. Each function takes the next word; one that cannot be read it refuses,
/// and returns false. `what` is the word's name in the command's form.
#pragma once

#include "shell_arguments.h"

#include <sal/types.h>
#include <bcm/types.h>

#include <climits>
#include <string>
#include <vector>

namespace sim {

bool next_number(Arguments &args, const char *what, int *value, int least = INT_MIN);

/// One of several words; gives its place among them.
bool next_choice(Arguments &args, const std::vector<std::string> &choices, std::size_t *place);

/// "key=value"
bool next_setting(Arguments &args, std::string *key, std::string *value);

/// What parse_bcm_pbmp() reads, such as "1,3-5,ce7", in ascending order; but "all", which is also what no
/// word means, leaves out the CPU's port.
bool next_ports(int unit, Arguments &args, std::vector<int> *ports);
bool next_port(int unit, Arguments &args, int *port);

/// A number that a VLAN's type holds; whether there can be such a VLAN is for the switch to say.
bool next_vlan(Arguments &args, bcm_vlan_t *vid);

/// Six numbers of one or two hexadecimal digits, with ':' between them.
bool next_mac(Arguments &args, bcm_mac_t mac);

}  // namespace sim
