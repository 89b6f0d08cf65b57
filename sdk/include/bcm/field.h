/*
 * The field processor: rules on any part of a packet. A rule is an entry of a group. The group says by its
 * qualifiers what its entries may look at, the entry by its qualifiers' values what it matches and by its
 * actions what happens then. Of the entries of a group that match, the one of the highest priority acts; of
 * several groups, all do, and where their actions contradict, the group of the highest priority wins.
 *
 * An entry is made (bcm_field_entry_create), given qualifiers (bcm_field_qualify_*) and actions
 * (bcm_field_action_add), and takes effect when installed (bcm_field_entry_install). Changes to an installed
 * entry wait for bcm_field_entry_reinstall.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT (before bcm_field_init or after bcm_field_detach), BCM_E_PARAM (null pointer, value out of
 * range), BCM_E_NOT_FOUND (no group, entry, range ... of that id) and BCM_E_UNAVAIL (not on this chip).
 * Those with _create choose an id (BCM_E_RESOURCE: no room); those with _create_id take it (BCM_E_EXISTS).
 * A function that fills an array takes its size and says how many there are.
 */
#ifndef BCM_FIELD_H
#define BCM_FIELD_H

#include <bcm/error.h>
#include <bcm/field_qualify.h>
#include <bcm/field_types.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Called for each group; a result below 0 ends the traversal and becomes its result. */
typedef int (*bcm_field_group_traverse_cb)(int unit, bcm_field_group_t group, void *user_data);

/* Prints all groups, entries and what they use, each line beginning with pfx. */
int bcm_field_show(int unit, const char *pfx);

/* Prints a group with its entries. */
int bcm_field_group_dump(int unit, bcm_field_group_t group);

/* Makes a group for packets of all ports. */
int bcm_field_group_create(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_t *group);
int bcm_field_group_create_id(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_t group);

/* Whether the group grows into free parts of the table when it is full; 1 at first. */
int bcm_field_group_expansion_enable_set(int unit, bcm_field_group_t group, int enable);
int bcm_field_group_expansion_enable_get(int unit, bcm_field_group_t group, int *enable);

/* Makes a group of a given width, for packets of all ports, one port, some ports, or wireless tunnels. */
int bcm_field_group_create_mode(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_mode_t mode,
                                bcm_field_group_t *group);
int bcm_field_group_create_mode_id(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_mode_t mode,
                                   bcm_field_group_t group);
int bcm_field_group_port_create_mode(int unit, bcm_port_t port, bcm_field_qset_t qset, int pri,
                                     bcm_field_group_mode_t mode, bcm_field_group_t *group);
int bcm_field_group_port_create_mode_id(int unit, bcm_port_t port, bcm_field_qset_t qset, int pri,
                                        bcm_field_group_mode_t mode, bcm_field_group_t group);
int bcm_field_group_ports_create_mode(int unit, bcm_pbmp_t pbmp, bcm_field_qset_t qset, int pri,
                                      bcm_field_group_mode_t mode, bcm_field_group_t *group);
int bcm_field_group_ports_create_mode_id(int unit, bcm_pbmp_t pbmp, bcm_field_qset_t qset, int pri,
                                         bcm_field_group_mode_t mode, bcm_field_group_t group);
int bcm_field_group_wlan_create_mode(int unit, bcm_field_qset_t qset, int pri, bcm_field_group_mode_t mode,
                                     bcm_field_group_t *group);
int bcm_field_group_wlan_create_mode_id(int unit, bcm_field_qset_t qset, int pri,
                                        bcm_field_group_mode_t mode, bcm_field_group_t group);
int bcm_field_group_mode_get(int unit, bcm_field_group_t group, bcm_field_group_mode_t *mode);

/* Makes a group by all that can be said of one; writes its id to the record. */
int bcm_field_group_config_create(int unit, bcm_field_group_config_t *group_config);
int bcm_field_group_config_create_with_dbidx(int unit, bcm_field_group_config_t *group_config, int dbidx);
void bcm_field_group_config_t_init(bcm_field_group_config_t *group_config);

/* Calls callback for all groups by ascending id. */
int bcm_field_group_traverse(int unit, bcm_field_group_traverse_cb callback, void *user_data);

