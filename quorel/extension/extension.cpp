// _quorel: what the package `quorel` cannot do in Python. One more module of SWIG's runtime: it finds the
// binding's types in the process-wide table and makes pointer objects that the binding takes.

#include "array.h"
#include "callback.h"
#include "checked.h"
#include "describe.h"
#include "lookup.h"
#include "module/pointer_object.h"
#include "output.h"

namespace quorel {

// Values of C++ classes are the binding's affair.
const DestructorRow destructors[] = {{no_type, nullptr}};
const size_t destructor_count = 0;

namespace {

PyMethodDef functions[] = {
    {"checked", checked, METH_VARARGS,
     "checked(function, *arguments): calls a function of the SDK and raises StatusError unless its status "
     "is\n"
     "BCM_E_NONE.\n\n"
     "An argument OUT stands for an output: it becomes a pointer to new memory, and its value is what "
     "checked()\n"
     "returns; several outputs come back as a tuple. OUT[n] is an array of up to n values or text of up to n "
     "bytes.\n"
     "Where a later output tells how many were written, the list has as many.\n"
     "A result that is no status is returned, before the outputs. What a callback raises is raised here.\n"
     "Raises TypeError, ValueError or OverflowError for wrong arguments, before the SDK is called."},
    {"array", new_array, METH_VARARGS,
     "array(type, size or values): typed memory that any function takes where it takes a pointer to such "
     "elements.\n\n"
     "type: a C type ('uint8', 'bcm_pkt_t *') or the class of a record. The elements are zeroed, or the "
     "values of a\n"
     "sequence, or the bytes of a str or buffer. Raises TypeError or ValueError for what is no such type, "
     "MemoryError\n"
     "for more than 2 GB."},
    {"cell", new_cell, METH_VARARGS,
     "cell(type, value=None): an array of one element, which is its attribute `value`."},
    {"callback", new_callback, METH_VARARGS,
     "callback(type, function): a Python function as a C function pointer.\n\n"
     "type: the C type of the pointer, or a function of the SDK that takes one. The arguments arrive as "
     "results of\n"
     "functions do; records and pointers are good until the function returns. None as a result is 0. Keep "
     "the object\n"
     "for as long as the SDK may call; a callback registered through checked() is kept until it is "
     "unregistered the\n"
     "same way.\n"
     "Raises TypeError for what is no callback, RuntimeError when 32 of the type exist."},
    {"copy", copy_record, METH_O, "copy(record): a record of its own with the same content."},
    {"parameters", describe_parameters, METH_O,
     "parameters(function): a list with a tuple (name, C type, way, elements) for each parameter of a "
     "function of the\n"
     "SDK. The way is 'value', 'pointer', 'constant' (a pointer that is only read), 'text', "
     "'constant_text',\n"
     "'mac_address', 'by_value', 'callback', 'any_pointer', 'in_and_out' or 'other'; elements is 0 where no "
     "declaration tells."},
    {"_close_callbacks", close_callbacks, METH_NOARGS, "Ends all callbacks; for the end of the interpreter."},
    {nullptr, nullptr, 0, nullptr},
};

void initialise()
{
    if (!initialise_pointer_object_type() || !initialise_memory_type() || !initialise_array_type()
        || !initialise_out_type() || !initialise_callback_type()) {
        return;
    }
    initialise_type_table();
    if (!initialise_lookup()) {
        return;
    }
    PyEval_InitThreads();
    PyObject *module = Py_InitModule4("_quorel", functions, nullptr, nullptr, PYTHON_API_VERSION);
    if (!module) {
        return;
    }
    Py_INCREF(out_marker);
    PyModule_AddObject(module, "OUT", out_marker);
    for (PyTypeObject *type : {&Array_Type, &Callback_Type}) {
        PyObject *object = reinterpret_cast<PyObject *>(type);
        Py_INCREF(object);
        PyModule_AddObject(module, type == &Array_Type ? "Array" : "Callback", object);
    }
}

}  // namespace

}  // namespace quorel

extern "C" __attribute__((visibility("default"))) void init_quorel();

void init_quorel()
{
    quorel::initialise();
}
