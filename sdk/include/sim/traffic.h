/*
 * Events that reach a real switch from outside: packets and the passing of time. The simulator has no
 * thread and no clock; nothing happens between calls. Not part of the SDK proper.
 */
#ifndef SIM_TRAFFIC_H
#define SIM_TRAFFIC_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * One sweep of the ageing timer: every dynamic address that no packet came from since the sweep before
 * (or since it was entered) is removed. Returns the number removed, 0 while ageing is off (timer 0) or the
 * table is frozen, or an error.
 */
int sim_l2_age_step(int unit);

/*
 * A minimum-size packet arrives at the port from the source address mac. vid is the VLAN of its tag, 0 for
 * an untagged packet, which belongs to the port's untagged VLAN. Returns
 *   BCM_E_NONE       the address was known there, or has been learnt or moved there
 *   BCM_E_DISABLED   port disabled, learning off, or table frozen, and the address not known there
 *   BCM_E_EXISTS     a static entry, an authorisation for another port or a learn class holds it elsewhere
 *   BCM_E_RESOURCE   a learn limit is reached
 *   BCM_E_FULL       the table is full
 *   BCM_E_NOT_FOUND  no such VLAN
 *   BCM_E_PARAM      mac null or a group address, or VLAN id out of range
 *   BCM_E_UNIT, BCM_E_PORT, BCM_E_INIT
 */
int sim_l2_learn(int unit, bcm_port_t port, const unsigned char *mac, bcm_vlan_t vid);

#ifdef __cplusplus
}
#endif

#endif
