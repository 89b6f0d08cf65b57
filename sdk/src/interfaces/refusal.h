/// Why an interface cannot be attached.
#pragma once

#include <string>

namespace sim {

struct Refusal {
    int status;           ///< BCM_E_...
    std::string problem;  ///< a sentence
};

/// Throws a Refusal for what `errno` says of a step, such as "opening /dev/net/tun".
[[noreturn]] void refuse(const std::string &step);

/// Throws one for `errno`, unless the result of a system call is none of an error, which is given back.
int require(int result, const std::string &step);

}  // namespace sim
