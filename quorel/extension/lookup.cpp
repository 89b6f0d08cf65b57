#include "lookup.h"

#include "loan.h"
#include "module/refinements.h"
#include "name_hash.h"
#include "records.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace quorel {

namespace {

constexpr char binding_name[] = "_QuorelApiNew";
constexpr char proxy_name[] = "_QuorelApiNew._Proxy";

// The binding's table: a function that belongs to the runtime, then the methods in the generator's order.
PyMethodDef *methods;

const PyTypeObject *binding_pointer_object;

bool keep_whole(PyObject *whole, PyObject *part)
{
    return keep_alive(part, whole);
}

// Whether the address is in the record that the pointer object is to.
bool is_part_of(const SwigPyObject &record, const void *address)
{
    const CType *last = c_types + c_type_count;
    const CType *type = std::find_if(c_types, last, [&](const CType &one) {
        return one.kind == Kind::record && one.pointer != no_type && types[one.pointer] == record.ty;
    });
    const auto first = reinterpret_cast<uintptr_t>(record.ptr), place = reinterpret_cast<uintptr_t>(address);
    return type != last && place - first < type->size;
}

// By memory, a loan, or the record that it is part of; what was read out of a record may also be elsewhere.
bool is_kept(PyObject *pointer)
{
    PyObject *keeper = has_keeper(pointer) ? reinterpret_cast<PointerObject *>(pointer)->keeper : nullptr;
    return keeper
           && (!has_keeper(keeper)
               || is_part_of(*reinterpret_cast<SwigPyObject *>(keeper),
                             reinterpret_cast<SwigPyObject *>(pointer)->ptr));
}

void refine(Refinements &refinements)
{
    binding_pointer_object = refinements.pointer_object;
    refinements.set_members = set_members;
    refinements.read_out = keep_whole;
    refinements.read_copied = read_copied;
    refinements.write_copied = write_copied;
    refinements.is_kept = is_kept;
}

}  // namespace

bool initialise_lookup()
{
    Owned binding = Owned::steal(PyImport_ImportModule(binding_name));
    if (!binding) {
        return false;
    }
    PyObject *functions = PyModule_GetDict(binding.get());
    PyObject *first = PyDict_GetItemString(functions, "SWIG_PyInstanceMethod_New");
    PyObject *proxy = PyDict_GetItemString(functions, "_Proxy");
    bool fits = first && PyCFunction_Check(first) && proxy && PyType_Check(proxy)
                && std::strcmp(reinterpret_cast<PyTypeObject *>(proxy)->tp_name, proxy_name) == 0;
    if (!fits) {
        PyErr_Format(PyExc_ImportError, "%s is not the one that this extension was built with", binding_name);
        return false;
    }
    methods = reinterpret_cast<PyCFunctionObject *>(first)->m_ml + 1;
    refine(reinterpret_cast<ProxyType *>(proxy)->refinements);
    return true;
}

const CFunction *find_function(PyObject *function)
{
    if (!PyCFunction_Check(function)) {
        return nullptr;
    }
    const PyMethodDef *method = reinterpret_cast<PyCFunctionObject *>(function)->m_ml;
    auto distance = reinterpret_cast<uintptr_t>(method) - reinterpret_cast<uintptr_t>(methods);
    if (distance >= method_count * sizeof(PyMethodDef)) {
        return nullptr;
    }
    uint16_t number = function_of_method[distance / sizeof(PyMethodDef)];
    return number == none ? nullptr : &c_functions[number];
}

const CType *find_type_spelt(const char *name, size_t length)
{
    size_t place = name_hash({name, length});
    for (;; ++place) {
        uint16_t number = type_buckets[place & (type_bucket_count - 1)];
        if (number == none) {
            return nullptr;
        }
        const char *candidate = name_of(c_types[number]);
        if (std::strlen(candidate) == length && std::memcmp(candidate, name, length) == 0) {
            return &c_types[number];
        }
    }
}

const CType *find_type_named(PyObject *name)
{
    const char *text = nullptr;
    if (PyString_Check(name)) {
        text = PyString_AS_STRING(name);
    } else if (PyType_Check(name)) {
        text = reinterpret_cast<PyTypeObject *>(name)->tp_name;
    } else {
        PyErr_Format(PyExc_TypeError, "a C type is named by a str or a record's class, not by %.100s",
                     Py_TYPE(name)->tp_name);
        return nullptr;
    }
    const CType *type = find_type_spelt(text, std::strlen(text));
    if (!type) {
        PyErr_Format(PyExc_ValueError, "no pointer to '%.200s' crosses between Python and the SDK", text);
    }
    return type;
}

Owned function_name(PyObject *function)
{
    Owned name = Owned::steal(PyObject_GetAttrString(function, "__name__"));
    if (!name || !PyString_Check(name.get())) {
        PyErr_Clear();
        name = Owned::steal(PyObject_Repr(function));
    }
    return name;
}

Owned parameter_name(PyObject *function, size_t place)
{
    const char *text = reinterpret_cast<PyCFunctionObject *>(function)->m_ml->ml_doc;
    const char *start = text ? std::strchr(text, '(') : nullptr;
    for (; start && place > 0; --place) {
        start = std::strchr(start + 1, ',');
    }
    if (!start) {
        return Owned::steal(PyString_FromString("?"));
    }
    start += std::strspn(start, "(, ");
    return Owned::steal(
        PyString_FromStringAndSize(start, static_cast<Py_ssize_t>(std::strcspn(start, ",)"))));
}

NewReference new_pointer(void *pointer, uint16_t descriptor, PyObject *keeper)
{
    Owned made = Owned::steal(new_pointer_object(pointer, types[descriptor], Ownership::borrowed));
    return made && keep_alive(made.get(), keeper) ? made.release() : nullptr;
}

NewReference new_reference(void *pointer, uint16_t descriptor, PyObject *keeper)
{
    if (!pointer) {
        return new_none();
    }
    Owned bare = Owned::steal(new_pointer(pointer, descriptor, keeper));
    return bare ? with_proxy(std::move(bare)) : nullptr;
}

PyObject *class_of(uint16_t descriptor)
{
    auto *data =
        descriptor == no_type ? nullptr : static_cast<SwigPyClientData *>(types[descriptor]->clientdata);
    return data ? data->klass : nullptr;
}

bool has_keeper(PyObject *object)
{
    return Py_TYPE(object) == &PointerObject_Type || Py_TYPE(object) == binding_pointer_object;
}

}  // namespace quorel
