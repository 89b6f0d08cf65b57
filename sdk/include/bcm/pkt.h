/*
 * Packets that the CPU sends and receives: the record, and the buffers behind it.
 *
 * The bytes of a packet are in blk_count blocks, one after the other, that pkt_data points to. Buffers come
 * from memory that the switch can reach; those of bcm_pkt_alloc and the like go back by the matching free.
 * BCM_E_PARAM: null pointer or a size below 0; BCM_E_MEMORY: no buffer left.
 */
#ifndef BCM_PKT_H
#define BCM_PKT_H

#include <bcm/error.h>
#include <bcm/rx_reason.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Lengths in bytes of what precedes a packet, in host memory as on the wire. */
#define BCM_PKT_VTAG_LEN 4             /* a VLAN tag */
#define BCM_PKT_SLTAG_LEN 4            /* the tag of a stacking link */
#define BCM_PKT_HIGIG_LEN 24           /* the header of a stacking port */
#define BCM_PKT_PB_HDR_LEN 9           /* the header of a port extender */
#define BCM_PKT_ROUTE_HDR_LEN 32       /* the route header of a fabric */
#define BCM_PKT_SYSTEM_HDR_LEN 32      /* the system headers of a fabric */
#define BCM_PKT_OLP_HDR_LEN 20         /* the header to an off-chip processor */

/* Elements of oam_counter and dnx_header_stack. */
#define BCM_PKT_OAM_COUNTER_MAX 3
#define BCM_PKT_DNX_HEADER_MAX 8

/* flags of bcm_pkt_t; those of bcm/tx.h stand in the same member. */
typedef enum bcm_pkt_flag_e {
    BCM_PKT_F_NO_VTAG = 0x00000001,            /* the data has no VLAN tag */
    BCM_PKT_F_TRUNK = 0x00000002,              /* arrived through trunk src_trunk */
    BCM_PKT_F_ROUTED = 0x00000004,             /* was routed before it came to the CPU */
    BCM_PKT_F_HDR_STACK = 0x00000008,          /* send with the headers in dnx_header_stack */
    BCM_PKT_F_TIMESYNC = 0x00000010,           /* send as a time message: */
    BCM_PKT_F_ONE_STEP_TIMESTAMP = 0x00000020, /* the time of departure goes into the packet */
    BCM_PKT_F_TWO_STEP_TIMESTAMP = 0x00000040  /* the time of departure is kept, to be read later */
} bcm_pkt_flag_t;

/* flags2 of bcm_pkt_t: how a received packet came to be a copy. */
#define BCM_PKT_F2_SNOOPED 0x00000001
#define BCM_PKT_F2_MIRRORED 0x00000002

/* opcode of bcm_pkt_t: what kind of destination a packet on a stacking link has. */
typedef enum bcm_pkt_opcode_e {
    BCM_PKT_OPCODE_CPU = 0,  /* the CPU of dest_mod */
    BCM_PKT_OPCODE_UC = 1,   /* a port */
    BCM_PKT_OPCODE_BC = 2,   /* all ports of its VLAN */
    BCM_PKT_OPCODE_L2MC = 3, /* a group within its VLAN */
    BCM_PKT_OPCODE_IPMC = 4  /* a group that is routed */
} bcm_pkt_opcode_t;

/* stk_flags of bcm_pkt_t: which stk_ members count, and what the next unit leaves undone. */
typedef enum bcm_pkt_stk_flag_e {
    BCM_PKT_STK_F_CLASSIFICATION_TAG = 0x00000001,
    BCM_PKT_STK_F_ENCAP_ID = 0x00000002,
    BCM_PKT_STK_F_DSCP = 0x00000004,
    BCM_PKT_STK_F_LOAD_BALANCING_NUMBER = 0x00000008,
    BCM_PKT_STK_F_DO_NOT_MODIFY = 0x00000010,
    BCM_PKT_STK_F_DO_NOT_LEARN = 0x00000020
} bcm_pkt_stk_flag_t;

