/*
 * The fabric: links and crossbars that carry packets between units, cut into cells.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT and BCM_E_PARAM (null pointer; link, module or selector out of range, unknown flag). Functions
 * that take the id of an object give BCM_E_NOT_FOUND if it does not exist. A link is named by its port.
 * Getters of arrays write at most as many elements as they are told, and say how many. A record's _t_init
 * sets all its members to zero.
 */
#ifndef BCM_FABRIC_H
#define BCM_FABRIC_H

#include <bcm/error.h>
#include <bcm/fabric_controls.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int bcm_fabric_pipe_t;              /* part of a link, with buffers of its own */
enum { bcmFabricPipeAll = -1 };             /* every pipe of the link */

/* flags of functions that create objects. */
#define BCM_FABRIC_WITH_ID 0x00000001       /* the id to use is the one given */
#define BCM_FABRIC_REPLACE 0x00000002       /* replace the object of that id */

/* flags of bcm_fabric_tdm_editing_t. */
#define BCM_FABRIC_TDM_MULTICAST 0x00000001 /* to multicast_group instead of dest_gport */

/* flags of bcm_fabric_route_t. */
#define BCM_FABRIC_ROUTE_REPLY 0x00000001   /* the last unit answers */

/* Sizes of arrays in records. */
#define BCM_FABRIC_ACTION_FIELDS_MAX 4
#define BCM_FABRIC_ROUTE_HOPS_MAX 16
#define BCM_FABRIC_TDM_ROUTE_LINKS_MAX 16

/* What has happened to arbiters and crossbars, and which are left. */
typedef struct bcm_fabric_control_redundancy_info_s {
    bcm_fabric_redundancy_event_t event;
    int active_arbiter;
    int xbars;                     /* crossbars that there are */
    int active_xbars;
    int min_xbars;                 /* needed for the full rate */
} bcm_fabric_control_redundancy_info_t;

/* A header field that an action rewrites. */
typedef struct bcm_fabric_action_field_s {
    bcm_fabric_action_field_source_t source;
    int offset;                    /* in bits from the start of the header */
    int size;                      /* bits, 1..32 */
    uint32 value;                  /* if the source is a constant */
} bcm_fabric_action_field_t;

/* Which cells a predicate is true for; members that fields does not name do not count. */
typedef struct bcm_fabric_predicate_info_s {
    uint32 fields;                 /* bcm_fabric_predicate_field_t bits */
    bcm_fabric_cast_t cast;
    bcm_port_t link;
    bcm_module_t src_modid;
    bcm_module_t dest_modid;
    bcm_multicast_t multicast_group;
    int tc;
    bcm_color_t color;
    int priority;
} bcm_fabric_predicate_info_t;

/* What is done with a cell. */
typedef struct bcm_fabric_action_info_s {
    bcm_fabric_action_type_t type;
    int trap_id;
    bcm_module_t dest_modid;
    bcm_multicast_t multicast_group;
    int tc;
    bcm_color_t color;
    int priority;
    int num_fields;
    bcm_fabric_action_field_t field_array[BCM_FABRIC_ACTION_FIELDS_MAX];
} bcm_fabric_action_info_t;

/* An action for the cells of a predicate. */
typedef struct bcm_fabric_predicate_action_info_s {
    uint32 flags;
    int predicate_id;
    int action_id;
    int priority;                  /* of several true predicates the highest counts */
} bcm_fabric_predicate_action_info_t;

/* Which pipe of a link's other end takes the cells of each of its pipes. The arrays belong to the caller. */
typedef struct bcm_fabric_link_remote_pipe_mapping_s {
    int max_supported_pipe_mapping; /* elements that both arrays have room for */
    int nof_remote_pipes;           /* elements that are in use */
    bcm_fabric_pipe_t *local_pipe_array;
    bcm_fabric_pipe_t *remote_pipe_array;
} bcm_fabric_link_remote_pipe_mapping_t;

