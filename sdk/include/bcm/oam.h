/*
 * Operation, administration and maintenance: endpoints that watch over Ethernet services, label switched
 * paths and pseudowires with packets of their own, and measure loss and delay on them.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT, BCM_E_PARAM and, for a group, endpoint or profile that does not exist, BCM_E_NOT_FOUND. On an
 * error nothing is changed. What an endpoint has at most one of (a loss measurement, say) is entered with
 * _add, which replaces, and read or removed by the id in the record.
 */
#ifndef BCM_OAM_H
#define BCM_OAM_H

#include <bcm/error.h>
#include <bcm/mpls.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int bcm_oam_group_t;              /* maintenance association */
typedef int bcm_oam_endpoint_t;           /* end or intermediate point of one, local or remote */
typedef int bcm_oam_pm_profile_t;         /* how results of measurements are sorted into bins */

/* Octets of a group's name, as in continuity check messages. */
#define BCM_OAM_GROUP_NAME_LENGTH 48

/* Octets of a TLV's value at most. */
#define BCM_OAM_TLV_VALUE_MAX 128

/* Bins of a delay profile, and raw samples of a buffer, at most. */
#define BCM_OAM_PM_BIN_MAX 20
#define BCM_OAM_PM_RAW_SAMPLE_MAX 32

/* flags of bcm_oam_group_info_t. */
#define BCM_OAM_GROUP_WITH_ID 0x00000001
#define BCM_OAM_GROUP_REPLACE 0x00000002
#define BCM_OAM_GROUP_REMOTE_DEFECT_TX 0x00000004    /* all endpoints say that they see a defect */

/* flags of bcm_oam_endpoint_info_t. */
typedef enum bcm_oam_endpoint_flag_e {
    BCM_OAM_ENDPOINT_WITH_ID = 0x00000001,
    BCM_OAM_ENDPOINT_REPLACE = 0x00000002,
    BCM_OAM_ENDPOINT_REMOTE = 0x00000004,       /* the other end, not this one */
    BCM_OAM_ENDPOINT_INTERMEDIATE = 0x00000008, /* answers, but ends nothing */
    BCM_OAM_ENDPOINT_UP_FACING = 0x00000010,    /* looks into the switch, not out of the port */
    BCM_OAM_ENDPOINT_CCM_COPY_TO_CPU = 0x00000020,
    BCM_OAM_ENDPOINT_REMOTE_DEFECT_TX = 0x00000040,
    BCM_OAM_ENDPOINT_DISABLED = 0x00000080      /* neither sends nor answers */
} bcm_oam_endpoint_flag_t;

/* flags of measurements. */
#define BCM_OAM_LOSS_SINGLE_ENDED 0x00000001         /* by requests and replies, not by continuity checks */
#define BCM_OAM_LOSS_SYNTHETIC 0x00000002            /* counts packets made for it, not the service's */
#define BCM_OAM_DELAY_ONE_WAY 0x00000001
#define BCM_OAM_LOOPBACK_DISCOVERY 0x00000001        /* to the group address, to find who is there */
#define BCM_OAM_PM_PROFILE_WITH_ID 0x00000001

/* What can be told about groups and endpoints; the pair of a condition and its end have two events. */
typedef enum bcm_oam_event_type_e {
    bcmOamEventEndpointPortDown = 0,          /* state in the other end's port status TLV */
    bcmOamEventEndpointPortUp = 1,
    bcmOamEventEndpointInterfaceDown = 2,     /* states in its interface status TLV */
    bcmOamEventEndpointInterfaceUp = 3,
    bcmOamEventEndpointInterfaceTesting = 4,
    bcmOamEventEndpointInterfaceUnknown = 5,
    bcmOamEventEndpointInterfaceDormant = 6,
    bcmOamEventEndpointInterfaceNotPresent = 7,
    bcmOamEventEndpointInterfaceLowerLayerDown = 8,
    bcmOamEventEndpointRemote = 9,            /* the other end says that it sees a defect */
    bcmOamEventEndpointRemoteClear = 10,
    bcmOamEventGroupRemote = 11,              /* any of them says so */
    bcmOamEventGroupRemoteClear = 12,
    bcmOamEventGroupCrossConnect = 13,        /* packets of another group arrive */
    bcmOamEventGroupCrossConnectClear = 14,
    bcmOamEventGroupCcmError = 15,            /* packets that do not fit the group arrive */
    bcmOamEventGroupCcmErrorClear = 16,
    bcmOamEventEndpointCcmTimeout = 17,
    bcmOamEventEndpointCcmTimein = 18,
    bcmOamEventEndpointUnexpectedMep = 19,    /* packets of an endpoint that the group does not have */
    bcmOamEventEndpointUnexpectedMepClear = 20,
    bcmOamEventEndpointUnexpectedPeriod = 21,
    bcmOamEventEndpointUnexpectedPeriodClear = 22,
    bcmOamEventEndpointAisStart = 23,         /* the layer below says that it is broken */
    bcmOamEventEndpointAisClear = 24,
    bcmOamEventEndpointLockStart = 25,        /* the layer below is locked by its operator */
    bcmOamEventEndpointLockClear = 26,
    bcmOamEventEndpointLossMeasured = 27,     /* results: bcm_oam_performance_event_register */
    bcmOamEventEndpointDelayMeasured = 28,
    bcmOamEventEndpointPmThreshold = 29,      /* profiles: bcm_oam_pm_event_register */
    bcmOamEventEndpointPmCounterRollover = 30,
    bcmOamEventPmRawDataReady = 31,
    bcmOamEventEndpointLoopbackTimeout = 32,
    bcmOamEventEndpointTestSequenceError = 33,
    bcmOamEventEndpointProtectionSwitch = 34,
    bcmOamEventEndpointPwStatusChange = 35
} bcm_oam_event_type_t;

