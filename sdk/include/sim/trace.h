/*
 * Why a packet went where it went: the steps of its way, told by the code that takes them. Not part of the SDK
 * proper.
 */
#ifndef SIM_TRACE_H
#define SIM_TRACE_H

#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* The stages of the way that sim/traffic.h tells. */
typedef enum sim_stage_e {
    simStageArrive,      /* the MAC of the port */
    simStagePort,        /* what the port takes */
    simStageVlan,        /* the VLAN of the packet */
    simStageTree,        /* the state of the port in the VLAN's spanning tree group */
    simStageSource,      /* the source address */
    simStageRoute,       /* what is addressed to the router: where its IP address leads */
    simStageDestination, /* where the destination address leads */
    simStageReplicate,   /* the ports that send it */
    simStageLeave,       /* what each of them checks, and how the copy differs */
    simStageWire,        /* a cable to another port; the limit of a storm */
    simStagePolicer,     /* policers, on arrival or where it leaves */
    simStageQueue,       /* the queue of the port that sends it */
    simStageField,       /* the entry of the field processor that acts, or almost did, of each group looked up */
    simStageCount
} sim_stage_t;

/* Why a packet, or one copy of it, goes no further. */
typedef enum sim_drop_e {
    simDropNone,
    simDropUndersize,         /* the MAC: shorter than 64 bytes */
    simDropTooLong,           /* the MAC: longer than bcm_port_frame_max */
    simDropControl,           /* taken by the MAC: a control frame */
    simDropPortTakesNone,     /* bcm_port_discard: all */
    simDropTagType,           /* bcm_port_discard: with a tag, or without */
    simDropTranslation,       /* bcmVlanTranslateIngressMissDrop, bcmVlanTranslateIngressHitDrop */
    simDropVlanUnknown,       /* no such VLAN */
    simDropVlanFilter,        /* the port filters and is no member of the VLAN */
    simDropTreeState,         /* the port does not forward in the spanning tree group */
    simDropSourceAddress,     /* a group address, not to be learnt, or BCM_L2_DISCARD_SRC */
    simDropDestinationAddress,/* BCM_L2_DISCARD_DST */
    simDropNoDestination,     /* back to where it came from, or no port that can send it */
    simDropNoLink,            /* the port that was to send it has no link */
    simDropTreeStateToSend,   /* it does not forward in the spanning tree group */
    simDropVlanFilterToSend,  /* it filters and is no member of the VLAN */
    simDropTooLongToSend,     /* longer than its bcm_port_frame_max */
    simDropTranslationToSend, /* bcmVlanTranslateEgressMissDrop */
    simDropStorm,             /* the packet has gone over more cables than sim_storm_limit_set allows */
    simDropIpHeader,          /* of a packet to be routed: no sound header, or a wrong checksum of it */
    simDropIpSource,          /* BCM_L3_SRC_DISCARD, or no route back to its source, as the interface demands */
    simDropNoRoute,           /* no host or route leads to its IP address */
    simDropNullRoute,         /* BCM_L3_DST_DISCARD */
    simDropUnresolved,        /* the next hop is not known yet */
    simDropTtl,               /* its TTL or hop limit is at its end, or too low for the interface */
    simDropMtu,               /* longer than the MTU of the interface */
    simDropRateIn,             /* bcm_port_rate_ingress_set */
    simDropStormLimit,         /* bcm_rate_*: too many of its kind, or of those that share the limit */
    simDropPolicer,            /* a policer's action for the packet's colour, or BCM_POLICER_DROP_RED */
    simDropQueueFull,          /* the queue of the port that was to send it has no room */
    simDropFieldRule,         /* an entry of the field processor */
    simDropFieldRuleToSend,   /* one of the stage egress, for the copy of this port */
    simDropCount
} sim_drop_t;

/* "vlan", "source" and so on; "?" for what is none. */
const char *sim_stage_name(int stage);

/* "none", "vlan_filter" and so on; "?" for what is none. */
const char *sim_drop_name(int drop);

typedef struct sim_trace_step_s {
    int unit;
    int stage; /* sim_stage_t */
    int drop;  /* sim_drop_t: why it ends here */
    bcm_port_t
        port; /* of simStageReplicate, simStageLeave and simStageWire the one that sends; else of arrival */
    bcm_vlan_t vlan;  /* 0 before it is known */
    const char *text; /* what was met, in words; valid during the call, or until the next sim_trace_begin */
} sim_trace_step_t;

typedef void (*sim_trace_listener_t)(const sim_trace_step_t *step, void *datum);

/*
 * From now on the listener hears of each step of each packet in any unit, as it is taken; null: nobody does. It
 * must not call the SDK.
 */
void sim_trace_listen(sim_trace_listener_t listener, void *datum);

/*
 * The same, kept: from sim_trace_begin, which forgets what was kept before, to sim_trace_end. The listener above
 * hears it too. sim_trace_count tells how many steps there are, sim_trace_step gives one (BCM_E_NOT_FOUND,
 * BCM_E_PARAM for null), sim_trace_text all of them as lines, valid until the next call of these.
 */
void sim_trace_begin(void);
void sim_trace_end(void);
int sim_trace_count(void);
int sim_trace_step(int index, sim_trace_step_t *step);
const char *sim_trace_text(void);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
