/*
 * Layer-3 routing: router interfaces, hosts, routes, egress objects and groups of them.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT (before bcm_l3_init) and BCM_E_PARAM. On an error nothing is changed.
 *
 * Interfaces, egress objects and groups of egress objects share one space of ids of type bcm_if_t: the lowest free one
 * from 1 on, unless one is given. In its place 0 is none: what leads there is unresolved. Routing tables are 0..1023.
 * BCM_E_NOT_FOUND: what is named is not there; BCM_E_EXISTS: it is there already; BCM_E_PORT, BCM_E_BADID: no such port,
 * module or trunk; BCM_E_UNAVAIL: flags or members that ask for what the chip has not.
 * IPv4 addresses are in host, IPv6 addresses in network byte order; with BCM_L3_IP6 the members for IPv6
 * count in place of those for IPv4. Arrays that a function fills are given with the number of elements
 * for which they have room, and how many there are comes back in the count.
 */
#ifndef BCM_L3_H
#define BCM_L3_H

#include <bcm/error.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* l3a_flags and flags of interfaces, hosts, routes, keys and egress objects. */
typedef enum bcm_l3_flag_e {
    BCM_L3_L2ONLY = 0x00000001,      /* bridged, not routed */
    BCM_L3_TGID = 0x00000002,        /* the destination is a trunk */
    BCM_L3_RPE = 0x00000004,         /* l3a_pri replaces the priority of packets */
    BCM_L3_IPMC = 0x00000008,        /* the destination is a multicast group */
    BCM_L3_MULTIPATH = 0x00000010,   /* the destination is a group of egress objects */
    BCM_L3_DEFLOCAL = 0x00000020,    /* route to a network that is attached directly */
    BCM_L3_IP6 = 0x00000040,         /* the address is one of IPv6 */
    BCM_L3_REPLACE = 0x00000080,     /* replaces an existing entry, else BCM_E_EXISTS */
    BCM_L3_WITH_ID = 0x00000100,     /* the id is given, not chosen */
    BCM_L3_HIT = 0x00000200,         /* used since the last ageing sweep */
    BCM_L3_HIT_CLEAR = 0x00000400,   /* clear BCM_L3_HIT when reading */
    BCM_L3_DST_DISCARD = 0x00000800, /* drop packets to the address */
    BCM_L3_SRC_DISCARD = 0x00001000, /* drop packets from the address */
    BCM_L3_COPY_TO_CPU = 0x00002000,
    BCM_L3_UNTAG = 0x00004000,       /* packets leave without a VLAN tag */
    BCM_L3_ROUTE_LABEL = 0x00008000, /* l3a_mpls_label is pushed */
    BCM_L3_KEEP_SRCMAC = 0x00010000, /* the rewrites that are left out */
    BCM_L3_KEEP_DSTMAC = 0x00020000,
    BCM_L3_KEEP_VLAN = 0x00040000,
    BCM_L3_KEEP_TTL = 0x00080000
} bcm_l3_flag_t;

/* l3a_flags2 and flags2. */
#define BCM_L3_FLAGS2_LPM_TABLE 0x00000001 /* a host that is put into the table of routes */

/* flags of bcm_l3_intf_qos_t: exactly one, or none to leave the priority alone. */
#define BCM_L3_INTF_QOS_COPY 0x00000001   /* as in the packet that arrived */
#define BCM_L3_INTF_QOS_SET 0x00000002    /* pri and cfi, or dscp */
#define BCM_L3_INTF_QOS_REMARK 0x00000004 /* by qos_map_id */

/* flags of bcm_l3_ingress_t. */
#define BCM_L3_INGRESS_WITH_ID 0x00000001 /* *intf_id is the id to use */
#define BCM_L3_INGRESS_REPLACE 0x00000002 /* replace the object of that id */
#define BCM_L3_INGRESS_DSCP_TRUST 0x00000004
#define BCM_L3_INGRESS_URPF_DEFAULT_ROUTE_CHECK 0x00000008

/* ecmp_group_flags of bcm_l3_egress_ecmp_t. */
#define BCM_L3_ECMP_PATH_NO_SORTING 0x00000001 /* members stay in the order in which they were added */

/* options of bcm_l3_ecmp_create. */
#define BCM_L3_ECMP_O_CREATE_WITH_ID 0x00000001
#define BCM_L3_ECMP_O_REPLACE 0x00000002

/* dynamic_mode of bcm_l3_egress_ecmp_t: how a path is chosen for a flow. */
typedef enum bcm_l3_ecmp_dynamic_mode_e {
    BCM_L3_ECMP_DYNAMIC_MODE_DISABLED = 0, /* by the hash of the packet alone */
    BCM_L3_ECMP_DYNAMIC_MODE_NORMAL = 1,   /* the least loaded one, again after every pause of the flow */
    BCM_L3_ECMP_DYNAMIC_MODE_ASSIGNED = 2, /* the least loaded one, once */
    BCM_L3_ECMP_DYNAMIC_MODE_OPTIMAL = 3,  /* the least loaded one for each packet */
    BCM_L3_ECMP_DYNAMIC_MODE_RESILIENT = 4 /* by the hash; removing a path moves its flows only */
} bcm_l3_ecmp_dynamic_mode_t;

/* status of bcm_l3_ecmp_member_t. */
typedef enum bcm_l3_ecmp_member_status_e {
    BCM_L3_ECMP_DYNAMIC_MEMBER_FORCE_DOWN = 0,
    BCM_L3_ECMP_DYNAMIC_MEMBER_FORCE_UP = 1,
    BCM_L3_ECMP_DYNAMIC_MEMBER_HW = 2 /* as the link is */
} bcm_l3_ecmp_member_status_t;

