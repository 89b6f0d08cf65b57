/*
 * Ports. A port argument is a physical port number or a gport of a local or system port.
 * BCM_E_PORT: no such port on the unit.
 */
#ifndef BCM_PORT_H
#define BCM_PORT_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What happens on arrival of a source address that is unknown or known elsewhere. */
#define BCM_PORT_LEARN_ARL 0x00000001     /* enter it into the address table */
#define BCM_PORT_LEARN_CPU 0x00000002     /* tell the registered callbacks, without entering it */
#define BCM_PORT_LEARN_FWD 0x00000004     /* forward the packet */
#define BCM_PORT_LEARN_PENDING 0x00000008 /* enter it marked as pending */

/* Administrative state (1 enabled), and whether the link is up (1). */
int bcm_port_enable_set(int unit, bcm_port_t port, int enable);
int bcm_port_enable_get(int unit, bcm_port_t port, int *enable);
int bcm_port_link_status_get(int unit, bcm_port_t port, int *status);

/* Speed in Mbit/s: the one in force and the highest possible. BCM_E_PARAM: not a speed of this port. */
int bcm_port_speed_set(int unit, bcm_port_t port, int speed);
int bcm_port_speed_get(int unit, bcm_port_t port, int *speed);
int bcm_port_speed_max(int unit, bcm_port_t port, int *speed);

/*
 * IEEE 802.3 pause frames, by direction (0 off, 1 on), and the source address of those sent. The _sym_
 * pair sets both directions at once, and reads 1 only if both are on.
 */
int bcm_port_pause_set(int unit, bcm_port_t port, int pause_tx, int pause_rx);
int bcm_port_pause_get(int unit, bcm_port_t port, int *pause_tx, int *pause_rx);
int bcm_port_pause_addr_set(int unit, bcm_port_t port, bcm_mac_t mac);
int bcm_port_pause_addr_get(int unit, bcm_port_t port, bcm_mac_t mac);
int bcm_port_pause_sym_set(int unit, bcm_port_t port, int pause);
int bcm_port_pause_sym_get(int unit, bcm_port_t port, int *pause);

/* VLAN of packets that arrive untagged; it has to exist. Membership is not changed. */
int bcm_port_untagged_vlan_set(int unit, bcm_port_t port, bcm_vlan_t vid);
int bcm_port_untagged_vlan_get(int unit, bcm_port_t port, bcm_vlan_t *vid_ptr);

/* Learning, BCM_PORT_LEARN_* flags. */
int bcm_port_learn_set(int unit, bcm_port_t port, uint32 flags);
int bcm_port_learn_get(int unit, bcm_port_t port, uint32 *flags);

#ifdef __cplusplus
}
#endif

#endif
