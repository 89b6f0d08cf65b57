// The records that every module of SWIG's runtime version 4 in the process shares.
//
// Their layout is fixed by that runtime, since other modules read and write ours: no field may be moved,
// added or given another meaning. Everything here is plain data; the code is in type_table.cpp and
// pointer_object.cpp.
#pragma once

#include <Python.h>

#include <cstddef>

extern "C" {

struct swig_type_info;
struct swig_cast_info;

/// Converts a pointer to one type into a pointer to another. *new_memory is set to non-zero when the result
/// was allocated for the caller; the converters of this module never do that.
using swig_converter_func = void *(*)(void *pointer, int *new_memory);
using swig_dycast_func = swig_type_info *(*)(void **pointer);

/// A type descriptor: one C type that crosses the boundary.
struct swig_type_info {
    const char *name;        ///< mangled name, such as "_p_bcm_l2_addr_s"; the key between modules
    const char *str;         ///< every C spelling of the type, separated by '|'
    swig_dycast_func dcast;  ///< not used by this module
    swig_cast_info *cast;    ///< the types that may be converted to this one, most recently used first
    void *clientdata;        ///< SwigPyClientData of the registered proxy class, or null
    int owndata;             ///< whether clientdata is released with the type table
};

/// One entry of a descriptor's cast list.
struct swig_cast_info {
    swig_type_info *type;           ///< the type that is converted
    swig_converter_func converter;  ///< null where the pointer is taken as it is
    swig_cast_info *next;
    swig_cast_info *prev;
};

/// A module's types. All modules of the process are linked into a ring.
struct swig_module_info {
    swig_type_info **types;  ///< sorted by name, `size` entries and a null
    size_t size;
    swig_module_info *next;
    swig_type_info **type_initial;
    swig_cast_info **cast_initial;
    void *clientdata;
};

/// Client data of a descriptor: the proxy class that was registered for it.
struct SwigPyClientData {
    PyObject *klass;
    PyObject *newraw;   ///< the class's __new__, or null for a classic class
    PyObject *newargs;  ///< arguments of newraw; for a classic class the class itself
    PyObject *destroy;  ///< the class's __swig_destroy__, or null
    int delargs;        ///< whether `destroy` takes a tuple of arguments
    int implicitconv;
    PyTypeObject *pytype;
};

/// A wrapped pointer object.
struct SwigPyObject {
    PyObject_HEAD void *ptr;
    swig_type_info *ty;
    int own;
    PyObject *next;  ///< the next wrapped pointer object of a chain, or null
};

}  // extern "C"
