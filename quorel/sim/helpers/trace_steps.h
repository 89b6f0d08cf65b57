// A packet's way, as the simulated switch told it.
#pragma once

#include <Python.h>

namespace QuorelSim {

/// What was kept since sim_trace_begin(): [(unit, port, stage, drop, text), ...], stage and drop as words. Null with an
/// exception if memory is short.
PyObject *trace_steps();

}  // namespace QuorelSim
