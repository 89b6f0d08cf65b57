/*
 * Link scan: the thread that watches the links of ports, follows them in the MACs and tells about changes.
 *
 * All functions return BCM_E_NONE or an error; in common they have BCM_E_UNIT, BCM_E_INIT and BCM_E_PARAM,
 * and BCM_E_PORT where they take ports. BCM_E_UNAVAIL: a port without PHY, passed by in a set of ports.
 */
#ifndef BCM_LINK_H
#define BCM_LINK_H

#include <bcm/error.h>
#include <bcm/port.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* How a port is watched. */
typedef enum bcm_linkscan_mode_e {
    BCM_LINKSCAN_MODE_NONE = 0, /* not at all */
    BCM_LINKSCAN_MODE_SW = 1,   /* by asking the PHY at every interval */
    BCM_LINKSCAN_MODE_HW = 2    /* by the chip, which then interrupts */
} bcm_linkscan_mode_t;

/* Called when the link of a port has changed; info: what is now set in the MAC, valid during the call. */
typedef void (*bcm_linkscan_handler_t)(int unit, bcm_port_t port, bcm_port_info_t *info);
typedef int (*bcm_linkscan_port_handler_t)(int unit, bcm_port_t port, bcm_port_info_t *info,
                                           void *user_data);

/*
 * init: scanning is off, each port is in mode SW, there are no handlers, and all links were down when looked
 * at last, as at the start. detach ends it and forgets all handlers; only init can follow.
 */
int bcm_linkscan_init(int unit);
int bcm_linkscan_detach(int unit);

/*
 * Scans all ports at once, and then whenever so many microseconds have passed; 0 to stop. port_get: BCM_E_NONE if
 * watched, else BCM_E_DISABLED.
 */
int bcm_linkscan_enable_set(int unit, int us);
int bcm_linkscan_enable_get(int unit, int *us);
int bcm_linkscan_enable_port_get(int unit, bcm_port_t port);

/* BCM_LINKSCAN_MODE_* of a port, or of several. */
int bcm_linkscan_mode_set(int unit, bcm_port_t port, int mode);
int bcm_linkscan_mode_set_pbm(int unit, bcm_pbmp_t pbm, int mode);
int bcm_linkscan_mode_get(int unit, bcm_port_t port, int *mode);

/*
 * Handlers for all ports, each at most once; and of one port, where the pair of function and user_data
 * counts. Registering what is registered gives BCM_E_EXISTS, unregistering what is not BCM_E_NOT_FOUND. They
 * are called in the order of registration, those for all ports first; what they return is not looked at.
 */
int bcm_linkscan_register(int unit, bcm_linkscan_handler_t f);
int bcm_linkscan_unregister(int unit, bcm_linkscan_handler_t f);
int bcm_linkscan_port_register(int unit, bcm_port_t port, bcm_linkscan_port_handler_t f, void *user_data);
int bcm_linkscan_port_unregister(int unit, bcm_port_t port, bcm_linkscan_port_handler_t f, void *user_data);

/* Scans the given ports at once, scanning on or off, but for those in mode NONE. */
int bcm_linkscan_update(int unit, bcm_pbmp_t pbm);

/* Prints the mode and the state of each port to standard output. */
int bcm_linkscan_dump(int unit);

/*
 * Takes the links of the given ports for changed, so that the next scan sets their MACs again and calls the
 * handlers; and waits at most us microseconds until all of *pbmp have a link, leaving those that have one.
 * BCM_E_TIMEOUT: not all have.
 */
int bcm_link_change(int unit, bcm_pbmp_t pbmp);
int bcm_link_wait(int unit, bcm_pbmp_t *pbmp, int us);

#ifdef __cplusplus
}
#endif

#endif