/* flags of bcm_l3_source_bind_t. */
#define BCM_L3_SOURCE_BIND_IP6 0x00000001
#define BCM_L3_SOURCE_BIND_REPLACE 0x00000002
#define BCM_L3_SOURCE_BIND_USE_MASK 0x00000004

/* Whether the source address of a packet must have a route, and one back through the same interface. */
typedef enum bcm_l3_intf_urpf_mode_e {
    bcmL3IntfUrpfDisable = 0,
    bcmL3IntfUrpfLoose = 1,
    bcmL3IntfUrpfStrict = 2
} bcm_l3_intf_urpf_mode_t;

/* What happens to a packet with an IPv4 option. */
typedef enum bcm_l3_ip4_options_action_e {
    bcmL3Ip4OptionsActionNone = 0,
    bcmL3Ip4OptionsActionCopyToCpu = 1,
    bcmL3Ip4OptionsActionRedirectToCpu = 2,
    bcmL3Ip4OptionsActionDrop = 3,
    bcmL3Ip4OptionsActionCount = 4
} bcm_l3_ip4_options_action_t;

/* Counters of hosts and egress objects: traffic to (out) and from (in) the object. */
typedef enum bcm_l3_stat_e {
    bcmL3StatOutPackets = 0,
    bcmL3StatOutBytes = 1,
    bcmL3StatDropPackets = 2,
    bcmL3StatDropBytes = 3,
    bcmL3StatInPackets = 4,
    bcmL3StatInBytes = 5,
    bcmL3StatCount = 6
} bcm_l3_stat_t;

/* Counters of a routing table. */
typedef enum bcm_l3_vrf_stat_e {
    bcmL3VrfStatIngressPackets = 0,
    bcmL3VrfStatIngressBytes = 1
} bcm_l3_vrf_stat_t;

/* Counters of a route. */
typedef enum bcm_l3_route_stat_e {
    bcmL3RouteInPackets = 0,
    bcmL3RouteInBytes = 1
} bcm_l3_route_stat_t;

/* Counters of an ingress interface. */
typedef enum bcm_l3_ingress_stat_e {
    bcmL3IngressInPackets = 0,
    bcmL3IngressInBytes = 1
} bcm_l3_ingress_stat_t;

/* How an interface marks the packets that it sends. */
typedef struct bcm_l3_intf_qos_s {
    uint32 flags;                    /* BCM_L3_INTF_QOS_* */
    int qos_map_id;
    uint8 pri;                       /* 0..7 */
    uint8 cfi;                       /* 0 or 1 */
    int dscp;                        /* 0..63 */
} bcm_l3_intf_qos_t;

/* A router interface: the addresses and the VLAN with which it sends. */
typedef struct bcm_l3_intf_s {
    uint32 l3a_flags;                /* BCM_L3_* */
    bcm_vrf_t l3a_vrf;
    bcm_if_t l3a_intf_id;
    bcm_mac_t l3a_mac_addr;
    bcm_vlan_t l3a_vid;
    bcm_vlan_t l3a_inner_vlan;
    int l3a_tunnel_idx;
    int l3a_ttl;                     /* packets with less are dropped */
    int l3a_mtu;                     /* bytes, 0 for no limit */
    int l3a_mtu_forwarding;
    bcm_if_group_t l3a_group;
    bcm_l3_intf_qos_t vlan_qos;
    bcm_l3_intf_qos_t inner_vlan_qos;
    bcm_l3_intf_qos_t dscp_qos;
    uint32 l3a_intf_class;
    int l3a_ip4_options_profile_id;
    int l3a_nat_realm_id;
    bcm_tpid_t outer_tpid;
    uint32 l3a_intf_flags;
    int native_routing_vlan_tags;    /* tags that stay on a packet, 0..2 */
    bcm_gport_t l3a_source_vp;
} bcm_l3_intf_t;

/* Where routed packets leave, and how they are rewritten. */
typedef struct bcm_l3_egress_s {
    uint32 flags;                    /* BCM_L3_* */
    uint32 flags2;                   /* BCM_L3_FLAGS2_* */
    bcm_if_t intf;                   /* interface whose addresses are used */
    bcm_mac_t mac_addr;              /* of the next hop */
    bcm_vlan_t vlan;
    bcm_module_t module;
    bcm_port_t port;
    bcm_trunk_t trunk;
    uint32 mpls_flags;
    bcm_mpls_label_t mpls_label;
    bcm_mpls_egress_action_t mpls_action;
    int mpls_qos_map_id;
    int mpls_ttl;
    uint8 mpls_pkt_pri;
    uint8 mpls_pkt_cfi;
    uint8 mpls_exp;
    int qos_map_id;
    int encap_id;
    bcm_failover_t failover_id;
    bcm_if_t failover_if_id;
    bcm_multicast_t failover_mc_group;
    int dynamic_scaling_factor;
    int dynamic_load_weight;
    uint32 intf_class;
    uint32 multicast_flags;
    uint32 oam_global_context_id;
    bcm_vntag_t vntag;
    bcm_vntag_action_t vntag_action;
    bcm_etag_t etag;
    bcm_etag_action_t etag_action;
} bcm_l3_egress_t;

