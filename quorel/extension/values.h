// C values in memory, as Python sees them.
#pragma once

#include "lookup.h"

namespace quorel {

/// The value of that type at `address`, as functions' results look. Records and what Python does not look
/// into are references to the memory, for which `keeper` (borrowed, may be null) stays alive: see loan.h. A set of
/// bits is a list of their numbers, see carried().
NewReference read_value(const CType &type, char *address, PyObject *keeper);

/// Writes the value to `address`; what is not of the type raises TypeError or, where it does not fit,
/// OverflowError, and leaves the memory as it was. A pointer is stored as it is: `value` has to outlive it.
bool write_value(const CType &type, char *address, PyObject *value);

/// A number or list as a value of a type that the module passes by pointer: it looks and compares as it is, and has
/// a `this`, so that functions take it as they take what the module itself gives. See quorel/values.py.
NewReference carried(const CType &type, Owned value);

/// Puts where it was, a format and what goes into it, before the text of the exception: "element 3: ...". Returns
/// false.
bool say_where(const char *place, ...) __attribute__((format(printf, 1, 2), cold));

/// Makes ints of the longs of a list: the binding gives ports as longs and takes them as ints only.
void make_ints(PyObject *list);

/// Raises TypeError: "a value of type 'bcm_port_t' is wanted, not a str"; returns false.
bool raise_wrong_value(const CType &type, PyObject *value);

}  // namespace quorel
