/*
 * Values that qualifiers, groups and counters of the field processor take.
 */
#ifndef BCM_FIELD_VALUES_H
#define BCM_FIELD_VALUES_H

#include <bcm/types.h>

/* Parts of the pipeline that have entries of their own, in the order in which a packet meets them. */
typedef enum bcm_field_stage_e {
    bcmFieldStageDefault = 0,          /* the one that the group's qualifiers imply */
    bcmFieldStagePortClass,
    bcmFieldStagePrelookup,
    bcmFieldStageLookup,               /* before VLAN translation */
    bcmFieldStageExactMatch,
    bcmFieldStageIngress,
    bcmFieldStageExternal,
    bcmFieldStageHash,
    bcmFieldStageEgress,
    bcmFieldStageCount
} bcm_field_stage_t;

/* How wide a group's entries are, and so how many there can be. */
typedef enum bcm_field_group_mode_e {
    bcmFieldGroupModeDefault = 0,      /* auto, the narrowest that holds the qualifiers */
    bcmFieldGroupModeAuto,
    bcmFieldGroupModeSingle,           /* a slice of the table for itself */
    bcmFieldGroupModeDouble,
    bcmFieldGroupModeTriple,
    bcmFieldGroupModeQuad,
    bcmFieldGroupModeHalf,             /* two groups share a slice */
    bcmFieldGroupModeSmall,
    bcmFieldGroupModeIntraSlice,       /* twice as wide, within a slice */
    bcmFieldGroupModeIntraDouble,
    bcmFieldGroupModeDirect,           /* the entry is found by its index, without a search */
    bcmFieldGroupModeDirectExtraction, /* the result is cut out of the key */
    bcmFieldGroupModeHash,
    bcmFieldGroupModeExternal,
    bcmFieldGroupModeExternalDouble,
    bcmFieldGroupModeWlan,
    bcmFieldGroupModeStateTable,
    bcmFieldGroupModeConsecutive,      /* looked up again with the result of a first lookup */
    bcmFieldGroupModeCount
} bcm_field_group_mode_t;

/* Whether calls wait until the tables of the chip are written. */
typedef enum bcm_field_group_oper_mode_e {
    bcmFieldGroupOperSync = 0,
    bcmFieldGroupOperAsync,
    bcmFieldGroupOperCount
} bcm_field_group_oper_mode_t;

/* Settings of the field processor as a whole, see bcm_field_control_set. */
typedef enum bcm_field_control_e {
    bcmFieldControlStatSyncInterval = 0,    /* microseconds between reads of the counters, 0 for none */
    bcmFieldControlStatSyncPause,
    bcmFieldControlStatPacketBytesAdjust,   /* bytes added to the length that is counted */
    bcmFieldControlMetersSharing,
    bcmFieldControlMeterRefreshEnable,
    bcmFieldControlPriorityMoveEnable,      /* entries may be moved to make room */
    bcmFieldControlEntryAtomicUpdate,
    bcmFieldControlEntryReuse,
    bcmFieldControlGroupAutoExpand,
    bcmFieldControlGroupAutoCompress,
    bcmFieldControlGroupSharedPriority,
    bcmFieldControlQualifierSharing,
    bcmFieldControlLookupEnable,
    bcmFieldControlLookupIpv6Wide,
    bcmFieldControlExactMatchEnable,
    bcmFieldControlExactMatchAging,
    bcmFieldControlExternalEnable,
    bcmFieldControlExternalSyncEnable,
    bcmFieldControlExternalEntryReorder,
    bcmFieldControlUdfEnable,
    bcmFieldControlUdfEthertypeSharing,
    bcmFieldControlInnerHeaderEnable,
    bcmFieldControlTunnelHeaderEnable,
    bcmFieldControlHiGigHeaderEnable,
    bcmFieldControlRedirectIntPri,
    bcmFieldControlCopyToCpuPriority,
    bcmFieldControlDropWinsOverCopy,
    bcmFieldControlColorAware,
    bcmFieldControlConflictResolution,
    bcmFieldControlCount
} bcm_field_control_t;

