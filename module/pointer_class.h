// Single-value pointer classes (intp and its like): each instance is one element, for what C passes by address.
//
// A new element is not initialised: that is the contract. Elements live on the C++ heap and belong to the pointer
// object that the constructor returns; what cast() and frompointer() give owns nothing.
#pragma once

#include "record.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// new_<class>(): an element, as a bare pointer object that owns it.
NewReference new_pointer_class(const PointerClassRow &row, PyObject *args);
/// delete_<class>(self): takes the ownership away from the pointer object and frees the element.
NewReference delete_pointer_class(const PointerClassRow &row, PyObject *args);
/// <class>_cast(self): the same element under the element's pointer type.
NewReference cast_pointer_class(const PointerClassRow &row, PyObject *args);
/// <class>_frompointer(t): the memory that an element pointer points to, under the class's type.
NewReference pointer_class_from_pointer(const PointerClassRow &row, PyObject *args);
/// <class>_swigregister(cls)
NewReference register_pointer_class(const PointerClassRow &row, PyObject *args);

}  // namespace quorel
