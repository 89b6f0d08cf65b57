/*
 * Layer-2 forwarding: the MAC address table and the tables around it.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT (after bcm_l2_detach) and BCM_E_PARAM (null pointer, VLAN id outside 1..4094, unknown flag
 * combination). On an error nothing is changed.
 *
 * A module argument is 0 for the unit's own ports, or -1 for the same; a port argument may be a gport,
 * which then says the module itself.
 */
#ifndef BCM_L2_H
#define BCM_L2_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* bcm_l2_addr_t flags. */
typedef enum bcm_l2_addr_flag_e {
    BCM_L2_COS_SRC_PRI = 0x00000001,  /* cos_src wins over cos_dst */
    BCM_L2_DISCARD_SRC = 0x00000002,  /* drop what comes from the address */
    BCM_L2_DISCARD_DST = 0x00000004,  /* drop what goes to the address; port and trunk do not count */
    BCM_L2_COPY_TO_CPU = 0x00000008,
    BCM_L2_L3LOOKUP = 0x00000010,     /* packets to the address are routed */
    BCM_L2_STATIC = 0x00000020,       /* neither ages nor moves; without it an entry is dynamic */
    BCM_L2_PENDING = 0x00000040,      /* learnt, but not confirmed by software */
    BCM_L2_TRUNK_MEMBER = 0x00000080, /* the destination is tgid, not port */
    BCM_L2_MIRROR = 0x00000100,
    BCM_L2_SETPRI = 0x00000200,
    BCM_L2_MCAST = 0x00000400,        /* the destination is l2mc_group */
    BCM_L2_SRC_HIT = 0x00000800,      /* seen as a source since the last ageing sweep */
    BCM_L2_DES_HIT = 0x00001000,      /* seen as a destination since the last ageing sweep */
    BCM_L2_HIT = (BCM_L2_SRC_HIT | BCM_L2_DES_HIT),
    BCM_L2_LOCAL_CPU = 0x00002000     /* the destination is the CPU of this unit */
} bcm_l2_addr_flag_t;

/* The words for these flags in dumps, from bit 0 on, and how many there are. */
extern char *bcm_l2_flags_str[];
extern int bcm_l2_flags_count;

/* flags of bcm_l2_addr_delete_by_*: by default dynamic entries go, each with a callback. */
#define BCM_L2_DELETE_STATIC 0x00000001       /* static entries too */
#define BCM_L2_DELETE_PENDING 0x00000002      /* pending entries only */
#define BCM_L2_DELETE_NO_CALLBACKS 0x00000004

/* flags of matched traversals: the members that have to agree; without the first two all entries. */
typedef enum bcm_l2_traverse_match_e {
    BCM_L2_TRAVERSE_MATCH_STATIC = 0x00000001,
    BCM_L2_TRAVERSE_MATCH_DYNAMIC = 0x00000002,
    BCM_L2_TRAVERSE_MATCH_MAC = 0x00000004,
    BCM_L2_TRAVERSE_MATCH_VLAN = 0x00000008,
    BCM_L2_TRAVERSE_MATCH_DEST = 0x00000010
} bcm_l2_traverse_match_t;

/* flags of bcm_l2_replace and bcm_l2_replace_match; matched are dynamic entries unless _STATIC is given. */
typedef enum bcm_l2_replace_flag_e {
    BCM_L2_REPLACE_MATCH_STATIC = 0x00000001, /* static entries too */
    BCM_L2_REPLACE_MATCH_MAC = 0x00000004,
    BCM_L2_REPLACE_MATCH_VLAN = 0x00000008,
    BCM_L2_REPLACE_MATCH_DEST = 0x00000010,
    BCM_L2_REPLACE_DELETE = 0x00000020,       /* delete the matched entries instead */
    BCM_L2_REPLACE_NEW_TRUNK = 0x00000040,    /* the new destination is new_trunk */
    BCM_L2_REPLACE_NO_CALLBACKS = 0x00000080
} bcm_l2_replace_flag_t;

