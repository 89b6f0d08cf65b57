/// Links of ports: state, faults, and what is remembered of them.
#include "port_phy.h"
#include "sim.h"

using namespace sim;

namespace {

/// The driver has read the PHY's latch with it.
void forget_interruption(PhyPort &port)
{
    port.was_down = false;
    port.outer().link_lost = false;
}

}  // namespace

namespace sim {

PhyPort *phy_of(const Switch &sw, int port)
{
    PhyPort &found = phys_of(sw.unit)->of(port);
    return found.serdes ? &found : nullptr;
}

bool has_link(const Switch &sw, int port)
{
    const PhyPort *phy = phy_of(sw, port);
    return sw.ports[static_cast<std::size_t>(port)].enabled && (phy == nullptr || link_of(*phy).up());
}

}  // namespace sim

extern "C" {

int sim_bcm_port_link_state_get(int unit, bcm_port_t port, uint32 flags, bcm_port_link_state_t *state)
{
    return with_own_port(unit, port, {state}, [&](soc_port_t own_port) {
        return on_phy_port(unit, own_port, {}, [&](PhyUnit &, PhyPort &own) {
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
    return with_own_port(unit, port, {}, [&](soc_port_t own_port) {
        return on_phy_port(unit, own_port, {}, [](PhyUnit &, PhyPort &own) {
            forget_interruption(own);
            return BCM_E_NONE;
        });
    });
}

int sim_bcm_port_fault_get(int unit, bcm_port_t port, uint32 *flags)
{
    return with_own_port(unit, port, {flags}, [&](soc_port_t own_port) {
        return on_phy(unit, own_port, {}, [&](PhyPort &own) {
            // The partner always receives.
            *flags = has_fault(own, own.outer()) ? BCM_PORT_FAULT_LOCAL : 0;
            return BCM_E_NONE;
        });
    });
}

int sim_bcm_port_update(int unit, bcm_port_t port, int link)
{
    return with_own_port(unit, port, {}, [&](soc_port_t own) {
        if (link != 0 && link != 1) {
            return static_cast<int>(BCM_E_PARAM);
        }
        return link ? sim_soc_phyctrl_linkup_evt(unit, own) : sim_soc_phyctrl_linkdn_evt(unit, own);
    });
}

}  // extern "C"
