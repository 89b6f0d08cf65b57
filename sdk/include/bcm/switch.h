/*
 * The switch as a whole: settings, events, hashing, tracing of packets, state kept over a restart, sensors.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_PARAM (null pointer, selector out of range, unknown flag combination), and
 * BCM_E_UNAVAIL for what the device does not have. On an error nothing is changed. Arrays that a function
 * fills are given with the number of elements for which they have room, and how many there are comes back in
 * the count.
 */
#ifndef BCM_SWITCH_H
#define BCM_SWITCH_H

#include <bcm/error.h>
#include <bcm/field_types.h>
#include <bcm/switch_control.h>
#include <bcm/switch_event.h>
#include <bcm/switch_hash.h>
#include <bcm/switch_object.h>
#include <bcm/switch_trace.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_switch_pkt_info_t. */
#define BCM_SWITCH_PKT_INFO_IP6 0x00000001 /* sip6 and dip6 count, not sip and dip */

/* config_flags of bcm_switch_network_group_config_t: what does not pass between the two groups. */
#define BCM_SWITCH_NETWORK_GROUP_FLOOD_DENY 0x00000001
#define BCM_SWITCH_NETWORK_GROUP_ALL_DENY 0x00000002

/* flags of bcm_switch_profile_create, bcm_switch_agm_create and bcm_switch_service_config_t. */
#define BCM_SWITCH_PROFILE_WITH_ID 0x00000001 /* *profile_id is the id to use */
#define BCM_SWITCH_AGM_WITH_ID 0x00000001     /* agm_id is the id to use */
#define BCM_SWITCH_SERVICE_LEARN 0x00000001   /* addresses are learnt */

/* location of bcm_switch_stable_set; 0 for nowhere. */
#define BCM_SWITCH_STABLE_APPLICATION 1       /* by the functions that are registered */
#define BCM_SWITCH_STABLE_DEVICE_MEM 2        /* in a memory of the device that outlasts its reset */

/* How a packet is forwarded, which decides what of it is hashed. */
typedef enum bcm_switch_pkt_forward_e {
    bcmSwitchPktForwardBridged = 0,
    bcmSwitchPktForwardRouted,
    bcmSwitchPktForwardLabelSwitched,
    bcmSwitchPktForwardTunnelled
} bcm_switch_pkt_forward_t;

/* Properties of a logical interface for which the device has bits to spare. */
typedef enum bcm_switch_lif_property_e {
    bcmSwitchLifPropertyClass = 0,
    bcmSwitchLifPropertyQosProfile,
    bcmSwitchLifPropertyCountProfile,
    bcmSwitchLifPropertyMirrorProfile,
    bcmSwitchLifPropertyMtuProfile
} bcm_switch_lif_property_t;

/* What a profile is about: its mappings lead from values of this field to new ones. */
typedef enum bcm_switch_profile_e {
    bcmSwitchProfileDscp = 0,
    bcmSwitchProfileVlanPriority,
    bcmSwitchProfileMplsExp,
    bcmSwitchProfileTtl,
    bcmSwitchProfilePortClass,
    bcmSwitchProfileLifClass
} bcm_switch_profile_t;

/* Kinds of service. */
typedef enum bcm_switch_service_e {
    bcmSwitchServiceVlanBridge = 0,
    bcmSwitchServiceVpls,
    bcmSwitchServiceVpws,
    bcmSwitchServiceL3Vpn,
    bcmSwitchServiceVxlan,
    bcmSwitchServiceMim
} bcm_switch_service_t;

/* Where a tag with a TPID may stand. */
typedef enum bcm_switch_tpid_type_e {
    bcmSwitchTpidOuter = 0,
    bcmSwitchTpidInner,
    bcmSwitchTpidOuterAndInner
} bcm_switch_tpid_type_t;

/* What a monitor watches. */
typedef enum bcm_switch_agm_type_e {
    bcmSwitchAgmEcmp = 0,
    bcmSwitchAgmTrunk
} bcm_switch_agm_type_t;

/* A setting that there is several times, and the value of one. */
typedef struct bcm_switch_control_key_s {
    bcm_switch_control_t type;
    uint32 index;                    /* queue, pipe, stage ... as the setting has it */
} bcm_switch_control_key_t;