/* Defects of groups and endpoints, a set of which their records hold. */
typedef enum bcm_oam_fault_e {
    bcmOamFaultCcmTimeout = 0x1,
    bcmOamFaultRemote = 0x2,
    bcmOamFaultCrossConnect = 0x4,
    bcmOamFaultUnexpectedMep = 0x8,
    bcmOamFaultUnexpectedPeriod = 0x10,
    bcmOamFaultRemotePortDown = 0x20,
    bcmOamFaultRemoteInterfaceDown = 0x40
} bcm_oam_fault_t;

/* What an endpoint watches over, and by which protocol. */
typedef enum bcm_oam_endpoint_type_e {
    bcmOamEndpointTypeEthernet = 0,
    bcmOamEndpointTypeMplsTpSection = 1,
    bcmOamEndpointTypeMplsTpLsp = 2,
    bcmOamEndpointTypeMplsTpPw = 3,
    bcmOamEndpointTypeBfdIp4 = 4,
    bcmOamEndpointTypeBfdIp6 = 5,
    bcmOamEndpointTypeBfdMpls = 6,
    bcmOamEndpointTypeBfdPw = 7,
    bcmOamEndpointTypeMplsLossDelay = 8       /* RFC 6374 */
} bcm_oam_endpoint_type_t;

/* Operation codes of Ethernet OAM, as in packets. */
typedef enum bcm_oam_opcode_e {
    bcmOamOpcodeCcm = 1,                      /* continuity check */
    bcmOamOpcodeLbr = 2,                      /* loopback: reply, message */
    bcmOamOpcodeLbm = 3,
    bcmOamOpcodeLtr = 4,                      /* link trace: reply, message */
    bcmOamOpcodeLtm = 5,
    bcmOamOpcodeAis = 33,                     /* alarm indication */
    bcmOamOpcodeLck = 35,                     /* lock */
    bcmOamOpcodeTst = 37,                     /* test */
    bcmOamOpcodeAps = 39,                     /* protection switching: linear, ring */
    bcmOamOpcodeRaps = 40,
    bcmOamOpcodeMcc = 41,                     /* maintenance channel */
    bcmOamOpcodeLmr = 42,                     /* loss measurement: reply, message */
    bcmOamOpcodeLmm = 43,
    bcmOamOpcodeOneWayDm = 45,                /* delay measurement: one way, reply, message */
    bcmOamOpcodeDmr = 46,
    bcmOamOpcodeDmm = 47,
    bcmOamOpcodeExr = 48,                     /* experimental */
    bcmOamOpcodeExm = 49,
    bcmOamOpcodeVsr = 50,                     /* vendor specific */
    bcmOamOpcodeVsm = 51,
    bcmOamOpcodeCsf = 52,                     /* client signal fail */
    bcmOamOpcodeOneWaySl = 53,                /* synthetic loss: one way, reply, message */
    bcmOamOpcodeSlr = 54,
    bcmOamOpcodeSlm = 55
} bcm_oam_opcode_t;

/* What becomes of OAM packets that arrive at an endpoint. */
typedef enum bcm_oam_action_e {
    bcmOamActionForward = 0,
    bcmOamActionDrop = 1,
    bcmOamActionTrapToCpu = 2,
    bcmOamActionCopyToCpu = 3,
    bcmOamActionProcess = 4                   /* answered or evaluated in hardware */
} bcm_oam_action_t;

/* How OAM packets are recognised. */
typedef enum bcm_oam_lookup_type_e {
    bcmOamLookupTypeEthernet = 0,
    bcmOamLookupTypeEthernetVlanStacked = 1,
    bcmOamLookupTypeMplsTpGal = 2,            /* by the generic associated channel label */
    bcmOamLookupTypeMplsTpTtl = 3,            /* by a TTL that runs out */
    bcmOamLookupTypePwControlWord = 4,
    bcmOamLookupTypePwRouterAlert = 5,
    bcmOamLookupTypeBfdIp = 6,
    bcmOamLookupTypeBfdMultihop = 7,
    bcmOamLookupTypeBfdMpls = 8
} bcm_oam_lookup_type_t;

/* What can be wrong with a packet that was recognised, and makes it go to the CPU. */
typedef enum bcm_oam_condition_e {
    bcmOamConditionAchVersion = 0,            /* associated channel header */
    bcmOamConditionChannelTypeUnknown = 1,
    bcmOamConditionTtlNotOne = 2,
    bcmOamConditionLevelLow = 3,              /* maintenance level below that of the endpoints */
    bcmOamConditionOpcodeUnknown = 4,
    bcmOamConditionEndpointUnknown = 5
} bcm_oam_condition_t;