/* What a counter counts: bytes or packets, of all or of one colour. */
typedef enum bcm_field_stat_e {
    bcmFieldStatBytes = 0,
    bcmFieldStatPackets,
    bcmFieldStatGreenBytes,
    bcmFieldStatGreenPackets,
    bcmFieldStatYellowBytes,
    bcmFieldStatYellowPackets,
    bcmFieldStatRedBytes,
    bcmFieldStatRedPackets,
    bcmFieldStatNotGreenBytes,
    bcmFieldStatNotGreenPackets,
    bcmFieldStatNotYellowBytes,
    bcmFieldStatNotYellowPackets,
    bcmFieldStatNotRedBytes,
    bcmFieldStatNotRedPackets,

    /*
     * By what became of them, or of the copy that an entry of the egress stage matched: forwarded if a port sends it or
     * holds it in a queue, the CPU's port too if it was addressed there; else dropped. Replicated if there are several
     * copies, those for the CPU too.
     */
    bcmFieldStatForwardedBytes,
    bcmFieldStatForwardedPackets,
    bcmFieldStatGreenForwardedBytes,
    bcmFieldStatGreenForwardedPackets,
    bcmFieldStatYellowForwardedBytes,
    bcmFieldStatYellowForwardedPackets,
    bcmFieldStatRedForwardedBytes,
    bcmFieldStatRedForwardedPackets,
    bcmFieldStatDroppedBytes,
    bcmFieldStatDroppedPackets,
    bcmFieldStatGreenDroppedBytes,
    bcmFieldStatGreenDroppedPackets,
    bcmFieldStatYellowDroppedBytes,
    bcmFieldStatYellowDroppedPackets,
    bcmFieldStatRedDroppedBytes,
    bcmFieldStatRedDroppedPackets,
    bcmFieldStatCopiedToCpuBytes,
    bcmFieldStatCopiedToCpuPackets,
    bcmFieldStatMirroredBytes,
    bcmFieldStatMirroredPackets,
    bcmFieldStatRedirectedBytes,
    bcmFieldStatRedirectedPackets,
    bcmFieldStatReplicatedBytes,
    bcmFieldStatReplicatedPackets,
    bcmFieldStatEcnMarkedBytes,
    bcmFieldStatEcnMarkedPackets,
    bcmFieldStatInProfileBytes,        /* within the rate of the entry's policer */
    bcmFieldStatInProfilePackets,
    bcmFieldStatOutProfileBytes,
    bcmFieldStatOutProfilePackets,
    bcmFieldStatErrorBytes,
    bcmFieldStatErrorPackets,

    /* By what they are. */
    bcmFieldStatUnicastBytes,
    bcmFieldStatUnicastPackets,
    bcmFieldStatMulticastBytes,
    bcmFieldStatMulticastPackets,
    bcmFieldStatBroadcastBytes,
    bcmFieldStatBroadcastPackets,
    bcmFieldStatNonIpBytes,
    bcmFieldStatNonIpPackets,
    bcmFieldStatIp4Bytes,
    bcmFieldStatIp4Packets,
    bcmFieldStatIp6Bytes,
    bcmFieldStatIp6Packets,
    bcmFieldStatTcpBytes,
    bcmFieldStatTcpPackets,
    bcmFieldStatUdpBytes,
    bcmFieldStatUdpPackets,
    bcmFieldStatTunnelledBytes,
    bcmFieldStatTunnelledPackets,

    bcmFieldStatCount
} bcm_field_stat_t;

/* Kinds of IP packets and of what else may be in their place. */
typedef enum bcm_field_IpType_e {
    bcmFieldIpTypeAny = 0,
    bcmFieldIpTypeNonIp,
    bcmFieldIpTypeIp,
    bcmFieldIpTypeIpv4Any,
    bcmFieldIpTypeIpv4NoOpts,
    bcmFieldIpTypeIpv4WithOpts,
    bcmFieldIpTypeIpv4Not6,
    bcmFieldIpTypeIpv6,
    bcmFieldIpTypeIpv6NoExtHdr,
    bcmFieldIpTypeIpv6OneExtHdr,
    bcmFieldIpTypeIpv6TwoExtHdr,
    bcmFieldIpTypeIpv6Not4,
    bcmFieldIpTypeArp,
    bcmFieldIpTypeArpRequest,
    bcmFieldIpTypeArpReply,
    bcmFieldIpTypeMplsUnicast,
    bcmFieldIpTypeMplsMulticast,
    bcmFieldIpTypeTrill,
    bcmFieldIpTypeMim,
    bcmFieldIpTypeCnm,
    bcmFieldIpTypeFibreChan,
    bcmFieldIpTypeCount
} bcm_field_IpType_t;

