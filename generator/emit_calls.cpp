#include "argument_type.h"
#include "cxx_words.h"
#include "emit.h"
#include "output.h"
#include "signature.h"
#include "spelling.h"

#include <fmt/format.h>

#include <algorithm>

namespace generator {

namespace {

bool pointee_is_volatile(const TypePtr &type)
{
    const TypePtr pointed = target_of(type);
    return pointed && resolved(pointed)->is_volatile;
}

std::string thunk_parameter(const ShapeParameter &parameter, const std::string &name)
{
    bool tight = parameter.type.back() == '*' || parameter.type.back() == '&';
    return parameter.type + (tight ? "" : " ") + name;
}

// What the SDK function is given for one erased argument.
std::string typed_argument(const BoundParameter &parameter, Passing passing, const std::string &name,
                           const CxxNames &names)
{
    const Crossing &crossing = parameter.crossing;
    const TypePtr type = in_cxx(crossing.type, names);
    if (parameter.direction == Direction::InOut) {
        return name;
    }
    if (parameter.direction == Direction::Out) {
        const std::string pointer = spell(Type::pointer_to(type));
        return crossing.conversion == Conversion::Value ? fmt::format("static_cast<{}>(*{})", pointer, name)
               : crossing.conversion == Conversion::String || crossing.conversion == Conversion::Pointer
                   // Whatever of it is constant.
                   ? fmt::format("static_cast<{}>(static_cast<void *>({}))", pointer, name)
                   : fmt::format("reinterpret_cast<{}>({})", pointer, name);
    }
    switch (passing) {
    case Passing::AsIs:
        break;
    case Passing::Cast: {
        const TypePtr array = resolve_array_typedef(type);
        const TypePtr target = array->kind == Type::Kind::Array ? Type::pointer_to(array->target) : type;
        return fmt::format("static_cast<{}>({})", spell(Type::without_const(target)), name);
    }
    case Passing::Reinterpret:
        return fmt::format("reinterpret_cast<{}>({})", spell(Type::without_const(type)), name);
    case Passing::Object: {
        const TypePtr target = type->kind == Type::Kind::Reference ? type->target : type;
        return fmt::format("*static_cast<{}>({})", spell(Type::pointer_to(target)), name);
    }
    case Passing::Bytes:
        return fmt::format("static_cast<{}>({}.address), static_cast<{}>({}.size)",
                           spell(Type::without_const(type)), name,
                           spell(Type::without_const(in_cxx(parameter.second, names))), name);
    case Passing::Callable:
        return fmt::format("{0}_kept.function<{1}{2}>(), {0}_kept.datum()", name,
                           spell(Type::without_const(type)),
                           parameter.datum_is_first ? ", Datum::first" : "");
    }
    return name;
}

std::string thunk(const BoundFunction &function, const Shape &shape, const std::string &name,
                  const CxxNames &names)
{
    std::vector<std::string> parameters, arguments;
    std::string preparation;
    for (size_t i = 0; i < function.parameters.size(); ++i) {
        const BoundParameter &parameter = function.parameters[i];
        const std::string argument = fmt::format("a{}", i);
        parameters.push_back(thunk_parameter(shape.parameters[i], argument));
        arguments.push_back(typed_argument(parameter, shape.parameters[i].passing, argument, names));
        if (parameter.direction == Direction::Out && parameter.crossing.conversion == Conversion::Value) {
            preparation += fmt::format("    *{} = std::calloc(1, sizeof({}));\n", argument,
                                       spell(in_cxx(parameter.crossing.type, names)));
        }
        if (parameter.crossing.conversion == Conversion::Callable) {
            preparation += fmt::format(
                "    static PyObject *{0}_now = nullptr;\n    KeptCallable {0}_kept({0}_now, {0});\n",
                argument);
        }
    }
    std::string call = fmt::format("{}({})", name_in_cxx(function.callee), fmt::join(arguments, ", "));
    for (size_t i = 0; i < arguments.size(); ++i) {
        const bool keeps = function.parameters[i].crossing.conversion == Conversion::Callable;
        if (keeps && function.result.conversion == Conversion::Int32) {
            call = fmt::format("a{}_kept.taken({})", i, call);
        }
    }
    if (function.result.conversion == Conversion::Pointer) {
        const bool is_volatile = pointee_is_volatile(function.result.type);
        call = fmt::format("const_cast<void *>(static_cast<const {}void *>({}))",
                           is_volatile ? "volatile " : "", call);
    } else if (function.result.conversion == Conversion::AnyPointer
               && pointee(function.result.type)->is_const) {
        call = fmt::format("const_cast<void *>({})", call);
    } else if (function.result.conversion == Conversion::Callback) {
        call = fmt::format("reinterpret_cast<void *>({})", call);
    }
    std::string statement = (shape.result.type == "void" ? "" : "return ") + call;
    if (function.result.conversion == Conversion::Value) {
        const std::string copy = is_class(function.result.type) ? fmt::format("new (std::nothrow) {}(value)",
                                                                              spell(function.result.type))
                                                                : "copy_of(&value, sizeof value)";
        statement = fmt::format("auto value = {};\n    return {}{}", call,
                                function.raises ? "PyErr_Occurred() ? nullptr : " : "", copy);
    }
    std::string body = fmt::format("{}    {};\n", preparation, statement);
    if (function.throws) {
        body = fmt::format("    return without_exceptions([&]() -> {} {{\n{}    }});\n", shape.result.type,
                           body);
    }
    const char *space = shape.result.type.back() == '*' ? "" : " ";
    return fmt::format("{}{}{}({})\n{{\n{}}}\n", shape.result.type, space, name, fmt::join(parameters, ", "),
                       body);
}

// A pointer result's descriptor, or that of an appended record.
std::string result_descriptor(const BoundFunction &function)
{
    for (const BoundParameter &parameter : function.parameters) {
        if (parameter.direction == Direction::Out && !parameter.crossing.descriptor.empty()
            && parameter.crossing.conversion != Conversion::String) {
            return parameter.crossing.descriptor;
        }
    }
    return function.result.descriptor;
}

// As C++ declares it: "QuorelApi::findChipMemory(int,int,int)".
std::string overload_prototype(const BoundFunction &function)
{
    std::vector<std::string> types;
    for (const BoundParameter &parameter : function.parameters) {
        types.push_back(parameter.crossing.text);
    }
    return fmt::format("{}({})", function.callee, fmt::join(types, ","));
}

// The stub of functions of one name: that with the fewest parameters whose arguments would convert is called.
std::string overload_stub(std::vector<const BoundFunction *> functions, const std::string &table,
                          size_t first_row)
{
    const std::string &name = functions.front()->name;
    std::string prototypes, choices;
    std::vector<size_t> order;
    for (size_t i = 0; i < functions.size(); ++i) {
        prototypes += fmt::format("    {}\\n", overload_prototype(*functions[i]));
        order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        return functions[a]->parameters.size() < functions[b]->parameters.size();
    });
    for (size_t i : order) {
        std::string codes;
        for (const BoundParameter &parameter : functions[i]->parameters) {
            codes += shape_parameter(parameter).code;
        }
        choices += fmt::format(
            "    if (converts({row}, args, \"{}\"))\n"
            "        return {}({row}, args, thunk_{}_{});\n",
            codes, shape_of(*functions[i]).name(), name, i,
            fmt::arg("row", fmt::format("{}[{}]", table, first_row + i)));
    }
    return fmt::format(
        "PyObject *py_{name}(PyObject *, PyObject *args)\n{{\n{}"
        "    return raise_overloaded(\"{name}\", \"{}\");\n}}\n\n",
        choices, prototypes, fmt::arg("name", name));
}

}  // namespace

