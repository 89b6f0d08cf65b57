#include "cxx_words.h"
#include "emit.h"
#include "output.h"

#include <fmt/format.h>

namespace generator {

namespace {

std::string type_of(const std::string &scalar)
{
    if (scalar == "long_double" || scalar == "complex" || scalar == "complex_float") {
        return scalar == "long_double" ? "long double"
               : scalar == "complex"   ? "_Complex double"
                                       : "_Complex float";
    }
    const bool is_plain = scalar == "bool" || scalar == "float" || scalar == "double" || scalar == "char";
    return is_plain ? scalar : scalar + "_t";
}

std::string accessors(const BoundVariable &variable)
{
    const std::string scalar = conversion_name(variable.crossing.conversion);
    const std::string type = type_of(scalar);
    const std::string getter = fmt::format("get_scalar_variable<{}, from_{}>", type, scalar);
    std::string get, set;
    switch (variable.kind) {
    case VariableKind::Scalar:
        get = getter;
        set = fmt::format("set_scalar_variable<{}, to_{}>", type, scalar);
        break;
    case VariableKind::String:
        get = "get_string_variable";
        set = "set_string_variable";
        break;
    case VariableKind::Storage:
        get = "get_storage_variable";
        set = "set_storage_variable";
        break;
    case VariableKind::Pointer:
        get = "get_pointer_variable";
        set = "set_pointer_variable";
        break;
    case VariableKind::Callback:
        get = "get_pointer_variable";
        set = "set_callback_variable";
        break;
    case VariableKind::UnboundedArray:
        return "get_storage_variable, refuse_unbounded_array";
    }
    return get + ", " + (variable.read_only ? "refuse_constant" : set);
}

}  // namespace

std::string emit_variables(const Model &model, const Numbering &numbering)
{
    std::vector<std::string> headers;
    for (const Family &family : model.families) {
        headers.insert(headers.end(), family.included.begin(), family.included.end());
    }
    std::string rows;
    bool has_reals = false;
    for (const BoundVariable &variable : model.variables) {
        has_reals = has_reals || is_of_reals(variable.crossing.conversion);
        rows += fmt::format(
            "    {{\"{name}\", {accessors}, const_cast<void *>(static_cast<const {qualifier}void "
            "*>(&{cxx_name})), "
            "{argument}, "
            "{size}}},\n",
            fmt::arg("name", variable.name), fmt::arg("cxx_name", name_in_cxx(variable.name)),
            fmt::arg("qualifier", variable.crossing.type->is_volatile ? "volatile " : ""),
            fmt::arg("accessors", accessors(variable)),
            fmt::arg("argument", numbering.arguments({variable.crossing})),
            fmt::arg("size", variable.kind == VariableKind::UnboundedArray
                                 ? "0"
                                 : fmt::format("sizeof({})", name_in_cxx(variable.name))));
    }
    return banner("Global variables, in header order.", "the interface files and the headers that they name")
           + includes(headers, {})
           + fmt::format(
               "\n{}#include \"typemaps/callback.h\"\n\n"
               "namespace quorel {{\n\n"
               "const VariableRow variable_rows[] = {{\n{}    {{}},\n}};\n"
               "const size_t variable_count = {};\n\n"
               "}}  // namespace quorel\n",
               has_reals ? "#include \"module/reals.h\"\n" : "", rows, model.variables.size());
}

}  // namespace generator