/* operation of bcm_l2_addr_callback_t. */
typedef enum bcm_l2_callback_operation_e {
    BCM_L2_CALLBACK_DELETE = 1,      /* removed by a call */
    BCM_L2_CALLBACK_ADD = 2,         /* entered by a call */
    BCM_L2_CALLBACK_REPORT = 3,      /* seen on a port that only reports (BCM_PORT_LEARN_CPU) */
    BCM_L2_CALLBACK_LEARN_EVENT = 4, /* learnt from a packet */
    BCM_L2_CALLBACK_AGE_EVENT = 5,   /* aged out */
    BCM_L2_CALLBACK_MOVE_EVENT = 6   /* moved to another port by a packet */
} bcm_l2_callback_operation_t;

/* flags of bcm_l2_learn_limit_t: exactly one of the first five says what is limited. */
typedef enum bcm_l2_learn_limit_flag_e {
    BCM_L2_LEARN_LIMIT_SYSTEM = 0x00000001,
    BCM_L2_LEARN_LIMIT_VLAN = 0x00000002,
    BCM_L2_LEARN_LIMIT_PORT = 0x00000004,
    BCM_L2_LEARN_LIMIT_TRUNK = 0x00000008,
    BCM_L2_LEARN_LIMIT_TUNNEL = 0x00000010,
    BCM_L2_LEARN_LIMIT_ACTION_DROP = 0x00000020, /* what happens to a packet over the limit */
    BCM_L2_LEARN_LIMIT_ACTION_CPU = 0x00000040
} bcm_l2_learn_limit_flag_t;

/* flags of bcm_l2_learn_class_set. */
#define BCM_L2_LEARN_CLASS_MOVE 0x00000001 /* addresses may move to classes of lower priority too */

/* flags of bcm_l2_addr_distribute_t: which events are distributed. */
#define BCM_L2_ADDR_DIST_LEARN_EVENT 0x00000001
#define BCM_L2_ADDR_DIST_AGED_OUT_EVENT 0x00000002
#define BCM_L2_ADDR_DIST_STATION_MOVE_EVENT 0x00000004
#define BCM_L2_ADDR_DIST_DELETED 0x00000008

/* flags of bcm_l2_learn_msgs_config_t: where learning messages go. */
#define BCM_L2_LEARN_MSG_LEARNING 0x00000001
#define BCM_L2_LEARN_MSG_SHADOW 0x00000002
#define BCM_L2_LEARN_MSG_DEST_MULTICAST 0x00000004 /* to dest_group instead of dest_port */
#define BCM_L2_LEARN_MSG_ETH_ENCAP 0x00000008

/* flags of bcm_l2_cache_addr_t. */
typedef enum bcm_l2_cache_flag_e {
    BCM_L2_CACHE_CPU = 0x00000001,
    BCM_L2_CACHE_BPDU = 0x00000002,
    BCM_L2_CACHE_DISCARD = 0x00000004,
    BCM_L2_CACHE_L3 = 0x00000008,
    BCM_L2_CACHE_TRUNK = 0x00000010, /* the destination is dest_trunk */
    BCM_L2_CACHE_MIRROR = 0x00000020,
    BCM_L2_CACHE_SETPRI = 0x00000040
} bcm_l2_cache_flag_t;

/* flags of bcm_l2_station_t: what the switch terminates for the address. */
typedef enum bcm_l2_station_flag_e {
    BCM_L2_STATION_IPV4 = 0x00000001,
    BCM_L2_STATION_IPV6 = 0x00000002,
    BCM_L2_STATION_ARP_RARP = 0x00000004,
    BCM_L2_STATION_MPLS = 0x00000008,
    BCM_L2_STATION_MIM = 0x00000010,
    BCM_L2_STATION_TRILL = 0x00000020,
    BCM_L2_STATION_OAM = 0x00000040,
    BCM_L2_STATION_FCOE = 0x00000080,
    BCM_L2_STATION_COPY_TO_CPU = 0x00000100,
    BCM_L2_STATION_WITH_ID = 0x00000200, /* bcm_l2_station_add: *station_id is the id to use */
    BCM_L2_STATION_REPLACE = 0x00000400  /* bcm_l2_station_add: replace the station of that id */
} bcm_l2_station_flag_t;

/* flags of bcm_l2_egress_create. */
#define BCM_L2_EGRESS_WITH_ID 0x00000001 /* *intf is the id to use */
#define BCM_L2_EGRESS_REPLACE 0x00000002 /* replace the object of that id */