/* timestamp_flags of bcm_pkt_t. */
#define BCM_PKT_TIMESTAMP_VALID 0x00000001 /* rx_timestamp and rx_timestamp_upper count */

/* What happened to a tag of a received packet. */
typedef enum bcm_pkt_vlan_action_e {
    bcmPktVlanActionNone = 0,
    bcmPktVlanActionAdd,
    bcmPktVlanActionReplace,
    bcmPktVlanActionDelete
} bcm_pkt_vlan_action_t;

/* How far the unit before got with a packet that arrives on a stacking link. */
typedef enum bcm_pkt_stk_forward_e {
    bcmPktStkForwardPort = 0,              /* destination given, nothing looked up */
    bcmPktStkForwardL2Unicast,
    bcmPktStkForwardL3Unicast,
    bcmPktStkForwardL2Multicast,
    bcmPktStkForwardL3Multicast,
    bcmPktStkForwardFlood
} bcm_pkt_stk_forward_t;

/* What the switch writes into an OAM message that it sends. */
typedef enum bcm_pkt_oam_replacement_type_e {
    bcmPktOamReplacementTypeNone = 0,
    bcmPktOamReplacementTypeTxCounter,
    bcmPktOamReplacementTypeRxCounter,
    bcmPktOamReplacementTypeTxTimestamp
} bcm_pkt_oam_replacement_type_t;

/* Format of a time stamp that is written into a packet. */
typedef enum bcm_pkt_timestamp_mode_e {
    bcmPktTimestampModeNone = 0,
    bcmPktTimestampModeNtp64,
    bcmPktTimestampModePtp48,
    bcmPktTimestampModePtp64
} bcm_pkt_timestamp_mode_t;

/* What becomes of a counter when an OAM message passes it. */
typedef enum bcm_pkt_oam_counter_mode_e {
    bcmPktOamCounterModeNone = 0,
    bcmPktOamCounterModeIncrement,
    bcmPktOamCounterModeSample             /* its value goes into the message */
} bcm_pkt_oam_counter_mode_t;

/* The headers of a dnx device: which one a bcm_pkt_dnx_t holds. */
typedef enum bcm_pkt_dnx_type_e {
    bcmPktDnxTypeItmh = 0,                 /* how a packet is to be treated on its arrival */
    bcmPktDnxTypeFtmh,                     /* its way through the fabric */
    bcmPktDnxTypeOtsh,                     /* OAM and time */
    bcmPktDnxTypeOtmh,                     /* how it leaves */
    bcmPktDnxTypeInternal                 /* why it was trapped */
} bcm_pkt_dnx_type_t;

/* What the destination of an ITMH is. */
typedef enum bcm_pkt_dnx_itmh_dest_type_e {
    bcmPktDnxItmhDestTypeSystemPort = 0,
    bcmPktDnxItmhDestTypeTrunk,
    bcmPktDnxItmhDestTypeMulticast,
    bcmPktDnxItmhDestTypeFlow
} bcm_pkt_dnx_itmh_dest_type_t;

/* What a copy is in the fabric. */
typedef enum bcm_pkt_dnx_ftmh_action_type_e {
    bcmPktDnxFtmhActionTypeForward = 0,
    bcmPktDnxFtmhActionTypeSnoop,
    bcmPktDnxFtmhActionTypeInboundMirror,
    bcmPktDnxFtmhActionTypeOutboundMirror
} bcm_pkt_dnx_ftmh_action_type_t;

/* Which of its two uses an OTSH has. */
typedef enum bcm_pkt_dnx_otsh_type_e {
    bcmPktDnxOtshTypeOam = 0,
    bcmPktDnxOtshTypeTimesync
} bcm_pkt_dnx_otsh_type_t;

