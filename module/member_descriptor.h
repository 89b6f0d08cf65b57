// Attributes of the companion's proxy classes: _Member(getter, setter) is a property made of two functions of
// this module. Python's own property would do the same at more than twice the cost, most of it in putting
// together the argument tuple from a format string.
#pragma once

#include "references.h"

namespace quorel {

/// Called with a read accessor and a write accessor or None; TypeError for anything but built-in functions that
/// take positional arguments. Without a write accessor assigning raises AttributeError. The docstring of an
/// instance is the read accessor's.
extern PyTypeObject MemberDescriptor_Type;

/// Makes MemberDescriptor_Type usable. Returns false with an exception set when that fails.
bool initialise_member_descriptor_type();

}  // namespace quorel
