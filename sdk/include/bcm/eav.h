/*
 * Audio and video bridging: reserved bandwidth for streams, stream reservation and time packets.
 *
 * All functions return BCM_E_NONE or an error; in common they have BCM_E_UNIT, BCM_E_INIT, BCM_E_PORT and
 * BCM_E_PARAM.
 */
#ifndef BCM_EAV_H
#define BCM_EAV_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Classes of streams (IEEE 802.1Qav). */
typedef enum bcm_eav_stream_class_e {
    bcmEavStreamClassA = 0,            /* a frame in 125 microseconds */
    bcmEavStreamClassB,                /* a frame in 250 microseconds */
    bcmEavStreamClassNone              /* not a stream */
} bcm_eav_stream_class_t;

/* Settings of a unit. */
typedef enum bcm_eav_control_e {
    bcmEavControlTimeBase = 0,         /* nanoseconds */
    bcmEavControlMaxFrameSize,         /* bytes of a frame of a stream */
    bcmEavControlNonStreamMaxFrameSize,
    bcmEavControlTickAdjust            /* nanoseconds that a tick is longer, or with bit 31 shorter */
} bcm_eav_control_t;

int bcm_eav_init(int unit);
int bcm_eav_detach(int unit);

int bcm_eav_control_set(int unit, bcm_eav_control_t type, uint32 arg);
int bcm_eav_control_get(int unit, bcm_eav_control_t type, uint32 *arg);

/* Whether streams of a class pass a port; whether its link, and whether its peer, allows that at present. */
int bcm_eav_port_enable_set(int unit, bcm_port_t port, bcm_eav_stream_class_t type, int enable);
int bcm_eav_port_enable_get(int unit, bcm_port_t port, bcm_eav_stream_class_t type, int *enable);
int bcm_eav_link_status_get(int unit, bcm_port_t port, int *status, int *peer_status);

/* The VLAN priority that marks a class at a port, 0..7, and the one that other frames with it are given. */
int bcm_eav_pcp_mapping_set(int unit, bcm_port_t port, bcm_eav_stream_class_t type, int pcp,
                            int remapped_pcp);
int bcm_eav_pcp_mapping_get(int unit, bcm_port_t port, bcm_eav_stream_class_t type, int *pcp,
                            int *remapped_pcp);

/* What streams of a class may take of a port: bytes in a second, and bytes of a burst. */
int bcm_eav_bandwidth_set(int unit, bcm_port_t port, bcm_eav_stream_class_t type, uint32 bandwidth,
                          uint32 bucket);
int bcm_eav_bandwidth_get(int unit, bcm_port_t port, bcm_eav_stream_class_t type, uint32 *bandwidth,
                          uint32 *bucket);

/* The destination address by which time packets are known, and address and type of reservation packets. */
int bcm_eav_timesync_mac_set(int unit, bcm_mac_t eav_mac);
int bcm_eav_timesync_mac_get(int unit, bcm_mac_t eav_mac);
int bcm_eav_srp_mac_ethertype_set(int unit, bcm_mac_t mac, bcm_ethertype_t ethertype);
int bcm_eav_srp_mac_ethertype_get(int unit, bcm_mac_t mac, bcm_ethertype_t *ethertype);

/* When the last time packet left a port, in nanoseconds of the unit's clock; count: how many have left. */
int bcm_eav_timestamp_get(int unit, bcm_port_t port, int *count, COMPILER_UINT64 *timestamp);

#ifdef __cplusplus
}
#endif

#endif
