// Memory that Python owns and C uses.
//
// It lives as long as the pointer objects and arrays that have it as their keeper. It also keeps the Python
// objects whose addresses are stored in it.
#pragma once

#include "module/references.h"

namespace quorel {

struct Memory {
    PyObject_HEAD char *data;
    Py_ssize_t size;
    PyObject *kept;  ///< a list, or null
};

extern PyTypeObject Memory_Type;
bool initialise_memory_type();

/// Zeroed memory. MemoryError where a 32-bit target could not have as much.
Memory *new_memory(Py_ssize_t count, Py_ssize_t element_size);

/// Keeps `object` alive for as long as the memory. Returns false with an exception set.
bool keep(Memory *memory, PyObject *object);

inline PyObject *as_object(Memory *memory)
{
    return reinterpret_cast<PyObject *>(memory);
}

}  // namespace quorel