/* Who is at the other end of a link. */
typedef struct bcm_fabric_link_connectivity_s {
    bcm_fabric_link_neighbor_t neighbor;
    bcm_module_t modid;
    bcm_port_t link;               /* its name there */
} bcm_fabric_link_connectivity_t;

/* Bandwidth of a kind of traffic into the fabric. */
typedef struct bcm_fabric_bandwidth_profile_s {
    uint32 flags;
    uint32 kbits_sec_min;          /* guaranteed */
    uint32 kbits_sec_max;
    uint32 kbits_burst;
    int weight;                    /* share of what is left, 1..127 */
} bcm_fabric_bandwidth_profile_t;

/* What the packets of a port with bandwidth of its own get as header. */
typedef struct bcm_fabric_tdm_editing_s {
    uint32 flags;                  /* BCM_FABRIC_TDM_* */
    bcm_fabric_tdm_format_t format;
    bcm_gport_t dest_gport;
    bcm_multicast_t multicast_group;
    int tc;
    bcm_color_t color;
    int packet_size;               /* bytes, 0 if it varies */
    uint32 user_header;
} bcm_fabric_tdm_editing_t;

/* The links that such packets take to a module. */
typedef struct bcm_fabric_tdm_direct_routing_s {
    bcm_module_t dest_modid;
    int num_links;
    bcm_port_t link_array[BCM_FABRIC_TDM_ROUTE_LINKS_MAX];
} bcm_fabric_tdm_direct_routing_t;

/* When cells are dropped for want of room. */
typedef struct bcm_fabric_config_discard_s {
    bcm_fabric_discard_policy_t policy;
    bcm_fabric_cast_t cast;
    int priority;                  /* lowest of the cells that are spared */
    bcm_color_t color;
    int min_threshold;             /* cells; dropping begins here */
    int max_threshold;             /* and is complete here */
    int drop_probability;          /* percent, just below max_threshold */
    int average_weight;            /* of the past in the level, as a power of two */
} bcm_fabric_config_discard_t;

/* The links that a cell takes, one per unit. */
typedef struct bcm_fabric_route_s {
    uint32 flags;                  /* BCM_FABRIC_ROUTE_* */
    int num_hops;
    bcm_port_t link_array[BCM_FABRIC_ROUTE_HOPS_MAX];
} bcm_fabric_route_t;

/* How packets share cells. */
typedef struct bcm_fabric_pcp_mode_config_s {
    bcm_fabric_pcp_mode_t mode;
    bcm_fabric_cast_t cast;
    int min_cell_size;             /* bytes below which a cell waits for more */
    int timeout;                   /* ns that it waits */
} bcm_fabric_pcp_mode_config_t;

/* How a unit slows down while the fabric is congested: levels of congestion, and what each costs. */
typedef struct bcm_fabric_rci_config_s {
    uint32 sources;                /* bcm_fabric_congestion_source_t bits */
    bcm_core_t core;               /* -1 for all */
    int low_threshold;             /* cells */
    int high_threshold;
    int num_levels;                /* between the two, 1..7 */
    int sample_interval;           /* us */
    int average_weight;            /* of the past in the level, as a power of two */
    int rate_decrease[2][8];       /* percent at each level, for unicast and multicast */
    int rate_increase;             /* percent per interval after the congestion has ended */
    int rate_min[8][4];            /* percent that is always left, per traffic class and colour */
} bcm_fabric_rci_config_t;

/* Called after arbiters or crossbars have changed; info is valid during the call. */
typedef void (*bcm_fabric_control_redundancy_handler_t)(int unit, bcm_fabric_control_redundancy_info_t *info,
                                                        void *user_data);

/* Called once per object, by ascending id; a negative result ends the traversal with it. */
typedef int (*bcm_fabric_predicate_traverse_cb)(int unit, int predicate_id, bcm_fabric_predicate_info_t *info,
                                                void *user_data);
