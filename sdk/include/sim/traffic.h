/*
 * Packets that reach a switch from outside, and those that leave it. Unless interfaces of the host are attached
 * (sim/interfaces.h), nothing happens between calls. The passing of time is in sim/clock.h. Not part of the SDK proper.
 */
#ifndef SIM_TRAFFIC_H
#define SIM_TRAFFIC_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/*
 * One sweep of the ageing timer, which the clock makes each time that bcm_l2_age_timer_set's seconds have passed:
 * every dynamic address that no packet came from since the sweep before
 * (or since it was entered) is removed. Returns the number removed, 0 while ageing is off (timer 0) or the
 * table is frozen, or an error.
 */
int sim_l2_age_step(int unit);

/*
 * A packet arrives on the wire of a front port: length bytes of a frame from its destination address on,
 * without checksum, 14..16379 of them. It takes the way that the tables of the unit say, in this order:
 *   1. The MAC drops what is shorter than 64 bytes or longer than bcm_port_frame_max, checksum included, and
 *      takes the control frames (type 0x8808) for itself: pauses hold back what the port sends if it obeys them
 *      (bcm_port_pause_set). What the MAC lets in is sampled and mirrored, as it came.
 *   2. The port's rate, bcm_port_rate_ingress_set. bcm_port_discard. An outer tag begins with a TPID of the port
 *      (bcm_port_tpid_*), an inner one, or one alone, with bcm_port_inner_tpid; at a port to customers (BCM_PORT_DTAG_MODE_EXTERNAL) all tags are inner ones. All
 *      TPIDs are 0x8100 at first. A tag without VLAN id counts as none. What the port looks up for the tags
 *      (bcmVlanTranslateIngressEnable, bcmVlanLookup*Enable: all on at first), the first found changes them:
 *        a. bcm_vlan_translate_action_*: at the port by both VLANs, outer tag, inner tag, outer VLAN, inner VLAN, outer
 *           priority, then so by its class (bcmPortClassVlanTranslateIngress), then anywhere; or only by
 *           bcmVlanPortTranslateKeyFirst and Second. Then bcm_vlan_translate_*, the narrowest range, and for an inner
 *           tag alone bcm_vlan_dtag_*. bcmVlanTranslateIngressHitDrop drops what is found, MissDrop tags that are not.
 *        b. without outer tag: bcm_vlan_mac_*, bcm_vlan_ip_* (longest first; before addresses with
 *           bcmVlanPortPreferIP4), bcm_port_protocol_vlan_* and bcm_vlan_port_protocol_action_*.
 *        c. bcm_vlan_port_default_action_*.
 *      In actions, Add makes a tag carry the new value, Replace one that is there, Copy takes the other tag's,
 *      OuterAdd and InnerAdd those that arrived. The outer tag's priority is `priority`, as is that in the switch. Else
 *      bcm_port_vlan_priority_map_* gives priority and colour, bcm_port_untagged_priority that of other packets.
 *   3. Entries of the field processor (bcm_field_entry_install) whose groups have bcmFieldQualifyStageLookup drop it or
 *      choose its VLAN. That, or the VLAN of the outer tag, or else the port's untagged VLAN has to exist, and to have
 *      the port as a member if the port filters (bcm_port_vlan_member, bcm_port_ifilter). With bcm_port_force_forward or _dest, all else then
 *      does not count: the packet goes to that port.
 *   4. The port's state in the VLAN's spanning tree group. Packets to 01:80:c2:00:00:00 to ..:0f go to the
 *      CPU and nowhere else, unless that state is BCM_STG_STP_DISABLE.
 *   5. The source address is learnt, as by sim_l2_learn. BCM_L2_DISCARD_SRC; an address that was not known
 *      there drops the packet if the port has not BCM_PORT_LEARN_FWD.
 *      Policers of the port in the VLAN, of the VLAN and of the port colour the packet then, and may drop it.
 *   6. What is addressed to the router is routed: to the address of an interface in its VLAN (bcm_l3_intf_create), of
 *      a virtual router (bcm_l3_vrrp_add), or of a station (bcm_l2_station_add), as far as that says so. What is no
 *      IPv4 or IPv6 goes to the CPU, as does what is for a link-local address. The IP header has to be sound. The
 *      routing table is that of the VLAN's bcm_l3_ingress_t, else of the interface. A source that the VLAN or the
 *      ingress interface does not expect (urpf_mode), or BCM_L3_SRC_DISCARD, drops it. A valid host, else the route
 *      with the longest prefix, leads to an egress object, or to one of a group: by a hash of addresses, protocol and
 *      TCP or UDP ports, the same for all of a flow. An object at the CPU's port takes it as it came. Else TTL and
 *      MTU have to suffice, and it leaves in the interface's VLAN, from its address to the next hop's, with a TTL of
 *      one less, also where it came from. What cannot be routed is dropped, or goes to the CPU as bcmSwitchL3*ToCpu
 *      and bcmSwitchUnknownL3DestToCpu say.
 *      A multicast in the VLAN of an interface that has an entry (bcm_ipmc_add) is bridged, or goes to its group_l2, and
 *      copies leave in the VLANs of the interfaces of its group, with their source addresses and a TTL of one less:
 *      not in that which it came from, none whose TTL is at its end, no longer ones than the interface takes. Ports of
 *      the group's line (bcm_ipmc_bitmap_set) send one each as bcm_ipmc_egress_port_set says.
 *   7. The destination address: its entry's port, trunk, CPU or group (a line of bcm_mcast_bitmap), or,
 *      without entry or with BCM_VLAN_L2_LOOKUP_DISABLE, the VLAN's members; without those that bcm_port_flood_block
 *      and bcm_vlan_block leave out, and none with BCM_VLAN_UNKNOWN_UCAST_DROP, bcmVlanMcastFloodNone or
 *      bcmPortPfmForwardRegistered. BCM_VLAN_COPY_TO_CPU. Never back to the port that it came from, unless that has
 *      bcmPortControlBridge, or to the trunk of that; only to ports that bcm_port_egress allows, to trunks that
 *      bcm_trunk_egress allows, and not between ports of one bcmPortControlProtectedGroup or
 *      bcmPortControlSplitHorizonGroup, or those with bcmPortControlPvlanIsolated.
 *      Of a trunk that is up one active member that can send is selected: for an entry's trunk by the
 *      criterion, else by dlf_index, mc_index or a hash. Of a set of ports those are left out that cannot
 *      send; a single one counts the drop.
 *      Storm control (bcm_rate_*) drops here what is too much of unknown unicast, multicast or broadcast.
 *      Other entries of the field processor (bcmFieldQualifyStageIngress, or no stage) drop it, copy it to the CPU or
 *      for mirrors, send or route it elsewhere, police it, and change its priority, colour, queue, tags and headers.
 *   8. A port can send if it has a link and forwards in the spanning tree. It drops what is of a foreign VLAN
 *      (BCM_PORT_VLAN_MEMBER_EGRESS) or longer than its bcm_port_frame_max, and what entries with
 *      bcmFieldQualifyStageEgress drop. The untagged members of the VLAN
 *      send without outer tag, all others with one of the port's first TPID, at bcm_port_untagged_priority if it had
 *      none on arrival; ports to customers none, those to the network (BCM_PORT_DTAG_MODE_INTERNAL) always. Before,
 *      the port's translation changes the tags (bcm_vlan_translate_egress_action_* of its class
 *      bcmPortClassVlanTranslateEgress, bcm_vlan_translate_egress_*, bcm_vlan_port_egress_default_action_*), and
 *      bcm_port_vlan_priority_unmap_* the outer tag's priority; after it bcm_port_force_vlan. There
 *      policers come once more, then the queue of its priority (bcm_cosq_port_mapping_set): at a port that a shaper
 *      (bcm_port_rate_egress_set), a queue's rate, a queue that does not send or a pause holds back, packets wait for
 *      the clock, leave as the scheduler chooses, and are dropped if the queue is full. Elsewhere they leave at once.
 *      Samples and mirrored copies of what leaves are taken here; they go to their port whatever VLANs and trees
 *      say, and are not mirrored again. Which packets are samples is drawn: the same ones for the same seed
 *      (bcmSwitchSampleIngressRandomSeed, ...EgressRandomSeed) and traffic.
 * A port has a link if bcm_port_link_status_get says so. What a port in a loopback sends comes back to it and does not
 * leave. The CPU is port 0: what it gets counts there as sent.
 *
 * While bcm_rx_start is in force, what the CPU gets is handed to the callbacks of bcm_rx_register in the call that
 * brought it, when all that left with it has been given away; no callback is called within another. The data is the
 * frame as it leaves port 0, so that it has a tag unless the CPU is an untagged member of the VLAN. The reasons are
 *   Bpdu, SlowProtocol (and Lacp), Eapol, Lldp, ReservedMulticast: a packet of step 4
 *   L2DestMarked: a copy that the destination's entry asks for (BCM_L2_COPY_TO_CPU)
 *   FilterMatch: an entry of the field processor sends it, rx_matched tells which; or the reason that entries give
 *   L2DestMiss, MulticastMiss: the CPU is a member of the VLAN, and the address unknown
 *   Control: the entry leads to the CPU, it is in the group, or it is a member and the packet a broadcast
 *   LocalCpu: the CPU has sent it to itself
 *   Arp, ArpReply, Dhcp, Dhcp6, Neighbor..., Router..., IcmpRedirect, Igmp..., Mld..., Pim, Ospf, Vrrp, Rip, Bgp: a
 *     copy of a packet of that protocol, which bcmSwitchArpRequestToCpu and the like ask for, made after step 5
 *   L3Ttl, L3MtuFail, L3HeaderError, UrpfFail, L3NextHopIncomplete, L3DestMiss: not routed, and the controls of that
 *     send it to the CPU; LinkLocalUnicast: never routed; L3LocalAddress: its next hop is the CPU; L3DestMarked: a copy
 *     that route or station asks for; Arp, Control: to a router's address, and nothing that is routed
 *   SampleSource, SampleDest, Mirror, EgressMirror: a sample or mirrored copy of what arrived, or of what leaves; the
 *     VLAN of those of what arrived is that of the tag, 0 without
 * What has waited in a queue of port 0 comes without a reason and as if from port 0.
 * bcmSwitchUnknownUcastToCpu and ...McastToCpu give the CPU copies as if it were a member of all VLANs.
 * What the CPU sends (bcm_tx) has left when the call returns, and call_back and all_done_cb have been called by then.
 * With BCM_TX_ETHER it takes the way above from port 0, but for steps 2, 4 and 5: the CPU is part of no tree and nothing
 * is learnt. Else it leaves through tx_pbmp, whatever tables and queues say, if the port has a link and sends that
 * length. The data is sent as it is, to tx_upbmp without its tag; with BCM_PKT_F_NO_VTAG a tag of vlan, vlan_pri and
 * vlan_cfi comes first. What a callback sends belongs to what brought its packet: sim_packet_send collects it too.
 *
 * bcm_stat_get tells what came and went, with lengths as on the wire, tag and checksum included: snmpIfIn*
 * counts what came, dropped or not, snmpEtherStats* both directions. A drop counts in one of snmpIfInErrors
 * (by the MAC), snmpIfInDiscards (2 to 7; snmpBcmRx*Discards give reasons) and, at the port that was to send
 * it, snmpIfOutDiscards. Returns
 *   BCM_E_NONE       it has arrived, whatever became of it
 *   BCM_E_DISABLED   the port is disabled or has no link: nothing arrives, nothing counts
 *   BCM_E_PARAM      frame null, or length out of range
 *   BCM_E_RESOURCE   it, or what it brought about, went over more cables and to more CPUs than sim_storm_limit_set
 *                    allows: what was still on its way then is lost
 *   BCM_E_UNIT, BCM_E_PORT (the CPU's too), BCM_E_INIT
 * What leaves a port whose cable leads to a port (sim_cable_join) arrives there, after what has arrived before.
 */
