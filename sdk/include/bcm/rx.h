/*
 * Receiving packets at the CPU: the queues they wait in, the buffers they are put into, the callbacks that
 * take them, and what sends a packet to the CPU at all.
 *
 * All functions of a unit return BCM_E_NONE or an error; in common they have BCM_E_UNIT and BCM_E_PARAM.
 * Rates are packets per second, 0 for no limit; bursts are packets.
 */
#ifndef BCM_RX_H
#define BCM_RX_H

#include <bcm/error.h>
#include <bcm/pkt.h>
#include <bcm/rx_reason.h>
#include <bcm/rx_trap.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* DMA channels of a unit, of which those with chains are used. */
#define BCM_RX_CHANNELS 8

/* priority of a callback: higher ones are asked first. */
#define BCM_RX_PRIO_MIN 0
#define BCM_RX_PRIO_MAX 255

/* Microseconds between two looks at the rate limiter's tokens. */
extern int bcm_rx_token_check_us;

/* flags of bcm_rx_register. */
#define BCM_RX_CALLBACK_INTERRUPT 0x00000001 /* called at once, not by the receiving thread */

/* flags of bcm_rx_cfg_t. */
#define BCM_RX_CFG_IGNORE_OVERSIZE 0x00000001 /* packets larger than a buffer are dropped */
#define BCM_RX_CFG_POLLED 0x00000002          /* no interrupts */

/* flags of bcm_rx_chan_cfg_t. */
#define BCM_RX_CHAN_MULTI_BUFFER 0x00000001   /* a packet may take several buffers */

/* flags of bcm_rx_trap_type_create, and of bcm_rx_trap_config_t: which members count. */
typedef enum bcm_rx_trap_flag_e {
    BCM_RX_TRAP_WITH_ID = 0x00000001, /* *trap_id is the id to use */
    BCM_RX_TRAP_UPDATE_DEST = 0x00000002,
    BCM_RX_TRAP_UPDATE_PRIO = 0x00000004,
    BCM_RX_TRAP_UPDATE_POLICER = 0x00000008,
    BCM_RX_TRAP_UPDATE_COUNTER = 0x00000010,
    BCM_RX_TRAP_UPDATE_ENCAP_ID = 0x00000020,
    BCM_RX_TRAP_UPDATE_FORWARDING_HEADER = 0x00000040,
    BCM_RX_TRAP_REPLACE = 0x00000080
} bcm_rx_trap_flag_t;

/* flags of bcm_rx_snoop_create, and of bcm_rx_snoop_config_t. */
#define BCM_RX_SNOOP_WITH_ID 0x00000001       /* *snoop_cmnd is the id to use */
#define BCM_RX_SNOOP_UPDATE_DEST 0x00000002

/* What a callback says about the packet it was given. */
typedef enum bcm_rx_e {
    BCM_RX_INVALID = 0,
    BCM_RX_NOT_HANDLED,                    /* the next callback is asked */
    BCM_RX_HANDLED,                        /* done, the buffer may be used again */
    BCM_RX_HANDLED_OWNED                   /* done, the callback keeps the buffer and frees it */
} bcm_rx_t;

/* Settings of reception on a unit. */
typedef enum bcm_rx_control_e {
    bcmRxControlCrcKeep = 0,               /* 1: the checksum stays behind the data */
    bcmRxControlVlanTagStrip,              /* 1: the outer tag is taken off */
    bcmRxControlSystemHeaderKeep,
    bcmRxControlSystemHeaderParse,         /* 1: system headers go into dnx_header_stack */
    bcmRxControlErrorAccept,               /* 1: damaged packets are delivered too */
    bcmRxControlTruncateLength,            /* bytes, 0 for the whole packet */
    bcmRxControlTimestampFormat,
    bcmRxControlQueueScheduling,           /* 0: strict priority, 1: round robin */
    bcmRxControlQueueBacklogMax,           /* packets */
    bcmRxControlDropOldest,                /* 1: a full queue drops its first packet, not the new one */
    bcmRxControlThreadPriority,
    bcmRxControlThreadYieldCount,          /* packets after which other threads may run */
    bcmRxControlInterruptCoalesceCount,    /* packets per interrupt */
    bcmRxControlInterruptCoalesceTime,     /* microseconds after which there is one in any case */
    bcmRxControlPollInterval,              /* microseconds */
    bcmRxControlPoolLowWatermark,          /* buffers */
    bcmRxControlPoolHighWatermark,
    bcmRxControlFlowControl,               /* 1: the CPU port may stop the switch */
    bcmRxControlRemoteDelivery,            /* 1: packets for other CPUs are passed on */
    bcmRxControlCount
} bcm_rx_control_t;

