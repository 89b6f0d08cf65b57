/*
 * Ports. A port argument is a physical port number or a gport of a local or system port.
 * BCM_E_PORT: no such port on the unit.
 */
#ifndef BCM_PORT_H
#define BCM_PORT_H

#include <bcm/error.h>
#include <bcm/priority.h>
#include <bcm/stat_types.h>
#include <bcm/types.h>
#include <bcm/vlan.h>
#include <shared/port.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Abilities, interface, duplex, crossing and medium, as the chip level has them. */
typedef _shr_port_mode_t bcm_port_abil_t;
typedef _shr_port_ability_t bcm_port_ability_t;
typedef _shr_port_if_t bcm_port_if_t;
typedef _shr_port_duplex_t bcm_port_duplex_t;
typedef _shr_port_mdix_t bcm_port_mdix_t;
typedef _shr_port_mdix_status_t bcm_port_mdix_status_t;
typedef _shr_port_medium_t bcm_port_medium_t;
typedef _shr_phy_config_t bcm_phy_config_t;
typedef _shr_port_cable_diag_t bcm_port_cable_diag_t;

/* action_mask of bcm_port_info_t: the members to get or set. */
typedef enum bcm_port_attr_e {
    BCM_PORT_ATTR_ENABLE_MASK = 0x00000001,
    BCM_PORT_ATTR_LINKSTAT_MASK = 0x00000002,
    BCM_PORT_ATTR_AUTONEG_MASK = 0x00000004,
    BCM_PORT_ATTR_SPEED_MASK = 0x00000008,
    BCM_PORT_ATTR_DUPLEX_MASK = 0x00000010,
    BCM_PORT_ATTR_LINKSCAN_MASK = 0x00000020,
    BCM_PORT_ATTR_LEARN_MASK = 0x00000040,
    BCM_PORT_ATTR_DISCARD_MASK = 0x00000080,
    BCM_PORT_ATTR_VLANFILTER_MASK = 0x00000100,
    BCM_PORT_ATTR_UNTAG_PRI_MASK = 0x00000200,
    BCM_PORT_ATTR_UNTAG_VLAN_MASK = 0x00000400,
    BCM_PORT_ATTR_STP_STATE_MASK = 0x00000800,
    BCM_PORT_ATTR_PFM_MASK = 0x00001000,
    BCM_PORT_ATTR_LOOPBACK_MASK = 0x00002000,
    BCM_PORT_ATTR_PHY_MASTER_MASK = 0x00004000,
    BCM_PORT_ATTR_INTERFACE_MASK = 0x00008000,
    BCM_PORT_ATTR_PAUSE_TX_MASK = 0x00010000,
    BCM_PORT_ATTR_PAUSE_RX_MASK = 0x00020000,
    BCM_PORT_ATTR_PAUSE_MAC_MASK = 0x00040000,
    BCM_PORT_ATTR_ENCAP_MASK = 0x00080000,
    BCM_PORT_ATTR_LOCAL_ADVERT_MASK = 0x00100000,
    BCM_PORT_ATTR_REMOTE_ADVERT_MASK = 0x00200000,
    BCM_PORT_ATTR_RATE_MCAST_MASK = 0x00400000, /* mcast_limit and mcast_limit_enable, and so on */
    BCM_PORT_ATTR_RATE_BCAST_MASK = 0x00800000,
    BCM_PORT_ATTR_RATE_DLFBC_MASK = 0x01000000,
    BCM_PORT_ATTR_SPEED_MAX_MASK = 0x02000000,
    BCM_PORT_ATTR_ABILITY_MASK = 0x04000000,
    BCM_PORT_ATTR_FRAME_MAX_MASK = 0x08000000,
    BCM_PORT_ATTR_MDIX_MASK = 0x10000000,
    BCM_PORT_ATTR_MDIX_STATUS_MASK = 0x20000000,
    BCM_PORT_ATTR_MEDIUM_MASK = 0x40000000
} bcm_port_attr_t;

/* action_mask2 of bcm_port_info_t. */
#define BCM_PORT_ATTR2_PORT_ABILITY_MASK 0x00000001
#define BCM_PORT_ATTR2_FAULT_MASK 0x00000002

/* What happens on arrival of a source address that is unknown or known elsewhere. */
#define BCM_PORT_LEARN_ARL 0x00000001     /* enter it into the address table */
#define BCM_PORT_LEARN_CPU 0x00000002     /* tell the registered callbacks, without entering it */
#define BCM_PORT_LEARN_FWD 0x00000004     /* forward the packet */
#define BCM_PORT_LEARN_PENDING 0x00000008 /* enter it marked as pending */

/* bcm_port_frametype_t: encapsulations of a protocol. */
#define BCM_PORT_FRAMETYPE_ETHER2 0x00000001
#define BCM_PORT_FRAMETYPE_8023 0x00000002
#define BCM_PORT_FRAMETYPE_SNAP 0x00000004
#define BCM_PORT_FRAMETYPE_LLC 0x00000008

/* Packets that are dropped on arrival. */
typedef enum bcm_port_discard_e {
    BCM_PORT_DISCARD_NONE = 0,
    BCM_PORT_DISCARD_ALL = 1,
    BCM_PORT_DISCARD_UNTAG = 2,
    BCM_PORT_DISCARD_TAG = 3
} bcm_port_discard_t;

/* Double tagging: a port to the customers or to the provider's network. */
typedef enum bcm_port_dtag_mode_e {
    BCM_PORT_DTAG_MODE_NONE = 0x00000000,
    BCM_PORT_DTAG_MODE_INTERNAL = 0x00000001, /* to the network */
    BCM_PORT_DTAG_MODE_EXTERNAL = 0x00000002  /* to the customers */
} bcm_port_dtag_mode_t;

/* Loopback. */
typedef enum bcm_port_loopback_e {
    BCM_PORT_LOOPBACK_NONE = 0,
    BCM_PORT_LOOPBACK_MAC = 1,
    BCM_PORT_LOOPBACK_PHY = 2,
    BCM_PORT_LOOPBACK_PHY_REMOTE = 3 /* what the link partner sends goes back to it */
} bcm_port_loopback_t;

/* flags of bcm_port_vlan_member_set: directions in which packets of foreign VLANs are dropped. */
#define BCM_PORT_VLAN_MEMBER_INGRESS 0x00000001
#define BCM_PORT_VLAN_MEMBER_EGRESS 0x00000002

/* flags of bcm_port_flood_block_set: packets that do not go from one port to the other. */
#define BCM_PORT_FLOOD_BLOCK_BCAST 0x00000001
#define BCM_PORT_FLOOD_BLOCK_UNKNOWN_UCAST 0x00000002
#define BCM_PORT_FLOOD_BLOCK_UNKNOWN_MCAST 0x00000004
#define BCM_PORT_FLOOD_BLOCK_ALL 0x00000008

/* flags of bcm_port_fault_get: where the link is interrupted. */
#define BCM_PORT_FAULT_LOCAL 0x00000001
#define BCM_PORT_FAULT_REMOTE 0x00000002

/* flags of bcm_port_l3_modify_set and bcm_port_ipmc_modify_set: what routing leaves as it is. */
#define BCM_PORT_MODIFY_NO_SRCMAC 0x00000001
#define BCM_PORT_MODIFY_NO_DSTMAC 0x00000002
#define BCM_PORT_MODIFY_NO_TTL 0x00000004
#define BCM_PORT_MODIFY_NO_VLAN 0x00000008

/* flags of bcm_port_force_vlan_set: what every packet that leaves is given. */
#define BCM_PORT_FORCE_VLAN_ENABLE 0x00000001
#define BCM_PORT_FORCE_VLAN_UNTAG 0x00000002
#define BCM_PORT_FORCE_VLAN_PKT_PRIO 0x00000004

/* traffic_types of bcm_port_rate_egress_traffic_set. */
#define BCM_PORT_RATE_TRAFFIC_UCAST 0x00000001
#define BCM_PORT_RATE_TRAFFIC_MCAST 0x00000002
#define BCM_PORT_RATE_TRAFFIC_BCAST 0x00000004

/* flags of the bcm_port_phy_* register access. */
#define BCM_PORT_PHY_INTERNAL 0x00000001 /* the SerDes in the chip, not the PHY outside */
#define BCM_PORT_PHY_CLAUSE45 0x00000002
#define BCM_PORT_PHY_NOMAP 0x00000004    /* port is an address on the MDIO bus */

/* Array sizes of the time synchronisation records. */
#define BCM_PORT_PHY_TIMESYNC_MAX_MPLS_LABELS 10
#define BCM_PORT_PHY_TIMESYNC_PORT_IDENTITY_LEN 8

