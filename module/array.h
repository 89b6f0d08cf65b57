// Array families (uint8Array and its like): zeroed C arrays that no Python object owns. They live until
// delete_<array>() is called. Indices are used as given, negative ones included: callers keep their own sizes.
// A null array raises "invalid null reference in method ...".
#pragma once

#include "record.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// new_<array>(nelements): MemoryError if there is no room for so many (a negative count asks for too many).
NewReference new_array(const ArrayRow &row, PyObject *args);
/// delete_<array>(ary)
NewReference delete_array(const ArrayRow &row, PyObject *args);

NewReference get_item_uint8(const ArrayRow &row, PyObject *args);
NewReference set_item_uint8(const ArrayRow &row, PyObject *args);
NewReference get_item_uint32(const ArrayRow &row, PyObject *args);
NewReference set_item_uint32(const ArrayRow &row, PyObject *args);

/// Array elements that are records: reading gives an independent, owned copy; None as a value raises.
NewReference get_item_record(const ArrayRow &row, PyObject *args);
NewReference set_item_record(const ArrayRow &row, PyObject *args);

}  // namespace quorel
