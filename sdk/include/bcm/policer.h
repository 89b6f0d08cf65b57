/*
 * Policers: meters that colour packets by rate, and what becomes of each colour.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT
 * and BCM_E_PARAM (null pointer, selector out of range, unknown flag combination). Rates are in
 * kbit/s, or packets/s with BCM_POLICER_MODE_PACKETS; bursts in kbit, or packets. Functions that take a
 * policer give BCM_E_NOT_FOUND if there is none of that id. What meters do not do is BCM_E_UNAVAIL.
 */
#ifndef BCM_POLICER_H
#define BCM_POLICER_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_policer_config_t. */
typedef enum bcm_policer_flag_e {
    BCM_POLICER_WITH_ID = 0x00000001,     /* *policer_id is the id to use */
    BCM_POLICER_REPLACE = 0x00000002,     /* replace the policer of that id */
    BCM_POLICER_COLOR_BLIND = 0x00000004, /* packets come as green, whatever their colour */
    BCM_POLICER_COLOR_MERGE = 0x00000008, /* yellow and red packets share a bucket */
    BCM_POLICER_DROP_RED = 0x00000010,
    BCM_POLICER_MODE_BYTES = 0x00000020,
    BCM_POLICER_MODE_PACKETS = 0x00000040,
    BCM_POLICER_GLOBAL = 0x00000080,      /* one meter for all pipes of the device */
    BCM_POLICER_EGRESS = 0x00000100,
    BCM_POLICER_BEGIN_WITH_BUCKET_FULL = 0x00000200
} bcm_policer_flag_t;

/* flags of bcm_policer_group_mode_id_create and bcm_policer_map_t. */
#define BCM_POLICER_GROUP_MODE_INGRESS 0x00000001
#define BCM_POLICER_GROUP_MODE_EGRESS 0x00000002
#define BCM_POLICER_GROUP_MODE_WITH_ID 0x00000004  /* *mode_id is the id to use */
#define BCM_POLICER_MAP_INGRESS 0x00000001
#define BCM_POLICER_MAP_EGRESS 0x00000002

/* How a meter works. */
typedef enum bcm_policer_mode_e {
    bcmPolicerModeCommitted = 0,          /* one bucket, committed rate; over it packets are red */
    bcmPolicerModePeak,                   /* one bucket, peak rate */
    bcmPolicerModeSrTcm,                  /* single rate, three colours (RFC 2697) */
    bcmPolicerModeSrTcmModified,
    bcmPolicerModeTrTcm,                  /* two rates, three colours (RFC 2698) */
    bcmPolicerModeTrTcmDs,                /* the same for differentiated services (RFC 4115) */
    bcmPolicerModeCoupledTrTcmDs,         /* what is left of the committed bucket goes to the other */
    bcmPolicerModeMefBandwidthProfile,    /* with coupling flag (MEF 10) */
    bcmPolicerModePassThrough,
    bcmPolicerModeGreen,                  /* all packets green, yellow or red */
    bcmPolicerModeYellow,
    bcmPolicerModeRed,
    bcmPolicerModeCount
} bcm_policer_mode_t;

/* How a policer at the next level shares its rate with those below. */
typedef enum bcm_policer_sharing_mode_e {
    bcmPolicerSharingModeNone = 0,
    bcmPolicerSharingModeMin,             /* below have a rate of their own */
    bcmPolicerSharingModeMax,             /* below may take what is free, up to a rate */
    bcmPolicerSharingModeMinMax,
    bcmPolicerSharingModeColorAware,
    bcmPolicerSharingModeCount
} bcm_policer_sharing_mode_t;

/* What a policer counts, see bcm_policer_stat_get. */
typedef enum bcm_policer_stat_e {
    bcmPolicerStatGreenPackets = 0,
    bcmPolicerStatGreenBytes,
    bcmPolicerStatYellowPackets,
    bcmPolicerStatYellowBytes,
    bcmPolicerStatRedPackets,
    bcmPolicerStatRedBytes,
    bcmPolicerStatNotGreenPackets,
    bcmPolicerStatNotGreenBytes,
    bcmPolicerStatNotRedPackets,
    bcmPolicerStatNotRedBytes,
    bcmPolicerStatAcceptedPackets,
    bcmPolicerStatAcceptedBytes,
    bcmPolicerStatDroppedPackets,
    bcmPolicerStatDroppedBytes,
    bcmPolicerStatGreenToYellowPackets,   /* coloured worse than they came */
    bcmPolicerStatGreenToYellowBytes,
    bcmPolicerStatGreenToRedPackets,
    bcmPolicerStatGreenToRedBytes,
    bcmPolicerStatYellowToRedPackets,
    bcmPolicerStatYellowToRedBytes,
    bcmPolicerStatPackets,
    bcmPolicerStatBytes,
    bcmPolicerStatCount
} bcm_policer_stat_t;

