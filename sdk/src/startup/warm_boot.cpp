#include "warm_boot.h"

#include "kept_units.h"
#include "sim_switch.h"
#include "soc_control.h"

namespace sim {

bool boots_warm(Switch &sw)
{
    int supported = 0;
    return sim_bcm_switch_control_get(sw.unit, bcmSwitchWarmBootSupport, &supported) == BCM_E_NONE
           && supported != 0;
}

void detach_warm(Switch &sw)
{
    const int unit = sw.unit;
    // Those of who used the unit may be gone by the time that it is attached again.
    sw.forget_functions();
    publish_control(unit, false);
    detach_and_keep(unit);
}

bool attach_warm(int unit)
{
    const bool is_kept = attach_kept(unit);
    if (is_kept) {
        publish_control(unit, true);
    }
    return is_kept;
}

}  // namespace sim
