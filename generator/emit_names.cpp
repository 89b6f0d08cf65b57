#include "emit.h"
#include "output.h"
#include "spelling.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

namespace generator {

namespace {

// By the name of an enumeration, its constants' numbers. A typedef is a name of it too.
std::map<std::string, std::vector<size_t>> enumerations_of(const Model &model,
                                                           const Declarations &declarations)
{
    std::map<std::string, std::vector<size_t>> enumerations;
    for (size_t i = 0; i < model.constants.size(); ++i) {
        if (!model.constants[i].enumeration.empty()) {
            enumerations[model.constants[i].enumeration].push_back(i);
        }
    }
    for (const auto &[name, target] : declarations.typedefs) {
        TypePtr full = resolve(target, [](const std::string &) { return false; });
        auto found = enumerations.find(full->name);
        if (full->kind == Type::Kind::Enum && found != enumerations.end()) {
            std::vector<size_t> constants = found->second;
            enumerations.emplace(name, std::move(constants));
        }
    }
    return enumerations;
}

std::string numbers(const char *declaration, const std::vector<size_t> &values)
{
    std::string rows;
    for (size_t value : values) {
        rows += fmt::format("    {},\n", value);
    }
    return fmt::format("const {}[] = {{\n{}    0,\n}};\n\n", declaration, rows);
}

}  // namespace

std::string emit_names(const Model &model, const Declarations &declarations)
{
    const size_t count = model.constants.size();
    std::vector<size_t> starts, by_name, enumerated;
    size_t start = 0;
    for (size_t i = 0; i < count; ++i) {
        starts.push_back(start);
        by_name.push_back(i);
        start += model.constants[i].name.size() + 1;
    }
    std::sort(by_name.begin(), by_name.end(),
              [&](size_t a, size_t b) { return model.constants[a].name < model.constants[b].name; });

    std::string rows, names;
    size_t name = 0;
    const auto enumerations = enumerations_of(model, declarations);
    for (const auto &[enumeration, constants] : enumerations) {
        rows += fmt::format("    {{{}, {}, {}}},\n", name, enumerated.size(), constants.size());
        names += fmt::format("    {}\n", literal_with_nul(enumeration));
        name += enumeration.size() + 1;
        enumerated.insert(enumerated.end(), constants.begin(), constants.end());
    }
    if (count > 0xffff) {
        throw std::runtime_error("too many constants for 16-bit numbers");
    }
    return banner("By which names constants are found.", "the interface files and the headers that they name")
           + "\n#include \"quorel/extension/names.h\"\n\nnamespace quorel {\n\n"
           + numbers("uint32_t constant_starts", starts) + numbers("uint16_t constants_by_name", by_name)
           + fmt::format(
               "const CEnumeration enumerations[] = {{\n{}    {{}},\n}};\n"
               "const size_t enumeration_count = {};\n\n"
               "const char enumeration_names[] =\n{}    \"\";\n\n",
               rows, enumerations.size(), names)
           + numbers("uint16_t enumerated_constants", enumerated) + "}  // namespace quorel\n";
}

}  // namespace generator
