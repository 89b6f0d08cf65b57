#pragma once

#include "index.h"

#include "module/references.h"

// Callbacks that the SDK keeps: those that checked() has registered live until it is known that they are not called
// any more.
//
// That is when the function that unregisters what this one registered has taken them, or, where it is not told of
// which callback, the same unit and number; and when the unit has become as it is when new.

namespace quorel {

/// `function` of the SDK, which registers or unregisters as `keeping` says, has done so with these arguments.
void note_registration(Keeping keeping, PyObject *function, PyObject *args);

/// _forget_registrations(unit): the unit keeps none any more.
NewReference forget_registrations(PyObject *module, PyObject *unit);

}  // namespace quorel