/* Settings of a port, values 0 and 1 unless said otherwise. */
typedef enum bcm_port_control_e {
    bcmPortControlBridge = 0,                       /* packets may leave by the port that they came in by */
    bcmPortControlL2Move = 1,                       /* BCM_PORT_LEARN_* for addresses known elsewhere */
    bcmPortControlL2Learn = 2,
    bcmPortControlIP4 = 3,                          /* routing, by protocol */
    bcmPortControlIP6 = 4,
    bcmPortControlIP4Mcast = 5,
    bcmPortControlIP6Mcast = 6,
    bcmPortControlIP4McastL2 = 7,                   /* IP multicast by the MAC address table */
    bcmPortControlIP6McastL2 = 8,
    bcmPortControlMpls = 9,
    bcmPortControlMim = 10,
    bcmPortControlTrill = 11,
    bcmPortControlL2Gre = 12,
    bcmPortControlVxlan = 13,
    bcmPortControlFcoeRoute = 14,
    bcmPortControlFcoeZoneCheck = 15,
    bcmPortControlL3Ingress = 16,
    bcmPortControlL3UrpfMode = 17,
    bcmPortControlL3UrpfDefaultRoute = 18,
    bcmPortControlDoNotCheckVlan = 19,
    bcmPortControlFilterLookup = 20,                /* rules of the field processor, by stage */
    bcmPortControlFilterIngress = 21,
    bcmPortControlFilterEgress = 22,
    bcmPortControlFilterExternal = 23,
    bcmPortControlFloodBlockL3 = 24,
    bcmPortControlPreservePacketPriority = 25,
    bcmPortControlTrustIncomingVlan = 26,
    bcmPortControlTrustOuterPri = 27,
    bcmPortControlTrustDscp = 28,
    bcmPortControlEgressVlanPriUsesPktPri = 29,
    bcmPortControlLowLatency = 30,
    bcmPortControlCutThrough = 31,
    bcmPortControlMmuDrain = 32,
    bcmPortControlMmuPauseIgnore = 33,
    bcmPortControlPassControlFrames = 34,
    bcmPortControlFrameSpacingStretch = 35,         /* 0..255 */
    bcmPortControlPreambleLength = 36,              /* bytes */
    bcmPortControlPadToSize = 37,                   /* bytes, 0 for none */
    bcmPortControlRxEnable = 38,
    bcmPortControlTxEnable = 39,
    bcmPortControlTxIgnore = 40,
    bcmPortControlRxFilter = 41,
    bcmPortControlLinkDownDrain = 42,
    bcmPortControlLinkFaultLocalEnable = 43,
    bcmPortControlLinkFaultRemoteEnable = 44,
    bcmPortControlLinkFaultRemoteForce = 45,
    bcmPortControlLinkDebounceTime = 46,            /* microseconds */
    bcmPortControlRemoteFaultTx = 47,
    bcmPortControlSuppressUnknownControl = 48,
    bcmPortControlPFCRefreshTime = 49,              /* bit times */
    bcmPortControlPFCXOffTime = 50,
    bcmPortControlPFCDestMacOui = 51,
    bcmPortControlPFCDestMacNonOui = 52,
    bcmPortControlPFCEthertype = 53,
    bcmPortControlPFCOpcode = 54,
    bcmPortControlPFCClasses = 55,                  /* 0..16 */
    bcmPortControlPFCPassFrames = 56,
    bcmPortControlPFCReceive = 57,
    bcmPortControlPFCTransmit = 58,
    bcmPortControlPFCRxPassUp = 59,
    bcmPortControlPFCForceRxXOff = 60,
    bcmPortControlLLFCReceive = 61,                 /* link-level flow control */
    bcmPortControlLLFCTransmit = 62,
    bcmPortControlLLFCCrc = 63,
    bcmPortControlLLFCRefreshTime = 64,
    bcmPortControlLLFCXOffTime = 65,
    bcmPortControlFlowControlOutOfBand = 66,
    bcmPortControlEEEEnable = 67,                   /* energy-efficient Ethernet */
    bcmPortControlEEETransmitWakeTime = 68,         /* microseconds */
    bcmPortControlEEEReceiveWakeTime = 69,
    bcmPortControlEEETransmitSleepTime = 70,
    bcmPortControlEEETransmitQuietTime = 71,
    bcmPortControlEEETransmitRefreshTime = 72,
    bcmPortControlEEETransmitIdleTime = 73,
    bcmPortControlEEELinkActiveDuration = 74,
    bcmPortControlEEELatencyMode = 75,
    bcmPortControlEEEStatisticsClear = 76,
    bcmPortControlEEESymmetricMode = 77,
    bcmPortControlStatOversize = 78,                /* bytes from which a packet counts as too long */
    bcmPortControlStatRxLowerLength = 79,
    bcmPortControlSampleIngressDest = 80,
    bcmPortControlSampleEgressDest = 81,
    bcmPortControlMirrorEgressTrueEnable = 82,
    bcmPortControlEgressMirrorFilter = 83,
    bcmPortControlOamEnable = 84,
    bcmPortControlOamDefaultProfile = 85,
    bcmPortControlOamLookupWithDoubleTag = 86,
    bcmPortControlOamLossMeasurementUniquePri = 87,
    bcmPortControlBfdEnable = 88,
    bcmPortControlTimesyncEnable = 89,
    bcmPortControlTimestampEnable = 90,
    bcmPortControlTimestampTransmit = 91,
    bcmPortControlTimestampTxFifoRead = 92,
    bcmPortControlPrbsPolynomial = 93,              /* bcm_port_prbs_polynomial_t */
    bcmPortControlPrbsTxInvertData = 94,
    bcmPortControlPrbsTxEnable = 95,
    bcmPortControlPrbsRxEnable = 96,
    bcmPortControlPrbsRxStatus = 97,                /* errors since read last, -1 for no lock */
    bcmPortControlPrbsForceTxError = 98,
    bcmPortControlSerdesTuneMarginMode = 99,
    bcmPortControlSerdesDriverTune = 100,
    bcmPortControlSerdesPowerDown = 101,
    bcmPortControlStackEnable = 102,
    bcmPortControlModuleLoopback = 103,
    bcmPortControlUseInnerPri = 104,
    bcmPortControlVlanTranslateKeyShared = 105,
    bcmPortControlVlanDetectEnable = 106,
    bcmPortControlVlanVpUntagMemberVp = 107,
    bcmPortControlSplitHorizonGroup = 108,
    bcmPortControlProtectedGroup = 109,
    bcmPortControlPrivateVlanEnable = 110,
    bcmPortControlPvlanIsolated = 111,
    bcmPortControlEgressFilterDisable = 112,
    bcmPortControlEgressBlockUnknownVlan = 113,
    bcmPortControlDiscardMacSaAction = 114,
    bcmPortControlInvalidVlanAction = 115,
    bcmPortControlLearnLimitAction = 116,
    bcmPortControlTcpSynDrop = 117,
    bcmPortControlArpDhcpSnoop = 118,
    bcmPortControlIgmpSnoop = 119,
    bcmPortControlMldSnoop = 120,
    bcmPortControlMmrpTrap = 121,
    bcmPortControlSrpTrap = 122,
    bcmPortControlNivType = 123,
    bcmPortControlNivVifId = 124,
    bcmPortControlNivNameSpace = 125,
    bcmPortControlNivUplink = 126,
    bcmPortControlNivRpfCheckEnable = 127,
    bcmPortControlExtenderType = 128,
    bcmPortControlExtenderEnable = 129,
    bcmPortControlExtenderRpfCheckEnable = 130,
    bcmPortControlMacInMacTagType = 131,
    bcmPortControlTrunkLoadBalancingSeed = 132,
    bcmPortControlTrunkHashConcat = 133,
    bcmPortControlECMPHashSeed = 134,
    bcmPortControlSystemPortEnable = 135,
    bcmPortControlPolicerGroup = 136,
    bcmPortControlShaperEnable = 137,
    bcmPortControlOverheadBytes = 138,              /* added to every packet's length when shaping */
    bcmPortControlFecEnable = 139,
    bcmPortControlFecErrorDetectEnable = 140,
    bcmPortControlLanes = 141,
    bcmPortControlPCS = 142,                        /* bcm_port_pcs_t */
    bcmPortControlRxLos = 143,
    bcmPortControlQueueDropEnable = 144,
    bcmPortControlWREDStatEnable = 145,
    bcmPortControlCount = 146
} bcm_port_control_t;

/* Time stamping in the PHY: settings beside those of bcm_port_phy_timesync_config_t. */
typedef enum bcm_port_control_phy_timesync_e {
    bcmPortControlPhyTimesyncCaptureTimestamp = 0,
    bcmPortControlPhyTimesyncHeartbeatTimestamp = 1,
    bcmPortControlPhyTimesyncNCOAddend = 2,
    bcmPortControlPhyTimesyncFrameSyncMode = 3,
    bcmPortControlPhyTimesyncLocalTime = 4,
    bcmPortControlPhyTimesyncLoadControl = 5,
    bcmPortControlPhyTimesyncInterrupt = 6,
    bcmPortControlPhyTimesyncInterruptMask = 7,
    bcmPortControlPhyTimesyncTxTimestampOffset = 8,
    bcmPortControlPhyTimesyncRxTimestampOffset = 9,
    bcmPortControlPhyTimesyncTxSOP = 10,
    bcmPortControlPhyTimesyncRxSOP = 11,
    bcmPortControlPhyTimesyncTxEOP = 12,
    bcmPortControlPhyTimesyncRxEOP = 13,
    bcmPortControlPhyTimesyncTimeCodeSelect = 14,
    bcmPortControlPhyTimesyncDPLLRefPhase = 15,
    bcmPortControlPhyTimesyncDPLLRefPhaseDelta = 16,
    bcmPortControlPhyTimesyncDPLLLoopFilter = 17,
    bcmPortControlPhyTimesyncCount = 18
} bcm_port_control_phy_timesync_t;

/* Delay measurement in the PHY. */
typedef enum bcm_port_control_phy_oam_e {
    bcmPortControlPhyOamDmTxEthertype = 0,
    bcmPortControlPhyOamDmRxEthertype = 1,
    bcmPortControlPhyOamDmTxPortMacAddressIndex = 2,
    bcmPortControlPhyOamDmRxPortMacAddressIndex = 3,
    bcmPortControlPhyOamDmMacAddress1 = 4,
    bcmPortControlPhyOamDmMacAddress2 = 5,
    bcmPortControlPhyOamDmMacAddress3 = 6,
    bcmPortControlPhyOamCount = 7
} bcm_port_control_phy_oam_t;

/* Settings of the PHY. */
typedef enum bcm_port_phy_control_e {
    bcmPortPhyControlWanMode = 0,
    bcmPortPhyControlPreemphasis = 1,
    bcmPortPhyControlDriverCurrent = 2,
    bcmPortPhyControlDriverPostCursor = 3,
    bcmPortPhyControlEqualizerBoost = 4,
    bcmPortPhyControlTxFirPre = 5,
    bcmPortPhyControlTxFirMain = 6,
    bcmPortPhyControlTxFirPost = 7,
    bcmPortPhyControlTxSwing = 8,
    bcmPortPhyControlTxPolarity = 9,
    bcmPortPhyControlRxPolarity = 10,
    bcmPortPhyControlTxLaneMap = 11,
    bcmPortPhyControlRxLaneMap = 12,
    bcmPortPhyControlTxReset = 13,
    bcmPortPhyControlRxReset = 14,
    bcmPortPhyControlTxLaneSquelch = 15,
    bcmPortPhyControlRxLaneSquelch = 16,
    bcmPortPhyControlRxPeakFilter = 17,
    bcmPortPhyControlRxLowFreqPeakFilter = 18,
    bcmPortPhyControlRxVga = 19,
    bcmPortPhyControlRxDfeTap1 = 20,
    bcmPortPhyControlRxDfeTap2 = 21,
    bcmPortPhyControlRxDfeTap3 = 22,
    bcmPortPhyControlRxDfeTap4 = 23,
    bcmPortPhyControlRxDfeTap5 = 24,
    bcmPortPhyControlRxSignalDetect = 25,
    bcmPortPhyControlRxSeqDone = 26,
    bcmPortPhyControlRxPpm = 27,
    bcmPortPhyControlPrbsPolynomial = 28,
    bcmPortPhyControlPrbsTxInvertData = 29,
    bcmPortPhyControlPrbsTxEnable = 30,
    bcmPortPhyControlPrbsRxEnable = 31,
    bcmPortPhyControlPrbsRxStatus = 32,
    bcmPortPhyControlLoopbackPmd = 33,
    bcmPortPhyControlLoopbackRemote = 34,
    bcmPortPhyControlCl72 = 35,
    bcmPortPhyControlCl72Status = 36,
    bcmPortPhyControlForwardErrorCorrection = 37,
    bcmPortPhyControlScrambler = 38,
    bcmPortPhyControlOverCurrent = 39,
    bcmPortPhyControlPower = 40,
    bcmPortPhyControlPowerAutoSleepTime = 41,
    bcmPortPhyControlPowerAutoWakeTime = 42,
    bcmPortPhyControlLedMode = 43,
    bcmPortPhyControlLedBlinkRate = 44,
    bcmPortPhyControlCableDiagMode = 45,
    bcmPortPhyControlLongreachSpeed = 46,
    bcmPortPhyControlLongreachPairs = 47,
    bcmPortPhyControlLongreachActive = 48,
    bcmPortPhyControlLongreachEnable = 49,
    bcmPortPhyControlEee = 50,
    bcmPortPhyControlEeeAuto = 51,
    bcmPortPhyControlEeeAutoLatency = 52,
    bcmPortPhyControlEeeAutoIdleThreshold = 53,
    bcmPortPhyControlClockEnable = 54,
    bcmPortPhyControlClockSource = 55,
    bcmPortPhyControlClockFrequency = 56,
    bcmPortPhyControlPrimaryRecoveredClock = 57,
    bcmPortPhyControlBackupRecoveredClock = 58,
    bcmPortPhyControlFirmwareMode = 59,
    bcmPortPhyControlFirmwareDfeEnable = 60,
    bcmPortPhyControlMediaType = 61,
    bcmPortPhyControlLinkTraining = 62,
    bcmPortPhyControlLinkTrainingDone = 63,
    bcmPortPhyControlFailover = 64,
    bcmPortPhyControlDump = 65,
    bcmPortPhyControlCount = 66
} bcm_port_phy_control_t;

