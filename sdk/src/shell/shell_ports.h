/// Ports as words of commands.
#pragma once

#include <string>
#include <vector>

namespace sim {

/// Reads what parse_bcm_pbmp() does, such as "1,3-5,ce7", in ascending order; but "all" leaves out the CPU's
/// port. False if it cannot be read.
bool read_ports(int unit, const std::string &text, std::vector<int> *ports);

}  // namespace sim