/* Which piece of a fragmented IP packet. */
typedef enum bcm_field_IpFrag_e {
    bcmFieldIpFragNon = 0,             /* not fragmented */
    bcmFieldIpFragFirst,
    bcmFieldIpFragNonOrFirst,
    bcmFieldIpFragNotFirst,
    bcmFieldIpFragAny,
    bcmFieldIpFragCount
} bcm_field_IpFrag_t;

/* Protocols over IP that are recognised without their number being compared. */
typedef enum bcm_field_IpProtocolCommon_e {
    bcmFieldIpProtocolCommonTcp = 0,
    bcmFieldIpProtocolCommonUdp,
    bcmFieldIpProtocolCommonTcpUdp,
    bcmFieldIpProtocolCommonIgmp,
    bcmFieldIpProtocolCommonIcmp,
    bcmFieldIpProtocolCommonIp6Icmp,
    bcmFieldIpProtocolCommonIp6HopByHop,
    bcmFieldIpProtocolCommonSctp,
    bcmFieldIpProtocolCommonGre,
    bcmFieldIpProtocolCommonEsp,
    bcmFieldIpProtocolCommonAh,
    bcmFieldIpProtocolCommonOspf,
    bcmFieldIpProtocolCommonCount
} bcm_field_IpProtocolCommon_t;

/* Encapsulations on layer 2. */
typedef enum bcm_field_L2Format_e {
    bcmFieldL2FormatAny = 0,
    bcmFieldL2FormatEthII,
    bcmFieldL2FormatSnap,
    bcmFieldL2FormatSnapPrivate,       /* SNAP with an organisation code other than 0 */
    bcmFieldL2FormatLlc,
    bcmFieldL2Format802dot3,
    bcmFieldL2FormatMim,
    bcmFieldL2FormatPPPoE,
    bcmFieldL2FormatCnTag,
    bcmFieldL2FormatFibreChan,
    bcmFieldL2FormatCount
} bcm_field_L2Format_t;

/* Fibre Channel headers. */
typedef enum bcm_field_FibreChan_e {
    bcmFieldFibreChanAny = 0,
    bcmFieldFibreChanNone,
    bcmFieldFibreChanStandard,
    bcmFieldFibreChanEncap,            /* for routing between fabrics */
    bcmFieldFibreChanVirtual,          /* tagged with a virtual fabric */
    bcmFieldFibreChanRouted,
    bcmFieldFibreChanCount
} bcm_field_FibreChan_t;

/* ARP operations. */
typedef enum bcm_field_ArpOpcode_e {
    bcmFieldArpOpcodeRequest = 0,
    bcmFieldArpOpcodeReply,
    bcmFieldArpOpcodeReverseRequest,
    bcmFieldArpOpcodeReverseReply,
    bcmFieldArpOpcodeInverseRequest,
    bcmFieldArpOpcodeInverseReply,
    bcmFieldArpOpcodeCount
} bcm_field_ArpOpcode_t;

