// Writing of generated files.
#pragma once

#include <string>
#include <vector>

namespace generator {

/// Writes `text` to `path`, through a temporary file that is moved into place, and only if the content differs
/// from what is there. Throws std::runtime_error naming the path.
void write_if_changed(const std::string &path, const std::string &text);

std::string read_file(const std::string &path);

/// The first lines of a generated C++ file. `inputs` says what it was made from.
std::string banner(const std::string &subject, const std::string &inputs);

/// The texts in their order as `count` ones of about the same size; some are empty if there are too few.
std::vector<std::string> joined(const std::vector<std::string> &texts, size_t count);

/// What make and Ninja read: that `target` is out of date when one of `inputs` is newer.
std::string make_rule(const std::string &target, const std::vector<std::string> &inputs);

/// A C string literal; a NUL follows the text.
std::string literal_with_nul(const std::string &text);

}  // namespace generator