/* Channel types of MPLS-TP whose number in packets can be chosen. */
typedef enum bcm_oam_mpls_tp_channel_type_e {
    bcmOamMplsTpChannelTypeY1731 = 0,
    bcmOamMplsTpChannelTypeBfdCc = 1,
    bcmOamMplsTpChannelTypeBfdCv = 2,
    bcmOamMplsTpChannelTypeDirectLoss = 3,
    bcmOamMplsTpChannelTypeInferredLoss = 4,
    bcmOamMplsTpChannelTypeDelay = 5,
    bcmOamMplsTpChannelTypePsc = 6,           /* protection state coordination */
    bcmOamMplsTpChannelTypePwStatus = 7
} bcm_oam_mpls_tp_channel_type_t;

typedef enum bcm_oam_timestamp_format_e {
    bcmOamTimestampFormatIeee1588 = 0,        /* seconds and nanoseconds */
    bcmOamTimestampFormatNtp = 1              /* seconds and 2^-32 of them */
} bcm_oam_timestamp_format_t;

/* Requests of protection state coordination, as in packets (RFC 6378); higher ones win. */
typedef enum bcm_oam_psc_request_e {
    bcmOamPscRequestNone = 0,
    bcmOamPscRequestDoNotRevert = 1,
    bcmOamPscRequestWaitToRestore = 4,
    bcmOamPscRequestManualSwitch = 5,
    bcmOamPscRequestSignalDegrade = 7,
    bcmOamPscRequestSignalFail = 10,
    bcmOamPscRequestForcedSwitch = 12,
    bcmOamPscRequestLockout = 14
} bcm_oam_psc_request_t;

/* What test packets are filled with: zeros or a pseudo-random sequence, each with or without checksum. */
typedef enum bcm_oam_tst_pattern_e {
    bcmOamTstPatternNull = 0,
    bcmOamTstPatternNullCrc = 1,
    bcmOamTstPatternPrbs = 2,
    bcmOamTstPatternPrbsCrc = 3
} bcm_oam_tst_pattern_t;

/* Kinds of measurement that a profile sorts. */
typedef enum bcm_oam_pm_type_e {
    bcmOamPmTypeLoss = 0,
    bcmOamPmTypeSyntheticLoss = 1,
    bcmOamPmTypeDelay = 2,
    bcmOamPmTypeDelayVariation = 3
} bcm_oam_pm_type_t;

/* Settings of a unit. */
typedef enum bcm_oam_control_e {
    bcmOamControlEventInterval = 0,           /* milliseconds for which events are gathered */
    bcmOamControlCcmMulticastCheck = 1,       /* drop continuity checks to other addresses */
    bcmOamControlLossCounterPerPriority = 2,
    bcmOamControlTimestampFormat = 3,         /* of new endpoints, bcm_oam_timestamp_format_t */
    bcmOamControlPmRawDataInterval = 4,       /* milliseconds after which a buffer is ready at the latest */
    bcmOamControlDefectClearPeriods = 5       /* periods without a defect after which it has ended */
} bcm_oam_control_t;

/*
 * Sets of bcm_oam_event_type_t, bcm_oam_condition_t, bcm_oam_lookup_type_t and bcm_oam_opcode_t: bit vectors,
 * to which SHR_BITSET(set.w, value) adds one.
 */
#define _SHR_OAM_EVENT_TYPE_MAX 64
#define _SHR_OAM_CONDITION_MAX 32
#define _SHR_OAM_LOOKUP_TYPE_MAX 32
#define _SHR_OAM_OPCODE_MAX 256

typedef struct bcm_oam_event_types_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(_SHR_OAM_EVENT_TYPE_MAX)];
} bcm_oam_event_types_t;

typedef struct bcm_oam_conditions_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(_SHR_OAM_CONDITION_MAX)];
} bcm_oam_conditions_t;

typedef struct bcm_oam_lookup_types_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(_SHR_OAM_LOOKUP_TYPE_MAX)];
} bcm_oam_lookup_types_t;

typedef struct bcm_oam_opcodes_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(_SHR_OAM_OPCODE_MAX)];
} bcm_oam_opcodes_t;

/* A TLV at the end of an OAM packet. */
typedef struct bcm_oam_tlv_s {
    uint8 type;
    uint16 length;                            /* octets of value, 0..BCM_OAM_TLV_VALUE_MAX */
    uint8 value[BCM_OAM_TLV_VALUE_MAX];
} bcm_oam_tlv_t;

/* A group: endpoints that watch over one service. */
typedef struct bcm_oam_group_info_s {
    uint32 flags;                             /* BCM_OAM_GROUP_* */
    bcm_oam_group_t id;
    uint8 name[BCM_OAM_GROUP_NAME_LENGTH];    /* as in packets */
    int lowest_alarm_priority;                /* defects of lower priority are not told */
    uint32 faults;                            /* set of bcm_oam_fault_t: those that are there */
    uint32 persistent_faults;                 /* those that were there since they were last cleared */
    uint32 clear_persistent_faults;           /* bcm_oam_group_get: those to clear */
    int endpoint_count;
} bcm_oam_group_info_t;

