// Conversions between Python objects and C values.
//
// Each to_<kind> takes a borrowed object and writes the C value only on success; nothing is converted twice,
// since a conversion may run a user's code. The common case is inline, all else is one call away. Ranges and
// result types are those of 32-bit int, long and unsigned types on every host: on a 64-bit one a Python int
// can lie outside of them, and is treated as the long it would be on the target.
#pragma once

#include "pointer_object.h"

namespace [[gnu::visibility("hidden")]] quorel {

// The parts of a conversion that are not inline.
Status to_int32_slowly(PyObject *object, int32_t *value);
Status to_uint32_slowly(PyObject *object, uint32_t *value);

/// int, long and their typedefs, every enumeration: a Python int (bool included) or long in
/// -2147483648..2147483647. Out of range: overflow; other types: type.
inline Status to_int32(PyObject *object, int32_t *value)
{
    if (__builtin_expect(PyInt_CheckExact(object), true)) {
        long number = PyInt_AS_LONG(object);
        if (sizeof(long) == sizeof(int32_t)
            || __builtin_expect(number == static_cast<int32_t>(number), true)) {
            *value = static_cast<int32_t>(number);
            return Status::ok;
        }
        return Status::overflow;
    }
    return to_int32_slowly(object, value);
}

/// unsigned int, unsigned long and their typedefs: 0..4294967295.
inline Status to_uint32(PyObject *object, uint32_t *value)
{
    if (__builtin_expect(PyInt_CheckExact(object), true)) {
        long number = PyInt_AS_LONG(object);
        if (number < 0 || static_cast<unsigned long>(number) > UINT32_MAX) {
            return Status::overflow;
        }
        *value = static_cast<uint32_t>(number);
        return Status::ok;
    }
    return to_uint32_slowly(object, value);
}

/// signed char, unsigned char, short and unsigned short: the ranges of the types.
Status to_int8(PyObject *object, int8_t *value);
Status to_uint8(PyObject *object, uint8_t *value);
Status to_uint16(PyObject *object, uint16_t *value);
Status to_int16(PyObject *object, int16_t *value);
/// unsigned long long, and long where it has 64 bits: 0..2^64-1, and -2^63..2^63-1 with a sign.
Status to_uint64(PyObject *object, uint64_t *value);
Status to_int64(PyObject *object, int64_t *value);
/// A float, an int or a long. One that becomes infinite on the way: overflow.
Status to_double(PyObject *object, double *value);
Status to_float(PyObject *object, float *value);
/// char: a str of one character, or an int that a char can hold.
Status to_char(PyObject *object, char *value);
/// bool: only True and False themselves; any other object is a type failure.
Status to_bool(PyObject *object, bool *value);
/// char *: a str (its own buffer, borrowed, which C must not write to) or a `char *` pointer object.
struct HeldString {
    char *text = nullptr;
    Owned holder;  ///< of what a pointer object points to
};
Status to_string(PyObject *object, HeldString *value);
/// The same where None is a null pointer.
inline Status to_nullable_string(PyObject *object, HeldString *value)
{
    return object == Py_None ? Status::ok : to_string(object, value);
}

/// What a str, a bytearray, or another object with a buffer has in memory, where it stays until this goes. A unicode
/// has characters and no bytes: a type failure. More than 2147483647 bytes: overflow.
struct HeldBytes {
    const void *address = nullptr;
    int32_t size = 0;
    Owned holder;           ///< of a str
    Py_buffer buffer = {};  ///< of others; its obj is null if there is none

