#include "pointer_object.h"

#include "builtin_call.h"

#include <cstring>

namespace quorel {

namespace {

SwigPyObject *as_pointer_object(PyObject *object)
{
    return reinterpret_cast<SwigPyObject *>(object);
}

PyObject *as_object(SwigPyObject *pointer)
{
    return reinterpret_cast<PyObject *>(pointer);
}

// Steps through a chain. A script can close one to a ring, of which this makes no more than a few rounds.
class ChainWalk {
public:
    explicit ChainWalk(PyObject *first) : link_(first) {}
    SwigPyObject *link() const { return as_pointer_object(link_); }
    void step()
    {
        if (++steps_ == next_mark_) {
            mark_ = link_;
            next_mark_ *= 2;
        }
        link_ = link()->next;
        if (link_ == mark_) {
            link_ = nullptr;
        }
    }

private:
    PyObject *link_;
    PyObject *mark_ = nullptr;  ///< a ring leads back to it
    size_t steps_ = 0, next_mark_ = 1;
};

void report_leak(const swig_type_info *type)
{
    const char *name = display_name(type);
    PySys_WriteStdout("swig/python detected a memory leak of type '%s', no destructor found.\n",
                      name ? name : "unknown");
}

// Brings a dying object back to life for as long as `call` runs, as the interpreter does for finalizers. Returns
// whether it stays alive because somebody kept it.
template <typename Call>
bool resurrect(PyObject *object, Call call)
{
    Py_REFCNT(object) = 1;
    call();
    if (--Py_REFCNT(object) == 0) {
        return false;
    }
    Py_ssize_t references = Py_REFCNT(object);
    _Py_NewReference(object);
    Py_REFCNT(object) = references;
    _Py_DEC_REFTOTAL;
    return true;
}

// Values of C++ classes that have no class in Python.
bool destroy_value(SwigPyObject *self)
{
    for (size_t i = 0; i < destructor_count; ++i) {
        if (types[destructors[i].type] == self->ty) {
            destructors[i].destroy(self->ptr);
            return true;
        }
    }
    return false;
}

// Runs the class's destroy function for an owning object whose last reference went. Returns whether the object
// stays alive because the function kept it.
bool destroy_pointee(SwigPyObject *self)
{
    auto *data = self->ty ? static_cast<SwigPyClientData *>(self->ty->clientdata) : nullptr;
    PyObject *destroy = data ? data->destroy : nullptr;
    if (!destroy) {
        if (!destroy_value(self)) {
            report_leak(self->ty);
        }
        return false;
    }
    PendingError pending;
    Owned function = Owned::share(destroy);
    Owned result;
    bool kept = false;
    if (data->delargs) {
        // The dying object cannot be an argument; a second one for the same address can.
        Owned stand_in = Owned::steal(new_pointer_object(self->ptr, self->ty, Ownership::borrowed));
        Owned args = Owned::steal(stand_in ? PyTuple_New(1) : nullptr);
        if (args) {
            PyObject *keeper = reinterpret_cast<PointerObject *>(self)->keeper;
            reinterpret_cast<PointerObject *>(stand_in.get())->keeper = Owned::share(keeper).release();
            PyTuple_SET_ITEM(args.get(), 0, stand_in.release());
            result = Owned::steal(call_function(function.get(), args.get()));
        }
    } else {
        PyCFunction call = PyCFunction_GET_FUNCTION(function.get());
        PyObject *bound = PyCFunction_GET_SELF(function.get());
        kept = resurrect(as_object(self), [&] { result = Owned::steal(call(bound, as_object(self))); });
    }
    self->own = 0;
    if (!result) {
        PyErr_WriteUnraisable(function.get());
    }
    return kept;
}

void deallocate(PyObject *object)
{
    SwigPyObject *self = as_pointer_object(object);
    if (self->own == 1 && destroy_pointee(self)) {
        return;
    }
    Owned keeper = Owned::steal(reinterpret_cast<PointerObject *>(object)->keeper);
    // A long chain must not go as deep as it is long.
    PyObject *next = self->next;
    PyObject_Del(object);
    if (--live_pointer_objects == 0) {
        last_pointer_object_went();
    }
    while (next && Py_REFCNT(next) == 1 && Py_TYPE(next) == &PointerObject_Type) {
        SwigPyObject *link = as_pointer_object(next);
        Owned dying = Owned::steal(next);
        next = link->next;
        link->next = nullptr;
    }
    Py_XDECREF(next);
}

NewReference repr_of_link(const SwigPyObject *self)
{
    const char *name = display_name(self->ty);
    return PyString_FromFormat("<Swig Object of type '%s' at %p>", name ? name : "unknown",
                               static_cast<const void *>(self));
}

// The texts of all links. Another module's pointer object gives that of what hangs on it too.
NewReference repr(PyObject *object)
{
    SwigPyObject *self = as_pointer_object(object);
    if (!self->next) {
        return repr_of_link(self);
    }
    Owned texts = Owned::steal(PyList_New(0)), empty = Owned::steal(PyString_FromString(""));
    if (!texts || !empty) {
        return nullptr;
    }
    bool own_type = true;
    for (ChainWalk walk(object); own_type && walk.link(); walk.step()) {
        PyObject *link = as_object(walk.link());
        own_type = Py_TYPE(link) == &PointerObject_Type;
        Owned text = Owned::steal(own_type ? repr_of_link(walk.link()) : PyObject_Repr(link));
        if (!text || PyList_Append(texts.get(), text.get()) != 0) {
            return nullptr;
        }
    }
    return _PyString_Join(empty.get(), texts.get());
}

NewReference compare_rich(PyObject *left, PyObject *right, int operation)
{
    if ((operation != Py_EQ && operation != Py_NE) || !is_pointer_object(left) || !is_pointer_object(right)) {
        Py_INCREF(Py_NotImplemented);
        return Py_NotImplemented;
    }
    bool equal = as_pointer_object(left)->ptr == as_pointer_object(right)->ptr;
    return PyBool_FromLong(equal == (operation == Py_EQ));
}

int compare_three_way(PyObject *left, PyObject *right)
{
    auto a = reinterpret_cast<uintptr_t>(as_pointer_object(left)->ptr);
    auto b = reinterpret_cast<uintptr_t>(as_pointer_object(right)->ptr);
    return a < b ? -1 : a > b;
}

NewReference to_integer(PyObject *object)
{
    return PyLong_FromVoidPtr(as_pointer_object(object)->ptr);
}

NewReference format_address(PyObject *object, const char *format)
{
    char text[2 * sizeof(void *) * 2];
    PyOS_snprintf(text, sizeof text, format,
                  static_cast<unsigned long>(reinterpret_cast<uintptr_t>(as_pointer_object(object)->ptr)));
    return PyString_FromString(text);
}

NewReference to_hexadecimal(PyObject *object)
{
    return format_address(object, "%lx");
}

NewReference to_octal(PyObject *object)
{
    return format_address(object, "%lo");
}

NewReference disown(PyObject *object, PyObject *)
{
    as_pointer_object(object)->own = 0;
    return new_none();
}

NewReference acquire(PyObject *object, PyObject *)
{
    as_pointer_object(object)->own = 1;
    return new_none();
}

NewReference own(PyObject *object, PyObject *args)
{
    PyObject *flag = nullptr;
    if (!PyArg_UnpackTuple(args, "own", 0, 1, &flag)) {
        return nullptr;
    }
    int truth = flag ? PyObject_IsTrue(flag) : 0;
    if (truth < 0) {
        return nullptr;
    }
    SwigPyObject *self = as_pointer_object(object);
    PyObject *previous = PyBool_FromLong(self->own);
    if (flag) {
        self->own = truth;
    }
    return previous;
}

NewReference append(PyObject *object, PyObject *other)
{
    if (!is_pointer_object(other)) {
        PyErr_SetString(PyExc_TypeError, "Attempt to append a non SwigPyObject");
        return nullptr;
    }
    SwigPyObject *self = as_pointer_object(object);
    Owned earlier = Owned::steal(self->next);
    self->next = Owned::share(other).release();
    return new_none();
}

NewReference next(PyObject *object, PyObject *)
{
    SwigPyObject *self = as_pointer_object(object);
    return self->next ? Owned::share(self->next).release() : new_none();
}

NewReference repr_method(PyObject *object, PyObject *)
{
    return repr(object);
}

PyMethodDef methods[] = {
    {"disown", disown, METH_NOARGS, "releases ownership of the pointer"},
    {"acquire", acquire, METH_NOARGS, "acquires ownership of the pointer"},
    {"own", own, METH_VARARGS, "returns/sets ownership of the pointer"},
    {"append", append, METH_O, "appends another 'this' object"},
    {"next", next, METH_NOARGS, "returns the next 'this' object"},
    // Beside the type's own: the method has a docstring of its own.
    {"__repr__", repr_method, METH_NOARGS | METH_COEXIST, "returns object representation"},
    {nullptr, nullptr, 0, nullptr},
};

PyNumberMethods number_methods;

// An instance of a registered class, made as its constructor would leave it but without running __init__.
NewReference new_proxy(const SwigPyClientData &data, Owned pointer)
{
    // The class may be registered again by what runs while the instance is made.
    if (!data.newraw) {
        Owned made = Owned::share(data.newargs);
        Owned dictionary = Owned::steal(PyDict_New());
        if (!dictionary || PyDict_SetItem(dictionary.get(), this_name(), pointer.get()) != 0) {
            return nullptr;
        }
        return PyInstance_NewRaw(made.get(), dictionary.get());
    }
    Owned make = Owned::share(data.newraw), args = Owned::share(data.newargs);
    Owned instance = Owned::steal(PyObject_Call(make.get(), args.get(), nullptr));
    if (!instance) {
        return nullptr;
    }
    PyObject **dictionary = _PyObject_GetDictPtr(instance.get());
    int failed;
    if (!dictionary) {
        failed = PyObject_SetAttr(instance.get(), this_name(), pointer.get());
    } else {
        if (!*dictionary) {
            *dictionary = PyDict_New();
        }
        failed = *dictionary ? PyDict_SetItem(*dictionary, this_name(), pointer.get()) : -1;
    }
    return failed ? nullptr : instance.release();
}

// The value of `this` in a dictionary, without the exception bookkeeping of PyDict_GetItem. Keys that compare in
// Python may do anything to the dictionary meanwhile.
Owned this_in(Owned dictionary)
{
    PyObject *name = this_name();
    auto *table = reinterpret_cast<PyDictObject *>(dictionary.get());
    long hash = reinterpret_cast<PyStringObject *>(name)->ob_shash;
    if (hash == -1) {
        hash = PyObject_Hash(name);
    }
    PyDictEntry *entry = table->ma_lookup(table, name, hash);
    if (!entry) {
        PyErr_Clear();
        return Owned();
    }
    return Owned::share(entry->me_value);
}

// What an object offers as its `this`; null if it has none.
Owned this_of(PyObject *object)
{
    if (PyInstance_Check(object)) {
        return Owned::share(_PyInstance_Lookup(object, this_name()));
    }
    if (PyObject **dictionary = _PyObject_GetDictPtr(object)) {
        return *dictionary ? this_in(Owned::share(*dictionary)) : Owned();
    }
    if (PyWeakref_CheckProxy(object)) {
        PyObject *referent = PyWeakref_GET_OBJECT(object);
        return referent == Py_None ? Owned() : Owned::share(referent);
    }
    Owned found = Owned::steal(PyObject_GetAttr(object, this_name()));
    if (!found) {
        PyErr_Clear();
    }
    return found;
}

// Whether a pointer object is one to `type` (any type if null) or converts to it, and its address as such.
bool points_to(const SwigPyObject &pointer, swig_type_info *type, void **address)
{
    *address = pointer.ptr;
    if (!type || pointer.ty == type) {
        return true;
    }
    const swig_cast_info *cast = pointer.ty ? find_cast(pointer.ty, type) : nullptr;
    if (cast && cast->converter) {
        int new_memory = 0;
        *address = cast->converter(pointer.ptr, &new_memory);
    }
    return cast != nullptr;
}

// Deeper nesting of `this` in `this` than any wrapper makes is a cycle.
constexpr int deepest_this = 16;

}  // namespace

PyTypeObject PointerObject_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "SwigPyObject", sizeof(PointerObject)};