/* Destroys all entries of a group. */
int bcm_field_group_flush(int unit, bcm_field_group_t group);

/* Qualifiers of a group. BCM_E_BUSY: it has entries that use one not in qset. */
int bcm_field_group_set(int unit, bcm_field_group_t group, bcm_field_qset_t qset);
int bcm_field_group_get(int unit, bcm_field_group_t group, bcm_field_qset_t *qset);

/* Actions that its entries may have. dbidx is the table of a chip that keeps several. */
int bcm_field_group_action_set(int unit, bcm_field_group_t group, bcm_field_aset_t aset);
int bcm_field_group_action_set_with_dbidx(int unit, bcm_field_group_t group, bcm_field_aset_t aset,
                                          int dbidx);
int bcm_field_group_action_get(int unit, bcm_field_group_t group, bcm_field_aset_t *aset);

/* Removes a group. BCM_E_BUSY: it has entries. */
int bcm_field_group_destroy(int unit, bcm_field_group_t group);

/* Moves the entries together, so that other groups can have what is free. */
int bcm_field_group_compress(int unit, bcm_field_group_t group);

/* The entry that acts, when installed, if no other of the group matches; what it asks for does not count. */
int bcm_field_group_default_entry_set(int unit, bcm_field_group_t group, bcm_field_entry_t entry);
int bcm_field_group_default_entry_get(int unit, bcm_field_group_t group, bcm_field_entry_t *entry);

/* Priority among groups, and what is left of the group's room. */
int bcm_field_group_priority_set(int unit, bcm_field_group_t group, int priority);
int bcm_field_group_priority_get(int unit, bcm_field_group_t group, int *priority);
int bcm_field_group_status_get(int unit, bcm_field_group_t group, bcm_field_group_status_t *status);

/* Whether the group is looked up; 1 at first. */
int bcm_field_group_enable_set(int unit, bcm_field_group_t group, int enable);
int bcm_field_group_enable_get(int unit, bcm_field_group_t group, int *enable);

/* All entries of a group, as bcm_field_entry_install and bcm_field_entry_remove do with one. */
int bcm_field_group_install(int unit, bcm_field_group_t group);
int bcm_field_group_remove(int unit, bcm_field_group_t group);
void bcm_field_group_status_t_init(bcm_field_group_status_t *status);

/* Conditions under which the group is looked up: if one of them holds; without any, always. */
int bcm_field_group_presel_set(int unit, bcm_field_group_t group, bcm_field_presel_set_t *presel);
int bcm_field_group_presel_get(int unit, bcm_field_group_t group, bcm_field_presel_set_t *presel);

/* How calls on the groups of a stage reach the chip; synchronously at first. */
int bcm_field_group_oper_mode_set(int unit, bcm_field_stage_t stage, bcm_field_group_oper_mode_t mode);
int bcm_field_group_oper_mode_get(int unit, bcm_field_stage_t stage, bcm_field_group_oper_mode_t *mode);

/* Start with no groups, end. */
int bcm_field_init(int unit);
int bcm_field_detach(int unit);

/* Settings for the whole unit, and what a stage can do and how many groups it has. */
int bcm_field_control_get(int unit, bcm_field_control_t control, uint32 *state);
int bcm_field_control_set(int unit, bcm_field_control_t control, uint32 state);
int bcm_field_stage_info_get(int unit, bcm_field_stage_t stage, bcm_field_stage_info_t *stage_info,
                             int *group_count);
void bcm_field_udf_spec_t_init(bcm_field_udf_spec_t *udf_spec);

/* Ranges min..max, both included, of what the BCM_FIELD_RANGE_* flags say; group is a group of ranges. */
int bcm_field_range_create(int unit, bcm_field_range_t *range, uint32 flags, bcm_l4_port_t min,
                           bcm_l4_port_t max);
int bcm_field_range_create_id(int unit, bcm_field_range_t range, uint32 flags, bcm_l4_port_t min,
                              bcm_l4_port_t max);
int bcm_field_range_group_create(int unit, bcm_field_range_t *range, uint32 flags, bcm_l4_port_t min,
                                 bcm_l4_port_t max, int group);
