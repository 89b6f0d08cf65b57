// The hardware L2 table as a Python list.
#pragma once

#include <Python.h>

/// A list with one tuple per entry that the SDK's bcm_l2_traverse() hands over: (MAC text, VLAN id, destination
/// gport, "static" or "dynamic"). The status of the traversal is not looked at: a unit whose traversal fails
/// gives the list as far as it came. Returns a new reference, or null with an exception when memory is short.
PyObject *getHwMacTable(int unit);
