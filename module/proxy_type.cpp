#include "proxy_type.h"

#include "type_table.h"

#include <cstring>

namespace quorel {

namespace {

int set_attribute(PyObject *object, PyObject *name, PyObject *value)
{
    // Members are by far the most frequent: their properties are on the class.
    if (name != this_name() && PyString_Check(name) && !_PyType_Lookup(Py_TYPE(object), name)) {
        const char *text = PyString_AS_STRING(name);
        if (PyString_GET_SIZE(name) != 4 || std::memcmp(text, "this", 4) != 0) {
            PyErr_Format(PyExc_AttributeError, "'%.100s' object has no attribute '%.200s'",
                         Py_TYPE(object)->tp_name, text);
            return -1;
        }
    }
    return PyObject_GenericSetAttr(object, name, value);
}

}  // namespace

PyTypeObject Proxy_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "_QuorelApiNew._Proxy", sizeof(PyObject)};

bool initialise_proxy_type()
{
    PyTypeObject &type = Proxy_Type;
    type.tp_getattro = PyObject_GenericGetAttr;
    type.tp_setattro = set_attribute;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_doc = "Base of proxy classes: takes no attribute that the class does not have.";
    type.tp_new = PyType_GenericNew;
    return PyType_Ready(&type) == 0;
}

}  // namespace quorel
