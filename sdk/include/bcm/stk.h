/*
 * Stacking: several units, each a module or more, that forward as one switch over stacking ports.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, module, port or selector out of range, unknown flag).
 */
#ifndef BCM_STK_H
#define BCM_STK_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of a stacking port. */
#define BCM_STK_PORT_INTERNAL 0x00000001   /* to another unit of the same box */
#define BCM_STK_PORT_EXTERNAL 0x00000002   /* to another box */
#define BCM_STK_PORT_INACTIVE 0x00000004   /* known, but carries nothing */

/* flags of bcm_stk_cb_f: what has changed. */
#define BCM_STK_UPDATE_PORTS 0x00000001
#define BCM_STK_UPDATE_MODIDS 0x00000002
#define BCM_STK_UPDATE_ROUTES 0x00000004

/* Headers that packets have on a stacking port. */
typedef enum bcm_stk_header_e {
    BCM_STK_HEADER_SHORT = 0,   /* destination only, for units of the same box */
    BCM_STK_HEADER_FULL = 1,
    BCM_STK_HEADER_EXTENDED = 2 /* with virtual ports and load balancing */
} bcm_stk_header_t;

/* flags of bcm_stk_system_gport_map_t. */
#define BCM_STK_SYSTEM_GPORT_REPLACE 0x00000001

/* The modules that a unit answers for. */
typedef struct bcm_stk_modid_config_s {
    uint32 flags;
    bcm_module_t base_modid;
    int num_modids;
    int ports_per_modid;           /* ports beyond these belong to the next module */
    bcm_port_t cpu_port;           /* the CPU's port number in base_modid */
} bcm_stk_modid_config_t;

/* A system port, which all units know by the same number, and where it is. */
typedef struct bcm_stk_system_gport_map_s {
    uint32 flags;                  /* BCM_STK_SYSTEM_GPORT_* */
    bcm_gport_t sysport;
    bcm_gport_t gport;             /* module port, or trunk */
    bcm_core_t core;
} bcm_stk_system_gport_map_t;

/* Called after the stack has changed; flags: BCM_STK_UPDATE_*. */
typedef int (*bcm_stk_cb_f)(int unit, uint32 flags, void *userdata);

/* Says what a module and port are called beyond a stacking port, in *mapped_modid and *mapped_port. */
typedef int (*bcm_stk_modmap_cb_t)(int unit, bcm_module_t modid, bcm_port_t port, bcm_module_t *mapped_modid,
                                   bcm_port_t *mapped_port, void *userdata);

/* The module. init forgets stacking ports, routes, mappings and callbacks. */
int bcm_stk_init(int unit);
int bcm_stk_detach(int unit);

/* The unit's own module ids: one, or by a record (all zero at first) several. */
int bcm_stk_modid_set(int unit, bcm_module_t modid);
int bcm_stk_modid_get(int unit, bcm_module_t *modid);
void bcm_stk_modid_config_t_init(bcm_stk_modid_config_t *config);
int bcm_stk_modid_config_set(int unit, bcm_stk_modid_config_t *config);
int bcm_stk_modid_config_get(int unit, bcm_stk_modid_config_t *config);

/* Whether traffic to the first nports ports of a module is sent; it is at first. */
int bcm_stk_module_enable_set(int unit, bcm_module_t modid, int nports, int enable);
int bcm_stk_module_enable_get(int unit, bcm_module_t modid, int nports, int *enable);

/* The module whose CPU manages the stack, and the port and queue on the way to a module's CPU. */
int bcm_stk_master_set(int unit, bcm_module_t modid);
int bcm_stk_master_get(int unit, bcm_module_t *modid);
int bcm_stk_cpu_path_set(int unit, bcm_module_t modid, bcm_port_t port, bcm_cos_queue_t cosq);
int bcm_stk_cpu_path_get(int unit, bcm_module_t modid, bcm_port_t *port, bcm_cos_queue_t *cosq);

