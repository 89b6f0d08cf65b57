/*
 * Wireless access: the radios of access points behind tunnels as ports, and the clients that move among them.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM. On an error nothing is changed.
 */
#ifndef BCM_WLAN_H
#define BCM_WLAN_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_wlan_port_t. */
#define BCM_WLAN_PORT_WITH_ID 0x00000001     /* wlan_port_id is the gport to use */
#define BCM_WLAN_PORT_REPLACE 0x00000002     /* replace the port of that gport */
#define BCM_WLAN_PORT_MATCH_BSSID 0x00000004 /* bssid counts too, not only tunnel and radio */

/* flags of bcm_wlan_client_t. */
#define BCM_WLAN_CLIENT_ROAMED_OUT 0x00000001 /* at home here, now at foreign_agent */
#define BCM_WLAN_CLIENT_ROAMED_IN 0x00000002  /* here, at home at home_agent */

/* A radio of an access point, reached through a tunnel. */
typedef struct bcm_wlan_port_s {
    uint32 flags;                /* BCM_WLAN_PORT_* */
    bcm_gport_t wlan_port_id;    /* out: the gport of the radio */
    bcm_gport_t port;            /* port at which the tunnel begins */
    bcm_gport_t match_tunnel;    /* tunnel that packets come through */
    bcm_mac_t bssid;
    int radio;                   /* radio of the access point, 0..31 */
    bcm_gport_t egress_tunnel;   /* tunnel that packets are sent through */
    int if_class;
    int qos_map_id;
} bcm_wlan_port_t;

/* A client, and where it is. */
typedef struct bcm_wlan_client_s {
    uint32 flags;                /* BCM_WLAN_CLIENT_* */
    bcm_mac_t mac;
    bcm_vlan_t vlan;             /* VLAN that it keeps while it moves */
    bcm_gport_t wlan_port_id;
    bcm_gport_t home_agent;      /* tunnel to the switch at which it first appeared */
    bcm_gport_t foreign_agent;   /* tunnel to the switch at which it is */
} bcm_wlan_client_t;

/*
 * Called once per entry. Records are valid during the call. A negative result ends the traversal, which then
 * returns it.
 */
typedef int (*bcm_wlan_port_traverse_cb)(int unit, bcm_wlan_port_t *info, void *user_data);
typedef int (*bcm_wlan_client_traverse_cb)(int unit, bcm_wlan_client_t *info, void *user_data);

/* The module. init removes all radios and clients. */
int bcm_wlan_init(int unit);
int bcm_wlan_detach(int unit);

/*
 * Radios. add writes the gport to wlan_port_id; delete gives BCM_E_BUSY while clients are there, get says how
 * many; delete_all takes those at port, BCM_GPORT_INVALID for all.
 */
void bcm_wlan_port_t_init(bcm_wlan_port_t *info);
int bcm_wlan_port_add(int unit, bcm_wlan_port_t *info);
int bcm_wlan_port_delete(int unit, bcm_gport_t wlan_port_id);
int bcm_wlan_port_delete_all(int unit, bcm_gport_t port);
int bcm_wlan_port_get(int unit, bcm_gport_t wlan_port_id, bcm_wlan_port_t *info, int *client_count);
int bcm_wlan_port_traverse(int unit, bcm_wlan_port_traverse_cb cb, void *user_data);

/* Clients, one entry per address; adding one again moves it. delete_by_port says how many there were. */
void bcm_wlan_client_t_init(bcm_wlan_client_t *info);
int bcm_wlan_client_add(int unit, bcm_wlan_client_t *info);
int bcm_wlan_client_delete(int unit, bcm_mac_t mac);
int bcm_wlan_client_delete_by_port(int unit, bcm_gport_t wlan_port_id, int *client_count);
int bcm_wlan_client_delete_all(int unit);
int bcm_wlan_client_get(int unit, bcm_mac_t mac, bcm_wlan_client_t *info);
int bcm_wlan_client_traverse(int unit, bcm_wlan_client_traverse_cb cb, void *user_data);

/* The most clients of a radio, -1 for no limit, and whether packets of others go to the CPU. */
int bcm_wlan_client_limit_set(int unit, bcm_gport_t wlan_port_id, int limit, int to_cpu);
int bcm_wlan_client_limit_get(int unit, bcm_gport_t wlan_port_id, int *limit, int *to_cpu);

#ifdef __cplusplus
}
#endif

#endif
