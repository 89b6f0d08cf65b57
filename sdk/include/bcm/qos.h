/*
 * Maps between the priority marks of packets and the switch's own priority and colour.
 *
 * All functions return BCM_E_NONE or an error; those that every function has in common are BCM_E_UNIT,
 * BCM_E_INIT, BCM_E_PARAM and, for a map that does not exist, BCM_E_NOT_FOUND. On an error nothing is
 * changed. A map is for one direction and one kind of mark; the flags of a call on it have to agree with
 * those it was created with.
 */
#ifndef BCM_QOS_H
#define BCM_QOS_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Direction and kind of a map: exactly one of the first two, and one mark. */
typedef enum bcm_qos_map_flag_e {
    BCM_QOS_MAP_INGRESS = 0x00000001, /* from the mark to priority and colour */
    BCM_QOS_MAP_EGRESS = 0x00000002,  /* from priority and colour to the mark */
    BCM_QOS_MAP_L2 = 0x00000004,      /* outer VLAN tag */
    BCM_QOS_MAP_L2_INNER_TAG = 0x00000008,
    BCM_QOS_MAP_L3 = 0x00000010,      /* DSCP */
    BCM_QOS_MAP_MPLS = 0x00000020,    /* EXP */
    BCM_QOS_MAP_ETAG = 0x00000040,
    BCM_QOS_MAP_WITH_ID = 0x00000080  /* bcm_qos_map_create: *map_id is the id to use */
} bcm_qos_map_flag_t;

/* One line of a map: a mark and what it stands for. */
typedef struct bcm_qos_map_s {
    uint8 pkt_pri;          /* outer VLAN tag: 0..7 */
    uint8 pkt_cfi;          /* 0 or 1 */
    uint8 inner_pkt_pri;    /* inner VLAN tag: 0..7 */
    uint8 inner_pkt_cfi;    /* 0 or 1 */
    int dscp;               /* 0..63 */
    uint8 exp;              /* 0..7 */
    uint8 etag_pcp;         /* 0..7 */
    uint8 etag_de;          /* 0 or 1 */
    int port_offset;        /* queue of the port, counted from its first */
    int int_pri;            /* 0..15 */
    bcm_color_t color;
    int remark_int_pri;     /* priority that the packet is marked by when it leaves */
    bcm_color_t remark_color;
    int policer_offset;     /* policer of the group, counted from its first */
} bcm_qos_map_t;

/* The module. init removes all maps. */
int bcm_qos_init(int unit);
int bcm_qos_detach(int unit);

/* Maps. destroy gives BCM_E_BUSY while something uses the map; used_get says how many ports do. */
int bcm_qos_map_create(int unit, uint32 flags, int *map_id);
int bcm_qos_map_destroy(int unit, int map_id);
int bcm_qos_map_used_get(int unit, int map_id, int *used);

/*
 * Lines of a map. add replaces the one of the same mark (ingress), or of the same priority and colour
 * (egress); delete puts its default back. multi_get writes at most array_size lines.
 */
void bcm_qos_map_t_init(bcm_qos_map_t *map);
int bcm_qos_map_add(int unit, uint32 flags, bcm_qos_map_t *map, int map_id);
int bcm_qos_map_delete(int unit, uint32 flags, bcm_qos_map_t *map, int map_id);
int bcm_qos_map_multi_get(int unit, uint32 flags, int map_id, int array_size, bcm_qos_map_t *array,
                          int *array_count);

/* The maps of a port, one per direction, -1 to leave it or for none; the one of a kind (BCM_QOS_MAP_*). */
int bcm_qos_port_map_set(int unit, bcm_gport_t port, int ing_map, int egr_map);
int bcm_qos_port_map_get(int unit, bcm_gport_t port, int *ing_map, int *egr_map);
int bcm_qos_port_map_type_set(int unit, bcm_gport_t port, uint32 flags, int map_id);
int bcm_qos_port_map_type_get(int unit, bcm_gport_t port, uint32 flags, int *map_id);

/* All maps with their flags. */
int bcm_qos_multi_get(int unit, int array_size, int *map_ids_array, int *flags_array, int *array_count);

#ifdef __cplusplus
}
#endif

#endif
