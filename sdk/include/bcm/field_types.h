/*
 * Records, ids and flags of the field processor.
 */
#ifndef BCM_FIELD_TYPES_H
#define BCM_FIELD_TYPES_H

#include <bcm/field_actions.h>
#include <bcm/field_qualifiers.h>
#include <bcm/field_values.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>
#include <shared/bitop.h>

typedef int bcm_field_group_t;
typedef uint32 bcm_field_entry_t;
typedef uint32 bcm_field_range_t;
typedef int bcm_field_presel_t;
typedef int bcm_field_hintid_t;

/* Priority of a group for which any will do, since no other matches the same packets. */
#define BCM_FIELD_GROUP_PRIO_ANY 0x80000001

/* User-defined fields, and conditions that select a group before it is looked up. */
#define BCM_FIELD_USER_UDF_MAX 93
#define BCM_FIELD_PRESEL_MAX 128

/* flags of ranges: the fields that they are compared with. */
typedef enum bcm_field_range_flag_e {
    BCM_FIELD_RANGE_SRCPORT = 0x00000001, /* of TCP or UDP, if neither of those is given */
    BCM_FIELD_RANGE_DSTPORT = 0x00000002,
    BCM_FIELD_RANGE_OUTER_VLAN = 0x00000004,
    BCM_FIELD_RANGE_INNER_VLAN = 0x00000008,
    BCM_FIELD_RANGE_PACKET_LENGTH = 0x00000010,
    BCM_FIELD_RANGE_VPORT = 0x00000020,
    BCM_FIELD_RANGE_TCP = 0x00000040,
    BCM_FIELD_RANGE_UDP = 0x00000080
} bcm_field_range_flag_t;

/* flags of bcm_field_group_config_t: which of its members count; without them each has a default. */
typedef enum bcm_field_group_create_flag_e {
    BCM_FIELD_GROUP_CREATE_WITH_ID = 0x00000001,
    BCM_FIELD_GROUP_CREATE_WITH_PORTS = 0x00000002,
    BCM_FIELD_GROUP_CREATE_WITH_MODE = 0x00000004,
    BCM_FIELD_GROUP_CREATE_WITH_ASET = 0x00000008,
    BCM_FIELD_GROUP_CREATE_WITH_PRESELSET = 0x00000010,
    BCM_FIELD_GROUP_CREATE_WITH_GROUP_REF = 0x00000020, /* share the table of group_ref */
    BCM_FIELD_GROUP_CREATE_WITH_MAX_ENTRY_PRIORITIES = 0x00000040,
    BCM_FIELD_GROUP_CREATE_WITH_HINTS = 0x00000080,
    BCM_FIELD_GROUP_CREATE_WITH_ACTION_RES_ID = 0x00000100,
    BCM_FIELD_GROUP_CREATE_WLAN = 0x00000200
} bcm_field_group_create_flag_t;

/* flags of bcm_field_entry_oper_t: one of them. */
#define BCM_FIELD_ENTRY_OPER_INSTALL 0x00000001
#define BCM_FIELD_ENTRY_OPER_REMOVE 0x00000002

/* flags of other records. */
#define BCM_FIELD_DATA_QUALIFIER_WITH_ID 0x00000001      /* qual_id is the id to use */
#define BCM_FIELD_EXTRACTION_FIELD_CONSTANT 0x00000001   /* value instead of bits of the qualifier */
#define BCM_FIELD_ACTION_CORE_CONFIG_ALL 0x00000001      /* the parameters hold for all cores */

/* flags of bcm_field_oam_stat_action_add. */
#define BCM_FIELD_OAM_STAT_ACTION_REPLACE 0x00000001

/* Colours, as bcm_field_qualify_Color and its siblings take them. */
typedef enum bcm_field_color_e {
    BCM_FIELD_COLOR_GREEN = 0,
    BCM_FIELD_COLOR_YELLOW = 1,
    BCM_FIELD_COLOR_RED = 2
} bcm_field_color_t;

/* Bits of bcm_field_qualify_VlanFormat and bcm_field_qualify_TranslatedVlanFormat. */
#define BCM_FIELD_VLAN_FORMAT_INNER_TAGGED 0x01
#define BCM_FIELD_VLAN_FORMAT_OUTER_TAGGED 0x02