/* Stacking ports: of the two kinds, and each with its BCM_STK_PORT_* flags, 0 if it is none. */
int bcm_stk_pbmp_get(int unit, bcm_pbmp_t *internal_pbmp, bcm_pbmp_t *external_pbmp);
int bcm_stk_port_set(int unit, bcm_port_t port, uint32 flags);
int bcm_stk_port_get(int unit, bcm_port_t port, uint32 *flags);

/* Header, hops after which a packet is dropped, and flow control by class of a stacking port. */
int bcm_stk_port_header_set(int unit, bcm_port_t port, int header);
int bcm_stk_port_header_get(int unit, bcm_port_t port, int *header);
int bcm_stk_port_ttl_set(int unit, bcm_port_t port, int ttl);
int bcm_stk_port_ttl_get(int unit, bcm_port_t port, int *ttl);
int bcm_stk_port_flow_control_set(int unit, bcm_port_t port, bcm_cos_t cos, int enable);
int bcm_stk_port_flow_control_get(int unit, bcm_port_t port, bcm_cos_t cos, int *enable);

/* The queue that packets of a class and colour take at a stacking port. */
int bcm_stk_port_cosq_set(int unit, bcm_port_t port, bcm_cos_t cos, bcm_color_t color, bcm_cos_queue_t cosq);
int bcm_stk_port_cosq_get(int unit, bcm_port_t port, bcm_cos_t cos, bcm_color_t color, bcm_cos_queue_t *cosq);

/*
 * Ports that take over while a stacking port is down: one, which with revert gives the traffic back, or
 * several that share; count of 0 for none.
 */
int bcm_stk_port_failover_set(int unit, bcm_port_t port, bcm_port_t backup_port, int revert);
int bcm_stk_port_failover_get(int unit, bcm_port_t port, bcm_port_t *backup_port, int *revert);
int bcm_stk_port_failover_multi_set(int unit, bcm_port_t port, int count, bcm_port_t *backup_array);
int bcm_stk_port_failover_multi_get(int unit, bcm_port_t port, int max_count, bcm_port_t *backup_array,
                                    int *count);

/* The module and port at the other end of a stacking port; BCM_E_NOT_FOUND if it has not been heard of. */
int bcm_stk_port_neighbor_get(int unit, bcm_port_t port, bcm_module_t *modid, bcm_port_t *neighbor_port);

/*
 * Routes: the stacking port towards a module. set replaces, add adds a port of equal cost (BCM_E_EXISTS);
 * get, delete and hops_get give BCM_E_NOT_FOUND. A route by source holds for packets from one port, or -1
 * for all; hops are those to the module through a port.
 */
int bcm_stk_modport_set(int unit, bcm_module_t modid, bcm_port_t port);
int bcm_stk_modport_get(int unit, bcm_module_t modid, bcm_port_t *port);
int bcm_stk_modport_add(int unit, bcm_module_t modid, bcm_port_t port);
int bcm_stk_modport_delete(int unit, bcm_module_t modid, bcm_port_t port);
int bcm_stk_modport_clear(int unit, bcm_module_t modid);
int bcm_stk_modport_clear_all(int unit);
int bcm_stk_modport_multi_get(int unit, bcm_module_t modid, int max_count, bcm_port_t *port_array,
                              int *hops_array, int *count);
int bcm_stk_modport_src_set(int unit, bcm_port_t ingress_port, bcm_module_t modid, bcm_port_t port);
int bcm_stk_modport_src_get(int unit, bcm_port_t ingress_port, bcm_module_t modid, bcm_port_t *port);
int bcm_stk_modport_trunk_set(int unit, bcm_module_t modid, bcm_trunk_t trunk);
int bcm_stk_modport_trunk_get(int unit, bcm_module_t modid, bcm_trunk_t *trunk);
int bcm_stk_modport_hops_set(int unit, bcm_module_t modid, bcm_port_t port, int hops);
int bcm_stk_modport_hops_get(int unit, bcm_module_t modid, bcm_port_t port, int *hops);

/* Trunks of stacking ports, see bcm_trunk_chip_info_t for their ids. */
int bcm_stk_trunk_port_add(int unit, bcm_trunk_t trunk, bcm_port_t port);
int bcm_stk_trunk_port_delete(int unit, bcm_trunk_t trunk, bcm_port_t port);
int bcm_stk_trunk_port_delete_all(int unit, bcm_trunk_t trunk);
int bcm_stk_trunk_port_get(int unit, bcm_trunk_t trunk, int max_count, bcm_port_t *port_array, int *count);

