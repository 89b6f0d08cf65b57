// Single-value pointer classes (intp and its like): one heap cell each, for what C passes by address.
//
// A new cell is not initialised: that is the contract. Cells live on the C++ heap and belong to the pointer
// object that the constructor returns; what cast() and frompointer() give owns nothing.
#pragma once

#include "record.h"

namespace quorel {

/// new_<class>(): a cell, as a bare pointer object that owns it.
NewReference new_cell(PyObject *args, const CellRow &row);
/// delete_<class>(self): takes the ownership away from the pointer object and frees the cell.
NewReference delete_cell(PyObject *args, const CellRow &row);
/// <class>_cast(self): the same cell under the element's pointer type.
NewReference cast_cell(PyObject *args, const CellRow &row);
/// <class>_frompointer(t): the memory that an element pointer points to, under the class's type.
NewReference cell_from_pointer(PyObject *args, const CellRow &row);
/// <class>_swigregister(cls)
NewReference register_cell(PyObject *args, const CellRow &row);

}  // namespace quorel
