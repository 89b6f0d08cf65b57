// A Python module for tests, over parts of the runtime that no bound function reaches.
#include "module/packed_object.h"

namespace {

using namespace quorel;

swig_type_info probe_type = {"_p_probe", "probe *", nullptr, nullptr, nullptr, 0};

PyObject *pack(PyObject *, PyObject *text)
{
    if (!PyString_Check(text)) {
        return PyErr_Format(PyExc_TypeError, "a str is wanted");
    }
    return new_packed_object(PyString_AS_STRING(text), static_cast<size_t>(PyString_GET_SIZE(text)),
                             &probe_type);
}

PyObject *unpack(PyObject *, PyObject *args)
{
    PyObject *object;
    int size;
    char data[64];
    if (!PyArg_ParseTuple(args, "Oi", &object, &size)) {
        return nullptr;
    }
    if (unpack_object(object, data, static_cast<size_t>(size)) != &probe_type) {
        return new_none();
    }
    return PyString_FromStringAndSize(data, size);
}

PyMethodDef methods[] = {
    {"pack", pack, METH_O, "pack(text): a packed object with the bytes of a str"},
    {"unpack", unpack, METH_VARARGS, "unpack(object, size): the bytes (at most 64), or None"},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

PyMODINIT_FUNC initpacked_probe();

PyMODINIT_FUNC initpacked_probe()
{
    if (initialise_packed_object_type()) {
        Py_InitModule("packed_probe", methods);
    }
}
