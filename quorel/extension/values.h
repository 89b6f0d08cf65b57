// C values in memory, as Python sees them.
#pragma once

#include "lookup.h"

namespace quorel {

/// The value of that type at `address`, as functions' results look. Records and what Python does not look
/// into are references to the memory, for which `keeper` (borrowed, may be null) stays alive: see loan.h.
NewReference read_value(const CType &type, char *address, PyObject *keeper);

/// Writes the value to `address`; what is not of the type raises TypeError or, where it does not fit,
/// OverflowError, and leaves the memory as it was. A pointer is stored as it is: `value` has to outlive it.
bool write_value(const CType &type, char *address, PyObject *value);

/// Makes ints of the longs of a list: the binding gives ports as longs and takes them as ints only.
void make_ints(PyObject *list);

/// Raises TypeError: "a value of type 'bcm_port_t' is wanted, not a str"; returns false.
bool raise_wrong_value(const CType &type, PyObject *value);

}  // namespace quorel