/* flags of bcm_l2_egress_t. */
#define BCM_L2_EGRESS_OUTER_VLAN_TAGGED 0x00000001
#define BCM_L2_EGRESS_INNER_VLAN_TAGGED 0x00000002
#define BCM_L2_EGRESS_OUTER_PRIO_CFI 0x00000004
#define BCM_L2_EGRESS_ETHERTYPE_ENCAP 0x00000008

/* flags of bcm_l2_mac_port_t. */
#define BCM_L2_MAC_PORT_WITH_ID 0x00000001 /* bcm_l2_mac_port_create: mac_port_id is the id to use */
#define BCM_L2_MAC_PORT_REPLACE 0x00000002 /* bcm_l2_mac_port_create: replace the object of that id */

/* One MAC address of a VLAN and where it is. */
typedef struct bcm_l2_addr_s {
    uint32 flags;                  /* BCM_L2_* */
    uint32 station_flags;          /* BCM_L2_STATION_* */
    bcm_mac_t mac;
    bcm_vlan_t vid;
    int port;                      /* port, or gport */
    int modid;
    bcm_trunk_t tgid;
    bcm_cos_t cos_dst;
    bcm_cos_t cos_src;
    bcm_multicast_t l2mc_group;
    bcm_pbmp_t block_bitmap;       /* source ports whose packets to the address are dropped */
    int auth;
    int group;
    bcm_fabric_distribution_t distribution_class;
    int encap_id;
    int age_state;
} bcm_l2_addr_t;

/* How packets leave: rewritten addresses and tags, and the port. */
typedef struct bcm_l2_egress_s {
    uint32 flags;                  /* BCM_L2_EGRESS_* */
    bcm_mac_t dest_mac;
    bcm_mac_t src_mac;
    bcm_vlan_t outer_vlan;
    bcm_vlan_t inner_vlan;
    bcm_ethertype_t ethertype;
    bcm_gport_t dest_port;
    int encap_id;
    bcm_tpid_t outer_tpid;
    uint8 outer_prio;              /* 0..7 */
    bcm_tpid_t inner_tpid;
    bcm_if_t l3_intf;
    int vlan_qos_map_id;
    uint32 mpls_extended_label_value;
} bcm_l2_egress_t;

/* A masked address that is looked up before the address table. */
typedef struct bcm_l2_cache_addr_s {
    uint32 flags;                  /* BCM_L2_CACHE_* */
    uint32 station_flags;
    bcm_mac_t mac;
    bcm_mac_t mac_mask;
    bcm_vlan_t vlan;
    bcm_vlan_t vlan_mask;
    bcm_port_t src_port;
    bcm_port_t src_port_mask;
    bcm_module_t dest_modid;
    bcm_port_t dest_port;
    bcm_trunk_t dest_trunk;
    int prio;
    bcm_pbmp_t dest_ports;
    int lookup_class;
    int subtype;
    int encap_id;
    int group;
    bcm_ethertype_t ethertype;
    bcm_ethertype_t ethertype_mask;
} bcm_l2_cache_addr_t;

/* The most addresses that may be learnt; -1 for no limit. */
typedef struct bcm_l2_learn_limit_s {
    uint32 flags;                  /* BCM_L2_LEARN_LIMIT_* */
    bcm_vlan_t vlan;
    bcm_port_t port;
    bcm_trunk_t trunk;
    bcm_tunnel_id_t tunnel_id;
    int limit;
} bcm_l2_learn_limit_t;

/* How learning messages to other chips are addressed. */
typedef struct bcm_l2_learn_msgs_config_s {
    uint32 flags;                  /* BCM_L2_LEARN_MSG_* */
    bcm_gport_t dest_port;
    bcm_multicast_t dest_group;
    bcm_vlan_t vlan;
    bcm_tpid_t tpid;
    uint8 vlan_prio;
    bcm_ethertype_t ether_type;
    bcm_mac_t src_mac_addr;
    bcm_mac_t dst_mac_addr;
} bcm_l2_learn_msgs_config_t;

/* Which table events are told to other chips, for one VLAN. */
typedef struct bcm_l2_addr_distribute_s {
    uint32 flags;                  /* BCM_L2_ADDR_DIST_* */
    bcm_vlan_t vid;
} bcm_l2_addr_distribute_t;

