#include "warm_boot.h"

#include "chip.h"
#include "cpu.h"
#include "events.h"
#include "kept_units.h"
#include "l2.h"
#include "phy.h"
#include "port.h"
#include "sim_custom.h"
#include "sim_switch.h"
#include "soc_control.h"

namespace sim {

namespace {

/// Functions of who used the unit may be gone by the time that it is attached again.
void forget_functions(Switch &sw)
{
    l2_of(sw).settings.subscribers.clear();
    events_of(sw).handlers.clear();
    LinkScan &links = links_of(sw);
    links.handlers.clear();
    for (WatchedLink &link : links.ports) {
        link.handlers.clear();
    }
    for (PhyPort &port : phys_of(sw).all()) {
        port.watchers.clear();
        port.own_reset = port.default_reset = ResetFunction();
    }
    Chip &chip = chip_of(sw);
    chip.stand_ins = {};
    chip.snoops.clear();
    cpu_of(sw).stop_reception();
    cpu_of(sw).callbacks.clear();
    set_cpu_receiver(sw.unit, nullptr);
    sim_bcm_custom_unregister(sw.unit);
}

}  // namespace

bool boots_warm(Switch &sw)
{
    int supported = 0;
    return sim_bcm_switch_control_get(sw.unit, bcmSwitchWarmBootSupport, &supported) == BCM_E_NONE
           && supported != 0;
}

void detach_warm(Switch &sw)
{
    const int unit = sw.unit;
    forget_functions(sw);
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
