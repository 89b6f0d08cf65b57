// The hardware L2 table as a Python list.
#pragma once

#include <Python.h>

extern "C" {
#include <bcm/l2.h>
}

/// A list with one tuple per entry that the SDK's bcm_l2_traverse() hands over, made by l2_traverse_cb(). The
/// status of the traversal is not looked at: a unit whose traversal fails gives the list as far as it came.
/// Returns a new reference, or null with an exception when memory is short.
PyObject *getHwMacTable(int unit);

/// Appends an entry to the Python list that user_data is, as (MAC text, VLAN id, destination gport, "static"
/// or "dynamic"). Returns 0, or an SDK error code with a Python exception set. The caller holds the
/// interpreter lock.
///
/// user_data may be any address; none but a list's is ever looked into. The list of the getHwMacTable() under
/// way is known by its address. Any other is searched for among the objects that the garbage collector
/// tracks, as it does every list; that takes time in proportion to their number. The address of anything else
/// raises TypeError; a null entry or user_data raises ValueError.
int l2_traverse_cb(int unit, bcm_l2_addr_t *info, void *user_data);
