#include "emit.h"
#include "output.h"

namespace generator {

namespace {

std::string signature(const Shape &shape)
{
    return "NewReference " + shape.name() + "(PyObject *args, const CallRow &row, " + shape.thunk_signature()
           + ")";
}

std::string argument_conversion(const ShapeParameter &parameter, size_t position, size_t parameter_number)
{
    std::string item = "PyTuple_GET_ITEM(args, " + std::to_string(position) + ")";
    std::string local = "a" + std::to_string(parameter_number);
    std::string target = (parameter.by_address ? "&" : "") + local;
    std::string space = parameter.variable.back() == '*' ? "" : " ";
    std::string text = "    " + parameter.variable + space + local + ";\n";
    if (parameter.converter.empty()) {
        return "    " + parameter.variable + local + " = " + item + ";\n";
    }
    if (parameter.mapped) {
        return text + "    if (!" + parameter.converter + "(" + item + ", " + target
               + "))\n        return nullptr;\n";
    }
    std::string type = parameter.typed ? ", type_of(row, " + std::to_string(position) + ")" : "";
    return text + "    if ((status = " + parameter.converter + "(" + item + type + ", " + target
           + ")) != Status::ok)\n        return raise_argument(row, " + std::to_string(position)
           + ", status);\n";
}

std::string definition(const Shape &shape)
{
    size_t inputs = 0;
    bool fallible = false;
    std::string conversions, outputs, call, appended;
    for (size_t i = 0; i < shape.parameters.size(); ++i) {
        const ShapeParameter &parameter = shape.parameters[i];
        std::string local = "a" + std::to_string(i);
        call += (i == 0 ? "" : ", ") + std::string(parameter.direction == Direction::Out ? "&" : "") + local
                + parameter.passed;
        if (parameter.direction == Direction::InOut) {
            appended += "    result = append_output(result, from_in_out_int32(" + local + ", type_of(row, "
                        + std::to_string(inputs) + ")));\n";
        }
        if (parameter.direction != Direction::Out) {
            fallible = fallible || !(parameter.mapped || parameter.converter.empty());
            conversions += argument_conversion(parameter, inputs++, i);
        } else if (parameter.appended_record) {
            outputs += "    void *" + local + " = nullptr;\n";
            appended += "    result = append_output(result, from_value(" + local + ", row.result));\n";
        } else {
            outputs += "    " + parameter.variable + " " + local + " = 0;\n";
            appended += "    result = append_output(result, " + parameter.converter + "(" + local + "));\n";
        }
    }
    std::string text = signature(shape) + "\n{\n    if (PyTuple_GET_SIZE(args) != " + std::to_string(inputs)
                       + ")\n        return raise_arity(row.method, args, " + std::to_string(inputs) + ");\n";
    if (fallible) {
        text += "    Status status;\n";
    }
    text += conversions + outputs;
    call = "thunk(" + call + ")";
    std::string check = shape.raises ? "    if (PyErr_Occurred())\n        return nullptr;\n" : "";
    if (shape.result.type == "void") {
        return text + "    " + call + ";\n" + check + "    return new_none();\n}\n\n";
    }
    if (shape.raises) {
        text += "    auto value = " + call + ";\n" + check;
        call = "value";
    }
    if (!shape.result.converter.empty()) {
        call = shape.result.converter + "(" + call + shape.result.more_arguments + ")";
    }
    if (appended.empty()) {
        return text + "    return " + call + ";\n}\n\n";
    }
    return text + "    NewReference result = " + call + ";\n" + appended + "    return result;\n}\n\n";
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
        "// n nothing, o Python object; I, U, P outputs that join the result, X in and out; else the name of "
        "a typemap.\n"
        "#pragma once\n\n#include \"typemaps/callback.h\"\n";
    for (const FamilyInterface &family : model.interface) {
        for (const auto &entry : family.typemaps) {
            text += "#include \"" + entry.second.header + "\"\n";
        }
    }
    text += "\nnamespace quorel {\n\n";
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
