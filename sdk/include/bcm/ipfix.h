/*
 * IPFIX: the chip keeps a record of each flow of packets and exports it when the flow has ended.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer, port or stage out of range, unknown flag). Where a port is taken,
 * -1 means all ports.
 */
#ifndef BCM_IPFIX_H
#define BCM_IPFIX_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Where flows are seen. */
typedef enum bcm_ipfix_stage_e {
    bcmIpfixStageIngress = 0,
    bcmIpfixStageEgress = 1
} bcm_ipfix_stage_t;

/* entry_type of bcm_ipfix_data_t: what identifies the flow. */
typedef enum bcm_ipfix_entry_type_e {
    BCM_IPFIX_ENTRY_TYPE_L2 = 0,
    BCM_IPFIX_ENTRY_TYPE_IP4 = 1,
    BCM_IPFIX_ENTRY_TYPE_IP6 = 2
} bcm_ipfix_entry_type_t;

/* flags of bcm_ipfix_data_t: why the record was exported, and what the flow was. */
#define BCM_IPFIX_DATA_FLAG_FLOW_END 0x00000001    /* a TCP packet ended the flow */
#define BCM_IPFIX_DATA_FLAG_AGED 0x00000002
#define BCM_IPFIX_DATA_FLAG_COUNTER_FULL 0x00000004
#define BCM_IPFIX_DATA_FLAG_MULTICAST 0x00000008

/* flags of bcm_ipfix_config_t. */
#define BCM_IPFIX_CONFIG_IP4_ENABLE 0x00000001
#define BCM_IPFIX_CONFIG_IP6_ENABLE 0x00000002
#define BCM_IPFIX_CONFIG_NON_IP_ENABLE 0x00000004
#define BCM_IPFIX_CONFIG_TCP_END_DETECT 0x00000008 /* a FIN or RST packet ends a flow */

/* flags of bcm_ipfix_rate_t. */
#define BCM_IPFIX_RATE_WITH_ID 0x00000001          /* rate_id is the id to use */
#define BCM_IPFIX_RATE_MODE_PACKETS 0x00000002     /* rates in packets instead of bytes */

/* The record of a flow. Times are in ticks of the chip's clock since it started. */
typedef struct bcm_ipfix_data_s {
    uint32 flags;                  /* BCM_IPFIX_DATA_FLAG_* */
    bcm_ipfix_stage_t stage;
    bcm_port_t port;
    int entry_type;                /* BCM_IPFIX_ENTRY_TYPE_* */
    bcm_vlan_t vlan;
    bcm_mac_t src_mac_addr;
    bcm_mac_t dst_mac_addr;
    bcm_ethertype_t ethertype;
    bcm_ip_t src_ip_addr;
    bcm_ip_t dst_ip_addr;
    bcm_ip6_t src_ip6_addr;
    bcm_ip6_t dst_ip6_addr;
    uint32 ip6_flow_label;
    uint8 ip_protocol;
    uint8 ip_ttl_min;
    uint8 ip_ttl_max;
    uint8 ip_tos;                  /* of the first packet */
    uint32 ip_length_min;
    uint32 ip_length_max;
    int ip_fragment_info;
    bcm_l4_port_t l4_src_port;
    bcm_l4_port_t l4_dst_port;
    uint8 tcp_flags;               /* of all packets */
    uint8 icmp_type;
    uint8 icmp_code;
    uint32 time_start;
    uint32 time_end;
    uint64 byte_count;
    uint64 packet_count;
    uint64 dropped_byte_count;
    uint64 dropped_packet_count;
} bcm_ipfix_data_t;

/* Which flows of a port are recorded, and when they are exported. */
typedef struct bcm_ipfix_config_s {
    uint32 flags;                  /* BCM_IPFIX_CONFIG_* */
    uint32 byte_threshold;         /* counts from which on a flow is exported at all, 0 for every flow */
    uint32 packet_threshold;
    int sample_rate;               /* one packet of so many is recorded, 0 for all */
    int inactive_timeout;          /* ms without a packet after which a flow has ended */
    int active_timeout;            /* ms after which a lasting flow is exported */
    int ip4_src_prefix_len;        /* bits of addresses that tell flows apart */
    int ip4_dst_prefix_len;
    int ip6_src_prefix_len;
    int ip6_dst_prefix_len;
    int max_flows;                 /* of the port, 0 for as many as fit */
} bcm_ipfix_config_t;