/* Ports that may get unicast packets from ingress_port, and whether a pair of stacking ports may talk. */
int bcm_stk_ucbitmap_set(int unit, bcm_port_t ingress_port, bcm_pbmp_t pbmp);
int bcm_stk_ucbitmap_del(int unit, bcm_port_t ingress_port, bcm_pbmp_t pbmp);
int bcm_stk_ucbitmap_get(int unit, bcm_port_t ingress_port, bcm_pbmp_t *pbmp);
int bcm_stk_block_set(int unit, bcm_port_t ingress_port, bcm_port_t egress_port, int block);
int bcm_stk_block_get(int unit, bcm_port_t ingress_port, bcm_port_t egress_port, int *block);

/*
 * Renumbering of modules and ports on their way through a stacking port: mappings of a group, the group of a
 * port, and whether it maps. The callback is asked for what no mapping covers; null for none.
 */
int bcm_stk_modmap_set(int unit, int group, bcm_module_t modid, bcm_port_t port, bcm_module_t mapped_modid,
                       bcm_port_t mapped_port);
int bcm_stk_modmap_get(int unit, int group, bcm_module_t modid, bcm_port_t port, bcm_module_t *mapped_modid,
                       bcm_port_t *mapped_port);
int bcm_stk_modmap_clear(int unit, int group);
int bcm_stk_modmap_group_set(int unit, bcm_port_t port, int group);
int bcm_stk_modmap_group_get(int unit, bcm_port_t port, int *group);
int bcm_stk_modmap_enable_set(int unit, bcm_port_t port, int enable);
int bcm_stk_modmap_enable_get(int unit, bcm_port_t port, int *enable);
int bcm_stk_modmap_register(int unit, bcm_stk_modmap_cb_t callback, void *userdata);

/* System ports. get, delete: BCM_E_NOT_FOUND; many at once stop at the first error, after *done_count. */
int bcm_stk_sysport_gport_set(int unit, bcm_gport_t sysport, bcm_gport_t gport);
int bcm_stk_sysport_gport_get(int unit, bcm_gport_t sysport, bcm_gport_t *gport);
int bcm_stk_sysport_gport_delete(int unit, bcm_gport_t sysport);
int bcm_stk_gport_sysport_get(int unit, bcm_gport_t gport, bcm_gport_t *sysport);
void bcm_stk_system_gport_map_t_init(bcm_stk_system_gport_map_t *map);
int bcm_stk_system_gport_map_set(int unit, int count, bcm_stk_system_gport_map_t *map_array, int *done_count);
int bcm_stk_system_gport_map_get(int unit, int max_count, bcm_stk_system_gport_map_t *map_array, int *count);

/*
 * Domains: parts of a stack, each with queues of its own, that exchange packets over stacking ports: the
 * unit's, a module's, that at the other end of a port, and the port for multicast packets to a domain.
 */
int bcm_stk_domain_set(int unit, int domain);
int bcm_stk_domain_get(int unit, int *domain);
int bcm_stk_module_domain_set(int unit, bcm_module_t modid, int domain);
int bcm_stk_module_domain_get(int unit, bcm_module_t modid, int *domain);
int bcm_stk_port_peer_domain_set(int unit, bcm_port_t port, int domain);
int bcm_stk_port_peer_domain_get(int unit, bcm_port_t port, int *domain);
int bcm_stk_domain_multicast_set(int unit, int domain, bcm_port_t port);
int bcm_stk_domain_multicast_get(int unit, int domain, bcm_port_t *port);

/* Callbacks on changes, several at a time; the pair of callback and userdata counts. */
int bcm_stk_update_callback_register(int unit, bcm_stk_cb_f callback, void *userdata);
int bcm_stk_update_callback_unregister(int unit, bcm_stk_cb_f callback, void *userdata);

#ifdef __cplusplus
}
#endif

#endif