typedef int (*bcm_fabric_action_traverse_cb)(int unit, int action_id, bcm_fabric_action_info_t *info,
                                             void *user_data);
typedef int (*bcm_fabric_predicate_action_traverse_cb)(int unit, bcm_fabric_predicate_action_info_t *info,
                                                       void *user_data);
typedef int (*bcm_fabric_qsel_traverse_cb)(int unit, int qsel_id, bcm_fabric_qsel_type_t type, int size,
                                           void *user_data);
typedef int (*bcm_fabric_qsel_entry_traverse_cb)(int unit, int qsel_id, int index, bcm_gport_t queue,
                                                 void *user_data);
typedef int (*bcm_fabric_qsel_offset_traverse_cb)(int unit, int offset_id, int size, void *user_data);
typedef int (*bcm_fabric_qsel_offset_entry_traverse_cb)(int unit, int offset_id, int tc, bcm_color_t color,
                                                        int offset, void *user_data);

/* The module. init destroys all objects, drops all settings and handlers. */
int bcm_fabric_init(int unit);
int bcm_fabric_detach(int unit);

/* Settings by selector. What a threshold starts at so many cells of a pipe ends at cells_end. */
int bcm_fabric_control_set(int unit, bcm_fabric_control_t type, int arg);
int bcm_fabric_control_get(int unit, bcm_fabric_control_t type, int *arg);
int bcm_fabric_link_control_set(int unit, bcm_port_t link, bcm_fabric_link_control_t type, int arg);
int bcm_fabric_link_control_get(int unit, bcm_port_t link, bcm_fabric_link_control_t type, int *arg);
int bcm_fabric_link_threshold_set(int unit, bcm_port_t link, bcm_fabric_pipe_t pipe,
                                  bcm_fabric_link_threshold_t type, int cells, int cells_end);
int bcm_fabric_link_threshold_get(int unit, bcm_port_t link, bcm_fabric_pipe_t pipe,
                                  bcm_fabric_link_threshold_t type, int *cells, int *cells_end);

/*
 * Arbiters and crossbars, and handlers that are told of changes; several at a time. A crossbar that is
 * enabled need not be up; *link_count is how many links to it are. Fewer crossbars than the minimum, and the
 * unit lowers its rate to so many percent.
 */
int bcm_fabric_control_redundancy_info_get(int unit, bcm_fabric_control_redundancy_info_t *info);
int bcm_fabric_control_redundancy_register(int unit, bcm_fabric_control_redundancy_handler_t handler,
                                           void *user_data);
int bcm_fabric_control_redundancy_unregister(int unit, bcm_fabric_control_redundancy_handler_t handler,
                                             void *user_data);
int bcm_fabric_arbiter_active_set(int unit, int arbiter);
int bcm_fabric_arbiter_active_get(int unit, int *arbiter);
int bcm_fabric_crossbar_enable_set(int unit, int xbar, int enable);
int bcm_fabric_crossbar_enable_get(int unit, int xbar, int *enable);
int bcm_fabric_crossbar_status_get(int unit, int xbar, int *up, int *link_count);
int bcm_fabric_crossbar_min_set(int unit, int min_xbars, int rate);
int bcm_fabric_crossbar_min_get(int unit, int *min_xbars, int *rate);
int bcm_fabric_crossbar_link_set(int unit, int xbar, int xbar_port, bcm_port_t link);
int bcm_fabric_crossbar_link_get(int unit, int xbar, int xbar_port, bcm_port_t *link);

/*
 * Predicates: which cells are meant, and how many they were. destroy gives BCM_E_BUSY while an action is
 * attached.
 */
