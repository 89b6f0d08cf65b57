#include "proxy_type.h"

#include "builtin_call.h"
#include "type_table.h"

#include <cstring>

namespace quorel {

namespace {

int set_attribute(PyObject *object, PyObject *name, PyObject *value)
{
    Owned attribute = Owned::share(PyString_Check(name) ? _PyType_Lookup(Py_TYPE(object), name) : nullptr);
    if (attribute) {
        // Members are by far the most frequent: their descriptors are on the class.
        PyTypeObject *type = Py_TYPE(attribute.get());
        if (PyType_HasFeature(type, Py_TPFLAGS_HAVE_CLASS) && type->tp_descr_set)
            return type->tp_descr_set(attribute.get(), object, value);
    } else if (name != this_name() && PyString_Check(name)) {
        const char *text = PyString_AS_STRING(name);
        if (PyString_GET_SIZE(name) != 4 || std::memcmp(text, "this", 4) != 0) {
            PyErr_Format(PyExc_AttributeError, "'%.100s' object has no attribute '%.200s'",
                         Py_TYPE(object)->tp_name, text);
            return -1;
        }
    }
    return PyObject_GenericSetAttr(object, name, value);
}

// Does for all classes what an __init__ in Python would do, at a third of the cost.
int construct(PyObject *object, PyObject *args, PyObject *keywords)
{
    static PyObject *const name = PyString_InternFromString("_constructor");
    Owned constructor = Owned::share(name ? _PyType_Lookup(Py_TYPE(object), name) : nullptr);
    PyObject **dictionary = _PyObject_GetDictPtr(object);
    if (!constructor || !dictionary || keywords) {
        PyErr_Format(PyExc_TypeError,
                     keywords ? "%.100s() takes no keyword arguments" : "cannot create '%.100s' instances",
                     Py_TYPE(object)->tp_name);
        return -1;
    }
    Owned pointer = Owned::steal(call_function(constructor.get(), args));
    if (pointer && !*dictionary)
        *dictionary = PyDict_New();
    return pointer && *dictionary ? PyDict_SetItem(*dictionary, this_name(), pointer.get()) : -1;
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
    type.tp_init = construct;
    type.tp_new = PyType_GenericNew;
    return PyType_Ready(&type) == 0;
}

}  // namespace quorel
