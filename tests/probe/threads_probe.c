/* Whether the interpreter lock exists, asked by a module that does not make it itself as ctypes does. */
#include <Python.h>

PyMODINIT_FUNC initthreads_probe(void);

static PyObject *has_lock(PyObject *self, PyObject *args)
{
    (void)self;
    (void)args;
    return PyBool_FromLong(PyEval_ThreadsInitialized());
}

static PyMethodDef methods[] = {{"has_lock", has_lock, METH_NOARGS, NULL}, {NULL, NULL, 0, NULL}};

PyMODINIT_FUNC initthreads_probe(void)
{
    Py_InitModule("threads_probe", methods);
}