void bcm_fabric_predicate_info_t_init(bcm_fabric_predicate_info_t *info);
int bcm_fabric_predicate_create(int unit, uint32 flags, bcm_fabric_predicate_info_t *info, int *predicate_id);
int bcm_fabric_predicate_destroy(int unit, int predicate_id);
int bcm_fabric_predicate_destroy_all(int unit);
int bcm_fabric_predicate_set(int unit, int predicate_id, bcm_fabric_predicate_info_t *info);
int bcm_fabric_predicate_get(int unit, int predicate_id, bcm_fabric_predicate_info_t *info);
int bcm_fabric_predicate_stat_get(int unit, int predicate_id, uint64 *cells, uint64 *bytes);
int bcm_fabric_predicate_stat_clear(int unit, int predicate_id);
int bcm_fabric_predicate_traverse(int unit, bcm_fabric_predicate_traverse_cb cb, void *user_data);

/* Actions: what is done with them. */
void bcm_fabric_action_info_t_init(bcm_fabric_action_info_t *info);
int bcm_fabric_action_create(int unit, uint32 flags, bcm_fabric_action_info_t *info, int *action_id);
int bcm_fabric_action_destroy(int unit, int action_id);
int bcm_fabric_action_destroy_all(int unit);
int bcm_fabric_action_set(int unit, int action_id, bcm_fabric_action_info_t *info);
int bcm_fabric_action_get(int unit, int action_id, bcm_fabric_action_info_t *info);
int bcm_fabric_action_traverse(int unit, bcm_fabric_action_traverse_cb cb, void *user_data);

/* Actions of predicates, by predicate_id and action_id. add gives BCM_E_EXISTS. */
void bcm_fabric_predicate_action_info_t_init(bcm_fabric_predicate_action_info_t *info);
int bcm_fabric_predicate_action_add(int unit, bcm_fabric_predicate_action_info_t *info);
int bcm_fabric_predicate_action_delete(int unit, int predicate_id, int action_id);
int bcm_fabric_predicate_action_delete_all(int unit, int predicate_id);
int bcm_fabric_predicate_action_get(int unit, int predicate_id, int action_id,
                                    bcm_fabric_predicate_action_info_t *info);
int bcm_fabric_predicate_action_traverse(int unit, bcm_fabric_predicate_action_traverse_cb cb,
                                         void *user_data);

/*
 * Selection of queues: tables from a destination, group or other index to a queue, which a port uses for a
 * kind of traffic; and tables of what is added to that queue by class and colour.
 */
int bcm_fabric_qsel_create(int unit, uint32 flags, bcm_fabric_qsel_type_t type, int size, int *qsel_id);
int bcm_fabric_qsel_destroy(int unit, int qsel_id);
int bcm_fabric_qsel_get(int unit, int qsel_id, bcm_fabric_qsel_type_t *type, int *size);
int bcm_fabric_qsel_traverse(int unit, bcm_fabric_qsel_traverse_cb cb, void *user_data);
int bcm_fabric_qsel_entry_set(int unit, int qsel_id, int index, bcm_gport_t queue);
int bcm_fabric_qsel_entry_get(int unit, int qsel_id, int index, bcm_gport_t *queue);
int bcm_fabric_qsel_entry_delete(int unit, int qsel_id, int index);
int bcm_fabric_qsel_entry_traverse(int unit, int qsel_id, bcm_fabric_qsel_entry_traverse_cb cb,
                                   void *user_data);
int bcm_fabric_qsel_offset_create(int unit, uint32 flags, int size, int *offset_id);
int bcm_fabric_qsel_offset_destroy(int unit, int offset_id);
int bcm_fabric_qsel_offset_traverse(int unit, bcm_fabric_qsel_offset_traverse_cb cb, void *user_data);
int bcm_fabric_qsel_offset_entry_set(int unit, int offset_id, int tc, bcm_color_t color, int offset);
int bcm_fabric_qsel_offset_entry_get(int unit, int offset_id, int tc, bcm_color_t color, int *offset);
int bcm_fabric_qsel_offset_entry_traverse(int unit, int offset_id,
                                          bcm_fabric_qsel_offset_entry_traverse_cb cb, void *user_data);