/* Protocols that packets are recognised as. */
typedef enum bcm_field_AppType_e {
    bcmFieldAppTypeArp = 0,
    bcmFieldAppTypeArpRequest,
    bcmFieldAppTypeArpReply,
    bcmFieldAppTypeRarp,
    bcmFieldAppTypeStp,
    bcmFieldAppTypeLacp,
    bcmFieldAppTypeLldp,
    bcmFieldAppTypeEapol,
    bcmFieldAppTypeSlowProtocol,
    bcmFieldAppTypePause,
    bcmFieldAppTypePfc,
    bcmFieldAppTypeCfm,
    bcmFieldAppTypeEthernetAps,
    bcmFieldAppTypeMvrp,
    bcmFieldAppTypeMmrp,
    bcmFieldAppTypeMsrp,
    bcmFieldAppTypePtp,
    bcmFieldAppTypePtpOverIp4,
    bcmFieldAppTypePtpOverIp6,
    bcmFieldAppTypeDhcp4,
    bcmFieldAppTypeDhcp6,
    bcmFieldAppTypeIgmp,
    bcmFieldAppTypeMld,
    bcmFieldAppTypeIcmp4,
    bcmFieldAppTypeIcmp6,
    bcmFieldAppTypeNeighborSolicitation,
    bcmFieldAppTypeNeighborAdvertisement,
    bcmFieldAppTypeRouterSolicitation,
    bcmFieldAppTypeRouterAdvertisement,
    bcmFieldAppTypeBgp,
    bcmFieldAppTypeOspf,
    bcmFieldAppTypeIsIs,
    bcmFieldAppTypeRip,
    bcmFieldAppTypePim,
    bcmFieldAppTypeVrrp,
    bcmFieldAppTypeLdp,
    bcmFieldAppTypeRsvp,
    bcmFieldAppTypeBfd,
    bcmFieldAppTypeDns,
    bcmFieldAppTypeCount
} bcm_field_AppType_t;

/* Tunnels that a packet came through. */
typedef enum bcm_field_TunnelType_e {
    bcmFieldTunnelTypeAny = 0,
    bcmFieldTunnelTypeNone,
    bcmFieldTunnelTypeIp,
    bcmFieldTunnelTypeIp4InIp4,
    bcmFieldTunnelTypeIp6InIp4,
    bcmFieldTunnelTypeIp4InIp6,
    bcmFieldTunnelTypeIp6InIp6,
    bcmFieldTunnelTypeGreIp4,
    bcmFieldTunnelTypeGreIp6,
    bcmFieldTunnelTypeIsatap,
    bcmFieldTunnelType6to4,
    bcmFieldTunnelTypeMpls,
    bcmFieldTunnelTypeMplsSwitched,
    bcmFieldTunnelTypePseudowire,
    bcmFieldTunnelTypeMim,
    bcmFieldTunnelTypeTrill,
    bcmFieldTunnelTypeL2Gre,
    bcmFieldTunnelTypeVxlan,
    bcmFieldTunnelTypeNvgre,
    bcmFieldTunnelTypeGeneve,
    bcmFieldTunnelTypeGtp,
    bcmFieldTunnelTypeCapwap,
    bcmFieldTunnelTypePim,
    bcmFieldTunnelTypeAmt,             /* automatic multicast tunnel */
    bcmFieldTunnelTypeCount
} bcm_field_TunnelType_t;

/* Headers that were taken off. */
typedef enum bcm_field_decap_e {
    bcmFieldDecapNone = 0,
    bcmFieldDecapIpTunnel,
    bcmFieldDecapMplsOneLabel,
    bcmFieldDecapMplsTwoLabels,
    bcmFieldDecapMplsThreeLabels,
    bcmFieldDecapMim,
    bcmFieldDecapTrill,
    bcmFieldDecapVxlan,
    bcmFieldDecapCount
} bcm_field_decap_t;

/* Why a packet was sent through the pipeline again. */
typedef enum bcm_field_LoopbackType_e {
    bcmFieldLoopbackTypeAny = 0,
    bcmFieldLoopbackTypeNone,
    bcmFieldLoopbackTypeIpTunnel,
    bcmFieldLoopbackTypeMplsTunnel,
    bcmFieldLoopbackTypeMim,
    bcmFieldLoopbackTypeTrillNetwork,
    bcmFieldLoopbackTypeTrillAccess,
    bcmFieldLoopbackTypeTrunkMulticast,
    bcmFieldLoopbackTypeQcn,
    bcmFieldLoopbackTypeWlanDecap,
    bcmFieldLoopbackTypeWlanEncap,
    bcmFieldLoopbackTypeVxlan,
    bcmFieldLoopbackTypeRedirect,
    bcmFieldLoopbackTypeFlexible,
    bcmFieldLoopbackTypeCpuMasquerade, /* sent by the CPU as if it had come in on a port */
    bcmFieldLoopbackTypeCount
} bcm_field_LoopbackType_t;

