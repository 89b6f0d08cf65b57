/*
 * A unit as a whole. Not part of the SDK proper.
 */
#ifndef SIM_UNIT_H
#define SIM_UNIT_H

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/*
 * The attached unit becomes as it is when new: tables, settings, counters, registers, PHYs; each port has the
 * cable in it that it has at the start, and those to other ports are out, there too. Registered callbacks are
 * gone, and nobody is told. Properties of the configuration, the clock, watchers of packets and captures are not
 * of a unit: they stay. BCM_E_NONE, BCM_E_UNIT.
 */
int sim_switch_reset(int unit);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