/* Bits of bcm_field_qualify_IpFlags. */
#define BCM_FIELD_IP_FLAGS_MF 0x01
#define BCM_FIELD_IP_FLAGS_DF 0x02

/* Bits of bcm_field_qualify_TcpControl. */
typedef enum bcm_field_tcp_control_e {
    BCM_FIELD_TCP_CONTROL_FIN = 0x01,
    BCM_FIELD_TCP_CONTROL_SYN = 0x02,
    BCM_FIELD_TCP_CONTROL_RST = 0x04,
    BCM_FIELD_TCP_CONTROL_PSH = 0x08,
    BCM_FIELD_TCP_CONTROL_ACK = 0x10,
    BCM_FIELD_TCP_CONTROL_URG = 0x20
} bcm_field_tcp_control_t;

/* What an OAM counter of one mode does with the packets of one kind of object. */
typedef struct bcm_field_oam_stat_action_s {
    bcm_stat_object_t stat_object;
    uint32 stat_mode_id;
    bcm_field_oam_stat_action_type_t action;
} bcm_field_oam_stat_action_t;

/*
 * Packets for which a data qualifier holds, and relative_offset, the bytes that are added to its offset for
 * them: by EtherType, by IP protocol, by all of their headers.
 */
typedef struct bcm_field_data_ethertype_s {
    int relative_offset;
    bcm_ethertype_t ethertype;
    bcm_field_L2Format_t l2;
    bcm_field_data_vlan_tag_t vlan_tag;
    uint32 flags;                      /* none yet, 0 */
} bcm_field_data_ethertype_t;

typedef struct bcm_field_data_ip_protocol_s {
    int relative_offset;
    uint32 flags;                      /* none yet, 0 */
    uint8 ip;                          /* protocol number */
    bcm_field_L2Format_t l2;
    bcm_field_data_vlan_tag_t vlan_tag;
} bcm_field_data_ip_protocol_t;

typedef struct bcm_field_data_packet_format_s {
    int relative_offset;
    bcm_field_L2Format_t l2;
    bcm_field_data_vlan_tag_t vlan_tag;
    bcm_field_IpType_t outer_ip;
    bcm_field_IpType_t inner_ip;
    bcm_field_TunnelType_t tunnel;
    int mpls;                          /* number of labels, -1 for any */
    bcm_field_FibreChan_t fibre_chan_outer;
    bcm_field_FibreChan_t fibre_chan_inner;
    uint32 flags;                      /* none yet, 0 */
} bcm_field_data_packet_format_t;

/* One bit per bcm_field_header_format_t. */
typedef struct bcm_field_header_format_set_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(bcmFieldHeaderFormatCount)];
} bcm_field_header_format_set_t;

/* How a stage selects groups before they are looked up. */
typedef struct bcm_field_stage_info_s {
    int field_presel_advanced_mode;    /* 1 if conditions may use all qualifiers of the stage */
    bcm_field_presel_t field_presel_max_id;
} bcm_field_stage_info_t;

/* Bytes of the packet that are matched wherever no named qualifier reaches. */
typedef struct bcm_field_data_qualifier_s {
    int qual_id;
    uint32 flags;                      /* BCM_FIELD_DATA_QUALIFIER_* */
    bcm_field_data_offset_base_t offset_base;
    int offset;                        /* bytes from offset_base */
    int length;                        /* bytes */
    bcm_field_qualify_t qualifier;     /* takes the place of this one if it has a name after all */
    bcm_field_stage_t stage;
    char *name;                        /* for bcm_field_show; may be null */
} bcm_field_data_qualifier_t;

/* IEEE 802.2 header. */
typedef struct bcm_field_llc_header_s {
    uint8 dsap;
    uint8 ssap;
    uint8 control;
} bcm_field_llc_header_t;

/* SNAP header. */
typedef struct bcm_field_snap_header_s {
    uint32 org_code;                   /* 24 bits */
    uint16 type;
} bcm_field_snap_header_t;

/* Where a user-defined field begins, in bytes from the start of the packet. */
typedef struct bcm_field_udf_spec_s {
    uint32 offset;
} bcm_field_udf_spec_t;