/* A masked destination address for which the switch itself is the receiver. */
typedef struct bcm_l2_station_s {
    uint32 flags;                  /* BCM_L2_STATION_* */
    int priority;                  /* higher wins among overlapping stations */
    bcm_mac_t dst_mac;
    bcm_mac_t dst_mac_mask;
    bcm_vlan_t vlan;
    bcm_vlan_t vlan_mask;
    bcm_port_t src_port;
    bcm_port_t src_port_mask;
} bcm_l2_station_t;

/* A ring that has switched over: the VLANs concerned and the two ports on it. */
typedef struct bcm_l2_ring_s {
    uint32 flags;
    bcm_vlan_vector_t vlan_vector;
    bcm_gport_t port0;
    bcm_gport_t port1;
    bcm_vpn_vector_t vpn_vector;
} bcm_l2_ring_t;

/* The only port on which a source address may appear in a VLAN. */
typedef struct bcm_l2_auth_addr_s {
    uint32 flags;
    bcm_mac_t sa_mac;
    bcm_vlan_t vlan;
    bcm_port_t src_port;
} bcm_l2_auth_addr_t;

/* A MAC address of a port itself. */
typedef struct bcm_l2_mac_port_s {
    uint32 flags;                  /* BCM_L2_MAC_PORT_* */
    bcm_mac_t mac;
    bcm_gport_t port;
    int mac_port_id;
} bcm_l2_mac_port_t;

/* Where a gport leads. */
typedef struct bcm_l2_gport_forward_info_s {
    bcm_gport_t phy_gport;
    int encap_id;
} bcm_l2_gport_forward_info_t;

/* Counters of an address: traffic from it (in) and to it (out). */
typedef enum bcm_l2_stat_e {
    bcmL2StatInBytes = 0,
    bcmL2StatInPackets = 1,
    bcmL2StatOutBytes = 2,
    bcmL2StatOutPackets = 3,
    bcmL2StatCount = 4
} bcm_l2_stat_t;

/*
 * Called once per entry. The entry is a copy that is valid during the call. A negative result ends the
 * traversal, which then returns it. The callback may change the table: entries that it deletes are not
 * visited any more, entries that it adds may be missed.
 */
typedef int (*bcm_l2_traverse_cb)(int unit, bcm_l2_addr_t *info, void *user_data);
typedef int (*bcm_l2_egress_traverse_cb)(int unit, bcm_if_t intf, bcm_l2_egress_t *info, void *user_data);
typedef int (*bcm_l2_station_traverse_cb)(int unit, int station_id, bcm_l2_station_t *info, void *user_data);
typedef int (*bcm_l2_auth_traverse_cb)(int unit, bcm_l2_auth_addr_t *info, void *user_data);
typedef int (*bcm_l2_mac_port_traverse_cb)(int unit, bcm_l2_mac_port_t *info, void *user_data);

/* Called after the table has changed. operation: BCM_L2_CALLBACK_*. l2addr is valid during the call. */
typedef void (*bcm_l2_addr_callback_t)(int unit, bcm_l2_addr_t *l2addr, int operation, void *userdata);

/*
 * The module. init empties all tables, drops all settings and callbacks; clear only empties the tables,
 * without callbacks; after detach every function but init returns BCM_E_INIT.
 */
int bcm_l2_init(int unit);
int bcm_l2_clear(int unit);
int bcm_l2_detach(int unit);

/* All members zero but those given. */
void bcm_l2_addr_t_init(bcm_l2_addr_t *l2addr, bcm_mac_t mac_addr, bcm_vlan_t vid);

/*
 * Entries, one per MAC address and VLAN. add replaces an existing one. BCM_E_NOT_FOUND: no such VLAN (add)
 * or entry; BCM_E_PORT, BCM_E_BADID: no such port, or module or trunk; BCM_E_FULL. A gport is resolved
 * when entered, so that get says port and modid, or tgid.
 */
int bcm_l2_addr_add(int unit, bcm_l2_addr_t *l2addr);
int bcm_l2_addr_delete(int unit, bcm_mac_t mac, bcm_vlan_t vid);

