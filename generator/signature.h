// How a bound function looks from Python.
#pragma once

#include "model.h"

#include <string>
#include <vector>

namespace generator {

/// "name(unit, port) -> int"
std::string docstring(const BoundFunction &function);

/// What is passed in, without the outputs that join the result.
std::vector<Crossing> arguments_of(const BoundFunction &function);

/// The functions of a family, those of one name together, where the first of them stands.
std::vector<std::vector<const BoundFunction *>> overloads_of(const Family &family);

}  // namespace generator
