// Python functions that C calls: callback(type, function).
//
// Arguments arrive as functions' results do; what points into the SDK's memory is good during the call, and
// is marked afterwards, so that using it raises TypeError. None as a result is 0.
//
// A callback that was registered through checked() lives as registrations.h says; any other as long as its object.
// (Nothing can be known of a bare call of the binding.) Where the SDK goes on calling one that is gone, it gets a
// failure, and Python a RuntimeWarning.
//
// An exception makes the result negative, where it is a status, which stops traversals. It comes out of the
// checked() that the thread is in; where there is none, it is printed.
#pragma once

#include "index.h"
#include "module/references.h"

namespace quorel {

extern PyTypeObject Callback_Type;
bool initialise_callback_type();

/// callback(type or function, function)
NewReference new_callback(PyObject *module, PyObject *args);

/// After this no Python function is called any more; waits for those that other threads are in.
NewReference close_callbacks(PyObject *module, PyObject *);

/// How many callbacks there are: while there are none, no call can raise.
extern Py_ssize_t callback_count;

/// A call of the SDK that exceptions of callbacks come out of; on the stack, with the interpreter lock held.
class Caller {
public:
    Caller();
    ~Caller();
    Caller(const Caller &) = delete;
    Caller &operator=(const Caller &) = delete;

    /// Takes over the pending exception, if there is none yet; returns whether it did.
    bool take_error();
    /// Makes the exception pending again. Returns whether there was one.
    bool raise_error();

    /// The innermost call of this thread, or null.
    static Caller *current();

private:
    Caller **place_;  ///< of this thread's innermost, which takes a search to find
    Caller *outer_;
    PyObject *type_ = nullptr, *value_ = nullptr, *traceback_ = nullptr;
};

}  // namespace quorel
