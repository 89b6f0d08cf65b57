// The type table: one descriptor per C type that crosses the boundary, shared with the other modules of
// SWIG's runtime version 4 in the process, so that pointers pass between modules unchanged.
#pragma once

#include "errors.h"
#include "swig_runtime.h"
#include "tables.h"

#include <cstring>

namespace [[gnu::visibility("hidden")]] quorel {

/// The descriptors in use, by type number: this module's own, or another module's where that module had the
/// type first. Defined by the generated tables; filled by initialise_type_table().
extern swig_type_info *types[];

/// Builds this module's descriptors and cast lists from the generated rows, joins the ring of modules (or
/// starts it, through the capsule "swig_runtime_data4.type_pointer_capsule") and merges the types. A second
/// call in one process joins the ring again if need be and merges nothing. Where the capsule cannot be had or
/// made, the ring is this module alone. Returns false with an exception when memory is short.
bool initialise_type_table();

/// The converter between a pointer class and its element, which are the same C type: returns its argument.
void *same_pointer(void *pointer, int *new_memory);

/// The entry of `wanted`'s cast list that converts from `given`, or null. It is moved to the head of the
/// list, where the call path looks first.
swig_cast_info *find_cast(swig_type_info *given, swig_type_info *wanted);

/// The last spelling in the descriptor's text, or its mangled name, or null without a descriptor.
const char *display_name(const swig_type_info *type);

/// The descriptor with this mangled name in any module of the ring, or null.
swig_type_info *find_type(const char *mangled_name);

/// The interned attribute name "this" (borrowed; lives as long as the type table).
PyObject *this_name();

/// Whether the object is of a type that SWIG's runtime made under that name. A class that a script calls so is not.
inline bool is_of_runtime_type(PyObject *object, const char *name)
{
    const PyTypeObject *type = Py_TYPE(object);
    return std::strcmp(type->tp_name, name) == 0 && !(type->tp_flags & Py_TPFLAGS_HEAPTYPE);
}

/// How many pointer objects of this module there are. Their classes know how to free what they own: where the
/// capsule goes first, as it may at the interpreter's end, the classes are let go with the last pointer object.
extern size_t live_pointer_objects;
void last_pointer_object_went();

/// Makes the client data of a proxy class: its raw constructor and its destroy function.
/// Returns null with an exception when memory is short.
SwigPyClientData *new_client_data(Borrowed proxy_class);
void delete_client_data(SwigPyClientData *data);

/// Registers `proxy_class`, a class of either kind, as that of `type`, in place of an earlier one.
Status register_class(swig_type_info *type, Borrowed proxy_class);

}  // namespace quorel
