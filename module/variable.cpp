#include "variable.h"

#include "string_storage.h"

#include <cstdio>
#include <cstring>

namespace quorel {

namespace {

const VariableRow *find_variable(const char *name)
{
    for (size_t i = variable_count; i-- > 0;) {
        if (std::strcmp(variable_rows[i].name, name) == 0) {
            return &variable_rows[i];
        }
    }
    PyErr_Format(PyExc_AttributeError, "Unknown C global variable '%s'", name);
    return nullptr;
}

NewReference get_attribute(PyObject *, char *name)
{
    const VariableRow *row = find_variable(name);
    return row ? row->get(*row) : nullptr;
}

int set_attribute(PyObject *, char *name, PyObject *value)
{
    const VariableRow *row = find_variable(name);
    if (!row) {
        return -1;
    }
    bool read_only = row->set == refuse_constant || row->set == refuse_unbounded_array;
    if (!value && !read_only) {
        PyErr_Format(PyExc_AttributeError, "C global variable '%s' cannot be deleted", name);
        return -1;
    }
    return row->set(*row, value) ? 0 : -1;
}

NewReference repr(PyObject *)
{
    return PyString_FromString("<Swig global variables>");
}

NewReference str(PyObject *)
{
    PyObject *text = PyString_FromString("(");
    for (size_t i = variable_count; i-- > 0;) {
        PyString_ConcatAndDel(&text, PyString_FromFormat(i > 0 ? "%s, " : "%s", variable_rows[i].name));
    }
    PyString_ConcatAndDel(&text, PyString_FromString(")"));
    return text;
}

int print(PyObject *object, FILE *file, int)
{
    Owned text = Owned::steal(str(object));
    if (!text) {
        return -1;
    }
    std::fprintf(file, "Swig global variables %s\n", PyString_AS_STRING(text.get()));
    return 0;
}

PyTypeObject VariableObject_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "swigvarlink", sizeof(PyObject)};

}  // namespace

Owned new_variable_object()
{
    PyTypeObject &type = VariableObject_Type;
    type.tp_print = print;
    type.tp_getattr = get_attribute;
    type.tp_setattr = set_attribute;
    type.tp_repr = repr;
    type.tp_str = str;
    type.tp_flags |= Py_TPFLAGS_DEFAULT;
    type.tp_doc = "Swig var link object";
    if (PyType_Ready(&type) != 0) {
        return Owned();
    }
    return Owned::steal(PyObject_New(PyObject, &type));
}

bool raise_variable(const VariableRow &row, Status status)
{
    raise_variable_error(row.name, std::strlen(row.name), text_of(row.value), status);
    return false;
}

NewReference get_string_variable(const VariableRow &row)
{
    return from_string(*static_cast<char *const *>(row.address));
}

bool set_string_variable(const VariableRow &row, PyObject *value)
{
    Status status = replace_string(value, static_cast<char **>(row.address));
    return status == Status::ok || raise_variable(row, status);
}

NewReference get_storage_variable(const VariableRow &row)
{
    return from_pointer(row.address, arguments[row.value].type);
}

bool set_storage_variable(const VariableRow &row, PyObject *value)
{
    HeldPointer source;
    Status status = to_value(value, arguments[row.value].type, &source);
    if (status != Status::ok) {
        return raise_variable(row, status);
    }
    std::memmove(row.address, source.address, row.size);
    return true;
}

NewReference get_pointer_variable(const VariableRow &row)
{
    void *pointer;
    std::memcpy(&pointer, row.address, sizeof pointer);
    return from_pointer(pointer, arguments[row.value].type);
}

bool store_pointer_variable(const VariableRow &row, Status status, const HeldPointer &pointer)
{
    if (status != Status::ok) {
        return raise_variable(row, status);
    }
    std::memcpy(row.address, &pointer.address, sizeof pointer.address);
    return true;
}

bool set_pointer_variable(const VariableRow &row, PyObject *value)
{
    HeldPointer pointer;
    return store_pointer_variable(row, to_pointer(value, arguments[row.value].type, &pointer), pointer);
}

bool refuse_constant(const VariableRow &row, PyObject *)
{
    PyErr_Format(PyExc_AttributeError, "Variable %s is read-only.", row.name);
    return false;
}

bool refuse_unbounded_array(const VariableRow &row, PyObject *)
{
    PyErr_Format(PyExc_AttributeError, "in variable 'read-only %s' of type '%s'", row.name,
                 text_of(row.value));
    return false;
}

}  // namespace quorel
