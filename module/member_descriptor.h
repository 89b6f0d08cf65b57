// Attributes of the companion's proxy classes: a property made of two functions of this module. Python's own
// property would do the same at more than twice the cost, most of it in putting together the argument tuple from
// a format string. They are properties to whoever looks at them, such as help().
#pragma once

#include "references.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// A property that is read with one function and assigned with the other, or not at all if that is null. Returns
/// null with TypeError for anything but built-in functions that take positional arguments. The docstring of the
/// property is that of the function that reads.
NewReference new_member_descriptor(Borrowed getter, Borrowed setter);

/// Makes the type of these usable. Returns false with an exception set when that fails.
bool initialise_member_descriptor_type();

}  // namespace quorel
