#include "result_tuples.h"

#include "typemaps/port_list.h"

#include <bcm/error.h>

#include <cstring>

using namespace quorel;

PyObject *bcm_port_pause_get_wrapper(int unit, bcm_port_t port)
{
    int pause_tx = 0, pause_rx = 0;
    int rc = bcm_port_pause_get(unit, port, &pause_tx, &pause_rx);
    return Py_BuildValue("(iNN)", rc, PyBool_FromLong(pause_tx), PyBool_FromLong(pause_rx));
}

PyObject *bcm_port_untagged_vlan_get_wrapper(int unit, bcm_port_t port)
{
    bcm_vlan_t vid = 0;
    int rc = bcm_port_untagged_vlan_get(unit, port, &vid);
    return Py_BuildValue("(ii)", rc, static_cast<int>(vid));
}

PyObject *bcm_vlan_port_get_wrapper(int unit, bcm_vlan_t vid)
{
    bcm_pbmp_t members, untagged;
    std::memset(&members, 0, sizeof members);
    std::memset(&untagged, 0, sizeof untagged);
    int rc = bcm_vlan_port_get(unit, vid, &members, &untagged);
    if (rc != BCM_E_NONE)
        return Py_BuildValue("(iOO)", rc, Py_None, Py_None);
    return Py_BuildValue("(iNN)", rc, from_port_list(members), from_port_list(untagged));
}
