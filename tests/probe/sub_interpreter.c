/* Runs Python code in an interpreter of its own in this process. Python's own symbols come from the process. */
#include <Python.h>

int run_in_sub_interpreter(const char *code);
void end_sub_interpreter(void);

static PyThreadState *kept;

/* 0, or -1 if the code raised; the interpreter stays. To be called with the interpreter lock held. */
int run_in_sub_interpreter(const char *code)
{
    PyThreadState *before = PyThreadState_Get();
    int result;
    if (kept == NULL) {
        kept = Py_NewInterpreter();
    } else {
        PyThreadState_Swap(kept);
    }
    result = PyRun_SimpleString(code);
    PyThreadState_Swap(before);
    return result;
}

void end_sub_interpreter(void)
{
    PyThreadState *before = PyThreadState_Swap(kept);
    Py_EndInterpreter(kept);
    kept = NULL;
    PyThreadState_Swap(before);
}