/* Classes that a port can be given, by the lookup in which the class id is used. */
typedef enum bcm_port_class_e {
    bcmPortClassFieldLookup = 0,
    bcmPortClassFieldIngress = 1,
    bcmPortClassFieldEgress = 2,
    bcmPortClassFieldIngressPacketProcessing = 3,
    bcmPortClassFieldEgressPacketProcessing = 4,
    bcmPortClassFieldIngressTrafficManagement = 5,
    bcmPortClassFieldIngressVlanTranslation = 6,
    bcmPortClassFieldIngressSystemPort = 7,
    bcmPortClassFieldEgressQosMap = 8,
    bcmPortClassId = 9,
    bcmPortClassIngress = 10,
    bcmPortClassEgress = 11,
    bcmPortClassVlanTranslateEgress = 12,
    bcmPortClassVlanTranslateIngress = 13,
    bcmPortClassTpid = 14,
    bcmPortClassPolicer = 15,
    bcmPortClassQos = 16,
    bcmPortClassOuterVlanDomain = 17,
    bcmPortClassTrafficIngress = 18,
    bcmPortClassProgramEditor = 19,
    bcmPortClassIpv4TunnelTermination = 20,
    bcmPortClassForwardIngress = 21,
    bcmPortClassEgressMirrorFilter = 22,
    bcmPortClassOamIngress = 23,
    bcmPortClassOamEgress = 24,
    bcmPortClassFabricIngress = 25,
    bcmPortClassCount = 26
} bcm_port_class_t;

/* Counters of a port. */
typedef enum bcm_port_stat_e {
    bcmPortStatIngressPackets = 0,
    bcmPortStatIngressBytes = 1,
    bcmPortStatEgressPackets = 2,
    bcmPortStatEgressBytes = 3,
    bcmPortStatMulticastPackets = 4,
    bcmPortStatIngressUnicastPackets = 5,
    bcmPortStatIngressMulticastPackets = 6,
    bcmPortStatIngressBroadcastPackets = 7,
    bcmPortStatIngressUnknownUnicastPackets = 8,
    bcmPortStatIngressDropPackets = 9,
    bcmPortStatIngressDropBytes = 10,
    bcmPortStatIngressErrorPackets = 11,
    bcmPortStatEgressUnicastPackets = 12,
    bcmPortStatEgressMulticastPackets = 13,
    bcmPortStatEgressBroadcastPackets = 14,
    bcmPortStatEgressDropPackets = 15,
    bcmPortStatEgressDropBytes = 16,
    bcmPortStatEgressGreenPackets = 17,
    bcmPortStatEgressYellowPackets = 18,
    bcmPortStatEgressRedPackets = 19,
    bcmPortStatIngressGreenPackets = 20,
    bcmPortStatIngressYellowPackets = 21,
    bcmPortStatIngressRedPackets = 22,
    bcmPortStatCount = 23
} bcm_port_stat_t;

/* Framing of packets on the wire. */
typedef enum bcm_port_encap_e {
    bcmPortEncapIeee = 0,
    bcmPortEncapHigig = 1,
    bcmPortEncapHigig2 = 2,
    bcmPortEncapHigigOverEthernet = 3,
    bcmPortEncapInterlaken = 4,
    bcmPortEncapSystemPacketInterface = 5,
    bcmPortEncapFabric = 6,
    bcmPortEncapCpu = 7,
    bcmPortEncapCount = 8
} bcm_port_encap_t;

/* What identifies packets of a gport on its port. */
typedef enum bcm_port_match_e {
    bcmPortMatchInvalid = 0,
    bcmPortMatchPort = 1,
    bcmPortMatchPortVlan = 2,
    bcmPortMatchPortInnerVlan = 3,
    bcmPortMatchPortVlanStacked = 4,
    bcmPortMatchPortVlanRange = 5,
    bcmPortMatchPortVlanPri = 6,
    bcmPortMatchPortCvlan = 7,
    bcmPortMatchPortCvlanPri = 8,
    bcmPortMatchPortUntagged = 9,
    bcmPortMatchPortPriTagged = 10,
    bcmPortMatchVlan = 11,
    bcmPortMatchInnerVlan = 12,
    bcmPortMatchVlanPri = 13,
    bcmPortMatchLabel = 14,
    bcmPortMatchLabelPort = 15,
    bcmPortMatchTunnelVlanSrcMac = 16,
    bcmPortMatchPonTunnel = 17,
    bcmPortMatchPonTunnelVlan = 18,
    bcmPortMatchPonTunnelVlanStacked = 19,
    bcmPortMatchPonTunnelCvlan = 20,
    bcmPortMatchPonTunnelEthertype = 21,
    bcmPortMatchPortEthertype = 22,
    bcmPortMatchExtendedPortVid = 23,
    bcmPortMatchNivPortVif = 24,
    bcmPortMatchVpn = 25,
    bcmPortMatchCount = 26
} bcm_port_match_t;

/* flags of bcm_port_match_info_t. */
typedef enum bcm_port_match_flag_e {
    bcmPortMatchFlagEgressOnly = 0x1,
    bcmPortMatchFlagIngressOnly = 0x2,
    bcmPortMatchFlagServiceVlanTag = 0x4,
    bcmPortMatchFlagSrcMacLearnDisable = 0x8
} bcm_port_match_flag_t;

/* When the DSCP of a packet decides about its priority. */
typedef enum bcm_port_dscp_map_mode_e {
    bcmPortDscpMapNone = 0,
    bcmPortDscpMapZero = 1,              /* only if it is 0 */
    bcmPortDscpMapAll = 2
} bcm_port_dscp_map_mode_t;

/* Forwarding of packets without known destination address. */
typedef enum bcm_port_pfm_e {
    bcmPortPfmForwardAll = 0,
    bcmPortPfmForwardUnregistered = 1,
    bcmPortPfmForwardRegistered = 2
} bcm_port_pfm_t;

/* flags of bcm_port_add and bcm_port_get: what a new port is for. */
typedef enum bcm_port_add_flag_e {
    bcmPortAddEgressInterleaving = 0x1,
    bcmPortAddTdm = 0x2,
    bcmPortAddStack = 0x4,
    bcmPortAddRecycleMirror = 0x8,
    bcmPortAddChannelized = 0x10,
    bcmPortAddInitializeOnly = 0x20
} bcm_port_add_flag_t;

/* flags of bcm_port_resource_t. */
typedef enum bcm_port_resource_flag_e {
    bcmPortResourceInactive = 0x1,       /* resources are kept, the port is not started */
    bcmPortResourceOversubscribed = 0x2
} bcm_port_resource_flag_t;

/* flags of bcm_port_internal_get. */
typedef enum bcm_port_internal_flag_e {
    bcmPortInternalLogical = 0x1,
    bcmPortInternalEgress = 0x2,
    bcmPortInternalRecycle = 0x4
} bcm_port_internal_flag_t;

/* flags of bcm_port_force_forward_mode_set. */
typedef enum bcm_port_force_forward_flag_e {
    bcmPortForceForwardStackingTransit = 0x1,
    bcmPortForceForwardKeepVlan = 0x2,
    bcmPortForceForwardEgressTdm = 0x4
} bcm_port_force_forward_flag_t;

/* flags of bcm_port_congestion_config_t: what the congestion message carries. */
typedef enum bcm_port_congestion_flag_e {
    bcmPortCongestionConfigTx = 0x1,
    bcmPortCongestionConfigRx = 0x2,
    bcmPortCongestionConfigDestMac = 0x4,
    bcmPortCongestionConfigDestGroup = 0x8
} bcm_port_congestion_flag_t;

/* flags of bcm_port_tpid_class_t: packets to which a class applies. */
typedef enum bcm_port_tpid_class_flag_e {
    bcmPortTpidClassIngressOnly = 0x1,
    bcmPortTpidClassEgressOnly = 0x2,
    bcmPortTpidClassOuterPri = 0x4,
    bcmPortTpidClassInnerPri = 0x8,
    bcmPortTpidClassOuterNotPri = 0x10,
    bcmPortTpidClassInnerNotPri = 0x20,
    bcmPortTpidClassDiscard = 0x40
} bcm_port_tpid_class_flag_t;

/* What a mapping of the port extender is looked up by. */
typedef enum bcm_port_extender_mapping_type_e {
    bcmPortExtenderMappingTypePonTunnel = 0,
    bcmPortExtenderMappingTypePonTunnelIngressOnly = 1,
    bcmPortExtenderMappingTypePortVlan = 2,
    bcmPortExtenderMappingTypeUserDefineValue = 3
} bcm_port_extender_mapping_type_t;

/* Pseudo-random test sequences. */
typedef enum bcm_port_prbs_polynomial_e {
    bcmPortPrbsPolynomial7 = 0,          /* X7 + X6 + 1, and so on by degree */
    bcmPortPrbsPolynomial9 = 1,
    bcmPortPrbsPolynomial11 = 2,
    bcmPortPrbsPolynomial15 = 3,
    bcmPortPrbsPolynomial23 = 4,
    bcmPortPrbsPolynomial31 = 5
} bcm_port_prbs_polynomial_t;

/* Line codes. */
typedef enum bcm_port_pcs_e {
    bcmPortPcs8B10B = 0,
    bcmPortPcs64B66BFec = 1,
    bcmPortPcs64B66BBec = 2,
    bcmPortPcs64B66BKr = 3,
    bcmPortPcs64B66BRs = 4,
    bcmPortPcsCount = 5
} bcm_port_pcs_t;

/* flags of bcm_port_timesync_config_t: messages to which it applies. */
typedef enum bcm_port_timesync_flag_e {
    bcmPortTimesyncDefault = 0x1,
    bcmPortTimesyncOneStep = 0x2,
    bcmPortTimesyncTwoStep = 0x4,
    bcmPortTimesyncTagEnable = 0x8,
    bcmPortTimesyncSourceMacCheck = 0x10,
    bcmPortTimesyncMplsLabelCheck = 0x20,
    bcmPortTimesyncTimestampHeader = 0x40
} bcm_port_timesync_flag_t;

