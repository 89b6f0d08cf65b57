#include "interpreter_lock.h"

#include <Python.h>

#include <sim/interfaces.h>

namespace {

void *let_go()
{
    // When the interpreter has gone nobody wants its lock.
    if (!Py_IsInitialized()) {
        return nullptr;
    }
    PyThreadState *own = PyGILState_GetThisThreadState();
    return own && own == _PyThreadState_Current ? PyEval_SaveThread() : nullptr;
}

void take_back(void *state)
{
    if (state) {
        PyEval_RestoreThread(static_cast<PyThreadState *>(state));
    }
}

}  // namespace

namespace QuorelSim {

void wait_without_interpreter_lock()
{
    sim_wait_hooks_set(let_go, take_back);
}

}  // namespace QuorelSim
