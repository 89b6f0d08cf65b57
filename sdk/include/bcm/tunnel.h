/*
 * Tunnels over IP: terminators, which unpack what arrives, and initiators, which pack what leaves through an
 * interface.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT
 * and BCM_E_PARAM. On an error nothing is changed. IPv4 addresses are in host, IPv6 addresses in
 * network byte order; the type of a tunnel says which of them count.
 */
#ifndef BCM_TUNNEL_H
#define BCM_TUNNEL_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_tunnel_terminator_t. */
typedef enum bcm_tunnel_terminator_flag_e {
    BCM_TUNNEL_TERM_TUNNEL_WITH_ID = 0x00000001, /* create: tunnel_id is the gport to use */
    BCM_TUNNEL_TERM_USE_OUTER_DSCP = 0x00000002, /* priority from the outer header */
    BCM_TUNNEL_TERM_USE_OUTER_TTL = 0x00000004,  /* the unpacked packet takes over the outer TTL */
    BCM_TUNNEL_TERM_KEEP_INNER_DSCP = 0x00000008,
    BCM_TUNNEL_TERM_BIDIR = 0x00000010,          /* makes the initiator back, too */
    BCM_TUNNEL_TERM_DECAP_INNER_ETHERNET = 0x00000020
} bcm_tunnel_terminator_flag_t;

/* flags of bcm_tunnel_initiator_t. */
typedef enum bcm_tunnel_initiator_flag_e {
    BCM_TUNNEL_INIT_TUNNEL_WITH_ID = 0x00000001, /* create: tunnel_id is the gport to use */
    BCM_TUNNEL_REPLACE = 0x00000002,             /* replaces what the interface has, else BCM_E_EXISTS */
    BCM_TUNNEL_INIT_USE_INNER_DF = 0x00000004,   /* the outer "don't fragment" bit is the inner one */
    BCM_TUNNEL_INIT_IPV4_SET_DF = 0x00000008,
    BCM_TUNNEL_INIT_USE_INNER_TTL = 0x00000010
} bcm_tunnel_initiator_flag_t;

/* What a tunnel carries, and in what. */
typedef enum bcm_tunnel_type_e {
    bcmTunnelTypeNone = 0,
    bcmTunnelTypeIpAnyIn4 = 1,                      /* IPv4 or IPv6 in IPv4, and so on */
    bcmTunnelTypeIpAnyIn6 = 2,
    bcmTunnelTypeIp4In4 = 3,
    bcmTunnelTypeIp6In4 = 4,
    bcmTunnelTypeIp4In6 = 5,
    bcmTunnelTypeIp6In6 = 6,
    bcmTunnelTypeGreAnyIn4 = 7,
    bcmTunnelTypeGreAnyIn6 = 8,
    bcmTunnelType6To4 = 9,
    bcmTunnelTypeIsatap = 10,
    bcmTunnelTypeUdp = 11,
    bcmTunnelTypeMpls = 12,
    bcmTunnelTypeL2Gre = 13,
    bcmTunnelTypeVxlan = 14,
    bcmTunnelTypeGeneve = 15,
    bcmTunnelTypeGtp = 16,
    bcmTunnelTypeWlanWtpToAc = 17,                  /* wireless: access point to controller, and so on */
    bcmTunnelTypeWlanAcToAc = 18,
    bcmTunnelTypeAutoMulticast = 19,
    bcmTunnelTypePimSmDr = 20                       /* to the rendezvous point of a multicast group */
} bcm_tunnel_type_t;

/* Where the DSCP of the outer header comes from. */
typedef enum bcm_tunnel_dscp_select_e {
    bcmTunnelDscpAssign = 0,                        /* dscp */
    bcmTunnelDscpPacket = 1,                        /* that of the inner header */
    bcmTunnelDscpMap = 2                            /* by dscp_map */
} bcm_tunnel_dscp_select_t;

/* Packets to be unpacked, and what they then count as. */
typedef struct bcm_tunnel_terminator_s {
    uint32 flags;                                   /* BCM_TUNNEL_TERM_* */
    bcm_tunnel_type_t type;
    bcm_vrf_t vrf;
    bcm_ip_t sip;
    bcm_ip_t dip;
    bcm_ip_t sip_mask;
    bcm_ip_t dip_mask;
    bcm_ip6_t sip6;
    bcm_ip6_t dip6;
    bcm_ip6_t sip6_mask;
    bcm_ip6_t dip6_mask;
    bcm_l4_port_t udp_src_port;
    bcm_l4_port_t udp_dst_port;
    bcm_pbmp_t pbmp;                                /* ports at which they may arrive */
    bcm_gport_t remote_port;                        /* access point at the other end, of wireless tunnels */
    bcm_vlan_t vlan;                                /* VLAN in which the unpacked packet is */
    bcm_gport_t tunnel_id;
    bcm_if_t tunnel_if;                             /* interface at which the unpacked packet arrives */
    int if_class;
    int qos_map_id;                                 /* outer header */
    int inner_qos_map_id;
    int inlif_counting_profile;
} bcm_tunnel_terminator_t;