/* How packets that arrive on an interface are treated. */
typedef struct bcm_l3_ingress_s {
    uint32 flags;                    /* BCM_L3_INGRESS_* */
    bcm_vrf_t vrf;
    bcm_l3_intf_urpf_mode_t urpf_mode;
    uint32 intf_class;
    int ipmc_intf_id;
    int qos_map_id;
    int ip4_options_profile_id;
    int nat_realm_id;
} bcm_l3_ingress_t;

/* A single address and where it is. */
typedef struct bcm_l3_host_s {
    uint32 l3a_flags;                /* BCM_L3_* */
    uint32 l3a_flags2;               /* BCM_L3_FLAGS2_* */
    bcm_vrf_t l3a_vrf;
    bcm_ip_t l3a_ip_addr;
    bcm_ip6_t l3a_ip6_addr;
    int l3a_pri;
    bcm_if_t l3a_intf;               /* egress object, or interface */
    bcm_mac_t l3a_nexthop_mac;
    bcm_module_t l3a_modid;
    bcm_port_t l3a_port_tgid;        /* port, or trunk with BCM_L3_TGID */
    bcm_port_t l3a_stack_port;
    int l3a_ipmc_ptr;
    int l3a_lookup_class;
    int encap_id;
    bcm_if_t native_intf;
} bcm_l3_host_t;

/* The key of an address or multicast entry. */
typedef struct bcm_l3_key_s {
    uint32 l3k_flags;                /* BCM_L3_* */
    bcm_ip_t l3k_ip_addr;
    bcm_ip6_t l3k_ip6_addr;
    bcm_ip_t l3k_sip_addr;
    bcm_ip6_t l3k_sip6_addr;
    bcm_vlan_t l3k_vid;
    bcm_vrf_t l3k_vrf;
} bcm_l3_key_t;

/* A network and the way to it. */
typedef struct bcm_l3_route_s {
    uint32 l3a_flags;                /* BCM_L3_* */
    uint32 l3a_flags2;               /* BCM_L3_FLAGS2_* */
    uint32 l3a_ipmc_flags;
    bcm_vrf_t l3a_vrf;
    bcm_ip_t l3a_subnet;
    bcm_ip6_t l3a_ip6_net;
    bcm_ip_t l3a_ip_mask;
    bcm_ip6_t l3a_ip6_mask;
    bcm_if_t l3a_intf;               /* egress object or group, or interface */
    bcm_ip_t l3a_nexthop_ip;
    bcm_mac_t l3a_nexthop_mac;
    bcm_module_t l3a_modid;
    bcm_port_t l3a_port_tgid;        /* port, or trunk with BCM_L3_TGID */
    bcm_port_t l3a_stack_port;
    bcm_vlan_t l3a_vid;
    int l3a_pri;
    uint32 l3a_tunnel_option;
    bcm_mpls_label_t l3a_mpls_label;
    int l3a_lookup_class;
    bcm_if_t l3a_expected_intf;
    int l3a_rp;                      /* rendezvous point */
    bcm_multicast_t l3a_mc_group;
    bcm_gport_t l3a_expected_src_gport;
} bcm_l3_route_t;

/* How much the tables hold (max) and how much of that is taken (used). */
typedef struct bcm_l3_info_s {
    int l3info_max_vrf;
    int l3info_used_vrf;
    int l3info_max_intf;
    int l3info_max_intf_group;
    int l3info_max_host;
    int l3info_max_route;
    int l3info_max_ecmp_groups;
    int l3info_max_ecmp;             /* paths of a group */
    int l3info_used_intf;
    int l3info_used_host;
    int l3info_used_route;
    int l3info_max_lpm_block;
    int l3info_used_lpm_block;
    int l3info_max_l3;
    int l3info_max_defip;
    int l3info_used_l3;
    int l3info_used_defip;
    int l3info_max_nexthop;
    int l3info_used_nexthop;
    int l3info_max_tunnel_init;
    int l3info_used_tunnel_init;
    int l3info_max_tunnel_term;
    int l3info_used_tunnel_term;
    int l3info_used_host_ip4;
    int l3info_used_host_ip6;
} bcm_l3_info_t;

/* A group of egress objects over which traffic is spread. */
typedef struct bcm_l3_egress_ecmp_s {
    uint32 flags;                    /* BCM_L3_* */
    bcm_if_t ecmp_intf;              /* id of the group */
    int max_paths;
    uint32 ecmp_group_flags;         /* BCM_L3_ECMP_PATH_NO_SORTING */
    uint32 dynamic_mode;             /* BCM_L3_ECMP_DYNAMIC_MODE_* */
    uint32 dynamic_size;             /* flows that are told apart */
    uint32 dynamic_age;              /* microseconds after which a flow may change its path */
    uint32 dynamic_load_exponent;    /* weight of older load measurements, as a power of two */
    uint32 dynamic_expected_load_exponent;
} bcm_l3_egress_ecmp_t;

/* One path of a group. */
typedef struct bcm_l3_ecmp_member_s {
    uint32 flags;
    bcm_if_t egress_if;
    bcm_failover_t failover_id;
    bcm_if_t failover_egress_if;
    int status;                      /* BCM_L3_ECMP_DYNAMIC_MEMBER_* */
} bcm_l3_ecmp_member_t;

/* One hash value of a resilient group and the path that it takes. */
typedef struct bcm_l3_egress_ecmp_resilient_entry_s {
    int hash_key;
    bcm_if_t ecmp;
    bcm_if_t intf;
} bcm_l3_egress_ecmp_resilient_entry_t;

