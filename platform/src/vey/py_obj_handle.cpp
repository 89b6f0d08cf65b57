#include <Python.h>

#include "vey/exception.h"
#include "vey/py_obj_handle.h"

#include <cstring>
#include <memory>

namespace Vey {

namespace {

class InterpreterLock {
public:
    InterpreterLock() : state_(PyGILState_Ensure()) {}
    ~InterpreterLock() { PyGILState_Release(state_); }
    InterpreterLock(const InterpreterLock &) = delete;
    InterpreterLock &operator=(const InterpreterLock &) = delete;

private:
    PyGILState_STATE state_;
};

struct DropReference {
    void operator()(PyObject *object) const { Py_XDECREF(object); }
};
using Reference = std::unique_ptr<PyObject, DropReference>;

void needInterpreter()
{
    if (!Py_IsInitialized()) {
        throw InternalException("the Python interpreter has ended");
    }
}

/// Clears the Python exception; "TypeError: an integer is required".
String8 takeError()
{
    PyObject *type, *value, *traceback;
    PyErr_Fetch(&type, &value, &traceback);
    PyErr_NormalizeException(&type, &value, &traceback);
    Reference held_type(type), held_value(value), held_traceback(traceback);
    Reference text(value ? PyObject_Str(value) : nullptr);
    PyErr_Clear();
    const char *name = type && PyExceptionClass_Check(type) ? PyExceptionClass_Name(type) : "error";
    // Built-in classes are known without their module.
    if (std::strncmp(name, "exceptions.", 11) == 0) {
        name += 11;
    }
    return format("%s: %s", name, text ? PyString_AsString(text.get()) : "");
}

/// Under the interpreter lock.
Reference callMethod(PyObject *object, const char *method, std::initializer_list<long> arguments)
{
    Reference function(PyObject_GetAttrString(object, method));
    Reference tuple(PyTuple_New(static_cast<Py_ssize_t>(arguments.size())));
    if (!function || !tuple) {
        return nullptr;
    }
    Py_ssize_t position = 0;
    for (long argument : arguments) {
        PyObject *number = PyInt_FromLong(argument);
        if (!number) {
            return nullptr;
        }
        PyTuple_SET_ITEM(tuple.get(), position++, number);
    }
    return Reference(PyObject_CallObject(function.get(), tuple.get()));
}

}  // namespace

PyObjHandle::PyObjHandle(_object *object, bool takesOver) : object_(object)
{
    if (!takesOver) {
        InterpreterLock interpreter;
        Py_INCREF(object_);
    }
}

PyObjHandle::~PyObjHandle()
{
    // What outlives the interpreter has nothing left to give its reference back to.
    if (!Py_IsInitialized()) {
        return;
    }
    InterpreterLock interpreter;
    Py_DECREF(object_);
}

std::optional<long> PyObjHandle::call(const char *method, std::initializer_list<long> arguments) const
{
    needInterpreter();
    InterpreterLock interpreter;
    Reference result = callMethod(object_, method, arguments);
    if (result.get() == Py_None) {
        return std::nullopt;
    }
    long number = 0;
    if (result && (PyInt_Check(result.get()) || PyLong_Check(result.get()))) {
        number = PyInt_AsLong(result.get());
    } else if (result) {
        PyErr_Format(PyExc_TypeError, "%s() returned neither a number nor None", method);
    }
    if (PyErr_Occurred()) {
        throw InternalException(takeError());
    }
    return number;
}

void PyObjHandle::run(const char *method, std::initializer_list<long> arguments) const
{
    needInterpreter();
    InterpreterLock interpreter;
    if (!callMethod(object_, method, arguments)) {
        throw InternalException(takeError());
    }
}

}  // namespace Vey