/* Entries by what they have in common, BCM_L2_DELETE_* flags. Finding none is no error. */
int bcm_l2_addr_delete_by_port(int unit, bcm_module_t mod, bcm_port_t port, uint32 flags);
int bcm_l2_addr_delete_by_mac(int unit, bcm_mac_t mac, uint32 flags);
int bcm_l2_addr_delete_by_vlan(int unit, bcm_vlan_t vid, uint32 flags);
int bcm_l2_addr_delete_by_trunk(int unit, bcm_trunk_t tid, uint32 flags);
int bcm_l2_addr_delete_by_mac_port(int unit, bcm_mac_t mac, bcm_module_t mod, bcm_port_t port, uint32 flags);
int bcm_l2_addr_delete_by_vlan_port(int unit, bcm_vlan_t vid, bcm_module_t mod, bcm_port_t port,
                                    uint32 flags);
int bcm_l2_addr_delete_by_vlan_trunk(int unit, bcm_vlan_t vid, bcm_trunk_t tid, uint32 flags);

/* The entry of an address. On BCM_E_NOT_FOUND *l2addr is left alone. */
int bcm_l2_addr_get(int unit, bcm_mac_t mac_addr, bcm_vlan_t vid, bcm_l2_addr_t *l2addr);

/* Prints a line about the entry, or only its key between pfx and sfx, to standard output. */
int bcm_l2_addr_dump(int unit, bcm_l2_addr_t *entry);
int bcm_l2_key_dump(int unit, char *pfx, bcm_l2_addr_t *entry, char *sfx);

/*
 * Callbacks on every change of the table, several at a time; the pair of callback and userdata counts.
 * Registering it again changes nothing; unregistering what is not registered gives BCM_E_NOT_FOUND.
 */
int bcm_l2_addr_register(int unit, bcm_l2_addr_callback_t callback, void *userdata);
int bcm_l2_addr_unregister(int unit, bcm_l2_addr_callback_t callback, void *userdata);

/* Seconds after which an unused dynamic entry goes, 0 for never; at first 300. */
int bcm_l2_age_timer_set(int unit, int age_seconds);
int bcm_l2_age_timer_get(int unit, int *age_seconds);

/* Event distribution of VLAN vid; none at first. */
void bcm_l2_addr_distribute_t_init(bcm_l2_addr_distribute_t *addr_distribute);
int bcm_l2_addr_msg_distribute_set(int unit, bcm_l2_addr_distribute_t *addr_distribute);
int bcm_l2_addr_msg_distribute_get(int unit, bcm_l2_addr_distribute_t *addr_distribute);

/* Between freeze and thaw nothing is learnt or aged. They nest; thaw without freeze gives BCM_E_FAIL. */
int bcm_l2_addr_freeze(int unit);
int bcm_l2_addr_thaw(int unit);

/*
 * Other entries in the hash bucket of addr, at most cf_max of them into cf_array (may be null if cf_max is
 * 0); *cf_count says how many were written.
 */
int bcm_l2_conflict_get(int unit, bcm_l2_addr_t *addr, bcm_l2_addr_t *cf_array, int cf_max, int *cf_count);

/*
 * Learn limits: addresses beyond them are not learnt; those entered by calls do not count. get takes flags
 * and the id, and fills in limit, -1 if none is set. BCM_E_UNAVAIL for tunnels. Packets of trunks are not
 * simulated, so that a trunk's limit is kept but never reached.
 */
void bcm_l2_learn_limit_t_init(bcm_l2_learn_limit_t *limit);
int bcm_l2_learn_limit_set(int unit, bcm_l2_learn_limit_t *limit);
int bcm_l2_learn_limit_get(int unit, bcm_l2_learn_limit_t *limit);

/*
 * Gives all matching entries a new destination, or deletes them. BCM_L2_REPLACE_* flags, at least one of
 * _MATCH_MAC, _MATCH_VLAN, _MATCH_DEST.
 */
int bcm_l2_replace(int unit, uint32 flags, bcm_l2_addr_t *match_addr, bcm_module_t new_module,
                   bcm_port_t new_port, bcm_trunk_t new_trunk);

/*
 * The same bit by bit: an entry matches if it agrees with match_addr in the bits of mask_addr; it takes
 * from replace_addr the bits of replace_mask_addr, which must not touch mac and vid. Of the flags only
 * _MATCH_STATIC, _DELETE (the last two records are then not used and may be null) and _NO_CALLBACKS.
 */
