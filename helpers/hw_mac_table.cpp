#include "hw_mac_table.h"

#include "module/references.h"
#include "typemaps/mac_address.h"

extern "C" {
#include <bcm/error.h>
#include <bcm/l2.h>
}

namespace {

using namespace quorel;

// Flags of an entry, and the gport that stands for its destination.
constexpr uint32_t flag_discard = 0x4, flag_static = 0x20, flag_trunk = 0x80;
constexpr uint32_t black_hole = 0x10000000;
constexpr uint32_t local_port = 0x04000000, port_mask = 0x7ff;
constexpr uint32_t trunk = 0x0c000000, trunk_mask = 0x3ffffff;

uint32_t destination(const bcm_l2_addr_t &entry)
{
    if (entry.flags & flag_discard)
        return black_hole;
    if (entry.flags & flag_trunk)
        return (static_cast<uint32_t>(entry.tgid) & trunk_mask) | trunk;
    return (static_cast<uint32_t>(entry.port) & port_mask) | local_port;
}

struct Table {
    PyObject *list, *static_text, *dynamic_text;
};

// Runs inside a traversal that Python called, on its thread and with the interpreter lock held.
int append_entry(int, bcm_l2_addr_t *entry, void *user_data)
{
    auto *table = static_cast<Table *>(user_data);
    PyObject *row = PyTuple_New(4);
    if (!row)
        return BCM_E_MEMORY;
    PyObject *kind = entry->flags & flag_static ? table->static_text : table->dynamic_text;
    PyTuple_SET_ITEM(row, 0, from_mac_address(entry->mac));
    PyTuple_SET_ITEM(row, 1, PyInt_FromLong(entry->vid));
    PyTuple_SET_ITEM(row, 2, from_uint32(destination(*entry)));
    PyTuple_SET_ITEM(row, 3, Owned::share(kind).release());
    bool complete = PyTuple_GET_ITEM(row, 0) && PyTuple_GET_ITEM(row, 1) && PyTuple_GET_ITEM(row, 2);
    bool appended = complete && PyList_Append(table->list, row) == 0;
    Py_DECREF(row);
    return appended ? BCM_E_NONE : BCM_E_MEMORY;
}

}  // namespace

PyObject *getHwMacTable(int unit)
{
    Owned list = Owned::steal(PyList_New(0));
    Owned static_text = Owned::steal(PyString_InternFromString("static"));
    Owned dynamic_text = Owned::steal(PyString_InternFromString("dynamic"));
    if (!list || !static_text || !dynamic_text)
        return nullptr;
    Table table{list.get(), static_text.get(), dynamic_text.get()};
    bcm_l2_traverse(unit, append_entry, &table);
    return PyErr_Occurred() ? nullptr : list.release();
}
