/// Command files of units.
#pragma once

namespace sim {

/// Leaves the unit without a command file of its own.
void forget_command_file(int unit);

}  // namespace sim
