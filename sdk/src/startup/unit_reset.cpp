#include "begin.h"
#include "packet_watch.h"
#include "phy.h"
#include "unit_attach.h"

#include <sim/unit.h>

using namespace sim;

extern "C" int sim_switch_reset(int unit)
{
    Switch *sw = attached(unit);
    if (sw == nullptr) {
        return BCM_E_UNIT;
    }
    // The hardware outlives the unit.
    PhyUnit &phys = phys_of(*sw);
    const Driver driver = driver_of(unit);
    stop_packet_watch(unit);
    detach(unit);
    for (int port = cpu_port; port <= port_max; ++port) {
        const std::optional<CableEnd> partner = phys.of(port).cable.partner;
        phys.plug(port, Cable::at_start(port));
        if (PhyUnit *others = partner ? phys_of(partner->unit) : nullptr) {
            others->plug(partner->port, Cable(0, 1));
            tell_changes(partner->unit, others->of(partner->port));
        }
    }
    attach(unit);
    driver_of(unit) = driver;
    return BCM_E_NONE;
}
