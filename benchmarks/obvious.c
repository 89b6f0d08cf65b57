/*
 * The obvious code: what one writes first for MAC addresses, the hardware table and port lists, with the C
 * library's formats and the interpreter's builders. Each function has a counterpart that takes the same
 * arguments and does none of the work, so that the work alone can be told.
 */
#include "pointer.h"

#include <bcm/l2.h>
#include <bcm/vlan.h>

#include <stdio.h>
#include <string.h>

#define MAC_FORMAT "%02x:%02x:%02x:%02x:%02x:%02x"

static void write_mac(char text[18], const unsigned char *mac)
{
    snprintf(text, 18, MAC_FORMAT, mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
}

/* The one argument of a read accessor, or the first of a write accessor; null with an exception. */
static void *self_from(PyObject *args, Py_ssize_t size)
{
    if (PyTuple_GET_SIZE(args) != size) {
        PyErr_SetString(PyExc_TypeError, "wrong number of arguments");
        return NULL;
    }
    return pointer_from(PyTuple_GET_ITEM(args, 0));
}

/* take(record), take(record, value): takes the arguments of an accessor and does nothing. */
static PyObject *take(PyObject *self, PyObject *args)
{
    (void)self;
    if (!self_from(args, PyTuple_GET_SIZE(args))) {
        return NULL;
    }
    Py_RETURN_NONE;
}

static PyObject *mac_get(PyObject *self, PyObject *args)
{
    char text[18];
    bcm_l2_addr_t *address = self_from(args, 1);
    (void)self;
    if (!address) {
        return NULL;
    }
    write_mac(text, address->mac);
    return PyString_FromString(text);
}

static PyObject *mac_set(PyObject *self, PyObject *args)
{
    unsigned field[6];
    int i;
    const char *text;
    bcm_l2_addr_t *address = self_from(args, 2);
    (void)self;
    if (!address || !(text = PyString_AsString(PyTuple_GET_ITEM(args, 1)))) {
        return NULL;
    }
    if (sscanf(text, "%2x:%2x:%2x:%2x:%2x:%2x", &field[0], &field[1], &field[2], &field[3], &field[4],
               &field[5])
        != 6) {
        PyErr_SetString(PyExc_ValueError, "not a MAC address");
        return NULL;
    }
    for (i = 0; i < 6; ++i) {
        address->mac[i] = (unsigned char)field[i];
    }
    Py_RETURN_NONE;
}

static PyObject *port_bitmap_get(PyObject *self, PyObject *args)
{
    unsigned long port;
    PyObject *list;
    bcm_vlan_data_t *vlan = self_from(args, 1);
    (void)self;
    if (!vlan || !(list = PyList_New(0))) {
        return NULL;
    }
    for (port = 0; port < BCM_PBMP_PORT_MAX; ++port) {
        if (BCM_PBMP_MEMBER(vlan->port_bitmap, port)) {
            PyObject *number = PyLong_FromUnsignedLong(port);
            if (!number || PyList_Append(list, number) != 0) {
                Py_XDECREF(number);
                Py_DECREF(list);
                return NULL;
            }
            Py_DECREF(number);
        }
    }
    return list;
}

static unsigned destination(const bcm_l2_addr_t *entry)
{
    if (entry->flags & BCM_L2_DISCARD_DST) {
        return 0x10000000;
    }
    if (entry->flags & BCM_L2_TRUNK_MEMBER) {
        return (entry->tgid & 0x3ffffffu) | 0x0c000000;
    }
    return (entry->port & 0x7ffu) | 0x04000000;
}

static int append_entry(int unit, bcm_l2_addr_t *entry, void *list)
{
    char text[18];
    PyObject *row;
    int failed;
    (void)unit;
    write_mac(text, entry->mac);
    row = Py_BuildValue("(siIs)", text, (int)entry->vid, destination(entry),
                        entry->flags & BCM_L2_STATIC ? "static" : "dynamic");
    failed = !row || PyList_Append(list, row) != 0;
    Py_XDECREF(row);
    return failed ? BCM_E_MEMORY : BCM_E_NONE;
}

static PyObject *mac_table(PyObject *self, PyObject *args)
{
    int unit;
    PyObject *list;
    (void)self;
    if (!PyArg_ParseTuple(args, "i", &unit) || !(list = PyList_New(0))) {
        return NULL;
    }
    bcm_l2_traverse(unit, append_entry, list);
    if (PyErr_Occurred()) {
        Py_CLEAR(list);
    }
    return list;
}

static int skip_entry(int unit, bcm_l2_addr_t *entry, void *user_data)
{
    (void)unit, (void)entry, (void)user_data;
    return BCM_E_NONE;
}

/* traverse(unit): goes through the table and makes nothing of it. */
static PyObject *traverse(PyObject *self, PyObject *args)
{
    int unit;
    (void)self;
    if (!PyArg_ParseTuple(args, "i", &unit)) {
        return NULL;
    }
    bcm_l2_traverse(unit, skip_entry, NULL);
    Py_RETURN_NONE;
}

/* fill_mac_table(unit, count): enters that many addresses, spread over the front ports. */
static PyObject *fill_mac_table(PyObject *self, PyObject *args)
{
    int unit, count, i, rc = BCM_E_NONE;
    (void)self;
    if (!PyArg_ParseTuple(args, "ii", &unit, &count)) {
        return NULL;
    }
    for (i = 0; i < count && rc == BCM_E_NONE; ++i) {
        bcm_mac_t mac = {
            0x02, 0x00, 0x5e, (unsigned char)(i >> 16), (unsigned char)(i >> 8), (unsigned char)i};
        bcm_l2_addr_t address;
        bcm_l2_addr_t_init(&address, mac, 1);
        address.port = i % 64 + 1;
        address.flags = i % 8 == 0 ? BCM_L2_STATIC : 0;
        rc = bcm_l2_addr_add(unit, &address);
    }
    if (rc != BCM_E_NONE) {
        return PyErr_Format(PyExc_RuntimeError, "entry %d: SDK status %d", i - 1, rc);
    }
    Py_RETURN_NONE;
}

static PyMethodDef methods[] = {
    {"accept", accept, METH_O, ""},
    {"take", take, METH_VARARGS, ""},
    {"bcm_l2_addr_t_mac_get", mac_get, METH_VARARGS, ""},
    {"bcm_l2_addr_t_mac_set", mac_set, METH_VARARGS, ""},
    {"bcm_vlan_data_t_port_bitmap_get", port_bitmap_get, METH_VARARGS, ""},
    {"getHwMacTable", mac_table, METH_VARARGS, ""},
    {"traverse", traverse, METH_VARARGS, ""},
    {"fill_mac_table", fill_mac_table, METH_VARARGS, ""},
    {NULL, NULL, 0, NULL},
};

PyMODINIT_FUNC initobvious(void)
{
    Py_InitModule("obvious", methods);
}
