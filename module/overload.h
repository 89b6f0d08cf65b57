// Functions of one name: which of them the arguments are for.
#pragma once

#include "call.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// Whether as many arguments were given as there are codes, and each would convert: "i" to an int, "r" to a
/// value of a record or opaque type, "p" to a pointer. A null where a value is wanted counts as converting: it is
/// the call that refuses it. Leaves no exception.
bool converts(const CallRow &row, PyObject *args, const char *codes);

/// Raises NotImplementedError with all prototypes, a line each; returns null.
NewReference raise_overloaded(const char *name, const char *prototypes) __attribute__((cold));

}  // namespace quorel
