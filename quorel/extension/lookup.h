// The index as the rest of this extension asks it.
#pragma once

#include "index.h"
#include "module/references.h"
#include "module/type_table.h"

namespace quorel {

/// Finds the binding's method table, and refines its records. Returns false with an exception set
/// where the binding is not the one that this extension was built with.
bool initialise_lookup();

/// The function of the SDK behind a built-in function of the binding; null without an exception for other
/// objects, for helpers with several signatures and for accessors.
const CFunction *find_function(PyObject *function);

/// The type that a script names: by its C spelling or by the class of a record. Null with TypeError or
/// ValueError.
const CType *find_type_named(PyObject *name);

/// The same by C spelling; null without an exception.
const CType *find_type_spelt(const char *name, size_t length);

inline const char *name_of(const CType &type)
{
    return index_text + type.name;
}

inline const CParameter &parameter_of(const CFunction &function, size_t place)
{
    return c_parameters[function.parameters + place];
}

/// What a function of the binding is called, and its parameter of that place (from 0), as its docstring has
/// them; for messages.
Owned function_name(PyObject *function);
Owned parameter_name(PyObject *function, size_t place);

/// A pointer object that owns nothing. `keeper` (borrowed, may be null) is what it points into: see loan.h.
NewReference new_pointer(void *pointer, uint16_t descriptor, PyObject *keeper);

/// The same as a result: None for null, and an instance of the class that is registered for the descriptor.
NewReference new_reference(void *pointer, uint16_t descriptor, PyObject *keeper);

/// The class that is registered for a descriptor (borrowed), or null.
PyObject *class_of(uint16_t descriptor);

/// Whether the object is a PointerObject, of this extension or of the binding.
bool has_keeper(PyObject *object);

}  // namespace quorel