/* What an action does to packets of a colour, see bcm_policer_action_add. */
typedef enum bcm_policer_action_e {
    bcmPolicerActionNone = 0,
    bcmPolicerActionDrop,
    bcmPolicerActionDropPrecedence,       /* param: bcm_color_t */
    bcmPolicerActionCopyToCpu,
    bcmPolicerActionTrapToCpu,
    bcmPolicerActionMirror,               /* param: mirror destination */
    bcmPolicerActionDscpNew,              /* param: the new value, also in those below */
    bcmPolicerActionEcnNew,
    bcmPolicerActionMplsExpNew,
    bcmPolicerActionOuterPktPrioNew,
    bcmPolicerActionInnerPktPrioNew,
    bcmPolicerActionOuterCfiNew,
    bcmPolicerActionInnerCfiNew,
    bcmPolicerActionIntPrioNew,
    bcmPolicerActionCosqNew,
    bcmPolicerActionDscpCancel,           /* undoes what an earlier stage decided, as those below */
    bcmPolicerActionMplsExpCancel,
    bcmPolicerActionPrioCancel,
    bcmPolicerActionCount
} bcm_policer_action_t;

/* Ready-made ways of choosing a policer of a group by properties of the packet. */
typedef enum bcm_policer_group_mode_e {
    bcmPolicerGroupModeSingle = 0,        /* one policer for all packets */
    bcmPolicerGroupModeTrafficType,       /* unicast, multicast, broadcast */
    bcmPolicerGroupModeCastType,
    bcmPolicerGroupModeDlfAll,            /* unknown destination, all */
    bcmPolicerGroupModeDlfIntPri,
    bcmPolicerGroupModeTyped,             /* known unicast, unknown unicast, multicast, broadcast */
    bcmPolicerGroupModeTypedAll,
    bcmPolicerGroupModeTypedIntPri,
    bcmPolicerGroupModeSingleWithControl, /* control packets apart */
    bcmPolicerGroupModeIntPri,
    bcmPolicerGroupModeIntPriColor,
    bcmPolicerGroupModeIntPriCascade,     /* one level above the policers of the priorities */
    bcmPolicerGroupModeIntPriCascadeNoCoupling,
    bcmPolicerGroupModeColor,
    bcmPolicerGroupModeDot1P,
    bcmPolicerGroupModeInnerDot1P,
    bcmPolicerGroupModeDscp,
    bcmPolicerGroupModeDscpAll,
    bcmPolicerGroupModeMplsExp,
    bcmPolicerGroupModeDvpType,
    bcmPolicerGroupModeSvpType,
    bcmPolicerGroupModeTagState,          /* untagged, single, double */
    bcmPolicerGroupModeCascade,
    bcmPolicerGroupModeCascadeWithCoupling,
    bcmPolicerGroupModeCount
} bcm_policer_group_mode_t;

/* Packet properties that a policer of a group can depend on (bcm_policer_group_mode_attr_selector_t). */
typedef enum bcm_policer_group_mode_attr_e {
    bcmPolicerGroupModeAttrInvalid = 0,
    bcmPolicerGroupModeAttrColor,
    bcmPolicerGroupModeAttrIntPri,
    bcmPolicerGroupModeAttrVlan,
    bcmPolicerGroupModeAttrOuterPri,
    bcmPolicerGroupModeAttrInnerPri,
    bcmPolicerGroupModeAttrOuterCfi,
    bcmPolicerGroupModeAttrInnerCfi,
    bcmPolicerGroupModeAttrPort,
    bcmPolicerGroupModeAttrTosDscp,
    bcmPolicerGroupModeAttrTosEcn,
    bcmPolicerGroupModeAttrPktType,
    bcmPolicerGroupModeAttrIngNetworkGroup,
    bcmPolicerGroupModeAttrEgrNetworkGroup,
    bcmPolicerGroupModeAttrDrop,
    bcmPolicerGroupModeAttrPacketTypeIp,
    bcmPolicerGroupModeAttrUdf,
    bcmPolicerGroupModeAttrFieldIngressColor,
    bcmPolicerGroupModeAttrVrf,
    bcmPolicerGroupModeAttrSourceVp,
    bcmPolicerGroupModeAttrDestVp,
    bcmPolicerGroupModeAttrCount
} bcm_policer_group_mode_attr_t;

