#include "conversion.h"

namespace generator {

bool is_scalar(Conversion conversion)
{
    return conversion <= Conversion::String;
}

bool is_of_reals(Conversion conversion)
{
    return conversion >= Conversion::LongDouble && conversion <= Conversion::ComplexFloat;
}

std::string conversion_name(Conversion conversion)
{
    switch (conversion) {
    case Conversion::Int32:
        return "int32";
    case Conversion::UInt32:
        return "uint32";
    case Conversion::Int8:
        return "int8";
    case Conversion::UInt8:
        return "uint8";
    case Conversion::UInt16:
        return "uint16";
    case Conversion::UInt64:
        return "uint64";
    case Conversion::Int16:
        return "int16";
    case Conversion::Int64:
        return "int64";
    case Conversion::Float:
        return "float";
    case Conversion::Double:
        return "double";
    case Conversion::LongDouble:
        return "long_double";
    case Conversion::Complex:
        return "complex";
    case Conversion::ComplexFloat:
        return "complex_float";
    case Conversion::Char:
        return "char";
    case Conversion::Bool:
        return "bool";
    case Conversion::String:
        return "string";
    case Conversion::NullableString:
        return "nullable_string";
    case Conversion::Pointer:
        return "pointer";
    case Conversion::AnyPointer:
        return "any_pointer";
    case Conversion::Value:
        return "value";
    case Conversion::Callback:
        return "callback";
    case Conversion::Bytes:
        return "bytes";
    case Conversion::Callable:
        return "callable";
    case Conversion::Mapped:
        return "mapped";
    case Conversion::Object:
        return "object";
    case Conversion::Nothing:
        return "nothing";
    }
    return "";
}

}  // namespace generator
