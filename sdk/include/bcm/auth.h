/*
 * Port authentication (IEEE 802.1X): which ports, and which stations on them, may use the network.
 *
 * All functions return BCM_E_NONE or an error; in common they have BCM_E_UNIT, BCM_E_INIT, BCM_E_PORT and
 * BCM_E_PARAM.
 */
#ifndef BCM_AUTH_H
#define BCM_AUTH_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* mode of a port: one of the first three, with any of the others. */
typedef enum bcm_auth_mode_flag_e {
    BCM_AUTH_MODE_UNCONTROLLED = 0x00000001, /* open to everyone */
    BCM_AUTH_MODE_UNAUTH = 0x00000002,       /* only authentication packets pass */
    BCM_AUTH_MODE_AUTH = 0x00000004,         /* open, until the link goes down */
    BCM_AUTH_BLOCK_INOUT = 0x00000008,       /* unauthorised: nothing is sent either */
    BCM_AUTH_BLOCK_IN = 0x00000010,
    BCM_AUTH_DROP_UNKNOWN = 0x00000020,      /* stations that are not entered are dropped */
    BCM_AUTH_LEARN = 0x00000040,             /* stations are learnt as usual */
    BCM_AUTH_CALLBACK = 0x00000080,          /* unauthorised stations are told to the callback */
    BCM_AUTH_IGNORE_LINK = 0x00000100,       /* the mode outlasts a loss of link */
    BCM_AUTH_IGNORE_VIOLATION = 0x00000200
} bcm_auth_mode_flag_t;

/* reason of the callback. */
typedef enum bcm_auth_reason_e {
    BCM_AUTH_REASON_UNKNOWN = 0,
    BCM_AUTH_REASON_LINK = 1,     /* the port lost its link */
    BCM_AUTH_REASON_VIOLATION = 2 /* an unauthorised station sent */
} bcm_auth_reason_t;

/* What is done with stations that are not entered. */
typedef enum bcm_auth_sec_mode_e {
    BCM_AUTH_SEC_NONE = 0,
    BCM_AUTH_SEC_SANOTFOUND = 1, /* drop those with an unknown source */
    BCM_AUTH_SEC_STAMOVE = 2     /* drop those that are entered for another port */
} bcm_auth_sec_mode_t;

/* Called when a port goes back to the unauthorised state, see BCM_AUTH_REASON_*. Returns an SDK status. */
typedef int (*bcm_auth_cb_t)(int unit, bcm_port_t port, int reason, void *cookie);

/* All ports are uncontrolled at first. */
int bcm_auth_init(int unit);
int bcm_auth_detach(int unit);

/* What a port lets pass, and how it treats stations; at most max_stations have access, 0 for no limit. */
int bcm_auth_mode_set(int unit, bcm_port_t port, uint32 mode);
int bcm_auth_mode_get(int unit, bcm_port_t port, uint32 *modep);
int bcm_auth_sec_mode_set(int unit, bcm_port_t port, int mode, int max_stations);
int bcm_auth_sec_mode_get(int unit, bcm_port_t port, int *mode, int *max_stations);

/* One callback per unit; null for none. */
int bcm_auth_unauth_callback(int unit, bcm_auth_cb_t func, void *cookie);

/* Whether an unauthorised port may send. */
int bcm_auth_egress_set(int unit, bcm_port_t port, int enable);
int bcm_auth_egress_get(int unit, bcm_port_t port, int *enable);

/* Stations that may use a port. */
int bcm_auth_mac_add(int unit, bcm_port_t port, bcm_mac_t mac);
int bcm_auth_mac_delete(int unit, bcm_port_t port, bcm_mac_t mac);
int bcm_auth_mac_delete_all(int unit, bcm_port_t port);

#ifdef __cplusplus
}
#endif

#endif
