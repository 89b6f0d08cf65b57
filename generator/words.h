// Texts taken apart.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace generator {

/// Those of a text, between blanks.
std::vector<std::string> words(const std::string &text);

bool has(const std::vector<std::string> &texts, const std::string &text);

bool ends_with(const std::string &text, const std::string &end);

/// "part=meaning"; without a sign, the meaning is empty.
std::pair<std::string, std::string> divided(const std::string &word);

/// By convention, a pointer of such a name is to as many objects as another argument says.
bool names_an_array(const std::string &name);

}  // namespace generator
