#include "field_qualifier.h"

#include "destination.h"
#include "enumerators.h"
#include "sim_parse.h"

#include <bcm/error.h>
#include <bcm/field_types.h>
#include <bcm/types.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace sim {

namespace {

namespace at = field_places;
using Layout = FieldLayout;
using Header = FieldHeader;

constexpr std::uint8_t lookup = 1, ingress = 2, egress = 4, everywhere = lookup | ingress | egress;

constexpr FieldPlace part(FieldPlace place, unsigned shift, unsigned width)
{
    return {place.word, static_cast<std::uint8_t>(place.shift + shift), static_cast<std::uint8_t>(width)};
}

constexpr FieldPlace lower_half(FieldPlace place)
{
    return {static_cast<std::uint8_t>(place.word + 1), place.shift, place.width};
}

constexpr FieldQualifier qualifiers[] = {
    // Ports.
    {bcmFieldQualifyInPort, Layout::number, at::in_port, Header::always, everywhere},
    {bcmFieldQualifyInPorts, Layout::ports, at::in_ports, Header::always, everywhere},
    {bcmFieldQualifyInterfaceInPorts, Layout::ports, at::in_ports, Header::always, everywhere},
    {bcmFieldQualifyDevicePortBitmap, Layout::ports, at::in_ports, Header::always, everywhere},
    {bcmFieldQualifySrcPort, Layout::module_port, at::in_port, Header::always, everywhere},
    {bcmFieldQualifySrcTrunk, Layout::number, at::in_trunk, Header::in_trunk, everywhere},
    {bcmFieldQualifySrcGport, Layout::gport, at::in_port, Header::always, everywhere},
    {bcmFieldQualifySrcModPortGport, Layout::port, at::in_port, Header::always, everywhere},
    {bcmFieldQualifySrcModuleGport, Layout::module, at::in_port, Header::always, everywhere},
    {bcmFieldQualifyTrunkMemberSourceModuleId, Layout::module_number, at::in_port, Header::in_trunk,
     everywhere},
    {bcmFieldQualifySystemPortBitmap, Layout::ports, at::in_ports, Header::always, everywhere},
    {bcmFieldQualifySourceGportBitmap, Layout::ports, at::in_ports, Header::always, everywhere},
    {bcmFieldQualifySrcModPortGports, Layout::number, at::in_port_gport, Header::always, ingress | egress},
    {bcmFieldQualifySrcGports, Layout::number, at::in_gport, Header::always, ingress | egress},
    {bcmFieldQualifyDstGports, Layout::number, at::out_gport, Header::out_place, ingress | egress},
    {bcmFieldQualifyStage, Layout::choice, at::stage, Header::always, everywhere},
    {bcmFieldQualifySrcTrunkMemberGport, Layout::port, at::in_port, Header::in_trunk, everywhere},
    {bcmFieldQualifyOutPort, Layout::number, at::out_port, Header::out_port, ingress | egress},
    {bcmFieldQualifyOutPorts, Layout::ports, at::out_ports, Header::always, ingress | egress},
    {bcmFieldQualifyDstPort, Layout::module_port, at::out_port, Header::out_port, ingress | egress},
    {bcmFieldQualifyDstTrunk, Layout::number, at::out_trunk, Header::out_trunk, ingress},
    {bcmFieldQualifyDstGport, Layout::gport, at::out_port, Header::always, ingress | egress},
    {bcmFieldQualifyDstL2MulticastGroup, Layout::number, at::out_group, Header::out_group, ingress},
    {bcmFieldQualifyDstMulticastGroup, Layout::number, at::out_group, Header::out_group, ingress},
    {bcmFieldQualifyDstMulticastGroups, Layout::number, at::out_group, Header::out_group, ingress},

    // Ethernet.
    {bcmFieldQualifyEtherType, Layout::number, at::ether_type, Header::ether_type, everywhere},
    {bcmFieldQualifySrcMac, Layout::number, at::source_mac, Header::always, everywhere},
    {bcmFieldQualifyDstMac, Layout::number, at::destination_mac, Header::always, everywhere},
    {bcmFieldQualifyForwardHdrSrcMac, Layout::number, at::source_mac, Header::always, everywhere},
    {bcmFieldQualifyForwardHdrDstMac, Layout::number, at::destination_mac, Header::always, everywhere},
    {bcmFieldQualifyForwardHdrVlanId, Layout::number, part(at::outer_tag, 0, 12), Header::outer_tag,
     everywhere},
    {bcmFieldQualifyL2Format, Layout::choice, at::l2_format, Header::always, everywhere},
    {bcmFieldQualifyL2PayLoad, Layout::payload, at::payload_holds, Header::always, everywhere},
    {bcmFieldQualifyL2PayloadFirstEightBytes, Layout::two_numbers, at::payload, Header::payload, everywhere},

    // Tags as received.
    {bcmFieldQualifyOuterVlan, Layout::number, at::outer_tag, Header::outer_tag, everywhere},
    {bcmFieldQualifyOuterVlanId, Layout::number, part(at::outer_tag, 0, 12), Header::outer_tag, everywhere},
    {bcmFieldQualifyOuterVlanPri, Layout::number, part(at::outer_tag, 13, 3), Header::outer_tag, everywhere},
    {bcmFieldQualifyOuterVlanCfi, Layout::number, part(at::outer_tag, 12, 1), Header::outer_tag, everywhere},
    {bcmFieldQualifyOuterVlanPriCfi, Layout::number, part(at::outer_tag, 12, 4), Header::outer_tag,
     everywhere},
    {bcmFieldQualifyInnerVlan, Layout::number, at::inner_tag, Header::inner_tag, everywhere},
    {bcmFieldQualifyInnerVlanId, Layout::number, part(at::inner_tag, 0, 12), Header::inner_tag, everywhere},
    {bcmFieldQualifyInnerVlanPri, Layout::number, part(at::inner_tag, 13, 3), Header::inner_tag, everywhere},
    {bcmFieldQualifyInnerVlanCfi, Layout::number, part(at::inner_tag, 12, 1), Header::inner_tag, everywhere},
    {bcmFieldQualifyVlanFormat, Layout::number, at::vlan_format, Header::always, everywhere},
    {bcmFieldQualifyOuterTpid, Layout::number, at::outer_tpid, Header::outer_tag, everywhere},
    {bcmFieldQualifyInnerTpid, Layout::number, at::inner_tpid, Header::inner_tag, everywhere},

    // What bridging found.
    {bcmFieldQualifyForwardingVlanId, Layout::number, at::forwarding_vlan, Header::vlan, ingress | egress},
    {bcmFieldQualifyStpState, Layout::number, at::tree_state, Header::vlan, ingress},
    {bcmFieldQualifyIngressStpState, Layout::number, at::tree_state, Header::vlan, ingress},
    {bcmFieldQualifyL2SrcHit, Layout::number, at::source_hit, Header::vlan, ingress},
    {bcmFieldQualifyL2SrcStatic, Layout::number, at::source_static, Header::vlan, ingress},
    {bcmFieldQualifyL2DestHit, Layout::number, at::destination_hit, Header::vlan, ingress},
    {bcmFieldQualifyDrop, Layout::number, at::drop, Header::always, ingress},

    {bcmFieldQualifyColor, Layout::number, at::color, Header::always, ingress | egress},

    // IP.
    {bcmFieldQualifyIpType, Layout::choice, at::ip_type, Header::always, everywhere},
    {bcmFieldQualifySrcIp, Layout::number, at::source_ip, Header::ip4, everywhere},
    {bcmFieldQualifyDstIp, Layout::number, at::destination_ip, Header::ip4, everywhere},
    {bcmFieldQualifySrcIp6, Layout::ip6, at::source_ip6, Header::ip6, everywhere},
    {bcmFieldQualifyDstIp6, Layout::ip6, at::destination_ip6, Header::ip6, everywhere},
    {bcmFieldQualifySrcIp6High, Layout::ip6_upper, at::source_ip6, Header::ip6, everywhere},
    {bcmFieldQualifyDstIp6High, Layout::ip6_upper, at::destination_ip6, Header::ip6, everywhere},
    {bcmFieldQualifySrcIp6Low, Layout::ip6_lower, lower_half(at::source_ip6), Header::ip6, everywhere},
    {bcmFieldQualifyDstIp6Low, Layout::ip6_lower, lower_half(at::destination_ip6), Header::ip6, everywhere},
    {bcmFieldQualifySrcIpEqualDstIp, Layout::number, at::same_ip, Header::ip, everywhere},
    {bcmFieldQualifyIpProtocol, Layout::number, at::protocol, Header::ip, everywhere},
    {bcmFieldQualifyIp6NextHeader, Layout::number, at::protocol, Header::ip6, everywhere},
    {bcmFieldQualifyIpProtocolCommon, Layout::choice, at::protocol_kind, Header::ip, everywhere},
    {bcmFieldQualifyDSCP, Layout::number, part(at::service, 2, 6), Header::ip, everywhere},
    {bcmFieldQualifyTos, Layout::number, at::service, Header::ip, everywhere},
    {bcmFieldQualifyTosLower4Bits, Layout::number, part(at::service, 0, 4), Header::ip, everywhere},
    {bcmFieldQualifyEcnValue, Layout::number, part(at::service, 0, 2), Header::ip, everywhere},
    {bcmFieldQualifyIp6TrafficClass, Layout::number, at::service, Header::ip6, everywhere},
    {bcmFieldQualifyIp6FlowLabel, Layout::number, at::flow_label, Header::ip6, everywhere},
    {bcmFieldQualifyTtl, Layout::number, at::hops, Header::ip, everywhere},
    {bcmFieldQualifyIp6HopLimit, Layout::number, at::hops, Header::ip6, everywhere},
    {bcmFieldQualifyIpFlags, Layout::number, at::ip_flags, Header::ip4, everywhere},
    {bcmFieldQualifyIpFrag, Layout::choice, at::ip_fragment, Header::ip, everywhere},
    {bcmFieldQualifyIpFragNonOrFirst, Layout::number, at::not_later_fragment, Header::ip, everywhere},
    {bcmFieldQualifyExtensionHeaderType, Layout::number, at::extension, Header::ip6, everywhere},
    {bcmFieldQualifyExtensionHeader2Type, Layout::number, at::second_extension, Header::ip6, everywhere},
    {bcmFieldQualifyExtensionHeaderSubCode, Layout::number, at::extension_code, Header::ip6, everywhere},
    {bcmFieldQualifyPacketLength, Layout::number, at::packet_length, Header::always, everywhere},
    {bcmFieldQualifyPacketSize, Layout::number, at::packet_length, Header::always, everywhere},

    // Layer 4.
    {bcmFieldQualifyL4SrcPort, Layout::number, at::source_l4_port, Header::l4_ports, everywhere},
    {bcmFieldQualifyL4DstPort, Layout::number, at::destination_l4_port, Header::l4_ports, everywhere},
    {bcmFieldQualifyL4Ports, Layout::number, at::has_l4_ports, Header::always, everywhere},
    {bcmFieldQualifyEqualL4Port, Layout::number, at::same_l4_port, Header::l4_ports, everywhere},
    {bcmFieldQualifyTcpControl, Layout::number, at::tcp_flags, Header::tcp, everywhere},
    {bcmFieldQualifyTcpHeaderSize, Layout::number, at::tcp_header, Header::tcp, everywhere},
    {bcmFieldQualifyTcpSequenceZero, Layout::number, at::tcp_sequence_zero, Header::tcp, everywhere},
    {bcmFieldQualifyDhcp, Layout::number, at::dhcp, Header::always, everywhere},
    {bcmFieldQualifyIcmpTypeCode, Layout::number, at::type_code, Header::icmp, everywhere},
    {bcmFieldQualifyIcmpError, Layout::number, at::icmp_error, Header::always, everywhere},
    {bcmFieldQualifyIgmpTypeMaxRespTime, Layout::number, at::type_code, Header::igmp, everywhere},

    // ARP.
    {bcmFieldQualifyArpSenderIp4, Layout::number, at::arp_sender, Header::arp, everywhere},
    {bcmFieldQualifyArpTargetIp4, Layout::number, at::arp_target, Header::arp, everywhere},
    {bcmFieldQualifyArpOpcode, Layout::choice, at::arp_operation, Header::arp, everywhere},

    // Logical links.
    {bcmFieldQualifyLlc, Layout::number, at::llc, Header::llc, everywhere},
    {bcmFieldQualifySnap, Layout::snap, at::snap, Header::snap, everywhere},

    // MPLS labels from outside.
    {bcmFieldQualifyMplsLabel1, Layout::number, at::label1, Header::label1, everywhere},
    {bcmFieldQualifyMplsLabel1Id, Layout::number, part(at::label1, 12, 20), Header::label1, everywhere},
    {bcmFieldQualifyMplsLabel1Exp, Layout::number, part(at::label1, 9, 3), Header::label1, everywhere},
    {bcmFieldQualifyMplsLabel1Bos, Layout::number, part(at::label1, 8, 1), Header::label1, everywhere},
    {bcmFieldQualifyMplsBos, Layout::number, part(at::label1, 8, 1), Header::label1, everywhere},
    {bcmFieldQualifyMplsLabel1Ttl, Layout::number, part(at::label1, 0, 8), Header::label1, everywhere},
    {bcmFieldQualifyMplsLabel2, Layout::number, at::label2, Header::label2, everywhere},
    {bcmFieldQualifyMplsLabel2Id, Layout::number, part(at::label2, 12, 20), Header::label2, everywhere},
    {bcmFieldQualifyMplsLabel2Exp, Layout::number, part(at::label2, 9, 3), Header::label2, everywhere},
    {bcmFieldQualifyMplsLabel2Bos, Layout::number, part(at::label2, 8, 1), Header::label2, everywhere},
    {bcmFieldQualifyMplsLabel2Ttl, Layout::number, part(at::label2, 0, 8), Header::label2, everywhere},
    {bcmFieldQualifyMplsLabel3, Layout::number, at::label3, Header::label3, everywhere},
    {bcmFieldQualifyMplsLabel3Id, Layout::number, part(at::label3, 12, 20), Header::label3, everywhere},
    {bcmFieldQualifyMplsLabel3Exp, Layout::number, part(at::label3, 9, 3), Header::label3, everywhere},
    {bcmFieldQualifyMplsLabel3Bos, Layout::number, part(at::label3, 8, 1), Header::label3, everywhere},
    {bcmFieldQualifyMplsLabel3Ttl, Layout::number, part(at::label3, 0, 8), Header::label3, everywhere},
    {bcmFieldQualifyMplsControlWordValid, Layout::number, at::has_control_word, Header::label1, everywhere},
    {bcmFieldQualifyMplsControlWord, Layout::number, at::control_word, Header::label1, everywhere},
    {bcmFieldQualifyRouterAlertLabelValid, Layout::number, at::has_router_alert, Header::label1, everywhere},
    {bcmFieldQualifyGenericAssociatedChannelLabelValid, Layout::number, at::has_channel_label, Header::label1,
     everywhere},

    // TRILL and Fibre Channel.
    {bcmFieldQualifyTrillEgressRbridge, Layout::number, at::trill_egress, Header::trill, everywhere},
    {bcmFieldQualifyTrillIngressRbridge, Layout::number, at::trill_ingress, Header::trill, everywhere},
    {bcmFieldQualifyTrillIVersion, Layout::number, at::trill_version, Header::trill, everywhere},
    {bcmFieldQualifyTrillMultiDestination, Layout::number, at::trill_is_for_many, Header::trill, everywhere},
    {bcmFieldQualifyTrillOpLength, Layout::number, at::trill_options, Header::trill, everywhere},
    {bcmFieldQualifyTrillHopCount, Layout::number, at::trill_hops, Header::trill, everywhere},
    {bcmFieldQualifyFcoeSOF, Layout::number, at::fcoe_start, Header::fcoe, everywhere},
    {bcmFieldQualifyFcoeVersionIsZero, Layout::number, at::fcoe_version_is_zero, Header::fcoe, everywhere},
    {bcmFieldQualifyFibreChanRCtl, Layout::number, at::fibre_routing, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFibreChanDstId, Layout::number, at::fibre_destination, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFibreChanCSCtl, Layout::number, at::fibre_class, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFibreChanSrcId, Layout::number, at::fibre_source, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFibreChanType, Layout::number, at::fibre_type, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFibreChanFCtl, Layout::number, at::fibre_frame, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFibreChanDFCtl, Layout::number, at::fibre_data, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFcoeOxID, Layout::number, at::fibre_originator, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFcoeRxID, Layout::number, at::fibre_responder, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFibreChanVFTValid, Layout::number, at::has_fabric_tag, Header::fibre_channel, everywhere},
    {bcmFieldQualifyFibreChanVFTVersion, Layout::number, at::fabric_version, Header::fabric_tag, everywhere},
    {bcmFieldQualifyFibreChanVFTPri, Layout::number, at::fabric_priority, Header::fabric_tag, everywhere},
    {bcmFieldQualifyFibreChanVFTFabricId, Layout::number, at::fabric, Header::fabric_tag, everywhere},
    {bcmFieldQualifyFibreChanVFTHopCount, Layout::number, at::fabric_hops, Header::fabric_tag, everywhere},

    {bcmFieldQualifyTrillPayload, Layout::number, at::trill_payload, Header::trill_payload, everywhere},
    {bcmFieldQualifyFibreChanOuter, Layout::choice, at::outer_fibre_channel, Header::always, everywhere},
    {bcmFieldQualifyFibreChanInner, Layout::choice, at::inner_fibre_channel, Header::always, everywhere},

    // Other tags.
    {bcmFieldQualifyVnTag, Layout::number, at::vn_tag, Header::vn_tag, everywhere},
    {bcmFieldQualifyCnTag, Layout::number, at::cn_tag, Header::cn_tag, everywhere},
    {bcmFieldQualifyITag, Layout::number, at::i_tag, Header::i_tag, everywhere},
    {bcmFieldQualifyETag, Layout::number, at::e_tag, Header::e_tag, everywhere},
    {bcmFieldQualifyECid, Layout::number, at::extended_channel, Header::e_tag, everywhere},
    {bcmFieldQualifyIngressECid, Layout::number, at::incoming_extended_channel, Header::e_tag, everywhere},

    // What looks after links and paths.
    {bcmFieldQualifyOamType, Layout::choice, at::maintenance, Header::always, everywhere},
    {bcmFieldQualifyOamMdl, Layout::number, at::maintenance_level, Header::ethernet_oam, everywhere},
    {bcmFieldQualifyOamHeaderBits0_31, Layout::number, part(at::maintenance_bits, 32, 32),
     Header::maintenance, everywhere},
    {bcmFieldQualifyOamHeaderBits32_63, Layout::number, part(at::maintenance_bits, 0, 32),
     Header::maintenance, everywhere},
    {bcmFieldQualifyEthernetOamHeaderBits0_31, Layout::number, part(at::maintenance_bits, 32, 32),
     Header::ethernet_oam, everywhere},
    {bcmFieldQualifyEthernetOamHeaderBits32_63, Layout::number, part(at::maintenance_bits, 0, 32),
     Header::ethernet_oam, everywhere},
    {bcmFieldQualifyMplsOamHeaderBits0_31, Layout::number, part(at::maintenance_bits, 32, 32),
     Header::mpls_oam, everywhere},
    {bcmFieldQualifyMplsOamHeaderBits32_63, Layout::number, part(at::maintenance_bits, 0, 32),
     Header::mpls_oam, everywhere},
    {bcmFieldQualifyMplsOamACH, Layout::number, at::channel, Header::channel, everywhere},
    {bcmFieldQualifyMplsOamGALLabelOnly, Layout::number, at::is_only_gal, Header::label1, everywhere},
    {bcmFieldQualifyMplsOamControlPktType, Layout::choice, at::label_control, Header::always, everywhere},
    {bcmFieldQualifyBfdYourDiscriminator, Layout::number, at::bfd_discriminator, Header::bfd, everywhere},

    // What it is, by all of its headers.
    {bcmFieldQualifyAppType, Layout::choice, at::protocol_of, Header::always, everywhere},
    {bcmFieldQualifyHeaderFormat, Layout::choice, at::header_format, Header::always, everywhere},
    {bcmFieldQualifyHeaderFormatSet, Layout::choices, at::header_format, Header::always, everywhere},

    // Tunnels, and what they carry.
    {bcmFieldQualifyTunnelType, Layout::choice, at::tunnel_type, Header::always, everywhere},
    {bcmFieldQualifyVxlanFlags, Layout::number, at::vxlan_flags, Header::vxlan, everywhere},
    {bcmFieldQualifyVxlanHeaderBits8_31, Layout::number, at::vxlan_before, Header::vxlan, everywhere},
    {bcmFieldQualifyVxlanNetworkId, Layout::number, at::vxlan_network, Header::vxlan, everywhere},
    {bcmFieldQualifyVxlanHeaderBits56_63, Layout::number, at::vxlan_behind, Header::vxlan, everywhere},
    {bcmFieldQualifyL2GreProtocolType, Layout::number, at::l2_gre_type, Header::l2_gre, everywhere},
    {bcmFieldQualifyL2GreVsid, Layout::number, at::virtual_subnet, Header::l2_gre, everywhere},
    {bcmFieldQualifyL2GreFlowId, Layout::number, at::flow_id, Header::l2_gre, everywhere},
    {bcmFieldQualifyISid, Layout::number, at::service_id, Header::i_tag, everywhere},
    {bcmFieldQualifyInnerDstMac, Layout::number, at::inner_destination_mac, Header::inner_ethernet,
     everywhere},
    {bcmFieldQualifyInnerSrcMac, Layout::number, at::inner_source_mac, Header::inner_ethernet, everywhere},
    {bcmFieldQualifyInnerEtherType, Layout::number, at::inner_ether_type, Header::inner_ethernet, everywhere},
    {bcmFieldQualifyInnerIpType, Layout::choice, at::inner_ip_type, Header::always, everywhere},
    {bcmFieldQualifyInnerSrcIp, Layout::number, at::inner_source_ip, Header::inner_ip4, everywhere},
    {bcmFieldQualifyInnerDstIp, Layout::number, at::inner_destination_ip, Header::inner_ip4, everywhere},
    {bcmFieldQualifyInnerSrcIp6, Layout::ip6, at::inner_source_ip6, Header::inner_ip6, everywhere},
    {bcmFieldQualifyInnerDstIp6, Layout::ip6, at::inner_destination_ip6, Header::inner_ip6, everywhere},
    {bcmFieldQualifyInnerSrcIp6High, Layout::ip6_upper, at::inner_source_ip6, Header::inner_ip6, everywhere},
    {bcmFieldQualifyInnerDstIp6High, Layout::ip6_upper, at::inner_destination_ip6, Header::inner_ip6,
     everywhere},
    {bcmFieldQualifyInnerIpProtocol, Layout::number, at::inner_protocol, Header::inner_ip, everywhere},
    {bcmFieldQualifyInnerIpProtocolCommon, Layout::choice, at::inner_protocol_kind, Header::inner_ip,
     everywhere},
    {bcmFieldQualifyInnerIp6NextHeader, Layout::number, at::inner_protocol, Header::inner_ip6, everywhere},
    {bcmFieldQualifyInnerTos, Layout::number, at::inner_service, Header::inner_ip, everywhere},
    {bcmFieldQualifyInnerDSCP, Layout::number, part(at::inner_service, 2, 6), Header::inner_ip, everywhere},
    {bcmFieldQualifyInnerTtl, Layout::number, at::inner_hops, Header::inner_ip, everywhere},
    {bcmFieldQualifyInnerIp6HopLimit, Layout::number, at::inner_hops, Header::inner_ip6, everywhere},
    {bcmFieldQualifyInnerIp6FlowLabel, Layout::number, at::inner_flow_label, Header::inner_ip6, everywhere},
    {bcmFieldQualifyInnerIpFrag, Layout::choice, at::inner_ip_fragment, Header::inner_ip, everywhere},
    {bcmFieldQualifyInnerL4SrcPort, Layout::number, at::inner_source_l4_port, Header::inner_l4_ports,
     everywhere},
    {bcmFieldQualifyInnerL4DstPort, Layout::number, at::inner_destination_l4_port, Header::inner_l4_ports,
     everywhere},

    // What was decided so far.
    {bcmFieldQualifyIntPriority, Layout::number, at::priority, Header::always, ingress | egress},
    {bcmFieldQualifyL3Routable, Layout::number, at::is_routed, Header::always, ingress | egress},
    {bcmFieldQualifyForwardingType, Layout::choice, at::forwarding_type, Header::always, ingress | egress},
    {bcmFieldQualifyPacketRes, Layout::number, at::packet_result, Header::always, ingress},
    {bcmFieldQualifyTranslatedOuterVlan, Layout::number, at::translated_outer_tag, Header::always, ingress},
    {bcmFieldQualifyTranslatedOuterVlanId, Layout::number, part(at::translated_outer_tag, 0, 12),
     Header::always, ingress},
    {bcmFieldQualifyTranslatedOuterVlanPri, Layout::number, part(at::translated_outer_tag, 13, 3),
     Header::always, ingress},
    {bcmFieldQualifyTranslatedOuterVlanCfi, Layout::number, part(at::translated_outer_tag, 12, 1),
     Header::always, ingress},
    {bcmFieldQualifyTranslatedInnerVlan, Layout::number, at::translated_inner_tag, Header::always, ingress},
    {bcmFieldQualifyTranslatedInnerVlanId, Layout::number, part(at::translated_inner_tag, 0, 12),
     Header::always, ingress},
    {bcmFieldQualifyTranslatedInnerVlanPri, Layout::number, part(at::translated_inner_tag, 13, 3),
     Header::always, ingress},
    {bcmFieldQualifyTranslatedInnerVlanCfi, Layout::number, part(at::translated_inner_tag, 12, 1),
     Header::always, ingress},
    {bcmFieldQualifyTranslatedVlanFormat, Layout::number, at::translated_format, Header::always, ingress},
    {bcmFieldQualifyVlanTranslationHit, Layout::number, at::are_translated, Header::always, ingress | egress},
    {bcmFieldQualifyForwardingVlanValid, Layout::number, at::vlan_is_valid, Header::always, ingress | egress},

    {bcmFieldQualifyReplicantAny, Layout::number, at::is_replicated, Header::always, egress},
    {bcmFieldQualifyReplicantFirst, Layout::number, at::is_first, Header::always, egress},

    // Addresses that were looked up.
    {bcmFieldQualifyL2StationMove, Layout::number, at::has_moved, Header::always, ingress},
    {bcmFieldQualifyL2Learn, Layout::number, at::is_learnt, Header::always, ingress},
    {bcmFieldQualifyLearnSrcMac, Layout::number, at::source_mac, Header::learnt, ingress},
    {bcmFieldQualifyLearnVlan, Layout::number, at::learn_vlan, Header::learnt, ingress},
    {bcmFieldQualifyLearnSrcPort, Layout::gport, at::in_port, Header::learnt, ingress},
    {bcmFieldQualifyMyStationHit, Layout::number, at::station_hit, Header::always, ingress | egress},
    {bcmFieldQualifyVrf, Layout::number, at::routing_table, Header::router, ingress | egress},
    {bcmFieldQualifyL3Ingress, Layout::number, at::l3_ingress, Header::l3_ingress, ingress | egress},
    {bcmFieldQualifyL3DestHostHit, Layout::number, at::destination_is_host, Header::always, ingress | egress},
    {bcmFieldQualifyL3DestRouteHit, Layout::number, at::destination_is_route, Header::always,
     ingress | egress},
    {bcmFieldQualifyL3SrcHostHit, Layout::number, at::source_is_host, Header::always, ingress | egress},
    {bcmFieldQualifyL3SrcRouteHit, Layout::number, at::source_is_route, Header::always, ingress | egress},
    {bcmFieldQualifyDstIpLocal, Layout::number, at::destination_is_local, Header::always, ingress | egress},
    {bcmFieldQualifyDstL3Egress, Layout::number, at::egress_object, Header::egress_object, ingress | egress},
    {bcmFieldQualifyDstL3EgressNextHops, Layout::number, at::egress_object, Header::egress_object,
     ingress | egress},
    {bcmFieldQualifyDstMultipath, Layout::number, at::l3_group, Header::l3_group, ingress | egress},
    {bcmFieldQualifyInterfaceClassL2, Layout::number, at::vlan_class, Header::always, ingress | egress},
    {bcmFieldQualifyInterfaceClassL3, Layout::number, at::incoming_class, Header::always, ingress | egress},
    {bcmFieldQualifyIncomingIpIfClass, Layout::number, at::incoming_class, Header::always, ingress | egress},
    {bcmFieldQualifyEgressClassL3Interface, Layout::number, at::outgoing_class, Header::always,
     ingress | egress},

    // Classes of ports.
    {bcmFieldQualifyInterfaceLookupClassPort, Layout::number, at::lookup_class_of_port, Header::always,
     everywhere},
    {bcmFieldQualifyIngressInterfaceClassPort, Layout::number, at::class_of_port, Header::always, everywhere},
    {bcmFieldQualifyInterfaceClassProcessingPort, Layout::number, at::processing_class_of_port,
     Header::always, everywhere},

    // Classes that earlier stages gave.
    {bcmFieldQualifySrcClassField, Layout::number, class_place(FieldClass::source), Header::always,
     ingress | egress},
    {bcmFieldQualifyDstClassField, Layout::number, class_place(FieldClass::destination), Header::always,
     ingress | egress},
    {bcmFieldQualifyClassId, Layout::number, class_place(FieldClass::flow), Header::always, ingress | egress},
    {bcmFieldQualifyIngressClassField, Layout::number, class_place(FieldClass::ingress), Header::always,
     ingress | egress},
    {bcmFieldQualifyEgressClass, Layout::number, class_place(FieldClass::egress), Header::always,
     ingress | egress},
    {bcmFieldQualifySrcClassL2, Layout::number, class_place(FieldClass::l2_source), Header::always,
     ingress | egress},
    {bcmFieldQualifyDstClassL2, Layout::number, class_place(FieldClass::l2_destination), Header::always,
     ingress | egress},
    {bcmFieldQualifySrcClassL3, Layout::number, at::source_l3_class, Header::always, ingress | egress},
    {bcmFieldQualifyDstClassL3, Layout::number, at::destination_l3_class, Header::always, ingress | egress},
    {bcmFieldQualifyInterfaceClassPort, Layout::number, at::port_class, Header::always, ingress | egress},
    {bcmFieldQualifyUdfClass, Layout::number, class_place(FieldClass::user_defined), Header::always,
     ingress | egress},
};

template <class T>
T taken(const char *bytes)
{
    T number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

/// The number in as many bytes: as the machine keeps it, or of an address as it is sent.
FieldWord number_in(const char *bytes, std::size_t size)
{
    switch (size) {
    case 1:
        return taken<std::uint8_t>(bytes);
    case 2:
        return taken<std::uint16_t>(bytes);
    case 4:
        return taken<std::uint32_t>(bytes);
    case 8:
        return taken<std::uint64_t>(bytes);
    default:
        FieldWord number = 0;
        for (std::size_t i = 0; i < size; ++i) {
            number = number << 8 | static_cast<unsigned char>(bytes[i]);
        }
        return number;
    }
}

FieldWord half_address(const char *bytes)
{
    FieldWord number = 0;
    for (std::size_t i = 0; i < 8; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return number;
}

/// Requires a number, or as many bits of it as the mask says.
int add_number(FieldPlace place, FieldWord value, FieldWord mask, FieldPattern &pattern)
{
    if (((value & mask) & ~field_ones(place.width)) != 0) {
        return BCM_E_PARAM;
    }
    pattern.require(place, value, mask & field_ones(place.width));
    return BCM_E_NONE;
}

int add_gport(const FieldQualifier &qualifier, bcm_gport_t gport, FieldPattern &pattern)
{
    Destination to;
    if (resolve(-1, gport, &to) != BCM_E_NONE) {
        return BCM_E_PORT;
    }
    const bool is_source = qualifier.place.shift == at::in_port.shift;
    if (to.kind == Destination::Kind::trunk && qualifier.layout == Layout::gport) {
        pattern.value.has(is_source ? Header::in_trunk : Header::out_trunk);
        return add_number(is_source ? at::in_trunk : at::out_trunk, static_cast<FieldWord>(to.id),
                          field_ones(16), pattern);
    }
    if (!is_own_port(to)) {
        return BCM_E_PORT;
    }
    if (!is_source) {
        pattern.value.has(Header::out_port);
    }
    return add_number(qualifier.place, static_cast<FieldWord>(to.id), field_ones(8), pattern);
}

/// Of a gport that says a module, any port of it; of any other, the unit's own.
int add_module(bcm_gport_t gport, FieldPattern &pattern)
{
    Destination to;
    if (BCM_GPORT_IS_SET(gport) && BCM_GPORT_IS_MODPORT(gport)) {
        pattern.matches_none = pattern.matches_none || BCM_GPORT_MODPORT_MODID_GET(gport) != own_module;
        return BCM_E_NONE;
    }
    return resolve(-1, gport, &to) == BCM_E_NONE && is_own_port(to) ? BCM_E_NONE : BCM_E_PORT;
}

void add_ports(const FieldQualifier &qualifier, const char *values, FieldPattern &pattern)
{
    const auto ports = taken<bcm_pbmp_t>(values), mask = taken<bcm_pbmp_t>(values + sizeof(bcm_pbmp_t));
    const auto refused = [&](std::size_t word) { return mask.pbits[word] & ~ports.pbits[word]; };
    FieldPlace place = qualifier.place;
    pattern.require(place, 0, static_cast<FieldWord>(refused(1)) << 32 | refused(0));
    ++place.word;
    pattern.require(place, 0, refused(2) & 1);
}

/// So many bytes, and behind them their masks.
void add_payload(const char *bytes, std::size_t count, FieldPattern &pattern)
{
    for (std::size_t i = 0; i < count; ++i) {
        const auto mask = static_cast<unsigned char>(bytes[count + i]);
        if (mask != 0) {
            pattern.require(at::payload_byte(i), static_cast<unsigned char>(bytes[i]), mask);
            pattern.require(part(at::payload_holds, static_cast<unsigned>(i), 1), 1, 1);
        }
    }
}

}  // namespace

void FieldPattern::require(FieldPlace place, FieldWord number, FieldWord mask_bits)
{
    const FieldWord asked = mask.get(place) & mask_bits;
    // What two qualifiers of one place ask for may contradict.
    matches_none = matches_none || ((value.get(place) ^ number) & asked) != 0;
    mask.put(place, mask_bits);
    value.put(place, number & mask_bits);
}

bool FieldPattern::matches(const FieldKey &key) const
{
    FieldWord differing = 0;
    for (std::size_t word = 0; word < mask.words.size(); ++word) {
        differing |= (key.words[word] & mask.words[word]) ^ value.words[word];
    }
    return !matches_none && differing == 0 && (key.headers & value.headers) == value.headers;
}

bool FieldPattern::looks_further() const
{
    constexpr FieldHeaders further = ~(bit_of(FieldHeader::llc) - 1);
    return (value.headers & further) != 0
           || std::any_of(mask.words.begin() + at::first_further_word, mask.words.end(),
                          [](FieldWord word) { return word != 0; });
}

const FieldQualifier *field_qualifier(int qualifier)
{
    struct ByNumber {
        std::array<const FieldQualifier *, bcmFieldQualifyCount> rows = {};

        ByNumber()
        {
            for (const FieldQualifier &row : qualifiers) {
                rows[static_cast<std::size_t>(row.qualifier)] = &row;
            }
        }
    };
    static const ByNumber &all = *new ByNumber;
    return qualifier >= 0 && qualifier < bcmFieldQualifyCount ? all.rows[static_cast<std::size_t>(qualifier)]
                                                              : nullptr;
}

int add_to_pattern(const FieldQualifier &qualifier, const FieldValues &values, FieldPattern &pattern)
{
    const std::size_t size = values.size();
    const auto bytes = [&](unsigned which) { return values.bytes.data() + which * size; };
    const auto number = [&](unsigned which) { return number_in(bytes(which), size); };
    const FieldPlace place = qualifier.place;
    int status = BCM_E_NONE;
    bool is_asked = true;
    switch (qualifier.layout) {
    case Layout::number: {
        const FieldWord mask = values.count == 2 ? number(1) : field_ones(place.width);
        is_asked = mask != 0;
        // One value counts whole, however wide.
        status = values.count == 1 && number(0) > field_ones(place.width)
                     ? static_cast<int>(BCM_E_PARAM)
                     : add_number(place, number(0), mask, pattern);
        break;
    }
    case Layout::ip6: {
        const FieldWord upper = half_address(bytes(1)), lower = half_address(bytes(1) + 8);
        is_asked = (upper | lower) != 0;
        pattern.require(place, half_address(bytes(0)), upper);
        pattern.require(lower_half(place), half_address(bytes(0) + 8), lower);
        break;
    }
    case Layout::ip6_upper:
    case Layout::ip6_lower: {
        const std::size_t from = qualifier.layout == Layout::ip6_upper ? 0 : 8;
        const FieldWord mask = half_address(bytes(1) + from);
        is_asked = mask != 0;
        pattern.require(place, half_address(bytes(0) + from), mask);
        break;
    }
    case Layout::choice:
        if (number(0) >= place.width) {
            return BCM_E_PARAM;
        }
        pattern.require(place, field_ones(64), FieldWord{1} << number(0));
        break;
    case Layout::choices: {
        const auto set = static_cast<FieldWord>(taken<uint32>(bytes(0)));
        if ((set & ~field_ones(place.width)) != 0) {
            return BCM_E_PARAM;
        }
        pattern.require(place, 0, ~set);
        break;
    }
    case Layout::ports:
        add_ports(qualifier, values.bytes.data(), pattern);
        break;
    case Layout::port:
    case Layout::gport:
        status = add_gport(qualifier, static_cast<bcm_gport_t>(number(0)), pattern);
        break;
    case Layout::module_number:
        is_asked = number(1) != 0;
        pattern.matches_none = pattern.matches_none || ((number(0) ^ unsigned{own_module}) & number(1)) != 0;
        break;
    case Layout::module:
        status = add_module(static_cast<bcm_gport_t>(number(0)), pattern);
        break;
    case Layout::module_port:
        // All ports are of the unit's own module.
        pattern.matches_none = pattern.matches_none || ((number(0) ^ unsigned{own_module}) & number(1)) != 0;
        is_asked = (number(1) | number(3)) != 0;
        status = add_number(place, number(2), number(3), pattern);
        break;
    case Layout::snap: {
        const auto header = taken<bcm_field_snap_header_t>(bytes(0)),
                   asked = taken<bcm_field_snap_header_t>(bytes(1));
        const FieldWord mask = FieldWord{asked.org_code} << 16 | asked.type;
        is_asked = mask != 0;
        status = add_number(place, FieldWord{header.org_code} << 16 | header.type, mask, pattern);
        break;
    }
    case Layout::payload:
        add_payload(values.bytes.data(), size, pattern);
        break;
    case Layout::two_numbers:
        is_asked = (number(2) | number(3)) != 0;
        pattern.require(place, number(0) << 32 | number(1), number(2) << 32 | number(3));
        break;
    }
    if (status == BCM_E_NONE && is_asked) {
        pattern.value.has(qualifier.header);
    }
    return status;
}

std::string field_qualifier_name(int qualifier)
{
    static const Names names(names_of_bcm_field_qualify_e, "bcmFieldQualify");
    return names.name(qualifier, true);
}

}  // namespace sim