/* Kind of tunnel that was taken off a received packet. */
typedef enum bcm_rx_decap_tunnel_e {
    bcmRxDecapTunnelNone = 0,
    bcmRxDecapTunnelIp,
    bcmRxDecapTunnelGre,
    bcmRxDecapTunnelMinimal,
    bcmRxDecapTunnelSixToFour,
    bcmRxDecapTunnelIsatap,
    bcmRxDecapTunnelAutomaticMulticast,
    bcmRxDecapTunnelVxlan,
    bcmRxDecapTunnelNvgre,
    bcmRxDecapTunnelGeneve,
    bcmRxDecapTunnelMpls,
    bcmRxDecapTunnelPseudowire,
    bcmRxDecapTunnelMim,
    bcmRxDecapTunnelTrill,
    bcmRxDecapTunnelWlan,
    bcmRxDecapTunnelCount
} bcm_rx_decap_tunnel_t;

/* Kind of OAM message received. */
typedef enum bcm_rx_oam_pkt_type_e {
    bcmRxOamPktTypeNone = 0,
    bcmRxOamPktTypeContinuityCheck,
    bcmRxOamPktTypeLoopbackMessage,
    bcmRxOamPktTypeLoopbackReply,
    bcmRxOamPktTypeLinktraceMessage,
    bcmRxOamPktTypeLinktraceReply,
    bcmRxOamPktTypeLossMessage,
    bcmRxOamPktTypeLossReply,
    bcmRxOamPktTypeDelayMessage,
    bcmRxOamPktTypeDelayReply,
    bcmRxOamPktTypeOneWayDelay,
    bcmRxOamPktTypeSyntheticLossMessage,
    bcmRxOamPktTypeSyntheticLossReply,
    bcmRxOamPktTypeMplsLossDelay,
    bcmRxOamPktTypeBfd,
    bcmRxOamPktTypeCount
} bcm_rx_oam_pkt_type_t;

typedef struct bcm_pkt_s bcm_pkt_t;

/* Called when a packet has left and its buffers may be used again; cookie is that of the call to send. */
typedef void (*bcm_pkt_cb_f)(int unit, bcm_pkt_t *pkt, void *cookie);

/* A piece of a packet. */
typedef struct bcm_pkt_blk_s {
    uint8 *data;
    int len;                               /* bytes */
} bcm_pkt_blk_t;

/* A counter that an OAM message of this packet reads or changes. */
typedef struct bcm_pkt_oam_counter_s {
    uint8 counter_object;                  /* counter engine, numbered from 0 */
    uint32 counter_object_id;
    uint8 counter_offset;
    bcm_pkt_oam_counter_mode_t counter_mode;
    uint32 counter_value_upper;
    uint32 counter_value_lower;
    uint8 oam_lm_byte_count_offset;
} bcm_pkt_oam_counter_t;

/* Where an ITMH sends a packet. */
typedef struct bcm_pkt_dnx_itmh_dest_s {
    bcm_pkt_dnx_itmh_dest_type_t dest_type;
    uint32 dest_extension_type;
    uint32 destination;                    /* by dest_type */
    uint32 multicast_id;
    uint32 destination_ext;
} bcm_pkt_dnx_itmh_dest_t;

/* Ingress traffic management header. */
typedef struct bcm_pkt_dnx_itmh_s {
    uint8 inbound_mirror_disable;
    uint32 snoop_cmnd;
    uint32 prio;                           /* traffic class, 0..7 */
    uint32 color;                          /* drop precedence, 0..3 */
    bcm_pkt_dnx_itmh_dest_t dest;
} bcm_pkt_dnx_itmh_t;

/* Extensions of the FTMH. */
typedef struct bcm_pkt_dnx_ftmh_lb_extension_s {
    uint8 valid;
    uint32 lb_key;                         /* what load balancing goes by */
} bcm_pkt_dnx_ftmh_lb_extension_t;