/* pkt_drop and pkt_tocpu of bcm_port_timesync_config_t: kinds of messages. */
typedef enum bcm_port_timesync_pkt_e {
    bcmPortTimesyncPktSync = 0x1,
    bcmPortTimesyncPktDelayReq = 0x2,
    bcmPortTimesyncPktPdelayReq = 0x4,
    bcmPortTimesyncPktPdelayResp = 0x8,
    bcmPortTimesyncPktFollowUp = 0x10,
    bcmPortTimesyncPktDelayResp = 0x20,
    bcmPortTimesyncPktPdelayRespFollowUp = 0x40,
    bcmPortTimesyncPktAnnounce = 0x80,
    bcmPortTimesyncPktSignalling = 0x100,
    bcmPortTimesyncPktManagement = 0x200
} bcm_port_timesync_pkt_t;

/* flags of bcm_port_phy_timesync_config_t. */
typedef enum bcm_port_phy_timesync_flag_e {
    bcmPortPhyTimesyncEnable = 0x1,
    bcmPortPhyTimesyncCaptureTimestampEnable = 0x2,
    bcmPortPhyTimesyncHeartbeatTimestampEnable = 0x4,
    bcmPortPhyTimesyncRxCrcEnable = 0x8,
    bcmPortPhyTimesync8021AsEnable = 0x10,
    bcmPortPhyTimesyncL2Enable = 0x20,
    bcmPortPhyTimesyncIp4Enable = 0x40,
    bcmPortPhyTimesyncIp6Enable = 0x80,
    bcmPortPhyTimesyncMplsEnable = 0x100,
    bcmPortPhyTimesyncClockSourceExternal = 0x200,
    bcmPortPhyTimesyncOneStepTimestamp = 0x400
} bcm_port_phy_timesync_flag_t;

/* capabilities and validity_mask of bcm_port_phy_timesync_config_t: its members. */
typedef enum bcm_port_phy_timesync_valid_e {
    bcmPortPhyTimesyncValidFlags = 0x1,
    bcmPortPhyTimesyncValidTpids = 0x2,
    bcmPortPhyTimesyncValidTimerAdjust = 0x4,
    bcmPortPhyTimesyncValidInbandControl = 0x8,
    bcmPortPhyTimesyncValidGmode = 0x10,
    bcmPortPhyTimesyncValidFramesync = 0x20,
    bcmPortPhyTimesyncValidSyncout = 0x40,
    bcmPortPhyTimesyncValidTimestampDivider = 0x80,
    bcmPortPhyTimesyncValidOriginalTimecode = 0x100,
    bcmPortPhyTimesyncValidTimestampOffsets = 0x200,
    bcmPortPhyTimesyncValidLinkDelay = 0x400,
    bcmPortPhyTimesyncValidMessageModes = 0x800,
    bcmPortPhyTimesyncValidMplsControl = 0x1000,
    bcmPortPhyTimesyncValidSyncFrequency = 0x2000,
    bcmPortPhyTimesyncValidDpll = 0x4000
} bcm_port_phy_timesync_valid_t;

/* Whose frequency the clock of the PHY follows. */
typedef enum bcm_port_phy_timesync_global_mode_e {
    bcmPortPhyTimesyncModeFree = 0,
    bcmPortPhyTimesyncModeSyncin = 1,
    bcmPortPhyTimesyncModeCpu = 2
} bcm_port_phy_timesync_global_mode_t;

/* What makes a frame synchronisation event. */
typedef enum bcm_port_phy_timesync_framesync_mode_e {
    bcmPortPhyTimesyncFramesyncNone = 0,
    bcmPortPhyTimesyncFramesyncSyncin0 = 1,
    bcmPortPhyTimesyncFramesyncSyncin1 = 2,
    bcmPortPhyTimesyncFramesyncSyncout = 3,
    bcmPortPhyTimesyncFramesyncCpu = 4
} bcm_port_phy_timesync_framesync_mode_t;

/* Shape of the synchronisation output. */
typedef enum bcm_port_phy_timesync_syncout_mode_e {
    bcmPortPhyTimesyncSyncoutDisable = 0,
    bcmPortPhyTimesyncSyncoutOneTime = 1,
    bcmPortPhyTimesyncSyncoutPulseTrain = 2,
    bcmPortPhyTimesyncSyncoutPulseTrainWithSync = 3
} bcm_port_phy_timesync_syncout_mode_t;

/* When a new local time takes effect. */
typedef enum bcm_port_phy_timesync_timer_mode_e {
    bcmPortPhyTimesyncTimerModeNone = 0,
    bcmPortPhyTimesyncTimerModeDefault = 1,
    bcmPortPhyTimesyncTimerMode32bit = 2,
    bcmPortPhyTimesyncTimerMode48bit = 3,
    bcmPortPhyTimesyncTimerMode80bit = 4
} bcm_port_phy_timesync_timer_mode_t;

/* What is done to timed messages that leave, and to those that arrive. */
typedef enum bcm_port_phy_timesync_event_message_egress_mode_e {
    bcmPortPhyTimesyncEventMessageEgressModeNone = 0,
    bcmPortPhyTimesyncEventMessageEgressModeUpdateCorrectionField = 1,
    bcmPortPhyTimesyncEventMessageEgressModeReplaceCorrectionFieldOrigin = 2,
    bcmPortPhyTimesyncEventMessageEgressModeCaptureTimestamp = 3
} bcm_port_phy_timesync_event_message_egress_mode_t;

typedef enum bcm_port_phy_timesync_event_message_ingress_mode_e {
    bcmPortPhyTimesyncEventMessageIngressModeNone = 0,
    bcmPortPhyTimesyncEventMessageIngressModeUpdateCorrectionField = 1,
    bcmPortPhyTimesyncEventMessageIngressModeInsertTimestamp = 2,
    bcmPortPhyTimesyncEventMessageIngressModeInsertDelaytime = 3
} bcm_port_phy_timesync_event_message_ingress_mode_t;

/* What a captured time stamp belongs to. */
typedef enum bcm_port_phy_timesync_msg_e {
    bcmPortPhyTimesyncMsgSync = 0,
    bcmPortPhyTimesyncMsgDelayRequest = 1,
    bcmPortPhyTimesyncMsgPdelayRequest = 2,
    bcmPortPhyTimesyncMsgPdelayResponse = 3
} bcm_port_phy_timesync_msg_t;

typedef enum bcm_port_phy_timesync_prot_e {
    bcmPortPhyTimesyncProtLayer2 = 0,
    bcmPortPhyTimesyncProtIpv4Udp = 1,
    bcmPortPhyTimesyncProtIpv6Udp = 2
} bcm_port_phy_timesync_prot_t;

typedef enum bcm_port_phy_timesync_dir_e {
    bcmPortPhyTimesyncDirEgress = 0,
    bcmPortPhyTimesyncDirIngress = 1
} bcm_port_phy_timesync_dir_t;

/* Standards of delay measurement, by version of the recommendation. */
typedef enum bcm_port_config_phy_oam_dm_mode_e {
    bcmPortConfigPhyOamDmModeY1731 = 0,
    bcmPortConfigPhyOamDmModeBhh = 1,
    bcmPortConfigPhyOamDmModeIetf = 2
} bcm_port_config_phy_oam_dm_mode_t;

/* Ports of a unit by kind. */
typedef struct bcm_port_config_s {
    bcm_pbmp_t fe;             /* 10/100 Mbit/s */
    bcm_pbmp_t ge;
    bcm_pbmp_t xe;             /* 10 Gbit/s */
    bcm_pbmp_t ce;             /* 100 Gbit/s */
    bcm_pbmp_t e;              /* all Ethernet */
    bcm_pbmp_t hg;             /* stacking */
    bcm_pbmp_t sci;            /* control interfaces to the fabric */
    bcm_pbmp_t sfi;            /* data interfaces to the fabric */
    bcm_pbmp_t spi;
    bcm_pbmp_t spi_subport;
    bcm_pbmp_t port;           /* all front ports */
    bcm_pbmp_t cpu;
    bcm_pbmp_t all;
    bcm_pbmp_t stack_int;      /* stacking within the box, and to other boxes */
    bcm_pbmp_t stack_ext;
    bcm_pbmp_t tdm;
    bcm_pbmp_t pon;
    bcm_pbmp_t llid;
    bcm_pbmp_t il;             /* Interlaken */
    bcm_pbmp_t xl;             /* 40 Gbit/s */
    bcm_pbmp_t rcy;            /* recycling */
    bcm_pbmp_t per_pipe[_SHR_SWITCH_MAX_PIPES];
    bcm_pbmp_t nif;            /* network interfaces */
    bcm_pbmp_t control;
} bcm_port_config_t;

/* Destination of everything that arrives on a port. */
typedef struct bcm_port_dest_info_s {
    uint32 flags;
    bcm_gport_t gport;
    int priority;              /* traffic class, -1 to leave it */
    int dp;                    /* drop precedence, -1 to leave it */
} bcm_port_dest_info_t;

/* How management packets are told from others. */
typedef struct bcm_port_management_packet_config_s {
    uint32 flags;
    bcm_ethertype_t ethertype;
    bcm_mac_t dest_mac;
} bcm_port_management_packet_config_t;

/* Lanes behind a port: as set, and as found. */
typedef struct bcm_port_interface_config_s {
    uint32 flags;
    uint32 channel;
    uint32 phy_port;
    bcm_port_if_t interface;
} bcm_port_interface_config_t;

typedef struct bcm_port_interface_info_s {
    uint32 phy_port;
    bcm_port_if_t interface;
    uint32 num_lanes;
    bcm_pbmp_t phy_pbmp;
    int interface_id;
} bcm_port_interface_info_t;

/* A port within its interface and the traffic manager. */
typedef struct bcm_port_mapping_info_s {
    uint32 channel;
    bcm_core_t core;
    bcm_port_t tm_port;
    int base_q_pair;
    int num_priorities;
} bcm_port_mapping_info_t;

typedef struct bcm_port_link_state_s {
    uint32 status;             /* 1 up */
    uint32 latch_down;         /* 1 if it was down since read last */
} bcm_port_link_state_t;

/* Framing of packets, and the header of those that are tunnelled. */
typedef struct bcm_port_encap_config_s {
    bcm_port_encap_t encap;
    bcm_ethertype_t oui_ethertype;
    bcm_ethertype_t higig_ethertype;
    uint32 oui;                /* 24 bits */
    uint16 hgoe_reserved;
    bcm_mac_t dst_mac;
    bcm_mac_t src_mac;
    bcm_tpid_t tpid;
    bcm_vlan_t vlan;
    uint8 ttl;
    uint8 tos;
    bcm_ip_t src_addr;
    bcm_ip_t dst_addr;
} bcm_port_encap_config_t;

/* Packets with given outer and inner TPIDs, and what is done to them. */
typedef struct bcm_port_tpid_class_s {
    uint32 flags;              /* bcmPortTpidClass* */
    bcm_gport_t port;
    int tpid1;                 /* outer, -1 for any, -2 for none */
    int tpid2;                 /* inner */
    uint32 tag_format_class_id;
    int vlan_translation_action_id;
    int vlan_translation_qos_map_id;
} bcm_port_tpid_class_t;

