// Text of the platform's as Python strings, which end at the first NUL.
#pragma once

#include <Python.h>

/// The platform's functions of these names. A new reference; null with an exception set.
PyObject *getTraceText();
PyObject *sdcText(int unit, char *command);