/* An endpoint. Periods are in milliseconds, 0 for never. */
typedef struct bcm_oam_endpoint_info_s {
    uint32 flags;                             /* BCM_OAM_ENDPOINT_* */
    bcm_oam_endpoint_t id;
    bcm_oam_endpoint_t local_id;              /* of a remote endpoint: the one at this end */
    bcm_oam_group_t group;
    bcm_oam_endpoint_type_t type;
    uint16 name;                              /* number within the group, 1..8191 */
    int level;                                /* maintenance level, 0..7 */
    bcm_gport_t gport;                        /* port at which it is */
    bcm_gport_t tx_gport;                     /* port through which it sends, if another */
    bcm_gport_t remote_gport;                 /* of a remote endpoint: port behind which it is */
    int trunk_index;                          /* member of a trunk that sends */
    bcm_vlan_t vlan;
    bcm_vlan_t inner_vlan;
    bcm_tpid_t outer_tpid;
    bcm_tpid_t inner_tpid;
    uint8 pkt_pri;                            /* 0..7 */
    uint8 inner_pkt_pri;
    int int_pri;                              /* of what it sends, 0..15 */
    bcm_cos_queue_t cpu_qid;                  /* CPU queue of what it cannot handle */
    bcm_mac_t dst_mac_address;
    bcm_mac_t src_mac_address;
    int ccm_period;
    int ccm_loss_periods;                     /* periods without a continuity check that make a defect */
    int loc_clear_threshold;                  /* continuity checks that end it */
    uint8 port_state;                         /* value in the port status TLV */
    uint8 interface_state;                    /* value in the interface status TLV */
    bcm_oam_tlv_t *tlv;                       /* a further TLV to send, or null */
    uint32 faults;                            /* as in bcm_oam_group_info_t */
    uint32 persistent_faults;
    uint32 clear_persistent_faults;
    bcm_if_t intf_id;                         /* egress object or interface with the outer headers */
    bcm_mpls_label_t mpls_label;              /* label with which packets arrive */
    bcm_gport_t mpls_port;                    /* pseudowire with which they arrive */
    bcm_mpls_egress_label_t egress_label;     /* label with which it sends */
    bcm_if_t mpls_egress_if;
    uint8 mpls_exp;                           /* 0..7 */
    int vccv_type;                            /* how packets in a pseudowire are marked, 0..4 */
    bcm_vpn_t vpn;
    bcm_vrf_t vrf;
    bcm_ip_t src_ip_addr;
    bcm_ip_t dst_ip_addr;
    bcm_ip6_t src_ip6_addr;
    bcm_ip6_t dst_ip6_addr;
    int ttl;
    uint8 tos;
    bcm_l4_port_t udp_src_port;
    uint32 local_discriminator;               /* of a BFD session, and so on */
    uint32 remote_discriminator;
    int local_min_tx;                         /* microseconds */
    int local_min_rx;
    int local_detect_mult;
    uint32 local_diagnostic;                  /* code for why the session went down, as in packets */
    int remote_min_rx;                        /* bcm_oam_endpoint_get: what the other end asks for */
    int remote_detect_mult;
    uint32 lm_counter_base_id;                /* first counter of loss measurement */
    int pri_map_id;                           /* map from priority to counter */
    bcm_oam_timestamp_format_t timestamp_format;
    bcm_oam_opcodes_t opcodes;                /* those that are handled in hardware */
    int action_profile_id;                    /* endpoints with the same one share their actions */
    bcm_failover_t failover_id;               /* what switches over on a defect */
    uint32 ccm_rx_count;                      /* bcm_oam_endpoint_get: continuity checks that arrived */
    uint32 session_id;                        /* out: number under which hardware reports on it */
} bcm_oam_endpoint_info_t;

/* What becomes of packets with certain operation codes at an endpoint, or at those that share its profile. */
typedef struct bcm_oam_endpoint_action_s {
    uint32 flags;
    bcm_oam_endpoint_t endpoint_id;
    bcm_oam_opcodes_t opcodes;
    bcm_oam_action_t action;
    int multicast;                            /* 1 for packets to group addresses, 0 for those to its own */
    bcm_gport_t destination;                  /* where processed packets go, if not to the CPU */
    bcm_cos_queue_t cpu_qid;
    int rx_trap_strength;                     /* against other reasons to trap a packet; higher wins */
} bcm_oam_endpoint_action_t;

/* The defects that an endpoint has now, and since when. */
typedef struct bcm_oam_endpoint_fault_s {
    bcm_oam_endpoint_t endpoint_id;
    uint32 faults;                            /* set of bcm_oam_fault_t */
    uint32 persistent_faults;
    uint32 seconds;
} bcm_oam_endpoint_fault_t;

/* Loss measurement of an endpoint. The counters are written by bcm_oam_loss_get. */
typedef struct bcm_oam_loss_s {
    uint32 flags;                             /* BCM_OAM_LOSS_* */
    bcm_oam_endpoint_t id;
    bcm_oam_endpoint_t remote_id;             /* the end to measure to, of groups that have several */
    int period;                               /* milliseconds */
    bcm_mac_t peer_da_mac_address;
    uint32 pkt_pri_bitmap;                    /* priorities that are counted, a bit each */
    uint8 pkt_pri;                            /* of the requests, 0..7 */
    int int_pri;
    uint8 ttl;
    uint32 loss_threshold;                    /* hundredths of a percent that make a measurement bad */
    uint32 loss_nearend;                      /* packets lost in the last period: to here, to the other end */
    uint32 loss_farend;
    uint32 tx_nearend;                        /* counted in the last period, at both ends */
    uint32 rx_nearend;
    uint32 tx_farend;
    uint32 rx_farend;
    uint64 loss_nearend_total;                /* since bcm_oam_loss_add */
    uint64 loss_farend_total;
    uint32 bad_periods;                       /* since bcm_oam_loss_add */
    uint32 rx_oam_packets;                    /* replies, and requests */
    uint32 tx_oam_packets;
    uint32 rx_out_of_order;                   /* synthetic packets only */
} bcm_oam_loss_t;

