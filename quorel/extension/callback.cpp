#include "callback.h"

#include "array.h"
#include "loan.h"
#include "trampoline.h"
#include "values.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <cstring>
#include <new>

namespace quorel {

namespace {

struct Callback {
    PyObject_HEAD PyObject *dictionary;  ///< holds `this`
    PyObject *function;
    const CType *type;
    unsigned slot;
    PyObject *references;
};

// Borrowed: an object leaves its slot when it dies.
Callback **slots;
void **slot_functions;
unsigned *next_slot;

std::atomic<bool> closed{false};
std::atomic<int> inside{0};
__thread int inside_here;
__thread Caller *innermost;

Callback *as_callback(PyObject *object)
{
    return reinterpret_cast<Callback *>(object);
}

size_t place_of(unsigned callback, unsigned slot)
{
    return callback * size_t{slots_per_callback} + slot;
}

const CCallback &signature_of(const Callback *callback)
{
    return c_callbacks[callback->type->target];
}

// The child of a fork has no other threads.
void forget_other_threads()
{
    inside = inside_here;
}

// Whether Python may be entered; leave() has to follow.
bool enter()
{
    ++inside;
    if (closed) {
        --inside;
        return false;
    }
    ++inside_here;
    return true;
}

void leave()
{
    --inside_here;
    --inside;
}

// The last word of a function that could not say anything.
void write_failure(const CCallback &signature, void *result)
{
    if (signature.result == none) {
        return;
    }
    const CType &type = c_types[signature.result];
    bool is_status = std::strcmp(name_of(type), "int") == 0;
    std::memset(result, is_status ? 0xff : 0, type.size);
}

// The Python values of the arguments, whose memory is lent.
class Arguments {
public:
    Arguments(const CCallback &signature, void *const *values)
        : values_(Owned::steal(PyTuple_New(signature.parameter_count))), loan_(new_loan())
    {
        complete_ = values_ && loan_;
        for (Py_ssize_t i = 0; complete_ && i < signature.parameter_count; ++i) {
            PyObject *value = read(c_parameters[signature.parameters + i], values[i], loan_.get());
            complete_ = value != nullptr;
            PyTuple_SET_ITEM(values_.get(), i, value);
        }
    }
    ~Arguments()
    {
        if (loan_) {
            end_loan(loan_.get());
        }
    }

    // Null with an exception where a value could not be made.
    PyObject *get() const { return complete_ ? values_.get() : nullptr; }

private:
    static NewReference read(const CParameter &parameter, void *argument, PyObject *loan)
    {
        if (parameter.type == none) {
            return new_none();
        }
        const CType &type = c_types[parameter.type];
        // An array is passed as its address.
        bool by_address = parameter.way == Way::mac_address;
        char *address = by_address ? *static_cast<char **>(argument) : static_cast<char *>(argument);
        return address ? read_value(type, address, loan) : new_none();
    }

