#include "emit.h"
#include "output.h"

#include <fmt/format.h>

namespace generator {

namespace {

std::string accessors(const BoundVariable &variable)
{
    const std::string scalar = conversion_name(variable.crossing.conversion);
    const std::string type = scalar == "bool" ? scalar : scalar + "_t";
    const std::string getter = fmt::format("get_scalar_variable<{}, from_{}>", type, scalar);
    switch (variable.kind) {
    case VariableKind::Scalar:
        return fmt::format("{}, set_scalar_variable<{}, to_{}>", getter, type, scalar);
    case VariableKind::String:
        return "get_string_variable, set_string_variable";
    case VariableKind::Storage:
        return "get_storage_variable, set_storage_variable";
    case VariableKind::Pointer:
        return "get_pointer_variable, set_callback_variable";
    case VariableKind::Constant:
        return getter + ", refuse_constant";
    case VariableKind::UnboundedArray:
        return "get_storage_variable, refuse_unbounded_array";
    }
    return "";
}

}  // namespace

std::string emit_variables(const Model &model, const Numbering &numbering)
{
    std::vector<std::string> headers;
    for (const Family &family : model.families) {
        headers.insert(headers.end(), family.headers.begin(), family.headers.end());
    }
    std::string rows;
    for (const BoundVariable &variable : model.variables) {
        rows += fmt::format(
            "    {{\"{name}\", {accessors}, const_cast<void *>(static_cast<const void *>(&{name})), "
            "{argument}, "
            "{size}}},\n",
            fmt::arg("name", variable.name), fmt::arg("accessors", accessors(variable)),
            fmt::arg("argument", numbering.arguments({variable.crossing})),
            fmt::arg("size", variable.kind == VariableKind::UnboundedArray
                                 ? "0"
                                 : fmt::format("sizeof({})", variable.name)));
    }
    return banner("Global variables, in header order.", "the interface files and the headers that they name")
           + includes(headers, {})
           + fmt::format(
               "\n#include \"typemaps/callback.h\"\n\n"
               "namespace quorel {{\n\n"
               "const VariableRow variable_rows[] = {{\n{}    {{}},\n}};\n"
               "const size_t variable_count = {};\n\n"
               "}}  // namespace quorel\n",
               rows, model.variables.size());
}

}  // namespace generator
