#include "shape.h"

#include "spelling.h"

#include <stdexcept>

namespace generator {

namespace {

ShapeParameter scalar(const char *code, const char *type, const char *converter,
                      Passing passing = Passing::AsIs)
{
    return {code, type, type, converter, false, false, true, Direction::In, false, "", passing};
}

ShapeParameter pointer(const char *code, const char *converter, bool typed, Passing passing)
{
    return {code, "void *",      "HeldPointer", converter,  typed,  false,
            true, Direction::In, false,         ".address", passing};
}

ShapeParameter mapped(const Crossing &crossing)
{
    TypePtr storage = crossing.type;
    bool array = resolve_array_typedef(storage)->kind == Type::Kind::Array;
    std::string type = array ? storage->name : storage->name + " const &";
    return {"_" + crossing.typemap->name + "_",
            type,
            storage->name,
            "to_" + crossing.typemap->name,
            false,
            true,
            !array,
            Direction::In,
            false};
}

ShapeParameter in_parameter(const Crossing &crossing)
{
    switch (crossing.conversion) {
    case Conversion::Int32:
        return scalar("i", "int32_t", "to_int32", Passing::Cast);
    case Conversion::UInt32:
        return scalar("u", "uint32_t", "to_uint32");
    case Conversion::Int8:
        return scalar("c", "int8_t", "to_int8");
    case Conversion::UInt8:
        return scalar("b", "uint8_t", "to_uint8");
    case Conversion::UInt16:
        return scalar("h", "uint16_t", "to_uint16");
    case Conversion::UInt64:
        return scalar("q", "uint64_t", "to_uint64");
    case Conversion::Int16:
        return scalar("w", "int16_t", "to_int16");
    case Conversion::Int64:
        return scalar("x", "int64_t", "to_int64", Passing::Cast);
    case Conversion::Float:
        return scalar("e", "float", "to_float");
    case Conversion::Double:
        return scalar("d", "double", "to_double");
    case Conversion::LongDouble:
        return scalar("k", "long double", "to_long_double");
    case Conversion::Complex:
        return scalar("j", "_Complex double", "to_complex");
    case Conversion::ComplexFloat:
        return scalar("g", "_Complex float", "to_complex_float");
    case Conversion::Char:
        return scalar("a", "char", "to_char");
    case Conversion::Bool:
        return scalar("t", "bool", "to_bool");
    case Conversion::String:
        return {"s", "char *", "HeldString", "to_string", false, false, true, Direction::In, false, ".text"};
    case Conversion::NullableString:
        return {"z",           "char *", "HeldString", "to_nullable_string", false, false, true,
                Direction::In, false,    ".text"};
    case Conversion::Pointer:
        return pointer("p", "to_pointer", true, Passing::Cast);
    case Conversion::AnyPointer:
        return pointer("v", "to_any_pointer", false, Passing::Cast);
    case Conversion::Value:
        return pointer("r", "to_value", true, Passing::Object);
    case Conversion::Callback:
        return pointer("f", "to_callback", true, Passing::Reinterpret);
    case Conversion::Bytes:
        return {"y",  "HeldBytes const &", "HeldBytes", "to_bytes", false,         false,
                true, Direction::In,       false,       "",         Passing::Bytes};
    case Conversion::Callable:
        return {"l",           "PyObject *", "PyObject *", "to_callable",    false, false, true,
                Direction::In, false,        "",           Passing::Callable};
    case Conversion::Mapped:
        return mapped(crossing);
    case Conversion::Object:
        return {"o", "PyObject *", "PyObject *", "", false, false, false, Direction::In, false};
    case Conversion::Nothing:
        break;
    }
    throw std::runtime_error("no argument of type '" + crossing.text + "' can be bound");
}

}  // namespace

ShapeParameter shape_parameter(const BoundParameter &parameter)
{
    if (parameter.direction == Direction::In) {
        return in_parameter(parameter.crossing);
    }
    if (parameter.direction == Direction::InOut) {
        return {"X",  "int32_t *",      "InOutInt32", "to_in_out_int32", true, false,
                true, Direction::InOut, false,        ".pointer"};
    }
    ShapeParameter output;
    output.direction = Direction::Out;
    const Conversion conversion = parameter.crossing.conversion;
    if (conversion == Conversion::Value) {
        output.code = "P";
        output.variable = "void *";
        output.type = "void **";
        output.appended_record = true;
    } else if (conversion == Conversion::Int32 || conversion == Conversion::UInt32) {
        const std::string name = conversion_name(conversion);
        output.code = conversion == Conversion::Int32 ? "I" : "U";
        output.converter = "from_" + name;
        output.variable = name + "_t";
        output.type = output.variable + " *";
    } else if (conversion == Conversion::Pointer || conversion == Conversion::AnyPointer) {
        output.code = "Op";
        output.converter = "from_pointer";
        output.more_arguments = ", row.result";
        output.variable = "void *";
        output.type = "void **";
    } else if (conversion == Conversion::String) {
        output.code = "Os";
        output.converter = "from_string";
        output.variable = "char *";
        output.type = "char **";
    } else if (is_scalar(conversion)) {
        const ShapeParameter input = in_parameter(parameter.crossing);
        output.code = "O" + input.code;
        output.converter = "from_" + conversion_name(conversion);
        output.variable = input.variable;
        output.type = output.variable + " *";
    } else {
        throw std::runtime_error("no output of type '" + parameter.crossing.text + "' can be appended");
    }
    return output;
}

ShapeResult shape_result(const Crossing &result)
{
    switch (result.conversion) {
    case Conversion::Int32:
    case Conversion::Int8:
    case Conversion::UInt8:
    case Conversion::UInt16:
    case Conversion::Int16:
        return {"i", "int32_t", "from_int32", ""};
    case Conversion::Int64:
        return {"x", "int64_t", "from_int64", ""};
    case Conversion::Float:
    case Conversion::Double:
        return {"d", "double", "from_double", ""};
    case Conversion::LongDouble:
        return {"k", "long double", "from_long_double", ""};
    case Conversion::Complex:
    case Conversion::ComplexFloat:
        return {"j", "_Complex double", "from_complex", ""};
    case Conversion::Char:
        return {"a", "char", "from_char", ""};
    case Conversion::UInt32:
        return {"u", "uint32_t", "from_uint32", ""};
    case Conversion::UInt64:
        return {"q", "uint64_t", "from_uint64", ""};
    case Conversion::Bool:
        return {"t", "bool", "from_bool", ""};
    case Conversion::String:
    case Conversion::NullableString:
        return {"s", "const char *", "from_string", ""};
    case Conversion::Pointer:
    case Conversion::AnyPointer:
    case Conversion::Callback:
        return {"p", "void *", "from_pointer", ", row.result"};
    case Conversion::Value:
        return {"r", "void *", "from_value", ", row.result"};
    case Conversion::Object:
        return {"o", "PyObject *", "", ""};
    case Conversion::Nothing:
        return {"n", "void", "", ""};
    case Conversion::Bytes:
    case Conversion::Callable:
    case Conversion::Mapped:
        break;
    }
    throw std::runtime_error("no result of type '" + result.text + "' can be bound");
}

std::string Shape::name() const
{
    std::string codes;
    for (const ShapeParameter &parameter : parameters) {
        codes += parameter.code;
    }
    return std::string(raises ? "try_" : "call_") + result.code + (codes.empty() ? "" : "_" + codes);
}

std::string Shape::thunk_signature() const
{
    std::string types;
    for (const ShapeParameter &parameter : parameters) {
        types += (types.empty() ? "" : ", ") + parameter.type;
    }
    return result.type + (result.type.back() == '*' ? "" : " ") + "(*thunk)(" + types + ")";
}

Shape shape_of(const BoundFunction &function)
{
    Shape shape{shape_result(function.result), {}, function.raises};
    for (const BoundParameter &parameter : function.parameters) {
        shape.parameters.push_back(shape_parameter(parameter));
    }
    return shape;
}

Shapes shapes_of(const Model &model)
{
    Shapes shapes;
    for (const Family &family : model.families) {
        for (const BoundFunction &function : family.functions) {
            Shape shape = shape_of(function);
            shapes.emplace(shape.name(), shape);
        }
    }
    return shapes;
}

}  // namespace generator
