/*
 * Objects that take room in a switch, see bcm_switch_object_count_get: how many it can hold (Max) and how
 * many it holds (Used).
 */
#ifndef BCM_SWITCH_OBJECT_H
#define BCM_SWITCH_OBJECT_H

typedef enum bcm_switch_object_e {
    /* Layer 2. */
    bcmSwitchObjectL2EntryMax = 0,
    bcmSwitchObjectL2EntryUsed,
    bcmSwitchObjectL2StationMax,
    bcmSwitchObjectL2StationUsed,

    /* Layer 3. */
    bcmSwitchObjectL3HostMax,
    bcmSwitchObjectL3HostUsed,
    bcmSwitchObjectL3RouteIp4Max,
    bcmSwitchObjectL3RouteIp4Used,
    bcmSwitchObjectL3RouteIp6Max,
    bcmSwitchObjectL3RouteIp6Used,
    bcmSwitchObjectL3EgressMax,
    bcmSwitchObjectL3EgressUsed,
    bcmSwitchObjectL3InterfaceMax,
    bcmSwitchObjectL3InterfaceUsed,
    bcmSwitchObjectEcmpGroupMax,
    bcmSwitchObjectEcmpGroupUsed,
    bcmSwitchObjectEcmpPathMax,
    bcmSwitchObjectEcmpPathUsed,

    /* Multicast. */
    bcmSwitchObjectIpmcEntryMax,
    bcmSwitchObjectIpmcEntryUsed,
    bcmSwitchObjectMulticastGroupMax,
    bcmSwitchObjectMulticastGroupUsed,

    /* Labels, tunnels and the ports behind them. */
    bcmSwitchObjectMplsLabelMax,
    bcmSwitchObjectMplsLabelUsed,
    bcmSwitchObjectTunnelInitiatorMax,
    bcmSwitchObjectTunnelInitiatorUsed,
    bcmSwitchObjectTunnelTerminatorMax,
    bcmSwitchObjectTunnelTerminatorUsed,
    bcmSwitchObjectVirtualPortMax,
    bcmSwitchObjectVirtualPortUsed,

    /* Rules. */
    bcmSwitchObjectFieldEntryMax,
    bcmSwitchObjectFieldEntryUsed
} bcm_switch_object_t;

#endif
