// checked(f, *args): a call of the SDK that raises where its status is not BCM_E_NONE, and gives its outputs.
#pragma once

#include "module/references.h"

namespace quorel {

/// checked(f, *args)
///
/// What f returns is its status if f is a function of the SDK whose result is an int; of any other function
/// that returns an int too. Each OUT among the arguments becomes a pointer to new memory, and after the call
/// a value. The result is None without an output, the output if there is one, else a tuple; a result that is
/// no status comes first.
NewReference checked(PyObject *module, PyObject *args);

}  // namespace quorel
