/*
 * What an entry of the field processor matches. Each qualifier has a setter, which replaces what was asked
 * for before, and a getter, which gives it back. A packet matches if all its qualifiers do; a bit that is 0
 * in a mask does not count. The group's set must have the qualifier.
 *
 * BCM_E_NOT_FOUND: no such entry, or the getter's qualifier was not set. BCM_E_UNAVAIL: not on this chip.
 */
#ifndef BCM_FIELD_QUALIFY_H
#define BCM_FIELD_QUALIFY_H

#include <bcm/error.h>
#include <bcm/field_types.h>
#include <bcm/rx_trap.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Removes all qualifiers of the entry, which then matches every packet. */
int bcm_field_qualify_clear(int unit, bcm_field_entry_t entry);

/* One byte or less of the packet or of what is known about it; for yes or no, 1 or 0. */
int bcm_field_qualify_Drop(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_Drop_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OuterVlanPri(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OuterVlanPri_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OuterVlanCfi(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OuterVlanCfi_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OuterVlanPriCfi(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OuterVlanPriCfi_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_InnerVlanPri(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_InnerVlanPri_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_InnerVlanCfi(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_InnerVlanCfi_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_Loopback(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_Loopback_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IntPriority(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IntPriority_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IpProtocol(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IpProtocol_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_DSCP(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_DSCP_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_Tos(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_Tos_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IpFlags(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IpFlags_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TcpControl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TcpControl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TcpHeaderSize(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TcpHeaderSize_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_Ttl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_Ttl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_Ip6NextHeader(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_Ip6NextHeader_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_Ip6TrafficClass(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_Ip6TrafficClass_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_Ip6HopLimit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_Ip6HopLimit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_VlanFormat(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_VlanFormat_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MHOpcode(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MHOpcode_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGig(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGig_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_DstHiGig(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_DstHiGig_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigProxy(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigProxy_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L3Routable(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L3Routable_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ExtensionHeaderType(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ExtensionHeaderType_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ExtensionHeaderSubCode(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ExtensionHeaderSubCode_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ExtensionHeader2Type(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ExtensionHeader2Type_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MirrorCopy(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MirrorCopy_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TunnelTerminated(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TunnelTerminated_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsTerminated(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsTerminated_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_InnerIp6HopLimit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_InnerIp6HopLimit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_InnerTtl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_InnerTtl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_InnerTos(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_InnerTos_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_InnerDSCP(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_InnerDSCP_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_InnerIpProtocol(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_InnerIpProtocol_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_InnerIp6NextHeader(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_InnerIp6NextHeader_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_DosAttack(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_DosAttack_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IpmcStarGroupHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IpmcStarGroupHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MyStationHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MyStationHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L3DestRouteHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L3DestRouteHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L3DestHostHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L3DestHostHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L3SrcHostHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L3SrcHostHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L2CacheHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L2CacheHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L2StationMove(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L2StationMove_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L2DestHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L2DestHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L2SrcStatic(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L2SrcStatic_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L2SrcHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L2SrcHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IngressStpState(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IngressStpState_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IngressVPortBridgeDisable(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IngressVPortBridgeDisable_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                    uint8 *mask);
int bcm_field_qualify_ForwardingVlanValid(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ForwardingVlanValid_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_SrcVirtualPortValid(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_SrcVirtualPortValid_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_VlanTranslationHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_VlanTranslationHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IpAuth(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IpAuth_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TranslatedVlanFormat(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TranslatedVlanFormat_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_RecoverableDrop(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_RecoverableDrop_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_RepCopy(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_RepCopy_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IpTunnelHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IpTunnelHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel1Hit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel1Hit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TrillEgressRbridgeHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TrillEgressRbridgeHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L2GreSrcIpHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L2GreSrcIpHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MimSrcGportHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MimSrcGportHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel2Hit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel2Hit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TrillIngressRbridgeHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TrillIngressRbridgeHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L2GreVfiHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L2GreVfiHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MimVfiHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MimVfiHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_GenericAssociatedChannelLabelValid(int unit, bcm_field_entry_t entry, uint8 data,
                                                         uint8 mask);
int bcm_field_qualify_GenericAssociatedChannelLabelValid_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                             uint8 *mask);
int bcm_field_qualify_RouterAlertLabelValid(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_RouterAlertLabelValid_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_DstIpLocal(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_DstIpLocal_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IpAddrsNormalized(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IpAddrsNormalized_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MacAddrsNormalized(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MacAddrsNormalized_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsForwardingLabelTtl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsForwardingLabelTtl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsForwardingLabelBos(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsForwardingLabelBos_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsForwardingLabelExp(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsForwardingLabelExp_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsForwardingLabelAction(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsForwardingLabelAction_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                    uint8 *mask);
int bcm_field_qualify_MplsControlWordValid(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsControlWordValid_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L2Learn(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L2Learn_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_PortOrientation(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_PortOrientation_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_EcnValue(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_EcnValue_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_RxTrapCode(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_RxTrapCode_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_RxTrapStrength(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_RxTrapStrength_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsBos(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsBos_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_PolicerIntPrio(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_PolicerIntPrio_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_PacketTerminatedBytes(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_PacketTerminatedBytes_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_BypassFilter(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_BypassFilter_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ReplicantAny(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ReplicantAny_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ReplicantFirst(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ReplicantFirst_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_Dhcp(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_Dhcp_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_SnoopCopy(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_SnoopCopy_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ForwardCopy(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ForwardCopy_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TunnelTerminatedHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TunnelTerminatedHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsTerminatedHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsTerminatedHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L3SrcRouteHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L3SrcRouteHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IpmcHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IpmcHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel1Ttl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel1Ttl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel1Bos(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel1Bos_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel1Exp(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel1Exp_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel2Ttl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel2Ttl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel2Bos(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel2Bos_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel2Exp(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel2Exp_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel3Ttl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel3Ttl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel3Bos(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel3Bos_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsLabel3Exp(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsLabel3Exp_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_VlanAction(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_VlanAction_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsOuterLabelPop(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsOuterLabelPop_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsStationHitTunnelUnterminated(int unit, bcm_field_entry_t entry, uint8 data,
                                                       uint8 mask);
int bcm_field_qualify_MplsStationHitTunnelUnterminated_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                           uint8 *mask);
int bcm_field_qualify_ExternalHit0(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ExternalHit0_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ExternalHit1(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ExternalHit1_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ExternalHit2(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ExternalHit2_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_ExternalHit3(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_ExternalHit3_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_VpnUnknownDstMacDstPort(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_VpnUnknownDstMacDstPort_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                  uint8 *mask);
int bcm_field_qualify_VxlanFlags(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_VxlanFlags_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_NatNeeded(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_NatNeeded_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IcmpError(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IcmpError_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TranslatedOuterVlanPri(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TranslatedOuterVlanPri_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TranslatedOuterVlanCfi(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TranslatedOuterVlanCfi_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TranslatedInnerVlanPri(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TranslatedInnerVlanPri_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TranslatedInnerVlanCfi(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TranslatedInnerVlanCfi_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanRCtl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanRCtl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanCSCtl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanCSCtl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanDFCtl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanDFCtl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanType(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanType_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanVFTVersion(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanVFTVersion_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanVFTPri(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanVFTPri_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanVFTHopCount(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanVFTHopCount_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanVFTVsanPri(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanVFTVsanPri_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FcoeSOF(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FcoeSOF_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanZoneCheck(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanZoneCheck_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanSrcFpmaCheck(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanSrcFpmaCheck_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanSrcBindCheck(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanSrcBindCheck_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FcoeVersionIsZero(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FcoeVersionIsZero_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FibreChanVFTValid(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FibreChanVFTValid_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IpFragNonOrFirst(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IpFragNonOrFirst_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_CpuVisibilityPacket(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_CpuVisibilityPacket_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_L3SrcBind(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_L3SrcBind_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamMdl(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamMdl_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_IntCongestionNotification(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_IntCongestionNotification_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                    uint8 *mask);
int bcm_field_qualify_MirrorEgressDisabled(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MirrorEgressDisabled_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_BypassSrcMacFilter(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_BypassSrcMacFilter_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_NativeVSwitch(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_NativeVSwitch_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_NativeVSwitchValid(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_NativeVSwitchValid_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TrillIVersion(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TrillIVersion_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TrillMultiDestination(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TrillMultiDestination_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TrillOpLength(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TrillOpLength_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_TrillHopCount(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TrillHopCount_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MimVlanPri(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MimVlanPri_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MimVlanCfi(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MimVlanCfi_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_FheiSize(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_FheiSize_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_EthernetOamTxPktUPMEP(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_EthernetOamTxPktUPMEP_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_EthernetOamInterfaceClassNiv(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_EthernetOamInterfaceClassNiv_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                       uint8 *mask);
int bcm_field_qualify_EthernetOamInterfaceClassMim(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_EthernetOamInterfaceClassMim_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                       uint8 *mask);
int bcm_field_qualify_EthernetOamInterfaceClassVxlan(int unit, bcm_field_entry_t entry, uint8 data,
                                                     uint8 mask);
int bcm_field_qualify_EthernetOamInterfaceClassVxlan_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                         uint8 *mask);
int bcm_field_qualify_EthernetOamInterfaceClassVlan(int unit, bcm_field_entry_t entry, uint8 data,
                                                    uint8 mask);
int bcm_field_qualify_EthernetOamInterfaceClassVlan_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                        uint8 *mask);
int bcm_field_qualify_EthernetOamInterfaceClassPort(int unit, bcm_field_entry_t entry, uint8 data,
                                                    uint8 mask);
int bcm_field_qualify_EthernetOamInterfaceClassPort_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                        uint8 *mask);
int bcm_field_qualify_EthernetOamClassVlanTranslateKeyFirst(int unit, bcm_field_entry_t entry, uint8 data,
                                                            uint8 mask);
int bcm_field_qualify_EthernetOamClassVlanTranslateKeyFirst_get(int unit, bcm_field_entry_t entry,
                                                                uint8 *data, uint8 *mask);
int bcm_field_qualify_EthernetOamClassVlanTranslateKeySecond(int unit, bcm_field_entry_t entry, uint8 data,
                                                             uint8 mask);
int bcm_field_qualify_EthernetOamClassVlanTranslateKeySecond_get(int unit, bcm_field_entry_t entry,
                                                                 uint8 *data, uint8 *mask);
int bcm_field_qualify_EthernetOamInterfaceClassMpls(int unit, bcm_field_entry_t entry, uint8 data,
                                                    uint8 mask);
int bcm_field_qualify_EthernetOamInterfaceClassMpls_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                        uint8 *mask);
int bcm_field_qualify_MplsOamGALLabelOnly(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsOamGALLabelOnly_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MplsOamUpperLabelDataDrop(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsOamUpperLabelDataDrop_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                    uint8 *mask);
int bcm_field_qualify_MplsOamGALExposed(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MplsOamGALExposed_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamEgressClassVxlt(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamEgressClassVxlt_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamEgressClassPort(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamEgressClassPort_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_VxlanHeaderBits56_63(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_VxlanHeaderBits56_63_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamInLifIdValid(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamInLifIdValid_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamUpMep(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamUpMep_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamSubtype(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamSubtype_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamHeaderOffset(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamHeaderOffset_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamStampOffset(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamStampOffset_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamMeterDisable(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamMeterDisable_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_DestVirtualPortValid(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_DestVirtualPortValid_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigDstMulticast(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigDstMulticast_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigTrafficClass(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigTrafficClass_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigLoadBalanceID(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigLoadBalanceID_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigIntCongestionNotification(int unit, bcm_field_entry_t entry, uint8 data,
                                                     uint8 mask);
int bcm_field_qualify_HiGigIntCongestionNotification_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                         uint8 *mask);
int bcm_field_qualify_HiGigIngressTagged(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigIngressTagged_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigDstTrunk(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigDstTrunk_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigIngressL3SwitchPkt(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigIngressL3SwitchPkt_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                  uint8 *mask);
int bcm_field_qualify_HiGigPortFilteringMode(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigPortFilteringMode_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigSrcTrunk(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigSrcTrunk_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigEgressMcast(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigEgressMcast_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigProtectionSwitchingStatus(int unit, bcm_field_entry_t entry, uint8 data,
                                                     uint8 mask);
int bcm_field_qualify_HiGigProtectionSwitchingStatus_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                         uint8 *mask);
int bcm_field_qualify_HiGigMirrorToVp(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigMirrorToVp_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigDstType(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigDstType_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigSrcType(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigSrcType_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigOffloadEnginePktPriNew(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigOffloadEnginePktPriNew_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                      uint8 *mask);
int bcm_field_qualify_HiGigOffloadEngineDscpNew(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigOffloadEngineDscpNew_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                    uint8 *mask);
int bcm_field_qualify_PktIsVisible(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_PktIsVisible_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_LoopBackCpuMasqueradePktProfile(int unit, bcm_field_entry_t entry, uint8 data,
                                                      uint8 mask);
int bcm_field_qualify_LoopBackCpuMasqueradePktProfile_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                          uint8 *mask);
int bcm_field_qualify_LoopBackTrafficClass(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_LoopBackTrafficClass_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_DownMepSatTerminated(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_DownMepSatTerminated_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigMirrorOrSwitchPkt(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigMirrorOrSwitchPkt_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigMplsPkt(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigMplsPkt_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigLabelType(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigLabelType_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigDoNotFlags(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigDoNotFlags_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigPreserveFlags(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigPreserveFlags_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigVpPreserveFlags(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigVpPreserveFlags_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_HiGigOffloadEngineDeferredFlags(int unit, bcm_field_entry_t entry, uint8 data,
                                                      uint8 mask);
int bcm_field_qualify_HiGigOffloadEngineDeferredFlags_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                          uint8 *mask);
int bcm_field_qualify_HiGigOffloadEngineVxltStatus(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigOffloadEngineVxltStatus_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                       uint8 *mask);
int bcm_field_qualify_HiGigOffloadEngineSrcType(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigOffloadEngineSrcType_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                    uint8 *mask);
int bcm_field_qualify_HiGigOffloadEnginePreserveDscp(int unit, bcm_field_entry_t entry, uint8 data,
                                                     uint8 mask);
int bcm_field_qualify_HiGigOffloadEnginePreserveDscp_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                         uint8 *mask);
int bcm_field_qualify_HiGigOffloadEnginePreserveDot1p(int unit, bcm_field_entry_t entry, uint8 data,
                                                      uint8 mask);
int bcm_field_qualify_HiGigOffloadEnginePreserveDot1p_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                          uint8 *mask);
int bcm_field_qualify_HiGigExtendedHeaderPresent(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigExtendedHeaderPresent_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                     uint8 *mask);
int bcm_field_qualify_HiGigVpLagFailoverPacket(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_HiGigVpLagFailoverPacket_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                   uint8 *mask);
int bcm_field_qualify_TosLower4Bits(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_TosLower4Bits_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamEgressClass2Vxlt(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamEgressClass2Vxlt_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamEgressVxltFirstHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamEgressVxltFirstHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamEgressVxltSecondHit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamEgressVxltSecondHit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_OamDownMEPLoopbackPacket(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamDownMEPLoopbackPacket_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                   uint8 *mask);
int bcm_field_qualify_OamEgressPortUnicastDstMacHit(int unit, bcm_field_entry_t entry, uint8 data,
                                                    uint8 mask);
int bcm_field_qualify_OamEgressPortUnicastDstMacHit_get(int unit, bcm_field_entry_t entry, uint8 *data,
                                                        uint8 *mask);
int bcm_field_qualify_OamEgressClassSrcMac(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_OamEgressClassSrcMac_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);
int bcm_field_qualify_MyStation2Hit(int unit, bcm_field_entry_t entry, uint8 data, uint8 mask);
int bcm_field_qualify_MyStation2Hit_get(int unit, bcm_field_entry_t entry, uint8 *data, uint8 *mask);

/* 16 bits. */
int bcm_field_qualify_EtherType(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_EtherType_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_L4Ports(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_L4Ports_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_IcmpTypeCode(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_IcmpTypeCode_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_IgmpTypeMaxRespTime(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_IgmpTypeMaxRespTime_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_InVPort(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_InVPort_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_OutVPort(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_OutVPort_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_LlidValue(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_LlidValue_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_Rtag7AHashUpper(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_Rtag7AHashUpper_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_Rtag7AHashLower(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_Rtag7AHashLower_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_Rtag7BHashUpper(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_Rtag7BHashUpper_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_Rtag7BHashLower(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_Rtag7BHashLower_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_CpuQueue(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_CpuQueue_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_Ptch(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_Ptch_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_TrillEgressRbridge(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_TrillEgressRbridge_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_TrunkHashResult(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_TrunkHashResult_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_StackingRoute(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_StackingRoute_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_PacketSize(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_PacketSize_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_InnerEtherType(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_InnerEtherType_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_NatDstRealmId(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_NatDstRealmId_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_NatSrcRealmId(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_NatSrcRealmId_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_TrillIngressRbridge(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_TrillIngressRbridge_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_L2GreProtocolType(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_L2GreProtocolType_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_OuterVlanActionRange(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_OuterVlanActionRange_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_InnerVlanActionRange(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_InnerVlanActionRange_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_OamTsSystemHeader(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_OamTsSystemHeader_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_FcoeOxID(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_FcoeOxID_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_FcoeRxID(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_FcoeRxID_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_HiGigReplicationId(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_HiGigReplicationId_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_HiGigIngressClassificationTag(int unit, bcm_field_entry_t entry, uint16 data,
                                                    uint16 mask);
int bcm_field_qualify_HiGigIngressClassificationTag_get(int unit, bcm_field_entry_t entry, uint16 *data,
                                                        uint16 *mask);
int bcm_field_qualify_HiGigMulticastIndex(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_HiGigMulticastIndex_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_HiGigVpReplicationId(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_HiGigVpReplicationId_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);
int bcm_field_qualify_HiGigOffloadEngineClassificationTag(int unit, bcm_field_entry_t entry, uint16 data,
                                                          uint16 mask);
int bcm_field_qualify_HiGigOffloadEngineClassificationTag_get(int unit, bcm_field_entry_t entry, uint16 *data,
                                                              uint16 *mask);
int bcm_field_qualify_LoopBackQueue(int unit, bcm_field_entry_t entry, uint16 data, uint16 mask);
int bcm_field_qualify_LoopBackQueue_get(int unit, bcm_field_entry_t entry, uint16 *data, uint16 *mask);

/* 32 bits. */
int bcm_field_qualify_IpInfo(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_IpInfo_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_PacketRes(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_PacketRes_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_InnerIp6FlowLabel(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_InnerIp6FlowLabel_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_Ip6FlowLabel(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_Ip6FlowLabel_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_InterfaceClassPort(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_InterfaceClassPort_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_InterfaceClassL2(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_InterfaceClassL2_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_InterfaceClassL3(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_InterfaceClassL3_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_SrcClassL2(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_SrcClassL2_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_SrcClassL3(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_SrcClassL3_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_SrcClassField(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_SrcClassField_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_DstClassL2(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_DstClassL2_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_DstClassL3(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_DstClassL3_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_DstClassField(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_DstClassField_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_Vrf(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_Vrf_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_DstL3EgressNextHops(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_DstL3EgressNextHops_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_VnTag(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_VnTag_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_SubportPktTag(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_SubportPktTag_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_CnTag(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_CnTag_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_FabricQueueTag(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_FabricQueueTag_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_FlowId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_FlowId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_InVPort32(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_InVPort32_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_OutVPort32(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_OutVPort32_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsForwardingLabel(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsForwardingLabel_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsForwardingLabelId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsForwardingLabelId_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                uint32 *mask);
int bcm_field_qualify_MplsControlWord(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsControlWord_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsForwardingLabelAction32(int unit, bcm_field_entry_t entry, uint32 data,
                                                  uint32 mask);
int bcm_field_qualify_MplsForwardingLabelAction32_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                      uint32 *mask);
int bcm_field_qualify_EgressClass(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EgressClass_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_EgressClassL3Interface(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EgressClassL3Interface_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                 uint32 *mask);
int bcm_field_qualify_EgressClassTrill(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EgressClassTrill_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_EgressClassWlan(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EgressClassWlan_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_EgressClassL2Gre(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EgressClassL2Gre_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_RxTrapCode32(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_RxTrapCode32_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_RxTrapData(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_RxTrapData_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_BypassFilter32(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_BypassFilter32_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_ISid(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_ISid_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_InterfaceClassProcessingPort(int unit, bcm_field_entry_t entry, uint32 data,
                                                   uint32 mask);
int bcm_field_qualify_InterfaceClassProcessingPort_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                       uint32 *mask);
int bcm_field_qualify_InterfaceClassVPort(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_InterfaceClassVPort_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_LearnInVPort(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_LearnInVPort_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsLabel1(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsLabel1_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsLabel1Id(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsLabel1Id_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsLabel2(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsLabel2_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsLabel2Id(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsLabel2Id_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsLabel3(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsLabel3_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsLabel3Id(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsLabel3Id_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_IngressClassField(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_IngressClassField_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_IngressInterfaceClassPort(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_IngressInterfaceClassPort_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                    uint32 *mask);
int bcm_field_qualify_VxlanNetworkId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_VxlanNetworkId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_TunnelId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_TunnelId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_ArpSenderIp4(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_ArpSenderIp4_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_ArpTargetIp4(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_ArpTargetIp4_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_FibreChanFCtl(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_FibreChanFCtl_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_FibreChanSrcId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_FibreChanSrcId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_FibreChanDstId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_FibreChanDstId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_PacketLength(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_PacketLength_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_GroupClass(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_GroupClass_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_UdfClass(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_UdfClass_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_InterfaceLookupClassPort(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_InterfaceLookupClassPort_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                   uint32 *mask);
int bcm_field_qualify_InterfaceIngressKeySelectClassPort(int unit, bcm_field_entry_t entry, uint32 data,
                                                         uint32 mask);
int bcm_field_qualify_InterfaceIngressKeySelectClassPort_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                             uint32 *mask);
int bcm_field_qualify_BfdYourDiscriminator(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_BfdYourDiscriminator_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_ECid(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_ECid_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_IngressECid(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_IngressECid_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_IncomingIpIfClass(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_IncomingIpIfClass_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_L2GreVsid(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_L2GreVsid_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_L2GreFlowId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_L2GreFlowId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_EthernetOamDstClassL2(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EthernetOamDstClassL2_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                uint32 *mask);
int bcm_field_qualify_EthernetOamClassVpn(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EthernetOamClassVpn_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_MplsOamClassMplsSwitchLabel(int unit, bcm_field_entry_t entry, uint32 data,
                                                  uint32 mask);
int bcm_field_qualify_MplsOamClassMplsSwitchLabel_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                      uint32 *mask);
int bcm_field_qualify_ClassId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_ClassId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_IngressInterfaceClassVPort(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_IngressInterfaceClassVPort_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                     uint32 *mask);
int bcm_field_qualify_VxlanHeaderBits8_31(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_VxlanHeaderBits8_31_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_OamInLifId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_OamInLifId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_OamMepId(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_OamMepId_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_EthernetOamHeaderBits0_31(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EthernetOamHeaderBits0_31_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                    uint32 *mask);
int bcm_field_qualify_EthernetOamHeaderBits32_63(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EthernetOamHeaderBits32_63_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                     uint32 *mask);
int bcm_field_qualify_MplsOamHeaderBits0_31(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsOamHeaderBits0_31_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                uint32 *mask);
int bcm_field_qualify_MplsOamHeaderBits32_63(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsOamHeaderBits32_63_get(int unit, bcm_field_entry_t entry, uint32 *data,
                                                 uint32 *mask);
int bcm_field_qualify_MplsOamACH(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_MplsOamACH_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_OamHeaderBits0_31(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_OamHeaderBits0_31_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_OamHeaderBits32_63(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_OamHeaderBits32_63_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_InVPortWide(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_InVPortWide_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_HiGigLabel(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_HiGigLabel_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_HiGigVni(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_HiGigVni_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);
int bcm_field_qualify_EgressClassVxlan(int unit, bcm_field_entry_t entry, uint32 data, uint32 mask);
int bcm_field_qualify_EgressClassVxlan_get(int unit, bcm_field_entry_t entry, uint32 *data, uint32 *mask);

/* 64 bits. */
int bcm_field_qualify_VlanTranslationValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_VlanTranslationValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_TunnelTerminatedValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_TunnelTerminatedValue_get(int unit, bcm_field_entry_t entry, uint64 *data,
                                                uint64 *mask);
int bcm_field_qualify_MplsTerminatedValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_MplsTerminatedValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_IpTunnelValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_IpTunnelValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_L2SrcValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_L2SrcValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_L2DestValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_L2DestValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_L3SrcRouteValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_L3SrcRouteValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_L3DestRouteValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_L3DestRouteValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_IpmcValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_IpmcValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_CascadedKeyValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_CascadedKeyValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_IsEqualValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_IsEqualValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_ExternalValue0(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_ExternalValue0_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_ExternalValue1(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_ExternalValue1_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_ExternalValue2(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_ExternalValue2_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_ExternalValue3(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_ExternalValue3_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_ITag(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_ITag_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_ETag(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_ETag_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_IpmcStarGroupValue(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_IpmcStarGroupValue_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_TrillPayload(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_TrillPayload_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);
int bcm_field_qualify_MplsForwardingLabelPayload(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_MplsForwardingLabelPayload_get(int unit, bcm_field_entry_t entry, uint64 *data,
                                                     uint64 *mask);
int bcm_field_qualify_Fhei(int unit, bcm_field_entry_t entry, uint64 data, uint64 mask);
int bcm_field_qualify_Fhei_get(int unit, bcm_field_entry_t entry, uint64 *data, uint64 *mask);

/* Classes that ranges of a field were compressed to. */
int bcm_field_qualify_IpProtocolClass(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_IpProtocolClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                          bcm_class_t *mask);
int bcm_field_qualify_EtherTypeClass(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_EtherTypeClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                         bcm_class_t *mask);
int bcm_field_qualify_L4SrcPortClass(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_L4SrcPortClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                         bcm_class_t *mask);
int bcm_field_qualify_L4DstPortClass(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_L4DstPortClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                         bcm_class_t *mask);
int bcm_field_qualify_SrcIpClass(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_SrcIpClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data, bcm_class_t *mask);
int bcm_field_qualify_SrcIpClassMsbNibble(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                          bcm_class_t mask);
int bcm_field_qualify_SrcIpClassMsbNibble_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                              bcm_class_t *mask);
int bcm_field_qualify_SrcIpClassLower(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_SrcIpClassLower_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                          bcm_class_t *mask);
int bcm_field_qualify_SrcIpClassUpper(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_SrcIpClassUpper_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                          bcm_class_t *mask);
int bcm_field_qualify_SrcIp6Class(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_SrcIp6Class_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                      bcm_class_t *mask);
int bcm_field_qualify_SrcIp6ClassMsbNibble(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                           bcm_class_t mask);
int bcm_field_qualify_SrcIp6ClassMsbNibble_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                               bcm_class_t *mask);
int bcm_field_qualify_SrcIp6ClassLower(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_SrcIp6ClassLower_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                           bcm_class_t *mask);
int bcm_field_qualify_SrcIp6ClassUpper(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_SrcIp6ClassUpper_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                           bcm_class_t *mask);
int bcm_field_qualify_FcoeOxIDClass(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_FcoeOxIDClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                        bcm_class_t *mask);
int bcm_field_qualify_DstIpClass(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_DstIpClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data, bcm_class_t *mask);
int bcm_field_qualify_DstIpClassMsbNibble(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                          bcm_class_t mask);
int bcm_field_qualify_DstIpClassMsbNibble_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                              bcm_class_t *mask);
int bcm_field_qualify_DstIpClassLower(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_DstIpClassLower_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                          bcm_class_t *mask);
int bcm_field_qualify_DstIpClassUpper(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_DstIpClassUpper_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                          bcm_class_t *mask);
int bcm_field_qualify_DstIp6Class(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_DstIp6Class_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                      bcm_class_t *mask);
int bcm_field_qualify_DstIp6ClassMsbNibble(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                           bcm_class_t mask);
int bcm_field_qualify_DstIp6ClassMsbNibble_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                               bcm_class_t *mask);
int bcm_field_qualify_DstIp6ClassLower(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_DstIp6ClassLower_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                           bcm_class_t *mask);
int bcm_field_qualify_DstIp6ClassUpper(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_DstIp6ClassUpper_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                           bcm_class_t *mask);
int bcm_field_qualify_FcoeRxIDClass(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_FcoeRxIDClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                        bcm_class_t *mask);
int bcm_field_qualify_FibreChanSrcIdClass(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                          bcm_class_t mask);
int bcm_field_qualify_FibreChanSrcIdClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                              bcm_class_t *mask);
int bcm_field_qualify_FibreChanSrcIdClassMsbNibble(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                                   bcm_class_t mask);
int bcm_field_qualify_FibreChanSrcIdClassMsbNibble_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                                       bcm_class_t *mask);
int bcm_field_qualify_FibreChanSrcIdClassLower(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                               bcm_class_t mask);
int bcm_field_qualify_FibreChanSrcIdClassLower_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                                   bcm_class_t *mask);
int bcm_field_qualify_FibreChanSrcIdClassUpper(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                               bcm_class_t mask);
int bcm_field_qualify_FibreChanSrcIdClassUpper_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                                   bcm_class_t *mask);
int bcm_field_qualify_FibreChanDstIdClass(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                          bcm_class_t mask);
int bcm_field_qualify_FibreChanDstIdClass_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                              bcm_class_t *mask);
int bcm_field_qualify_FibreChanDstIdClassMsbNibble(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                                   bcm_class_t mask);
int bcm_field_qualify_FibreChanDstIdClassMsbNibble_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                                       bcm_class_t *mask);
int bcm_field_qualify_FibreChanDstIdClassLower(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                               bcm_class_t mask);
int bcm_field_qualify_FibreChanDstIdClassLower_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                                   bcm_class_t *mask);
int bcm_field_qualify_FibreChanDstIdClassUpper(int unit, bcm_field_entry_t entry, bcm_class_t data,
                                               bcm_class_t mask);
int bcm_field_qualify_FibreChanDstIdClassUpper_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                                   bcm_class_t *mask);
int bcm_field_qualify_TcpClassZero(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_TcpClassZero_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                       bcm_class_t *mask);
int bcm_field_qualify_TosClassZero(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_TosClassZero_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                       bcm_class_t *mask);
int bcm_field_qualify_TtlClassZero(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_TtlClassZero_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                       bcm_class_t *mask);
int bcm_field_qualify_TcpClassOne(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_TcpClassOne_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                      bcm_class_t *mask);
int bcm_field_qualify_TosClassOne(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_TosClassOne_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                      bcm_class_t *mask);
int bcm_field_qualify_TtlClassOne(int unit, bcm_field_entry_t entry, bcm_class_t data, bcm_class_t mask);
int bcm_field_qualify_TtlClassOne_get(int unit, bcm_field_entry_t entry, bcm_class_t *data,
                                      bcm_class_t *mask);

/* VLAN ids; those without Id in their name are whole tags, priority and CFI above the id. */
int bcm_field_qualify_OuterVlan(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_OuterVlan_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data, bcm_vlan_t *mask);
int bcm_field_qualify_OuterVlanId(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_OuterVlanId_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data, bcm_vlan_t *mask);
int bcm_field_qualify_InnerVlan(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_InnerVlan_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data, bcm_vlan_t *mask);
int bcm_field_qualify_InnerVlanId(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_InnerVlanId_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data, bcm_vlan_t *mask);
int bcm_field_qualify_ForwardingVlanId(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_ForwardingVlanId_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data,
                                           bcm_vlan_t *mask);
int bcm_field_qualify_ForwardHdrVlanId(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_ForwardHdrVlanId_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data,
                                           bcm_vlan_t *mask);
int bcm_field_qualify_LearnVlan(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_LearnVlan_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data, bcm_vlan_t *mask);
int bcm_field_qualify_TranslatedOuterVlan(int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                                          bcm_vlan_t mask);
int bcm_field_qualify_TranslatedOuterVlan_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data,
                                              bcm_vlan_t *mask);
int bcm_field_qualify_TranslatedOuterVlanId(int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                                            bcm_vlan_t mask);
int bcm_field_qualify_TranslatedOuterVlanId_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data,
                                                bcm_vlan_t *mask);
int bcm_field_qualify_TranslatedInnerVlan(int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                                          bcm_vlan_t mask);
int bcm_field_qualify_TranslatedInnerVlan_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data,
                                              bcm_vlan_t *mask);
int bcm_field_qualify_TranslatedInnerVlanId(int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                                            bcm_vlan_t mask);
int bcm_field_qualify_TranslatedInnerVlanId_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data,
                                                bcm_vlan_t *mask);
int bcm_field_qualify_FibreChanVFTFabricId(int unit, bcm_field_entry_t entry, bcm_vlan_t data,
                                           bcm_vlan_t mask);
int bcm_field_qualify_FibreChanVFTFabricId_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data,
                                               bcm_vlan_t *mask);
int bcm_field_qualify_FibreChanVFTVsanId(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_FibreChanVFTVsanId_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data,
                                             bcm_vlan_t *mask);
int bcm_field_qualify_HiGigVlan(int unit, bcm_field_entry_t entry, bcm_vlan_t data, bcm_vlan_t mask);
int bcm_field_qualify_HiGigVlan_get(int unit, bcm_field_entry_t entry, bcm_vlan_t *data, bcm_vlan_t *mask);
int bcm_field_qualify_Vpn(int unit, bcm_field_entry_t entry, bcm_vpn_t data, bcm_vpn_t mask);
int bcm_field_qualify_Vpn_get(int unit, bcm_field_entry_t entry, bcm_vpn_t *data, bcm_vpn_t *mask);

/* MAC addresses. */
int bcm_field_qualify_SrcMac(int unit, bcm_field_entry_t entry, bcm_mac_t data, bcm_mac_t mask);
int bcm_field_qualify_SrcMac_get(int unit, bcm_field_entry_t entry, bcm_mac_t *data, bcm_mac_t *mask);
int bcm_field_qualify_DstMac(int unit, bcm_field_entry_t entry, bcm_mac_t data, bcm_mac_t mask);
int bcm_field_qualify_DstMac_get(int unit, bcm_field_entry_t entry, bcm_mac_t *data, bcm_mac_t *mask);
int bcm_field_qualify_ForwardHdrSrcMac(int unit, bcm_field_entry_t entry, bcm_mac_t data, bcm_mac_t mask);
int bcm_field_qualify_ForwardHdrSrcMac_get(int unit, bcm_field_entry_t entry, bcm_mac_t *data,
                                           bcm_mac_t *mask);
int bcm_field_qualify_ForwardHdrDstMac(int unit, bcm_field_entry_t entry, bcm_mac_t data, bcm_mac_t mask);
int bcm_field_qualify_ForwardHdrDstMac_get(int unit, bcm_field_entry_t entry, bcm_mac_t *data,
                                           bcm_mac_t *mask);
int bcm_field_qualify_LearnSrcMac(int unit, bcm_field_entry_t entry, bcm_mac_t data, bcm_mac_t mask);
int bcm_field_qualify_LearnSrcMac_get(int unit, bcm_field_entry_t entry, bcm_mac_t *data, bcm_mac_t *mask);
int bcm_field_qualify_InnerSrcMac(int unit, bcm_field_entry_t entry, bcm_mac_t data, bcm_mac_t mask);
int bcm_field_qualify_InnerSrcMac_get(int unit, bcm_field_entry_t entry, bcm_mac_t *data, bcm_mac_t *mask);
int bcm_field_qualify_InnerDstMac(int unit, bcm_field_entry_t entry, bcm_mac_t data, bcm_mac_t mask);
int bcm_field_qualify_InnerDstMac_get(int unit, bcm_field_entry_t entry, bcm_mac_t *data, bcm_mac_t *mask);

/* IPv4 addresses. */
int bcm_field_qualify_SrcIp(int unit, bcm_field_entry_t entry, bcm_ip_t data, bcm_ip_t mask);
int bcm_field_qualify_SrcIp_get(int unit, bcm_field_entry_t entry, bcm_ip_t *data, bcm_ip_t *mask);
int bcm_field_qualify_DstIp(int unit, bcm_field_entry_t entry, bcm_ip_t data, bcm_ip_t mask);
int bcm_field_qualify_DstIp_get(int unit, bcm_field_entry_t entry, bcm_ip_t *data, bcm_ip_t *mask);
int bcm_field_qualify_InnerSrcIp(int unit, bcm_field_entry_t entry, bcm_ip_t data, bcm_ip_t mask);
int bcm_field_qualify_InnerSrcIp_get(int unit, bcm_field_entry_t entry, bcm_ip_t *data, bcm_ip_t *mask);
int bcm_field_qualify_InnerDstIp(int unit, bcm_field_entry_t entry, bcm_ip_t data, bcm_ip_t mask);
int bcm_field_qualify_InnerDstIp_get(int unit, bcm_field_entry_t entry, bcm_ip_t *data, bcm_ip_t *mask);

/* IPv6 addresses; of High and Low names only the upper or lower 64 bits count. */
int bcm_field_qualify_SrcIp6(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_SrcIp6_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data, bcm_ip6_t *mask);
int bcm_field_qualify_DstIp6(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_DstIp6_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data, bcm_ip6_t *mask);
int bcm_field_qualify_SrcIp6High(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_SrcIp6High_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data, bcm_ip6_t *mask);
int bcm_field_qualify_DstIp6High(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_DstIp6High_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data, bcm_ip6_t *mask);
int bcm_field_qualify_DstIp6Low(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_DstIp6Low_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data, bcm_ip6_t *mask);
int bcm_field_qualify_SrcIp6Low(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_SrcIp6Low_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data, bcm_ip6_t *mask);
int bcm_field_qualify_InnerSrcIp6(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_InnerSrcIp6_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data, bcm_ip6_t *mask);
int bcm_field_qualify_InnerDstIp6(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_InnerDstIp6_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data, bcm_ip6_t *mask);
int bcm_field_qualify_InnerSrcIp6High(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_InnerSrcIp6High_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data,
                                          bcm_ip6_t *mask);
int bcm_field_qualify_InnerDstIp6High(int unit, bcm_field_entry_t entry, bcm_ip6_t data, bcm_ip6_t mask);
int bcm_field_qualify_InnerDstIp6High_get(int unit, bcm_field_entry_t entry, bcm_ip6_t *data,
                                          bcm_ip6_t *mask);

/* TCP and UDP ports. */
int bcm_field_qualify_InnerL4SrcPort(int unit, bcm_field_entry_t entry, bcm_l4_port_t data,
                                     bcm_l4_port_t mask);
int bcm_field_qualify_InnerL4SrcPort_get(int unit, bcm_field_entry_t entry, bcm_l4_port_t *data,
                                         bcm_l4_port_t *mask);
int bcm_field_qualify_InnerL4DstPort(int unit, bcm_field_entry_t entry, bcm_l4_port_t data,
                                     bcm_l4_port_t mask);
int bcm_field_qualify_InnerL4DstPort_get(int unit, bcm_field_entry_t entry, bcm_l4_port_t *data,
                                         bcm_l4_port_t *mask);
int bcm_field_qualify_L4SrcPort(int unit, bcm_field_entry_t entry, bcm_l4_port_t data, bcm_l4_port_t mask);
int bcm_field_qualify_L4SrcPort_get(int unit, bcm_field_entry_t entry, bcm_l4_port_t *data,
                                    bcm_l4_port_t *mask);
int bcm_field_qualify_L4DstPort(int unit, bcm_field_entry_t entry, bcm_l4_port_t data, bcm_l4_port_t mask);
int bcm_field_qualify_L4DstPort_get(int unit, bcm_field_entry_t entry, bcm_l4_port_t *data,
                                    bcm_l4_port_t *mask);

/* Sets of ports: those of data that are in mask, too, count as a match. */
int bcm_field_qualify_InPorts(int unit, bcm_field_entry_t entry, bcm_pbmp_t data, bcm_pbmp_t mask);
int bcm_field_qualify_InPorts_get(int unit, bcm_field_entry_t entry, bcm_pbmp_t *data, bcm_pbmp_t *mask);
int bcm_field_qualify_OutPorts(int unit, bcm_field_entry_t entry, bcm_pbmp_t data, bcm_pbmp_t mask);
int bcm_field_qualify_OutPorts_get(int unit, bcm_field_entry_t entry, bcm_pbmp_t *data, bcm_pbmp_t *mask);
int bcm_field_qualify_InterfaceInPorts(int unit, bcm_field_entry_t entry, bcm_pbmp_t data, bcm_pbmp_t mask);
int bcm_field_qualify_InterfaceInPorts_get(int unit, bcm_field_entry_t entry, bcm_pbmp_t *data,
                                           bcm_pbmp_t *mask);
int bcm_field_qualify_SystemPortBitmap(int unit, bcm_field_entry_t entry, bcm_pbmp_t data, bcm_pbmp_t mask);
int bcm_field_qualify_SystemPortBitmap_get(int unit, bcm_field_entry_t entry, bcm_pbmp_t *data,
                                           bcm_pbmp_t *mask);
int bcm_field_qualify_SourceGportBitmap(int unit, bcm_field_entry_t entry, bcm_pbmp_t data, bcm_pbmp_t mask);
int bcm_field_qualify_SourceGportBitmap_get(int unit, bcm_field_entry_t entry, bcm_pbmp_t *data,
                                            bcm_pbmp_t *mask);
int bcm_field_qualify_DevicePortBitmap(int unit, bcm_field_entry_t entry, bcm_pbmp_t data, bcm_pbmp_t mask);
int bcm_field_qualify_DevicePortBitmap_get(int unit, bcm_field_entry_t entry, bcm_pbmp_t *data,
                                           bcm_pbmp_t *mask);

/* A port of the unit, a port of any unit, the unit of a member of a trunk. */
int bcm_field_qualify_InPort(int unit, bcm_field_entry_t entry, bcm_port_t data, bcm_port_t mask);
int bcm_field_qualify_InPort_get(int unit, bcm_field_entry_t entry, bcm_port_t *data, bcm_port_t *mask);
int bcm_field_qualify_OutPort(int unit, bcm_field_entry_t entry, bcm_port_t data, bcm_port_t mask);
int bcm_field_qualify_OutPort_get(int unit, bcm_field_entry_t entry, bcm_port_t *data, bcm_port_t *mask);
int bcm_field_qualify_SrcPort(int unit, bcm_field_entry_t entry, bcm_module_t data_modid,
                              bcm_module_t mask_modid, bcm_port_t data_port, bcm_port_t mask_port);
int bcm_field_qualify_SrcPort_get(int unit, bcm_field_entry_t entry, bcm_module_t *data_modid,
                                  bcm_module_t *mask_modid, bcm_port_t *data_port, bcm_port_t *mask_port);
int bcm_field_qualify_DstPort(int unit, bcm_field_entry_t entry, bcm_module_t data_modid,
                              bcm_module_t mask_modid, bcm_port_t data_port, bcm_port_t mask_port);
int bcm_field_qualify_DstPort_get(int unit, bcm_field_entry_t entry, bcm_module_t *data_modid,
                                  bcm_module_t *mask_modid, bcm_port_t *data_port, bcm_port_t *mask_port);
int bcm_field_qualify_TrunkMemberSourceModuleId(int unit, bcm_field_entry_t entry, int data, int mask);
int bcm_field_qualify_TrunkMemberSourceModuleId_get(int unit, bcm_field_entry_t entry, int *data, int *mask);

/* Trunks, multicast groups, egress objects. */
int bcm_field_qualify_SrcTrunk(int unit, bcm_field_entry_t entry, bcm_trunk_t data, bcm_trunk_t mask);
int bcm_field_qualify_SrcTrunk_get(int unit, bcm_field_entry_t entry, bcm_trunk_t *data, bcm_trunk_t *mask);
int bcm_field_qualify_DstTrunk(int unit, bcm_field_entry_t entry, bcm_trunk_t data, bcm_trunk_t mask);
int bcm_field_qualify_DstTrunk_get(int unit, bcm_field_entry_t entry, bcm_trunk_t *data, bcm_trunk_t *mask);
int bcm_field_qualify_HiGigDstTrunkId(int unit, bcm_field_entry_t entry, bcm_trunk_t data, bcm_trunk_t mask);
int bcm_field_qualify_HiGigDstTrunkId_get(int unit, bcm_field_entry_t entry, bcm_trunk_t *data,
                                          bcm_trunk_t *mask);
int bcm_field_qualify_DstL2MulticastGroup(int unit, bcm_field_entry_t entry, bcm_multicast_t group,
                                          bcm_multicast_t mask);
int bcm_field_qualify_DstL2MulticastGroup_get(int unit, bcm_field_entry_t entry, bcm_multicast_t *group,
                                              bcm_multicast_t *mask);
int bcm_field_qualify_DstL3MulticastGroup(int unit, bcm_field_entry_t entry, bcm_multicast_t group,
                                          bcm_multicast_t mask);
int bcm_field_qualify_DstL3MulticastGroup_get(int unit, bcm_field_entry_t entry, bcm_multicast_t *group,
                                              bcm_multicast_t *mask);
int bcm_field_qualify_DstMulticastGroups(int unit, bcm_field_entry_t entry, bcm_multicast_t group,
                                         bcm_multicast_t mask);
int bcm_field_qualify_DstMulticastGroups_get(int unit, bcm_field_entry_t entry, bcm_multicast_t *group,
                                             bcm_multicast_t *mask);
int bcm_field_qualify_HiGigDstMulticastGroupId(int unit, bcm_field_entry_t entry, bcm_multicast_t group,
                                               bcm_multicast_t mask);
int bcm_field_qualify_HiGigDstMulticastGroupId_get(int unit, bcm_field_entry_t entry, bcm_multicast_t *group,
                                                   bcm_multicast_t *mask);
int bcm_field_qualify_DstMultipathOverlay(int unit, bcm_field_entry_t entry, bcm_if_t data, bcm_if_t mask);
int bcm_field_qualify_DstMultipathOverlay_get(int unit, bcm_field_entry_t entry, bcm_if_t *data,
                                              bcm_if_t *mask);
int bcm_field_qualify_DstMultipathUnderlay(int unit, bcm_field_entry_t entry, bcm_if_t data, bcm_if_t mask);
int bcm_field_qualify_DstMultipathUnderlay_get(int unit, bcm_field_entry_t entry, bcm_if_t *data,
                                               bcm_if_t *mask);

/* One gport. */
int bcm_field_qualify_SrcTrunkMemberGport(int unit, bcm_field_entry_t entry, bcm_gport_t data);
int bcm_field_qualify_SrcTrunkMemberGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *data);
int bcm_field_qualify_SrcMplsGport(int unit, bcm_field_entry_t entry, bcm_gport_t mpls_port_id);
int bcm_field_qualify_SrcMplsGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *mpls_port_id);
int bcm_field_qualify_DstMplsGport(int unit, bcm_field_entry_t entry, bcm_gport_t mpls_port_id);
int bcm_field_qualify_DstMplsGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *mpls_port_id);
int bcm_field_qualify_SrcMimGport(int unit, bcm_field_entry_t entry, bcm_gport_t mim_port_id);
int bcm_field_qualify_SrcMimGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *mim_port_id);
int bcm_field_qualify_DstMimGport(int unit, bcm_field_entry_t entry, bcm_gport_t mim_port_id);
int bcm_field_qualify_DstMimGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *mim_port_id);
int bcm_field_qualify_SrcWlanGport(int unit, bcm_field_entry_t entry, bcm_gport_t wlan_port_id);
int bcm_field_qualify_SrcWlanGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *wlan_port_id);
int bcm_field_qualify_DstWlanGport(int unit, bcm_field_entry_t entry, bcm_gport_t wlan_port_id);
int bcm_field_qualify_DstWlanGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *wlan_port_id);
int bcm_field_qualify_SrcVxlanGport(int unit, bcm_field_entry_t entry, bcm_gport_t vxlan_port_id);
int bcm_field_qualify_SrcVxlanGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *vxlan_port_id);
int bcm_field_qualify_DstVxlanGport(int unit, bcm_field_entry_t entry, bcm_gport_t vxlan_port_id);
int bcm_field_qualify_DstVxlanGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *vxlan_port_id);
int bcm_field_qualify_SrcModPortGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id);
int bcm_field_qualify_SrcModPortGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id);
int bcm_field_qualify_SrcModuleGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id);
int bcm_field_qualify_SrcModuleGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id);
int bcm_field_qualify_SrcGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id);
int bcm_field_qualify_SrcGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id);
int bcm_field_qualify_DstRpfGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id);
int bcm_field_qualify_DstRpfGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id);
int bcm_field_qualify_LearnSrcPort(int unit, bcm_field_entry_t entry, bcm_gport_t data);
int bcm_field_qualify_LearnSrcPort_get(int unit, bcm_field_entry_t entry, bcm_gport_t *data);
int bcm_field_qualify_DstSysPortExt(int unit, bcm_field_entry_t entry, bcm_gport_t data);
int bcm_field_qualify_DstSysPortExt_get(int unit, bcm_field_entry_t entry, bcm_gport_t *data);
int bcm_field_qualify_SrcNivGport(int unit, bcm_field_entry_t entry, bcm_gport_t niv_port_id);
int bcm_field_qualify_SrcNivGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *niv_port_id);
int bcm_field_qualify_DstNivGport(int unit, bcm_field_entry_t entry, bcm_gport_t niv_port_id);
int bcm_field_qualify_DstNivGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *niv_port_id);
int bcm_field_qualify_DstGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id);
int bcm_field_qualify_DstGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id);
int bcm_field_qualify_SrcVlanGport(int unit, bcm_field_entry_t entry, bcm_gport_t vlan_port_id);
int bcm_field_qualify_SrcVlanGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *vlan_port_id);
int bcm_field_qualify_DstVlanGport(int unit, bcm_field_entry_t entry, bcm_gport_t vlan_port_id);
int bcm_field_qualify_DstVlanGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *vlan_port_id);

/* Several gports: those that agree with port_id in the bits of port_mask. */
int bcm_field_qualify_SrcVlanGports(int unit, bcm_field_entry_t entry, bcm_gport_t vlan_port_id,
                                    bcm_gport_t vlan_port_mask);
int bcm_field_qualify_SrcVlanGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *vlan_port_id,
                                        bcm_gport_t *vlan_port_mask);
int bcm_field_qualify_DstVlanGports(int unit, bcm_field_entry_t entry, bcm_gport_t vlan_port_id,
                                    bcm_gport_t vlan_port_mask);
int bcm_field_qualify_DstVlanGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *vlan_port_id,
                                        bcm_gport_t *vlan_port_mask);
int bcm_field_qualify_SrcVxlanGports(int unit, bcm_field_entry_t entry, bcm_gport_t vxlan_port_id,
                                     bcm_gport_t vxlan_port_mask);
int bcm_field_qualify_SrcVxlanGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *vxlan_port_id,
                                         bcm_gport_t *vxlan_port_mask);
int bcm_field_qualify_DstVxlanGports(int unit, bcm_field_entry_t entry, bcm_gport_t vxlan_port_id,
                                     bcm_gport_t vxlan_port_mask);
int bcm_field_qualify_DstVxlanGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *vxlan_port_id,
                                         bcm_gport_t *vxlan_port_mask);
int bcm_field_qualify_SrcWlanGports(int unit, bcm_field_entry_t entry, bcm_gport_t wlan_port_id,
                                    bcm_gport_t wlan_port_mask);
int bcm_field_qualify_SrcWlanGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *wlan_port_id,
                                        bcm_gport_t *wlan_port_mask);
int bcm_field_qualify_DstWlanGports(int unit, bcm_field_entry_t entry, bcm_gport_t wlan_port_id,
                                    bcm_gport_t wlan_port_mask);
int bcm_field_qualify_DstWlanGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *wlan_port_id,
                                        bcm_gport_t *wlan_port_mask);
int bcm_field_qualify_SrcMplsGports(int unit, bcm_field_entry_t entry, bcm_gport_t mpls_port_id,
                                    bcm_gport_t mpls_port_mask);
int bcm_field_qualify_SrcMplsGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *mpls_port_id,
                                        bcm_gport_t *mpls_port_mask);
int bcm_field_qualify_DstMplsGports(int unit, bcm_field_entry_t entry, bcm_gport_t mpls_port_id,
                                    bcm_gport_t mpls_port_mask);
int bcm_field_qualify_DstMplsGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *mpls_port_id,
                                        bcm_gport_t *mpls_port_mask);
int bcm_field_qualify_SrcGports(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                bcm_gport_t port_mask);
int bcm_field_qualify_SrcGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                    bcm_gport_t *port_mask);
int bcm_field_qualify_DstGports(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                bcm_gport_t port_mask);
int bcm_field_qualify_DstGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                    bcm_gport_t *port_mask);
int bcm_field_qualify_SrcMimGports(int unit, bcm_field_entry_t entry, bcm_gport_t mim_port_id,
                                   bcm_gport_t mim_port_mask);
int bcm_field_qualify_SrcMimGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *mim_port_id,
                                       bcm_gport_t *mim_port_mask);
int bcm_field_qualify_DstMimGports(int unit, bcm_field_entry_t entry, bcm_gport_t mim_port_id,
                                   bcm_gport_t mim_port_mask);
int bcm_field_qualify_DstMimGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *mim_port_id,
                                       bcm_gport_t *mim_port_mask);
int bcm_field_qualify_SrcNivGports(int unit, bcm_field_entry_t entry, bcm_gport_t niv_port_id,
                                   bcm_gport_t niv_port_mask);
int bcm_field_qualify_SrcNivGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *niv_port_id,
                                       bcm_gport_t *niv_port_mask);
int bcm_field_qualify_DstNivGports(int unit, bcm_field_entry_t entry, bcm_gport_t niv_port_id,
                                   bcm_gport_t niv_port_mask);
int bcm_field_qualify_DstNivGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *niv_port_id,
                                       bcm_gport_t *niv_port_mask);
int bcm_field_qualify_SrcModPortGports(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                       bcm_gport_t port_mask);
int bcm_field_qualify_SrcModPortGports_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                           bcm_gport_t *port_mask);
int bcm_field_qualify_HiGigDstModuleGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                          bcm_gport_t port_mask);
int bcm_field_qualify_HiGigDstModuleGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                              bcm_gport_t *port_mask);
int bcm_field_qualify_HiGigDstPortGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                        bcm_gport_t port_mask);
int bcm_field_qualify_HiGigDstPortGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                            bcm_gport_t *port_mask);
int bcm_field_qualify_HiGigDstModPortGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                           bcm_gport_t port_mask);
int bcm_field_qualify_HiGigDstModPortGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                               bcm_gport_t *port_mask);
int bcm_field_qualify_HiGigSrcModuleGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                          bcm_gport_t port_mask);
int bcm_field_qualify_HiGigSrcModuleGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                              bcm_gport_t *port_mask);
int bcm_field_qualify_HiGigSrcPortGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                        bcm_gport_t port_mask);
int bcm_field_qualify_HiGigSrcPortGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                            bcm_gport_t *port_mask);
int bcm_field_qualify_HiGigSrcModPortGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                           bcm_gport_t port_mask);
int bcm_field_qualify_HiGigSrcModPortGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                               bcm_gport_t *port_mask);
int bcm_field_qualify_HiGigDstGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                    bcm_gport_t port_mask);
int bcm_field_qualify_HiGigDstGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                        bcm_gport_t *port_mask);
int bcm_field_qualify_HiGigSrcGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                    bcm_gport_t port_mask);
int bcm_field_qualify_HiGigSrcGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                        bcm_gport_t *port_mask);
int bcm_field_qualify_LoopBackSrcGport(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                       bcm_gport_t port_mask);
int bcm_field_qualify_LoopBackSrcGport_get(int unit, bcm_field_entry_t entry, bcm_gport_t *port_id,
                                           bcm_gport_t *port_mask);
int bcm_field_qualify_LoopBackPacketProcessingPort(int unit, bcm_field_entry_t entry, bcm_gport_t port_id,
                                                   bcm_gport_t port_mask);
int bcm_field_qualify_LoopBackPacketProcessingPort_get(int unit, bcm_field_entry_t entry,
                                                       bcm_gport_t *port_id, bcm_gport_t *port_mask);

/*
 * Ranges of bcm_field_range_create; with invert 1, what is outside. The getter gives at most max_count
 * ranges, an invert for each, and their number.
 */
int bcm_field_qualify_RangeCheck(int unit, bcm_field_entry_t entry, bcm_field_range_t range, int invert);
int bcm_field_qualify_RangeCheck_get(int unit, bcm_field_entry_t entry, int max_count,
                                     bcm_field_range_t *range, int *invert, int *count);
int bcm_field_qualify_L4PortRangeCheck(int unit, bcm_field_entry_t entry, bcm_field_range_t range,
                                       int invert);
int bcm_field_qualify_L4PortRangeCheck_get(int unit, bcm_field_entry_t entry, int max_count,
                                           bcm_field_range_t *range, int *invert, int *count);
int bcm_field_qualify_VPortRangeCheck(int unit, bcm_field_entry_t entry, bcm_field_range_t range, int invert);
int bcm_field_qualify_VPortRangeCheck_get(int unit, bcm_field_entry_t entry, int max_count,
                                          bcm_field_range_t *range, int *invert, int *count);
int bcm_field_qualify_PacketLengthRangeCheck(int unit, bcm_field_entry_t entry, bcm_field_range_t range,
                                             int invert);
int bcm_field_qualify_PacketLengthRangeCheck_get(int unit, bcm_field_entry_t entry, int max_count,
                                                 bcm_field_range_t *range, int *invert, int *count);

/* One of the values of an enumeration. */
int bcm_field_qualify_LoopbackType(int unit, bcm_field_entry_t entry, bcm_field_LoopbackType_t loopback_type);
int bcm_field_qualify_LoopbackType_get(int unit, bcm_field_entry_t entry,
                                       bcm_field_LoopbackType_t *loopback_type);
int bcm_field_qualify_TunnelType(int unit, bcm_field_entry_t entry, bcm_field_TunnelType_t tunnel_type);
int bcm_field_qualify_TunnelType_get(int unit, bcm_field_entry_t entry, bcm_field_TunnelType_t *tunnel_type);
int bcm_field_qualify_InnerIpType(int unit, bcm_field_entry_t entry, bcm_field_IpType_t type);
int bcm_field_qualify_InnerIpType_get(int unit, bcm_field_entry_t entry, bcm_field_IpType_t *type);
int bcm_field_qualify_ForwardingType(int unit, bcm_field_entry_t entry, bcm_field_ForwardingType_t type);
int bcm_field_qualify_ForwardingType_get(int unit, bcm_field_entry_t entry, bcm_field_ForwardingType_t *type);
int bcm_field_qualify_AppType(int unit, bcm_field_entry_t entry, bcm_field_AppType_t type);
int bcm_field_qualify_AppType_get(int unit, bcm_field_entry_t entry, bcm_field_AppType_t *type);
int bcm_field_qualify_IpType(int unit, bcm_field_entry_t entry, bcm_field_IpType_t type);
int bcm_field_qualify_IpType_get(int unit, bcm_field_entry_t entry, bcm_field_IpType_t *type);
int bcm_field_qualify_L2Format(int unit, bcm_field_entry_t entry, bcm_field_L2Format_t type);
int bcm_field_qualify_L2Format_get(int unit, bcm_field_entry_t entry, bcm_field_L2Format_t *type);
int bcm_field_qualify_Decap(int unit, bcm_field_entry_t entry, bcm_field_decap_t decap);
int bcm_field_qualify_IpProtocolCommon(int unit, bcm_field_entry_t entry,
                                       bcm_field_IpProtocolCommon_t protocol);
int bcm_field_qualify_IpProtocolCommon_get(int unit, bcm_field_entry_t entry,
                                           bcm_field_IpProtocolCommon_t *protocol);
int bcm_field_qualify_InnerIpProtocolCommon(int unit, bcm_field_entry_t entry,
                                            bcm_field_IpProtocolCommon_t protocol);
int bcm_field_qualify_InnerIpProtocolCommon_get(int unit, bcm_field_entry_t entry,
                                                bcm_field_IpProtocolCommon_t *protocol);
int bcm_field_qualify_IpFrag(int unit, bcm_field_entry_t entry, bcm_field_IpFrag_t frag_info);
int bcm_field_qualify_IpFrag_get(int unit, bcm_field_entry_t entry, bcm_field_IpFrag_t *frag_info);
int bcm_field_qualify_InnerIpFrag(int unit, bcm_field_entry_t entry, bcm_field_IpFrag_t frag_info);
int bcm_field_qualify_InnerIpFrag_get(int unit, bcm_field_entry_t entry, bcm_field_IpFrag_t *frag_info);
int bcm_field_qualify_FibreChanOuter(int unit, bcm_field_entry_t entry,
                                     bcm_field_FibreChan_t fibre_chan_outer);
int bcm_field_qualify_FibreChanOuter_get(int unit, bcm_field_entry_t entry,
                                         bcm_field_FibreChan_t *fibre_chan_outer);
int bcm_field_qualify_FibreChanInner(int unit, bcm_field_entry_t entry,
                                     bcm_field_FibreChan_t fibre_chan_inner);
int bcm_field_qualify_FibreChanInner_get(int unit, bcm_field_entry_t entry,
                                         bcm_field_FibreChan_t *fibre_chan_inner);
int bcm_field_qualify_HeaderFormat(int unit, bcm_field_entry_t entry,
                                   bcm_field_header_format_t header_format);
int bcm_field_qualify_HeaderFormat_get(int unit, bcm_field_entry_t entry,
                                       bcm_field_header_format_t *header_format);
int bcm_field_qualify_ArpOpcode(int unit, bcm_field_entry_t entry, bcm_field_ArpOpcode_t opcode);
int bcm_field_qualify_ArpOpcode_get(int unit, bcm_field_entry_t entry, bcm_field_ArpOpcode_t *opcode);
int bcm_field_qualify_Stage(int unit, bcm_field_entry_t entry, bcm_field_stage_t stage);
int bcm_field_qualify_Stage_get(int unit, bcm_field_entry_t entry, bcm_field_stage_t *stage);
int bcm_field_qualify_RxTrapCodeForSnoop(int unit, bcm_field_entry_t entry, bcm_rx_trap_t trap_code);
int bcm_field_qualify_RxTrapCodeForSnoop_get(int unit, bcm_field_entry_t entry, bcm_rx_trap_t *trap_code);
int bcm_field_qualify_OamType(int unit, bcm_field_entry_t entry, bcm_field_oam_type_t oam_type);
int bcm_field_qualify_OamType_get(int unit, bcm_field_entry_t entry, bcm_field_oam_type_t *oam_type);
int bcm_field_qualify_MplsOamControlPktType(int unit, bcm_field_entry_t entry,
                                            bcm_field_MplsOam_Control_pktType_t type);
int bcm_field_qualify_MplsOamControlPktType_get(int unit, bcm_field_entry_t entry,
                                                bcm_field_MplsOam_Control_pktType_t *type);
int bcm_field_qualify_HiGigForwardingType(int unit, bcm_field_entry_t entry,
                                          bcm_field_HiGigForwardingType_t type);
int bcm_field_qualify_HiGigForwardingType_get(int unit, bcm_field_entry_t entry,
                                              bcm_field_HiGigForwardingType_t *type);
int bcm_field_qualify_IngressDropEthernetOamControl(int unit, bcm_field_entry_t entry,
                                                    bcm_field_oam_drop_mep_type_t drop_mep_type);
int bcm_field_qualify_IngressDropEthernetOamControl_get(int unit, bcm_field_entry_t entry,
                                                        bcm_field_oam_drop_mep_type_t *drop_mep_type);
int bcm_field_qualify_IngressDropEthernetOamData(int unit, bcm_field_entry_t entry,
                                                 bcm_field_oam_drop_mep_type_t drop_mep_type);
int bcm_field_qualify_IngressDropEthernetOamData_get(int unit, bcm_field_entry_t entry,
                                                     bcm_field_oam_drop_mep_type_t *drop_mep_type);
int bcm_field_qualify_IngressDropMplsOamControl(int unit, bcm_field_entry_t entry,
                                                bcm_field_oam_drop_mep_type_t drop_mep_type);
int bcm_field_qualify_IngressDropMplsOamControl_get(int unit, bcm_field_entry_t entry,
                                                    bcm_field_oam_drop_mep_type_t *drop_mep_type);
int bcm_field_qualify_IngressDropMplsOamData(int unit, bcm_field_entry_t entry,
                                             bcm_field_oam_drop_mep_type_t drop_mep_type);
int bcm_field_qualify_IngressDropMplsOamData_get(int unit, bcm_field_entry_t entry,
                                                 bcm_field_oam_drop_mep_type_t *drop_mep_type);

/* One value without a mask: colours (BCM_FIELD_COLOR_*), tag protocol ids, comparisons within the packet. */
int bcm_field_qualify_Color(int unit, bcm_field_entry_t entry, uint8 color);
int bcm_field_qualify_Color_get(int unit, bcm_field_entry_t entry, uint8 *color);
int bcm_field_qualify_LearnExtension(int unit, bcm_field_entry_t entry, uint8 data);
int bcm_field_qualify_LearnExtension_get(int unit, bcm_field_entry_t entry, uint8 *data);
int bcm_field_qualify_HiGigColor(int unit, bcm_field_entry_t entry, uint8 color);
int bcm_field_qualify_HiGigColor_get(int unit, bcm_field_entry_t entry, uint8 *color);
int bcm_field_qualify_LoopBackColor(int unit, bcm_field_entry_t entry, uint8 color);
int bcm_field_qualify_LoopBackColor_get(int unit, bcm_field_entry_t entry, uint8 *color);
int bcm_field_qualify_StpState(int unit, bcm_field_entry_t entry, uint8 data);
int bcm_field_qualify_StpState_get(int unit, bcm_field_entry_t entry, uint8 *data);
int bcm_field_qualify_OamEgressMulticastMacHit(int unit, bcm_field_entry_t entry, uint8 data);
int bcm_field_qualify_OamEgressMulticastMacHit_get(int unit, bcm_field_entry_t entry, uint8 *data);
int bcm_field_qualify_InnerTpid(int unit, bcm_field_entry_t entry, uint16 tpid);
int bcm_field_qualify_InnerTpid_get(int unit, bcm_field_entry_t entry, uint16 *tpid);
int bcm_field_qualify_OuterTpid(int unit, bcm_field_entry_t entry, uint16 tpid);
int bcm_field_qualify_OuterTpid_get(int unit, bcm_field_entry_t entry, uint16 *tpid);
int bcm_field_qualify_OamEgressEtherType(int unit, bcm_field_entry_t entry, uint16 data);
int bcm_field_qualify_OamEgressEtherType_get(int unit, bcm_field_entry_t entry, uint16 *data);
int bcm_field_qualify_EqualL4Port(int unit, bcm_field_entry_t entry, uint32 flag);
int bcm_field_qualify_EqualL4Port_get(int unit, bcm_field_entry_t entry, uint32 *flag);
int bcm_field_qualify_TcpSequenceZero(int unit, bcm_field_entry_t entry, uint32 flag);
int bcm_field_qualify_TcpSequenceZero_get(int unit, bcm_field_entry_t entry, uint32 *flag);
int bcm_field_qualify_SrcIpEqualDstIp(int unit, bcm_field_entry_t entry, uint32 flag);
int bcm_field_qualify_SrcIpEqualDstIp_get(int unit, bcm_field_entry_t entry, uint32 *flag);

/* Where the packet goes or comes from on layer 3. */
int bcm_field_qualify_DstL3Egress(int unit, bcm_field_entry_t entry, bcm_if_t if_id);
int bcm_field_qualify_DstL3Egress_get(int unit, bcm_field_entry_t entry, bcm_if_t *if_id);
int bcm_field_qualify_DstMultipath(int unit, bcm_field_entry_t entry, bcm_if_t mpintf);
int bcm_field_qualify_DstMultipath_get(int unit, bcm_field_entry_t entry, bcm_if_t *mpintf);
int bcm_field_qualify_DstMulticastGroup(int unit, bcm_field_entry_t entry, bcm_multicast_t group);
int bcm_field_qualify_DstMulticastGroup_get(int unit, bcm_field_entry_t entry, bcm_multicast_t *group);
int bcm_field_qualify_L3Ingress(int unit, bcm_field_entry_t entry, bcm_if_t intf_id, bcm_if_t mask);
int bcm_field_qualify_L3Ingress_get(int unit, bcm_field_entry_t entry, bcm_if_t *intf_id, bcm_if_t *mask);

/* Bytes after the layer 2 header: the first eight, or length of them. */
int bcm_field_qualify_L2PayloadFirstEightBytes(int unit, bcm_field_entry_t entry, uint32 data1, uint32 data2,
                                               uint32 mask1, uint32 mask2);
int bcm_field_qualify_L2PayloadFirstEightBytes_get(int unit, bcm_field_entry_t entry, uint32 *data1,
                                                   uint32 *data2, uint32 *mask1, uint32 *mask2);
int bcm_field_qualify_L2PayLoad(int unit, bcm_field_entry_t entry, uint32 length, const uint8 *data,
                                const uint8 *mask);
int bcm_field_qualify_L2PayLoad_get(int unit, bcm_field_entry_t entry, uint32 *length, uint8 *data,
                                    uint8 *mask);

/* Headers compared member by member. */
int bcm_field_qualify_Snap(int unit, bcm_field_entry_t entry, bcm_field_snap_header_t data,
                           bcm_field_snap_header_t mask);
int bcm_field_qualify_Snap_get(int unit, bcm_field_entry_t entry, bcm_field_snap_header_t *data,
                               bcm_field_snap_header_t *mask);
int bcm_field_qualify_Llc(int unit, bcm_field_entry_t entry, bcm_field_llc_header_t data,
                          bcm_field_llc_header_t mask);
int bcm_field_qualify_Llc_get(int unit, bcm_field_entry_t entry, bcm_field_llc_header_t *data,
                              bcm_field_llc_header_t *mask);
int bcm_field_qualify_HeaderFormatSet(int unit, bcm_field_entry_t entry,
                                      bcm_field_header_format_set_t header_format_set);
int bcm_field_qualify_HeaderFormatSet_get(int unit, bcm_field_entry_t entry,
                                          bcm_field_header_format_set_t *header_format_set);

/* ICMP packets longer than size bytes, if flag is 1. */
int bcm_field_qualify_BigIcmpCheck(int unit, bcm_field_entry_t entry, uint32 flag, uint32 size);
int bcm_field_qualify_BigIcmpCheck_get(int unit, bcm_field_entry_t entry, uint32 *flag, uint32 *size);

/* Bytes between base_header and the header that the packet is forwarded by. */
int bcm_field_qualify_ForwardingHeaderOffset(int unit, bcm_field_entry_t entry,
                                             bcm_field_ForwardingBase_t base_header, uint8 data, uint8 mask);
int bcm_field_qualify_ForwardingHeaderOffset_get(int unit, bcm_field_entry_t entry,
                                                 bcm_field_ForwardingBase_t *base_header, uint8 *data,
                                                 uint8 *mask);

/* Results of the exact match lookup, by the priority of the group that was looked up. */
int bcm_field_qualify_ExactMatchHitStatus(int unit, bcm_field_entry_t entry, int group_pri, uint8 data,
                                          uint8 mask);
int bcm_field_qualify_ExactMatchHitStatus_get(int unit, bcm_field_entry_t entry, int group_pri, uint8 *data,
                                              uint8 *mask);
int bcm_field_qualify_ExactMatchActionClassId(int unit, bcm_field_entry_t entry, int group_pri, uint32 data,
                                              uint32 mask);
int bcm_field_qualify_ExactMatchActionClassId_get(int unit, bcm_field_entry_t entry, int group_pri,
                                                  uint32 *data, uint32 *mask);
int bcm_field_qualify_ExactMatchGroupClassId(int unit, bcm_field_entry_t entry, int group_pri, uint32 group);
int bcm_field_qualify_ExactMatchGroupClassId_get(int unit, bcm_field_entry_t entry, int group_pri,
                                                 uint32 *group);

/* Classes of the source, for packets from the ports of pbmp, see bcm_field_source_class_mode_set. */
int bcm_field_qualify_MixedSrcClassId(int unit, bcm_field_entry_t entry, bcm_pbmp_t pbmp,
                                      bcm_field_src_class_t data, bcm_field_src_class_t mask);
int bcm_field_qualify_MixedSrcClassId_get(int unit, bcm_field_entry_t entry, bcm_pbmp_t pbmp,
                                          bcm_field_src_class_t *data, bcm_field_src_class_t *mask);

/*
 * Bytes that a data qualifier or a user-defined field extracts. The getters take the room in the buffers in
 * *length and return the bytes written there.
 */
int bcm_field_qualify_data(int unit, bcm_field_entry_t entry, int qual_id, uint8 *data, uint8 *mask,
                           uint16 length);
int bcm_field_qualify_data_get(int unit, bcm_field_entry_t entry, int qual_id, uint8 *data, uint8 *mask,
                               uint16 *length);
int bcm_field_qualify_udf(int unit, bcm_field_entry_t entry, int udf_id, int length, uint8 *data,
                          uint8 *mask);
int bcm_field_qualify_udf_get(int unit, bcm_field_entry_t entry, int udf_id, int *length, uint8 *data,
                              uint8 *mask);

#ifdef __cplusplus
}
#endif

#endif