    Owned values_, loan_;
    bool complete_;
};

bool write_result(const CCallback &signature, PyObject *value, void *result)
{
    return signature.result == none || value == Py_None
           || write_value(c_types[signature.result], static_cast<char *>(result), value);
}

// Nobody is there who could be told otherwise.
void print_error(PyObject *function)
{
    if (PyErr_ExceptionMatches(PyExc_SystemExit)) {
        PyErr_WriteUnraisable(function);
    } else {
        PyErr_PrintEx(0);
    }
}

// A function that was registered by a bare call, and then dropped, is missed by nobody else.
void warn_of_dropped()
{
    PendingError pending;
    if (PyErr_WarnEx(
            PyExc_RuntimeWarning,
            "the SDK calls a callback that Python has dropped: keep it, or register it with checked()", 1)
        != 0) {
        PyErr_WriteUnraisable(Py_None);
    }
}

void call_function_of(Callback *callback, void *const *values, void *result)
{
    const CCallback &signature = signature_of(callback);
    // It may unregister itself.
    Owned kept = Owned::share(reinterpret_cast<PyObject *>(callback));
    Owned function = Owned::share(callback->function);
    PendingError pending;
    bool done = false;
    {
        Arguments given(signature, values);
        Owned answer = Owned::steal(given.get() ? PyObject_CallObject(function.get(), given.get()) : nullptr);
        done = answer && write_result(signature, answer.get(), result);
    }
    if (!done) {
        write_failure(signature, result);
        Caller *caller = Caller::current();
        if (!caller || !caller->take_error()) {
            print_error(function.get());
        }
    }
}

void deallocate(PyObject *object)
{
    Callback *callback = as_callback(object);
    PyObject_GC_UnTrack(object);
    if (callback->references) {
        PyObject_ClearWeakRefs(object);
    }
    slots[place_of(callback->type->target, callback->slot)] = nullptr;
    --callback_count;
    Py_XDECREF(callback->dictionary);
    Py_XDECREF(callback->function);
    PyObject_GC_Del(object);
}

int traverse(PyObject *object, visitproc visit, void *arg)
{
    Py_VISIT(as_callback(object)->function);
    return 0;
}

int clear(PyObject *object)
{
    Py_CLEAR(as_callback(object)->function);
    return 0;
}

NewReference represent(PyObject *object)
{
    Callback *callback = as_callback(object);
    Owned function = Owned::steal(PyObject_Repr(callback->function ? callback->function : Py_None));
    return function ? PyString_FromFormat("<quorel callback of type '%s': %s>", name_of(*callback->type),
                                          PyString_AS_STRING(function.get()))
                    : nullptr;
}

NewReference call(PyObject *object, PyObject *args, PyObject *keywords)
{
    return PyObject_Call(as_callback(object)->function, args, keywords);
}

NewReference get_function(PyObject *object, void *)
{
    return Owned::share(as_callback(object)->function).release();
}

NewReference get_type(PyObject *object, void *)
{
    return PyString_FromString(name_of(*as_callback(object)->type));
}

NewReference get_this(PyObject *object, void *)
{
    return Owned::share(PyDict_GetItem(as_callback(object)->dictionary, this_name())).release();
}

int set_attribute(PyObject *, PyObject *name, PyObject *)
{
    PyErr_Format(PyExc_AttributeError, "attribute '%.200s' of a callback cannot be set",
                 PyString_Check(name) ? PyString_AS_STRING(name) : "?");
    return -1;
}

PyGetSetDef attributes[] = {
    {const_cast<char *>("function"), get_function, nullptr, const_cast<char *>("The Python function."),
     nullptr},
    {const_cast<char *>("type"), get_type, nullptr, const_cast<char *>("The C type of the function pointer."),
     nullptr},
    {const_cast<char *>("this"), get_this, nullptr,
     const_cast<char *>("The pointer object that functions see."), nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

// The type of callback that is meant: by its name, or by a function that takes one.
const CType *callback_type(PyObject *of)
{
    const CType *type = nullptr;
    if (const CFunction *function = find_function(of)) {
        for (size_t i = 0; i < function->parameter_count && !type; ++i) {
            const CParameter &parameter = parameter_of(*function, i);
            bool is_callback = parameter.type != none && c_types[parameter.type].kind == Kind::callback
                               && (parameter.way == Way::callback || parameter.way == Way::by_value);
            type = is_callback ? &c_types[parameter.type] : nullptr;
        }
    } else if (PyString_Check(of)) {
        type = find_type_spelt(PyString_AS_STRING(of), static_cast<size_t>(PyString_GET_SIZE(of)));
    }
    if (!type || type->kind != Kind::callback) {
        Owned text = Owned::steal(PyObject_Repr(of));
        if (text) {
            PyErr_Format(PyExc_TypeError,
                         "%.200s is neither a type of callback nor a function that takes one",
                         PyString_AS_STRING(text.get()));
        }
        return nullptr;
    }
    return type;
}

// A free slot, the one that has been free for longest as far as that is known; or slots_per_callback.
unsigned free_slot(unsigned callback)
{
    for (unsigned i = 0; i < slots_per_callback; ++i) {
        unsigned slot = (next_slot[callback] + i) % slots_per_callback;
        if (!slots[place_of(callback, slot)]) {
            next_slot[callback] = slot + 1;
            return slot;
        }
    }
    return slots_per_callback;
}

// What functions see: a pointer to the C function, and to where its address stands for those that take it by
// value.
Owned pointer_object_of(const CType &type, unsigned slot)
{
    void **function = &slot_functions[place_of(type.target, slot)];
    *function = callback_slots[type.target].function(slot);
    Owned by_value;
    if (type.pointer != no_type) {
        by_value = Owned::steal(new_pointer(function, type.pointer, nullptr));
        if (!by_value || type.self == no_type) {
            return by_value;
        }
    }
    Owned pointer = Owned::steal(new_pointer(*function, type.self, nullptr));
    if (pointer) {
        reinterpret_cast<SwigPyObject *>(pointer.get())->next = by_value.release();
    }
    return pointer;
}

// Once in a process: what C was given by an earlier start of the module may still be called.
bool make_slots()
{
    if (next_slot) {
        return true;
    }
    slots = new (std::nothrow) Callback *[c_callback_count * slots_per_callback]();
    slot_functions = new (std::nothrow) void *[c_callback_count * slots_per_callback]();
    next_slot = new (std::nothrow) unsigned[c_callback_count + 1]();
    if (!slots || !slot_functions || !next_slot) {
        delete[] slots;
        delete[] slot_functions;
        delete[] next_slot;
        next_slot = nullptr;
        PyErr_NoMemory();
        return false;
    }
    pthread_atfork(nullptr, nullptr, forget_other_threads);
    return true;
}

}  // namespace

Py_ssize_t callback_count;

PyTypeObject Callback_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "quorel.Callback", sizeof(Callback)};

bool initialise_callback_type()
{
    if (!make_slots()) {
        return false;
    }
    PyTypeObject &type = Callback_Type;
    type.tp_dealloc = deallocate;
    type.tp_traverse = traverse;
    type.tp_clear = clear;
    type.tp_repr = represent;
    type.tp_call = call;
    type.tp_getset = attributes;
    type.tp_dictoffset = offsetof(Callback, dictionary);
    type.tp_weaklistoffset = offsetof(Callback, references);
    type.tp_getattro = PyObject_GenericGetAttr;
    type.tp_setattro = set_attribute;
    type.tp_flags |= Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC;
    type.tp_doc = "A Python function as a C function pointer: see quorel.callback.";
    return PyType_Ready(&type) == 0;
}

NewReference new_callback(PyObject *, PyObject *args)
{
    PyObject *of, *function;
    if (!PyArg_UnpackTuple(args, "callback", 2, 2, &of, &function)) {
        return nullptr;
    }
    const CType *type = callback_type(of);
    if (!type) {
        return nullptr;
    }
    if (!PyCallable_Check(function)) {
        PyErr_Format(PyExc_TypeError, "a callback of type '%.200s' is made from a function, not from %.100s",
                     name_of(*type), Py_TYPE(function)->tp_name);
        return nullptr;
    }
    unsigned slot = free_slot(type->target);
    if (slot == slots_per_callback) {
        PyErr_Format(PyExc_RuntimeError, "there are %u callbacks of type '%.200s' already",
                     slots_per_callback, name_of(*type));
        return nullptr;
    }
    Owned pointer = pointer_object_of(*type, slot);
    Owned dictionary = Owned::steal(pointer ? PyDict_New() : nullptr);
    if (!dictionary || PyDict_SetItem(dictionary.get(), this_name(), pointer.get()) != 0) {
        return nullptr;
    }
    Callback *callback = PyObject_GC_New(Callback, &Callback_Type);
    if (!callback) {
        return nullptr;
    }
    callback->dictionary = dictionary.release();
    callback->function = Owned::share(function).release();
    callback->type = type;
    callback->slot = slot;
    callback->references = nullptr;
    slots[place_of(type->target, slot)] = callback;
    ++callback_count;
    PyObject_GC_Track(reinterpret_cast<PyObject *>(callback));
    return reinterpret_cast<PyObject *>(callback);
}

void call_python(unsigned number, unsigned slot, void *const *values, void *result)
{
    const CCallback &signature = c_callbacks[number];
    if (!enter()) {
        write_failure(signature, result);
        return;
    }
    PyGILState_STATE state = PyGILState_Ensure();
    Callback *callback = slots[place_of(number, slot)];
    if (callback && callback->function) {
        call_function_of(callback, values, result);
    } else {
        write_failure(signature, result);
        warn_of_dropped();
    }
    PyGILState_Release(state);
    leave();
}

NewReference close_callbacks(PyObject *, PyObject *)
{
    constexpr unsigned microseconds = 1000;
    closed = true;
    Py_BEGIN_ALLOW_THREADS while (inside > inside_here)
    {
        usleep(microseconds);
    }
    Py_END_ALLOW_THREADS return new_none();
}

Caller::Caller() : place_(&innermost), outer_(*place_)
{
    *place_ = this;
}

Caller::~Caller()
{
    *place_ = outer_;
    Py_XDECREF(type_);
    Py_XDECREF(value_);
    Py_XDECREF(traceback_);
}

bool Caller::take_error()
{
    if (type_) {
        return false;
    }
    PyErr_Fetch(&type_, &value_, &traceback_);
    return true;
}

bool Caller::raise_error()
{
    if (!type_) {
        return false;
    }
    PyErr_Restore(type_, value_, traceback_);
    type_ = value_ = traceback_ = nullptr;
    return true;
}

Caller *Caller::current()
{
    return innermost;
}

}  // namespace quorel
