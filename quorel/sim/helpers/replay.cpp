#include "replay.h"

#include <sim/capture.h>

namespace QuorelSim {

PyObject *replay(const char *file, int unit, int port, int timed)
{
    int replayed = 0, refused = 0;
    const int status = sim_replay(file, unit, port, timed, &replayed, &refused);
    return PyErr_Occurred() ? nullptr : Py_BuildValue("(iii)", status, replayed, refused);
}

}  // namespace QuorelSim