PyObject *this_key;
long this_hash;

bool initialise_pointer_object_type()
{
    this_key = Owned::share(this_name()).release();
    if (!this_key) {
        return false;
    }
    this_hash = PyObject_Hash(this_key);
    number_methods.nb_int = to_integer;
    number_methods.nb_long = to_integer;
    number_methods.nb_hex = to_hexadecimal;
    number_methods.nb_oct = to_octal;
    PyTypeObject &type = PointerObject_Type;
    type.tp_dealloc = deallocate;
    type.tp_compare = compare_three_way;
    type.tp_repr = repr;
    type.tp_as_number = &number_methods;
    type.tp_getattro = PyObject_GenericGetAttr;
    type.tp_flags |= Py_TPFLAGS_DEFAULT;
    type.tp_doc = "Swig object carries a C/C++ instance pointer";
    type.tp_richcompare = compare_rich;
    type.tp_methods = methods;
    return PyType_Ready(&type) == 0;
}

bool is_other_pointer_object(PyObject *object)
{
    return is_of_runtime_type(object, "SwigPyObject");
}

NewReference new_pointer_object(void *pointer, swig_type_info *type, Ownership ownership)
{
    PointerObject *self = PyObject_New(PointerObject, &PointerObject_Type);
    if (!self) {
        return nullptr;
    }
    self->head.ptr = pointer;
    self->head.ty = type;
    self->head.own = static_cast<int>(ownership);
    self->head.next = nullptr;
    self->keeper = nullptr;
    ++live_pointer_objects;
    return as_object(&self->head);
}

