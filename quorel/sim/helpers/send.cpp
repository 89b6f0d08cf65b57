#include "send.h"

#include "module/references.h"

#include <sim/traffic.h>

using namespace quorel;

namespace {

struct Collector {
    int unit;
    PyObject *list;
    bool complete;
};

void collect(int unit, bcm_port_t port, const unsigned char *frame, int length, void *datum)
{
    Collector &into = *static_cast<Collector *>(datum);
    if (unit != into.unit || !into.complete) {
        return;
    }
    Owned pair = Owned::steal(PyTuple_New(2));
    Owned number = Owned::steal(PyInt_FromLong(port));
    Owned bytes = Owned::steal(PyString_FromStringAndSize(reinterpret_cast<const char *>(frame), length));
    into.complete = pair && number && bytes;
    if (into.complete) {
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
    Collector collector = {unit, list.get(), true};
    const int status = sim_packet_send(unit, port, frame, length, collect, &collector);
    if (!collector.complete || PyErr_Occurred()) {
        return nullptr;
    }
    return status == BCM_E_NONE ? list.release() : PyInt_FromLong(status);
}

}  // namespace QuorelSim