/* The headers that packets get. */
typedef struct bcm_tunnel_initiator_s {
    uint32 flags;                                   /* BCM_TUNNEL_INIT_*, BCM_TUNNEL_REPLACE */
    bcm_gport_t tunnel_id;
    bcm_tunnel_type_t type;
    bcm_mac_t dmac;
    bcm_mac_t smac;
    bcm_ip_t dip;
    bcm_ip_t sip;
    bcm_ip6_t dip6;
    bcm_ip6_t sip6;
    uint32 flow_label;                              /* IPv6, 20 bits */
    int ttl;                                        /* 1..255 */
    bcm_tunnel_dscp_select_t dscp_sel;
    int dscp;                                       /* 0..63 */
    int dscp_map;
    int dscp_ecn_map;
    uint16 ip4_id;                                  /* first identification that it gives */
    bcm_l4_port_t udp_src_port;
    bcm_l4_port_t udp_dst_port;
    uint32 gre_key;
    int mtu;                                        /* bytes, 0 for no limit */
    bcm_vlan_t vlan;
    bcm_tpid_t tpid;
    uint8 pkt_pri;                                  /* 0..7 */
    uint8 pkt_cfi;                                  /* 0 or 1 */
    int span_id;                                    /* session, of tunnels that carry mirrored packets */
    uint32 aux_data;                                /* further header word, of types that have one */
    bcm_if_t l3_intf_id;
    int outlif_counting_profile;
} bcm_tunnel_initiator_t;

/* Settings of the unit: which UDP ports mean which tunnel, and from where on identifications are given. */
typedef struct bcm_tunnel_config_s {
    uint32 flags;
    uint16 ip4_id_boundary;                         /* tunnels use those above, the CPU those up to it */
    bcm_l4_port_t vxlan_udp_dst_port;
    bcm_l4_port_t geneve_udp_dst_port;
    bcm_l4_port_t gtp_udp_dst_port;
    bcm_l4_port_t amt_udp_dst_port;                 /* automatic multicast tunnels */
    bcm_l4_port_t mpls_udp_dst_port;
} bcm_tunnel_config_t;

/* One line of a map from priority and colour to the DSCP of the outer header. */
typedef struct bcm_tunnel_dscp_map_s {
    uint32 flags;
    int priority;                                   /* 0..15 */
    bcm_color_t color;
    int dscp;                                       /* 0..63 */
} bcm_tunnel_dscp_map_t;

/*
 * Called once per entry. Records are valid during the call. A negative result ends the traversal, which then
 * returns it.
 */
typedef int (*bcm_tunnel_initiator_traverse_cb)(int unit, bcm_tunnel_initiator_t *info, void *user_data);
typedef int (*bcm_tunnel_terminator_traverse_cb)(int unit, bcm_tunnel_terminator_t *info, void *user_data);

/* The module. init removes all tunnels and maps. */
int bcm_tunnel_init(int unit);

void bcm_tunnel_config_t_init(bcm_tunnel_config_t *config);
int bcm_tunnel_config_set(int unit, bcm_tunnel_config_t *config);
int bcm_tunnel_config_get(int unit, bcm_tunnel_config_t *config);

/*
 * Initiators, one per interface; set gives it the headers and create a gport as well, which goes to
 * tunnel_id. get writes all zero if the interface has none.
 */
void bcm_tunnel_initiator_t_init(bcm_tunnel_initiator_t *tunnel);
int bcm_tunnel_initiator_set(int unit, bcm_if_t intf, bcm_tunnel_initiator_t *tunnel);
int bcm_tunnel_initiator_create(int unit, bcm_if_t intf, bcm_tunnel_initiator_t *tunnel);
int bcm_tunnel_initiator_clear(int unit, bcm_if_t intf);
int bcm_tunnel_initiator_clear_all(int unit);
int bcm_tunnel_initiator_get(int unit, bcm_if_t intf, bcm_tunnel_initiator_t *tunnel);
int bcm_tunnel_initiator_traverse(int unit, bcm_tunnel_initiator_traverse_cb cb, void *user_data);

/*
 * Terminators, by type, addresses, masks and UDP ports; create gives one a gport as well. set changes the
 * other members of an existing one.
 */
void bcm_tunnel_terminator_t_init(bcm_tunnel_terminator_t *info);
int bcm_tunnel_terminator_add(int unit, bcm_tunnel_terminator_t *info);
int bcm_tunnel_terminator_create(int unit, bcm_tunnel_terminator_t *info);
int bcm_tunnel_terminator_set(int unit, bcm_tunnel_terminator_t *info);
int bcm_tunnel_terminator_delete(int unit, bcm_tunnel_terminator_t *info);
int bcm_tunnel_terminator_delete_all(int unit);
int bcm_tunnel_terminator_get(int unit, bcm_tunnel_terminator_t *info);
int bcm_tunnel_terminator_traverse(int unit, bcm_tunnel_terminator_traverse_cb cb, void *user_data);

/* VLANs that the other end of a wireless tunnel may use. */
int bcm_tunnel_terminator_vlan_set(int unit, bcm_gport_t tunnel, bcm_vlan_vector_t vlan_vec);
int bcm_tunnel_terminator_vlan_get(int unit, bcm_gport_t tunnel, bcm_vlan_vector_t *vlan_vec);

/* Maps of DSCP values; a line is known by its priority and colour. */
int bcm_tunnel_dscp_map_create(int unit, uint32 flags, int *dscp_map_id);
int bcm_tunnel_dscp_map_destroy(int unit, int dscp_map_id);
int bcm_tunnel_dscp_map_set(int unit, int dscp_map_id, bcm_tunnel_dscp_map_t *dscp_map);
int bcm_tunnel_dscp_map_get(int unit, int dscp_map_id, bcm_tunnel_dscp_map_t *dscp_map);

#ifdef __cplusplus
}
#endif

#endif