/* Most settings of a port together. */
typedef struct bcm_port_info_s {
    uint32 action_mask;        /* BCM_PORT_ATTR_* */
    uint32 action_mask2;       /* BCM_PORT_ATTR2_* */
    int enable;
    int linkstatus;
    int autoneg;
    int speed;                 /* Mbit/s */
    int duplex;
    int linkscan;
    uint32 learn;              /* BCM_PORT_LEARN_* */
    int discard;               /* BCM_PORT_DISCARD_* */
    uint32 vlanfilter;         /* BCM_PORT_VLAN_MEMBER_* */
    int untagged_priority;
    bcm_vlan_t untagged_vlan;
    int stp_state;
    int pfm;                   /* bcmPortPfm* */
    int loopback;              /* BCM_PORT_LOOPBACK_* */
    int phy_master;
    bcm_port_if_t interface;
    int pause_tx;
    int pause_rx;
    int encap_mode;            /* bcmPortEncap* */
    bcm_mac_t pause_mac;
    bcm_port_abil_t local_advert;
    bcm_port_ability_t local_ability;
    int remote_advert_valid;   /* 0 before autonegotiation has ended */
    bcm_port_abil_t remote_advert;
    bcm_port_ability_t remote_ability;
    int mcast_limit;           /* packets per second, and whether it is on */
    int mcast_limit_enable;
    int bcast_limit;
    int bcast_limit_enable;
    int dlfbc_limit;           /* destination unknown */
    int dlfbc_limit_enable;
    int speed_max;
    bcm_port_abil_t ability;
    bcm_port_ability_t port_ability;
    int frame_max;             /* bytes */
    bcm_port_mdix_t mdix;
    bcm_port_mdix_status_t mdix_status;
    bcm_port_medium_t medium;
    uint32 fault;              /* BCM_PORT_FAULT_* */
} bcm_port_info_t;

/* A logical link on a passive optical network. */
typedef struct bcm_port_pon_info_s {
    uint32 llid;
    int enable;
    int linkstatus;
    int oam_discovery_status;
    int loopback;
    bcm_mac_t olt_mac_addr;
    int polling_intervals;
} bcm_port_pon_info_t;

/* Congestion messages between ports of different chips. */
typedef struct bcm_port_congestion_config_s {
    uint32 flags;              /* bcmPortCongestionConfig* */
    uint32 port_bits;
    uint32 packets_per_sec;
    bcm_port_t src_port;
    bcm_multicast_t multicast_id;
    int traffic_class;
    bcm_color_t color;
    bcm_vlan_t vlan;
    uint8 pri;                 /* 0..7 */
    uint8 cfi;
    bcm_mac_t src_mac;
    bcm_mac_t dest_mac;
    bcm_ethertype_t ethertype;
    uint16 opcode;
    uint8 version;
    uint8 reserved_v;
    bcm_port_t dst_port;
} bcm_port_congestion_config_t;

/* Packets that belong to a gport. */
typedef struct bcm_port_match_info_s {
    bcm_port_match_t match;    /* which of the match_ members count */
    bcm_gport_t port;
    bcm_vlan_t match_vlan;
    bcm_vlan_t match_vlan_max; /* for ranges, which begin with match_vlan */
    bcm_vlan_t match_inner_vlan;
    bcm_vlan_t match_tunnel_vlan;
    bcm_mac_t match_tunnel_srcmac;
    bcm_mpls_label_t match_label;
    uint32 flags;              /* bcmPortMatchFlag* */
    bcm_tunnel_id_t match_pon_tunnel;
    bcm_ethertype_t match_ethertype;
    uint8 match_pcp;           /* 0..7 */
    bcm_vlan_action_set_t action;
    uint16 extended_port_vid;
    bcm_vpn_t vpn;
    uint16 niv_port_vif;
} bcm_port_match_info_t;

/* Time synchronisation packets: which ones, and what is done to them. */
typedef struct bcm_port_timesync_config_s {
    uint32 flags;              /* bcmPortTimesync* */
    uint32 pkt_drop;           /* bcmPortTimesyncPkt* */
    uint32 pkt_tocpu;
    bcm_mpls_label_t mpls_min_label;
    bcm_mpls_label_t mpls_max_label;
    bcm_mac_t src_mac_addr;
} bcm_port_timesync_config_t;

/* Time stamping in the PHY; times in nanoseconds. */
typedef struct bcm_port_phy_timesync_framesync_s {
    bcm_port_phy_timesync_framesync_mode_t mode;
    uint32 length_threshold;
    uint32 event_offset;
} bcm_port_phy_timesync_framesync_t;

typedef struct bcm_port_phy_timesync_syncout_s {
    bcm_port_phy_timesync_syncout_mode_t mode;
    uint32 pulse_1_length;
    uint32 pulse_2_length;
    uint32 interval;
    uint64 syncout_ts;
} bcm_port_phy_timesync_syncout_t;

typedef struct bcm_port_phy_timesync_mpls_label_s {
    bcm_mpls_label_t value;
    uint32 mask;
    uint32 flags;
} bcm_port_phy_timesync_mpls_label_t;

typedef struct bcm_port_phy_timesync_mpls_control_s {
    uint32 flags;
    bcm_mpls_label_t special_label;
    bcm_port_phy_timesync_mpls_label_t labels[BCM_PORT_PHY_TIMESYNC_MAX_MPLS_LABELS];
    int size;                  /* labels in use */
} bcm_port_phy_timesync_mpls_control_t;

typedef struct bcm_port_phy_timesync_timer_adjust_s {
    bcm_port_phy_timesync_timer_mode_t mode;
    int32 delta;
} bcm_port_phy_timesync_timer_adjust_t;

typedef struct bcm_port_phy_timesync_inband_control_s {
    uint32 flags;
    uint8 resv0_id;
    bcm_port_phy_timesync_timer_mode_t timer_mode;
} bcm_port_phy_timesync_inband_control_t;

typedef struct bcm_port_phy_timesync_enhanced_capture_s {
    bcm_port_phy_timesync_msg_t msg_type;
    bcm_port_phy_timesync_prot_t protocol;
    bcm_port_phy_timesync_dir_t direction;
    uint32 seq_id;
    uint32 domain;
    uint64 timestamp;
    uint8 source_port_identity[BCM_PORT_PHY_TIMESYNC_PORT_IDENTITY_LEN];
    uint16 source_port;
    bcm_vlan_t vlan_id;
} bcm_port_phy_timesync_enhanced_capture_t;

typedef struct bcm_port_phy_timesync_config_s {
    uint32 capabilities;       /* bcmPortPhyTimesyncValid*: members that the PHY has */
    uint32 validity_mask;      /* bcmPortPhyTimesyncValid*: members to set */
    uint32 flags;              /* bcmPortPhyTimesync*Enable and following */
    bcm_tpid_t itpid;
    bcm_tpid_t otpid;
    bcm_tpid_t otpid2;
    bcm_port_phy_timesync_timer_adjust_t timer_adjust;
    bcm_port_phy_timesync_inband_control_t inband_control;
    bcm_port_phy_timesync_global_mode_t gmode;
    bcm_port_phy_timesync_framesync_t framesync;
    bcm_port_phy_timesync_syncout_t syncout;
    uint16 ts_divider;
    uint64 original_timecode;
    uint32 tx_timestamp_offset;
    uint32 rx_timestamp_offset;
    uint32 rx_link_delay;
    bcm_port_phy_timesync_event_message_egress_mode_t tx_sync_mode;
    bcm_port_phy_timesync_event_message_egress_mode_t tx_delay_request_mode;
    bcm_port_phy_timesync_event_message_egress_mode_t tx_pdelay_request_mode;
    bcm_port_phy_timesync_event_message_egress_mode_t tx_pdelay_response_mode;
    bcm_port_phy_timesync_event_message_ingress_mode_t rx_sync_mode;
    bcm_port_phy_timesync_event_message_ingress_mode_t rx_delay_request_mode;
    bcm_port_phy_timesync_event_message_ingress_mode_t rx_pdelay_request_mode;
    bcm_port_phy_timesync_event_message_ingress_mode_t rx_pdelay_response_mode;
    bcm_port_phy_timesync_mpls_control_t mpls_control;
    uint64 sync_freq;          /* Hz */
    uint32 phy_1588_dpll_k1;
    uint32 phy_1588_dpll_k2;
    uint32 phy_1588_dpll_k3;
    uint64 phy_1588_dpll_loop_filter;
    uint64 phy_1588_dpll_ref_phase;
    uint32 phy_1588_dpll_ref_phase_delta;
} bcm_port_phy_timesync_config_t;

/* Delay measurement in the PHY, by direction. */
typedef struct bcm_port_config_phy_oam_dm_s {
    uint32 flags;
    bcm_port_config_phy_oam_dm_mode_t mode;
} bcm_port_config_phy_oam_dm_t;

typedef struct bcm_port_config_phy_oam_s {
    bcm_port_config_phy_oam_dm_t tx_dm_config;
    bcm_port_config_phy_oam_dm_t rx_dm_config;
} bcm_port_config_phy_oam_t;

/* A port behind a port extender. */
typedef struct bcm_port_extender_mapping_info_s {
    bcm_gport_t pp_port;
    bcm_tunnel_id_t tunnel_id;
    bcm_gport_t phy_port;
    bcm_vlan_t vlan;
    uint32 user_define_value;
} bcm_port_extender_mapping_info_t;

/* Lanes and speed of a port, for changing them while the chip runs. */
typedef struct bcm_port_resource_s {
    uint32 flags;              /* bcmPortResource* */
    bcm_gport_t port;
    int physical_port;         /* first lane, -1 to take the port away */
    int speed;                 /* Mbit/s */
    int lanes;
    bcm_port_encap_t encap;
} bcm_port_resource_t;

/* A group of priorities that share ingress buffers. */
typedef struct bcm_port_priority_group_config_s {
    int shared_pool_xoff_enable;
    int shared_pool_discard_enable;
    int pfc_transmit_enable;
    uint32 priority_enable_vector_mask;
} bcm_port_priority_group_config_t;

/* Priority of an interface when the chip takes in more than it can process. */
typedef struct bcm_port_nif_prio_s {
    int priority_level;
} bcm_port_nif_prio_t;

/*
 * Before the PHY of a port is reset (an error status stops it), and after its medium has changed (the status
 * is not looked at).
 */
typedef int (*bcm_port_phy_reset_cb_t)(int unit, bcm_port_t port, void *user_data);
typedef int (*bcm_port_medium_status_cb_t)(int unit, bcm_port_t port, bcm_port_medium_t medium,
                                           void *user_data);

/* Called once per port; a negative result ends the traversal, which then returns it. */
typedef int (*bcm_port_resource_traverse_cb)(int unit, bcm_gport_t port, bcm_port_resource_t *resource,
                                             void *user_data);

/*
 * The module, and which ports there are. probe finds PHYs and says on which ports it succeeded; update
 * brings a port in line with its link.
 */
int bcm_port_init(int unit);
int bcm_port_clear(int unit);
int bcm_port_probe(int unit, bcm_pbmp_t pbmp, bcm_pbmp_t *okay_pbmp);
int bcm_port_detach(int unit, bcm_pbmp_t pbmp, bcm_pbmp_t *detached);
int bcm_port_config_get(int unit, bcm_port_config_t *config);
int bcm_port_add(int unit, bcm_port_t port, uint32 flags, bcm_port_interface_info_t *interface_info,
                 bcm_port_mapping_info_t *mapping_info);
int bcm_port_get(int unit, bcm_port_t port, uint32 *flags, bcm_port_interface_info_t *interface_info,
                 bcm_port_mapping_info_t *mapping_info);
