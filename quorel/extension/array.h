// quorel.array and quorel.cell: typed memory that Python owns, indexed and bounds-checked, which any function
// takes where it takes a pointer to such elements. A part of one (a slice) is the same memory.
#pragma once

#include "memory.h"
#include "values.h"

namespace quorel {

struct Array {
    PyObject_HEAD PyObject *dictionary;  ///< holds `this`, where every conversion looks for it first
    PyObject *keeper;                    ///< what the elements live in: a pointer object or Memory
    char *data;
    Py_ssize_t count;
    const CType *type;  ///< of an element
    PyObject *references;
};

extern PyTypeObject Array_Type;
bool initialise_array_type();

/// array(type, size or values)
NewReference new_array(PyObject *module, PyObject *args);
/// cell(type, value=None)
NewReference new_cell(PyObject *module, PyObject *args);

/// An array of `count` zeroed elements.
NewReference new_zeroed_array(const CType &type, Py_ssize_t count);
/// An array in the memory at `data`, for which `keeper` (borrowed, may be null) stays alive.
NewReference new_array_at(const CType &type, Py_ssize_t count, char *data, PyObject *keeper);

/// Leaves an array without elements, for memory that is about to go; other objects as they are.
void forget_memory(PyObject *object);

/// Of Kind::array: text of characters, else an array in the same memory.
NewReference read_array(const CType &type, char *address, PyObject *keeper);
/// Of Kind::array: text, bytes or a sequence of as many values as the array has; text may be shorter.
bool write_array(const CType &type, char *address, PyObject *value);

}  // namespace quorel
