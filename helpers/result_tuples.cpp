#include "result_tuples.h"

#include "typemaps/port_list.h"

#include <bcm/error.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace quorel;

namespace {

// Arrays that the SDK handed out must go back to it; a failure means that its heap is damaged.
void require_success(int rc)
{
    if (rc == BCM_E_NONE) {
        return;
    }
    std::fputs("_QuorelApiNew: assertion 'rc == BCM_E_NONE' failed\n", stderr);
    std::abort();
}

template <typename Number>
NewReference from_numbers(const Number *numbers, int count)
{
    Owned list = Owned::steal(PyList_New(count));
    for (int i = 0; list && i < count; ++i) {
        PyObject *number = PyInt_FromLong(numbers[i]);
        if (!number) {
            return nullptr;
        }
        PyList_SET_ITEM(list.get(), i, number);
    }
    return list.release();
}

// The states that scripts know; the others have no name.
const char *state_name(int state)
{
    switch (state) {
    case 0:
        return "disable";
    case 1:
        return "discarding";
    case 3:
        return "learning";
    case 4:
        return "forwarding";
    default:
        return nullptr;
    }
}

}  // namespace

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

PyObject *bcm_stg_list_wrapper(int unit)
{
    bcm_stg_t *groups = nullptr;
    int count = 0;
    int rc = bcm_stg_list(unit, &groups, &count);
    if (rc != BCM_E_NONE) {
        return Py_BuildValue("(i)", rc);
    }
    PyObject *list = from_numbers(groups, count);
    require_success(bcm_stg_list_destroy(unit, groups, count));
    return Py_BuildValue("(iN)", rc, list);
}

PyObject *bcm_stg_vlan_list_wrapper(int unit, bcm_stg_t stg)
{
    bcm_vlan_t *vlans = nullptr;
    int count = 0;
    int rc = bcm_stg_vlan_list(unit, stg, &vlans, &count);
    if (rc != BCM_E_NONE) {
        return Py_BuildValue("(i)", rc);
    }
    PyObject *list = from_numbers(vlans, count);
    require_success(bcm_stg_vlan_list_destroy(unit, vlans, count));
    return Py_BuildValue("(iN)", rc, list);
}

PyObject *bcm_stg_stp_get_wrapper(int unit, bcm_stg_t stg, bcm_port_t port)
{
    int state = 0;
    int rc = bcm_stg_stp_get(unit, stg, port, &state);
    if (rc != BCM_E_NONE) {
        return Py_BuildValue("(i)", rc);
    }
    Owned result = Owned::steal(PyTuple_New(2));
    Owned status = Owned::steal(PyInt_FromLong(rc));
    if (!result || !status) {
        return nullptr;
    }
    PyTuple_SET_ITEM(result.get(), 0, status.release());
    if (const char *name = state_name(state)) {
        PyObject *text = PyString_FromString(name);
        if (!text) {
            return nullptr;
        }
        PyTuple_SET_ITEM(result.get(), 1, text);
    }
    return result.release();
}

PyObject *bcm_vlan_port_get_wrapper(int unit, bcm_vlan_t vid)
{
    bcm_pbmp_t members, untagged;
    std::memset(&members, 0, sizeof members);
    std::memset(&untagged, 0, sizeof untagged);
    int rc = bcm_vlan_port_get(unit, vid, &members, &untagged);
    if (rc != BCM_E_NONE) {
        return Py_BuildValue("(iOO)", rc, Py_None, Py_None);
    }
    return Py_BuildValue("(iNN)", rc, from_port_list(members), from_port_list(untagged));
}
