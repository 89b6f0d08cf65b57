// Memory that is another's: what a callback is given is good until it returns. Whatever was made of it meanwhile,
// however deep inside, is then marked: using it raises TypeError instead of reading what is gone.
#pragma once

#include "module/pointer_object.h"

namespace quorel {

bool initialise_loan_type();

/// A new loan, which is the keeper of what is lent.
Owned new_loan();

/// Marks all that was lent.
void end_loan(PyObject *loan);

/// Has `part`, a new pointer object of this module or the binding's, keep alive what it points into: another
/// pointer object, the memory of an array, or a loan. What is inside of something that is lent is lent too.
/// Returns false with an exception set. `keeper` (borrowed) may be null.
bool keep_alive(PyObject *part, PyObject *keeper);

/// The loan that something with this keeper belongs to (borrowed), or null.
PyObject *loan_of(PyObject *keeper);

/// Adds an object that forget_memory() knows how to mark. Returns false with an exception set.
bool lend(PyObject *loan, PyObject *object);

}  // namespace quorel
