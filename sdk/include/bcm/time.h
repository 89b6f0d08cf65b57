/*
 * Time: interfaces to clocks outside the device, capture of the device's own time, synchronous Ethernet.
 *
 * All functions return BCM_E_NONE or an error; in common they have BCM_E_UNIT, BCM_E_INIT and BCM_E_PARAM;
 * functions that take an interface give BCM_E_NOT_FOUND if there is none of that id.
 */
#ifndef BCM_TIME_H
#define BCM_TIME_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef int bcm_time_if_t;             /* interface to a clock */

/* flags of bcm_time_interface_t: the first two for bcm_time_interface_add, the others: what is set. */
typedef enum bcm_time_interface_flag_e {
    BCM_TIME_WITH_ID = 0x00000001,   /* id is the id to use */
    BCM_TIME_REPLACE = 0x00000002,   /* replace the interface of that id */
    BCM_TIME_ENABLE = 0x00000004,    /* clock and heartbeat are driven */
    BCM_TIME_INPUT = 0x00000008,     /* clock and heartbeat come from outside */
    BCM_TIME_HEARTBEAT = 0x00000010, /* heartbeat_hz */
    BCM_TIME_BITCLOCK = 0x00000020,  /* bitclock_hz */
    BCM_TIME_OFFSET = 0x00000040,
    BCM_TIME_DRIFT = 0x00000080,
    BCM_TIME_ACCURACY = 0x00000100,
    BCM_TIME_NTP_OFFSET = 0x00000200
} bcm_time_interface_flag_t;

/* flags of bcm_time_capture_t. */
#define BCM_TIME_CAPTURE_IMMEDIATE 0x00000001 /* the time now, not that of the last event */

/* heartbeat_hz of interfaces. */
typedef enum bcm_time_heartbeat_rate_e {
    BCM_TIME_HEARTBEAT_1HZ = 1,
    BCM_TIME_HEARTBEAT_4KHZ = 4000,
    BCM_TIME_HEARTBEAT_8KHZ = 8000
} bcm_time_heartbeat_rate_t;

/* Whether an interface follows its clock. */
typedef enum bcm_time_if_status_e {
    bcmTimeStatusUp = 0,
    bcmTimeStatusDown,                 /* no heartbeat */
    bcmTimeStatusDrift                 /* heartbeats come, but not in time */
} bcm_time_if_status_t;

/* What bcm_time_capture_get is given the time of. */
typedef enum bcm_time_event_e {
    bcmTimeEventHeartbeat = 0,
    bcmTimeEventGpio,
    bcmTimeEventFramesync
} bcm_time_event_t;

/* A time, or the difference of two. */
typedef struct bcm_time_spec_s {
    uint8 isnegative;                  /* 0 or 1 */
    COMPILER_UINT64 seconds;
    uint32 nanoseconds;                /* 0..999999999 */
} bcm_time_spec_t;

/* An interface to a clock. */
typedef struct bcm_time_interface_s {
    uint32 flags;                      /* BCM_TIME_* */
    bcm_time_if_t id;
    bcm_time_spec_t drift;             /* added to the time in a second */
    bcm_time_spec_t offset;            /* added to the time once */
    bcm_time_spec_t accuracy;          /* how far the time may be off */
    int heartbeat_hz;
    int clk_resolution;                /* nanoseconds */
    int bitclock_hz;
    bcm_time_if_status_t status;
    bcm_time_spec_t ntp_offset;        /* between this time and that of the network time protocol */
    bcm_time_spec_t bs_time;           /* of the last heartbeat */
} bcm_time_interface_t;

/* The device's time when an event came in. */
typedef struct bcm_time_capture_s {
    uint32 flags;                      /* BCM_TIME_CAPTURE_* */
    bcm_time_event_t event;
    int event_id;                      /* which of the pins */
    bcm_time_spec_t free_running;      /* since the device started */
    bcm_time_spec_t synced;            /* as corrected by offset and drift */
    uint32 sequence;                   /* events of that kind so far */
} bcm_time_capture_t;

/* How the clock recovered from a port is divided before it leaves the device. */
typedef struct bcm_time_synce_divisor_setting_s {
    bcm_port_t port;
    int divide_enable;                 /* 0: the clock leaves as it is */
    uint32 whole;                      /* the divisor's integer part */
    uint32 fraction_numerator;         /* and the rest of it as a fraction */
    uint32 fraction_denominator;
} bcm_time_synce_divisor_setting_t;

/* Called with each heartbeat of an interface, with the time at which it came. */
typedef int (*bcm_time_heartbeat_cb)(int unit, bcm_time_if_t id, bcm_time_spec_t *time, void *user_data);

/* Called once per interface. A negative result ends the traversal, which then returns it. */
typedef int (*bcm_time_interface_traverse_cb)(int unit, bcm_time_interface_t *intf, void *user_data);

int bcm_time_init(int unit);
int bcm_time_detach(int unit);

void bcm_time_spec_t_init(bcm_time_spec_t *spec);

/* Interfaces; add writes id unless it is given. */
void bcm_time_interface_t_init(bcm_time_interface_t *intf);
int bcm_time_interface_add(int unit, bcm_time_interface_t *intf);
int bcm_time_interface_get(int unit, bcm_time_if_t id, bcm_time_interface_t *intf);
int bcm_time_interface_delete(int unit, bcm_time_if_t id);
int bcm_time_interface_delete_all(int unit);
int bcm_time_interface_traverse(int unit, bcm_time_interface_traverse_cb cb, void *user_data);

/* Heartbeats: one callback per interface, called while enabled. */
int bcm_time_heartbeat_register(int unit, bcm_time_if_t id, bcm_time_heartbeat_cb f, void *user_data);
int bcm_time_heartbeat_unregister(int unit, bcm_time_if_t id);
int bcm_time_heartbeat_enable_set(int unit, bcm_time_if_t id, int enable);
int bcm_time_heartbeat_enable_get(int unit, bcm_time_if_t id, int *enable);

/* Times of events: flags, event and event_id say which; *missed counts those since the call before. */
void bcm_time_capture_t_init(bcm_time_capture_t *capture);
int bcm_time_capture_get(int unit, bcm_time_if_t id, bcm_time_capture_t *capture, int *missed);

/* The time of day at an interface. */
int bcm_time_tod_set(int unit, bcm_time_if_t id, bcm_time_spec_t *time);
int bcm_time_tod_get(int unit, bcm_time_if_t id, bcm_time_spec_t *time);

/* Recovered clocks, clk_index of a device's outputs; enable drives it. BCM_E_PARAM: no such divisor. */
void bcm_time_synce_divisor_setting_t_init(bcm_time_synce_divisor_setting_t *divisor_setting);
int bcm_time_synce_clock_set(int unit, int clk_index, int enable,
                             bcm_time_synce_divisor_setting_t *divisor_setting);
int bcm_time_synce_clock_get(int unit, int clk_index, int *enable,
                             bcm_time_synce_divisor_setting_t *divisor_setting);

#ifdef __cplusplus
}
#endif

#endif
