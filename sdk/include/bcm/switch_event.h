/*
 * What a switch tells its user without being asked, see bcm_switch_event_register.
 */
#ifndef BCM_SWITCH_EVENT_H
#define BCM_SWITCH_EVENT_H

#include <bcm/types.h>

/* Events, with what the arguments of the callback mean; those that are not named are 0. */
typedef enum bcm_switch_event_e {
    /* Faults of the device. */
    bcmSwitchEventParityError = 0,        /* arg1: bcm_switch_event_error_t, arg2: memory, arg3: index */
    bcmSwitchEventParityCorrected,
    bcmSwitchEventBusError,               /* arg1: bcm_switch_event_error_t, arg2: address */
    bcmSwitchEventDmaError,               /* arg1: channel */
    bcmSwitchEventMemoryInitFailed,
    bcmSwitchEventExternalMemoryError,    /* arg1: channel */
    bcmSwitchEventFabricLinkError,        /* arg1: link */
    bcmSwitchEventMmuError,               /* arg1: pipe */
    bcmSwitchEventPipelineStuck,
    bcmSwitchEventWatchdog,
    bcmSwitchEventDeviceReset,

    /* Faults of the SDK's own work. */
    bcmSwitchEventThreadError,            /* arg1: SOC_SWITCH_EVENT_THREAD_*, arg3: return code */
    bcmSwitchEventAssertion,
    bcmSwitchEventTableCacheMismatch,     /* arg1: memory, arg2: index */
    bcmSwitchEventInterruptStorm,
    bcmSwitchEventFirmwareCrash,          /* arg1: core */

    /* State kept over a restart. */
    bcmSwitchEventStableFull,
    bcmSwitchEventStableError,
    bcmSwitchEventUncontrolledShutdown,
    bcmSwitchEventWarmBootDone,
    bcmSwitchEventWarmBootFormatOld,

    /* Room. */
    bcmSwitchEventTableFull,              /* arg1: bcm_switch_object_t */
    bcmSwitchEventTableAlmostFull,
    bcmSwitchEventBufferThreshold,        /* arg1: port, arg2: queue */
    bcmSwitchEventLearnOverflow,
    bcmSwitchEventFlexCounterEvicted,
    bcmSwitchEventFlowExportOverflow,

    /* Traffic. */
    bcmSwitchEventPfcDeadlock,            /* arg1: port, arg2: priority, arg3: 1 detected, 0 recovered */
    bcmSwitchEventLinkFlap,               /* arg1: port */
    bcmSwitchEventStationUnruly,
    bcmSwitchEventLossOfHeartbeat,        /* arg1: clock interface */
    bcmSwitchEventTimestampOverflow,
    bcmSwitchEventAgmImbalance,           /* arg1: monitor */
    bcmSwitchEventLatencyExceeded,
    bcmSwitchEventOlpStationLost,
    bcmSwitchEventProtectionSwitched,

    /* Surroundings. */
    bcmSwitchEventTemperatureWarn,        /* arg1: sensor, arg2: tenths of a degree */
    bcmSwitchEventTemperatureShutdown,
    bcmSwitchEventVoltageFault,
    bcmSwitchEventGpioInput,              /* arg1: pin */
    bcmSwitchEventModuleInserted,
    bcmSwitchEventModuleRemoved
} bcm_switch_event_t;

/* What is wrong, in events about memories, registers and buses. */
typedef enum bcm_switch_event_error_e {
    bcmSwitchEventErrorUnknown = 0,
    bcmSwitchEventErrorMemParity,
    bcmSwitchEventErrorMemSingleBit,         /* corrected by its code */
    bcmSwitchEventErrorMemDoubleBit,
    bcmSwitchEventErrorTcamParity,
    bcmSwitchEventErrorRegisterParity,
    bcmSwitchEventErrorBufferParity,         /* a packet is lost, or a cell leaked */
    bcmSwitchEventErrorFifoParity,
    bcmSwitchEventErrorBusTimeout,
    bcmSwitchEventErrorBusNack,
    bcmSwitchEventErrorBusParity,
    bcmSwitchEventErrorSelfTest
} bcm_switch_event_error_t;

/* What may be set for each event. */
typedef enum bcm_switch_event_action_e {
    bcmSwitchEventControlEnable = 0,         /* 0: the event is not looked at */
    bcmSwitchEventControlCallback,           /* 0: it is not told to callbacks */
    bcmSwitchEventControlLog,
    bcmSwitchEventControlStormLimit,         /* events in the window until it is silenced, 0: never */
    bcmSwitchEventControlStormWindow,        /* milliseconds */
    bcmSwitchEventControlCorrect             /* 0: what could be corrected is left alone */
} bcm_switch_event_action_t;

/* One setting of an event. */
typedef struct bcm_switch_event_control_s {
    uint32 event_id;                         /* arg1 of the events that are meant, or 0 for all */
    bcm_switch_event_action_t action;
} bcm_switch_event_control_t;

/* Called with each event, on a thread of the SDK; it may call the SDK. */
typedef void (*bcm_switch_event_cb_t)(int unit, bcm_switch_event_t event, uint32 arg1, uint32 arg2,
                                      uint32 arg3, void *userdata);

#endif
