/*
 * Trunks: ports that act as one.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT (before bcm_trunk_init, after bcm_trunk_detach) and BCM_E_PARAM (null pointer, trunk outside
 * 0..BCM_TRUNK_MAX, unknown flag or selection criterion). Functions that take a trunk give BCM_E_NOT_FOUND
 * if it does not exist. Members are gports of local, module or system ports, BCM_E_PORT or BCM_E_BADID (its
 * module) for what is none; a port can be in one trunk only, under all of its names, BCM_E_EXISTS.
 */
#ifndef BCM_TRUNK_H
#define BCM_TRUNK_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_trunk_create. */
#define BCM_TRUNK_FLAG_WITH_ID 0x00000001           /* the trunk to make is the one given */
#define BCM_TRUNK_FLAG_VP 0x00000002                /* a trunk of virtual ports */

/* flags of bcm_trunk_info_t. */
typedef enum bcm_trunk_flag_e {
    BCM_TRUNK_FLAG_FAILOVER_NEXT = 0x00000010,  /* traffic of a failed member goes to the next one */
    BCM_TRUNK_FLAG_FAILOVER_ALL = 0x00000020,   /* traffic of a failed member goes to all others */
    BCM_TRUNK_FLAG_FAILOVER_LOCAL = 0x00000040, /* likewise, to those of its own module */
    BCM_TRUNK_FLAG_MCAST_HASH = 0x00000080,     /* members for multicast packets by hash, not by index */
    BCM_TRUNK_FLAG_RESILIENT = 0x00000100       /* flows keep their member when others come or go */
} bcm_trunk_flag_t;

/* flags of bcm_trunk_member_t. */
#define BCM_TRUNK_MEMBER_EGRESS_DISABLE 0x00000001  /* sends nothing of the trunk's */
#define BCM_TRUNK_MEMBER_INGRESS_DISABLE 0x00000002 /* what comes in is not taken for the trunk's */

/* flags of bcm_trunk_resilient_entry_t. */
#define BCM_TRUNK_RESILIENT_REPLACE 0x00000001      /* an entry of the same trunk and hash is replaced */

/* By what the member that sends a packet is selected; dynamic ones also look at the load of the members. */
typedef enum bcm_trunk_psc_e {
    BCM_TRUNK_PSC_SRCMAC = 1,
    BCM_TRUNK_PSC_DSTMAC = 2,
    BCM_TRUNK_PSC_SRCDSTMAC = 3,
    BCM_TRUNK_PSC_SRCIP = 4,
    BCM_TRUNK_PSC_DSTIP = 5,
    BCM_TRUNK_PSC_SRCDSTIP = 6,
    BCM_TRUNK_PSC_PORTINDEX = 7,         /* by the port that it came from */
    BCM_TRUNK_PSC_PORTFLOW = 8,          /* by the hash that bcmSwitchHashSelect* describes */
    BCM_TRUNK_PSC_ROUND_ROBIN = 9,
    BCM_TRUNK_PSC_RANDOM = 10,
    BCM_TRUNK_PSC_DYNAMIC = 11,          /* a flow changes members when it pauses */
    BCM_TRUNK_PSC_DYNAMIC_ASSIGNED = 12, /* a flow stays with the member that it was given */
    BCM_TRUNK_PSC_DEFAULT = BCM_TRUNK_PSC_SRCDSTMAC
} bcm_trunk_psc_t;

/* Whether a member takes traffic, see bcm_trunk_member_status_set. */
typedef enum bcm_trunk_member_status_e {
    BCM_TRUNK_MEMBER_STATUS_INACTIVE = 0,
    BCM_TRUNK_MEMBER_STATUS_ACTIVE = 1
} bcm_trunk_member_status_t;

/* How a trunk selects members. An index of -1 leaves the choice to the chip. */
typedef struct bcm_trunk_info_s {
    uint32 flags;                   /* BCM_TRUNK_FLAG_* */
    int psc;                        /* BCM_TRUNK_PSC_*, of known unicast packets */
    int ipmc_psc;                   /* the same of routed multicast packets */
    int dlf_index;                  /* member, from 0, for packets of unknown destination */
    int mc_index;                   /* member for bridged multicast packets */
    int ipmc_index;                 /* member for routed multicast packets */
    int dynamic_size;               /* flows that a dynamic trunk tells apart, a power of two */
    int dynamic_age;                /* pause in us after which a flow may change members */
    int dynamic_load_exponent;      /* weight of the past, as a power of two, in the load of a member */
    int dynamic_expected_load_exponent;
    bcm_trunk_t backup_tid;         /* takes over while no member is up, -1 for none */
} bcm_trunk_info_t;