int bcm_fabric_qsel_port_set(int unit, bcm_port_t port, bcm_fabric_cast_t cast, int qsel_id, int offset_id);
int bcm_fabric_qsel_port_get(int unit, bcm_port_t port, bcm_fabric_cast_t cast, int *qsel_id, int *offset_id);

/*
 * Links: who is there and (*expected) whether it is who should be, null for anyone; their state
 * (bcm_fabric_link_status_t bits, all of which clear clears); the rate of traffic, and the most there may be;
 * the cable, by the mean of so many samples and the span between them.
 */
int bcm_fabric_link_connectivity_get(int unit, bcm_port_t link, bcm_fabric_link_connectivity_t *connectivity,
                                     int *expected);
int bcm_fabric_link_connectivity_get_all(int unit, int max_count, bcm_port_t *link_array,
                                         bcm_fabric_link_connectivity_t *connectivity_array,
                                         int *expected_array, int *count);
int bcm_fabric_link_expected_set(int unit, bcm_port_t link, bcm_fabric_link_connectivity_t *connectivity);
int bcm_fabric_link_expected_get(int unit, bcm_port_t link, bcm_fabric_link_connectivity_t *connectivity);
int bcm_fabric_link_status_get(int unit, bcm_port_t link, uint32 *status);
int bcm_fabric_link_status_clear(int unit, bcm_port_t link);
int bcm_fabric_link_rate_set(int unit, bcm_port_t link, uint32 kbits_sec_max);
int bcm_fabric_link_rate_get(int unit, bcm_port_t link, uint32 *kbits_sec, uint32 *kbits_sec_max);
int bcm_fabric_link_delay_measure(int unit, bcm_port_t link, int samples, int *nanoseconds, int *jitter);

/* Whether the neighbour stops cells of a kind and priority just now. */
int bcm_fabric_link_flow_control_get(int unit, bcm_port_t link, bcm_fabric_cast_t cast, int priority,
                                     int *stopped);

/*
 * A test of many links with as many cells of cell_size bytes: each cell passes from the first link to the
 * last, over cables that join neighbours. The links carry no traffic meanwhile; BCM_E_BUSY. stop says how
 * many cells were lost in all, get how many between a link and its neighbour, and how many came with errors.
 */
int bcm_fabric_snake_test_start(int unit, bcm_port_t first_link, bcm_port_t last_link, int cells,
                                int cell_size);
int bcm_fabric_snake_test_stop(int unit, int *lost_cells);
int bcm_fabric_snake_test_result_get(int unit, bcm_port_t link, int *lost_cells, int *bad_cells);

/* Pipes of links: those at the other end, and the pipe that traffic takes by kind and priority. */
void bcm_fabric_link_remote_pipe_mapping_t_init(bcm_fabric_link_remote_pipe_mapping_t *mapping);
int bcm_fabric_link_remote_pipe_mapping_set(int unit, bcm_port_t link,
                                            bcm_fabric_link_remote_pipe_mapping_t *mapping);
int bcm_fabric_link_remote_pipe_mapping_get(int unit, bcm_port_t link,
                                            bcm_fabric_link_remote_pipe_mapping_t *mapping);
int bcm_fabric_pipe_map_set(int unit, bcm_fabric_cast_t cast, int priority, bcm_fabric_pipe_t pipe);
int bcm_fabric_pipe_map_get(int unit, bcm_fabric_cast_t cast, int priority, bcm_fabric_pipe_t *pipe);

/*
 * Counters of a link's pipe, or of all its pipes together; those of the unit take any link and pipe. get32
 * cuts off, multi_get takes count selectors.
 */
int bcm_fabric_stat_get(int unit, bcm_port_t link, bcm_fabric_pipe_t pipe, bcm_fabric_stat_t stat,
                        uint64 *value);
int bcm_fabric_stat_get32(int unit, bcm_port_t link, bcm_fabric_pipe_t pipe, bcm_fabric_stat_t stat,
                          uint32 *value);
