/*
 * Internals of the port module on one family of chips with its own packet processor: tag profiles, traps,
 * thresholds. Of use for diagnosis; they may leave the chip in a state that the port functions do not
 * expect. Names with a leading underscore take no lock.
 */
#ifndef BCM_PETRA_PORT_H
#define BCM_PETRA_PORT_H

#include <bcm/port.h>
#include <soc/types.h>

#ifdef __cplusplus
extern "C" {
#endif

#define _BCM_PETRA_PORTS_MAX 256        /* per core */
#define _BCM_PETRA_TPID_PROFILES 8
#define _BCM_DPP_TPID_CLASS_ENTRIES 64

/* Outer and inner TPID of a profile. */
typedef uint16 bcm_petra_tpid_pair_t[2];

/* A group of serial lanes and the ports that use it. */
typedef struct bcm_dpp_mal_assoc_s {
    int mal;
    int lanes;
    int nif_type;
} bcm_dpp_mal_assoc_t;

/* A trap that was defined by a user, and what a snooped packet is given. */
typedef struct bcm_dpp_user_defined_traps_s {
    int trap;
    int snoop_cmd;
    bcm_gport_t gport_trap_id;
    int ud_unique;
} bcm_dpp_user_defined_traps_t;

typedef struct bcm_dpp_snoop_s {
    uint32 snoop_action_info;
    int snoop_unique;
} bcm_dpp_snoop_t;

/* Tag classes and accepted frames, packed as the chip's tables are. */
typedef struct _bcm_dpp_port_tpid_class_info_s {
    uint8 buff[_BCM_DPP_TPID_CLASS_ENTRIES];
} _bcm_dpp_port_tpid_class_info_t;

/* A TPID and how many profiles use it. */
typedef struct bcm_petra_port_tpid_info_s {
    uint16 tpid;
    int tpid_count;
} bcm_petra_port_tpid_info;

typedef struct bcm_dpp_port_config_s {
    int bcm_petra_port_init_arrays_done;
    uint8 port_pp_initialized[_BCM_PETRA_PORTS_MAX];
    int map_tbl_use[_BCM_PETRA_TPID_PROFILES];
    uint32 trap_to_flag[_BCM_PETRA_PORTS_MAX];
    bcm_petra_port_tpid_info bcm_port_tpid_info[_BCM_PETRA_TPID_PROFILES];
} bcm_dpp_port_config_t;

typedef struct _bcm_dpp_port_tpid_class_acceptable_frame_type_info_s {
    uint32 buffer[_BCM_DPP_TPID_CLASS_ENTRIES];
} _bcm_dpp_port_tpid_class_acceptable_frame_type_info_t;

typedef struct bcm_dpp_port_info_s {
    int tpids_count;
    bcm_dpp_port_config_t dpp_port_config;
    pbmp_t prbs_mac_mode;               /* ports whose test sequences come from the MAC */
} bcm_dpp_port_info_t;

/* State of ports, and allocation of one with the interface. */
int bcm_petra_port_advert_remote_get(int unit, bcm_port_t port, bcm_port_abil_t *ability_mask);
int _bcm_petra_port_class_nof_vlan_domains_count(int unit, int vlan_domain, int *count);
int _bcm_petra_port_link_get(int unit, bcm_port_t port, int *up);
int _bcm_petra_port_find_free_port_and_allocate(int unit, bcm_core_t core, bcm_port_if_t interface,
                                                bcm_port_t *port);

/* Priority and colour by the tag, as for bcm_port_vlan_priority_map_set and its siblings. */
int bcm_petra_port_vlan_priority_map_set(int unit, bcm_port_t port, int pkt_pri, int cfi, int internal_pri,
                                         bcm_color_t color);
int bcm_petra_port_vlan_priority_map_get(int unit, bcm_port_t port, int pkt_pri, int cfi, int *internal_pri,
                                         bcm_color_t *color);
int bcm_petra_port_vlan_priority_unmap_set(int unit, bcm_port_t port, int internal_pri, bcm_color_t color,
                                           int pkt_pri, int cfi);
int bcm_petra_port_vlan_priority_unmap_get(int unit, bcm_port_t port, int internal_pri, bcm_color_t color,
                                           int *pkt_pri, int *cfi);
int bcm_petra_port_vlan_pri_map_get(int unit, bcm_port_t port, int pkt_pri, int cfi, int *internal_pri,
                                    bcm_color_t *color);
int bcm_petra_port_vlan_pri_map_set(int unit, bcm_port_t port, int pkt_pri, int cfi, int internal_pri,
                                    bcm_color_t color);

/* Colour as drop precedence 0..3, and back. */
int _bcm_petra_port_color_encode(int unit, bcm_color_t color, int *drop_precedence);
int _bcm_petra_port_color_decode(int unit, int drop_precedence, bcm_color_t *color);

/* Which of two tags a packet of a port with double tagging is judged by. */
typedef enum _bcm_petra_port_dtag_mode_e {
    _bcm_petra_port_dtag_mode_none,
    _bcm_petra_port_dtag_mode_internal,
    _bcm_petra_port_dtag_mode_external,
    _bcm_petra_port_dtag_mode_both
} _bcm_petra_port_dtag_mode_t;

/* What is dropped on arrival (BCM_PORT_DISCARD_*), and what double tagging adds to it. */
int _bcm_petra_port_discard_extend_dtag_mode_set(int unit, bcm_port_t port, int mode);
int _bcm_petra_port_discard_extend_get(int unit, bcm_port_t port, uint32 *flags);
int _bcm_petra_port_discard_extend_dtag_mode_get(int unit, bcm_port_t port, int *mode);
int _bcm_petra_port_discard_extend_mode_set(int unit, bcm_port_t port, int mode);

/*
 * Profiles of two TPIDs: with both in their places, with the first in place, exchanged, or with one in
 * common. *found says whether there is one from start on.
 */
int bcm_petra_port_tpid_profile_exact_match_search(int unit, int start, bcm_petra_tpid_pair_t tpids,
                                                   int *profile, int *found);
int bcm_petra_port_tpid_profile_first_match_search(int unit, int start, bcm_petra_tpid_pair_t tpids,
                                                   int *profile, int *found);
int bcm_petra_port_tpid_profile_opposite_match_search(int unit, int start, bcm_petra_tpid_pair_t tpids,
                                                      int *profile, int *found);
int bcm_petra_port_tpid_profile_similar_match_search(int unit, int start, bcm_petra_tpid_pair_t tpids,
                                                     int *profile, int *found);
int _bcm_petra_mim_tpid_profile_update(int unit, bcm_gport_t port, int profile);

/* Frees what the port module holds. */
int bcm_petra_port_deinit(int unit);

/* Uses of the TPIDs of a profile, and accepted frames by tag class. */
int bcm_petra_tpid_profile_info_set(int unit, int profile, bcm_petra_port_tpid_info *info);
void _bcm_dpp_port_tpid_class_acceptable_frame_type_info_t_clear(
    int unit, _bcm_dpp_port_tpid_class_acceptable_frame_type_info_t *info);
void _bcm_dpp_port_tpid_class_info_t_to_bcm_dpp_port_tpid_class_acceptable_frame_type_info_t(
    int unit, _bcm_dpp_port_tpid_class_info_t *info,
    _bcm_dpp_port_tpid_class_acceptable_frame_type_info_t *acceptable_frame_type_info);
int bcm_petra_port_tpid_profile_alloc(int unit, bcm_petra_tpid_pair_t tpids, int *profile);

/* Not-ready thresholds of ports. */
int _bcm_petra_port_nrdy_thresh_allocate(int unit, soc_port_t port, int *thresh_id);
int _bcm_petra_port_nrdy_thresh_free(int unit, soc_port_t port);

/* Traps, reassembly contexts, and system ports. */
int _bcm_petra_port_traps_init(int unit);
int _bcm_dpp_port_reassembly_context_get(int unit, bcm_port_t port, int *context);
int _bcm_dpp_port_mod_port_to_sys_port(int unit, bcm_module_t modid, bcm_port_t port, int *sys_port);
int _bcm_dpp_port_mod_port_from_sys_port(int unit, int sys_port, bcm_module_t *modid, bcm_port_t *port);

/* Ports of one arm of a core's packet processor, and ports of the fabric that are taken out of use. */
int _bcm_dpp_port_pbmp_arm_get(int unit, bcm_core_t core, int arm, bcm_pbmp_t *pbmp);
int _bcm_petra_port_fabric_detach(int unit, pbmp_t pbmp);

#ifdef __cplusplus
}
#endif

#endif