/* Delay measurement of an endpoint. The results, in nanoseconds, are written by bcm_oam_delay_get. */
typedef struct bcm_oam_delay_s {
    uint32 flags;                             /* BCM_OAM_DELAY_* */
    bcm_oam_endpoint_t id;
    bcm_oam_endpoint_t remote_id;
    int period;                               /* milliseconds */
    bcm_mac_t peer_da_mac_address;
    bcm_oam_timestamp_format_t timestamp_format;
    uint8 pkt_pri;                            /* of the requests, 0..7 */
    int int_pri;
    uint8 ttl;
    uint32 delay_threshold;                   /* delay that makes a measurement bad */
    uint32 delay_latest;
    uint32 delay_min;
    uint32 delay_max;
    uint64 delay_sum;                         /* divided by rx_oam_packets the mean */
    uint32 delay_variation_max;               /* between two that follow each other */
    uint32 rx_oam_packets;
    uint32 tx_oam_packets;
    uint32 rx_out_of_order;
} bcm_oam_delay_t;

/* Alarm indications that an endpoint sends to the layer above. */
typedef struct bcm_oam_ais_s {
    uint32 flags;
    bcm_oam_endpoint_t id;
    int period;                               /* seconds, 1 or 60 */
    int level;                                /* of the layer above, 0..7 */
    bcm_mac_t peer_da_mac_address;
    bcm_vlan_t vlan;
    bcm_vlan_t inner_vlan;
    uint8 pkt_pri;                            /* 0..7 */
    int int_pri;
    uint32 faults;                            /* set of bcm_oam_fault_t that make it send */
    uint32 tx_count;                          /* bcm_oam_ais_get: indications sent */
} bcm_oam_ais_t;

/* Test packets that an endpoint sends. */
typedef struct bcm_oam_tst_tx_s {
    uint32 flags;
    bcm_oam_endpoint_t id;
    int period;                               /* milliseconds */
    bcm_mac_t peer_da_mac_address;
    bcm_oam_tst_pattern_t pattern;
    int pkt_length;                           /* octets */
    uint32 first_seq_num;
    uint8 pkt_pri;                            /* 0..7 */
    int int_pri;
    uint32 tx_count;                          /* packets to send, 0 for no end; get: those sent */
} bcm_oam_tst_tx_t;

/* Test packets that an endpoint receives. */
typedef struct bcm_oam_tst_rx_s {
    uint32 flags;
    bcm_oam_endpoint_t id;
    bcm_oam_tst_pattern_t pattern;            /* what they are expected to be filled with */
    uint32 rx_count;
    uint32 rx_crc_errors;
    uint32 rx_pattern_errors;
    uint32 rx_out_of_order;
    uint32 rx_missing;                        /* numbers that were left out */
} bcm_oam_tst_rx_t;

/* An answer to a loopback that looks for endpoints. */
typedef struct bcm_oam_loopback_discovery_record_s {
    uint16 name;                              /* number within the group, 1..8191, 0 if it does not say */
    uint8 mac_address[6];                     /* where the answer came from, as on the wire */
    uint32 rx_count;
    uint8 ttl;                                /* of the answer, of label switched paths */
} bcm_oam_loopback_discovery_record_t;

/* Loopback messages of an endpoint. The counters are written by bcm_oam_loopback_get. */
typedef struct bcm_oam_loopback_s {
    uint32 flags;                             /* BCM_OAM_LOOPBACK_DISCOVERY */
    bcm_oam_endpoint_t id;
    int period;                               /* milliseconds */
    int timeout;                              /* milliseconds after which an answer is missed */
    bcm_mac_t peer_da_mac_address;
    int pkt_length;                           /* octets, tlv included */
    bcm_oam_tlv_t tlv;
    uint8 pkt_pri;                            /* 0..7 */
    int int_pri;
    uint8 ttl;
    uint32 num_tx_packets;                    /* messages to send, 0 for no end */
    uint32 tx_count;
    uint32 rx_count;
    uint32 rx_out_of_order;
    uint32 unexpected_response;
    uint32 dropped_packets;                   /* answers missed */
    bcm_oam_loopback_discovery_record_t *discovered; /* room for max_discovered of them, or null */
    int max_discovered;
    int num_discovered;                       /* bcm_oam_loopback_get: how many answered */
} bcm_oam_loopback_t;

/* Protection state coordination of the path that an endpoint watches over (RFC 6378). */
typedef struct bcm_oam_psc_s {
    uint32 flags;
    bcm_oam_endpoint_t id;
    bcm_oam_psc_request_t request;
    int fault_path;                           /* path with the fault: 0 protecting, 1 working */
    int path;                                 /* path that carries the traffic, likewise */
    int protection_type;                      /* 1 unidirectional, 2 bidirectional, 3 with permanent bridge */
    int revertive;                            /* 1 to go back to the working path after a fault */
    int wait_to_restore;                      /* seconds before it goes back */
    bcm_oam_psc_request_t remote_request;     /* bcm_oam_psc_get: what the other end asks for */
    int period;                               /* milliseconds */
} bcm_oam_psc_t;

