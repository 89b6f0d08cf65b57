/*
 * What is plugged into the ports of a simulated switch. At the start each port has a cable of 10 m in its
 * preferred socket, with a partner at its end that can do all that the medium allows. Not part of the SDK
 * proper.
 */
#ifndef SIM_CABLE_H
#define SIM_CABLE_H

#include <sal/types.h>
#include <shared/port.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/*
 * Plugs cables of that length into the port and takes others out. media: bit n for _shr_port_medium_t n, 0
 * for no cable. All pairs of copper are whole again. Status: SOC_E_UNIT, SOC_E_PORT, SOC_E_UNAVAIL for a port
 * without PHY, SOC_E_PARAM for a medium that its PHY has no socket for or a length that is not positive.
 */
int sim_cable_plug(int unit, int port, uint32 media, int metres);

/*
 * Damages pair 0.._SHR_PORT_CABLE_PAIRS-1 of the copper cable, that many metres from the port, or repairs it
 * (_SHR_PORT_CABLE_STATE_OK). SOC_E_NOT_FOUND if the port has no such cable; the others as above.
 */
int sim_cable_pair_set(int unit, int port, int pair, _shr_port_cable_state_t state, int metres);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
