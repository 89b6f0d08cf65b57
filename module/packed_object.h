// The packed object ("SwigPyPacked"): a copy of a small binary value with its type, for what is no plain address,
// such as a pointer to a member function. The runtime has the type; no constant of this module needs it so far.
#pragma once

#include "type_table.h"

namespace [[gnu::visibility("hidden")]] quorel {

extern PyTypeObject PackedObject_Type;

/// Makes PackedObject_Type usable. Returns false with an exception set when that fails.
bool initialise_packed_object_type();

/// A packed object with a copy of `size` bytes; `type` is borrowed and lives as long as the process.
NewReference new_packed_object(const void *data, size_t size, swig_type_info *type);

/// Copies the value of a packed object of exactly that size to `data` and returns its type; null without an
/// exception if the object is no such one, and `data` is then not written.
swig_type_info *unpack_object(Borrowed object, void *data, size_t size);

}  // namespace quorel
