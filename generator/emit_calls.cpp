#include "emit.h"
#include "output.h"
#include "signature.h"
#include "spelling.h"

#include <algorithm>

namespace generator {

namespace {

std::string thunk_parameter(const ShapeParameter &parameter, const std::string &name)
{
    bool tight = parameter.type.back() == '*' || parameter.type.back() == '&';
    return parameter.type + (tight ? "" : " ") + name;
}

// What the SDK function is given for one erased argument.
std::string typed_argument(const BoundParameter &parameter, const std::string &name)
{
    const Crossing &crossing = parameter.crossing;
    const TypePtr &type = crossing.type;
    if (parameter.direction == Direction::InOut) {
        return name;
    }
    if (parameter.direction == Direction::Out) {
        std::string pointer = spell(Type::pointer_to(type));
        bool record = crossing.conversion == Conversion::Value;
        return record ? "static_cast<" + pointer + ">(*" + name + ")"
                      : "reinterpret_cast<" + pointer + ">(" + name + ")";
    }
    switch (crossing.conversion) {
    case Conversion::Pointer: {
        TypePtr array = resolve_array_typedef(type);
        TypePtr pointer = array->kind == Type::Kind::Array ? Type::pointer_to(array->target) : type;
        return "static_cast<" + spell(Type::without_const(pointer)) + ">(" + name + ")";
    }
    case Conversion::AnyPointer:
    case Conversion::Callback:
        return (crossing.conversion == Conversion::Callback ? "reinterpret_cast<" : "static_cast<")
               + spell(Type::without_const(type)) + ">(" + name + ")";
    case Conversion::Value: {
        TypePtr target = type->kind == Type::Kind::Reference ? type->target : type;
        return "*static_cast<" + spell(Type::pointer_to(target)) + ">(" + name + ")";
    }
    case Conversion::Int32:
        return "static_cast<" + spell(Type::without_const(type)) + ">(" + name + ")";
    case Conversion::UInt32:
    case Conversion::Int8:
    case Conversion::UInt8:
    case Conversion::UInt16:
    case Conversion::UInt64:
    case Conversion::Bool:
    case Conversion::String:
    case Conversion::NullableString:
    case Conversion::Mapped:
    case Conversion::Object:
    case Conversion::Nothing:
        return name;
    }
    return name;
}

std::string thunk(const BoundFunction &function, const Shape &shape, const std::string &name)
{
    std::string parameters, arguments, preparation;
    for (size_t i = 0; i < function.parameters.size(); ++i) {
        const BoundParameter &parameter = function.parameters[i];
        std::string argument = "a" + std::to_string(i), comma = i == 0 ? "" : ", ";
        parameters += comma + thunk_parameter(shape.parameters[i], argument);
        arguments += comma + typed_argument(parameter, argument);
        if (parameter.direction == Direction::Out && parameter.crossing.conversion == Conversion::Value) {
            preparation +=
                "    *" + argument + " = std::calloc(1, sizeof(" + spell(parameter.crossing.type) + "));\n";
        }
    }
    std::string call = function.callee + "(" + arguments + ")";
    if (function.result.conversion == Conversion::Pointer) {
        call = "const_cast<void *>(static_cast<const void *>(" + call + "))";
    }
    std::string statement = (shape.result.type == "void" ? "" : "return ") + call;
    if (function.result.conversion == Conversion::Value) {
        statement = "auto value = " + call + ";\n    return "
                    + (function.raises ? "PyErr_Occurred() ? nullptr : " : "")
                    + (is_class(function.result.type)
                           ? "new (std::nothrow) " + spell(function.result.type) + "(value)"
                           : "copy_of(&value, sizeof value)");
    }
    std::string space = shape.result.type.back() == '*' ? "" : " ";
    std::string body = preparation + "    " + statement + ";\n";
    if (function.throws) {
        body = "    return without_exceptions([&]() -> " + shape.result.type + " {\n" + body + "    });\n";
    }
    return shape.result.type + space + name + "(" + parameters + ")\n{\n" + body + "}\n";
}

// A pointer result's descriptor, or that of an appended record.
std::string result_descriptor(const BoundFunction &function)
{
    for (const BoundParameter &parameter : function.parameters) {
        if (parameter.direction == Direction::Out && parameter.crossing.conversion == Conversion::Value) {
            return parameter.crossing.descriptor;
        }
    }
    return function.result.descriptor;
}

// As C++ declares it: "QuorelApi::findChipMemory(int,int,int)".
std::string overload_prototype(const BoundFunction &function)
{
    std::string types;
    for (const BoundParameter &parameter : function.parameters) {
        types += (types.empty() ? "" : ",") + parameter.crossing.text;
    }
    return function.callee + "(" + types + ")";
}

// The stub of functions of one name: that with the fewest parameters whose arguments would convert is called.
std::string overload_stub(std::vector<const BoundFunction *> functions, const std::string &table,
                          size_t first_row)
{
    const std::string &name = functions.front()->name;
    std::string prototypes, choices;
    std::vector<size_t> order;
    for (size_t i = 0; i < functions.size(); ++i) {
        prototypes += "    " + overload_prototype(*functions[i]) + "\\n";
        order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        return functions[a]->parameters.size() < functions[b]->parameters.size();
    });
    for (size_t i : order) {
        std::string codes, row = table + "[" + std::to_string(first_row + i) + "]";
        for (const BoundParameter &parameter : functions[i]->parameters) {
            codes += shape_parameter(parameter).code;
        }
        choices += "    if (converts(args, " + row + ", \"" + codes + "\"))\n        return "
                   + shape_of(*functions[i]).name() + "(args, " + row + ", thunk_" + name + "_"
                   + std::to_string(i) + ");\n";
    }
    return "PyObject *py_" + name + "(PyObject *, PyObject *args)\n{\n" + choices
           + "    return raise_overloaded(\"" + name + "\", \"" + prototypes + "\");\n}\n\n";
}

}  // namespace

