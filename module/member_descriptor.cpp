#include "member_descriptor.h"

#include "builtin_call.h"
#include "tables.h"

namespace quorel {

namespace {

// The interpreter's own property, as all 2.7 versions lay it out. Its methods, such as setter(), make one with any
// functions, or with none.
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
    PyObject *getter = as_descriptor(self)->getter;
    if (!getter) {
        PyErr_SetString(PyExc_AttributeError, "unreadable attribute");
        return nullptr;
    }
    Owned args = Owned::steal(PyTuple_New(1));
    if (!args) {
        return nullptr;
    }
    PyTuple_SET_ITEM(args.get(), 0, Owned::share(instance).release());
    return call_function(getter, args.get());
}

int set(PyObject *self, PyObject *instance, PyObject *value)
{
    PyObject *setter = value ? as_descriptor(self)->setter : as_descriptor(self)->deleter;
    if (!setter) {
        PyErr_SetString(PyExc_AttributeError, value ? "can't set attribute" : "can't delete attribute");
        return -1;
    }
    Owned args = Owned::steal(PyTuple_New(value ? 2 : 1));
    if (!args) {
        return -1;
    }
    PyTuple_SET_ITEM(args.get(), 0, Owned::share(instance).release());
    if (value) {
        PyTuple_SET_ITEM(args.get(), 1, Owned::share(value).release());
    }
    Owned result = Owned::steal(call_function(setter, args.get()));
    return result ? 0 : -1;
}

NewReference doc(PyObject *self, void *)
{
    MemberDescriptor *descriptor = as_descriptor(self);
    if (descriptor->doc) {
        return Owned::share(descriptor->doc).release();
    }
    return descriptor->getter ? PyObject_GetAttrString(descriptor->getter, "__doc__") : new_none();
}

// The interpreter gives one that its methods make the text of the getter so.
int set_doc(PyObject *self, PyObject *text, void *)
{
    Owned former = Owned::steal(as_descriptor(self)->doc);
    as_descriptor(self)->doc = Owned::share(text).release();
    return 0;
}

PyGetSetDef attributes[] = {
    {const_cast<char *>("__doc__"), doc, set_doc, nullptr, nullptr},
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
