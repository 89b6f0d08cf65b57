// Writing of generated files.
#pragma once

#include <string>

namespace generator {

/// Writes `text` to `path`, through a temporary file that is moved into place, and only if the content differs
/// from what is there. Throws std::runtime_error naming the path.
void write_if_changed(const std::string &path, const std::string &text);

std::string read_file(const std::string &path);

/// The first lines of a generated C++ file. `inputs` says what it was made from.
std::string banner(const std::string &subject, const std::string &inputs);

/// A C string literal; a NUL follows the text.
std::string literal_with_nul(const std::string &text);

}  // namespace generator