/* Values of bcmPolicerGroupModeAttrPktType. */
typedef enum bcm_policer_group_mode_attr_pkt_type_e {
    bcmPolicerGroupModeAttrPktTypeAll = 0,
    bcmPolicerGroupModeAttrPktTypeUnknown,
    bcmPolicerGroupModeAttrPktTypeControl,
    bcmPolicerGroupModeAttrPktTypeOam,
    bcmPolicerGroupModeAttrPktTypeBfd,
    bcmPolicerGroupModeAttrPktTypeBpdu,
    bcmPolicerGroupModeAttrPktTypePtp,
    bcmPolicerGroupModeAttrPktTypeUnknownL2Ucast,
    bcmPolicerGroupModeAttrPktTypeKnownL2Ucast,
    bcmPolicerGroupModeAttrPktTypeUnknownL2Mcast,
    bcmPolicerGroupModeAttrPktTypeKnownL2Mcast,
    bcmPolicerGroupModeAttrPktTypeL2Bcast,
    bcmPolicerGroupModeAttrPktTypeKnownL3Ucast,
    bcmPolicerGroupModeAttrPktTypeUnknownL3Ucast,
    bcmPolicerGroupModeAttrPktTypeKnownIpmc,
    bcmPolicerGroupModeAttrPktTypeUnknownIpmc,
    bcmPolicerGroupModeAttrPktTypeMpls,
    bcmPolicerGroupModeAttrPktTypeMplsMcast,
    bcmPolicerGroupModeAttrPktTypeTrill,
    bcmPolicerGroupModeAttrPktTypeMim,
    bcmPolicerGroupModeAttrPktTypeCount
} bcm_policer_group_mode_attr_pkt_type_t;

/* Bytes of a packet that a meter counts beside its payload. */
typedef enum bcm_policer_packet_length_e {
    bcmPolicerPacketLengthPayload = 0,
    bcmPolicerPacketLengthWithCrc,
    bcmPolicerPacketLengthWithPreamble,   /* also the gap between packets */
    bcmPolicerPacketLengthWithSystemHeader,
    bcmPolicerPacketLengthCount
} bcm_policer_packet_length_t;

/* Behaviour of all policers of a unit, see bcm_policer_control_set. */
typedef enum bcm_policer_control_e {
    bcmPolicerControlEnable = 0,          /* 0: no packet is coloured */
    bcmPolicerControlRefreshEnable,       /* 0: buckets are not refilled */
    bcmPolicerControlRefreshInterval,     /* microseconds */
    bcmPolicerControlPacketLengthAdjust,  /* bytes added to each packet, may be negative */
    bcmPolicerControlPacketLength,        /* bcm_policer_packet_length_t */
    bcmPolicerControlDropControlPackets,  /* whether control packets can be dropped */
    bcmPolicerControlDropMirrorPackets,
    bcmPolicerControlMeterDropped,        /* whether packets that are dropped anyway take tokens */
    bcmPolicerControlCount
} bcm_policer_control_t;

/* Which of two decisions about a packet's colour wins. */
typedef enum bcm_policer_color_resolution_type_e {
    bcmPolicerColorResolutionPessimistic = 0,
    bcmPolicerColorResolutionOptimistic,
    bcmPolicerColorResolutionFirst,
    bcmPolicerColorResolutionLast,
    bcmPolicerColorResolutionByStage,
    bcmPolicerColorResolutionTable,
    bcmPolicerColorResolutionCount
} bcm_policer_color_resolution_type_t;

/* Where in a packet's way its colour is decided. */
typedef enum bcm_policer_color_stage_e {
    bcmPolicerColorStageParser = 0,
    bcmPolicerColorStageQosMap,
    bcmPolicerColorStageField,
    bcmPolicerColorStageEthernetPolicer,
    bcmPolicerColorStagePrimaryPolicer,
    bcmPolicerColorStageSecondaryPolicer,
    bcmPolicerColorStageEgressPolicer,
    bcmPolicerColorStageCount
} bcm_policer_color_stage_t;

/* Levels of policers that a packet passes. */
typedef enum bcm_policer_level_e {
    bcmPolicerLevelMicroFlow = 0,
    bcmPolicerLevelMacroFlow,
    bcmPolicerLevelAggregate,
    bcmPolicerLevelEthernet,
    bcmPolicerLevelCount
} bcm_policer_level_t;

