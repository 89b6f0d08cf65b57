/*
 * Proxy: packets that come over a stacking link with a header, and leave for a port or server that handles
 * them in the switch's stead.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, unknown flag or server mode). A record's _t_init sets all its
 * members to zero.
 */
#ifndef BCM_PROXY_H
#define BCM_PROXY_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_proxy_egress_create. */
#define BCM_PROXY_WITH_ID 0x00000001              /* *proxy_id is the id to use */
#define BCM_PROXY_REPLACE 0x00000002              /* replace the object of that id */

/* flags of bcm_proxy_egress_t. */
#define BCM_PROXY_EGRESS_HEADER_REMOVE 0x00000001 /* the stacking header is taken off */
#define BCM_PROXY_EGRESS_VLAN_TAGGED 0x00000002

/* flags of bcm_proxy_server_t. */
#define BCM_PROXY_SERVER_HEADER_ADD 0x00000001    /* packets get a stacking header */
#define BCM_PROXY_SERVER_COPY_ONLY 0x00000002     /* the switch goes on handling the packet itself */

/* What a server handles. */
typedef enum bcm_proxy_server_mode_e {
    BCM_PROXY_SERVER_MODE_FORWARD = 0, /* all packets of the port */
    BCM_PROXY_SERVER_MODE_CONTROL = 1  /* only those of control protocols */
} bcm_proxy_server_mode_t;

/* How a packet leaves. */
typedef struct bcm_proxy_egress_s {
    uint32 flags;                  /* BCM_PROXY_EGRESS_* */
    bcm_vlan_t vlan;
} bcm_proxy_egress_t;

/* Where the packets of a port are handled. */
typedef struct bcm_proxy_server_s {
    uint32 flags;                  /* BCM_PROXY_SERVER_* */
    bcm_port_t port;               /* whose packets */
    int mode;                      /* BCM_PROXY_SERVER_MODE_* */
    bcm_gport_t server;            /* where to */
} bcm_proxy_server_t;

/* Called once per object, by ascending id; a negative result ends the traversal with it. */
typedef int (*bcm_proxy_egress_traverse_cb)(int unit, int proxy_id, bcm_proxy_egress_t *egr, void *user_data);

/* The module. init and cleanup destroy all objects and servers. */
int bcm_proxy_init(int unit);
int bcm_proxy_cleanup(int unit);

/*
 * Egress objects. create chooses the lowest free id unless BCM_PROXY_WITH_ID, and gives BCM_E_EXISTS or
 * BCM_E_FULL; get, destroy and find BCM_E_NOT_FOUND. find gives the lowest id of an equal one.
 */
void bcm_proxy_egress_t_init(bcm_proxy_egress_t *egr);
int bcm_proxy_egress_create(int unit, uint32 flags, bcm_proxy_egress_t *egr, int *proxy_id);
int bcm_proxy_egress_destroy(int unit, int proxy_id);
int bcm_proxy_egress_get(int unit, int proxy_id, bcm_proxy_egress_t *egr);
int bcm_proxy_egress_find(int unit, bcm_proxy_egress_t *egr, int *proxy_id);
int bcm_proxy_egress_traverse(int unit, bcm_proxy_egress_traverse_cb cb, void *user_data);

/* Servers; port and mode say which, get takes them from *server. get, delete: BCM_E_NOT_FOUND. */
void bcm_proxy_server_t_init(bcm_proxy_server_t *server);
int bcm_proxy_server_set(int unit, bcm_proxy_server_t *server);
int bcm_proxy_server_get(int unit, bcm_proxy_server_t *server);
int bcm_proxy_server_delete(int unit, bcm_port_t port, int mode);
int bcm_proxy_server_delete_all(int unit);

#ifdef __cplusplus
}
#endif

#endif
