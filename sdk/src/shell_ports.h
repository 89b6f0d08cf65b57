/// Ports as words of commands.
#pragma once

#include <string>
#include <vector>

namespace sim {

/// Reads a list such as "1,3-5,ce7": numbers or names of the unit's own ports, and ranges of either; "all"
/// for all front ports. In the order given, each once. False if it cannot be read.
bool read_ports(int unit, const std::string &text, std::vector<int> *ports);

}  // namespace sim
