// Packets of files.
#pragma once

#include <Python.h>

namespace QuorelSim {

/// As sim_replay(): (status, replayed, refused).
PyObject *replay(const char *file, int unit, int port, int timed);

}  // namespace QuorelSim
