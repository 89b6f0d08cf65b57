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
// Proxy classes are registered later, by the companion. There is no shutdown step. Where a step fails the import
// does, and leaves no module behind.

#include "startup.h"

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

bool install(Borrowed dictionary, const char *name, Owned value)
{
    return value && PyDict_SetItemString(dictionary, name, value.get()) == 0;
}

bool install_constants(Borrowed dictionary)
{
    const char *name = constant_names;
    for (size_t i = 0; i < constant_count; ++i) {
        if (!install(dictionary, name, Owned::steal(PyInt_FromLong(constant_values[i])))) {
            return false;
        }
        name += std::strlen(name) + 1;
    }
    for (size_t i = 0; i < value_count; ++i) {
        if (!install(dictionary, value_rows[i].name, Owned::steal(value_rows[i].make()))) {
            return false;
        }
    }
    return true;
}

bool initialise_types()
{
    return initialise_pointer_object_type() && initialise_packed_object_type() && initialise_proxy_type()
           && initialise_member_descriptor_type();
}

// Whether all could be made; if not, an exception may be set.
bool initialise()
{
    if (!build_method_table() || !initialise_types()) {
        return false;
    }
    PyObject *module = Py_InitModule4(module_name, method_table, nullptr, nullptr, PYTHON_API_VERSION);
    if (!module || !initialise_type_table()) {
        return false;
    }
    PyObject *dictionary = PyModule_GetDict(module);
    PyEval_InitThreads();
    return install_constants(dictionary) && install(dictionary, "cvar", new_variable_object())
           && install(dictionary, "_Proxy", Owned::share(reinterpret_cast<PyObject *>(&Proxy_Type.type)));
}

// The next import is to begin anew, not to find what there is of the module.
void forget_module(const char *name)
{
    PendingError pending;
    if (PyDict_DelItemString(PyImport_GetModuleDict(), name) != 0) {
        PyErr_Clear();
    }
}

}  // namespace

void import()
{
    CollectorPause pause;
    // In a package its name is longer. Creating the module forgets that.
    const char *name = _Py_PackageContext ? _Py_PackageContext : module_name;
    if (initialise()) {
        return;
    }
    // Not all of the interpreter says why it failed, but in these steps it can only be this.
    if (!PyErr_Occurred()) {
        PyErr_NoMemory();
    }
    forget_module(name);
}

}  // namespace quorel