int bcm_port_remove(int unit, bcm_port_t port, uint32 flags);
int bcm_port_update(int unit, bcm_port_t port, int link);
int bcm_port_subsidiary_ports_get(int unit, bcm_port_t port, bcm_pbmp_t *pbmp);

/* Ports and gports. A range is free if none of its count gports is in use. */
int bcm_port_gport_get(int unit, bcm_port_t port, bcm_gport_t *gport);
int bcm_port_gport_is_free(int unit, bcm_gport_t gport, int *is_free);
int bcm_port_gport_free_range_get(int unit, bcm_gport_t start, int count, bcm_gport_t *gport);
int bcm_port_local_get(int unit, bcm_gport_t gport, bcm_port_t *local_port);
int bcm_port_internal_get(int unit, bcm_port_t port, uint32 flags, int internal_ports_max,
                          bcm_gport_t *internal_ports, int *internal_ports_count);
int bcm_port_to_nif_id(int unit, bcm_port_t port, int *nif_id);

/* Name such as "xe3", in the library's own storage; null if there is no such port. */
char *bcm_port_name(int unit, bcm_port_t port);

/*
 * Settings together; the selective functions only those of action_mask and action_mask2. info_get and
 * info_save set the masks to what the port has, info_restore sets what they say. What can only be read is not
 * set, nor speed and duplex with autonegotiation. info_set and info_restore pass by what the port has not,
 * the selective functions give BCM_E_UNAVAIL for it.
 */
int bcm_port_info_get(int unit, bcm_port_t port, bcm_port_info_t *info);
int bcm_port_info_set(int unit, bcm_port_t port, bcm_port_info_t *info);
int bcm_port_selective_get(int unit, bcm_port_t port, bcm_port_info_t *info);
int bcm_port_selective_set(int unit, bcm_port_t port, bcm_port_info_t *info);
int bcm_port_info_restore(int unit, bcm_port_t port, bcm_port_info_t *info);
int bcm_port_info_save(int unit, bcm_port_t port, bcm_port_info_t *info);
void bcm_port_info_t_init(bcm_port_info_t *info);
void bcm_port_config_t_init(bcm_port_config_t *config);

/*
 * Administrative state (1 enabled), how the link is watched (BCM_LINKSCAN_MODE_*), and whether it is up (1).
 * link_state_get takes flags 0; link_failed_clear forgets that the link was down, which latch_down shows.
 */
int bcm_port_enable_set(int unit, bcm_port_t port, int enable);
int bcm_port_enable_get(int unit, bcm_port_t port, int *enable);
int bcm_port_linkscan_set(int unit, bcm_port_t port, int linkscan);
int bcm_port_linkscan_get(int unit, bcm_port_t port, int *linkscan);
int bcm_port_link_status_get(int unit, bcm_port_t port, int *status);
int bcm_port_link_state_get(int unit, bcm_port_t port, uint32 flags, bcm_port_link_state_t *state);
int bcm_port_link_failed_clear(int unit, bcm_port_t port);
int bcm_port_queued_count_get(int unit, bcm_port_t port, uint32 *count);
int bcm_port_fault_get(int unit, bcm_port_t port, uint32 *flags);

/* What is advertised, what the link partner advertised, and what the port can do. */
int bcm_port_advert_set(int unit, bcm_port_t port, bcm_port_abil_t ability_mask);
int bcm_port_ability_advert_set(int unit, bcm_port_t port, bcm_port_ability_t *ability_mask);
int bcm_port_advert_get(int unit, bcm_port_t port, bcm_port_abil_t *ability_mask);
int bcm_port_ability_advert_get(int unit, bcm_port_t port, bcm_port_ability_t *ability_mask);
int bcm_port_advert_remote_get(int unit, bcm_port_t port, bcm_port_abil_t *ability_mask);
int bcm_port_ability_remote_get(int unit, bcm_port_t port, bcm_port_ability_t *ability_mask);
int bcm_port_ability_get(int unit, bcm_port_t port, bcm_port_abil_t *ability_mask);
int bcm_port_ability_local_get(int unit, bcm_port_t port, bcm_port_ability_t *ability_mask);
int bcm_port_autoneg_set(int unit, bcm_port_t port, int autoneg);
int bcm_port_autoneg_get(int unit, bcm_port_t port, int *autoneg);

/* Speed in Mbit/s: the highest possible and the one in force. BCM_E_PARAM: not a speed of this port. */
int bcm_port_speed_max(int unit, bcm_port_t port, int *speed);
int bcm_port_speed_set(int unit, bcm_port_t port, int speed);
int bcm_port_speed_get(int unit, bcm_port_t port, int *speed);

/*
 * Clock master of the link, interface, duplex, longest frame (bytes, with tags and checksum), jamming, gap
 * between frames (bits).
 */
int bcm_port_master_set(int unit, bcm_port_t port, int master);
int bcm_port_master_get(int unit, bcm_port_t port, int *master);
int bcm_port_interface_set(int unit, bcm_port_t port, bcm_port_if_t intf);
int bcm_port_interface_get(int unit, bcm_port_t port, bcm_port_if_t *intf);
int bcm_port_interface_config_set(int unit, bcm_port_t port, bcm_port_interface_config_t *config);
int bcm_port_interface_config_get(int unit, bcm_port_t port, bcm_port_interface_config_t *config);
int bcm_port_duplex_set(int unit, bcm_port_t port, int duplex);
int bcm_port_duplex_get(int unit, bcm_port_t port, int *duplex);
int bcm_port_frame_max_set(int unit, bcm_port_t port, int size);
int bcm_port_frame_max_get(int unit, bcm_port_t port, int *size);
int bcm_port_jam_set(int unit, bcm_port_t port, int enable);
int bcm_port_jam_get(int unit, bcm_port_t port, int *enable);
int bcm_port_ifg_set(int unit, bcm_port_t port, int speed, bcm_port_duplex_t duplex, int bit_times);
int bcm_port_ifg_get(int unit, bcm_port_t port, int speed, bcm_port_duplex_t duplex, int *bit_times);
void bcm_port_ability_t_init(bcm_port_ability_t *ability);
void bcm_port_interface_config_t_init(bcm_port_interface_config_t *config);

/* Lanes and speed of ports while the chip runs; several at once if they exchange lanes. */
void bcm_port_resource_t_init(bcm_port_resource_t *resource);
int bcm_port_resource_set(int unit, bcm_gport_t port, bcm_port_resource_t *resource);
int bcm_port_resource_get(int unit, bcm_gport_t port, bcm_port_resource_t *resource);
int bcm_port_resource_multi_set(int unit, int nport, bcm_port_resource_t *resource);
int bcm_port_resource_traverse(int unit, bcm_port_resource_traverse_cb trav_fn, void *user_data);

/*
 * IEEE 802.3 pause frames, by direction (0 off, 1 on), and the source address of those sent. The _sym_
 * pair sets both directions at once, and reads 1 only if both are on.
 */
int bcm_port_pause_get(int unit, bcm_port_t port, int *pause_tx, int *pause_rx);
int bcm_port_pause_set(int unit, bcm_port_t port, int pause_tx, int pause_rx);
int bcm_port_pause_addr_set(int unit, bcm_port_t port, bcm_mac_t mac);
int bcm_port_pause_addr_get(int unit, bcm_port_t port, bcm_mac_t mac);
int bcm_port_pause_sym_set(int unit, bcm_port_t port, int pause);
int bcm_port_pause_sym_get(int unit, bcm_port_t port, int *pause);

/* Kilobits in the buffer at which pause frames are sent, and at which sending goes on. */
int bcm_port_rate_pause_set(int unit, bcm_port_t port, uint32 kbits_pause, uint32 kbits_resume);
int bcm_port_rate_pause_get(int unit, bcm_port_t port, uint32 *kbits_pause, uint32 *kbits_resume);

/* Congestion messages. */
void bcm_port_congestion_config_t_init(bcm_port_congestion_config_t *config);
int bcm_port_congestion_config_set(int unit, bcm_gport_t port, bcm_port_congestion_config_t *config);
int bcm_port_congestion_config_get(int unit, bcm_gport_t port, bcm_port_congestion_config_t *config);
int bcm_port_congestion_set(int unit, bcm_port_t port, uint32 flags);
int bcm_port_congestion_get(int unit, bcm_port_t port, uint32 *flags);

/* Priority groups 0..7: which priorities are in them, and how they use the buffers. */
int bcm_port_priority_group_mapping_set(int unit, bcm_gport_t gport, int prio, int priority_group);
int bcm_port_priority_group_mapping_get(int unit, bcm_gport_t gport, int prio, int *priority_group);
int bcm_port_priority_group_config_set(int unit, bcm_gport_t gport, int priority_group,
                                       bcm_port_priority_group_config_t *prigrp_config);
int bcm_port_priority_group_config_get(int unit, bcm_gport_t gport, int priority_group,
                                       bcm_port_priority_group_config_t *prigrp_config);
void bcm_port_priority_group_config_t_init(bcm_port_priority_group_config_t *prigrp_config);
int bcm_port_nif_priority_set(int unit, bcm_port_t port, uint32 flags, bcm_port_nif_prio_t *priority);
int bcm_port_nif_priority_get(int unit, bcm_port_t port, uint32 flags, bcm_port_nif_prio_t *priority);

/* Registers of the PHY, BCM_PORT_PHY_* flags; multi_get reads at most max_size bytes. */
int bcm_port_phy_set(int unit, bcm_port_t port, uint32 flags, uint32 phy_reg_addr, uint32 phy_data);
int bcm_port_phy_get(int unit, bcm_port_t port, uint32 flags, uint32 phy_reg_addr, uint32 *phy_data);
int bcm_port_phy_modify(int unit, bcm_port_t port, uint32 flags, uint32 phy_reg_addr, uint32 phy_data,
                        uint32 phy_mask);
int bcm_port_phy_multi_get(int unit, bcm_port_t port, uint32 flags, uint32 dev_addr, uint32 offset,
                           uint32 max_size, uint8 *data, uint32 *actual_size);

/* Reset of the PHY, and who is told of it. */
int bcm_port_phy_reset_register(int unit, bcm_port_t port, bcm_port_phy_reset_cb_t callback,
                                void *user_data);
int bcm_port_phy_reset_unregister(int unit, bcm_port_t port, bcm_port_phy_reset_cb_t callback,
                                  void *user_data);
int bcm_port_phy_reset(int unit, bcm_port_t port);

/* Crossing of copper pairs; medium of PHYs that have several, and who is told of changes. */
int bcm_port_mdix_set(int unit, bcm_port_t port, bcm_port_mdix_t mode);
int bcm_port_mdix_get(int unit, bcm_port_t port, bcm_port_mdix_t *mode);
int bcm_port_mdix_status_get(int unit, bcm_port_t port, bcm_port_mdix_status_t *status);
int bcm_port_medium_config_set(int unit, bcm_port_t port, bcm_port_medium_t medium,
                               bcm_phy_config_t *config);
int bcm_port_medium_config_get(int unit, bcm_port_t port, bcm_port_medium_t medium,
                               bcm_phy_config_t *config);
