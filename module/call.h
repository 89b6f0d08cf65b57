// The life of a call, `bcm_port_enable_get(0, 1, p)`:
//
//  1. Python calls the function's stub (generated, two or three instructions), which passes the argument tuple
//     on to the call function of the binding's shape, with the binding's row and its typed thunk. The row takes
//     the place of the stub's own `self`, so that the tuple stays where Python put it.
//  2. A shape is the sequence of argument kinds with pointers erased, such as (int, int, pointer). The
//     generator writes one plain function per shape; nothing in it depends on a particular binding.
//  3. The tuple's size is compared with the shape's; on a difference raise_arity() lets the interpreter's own
//     unpacking make the error.
//  4. Each argument is converted in order (convert.h). The first failure goes to raise_argument(), with the
//     row, the position and the status; no further argument is looked at and nothing is called. The pointer
//     objects behind the arguments are held until the end, since Python code that runs in between may let go.
//  5. The thunk (generated, one line) turns the erased pointers into the declared types and calls the SDK,
//     with the interpreter lock held. No function pointer is ever cast to another type.
//  6. The result is converted; appended outputs join it in a list.
#pragma once

#include "convert.h"
#include "methods.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// Raises the failure of argument `index` (from 0) of a call; returns null.
NewReference raise_argument(const CallRow &row, int index, Status status) __attribute__((cold));

/// Raises the interpreter's error for a wrong number of arguments; returns null.
NewReference raise_arity(uint16_t method, PyObject *args, int expected) __attribute__((cold));

/// The descriptor number of argument `index` of a call.
inline uint16_t type_of(const CallRow &row, int index)
{
    return arguments[row.arguments + index].type;
}

}  // namespace quorel
