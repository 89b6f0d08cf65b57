// Calls of built-in functions from C, without what the interpreter puts around them.
#pragma once

#include "references.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// Whether `object` is a function of this module's calling convention: built in, positional arguments only.
inline bool is_builtin(PyObject *object)
{
    return PyCFunction_Check(object) && PyCFunction_GET_FLAGS(object) == METH_VARARGS;
}

/// Calls `function`, for which is_builtin() holds, with a tuple of arguments.
inline NewReference call_builtin(PyObject *function, Borrowed args)
{
    return PyCFunction_GET_FUNCTION(function)(PyCFunction_GET_SELF(function), args);
}

/// Calls any function with a tuple of arguments.
inline NewReference call_function(PyObject *function, Borrowed args)
{
    return is_builtin(function) ? call_builtin(function, args) : PyObject_Call(function, args, nullptr);
}

}  // namespace quorel