typedef struct bcm_pkt_dnx_ftmh_dest_extension_s {
    uint8 valid;
    uint32 dst_sysport;
} bcm_pkt_dnx_ftmh_dest_extension_t;

typedef struct bcm_pkt_dnx_ftmh_stack_extension_s {
    uint8 valid;
    uint16 stack_route_history_bmp;        /* units that the packet has been to */
} bcm_pkt_dnx_ftmh_stack_extension_t;

/* Fabric traffic management header. */
typedef struct bcm_pkt_dnx_ftmh_s {
    uint32 packet_size;                    /* bytes */
    uint32 prio;                           /* traffic class, 0..7 */
    uint32 src_sysport;
    uint32 dst_port;                       /* port of the chip at which the packet leaves */
    uint32 ftmh_dp;                        /* drop precedence, 0..3 */
    bcm_pkt_dnx_ftmh_action_type_t action_type;
    uint8 out_mirror_disable;
    uint8 is_mc_traffic;
    uint32 multicast_id;
    uint32 out_vport;
    uint32 cni;                            /* 1 if it met congestion */
    bcm_pkt_dnx_ftmh_lb_extension_t lb_ext;
    bcm_pkt_dnx_ftmh_dest_extension_t dest_ext;
    bcm_pkt_dnx_ftmh_stack_extension_t stack_ext;
} bcm_pkt_dnx_ftmh_t;

/* OAM and time stamp header. */
typedef struct bcm_pkt_dnx_otsh_s {
    bcm_pkt_dnx_otsh_type_t otsh_type;
    uint32 oam_sub_type;
    uint8 oam_up_mep;
    uint32 tp_cmd;
    uint32 ts_encap;
    uint32 oam_ts_data;                    /* counter or time stamp */
    uint32 latency_flow_ID;
    uint32 offset;                         /* bytes to where the counter or time stamp is written */
} bcm_pkt_dnx_otsh_t;

/* Extensions of the OTMH. */
typedef struct bcm_pkt_dnx_otmh_src_sysport_extension_s {
    uint8 valid;
    uint32 src_sysport;
} bcm_pkt_dnx_otmh_src_sysport_extension_t;

typedef struct bcm_pkt_dnx_otmh_vport_extension_s {
    uint8 valid;
    uint32 out_vport;
} bcm_pkt_dnx_otmh_vport_extension_t;

/* Outgoing traffic management header. */
typedef struct bcm_pkt_dnx_otmh_s {
    bcm_pkt_dnx_ftmh_action_type_t action_type;
    uint32 ftmh_dp;
    uint8 is_mc_traffic;
    uint32 prio;
    uint32 dst_port;
    bcm_pkt_dnx_otmh_src_sysport_extension_t src_sysport_ext;
    bcm_pkt_dnx_otmh_vport_extension_t out_vport_ext;
} bcm_pkt_dnx_otmh_t;

/* Internal header: the trap that a packet met, and what the trap says about it. */
typedef struct bcm_pkt_dnx_internal_s {
    uint32 trap_qualifier;
    uint32 trap_id;
} bcm_pkt_dnx_internal_t;

/* One header of the stack before a packet. */
typedef struct bcm_pkt_dnx_s {
    bcm_pkt_dnx_type_t type;               /* which of the members below counts */
    bcm_pkt_dnx_itmh_t itmh;
    bcm_pkt_dnx_ftmh_t ftmh;
    bcm_pkt_dnx_otsh_t otsh;
    bcm_pkt_dnx_otmh_t otmh;
    bcm_pkt_dnx_internal_t internal;
} bcm_pkt_dnx_t;

/*
 * A packet. Members with rx_ are filled in by reception, those with tx_ by who sends; those that begin with
 * an underscore are the SDK's own.
 */
