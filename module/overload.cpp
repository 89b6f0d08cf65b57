#include "overload.h"

#include <cstring>

namespace quorel {

namespace {

bool converts_one(PyObject *object, const CallRow &row, int index, char code)
{
    int32_t number;
    HeldPointer pointer;
    Status status =
        code == 'i' ? to_int32(object, &number) : to_pointer(object, type_of(row, index), &pointer);
    // Looking for `this` may run a user's code and fail in it.
    if (PyErr_Occurred()) {
        PyErr_Clear();
    }
    return status == Status::ok;
}

}  // namespace

bool converts(const CallRow &row, PyObject *args, const char *codes)
{
    auto count = static_cast<Py_ssize_t>(std::strlen(codes));
    if (PyTuple_GET_SIZE(args) != count) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        if (!converts_one(PyTuple_GET_ITEM(args, i), row, i, codes[i])) {
            return false;
        }
    }
    return true;
}

NewReference raise_overloaded(const char *name, const char *prototypes)
{
    return PyErr_Format(PyExc_NotImplementedError,
                        "Wrong number or type of arguments for overloaded function '%s'.\n"
                        "  Possible C/C++ prototypes are:\n%s",
                        name, prototypes);
}

}  // namespace quorel