/* A meter that a flow can be given. */
typedef struct bcm_ipfix_rate_s {
    int rate_id;
    uint32 flags;                  /* BCM_IPFIX_RATE_* */
    uint32 rate;                   /* kbit/s, or packets/s */
    uint32 burst;                  /* kbit, or packets */
    bcm_color_t exceed_color;      /* of packets over the rate */
    uint32 mirror_rate;            /* share of mirrored packets, one of so many, 0 for none */
} bcm_ipfix_rate_t;

/* Where the packets of a metered flow are mirrored, and how many of them. */
typedef struct bcm_ipfix_mirror_config_s {
    uint32 flags;
    bcm_gport_t mirror_dest_id;
    int initial_packets;           /* first packets of a flow that are mirrored */
    int sample_interval;           /* then one packet of so many */
    int max_packets;               /* of a flow, 0 for no limit */
    bcm_color_t min_color;         /* of packets that are mirrored */
    int truncate_length;           /* bytes of a packet, 0 for all */
} bcm_ipfix_mirror_config_t;

/* Called with each exported record, which is valid during the call. */
typedef void (*bcm_ipfix_callback_t)(int unit, bcm_ipfix_data_t *export_data, void *userdata);

/* Called once per meter, by ascending id; a negative result ends the traversal with it. */
typedef int (*bcm_ipfix_rate_traverse_cb)(int unit, bcm_ipfix_rate_t *rate_info, void *user_data);

/* The module. init forgets all flows, meters, settings and callbacks. */
int bcm_ipfix_init(int unit);
int bcm_ipfix_detach(int unit);

/* All members zero. */
void bcm_ipfix_config_t_init(bcm_ipfix_config_t *config);
void bcm_ipfix_rate_t_init(bcm_ipfix_rate_t *rate_info);
void bcm_ipfix_mirror_config_t_init(bcm_ipfix_mirror_config_t *config);

/* Receivers of exported records, several at a time; the pair of callback and userdata counts. */
int bcm_ipfix_register(int unit, bcm_ipfix_callback_t callback, void *userdata);
int bcm_ipfix_unregister(int unit, bcm_ipfix_callback_t callback, void *userdata);

/* What is recorded at a stage of a port. */
int bcm_ipfix_config_set(int unit, bcm_ipfix_stage_t stage, bcm_port_t port, bcm_ipfix_config_t *config);
int bcm_ipfix_config_get(int unit, bcm_ipfix_stage_t stage, bcm_port_t port, bcm_ipfix_config_t *config);

/* Flows of a port: exports them at once, and says how many; how many it has now, how many found no room. */
int bcm_ipfix_flush(int unit, bcm_ipfix_stage_t stage, bcm_port_t port, uint32 *flows);
int bcm_ipfix_flow_count_get(int unit, bcm_ipfix_stage_t stage, bcm_port_t port, uint32 *flows);
int bcm_ipfix_lost_count_get(int unit, bcm_ipfix_stage_t stage, bcm_port_t port, uint32 *flows);

/*
 * Meters. create chooses the lowest free id unless BCM_IPFIX_RATE_WITH_ID, and writes it to rate_id; get also
 * says how many flows the meter has. create gives BCM_E_EXISTS or BCM_E_FULL; get and destroy
 * give BCM_E_NOT_FOUND, and destroy BCM_E_BUSY while the meter has ports to mirror to.
 */
int bcm_ipfix_rate_create(int unit, bcm_ipfix_rate_t *rate_info);
int bcm_ipfix_rate_destroy(int unit, int rate_id);
int bcm_ipfix_rate_destroy_all(int unit);
int bcm_ipfix_rate_set(int unit, int rate_id, bcm_ipfix_rate_t *rate_info);
int bcm_ipfix_rate_get(int unit, int rate_id, bcm_ipfix_rate_t *rate_info, int *flow_count);
int bcm_ipfix_rate_traverse(int unit, bcm_ipfix_rate_traverse_cb cb, void *user_data);

/* Mirroring of the flows of a meter. */
int bcm_ipfix_rate_mirror_add(int unit, int rate_id, bcm_ipfix_mirror_config_t *config);
int bcm_ipfix_rate_mirror_get(int unit, int rate_id, bcm_gport_t mirror_dest_id,
                              bcm_ipfix_mirror_config_t *config);
int bcm_ipfix_rate_mirror_delete(int unit, int rate_id, bcm_gport_t mirror_dest_id);
int bcm_ipfix_rate_mirror_delete_all(int unit, int rate_id);

#ifdef __cplusplus
}
#endif

#endif
