#include "convert.h"

#include <cmath>
#include <cstring>

namespace quorel {

namespace {

// The value of an int or long as 64 bits; a long that needs more, or another type, fails.
Status to_wide(PyObject *object, long long *value)
{
    if (PyInt_Check(object)) {
        *value = PyInt_AS_LONG(object);
        return Status::ok;
    }
    if (!PyLong_Check(object)) {
        return Status::type;
    }
    int overflow = 0;
    long long number = PyLong_AsLongLongAndOverflow(object, &overflow);
    if (overflow) {
        return Status::overflow;
    }
    *value = number;
    return Status::ok;
}

template <typename Integer>
Status to_integer(PyObject *object, Integer *value)
{
    long long number;
    Status status = to_wide(object, &number);
    if (status != Status::ok) {
        return status;
    }
    *value = static_cast<Integer>(number);
    return *value == number ? Status::ok : Status::overflow;
}

swig_type_info *char_pointer_type()
{
    static swig_type_info *type = find_type("_p_char");
    return type;
}

}  // namespace

Status to_int32_slowly(PyObject *object, int32_t *value)
{
    return to_integer(object, value);
}

Status to_uint32_slowly(PyObject *object, uint32_t *value)
{
    return to_integer(object, value);
}

Status to_int8(PyObject *object, int8_t *value)
{
    return to_integer(object, value);
}

Status to_uint8(PyObject *object, uint8_t *value)
{
    return to_integer(object, value);
}

Status to_uint16(PyObject *object, uint16_t *value)
{
    return to_integer(object, value);
}

Status to_uint64(PyObject *object, uint64_t *value)
{
    if (!PyLong_Check(object)) {
        long long number;
        Status status = to_wide(object, &number);
        if (status == Status::ok && number < 0) {
            status = Status::overflow;
        }
        if (status == Status::ok) {
            *value = static_cast<uint64_t>(number);
        }
        return status;
    }
    uint64_t number = PyLong_AsUnsignedLongLong(object);
    if (number == UINT64_MAX && PyErr_Occurred()) {
        PyErr_Clear();
        return Status::overflow;
    }
    *value = number;
    return Status::ok;
}

Status to_int16(PyObject *object, int16_t *value)
{
    return to_integer(object, value);
}

Status to_int64(PyObject *object, int64_t *value)
{
    return to_integer(object, value);
}

Status to_double(PyObject *object, double *value)
{
    if (!PyFloat_Check(object) && !PyInt_Check(object) && !PyLong_Check(object)) {
        return Status::type;
    }
    const double number = PyFloat_AsDouble(object);
    if (number == -1 && PyErr_Occurred()) {
        PyErr_Clear();
        return Status::overflow;
    }
    *value = number;
    return Status::ok;
}

Status to_float(PyObject *object, float *value)
{
    double number;
    Status status = to_double(object, &number);
    if (status != Status::ok) {
        return status;
    }
    const auto narrow = static_cast<float>(number);
    if (std::isinf(narrow) && !std::isinf(number)) {
        return Status::overflow;
    }
    *value = narrow;
    return Status::ok;
}

Status to_char(PyObject *object, char *value)
{
    if (PyString_Check(object) && PyString_GET_SIZE(object) == 1) {
        *value = *PyString_AS_STRING(object);
        return Status::ok;
    }
    return to_integer(object, value);
}

Status to_bool(PyObject *object, bool *value)
{
    // bool cannot be subclassed, and its truth is the object itself.
    if (!PyBool_Check(object)) {
        return Status::type;
    }
    *value = object == Py_True;
    return Status::ok;
}

Status to_string(PyObject *object, HeldString *value)
{
    if (PyString_Check(object)) {
        value->text = PyString_AS_STRING(object);
        return Status::ok;
    }
    if (object == Py_None || !char_pointer_type()) {
        return Status::type;
    }
    HeldPointer pointer;
    if (convert_pointer(object, char_pointer_type(), &pointer) != Status::ok) {
        return Status::type;
    }
    *value = {static_cast<char *>(pointer.address), std::move(pointer.holder)};
    return Status::ok;
}

HeldBytes::~HeldBytes()
{
    if (buffer.obj) {
        PyBuffer_Release(&buffer);
    }
}

Status to_bytes(PyObject *object, HeldBytes *value)
{
    const void *address;
    Py_ssize_t size;
    if (PyString_Check(object)) {
        address = PyString_AS_STRING(object);
        size = PyString_GET_SIZE(object);
        value->holder.hold(object);
    } else if (PyObject_CheckBuffer(object)) {
        if (PyObject_GetBuffer(object, &value->buffer, PyBUF_SIMPLE) != 0) {
            value->buffer.obj = nullptr;
            PyErr_Clear();
            return Status::type;
        }
        address = value->buffer.buf;
        size = value->buffer.len;
    } else if (PyUnicode_Check(object) || PyObject_AsReadBuffer(object, &address, &size) != 0) {
        PyErr_Clear();
        return Status::type;
    } else {
        value->holder.hold(object);
    }
    if (size > INT32_MAX) {
        return Status::overflow;
    }
    value->address = address;
    value->size = static_cast<int32_t>(size);
    return Status::ok;
}

Status to_in_out_int32(PyObject *object, uint16_t type, InOutInt32 *value)
{
    HeldPointer pointer;
    if (to_pointer(object, type, &pointer) == Status::ok) {
        value->pointer = static_cast<int32_t *>(pointer.address);
        value->holder = std::move(pointer.holder);
        value->given = is_pointer_object(object) ? object : nullptr;
        return Status::ok;
    }
    value->pointer = &value->number;
    value->given = nullptr;
    return to_int32(object, &value->number);
}

NewReference from_in_out_int32(const InOutInt32 &value, uint16_t type)
{
    if (value.given) {
        return Owned::share(value.given).release();
    }
    return value.pointer == &value.number ? from_int32(value.number) : from_pointer(value.pointer, type);
}

NewReference from_string(const char *text)
{
    return text ? PyString_FromString(text) : new_none();
}

NewReference append_output(NewReference result, NewReference output)
{
    Owned first = Owned::steal(result), second = Owned::steal(output);
    if (!first || !second) {
        return nullptr;
    }
    if (result == Py_None) {
        return second.release();
    }
    if (PyList_Check(result)) {
        return PyList_Append(result, second.get()) == 0 ? first.release() : nullptr;
    }
    PyObject *list = PyList_New(2);
    if (!list) {
        return nullptr;
    }
    PyList_SET_ITEM(list, 0, first.release());
    PyList_SET_ITEM(list, 1, second.release());
    return list;
}

}  // namespace quorel