NewReference wrap_pointer(void *pointer, swig_type_info *type, Ownership ownership)
{
    if (!pointer) {
        return new_none();
    }
    PyObject *bare = new_pointer_object(pointer, type, ownership);
    return bare ? with_proxy(Owned::steal(bare)) : nullptr;
}

NewReference with_proxy(Owned bare)
{
    auto *data = static_cast<SwigPyClientData *>(as_pointer_object(bare.get())->ty->clientdata);
    return data ? new_proxy(*data, std::move(bare)) : bare.release();
}

Owned find_pointer_object(Borrowed object)
{
    Owned candidate = Owned::share(object);
    for (int depth = 0; candidate && depth < deepest_this; ++depth) {
        if (is_pointer_object(candidate.get())) {
            return candidate;
        }
        candidate = this_of(candidate.get());
    }
    return Owned();
}

Status convert_pointer(Borrowed object, swig_type_info *type, HeldPointer *pointer, Disown disown)
{
    if (object == Py_None) {
        pointer->address = nullptr;
        return Status::ok;
    }
    Owned found = find_pointer_object(object);
    for (ChainWalk walk(found.get()); walk.link(); walk.step()) {
        SwigPyObject *link = walk.link();
        if (points_to(*link, type, &pointer->address)) {
            if (disown == Disown::yes) {
                link->own = 0;
            }
            pointer->holder.hold(as_object(link));
            return Status::ok;
        }
    }
    return Status::unknown;
}

}  // namespace quorel
