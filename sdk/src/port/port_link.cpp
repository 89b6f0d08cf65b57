/// Links of ports: state, faults, and what is remembered of them.
#include "begin.h"
#include "port.h"
#include "sim_phyctrl.h"
#include "sim_port.h"

using namespace sim;

namespace {

/// The driver has read the PHY's latch with it.
void forget_interruption(PhyPort &port)
{
    port.was_down = false;
    port.outer().link_lost = false;
}

}  // namespace

extern "C" {

int sim_bcm_port_link_state_get(int unit, bcm_port_t port, uint32 flags, bcm_port_link_state_t *state)
{
    return begin(unit, given(state), own_port(port)).then([&](soc_port_t own_port) {
        return begin(unit, chip_runs, phy_port(own_port)).then([&](PhyUnit &, PhyPort &own) {
            if (flags != 0) {
                return BCM_E_PARAM;
            }
            state->status = has_link(*attached(unit), own.number);
            state->latch_down = own.was_down;
            forget_interruption(own);
            return BCM_E_NONE;
        });
    });
}

int sim_bcm_port_link_failed_clear(int unit, bcm_port_t port)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own_port) {
        return begin(unit, chip_runs, phy_port(own_port)).then([](PhyUnit &, PhyPort &own) {
            forget_interruption(own);
            return BCM_E_NONE;
        });
    });
}

int sim_bcm_port_fault_get(int unit, bcm_port_t port, uint32 *flags)
{
    return begin(unit, given(flags), own_port(port)).then([&](soc_port_t own_port) {
        return begin(unit, chip_runs, ready_phy(own_port)).then([&](PhyPort &own) {
            // The partner always receives.
            *flags = has_fault(own, own.outer()) ? BCM_PORT_FAULT_LOCAL : 0;
            return BCM_E_NONE;
        });
    });
}

int sim_bcm_port_update(int unit, bcm_port_t port, int link)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        if (link != 0 && link != 1) {
            return static_cast<int>(BCM_E_PARAM);
        }
        return link ? sim_soc_phyctrl_linkup_evt(unit, own) : sim_soc_phyctrl_linkdn_evt(unit, own);
    });
}

}  // extern "C"