int bcm_field_range_group_create_id(int unit, bcm_field_range_t range, uint32 flags, bcm_l4_port_t min,
                                    bcm_l4_port_t max, int group);
int bcm_field_range_get(int unit, bcm_field_range_t range, uint32 *flags, bcm_l4_port_t *min,
                        bcm_l4_port_t *max);
int bcm_field_range_destroy(int unit, bcm_field_range_t range);

/* One range made of count pieces. */
int bcm_field_range_multi_create(int unit, bcm_field_range_t *range, uint32 flags, int count,
                                 bcm_l4_port_t *min_arr, bcm_l4_port_t *max_arr);
int bcm_field_range_multi_get(int unit, bcm_field_range_t range, uint32 *flags, int max_count,
                              bcm_l4_port_t *min_arr, bcm_l4_port_t *max_arr, int *count);

/* Data qualifiers, and the packets for which they hold. BCM_E_BUSY: a group has it. */
void bcm_field_data_qualifier_t_init(bcm_field_data_qualifier_t *data_qualifier);
void bcm_field_data_ethertype_t_init(bcm_field_data_ethertype_t *etype);
void bcm_field_data_ip_protocol_t_init(bcm_field_data_ip_protocol_t *ip_protocol);
void bcm_field_data_packet_format_t_init(bcm_field_data_packet_format_t *packet_format);
int bcm_field_data_qualifier_create(int unit, bcm_field_data_qualifier_t *data_qualifier);
int bcm_field_data_qualifier_multi_get(int unit, int max_count,
                                       bcm_field_data_qualifier_t *data_qualifier_arr, int *count);
int bcm_field_data_qualifier_get(int unit, int qual_id, bcm_field_data_qualifier_t *data_qualifier);
int bcm_field_data_qualifier_destroy(int unit, int qual_id);
int bcm_field_data_qualifier_destroy_all(int unit);
int bcm_field_data_qualifier_ethertype_add(int unit, int qual_id, bcm_field_data_ethertype_t *etype);
int bcm_field_data_qualifier_ethertype_delete(int unit, int qual_id, bcm_field_data_ethertype_t *etype);
int bcm_field_data_qualifier_ip_protocol_add(int unit, int qual_id,
                                             bcm_field_data_ip_protocol_t *ip_protocol);
int bcm_field_data_qualifier_ip_protocol_delete(int unit, int qual_id,
                                                bcm_field_data_ip_protocol_t *ip_protocol);
int bcm_field_data_qualifier_packet_format_add(int unit, int qual_id,
                                               bcm_field_data_packet_format_t *packet_format);
int bcm_field_data_qualifier_packet_format_delete(int unit, int qual_id,
                                                  bcm_field_data_packet_format_t *packet_format);

/* Bits that a class has which the action gives. */
void bcm_field_class_info_t_init(bcm_field_class_info_t *class_info);
int bcm_field_class_size_get(int unit, bcm_field_action_t action, uint32 *size);

/* Data qualifiers of a set, and objects (exact match groups, ...) that one of its qualifiers stands for. */
int bcm_field_qset_data_qualifier_add(int unit, bcm_field_qset_t *qset, int qual_id);
int bcm_field_qset_data_qualifier_delete(int unit, bcm_field_qset_t *qset, int qual_id);
int bcm_field_qset_data_qualifier_get(int unit, bcm_field_qset_t qset, int qual_max, int *qual_arr,
                                      int *qual_count);
int bcm_field_qset_id_multi_set(int unit, bcm_field_qualify_t qualifier, int num_objects, int *object_arr,
                                bcm_field_qset_t *qset);
int bcm_field_qset_id_multi_delete(int unit, bcm_field_qualify_t qualifier, int num_objects, int *object_arr,
                                   bcm_field_qset_t *qset);
int bcm_field_qset_id_multi_get(int unit, bcm_field_qset_t qset, bcm_field_qualify_t qualifier,
                                int max_objects, int *object_arr, int *num_objects);
void bcm_field_qset_t_init(bcm_field_qset_t *qset);

/*
 * Makes an entry, without qualifiers, actions and effect; multi_get gives those of a group, with priorities.
 */