struct bcm_pkt_s {
    bcm_pkt_blk_t *pkt_data;
    uint8 blk_count;
    uint8 unit;
    uint8 cos;                             /* queue of the port that it leaves by */
    uint8 prio_int;                        /* internal priority */
    bcm_vlan_t vlan;
    uint8 vlan_pri;                        /* 0..7 */
    uint8 vlan_cfi;                        /* 0 or 1 */
    bcm_vlan_t inner_vlan;
    uint8 inner_vlan_pri;
    uint8 inner_vlan_cfi;
    bcm_color_t color;
    bcm_port_t src_port;
    bcm_trunk_t src_trunk;
    bcm_module_t src_mod;
    bcm_port_t dest_port;
    bcm_module_t dest_mod;
    uint8 opcode;                          /* BCM_PKT_OPCODE_* */
    bcm_gport_t dst_gport;
    bcm_gport_t src_gport;
    bcm_multicast_t multicast_group;
    uint32 stk_flags;                      /* BCM_PKT_STK_F_* */
    bcm_pkt_stk_forward_t stk_forward;
    uint16 stk_classification_tag;
    uint8 stk_pkt_prio;
    uint8 stk_dscp;
    uint8 stk_load_balancing_number;
    uint32 stk_encap_id;
    uint16 pkt_len;                        /* bytes, as received or to be sent */
    uint16 tot_len;                        /* bytes of the blocks together */
    bcm_pbmp_t tx_pbmp;                    /* ports to send through */
    bcm_pbmp_t tx_upbmp;                   /* those of them without VLAN tag */
    bcm_pbmp_t tx_l3pbmp;                  /* those of them with the addresses of a routed packet */
    bcm_port_t pkt_trace_src_port;
    uint8 pfm;                             /* how unknown groups are treated, 0..2 */
    uint32 rx_reason;                      /* the chip's own code */
    bcm_rx_reasons_t rx_reasons;
    uint32 rx_path;
    uint8 rx_unit;
    bcm_port_t rx_port;
    uint8 rx_cpu_cos;                      /* queue of the CPU port */
    int rx_untagged;
    uint32 rx_classification_tag;
    uint32 rx_matched;                     /* rule that sent it to the CPU */
    bcm_if_t rx_l3_intf;
    bcm_pkt_vlan_action_t rx_outer_tag_action;
    bcm_pkt_vlan_action_t rx_inner_tag_action;
    uint32 rx_timestamp;                   /* nanoseconds, low half */
    uint32 rx_timestamp_upper;
    uint32 timestamp_flags;                /* BCM_PKT_TIMESTAMP_* */
    void *cookie;                          /* the sender's */
    void *cookie2;
    bcm_pkt_cb_f call_back;                /* called when the packet has left; may be null */
    uint32 flags;                          /* BCM_PKT_F_*, BCM_TX_* */
    bcm_pkt_t *next;                       /* of a list to send */
    uint8 dma_channel;
    bcm_pkt_blk_t _pkt_data;               /* the only block, mostly */
    bcm_pkt_t *_last_pkt;
    void *_dv;
    int _idx;
    bcm_pkt_t *_next;
    uint8 *alloc_ptr;                      /* buffer that goes back to the pool */
    struct bcm_trans_ptr_s *trans_ptr;     /* other way to send than the switch itself; may be null */
    uint8 _higig[BCM_PKT_HIGIG_LEN];
    uint8 _pb_hdr[BCM_PKT_PB_HDR_LEN];
    uint8 _sltag[BCM_PKT_SLTAG_LEN];
    uint8 _vtag[BCM_PKT_VTAG_LEN];
    uint8 _sbx_rh[BCM_PKT_ROUTE_HDR_LEN];
    uint8 _sbx_hdr_len;
    uint8 _dpp_hdr[BCM_PKT_SYSTEM_HDR_LEN];
    uint8 _dpp_hdr_type;
    int flow_id;
    int filter_enable;
    bcm_pbmp_t _dv_tx_pbmp;
    bcm_pbmp_t _dv_tx_upbmp;
    uint32 flags2;                         /* BCM_PKT_F2_* */
    bcm_pkt_oam_replacement_type_t oam_replacement_type;
    uint32 oam_replacement_offset;         /* bytes */
    uint32 oam_lm_counter_index;
    uint32 rx_trap_data;
    void *_dcb;
    uint32 oam_lm_counter_index_2;
    void *ma_ptr;
    bcm_pkt_timestamp_mode_t timestamp_mode;
    bcm_pkt_oam_counter_mode_t counter_mode_1;
    bcm_pkt_oam_counter_mode_t counter_mode_2;
    uint32 timestamp_offset;               /* bytes */
    bcm_rx_decap_tunnel_t rx_decap_tunnel;
    bcm_gport_t src_vport;
    bcm_gport_t dst_vport;
    uint8 fwd_hdr_offset;                  /* bytes to the header by which it was forwarded */
    uint32 snoop_cmnd;
    bcm_gport_t stk_dst_gport;
    uint32 stk_route_tm_domains;           /* bit per unit that it has been to */
    uint8 oam_hdr_offset;
    uint8 oam_lm_replacement_offset;
    bcm_rx_oam_pkt_type_t rx_oam_pkt_type;
    bcm_pkt_oam_counter_t oam_counter[BCM_PKT_OAM_COUNTER_MAX];
    uint8 oam_counter_size;                /* elements of oam_counter in use */
    uint8 _olp_hdr[BCM_PKT_OLP_HDR_LEN];
    bcm_pkt_dnx_t dnx_header_stack[BCM_PKT_DNX_HEADER_MAX];
    uint8 dnx_header_count;                /* elements of dnx_header_stack in use, outermost first */
};

