#include "emit.h"
#include "output.h"

#include <fmt/format.h>

#include <algorithm>

namespace generator {

namespace {

bool has_reals(const Model &model)
{
    auto is_real = [](const Crossing &crossing) { return is_of_reals(crossing.conversion); };
    for (const Family &family : model.families) {
        for (const BoundFunction &function : family.functions) {
            if (is_real(function.result)
                || std::any_of(
                    function.parameters.begin(), function.parameters.end(),
                    [&](const BoundParameter &parameter) { return is_real(parameter.crossing); })) {
                return true;
            }
        }
        for (const BoundRecord &record : family.records) {
            if (std::any_of(record.members.begin(), record.members.end(),
                            [&](const BoundMember &member) { return is_real(member.crossing); })) {
                return true;
            }
        }
        for (const BoundPointerClass &bound : family.pointer_classes) {
            if (is_real(bound.element)) {
                return true;
            }
        }
    }
    return false;
}

std::string signature(const Shape &shape)
{
    return fmt::format("NewReference {}(const CallRow &row, PyObject *args, {})", shape.name(),
                       shape.thunk_signature());
}

std::string argument_conversion(const ShapeParameter &parameter, size_t position, size_t parameter_number)
{
    const std::string item = fmt::format("PyTuple_GET_ITEM(args, {})", position);
    const std::string local = fmt::format("a{}", parameter_number);
    if (parameter.converter.empty()) {
        return fmt::format("    {}{} = {};\n", parameter.variable, local, item);
    }
    const char *space = parameter.variable.back() == '*' ? "" : " ";
    const std::string declaration = fmt::format("    {}{}{};\n", parameter.variable, space, local);
    const std::string target = (parameter.by_address ? "&" : "") + local;
    if (parameter.mapped) {
        return declaration
               + fmt::format(
                   "    if (!{}({}, {}))\n"
                   "        return nullptr;\n",
                   parameter.converter, item, target);
    }
    const std::string type = parameter.typed ? fmt::format(", type_of(row, {})", position) : "";
    return declaration
           + fmt::format(
               "    if ((status = {}({}{}, {})) != Status::ok)\n"
               "        return raise_argument(row, {}, status);\n",
               parameter.converter, item, type, target, position);
}

std::string definition(const Shape &shape)
{
    size_t inputs = 0;
    bool fallible = false;
    std::vector<std::string> arguments;
    std::string conversions, outputs, appended;
    for (size_t i = 0; i < shape.parameters.size(); ++i) {
        const ShapeParameter &parameter = shape.parameters[i];
        const std::string local = fmt::format("a{}", i);
        const char *address = parameter.direction == Direction::Out ? "&" : "";
        arguments.push_back(address + local + parameter.passed);
        if (parameter.direction == Direction::InOut) {
            appended +=
                fmt::format("    result = append_output(result, from_in_out_int32({}, type_of(row, {})));\n",
                            local, inputs);
        }
        if (parameter.direction != Direction::Out) {
            fallible = fallible || !(parameter.mapped || parameter.converter.empty());
            conversions += argument_conversion(parameter, inputs++, i);
        } else if (parameter.appended_record) {
            outputs += fmt::format("    void *{} = nullptr;\n", local);
            appended +=
                fmt::format("    result = append_output(result, from_value({}, row.result));\n", local);
        } else {
            outputs += fmt::format("    {} {} = 0;\n", parameter.variable, local);
            appended += fmt::format("    result = append_output(result, {}({}{}));\n", parameter.converter,
                                    local, parameter.more_arguments);
        }
    }
    std::string text = fmt::format(
        "{}\n{{\n"
        "    if (PyTuple_GET_SIZE(args) != {inputs})\n"
        "        return raise_arity(row.method, args, {inputs});\n"
        "{}{}{}",
        signature(shape), fallible ? "    Status status;\n" : "", conversions, outputs,
        fmt::arg("inputs", inputs));
    std::string call = fmt::format("thunk({})", fmt::join(arguments, ", "));
    const std::string check = shape.raises ? "    if (PyErr_Occurred())\n        return nullptr;\n" : "";
    if (shape.result.type == "void") {
        text += fmt::format("    {};\n{}", call, check);
        return text
               + (appended.empty()
                      ? "    return new_none();\n}\n\n"
                      : fmt::format("    NewReference result = new_none();\n{}    return result;\n}}\n\n",
                                    appended));
    }
    if (shape.raises) {
        text += fmt::format("    auto value = {};\n{}", call, check);
        call = "value";
    }
    if (!shape.result.converter.empty()) {
        call = fmt::format("{}({}{})", shape.result.converter, call, shape.result.more_arguments);
    }
    if (appended.empty()) {
        return text + fmt::format("    return {};\n}}\n\n", call);
    }
    return text + fmt::format("    NewReference result = {};\n{}    return result;\n}}\n\n", call, appended);
}

}  // namespace

std::string emit_shape_declarations(const Model &model, const Shapes &shapes)
{
    std::string text = banner("One call function per sequence of argument kinds.", "the bound functions");
    text +=
        "// Codes, the result first: i int, u unsigned int, c signed char, b unsigned char, h unsigned "
        "short,\n"
        "// q unsigned long long, t bool, s char *, z char * or null, p pointer, v void *, r value or "
        "reference, f callback,\n"
        "// n nothing, o Python object, y bytes, l Python function; I, U, P outputs that join the result, X "
        "in and out; else the name of "
        "a typemap.\n"
        "#pragma once\n\n#include \"module/callable.h\"\n#include \"typemaps/callback.h\"\n";
    for (const FamilyInterface &family : model.interface) {
        for (const auto &entry : family.typemaps) {
            text += "#include \"" + entry.second.header + "\"\n";
        }
    }
    if (has_reals(model)) {
        text += "#include \"module/reals.h\"\n";
    }
    text += "\nnamespace [[gnu::visibility(\"hidden\")]] quorel {\n\n";
    for (const auto &entry : shapes) {
        text += signature(entry.second) + ";\n";
    }
    return text + "\n}  // namespace quorel\n";
}

std::string emit_shape_definitions(const Shapes &shapes)
{
    std::string text = banner("One call function per sequence of argument kinds.", "the bound functions")
                       + "#include \"shapes.h\"\n\nnamespace quorel {\n\n";
    for (const auto &entry : shapes) {
        text += definition(entry.second);
    }
    return text + "}  // namespace quorel\n";
}

}  // namespace generator