int bcm_field_entry_create(int unit, bcm_field_group_t group, bcm_field_entry_t *entry);
int bcm_field_entry_create_id(int unit, bcm_field_group_t group, bcm_field_entry_t entry);
int bcm_field_entry_multi_get(int unit, bcm_field_group_t group, int max_count, bcm_field_entry_t *entry_arr,
                              int *prio_arr, int *count);

/* Removes an entry, or all of the unit, with their effects. */
int bcm_field_entry_destroy(int unit, bcm_field_entry_t entry);
int bcm_field_entry_destroy_all(int unit);

/* A new entry of the same group with the same qualifiers, actions and priority, not installed. */
int bcm_field_entry_copy(int unit, bcm_field_entry_t src_entry, bcm_field_entry_t *dst_entry);
int bcm_field_entry_copy_id(int unit, bcm_field_entry_t src_entry, bcm_field_entry_t dst_entry);

/* Effect of an entry: begins, takes over changes, ends. BCM_E_FULL: the group's table has no room. */
int bcm_field_entry_install(int unit, bcm_field_entry_t entry);
int bcm_field_entry_reinstall(int unit, bcm_field_entry_t entry);
int bcm_field_entry_remove(int unit, bcm_field_entry_t entry);

/* Whether an installed entry matches at all; 1 at first. */
int bcm_field_entry_enable_set(int unit, bcm_field_entry_t entry, int enable);
int bcm_field_entry_enable_get(int unit, bcm_field_entry_t entry, int *enable);

/* The policers of an entry, one per level (0 the first that a packet meets). */
int bcm_field_entry_policer_attach(int unit, bcm_field_entry_t entry, int level, bcm_policer_t policer_id);
int bcm_field_entry_policer_detach(int unit, bcm_field_entry_t entry, int level);
int bcm_field_entry_policer_detach_all(int unit, bcm_field_entry_t entry);
int bcm_field_entry_policer_get(int unit, bcm_field_entry_t entry, int level, bcm_policer_t *policer_id);

/* Priority within the group, higher wins; 0 at first. */
int bcm_field_entry_prio_get(int unit, bcm_field_entry_t entry, int *prio);
int bcm_field_entry_prio_set(int unit, bcm_field_entry_t entry, int prio);

/* The counters of an entry. The extended ones are further ones, by level. */
int bcm_field_entry_stat_attach(int unit, bcm_field_entry_t entry, int stat_id);
int bcm_field_entry_stat_extended_attach(int unit, bcm_field_entry_t entry, int level, int stat_id);
int bcm_field_entry_stat_detach(int unit, bcm_field_entry_t entry, int stat_id);
int bcm_field_entry_stat_get(int unit, bcm_field_entry_t entry, int *stat_id);
int bcm_field_entry_stat_extended_get(int unit, bcm_field_entry_t entry, int level, int *stat_id);

/* Prints an entry. */
int bcm_field_entry_dump(int unit, bcm_field_entry_t entry);

/* Installs and removes several entries in one go; stops at the first error, after *num_done of them. */
void bcm_field_entry_oper_t_init(bcm_field_entry_oper_t *entry_oper);
int bcm_field_entry_operation(int unit, uint32 num_entries, bcm_field_entry_oper_t *entry_oper,
                              uint32 *num_done);

/* Makes the chip's tables what the entries say. */
int bcm_field_resync(int unit);

/* Takes a qualifier away from an entry. */
int bcm_field_qualifier_delete(int unit, bcm_field_entry_t entry, bcm_field_qualify_t qual_id);

/*
 * Actions of an entry, at most one of each kind, with parameters as the kind needs them. delete needs the
 * same parameters, remove does not.
 */
int bcm_field_action_config_add(int unit, bcm_field_entry_t entry, bcm_field_action_t action, int core_count,
                                bcm_field_action_core_config_t *core_config_arr);
int bcm_field_action_add(int unit, bcm_field_entry_t entry, bcm_field_action_t action, uint32 param0,
                         uint32 param1, uint32 param2);
int bcm_field_action_delete(int unit, bcm_field_entry_t entry, bcm_field_action_t action, uint32 param0,
                            uint32 param1, uint32 param2);
