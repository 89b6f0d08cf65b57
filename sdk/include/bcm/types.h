/* Types that all families share. */
#ifndef BCM_TYPES_H
#define BCM_TYPES_H

#include <sal/types.h>
#include <shared/bitop.h>
#include <shared/pbmp.h>

typedef int bcm_port_t;                 /* physical port of a unit, or a gport */
typedef int bcm_gport_t;                /* port of any kind, see BCM_GPORT_* */
typedef int bcm_module_t;               /* chip within a stack, 0..BCM_MODULE_MAX */
typedef int bcm_trunk_t;                /* link aggregation group, 0..BCM_TRUNK_MAX */
typedef int bcm_cos_t;                  /* class of service, 0..7 */
typedef int bcm_cos_queue_t;
typedef int bcm_if_t;                   /* interface or egress object */
typedef int bcm_multicast_t;            /* multicast group */
typedef int bcm_stg_t;                  /* spanning tree group */
typedef int bcm_vrf_t;
typedef int bcm_failover_t;
typedef int bcm_fabric_distribution_t;
typedef int bcm_tunnel_id_t;
typedef unsigned short bcm_vlan_t;      /* VLAN id, 1..4094 where a VLAN is meant */
typedef unsigned short bcm_vpn_t;
typedef unsigned short bcm_tpid_t;
typedef unsigned short bcm_ethertype_t;
typedef uint32 bcm_mpls_label_t;
typedef unsigned int bcm_ip_t;          /* host byte order */
typedef unsigned char bcm_ip6_t[16];    /* network byte order */
typedef unsigned char bcm_mac_t[6];     /* byte 0 is sent first */
typedef _shr_pbmp_t bcm_pbmp_t;

#define BCM_MODULE_MAX 127
#define BCM_TRUNK_MAX 1023

#define BCM_VLAN_MIN 0
#define BCM_VLAN_MAX 4095
#define BCM_VLAN_COUNT (BCM_VLAN_MAX - BCM_VLAN_MIN + 1)
#define BCM_VLAN_DEFAULT 1

/* One bit per VLAN or VPN. */
typedef SHR_BITDCL bcm_vlan_vector_t[_SHR_BITDCLSIZE(BCM_VLAN_COUNT)];

#define BCM_VPN_COUNT 4096
typedef SHR_BITDCL bcm_vpn_vector_t[_SHR_BITDCLSIZE(BCM_VPN_COUNT)];

#define BCM_PBMP_PORT_MAX _SHR_PBMP_PORT_MAX
#define BCM_PBMP_CLEAR(pbm) _SHR_PBMP_CLEAR(pbm)
#define BCM_PBMP_PORT_ADD(pbm, port) _SHR_PBMP_PORT_ADD(pbm, port)
#define BCM_PBMP_PORT_REMOVE(pbm, port) _SHR_PBMP_PORT_REMOVE(pbm, port)
#define BCM_PBMP_MEMBER(pbm, port) _SHR_PBMP_MEMBER(pbm, port)

/*
 * A gport says in its top six bits what kind of port it is, in the other 26 which one. Kind 0 is a plain
 * physical port number.
 */
#define BCM_GPORT_TYPE_SHIFT 26
#define BCM_GPORT_TYPE_MASK 0x3f
#define BCM_GPORT_VALUE_MASK 0x03ffffff

#define BCM_GPORT_TYPE_NONE 0
#define BCM_GPORT_TYPE_LOCAL 1
#define BCM_GPORT_TYPE_MODPORT 2
#define BCM_GPORT_TYPE_TRUNK 3
#define BCM_GPORT_TYPE_BLACK_HOLE 4
#define BCM_GPORT_TYPE_SYSTEM_PORT 27

#define BCM_GPORT_LOCAL_PORT_MASK 0x7ff
#define BCM_GPORT_MODPORT_MODID_SHIFT 11
#define BCM_GPORT_MODPORT_MODID_MASK 0x7fff

#define BCM_GPORT_SYSTEM_PORT_ID_MASK 0xffffff

#define BCM_GPORT_INVALID (-1)
#define BCM_GPORT_BLACK_HOLE 0x10000000

#define BCM_GPORT_TYPE(gport) (((unsigned int)(gport) >> BCM_GPORT_TYPE_SHIFT) & BCM_GPORT_TYPE_MASK)
#define BCM_GPORT_VALUE(gport) ((int)((unsigned int)(gport) & BCM_GPORT_VALUE_MASK))
#define BCM_GPORT_MAKE(type, value) \
    ((int)(((unsigned int)(type) << BCM_GPORT_TYPE_SHIFT) | ((unsigned int)(value) & BCM_GPORT_VALUE_MASK)))

#define BCM_GPORT_IS_SET(gport) ((gport) >= 0 && BCM_GPORT_TYPE(gport) != BCM_GPORT_TYPE_NONE)
#define BCM_GPORT_IS_LOCAL(gport) (BCM_GPORT_TYPE(gport) == BCM_GPORT_TYPE_LOCAL)
#define BCM_GPORT_IS_MODPORT(gport) (BCM_GPORT_TYPE(gport) == BCM_GPORT_TYPE_MODPORT)
#define BCM_GPORT_IS_TRUNK(gport) (BCM_GPORT_TYPE(gport) == BCM_GPORT_TYPE_TRUNK)
#define BCM_GPORT_IS_BLACK_HOLE(gport) ((gport) == BCM_GPORT_BLACK_HOLE)
#define BCM_GPORT_IS_SYSTEM_PORT(gport) (BCM_GPORT_TYPE(gport) == BCM_GPORT_TYPE_SYSTEM_PORT)