int bcm_l2_replace_match(int unit, uint32 flags, bcm_l2_addr_t *match_addr, bcm_l2_addr_t *mask_addr,
                         bcm_l2_addr_t *replace_addr, bcm_l2_addr_t *replace_mask_addr);

/* Entries of any of count pairs of VLAN and gport (local, module or system port, or trunk). */
int bcm_l2_addr_delete_by_vlan_gport_multi(int unit, int count, bcm_vlan_t *vid_arr, bcm_gport_t *gport_arr,
                                           uint32 flags);

/*
 * count entries, each as if on its own; of those to delete only mac and vid count. Each one's result goes
 * to status_arr (may be null); returned is the first error.
 */
int bcm_l2_addr_multi_add(int unit, int count, bcm_l2_addr_t *addr_arr, int *status_arr);
int bcm_l2_addr_multi_delete(int unit, int count, bcm_l2_addr_t *addr_arr, int *status_arr);

/*
 * Traversals. Addresses come in the order in which they were entered; a replaced one keeps its place. The
 * others come by ascending id (egress objects, stations, MAC ports) or by address and VLAN (authorised).
 */
int bcm_l2_egress_traverse(int unit, bcm_l2_egress_traverse_cb trav_fn, void *user_data);
int bcm_l2_traverse(int unit, bcm_l2_traverse_cb trav_fn, void *user_data);

/*
 * Addresses that agree with match_addr in the bits of mask_addr. Of the flags only _MATCH_STATIC and
 * _MATCH_DYNAMIC.
 */
int bcm_l2_match_masked_traverse(int unit, uint32 flags, bcm_l2_addr_t *match_addr, bcm_l2_addr_t *mask_addr,
                                 bcm_l2_traverse_cb trav_fn, void *user_data);
int bcm_l2_station_traverse(int unit, bcm_l2_station_traverse_cb trav_fn, void *user_data);
int bcm_l2_auth_traverse(int unit, bcm_l2_auth_traverse_cb trav_fn, void *user_data);

/* Addresses that agree with match_addr in the members that the BCM_L2_TRAVERSE_MATCH_* flags name. */
int bcm_l2_matched_traverse(int unit, uint32 flags, bcm_l2_addr_t *match_addr, bcm_l2_traverse_cb trav_fn,
                            void *user_data);
int bcm_l2_mac_port_traverse(int unit, bcm_l2_mac_port_traverse_cb cb, void *user_data);

/*
 * The cache, indices 0..size-1. set with index -1 takes the first free one (BCM_E_FULL), with an index in
 * use it replaces; *index_used says which it was. get and delete of a free index give BCM_E_NOT_FOUND.
 */
int bcm_l2_cache_init(int unit);
void bcm_l2_cache_addr_t_init(bcm_l2_cache_addr_t *addr);
int bcm_l2_cache_size_get(int unit, int *size);
int bcm_l2_cache_set(int unit, int index, bcm_l2_cache_addr_t *addr, int *index_used);
int bcm_l2_cache_get(int unit, int index, bcm_l2_cache_addr_t *addr);
int bcm_l2_cache_delete(int unit, int index);
int bcm_l2_cache_delete_all(int unit);

/* Addresses at which tunnels end; add gives BCM_E_EXISTS or BCM_E_FULL, delete BCM_E_NOT_FOUND. */
int bcm_l2_tunnel_add(int unit, bcm_mac_t mac, bcm_vlan_t vlan);
int bcm_l2_tunnel_delete(int unit, bcm_mac_t mac, bcm_vlan_t vlan);
int bcm_l2_tunnel_delete_all(int unit);

/*
 * Stations. add chooses the lowest free id (from 1) and returns it in *station_id, or takes the one given
 * with BCM_L2_STATION_WITH_ID: BCM_E_EXISTS, unless BCM_L2_STATION_REPLACE, which needs an existing one
 * (BCM_E_NOT_FOUND). size_get says how many there can be.
 */
void bcm_l2_station_t_init(bcm_l2_station_t *addr);
int bcm_l2_station_add(int unit, int *station_id, bcm_l2_station_t *station);
int bcm_l2_station_delete(int unit, int station_id);
int bcm_l2_station_delete_all(int unit);
int bcm_l2_station_get(int unit, int station_id, bcm_l2_station_t *station);
int bcm_l2_station_size_get(int unit, int *size);

