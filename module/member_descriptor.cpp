#include "member_descriptor.h"

#include "builtin_call.h"
#include "tables.h"

namespace quorel {

namespace {

// The interpreter's own property, as all 2.7 versions lay it out.
struct MemberDescriptor {
    PyObject_HEAD PyObject *getter;
    PyObject *setter;  ///< null for a member that is only read
    PyObject *deleter;
    PyObject *doc;
    int doc_of_getter;
};

MemberDescriptor *as_descriptor(PyObject *object)
{
    return reinterpret_cast<MemberDescriptor *>(object);
}

NewReference get(PyObject *self, PyObject *instance, PyObject *)
{
    if (!instance) {
        return Owned::share(self).release();
    }
    Owned args = Owned::steal(PyTuple_New(1));
    if (!args) {
        return nullptr;
    }
    PyTuple_SET_ITEM(args.get(), 0, Owned::share(instance).release());
    return call_builtin(as_descriptor(self)->getter, args.get());
}

int set(PyObject *self, PyObject *instance, PyObject *value)
{
    PyObject *setter = as_descriptor(self)->setter;
    if (!value || !setter) {
        PyErr_SetString(PyExc_AttributeError, value ? "can't set attribute" : "can't delete attribute");
        return -1;
    }
    Owned args = Owned::steal(PyTuple_New(2));
    if (!args) {
        return -1;
    }
    PyTuple_SET_ITEM(args.get(), 0, Owned::share(instance).release());
    PyTuple_SET_ITEM(args.get(), 1, Owned::share(value).release());
    Owned result = Owned::steal(call_builtin(setter, args.get()));
    return result ? 0 : -1;
}

NewReference doc(PyObject *self, void *)
{
    return PyObject_GetAttrString(as_descriptor(self)->getter, "__doc__");
}

PyGetSetDef attributes[] = {
    {const_cast<char *>("__doc__"), doc, nullptr, nullptr, nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

PyTypeObject MemberDescriptor_Type = {PyVarObject_HEAD_INIT(nullptr, 0) member_descriptor_type_name,
                                      sizeof(MemberDescriptor)};

}  // namespace

NewReference new_member_descriptor(Borrowed getter, Borrowed setter)
{
    if (!is_builtin(getter) || (setter && !is_builtin(setter))) {
        PyErr_SetString(PyExc_TypeError,
                        "members are read and written with functions of an extension module");
        return nullptr;
    }
    PyObject *self = PyType_GenericAlloc(&MemberDescriptor_Type, 0);
    if (!self) {
        return nullptr;
    }
    as_descriptor(self)->getter = Owned::share(getter).release();
    as_descriptor(self)->setter = setter ? Owned::share(setter).release() : nullptr;
    return self;
}

bool initialise_member_descriptor_type()
{
    PyTypeObject &type = MemberDescriptor_Type;
    type.tp_base = &PyProperty_Type;
    // Beside what a former start in the process has made it inherit: its objects are the collector's.
    type.tp_flags |= Py_TPFLAGS_DEFAULT;
    type.tp_getset = attributes;
    type.tp_descr_get = get;
    type.tp_descr_set = set;
    return PyType_Ready(&type) == 0;
}

}  // namespace quorel
