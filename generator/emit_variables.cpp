#include "emit.h"
#include "output.h"

namespace generator {

namespace {

std::string accessors(const BoundVariable &variable)
{
    std::string scalar = scalar_name(variable.crossing.conversion);
    std::string type = scalar == "bool" ? scalar : scalar + "_t";
    std::string getter = "get_scalar_variable<" + type + ", from_" + scalar + ">";
    switch (variable.kind) {
    case VariableKind::Scalar:
        return getter + ", set_scalar_variable<" + type + ", to_" + scalar + ">";
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
        std::string size =
            variable.kind == VariableKind::UnboundedArray ? "0" : "sizeof(" + variable.name + ")";
        rows += "    {\"" + variable.name + "\", " + accessors(variable)
                + ", const_cast<void *>(static_cast<const void *>(&" + variable.name + ")), "
                + std::to_string(numbering.arguments({variable.crossing})) + ", " + size + "},\n";
    }
    return banner("Global variables, in header order.", "the interface files and the headers that they name")
           + includes(headers, {}) + "\n#include \"typemaps/callback.h\"\n\nnamespace quorel {\n\n"
           + "const VariableRow variable_rows[] = {\n" + rows + "    {},\n};\nconst size_t variable_count = "
           + std::to_string(model.variables.size()) + ";\n\n}  // namespace quorel\n";
}

}  // namespace generator
