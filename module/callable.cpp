#include "callable.h"

namespace quorel {

CallFromC::CallFromC(Py_ssize_t most_arguments)
{
    // When the interpreter has gone there is nobody to call.
    if (!Py_IsInitialized()) {
        return;
    }
    const PyThreadState *of_thread = PyGILState_GetThisThreadState();
    is_inner_ = of_thread && of_thread->frame;
    state_ = PyGILState_Ensure();
    has_lock_ = true;
    arguments_ = PyErr_Occurred() ? nullptr : PyTuple_New(most_arguments);
    may_call_ = arguments_ != nullptr;
}

CallFromC::~CallFromC()
{
    if (has_lock_) {
        Py_XDECREF(arguments_);
        PyGILState_Release(state_);
    }
}

void CallFromC::add(NewReference argument)
{
    may_call_ = may_call_ && argument;
    if (may_call_) {
        PyTuple_SET_ITEM(arguments_, count_++, argument);
    } else {
        Py_XDECREF(argument);
    }
}

bool CallFromC::call(PyObject *function, int32_t *result)
{
    // It may set another one in its own place.
    Owned kept = Owned::share(may_call_ ? function : nullptr);
    bool done = kept && _PyTuple_Resize(&arguments_, count_) == 0;
    if (done) {
        Owned answer = Owned::steal(PyObject_CallObject(kept.get(), arguments_));
        done = answer
               && (answer.get() == Py_None || !PyInt_Check(answer.get())
                   || to_int32(answer.get(), result) == Status::ok);
    }
    if (may_call_ && PyErr_Occurred() && !is_inner_) {
        PyErr_WriteUnraisable(kept.get());
    }
    return done;
}

NewReference from_texts(int count, char **texts)
{
    Owned list = Owned::steal(PyList_New(count));
    for (int i = 0; list && i < count; ++i) {
        PyObject *text = from_string(texts ? texts[i] : nullptr);
        if (!text) {
            return nullptr;
        }
        PyList_SET_ITEM(list.get(), i, text);
    }
    return list.release();
}

KeptCallable::KeptCallable(PyObject *&now, PyObject *next)
    : now_(now), next_(next == Py_None ? nullptr : next), before_(now)
{
    Py_XINCREF(next_);
    now = next_;
}

KeptCallable::~KeptCallable()
{
    PendingError pending;
    Py_XDECREF(before_);
}

}  // namespace quorel