int bcm_port_medium_get(int unit, bcm_port_t port, bcm_port_medium_t *medium);
int bcm_port_medium_status_register(int unit, bcm_port_t port, bcm_port_medium_status_cb_t callback,
                                    void *user_data);
int bcm_port_medium_status_unregister(int unit, bcm_port_t port, bcm_port_medium_status_cb_t callback,
                                      void *user_data);

/* Loopback (BCM_PORT_LOOPBACK_*), cable test, and the driver: its name, cut off at len, and settings. */
int bcm_port_loopback_set(int unit, bcm_port_t port, int loopback);
int bcm_port_loopback_get(int unit, bcm_port_t port, int *loopback);
int bcm_port_cable_diag(int unit, bcm_port_t port, bcm_port_cable_diag_t *status);
int bcm_port_phy_drv_name_get(int unit, bcm_port_t port, char *name, int len);
int bcm_port_phy_control_set(int unit, bcm_port_t port, bcm_port_phy_control_t type, uint32 value);
int bcm_port_phy_control_get(int unit, bcm_port_t port, bcm_port_phy_control_t type, uint32 *value);
int bcm_port_phy_firmware_set(int unit, bcm_port_t port, uint32 flags, int offset, uint8 *array,
                              int length);

/*
 * Time stamping and delay measurement in the PHY. A capture is taken out of a queue; *remaining are left
 * there.
 */
void bcm_port_phy_timesync_config_t_init(bcm_port_phy_timesync_config_t *conf);
int bcm_port_phy_timesync_config_set(int unit, bcm_port_t port, bcm_port_phy_timesync_config_t *conf);
int bcm_port_phy_timesync_config_get(int unit, bcm_port_t port, bcm_port_phy_timesync_config_t *conf);
int bcm_port_control_phy_timesync_set(int unit, bcm_port_t port, bcm_port_control_phy_timesync_t type,
                                      uint64 value);
int bcm_port_control_phy_timesync_get(int unit, bcm_port_t port, bcm_port_control_phy_timesync_t type,
                                      uint64 *value);
int bcm_port_phy_timesync_enhanced_capture_get(int unit, bcm_port_t port,
                                               bcm_port_phy_timesync_enhanced_capture_t *value,
                                               int *remaining);
int bcm_port_config_phy_oam_set(int unit, bcm_port_t port, bcm_port_config_phy_oam_t *conf);
int bcm_port_config_phy_oam_get(int unit, bcm_port_t port, bcm_port_config_phy_oam_t *conf);
int bcm_port_control_phy_oam_set(int unit, bcm_port_t port, bcm_port_control_phy_oam_t type, uint64 value);
int bcm_port_control_phy_oam_get(int unit, bcm_port_t port, bcm_port_control_phy_oam_t type, uint64 *value);

/* Management packets; one packet in so many goes to the CPU as a sample, 0 for none. */
int bcm_port_management_packet_config_set(int unit, bcm_port_t port,
                                          bcm_port_management_packet_config_t *config);
int bcm_port_management_packet_config_get(int unit, bcm_port_t port,
                                          bcm_port_management_packet_config_t *config);
int bcm_port_sample_rate_set(int unit, bcm_port_t port, int ingress_rate, int egress_rate);
int bcm_port_sample_rate_get(int unit, bcm_port_t port, int *ingress_rate, int *egress_rate);

/* Classes, settings, policers (0 for none), and bits that go with every packet of the port. */
int bcm_port_class_set(int unit, bcm_port_t port, bcm_port_class_t pclass, uint32 pclass_id);
int bcm_port_class_get(int unit, bcm_port_t port, bcm_port_class_t pclass, uint32 *pclass_id);
int bcm_port_control_set(int unit, bcm_port_t port, bcm_port_control_t type, int value);
int bcm_port_control_get(int unit, bcm_port_t port, bcm_port_control_t type, int *value);
int bcm_port_policer_get(int unit, bcm_port_t port, bcm_policer_t *policer_id);
int bcm_port_policer_set(int unit, bcm_port_t port, bcm_policer_t policer_id);
int bcm_port_egress_policer_set(int unit, bcm_port_t port, bcm_policer_t policer_id);
int bcm_port_wide_data_set(int unit, bcm_gport_t gport, uint32 flags, uint64 data, uint64 mask);
int bcm_port_wide_data_get(int unit, bcm_gport_t gport, uint32 flags, uint64 *data, uint64 *mask);

/* Ports whose time-division traffic is taken over when another path fails. */
int bcm_port_ingress_tdm_failover_set(int unit, int tdm_enable, bcm_pbmp_t tdm_enable_pbmp);
int bcm_port_ingress_tdm_failover_get(int unit, int *tdm_enable, bcm_pbmp_t *tdm_enable_pbmp);

/* Spanning tree state in all groups, dropping on arrival, learning (BCM_PORT_LEARN_*). */
int bcm_port_stp_set(int unit, bcm_port_t port, int state);
int bcm_port_stp_get(int unit, bcm_port_t port, int *state);
int bcm_port_discard_set(int unit, bcm_port_t port, int mode);
int bcm_port_discard_get(int unit, bcm_port_t port, int *mode);
int bcm_port_learn_set(int unit, bcm_port_t port, uint32 flags);
int bcm_port_learn_get(int unit, bcm_port_t port, uint32 *flags);
int bcm_port_learn_modify(int unit, bcm_port_t port, uint32 add, uint32 remove);

/* VLAN filter on arrival, bridge protocol packets, routing, trunk, and the multicast mode (bcmPortPfm*). */
int bcm_port_ifilter_set(int unit, bcm_port_t port, int mode);
int bcm_port_ifilter_get(int unit, bcm_port_t port, int *mode);
int bcm_port_bpdu_enable_set(int unit, bcm_port_t port, int enable);
int bcm_port_bpdu_enable_get(int unit, bcm_port_t port, int *enable);
int bcm_port_l3_enable_set(int unit, bcm_port_t port, int enable);
int bcm_port_l3_enable_get(int unit, bcm_port_t port, int *enable);
int bcm_port_tgid_set(int unit, bcm_port_t port, bcm_trunk_t tid, int psc);
int bcm_port_tgid_get(int unit, bcm_port_t port, bcm_trunk_t *tid, int *psc);
int bcm_port_pfm_set(int unit, bcm_port_t port, int mode);
int bcm_port_pfm_get(int unit, bcm_port_t port, int *mode);

/* Ports to which packets may go, by the module (-1 for any) and port where they arrived. */
int bcm_port_egress_set(int unit, bcm_port_t port, int modid, bcm_pbmp_t pbmp);
int bcm_port_egress_get(int unit, bcm_port_t port, int modid, bcm_pbmp_t *pbmp);
int bcm_port_modid_enable_set(int unit, bcm_port_t port, int modid, int enable);
int bcm_port_modid_enable_get(int unit, bcm_port_t port, int modid, int *enable);
int bcm_port_modid_egress_set(int unit, bcm_port_t port, int modid, bcm_pbmp_t pbmp);
int bcm_port_modid_egress_get(int unit, bcm_port_t port, int modid, bcm_pbmp_t *pbmp);
int bcm_port_flood_block_set(int unit, bcm_port_t ingress_port, bcm_port_t egress_port, uint32 flags);
int bcm_port_flood_block_get(int unit, bcm_port_t ingress_port, bcm_port_t egress_port, uint32 *flags);
int bcm_port_trunk_index_set(int unit, bcm_gport_t port, int trunk_index);
int bcm_port_trunk_index_get(int unit, bcm_gport_t port, int *trunk_index);

/* Everything that arrives on port goes to one destination. */
int bcm_port_force_forward_set(int unit, bcm_port_t port, bcm_port_t egr_port, int enable);
int bcm_port_force_forward_get(int unit, bcm_port_t port, bcm_port_t *egr_port, int *enable);
int bcm_port_force_forward_mode_set(int unit, bcm_port_t port, bcm_port_t egr_port, uint32 flags);
int bcm_port_force_forward_mode_get(int unit, bcm_port_t port, bcm_port_t *egr_port, uint32 *flags);
int bcm_port_force_dest_set(int unit, bcm_port_t port, int enable, bcm_port_dest_info_t *dest);
int bcm_port_force_dest_get(int unit, bcm_port_t port, int *enable, bcm_port_dest_info_t *dest);

/* Longest routed packet in bytes. */
int bcm_port_l3_mtu_set(int unit, bcm_port_t port, int size);
int bcm_port_l3_mtu_get(int unit, bcm_port_t port, int *size);
int bcm_port_l3_encapsulated_mtu_set(int unit, bcm_port_t port, int size);
int bcm_port_l3_encapsulated_mtu_get(int unit, bcm_port_t port, int *size);

/* Rate limits in kbit/s with bursts in kbit, or in packets. 0 for none; a burst of 0: what comes in 10 ms. */
int bcm_port_rate_egress_set(int unit, bcm_port_t port, uint32 kbits_sec, uint32 kbits_burst);
int bcm_port_rate_egress_pps_set(int unit, bcm_port_t port, uint32 pps, uint32 burst);
int bcm_port_rate_egress_get(int unit, bcm_port_t port, uint32 *kbits_sec, uint32 *kbits_burst);
int bcm_port_rate_egress_pps_get(int unit, bcm_port_t port, uint32 *pps, uint32 *burst);
int bcm_port_rate_egress_traffic_set(int unit, bcm_port_t port, uint32 traffic_types, uint32 kbits_sec,
                                     uint32 kbits_burst);
int bcm_port_rate_egress_traffic_get(int unit, bcm_port_t port, uint32 traffic_types, uint32 *kbits_sec,
                                     uint32 *kbits_burst);
int bcm_port_rate_ingress_set(int unit, bcm_port_t port, uint32 kbits_sec, uint32 kbits_burst);
int bcm_port_rate_ingress_get(int unit, bcm_port_t port, uint32 *kbits_sec, uint32 *kbits_burst);

/* VLAN and priority of packets that arrive untagged; the VLAN has to exist. Membership is not changed. */
int bcm_port_untagged_vlan_get(int unit, bcm_port_t port, bcm_vlan_t *vid_ptr);
int bcm_port_untagged_vlan_set(int unit, bcm_port_t port, bcm_vlan_t vid);
int bcm_port_untagged_priority_set(int unit, bcm_port_t port, int priority);
int bcm_port_untagged_priority_get(int unit, bcm_port_t port, int *priority);

/* VLAN that packets leave with, filters (BCM_PORT_VLAN_MEMBER_*), and VLAN by protocol. */
int bcm_port_force_vlan_set(int unit, bcm_port_t port, bcm_vlan_t vlan, int pkt_prio, uint32 flags);
int bcm_port_force_vlan_get(int unit, bcm_port_t port, bcm_vlan_t *vlan, int *pkt_prio, uint32 *flags);
int bcm_port_vlan_member_set(int unit, bcm_port_t port, uint32 flags);
int bcm_port_vlan_member_get(int unit, bcm_port_t port, uint32 *flags);
int bcm_port_protocol_vlan_add(int unit, bcm_port_t port, bcm_port_frametype_t frame,
                               bcm_port_ethertype_t ether, bcm_vlan_t vid);
