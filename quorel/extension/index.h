// What the build knows of the SDK beyond what its functions' docstrings say: C types with their sizes, the
// parameters of functions, the members of records, the signatures of callbacks.
//
// All are constant tables without a pointer in them, so that loading them costs nothing; the generator writes
// them (index.cpp). Sizes, offsets and kinds are the compiler's own. What is named is found by hash, what
// belongs to a function by the function's place in the binding's method table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace quorel {

constexpr uint16_t none = 0xffff;

/// What values of a C type look like in Python.
enum class Kind : uint8_t {
    int8,
    uint8,
    int16,
    uint16,
    int32,
    uint32,
    int64,
    uint64,
    boolean,
    character,    ///< a str of one character; an array of them is text
    mac_address,  ///< text
    port_list,    ///< a list of ports
    record,       ///< an instance of the record's class, or a pointer object where it has none
    pointer,      ///< as functions' results are; `target` says to what
    callback,     ///< a pointer to a function; `target` is the signature
    array,        ///< `target` is the element's type
    bit_set,      ///< words with a bit for each number of an enumeration; `target` is its type
    opaque,       ///< bytes that Python does not look into
};

/// A C type.
struct CType {
    uint32_t name;  ///< where its spelling starts in `index_text`
    uint32_t size;  ///< bytes; 0 where the headers leave the type open
    uint16_t
        pointer;    ///< number, in the type table, of the descriptor of pointers to it; `no_type` without one
    uint16_t self;  ///< likewise of the type itself, where it is a pointer
    uint16_t target;  ///< number of a type, record or callback, as `kind` says; else `none`
    uint16_t
        twin;  ///< number of a type of the same name, pointers to which have another descriptor; else `none`
    Kind kind;
};

extern const CType c_types[];
extern const size_t c_type_count;

/// Which way a parameter goes.
enum class Way : uint8_t {
    value,          ///< in; `type` is the parameter's own
    pointer,        ///< C may write to what it points to; `type` is that of the pointee
    constant,       ///< C only reads what it points to; likewise
    text,           ///< char *
    constant_text,  ///< char const *
    mac_address,    ///< text in, and memory that C may write to
    by_value,       ///< passed by value, given to the function as a pointer; `type` is the parameter's own
    callback,       ///< `type` is the parameter's own
    any_pointer,    ///< void *
    in_and_out,     ///< a number that the binding passes by address and adds to the result
    other,          ///< what only the function itself converts
};

struct CParameter {
    uint16_t type;   ///< number of a type, or `none`
    uint16_t bound;  ///< how many elements the declaration of an array gives; else 0
    Way way;
    uint8_t
        count;  ///< place of the parameter that gets how many elements were written, or one of the following
    uint8_t capacity;  ///< place of the number of elements that C may read or write, or `no_capacity`
};
constexpr uint8_t no_capacity = 0xff;
constexpr uint8_t no_count = 0xff;
constexpr uint8_t appended_count = 0xfe;  ///< the output that the binding appends is the count

extern const CParameter c_parameters[];

/// What a function's result says.
enum class Answer : uint8_t {
    nothing,
    status,
    status_first,  ///< a list or tuple: the status, then outputs that the binding adds
    value,
};

/// What becomes of a callback that a function is given.
enum class Keeping : uint8_t { no, registers, unregisters };

/// A function of the SDK that has one signature.
struct CFunction {
    uint16_t parameters;  ///< number of the first
    uint16_t direct;      ///< number in `direct_calls`, or `none`
    uint8_t parameter_count;
    Answer answer;
    Keeping keeping;
    bool takes_values;  ///< whether a parameter goes by value that the function is given as a pointer
};

extern const CFunction c_functions[];
/// By the method's number; `none` for what is no function of the SDK.
extern const uint16_t function_of_method[];
extern const size_t method_count;

/// Calls a function whose output the binding takes for an input. Each argument is the address of the C value,
/// or, for what is passed as the address of an array, that address.
using DirectCall = int32_t (*)(void *const *values);
extern const DirectCall direct_calls[];

struct CRecord {
    uint16_t type;
    uint16_t members;  ///< number of the first
    uint16_t member_count;
};

struct CMember {
    uint32_t name;
    uint32_t offset;
    uint16_t type;
};

extern const CRecord c_records[];
extern const CMember c_members[];

/// A function type that C calls back through.
struct CCallback {
    uint16_t parameters;  ///< number of the first, in `c_parameters`
    uint8_t parameter_count;
    uint16_t result;  ///< number of its type, or `none` without a result
};

extern const CCallback c_callbacks[];
extern const size_t c_callback_count;

/// Where the number of a type of that name may stand, in a ring of `type_bucket_count` places that begins at
/// the name's hash; `none` ends the search.
extern const uint16_t type_buckets[];
extern const size_t type_bucket_count;

/// All texts, each with its NUL.
extern const char index_text[];

template <typename Integer>
constexpr Kind integer_kind()
{
    constexpr Kind kinds[2][4] = {{Kind::int8, Kind::int16, Kind::int32, Kind::int64},
                                  {Kind::uint8, Kind::uint16, Kind::uint32, Kind::uint64}};
    constexpr int power = sizeof(Integer) == 1 ? 0 : sizeof(Integer) == 2 ? 1 : sizeof(Integer) == 4 ? 2 : 3;
    return kinds[std::is_unsigned_v<Integer>][power];
}

template <typename Type>
constexpr Kind natural_kind()
{
    if constexpr (std::is_same_v<Type, bool>) {
        return Kind::boolean;
    } else if constexpr (std::is_same_v<Type, char>) {
        return Kind::character;
    } else if constexpr (std::is_array_v<Type>) {
        return Kind::array;
    } else if constexpr (std::is_enum_v<Type>) {
        return integer_kind<std::underlying_type_t<Type>>();
    } else if constexpr (std::is_integral_v<Type>) {
        return integer_kind<Type>();
    } else if constexpr (std::is_pointer_v<Type>) {
        return std::is_function_v<std::remove_pointer_t<Type>> ? Kind::callback : Kind::pointer;
    } else {
        return Kind::opaque;
    }
}

template <typename Type, typename = void>
constexpr uint32_t size_of = 0;
template <typename Type>
constexpr uint32_t size_of<Type, std::void_t<decltype(sizeof(Type))>> = sizeof(Type);

/// A row of `c_types`, with what the compiler knows of the type.
template <typename Type>
constexpr CType describe(uint32_t name, uint16_t pointer, uint16_t self, uint16_t target)
{
    return {name, size_of<Type>, pointer, self, target, none, natural_kind<Type>()};
}

/// Likewise, where Python sees more in a type than the compiler does.
template <typename Type>
constexpr CType describe(uint32_t name, uint16_t pointer, uint16_t self, uint16_t target, Kind kind)
{
    return {name, size_of<Type>, pointer, self, target, none, kind};
}

constexpr CType with_twin(CType type, uint16_t twin)
{
    type.twin = twin;
    return type;
}

}  // namespace quorel