/* A policer. Those *_lower and *_upper bound what the device makes of a rate or burst; 0 for no bound. */
typedef struct bcm_policer_config_s {
    uint32 flags;                         /* BCM_POLICER_* */
    bcm_policer_mode_t mode;
    bcm_core_t core_id;
    uint32 ckbits_sec;                    /* committed rate */
    uint32 ckbits_sec_lower;
    uint32 ckbits_sec_upper;
    uint32 ckbits_burst;
    uint32 ckbits_burst_lower;
    uint32 ckbits_burst_upper;
    uint32 pkbits_sec;                    /* peak or excess rate */
    uint32 pkbits_sec_lower;
    uint32 pkbits_sec_upper;
    uint32 pkbits_burst;
    uint32 pkbits_burst_lower;
    uint32 pkbits_burst_upper;
    uint32 max_ckbits_sec;                /* most that sharing may add to the committed rate */
    uint32 max_pkbits_sec;
    int action_id;                        /* 0: packets are only coloured */
    bcm_policer_sharing_mode_t sharing_mode;
    bcm_policer_level_t level;
    int pkt_length_adjust;                /* bytes added to each packet, may be negative */
    int share_with;                       /* policer whose spare rate this one may take, 0 for none */
} bcm_policer_config_t;

/* Policers that share a rate. */
typedef struct bcm_policer_aggregate_group_info_s {
    uint32 flags;
    bcm_policer_t aggregate_policer_id;   /* the policer of the whole group */
    int num_policers;
    bcm_policer_t base_policer_id;        /* the first of num_policers in a row */
    bcm_policer_group_mode_t group_mode;
    uint32 mode_id;                       /* 0 for group_mode */
    bcm_core_t core_id;
} bcm_policer_aggregate_group_info_t;

/* Packets of this priority and colour are metered by policer_offset of the group. */
typedef struct bcm_policer_map_s {
    uint32 flags;                         /* BCM_POLICER_MAP_* */
    int pkt_pri;                          /* 0..7 */
    int pkt_cfi;                          /* 0, 1 */
    bcm_color_t color;
    int policer_offset;
} bcm_policer_map_t;

/* Packets whose attr has attr_value are metered by policer_offset of the group. */
typedef struct bcm_policer_group_mode_attr_selector_s {
    uint32 policer_offset;
    bcm_policer_group_mode_attr_t attr;
    uint32 attr_value;
} bcm_policer_group_mode_attr_selector_t;

/* What a packet's stages said about its colour. */
typedef struct bcm_policer_color_decision_s {
    bcm_policer_color_stage_t stage;
    bcm_color_t color_in;
    bcm_color_t color_meter;
    bcm_color_t color_out;                /* what becomes of these two */
} bcm_policer_color_decision_t;

/* How decisions about a packet's colour are brought together. */
typedef struct bcm_policer_color_resolution_s {
    uint32 flags;
    bcm_policer_color_resolution_type_t type;
    bcm_policer_color_stage_t first_stage;  /* wins, if the type is by stage */
    int drop_red;
} bcm_policer_color_resolution_t;

/* Called once per policer by ascending id; a negative result ends the traversal, which then returns it. */
typedef int (*bcm_policer_traverse_cb)(int unit, bcm_policer_t policer_id, bcm_policer_config_t *config,
                                       void *user_data);

/* All members zero. */
void bcm_policer_config_t_init(bcm_policer_config_t *config);
void bcm_policer_aggregate_group_info_t_init(bcm_policer_aggregate_group_info_t *info);
void bcm_policer_map_t_init(bcm_policer_map_t *map);

/* The module. init destroys all policers, groups and actions. */
int bcm_policer_init(int unit);

/*
 * Policers. create gives BCM_E_EXISTS for an id in use unless it is to be replaced, BCM_E_FULL if none is
 * free. destroy gives BCM_E_BUSY while something refers to the policer; destroy_all does not ask.
 */
int bcm_policer_create(int unit, bcm_policer_config_t *config, bcm_policer_t *policer_id);
int bcm_policer_destroy(int unit, bcm_policer_t policer_id);
int bcm_policer_destroy_all(int unit);
int bcm_policer_get(int unit, bcm_policer_t policer_id, bcm_policer_config_t *config);
int bcm_policer_set(int unit, bcm_policer_t policer_id, bcm_policer_config_t *config);
int bcm_policer_traverse(int unit, bcm_policer_traverse_cb cb, void *user_data);

