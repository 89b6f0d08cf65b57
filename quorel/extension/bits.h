// Bitmaps in memory: words of 32 bits, the least significant first.
#pragma once

#include "lookup.h"

namespace quorel {

/// The numbers of the bits that are set, a list of ints.
NewReference read_bits(const char *address, size_t size);

/// Of Kind::bit_set: likewise, with the names that the set's enumeration has for them.
NewReference read_named_bits(const CType &type, const char *address);

/// Of Kind::bit_set and Kind::opaque, from a whole number; a set also from a list of numbers and names. Raises
/// TypeError, OverflowError or, for what is no such name, ValueError, and returns false; then the memory is as it was.
bool write_bits(const CType &type, char *address, PyObject *value);

}  // namespace quorel