/* The port and MAC address from which a source address may come. */
typedef struct bcm_l3_source_bind_s {
    uint32 flags;                    /* BCM_L3_SOURCE_BIND_* */
    bcm_gport_t port;
    bcm_ip_t ip;
    bcm_ip6_t ip6;
    bcm_mac_t mac;
    int rate_id;
    bcm_ip_t ip_mask;
    bcm_ip6_t ip6_mask;
} bcm_l3_source_bind_t;

/*
 * Called once per entry. Records and arrays are copies that are valid during the call. A negative result
 * ends the traversal, which then returns it.
 */
typedef int (*bcm_l3_host_traverse_cb)(int unit, int index, bcm_l3_host_t *info, void *user_data);
typedef int (*bcm_l3_route_traverse_cb)(int unit, int index, bcm_l3_route_t *info, void *user_data);
typedef int (*bcm_l3_egress_traverse_cb)(int unit, bcm_if_t intf, bcm_l3_egress_t *info, void *user_data);
typedef int (*bcm_l3_egress_multipath_traverse_cb)(int unit, bcm_if_t mpintf, int intf_count,
                                                   bcm_if_t *intf_array, void *user_data);
typedef int (*bcm_l3_egress_ecmp_traverse_cb)(int unit, bcm_l3_egress_ecmp_t *ecmp, int intf_count,
                                              bcm_if_t *intf_array, void *user_data);
typedef int (*bcm_l3_egress_ecmp_resilient_traverse_cb)(int unit, bcm_l3_egress_ecmp_resilient_entry_t *entry,
                                                        void *user_data);
typedef int (*bcm_l3_ecmp_traverse_cb)(int unit, bcm_l3_egress_ecmp_t *ecmp_info, int ecmp_member_count,
                                       bcm_l3_ecmp_member_t *ecmp_member_array, void *user_data);
typedef int (*bcm_l3_ingress_traverse_cb)(int unit, bcm_if_t intf_id, bcm_l3_ingress_t *info,
                                          void *user_data);
typedef int (*bcm_l3_source_bind_traverse_cb)(int unit, bcm_l3_source_bind_t *info, void *user_data);

/* The module. init empties all tables; enable 0 bridges all packets; info says how full the tables are. */
int bcm_l3_init(int unit);
int bcm_l3_cleanup(int unit);
int bcm_l3_enable_set(int unit, int enable);
int bcm_l3_info(int unit, bcm_l3_info_t *l3info);

/*
 * Interfaces. create writes the id to l3a_intf_id, unless BCM_L3_WITH_ID gives one; get and delete go by
 * l3a_intf_id, find by l3a_mac_addr and l3a_vid, find_vlan by l3a_vid alone. There is one per address and VLAN
 * (BCM_E_EXISTS); the VLAN has to exist (BCM_E_NOT_FOUND). One that egress objects, hosts or routes use stays: BCM_E_BUSY;
 * delete_all deletes all or none. BCM_L3_REPLACE replaces the one of l3a_intf_id. create gives BCM_E_FULL.
 */
void bcm_l3_intf_t_init(bcm_l3_intf_t *intf);
int bcm_l3_intf_create(int unit, bcm_l3_intf_t *intf);
int bcm_l3_intf_delete(int unit, bcm_l3_intf_t *intf);
int bcm_l3_intf_delete_all(int unit);
int bcm_l3_intf_find(int unit, bcm_l3_intf_t *intf);
int bcm_l3_intf_find_vlan(int unit, bcm_l3_intf_t *intf);
int bcm_l3_intf_get(int unit, bcm_l3_intf_t *intf);

void bcm_l3_info_t_init(bcm_l3_info_t *info);

/*
 * Counters of a routing table. They count while enabled; the sync getters read the chip, the others what
 * was collected last; the 32-bit getters cut off. The multi functions take nstat counters with their values.
 */
int bcm_l3_vrf_stat_enable_set(int unit, bcm_vrf_t vrf, int enable);
int bcm_l3_vrf_stat_get(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint64 *val);
int bcm_l3_vrf_stat_sync_get(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint64 *val);
int bcm_l3_vrf_stat_get32(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint32 *val);
int bcm_l3_vrf_stat_sync_get32(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint32 *val);
int bcm_l3_vrf_stat_id_get(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint32 *stat_counter_id);
int bcm_l3_vrf_stat_set(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint64 val);
int bcm_l3_vrf_stat_set32(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint32 val);
int bcm_l3_vrf_stat_multi_get(int unit, bcm_vrf_t vrf, int nstat, bcm_l3_vrf_stat_t *stat_arr,
                              uint64 *value_arr);
int bcm_l3_vrf_stat_multi_get32(int unit, bcm_vrf_t vrf, int nstat, bcm_l3_vrf_stat_t *stat_arr,
                                uint32 *value_arr);
int bcm_l3_vrf_stat_multi_set(int unit, bcm_vrf_t vrf, int nstat, bcm_l3_vrf_stat_t *stat_arr,
                              uint64 *value_arr);
int bcm_l3_vrf_stat_multi_set32(int unit, bcm_vrf_t vrf, int nstat, bcm_l3_vrf_stat_t *stat_arr,
                                uint32 *value_arr);

/*
 * Virtual routers (VRRP) of a VLAN: vrid 1..255 gives the MAC address for which packets are routed too.
 * get writes the ids to vrid_array. add gives BCM_E_FULL.
 */
int bcm_l3_vrrp_add(int unit, bcm_vlan_t vlan, uint32 vrid);
int bcm_l3_vrrp_delete(int unit, bcm_vlan_t vlan, uint32 vrid);
int bcm_l3_vrrp_delete_all(int unit, bcm_vlan_t vlan);
int bcm_l3_vrrp_get(int unit, bcm_vlan_t vlan, int alloc_size, int *vrid_array, int *count);

