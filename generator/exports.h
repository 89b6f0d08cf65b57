// What shared libraries export, so that a binding of something that they lack is noticed before it is imported.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace generator {

/// Names of the functions and variables that these files, ELF of any kind of system, offer to others. A linker's script
/// in place of a library stands for the libraries that it names. Throws std::runtime_error for a file that is neither.
std::set<std::string> exports_of(const std::vector<std::string> &libraries);

}  // namespace generator