typedef struct bcm_switch_control_info_s {
    uint32 value;
} bcm_switch_control_info_t;

/* A packet of which the path is asked for. */
typedef struct bcm_switch_pkt_info_s {
    uint32 flags;                    /* BCM_SWITCH_PKT_INFO_* */
    bcm_switch_pkt_forward_t forward;
    bcm_gport_t src_gport;
    bcm_vlan_t vid;
    bcm_ethertype_t ethertype;
    bcm_mac_t src_mac;
    bcm_mac_t dst_mac;
    bcm_ip_t sip;
    bcm_ip_t dip;
    bcm_ip6_t sip6;
    bcm_ip6_t dip6;
    uint8 protocol;
    bcm_l4_port_t src_l4_port;
    bcm_l4_port_t dst_l4_port;
} bcm_switch_pkt_info_t;

/* What a group of ports may not send to another. */
typedef struct bcm_switch_network_group_config_s {
    bcm_switch_network_group_t dest_network_group_id;
    uint32 config_flags;             /* BCM_SWITCH_NETWORK_GROUP_* */
} bcm_switch_network_group_config_t;

/* How packets of a service are treated. */
typedef struct bcm_switch_service_config_s {
    bcm_switch_service_t service;
    uint32 flags;                    /* BCM_SWITCH_SERVICE_* */
    bcm_switch_network_group_t network_group_id;
} bcm_switch_service_config_t;

/* One value of a profile's field, and the one that replaces it. */
typedef struct bcm_switch_profile_mapping_s {
    uint32 value;
    uint32 mapped_value;
} bcm_switch_profile_mapping_t;

/* A TPID by which the device knows tags. */
typedef struct bcm_switch_tpid_info_s {
    bcm_switch_tpid_type_t tpid_type;
    bcm_tpid_t tpid_value;
} bcm_switch_tpid_info_t;

/* How many values of a property the device keeps for logical interfaces, and where in its data. */
typedef struct bcm_switch_lif_property_config_s {
    bcm_switch_lif_property_t property;
    int start_bit;
    int num_bits;
} bcm_switch_lif_property_config_t;

/* A station of an offload processor, which gets packets of OAM and the like from the switch. */
typedef struct bcm_switch_olp_l2_addr_s {
    bcm_gport_t gport;               /* that leads to it */
    bcm_mac_t mac;
    bcm_vlan_t vlan;
    bcm_ethertype_t ethertype;       /* of the header between the two */
} bcm_switch_olp_l2_addr_t;

/* A monitor of how evenly traffic is spread over a group of paths. */
typedef struct bcm_switch_agm_info_s {
    uint32 flags;                    /* BCM_SWITCH_AGM_* */
    bcm_switch_agm_id_t agm_id;
    bcm_switch_agm_type_t agm_type;
    int num_members;                 /* the most members that are counted */
    uint32 window;                   /* microseconds of an average */
} bcm_switch_agm_info_t;

/* What a monitor has counted for one member of the group. */
typedef struct bcm_switch_agm_stat_s {
    int member;                      /* 0 for the first */
    uint64 packets;
    uint64 bytes;
    uint32 rate;                     /* kbit/s in the last window */
} bcm_switch_agm_stat_t;

/* An external memory, as it says itself. */
typedef struct bcm_switch_dram_vendor_info_s {
    uint32 vendor_id;
    uint32 density;                  /* Mbit */
    uint32 generation;
    uint32 io_width;                 /* bits */
    uint32 channels;
    uint32 revision;
    int temperature_grade;
} bcm_switch_dram_vendor_info_t;

/* A sensor of temperature, in tenths of a degree Celsius. */
typedef struct bcm_switch_thermo_sensor_s {
    int thermo_curr;
    int thermo_min;                  /* since the last reading */
    int thermo_max;
} bcm_switch_thermo_sensor_t;

/* Called once per station, or monitor. A negative result ends the traversal, which then returns it. */
typedef int (*bcm_switch_olp_l2_addr_traverse_cb)(int unit, bcm_switch_olp_l2_addr_t *olp_l2_addr,
                                                  void *user_data);
