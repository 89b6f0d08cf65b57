// Memory that Python owns and C uses.
//
// It is a pointer object of SWIG's runtime that converts to nothing: so it can hang on the chain of any
// pointer object, and lives as long as that. It also keeps the Python objects whose addresses are stored in
// it.
#pragma once

#include "module/references.h"
#include "module/swig_runtime.h"

namespace quorel {

struct Memory {
    SwigPyObject head;
    char *data;
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