int bcm_fabric_stat_multi_get(int unit, bcm_port_t link, bcm_fabric_pipe_t pipe, int count,
                              bcm_fabric_stat_t *stat_array, uint64 *value_array);
int bcm_fabric_stat_clear(int unit, bcm_port_t link, bcm_fabric_pipe_t pipe, bcm_fabric_stat_t stat);

/*
 * Reachability in a pipe: the links to a module as learnt, or as software says
 * (bcmFabricControlReachabilityStatic), whether it is reached at all and over how many links, and how much of
 * its traffic a link carries.
 */
int bcm_fabric_reachability_get(int unit, bcm_module_t modid, bcm_fabric_pipe_t pipe, int max_count,
                                bcm_port_t *link_array, int *weight_array, int *count);
int bcm_fabric_reachability_link_add(int unit, bcm_module_t modid, bcm_fabric_pipe_t pipe, bcm_port_t link);
int bcm_fabric_reachability_link_delete(int unit, bcm_module_t modid, bcm_fabric_pipe_t pipe,
                                        bcm_port_t link);
int bcm_fabric_reachability_clear(int unit, bcm_module_t modid, bcm_fabric_pipe_t pipe);
int bcm_fabric_reachability_status_get(int unit, bcm_module_t modid, bcm_fabric_pipe_t pipe, int *reachable,
                                       int *link_count);
int bcm_fabric_reachability_weight_set(int unit, bcm_module_t modid, bcm_fabric_pipe_t pipe, bcm_port_t link,
                                       int weight);
int bcm_fabric_reachability_weight_get(int unit, bcm_module_t modid, bcm_fabric_pipe_t pipe, bcm_port_t link,
                                       int *weight);

/*
 * Modules to which no traffic of a kind is sent over the fabric, and groups of modules behind the same links.
 */
int bcm_fabric_module_isolate_set(int unit, bcm_module_t modid, bcm_fabric_cast_t cast, int isolate);
int bcm_fabric_module_isolate_get(int unit, bcm_module_t modid, bcm_fabric_cast_t cast, int *isolate);
int bcm_fabric_module_group_set(int unit, bcm_module_t modid, int group);
int bcm_fabric_module_group_get(int unit, bcm_module_t modid, int *group);

/* Multicast: the modules of a group. add gives BCM_E_EXISTS, delete gives BCM_E_NOT_FOUND. */
int bcm_fabric_multicast_set(int unit, bcm_multicast_t group, int count, bcm_module_t *modid_array);
int bcm_fabric_multicast_get(int unit, bcm_multicast_t group, int max_count, bcm_module_t *modid_array,
                             int *count);
int bcm_fabric_multicast_add(int unit, bcm_multicast_t group, bcm_module_t modid);
int bcm_fabric_multicast_delete(int unit, bcm_multicast_t group, bcm_module_t modid);
int bcm_fabric_multicast_delete_all(int unit, bcm_multicast_t group);

/* Priority in the fabric by class and colour, and the lowest that a level of congestion lets pass. */
int bcm_fabric_priority_set(int unit, bcm_fabric_cast_t cast, int tc, bcm_color_t color, int priority);
int bcm_fabric_priority_get(int unit, bcm_fabric_cast_t cast, int tc, bcm_color_t color, int *priority);
int bcm_fabric_priority_threshold_set(int unit, bcm_fabric_cast_t cast, int level, int priority);
int bcm_fabric_priority_threshold_get(int unit, bcm_fabric_cast_t cast, int level, int *priority);

/* Bandwidth of a kind of traffic from a core, -1 for all. */
void bcm_fabric_bandwidth_profile_t_init(bcm_fabric_bandwidth_profile_t *profile);
int bcm_fabric_bandwidth_profile_set(int unit, bcm_core_t core, bcm_fabric_cast_t cast,
                                     bcm_fabric_bandwidth_profile_t *profile);
