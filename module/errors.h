// The one way to fail: a conversion returns a Status, and a cold function makes the exception from it.
#pragma once

#include "references.h"

#include <cstdint>

namespace [[gnu::visibility("hidden")]] quorel {

/// Result of a conversion. The numbers are those of SWIG's runtime.
enum class Status : int {
    ok = 0,
    unknown = -1,
    io = -2,
    runtime = -3,
    index = -4,
    type = -5,
    division_by_zero = -6,
    overflow = -7,
    syntax = -8,
    value = -9,
    system = -10,
    attribute = -11,
    memory = -12,
    null_reference = -13,  ///< the "invalid null reference" family; not a number of SWIG's runtime
};

/// The exception class for a status; an unknown failure of a conversion counts as a type error before this.
PyObject *exception_class(Status status);

/// Sets "in method '<method>', argument <position> of type '<type>'", or for Status::null_reference
/// "invalid null reference in method ...". Positions count from 1. Always returns null.
NewReference raise_argument_error(const char *method, int position, const char *type, Status status);

/// Sets "in variable '<name>' of type '<type>'" or its "invalid null reference" form. `name_length` allows
/// a name that is part of a longer text. Always returns null.
NewReference raise_variable_error(const char *name, size_t name_length, const char *type, Status status);

/// Lets the interpreter's own unpacking make the error for a wrong number of arguments; returns null.
NewReference raise_arity_error(const char *method, Borrowed args, int expected);

}  // namespace quorel
