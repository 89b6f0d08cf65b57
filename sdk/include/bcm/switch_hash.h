/*
 * Hashing: how flows are spread over paths, and how keys are spread over the banks of a table.
 *
 * Every packet has two hashes, each over fields that its kind chooses (bcmSwitchHash*Fields0 and 1). What has
 * to choose a path takes bits of one of them (bcmSwitchHashUse*, bcmSwitchHashOffset*).
 */
#ifndef BCM_SWITCH_HASH_H
#define BCM_SWITCH_HASH_H

#include <bcm/types.h>

/* Fields, in words of 16 bits: addresses and labels in parts. */
typedef enum bcm_hash_field_e {
    BCM_HASH_FIELD_DSTPORT = 0x00000001,
    BCM_HASH_FIELD_SRCPORT = 0x00000002,
    BCM_HASH_FIELD_DSTMOD = 0x00000004,
    BCM_HASH_FIELD_SRCMOD = 0x00000008,
    BCM_HASH_FIELD_VLAN = 0x00000010,
    BCM_HASH_FIELD_INNER_VLAN = 0x00000020,
    BCM_HASH_FIELD_ETHERTYPE = 0x00000040,
    BCM_HASH_FIELD_PROTOCOL = 0x00000080,  /* of IP, with the next header of IPv6 */
    BCM_HASH_FIELD_DSTL4 = 0x00000100,
    BCM_HASH_FIELD_SRCL4 = 0x00000200,
    BCM_HASH_FIELD_MACDA_LO = 0x00000400,
    BCM_HASH_FIELD_MACDA_MI = 0x00000800,
    BCM_HASH_FIELD_MACDA_HI = 0x00001000,
    BCM_HASH_FIELD_MACSA_LO = 0x00002000,
    BCM_HASH_FIELD_MACSA_MI = 0x00004000,
    BCM_HASH_FIELD_MACSA_HI = 0x00008000,
    BCM_HASH_FIELD_IPDST_LO = 0x00010000,  /* IPv6 addresses as folded */
    BCM_HASH_FIELD_IPDST_HI = 0x00020000,
    BCM_HASH_FIELD_IPSRC_LO = 0x00040000,
    BCM_HASH_FIELD_IPSRC_HI = 0x00080000,
    BCM_HASH_FIELD_FLOWLABEL_LO = 0x00100000,
    BCM_HASH_FIELD_FLOWLABEL_HI = 0x00200000,
    BCM_HASH_FIELD_1ST_LABEL = 0x00400000, /* top of the stack */
    BCM_HASH_FIELD_2ND_LABEL = 0x00800000,
    BCM_HASH_FIELD_3RD_LABEL = 0x01000000,
    BCM_HASH_FIELD_VNI_LO = 0x02000000,    /* of a virtual network, or service instance */
    BCM_HASH_FIELD_VNI_HI = 0x04000000,
    BCM_HASH_FIELD_ENTROPY_LABEL = 0x08000000,
    BCM_HASH_FIELD_SRC_VP = 0x10000000,    /* virtual port */
    BCM_HASH_FIELD_UDF = 0x20000000        /* user-defined bytes */
} bcm_hash_field_t;

/* Bits of bcmSwitchHashControl: what is hashed even where fields are not chosen. */
typedef enum bcm_hash_control_e {
    BCM_HASH_CONTROL_ECMP_DIP = 0x00000001,      /* routes: destination address too */
    BCM_HASH_CONTROL_ECMP_L4PORTS = 0x00000002,
    BCM_HASH_CONTROL_ECMP_FIELDS = 0x00000004,   /* by the chosen fields alone */
    BCM_HASH_CONTROL_TRUNK_UC_FIELDS = 0x00000008,
    BCM_HASH_CONTROL_TRUNK_NUC_SRC = 0x00000010, /* floods, multicast: source address too */
    BCM_HASH_CONTROL_TRUNK_NUC_DST = 0x00000020,
    BCM_HASH_CONTROL_TRUNK_NUC_MODPORT = 0x00000040,
    BCM_HASH_CONTROL_TRUNK_NUC_FIELDS = 0x00000080,
    BCM_HASH_CONTROL_TRUNK_IPMC_FIELDS = 0x00000100
} bcm_hash_control_t;

/* Hashes of the banks of a table. */
typedef enum bcm_hash_bank_function_e {
    BCM_HASH_ZERO = 0,
    BCM_HASH_LSB = 1,          /* the low bits of the key */
    BCM_HASH_CRC16_LOWER = 2,
    BCM_HASH_CRC16_UPPER = 3,
    BCM_HASH_CRC32_LOWER = 4,
    BCM_HASH_CRC32_UPPER = 5,
    BCM_HASH_BANK_ALL = 0xffff /* every bank of a table */
} bcm_hash_bank_function_t;

/* Functions of the hashes of packets. */
typedef enum bcm_switch_hash_function_e {
    bcmSwitchHashFunctionZero = 0,
    bcmSwitchHashFunctionLowBits,
    bcmSwitchHashFunctionXor16,
    bcmSwitchHashFunctionCrc16,
    bcmSwitchHashFunctionCrc16Ccitt,
    bcmSwitchHashFunctionCrc32Low,           /* low 16 bits of a CRC of 32 */
    bcmSwitchHashFunctionCrc32High,
    bcmSwitchHashFunctionCrc32KoopmanLow,    /* of another polynomial */
    bcmSwitchHashFunctionCrc32KoopmanHigh,
    bcmSwitchHashFunctionMacroFlow           /* another function for each of many groups of flows */
} bcm_switch_hash_function_t;

/* Tables whose entries are placed by hashes, see bcm_switch_hash_banks_config_set. */
typedef enum bcm_switch_hash_table_e {
    bcmSwitchHashTableL2 = 0,
    bcmSwitchHashTableL3,
    bcmSwitchHashTableVlanTranslate,
    bcmSwitchHashTableEgressVlanTranslate,
    bcmSwitchHashTableMpls,
    bcmSwitchHashTableExactMatch,
    bcmSwitchHashTableIpmc,
    bcmSwitchHashTableWlan,
    bcmSwitchHashTableNat,
    bcmSwitchHashTableOamEndpoint
} bcm_switch_hash_table_t;

/* What a hash entry does to the fields that the packet's kind chooses. */
typedef enum bcm_switch_hash_entry_mode_e {
    bcmSwitchHashEntryModeReplace = 0,
    bcmSwitchHashEntryModeAdd,
    bcmSwitchHashEntryModeRemove,
    bcmSwitchHashEntryModeNone               /* leaves them; function and seed alone change */
} bcm_switch_hash_entry_mode_t;

typedef int bcm_switch_hash_entry_t;         /* rule about the hashes of some packets */

/* flags of bcm_switch_hash_entry_create_qset. */
#define BCM_SWITCH_HASH_ENTRY_WITH_ID 0x00000001 /* *entry_id is the id to use */

/* How the packets of an entry are hashed. */
typedef struct bcm_switch_hash_entry_config_s {
    bcm_switch_hash_entry_mode_t mode;
    uint32 fields;                           /* BCM_HASH_FIELD_* */
    bcm_switch_hash_function_t function;
    uint32 seed;
} bcm_switch_hash_entry_config_t;

/* Called once per entry. config is a copy. A negative result ends the traversal, which then returns it. */
typedef int (*bcm_switch_hash_entry_traverse_cb)(int unit, bcm_switch_hash_entry_t entry_id,
                                                 bcm_switch_hash_entry_config_t *config, void *user_data);

#endif
