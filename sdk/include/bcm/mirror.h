/*
 * Mirroring: copies of packets that go to a port, or in a tunnel to another network, for someone to look at.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT, BCM_E_PORT and BCM_E_PARAM (null pointer, VLAN id or flag out of range). Functions that take
 * a destination give BCM_E_NOT_FOUND if it does not exist. Destinations are gports of their own kind. A
 * record's _t_init sets all its members to zero, which asks for nothing special.
 */
#ifndef BCM_MIRROR_H
#define BCM_MIRROR_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Where mirroring is done, see bcm_mirror_mode_set. */
typedef enum bcm_mirror_mode_e {
    BCM_MIRROR_DISABLE = 0,
    BCM_MIRROR_L2 = 1,          /* one port of the unit takes all copies */
    BCM_MIRROR_L2_L3 = 2,       /* the same, routed packets too */
    BCM_MIRROR_DESTINATIONS = 3 /* each port has destinations of its own */
} bcm_mirror_mode_t;

/* flags of bcm_mirror_port_set and of the destinations of ports: whose packets. */
#define BCM_MIRROR_PORT_INGRESS 0x00000001
#define BCM_MIRROR_PORT_EGRESS 0x00000002         /* as they leave */
#define BCM_MIRROR_PORT_EGRESS_TRUE 0x00000004    /* likewise, with all changes that the egress makes */
#define BCM_MIRROR_PORT_SFLOW 0x00000008          /* only sampled packets */

/* flags of bcm_mirror_destination_t. */
typedef enum bcm_mirror_destination_flag_e {
    BCM_MIRROR_DEST_WITH_ID = 0x00000001,       /* mirror_dest_id is the id to use */
    BCM_MIRROR_DEST_REPLACE = 0x00000002,       /* replace the destination of that id */
    BCM_MIRROR_DEST_TUNNEL_L2 = 0x00000004,     /* copies get a VLAN tag */
    BCM_MIRROR_DEST_TUNNEL_IP_GRE = 0x00000008, /* copies get an IP and a GRE header */
    BCM_MIRROR_DEST_TUNNEL_UDP = 0x00000010,    /* copies get an IP and a UDP header */
    BCM_MIRROR_DEST_TUNNEL_VNTAG = 0x00000020,
    BCM_MIRROR_DEST_TUNNEL_ETAG = 0x00000040,
    BCM_MIRROR_DEST_MULTICAST = 0x00000080,     /* copies go to multicast_group instead of gport */
    BCM_MIRROR_DEST_TIMESTAMP = 0x00000100,     /* copies say when the packet came */
    BCM_MIRROR_DEST_DROP_ONLY = 0x00000200      /* only packets that the switch drops */
} bcm_mirror_destination_flag_t;

/* flags of bcm_mirror_options_t: members that count instead of the destination's own. */
#define BCM_MIRROR_OPTION_SAMPLE 0x00000001
#define BCM_MIRROR_OPTION_PRIORITY 0x00000002

/* What a destination counts. */
typedef enum bcm_mirror_stat_e {
    bcmMirrorStatPackets = 0,
    bcmMirrorStatBytes = 1,
    bcmMirrorStatDroppedPackets = 2               /* copies for which there was no room */
} bcm_mirror_stat_t;

/* How a source port uses a destination. */
typedef struct bcm_mirror_options_s {
    uint32 flags;                  /* BCM_MIRROR_OPTION_* */
    int priority;                  /* of several destinations, the highest gets the packet */
    uint32 sample_rate_dividend;   /* of divisor packets, so many are copied */
    uint32 sample_rate_divisor;
} bcm_mirror_options_t;

/* What the fabric header of a copy says in place of the packet's own. */
typedef struct bcm_mirror_pkt_header_fabric_s {
    bcm_gport_t src_gport;
    bcm_gport_t dest_gport;
    int tc;
    bcm_color_t color;
    int trap_id;
    int trap_qualifier;
    int encap_id;
} bcm_mirror_pkt_header_fabric_t;

/* Headers of a copy that are rewritten. */
typedef struct bcm_mirror_pkt_header_updates_s {
    uint32 update_fields;          /* one bit per member of header_fabric that counts, from the first on */
    bcm_mirror_pkt_header_fabric_t header_fabric;
    int strip_length;              /* bytes that are taken off the packet's front */
} bcm_mirror_pkt_header_updates_t;

