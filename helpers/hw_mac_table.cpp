#include "hw_mac_table.h"

#include "module/references.h"
#include "typemaps/mac_address.h"

extern "C" {
#include <bcm/error.h>
}

#include <utility>

namespace {

using namespace quorel;

// Flags of an entry, and the gport that stands for its destination.
constexpr uint32_t flag_discard = 0x4, flag_static = 0x20, flag_trunk = 0x80;
constexpr uint32_t black_hole = 0x10000000;
constexpr uint32_t local_port = 0x04000000, port_mask = 0x7ff;
constexpr uint32_t trunk = 0x0c000000, trunk_mask = 0x3ffffff;

uint32_t destination(const bcm_l2_addr_t &entry)
{
    if (entry.flags & flag_discard) {
        return black_hole;
    }
    if (entry.flags & flag_trunk) {
        return (static_cast<uint32_t>(entry.tgid) & trunk_mask) | trunk;
    }
    return (static_cast<uint32_t>(entry.port) & port_mask) | local_port;
}

struct Collection {
    PyObject *list, *static_text, *dynamic_text;
};

// That of the innermost getHwMacTable(): the garbage collector may run Python code, which may call it again,
// within another. Guarded by the interpreter lock.
const Collection *under_way;

// Fills and appends a row; returns false with an exception set when memory is short.
inline bool append_entry(const Collection &collection, const bcm_l2_addr_t &entry)
{
    PyObject *row = PyTuple_New(4);
    if (!row) {
        return false;
    }
    PyObject *kind = entry.flags & flag_static ? collection.static_text : collection.dynamic_text;
    PyTuple_SET_ITEM(row, 0, from_mac_address(entry.mac));
    PyTuple_SET_ITEM(row, 1, PyInt_FromLong(entry.vid));
    PyTuple_SET_ITEM(row, 2, from_uint32(destination(entry)));
    PyTuple_SET_ITEM(row, 3, Owned::share(kind).release());
    bool complete = PyTuple_GET_ITEM(row, 0) && PyTuple_GET_ITEM(row, 1) && PyTuple_GET_ITEM(row, 2);
    bool appended = complete && PyList_Append(collection.list, row) == 0;
    Py_DECREF(row);
    return appended;
}

// Calls `use` with the collection for a list; false with an exception set when memory is short.
template <typename Use>
bool with_collection(PyObject *list, Use use)
{
    Owned static_text = Owned::steal(PyString_InternFromString("static"));
    Owned dynamic_text = Owned::steal(PyString_InternFromString("dynamic"));
    return static_text && dynamic_text && use(Collection{list, static_text.get(), dynamic_text.get()});
}

// The list at that address, or null with an exception set.
Owned find_list(const void *address)
{
    Owned collector = Owned::steal(PyImport_ImportModule("gc"));
    if (!collector) {
        return Owned();
    }
    Owned tracked =
        Owned::steal(PyObject_CallMethod(collector.get(), const_cast<char *>("get_objects"), nullptr));
    if (!tracked) {
        return Owned();
    }
    // A script can put anything in the collector's place.
    Py_ssize_t count = PyList_Check(tracked.get()) ? PyList_GET_SIZE(tracked.get()) : 0;
    for (Py_ssize_t i = 0; i < count; ++i) {
        PyObject *object = PyList_GET_ITEM(tracked.get(), i);
        if (object == address && PyList_Check(object)) {
            return Owned::share(object);
        }
    }
    raise_argument_error("l2_traverse_cb", 3, "void *", Status::type);
    return Owned();
}

int refuse_null(int position, const char *type)
{
    raise_argument_error("l2_traverse_cb", position, type, Status::null_reference);
    return BCM_E_PARAM;
}

// For any list. Not inline: what it needs on the stack would burden the callback of the list under way.
__attribute__((noinline)) int append_to(const void *user_data, const bcm_l2_addr_t *entry)
{
    if (!entry) {
        return refuse_null(2, "bcm_l2_addr_t *");
    }
    if (!user_data) {
        return refuse_null(3, "void *");
    }
    Owned list = find_list(user_data);
    if (!list) {
        return BCM_E_PARAM;
    }
    auto append = [entry](const Collection &collection) { return append_entry(collection, *entry); };
    return with_collection(list.get(), append) ? BCM_E_NONE : BCM_E_MEMORY;
}

}  // namespace

int l2_traverse_cb(int, bcm_l2_addr_t *info, void *user_data)
{
    if (!under_way || user_data != under_way->list || !info) {
        return append_to(user_data, info);
    }
    return append_entry(*under_way, *info) ? BCM_E_NONE : BCM_E_MEMORY;
}

PyObject *getHwMacTable(int unit)
{
    Owned list = Owned::steal(PyList_New(0));
    bool complete = list && with_collection(list.get(), [&](const Collection &collection) {
                        const Collection *outer = std::exchange(under_way, &collection);
                        bcm_l2_traverse(unit, l2_traverse_cb, list.get());
                        under_way = outer;
                        return !PyErr_Occurred();
                    });
    return complete ? list.release() : nullptr;
}
