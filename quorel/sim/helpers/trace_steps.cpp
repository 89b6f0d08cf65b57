#include "trace_steps.h"

#include "module/references.h"

#include <bcm/error.h>
#include <sim/trace.h>

using namespace quorel;

namespace QuorelSim {

PyObject *trace_steps()
{
    Owned list = Owned::steal(PyList_New(0));
    sim_trace_step_t step;
    for (int i = 0; list && sim_trace_step(i, &step) == BCM_E_NONE; ++i) {
        Owned row = Owned::steal(Py_BuildValue("(iisss)", step.unit, step.port, sim_stage_name(step.stage),
                                               sim_drop_name(step.drop), step.text));
        if (!row || PyList_Append(list.get(), row.get()) != 0) {
            return nullptr;
        }
    }
    return list.release();
}

}  // namespace QuorelSim
