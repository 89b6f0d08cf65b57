/// Loopback in PHYs: what the MAC sends comes back to it.
#include "begin.h"
#include "phy.h"
#include "sim_phyctrl.h"

using namespace sim;

namespace {

/// Waiting for the SerDes is over at once, one way or the other.
int wait_for_serdes(const PhyPort &port, bool enable, bool wait)
{
    return enable && wait && !link_of(port).up() ? SOC_E_TIMEOUT : SOC_E_NONE;
}

}  // namespace

extern "C" {

int sim_soc_phyctrl_loopback_extended_set(int unit, soc_port_t port, int enable, int serdes_linkup_wait,
                                          uint32 en_int_phy)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        Phy &phy = en_int_phy != 0 ? *own.serdes : own.outer();
        phy.line.loopback = enable != 0;
        return wait_for_serdes(own, enable != 0, serdes_linkup_wait != 0);
    });
}

int sim_soc_phyctrl_loopback_set(int unit, soc_port_t port, int enable, int serdes_linkup_wait)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        own.outer().line.loopback = enable != 0;
        if (!enable) {
            own.serdes->line.loopback = false;
        }
        return wait_for_serdes(own, enable != 0, serdes_linkup_wait != 0);
    });
}

int sim_soc_phyctrl_loopback_get(int unit, soc_port_t port, int *enable)
{
    return begin(unit, chip_runs, given(enable), ready_phy(port)).then([&](PhyPort &own) {
        *enable = own.serdes->line.loopback || own.outer().line.loopback;
        return SOC_E_NONE;
    });
}

}  // extern "C"
