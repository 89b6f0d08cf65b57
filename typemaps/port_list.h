// Port bitmaps cross as lists of port numbers: ints in, longs out. A list that was read must therefore be made
// of ints again before it is passed back; that asymmetry is meant, scripts rely on the types.
#pragma once

#include "module/record.h"

#include <bcm/types.h>

namespace [[gnu::visibility("hidden")]] quorel {

/// List to bitmap. Anything but a list raises TypeError "Expected a list", an item that is not an int TypeError
/// "Port list must contain integers", a negative one the interpreter's OverflowError, and one beyond the
/// bitmap ValueError. Order and duplicates do not matter. `bitmap` is written only on success.
bool to_port_list(Borrowed list, bcm_pbmp_t *bitmap);

/// A new list of the bitmap's ports, ascending, as longs. The bitmap's last 17 ports are never listed.
NewReference from_port_list(const bcm_pbmp_t &bitmap);

NewReference get_port_list(const MemberRow &row, PyObject *args);
NewReference set_port_list(const MemberRow &row, PyObject *args);

}  // namespace quorel