/* Where copies go, and in which wrapping. Members of a wrapping count only with its flag. */
typedef struct bcm_mirror_destination_s {
    bcm_gport_t mirror_dest_id;
    uint32 flags;                  /* BCM_MIRROR_DEST_* */
    bcm_gport_t gport;
    bcm_multicast_t multicast_group;
    bcm_mac_t src_mac;
    bcm_mac_t dst_mac;
    bcm_tpid_t tpid;
    bcm_vlan_t vlan_id;
    uint8 vlan_prio;
    uint8 version;                 /* of IP: 4 or 6 */
    uint8 tos;
    uint8 ttl;
    uint8 df;                      /* copies must not be fragmented */
    bcm_ip_t src_addr;
    bcm_ip_t dst_addr;
    bcm_ip6_t src6_addr;
    bcm_ip6_t dst6_addr;
    uint32 flow_label;
    uint8 hop_limit;
    uint16 gre_protocol;
    bcm_l4_port_t udp_src_port;
    bcm_l4_port_t udp_dst_port;
    bcm_vntag_t vntag;
    bcm_etag_t etag;
    bcm_policer_t policer_id;
    int stat_id;                   /* counter of copies, 0 for none */
    int encap_id;
    bcm_gport_t tunnel_id;
    uint16 span_id;                /* session that the copies belong to */
    int int_pri;
    bcm_cos_queue_t cosq;
    bcm_color_t color;
    uint32 sample_rate_dividend;   /* of divisor packets, so many are copied; 0 for all */
    uint32 sample_rate_divisor;
    int truncate_length;           /* bytes of a packet that are copied, 0 for all */
    int timestamp_mode;
    uint32 sequence_number;        /* of the first copy */
    uint32 observation_domain;
    int recycle_context;           /* the second pass through the chip that wraps the copy */
    bcm_if_t egress_if;
    bcm_failover_t failover_id;
    bcm_mirror_pkt_header_updates_t packet_control_updates;
} bcm_mirror_destination_t;

/* The tags that copies of a port's packets get on their way to the mirroring port. */
typedef struct bcm_mirror_port_info_s {
    uint32 flags;                  /* BCM_MIRROR_PORT_* */
    bcm_tpid_t tpid;
    bcm_vlan_t vlan;
    uint8 vlan_prio;
    int int_pri;
    bcm_color_t color;
} bcm_mirror_port_info_t;

/* Called once per destination, by ascending id; a negative result ends the traversal with it. */
typedef int (*bcm_mirror_destination_traverse_cb)(int unit, bcm_mirror_destination_t *mirror_dest,
                                                  void *user_data);

/* The module. init destroys all destinations; nothing is mirrored then. */
int bcm_mirror_init(int unit);
int bcm_mirror_detach(int unit);

/* Where mirroring is done, BCM_MIRROR_*; at first, and besides unless disabled, at destinations of ports. */
int bcm_mirror_mode_set(int unit, int mode);
int bcm_mirror_mode_get(int unit, int *mode);

/* One mirroring port per unit: which it is, the ports that reach it, and whose packets it gets. */
int bcm_mirror_to_set(int unit, bcm_port_t port);
int bcm_mirror_to_get(int unit, bcm_port_t *port);
int bcm_mirror_to_pbmp_set(int unit, bcm_port_t port, bcm_pbmp_t pbmp);
int bcm_mirror_to_pbmp_get(int unit, bcm_port_t port, bcm_pbmp_t *pbmp);
int bcm_mirror_ingress_set(int unit, bcm_port_t port, int val);
int bcm_mirror_ingress_get(int unit, bcm_port_t port, int *val);
int bcm_mirror_egress_set(int unit, bcm_port_t port, int val);
int bcm_mirror_egress_get(int unit, bcm_port_t port, int *val);

/* One mirroring port per port, on any module; BCM_MIRROR_PORT_* flags, 0 for none. */
int bcm_mirror_port_set(int unit, bcm_port_t port, bcm_module_t dest_mod, bcm_port_t dest_port, uint32 flags);
int bcm_mirror_port_get(int unit, bcm_port_t port, bcm_module_t *dest_mod, bcm_port_t *dest_port,
                        uint32 *flags);

