// Stand-ins for SDK functions whose outputs come back in a tuple, bound under the SDK function's name.
// Item 0 is always the SDK's status. All return new references, or null with an exception when memory is short.
#pragma once

#include <Python.h>

extern "C" {
#include <bcm/port.h>
#include <bcm/vlan.h>
}

/// (rc, pause_tx, pause_rx), the flags as bools; they mean something only when rc is 0.
PyObject *bcm_port_pause_get_wrapper(int unit, bcm_port_t port);

/// (rc, vid)
PyObject *bcm_port_untagged_vlan_get_wrapper(int unit, bcm_port_t port);

/// (rc, member ports, untagged ports): lists of ports when rc is 0, else None and None.
PyObject *bcm_vlan_port_get_wrapper(int unit, bcm_vlan_t vid);
