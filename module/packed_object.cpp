#include "packed_object.h"

#include <cstring>

namespace quorel {

namespace {

struct PackedObject {
    PyObject_HEAD void *data;
    swig_type_info *type;
    size_t size;
};

PackedObject *as_packed(PyObject *object)
{
    return reinterpret_cast<PackedObject *>(object);
}

void deallocate(PyObject *object)
{
    PyMem_Free(as_packed(object)->data);
    PyObject_Del(object);
}

// "_" and the bytes in memory order, two digits each, high digit first, then the type's mangled name.
NewReference str(PyObject *object)
{
    constexpr char digits[] = "0123456789abcdef";
    const PackedObject *self = as_packed(object);
    PyObject *text = PyString_FromStringAndSize(nullptr, static_cast<Py_ssize_t>(1 + 2 * self->size));
    if (!text) {
        return nullptr;
    }
    char *out = PyString_AS_STRING(text);
    *out++ = '_';
    auto *bytes = static_cast<const unsigned char *>(self->data);
    for (size_t i = 0; i < self->size; ++i) {
        *out++ = digits[bytes[i] >> 4];
        *out++ = digits[bytes[i] & 15];
    }
    PyString_ConcatAndDel(&text, PyString_FromString(self->type->name));
    return text;
}

NewReference repr(PyObject *object)
{
    Owned value = Owned::steal(str(object));
    return value ? PyString_FromFormat("<Swig Packed at %s>", PyString_AS_STRING(value.get())) : nullptr;
}

int compare(PyObject *left, PyObject *right)
{
    const PackedObject *a = as_packed(left), *b = as_packed(right);
    if (a->size != b->size) {
        return a->size < b->size ? -1 : 1;
    }
    int order = std::memcmp(a->data, b->data, a->size);
    return order < 0 ? -1 : order > 0;
}

}  // namespace

PyTypeObject PackedObject_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "SwigPyPacked", sizeof(PackedObject)};

bool initialise_packed_object_type()
{
    PyTypeObject &type = PackedObject_Type;
    type.tp_dealloc = deallocate;
    type.tp_compare = compare;
    type.tp_repr = repr;
    type.tp_str = str;
    type.tp_getattro = PyObject_GenericGetAttr;
    type.tp_flags |= Py_TPFLAGS_DEFAULT;
    type.tp_doc = "Swig object carries a C/C++ instance pointer";
    return PyType_Ready(&type) == 0;
}

NewReference new_packed_object(const void *data, size_t size, swig_type_info *type)
{
    void *copy = PyMem_Malloc(size);
    if (!copy) {
        return PyErr_NoMemory();
    }
    PackedObject *self = PyObject_New(PackedObject, &PackedObject_Type);
    if (!self) {
        PyMem_Free(copy);
        return nullptr;
    }
    std::memcpy(copy, data, size);
    self->data = copy;
    self->type = type;
    self->size = size;
    return reinterpret_cast<PyObject *>(self);
}

swig_type_info *unpack_object(Borrowed object, void *data, size_t size)
{
    PyObject *given = object;
    bool packed = Py_TYPE(given) == &PackedObject_Type || is_of_runtime_type(given, "SwigPyPacked");
    if (!packed || as_packed(given)->size != size) {
        return nullptr;
    }
    std::memcpy(data, as_packed(given)->data, size);
    return as_packed(given)->type;
}

}  // namespace quorel
