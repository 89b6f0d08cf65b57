/// All ports of a unit at once.
#include "checked.h"
#include "phy_unit.h"
#include "sim.h"

using namespace sim;

extern "C" {

int sim_bcm_port_init(int unit)
{
    return on_unit(unit, {}, [](Switch &sw) -> int {
        sw.reset_ports();
        start_phys(sw.unit);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_clear(int unit)
{
    return sim_bcm_port_init(unit);
}

}  // extern "C"
