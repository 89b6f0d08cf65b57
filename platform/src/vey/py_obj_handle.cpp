#include <Python.h>
#include <pythread.h>

#include "vey/exception.h"
#include "vey/py_obj_handle.h"

#include <cstring>
#include <memory>
#include <new>

namespace Vey {

namespace {

/// Holds the lock of Python's within its scope, whichever interpreter of the process the thread was in before.
class InterpreterLock {
public:
    InterpreterLock() : taken_(!heldByThisThread())
    {
        if (taken_) {
            state_ = PyGILState_Ensure();
        }
    }
    ~InterpreterLock()
    {
        if (taken_) {
            PyGILState_Release(state_);
        }
    }
    InterpreterLock(const InterpreterLock &) = delete;
    InterpreterLock &operator=(const InterpreterLock &) = delete;

private:
    /// PyGILState_Ensure() knows one state of a thread, the first. A thread in another interpreter has a second one,
    /// and would wait for the lock that it holds itself.
    static bool heldByThisThread()
    {
        const PyThreadState *first = PyGILState_GetThisThreadState();
        const PyThreadState *current = _PyThreadState_Current;
        return first && current && (current == first || current->thread_id == PyThread_get_thread_ident());
    }

    bool taken_;
    PyGILState_STATE state_ = PyGILState_UNLOCKED;
};

[[noreturn]] void throwEnded()
{
    throw InternalException("the Python interpreter has ended");
}

void needInterpreter()
{
    if (!Py_IsInitialized()) {
        throwEnded();
    }
}

/// Whether that interpreter has not ended. The caller holds the lock.
bool lives(const PyInterpreterState *interpreter)
{
    const PyInterpreterState *found = PyInterpreterState_Head();
    while (found && found != interpreter) {
        found = PyInterpreterState_Next(const_cast<PyInterpreterState *>(found));
    }
    return found != nullptr;
}

/// Has the thread, which holds the lock, run in an interpreter of the process within its scope. Throws if that one
/// has ended.
class WithinInterpreter {
public:
    explicit WithinInterpreter(PyInterpreterState *interpreter) : before_(PyThreadState_Get())
    {
        if (before_->interp == interpreter) {
            return;
        }
        if (!lives(interpreter)) {
            throwEnded();
        }
        PyThreadState *first = PyGILState_GetThisThreadState();
        const bool known = first && first->interp == interpreter;
        made_ = known ? nullptr : PyThreadState_New(interpreter);
        if (!known && !made_) {
            throw std::bad_alloc();
        }
        PyThreadState_Swap(known ? first : made_);
    }
    ~WithinInterpreter()
    {
        if (made_) {
            PyThreadState_Clear(made_);
        }
        PyThreadState_Swap(before_);
        if (made_) {
            PyThreadState_Delete(made_);
        }
    }
    WithinInterpreter(const WithinInterpreter &) = delete;
    WithinInterpreter &operator=(const WithinInterpreter &) = delete;

private:
    PyThreadState *before_, *made_ = nullptr;
};

struct DropReference {
    void operator()(PyObject *object) const { Py_XDECREF(object); }
};
using Reference = std::unique_ptr<PyObject, DropReference>;

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

PyObjHandle::PyObjHandle(_object *object, bool takesOver)
    : object_(object), interpreter_(PyThreadState_Get()->interp)
{
    if (!takesOver) {
        Py_INCREF(object_);
    }
}

PyObjHandle::~PyObjHandle()
{
    // What outlives the interpreter has nothing left to give its reference back to.
    if (!Py_IsInitialized()) {
        return;
    }
    InterpreterLock lock;
    try {
        WithinInterpreter interpreter(interpreter_);
        Py_DECREF(object_);
    } catch (const std::exception &) {
        // Where it belongs it cannot be ended, and nowhere else.
    }
}

std::optional<long> PyObjHandle::call(const char *method, std::initializer_list<long> arguments) const
{
    needInterpreter();
    InterpreterLock lock;
    WithinInterpreter interpreter(interpreter_);
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
    InterpreterLock lock;
    WithinInterpreter interpreter(interpreter_);
    if (!callMethod(object_, method, arguments)) {
        throw InternalException(takeError());
    }
}

}  // namespace Vey