/* A packet with one block of size bytes, ready for the kind of sending that flags say. */
int bcm_pkt_alloc(int unit, int size, uint32 flags, bcm_pkt_t **pkt_buf);
int bcm_pkt_free(int unit, bcm_pkt_t *pkt);

/* A packet for receiving len bytes. */
int bcm_pkt_rx_alloc(int unit, int len, bcm_pkt_t **pkt_buf);
int bcm_pkt_rx_free(int unit, bcm_pkt_t *pkt);

/* count packets of one block each; *packet_array is an array of count pointers. */
int bcm_pkt_blk_alloc(int unit, int count, int size, uint32 flags, bcm_pkt_t ***packet_array);
int bcm_pkt_blk_free(int unit, bcm_pkt_t **pkt, int count);

/*
 * Makes pkt (or a new record, if it is null) a packet of the blk_count blocks blks, all else cleared, and
 * returns it in *pkt_buf. The blocks stay the caller's.
 */
int bcm_pkt_clear(int unit, bcm_pkt_t *pkt, bcm_pkt_blk_t *blks, int blk_count, uint32 flags,
                  bcm_pkt_t **pkt_buf);

/* flags of pkt, and the lengths that follow from alloc_bytes of buffer and payload_len bytes of packet. */
int bcm_pkt_flags_init(int unit, bcm_pkt_t *pkt, uint32 init_flags);
int bcm_pkt_flags_len_setup(int unit, bcm_pkt_t *pkt, int alloc_bytes, int payload_len, uint32 flags);

/* Copies len bytes into the blocks, beginning at dest_byte. BCM_E_PARAM: they do not fit. */
int bcm_pkt_memcpy(bcm_pkt_t *pkt, int dest_byte, uint8 *src, int len);

/* Where byte n is: its address, its block, and how many bytes follow there. BCM_E_PARAM: beyond the end. */
int bcm_pkt_byte_index(bcm_pkt_t *pkt, int n, int *len, int *blk_idx, uint8 **location);

void bcm_pkt_t_init(bcm_pkt_t *pkt);
void bcm_pkt_blk_t_init(bcm_pkt_blk_t *pkt_blk);

#ifdef __cplusplus
}
#endif

#endif
