// The tables that the generator writes and this runtime reads: everything that differs from one bound
// function, record or constant to the next, as constant data.
//
// The rows of functions, records and types hold no pointers, only small numbers: they need no relocation when
// the module is loaded, and stay in pages that processes share. A row refers to
//   a method      by its number in the method table,
//   a C type      by its number in the type table (sorted by mangled name), and
//   an argument   by its number in `arguments`, which joins a type with the spelling that messages quote.
#pragma once

#include <Python.h>

#include <cstddef>
#include <cstdint>

namespace [[gnu::visibility("hidden")]] quorel {

/// One parameter, `self` included: what it is converted to and how messages spell it.
struct Argument {
    uint16_t type;  ///< number of the pointer's descriptor; 0 for arguments that are not pointers
    uint16_t text;  ///< number of the spelling in `argument_text`
};

/// One SDK function or helper.
struct CallRow {
    uint16_t method;
    uint16_t arguments;  ///< number of the first argument; the others follow
    uint16_t result;     ///< descriptor number of a pointer result or appended record
};

/// One member of a record.
struct MemberRow {
    uint16_t getter;  ///< method number of the read accessor; the write accessor, if any, is the one before
    uint16_t self;    ///< argument
    uint16_t value;   ///< argument: the member's type; for arrays the descriptor is the element pointer's
    uint16_t name_offset;  ///< where the member's own name starts in the accessor's name
    uint32_t offset;       ///< bytes from the start of the record
    uint32_t size;         ///< bytes
};

/// One record: its constructor, destructor and registration are three methods in a row.
struct RecordRow {
    uint16_t constructor;  ///< method number; the destructor is the next, the registration the one after
    uint16_t self;         ///< argument
    uint32_t size;         ///< bytes
};

/// One single-value pointer class. Its methods follow each other: constructor, destructor, assign, value, cast,
/// frompointer, registration; assign and value are the accessors of a MemberRow.
struct PointerClassRow {
    uint16_t constructor;  ///< method number
    uint16_t self;         ///< argument, such as "intp *"
    uint16_t element;      ///< argument: the pointer that cast() gives, such as "int *"
    uint32_t size;         ///< bytes of the element
};

/// One array family. Its methods follow each other: constructor, destructor, getitem, setitem.
struct ArrayRow {
    uint16_t constructor;  ///< method number
    uint16_t arguments;    ///< number of the first argument of setitem: the array, the index and the value
    uint32_t size;         ///< bytes of one element
};

/// The methods of one generated file.
struct MethodGroup {
    void (*enter)(
        PyMethodDef *rows);  ///< gives each row its function; as addresses they would need relocations
    const char
        *docs;  ///< one text per function, each with its NUL: the docstring, or a bare name without one
    size_t count;
};

/// Whether these methods follow each other: generated code asserts what the comments on rows promise.
template <size_t count>
constexpr bool follow(const PyCFunction *methods, const PyCFunction (&expected)[count])
{
    for (size_t i = 0; i < count; ++i) {
        if (methods[i] != expected[i]) {
            return false;
        }
    }
    return true;
}

/// A type descriptor as written by the generator; `type_names` holds "mangled\0spellings\0" in this order.
struct TypeRow {
    uint16_t cast_from;  ///< number of a type that converts to this one unchanged, or no_type
};
constexpr uint16_t no_type = 0xffff;

extern const char module_name[];
extern const char proxy_type_name[];
extern const char member_descriptor_type_name[];

extern const Argument arguments[];
extern const char argument_text[];            ///< all spellings, each with its NUL
extern const uint32_t argument_text_start[];  ///< where each begins

extern const MethodGroup method_groups[];
extern const size_t method_group_count;
extern const size_t method_count;  ///< over all groups

extern const TypeRow type_rows[];
extern const char type_names[];
extern const size_t type_count;

/// A C++ class whose values own something: how one that operator new made is deleted.
struct DestructorRow {
    uint16_t type;  ///< number of its pointer's descriptor
    void (*destroy)(void *value);
};

extern const DestructorRow destructors[];
extern const size_t destructor_count;

extern const char constant_names[];  ///< in header order, each with its NUL
extern const int32_t constant_values[];
extern const size_t constant_count;

/// A constant that is no integer of 32 bits.
struct ValueRow {
    const char *name;
    PyObject *(*make)();  ///< a new reference, or null with an exception
};

extern const ValueRow value_rows[];  ///< in header order
extern const size_t value_count;

inline const char *text_of(uint16_t argument)
{
    return argument_text + argument_text_start[arguments[argument].text];
}

}  // namespace quorel
