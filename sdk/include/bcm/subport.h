/*
 * Subports: the channels that a port is divided into by a tag (VLAN, or LinkPHY stream), each a port of its
 * own to the switch. Subports belong to groups, one or several to a port.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, port or tag out of range, unknown flag). Functions that take a
 * group or a subport give BCM_E_NOT_FOUND if it does not exist.
 */
#ifndef BCM_SUBPORT_H
#define BCM_SUBPORT_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_subport_group_config_t. */
#define BCM_SUBPORT_GROUP_WITH_ID 0x00000001     /* *group is the id to use */
#define BCM_SUBPORT_GROUP_VLAN 0x00000002        /* subports are told apart by VLAN tag */
#define BCM_SUBPORT_GROUP_LINKPHY 0x00000004     /* subports are told apart by LinkPHY stream */

/* flags of bcm_subport_config_t. */
#define BCM_SUBPORT_WITH_ID 0x00000001           /* *subport is the id to use */
#define BCM_SUBPORT_UNTAGGED 0x00000002          /* packets leave without the tag */

/* What can be wrong with a received LinkPHY fragment: bits of bcm_subport_linkphy_rx_errors_t. */
typedef enum bcm_subport_linkphy_rx_error_e {
    BCM_SUBPORT_LINKPHY_RX_ERROR_SEQUENCE = 0, /* a fragment is missing */
    BCM_SUBPORT_LINKPHY_RX_ERROR_LENGTH = 1,
    BCM_SUBPORT_LINKPHY_RX_ERROR_STREAM = 2,   /* no subport has the stream */
    BCM_SUBPORT_LINKPHY_RX_ERROR_OVERFLOW = 3, /* no room to put the packet together */
    BCM_SUBPORT_LINKPHY_RX_ERROR_MAC = 4       /* not one of the addresses of the group */
} bcm_subport_linkphy_rx_error_t;

/* Counters of a subport. */
typedef enum bcm_subport_stat_e {
    bcmSubportStatRxPackets = 0,
    bcmSubportStatRxErrors = 1,
    bcmSubportStatTxPackets = 2,
    bcmSubportStatTxDrops = 3
} bcm_subport_stat_t;

/* A group of subports. */
typedef struct bcm_subport_group_config_s {
    uint32 flags;                  /* BCM_SUBPORT_GROUP_* */
    bcm_port_t port;               /* the port that is divided */
    bcm_vlan_t vlan;               /* outer tag of all subports, 0 for none */
    bcm_tpid_t tpid[2][4];         /* of the outer and inner tags that tell subports apart, 0 for no more */
    int subports_max;
} bcm_subport_group_config_t;

/* A subport: the tag that it is known by, and its place in the switch. */
typedef struct bcm_subport_config_s {
    uint32 flags;                  /* BCM_SUBPORT_* */
    bcm_gport_t group;
    bcm_vlan_t pkt_vlan;           /* its tag, in groups that are told apart by VLAN */
    int linkphy_stream;            /* its stream, in LinkPHY groups */
    int int_pri;                   /* of its packets, -1 for what their tags say */
    bcm_color_t color;
    bcm_vlan_t default_vlan;       /* of its untagged packets */
    bcm_cos_queue_t cosq;          /* first of its queues */
} bcm_subport_config_t;

/* A set of errors, one bit each, BCM_SUBPORT_LINKPHY_RX_ERROR_*. */
typedef struct bcm_subport_linkphy_rx_errors_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(32)];
} bcm_subport_linkphy_rx_errors_t;

/* LinkPHY of a group: addresses and types of the frames that carry fragments, and how packets are cut. */
typedef struct bcm_subport_group_linkphy_config_s {
    uint32 flags;
    bcm_mac_t rx_nearend_mac;      /* address that fragments are sent to */
    bcm_mac_t rx_farend_mac;       /* address that they come from */
    bcm_mac_t rx_dfc_dest_mac;     /* address of received flow control */
    bcm_ethertype_t rx_ethertype;
    bcm_vlan_t rx_vlan;
    bcm_tpid_t rx_vlan_tpid;
    int rx_stream_first;           /* streams of the group */
    int rx_stream_last;
    bcm_mac_t tx_nearend_mac;
    bcm_mac_t tx_farend_mac;
    bcm_ethertype_t tx_ethertype;
    bcm_vlan_t tx_vlan;
    bcm_tpid_t tx_vlan_tpid;
    uint8 tx_vlan_prio;
    int tx_fragment_size;          /* bytes: 64, 128, 256 or 512 */
} bcm_subport_group_linkphy_config_t;

