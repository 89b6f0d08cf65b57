/*
 * The floor: the least that Python 2.7 allows for a call of the SDK. The argument tuple is read in place,
 * ints are taken only from exact int objects, pointers only from bare pointer objects of the one right type.
 */
#include "pointer.h"

#include <bcm/port.h>

#include <limits.h>

static int int_from(PyObject *object, int *value)
{
    long number;
    if (__builtin_expect(!PyInt_CheckExact(object), 0)) {
        PyErr_SetString(PyExc_TypeError, "not an int");
        return -1;
    }
    number = PyInt_AS_LONG(object);
    if (__builtin_expect(number < INT_MIN || number > INT_MAX, 0)) {
        PyErr_SetString(PyExc_OverflowError, "not a C int");
        return -1;
    }
    *value = (int)number;
    return 0;
}

static PyObject *port_enable_get(PyObject *self, PyObject *args)
{
    int unit, port;
    int *enable;
    (void)self;
    if (__builtin_expect(PyTuple_GET_SIZE(args) != 3, 0)) {
        PyErr_SetString(PyExc_TypeError, "three arguments expected");
        return NULL;
    }
    if (int_from(PyTuple_GET_ITEM(args, 0), &unit) || int_from(PyTuple_GET_ITEM(args, 1), &port)) {
        return NULL;
    }
    enable = pointer_from(PyTuple_GET_ITEM(args, 2));
    if (__builtin_expect(!enable, 0)) {
        return NULL;
    }
    return PyInt_FromLong(bcm_port_enable_get(unit, port, enable));
}

/* call_sdk(count): the SDK's own work in as many calls. */
static PyObject *call_sdk(PyObject *self, PyObject *count)
{
    long i;
    int enable;
    (void)self;
    for (i = PyInt_AsLong(count); i > 0; --i) {
        bcm_port_enable_get(0, 1, &enable);
    }
    Py_RETURN_NONE;
}

static PyMethodDef methods[] = {
    {"accept", accept, METH_O, ""},
    {"call_sdk", call_sdk, METH_O, ""},
    {"bcm_port_enable_get", port_enable_get, METH_VARARGS, ""},
    {NULL, NULL, 0, NULL},
};

PyMODINIT_FUNC initfloor(void)
{
    Py_InitModule("floor", methods);
}