/* Status of a pseudowire, as told to its other end (RFC 4447, RFC 6478). */
typedef struct bcm_oam_pw_status_s {
    uint32 flags;
    bcm_oam_endpoint_t id;
    uint32 code;                              /* status bits: 1 not forwarding, 2 ingress fault, ... */
    int refresh_timer;                        /* seconds between repetitions */
    uint32 remote_code;                       /* get: what the other end said last */
    uint8 pkt_pri;                            /* 0..7 */
    int int_pri;
} bcm_oam_pw_status_t;

/* A result of loss or delay measurement, as handed to bcm_oam_performance_event_cb. */
typedef struct bcm_oam_performance_event_data_s {
    bcm_oam_endpoint_t endpoint_id;
    bcm_oam_endpoint_t remote_id;
    bcm_oam_pm_type_t type;
    uint8 pkt_pri;                            /* priority that was measured, 0..7 */
    uint32 tx_nearend;                        /* packets counted since the event before */
    uint32 rx_nearend;
    uint32 tx_farend;
    uint32 rx_farend;
    uint32 delay;                             /* nanoseconds */
    uint32 timestamp_seconds;                 /* when it was measured */
    uint32 timestamp_nanoseconds;
} bcm_oam_performance_event_data_t;

/* A profile: limits between the bins into which results are sorted, in nanoseconds or lost packets. */
typedef struct bcm_oam_pm_profile_info_s {
    uint32 flags;                             /* BCM_OAM_PM_PROFILE_WITH_ID */
    bcm_oam_pm_profile_t id;
    bcm_oam_pm_type_t type;
    int bin_count;                            /* 1..BCM_OAM_PM_BIN_MAX */
    uint32 bin_limit[BCM_OAM_PM_BIN_MAX];     /* bin n takes what is below limit n and in no earlier one */
    uint32 threshold;                         /* results above it make an event */
    uint32 threshold_count;                   /* so many of them, in a row */
    int interval;                             /* seconds over which results are gathered */
} bcm_oam_pm_profile_info_t;

/* What the profile of an endpoint gathered in the last interval that has ended. */
typedef struct bcm_oam_pm_stats_s {
    bcm_oam_pm_profile_t profile_id;
    uint32 bin[2][20];                        /* results sorted into each, at the near and the far end */
    uint32 tx_packets;
    uint32 rx_packets;
    uint32 min;
    uint32 max;
    uint64 sum;
    uint32 invalid;                           /* results that could not be had, because a packet was lost */
    uint32 unavailable_seconds;
    uint32 threshold_crossings;
    uint32 interval;                          /* number of the interval */
} bcm_oam_pm_stats_t;

/* Raw counters of one loss measurement, as in its packets. */
typedef struct bcm_oam_pm_raw_counter_s {
    uint32 txf;                               /* sent by the one who asks */
    uint32 rxf;                               /* received by the one who answers */
    uint32 txb;                               /* sent by the one who answers */
    uint32 rxb;                               /* received by the one who asks */
} bcm_oam_pm_raw_counter_t;

/* A time of one delay measurement, as in its packets. */
typedef struct bcm_oam_pm_raw_timestamp_s {
    bcm_oam_timestamp_format_t format;
    uint32 seconds;
    uint32 fraction;                          /* nanoseconds, or 2^-32 seconds */
} bcm_oam_pm_raw_timestamp_t;

/* One measurement. The four times are taken where the four counters are. */
typedef struct bcm_oam_pm_raw_samples_s {
    bcm_oam_pm_type_t type;
    uint32 sequence;
    bcm_oam_pm_raw_counter_t counter;
    bcm_oam_pm_raw_timestamp_t timestamp_txf;
    bcm_oam_pm_raw_timestamp_t timestamp_rxf;
    bcm_oam_pm_raw_timestamp_t timestamp_txb;
    bcm_oam_pm_raw_timestamp_t timestamp_rxb;
} bcm_oam_pm_raw_samples_t;

/* Measurements of one endpoint, the oldest first. */
typedef struct bcm_oam_pm_raw_buffer_s {
    bcm_oam_endpoint_t endpoint_id;
    int sample_count;
    bcm_oam_pm_raw_samples_t samples[BCM_OAM_PM_RAW_SAMPLE_MAX];
    int overrun;                              /* measurements lost because the buffer was full */
} bcm_oam_pm_raw_buffer_t;

/* The buffers that are ready. They belong to the unit until bcm_oam_pm_raw_data_read_done. */
typedef struct bcm_oam_pm_raw_data_s {
    bcm_oam_pm_raw_buffer_t *buffers;
    int buffer_count;
    uint32 interval;                          /* number of the interval that filled them */
} bcm_oam_pm_raw_data_t;

/*
 * Called once per entry. Records are valid during the call. A negative result ends the traversal, which then
 * returns it.
 */
typedef int (*bcm_oam_group_traverse_cb)(int unit, bcm_oam_group_info_t *group_info, void *user_data);
typedef int (*bcm_oam_endpoint_traverse_cb)(int unit, bcm_oam_endpoint_info_t *endpoint_info,
                                            void *user_data);
typedef int (*bcm_oam_pm_profile_traverse_cb)(int unit, bcm_oam_pm_profile_info_t *profile_info,
                                              void *user_data);

/*
 * Called on an event, from a thread of the SDK. endpoint is -1 for events of a group. The result is not
 * looked at.
 */