/* Kinds of destination for which reasons redirect a packet to the CPU instead of copying it. */
typedef enum bcm_rx_redirect_mode_e {
    bcmRxRedirectModeUnicast = 0,
    bcmRxRedirectModeMulticast,
    bcmRxRedirectModeFlood,
    bcmRxRedirectModeRemote,               /* a port of another unit */
    bcmRxRedirectModeCount
} bcm_rx_redirect_mode_t;

/* What a trapped packet is treated as further on. */
typedef enum bcm_rx_forwarding_type_e {
    bcmRxForwardingTypeNone = 0,           /* as it was */
    bcmRxForwardingTypeL2,
    bcmRxForwardingTypeIp4Unicast,
    bcmRxForwardingTypeIp4Multicast,
    bcmRxForwardingTypeIp6Unicast,
    bcmRxForwardingTypeIp6Multicast,
    bcmRxForwardingTypeMpls,
    bcmRxForwardingTypeTrill,
    bcmRxForwardingTypeFcoe,
    bcmRxForwardingTypeRaw,
    bcmRxForwardingTypeCount
} bcm_rx_forwarding_type_t;

typedef int bcm_rx_chan_t;                 /* DMA channel, 0..BCM_RX_CHANNELS - 1 */

/* Called with each packet that no callback of higher priority has handled. */
typedef bcm_rx_t (*bcm_rx_cb_f)(int unit, bcm_pkt_t *pkt, void *cookie);

/* Buffers of pkt_size bytes for reception, and their return. */
typedef int (*bcm_rx_alloc_f)(int unit, int pkt_size, uint32 flags, void **buf);
typedef int (*bcm_rx_free_f)(int unit, void *pkt_data);

/* Says in *sched_channel which channel of sched_unit is served next; unit is the one served before. */
typedef int (*bcm_rx_sched_cb)(int unit, int sched_unit, int *sched_channel);

/* One DMA channel. */
typedef struct bcm_rx_chan_cfg_s {
    int chains;                            /* chains of descriptors, 0 if the channel is not used */
    int rate_pps;
    uint32 flags;                          /* BCM_RX_CHAN_* */
    uint32 cos_bmp;                        /* bit per queue that the channel serves */
} bcm_rx_chan_cfg_t;

/* Reception on a unit. */
typedef struct bcm_rx_cfg_s {
    int pkt_size;                          /* bytes of a buffer */
    int pkts_per_chain;
    int global_pps;
    int max_burst;
    bcm_rx_chan_cfg_t chan_cfg[BCM_RX_CHANNELS];
    bcm_rx_alloc_f rx_alloc;               /* null for the pool's */
    bcm_rx_free_f rx_free;
    uint32 flags;                          /* BCM_RX_CFG_* */
    int num_of_cpu_addresses;
    uint32 *cpu_address;                   /* num_of_cpu_addresses of them; the caller's */
} bcm_rx_cfg_t;

/* What a trap does on one core. */
typedef struct bcm_rx_trap_core_config_s {
    bcm_gport_t dest_port;
    bcm_if_t encap_id;
} bcm_rx_trap_core_config_t;

/* What happens to a packet that meets a trap. Of several traps the one of greatest strength wins. */
typedef struct bcm_rx_trap_config_s {
    uint32 flags;                          /* BCM_RX_TRAP_UPDATE_* */
    bcm_gport_t dest_port;
    bcm_multicast_t dest_group;
    int prio;
    bcm_color_t color;
    bcm_policer_t ether_policer_id;
    bcm_policer_t policer_id;
    int counter_num;
    int trap_strength;                     /* 0 for none */
    int snoop_cmnd;                        /* copy as well */
    int snoop_strength;
    bcm_rx_forwarding_type_t forwarding_type;
    int forwarding_header;                 /* which header of the packet, 0 for the outermost */
    bcm_if_t encap_id;
    int mirror_cmd;
    bcm_rx_trap_core_config_t *core_config_arr; /* in place of dest_port and encap_id, by core; or null */
    int core_config_arr_len;
    int qos_map_id;
} bcm_rx_trap_config_t;