/*
 * Egress objects, ids as for stations. find gives the lowest id of an object that is equal in every member.
 */
void bcm_l2_egress_t_init(bcm_l2_egress_t *egr);
int bcm_l2_egress_create(int unit, uint32 flags, bcm_l2_egress_t *egr, bcm_if_t *intf);
int bcm_l2_egress_destroy(int unit, bcm_if_t intf);
int bcm_l2_egress_get(int unit, bcm_if_t intf, bcm_l2_egress_t *egr);
int bcm_l2_egress_find(int unit, bcm_l2_egress_t *egr, bcm_if_t *intf);

/* MAC addresses of ports, ids as for stations; create writes the id to mac_port_id. */
void bcm_l2_mac_port_t_init(bcm_l2_mac_port_t *mac_port);
int bcm_l2_mac_port_create(int unit, bcm_l2_mac_port_t *mac_port);
int bcm_l2_mac_port_destroy(int unit, int mac_port_id);
int bcm_l2_mac_port_destroy_all(int unit);
int bcm_l2_mac_port_get(int unit, int mac_port_id, bcm_l2_mac_port_t *mac_port);

/*
 * Counters of the entry with the mac and vid of l2addr. They start at zero when enabled, and go with the
 * entry. BCM_E_NOT_FOUND: no such entry; BCM_E_DISABLED: not enabled. The 32-bit getter cuts off.
 */
int bcm_l2_stat_get(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint64 *val);
int bcm_l2_stat_get32(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint32 *val);
int bcm_l2_stat_set(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint64 val);
int bcm_l2_stat_set32(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint32 val);
int bcm_l2_stat_enable_set(int unit, bcm_l2_addr_t *l2addr, int enable);

/* Learning messages to other chips; all zero at first. */
void bcm_l2_learn_msgs_config_t_init(bcm_l2_learn_msgs_config_t *learn_msgs_config);
int bcm_l2_learn_msgs_config_set(int unit, bcm_l2_learn_msgs_config_t *learn_msgs_config);
int bcm_l2_learn_msgs_config_get(int unit, bcm_l2_learn_msgs_config_t *learn_msgs_config);

/* 1 if the port belongs to this unit, 0 if to another module, or an error. */
int bcm_l2_port_native(int unit, bcm_module_t modid, bcm_port_t port);

/*
 * Learn classes 0..31 and the class of a port, 0 at first. A learnt address moves only to a port whose
 * class has at least the priority of its own, unless the latter has BCM_L2_LEARN_CLASS_MOVE.
 */
int bcm_l2_learn_class_set(int unit, int lclass, int lclass_prio, uint32 flags);
int bcm_l2_learn_class_get(int unit, int lclass, int *lclass_prio, uint32 *flags);
int bcm_l2_learn_port_class_set(int unit, bcm_gport_t port, int lclass);
int bcm_l2_learn_port_class_get(int unit, bcm_gport_t port, int *lclass);

/*
 * Exchanges the destinations port0 and port1 in the dynamic entries of the VLANs in vlan_vector. VPNs are
 * not supported: BCM_E_UNAVAIL if vpn_vector has a bit set.
 */
void bcm_l2_ring_t_init(bcm_l2_ring_t *l2_ring);
int bcm_l2_ring_replace(int unit, bcm_l2_ring_t *l2_ring);

/*
 * Authorised addresses; sa_mac and vlan say which one. An address with such an entry is learnt on src_port
 * only. add replaces; get and delete give BCM_E_NOT_FOUND.
 */
void bcm_l2_auth_addr_t_init(bcm_l2_auth_addr_t *addr);
int bcm_l2_auth_add(int unit, bcm_l2_auth_addr_t *addr);
int bcm_l2_auth_get(int unit, bcm_l2_auth_addr_t *addr);
int bcm_l2_auth_delete(int unit, bcm_l2_auth_addr_t *addr);
int bcm_l2_auth_delete_all(int unit);

/* The port behind a local, module or system port gport. BCM_E_PARAM for other kinds. */
void bcm_l2_gport_forward_info_t_init(bcm_l2_gport_forward_info_t *info);
int bcm_l2_gport_forward_info_get(int unit, bcm_gport_t gport, bcm_l2_gport_forward_info_t *info);

#ifdef __cplusplus
}
#endif

#endif
