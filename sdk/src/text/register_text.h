/// Registers from text.
#pragma once

#include <soc/register.h>

#include <string_view>
#include <vector>

namespace sim {

using Registers = std::vector<soc_regaddrinfo_t>;

/// What parse_symbolic_reference() reads, without a limit to their number. After a failure *registers is
/// undefined.
int read_registers(int unit, std::string_view text, Registers *registers);

}  // namespace sim