/*
 * Counters that are made elsewhere and attached: num_entries of them by their indices, with a value each.
 * id_get, here and below, says which counter is attached.
 */
int bcm_l3_vrf_stat_attach(int unit, bcm_vrf_t vrf, uint32 stat_counter_id);
int bcm_l3_vrf_stat_detach(int unit, bcm_vrf_t vrf);
int bcm_l3_vrf_stat_counter_get(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint32 num_entries,
                                uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_l3_vrf_stat_counter_sync_get(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint32 num_entries,
                                     uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_l3_vrf_stat_counter_set(int unit, bcm_vrf_t vrf, bcm_l3_vrf_stat_t stat, uint32 num_entries,
                                uint32 *counter_indexes, bcm_stat_value_t *counter_values);

/* Virtual routers with flags (BCM_L3_IP6): their addresses for IPv6 differ from those for IPv4. */
int bcm_l3_vrrp_config_add(int unit, uint32 flags, bcm_vlan_t vlan, uint32 vrid);
int bcm_l3_vrrp_config_delete(int unit, uint32 flags, bcm_vlan_t vlan, uint32 vrid);
int bcm_l3_vrrp_config_delete_all(int unit, uint32 flags, bcm_vlan_t vlan);
int bcm_l3_vrrp_config_get(int unit, uint32 flags, bcm_vlan_t vlan, int alloc_size, int *vrid_array,
                           int *count);

/*
 * Hosts, one per routing table and address. find fills the record whose l3a_vrf and address it is given;
 * delete_by_network takes those within a network, delete_by_interface those with l3a_intf. An l3a_intf that is an
 * interface goes with l3a_nexthop_mac, and l3a_modid and l3a_port_tgid. add gives BCM_E_FULL.
 */
void bcm_l3_host_t_init(bcm_l3_host_t *ip);
int bcm_l3_host_find(int unit, bcm_l3_host_t *info);
int bcm_l3_host_add(int unit, bcm_l3_host_t *info);
int bcm_l3_host_delete(int unit, bcm_l3_host_t *ip_addr);
int bcm_l3_host_delete_by_network(int unit, bcm_l3_route_t *ip_addr);
int bcm_l3_host_delete_by_interface(int unit, bcm_l3_host_t *info);
int bcm_l3_host_delete_all(int unit, bcm_l3_host_t *info);

/* Other entries in the hash bucket of ipkey, at most cf_max of them. */
int bcm_l3_host_conflict_get(int unit, bcm_l3_key_t *ipkey, bcm_l3_key_t *cf_array, int cf_max,
                             int *cf_count);

/*
 * age removes hosts that were not used since the last sweep, each with a callback, which may be null; traverse visits
 * those numbered start to end in the table (BCM_E_PARAM if that is less). flags: BCM_L3_IP6 for those of IPv6.
 */
int bcm_l3_host_age(int unit, uint32 flags, bcm_l3_host_traverse_cb age_cb, void *user_data);
int bcm_l3_host_traverse(int unit, uint32 flags, uint32 start, uint32 end, bcm_l3_host_traverse_cb cb,
                         void *user_data);

/* An entry that is not valid stays in the table, but is not found by packets. */
int bcm_l3_host_invalidate_entry(int unit, bcm_vrf_t vrf, bcm_ip_t info);
int bcm_l3_host_validate_entry(int unit, bcm_vrf_t vrf, bcm_ip_t info);

/* Counters of a host. */
int bcm_l3_host_stat_get(int unit, bcm_l3_host_t *host, bcm_l3_stat_t stat, uint64 *val);
int bcm_l3_host_stat_get32(int unit, bcm_l3_host_t *host, bcm_l3_stat_t stat, uint32 *val);
int bcm_l3_host_stat_set(int unit, bcm_l3_host_t *host, bcm_l3_stat_t stat, uint64 val);
int bcm_l3_host_stat_set32(int unit, bcm_l3_host_t *host, bcm_l3_stat_t stat, uint32 val);
int bcm_l3_host_stat_enable_set(int unit, bcm_l3_host_t *host, int enable);
int bcm_l3_host_stat_attach(int unit, bcm_l3_host_t *info, uint32 stat_counter_id);
int bcm_l3_host_stat_detach(int unit, bcm_l3_host_t *info);
int bcm_l3_host_stat_counter_get(int unit, bcm_l3_host_t *info, bcm_l3_stat_t stat, uint32 num_entries,
                                 uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_l3_host_stat_counter_sync_get(int unit, bcm_l3_host_t *info, bcm_l3_stat_t stat, uint32 num_entries,
                                      uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_l3_host_stat_counter_set(int unit, bcm_l3_host_t *info, bcm_l3_stat_t stat, uint32 num_entries,
                                 uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_l3_host_stat_id_get(int unit, bcm_l3_host_t *info, bcm_l3_stat_t stat, uint32 *stat_counter_id);

/*
 * Routes, one per routing table and network, or several with BCM_L3_MULTIPATH. The longest prefix wins.
 * multipath_get gives the paths of one network. add gives BCM_E_FULL.
 */
void bcm_l3_route_t_init(bcm_l3_route_t *route);
int bcm_l3_route_add(int unit, bcm_l3_route_t *info);
int bcm_l3_route_delete(int unit, bcm_l3_route_t *info);
int bcm_l3_route_delete_by_interface(int unit, bcm_l3_route_t *info);
int bcm_l3_route_delete_all(int unit, bcm_l3_route_t *info);
int bcm_l3_route_get(int unit, bcm_l3_route_t *info);
int bcm_l3_route_multipath_get(int unit, bcm_l3_route_t *the_route, bcm_l3_route_t *path_array, int max_path,
                               int *path_count);

/* As for hosts. */
int bcm_l3_route_age(int unit, uint32 flags, bcm_l3_route_traverse_cb age_out, void *user_data);
int bcm_l3_route_traverse(int unit, uint32 flags, uint32 start, uint32 end, bcm_l3_route_traverse_cb trav_fn,
                          void *user_data);

/* The most paths to a network, 1..1024. */
int bcm_l3_route_max_ecmp_set(int unit, int max);
int bcm_l3_route_max_ecmp_get(int unit, int *max);

/* Counters of a route. */
int bcm_l3_route_stat_get(int unit, bcm_l3_route_t *route, bcm_l3_route_stat_t stat, uint64 *val);
int bcm_l3_route_stat_get32(int unit, bcm_l3_route_t *route, bcm_l3_route_stat_t stat, uint32 *val);
int bcm_l3_route_stat_set(int unit, bcm_l3_route_t *route, bcm_l3_route_stat_t stat, uint64 val);
int bcm_l3_route_stat_set32(int unit, bcm_l3_route_t *route, bcm_l3_route_stat_t stat, uint32 val);
int bcm_l3_route_stat_enable_set(int unit, bcm_l3_route_t *route, int enable);
int bcm_l3_route_stat_attach(int unit, bcm_l3_route_t *info, uint32 stat_counter_id);
int bcm_l3_route_stat_detach(int unit, bcm_l3_route_t *info);
int bcm_l3_route_stat_counter_get(int unit, bcm_l3_route_t *info, bcm_l3_route_stat_t stat,
                                  uint32 num_entries, uint32 *counter_indexes,
                                  bcm_stat_value_t *counter_values);
int bcm_l3_route_stat_counter_sync_get(int unit, bcm_l3_route_t *info, bcm_l3_route_stat_t stat,
                                       uint32 num_entries, uint32 *counter_indexes,
                                       bcm_stat_value_t *counter_values);
int bcm_l3_route_stat_counter_set(int unit, bcm_l3_route_t *info, bcm_l3_route_stat_t stat,
                                  uint32 num_entries, uint32 *counter_indexes,
                                  bcm_stat_value_t *counter_values);
int bcm_l3_route_stat_multi_get(int unit, bcm_l3_route_t *route, int nstat, bcm_l3_route_stat_t *stat_arr,
                                uint64 *value_arr);
int bcm_l3_route_stat_multi_get32(int unit, bcm_l3_route_t *route, int nstat, bcm_l3_route_stat_t *stat_arr,
                                  uint32 *value_arr);
int bcm_l3_route_stat_multi_set(int unit, bcm_l3_route_t *route, int nstat, bcm_l3_route_stat_t *stat_arr,
                                uint64 *value_arr);
int bcm_l3_route_stat_multi_set32(int unit, bcm_l3_route_t *route, int nstat, bcm_l3_route_stat_t *stat_arr,
                                  uint32 *value_arr);
int bcm_l3_route_stat_id_get(int unit, bcm_l3_route_t *info, bcm_l3_route_stat_t stat,
                             uint32 *stat_counter_id);

/* The route that a packet to host takes; subnet_route_find looks at directly attached networks only. */
int bcm_l3_route_find(int unit, bcm_l3_host_t *host, bcm_l3_route_t *route);
int bcm_l3_subnet_route_find(int unit, bcm_l3_host_t *host, bcm_l3_route_t *route);

/*
 * Egress objects. create returns the id in *if_id, or takes the one given with BCM_L3_WITH_ID; destroy
 * gives BCM_E_BUSY while a host, route, group or installed entry of the field processor uses the object; find
 * gives the one that is equal in all members. create gives BCM_E_FULL.
 */
void bcm_l3_egress_t_init(bcm_l3_egress_t *egr);
int bcm_l3_egress_create(int unit, uint32 flags, bcm_l3_egress_t *egr, bcm_if_t *if_id);
int bcm_l3_egress_destroy(int unit, bcm_if_t intf);
int bcm_l3_egress_get(int unit, bcm_if_t intf, bcm_l3_egress_t *egr);
int bcm_l3_egress_find(int unit, bcm_l3_egress_t *egr, bcm_if_t *intf);
int bcm_l3_egress_traverse(int unit, bcm_l3_egress_traverse_cb trav_fn, void *user_data);

/*
 * Groups of egress objects, known by their id alone. max_paths may later not be exceeded (BCM_E_FULL). An object that is
 * in a group several times gets as many shares of the flows. A group that hosts, routes or installed entries of the
 * field processor use stays: BCM_E_BUSY. find gives the group with these members, in whatever order.
 */
int bcm_l3_egress_multipath_create(int unit, uint32 flags, int intf_count, bcm_if_t *intf_array,
                                   bcm_if_t *mpintf);
int bcm_l3_egress_multipath_max_create(int unit, uint32 flags, int max_paths, int intf_count,
                                       bcm_if_t *intf_array, bcm_if_t *mpintf);
int bcm_l3_egress_multipath_destroy(int unit, bcm_if_t mpintf);
int bcm_l3_egress_multipath_get(int unit, bcm_if_t mpintf, int intf_size, bcm_if_t *intf_array,
                                int *intf_count);
int bcm_l3_egress_multipath_add(int unit, bcm_if_t mpintf, bcm_if_t intf);
int bcm_l3_egress_multipath_delete(int unit, bcm_if_t mpintf, bcm_if_t intf);
int bcm_l3_egress_multipath_find(int unit, int intf_count, bcm_if_t *intf_array, bcm_if_t *mpintf);
int bcm_l3_egress_multipath_traverse(int unit, bcm_l3_egress_multipath_traverse_cb trav_fn, void *user_data);

/*
 * Groups of egress objects, described by a record; all but create and find go by its ecmp_intf. create and add give
 * BCM_E_FULL, destroy gives BCM_E_BUSY, as above.
 */
void bcm_l3_egress_ecmp_t_init(bcm_l3_egress_ecmp_t *ecmp);
int bcm_l3_egress_ecmp_create(int unit, bcm_l3_egress_ecmp_t *ecmp, int intf_count, bcm_if_t *intf_array);
int bcm_l3_egress_ecmp_destroy(int unit, bcm_l3_egress_ecmp_t *ecmp);
int bcm_l3_egress_ecmp_get(int unit, bcm_l3_egress_ecmp_t *ecmp, int intf_size, bcm_if_t *intf_array,
                           int *intf_count);
int bcm_l3_egress_ecmp_add(int unit, bcm_l3_egress_ecmp_t *ecmp, bcm_if_t intf);
int bcm_l3_egress_ecmp_delete(int unit, bcm_l3_egress_ecmp_t *ecmp, bcm_if_t intf);
int bcm_l3_egress_ecmp_find(int unit, int intf_count, bcm_if_t *intf_array, bcm_l3_egress_ecmp_t *ecmp);
int bcm_l3_egress_ecmp_traverse(int unit, bcm_l3_egress_ecmp_traverse_cb trav_fn, void *user_data);

/* Ethertypes whose packets may be spread by load rather than by their hash. */
int bcm_l3_egress_ecmp_ethertype_set(int unit, uint32 flags, int ethertype_count, int *ethertype_array);
int bcm_l3_egress_ecmp_ethertype_get(int unit, uint32 *flags, int ethertype_max, int *ethertype_array,
                                     int *ethertype_count);

/* Whether an egress object takes part in its groups, BCM_L3_ECMP_DYNAMIC_MEMBER_*; up at first. */
int bcm_l3_egress_ecmp_member_status_set(int unit, bcm_if_t intf, int status);
int bcm_l3_egress_ecmp_member_status_get(int unit, bcm_if_t intf, int *status);

/* Hash values of resilient groups: those that match, and giving the first *num_entries of them a new path. */
int bcm_l3_egress_ecmp_resilient_traverse(int unit, uint32 flags,
                                          bcm_l3_egress_ecmp_resilient_entry_t *match_entry,
                                          bcm_l3_egress_ecmp_resilient_traverse_cb trav_fn, void *user_data);
int bcm_l3_egress_ecmp_resilient_replace(int unit, uint32 flags,
                                         bcm_l3_egress_ecmp_resilient_entry_t *match_entry, bcm_if_t new_intf,
                                         int *num_entries);

/* Counters of an egress object. */
int bcm_l3_egress_stat_get(int unit, bcm_if_t intf_id, bcm_l3_stat_t stat, uint64 *val);
int bcm_l3_egress_stat_get32(int unit, bcm_if_t intf_id, bcm_l3_stat_t stat, uint32 *val);
int bcm_l3_egress_stat_set(int unit, bcm_if_t intf_id, bcm_l3_stat_t stat, uint64 val);
int bcm_l3_egress_stat_set32(int unit, bcm_if_t intf_id, bcm_l3_stat_t stat, uint32 val);
int bcm_l3_egress_stat_enable_set(int unit, bcm_if_t intf_id, int enable);
int bcm_l3_egress_stat_attach(int unit, bcm_if_t intf_id, uint32 stat_counter_id);
int bcm_l3_egress_stat_detach(int unit, bcm_if_t intf_id);
int bcm_l3_egress_stat_counter_get(int unit, bcm_if_t intf_id, bcm_l3_stat_t stat, uint32 num_entries,
                                   uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_l3_egress_stat_counter_sync_get(int unit, bcm_if_t intf_id, bcm_l3_stat_t stat, uint32 num_entries,
                                        uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_l3_egress_stat_id_get(int unit, bcm_if_t intf_id, bcm_l3_stat_t stat, uint32 *stat_counter_id);
int bcm_l3_egress_stat_counter_set(int unit, bcm_if_t intf_id, bcm_l3_stat_t stat, uint32 num_entries,
                                   uint32 *counter_indexes, bcm_stat_value_t *counter_values);

/*
 * The same groups, by records of their members. options: BCM_L3_ECMP_O_*; create writes the id to
 * ecmp_info->ecmp_intf. create and member_add give BCM_E_FULL, destroy gives BCM_E_BUSY.
 */
void bcm_l3_ecmp_member_t_init(bcm_l3_ecmp_member_t *ecmp_member);
int bcm_l3_ecmp_create(int unit, uint32 options, bcm_l3_egress_ecmp_t *ecmp_info, int ecmp_member_count,
                       bcm_l3_ecmp_member_t *ecmp_member_array);
int bcm_l3_ecmp_destroy(int unit, bcm_if_t ecmp_group_id);
int bcm_l3_ecmp_get(int unit, bcm_l3_egress_ecmp_t *ecmp_info, int ecmp_member_size,
                    bcm_l3_ecmp_member_t *ecmp_member_array, int *ecmp_member_count);
int bcm_l3_ecmp_member_add(int unit, bcm_if_t ecmp_group_id, bcm_l3_ecmp_member_t *ecmp_member);
int bcm_l3_ecmp_member_delete(int unit, bcm_if_t ecmp_group_id, bcm_l3_ecmp_member_t *ecmp_member);
int bcm_l3_ecmp_member_delete_all(int unit, bcm_if_t ecmp_group_id);
int bcm_l3_ecmp_find(int unit, int ecmp_member_count, bcm_l3_ecmp_member_t *ecmp_member_array,
                     bcm_if_t *ecmp_group_id);
int bcm_l3_ecmp_traverse(int unit, bcm_l3_ecmp_traverse_cb trav_fn, void *user_data);

/* The monitor that measures how evenly a group is loaded. */
int bcm_l3_ecmp_agm_attach(int unit, bcm_if_t ecmp_group_id, bcm_switch_agm_id_t agm_id);
int bcm_l3_ecmp_agm_detach(int unit, bcm_if_t ecmp_group_id, bcm_switch_agm_id_t agm_id);
int bcm_l3_ecmp_agm_attach_get(int unit, bcm_if_t ecmp_group_id, bcm_switch_agm_id_t *agm_id);

/* Ingress interfaces, ids as for egress objects; the flags are those of the record. */
void bcm_l3_ingress_t_init(bcm_l3_ingress_t *ing_intf);
int bcm_l3_ingress_create(int unit, bcm_l3_ingress_t *ing_intf, bcm_if_t *intf_id);
int bcm_l3_ingress_destroy(int unit, bcm_if_t intf_id);
int bcm_l3_ingress_get(int unit, bcm_if_t intf, bcm_l3_ingress_t *ing_intf);
int bcm_l3_ingress_find(int unit, bcm_l3_ingress_t *ing_intf, bcm_if_t *intf_id);
int bcm_l3_ingress_traverse(int unit, bcm_l3_ingress_traverse_cb trav_fn, void *user_data);

/* Counters of an ingress interface. */
int bcm_l3_ingress_stat_attach(int unit, bcm_if_t intf_id, uint32 stat_counter_id);
int bcm_l3_ingress_stat_detach(int unit, bcm_if_t intf_id);
int bcm_l3_ingress_stat_counter_get(int unit, bcm_if_t intf_id, bcm_l3_ingress_stat_t stat,
                                    uint32 num_entries, uint32 *counter_indexes,
                                    bcm_stat_value_t *counter_values);
int bcm_l3_ingress_stat_counter_sync_get(int unit, bcm_if_t intf_id, bcm_l3_ingress_stat_t stat,
                                         uint32 num_entries, uint32 *counter_indexes,
                                         bcm_stat_value_t *counter_values);
int bcm_l3_ingress_stat_id_get(int unit, bcm_if_t intf_id, bcm_l3_ingress_stat_t stat,
                               uint32 *stat_counter_id);
int bcm_l3_ingress_stat_counter_set(int unit, bcm_if_t intf_id, bcm_l3_ingress_stat_t stat,
                                    uint32 num_entries, uint32 *counter_indexes,
                                    bcm_stat_value_t *counter_values);

/* The upper 64 bits of IPv6 addresses that are kept in short form in the tables, map_size of them. add: BCM_E_FULL. */
int bcm_l3_ip6_prefix_map_get(int unit, int map_size, bcm_ip6_t *ip6_array, int *ip6_count);
int bcm_l3_ip6_prefix_map_add(int unit, bcm_ip6_t ip6_addr);
int bcm_l3_ip6_prefix_map_delete(int unit, bcm_ip6_t ip6_addr);
int bcm_l3_ip6_prefix_map_delete_all(int unit);

/*
 * Source binding: where it is enabled, a packet is dropped unless an entry allows its source. delete_all
 * takes the entries of a port, -1 for all.
 */
void bcm_l3_source_bind_t_init(bcm_l3_source_bind_t *info);
int bcm_l3_source_bind_enable_set(int unit, bcm_port_t port, int enable);
int bcm_l3_source_bind_enable_get(int unit, bcm_port_t port, int *enable);
int bcm_l3_source_bind_add(int unit, bcm_l3_source_bind_t *info);
int bcm_l3_source_bind_delete(int unit, bcm_l3_source_bind_t *info);
int bcm_l3_source_bind_delete_all(int unit, bcm_port_t port);
int bcm_l3_source_bind_get(int unit, bcm_l3_source_bind_t *info);
int bcm_l3_source_bind_traverse(int unit, bcm_l3_source_bind_traverse_cb cb, void *user_data);

void bcm_l3_key_t_init(bcm_l3_key_t *key);

/* Profiles that say for each IPv4 option (0..255) what happens to packets that carry it. */
int bcm_l3_ip4_options_profile_create(int unit, uint32 flags, bcm_l3_ip4_options_action_t default_action,
                                      int *ip4_options_profile_id);
int bcm_l3_ip4_options_profile_destroy(int unit, int ip4_options_profile_id);
int bcm_l3_ip4_options_action_set(int unit, int ip4_options_profile_id, int ip4_option,
                                  bcm_l3_ip4_options_action_t action);
int bcm_l3_ip4_options_action_get(int unit, int ip4_options_profile_id, int ip4_option,
                                  bcm_l3_ip4_options_action_t *action);

#ifdef __cplusplus
}
#endif

#endif
