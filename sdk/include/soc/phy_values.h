/*
 * Values of PHY settings and state, by the setting that takes them.
 */
#ifndef SOC_PHY_VALUES_H
#define SOC_PHY_VALUES_H

#include <shared/port.h>

/* What stands between a MAC and the medium. */
typedef enum soc_phy_kind_e {
    noPhy = 0,
    serdesPhy,  /* in the chip */
    copperPhy,
    retimerPhy, /* as many lanes on both sides */
    gearboxPhy  /* fewer and faster lanes on one side */
} soc_phy_kind_t;

/* phy_flags of a soc_phy_info_t. */
typedef enum soc_phy_info_flag_e {
    SOC_PHY_INFO_CLAUSE45 = 0x00000001,
    SOC_PHY_INFO_EXTERNAL = 0x00000002,
    SOC_PHY_INFO_COPPER = 0x00000004,
    SOC_PHY_INFO_FIBER = 0x00000008,
    SOC_PHY_INFO_SHARED = 0x00000010 /* several ports in one PHY chip */
} soc_phy_info_flag_t;

/* Who gives the clock on 1000BASE-T. */
typedef enum soc_phy_master_e {
    SOC_PHY_MS_SLAVE = 0,
    SOC_PHY_MS_MASTER = 1,
    SOC_PHY_MS_AUTO = 2, /* negotiated */
    SOC_PHY_MS_NONE = 3  /* the medium knows no such thing */
} soc_phy_master_t;

/* Interfaces between MAC and PHY. */
typedef enum soc_phy_interface_e {
    SOC_PHY_INTERFACE_NOCXN = _SHR_PORT_IF_NOCXN, /* not connected */
    SOC_PHY_INTERFACE_NULL = _SHR_PORT_IF_NULL,   /* pass-through, without PHY */
    SOC_PHY_INTERFACE_MII = _SHR_PORT_IF_MII,
    SOC_PHY_INTERFACE_GMII = _SHR_PORT_IF_GMII,
    SOC_PHY_INTERFACE_SGMII = _SHR_PORT_IF_SGMII,
    SOC_PHY_INTERFACE_QSGMII = _SHR_PORT_IF_QSGMII,
    SOC_PHY_INTERFACE_RGMII = _SHR_PORT_IF_RGMII,
    SOC_PHY_INTERFACE_XGMII = _SHR_PORT_IF_XGMII,
    SOC_PHY_INTERFACE_XAUI = _SHR_PORT_IF_XAUI,
    SOC_PHY_INTERFACE_RXAUI = _SHR_PORT_IF_RXAUI,
    SOC_PHY_INTERFACE_XFI = _SHR_PORT_IF_XFI,
    SOC_PHY_INTERFACE_SFI = _SHR_PORT_IF_SFI,
    SOC_PHY_INTERFACE_KR = _SHR_PORT_IF_KR,
    SOC_PHY_INTERFACE_KR4 = _SHR_PORT_IF_KR4,
    SOC_PHY_INTERFACE_CR4 = _SHR_PORT_IF_CR4,
    SOC_PHY_INTERFACE_XLAUI = _SHR_PORT_IF_XLAUI,
    SOC_PHY_INTERFACE_CAUI = _SHR_PORT_IF_CAUI,
    SOC_PHY_INTERFACE_ILKN = _SHR_PORT_IF_ILKN /* Interlaken */
} soc_phy_interface_t;

/* Abilities, a set. Speeds are in Mbit/s or Gbit/s with half or full duplex. */
typedef enum soc_phy_ability_e {
    SOC_PHY_ABILITY_10MB_HD = _SHR_PM_10MB_HD,
    SOC_PHY_ABILITY_10MB_FD = _SHR_PM_10MB_FD,
    SOC_PHY_ABILITY_100MB_HD = _SHR_PM_100MB_HD,
    SOC_PHY_ABILITY_100MB_FD = _SHR_PM_100MB_FD,
    SOC_PHY_ABILITY_1000MB_HD = _SHR_PM_1000MB_HD,
    SOC_PHY_ABILITY_1000MB_FD = _SHR_PM_1000MB_FD,
    SOC_PHY_ABILITY_2500MB_FD = _SHR_PM_2500MB_FD,
    SOC_PHY_ABILITY_10GB_FD = _SHR_PM_10GB_FD,
    SOC_PHY_ABILITY_40GB_FD = _SHR_PM_40GB_FD,
    SOC_PHY_ABILITY_100GB_FD = _SHR_PM_100GB_FD,
    SOC_PHY_ABILITY_PAUSE_TX = _SHR_PM_PAUSE_TX,
    SOC_PHY_ABILITY_PAUSE_RX = _SHR_PM_PAUSE_RX,
    SOC_PHY_ABILITY_AUTONEG = _SHR_PM_AUTONEG,
    SOC_PHY_ABILITY_LOOPBACK_MAC = _SHR_PM_LB_MAC,
    SOC_PHY_ABILITY_LOOPBACK_PHY = _SHR_PM_LB_PHY
} soc_phy_ability_t;

/* Crossing of the copper pairs: how it is decided, and what was decided. */
typedef enum soc_phy_mdix_e {
    SOC_PHY_MDIX_AUTO = _SHR_PORT_MDIX_AUTO,
    SOC_PHY_MDIX_FORCE_AUTO = _SHR_PORT_MDIX_FORCE_AUTO, /* automatic even without autonegotiation */
    SOC_PHY_MDIX_NORMAL = _SHR_PORT_MDIX_NORMAL,
    SOC_PHY_MDIX_XOVER = _SHR_PORT_MDIX_XOVER
} soc_phy_mdix_t;

