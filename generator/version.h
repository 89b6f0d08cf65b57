// What a binding was made of, in one short text.
#pragma once

#include "header_reader.h"

#include <string>
#include <vector>

namespace generator {

/// "PROJECT+sdk.DIGEST": `project` is the version of these sources; the digest, 16 hexadecimal digits, is of those
/// of `files` that lie below one of the include directories, by their names there, and of the definitions among the
/// flags. So it tells one build of an SDK from another, but not where its headers lie or what the system's are.
/// Throws std::runtime_error if one cannot be read.
std::string version_of(const std::string &project, const std::vector<std::string> &files,
                       const HeaderSource &source);

/// version.h: the text as a constant.
std::string emit_version(const std::string &version);

}  // namespace generator
