#include "memory.h"

#include <cstdint>
#include <cstdlib>

namespace quorel {

namespace {

swig_type_info memory_descriptor = {"_p_quorel_memory", "quorel memory *", nullptr, nullptr, nullptr, 0};

void deallocate(PyObject *object)
{
    auto *memory = reinterpret_cast<Memory *>(object);
    std::free(memory->data);
    Py_XDECREF(memory->kept);
    PyObject_Del(object);
}

NewReference represent(PyObject *object)
{
    return PyString_FromFormat("<memory of %zd bytes>", reinterpret_cast<Memory *>(object)->size);
}

}  // namespace

// Other modules know a pointer object by this name.
PyTypeObject Memory_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "SwigPyObject", sizeof(Memory)};

bool initialise_memory_type()
{
    PyTypeObject &type = Memory_Type;
    type.tp_dealloc = deallocate;
    type.tp_repr = represent;
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_doc = "Memory that lives as long as the pointer object that it hangs on.";
    return PyType_Ready(&type) == 0;
}

Memory *new_memory(Py_ssize_t count, Py_ssize_t element_size)
{
    // One byte more, so that text always ends.
    bool fits = element_size == 0 || count < INT32_MAX / element_size;
    auto *data =
        static_cast<char *>(fits ? std::calloc(static_cast<size_t>(count * element_size) + 1, 1) : nullptr);
    if (!data) {
        PyErr_NoMemory();
        return nullptr;
    }
    Memory *memory = PyObject_New(Memory, &Memory_Type);
    if (!memory) {
        std::free(data);
        return nullptr;
    }
    memory->head.ptr = nullptr;
    memory->head.ty = &memory_descriptor;
    memory->head.own = 0;
    memory->head.next = nullptr;
    memory->data = data;
    memory->size = count * element_size;
    memory->kept = nullptr;
    return memory;
}

bool keep(Memory *memory, PyObject *object)
{
    if (!memory->kept) {
        memory->kept = PyList_New(0);
    }
    return memory->kept && PyList_Append(memory->kept, object) == 0;
}

}  // namespace quorel
