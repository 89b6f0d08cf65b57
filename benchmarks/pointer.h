/*
 * Wrapped pointer objects, as the extension modules of the benchmarks take them: only bare ones, and only of
 * the type of the example that accept() was given. Nothing can be checked with less.
 */
#ifndef BENCHMARKS_POINTER_H
#define BENCHMARKS_POINTER_H

#include <Python.h>

/* The layout that all modules of SWIG's runtime version 4 share. */
typedef struct {
    PyObject_HEAD void *pointer;
    void *descriptor;
} PointerObject;

static PyTypeObject *accepted_type;
static void *accepted_descriptor;

/* accept(example): pointer arguments are of the example's type from now on. */
static PyObject *accept(PyObject *self, PyObject *example)
{
    (void)self;
    accepted_type = Py_TYPE(example);
    accepted_descriptor = ((PointerObject *)example)->descriptor;
    Py_RETURN_NONE;
}

/* The address, or null with an exception. */
static inline void *pointer_from(PyObject *object)
{
    PointerObject *candidate = (PointerObject *)object;
    int accepted = Py_TYPE(object) == accepted_type && candidate->descriptor == accepted_descriptor;
    if (__builtin_expect(!accepted, 0)) {
        PyErr_SetString(PyExc_TypeError, "pointer of another type");
        return NULL;
    }
    return candidate->pointer;
}

#endif