int bcm_field_action_class_add(int unit, bcm_field_entry_t entry, bcm_field_class_info_t *class_info);
int bcm_field_action_class_get(int unit, bcm_field_entry_t entry, bcm_field_class_info_t *class_info);
int bcm_field_action_mac_add(int unit, bcm_field_entry_t entry, bcm_field_action_t action, bcm_mac_t mac);
int bcm_field_action_ports_add(int unit, bcm_field_entry_t entry, bcm_field_action_t action, bcm_pbmp_t pbmp);
int bcm_field_action_get(int unit, bcm_field_entry_t entry, bcm_field_action_t action, uint32 *param0,
                         uint32 *param1, uint32 *param2);
int bcm_field_action_mac_get(int unit, bcm_field_entry_t entry, bcm_field_action_t action, bcm_mac_t *mac);
int bcm_field_action_ports_get(int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                               bcm_pbmp_t *pbmp);
int bcm_field_action_remove(int unit, bcm_field_entry_t entry, bcm_field_action_t action);
int bcm_field_action_remove_all(int unit, bcm_field_entry_t entry);

/* Actions whose parameter is put together of count pieces of the key, lowest bits first. */
void bcm_field_extraction_field_t_init(bcm_field_extraction_field_t *extraction);
void bcm_field_extraction_action_t_init(bcm_field_extraction_action_t *action);
int bcm_field_direct_extraction_action_add(int unit, bcm_field_entry_t entry,
                                           bcm_field_extraction_action_t action, uint32 count,
                                           bcm_field_extraction_field_t *extraction_arr);
int bcm_field_direct_extraction_action_get(int unit, bcm_field_entry_t entry, bcm_field_action_t action,
                                           uint32 *bias, uint32 max_count,
                                           bcm_field_extraction_field_t *extraction_arr, uint32 *count);

/* Counters: an object of nstat kinds, for entries of the group. BCM_E_BUSY: an entry has it. */
int bcm_field_stat_create(int unit, bcm_field_group_t group, int nstat, bcm_field_stat_t *stat_arr,
                          int *stat_id);
int bcm_field_stat_create_id(int unit, bcm_field_group_t group, int nstat, bcm_field_stat_t *stat_arr,
                             int stat_id);
int bcm_field_stat_id_get(int unit, bcm_field_entry_t entry, bcm_field_stat_t stat, int *stat_id);
int bcm_field_stat_destroy(int unit, int stat_id);
int bcm_field_stat_size(int unit, int stat_id, int *stat_size);
int bcm_field_stat_config_get(int unit, int stat_id, int nstat, bcm_field_stat_t *stat_arr);

/* Their values. The sync forms read the chip, the others what was last read; the 32-bit forms cut off. */
int bcm_field_stat_set(int unit, int stat_id, bcm_field_stat_t stat, uint64 value);
int bcm_field_stat_set32(int unit, int stat_id, bcm_field_stat_t stat, uint32 value);
int bcm_field_stat_all_set(int unit, int stat_id, uint64 value);
int bcm_field_stat_all_set32(int unit, int stat_id, uint32 value);
int bcm_field_stat_get(int unit, int stat_id, bcm_field_stat_t stat, uint64 *value);
int bcm_field_stat_sync_get(int unit, int stat_id, bcm_field_stat_t stat, uint64 *value);
int bcm_field_stat_get32(int unit, int stat_id, bcm_field_stat_t stat, uint32 *value);
int bcm_field_stat_sync_get32(int unit, int stat_id, bcm_field_stat_t stat, uint32 *value);
int bcm_field_stat_multi_get(int unit, int stat_id, int nstat, bcm_field_stat_t *stat_arr, uint64 *value_arr);
int bcm_field_stat_multi_get32(int unit, int stat_id, int nstat, bcm_field_stat_t *stat_arr,
                               uint32 *value_arr);

/* The older form of bcm_field_entry_stat_attach and its counterpart. */
int bcm_field_stat_attach(int unit, bcm_field_entry_t entry, int stat_id);
int bcm_field_stat_detach(int unit, bcm_field_entry_t entry, int stat_id);