    HeldBytes() = default;
    ~HeldBytes();
    HeldBytes(const HeldBytes &) = delete;
    HeldBytes &operator=(const HeldBytes &) = delete;
};
Status to_bytes(PyObject *object, HeldBytes *value);

/// Whether a pointer to `given` is one to `wanted` as it is; says no where that takes a search.
inline bool passes_unchanged(const swig_type_info *given, const swig_type_info *wanted)
{
    // find_cast() has put the cast that was used last at the head of its list, which has at least the type itself.
    return given == wanted || (wanted->cast->type == given && wanted->cast->converter == same_pointer);
}

/// T *: None, a pointer object of type T or of one that casts to T, or an object whose `this` is one.
inline Status to_pointer(PyObject *object, uint16_t type, HeldPointer *pointer)
{
    swig_type_info *wanted = types[type];
    SwigPyObject *found = likely_pointer_object(object);
    if (__builtin_expect(found && passes_unchanged(found->ty, wanted), true)) {
        pointer->address = found->ptr;
        pointer->holder.hold(reinterpret_cast<PyObject *>(found));
        return Status::ok;
    }
    return convert_pointer(object, wanted, pointer);
}

/// void *: any pointer object.
inline Status to_any_pointer(PyObject *object, HeldPointer *pointer)
{
    return convert_pointer(object, nullptr, pointer);
}

/// A value or reference of a record type: as T *, and null is a null reference failure.
inline Status to_value(PyObject *object, uint16_t type, HeldPointer *pointer)
{
    Status status = to_pointer(object, type, pointer);
    return status == Status::ok && !pointer->address ? Status::null_reference : status;
}

/// An int that is read and written: a number, kept here, or whatever an int pointer object points to.
struct InOutInt32 {
    int32_t number;
    int32_t *pointer;  ///< &number, or the caller's
    Owned holder;      ///< of what the caller's points to
    PyObject *given;   ///< the caller's pointer object, borrowed; null unless it is a bare one
};
Status to_in_out_int32(PyObject *object, uint16_t type, InOutInt32 *value);

// Results.

inline NewReference from_int32(int32_t value)
{
    return PyInt_FromLong(value);
}

inline NewReference from_int8(int8_t value)
{
    return PyInt_FromLong(value);
}

inline NewReference from_uint8(uint8_t value)
{
    return PyInt_FromLong(value);
}

inline NewReference from_uint16(uint16_t value)
{
    return PyInt_FromLong(value);
}

/// An int up to 2147483647, a long above.
inline NewReference from_uint32(uint32_t value)
{
    if (__builtin_expect(value <= INT32_MAX, true)) {
        return PyInt_FromLong(static_cast<long>(value));
    }
    return PyLong_FromUnsignedLong(value);
}

inline NewReference from_uint64(uint64_t value)
{
    if (__builtin_expect(value <= INT32_MAX, true)) {
        return PyInt_FromLong(static_cast<long>(value));
    }
    return PyLong_FromUnsignedLongLong(value);
}

inline NewReference from_int16(int16_t value)
{
    return PyInt_FromLong(value);
}

/// An int in -2147483648..2147483647, else a long.
inline NewReference from_int64(int64_t value)
{
    return value == static_cast<int32_t>(value) ? PyInt_FromLong(static_cast<long>(value))
                                                : PyLong_FromLongLong(value);
}

/// An integer of whatever width.
template <typename Integer>
NewReference from_wide(Integer value)
{
    return value < 0 ? from_int64(static_cast<int64_t>(value)) : from_uint64(static_cast<uint64_t>(value));
}

inline NewReference from_double(double value)
{
    return PyFloat_FromDouble(value);
}

inline NewReference from_float(float value)
{
    return PyFloat_FromDouble(value);
}

/// A str of one character.
inline NewReference from_char(char value)
{
    return PyString_FromStringAndSize(&value, 1);
}

inline NewReference from_bool(bool value)
{
    return PyBool_FromLong(value);
}

/// A new str with a copy of the text, or None for null.
NewReference from_string(const char *text);

/// None for null, else as wrap_pointer() says.
inline NewReference from_pointer(void *pointer, uint16_t type, Ownership ownership = Ownership::borrowed)
{
    return wrap_pointer(pointer, types[type], ownership);
}

/// The number after the call; where the caller gave a bare pointer object that very object, and for another pointer
/// one that owns nothing.
NewReference from_in_out_int32(const InOutInt32 &value, uint16_t type);

/// A value of a class or record that the call made: an object that owns it, or null with an exception if there was
/// no memory for it.
inline NewReference from_value(void *value, uint16_t type)
{
    return value ? from_pointer(value, type, Ownership::owned) : PyErr_NoMemory();
}

/// Adds an output value to a result: [result, output], or `result` longer by one if it is a list already, or
/// `output` alone if the result is None. Takes over both references; a null among them, which is a failure, gives
/// null.
NewReference append_output(NewReference result, NewReference output);

}  // namespace quorel