typedef int (*bcm_oam_event_cb)(int unit, uint32 flags, bcm_oam_event_type_t event_type,
                                bcm_oam_group_t group, bcm_oam_endpoint_t endpoint, void *user_data);
typedef int (*bcm_oam_performance_event_cb)(int unit, bcm_oam_event_type_t event_type,
                                            bcm_oam_performance_event_data_t *event_data, void *user_data);
typedef int (*bcm_oam_pm_event_cb)(int unit, uint32 flags, bcm_oam_event_type_t event_type,
                                   bcm_oam_endpoint_t endpoint, bcm_oam_pm_stats_t *stats, void *user_data);

/* The module. init removes everything below. */
int bcm_oam_init(int unit);
int bcm_oam_detach(int unit);

/* Settings. */
int bcm_oam_control_set(int unit, bcm_oam_control_t type, uint32 value);
int bcm_oam_control_get(int unit, bcm_oam_control_t type, uint32 *value);

/* Groups. create writes the id; destroy takes the endpoints along. */
void bcm_oam_group_info_t_init(bcm_oam_group_info_t *group_info);
int bcm_oam_group_create(int unit, bcm_oam_group_info_t *group_info);
int bcm_oam_group_get(int unit, bcm_oam_group_t group, bcm_oam_group_info_t *group_info);
int bcm_oam_group_destroy(int unit, bcm_oam_group_t group);
int bcm_oam_group_destroy_all(int unit);
int bcm_oam_group_traverse(int unit, bcm_oam_group_traverse_cb cb, void *user_data);

/* Endpoints. create writes the id. BCM_E_BUSY for a local one to which there are remote ones. */
void bcm_oam_endpoint_info_t_init(bcm_oam_endpoint_info_t *endpoint_info);
int bcm_oam_endpoint_create(int unit, bcm_oam_endpoint_info_t *endpoint_info);
int bcm_oam_endpoint_get(int unit, bcm_oam_endpoint_t endpoint, bcm_oam_endpoint_info_t *endpoint_info);
int bcm_oam_endpoint_destroy(int unit, bcm_oam_endpoint_t endpoint);
int bcm_oam_endpoint_destroy_all(int unit, bcm_oam_group_t group);
int bcm_oam_endpoint_traverse(int unit, bcm_oam_group_t group, bcm_oam_endpoint_traverse_cb cb,
                              void *user_data);

/* What becomes of the packets that an endpoint sees. */
void bcm_oam_endpoint_action_t_init(bcm_oam_endpoint_action_t *action);
int bcm_oam_endpoint_action_set(int unit, bcm_oam_endpoint_action_t *action);

/* Endpoints with defects, at most max_faults of them. */
int bcm_oam_endpoint_fault_multi_get(int unit, uint32 flags, int max_faults,
                                     bcm_oam_endpoint_fault_t *fault_array, int *fault_count);

/*
 * Callbacks on events, several at a time. Those of the types given are told; registering a callback again
 * adds types, unregistering takes some away. BCM_E_NOT_FOUND: not registered.
 */
int bcm_oam_event_register(int unit, bcm_oam_event_types_t event_types, bcm_oam_event_cb cb,
                           void *user_data);
int bcm_oam_event_unregister(int unit, bcm_oam_event_types_t event_types, bcm_oam_event_cb cb);
int bcm_oam_performance_event_register(int unit, bcm_oam_event_types_t event_types,
                                       bcm_oam_performance_event_cb cb, void *user_data);
int bcm_oam_performance_event_unregister(int unit, bcm_oam_event_types_t event_types,
                                         bcm_oam_performance_event_cb cb);

/* Recognising OAM packets, for a whole unit: by one type under one condition, or by sets of them. */
int bcm_oam_lookup_enable_set(int unit, bcm_oam_lookup_type_t type, bcm_oam_condition_t condition,
                              int enable);
int bcm_oam_lookup_enable_get(int unit, bcm_oam_lookup_type_t type, bcm_oam_condition_t condition,
                              int *enable);
int bcm_oam_lookup_enable_multi_set(int unit, bcm_oam_lookup_types_t types, bcm_oam_conditions_t conditions,
                                    int enable);

/* Groups 0..3 of operation codes that can be told apart by one action each. */
int bcm_oam_opcode_group_set(int unit, int opcode_group_id, bcm_oam_opcodes_t opcodes);
int bcm_oam_opcode_group_get(int unit, int opcode_group_id, bcm_oam_opcodes_t *opcodes);

/* Numbers of channel types in packets: the one that is sent, and all that are recognised. */
int bcm_oam_mpls_tp_channel_type_tx_set(int unit, bcm_oam_mpls_tp_channel_type_t channel_type, int value);
int bcm_oam_mpls_tp_channel_type_tx_get(int unit, bcm_oam_mpls_tp_channel_type_t channel_type, int *value);
int bcm_oam_mpls_tp_channel_type_rx_add(int unit, bcm_oam_mpls_tp_channel_type_t channel_type, int value);
int bcm_oam_mpls_tp_channel_type_rx_delete(int unit, bcm_oam_mpls_tp_channel_type_t channel_type, int value);

/* Maps from priority (index of the array, 0..7) to the counter of loss measurement. */
int bcm_oam_pri_map_create(int unit, uint32 flags, int pri_count, int *offset_array, int *pri_map_id);
int bcm_oam_pri_map_get(int unit, int pri_map_id, int pri_max, int *offset_array, int *pri_count);
int bcm_oam_pri_map_destroy(int unit, int pri_map_id);