int bcm_port_protocol_vlan_delete(int unit, bcm_port_t port, bcm_port_frametype_t frame,
                                  bcm_port_ethertype_t ether);
int bcm_port_protocol_vlan_delete_all(int unit, bcm_port_t port);

/* Double tagging (BCM_PORT_DTAG_MODE_*), and the Ethernet types that mark a tag. */
int bcm_port_dtag_mode_set(int unit, bcm_port_t port, int mode);
int bcm_port_dtag_mode_get(int unit, bcm_port_t port, int *mode);
int bcm_port_tpid_set(int unit, bcm_port_t port, uint16 tpid);
int bcm_port_tpid_get(int unit, bcm_port_t port, uint16 *tpid);
int bcm_port_tpid_add(int unit, bcm_port_t port, uint16 tpid, int color_select);
int bcm_port_tpid_delete(int unit, bcm_port_t port, uint16 tpid);
int bcm_port_tpid_delete_all(int unit, bcm_port_t port);
int bcm_port_inner_tpid_set(int unit, bcm_port_t port, uint16 tpid);
int bcm_port_inner_tpid_get(int unit, bcm_port_t port, uint16 *tpid);
void bcm_port_tpid_class_t_init(bcm_port_tpid_class_t *tpid_class);
int bcm_port_tpid_class_set(int unit, bcm_port_tpid_class_t *tpid_class);
int bcm_port_tpid_class_get(int unit, bcm_port_tpid_class_t *tpid_class);
int bcm_port_vlan_inner_tag_set(int unit, bcm_port_t port, uint16 inner_tag);
int bcm_port_vlan_inner_tag_get(int unit, bcm_port_t port, uint16 *inner_tag);

/* The VLANs of a port, one bit each. get_all writes at most size TPIDs and how each selects the colour. */
int bcm_port_vlan_vector_set(int unit, bcm_port_t port_id, bcm_vlan_vector_t vlan_vec);
int bcm_port_vlan_vector_get(int unit, bcm_port_t port_id, bcm_vlan_vector_t vlan_vec);
int bcm_port_tpid_get_all(int unit, bcm_port_t port, int size, uint16 *tpid_array, int *color_array,
                          int *count);

/* Priority by DSCP; srccp -1 stands for all code points. */
int bcm_port_dscp_map_mode_set(int unit, bcm_port_t port, int mode);
int bcm_port_dscp_map_mode_get(int unit, bcm_port_t port, int *mode);
int bcm_port_dscp_map_set(int unit, bcm_port_t port, int srccp, int mapcp, int prio);
int bcm_port_dscp_map_get(int unit, bcm_port_t port, int srccp, int *mapcp, int *prio);

/* Colour by priority and by CFI. */
int bcm_port_priority_color_set(int unit, bcm_port_t port, int prio, bcm_color_t color);
int bcm_port_priority_color_get(int unit, bcm_port_t port, int prio, bcm_color_t *color);
int bcm_port_cfi_color_set(int unit, bcm_port_t port, int cfi, bcm_color_t color);
int bcm_port_cfi_color_get(int unit, bcm_port_t port, int cfi, bcm_color_t *color);

/* Priority and CFI of the tag to priority and colour in the switch, and back (unmap). */
int bcm_port_vlan_priority_map_set(int unit, bcm_port_t port, int pkt_pri, int cfi, int internal_pri,
                                   bcm_color_t color);
int bcm_port_vlan_priority_map_get(int unit, bcm_port_t port, int pkt_pri, int cfi, int *internal_pri,
                                   bcm_color_t *color);
int bcm_port_vlan_priority_unmap_set(int unit, bcm_port_t port, int internal_pri, bcm_color_t color,
                                     int pkt_pri, int cfi);
int bcm_port_vlan_priority_unmap_get(int unit, bcm_port_t port, int internal_pri, bcm_color_t color,
                                     int *pkt_pri, int *cfi);
int bcm_port_vlan_pri_map_set(int unit, bcm_port_t port, int pkt_pri, int cfi, int internal_pri,
                              bcm_color_t color);
int bcm_port_vlan_pri_map_get(int unit, bcm_port_t port, int pkt_pri, int cfi, int *internal_pri,
                              bcm_color_t *color);

/* The same with DSCP, by VLAN priority on arrival, and with records by VLAN. */
int bcm_port_vlan_dscp_map_set(int unit, bcm_port_t port, int pkt_pri, int cfi, int dscp);
int bcm_port_vlan_dscp_map_get(int unit, bcm_port_t port, int pkt_pri, int cfi, int *dscp);
int bcm_port_dscp_unmap_set(int unit, bcm_port_t port, int internal_pri, bcm_color_t color, int dscp);
int bcm_port_dscp_unmap_get(int unit, bcm_port_t port, int internal_pri, bcm_color_t color, int *dscp);
int bcm_port_vlan_priority_mapping_set(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags,
                                       bcm_priority_mapping_t *priority_map);
int bcm_port_vlan_priority_mapping_get(int unit, bcm_port_t port, bcm_vlan_t vlan, uint32 flags,
                                       bcm_priority_mapping_t *priority_map);

/* Framing, what routing leaves as it is, and logical links of passive optical networks. */
int bcm_port_encap_config_set(int unit, bcm_gport_t gport, bcm_port_encap_config_t *encap_config);
int bcm_port_encap_config_get(int unit, bcm_gport_t gport, bcm_port_encap_config_t *encap_config);
int bcm_port_encap_set(int unit, bcm_port_t port, int mode);
int bcm_port_encap_get(int unit, bcm_port_t port, int *mode);
int bcm_port_l3_modify_set(int unit, bcm_port_t port, uint32 flags);
int bcm_port_l3_modify_get(int unit, bcm_port_t port, uint32 *flags);
int bcm_port_ipmc_modify_set(int unit, bcm_port_t port, uint32 flags);
int bcm_port_ipmc_modify_get(int unit, bcm_port_t port, uint32 *flags);
int bcm_port_pon_info_get(int unit, bcm_port_t port, bcm_port_pon_info_t *info);
int bcm_port_pon_info_set(int unit, bcm_port_t port, bcm_port_pon_info_t *info);
void bcm_port_encap_config_t_init(bcm_port_encap_config_t *encap_config);

/* Packets that belong to a gport; set replaces all its matches by the size ones given. */
void bcm_port_match_info_t_init(bcm_port_match_info_t *port_match);
int bcm_port_match_add(int unit, bcm_gport_t port, bcm_port_match_info_t *match);
int bcm_port_match_delete(int unit, bcm_gport_t port, bcm_port_match_info_t *match);
int bcm_port_match_replace(int unit, bcm_gport_t port, bcm_port_match_info_t *old_match,
                           bcm_port_match_info_t *new_match);
int bcm_port_match_multi_get(int unit, bcm_gport_t port, int size, bcm_port_match_info_t *match_array,
                             int *count);
int bcm_port_match_set(int unit, bcm_gport_t port, int size, bcm_port_match_info_t *match_array);
int bcm_port_match_delete_all(int unit, bcm_gport_t port);

/* Encapsulation ids of gports, tunnels of passive optical networks, ports behind a port extender. */
int bcm_port_encap_map_set(int unit, bcm_gport_t gport, bcm_if_t encap_id);
int bcm_port_encap_map_get(int unit, bcm_gport_t gport, bcm_if_t *encap_id);
int bcm_port_pon_tunnel_add(int unit, bcm_port_t pon_port, bcm_tunnel_id_t tunnel);
int bcm_port_pon_tunnel_remove(int unit, bcm_port_t pon_port, bcm_tunnel_id_t tunnel);
int bcm_port_pon_tunnel_map_set(int unit, bcm_port_t pon_port, bcm_tunnel_id_t tunnel, bcm_gport_t port);
int bcm_port_pon_tunnel_map_get(int unit, bcm_port_t pon_port, bcm_tunnel_id_t tunnel, bcm_gport_t *port);
void bcm_port_extender_mapping_info_t_init(bcm_port_extender_mapping_info_t *mapping_info);
int bcm_port_extender_mapping_info_set(int unit, uint32 flags, bcm_port_extender_mapping_type_t type,
                                       bcm_port_extender_mapping_info_t *mapping_info);
int bcm_port_extender_mapping_info_get(int unit, uint32 flags, bcm_port_extender_mapping_type_t type,
                                       bcm_port_extender_mapping_info_t *mapping_info);

/* Gports that stand for a port; get_all writes at most size of them. */
int bcm_port_gport_add(int unit, bcm_port_t port, bcm_gport_t gport);
int bcm_port_gport_delete(int unit, bcm_port_t port, bcm_gport_t gport);
int bcm_port_gport_delete_all(int unit, bcm_port_t port);
int bcm_port_gport_get_all(int unit, bcm_port_t local_port, int size, bcm_gport_t *gport_array, int *count);
int bcm_port_encap_local_get(int unit, bcm_gport_t gport, bcm_if_t *encap);

/*
 * Counters. The _sync_ functions read the chip, not the last sweep's copy; the _multi_ functions take nstat
 * entries in both arrays, the counter functions num_entries.
 */
int bcm_port_stat_enable_set(int unit, bcm_gport_t port, int enable);
int bcm_port_stat_get(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint64 *val);
int bcm_port_stat_sync_get(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint64 *val);
int bcm_port_stat_id_get(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 *stat_counter_id);
int bcm_port_stat_get32(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 *val);
int bcm_port_stat_sync_get32(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 *val);
int bcm_port_stat_set(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint64 val);
int bcm_port_stat_set32(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 val);
int bcm_port_stat_multi_get(int unit, bcm_gport_t port, int nstat, bcm_port_stat_t *stat_arr,
                            uint64 *value_arr);
int bcm_port_stat_multi_get32(int unit, bcm_gport_t port, int nstat, bcm_port_stat_t *stat_arr,
                              uint32 *value_arr);
int bcm_port_stat_multi_set(int unit, bcm_gport_t port, int nstat, bcm_port_stat_t *stat_arr,
                            uint64 *value_arr);
int bcm_port_stat_multi_set32(int unit, bcm_gport_t port, int nstat, bcm_port_stat_t *stat_arr,
                              uint32 *value_arr);
int bcm_port_stat_attach(int unit, bcm_gport_t port, uint32 stat_counter_id);
int bcm_port_stat_detach(int unit, bcm_gport_t port);
int bcm_port_stat_detach_with_id(int unit, bcm_gport_t port, uint32 stat_counter_id);
int bcm_port_stat_counter_get(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 num_entries,
                              uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_port_stat_counter_sync_get(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 num_entries,
                                   uint32 *counter_indexes, bcm_stat_value_t *counter_values);
int bcm_port_stat_counter_set(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 num_entries,
                              uint32 *counter_indexes, bcm_stat_value_t *counter_values);

/* Time synchronisation packets: config_count records, or at most array_size. */
int bcm_port_timesync_config_set(int unit, bcm_port_t port, int config_count,
                                 bcm_port_timesync_config_t *config_array);
int bcm_port_timesync_config_get(int unit, bcm_port_t port, int array_size,
                                 bcm_port_timesync_config_t *config_array, int *array_count);
void bcm_port_timesync_config_t_init(bcm_port_timesync_config_t *conf);

#ifdef __cplusplus
}
#endif

#endif
