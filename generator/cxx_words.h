// Names of C that C++ takes for words of its own: a member `class`, a function `delete`.
//
// C++ reads the headers with these words defined as other names, which they have in generated C++ alone.
#pragma once

#include <string>

namespace generator {

/// Whether C++17 has a use for the word that C17 has not. Those that the C library's headers declare or define for C,
/// such as wchar_t, are no such words; nor are `and` and its like, which C++ can do without (-fno-operator-names).
bool is_cxx_word(const std::string &word);

/// What C++ calls what C calls so: "class_of_c"; other names are the same.
std::string name_in_cxx(const std::string &name);

/// The other way round.
std::string name_in_c(const std::string &name);

}  // namespace generator
