// Reference types: who owns a PyObject is visible in the signature.
//
// Rules:
//  1. A parameter that is only looked at is Borrowed: the caller keeps it alive for the call.
//  2. A result that the caller must release is Owned, or NewReference where Python's own signatures
//     (PyCFunction, type slots) or the call path need a bare pointer.
//  3. An Owned is moved, never copied; release() gives its reference away, for functions that steal.
//  4. A null Owned or NewReference means that a Python exception is set.
#pragma once

#include <Python.h>

#include <utility>

namespace [[gnu::visibility("hidden")]] quorel {

/// A bare pointer whose reference belongs to whoever receives it.
using NewReference = PyObject *;

/// A reference that somebody else owns.
class Borrowed {
public:
    Borrowed(PyObject *object) : object_(object) {}
    operator PyObject *() const { return object_; }
    PyObject *operator->() const { return object_; }

private:
    PyObject *object_;
};

/// A reference that this object releases at the end of its scope.
class Owned {
public:
    Owned() = default;
    Owned(Owned &&other) noexcept : object_(other.release()) {}
    Owned &operator=(Owned &&other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    Owned(const Owned &) = delete;
    Owned &operator=(const Owned &) = delete;
    ~Owned() { Py_XDECREF(object_); }

    /// Takes over a new reference.
    static Owned steal(NewReference object) { return Owned(object); }
    /// Adds a reference of its own to a borrowed one; null stays null.
    static Owned share(PyObject *object)
    {
        Py_XINCREF(object);
        return Owned(object);
    }

    /// Gives the reference away.
    NewReference release()
    {
        PyObject *object = object_;
        object_ = nullptr;
        return object;
    }
    /// Adds a reference of its own to a borrowed object; only for one that is still null.
    void hold(PyObject *object)
    {
        object_ = object;
        Py_INCREF(object);
    }
    PyObject *get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    explicit Owned(PyObject *object) : object_(object) {}
    PyObject *object_ = nullptr;
};

inline NewReference new_none()
{
    Py_INCREF(Py_None);
    return Py_None;
}

/// Keeps the pending Python exception, if any, while other Python code runs, and puts it back.
class PendingError {
public:
    PendingError() { PyErr_Fetch(&type_, &value_, &traceback_); }
    ~PendingError() { PyErr_Restore(type_, value_, traceback_); }
    PendingError(const PendingError &) = delete;
    PendingError &operator=(const PendingError &) = delete;

private:
    PyObject *type_, *value_, *traceback_;
};

}  // namespace quorel
