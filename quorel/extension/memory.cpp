#include "memory.h"

#include <cstdint>
#include <cstdlib>

namespace quorel {

namespace {

void deallocate(PyObject *object)
{
    auto *memory = reinterpret_cast<Memory *>(object);
    std::free(memory->data);
    Py_XDECREF(memory->kept);
    PyObject_Del(object);
}

}  // namespace

PyTypeObject Memory_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "quorel.Memory", sizeof(Memory)};

bool initialise_memory_type()
{
    PyTypeObject &type = Memory_Type;
    type.tp_dealloc = deallocate;
    type.tp_flags |= Py_TPFLAGS_DEFAULT;
    type.tp_doc = "Memory that lives as long as what points into it.";
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
