/*
 * What the families whose objects are counted say of counters.
 */
#ifndef BCM_STAT_TYPES_H
#define BCM_STAT_TYPES_H

#include <sal/types.h>

/* Forwarding objects that flexible counters can be attached to. */
typedef enum bcm_stat_object_e {
    bcmStatObjectIngPort = 0,
    bcmStatObjectIngVlan,
    bcmStatObjectIngVlanXlate,
    bcmStatObjectIngVfi,
    bcmStatObjectIngL3Intf,
    bcmStatObjectIngVrf,
    bcmStatObjectIngPolicy,
    bcmStatObjectIngExactMatch,
    bcmStatObjectIngFieldStageVlan,
    bcmStatObjectIngMplsVcLabel,
    bcmStatObjectIngMplsSwitchLabel,
    bcmStatObjectIngMplsFrrLabel,
    bcmStatObjectIngL3Host,
    bcmStatObjectIngL3Route,
    bcmStatObjectIngL3SourceBind,
    bcmStatObjectIngTrill,
    bcmStatObjectIngMimLookupId,
    bcmStatObjectIngL2Gre,
    bcmStatObjectIngVxlan,
    bcmStatObjectIngVxlanDip,
    bcmStatObjectIngTunnelTerminator,
    bcmStatObjectIngSubport,
    bcmStatObjectIngNiv,
    bcmStatObjectIngFcoe,
    bcmStatObjectIngOam,
    bcmStatObjectIngIpmc,
    bcmStatObjectIngPolicer,
    bcmStatObjectEgrPort,
    bcmStatObjectEgrVlan,
    bcmStatObjectEgrVlanXlate,
    bcmStatObjectEgrVfi,
    bcmStatObjectEgrL3Intf,
    bcmStatObjectEgrL3Nat,
    bcmStatObjectEgrPolicy,
    bcmStatObjectEgrMpls,
    bcmStatObjectEgrTrill,
    bcmStatObjectEgrMim,
    bcmStatObjectEgrWlan,
    bcmStatObjectEgrL2Gre,
    bcmStatObjectEgrVxlan,
    bcmStatObjectEgrTunnelInitiator,
    bcmStatObjectEgrSubport,
    bcmStatObjectEgrNiv,
    bcmStatObjectEgrOam,
    bcmStatObjectEgrFcoe,
    bcmStatObjectEgrIpmc,
    bcmStatObjectCosqQueue,
    bcmStatObjectCount
} bcm_stat_object_t;

/* A counter's value. */
typedef struct bcm_stat_value_s {
    uint32 packets;                       /* low half of packets64 */
    uint64 bytes;
    uint64 packets64;
} bcm_stat_value_t;

#endif
