// C strings that Python may replace: `char *` variables and members.
#pragma once

#include "convert.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// A copy of a str's text, or of the text that a `char *` pointer object points to: an array from the C++ heap; null
/// for a null pointer.
Status copy_string(Borrowed value, char **copy);

/// Puts such a copy, which belongs to the place from now on, in `*place`. The string replaced is released with the
/// array release operator, as it is the contract, unless it lies within a loaded program or library: such a one was
/// never allocated.
void take_string(char **place, char *copy);

/// Both. On a failure nothing is changed.
Status replace_string(Borrowed value, char **place);

}  // namespace quorel