/* Where a snooped copy goes. */
typedef struct bcm_rx_snoop_config_s {
    uint32 flags;                          /* BCM_RX_SNOOP_UPDATE_* */
    bcm_gport_t dest_port;
    bcm_multicast_t dest_group;
    int prio;
    bcm_color_t color;
    bcm_policer_t policer_id;
    int counter_num;
    int size;                              /* bytes copied, -1 for all */
    uint32 probability;                    /* of a copy, in parts of 2^32; 0 for always */
    int encap_id;
} bcm_rx_snoop_config_t;

/* Sets of reasons: clearing one, and the policer of the packets that have one of them. */
void bcm_rx_reasons_t_init(bcm_rx_reasons_t *reasons);
int bcm_rx_reasons_policer_set(int unit, bcm_rx_reasons_t rx_reasons, bcm_policer_t polid);

/*
 * start takes the configuration, or with null the default one, to which cfg_init returns. stop gives back
 * the buffers, whatever cfg is. active is 1 between the two.
 */
int bcm_rx_init(int unit);
int bcm_rx_cfg_init(int unit);
int bcm_rx_start(int unit, bcm_rx_cfg_t *cfg);
int bcm_rx_stop(int unit, bcm_rx_cfg_t *cfg);
int bcm_rx_cfg_get(int unit, bcm_rx_cfg_t *cfg);
int bcm_rx_active(int unit);

/* The order in which units and channels are served; the unit after unit that is active. */
int bcm_rx_sched_register(int unit, bcm_rx_sched_cb sched_cb);
int bcm_rx_sched_unregister(int unit);
int bcm_rx_unit_next_get(int unit, int *unit_next);

/* The highest queue, and of a queue how many packets its rate limit still lets pass and how many wait. */
int bcm_rx_queue_max_get(int unit, bcm_cos_queue_t *cosq);
int bcm_rx_queue_rate_limit_status_get(int unit, bcm_cos_queue_t cosq, int *packet_tokens);
int bcm_rx_queue_packet_count_get(int unit, bcm_cos_queue_t cosq, int *packet_count);

/* Callbacks, by priority; name is for messages and copied. Those of a queue get only its packets. */
int bcm_rx_register(int unit, const char *name, bcm_rx_cb_f callback, uint8 priority, void *cookie,
                    uint32 flags);
int bcm_rx_unregister(int unit, bcm_rx_cb_f callback, uint8 priority);
int bcm_rx_queue_register(int unit, const char *name, bcm_cos_queue_t cosq, bcm_rx_cb_f callback,
                          uint8 priority, void *cookie, uint32 flags);
int bcm_rx_queue_unregister(int unit, bcm_cos_queue_t cosq, bcm_rx_cb_f callback, uint8 priority);

/*
 * The table that says which queue a packet waits in: the first entry, by index, that it agrees with in the
 * bits of the masks. size_get says how many entries fit and are in use, mapping_reasons_get gives the
 * reasons that may be in a mask, reasons_get all that the unit can give.
 */
int bcm_rx_cosq_mapping_size_get(int unit, int *size, int *used);
int bcm_rx_cosq_mapping_set(int unit, int index, bcm_rx_reasons_t reasons, bcm_rx_reasons_t reasons_mask,
                            uint8 int_prio, uint8 int_prio_mask, uint32 packet_type,
                            uint32 packet_type_mask, bcm_cos_queue_t cosq);
int bcm_rx_cosq_mapping_get(int unit, int index, bcm_rx_reasons_t *reasons, bcm_rx_reasons_t *reasons_mask,
                            uint8 *int_prio, uint8 *int_prio_mask, uint32 *packet_type,
                            uint32 *packet_type_mask, bcm_cos_queue_t *cosq);
int bcm_rx_cosq_mapping_delete(int unit, int index);
int bcm_rx_cosq_mapping_reasons_get(int unit, bcm_rx_reasons_t *reasons);
int bcm_rx_reasons_get(int unit, bcm_rx_reasons_t *reasons);

/* The DMA channel that serves a queue, and the channels that run, one bit each. */
int bcm_rx_queue_channel_set(int unit, bcm_cos_queue_t queue_id, bcm_rx_chan_t chan_id);
int bcm_rx_queue_channel_get(int unit, bcm_cos_queue_t queue_id, bcm_rx_chan_t *chan_id);
int bcm_rx_channels_running(int unit, uint32 *channels);

