/*
 * What is plugged into the ports of a simulated switch. At the start each port has a cable of 10 m in its
 * preferred socket, with a partner at its end that can do all that the medium allows and is no port of a unit.
 * Not part of the SDK proper.
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

/* Takes all cables out of the port: SOC_E_UNIT, SOC_E_PORT, SOC_E_UNAVAIL. */
int sim_cable_pull(int unit, int port);

/*
 * Plugs a cable of that length into two ports, of one unit or of two, and takes out what was in them. What one
 * sends the other receives; they have a link if both can, at a speed that both are set to or agree upon. A cable
 * that is taken out of one port is out of the other too. A unit that is detached has no links; its cables stay.
 * SOC_E_UNIT, SOC_E_PORT, SOC_E_UNAVAIL; SOC_E_PARAM for a port and itself, for two that have no kind of socket in
 * common, or a length that is not positive.
 */
int sim_cable_join(int unit, int port, int other_unit, int other_port, int metres);

/* Takes the cables out and plugs them in again, that many times; SOC_E_NOT_FOUND if there are none; _PARAM. */
int sim_cable_flap(int unit, int port, int times);

/* The port at the other end of the port's cable; SOC_E_NOT_FOUND if it leads to none. */
int sim_cable_partner_get(int unit, int port, int *other_unit, int *other_port);

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
