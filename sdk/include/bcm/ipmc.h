/*
 * IP multicast routing: which group of ports gets the packets of a source and a multicast address, and on
 * which interfaces they have to arrive.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, not a multicast address). On an error nothing is changed. IPv4
 * addresses are in host, IPv6 addresses in network byte order; with BCM_IPMC_IP6 the members for IPv6 count
 * in place of those for IPv4.
 */
#ifndef BCM_IPMC_H
#define BCM_IPMC_H

#include <bcm/error.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_ipmc_addr_t and bcm_ipmc_range_t, and of traversals: the entries that are visited. */
typedef enum bcm_ipmc_flag_e {
    BCM_IPMC_IP6 = 0x00000001,                 /* the addresses are of IPv6 */
    BCM_IPMC_REPLACE = 0x00000002,             /* replaces an existing entry, else BCM_E_EXISTS */
    BCM_IPMC_HIT = 0x00000004,                 /* used since the last ageing sweep */
    BCM_IPMC_HIT_CLEAR = 0x00000008,           /* clear BCM_IPMC_HIT when reading */
    BCM_IPMC_COPY_TO_CPU = 0x00000010,
    BCM_IPMC_SOURCE_PORT_NOCHECK = 0x00000020, /* packets may arrive on any port */
    BCM_IPMC_RP_WITH_ID = 0x00000040           /* bcm_ipmc_rp_create: *rp_id is the id to use */
} bcm_ipmc_flag_t;

/* Counters of an entry. */
typedef enum bcm_ipmc_stat_e {
    bcmIpmcInPackets = 0,
    bcmIpmcInBytes = 1
} bcm_ipmc_stat_t;

/* A source and a multicast address, or all sources if s_ip_addr is zero, and where the packets go. */
typedef struct bcm_ipmc_addr_s {
    uint32 flags;                                /* BCM_IPMC_* */
    bcm_vrf_t vrf;
    bcm_vlan_t vid;                              /* VLAN on which packets arrive, 0 for any */
    bcm_ip_t s_ip_addr;
    bcm_ip_t s_ip_mask;
    bcm_ip_t mc_ip_addr;
    bcm_ip_t mc_ip_mask;
    bcm_ip6_t s_ip6_addr;
    bcm_ip6_t s_ip6_mask;
    bcm_ip6_t mc_ip6_addr;
    bcm_ip6_t mc_ip6_mask;
    bcm_if_t ing_intf;                           /* interface on which packets have to arrive */
    bcm_module_t mod_id;                         /* module and port on which they have to arrive */
    bcm_port_t port_tgid;
    bcm_multicast_t group;                       /* ports to which packets are routed */
    bcm_multicast_t group_l2;                    /* ports to which they are bridged */
    bcm_cos_t cos;
    int lookup_class;
    int rp_id;                                   /* rendezvous point of the group, 0 for none */
    int priority;                                /* higher wins among overlapping masked entries */
    bcm_fabric_distribution_t distribution_class;
} bcm_ipmc_addr_t;

/* Packets that a port received and routed by multicast entries. */
typedef struct bcm_ipmc_counters_s {
    uint64 in_packets;
    uint64 in_bytes;
    uint64 out_packets;
    uint64 out_bytes;
    uint64 no_entry_packets;                     /* dropped: no entry for them */
    uint64 wrong_interface_packets;              /* dropped: arrived on another interface */
    uint64 ttl_expired_packets;                  /* dropped: TTL below that of the port */
    uint64 mtu_exceeded_packets;                 /* dropped: too long for the interface */
} bcm_ipmc_counters_t;

/* A masked range of multicast addresses whose packets are routed both towards and from a rendezvous point. */
typedef struct bcm_ipmc_range_s {
    uint32 flags;                                /* BCM_IPMC_IP6 or none */
    int priority;                                /* higher wins among overlapping ranges */
    bcm_ip_t mc_ip_addr;
    bcm_ip_t mc_ip_addr_mask;
    bcm_ip6_t mc_ip6_addr;
    bcm_ip6_t mc_ip6_addr_mask;
} bcm_ipmc_range_t;

/*
 * Called once per entry. Records are valid during the call. A negative result ends the traversal, which then
 * returns it.
 */
typedef int (*bcm_ipmc_traverse_cb)(int unit, bcm_ipmc_addr_t *info, void *user_data);

/* The module. init removes all entries; enable 0 bridges multicasts instead. */
int bcm_ipmc_init(int unit);
int bcm_ipmc_detach(int unit);
int bcm_ipmc_enable(int unit, int enable);

/*
 * Entries, one per routing table, source, multicast address and VLAN. find and remove go by these,
 * get_by_index by the place in the table, which add and find say in *index. remove_all takes those of a
 * routing table, -1 for all.
 */