/* What the forwarding decision looked at. */
typedef enum bcm_field_ForwardingType_e {
    bcmFieldForwardingTypeAny = 0,
    bcmFieldForwardingTypeL2,
    bcmFieldForwardingTypeL2Independent,    /* of whether the VLAN's own table was used */
    bcmFieldForwardingTypeL2Shared,
    bcmFieldForwardingTypeL2Vpn,
    bcmFieldForwardingTypeIp4Ucast,
    bcmFieldForwardingTypeIp4Mcast,
    bcmFieldForwardingTypeIp6Ucast,
    bcmFieldForwardingTypeIp6Mcast,
    bcmFieldForwardingTypeL3,
    bcmFieldForwardingTypeL3Direct,
    bcmFieldForwardingTypeMpls,
    bcmFieldForwardingTypeTrill,
    bcmFieldForwardingTypeFcoe,
    bcmFieldForwardingTypeRxReason,
    bcmFieldForwardingTypeTrafficManager,
    bcmFieldForwardingTypeCount
} bcm_field_ForwardingType_t;

/* The same, as the header that came from another chip says it. */
typedef enum bcm_field_HiGigForwardingType_e {
    bcmFieldHiGigForwardingTypeL2 = 0,
    bcmFieldHiGigForwardingTypeL2Vpn,
    bcmFieldHiGigForwardingTypeL3Ucast,
    bcmFieldHiGigForwardingTypeL3Mcast,
    bcmFieldHiGigForwardingTypeMpls,
    bcmFieldHiGigForwardingTypeTrill,
    bcmFieldHiGigForwardingTypeMim,
    bcmFieldHiGigForwardingTypeNiv,
    bcmFieldHiGigForwardingTypeControl,
    bcmFieldHiGigForwardingTypeCount
} bcm_field_HiGigForwardingType_t;

/* Header that an offset to the forwarding header counts from. */
typedef enum bcm_field_ForwardingBase_e {
    bcmFieldForwardingBasePacketStart = 0,
    bcmFieldForwardingBaseFirstEthernet,
    bcmFieldForwardingBaseFirstPayload,
    bcmFieldForwardingBaseSecondPayload,
    bcmFieldForwardingBaseCount
} bcm_field_ForwardingBase_t;

/* Kinds of packets by the headers that they begin with. */
typedef enum bcm_field_header_format_e {
    bcmFieldHeaderFormatUnknown = 0,
    bcmFieldHeaderFormatRaw,
    bcmFieldHeaderFormatEthernet,
    bcmFieldHeaderFormatEthernetVlan,
    bcmFieldHeaderFormatEthernetDoubleVlan,
    bcmFieldHeaderFormatEthernetLlc,
    bcmFieldHeaderFormatEthernetSnap,
    bcmFieldHeaderFormatMim,
    bcmFieldHeaderFormatVnTag,
    bcmFieldHeaderFormatETag,
    bcmFieldHeaderFormatFcoe,
    bcmFieldHeaderFormatTrill,
    bcmFieldHeaderFormatIp4,
    bcmFieldHeaderFormatIp6,
    bcmFieldHeaderFormatIp4InIp4,
    bcmFieldHeaderFormatIp6InIp4,
    bcmFieldHeaderFormatIp4InIp6,
    bcmFieldHeaderFormatIp6InIp6,
    bcmFieldHeaderFormatGre,
    bcmFieldHeaderFormatVxlan,
    bcmFieldHeaderFormatMpls,
    bcmFieldHeaderFormatMplsIp4,
    bcmFieldHeaderFormatMplsIp6,
    bcmFieldHeaderFormatMplsPseudowire,
    bcmFieldHeaderFormatMplsRaw,
    bcmFieldHeaderFormatHiGig,
    bcmFieldHeaderFormatTrafficManager,
    bcmFieldHeaderFormatTrafficManagerMirrored,
    bcmFieldHeaderFormatStacking,
    bcmFieldHeaderFormatOam,
    bcmFieldHeaderFormatCpu,
    bcmFieldHeaderFormatCount
} bcm_field_header_format_t;