/* What a unit can do. */
typedef struct bcm_trunk_chip_info_s {
    int trunk_id_min;               /* front panel trunks: the range of ids, -1 if there are none */
    int trunk_id_max;
    int trunk_ports_max;            /* members at most */
    int fabric_id_min;              /* the same of trunks of stacking ports */
    int fabric_id_max;
    int fabric_ports_max;
    int vp_id_min;                  /* the first trunk of virtual ports */
} bcm_trunk_chip_info_t;

/* A member of a trunk. */
typedef struct bcm_trunk_member_s {
    uint32 flags;               /* BCM_TRUNK_MEMBER_* */
    bcm_gport_t gport;
    int dynamic_scaling_factor; /* weights of dynamic load balancing */
    int dynamic_load_weight;
    int dynamic_queue_size_weight;
} bcm_trunk_member_t;

/* A flow, or rather its hash, that is bound to a member of a resilient trunk. */
typedef struct bcm_trunk_resilient_entry_s {
    uint32 flags;                   /* BCM_TRUNK_RESILIENT_* */
    bcm_trunk_t tid;
    uint32 hash_key;
    bcm_gport_t member;
} bcm_trunk_resilient_entry_t;

/* Called once per entry, which is valid during the call; a negative result ends the traversal with it. */
typedef int (*bcm_trunk_resilient_traverse_cb)(int unit, bcm_trunk_resilient_entry_t *entry, void *user_data);

/* The module. init destroys all trunks; *trunk_count is how many there are now. */
int bcm_trunk_init(int unit);
int bcm_trunk_detach(int unit);
int bcm_trunk_chip_info_get(int unit, bcm_trunk_chip_info_t *ta_info, int *trunk_count);

/* All members zero, save that gports, indices and trunks become -1 and criteria the default. */
void bcm_trunk_info_t_init(bcm_trunk_info_t *trunk_info);
void bcm_trunk_member_t_init(bcm_trunk_member_t *trunk_member);
void bcm_trunk_resilient_entry_t_init(bcm_trunk_resilient_entry_t *entry);

/*
 * Makes a trunk without members: of a unit, with flags, its id to or (BCM_TRUNK_FLAG_WITH_ID) from the last
 * argument. BCM_E_EXISTS, BCM_E_FULL.
 */
int bcm_trunk_create(int, uint32, bcm_trunk_t *);
int bcm_trunk_destroy(int unit, bcm_trunk_t tid);

/*
 * Settings and members at once. set replaces all members, or nothing if one of them cannot be. get takes
 * unit, trunk, where the settings go, how many members fit and where they go, and says last how many were
 * written; with room for none, how many there are.
 */
int bcm_trunk_set(int unit, bcm_trunk_t tid, bcm_trunk_info_t *trunk_info, int member_count,
                  bcm_trunk_member_t *member_array);
int bcm_trunk_get(int, bcm_trunk_t, bcm_trunk_info_t *, int, bcm_trunk_member_t *, int *);

/* The trunk that a port of a module, -1 for this one, is in, and as which member; BCM_E_NOT_FOUND if none. */
int bcm_trunk_find(int unit, bcm_module_t modid, bcm_port_t port, bcm_trunk_t *tid, int *index);

/* Single members. Of a member to delete only gport counts. BCM_E_EXISTS, BCM_E_FULL, BCM_E_NOT_FOUND. */
int bcm_trunk_member_add(int unit, bcm_trunk_t tid, bcm_trunk_member_t *member);
int bcm_trunk_member_delete(int unit, bcm_trunk_t tid, bcm_trunk_member_t *member);
int bcm_trunk_member_delete_all(int unit, bcm_trunk_t tid);

/* The members on this unit and their BCM_TRUNK_MEMBER_STATUS_*, at most member_max of them. */
int bcm_trunk_local_members_get(int unit, bcm_trunk_t tid, int member_max, bcm_port_t *member_array,
                                int *status_array, int *member_count);

