#include "signature.h"

#include <map>

namespace generator {

std::string docstring(const BoundFunction &function)
{
    std::string names;
    for (const BoundParameter &parameter : function.parameters) {
        if (parameter.direction != Direction::Out) {
            names += (names.empty() ? "" : ", ") + parameter.name;
        }
    }
    std::string result =
        function.result.conversion == Conversion::Nothing ? "" : " -> " + function.result.text;
    return function.name + "(" + names + ")" + result;
}

std::vector<Crossing> arguments_of(const BoundFunction &function)
{
    std::vector<Crossing> arguments;
    for (const BoundParameter &parameter : function.parameters) {
        if (parameter.direction != Direction::Out) {
            arguments.push_back(parameter.crossing);
        }
    }
    return arguments;
}

std::vector<std::vector<const BoundFunction *>> overloads_of(const Family &family)
{
    std::vector<std::vector<const BoundFunction *>> groups;
    std::map<std::string, size_t> places;
    for (const BoundFunction &function : family.functions) {
        auto [place, is_new] = places.emplace(function.name, groups.size());
        if (is_new) {
            groups.emplace_back();
        }
        groups[place->second].push_back(&function);
    }
    return groups;
}

}  // namespace generator