int bcm_fabric_bandwidth_profile_get(int unit, bcm_core_t core, bcm_fabric_cast_t cast,
                                     bcm_fabric_bandwidth_profile_t *profile);

/* Distributions: links or modules among which traffic is shared by weight. */
int bcm_fabric_distribution_create(int unit, uint32 flags, bcm_fabric_distribution_type_t type,
                                   bcm_fabric_distribution_t *ds_id);
int bcm_fabric_distribution_destroy(int unit, bcm_fabric_distribution_t ds_id);
int bcm_fabric_distribution_get(int unit, bcm_fabric_distribution_t ds_id,
                                bcm_fabric_distribution_type_t *type);
int bcm_fabric_distribution_member_add(int unit, bcm_fabric_distribution_t ds_id, int member, int weight);
int bcm_fabric_distribution_member_delete(int unit, bcm_fabric_distribution_t ds_id, int member);
int bcm_fabric_distribution_member_get(int unit, bcm_fabric_distribution_t ds_id, int max_count,
                                       int *member_array, int *weight_array, int *count);

/* Traffic with bandwidth of its own: whether and which header a port's packets get, the links to a module. */
void bcm_fabric_tdm_editing_t_init(bcm_fabric_tdm_editing_t *editing);
int bcm_fabric_tdm_editing_set(int unit, bcm_port_t port, int enable, bcm_fabric_tdm_editing_t *editing);
int bcm_fabric_tdm_editing_get(int unit, bcm_port_t port, int *enable, bcm_fabric_tdm_editing_t *editing);
void bcm_fabric_tdm_direct_routing_t_init(bcm_fabric_tdm_direct_routing_t *routing);
int bcm_fabric_tdm_direct_routing_set(int unit, bcm_port_t port, bcm_fabric_tdm_direct_routing_t *routing);
int bcm_fabric_tdm_direct_routing_get(int unit, bcm_port_t port, bcm_fabric_tdm_direct_routing_t *routing);
int bcm_fabric_tdm_direct_routing_delete(int unit, bcm_port_t port, bcm_module_t dest_modid);

/* Whether cells are dropped for want of room, and which; a get takes cast. */
void bcm_fabric_config_discard_t_init(bcm_fabric_config_discard_t *discard);
int bcm_fabric_config_discard_set(int unit, bcm_port_t link, int enable,
                                  bcm_fabric_config_discard_t *discard);
int bcm_fabric_config_discard_get(int unit, bcm_port_t link, int *enable,
                                  bcm_fabric_config_discard_t *discard);

/*
 * Cells of the CPU's own, size 32-bit words each. receive gives BCM_E_EMPTY if none has come for timeout ms.
 */
int bcm_fabric_cell_send(int unit, bcm_fabric_route_t *route, int priority, int size, uint32 *data);
int bcm_fabric_cell_receive(int unit, bcm_fabric_route_t *route, int timeout, int max_size, uint32 *data,
                            int *size);

/* Packets that share cells on their way to a module. */
void bcm_fabric_pcp_mode_config_t_init(bcm_fabric_pcp_mode_config_t *config);
int bcm_fabric_pcp_mode_config_set(int unit, bcm_module_t modid, bcm_fabric_pcp_mode_config_t *config);
int bcm_fabric_pcp_mode_config_get(int unit, bcm_module_t modid, bcm_fabric_pcp_mode_config_t *config);

/* Slowing down while the fabric is congested; a get takes core. level_get: how congested it is. */
void bcm_fabric_rci_config_t_init(bcm_fabric_rci_config_t *config);
int bcm_fabric_rci_config_set(int unit, bcm_fabric_rci_config_t config);
int bcm_fabric_rci_config_get(int unit, bcm_fabric_rci_config_t *config);
int bcm_fabric_rci_level_get(int unit, bcm_core_t core, bcm_fabric_cast_t cast, int *level);

#ifdef __cplusplus
}
#endif

#endif
