#include "proxy_type.h"

#include "builtin_call.h"
#include "member_descriptor.h"
#include "type_table.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <string_view>

namespace quorel {

namespace {

bool is_in_dictionary(PyObject *object, PyObject *name)
{
    PyObject **dictionary = _PyObject_GetDictPtr(object);
    return dictionary && *dictionary && PyDict_GetItem(*dictionary, name);
}

// Methods in the widest sense: what becomes something else when it is read from an instance, and functions in C.
bool is_method(PyObject *attribute)
{
    PyTypeObject *type = Py_TYPE(attribute);
    return (PyType_HasFeature(type, Py_TPFLAGS_HAVE_CLASS) && type->tp_descr_get)
           || PyCFunction_Check(attribute);
}

int refuse_attribute(PyObject *object, PyObject *name, const char *reason)
{
    PyErr_Format(PyExc_AttributeError, reason, Py_TYPE(object)->tp_name, PyString_AS_STRING(name));
    return -1;
}

int set_attribute(PyObject *object, PyObject *name, PyObject *value)
{
    if (!PyString_Check(name)) {
        return PyObject_GenericSetAttr(object, name, value);
    }
    Owned attribute = Owned::share(_PyType_Lookup(Py_TYPE(object), name));
    if (attribute) {
        // Members are by far the most frequent: their descriptors are on the class.
        PyTypeObject *type = Py_TYPE(attribute.get());
        if (PyType_HasFeature(type, Py_TPFLAGS_HAVE_CLASS) && type->tp_descr_set) {
            return type->tp_descr_set(attribute.get(), object, value);
        }
        if (is_method(attribute.get())) {
            return refuse_attribute(object, name, "'%.100s' object attribute '%.200s' is read-only");
        }
    } else if (std::strcmp(PyString_AS_STRING(name), "this") != 0 && !is_in_dictionary(object, name)) {
        return refuse_attribute(object, name, "'%.100s' object has no attribute '%.200s'");
    }
    return PyObject_GenericSetAttr(object, name, value);
}

// The interned name "__constructor__".
PyObject *constructor_name;

// Does for all classes what an __init__ in Python would do, at a third of the cost.
int construct(PyObject *object, PyObject *args, PyObject *keywords)
{
    Owned constructor = Owned::share(_PyType_Lookup(Py_TYPE(object), constructor_name));
    PyObject **dictionary = _PyObject_GetDictPtr(object);
    // A call with ** of an empty dictionary has none.
    const bool has_keywords = keywords && PyDict_Size(keywords) != 0;
    auto *set_members = Proxy_Type.refinements.set_members;
    const bool refuses_keywords = has_keywords && !set_members;
    if (!constructor || !dictionary || refuses_keywords) {
        PyErr_Format(
            PyExc_TypeError,
            refuses_keywords ? "%.100s() takes no keyword arguments" : "cannot create '%.100s' instances",
            Py_TYPE(object)->tp_name);
        return -1;
    }
    Owned pointer = Owned::steal(call_function(constructor.get(), args));
    if (pointer && !*dictionary) {
        *dictionary = PyDict_New();
    }
    if (!pointer || !*dictionary || PyDict_SetItem(*dictionary, this_name(), pointer.get()) != 0) {
        return -1;
    }
    return has_keywords && !set_members(object, keywords) ? -1 : 0;
}

Owned joined(std::initializer_list<std::string_view> parts)
{
    size_t size = 0;
    for (std::string_view part : parts) {
        size += part.size();
    }
    Owned text = Owned::steal(PyString_FromStringAndSize(nullptr, static_cast<Py_ssize_t>(size)));
    char *place = text ? PyString_AS_STRING(text.get()) : nullptr;
    for (std::string_view part : parts) {
        if (place) {
            place = std::copy(part.begin(), part.end(), place);
        }
    }
    return text;
}

bool add_members(PyObject *attributes, std::string_view class_name, PyObject *members, PyObject *functions)
{
    for (Py_ssize_t i = 0; i < PyList_GET_SIZE(members); ++i) {
        // Names that compare in Python may do anything to the list and the dictionaries meanwhile.
        Owned name = Owned::share(PyList_GET_ITEM(members, i));
        PyObject *member = name.get();
        if (!PyString_Check(member)) {
            PyErr_SetString(PyExc_TypeError, "__derive__(): names of members are strings");
            return false;
        }
        const std::string_view member_name(PyString_AS_STRING(member),
                                           static_cast<size_t>(PyString_GET_SIZE(member)));
        Owned getter_name = joined({class_name, "_", member_name, "_get"});
        Owned setter_name = joined({class_name, "_", member_name, "_set"});
        if (!getter_name || !setter_name) {
            return false;
        }
        Owned getter = Owned::share(PyDict_GetItem(functions, getter_name.get()));
        if (!getter) {
            PyErr_SetObject(PyExc_KeyError, getter_name.get());
            return false;
        }
        Owned setter = Owned::share(PyDict_GetItem(functions, setter_name.get()));
        Owned descriptor = Owned::steal(new_member_descriptor(getter.get(), setter.get()));
        if (!descriptor || PyDict_SetItem(attributes, member, descriptor.get()) != 0) {
            return false;
        }
    }
    return true;
}

// What type(name, (base,), attributes) does for a class that adds no special method and no slot. type() itself
// looks each of some sixty special methods up along all bases, which was a fifth of the import.
NewReference make_class(PyObject *base, PyObject *name, PyObject *attributes)
{
    Owned made = Owned::steal(PyType_GenericAlloc(&PyType_Type, 0));
    if (!made) {
        return nullptr;
    }
    auto *heap_type = reinterpret_cast<PyHeapTypeObject *>(made.get());
    PyTypeObject &type = heap_type->ht_type;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HEAPTYPE | Py_TPFLAGS_BASETYPE;
    heap_type->ht_name = Owned::share(name).release();
    type.tp_name = PyString_AS_STRING(name);
    type.tp_as_number = &heap_type->as_number;
    type.tp_as_sequence = &heap_type->as_sequence;
    type.tp_as_mapping = &heap_type->as_mapping;
    type.tp_as_buffer = &heap_type->as_buffer;
    type.tp_base = reinterpret_cast<PyTypeObject *>(Owned::share(base).release());
    type.tp_dict = Owned::share(attributes).release();
    return PyType_Ready(&type) == 0 ? made.release() : nullptr;
}

NewReference derive(PyObject *base, PyObject *args)
{
    PyObject *name, *attributes, *members, *functions;
    if (!PyArg_ParseTuple(args, "SO!O!O!:__derive__", &name, &PyDict_Type, &attributes, &PyList_Type,
                          &members, &PyDict_Type, &functions)) {
        return nullptr;
    }
    if (!PyType_HasFeature(reinterpret_cast<PyTypeObject *>(base), Py_TPFLAGS_HEAPTYPE)) {
        PyErr_SetString(PyExc_TypeError, "__derive__() is for subclasses of _Proxy");
        return nullptr;
    }
    return add_members(attributes, PyString_AS_STRING(name), members, functions)
               ? make_class(base, name, attributes)
               : nullptr;
}

PyMethodDef methods[] = {
    {"__derive__", derive, METH_VARARGS | METH_CLASS,
     "__derive__(name, attributes, members, functions): a subclass without special methods of its own.\n\n"
     "attributes: becomes the class's dictionary. members: a list of names, which become properties made of\n"
     "the functions NAME_MEMBER_get and, if there is one, NAME_MEMBER_set of the dictionary `functions`.\n"
     "Raises KeyError for a member that cannot be read."},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

ProxyType Proxy_Type = {{PyVarObject_HEAD_INIT(nullptr, 0) proxy_type_name, sizeof(PyObject)},
                        {nullptr, nullptr, nullptr, nullptr, nullptr, &PointerObject_Type}};

bool initialise_proxy_type()
{
    if (!constructor_name && !(constructor_name = PyString_InternFromString("__constructor__"))) {
        return false;
    }
    PyTypeObject &type = Proxy_Type.type;
    type.tp_getattro = PyObject_GenericGetAttr;
    type.tp_setattro = set_attribute;
    type.tp_flags |= Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_doc = "Base of proxy classes: takes no attribute that the class does not have.";
    type.tp_methods = methods;
    type.tp_init = construct;
    type.tp_new = PyType_GenericNew;
    return PyType_Ready(&type) == 0;
}

}  // namespace quorel
