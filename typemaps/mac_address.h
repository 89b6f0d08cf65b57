// MAC addresses cross as text: "02:00:5e:0a:ff:01" out, six fields of one or two hexadecimal digits in.
#pragma once

#include "module/record.h"

#include <bcm/types.h>

namespace [[gnu::visibility("hidden")]] quorel {

constexpr int mac_text_length = 17;

/// Reads the fields that the C library's "%2x:%2x:%2x:%2x:%2x:%2x" reads in a NUL-terminated text, signs, "0x"
/// and white space before a field included, and keeps the low byte of each; what follows the sixth is ignored.
/// Returns whether all six were there; `mac` is written only then.
bool parse_mac(const char *text, bcm_mac_t mac);

/// Writes six two-digit lower-case fields, mac_text_length characters and no NUL.
void format_mac(const unsigned char *mac, char *text);

/// Text to address. Anything but a str (or a unicode string that the default encoding can take) raises
/// TypeError "Expected a string"; text of another form raises ValueError. `mac` is written only on success.
bool to_mac_address(Borrowed object, bcm_mac_t mac);

/// A new str.
NewReference from_mac_address(const unsigned char *mac);

NewReference get_mac_address(const MemberRow &row, PyObject *args);
NewReference set_mac_address(const MemberRow &row, PyObject *args);

}  // namespace quorel
