// The index as Python code asks it.
#pragma once

#include "module/references.h"

namespace quorel {

/// parameters(function)
NewReference describe_parameters(PyObject *module, PyObject *function);

/// copy(record)
NewReference copy_record(PyObject *module, PyObject *record);

}  // namespace quorel