bool is_class(const TypePtr &type)
{
    return type->name.find("::") != std::string::npos;
}

std::string includes(const std::vector<std::string> &headers, const std::vector<std::string> &cxx_headers)
{
    std::string text;
    const bool have_one = !headers.empty() && headers.front() == common_header;
    if (have_one) {
        text += fmt::format("#include \"{}\"\n", common_header);
    }
    for (const std::string &header : cxx_headers) {
        text += fmt::format("#include \"{}\"\n", header);
    }
    if (headers.empty() || have_one) {
        return text;
    }
    text += "extern \"C\" {\n";
    for (const std::string &header : headers) {
        text += fmt::format("#include <{}>\n", header);
    }
    return text + "}\n";
}

bool throws(const Family &family)
{
    return std::any_of(family.functions.begin(), family.functions.end(),
                       [](const BoundFunction &function) { return function.throws; });
}

std::string emit_calls(const Family &family, const Numbering &numbering, const CxxNames &names)
{
    // Named after the family, since files of several families are compiled as one.
    std::string table = family.name + "_calls", rows, stubs;
    size_t number = 0;
    for (const std::vector<const BoundFunction *> &overloads : overloads_of(family)) {
        const std::string &name = overloads.front()->name;
        const unsigned method = numbering.method(name);
        for (size_t i = 0; i < overloads.size(); ++i) {
            const BoundFunction &function = *overloads[i];
            const Shape shape = shape_of(function);
            rows += fmt::format("    {{{}, {}, {}}},  // {}\n", method,
                                numbering.arguments(arguments_of(function)),
                                numbering.type(result_descriptor(function)), name);
            const bool alone = overloads.size() == 1;
            const std::string thunk_name =
                alone ? fmt::format("thunk_{}", name) : fmt::format("thunk_{}_{}", name, i);
            stubs += thunk(function, shape, thunk_name, names);
            if (alone) {
                stubs += fmt::format(
                    "PyObject *py_{}(PyObject *, PyObject *args)\n{{\n"
                    "    return {}({}[{}], args, {});\n}}\n",
                    name, shape.name(), table, number, thunk_name);
            }
        }
        stubs += overloads.size() == 1 ? "\n" : overload_stub(overloads, table, number);
        number += overloads.size();
    }
    std::string text = banner(fmt::format("Functions of the family '{}'.", family.name),
                              fmt::format("interface/{}.toml and the headers that it names", family.name))
                       + includes(family.included, family.cxx_headers)
                       + (throws(family) ? "\n#include \"module/exceptions.h\"" : "")
                       + "\n#include \"module/overload.h\"\n"
                         "#include \"module/record.h\"\n"
                         "#include \"shapes.h\"\n\n"
                         "#include <cstdlib>\n"
                         "#include <new>\n\n"
                         "namespace quorel {\n\nnamespace {\n\n";
    if (!rows.empty()) {
        text += fmt::format("constexpr CallRow {}[] = {{\n{}}};\n\n{}", table, rows, stubs);
    }
    text += "}  // namespace\n\n";
    return text + emit_group(numbering.group("calls_" + family.name)) + "\n}  // namespace quorel\n";
}

}  // namespace generator
