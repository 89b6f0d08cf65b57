// Callbacks cross as C function pointers, in pointer objects. A Python function is refused; only parameters that an
// interface file lists under `callables` take one (module/callable.h).
//
// A built-in function stands for the C function that its docstring names: by the marker "swig_ptr: " and then
// either "_", the pointer's bytes in memory order as lower-case hexadecimal digits (8 on a 32-bit host,
// 16 on a 64-bit one) and the mangled name of the callback's type, which ends the docstring; or "NULL". This
// module's own functions carry no marker, those of other SWIG modules may.
#pragma once

#include "module/variable.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// A built-in function as a callback of `type`. Fails with Status::unknown where the docstring has no marker,
/// is packed badly, or names a type that does not convert to `type`. *address is written only on success.
Status to_packed_callback(PyObject *function, swig_type_info *type, void **address);

/// A callback: a pointer object of the callback's type or of an equivalent one, None for null, or a built-in
/// function as above.
inline Status to_callback(PyObject *object, uint16_t type, HeldPointer *pointer)
{
    if (__builtin_expect(PyCFunction_Check(object), false)) {
        return to_packed_callback(object, types[type], &pointer->address);
    }
    return to_pointer(object, type, pointer);
}

/// Writes a member; it is read by get_pointer().
NewReference set_callback(const MemberRow &row, PyObject *args);

/// Writes a global variable; it is read by get_pointer_variable().
bool set_callback_variable(const VariableRow &row, PyObject *value);

}  // namespace quorel
