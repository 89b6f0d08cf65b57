// The index as Python code asks it.
#pragma once

#include "module/references.h"

namespace quorel {

/// parameters(function)
NewReference describe_parameters(PyObject *module, PyObject *function);

}  // namespace quorel
