// The shape of a call: its sequence of argument kinds, pointers erased. All bindings of a shape share one call
// function, and each has a thunk with the shape's C++ signature.
#pragma once

#include "model.h"

#include <map>
#include <string>

namespace generator {

/// How a thunk hands an erased argument on.
enum class Passing {
    AsIs,
    Cast,         ///< static_cast to the declared type
    Reinterpret,  ///< reinterpret_cast to the declared type
    Object,       ///< what it points to
    Bytes,        ///< its address and its size
    Callable,     ///< a function for C, and its datum
};

/// One parameter of a shape. Examples: {int32_t, to_int32, 'i'}, {void *, to_pointer, 'p'}.
struct ShapeParameter {
    std::string code;         ///< in the call function's name
    std::string type;         ///< of the thunk's parameter
    std::string variable;     ///< type of the converted local
    std::string converter;    ///< function of module/convert.h, or of a typemap
    bool typed = false;       ///< whether the converter takes a descriptor number
    bool mapped = false;      ///< a typemap: raises its own errors
    bool by_address = false;  ///< whether the converter takes the local's address
    Direction direction = Direction::In;
    bool appended_record = false;
    std::string passed = {};  ///< the local's member that the thunk gets, such as ".address"; else all of it
    Passing passing = Passing::AsIs;
    std::string more_arguments = {};  ///< of an output's converter
};

ShapeParameter shape_parameter(const BoundParameter &parameter);

struct ShapeResult {
    std::string code;
    std::string type;       ///< what the thunk returns
    std::string converter;  ///< function that makes the Python object; empty for void and Python objects
    std::string more_arguments = {};  ///< of the converter
};

ShapeResult shape_result(const Crossing &result);

struct Shape {
    ShapeResult result;
    std::vector<ShapeParameter> parameters;
    bool raises = false;

    std::string name() const;             ///< "call_i_iip"
    std::string thunk_signature() const;  ///< "int32_t (*thunk)(int32_t, int32_t, void *)"
};

Shape shape_of(const BoundFunction &function);

/// By name.
using Shapes = std::map<std::string, Shape>;

/// Those that the bound functions have.
Shapes shapes_of(const Model &model);

}  // namespace generator
