// Stand-ins for SDK functions whose outputs come back in a tuple, bound under the SDK function's name.
// Item 0 is always the SDK's status. All return new references, or null with an exception when memory is short.
#pragma once

#include <Python.h>

extern "C" {
#include <bcm/port.h>
#include <bcm/stg.h>
#include <bcm/vlan.h>
}

/// (rc, pause_tx, pause_rx), the flags as bools; they mean something only when rc is 0.
PyObject *bcm_port_pause_get_wrapper(int unit, bcm_port_t port);

/// (rc, vid)
PyObject *bcm_port_untagged_vlan_get_wrapper(int unit, bcm_port_t port);

/// (rc,) on failure, else (0, [stg, ...]). A failing bcm_stg_list_destroy() ends the process.
PyObject *bcm_stg_list_wrapper(int unit);

/// (rc,) on failure, else (0, [vid, ...]). A failing bcm_stg_vlan_list_destroy() ends the process.
PyObject *bcm_stg_vlan_list_wrapper(int unit, bcm_stg_t stg);

/// (rc,) on failure, else (0, name): "disable", "discarding", "learning" or "forwarding". For any other state the
/// second item is never filled in; that gap is meant, and kept.
PyObject *bcm_stg_stp_get_wrapper(int unit, bcm_stg_t stg, bcm_port_t port);

/// (rc, member ports, untagged ports): lists of ports when rc is 0, else None and None.
PyObject *bcm_vlan_port_get_wrapper(int unit, bcm_vlan_t vid);
