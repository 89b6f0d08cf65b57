#include "errors.h"

#include <cstring>

namespace quorel {

namespace {

// Names of methods and types take a few hundred bytes at most; a message that would be longer is cut off.
class Message {
public:
    Message &add(const char *text) { return add(text, std::strlen(text)); }
    Message &add(const char *text, size_t length)
    {
        size_t room = sizeof buffer_ - length_;
        if (length > room) {
            length = room;
        }
        std::memcpy(buffer_ + length_, text, length);
        length_ += length;
        return *this;
    }
    Message &add(int number)
    {
        char digits[12];
        char *end = digits + sizeof digits, *start = end;
        do {
            *--start = static_cast<char>('0' + number % 10);
        } while ((number /= 10) != 0);
        return add(start, static_cast<size_t>(end - start));
    }
    NewReference raise(PyObject *exception) const
    {
        Owned text = Owned::steal(PyString_FromStringAndSize(buffer_, static_cast<Py_ssize_t>(length_)));
        if (text) {
            PyErr_SetObject(exception, text.get());
        }
        return nullptr;
    }

private:
    char buffer_[1024];
    size_t length_ = 0;
};

}  // namespace

PyObject *exception_class(Status status)
{
    switch (status) {
    case Status::io:
        return PyExc_IOError;
    case Status::index:
        return PyExc_IndexError;
    case Status::type:
        return PyExc_TypeError;
    case Status::division_by_zero:
        return PyExc_ZeroDivisionError;
    case Status::overflow:
        return PyExc_OverflowError;
    case Status::syntax:
        return PyExc_SyntaxError;
    case Status::value:
    case Status::null_reference:
        return PyExc_ValueError;
    case Status::system:
        return PyExc_SystemError;
    case Status::attribute:
        return PyExc_AttributeError;
    case Status::memory:
        return PyExc_MemoryError;
    default:
        return PyExc_RuntimeError;
    }
}

NewReference raise_argument_error(const char *method, int position, const char *type, Status status)
{
    if (status == Status::unknown) {
        status = Status::type;
    }
    Message message;
    if (status == Status::null_reference) {
        message.add("invalid null reference ");
    }
    message.add("in method '").add(method).add("', argument ").add(position);
    return message.add(" of type '").add(type).add("'").raise(exception_class(status));
}

NewReference raise_variable_error(const char *name, size_t name_length, const char *type, Status status)
{
    if (status == Status::unknown) {
        status = Status::type;
    }
    Message message;
    if (status == Status::null_reference) {
        message.add("invalid null reference ");
    }
    message.add("in variable '").add(name, name_length);
    return message.add("' of type '").add(type).add("'").raise(exception_class(status));
}

NewReference raise_arity_error(const char *method, Borrowed args, int expected)
{
    // A tuple of the wrong size fails before any of the (absent) output pointers would be written.
    PyArg_UnpackTuple(args, method, expected, expected);
    return nullptr;
}

}  // namespace quorel
