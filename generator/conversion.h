// How values cross between Python and C.
#pragma once

#include <string>

namespace generator {

/// How one value crosses the boundary.
enum class Conversion {
    Int32,
    UInt32,
    Int8,
    UInt8,
    UInt16,
    UInt64,
    Int16,
    Int64,
    Float,
    Double,
    LongDouble,    ///< those of module/reals.h from here
    Complex,       ///< of two doubles
    ComplexFloat,  ///< to here
    Char,          ///< a text of one character
    Bool,
    String,          ///< char *; the last scalar
    NullableString,  ///< char *, or None for null
    Pointer,         ///< T *, and arrays as a pointer to their element
    AnyPointer,      ///< void *
    Value,           ///< a record or opaque type by value or reference: a pointer that must not be null
    Callback,        ///< pointer to function
    Bytes,           ///< a pointer and how many bytes are there
    Callable,        ///< pointer to function and its datum, for a Python function
    Mapped,          ///< hand-written: see typemap
    Object,          ///< PyObject *, of helpers
    Nothing,         ///< void, as a result
};

/// Whether the runtime has accessors get_NAME(), set_NAME() and the like that are named after it.
bool is_scalar(Conversion conversion);

/// Whether module/reals.h has these.
bool is_of_reals(Conversion conversion);

/// The word for it in reports; of a scalar also in the runtime's names: "int32" in to_int32(), get_int32() and so on.
std::string conversion_name(Conversion conversion);

}  // namespace generator
