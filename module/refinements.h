// What the package above the module adds to records once it is imported: members as keywords of a constructor, and
// parts of a record that keep it alive. Until then all is null, and the module does what its contract says.
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
    /// The type of this module's pointer objects.
    const PyTypeObject *pointer_object;
};

/// The type of proxies, with what belongs to it.
struct ProxyType {
    PyTypeObject type;
    Refinements refinements;
};

/// As wrap_pointer(), of what was read out of the memory behind `whole`; it owns nothing.
NewReference wrap_part(const HeldPointer &whole, void *part, swig_type_info *type);

}  // namespace quorel
