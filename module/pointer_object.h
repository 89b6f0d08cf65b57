// The wrapped pointer object ("SwigPyObject"): how a C pointer looks to Python.
//
// It holds an address, the descriptor of the type pointed to, whether Python owns the memory, and optionally
// a further pointer object (a chain, made with append()). When an owning object's last reference goes, the
// destroy function of the registered proxy class frees the memory. Without one a value of a C++ class, such as a
// counted pointer, is deleted; of other types a message about the leak is printed and nothing is freed.
//
// The proxy object of a record keeps its pointer object in its instance dictionary under "this".
#pragma once

#include "errors.h"
#include "swig_runtime.h"
#include "type_table.h"

namespace [[gnu::visibility("hidden")]] quorel {

extern PyTypeObject PointerObject_Type;

/// This runtime's pointer objects have one thing more than all share.
struct PointerObject {
    SwigPyObject head;
    PyObject
        *keeper;  ///< what the memory lives in, if it is to stay; null in all that the module makes by itself
};

/// Makes PointerObject_Type usable. Returns false with an exception set when that fails.
bool initialise_pointer_object_type();

enum class Ownership : int { borrowed = 0, owned = 1 };

/// A bare pointer object; with Ownership::owned it frees the memory in the end. `pointer` may be null.
NewReference new_pointer_object(void *pointer, swig_type_info *type, Ownership ownership);

/// A pointer as a result: None for null, an instance of the registered proxy class (made without running its
/// __init__) where there is one, else a bare pointer object.
NewReference wrap_pointer(void *pointer, swig_type_info *type, Ownership ownership);

/// The same for a bare pointer object; where no proxy can be made, the pointer object is let go, and with it the
/// memory that it owns.
NewReference with_proxy(Owned bare);

/// Whether the object is a pointer object, this module's or another SWIG module's.
inline bool is_pointer_object(PyObject *object);

/// The attribute name "this" and its hash, from initialise_pointer_object_type() to the end of the process.
extern PyObject *this_key;
extern long this_hash;

/// The pointer object behind the usual kinds of argument, borrowed: a bare one of this module, or the one that
/// an instance dictionary has under `this` where the name's hash leads first. Null says only that the thorough
/// search, find_pointer_object(), has to decide.
inline SwigPyObject *likely_pointer_object(PyObject *object);

/// The pointer object behind `object`, or null without an exception: the object itself; an old-style instance's
/// `this`; the `this` in an instance dictionary, and nowhere else if there is such a dictionary; a weak proxy's
/// referent; else the attribute `this`.
Owned find_pointer_object(Borrowed object);

/// What an argument was converted to. Python code that runs before the call is over, such as a class's own way
/// to find `this`, may let go of the pointer object: the memory that this one owns lives until the holder goes.
struct HeldPointer {
    void *address;
    Owned holder;  ///< null for None

    explicit operator bool() const { return address != nullptr; }
    /// The place `offset` bytes on.
    char *at(size_t offset) const { return static_cast<char *>(address) + offset; }
};

enum class Disown : bool { no, yes };

/// Converts `object` to a pointer to `type` (to any type if null). None gives null. With Disown::yes the
/// pointer object gives up its ownership. *pointer is written only on success.
Status convert_pointer(Borrowed object, swig_type_info *type, HeldPointer *pointer,
                       Disown disown = Disown::no);

inline SwigPyObject *likely_pointer_object(PyObject *object)
{
    // Instances of a class without a C base have their dictionary right after the object's head.
    PyObject *candidate = object;
    if (Py_TYPE(object)->tp_dictoffset == sizeof(PyObject)) {
        auto *dictionary = *reinterpret_cast<PyDictObject **>(object + 1);
        if (!dictionary) {
            return nullptr;
        }
        const PyDictEntry &entry = dictionary->ma_table[this_hash & dictionary->ma_mask];
        if (entry.me_key != this_key) {
            return nullptr;
        }
        candidate = entry.me_value;
    }
    bool found = Py_TYPE(candidate) == &PointerObject_Type;
    return found ? reinterpret_cast<SwigPyObject *>(candidate) : nullptr;
}

bool is_other_pointer_object(PyObject *object);

inline bool is_pointer_object(PyObject *object)
{
    return Py_TYPE(object) == &PointerObject_Type || is_other_pointer_object(object);
}

}  // namespace quorel
