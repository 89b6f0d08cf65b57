/* Port types that the API and the chip level share. */
#ifndef SHARED_PORT_H
#define SHARED_PORT_H

#include <sal/types.h>

/* Pipes of a chip that forward on their own. */
#define _SHR_SWITCH_MAX_PIPES 8

/* What a port can do or is told to advertise: a set of _SHR_PM_*. */
typedef uint32 _shr_port_mode_t;

#define _SHR_PM_10MB_HD 0x00000001
#define _SHR_PM_10MB_FD 0x00000002
#define _SHR_PM_100MB_HD 0x00000004
#define _SHR_PM_100MB_FD 0x00000008
#define _SHR_PM_1000MB_HD 0x00000010
#define _SHR_PM_1000MB_FD 0x00000020
#define _SHR_PM_2500MB_FD 0x00000040
#define _SHR_PM_10GB_FD 0x00000080
#define _SHR_PM_40GB_FD 0x00000100
#define _SHR_PM_100GB_FD 0x00000200
#define _SHR_PM_PAUSE_TX 0x00010000
#define _SHR_PM_PAUSE_RX 0x00020000
#define _SHR_PM_AUTONEG 0x00040000
#define _SHR_PM_LB_MAC 0x00080000
#define _SHR_PM_LB_PHY 0x00100000

/* Interface between MAC and PHY. */
typedef enum _shr_port_if_e {
    _SHR_PORT_IF_NOCXN = 0, /* not connected */
    _SHR_PORT_IF_NULL = 1,  /* pass-through, without PHY */
    _SHR_PORT_IF_MII = 2,
    _SHR_PORT_IF_GMII = 3,
    _SHR_PORT_IF_SGMII = 4,
    _SHR_PORT_IF_QSGMII = 5,
    _SHR_PORT_IF_RGMII = 6,
    _SHR_PORT_IF_XGMII = 7,
    _SHR_PORT_IF_XAUI = 8,
    _SHR_PORT_IF_RXAUI = 9,
    _SHR_PORT_IF_XFI = 10,
    _SHR_PORT_IF_SFI = 11,
    _SHR_PORT_IF_KR = 12,
    _SHR_PORT_IF_KR4 = 13,
    _SHR_PORT_IF_CR4 = 14,
    _SHR_PORT_IF_XLAUI = 15,
    _SHR_PORT_IF_CAUI = 16,
    _SHR_PORT_IF_ILKN = 17, /* Interlaken */
    _SHR_PORT_IF_COUNT
} _shr_port_if_t;

typedef enum _shr_port_duplex_e {
    _SHR_PORT_DUPLEX_HALF = 0,
    _SHR_PORT_DUPLEX_FULL = 1,
    _SHR_PORT_DUPLEX_COUNT
} _shr_port_duplex_t;

/* Crossing of the copper pairs: how it is decided, and what was decided. */
typedef enum _shr_port_mdix_e {
    _SHR_PORT_MDIX_AUTO = 0,
    _SHR_PORT_MDIX_FORCE_AUTO = 1, /* automatic even without autonegotiation */
    _SHR_PORT_MDIX_NORMAL = 2,
    _SHR_PORT_MDIX_XOVER = 3,
    _SHR_PORT_MDIX_COUNT
} _shr_port_mdix_t;

typedef enum _shr_port_mdix_status_e {
    _SHR_PORT_MDIX_STATUS_NORMAL = 0,
    _SHR_PORT_MDIX_STATUS_XOVER = 1,
    _SHR_PORT_MDIX_STATUS_COUNT
} _shr_port_mdix_status_t;

typedef enum _shr_port_medium_e {
    _SHR_PORT_MEDIUM_NONE = 0,
    _SHR_PORT_MEDIUM_COPPER = 1,
    _SHR_PORT_MEDIUM_FIBER = 2,
    _SHR_PORT_MEDIUM_BACKPLANE = 3,
    _SHR_PORT_MEDIUM_COUNT
} _shr_port_medium_t;

/* Abilities by kind; the speeds are sets of one bit per Mbit/s rate, as in _SHR_PM_*. */
typedef struct _shr_port_ability_s {
    _shr_port_mode_t speed_half_duplex;
    _shr_port_mode_t speed_full_duplex;
    _shr_port_mode_t pause;
    uint32 interface; /* bit n for _shr_port_if_t n */
    uint32 medium;    /* bit n for _shr_port_medium_t n */
    uint32 loopback;
    uint32 flags;
    uint32 eee;       /* rates with energy-efficient Ethernet */
    uint32 fec;
} _shr_port_ability_t;

/* How a PHY with several media treats one of them. */
typedef struct _shr_phy_config_s {
    int enable;
    int preferred;
    int autoneg_enable;
    _shr_port_mode_t autoneg_advert;
    int force_speed;  /* Mbit/s, without autonegotiation */
    int force_duplex;
    int master;
    _shr_port_mdix_t mdix;
} _shr_phy_config_t;

typedef enum _shr_port_cable_state_e {
    _SHR_PORT_CABLE_STATE_OK = 0,
    _SHR_PORT_CABLE_STATE_OPEN = 1,
    _SHR_PORT_CABLE_STATE_SHORT = 2,
    _SHR_PORT_CABLE_STATE_OPENSHORT = 3,
    _SHR_PORT_CABLE_STATE_CROSSTALK = 4,
    _SHR_PORT_CABLE_STATE_UNKNOWN = 5,
    _SHR_PORT_CABLE_STATE_COUNT
} _shr_port_cable_state_t;

#define _SHR_PORT_CABLE_PAIRS 4

/* Outcome of a cable test. Lengths are metres, good to fuzz_len metres either way. */
typedef struct _shr_port_cable_diag_s {
    _shr_port_cable_state_t state;
    int npairs;
    _shr_port_cable_state_t pair_state[_SHR_PORT_CABLE_PAIRS];
    int pair_len[_SHR_PORT_CABLE_PAIRS];
    int fuzz_len;
} _shr_port_cable_diag_t;

#endif
