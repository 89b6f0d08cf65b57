#include "type_table.h"

#include <cstdlib>
#include <cstring>

namespace quorel {

namespace {

constexpr char runtime_module[] = "swig_runtime_data4";
constexpr char capsule_attribute[] = "type_pointer_capsule";
constexpr char capsule_name[] = "swig_runtime_data4.type_pointer_capsule";

swig_module_info module_record;
PyObject *interned_this;

swig_type_info *find_in_module(const swig_module_info &module, const char *name)
{
    size_t low = 0, high = module.size;
    while (low < high) {
        size_t middle = low + (high - low) / 2;
        const char *candidate = module.types[middle]->name;
        int order = candidate ? std::strcmp(name, candidate) : 1;
        if (order == 0) {
            return module.types[middle];
        }
        if (order < 0) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return nullptr;
}

swig_type_info *find_in_ring(swig_module_info *first, const swig_module_info *end, const char *name)
{
    swig_module_info *module = first;
    do {
        if (swig_type_info *found = find_in_module(*module, name)) {
            return found;
        }
        module = module->next;
    } while (module != end);
    return nullptr;
}

// The generated rows, turned into the records of the shared runtime. They live as long as the process:
// other modules keep pointers into them. Returns false, with nothing kept, when memory is short.
bool build_initial_types()
{
    size_t entries = 0;
    for (size_t i = 0; i < type_count; ++i) {
        entries += type_rows[i].cast_from == no_type ? 2 : 3;
    }
    auto *descriptors = static_cast<swig_type_info *>(std::calloc(type_count, sizeof(swig_type_info)));
    auto *initial = static_cast<swig_type_info **>(std::calloc(type_count, sizeof(swig_type_info *)));
    auto *casts = static_cast<swig_cast_info **>(std::calloc(type_count, sizeof(swig_cast_info *)));
    auto *entry = static_cast<swig_cast_info *>(std::calloc(entries, sizeof(swig_cast_info)));
    if (!descriptors || !initial || !casts || !entry) {
        std::free(descriptors);
        std::free(initial);
        std::free(casts);
        std::free(entry);
        return false;
    }

    const char *text = type_names;
    for (size_t i = 0; i < type_count; ++i) {
        descriptors[i].name = text;
        text += std::strlen(text) + 1;
        descriptors[i].str = text;
        text += std::strlen(text) + 1;
        initial[i] = &descriptors[i];
        casts[i] = entry;
        (entry++)->type = &descriptors[i];
        if (type_rows[i].cast_from != no_type) {
            entry->converter = same_pointer;
            (entry++)->type = &descriptors[type_rows[i].cast_from];
        }
        ++entry;  // the terminator: a null type
    }
    module_record.types = types;
    module_record.size = type_count;
    module_record.type_initial = initial;
    module_record.cast_initial = casts;
    return true;
}

void push_cast(swig_type_info *type, swig_cast_info *cast)
{
    if (type->cast) {
        type->cast->prev = cast;
        cast->next = type->cast;
    }
    type->cast = cast;
}

void merge_type(size_t number)
{
    swig_type_info *own = module_record.type_initial[number];
    bool alone = module_record.next == &module_record;
    swig_type_info *shared = alone ? nullptr : find_in_ring(module_record.next, &module_record, own->name);
    swig_type_info *type = shared ? shared : own;
    if (shared && own->clientdata) {
        shared->clientdata = own->clientdata;
    }
    for (swig_cast_info *cast = module_record.cast_initial[number]; cast->type; ++cast) {
        swig_type_info *other =
            alone ? nullptr : find_in_ring(module_record.next, &module_record, cast->type->name);
        if (other && shared) {
            if (find_cast(other, shared)) {
                continue;
            }
            cast->type = other;
        } else if (other) {
            cast->type = other;
        }
        push_cast(type, cast);
    }
    types[number] = type;
}

// Whether the capsule went while there were pointer objects.
bool classes_outlive_capsule;

void let_classes_go()
{
    for (size_t i = 0; i < module_record.size; ++i) {
        swig_type_info *type = module_record.types[i];
        if (type->owndata) {
            auto *data = static_cast<SwigPyClientData *>(type->clientdata);
            type->clientdata = nullptr;
            type->owndata = 0;
            delete_client_data(data);
        }
    }
    Py_CLEAR(interned_this);
}

void destroy_ring_head(PyObject *)
{
    classes_outlive_capsule = live_pointer_objects != 0;
    if (!classes_outlive_capsule) {
        let_classes_go();
    }
}

swig_module_info *existing_ring()
{
    auto *head = static_cast<swig_module_info *>(PyCapsule_Import(const_cast<char *>(capsule_name), 0));
    if (!head) {
        PyErr_Clear();
    }
    return head;
}

// Another module's capsule would take the classes of shared types along while pointer objects still need them.
void keep_capsule()
{
    Owned module = Owned::steal(PyImport_ImportModule(runtime_module));
    if (module) {
        Owned::steal(PyObject_GetAttrString(module.get(), capsule_attribute)).release();
    }
    PyErr_Clear();
}

void start_ring()
{
    static PyMethodDef no_methods[] = {{nullptr, nullptr, 0, nullptr}};
    PyObject *module = Py_InitModule4(runtime_module, no_methods, nullptr, nullptr, PYTHON_API_VERSION);
    Owned capsule = Owned::steal(PyCapsule_New(&module_record, capsule_name, nullptr));
    classes_outlive_capsule = false;
    // Without the meeting point the module works, it only shares no types: a capsule that is not published goes
    // and takes nothing apart.
    if (module && capsule && PyModule_AddObject(module, capsule_attribute, capsule.get()) == 0) {
        PyCapsule_SetDestructor(capsule.release(), destroy_ring_head);
    }
    PyErr_Clear();
}

bool in_ring(const swig_module_info *head)
{
    const swig_module_info *module = head;
    do {
        if (module == &module_record) {
            return true;
        }
        module = module->next;
    } while (module != head);
    return false;
}

}  // namespace

size_t live_pointer_objects;

void last_pointer_object_went()
{
    if (classes_outlive_capsule) {
        classes_outlive_capsule = false;
        let_classes_go();
    }
}

bool initialise_type_table()
{
    bool first = module_record.next == nullptr;
    if (first) {
        if (!build_initial_types()) {
            PyErr_NoMemory();
            return false;
        }
        module_record.next = &module_record;
    }
    swig_module_info *head = existing_ring();
    if (!head) {
        start_ring();
    } else if (!in_ring(head)) {
        module_record.next = head->next;
        head->next = &module_record;
        keep_capsule();
    }
    if (first) {
        for (size_t i = 0; i < type_count; ++i) {
            merge_type(i);
        }
        types[type_count] = nullptr;
    }
    return true;
}

void *same_pointer(void *pointer, int *)
{
    return pointer;
}

swig_cast_info *find_cast(swig_type_info *given, swig_type_info *wanted)
{
    swig_cast_info *cast = wanted->cast;
    while (cast && cast->type != given && std::strcmp(cast->type->name, given->name) != 0) {
        cast = cast->next;
    }
    if (!cast || cast == wanted->cast) {
        return cast;
    }
    cast->prev->next = cast->next;
    if (cast->next) {
        cast->next->prev = cast->prev;
    }
    cast->next = wanted->cast;
    cast->prev = nullptr;
    wanted->cast->prev = cast;
    wanted->cast = cast;
    return cast;
}

const char *display_name(const swig_type_info *type)
{
    if (!type || !type->str) {
        return type ? type->name : nullptr;
    }
    const char *bar = std::strrchr(type->str, '|');
    return bar ? bar + 1 : type->str;
}

swig_type_info *find_type(const char *mangled_name)
{
    return find_in_ring(&module_record, &module_record, mangled_name);
}

PyObject *this_name()
{
    if (!interned_this) {
        interned_this = PyString_InternFromString("this");
    }
    return interned_this;
}

SwigPyClientData *new_client_data(Borrowed proxy_class)
{
    Owned newraw, newargs;
    if (PyClass_Check(proxy_class.operator PyObject *())) {
        newargs = Owned::share(proxy_class);
    } else {
        newraw = Owned::steal(PyObject_GetAttrString(proxy_class, "__new__"));
        if (newraw) {
            newargs = Owned::steal(PyTuple_Pack(1, static_cast<PyObject *>(proxy_class)));
        } else {
            PyErr_Clear();
            newargs = Owned::share(proxy_class);
        }
    }
    Owned destroy = Owned::steal(PyObject_GetAttrString(proxy_class, "__swig_destroy__"));
    if (!destroy) {
        PyErr_Clear();
    }
    // The C heap's: whichever module the descriptor belongs to frees the data in the end.
    auto *data = static_cast<SwigPyClientData *>(std::malloc(sizeof(SwigPyClientData)));
    if (!data || !newargs) {
        std::free(data);
        PyErr_NoMemory();
        return nullptr;
    }
    PyObject *function = destroy.get();
    bool one_argument = function && PyCFunction_Check(function) && (PyCFunction_GET_FLAGS(function) & METH_O);
    data->klass = Owned::share(proxy_class).release();
    data->newraw = newraw.release();
    data->newargs = newargs.release();
    data->destroy = destroy.release();
    data->delargs = data->destroy && !one_argument;
    data->implicitconv = 0;
    data->pytype = nullptr;
    return data;
}

void delete_client_data(SwigPyClientData *data)
{
    if (!data) {
        return;
    }
    Py_XDECREF(data->klass);
    Py_XDECREF(data->newraw);
    Py_XDECREF(data->newargs);
    Py_XDECREF(data->destroy);
    std::free(data);
}

Status register_class(swig_type_info *type, Borrowed proxy_class)
{
    if (!PyClass_Check(proxy_class.operator PyObject *())
        && !PyType_Check(proxy_class.operator PyObject *())) {
        return Status::type;
    }
    SwigPyClientData *data = new_client_data(proxy_class);
    if (!data) {
        return Status::memory;
    }
    auto *earlier = type->owndata ? static_cast<SwigPyClientData *>(type->clientdata) : nullptr;
    type->clientdata = data;
    type->owndata = 1;
    delete_client_data(earlier);
    return Status::ok;
}

}  // namespace quorel