/* Loss measurement. Here and below, get takes the endpoint, and the remote one if any, from the record. */
void bcm_oam_loss_t_init(bcm_oam_loss_t *loss);
int bcm_oam_loss_add(int unit, bcm_oam_loss_t *loss);
int bcm_oam_loss_get(int unit, bcm_oam_loss_t *loss);
int bcm_oam_loss_delete(int unit, bcm_oam_endpoint_t id, bcm_oam_endpoint_t remote_id);

/* Delay measurement. */
void bcm_oam_delay_t_init(bcm_oam_delay_t *delay);
int bcm_oam_delay_add(int unit, bcm_oam_delay_t *delay);
int bcm_oam_delay_get(int unit, bcm_oam_delay_t *delay);
int bcm_oam_delay_delete(int unit, bcm_oam_endpoint_t id, bcm_oam_endpoint_t remote_id);

/* Alarm indication. */
int bcm_oam_ais_add(int unit, bcm_oam_ais_t *ais);
int bcm_oam_ais_get(int unit, bcm_oam_ais_t *ais);
int bcm_oam_ais_delete(int unit, bcm_oam_endpoint_t id);

/* Sending test packets, and receiving them. */
void bcm_oam_tst_tx_t_init(bcm_oam_tst_tx_t *tst_tx);
int bcm_oam_tst_tx_add(int unit, bcm_oam_tst_tx_t *tst_tx);
int bcm_oam_tst_tx_get(int unit, bcm_oam_tst_tx_t *tst_tx);
int bcm_oam_tst_tx_delete(int unit, bcm_oam_endpoint_t id);
void bcm_oam_tst_rx_t_init(bcm_oam_tst_rx_t *tst_rx);
int bcm_oam_tst_rx_add(int unit, bcm_oam_tst_rx_t *tst_rx);
int bcm_oam_tst_rx_get(int unit, bcm_oam_tst_rx_t *tst_rx);
int bcm_oam_tst_rx_delete(int unit, bcm_oam_endpoint_t id);

/* Loopback. */
void bcm_oam_loopback_t_init(bcm_oam_loopback_t *loopback);
int bcm_oam_loopback_add(int unit, bcm_oam_loopback_t *loopback);
int bcm_oam_loopback_get(int unit, bcm_oam_loopback_t *loopback);
int bcm_oam_loopback_delete(int unit, bcm_oam_endpoint_t id);

/* Protection state coordination. */
void bcm_oam_psc_t_init(bcm_oam_psc_t *psc);
int bcm_oam_psc_add(int unit, bcm_oam_psc_t *psc);
int bcm_oam_psc_get(int unit, bcm_oam_psc_t *psc);
int bcm_oam_psc_delete(int unit, bcm_oam_endpoint_t id);

/* Status of pseudowires. */
int bcm_oam_pw_status_add(int unit, bcm_oam_pw_status_t *pw_status);
int bcm_oam_pw_status_get(int unit, bcm_oam_pw_status_t *pw_status);
int bcm_oam_pw_status_delete(int unit, bcm_oam_endpoint_t id);

/*
 * Profiles. create writes the id; deleting one that endpoints have gives BCM_E_BUSY. An endpoint has at
 * most one per type of measurement.
 */
void bcm_oam_pm_profile_info_t_init(bcm_oam_pm_profile_info_t *profile_info);
int bcm_oam_pm_profile_create(int unit, bcm_oam_pm_profile_info_t *profile_info);
int bcm_oam_pm_profile_get(int unit, bcm_oam_pm_profile_t profile_id,
                           bcm_oam_pm_profile_info_t *profile_info);
int bcm_oam_pm_profile_delete(int unit, bcm_oam_pm_profile_t profile_id);
int bcm_oam_pm_profile_traverse(int unit, bcm_oam_pm_profile_traverse_cb cb, void *user_data);
int bcm_oam_pm_profile_attach(int unit, bcm_oam_endpoint_t endpoint, bcm_oam_pm_profile_t profile_id);
int bcm_oam_pm_profile_detach(int unit, bcm_oam_endpoint_t endpoint, bcm_oam_pm_profile_t profile_id);

/*
 * What profiles gathered, in the present interval (0) or one of those before (1 for the last), and callbacks
 * on the thresholds of profiles and on raw data.
 */
void bcm_oam_pm_stats_t_init(bcm_oam_pm_stats_t *stats);
int bcm_oam_pm_stats_get(int unit, bcm_oam_endpoint_t endpoint, bcm_oam_pm_profile_t profile_id, int interval,
                         bcm_oam_pm_stats_t *stats);
int bcm_oam_pm_event_register(int unit, bcm_oam_event_types_t event_types, bcm_oam_pm_event_cb cb,
                              void *user_data);
int bcm_oam_pm_event_unregister(int unit, bcm_oam_event_types_t event_types, bcm_oam_pm_event_cb cb);

/* Raw measurements: what is ready, and giving the buffers of the event types given back to the unit. */
int bcm_oam_pm_raw_data_get(int unit, bcm_oam_pm_raw_data_t *raw_data);
int bcm_oam_pm_raw_data_read_done(int unit, bcm_oam_event_types_t event_types);

#ifdef __cplusplus
}
#endif

#endif
