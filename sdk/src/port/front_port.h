/// What the ports of every unit are called and can do, whether it is attached or not.
#pragma once

#include <string>

namespace sim {

/// "cpu0", "ce0" and so on; of port 0..port_max.
std::string &port_name(int port);

/// Whether a front port can be given that speed after a start of the unit, with the cable that is in it.
bool can_start_at(int unit, int port, int speed);

}  // namespace sim