/* OAM packets by protocol and function. */
typedef enum bcm_field_oam_type_e {
    bcmFieldOamTypeNone = 0,
    bcmFieldOamTypeEthernetCcm,
    bcmFieldOamTypeEthernetLoopback,
    bcmFieldOamTypeEthernetLinktrace,
    bcmFieldOamTypeEthernetAis,
    bcmFieldOamTypeEthernetLock,
    bcmFieldOamTypeEthernetTest,
    bcmFieldOamTypeEthernetLossMeasurement,
    bcmFieldOamTypeEthernetDelayMeasurement,
    bcmFieldOamTypeEthernetOther,
    bcmFieldOamTypeMplsTpCcm,
    bcmFieldOamTypeMplsTpLossMeasurement,
    bcmFieldOamTypeMplsTpDelayMeasurement,
    bcmFieldOamTypeMplsTpSection,
    bcmFieldOamTypeMplsTpOther,
    bcmFieldOamTypePseudowireControlWord,
    bcmFieldOamTypePseudowireRouterAlert,
    bcmFieldOamTypePseudowireTtl,
    bcmFieldOamTypePseudowireGal,
    bcmFieldOamTypeBfdIp4,
    bcmFieldOamTypeBfdIp6,
    bcmFieldOamTypeBfdMultihop,
    bcmFieldOamTypeBfdMicro,           /* of one link of a trunk */
    bcmFieldOamTypeBfdMpls,
    bcmFieldOamTypeBfdPseudowire,
    bcmFieldOamTypeCount
} bcm_field_oam_type_t;

/* Maintenance points for which OAM packets are dropped. */
typedef enum bcm_field_oam_drop_mep_type_e {
    bcmFieldOamDropMepTypeNone = 0,
    bcmFieldOamDropMepTypeUp,
    bcmFieldOamDropMepTypeDown,
    bcmFieldOamDropMepTypeUpAndDown,
    bcmFieldOamDropMepTypeCount
} bcm_field_oam_drop_mep_type_t;

/* What an OAM counter does with a packet. */
typedef enum bcm_field_oam_stat_action_type_e {
    bcmFieldOamStatActionNone = 0,
    bcmFieldOamStatActionCountTx,
    bcmFieldOamStatActionCountRx,
    bcmFieldOamStatActionSampleTx,     /* write the counter into the packet */
    bcmFieldOamStatActionSampleRx,
    bcmFieldOamStatActionStampTx,
    bcmFieldOamStatActionStampRx,
    bcmFieldOamStatActionCount
} bcm_field_oam_stat_action_type_t;

/* Control packets of MPLS OAM. */
typedef enum bcm_field_MplsOam_Control_pktType_e {
    bcmFieldMplsOamControlNone = 0,
    bcmFieldMplsOamControlAch,         /* associated channel header */
    bcmFieldMplsOamControlGal,
    bcmFieldMplsOamControlGalAndAch,
    bcmFieldMplsOamControlRouterAlert,
    bcmFieldMplsOamControlTtlExpired,
    bcmFieldMplsOamControlLspPing,
    bcmFieldMplsOamControlCount
} bcm_field_MplsOam_Control_pktType_t;

/* Headers that packets carry to an offload processor. */
typedef enum bcm_field_olp_header_type_e {
    bcmFieldOlpHeaderTypeNone = 0,
    bcmFieldOlpHeaderTypeEthernetOam,
    bcmFieldOlpHeaderTypeBfd,
    bcmFieldOlpHeaderTypeBfdOneHop,
    bcmFieldOlpHeaderTypeBfdMultihop,
    bcmFieldOlpHeaderTypeMplsOam,
    bcmFieldOlpHeaderTypePseudowireOam,
    bcmFieldOlpHeaderTypeSampled,
    bcmFieldOlpHeaderTypeCount
} bcm_field_olp_header_type_t;

