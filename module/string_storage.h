// C strings that Python may replace: `char *` variables and members.
#pragma once

#include "convert.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// Replaces the string in `*place` by a copy of a str's text, or of the text that a `char *` pointer object
/// points to. The copy is an array from the C++ heap. The string replaced is released with the array release
/// operator, as it is the contract, unless it lies within a loaded program or library: such a one was never
/// allocated. On a failure nothing is changed.
Status replace_string(Borrowed value, char **place);

}  // namespace quorel