/*
 * The VLAN tag that copies get at a mirroring port (tpid of 0: none) with the priority in it, 0..7, and the
 * tags of a port's copies.
 */
int bcm_mirror_vlan_set(int unit, bcm_port_t port, bcm_tpid_t tpid, bcm_vlan_t vlan, int pri);
int bcm_mirror_vlan_get(int unit, bcm_port_t port, bcm_tpid_t *tpid, bcm_vlan_t *vlan, int *pri);
void bcm_mirror_port_info_t_init(bcm_mirror_port_info_t *info);
int bcm_mirror_port_info_set(int unit, bcm_port_t port, bcm_mirror_port_info_t *info);
int bcm_mirror_port_info_get(int unit, bcm_port_t port, bcm_mirror_port_info_t *info);

/*
 * Destinations. create chooses the lowest free id unless BCM_MIRROR_DEST_WITH_ID, and writes it to
 * mirror_dest_id; BCM_E_EXISTS, BCM_E_FULL, BCM_E_UNAVAIL. destroy: BCM_E_BUSY in use, get says how many
 * do. find gives the lowest id of one that is equal in every other member.
 */
void bcm_mirror_destination_t_init(bcm_mirror_destination_t *mirror_dest);
void bcm_mirror_options_t_init(bcm_mirror_options_t *options);
int bcm_mirror_destination_create(int unit, bcm_mirror_destination_t *mirror_dest);
int bcm_mirror_destination_destroy(int unit, bcm_gport_t mirror_dest_id);
int bcm_mirror_destination_get(int unit, bcm_gport_t mirror_dest_id, bcm_mirror_destination_t *mirror_dest,
                               int *use_count);
int bcm_mirror_destination_find(int unit, bcm_mirror_destination_t *mirror_dest, bcm_gport_t *mirror_dest_id);
int bcm_mirror_destination_traverse(int unit, bcm_mirror_destination_traverse_cb cb, void *user_data);

/* Whether a destination takes copies; at first it does. */
int bcm_mirror_destination_enable_set(int unit, bcm_gport_t mirror_dest_id, int enable);
int bcm_mirror_destination_enable_get(int unit, bcm_gport_t mirror_dest_id, int *enable);

/*
 * Destinations of a port's packets, and of those in one VLAN; flags are BCM_MIRROR_PORT_*. get writes at most
 * mirror_dest_size of those with any of the flags, and says which each has.
 * add gives BCM_E_EXISTS or BCM_E_FULL, delete gives BCM_E_NOT_FOUND.
 */
int bcm_mirror_port_destination_add(int unit, bcm_port_t port, uint32 flags, bcm_gport_t mirror_dest_id,
                                    bcm_mirror_options_t options);
int bcm_mirror_port_destination_delete(int unit, bcm_port_t port, uint32 flags, bcm_gport_t mirror_dest_id);
int bcm_mirror_port_destination_delete_all(int unit, bcm_port_t port, uint32 flags);
int bcm_mirror_port_destination_get(int unit, bcm_port_t port, uint32 flags, int mirror_dest_size,
                                    bcm_gport_t *mirror_dest, uint32 *mirror_flags, int *mirror_dest_count);
int bcm_mirror_port_vlan_destination_add(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags,
                                         bcm_gport_t mirror_dest_id, bcm_mirror_options_t options);
int bcm_mirror_port_vlan_destination_delete(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags,
                                            bcm_gport_t mirror_dest_id);
int bcm_mirror_port_vlan_destination_delete_all(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags);
int bcm_mirror_port_vlan_destination_get(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags,
                                         int mirror_dest_size, bcm_gport_t *mirror_dest, uint32 *mirror_flags,
                                         int *mirror_dest_count);

/* Counters of a destination; get32 cuts off. */
int bcm_mirror_stat_get(int unit, bcm_gport_t mirror_dest_id, bcm_mirror_stat_t stat, uint64 *value);
int bcm_mirror_stat_get32(int unit, bcm_gport_t mirror_dest_id, bcm_mirror_stat_t stat, uint32 *value);
int bcm_mirror_stat_set(int unit, bcm_gport_t mirror_dest_id, bcm_mirror_stat_t stat, uint64 value);

#ifdef __cplusplus
}
#endif

#endif