typedef int (*bcm_switch_agm_traverse_cb)(int unit, bcm_switch_agm_id_t agm_id,
                                          bcm_switch_agm_info_t *agm_info, void *user_data);

/* Reads or writes nbytes bytes of stored state from offset on. */
typedef int (*bcm_switch_read_func_t)(int unit, uint8 *buf, int offset, int nbytes);
typedef int (*bcm_switch_write_func_t)(int unit, uint8 *buf, int offset, int nbytes);

/*
 * Settings: of the whole switch, of a port (those ending in ToCpu, Drop and Flood, hash fields and seeds, and
 * whatever else the device keeps by port), and those of which there are several.
 */
int bcm_switch_control_set(int unit, bcm_switch_control_t type, int arg);
int bcm_switch_control_get(int unit, bcm_switch_control_t type, int *arg);
int bcm_switch_control_port_set(int unit, bcm_port_t port, bcm_switch_control_t type, int arg);
int bcm_switch_control_port_get(int unit, bcm_port_t port, bcm_switch_control_t type, int *arg);
int bcm_switch_control_indexed_set(int unit, bcm_switch_control_key_t key, bcm_switch_control_info_t value);
int bcm_switch_control_indexed_get(int unit, bcm_switch_control_key_t key, bcm_switch_control_info_t *value);

/*
 * Events. Several callbacks; the pair of callback and userdata counts, and unregistering what is not
 * registered gives BCM_E_NOT_FOUND.
 */
int bcm_switch_event_register(int unit, bcm_switch_event_cb_t cb, void *userdata);
int bcm_switch_event_unregister(int unit, bcm_switch_event_cb_t cb, void *userdata);
int bcm_switch_event_control_set(int unit, bcm_switch_event_t event, bcm_switch_event_control_t type,
                                 uint32 value);
int bcm_switch_event_control_get(int unit, bcm_switch_event_t event, bcm_switch_event_control_t type,
                                 uint32 *value);

/* Raises an event as the device would, to try out what hangs on it. */
int bcm_switch_event_inject(int unit, bcm_switch_event_t event, uint32 arg1, uint32 arg2, uint32 arg3);

/*
 * Rules for hashing: packets with the qualifiers of qset are hashed as config says; of several rules the one
 * of greatest priority counts. A rule is in the device between install and remove; destroy removes it first.
 */
int bcm_switch_hash_entry_create_qset(int unit, uint32 flags, bcm_field_qset_t qset, int priority,
                                      bcm_switch_hash_entry_t *entry_id);
int bcm_switch_hash_entry_destroy(int unit, bcm_switch_hash_entry_t entry_id);
int bcm_switch_hash_entry_destroy_all(int unit);
int bcm_switch_hash_entry_install(int unit, bcm_switch_hash_entry_t entry_id);
int bcm_switch_hash_entry_remove(int unit, bcm_switch_hash_entry_t entry_id);
void bcm_switch_hash_entry_config_t_init(bcm_switch_hash_entry_config_t *config);
int bcm_switch_hash_entry_config_set(int unit, bcm_switch_hash_entry_t entry_id,
                                     bcm_switch_hash_entry_config_t *config);
int bcm_switch_hash_entry_config_get(int unit, bcm_switch_hash_entry_t entry_id,
                                     bcm_switch_hash_entry_config_t *config);
int bcm_switch_hash_entry_priority_set(int unit, bcm_switch_hash_entry_t entry_id, int priority);
int bcm_switch_hash_entry_priority_get(int unit, bcm_switch_hash_entry_t entry_id, int *priority);
int bcm_switch_hash_entry_traverse(int unit, bcm_switch_hash_entry_traverse_cb cb, void *user_data);

/* Banks of a table: how many of how many entries, and the hash of each (BCM_HASH_ZERO and following). */
int bcm_switch_hash_banks_max_get(int unit, bcm_switch_hash_table_t hash_table, uint32 *banks_count,
                                  uint32 *bank_size);
int bcm_switch_hash_banks_config_set(int unit, bcm_switch_hash_table_t hash_table, uint32 bank_num,
                                     int hash_type, uint32 hash_offset);
int bcm_switch_hash_banks_config_get(int unit, bcm_switch_hash_table_t hash_table, uint32 bank_num,
                                     int *hash_type, uint32 *hash_offset);