/* A fragment that had errors. */
typedef struct bcm_subport_linkphy_rx_error_data_s {
    bcm_subport_linkphy_rx_errors_t rx_errors;
    bcm_gport_t group;
    int linkphy_stream;
    int sequence;                  /* number of the fragment in its packet */
    int fragment_size;
} bcm_subport_linkphy_rx_error_data_t;

/* Called when fragments had errors; data is valid during the call. */
typedef void (*bcm_subport_linkphy_rx_error_callback)(int unit, bcm_subport_linkphy_rx_error_data_t *data,
                                                      void *user_data);

/* Who is told of errors. */
typedef struct bcm_subport_linkphy_rx_error_reg_info_s {
    bcm_gport_t group;             /* whose errors, -1 for all groups */
    bcm_subport_linkphy_rx_error_callback cb;
    void *user_data;
} bcm_subport_linkphy_rx_error_reg_info_t;

/* Called once per subport, by ascending id; a negative result ends the traversal with it. */
typedef int (*bcm_subport_port_traverse_cb)(int unit, bcm_gport_t subport, bcm_subport_config_t *config,
                                            void *user_data);

/* The module. init and cleanup destroy all subports and groups. */
int bcm_subport_init(int unit);
int bcm_subport_cleanup(int unit);

/* Integer members zero, gports and priorities -1. */
void bcm_subport_group_config_t_init(bcm_subport_group_config_t *config);
void bcm_subport_config_t_init(bcm_subport_config_t *config);
void bcm_subport_group_linkphy_config_t_init(bcm_subport_group_linkphy_config_t *config);
void bcm_subport_linkphy_rx_error_reg_info_t_init(bcm_subport_linkphy_rx_error_reg_info_t *info);

/*
 * Groups. BCM_E_EXISTS, BCM_E_FULL; destroy destroys the subports too, get says how many there are, traverse
 * visits those of a group. enable: whether packets are sent in fragments, as config says.
 */
int bcm_subport_group_create(int unit, bcm_subport_group_config_t *config, bcm_gport_t *group);
int bcm_subport_group_destroy(int unit, bcm_gport_t group);
int bcm_subport_group_get(int unit, bcm_gport_t group, bcm_subport_group_config_t *config,
                          int *subport_count);
int bcm_subport_group_traverse(int unit, bcm_gport_t group, bcm_subport_port_traverse_cb cb,
                               void *user_data);
int bcm_subport_group_linkphy_config_set(int unit, bcm_gport_t group, int enable,
                                         bcm_subport_group_linkphy_config_t *config);
int bcm_subport_group_linkphy_config_get(int unit, bcm_gport_t group, int *enable,
                                         bcm_subport_group_linkphy_config_t *config);

/* Subports. add gives BCM_E_EXISTS for a tag or stream that the group has already. cos of -1: all classes. */
int bcm_subport_port_add(int unit, bcm_subport_config_t *config, bcm_gport_t *subport);
int bcm_subport_port_delete(int unit, bcm_gport_t subport);
int bcm_subport_port_get(int unit, bcm_gport_t subport, bcm_subport_config_t *config);
int bcm_subport_port_traverse(int unit, bcm_subport_port_traverse_cb cb, void *user_data);
int bcm_subport_port_stat_get(int unit, bcm_gport_t subport, bcm_cos_t cos, bcm_subport_stat_t stat,
                              uint64 *value);
int bcm_subport_port_stat_set(int unit, bcm_gport_t subport, bcm_cos_t cos, bcm_subport_stat_t stat,
                              uint64 value);

/* Reports of the errors in rx_errors; the same info again adds to them. BCM_E_NOT_FOUND. */
int bcm_subport_linkphy_rx_error_register(int unit, bcm_subport_linkphy_rx_errors_t rx_errors,
                                          bcm_subport_linkphy_rx_error_reg_info_t *info);
int bcm_subport_linkphy_rx_error_unregister(int unit, bcm_subport_linkphy_rx_errors_t rx_errors,
                                            bcm_subport_linkphy_rx_error_reg_info_t *info);

#ifdef __cplusplus
}
#endif

#endif