#define BCM_GPORT_LOCAL_SET(gport, port) \
    ((gport) = BCM_GPORT_MAKE(BCM_GPORT_TYPE_LOCAL, (port) & BCM_GPORT_LOCAL_PORT_MASK))
#define BCM_GPORT_LOCAL_GET(gport) (BCM_GPORT_VALUE(gport) & BCM_GPORT_LOCAL_PORT_MASK)
#define BCM_GPORT_MODPORT_SET(gport, module, port)                                     \
    ((gport) = BCM_GPORT_MAKE(BCM_GPORT_TYPE_MODPORT,                                  \
         (((module) & BCM_GPORT_MODPORT_MODID_MASK) << BCM_GPORT_MODPORT_MODID_SHIFT)  \
         | ((port) & BCM_GPORT_LOCAL_PORT_MASK)))
#define BCM_GPORT_MODPORT_MODID_GET(gport) (BCM_GPORT_VALUE(gport) >> BCM_GPORT_MODPORT_MODID_SHIFT)
#define BCM_GPORT_MODPORT_PORT_GET(gport) (BCM_GPORT_VALUE(gport) & BCM_GPORT_LOCAL_PORT_MASK)
#define BCM_GPORT_TRUNK_SET(gport, trunk) ((gport) = BCM_GPORT_MAKE(BCM_GPORT_TYPE_TRUNK, trunk))
#define BCM_GPORT_TRUNK_GET(gport) BCM_GPORT_VALUE(gport)
#define BCM_GPORT_SYSTEM_PORT_ID_SET(gport, id) \
    ((gport) = BCM_GPORT_MAKE(BCM_GPORT_TYPE_SYSTEM_PORT, (id) & BCM_GPORT_SYSTEM_PORT_ID_MASK))
#define BCM_GPORT_SYSTEM_PORT_ID_GET(gport) (BCM_GPORT_VALUE(gport) & BCM_GPORT_SYSTEM_PORT_ID_MASK)

/* Shared by the queueing, statistics, policer and classification families. */
typedef int bcm_policer_t;              /* policer, 0 for none */
typedef int bcm_core_t;                 /* core of a unit that has several */
typedef int bcm_service_pool_id_t;      /* pool of packet buffers */

/* Colour of a packet, which says how soon it is dropped. */
typedef enum bcm_color_e {
    bcmColorGreen = 0,
    bcmColorYellow = 1,
    bcmColorRed = 2,
    bcmColorDropFirst = bcmColorRed,
    bcmColorBlack = 3,                  /* dropped before it is queued */
    bcmColorPreserve = 4,               /* keeps the colour that it has */
    bcmColorCount = 5
} bcm_color_t;

/* Shared by routing and classification. */
typedef uint16 bcm_l4_port_t;           /* TCP or UDP port, host byte order */
typedef COMPILER_UINT64 bcm_class_t;    /* class that ranges of a packet field are reduced to */

/* Shared by the routing, packet and tagging families. */
typedef int bcm_if_group_t;             /* group of interfaces */
typedef int bcm_switch_agm_id_t;        /* monitor of the load of a group of paths */

/* A VN-tag, IEEE 802.1BR's predecessor: the virtual interfaces between which a packet travels. */
typedef struct bcm_vntag_s {
    uint8 direction;                    /* 0 from the interface to the bridge, 1 back */
    uint8 pointer;                      /* 1 if dest_vif is a list of interfaces */
    uint8 looped;                       /* 1 if source and destination are on the same port */
    uint16 dest_vif;                    /* 14 bits */
    uint16 source_vif;                  /* 12 bits */
} bcm_vntag_t;

/* An E-tag, IEEE 802.1BR. */
typedef struct bcm_etag_s {
    uint8 pri;                          /* 0..7 */
    uint8 dei;                          /* 0 or 1 */
    uint16 ingress_ecid;                /* 12 bits */
    uint16 ecid;                        /* 14 bits, the group in the top two */
} bcm_etag_t;

/* What is done to a VN-tag, or an E-tag. */
typedef enum bcm_vntag_action_e {
    bcmVntagActionNone = 0,
    bcmVntagActionAdd = 1,
    bcmVntagActionReplace = 2,
    bcmVntagActionDelete = 3,
    bcmVntagActionCount = 4
} bcm_vntag_action_t;

typedef enum bcm_etag_action_e {
    bcmEtagActionNone = 0,
    bcmEtagActionAdd = 1,
    bcmEtagActionReplace = 2,
    bcmEtagActionDelete = 3
} bcm_etag_action_t;

/* What is done to the label stack of a packet that leaves. */
typedef enum bcm_mpls_egress_action_e {
    bcmMplsEgressActionNop = 0,
    bcmMplsEgressActionSwap = 1,
    bcmMplsEgressActionPush = 2,
    bcmMplsEgressActionPop = 3,
    bcmMplsEgressActionPhp = 4,
    bcmMplsEgressActionCount = 5
} bcm_mpls_egress_action_t;

/* Shared by the port and VLAN families. */
typedef int bcm_port_frametype_t;       /* set of BCM_PORT_FRAMETYPE_* */
typedef int bcm_port_ethertype_t;       /* Ethernet type, 0..65535 */
typedef int bcm_switch_network_group_t; /* ports between which split horizon forbids forwarding */

/* The chip level's own names for a set of ports. */
typedef _shr_pbmp_t soc_pbmp_t;
typedef _shr_pbmp_t pbmp_t;

#endif
