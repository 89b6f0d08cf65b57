// Reads C headers with libclang into Declarations.
#pragma once

#include "declarations.h"
#include "interface.h"

#include <string>
#include <vector>

namespace generator {

struct HeaderSource {
    Entries c_headers;    ///< include paths, in the order in which they are read
    Entries cxx_headers;  ///< likewise, read after the C headers
    std::vector<std::string> include_directories;
    std::vector<std::string> own_directories;     ///< likewise, but not of the SDK (`version_of`)
    std::vector<std::string> flags;               ///< further compiler flags, such as "-m32"
    std::vector<std::string> system_directories;  ///< likewise, but nothing in them is bound
};

/// Throws std::runtime_error with the compiler's messages if the headers do not compile. What is wrong with no line
/// of a header is said of the line that names it.
Declarations read_headers(const HeaderSource &source);

/// The headers that a header, named as an #include <> finds it, includes from its own folder and those below, as they
/// are named from where it is found; if that folder is one where the system's compiler looks for headers, those of the
/// folder in it that has the header's name ("lzma/base.h" of "lzma.h"). What cannot be read is left to read_headers().
std::vector<std::string> headers_below(const std::string &header, const HeaderSource &source);

}  // namespace generator
