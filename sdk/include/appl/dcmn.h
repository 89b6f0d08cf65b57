/*
 * Application start-up.
 */
#ifndef APPL_DCMN_H
#define APPL_DCMN_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Parameters of start-up. Those named no_* leave a step out if they are not 0. */
typedef struct appl_dcmn_init_param_s {
    uint32 unit;
    int32 nof_devices;
    int32 repeat;         /* how often the whole is done */
    int32 no_init;
    int32 no_deinit;
    int32 no_attach;
    int32 no_bcm;
    int32 no_soc;
    int32 no_intr;
    int32 no_rx_los;
    int32 modid;
    int32 base_modid;
    int32 flags;
    int32 no_linkscan;
    int32 warmboot;
    int32 engine_dump;
    int32 no_sync;
    int32 no_elk_appl;
    int32 no_elk_device;
    int32 no_elk_second_device;
    uint32 elk_ilkn_rev;
    uint32 elk_mdio_id;
    uint32 elk_mdio_second_id;
    int32 no_packet_rx;
    int32 packet_rx_cosq; /* queue that packets are received from */
    int32 no_appl;
    int32 no_appl_stk;
    int32 appl_traffic_enable_stage;
    uint32 cosq_disable;
    uint32 appl_flags;
    int32 no_itmh_prog_mode;
    int32 rc_load;        /* whether the command files are read */
    uint32 is_resources_check;
    uint32 error_on_leak;
    uint32 l2_mode;
} appl_dcmn_init_param_t;

#ifdef __cplusplus
}
#endif

#endif