/* Buffers, from rx_alloc of the configuration. free_enqueue may be called from interrupts. */
int bcm_rx_alloc(int unit, int pkt_size, uint32 flags, void **buf);
int bcm_rx_free(int unit, void *pkt_data);
int bcm_rx_free_enqueue(int unit, void *pkt_data);

/* Limits of all channels together, of what the CPU port is sent, and of single queues (cos). */
int bcm_rx_rate_set(int unit, int pps);
int bcm_rx_rate_get(int unit, int *pps);
int bcm_rx_cpu_rate_set(int unit, int pps);
int bcm_rx_cpu_rate_get(int unit, int *pps);
int bcm_rx_burst_set(int unit, int max_pkts);
int bcm_rx_burst_get(int unit, int *max_pkts);
int bcm_rx_cos_rate_set(int unit, int cos, int pps);
int bcm_rx_cos_rate_get(int unit, int cos, int *pps);
int bcm_rx_cos_burst_set(int unit, int cos, int max_pkts);
int bcm_rx_cos_burst_get(int unit, int cos, int *max_pkts);

/* The most packets that may wait in a queue; more are dropped. */
int bcm_rx_cos_max_len_set(int unit, int cos, int max_q_len);
int bcm_rx_cos_max_len_get(int unit, int cos, int *max_q_len);

/* Stops reception and drops all callbacks. */
int bcm_rx_clear(int unit);

void bcm_rx_cfg_t_init(bcm_rx_cfg_t *rx_cfg);

/* Packets that came through another CPU: they are put into the queues of unit as if received there. */
int bcm_rx_remote_pkt_alloc(int len, bcm_pkt_t **pkt);
int bcm_rx_remote_pkt_free(bcm_pkt_t *pkt);
int bcm_rx_remote_pkt_enqueue(int unit, bcm_pkt_t *pkt);

/* Prints the state of reception to standard output. */
int bcm_rx_show(int unit);

/*
 * The pool of buffers that all units share: how many of what size. setup_done is 1 after setup; cleanup
 * gives BCM_E_BUSY while a buffer is out.
 */
int bcm_rx_pool_setup(int pkt_count, int bytes_per_pkt);
int bcm_rx_pool_setup_done(void);
int bcm_rx_pool_cleanup(void);
int bcm_rx_pool_alloc(int unit, int size, uint32 flags, void **pool);
int bcm_rx_pool_free(int unit, void *pool);

int bcm_rx_control_get(int unit, bcm_rx_control_t type, int *arg);
int bcm_rx_control_set(int unit, bcm_rx_control_t type, int arg);

/* Reasons for which a packet goes to the CPU instead of to a destination of the kind that mode says. */
int bcm_rx_redirect_reasons_get(int unit, bcm_rx_redirect_mode_t mode, bcm_rx_reasons_t *reasons);

void bcm_rx_trap_config_t_init(bcm_rx_trap_config_t *trap_config);
void bcm_rx_snoop_config_t_init(bcm_rx_snoop_config_t *snoop_config);

/*
 * Traps. create makes an instance of a type and returns its id; get gives the one of a type that exists
 * only once, from_id the type of an instance.
 */
int bcm_rx_trap_type_create(int unit, uint32 flags, bcm_rx_trap_t type, int *trap_id);
int bcm_rx_trap_type_get(int unit, uint32 flags, bcm_rx_trap_t type, int *trap_id);
int bcm_rx_trap_type_from_id_get(int unit, uint32 flags, int trap_id, bcm_rx_trap_t *type);
int bcm_rx_trap_type_destroy(int unit, int trap_id);
int bcm_rx_trap_set(int unit, int trap_id, bcm_rx_trap_config_t *config);
int bcm_rx_trap_get(int unit, int trap_id, bcm_rx_trap_config_t *config);

/* Snoop commands: copies of packets that go on. */
int bcm_rx_snoop_set(int unit, int snoop_cmnd, bcm_rx_snoop_config_t *snoop_config);
int bcm_rx_snoop_get(int unit, int snoop_cmnd, bcm_rx_snoop_config_t *snoop_config);
int bcm_rx_snoop_create(int unit, uint32 flags, int *snoop_cmnd);
int bcm_rx_snoop_destroy(int unit, int snoop_cmnd);

int bcm_rx_redirect_reasons_set(int unit, bcm_rx_redirect_mode_t mode, bcm_rx_reasons_t reasons);

#ifdef __cplusplus
}
#endif

#endif