/* Qualifiers of a group: one bit per bcm_field_qualify_t, then per user-defined field. */
typedef struct bcm_field_qset_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(bcmFieldQualifyCount + BCM_FIELD_USER_UDF_MAX)];
    SHR_BITDCL udf_map[_SHR_BITDCLSIZE(BCM_FIELD_USER_UDF_MAX)]; /* fields that are in use */
} bcm_field_qset_t;

/* Actions that entries of a group may have: one bit per bcm_field_action_t. */
typedef struct bcm_field_aset_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(bcmFieldActionCount)];
} bcm_field_aset_t;

/* A class that an action of an entry gives to packets. */
typedef struct bcm_field_class_info_s {
    bcm_field_action_t action;
    uint32 class_id;
} bcm_field_class_info_t;

/* How many groups there can be and how many more. */
typedef struct bcm_field_status_s {
    int group_total;
    int group_free;
    uint32 flags;
} bcm_field_status_t;

/* Priorities that entries of a group may have, and what the group has used and may still use. */
typedef struct bcm_field_group_status_s {
    int prio_min;
    int prio_max;
    int entries_total;
    int entries_free;
    int counters_total;
    int counters_free;
    int meters_total;
    int meters_free;
    int entry_count;
    int counter_count;
    int meter_count;
} bcm_field_group_status_t;

/* Conditions, one bit per bcm_field_presel_t. */
typedef struct bcm_field_presel_set_s {
    SHR_BITDCL w[_SHR_BITDCLSIZE(BCM_FIELD_PRESEL_MAX)];
} bcm_field_presel_set_t;

/* A group to be created. */
typedef struct bcm_field_group_config_s {
    uint32 flags;                      /* BCM_FIELD_GROUP_CREATE_* */
    bcm_field_qset_t qset;
    int priority;                      /* higher wins; BCM_FIELD_GROUP_PRIO_ANY */
    bcm_field_group_mode_t mode;
    bcm_pbmp_t ports;                  /* only packets from these */
    bcm_field_group_t group;
    bcm_field_aset_t aset;
    bcm_field_presel_set_t preselset;
    bcm_field_group_t group_ref;
    uint32 max_entry_priorities;
    bcm_field_hintid_t hintid;
    int action_res_id;                 /* groups of the same id write their results to the same place */
} bcm_field_group_config_t;

/* Bits of the key that become part of a result. */
typedef struct bcm_field_extraction_field_s {
    uint32 flags;                      /* BCM_FIELD_EXTRACTION_FIELD_* */
    bcm_field_qualify_t qualifier;
    uint32 lsb;
    uint32 bits;
    uint32 value;
} bcm_field_extraction_field_t;

/* An action whose parameter is extracted, and what is added to it. */
typedef struct bcm_field_extraction_action_s {
    bcm_field_action_t action;
    uint32 bias;
} bcm_field_extraction_action_t;

/* Parameters of an action for one core of the chip. */
typedef struct bcm_field_action_core_config_s {
    uint32 flags;                      /* BCM_FIELD_ACTION_CORE_CONFIG_* */
    uint32 param0;
    uint32 param1;
    uint32 param2;
} bcm_field_action_core_config_t;

/* One step of bcm_field_entry_operation. */
typedef struct bcm_field_entry_oper_s {
    uint32 flags;                      /* BCM_FIELD_ENTRY_OPER_* */
    bcm_field_entry_t entry_id;
} bcm_field_entry_oper_t;

/* What is known beforehand about the entries of a group. */
typedef struct bcm_field_hint_s {
    bcm_field_hint_type_t hint_type;
    bcm_field_qualify_t qual;
    uint32 max_values;
    uint32 start_bit;
    uint32 end_bit;
    uint32 flags;                      /* none yet, 0 */
    uint32 max_group_size;             /* entries */
    uint32 priority;                   /* higher wins where two hints contradict */
} bcm_field_hint_t;

/* Classes of a packet's source; which one counts is the mode of its port. */
typedef struct bcm_field_src_class_s {
    uint32 src_class_field;
    uint32 dst_class_field;
    uint32 udf_class;
    uint32 intf_class_port;
    uint32 intf_class_l2;
    uint32 intf_class_l3;
    uint32 intf_class_vport;
} bcm_field_src_class_t;

#endif
