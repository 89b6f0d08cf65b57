/*
 * How registers and memories of PHYs are reached.
 */
#ifndef SOC_PHY_ACCESS_H
#define SOC_PHY_ACCESS_H

/* Flags of accesses and addresses. */
#define SOC_PHY_INTERNAL 0x00000001      /* the SerDes in the chip, not the PHY outside */
#define SOC_PHY_CLAUSE45 0x00000002      /* addressed by clause 45 of IEEE 802.3 */
#define SOC_PHY_NOMAP 0x00000004         /* port is an address on the MDIO bus */
#define SOC_PHY_I2C_ADDRESS16 0x00000008 /* offsets of the device on the PHY's I2C bus have two bytes */

/* Flags of firmware loads. */
#define SOC_PHY_FIRMWARE_BEGIN 0x00000001     /* first piece: forgets what was loaded before */
#define SOC_PHY_FIRMWARE_END 0x00000002       /* last piece: the firmware starts */
#define SOC_PHY_FIRMWARE_BROADCAST 0x00000004 /* into all PHYs of the chip at once */
#define SOC_PHY_FIRMWARE_PERMANENT 0x00000008 /* into the memory that keeps it without power */

/* Devices of a PHY in clause 45. */
typedef enum soc_phy_device_e {
    SOC_PHY_DEVICE_PMA_PMD = 1, /* next to the medium */
    SOC_PHY_DEVICE_WIS = 2,     /* SONET framing */
    SOC_PHY_DEVICE_PCS = 3,     /* line code */
    SOC_PHY_DEVICE_PHY_XS = 4,  /* extension of the interface, PHY's end */
    SOC_PHY_DEVICE_DTE_XS = 5,  /* MAC's end */
    SOC_PHY_DEVICE_AN = 7,      /* autonegotiation */
    SOC_PHY_DEVICE_VENDOR1 = 30,
    SOC_PHY_DEVICE_VENDOR2 = 31
} soc_phy_device_t;

/* Registers that all PHYs have, by clause 22. */
typedef enum soc_phy_register_e {
    SOC_PHY_REGISTER_CONTROL = 0,
    SOC_PHY_REGISTER_STATUS = 1,
    SOC_PHY_REGISTER_ID0 = 2,
    SOC_PHY_REGISTER_ID1 = 3,
    SOC_PHY_REGISTER_AN_ADVERT = 4,
    SOC_PHY_REGISTER_AN_PARTNER = 5,
    SOC_PHY_REGISTER_AN_EXPANSION = 6,
    SOC_PHY_REGISTER_GIGABIT_CONTROL = 9,
    SOC_PHY_REGISTER_GIGABIT_STATUS = 10,
    SOC_PHY_REGISTER_EXTENDED_STATUS = 15
} soc_phy_register_t;

#endif