bool is_class(const TypePtr &type)
{
    return type->name.find("::") != std::string::npos;
}

std::string includes(const std::vector<std::string> &headers, const std::vector<std::string> &cxx_headers)
{
    std::string text;
    for (const std::string &header : cxx_headers) {
        text += "#include \"" + header + "\"\n";
    }
    if (headers.empty()) {
        return text;
    }
    text += "extern \"C\" {\n";
    for (const std::string &header : headers) {
        text += "#include <" + header + ">\n";
    }
    return text + "}\n";
}

bool throws(const Family &family)
{
    return std::any_of(family.functions.begin(), family.functions.end(),
                       [](const BoundFunction &function) { return function.throws; });
}

std::string emit_calls(const Family &family, const Numbering &numbering)
{
    // Named after the family, since files of several families are compiled as one.
    std::string table = family.name + "_calls", rows, stubs;
    size_t number = 0;
    for (const std::vector<const BoundFunction *> &overloads : overloads_of(family)) {
        const std::string &name = overloads.front()->name;
        const unsigned method = numbering.method(name);
        for (size_t i = 0; i < overloads.size(); ++i) {
            const BoundFunction &function = *overloads[i];
            Shape shape = shape_of(function);
            rows += "    {" + std::to_string(method) + ", "
                    + std::to_string(numbering.arguments(arguments_of(function))) + ", "
                    + std::to_string(numbering.type(result_descriptor(function))) + "},  // " + name + "\n";
            bool alone = overloads.size() == 1;
            std::string thunk_name = "thunk_" + name + (alone ? "" : "_" + std::to_string(i));
            stubs += thunk(function, shape, thunk_name);
            if (alone) {
                stubs += "PyObject *py_" + name + "(PyObject *, PyObject *args)\n{\n    return "
                         + shape.name() + "(args, " + table + "[" + std::to_string(number) + "], "
                         + thunk_name + ");\n}\n";
            }
        }
        stubs += overloads.size() == 1 ? "\n" : overload_stub(overloads, table, number);
        number += overloads.size();
    }
    std::string text = banner("Functions of the family '" + family.name + "'.",
                              "interface/" + family.name + ".toml and the headers that it names") +
                       includes(family.headers, family.cxx_headers) +
                       "\n" + (throws(family) ? "#include \"module/exceptions.h\"\n" : "") + "#include \"module/overload.h\"\n#include \"module/record.h\"\n#include \"shapes.h\"\n\n#include <cstdlib>\n#include <new>\n\nnamespace quorel {\n\nnamespace {\n\n";
    if (!rows.empty()) {
        text += "constexpr CallRow " + table + "[] = {\n" + rows + "};\n\n" + stubs;
    }
    text += "}  // namespace\n\n";
    return text + emit_group(numbering.group("calls_" + family.name)) + "\n}  // namespace quorel\n";
}

}  // namespace generator
