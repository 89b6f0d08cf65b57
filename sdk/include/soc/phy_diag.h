/*
 * Diagnostics of PHYs: what soc_phyctrl_diag_ctrl() takes, and what an XGPHY_DIAG_DATA_t holds. The last
 * argument is a uint32 pointer, in or out, unless a comment says otherwise; null where an operation has none.
 */
#ifndef SOC_PHY_DIAG_H
#define SOC_PHY_DIAG_H

/* Third argument: lane, side and PHY in bits of their own. 0 is lane 0 of the outermost PHY's line side. */
#define PHY_DIAG_LANE_SHIFT 0
#define PHY_DIAG_LANE_MASK 0xff
#define PHY_DIAG_LANE_ALL 0xff
#define PHY_DIAG_SIDE_SHIFT 8
#define PHY_DIAG_SIDE_MASK 0xf
#define PHY_DIAG_SIDE_LINE 0
#define PHY_DIAG_SIDE_SYSTEM 1
#define PHY_DIAG_DEVICE_SHIFT 12
#define PHY_DIAG_DEVICE_MASK 0xf
#define PHY_DIAG_DEVICE_OUTERMOST 0
#define PHY_DIAG_DEVICE_INTERNAL 1
#define PHY_DIAG_DEVICE_EXTERNAL 2        /* nearest to the chip */
#define PHY_DIAG_DEVICE_SECOND_EXTERNAL 3

/* Fourth argument: the class of operations. */
typedef enum phy_diag_ctrl_e {
    PHY_DIAG_CTRL_STATE = 0,     /* PHY_DIAG_STATE_* */
    PHY_DIAG_CTRL_REGISTER_READ, /* the operation is a register's address */
    PHY_DIAG_CTRL_REGISTER_WRITE,
    PHY_DIAG_CTRL_CONTROL_GET,   /* the operation is a SOC_PHY_CONTROL_* */
    PHY_DIAG_CTRL_CONTROL_SET,
    PHY_DIAG_CTRL_LOOPBACK,      /* PHY_DIAG_LOOPBACK_* */
    PHY_DIAG_CTRL_PRBS,          /* PHY_DIAG_PRBS_* */
    PHY_DIAG_CTRL_EYE,           /* PHY_DIAG_EYE_* */
    PHY_DIAG_CTRL_BER,           /* PHY_DIAG_BER_* */
    PHY_DIAG_CTRL_FIRMWARE,      /* PHY_DIAG_FIRMWARE_* */
    PHY_DIAG_CTRL_RECEIVER       /* no operation; the argument is an XGPHY_DIAG_DATA_t to fill */
} phy_diag_ctrl_t;

/* State, out: 1 for good. */
typedef enum phy_diag_state_e {
    PHY_DIAG_STATE_LINK = 0,
    PHY_DIAG_STATE_SIGNAL,
    PHY_DIAG_STATE_CLOCK_LOCK,
    PHY_DIAG_STATE_BLOCK_LOCK,
    PHY_DIAG_STATE_AUTONEG_DONE
} phy_diag_state_t;

/* Loopback; no argument. */
typedef enum phy_diag_loopback_e {
    PHY_DIAG_LOOPBACK_OFF = 0,
    PHY_DIAG_LOOPBACK_LOCAL, /* towards the MAC */
    PHY_DIAG_LOOPBACK_REMOTE
} phy_diag_loopback_t;

/* Test sequences. */
typedef enum phy_diag_prbs_e {
    PHY_DIAG_PRBS_START = 0,   /* in: SOC_PHY_PRBS_POLYNOMIAL_* */
    PHY_DIAG_PRBS_STOP,        /* no argument */
    PHY_DIAG_PRBS_LOCK,        /* out */
    PHY_DIAG_PRBS_ERRORS,      /* out: wrong bits since the last call */
    PHY_DIAG_PRBS_ERROR_INJECT /* in: so many wrong bits */
} phy_diag_prbs_t;

/* Eye of the received signal. */
typedef enum phy_diag_eye_e {
    PHY_DIAG_EYE_START = 0,     /* no argument, as in the next */
    PHY_DIAG_EYE_STOP,
    PHY_DIAG_EYE_MARGIN_LEFT,   /* out: thousandths of a bit time */
    PHY_DIAG_EYE_MARGIN_RIGHT,
    PHY_DIAG_EYE_MARGIN_UPPER,  /* out: mV */
    PHY_DIAG_EYE_MARGIN_LOWER
} phy_diag_eye_t;

/* Bit error rate. */
typedef enum phy_diag_ber_e {
    PHY_DIAG_BER_START = 0, /* in: seconds to measure */
    PHY_DIAG_BER_ERRORS     /* out: wrong bits so far */
} phy_diag_ber_t;

/* Firmware, out. */
typedef enum phy_diag_firmware_e {
    PHY_DIAG_FIRMWARE_VERSION = 0,
    PHY_DIAG_FIRMWARE_CRC /* CRC-32 of IEEE 802.3 */
} phy_diag_firmware_t;

/* flags of an XGPHY_DIAG_DATA_t: the members that hold something. */
typedef enum xgphy_diag_flag_e {
    XGPHY_DIAG_SYMBOL_ERRORS = 0x01,
    XGPHY_DIAG_CORRECTED_ERRORS = 0x02,
    XGPHY_DIAG_BLOCK_LOCK = 0x04,
    XGPHY_DIAG_TEMPERATURE = 0x08,
    XGPHY_DIAG_SNR = 0x10
} xgphy_diag_flag_t;

#endif