/* Where the offset of a data qualifier counts from. */
typedef enum bcm_field_data_offset_base_e {
    bcmFieldDataOffsetBasePacketStart = 0,
    bcmFieldDataOffsetBaseL2Header,
    bcmFieldDataOffsetBaseInnerL2Header,
    bcmFieldDataOffsetBaseOuterL3Header,
    bcmFieldDataOffsetBaseInnerL3Header,
    bcmFieldDataOffsetBaseOuterL4Header,
    bcmFieldDataOffsetBaseInnerL4Header,
    bcmFieldDataOffsetBaseMplsHeader,
    bcmFieldDataOffsetBaseHiGigHeader,
    bcmFieldDataOffsetBaseFirstHeader,
    bcmFieldDataOffsetBaseForwardingHeader,
    bcmFieldDataOffsetBaseNextForwardingHeader,
    bcmFieldDataOffsetBaseTcpPayload,
    bcmFieldDataOffsetBaseUdpPayload,
    bcmFieldDataOffsetBaseIcmpPayload,
    bcmFieldDataOffsetBaseCount
} bcm_field_data_offset_base_t;

/* Tags of the packets for which a data qualifier holds. */
typedef enum bcm_field_data_vlan_tag_e {
    bcmFieldDataVlanTagAny = 0,
    bcmFieldDataVlanTagNone,
    bcmFieldDataVlanTagSingle,
    bcmFieldDataVlanTagDouble
} bcm_field_data_vlan_tag_t;

/* Kinds of hints to the layout of a group's table. */
typedef enum bcm_field_hint_type_e {
    bcmFieldHintTypeCompression = 0,   /* at most max_values different values will be asked for */
    bcmFieldHintTypeExtraction,        /* only bits start_bit to end_bit will be asked for */
    bcmFieldHintTypeGroupGrouping,     /* may share the table with groups of the same hint */
    bcmFieldHintTypeGroupSize,
    bcmFieldHintTypeCount
} bcm_field_hint_type_t;

/* Which class of a packet's source a port offers to bcm_field_qualify_MixedSrcClassId. */
typedef enum bcm_field_src_class_mode_e {
    bcmFieldSrcClassModeNone = 0,
    bcmFieldSrcClassModeField,
    bcmFieldSrcClassModeUdf,
    bcmFieldSrcClassModePort,
    bcmFieldSrcClassModeL2,
    bcmFieldSrcClassModeL3,
    bcmFieldSrcClassModeVPort,
    bcmFieldSrcClassModeL2AndL3,
    bcmFieldSrcClassModeCount
} bcm_field_src_class_mode_t;

/* Values of bcm_field_qualify_PacketRes: what the packet was found to be. */
typedef enum bcm_field_packet_res_e {
    bcmFieldPacketResUnknown = 0,
    bcmFieldPacketResControl,
    bcmFieldPacketResOam,
    bcmFieldPacketResBfd,
    bcmFieldPacketResBpdu,
    bcmFieldPacketResPtp,
    bcmFieldPacketResL2UcastKnown,
    bcmFieldPacketResL2UcastUnknown,
    bcmFieldPacketResL2McastKnown,
    bcmFieldPacketResL2McastUnknown,
    bcmFieldPacketResL2Broadcast,
    bcmFieldPacketResL3UcastKnown,
    bcmFieldPacketResL3UcastUnknown,
    bcmFieldPacketResL3McastKnown,
    bcmFieldPacketResL3McastUnknown,
    bcmFieldPacketResMplsKnown,
    bcmFieldPacketResMplsUnknown,
    bcmFieldPacketResCount
} bcm_field_packet_res_t;

/* Values of bcm_field_qualify_MHOpcode. */
typedef enum bcm_field_MHOpcode_e {
    bcmFieldMHOpcodeCpu = 0,
    bcmFieldMHOpcodeUnicast,
    bcmFieldMHOpcodeBroadcast,
    bcmFieldMHOpcodeL2Multicast,
    bcmFieldMHOpcodeL3Multicast,
    bcmFieldMHOpcodeCount
} bcm_field_MHOpcode_t;

#endif
