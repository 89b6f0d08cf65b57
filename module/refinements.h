// What the package above the module adds to records once it is imported: members as keywords of a constructor, parts
// of a record that keep it alive, and members that are values instead of pointers to copies. Until then all is null, and
// the module does what its contract says.
//
// The package's extension module finds this in Proxy_Type, since nothing of it is to be seen from Python.
#pragma once

#include "pointer_object.h"

namespace [[gnu::visibility("hidden")]] quorel {

struct Refinements {
    /// Sets the members of a new record that the keywords name. Returns false with an exception set.
    bool (*set_members)(PyObject *record, PyObject *keywords);
    /// `part`, a new pointer object of this module, has been read out of the memory behind the pointer object
    /// `whole`. Returns false with an exception set.
    bool (*read_out)(PyObject *whole, PyObject *part);
    /// What is read instead of a pointer object to a copy: the member at `address` of what `type` points to, as a
    /// number or list. Null, if there is no exception, leaves it to the module.
    NewReference (*read_copied)(const swig_type_info *type, char *address);
    /// Writes what the member takes besides pointer objects. False, if there is no exception, says that it takes no
    /// such value.
    bool (*write_copied)(const swig_type_info *type, char *address, PyObject *value);
    /// Whether the memory behind a pointer object is known to belong to something else, so that nobody may free it.
    bool (*is_kept)(PyObject *pointer);
    /// The type of this module's pointer objects.
    const PyTypeObject *pointer_object;
};

/// The type of proxies, with what belongs to it.
struct ProxyType {
    PyTypeObject type;
    Refinements refinements;
};

/// The member at `address`, of what `type` points to, where the package has it read or written otherwise.
NewReference read_refined(const swig_type_info *type, char *address);
bool write_refined(const swig_type_info *type, char *address, PyObject *value);

/// Whether `memory`, which `method` was given to free, is nobody else's; false with an exception.
bool may_be_freed(const HeldPointer &memory, const char *method);

/// As wrap_pointer(), of what was read out of the memory behind `whole`; it owns nothing.
NewReference wrap_part(const HeldPointer &whole, void *part, swig_type_info *type);

}  // namespace quorel
