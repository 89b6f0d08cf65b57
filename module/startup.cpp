// Start-up of the module, in the order that its users can rely on:
//
//  1. The method table is made from the generated groups. No docstring carries a packed pointer, so none is
//     rewritten.
//  2. The module is created with its methods.
//  3. The type table is set up and shared with the other modules of the runtime.
//  4. Pointer and binary constants would be installed here; there are none.
//  5. The interpreter lock is created, before any SDK thread could exist.
//  6. Constants are installed in header order, and the variables as "cvar".
//
// Proxy classes are registered later, by the companion. There is no shutdown step.

#include "member_descriptor.h"
#include "methods.h"
#include "packed_object.h"
#include "pointer_object.h"
#include "proxy_type.h"
#include "variable.h"

#include <cstring>

namespace quorel {

namespace {

// Holds the garbage collector off: import makes thousands of objects and no garbage.
class CollectorPause {
public:
    CollectorPause()
    {
        PendingError pending;
        gc_ = Owned::steal(PyImport_ImportModule("gc"));
        Owned enabled = Owned::steal(gc_ ? call("isenabled") : nullptr);
        paused_ = enabled && PyObject_IsTrue(enabled.get()) == 1;
        if (paused_) {
            Owned::steal(call("disable"));
        }
    }
    ~CollectorPause()
    {
        PendingError pending;
        if (paused_) {
            Owned::steal(call("enable"));
        }
    }

private:
    NewReference call(const char *function)
    {
        return PyObject_CallMethod(gc_.get(), const_cast<char *>(function), nullptr);
    }

    Owned gc_;
    bool paused_ = false;
};

void install(Borrowed dictionary, const char *name, Owned value)
{
    // A value that could not be made surfaces as the pending exception when the import ends.
    if (value) {
        PyDict_SetItemString(dictionary, name, value.get());
    }
}

void install_constants(Borrowed dictionary)
{
    const char *name = constant_names;
    for (size_t i = 0; i < constant_count; ++i) {
        install(dictionary, name, Owned::steal(PyInt_FromLong(constant_values[i])));
        name += std::strlen(name) + 1;
    }
}

void initialise()
{
    CollectorPause pause;
    if (!build_method_table() || !initialise_pointer_object_type() || !initialise_packed_object_type()
        || !initialise_proxy_type() || !initialise_member_descriptor_type()) {
        return;
    }
    PyObject *module = Py_InitModule4("_QuorelApiNew", method_table, nullptr, nullptr, PYTHON_API_VERSION);
    if (!module) {
        return;
    }
    PyObject *dictionary = PyModule_GetDict(module);
    initialise_type_table();
    PyEval_InitThreads();
    install_constants(dictionary);
    install(dictionary, "cvar", new_variable_object());
    install(dictionary, "_Proxy", Owned::share(reinterpret_cast<PyObject *>(&Proxy_Type)));
}

}  // namespace

}  // namespace quorel

extern "C" __attribute__((visibility("default"))) void init_QuorelApiNew();

void init_QuorelApiNew()
{
    quorel::initialise();
}
