#include "methods.h"

#include <cstring>

namespace quorel {

PyMethodDef *method_table;

namespace {

// The hook is there for other code that looks for it, and inert: it returns null without an exception.
PyObject *instance_method_new(PyObject *, PyObject *)
{
    return nullptr;
}

// Docstrings start with the name; the names need NULs of their own, and go into one block.
size_t name_bytes()
{
    size_t bytes = 0;
    for (size_t g = 0; g < method_group_count; ++g) {
        const char *doc = method_groups[g].docs;
        for (size_t i = 0; i < method_groups[g].count; ++i) {
            bytes += std::strcspn(doc, "(") + 1;
            doc += std::strlen(doc) + 1;
        }
    }
    return bytes;
}

}  // namespace

bool build_method_table()
{
    if (method_table) {
        return true;
    }
    auto *table = static_cast<PyMethodDef *>(PyMem_Malloc((method_count + 2) * sizeof(PyMethodDef)));
    auto *name = static_cast<char *>(PyMem_Malloc(name_bytes()));
    if (!table || !name) {
        PyMem_Free(table);
        PyMem_Free(name);
        PyErr_NoMemory();
        return false;
    }
    PyMethodDef *row = table;
    *row++ = {"SWIG_PyInstanceMethod_New", instance_method_new, METH_O, ""};
    for (size_t g = 0; g < method_group_count; ++g) {
        const char *doc = method_groups[g].docs;
        method_groups[g].enter(row);
        for (size_t i = 0; i < method_groups[g].count; ++i) {
            const char *parenthesis = std::strchr(doc, '(');
            size_t length = parenthesis ? static_cast<size_t>(parenthesis - doc) : std::strlen(doc);
            std::memcpy(name, doc, length);
            name[length] = '\0';
            *row = {name, row->ml_meth, METH_VARARGS, parenthesis ? doc : ""};
            ++row;
            name += length + 1;
            doc += std::strlen(doc) + 1;
        }
    }
    *row = {nullptr, nullptr, 0, nullptr};
    method_table = table;
    return true;
}

}  // namespace quorel