void bcm_ipmc_addr_t_init(bcm_ipmc_addr_t *ipmc);
int bcm_ipmc_add(int unit, bcm_ipmc_addr_t *ipmc, int *index);
int bcm_ipmc_find(int unit, bcm_ipmc_addr_t *ipmc, int *index);
int bcm_ipmc_remove(int unit, bcm_ipmc_addr_t *ipmc);
int bcm_ipmc_remove_all(int unit, bcm_vrf_t vrf);
int bcm_ipmc_get_by_index(int unit, int index, bcm_ipmc_addr_t *ipmc);

/* age removes what was not used since its last call, and tells each (the callback may be null). */
int bcm_ipmc_age(int unit, uint32 flags, bcm_ipmc_traverse_cb age_cb, void *user_data);
int bcm_ipmc_traverse(int unit, uint32 flags, bcm_ipmc_traverse_cb cb, void *user_data);

/*
 * How a port sends routed multicasts: source address, VLAN, whether untagged, and the TTL below which they
 * are dropped.
 */
int bcm_ipmc_egress_port_set(int unit, bcm_port_t port, bcm_mac_t mac, int untag, bcm_vlan_t vid,
                             int ttl_threshold);
int bcm_ipmc_egress_port_get(int unit, bcm_port_t port, bcm_mac_t mac, int *untag, bcm_vlan_t *vid,
                             int *ttl_threshold);

/* Interfaces of a port to which a group is copied. set replaces all; get writes at most if_max. */
int bcm_ipmc_egress_intf_add(int unit, int mc_index, bcm_port_t port, bcm_if_t intf);
int bcm_ipmc_egress_intf_delete(int unit, int mc_index, bcm_port_t port, bcm_if_t intf);
int bcm_ipmc_egress_intf_set(int unit, int mc_index, bcm_port_t port, int if_count, bcm_if_t *if_array);
int bcm_ipmc_egress_intf_get(int unit, int mc_index, bcm_port_t port, int if_max, bcm_if_t *if_array,
                             int *if_count);

/* Ports of a line of the table of routed groups. */
int bcm_ipmc_bitmap_set(int unit, int mc_index, bcm_pbmp_t pbmp);
int bcm_ipmc_bitmap_get(int unit, int mc_index, bcm_pbmp_t *pbmp);
int bcm_ipmc_bitmap_del(int unit, int mc_index, bcm_pbmp_t pbmp);

/* Counters of a port. */
void bcm_ipmc_counters_t_init(bcm_ipmc_counters_t *counters);
int bcm_ipmc_counters_get(int unit, bcm_port_t port, bcm_ipmc_counters_t *counters);
int bcm_ipmc_counters_clear(int unit, bcm_port_t port);

/* Ranges. get goes by address and mask; size_get says how many there can be, and are. */
void bcm_ipmc_range_t_init(bcm_ipmc_range_t *range);
int bcm_ipmc_range_add(int unit, bcm_ipmc_range_t *range);
int bcm_ipmc_range_delete(int unit, bcm_ipmc_range_t *range);
int bcm_ipmc_range_delete_all(int unit);
int bcm_ipmc_range_get(int unit, bcm_ipmc_range_t *range);
int bcm_ipmc_range_size_get(int unit, int *size, int *used);

/* Rendezvous points, and the interfaces on which packets towards one may arrive. */
int bcm_ipmc_rp_create(int unit, uint32 flags, int *rp_id);
int bcm_ipmc_rp_destroy(int unit, int rp_id);
int bcm_ipmc_rp_set(int unit, int rp_id, int intf_count, bcm_if_t *intf_array);
int bcm_ipmc_rp_add(int unit, int rp_id, bcm_if_t intf);
int bcm_ipmc_rp_delete(int unit, int rp_id, bcm_if_t intf);
int bcm_ipmc_rp_delete_all(int unit, int rp_id);
int bcm_ipmc_rp_get(int unit, int rp_id, int intf_max, bcm_if_t *intf_array, int *intf_count);

/* Counters of an entry. */
int bcm_ipmc_stat_attach(int unit, bcm_ipmc_addr_t *info, uint32 stat_counter_id);
int bcm_ipmc_stat_detach(int unit, bcm_ipmc_addr_t *info);
int bcm_ipmc_stat_counter_get(int unit, bcm_ipmc_addr_t *info, bcm_ipmc_stat_t stat, uint32 num_entries,
                              uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_ipmc_stat_counter_sync_get(int unit, bcm_ipmc_addr_t *info, bcm_ipmc_stat_t stat, uint32 num_entries,
                                   uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_ipmc_stat_counter_set(int unit, bcm_ipmc_addr_t *info, bcm_ipmc_stat_t stat, uint32 num_entries,
                              uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_ipmc_stat_id_get(int unit, bcm_ipmc_addr_t *info, bcm_ipmc_stat_t stat, uint32 *stat_counter_id);

#ifdef __cplusplus
}
#endif

#endif