typedef enum soc_phy_mdix_status_e {
    SOC_PHY_MDIX_STATUS_NORMAL = _SHR_PORT_MDIX_STATUS_NORMAL,
    SOC_PHY_MDIX_STATUS_XOVER = _SHR_PORT_MDIX_STATUS_XOVER
} soc_phy_mdix_status_t;

/* Media of ports, and what exactly a lane is connected to. */
typedef enum soc_phy_medium_e {
    SOC_PHY_MEDIUM_NONE = _SHR_PORT_MEDIUM_NONE,
    SOC_PHY_MEDIUM_COPPER = _SHR_PORT_MEDIUM_COPPER,
    SOC_PHY_MEDIUM_FIBER = _SHR_PORT_MEDIUM_FIBER,
    SOC_PHY_MEDIUM_BACKPLANE = _SHR_PORT_MEDIUM_BACKPLANE
} soc_phy_medium_t;

typedef enum soc_phy_media_type_e {
    SOC_PHY_MEDIA_TYPE_BACKPLANE = 0,
    SOC_PHY_MEDIA_TYPE_COPPER_CABLE,
    SOC_PHY_MEDIA_TYPE_OPTICS,
    SOC_PHY_MEDIA_TYPE_CHIP, /* another chip on the board */
    SOC_PHY_MEDIA_TYPE_FORCED /* as the taps are set */
} soc_phy_media_type_t;

/* States of a copper pair. */
typedef enum soc_phy_cable_state_e {
    SOC_PHY_CABLE_STATE_OK = _SHR_PORT_CABLE_STATE_OK,
    SOC_PHY_CABLE_STATE_OPEN = _SHR_PORT_CABLE_STATE_OPEN,
    SOC_PHY_CABLE_STATE_SHORT = _SHR_PORT_CABLE_STATE_SHORT,
    SOC_PHY_CABLE_STATE_OPENSHORT = _SHR_PORT_CABLE_STATE_OPENSHORT,
    SOC_PHY_CABLE_STATE_CROSSTALK = _SHR_PORT_CABLE_STATE_CROSSTALK,
    SOC_PHY_CABLE_STATE_UNKNOWN = _SHR_PORT_CABLE_STATE_UNKNOWN
} soc_phy_cable_state_t;

/* SOC_PHY_CONTROL_AUTONEG_MODE: clauses of IEEE 802.3. */
typedef enum soc_phy_autoneg_e {
    SOC_PHY_AUTONEG_CL28 = 0,  /* twisted pairs */
    SOC_PHY_AUTONEG_CL37,      /* 1000BASE-X */
    SOC_PHY_AUTONEG_CL73,      /* backplanes and copper cables */
    SOC_PHY_AUTONEG_CL73_CL37  /* whichever the other end answers */
} soc_phy_autoneg_t;

/* SOC_PHY_CONTROL_MODULATION: levels of the signal. */
typedef enum soc_phy_modulation_e {
    SOC_PHY_MODULATION_NRZ = 0, /* two */
    SOC_PHY_MODULATION_PAM4     /* four */
} soc_phy_modulation_t;

/* SOC_PHY_CONTROL_FEC_MODE. */
typedef enum soc_phy_fec_e {
    SOC_PHY_FEC_NONE = 0,
    SOC_PHY_FEC_BASE_R, /* clause 74 */
    SOC_PHY_FEC_RS_528, /* Reed-Solomon, by symbols per codeword */
    SOC_PHY_FEC_RS_544,
    SOC_PHY_FEC_RS_272  /* low latency */
} soc_phy_fec_t;

/* SOC_PHY_CONTROL_LOOPBACK_MODE. */
typedef enum soc_phy_loopback_e {
    SOC_PHY_LOOPBACK_NONE = 0,
    SOC_PHY_LOOPBACK_PCS,   /* towards the MAC, before the line's serialiser */
    SOC_PHY_LOOPBACK_PMD,   /* likewise, behind it */
    SOC_PHY_LOOPBACK_REMOTE /* towards the line */
} soc_phy_loopback_t;

/* SOC_PHY_CONTROL_PRBS_POLYNOMIAL, by exponents: X7_X6 is X^7 + X^6 + 1. */
typedef enum soc_phy_prbs_polynomial_e {
    SOC_PHY_PRBS_POLYNOMIAL_X7_X6 = 0,
    SOC_PHY_PRBS_POLYNOMIAL_X9_X5,
    SOC_PHY_PRBS_POLYNOMIAL_X11_X9,
    SOC_PHY_PRBS_POLYNOMIAL_X15_X14,
    SOC_PHY_PRBS_POLYNOMIAL_X23_X18,
    SOC_PHY_PRBS_POLYNOMIAL_X31_X28
} soc_phy_prbs_polynomial_t;

/* SOC_PHY_CONTROL_POWER. */
typedef enum soc_phy_power_e {
    SOC_PHY_POWER_FULL = 0,
    SOC_PHY_POWER_LOW,
    SOC_PHY_POWER_AUTO, /* sleeps while there is no signal */
    SOC_PHY_POWER_OFF
} soc_phy_power_t;

/* SOC_PHY_CONTROL_CLOCK_SOURCE. */
typedef enum soc_phy_clock_source_e {
    SOC_PHY_CLOCK_SOURCE_LOCAL = 0, /* the PHY's reference */
    SOC_PHY_CLOCK_SOURCE_RECOVERED, /* from what the line receives */
    SOC_PHY_CLOCK_SOURCE_EXTERNAL   /* a pin */
} soc_phy_clock_source_t;

#endif
