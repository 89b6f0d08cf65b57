#include "send.h"

#include "module/references.h"

#include <sim/traffic.h>

#include <cstring>

using namespace quorel;

namespace {

struct Collector {
    int unit;
    PyObject *list;
    bool complete;
    Owned latest;  ///< the frame before; copies that are equal are one object
};

Owned bytes_of(const unsigned char *frame, int length, PyObject *latest)
{
    const bool is_same =
        latest && PyString_GET_SIZE(latest) == length
        && std::memcmp(PyString_AS_STRING(latest), frame, static_cast<std::size_t>(length)) == 0;
    return is_same ? Owned::share(latest)
                   : Owned::steal(PyString_FromStringAndSize(reinterpret_cast<const char *>(frame), length));
}

void collect(int unit, bcm_port_t port, const unsigned char *frame, int length, void *datum)
{
    Collector &into = *static_cast<Collector *>(datum);
    if (unit != into.unit || !into.complete) {
        return;
    }
    Owned pair = Owned::steal(PyTuple_New(2));
    Owned number = Owned::steal(PyInt_FromLong(port));
    Owned bytes = bytes_of(frame, length, into.latest.get());
    into.complete = pair && number && bytes;
    if (into.complete) {
        into.latest = Owned::share(bytes.get());
        PyTuple_SET_ITEM(pair.get(), 0, number.release());
        PyTuple_SET_ITEM(pair.get(), 1, bytes.release());
        into.complete = PyList_Append(into.list, pair.get()) == 0;
    }
}

}  // namespace

namespace QuorelSim {

PyObject *send(int unit, int port, const unsigned char *frame, int length)
{
    Owned list = Owned::steal(PyList_New(0));
    if (!list) {
        return nullptr;
    }
    Collector collector = {unit, list.get(), true, {}};
    const int status = sim_packet_send(unit, port, frame, length, collect, &collector);
    if (!collector.complete || PyErr_Occurred()) {
        return nullptr;
    }
    return status == BCM_E_NONE ? list.release() : PyInt_FromLong(status);
}

}  // namespace QuorelSim