/* The path that a packet with these fields would take: port, path of a route's group, member of a trunk. */
void bcm_switch_pkt_info_t_init(bcm_switch_pkt_info_t *pkt_info);
int bcm_switch_pkt_info_hash_get(int unit, bcm_switch_pkt_info_t *pkt_info, bcm_gport_t *dst_gport,
                                 bcm_if_t *dst_intf);
int bcm_switch_pkt_info_ecmp_hash_get(int unit, bcm_if_t ecmp_group, bcm_switch_pkt_info_t *pkt_info,
                                      bcm_if_t *dst_intf);
int bcm_switch_pkt_info_trunk_hash_get(int unit, bcm_trunk_t tid, bcm_switch_pkt_info_t *pkt_info,
                                       bcm_gport_t *dst_gport);

/* Sends a packet through the device as if it had come in by port, and says what became of it. */
void bcm_switch_pkt_trace_info_t_init(bcm_switch_pkt_trace_info_t *pkt_trace_info);
int bcm_switch_pkt_trace_info_get(int unit, uint32 options, bcm_port_t port, int len, uint8 *data,
                                  bcm_switch_pkt_trace_info_t *pkt_trace_info);

/* Split horizon between groups of ports. get takes dest_network_group_id from *config. */
int bcm_switch_network_group_config_set(int unit, bcm_switch_network_group_t source_network_group_id,
                                        bcm_switch_network_group_config_t *config);
int bcm_switch_network_group_config_get(int unit, bcm_switch_network_group_t source_network_group_id,
                                        bcm_switch_network_group_config_t *config);

/* Services; get takes service from *config. */
int bcm_switch_service_config_set(int unit, bcm_switch_service_config_t *config);
int bcm_switch_service_config_get(int unit, bcm_switch_service_config_t *config);
int bcm_switch_service_config_delete(int unit, bcm_switch_service_t service);

/*
 * Profiles. Values without a mapping stay; set replaces all mappings. list tells how many objects use each.
 */
int bcm_switch_profile_create(int unit, uint32 flags, bcm_switch_profile_t type, int *profile_id);
int bcm_switch_profile_destroy(int unit, bcm_switch_profile_t type, int profile_id);
int bcm_switch_profile_list(int unit, bcm_switch_profile_t type, int max, int *profile_arr,
                            int *use_count_arr, int *count);
int bcm_switch_profile_mapping_set(int unit, bcm_switch_profile_t type, int profile_id, int count,
                                   bcm_switch_profile_mapping_t *mapping_arr);
int bcm_switch_profile_mapping_get(int unit, bcm_switch_profile_t type, int profile_id, int max,
                                   bcm_switch_profile_mapping_t *mapping_arr, int *count);

/* TPIDs of the device; options has to be 0. BCM_E_EXISTS, BCM_E_FULL. Those of ports are their own. */
int bcm_switch_tpid_add(int unit, uint32 options, bcm_switch_tpid_info_t *tpid_info);
int bcm_switch_tpid_delete(int unit, bcm_switch_tpid_info_t *tpid_info);
int bcm_switch_tpid_delete_all(int unit);
int bcm_switch_tpid_get_all(int unit, int size, bcm_switch_tpid_info_t *tpid_arr, int *count);

/*
 * Properties of logical interfaces, whose bits may overlap; flags has to be 0. get takes property from
 * *config.
 */
int bcm_switch_lif_property_config_set(int unit, uint32 flags, bcm_switch_lif_property_config_t *config);
int bcm_switch_lif_property_config_get(int unit, uint32 flags, bcm_switch_lif_property_config_t *config);

/* Stations of offload processors; gport says which one, and add replaces. */
int bcm_switch_olp_l2_addr_add(int unit, bcm_switch_olp_l2_addr_t *olp_l2_addr);
int bcm_switch_olp_l2_addr_get(int unit, bcm_gport_t gport, bcm_switch_olp_l2_addr_t *olp_l2_addr);
int bcm_switch_olp_l2_addr_delete(int unit, bcm_gport_t gport);
int bcm_switch_olp_l2_addr_delete_all(int unit);
int bcm_switch_olp_l2_addr_traverse(int unit, bcm_switch_olp_l2_addr_traverse_cb trav_fn, void *user_data);

