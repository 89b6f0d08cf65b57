/// Steps of the diagnostic application's start.
#include "begin.h"
#include "sim_cosq.h"
#include "sim_shell.h"
#include "sim_stk.h"
#include "startup_steps.h"
#include "switch.h"

using namespace sim;

extern "C" {

int sim_appl_dpp_bcm_diag_init(int unit, appl_dcmn_init_param_t *init_param)
{
    return begin(unit, given(init_param)).then([&]() -> int {
        if (init_param->nof_devices < 1 || init_param->nof_devices > unit_max) {
            return BCM_E_PARAM;
        }
        const int rc = init_modules(unit, init_param->cosq_disable == 0);
        return rc < 0 ? rc : init_stacking(unit, init_param->modid);
    });
}

int sim_appl_dpp_bcm_diag_init_py(int unit, int nof_devices, int mymodid, int cosq_disable)
{
    appl_dcmn_init_param_t parameters = {};
    parameters.unit = static_cast<uint32>(unit);
    parameters.nof_devices = nof_devices;
    parameters.modid = mymodid;
    parameters.cosq_disable = cosq_disable != 0;
    return sim_appl_dpp_bcm_diag_init(unit, &parameters);
}

int sim_appl_dpp_cosq_diag_init(int unit)
{
    return begin(unit).then([&] { return bcm_cosq_init(unit); });
}

int sim_appl_dpp_stk_diag_init(int unit)
{
    return begin(unit).then([&] { return bcm_stk_init(unit); });
}

}  // extern "C"