/* Envelopes: policers whose tokens are also taken from those of a macro-flow policer. */
int bcm_policer_envelop_create(int unit, uint32 flag, bcm_policer_t macro_flow_policer_id,
                               bcm_policer_t *policer_id);
int bcm_policer_envelop_group_create(int unit, uint32 flag, bcm_policer_t macro_flow_policer_id,
                                     bcm_policer_group_mode_t mode, bcm_policer_t *policer_id,
                                     int *npolicers);

/*
 * Groups of policers in a row, for an object, on a core or (-1) on all: by a ready-made mode, or by one that
 * a mode id stands for. *policer_id is the first, *npolicers how many.
 */
int bcm_policer_group_create(int unit, bcm_core_t core, bcm_policer_group_mode_t mode,
                             bcm_policer_t *policer_id, int *npolicers);
int bcm_policer_custom_group_create(int unit, bcm_core_t core, uint32 mode_id,
                                    bcm_policer_t macro_flow_policer_id, bcm_policer_t *policer_id,
                                    int *npolicers);
int bcm_policer_aggregate_group_create(int unit, bcm_policer_aggregate_group_info_t *info,
                                       bcm_policer_t *policer_id, int *npolicers);
int bcm_policer_aggregate_group_get(int unit, bcm_policer_t policer_id,
                                    bcm_policer_aggregate_group_info_t *info, int *npolicers);

/*
 * Modes of one's own. get fills in at most num_selectors selectors and says in *actual_num_selectors how
 * many the mode has.
 */
int bcm_policer_group_mode_id_create(int unit, uint32 flags, uint32 total_policers, uint32 num_selectors,
                                     bcm_policer_group_mode_attr_selector_t *attr_selectors,
                                     uint32 *mode_id);
int bcm_policer_group_mode_id_get(int unit, uint32 mode_id, uint32 *flags, uint32 *total_policers,
                                  uint32 num_selectors,
                                  bcm_policer_group_mode_attr_selector_t *attr_selectors,
                                  uint32 *actual_num_selectors);
int bcm_policer_group_mode_id_destroy(int unit, uint32 mode_id);

/* Which policer of a group meters packets of a priority and colour, see bcm_policer_map_t. */
int bcm_policer_map_create(int unit, uint32 flags, int *map_id);
int bcm_policer_map_destroy(int unit, int map_id);
int bcm_policer_map_add(int unit, int map_id, bcm_policer_map_t *map);
int bcm_policer_map_delete(int unit, int map_id, bcm_policer_map_t *map);
int bcm_policer_map_multi_get(int unit, int map_id, int array_size, bcm_policer_map_t *array,
                              int *array_count);

/*
 * What becomes of packets of a colour, under an id that policers refer to; parameters as the action needs
 * them.
 */
int bcm_policer_action_create(int unit, uint32 *action_id);
int bcm_policer_action_destroy(int unit, uint32 action_id);
int bcm_policer_action_add(int unit, uint32 action_id, bcm_color_t color, bcm_policer_action_t action,
                           uint32 param0, uint32 param1);
int bcm_policer_action_get(int unit, uint32 action_id, bcm_color_t color, bcm_policer_action_t action,
                           uint32 *param0, uint32 *param1);

/* How the colours that several stages gave a packet become one. */
int bcm_policer_color_resolution_set(int unit, bcm_policer_color_resolution_t *resolution,
                                     int array_count, bcm_policer_color_decision_t *decision_array);
int bcm_policer_color_resolution_get(int unit, bcm_policer_color_resolution_t *resolution, int array_max,
                                     bcm_policer_color_decision_t *decision_array, int *array_count);

/* Counters of a policer on a core, -1 for all; set is for clearing them. */
int bcm_policer_stat_enable_set(int unit, bcm_policer_t policer_id, int enable);
int bcm_policer_stat_get(int unit, bcm_policer_t policer_id, bcm_core_t core, bcm_policer_stat_t stat,
                         uint64 *value);
int bcm_policer_stat_get32(int unit, bcm_policer_t policer_id, bcm_core_t core, bcm_policer_stat_t stat,
                           uint32 *value);
int bcm_policer_stat_set(int unit, bcm_policer_t policer_id, bcm_core_t core, bcm_policer_stat_t stat,
                         uint64 value);

/* Behaviour of all policers of a core, -1 for all. */
int bcm_policer_control_set(int unit, bcm_core_t core, bcm_policer_control_t type, int arg);
int bcm_policer_control_get(int unit, bcm_core_t core, bcm_policer_control_t type, int *arg);

#ifdef __cplusplus
}
#endif

#endif