/* Objects that are tables of counters: num_entries of them, by index. */
int bcm_field_stat_counter_get(int unit, int stat_id, bcm_field_stat_t stat, uint32 num_entries,
                               uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_field_stat_counter_sync_get(int unit, int stat_id, bcm_field_stat_t stat, uint32 num_entries,
                                    uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_field_stat_counter_set(int unit, int stat_id, bcm_field_stat_t stat, uint32 num_entries,
                               uint32 *counter_indexes, bcm_stat_value_t *counter_values);

/* Counters of OAM packets, one action for each pair of object and mode. */
void bcm_field_oam_stat_action_t_init(bcm_field_oam_stat_action_t *oam_stat_action);
int bcm_field_oam_stat_action_add(int unit, uint32 flags, bcm_field_oam_stat_action_t *oam_stat_action);
int bcm_field_oam_stat_action_delete(int unit, uint32 flags, bcm_field_oam_stat_action_t *oam_stat_action);
int bcm_field_oam_stat_action_delete_all(int unit, uint32 flags);
int bcm_field_oam_stat_action_get(int unit, uint32 flags, bcm_field_oam_stat_action_t *oam_stat_action);
int bcm_field_oam_stat_action_get_all(int unit, uint32 flags, int max_count,
                                      bcm_field_oam_stat_action_t *oam_stat_action_arr, int *count);

/* Records and sets with all members zero. */
void bcm_field_llc_header_t_init(bcm_field_llc_header_t *header);
void bcm_field_snap_header_t_init(bcm_field_snap_header_t *header);
void bcm_field_aset_t_init(bcm_field_aset_t *aset);
void bcm_field_presel_set_t_init(bcm_field_presel_set_t *presel_set);

/* Operations on a set (not a pointer to one) and a member of its enumeration. */
#define BCM_FIELD_QSET_INIT(qset) bcm_field_qset_t_init(&(qset))
#define BCM_FIELD_QSET_ADD(qset, q) SHR_BITSET((qset).w, q)
#define BCM_FIELD_QSET_REMOVE(qset, q) SHR_BITCLR((qset).w, q)
#define BCM_FIELD_QSET_TEST(qset, q) SHR_BITGET((qset).w, q)
#define BCM_FIELD_ASET_INIT(aset) bcm_field_aset_t_init(&(aset))
#define BCM_FIELD_ASET_ADD(aset, a) SHR_BITSET((aset).w, a)
#define BCM_FIELD_ASET_REMOVE(aset, a) SHR_BITCLR((aset).w, a)
#define BCM_FIELD_ASET_TEST(aset, a) SHR_BITGET((aset).w, a)

/*
 * Conditions for the lookup of groups. To the functions of qualifiers a condition is an entry, whose id is its own with
 * the top bit set; what they say holds at once. It compares what packets have in all stages (BCM_E_UNAVAIL). BCM_E_BUSY:
 * a group has it.
 */
int bcm_field_presel_create(int unit, bcm_field_presel_t *presel_id);
int bcm_field_presel_create_id(int unit, bcm_field_presel_t presel_id);
int bcm_field_presel_destroy(int unit, bcm_field_presel_t presel_id);

/* Lists of hints for groups yet to be created. get and delete go by hint_type and qual. */
void bcm_field_hint_t_init(bcm_field_hint_t *hint);
int bcm_field_hints_create(int unit, bcm_field_hintid_t *hint_id);
int bcm_field_hints_add(int unit, bcm_field_hintid_t hint_id, bcm_field_hint_t *hint);
int bcm_field_hints_get(int unit, bcm_field_hintid_t hint_id, bcm_field_hint_t *hint);
int bcm_field_hints_delete(int unit, bcm_field_hintid_t hint_id, bcm_field_hint_t *hint);
int bcm_field_hints_delete_all(int unit, bcm_field_hintid_t hint_id);
int bcm_field_hints_destroy(int unit, bcm_field_hintid_t hint_id);

/* Which class of the source counts for packets from the ports of pbmp; of get, they must agree. */
void bcm_field_src_class_t_init(bcm_field_src_class_t *src_class);
int bcm_field_source_class_mode_set(int unit, bcm_pbmp_t pbmp, bcm_field_src_class_mode_t mode);
int bcm_field_source_class_mode_get(int unit, bcm_pbmp_t pbmp, bcm_field_src_class_mode_t *mode);

#ifdef __cplusplus
}
#endif

#endif
