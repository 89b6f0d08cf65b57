// The text of an IPv4 address as format_ipaddr() takes it: an array that a str is copied into. What the SDK
// writes to the array does not reach Python.
#pragma once

#include "module/convert.h"

#include <appl/ip_text.h>

namespace [[gnu::visibility("hidden")]] quorel {

/// Copies a str, or what a `char *` pointer object points to, and fills up with NULs; as many characters as
/// the array has are taken, the last without a NUL. Longer text and other objects raise TypeError.
bool to_ip_text(Borrowed object, ip_addr_text_t text);

}  // namespace quorel