int sim_packet_arrive(int unit, bcm_port_t port, const unsigned char *frame, int length);

/*
 * Called for each packet that leaves a port, the CPU's too, of any unit. The frame is as above, valid during
 * the call. By then the arrival is over: the watcher may call anything.
 */
typedef void (*sim_packet_watcher_t)(int unit, bcm_port_t port, const unsigned char *frame, int length,
                                     void *datum);

/* From now on it is this one, or none (null). */
void sim_packet_watch(sim_packet_watcher_t watcher, void *datum);

/*
 * The same as sim_packet_arrive; what leaves because of it, over cables too, is also given to the collector, which
 * may be null, before the watcher.
 */
int sim_packet_send(int unit, bcm_port_t port, const unsigned char *frame, int length,
                    sim_packet_watcher_t collector, void *datum);

/*
 * How many times what one arrival brings about may go over a cable between ports or to a CPU that receives, 1000 at
 * first: loops that no spanning tree cuts end there, and answers to answers. BCM_E_PARAM below 0. sim_storm_count: how
 * many arrivals ended so.
 */
int sim_storm_limit_set(int crossings);
int sim_storm_limit_get(void);
int sim_storm_count(void);

/*
 * A minimum-size packet arrives at the port from the source address mac, and goes no further. vid is the VLAN
 * of its tag, 0 for an untagged packet, which belongs to the port's untagged VLAN. Returns
 *   BCM_E_NONE       the address was known there, or has been learnt or moved there; for a member of a trunk,
 *                    there is the trunk
 *   BCM_E_DISABLED   port disabled, learning off, or table frozen, and the address not known there
 *   BCM_E_EXISTS     a static entry, an authorisation for another port or a learn class holds it elsewhere
 *   BCM_E_RESOURCE   a learn limit is reached
 *   BCM_E_FULL       the table is full
 *   BCM_E_NOT_FOUND  no such VLAN
 *   BCM_E_PARAM      mac null or a group address, or VLAN id out of range
 *   BCM_E_UNIT, BCM_E_PORT, BCM_E_INIT
 */
int sim_l2_learn(int unit, bcm_port_t port, const unsigned char *mac, bcm_vlan_t vid);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
