#include "cxx_words.h"

#include "words.h"

#include <algorithm>
#include <set>

namespace generator {

namespace {

const std::string ending = "_of_c";

}  // namespace

bool is_cxx_word(const std::string &word)
{
    static const std::set<std::string> all = {
        "bool",      "catch",
        "class",     "const_cast",
        "constexpr", "decltype",
        "delete",    "explicit",
        "export",    "dynamic_cast",
        "false",     "friend",
        "mutable",   "new",
        "namespace", "noexcept",
        "nullptr",   "operator",
        "private",   "public",
        "protected", "reinterpret_cast",
        "template",  "static_cast",
        "this",      "throw",
        "true",      "try",
        "typeid",    "typename",
        "using",     "virtual",
    };
    return all.count(word) != 0;
}

std::string name_in_cxx(const std::string &name)
{
    return is_cxx_word(name) ? name + ending : name;
}

std::string name_in_c(const std::string &name)
{
    const std::string word = name.substr(0, name.size() - std::min(ending.size(), name.size()));
    return ends_with(name, ending) && is_cxx_word(word) ? word : name;
}

}  // namespace generator