/*
 * Monitors of groups; bcm_l3_ecmp_agm_attach and its like start one. get also says how many members are
 * counted now. stat_set puts the counters of the members in stat_arr to the values there, count of them;
 * stat_clear takes a member, or -1 for all.
 */
void bcm_switch_agm_info_t_init(bcm_switch_agm_info_t *agm_info);
int bcm_switch_agm_create(int unit, bcm_switch_agm_info_t *agm_info);
int bcm_switch_agm_destroy(int unit, bcm_switch_agm_id_t agm_id);
int bcm_switch_agm_destroy_all(int unit);
int bcm_switch_agm_get(int unit, bcm_switch_agm_id_t agm_id, bcm_switch_agm_info_t *agm_info,
                       int *member_count);
int bcm_switch_agm_traverse(int unit, bcm_switch_agm_traverse_cb cb, void *user_data);
int bcm_switch_agm_stat_clear(int unit, bcm_switch_agm_id_t agm_id, int member);
int bcm_switch_agm_stat_set(int unit, bcm_switch_agm_id_t agm_id, int count, bcm_switch_agm_stat_t *stat_arr);
int bcm_switch_agm_stat_get(int unit, bcm_switch_agm_id_t agm_id, int max, bcm_switch_agm_stat_t *stat_arr,
                            int *count);

/* IPv6 multicast addresses that are taken for reserved beside those of the standard. */
int bcm_switch_ipv6_reserved_multicast_addr_set(int unit, bcm_ip6_t mc_ip_addr, bcm_ip6_t mc_ip_mask);
int bcm_switch_ipv6_reserved_multicast_addr_get(int unit, bcm_ip6_t *mc_ip_addr, bcm_ip6_t *mc_ip_mask);

/* How many objects the device holds, or can hold; object_count elements of both arrays. */
int bcm_switch_object_count_get(int unit, bcm_switch_object_t object, int *entries);
int bcm_switch_object_count_multi_get(int unit, int object_count, bcm_switch_object_t *object_arr,
                                      int *entries_arr);

/*
 * Where the state is stored that outlasts a restart, how many bytes there are and are used. With
 * BCM_SWITCH_STABLE_APPLICATION the functions have to be registered before; flags has to be 0.
 */
int bcm_switch_stable_register(int unit, bcm_switch_read_func_t rf, bcm_switch_write_func_t wf);
int bcm_switch_stable_set(int unit, int location, uint32 flags, uint32 size);
int bcm_switch_stable_get(int unit, int *location, uint32 *flags, uint32 *size);
int bcm_switch_stable_used_get(int unit, uint32 *used);

/*
 * External memories, 0 for the first; temperature in tenths of a degree. The test destroys what the memory
 * holds: pattern is a byte to fill it with, -1 for all in turn; *passed is 0 or 1, *failed_address the first
 * that did not keep it.
 */
int bcm_switch_dram_vendor_info_get(int unit, int dram_index, bcm_switch_dram_vendor_info_t *vendor_info,
                                    int *temperature);
int bcm_switch_dram_self_test(int unit, int dram_index, int pattern, int *passed, uint32 *failed_address);

/*
 * Sensors, 0 for the first. Outside its limits a sensor raises an event and *alarm is 1, until it is back by
 * hysteresis; all in tenths of a degree.
 */
int bcm_switch_thermo_sensor_count_get(int unit, int *count);
int bcm_switch_thermo_sensor_read(int unit, int sensor_num, bcm_switch_thermo_sensor_t *sensor, int *alarm);
int bcm_switch_thermo_sensor_limit_set(int unit, int sensor_num, int low, int high, int hysteresis);
int bcm_switch_thermo_sensor_limit_get(int unit, int sensor_num, int *low, int *high, int *hysteresis);

/* Pins of the device: whether one is an output, and its level, 0 or 1. set of an input leaves the level. */
int bcm_switch_gpio_set(int unit, int gpio_num, int output, int value);
int bcm_switch_gpio_get(int unit, int gpio_num, int *output, int *value);

#ifdef __cplusplus
}
#endif

#endif