/* Whether a member takes traffic (BCM_TRUNK_MEMBER_STATUS_*); link aggregation protocols set it. */
int bcm_trunk_member_status_set(int unit, bcm_trunk_t tid, bcm_gport_t member, int status);
int bcm_trunk_member_status_get(int unit, bcm_trunk_t tid, bcm_gport_t member, int *status);

/* Active members below which the whole trunk counts as down, 1 at first; whether it is up, how many are. */
int bcm_trunk_min_links_set(int unit, bcm_trunk_t tid, int min_links);
int bcm_trunk_min_links_get(int unit, bcm_trunk_t tid, int *min_links);
int bcm_trunk_status_get(int unit, bcm_trunk_t tid, int *up, int *active_count);

/* The selection criterion of unicast packets, BCM_TRUNK_PSC_*; get takes unit and trunk. */
int bcm_trunk_psc_set(int unit, bcm_trunk_t tid, int psc);
int bcm_trunk_psc_get(int, bcm_trunk_t, int *);

/* Ports of this unit whose packets may leave through the trunk; all at first. */
int bcm_trunk_egress_set(int unit, bcm_trunk_t tid, bcm_pbmp_t pbmp);
int bcm_trunk_egress_get(int unit, bcm_trunk_t tid, bcm_pbmp_t *pbmp);

/* Adds to *pbmp the ports that are in a trunk with any port of it. */
int bcm_trunk_bitmap_expand(int unit, bcm_pbmp_t *pbmp);

/* Makes the trunk a receiver of a multicast address. */
int bcm_trunk_mcast_join(int unit, bcm_trunk_t tid, bcm_vlan_t vid, bcm_mac_t mac);

/*
 * Packets from a port to a trunk that bypass the selection and stay on the port's own stacking link: unicast
 * packets, bridged multicast packets of an index, routed multicast packets of an index.
 */
int bcm_trunk_override_ucast_set(int unit, bcm_port_t port, bcm_trunk_t tid, bcm_module_t modid, int enable);
int bcm_trunk_override_ucast_get(int unit, bcm_port_t port, bcm_trunk_t tid, bcm_module_t modid, int *enable);
int bcm_trunk_override_mcast_set(int unit, bcm_port_t port, bcm_trunk_t tid, int idx, int enable);
int bcm_trunk_override_mcast_get(int unit, bcm_port_t port, bcm_trunk_t tid, int idx, int *enable);
int bcm_trunk_override_ipmc_set(int unit, bcm_port_t port, bcm_trunk_t tid, int idx, int enable);
int bcm_trunk_override_ipmc_get(int unit, bcm_port_t port, bcm_trunk_t tid, int idx, int *enable);

/* Weights by which members are drawn; of the 256 elements, the first size count. */
int bcm_trunk_pool_set(int unit, int size, const int weight[256]);
int bcm_trunk_pool_get(int unit, int *size, int weight[256]);

/*
 * Gports that take the traffic of a member while it is down, and the criterion by which one is selected;
 * count of none takes the member's traffic back.
 */
int bcm_trunk_failover_set(int unit, bcm_trunk_t tid, bcm_gport_t failport, int psc, uint32 flags, int count,
                           bcm_gport_t *fail_to_array);
int bcm_trunk_failover_get(int unit, bcm_trunk_t tid, bcm_gport_t failport, int *psc, uint32 *flags,
                           int array_size, bcm_gport_t *fail_to_array, int *array_count);

/*
 * Bound flows of resilient trunks; tid and hash_key say which. add gives BCM_E_EXISTS unless it replaces,
 * get and delete BCM_E_NOT_FOUND. delete_all takes those of a trunk, -1 for all.
 */
int bcm_trunk_resilient_add(int unit, bcm_trunk_resilient_entry_t *entry);
int bcm_trunk_resilient_get(int unit, bcm_trunk_t tid, uint32 hash_key, bcm_trunk_resilient_entry_t *entry);
int bcm_trunk_resilient_delete(int unit, bcm_trunk_t tid, uint32 hash_key);
int bcm_trunk_resilient_delete_all(int unit, bcm_trunk_t tid);
int bcm_trunk_resilient_traverse(int unit, bcm_trunk_resilient_traverse_cb cb, void *user_data);

#ifdef __cplusplus
}
#endif

#endif
