// Packets to a simulated switch, and what they become.
#pragma once

#include <Python.h>

namespace QuorelSim {

/// A frame arrives at the port, as sim_packet_arrive() says; the result is [(port, frame), ...], what left the unit's
/// ports because of it in that order, frames as str; or the status if it did not arrive. Null with an exception
/// if memory is short.
PyObject *send(int unit, int port, const unsigned char *frame, int length);

}  // namespace QuorelSim
