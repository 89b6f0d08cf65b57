/*
 * What registers are, and where one stands.
 */
#ifndef SOC_REGISTER_TYPES_H
#define SOC_REGISTER_TYPES_H

#include <sal/types.h>
#include <shared/pbmp.h>
#include <bcm/types.h>
#include <soc/block.h>
#include <soc/field_ids.h>
#include <soc/memory_ids.h>
#include <soc/types.h>
#include <soc/register_ids.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A register that is not one of a port: the port argument of its accessors. */
#define REG_PORT_ANY (-10)

/* Words of a register value wider than 64 bits. */
#define SOC_REG_ABOVE_64_MAX_SIZE_U32 20

/*
 * A register's value of any width, least significant word first. The bound stands as a number since users
 * read it in messages.
 */
typedef uint32 soc_reg_above_64_val_t[20];

/* How many of a register there are; soc_regtypenames[] and soc_regtype_gran[] go by it. */
typedef enum soc_regtype_e {
    soc_genreg,       /* one per block */
    soc_cpureg,       /* one, in the host interface */
    soc_pcicfgreg,    /* one, in PCI configuration space */
    soc_portblockreg, /* one per group of ports */
    soc_portreg,      /* one per port */
    soc_cosreg        /* one per class of service */
} soc_regtype_t;

/* A class of service; -1 for none. */
typedef int soc_cos_t;

/* Register types: their names, and how many instances of one share a block. Indexed alike. */
extern char *soc_regtypenames[];
extern int soc_regtype_gran[];

/* A register type for whoever prints what there is. */
typedef struct regtype_entry_s {
    char *name;
    soc_regtype_t type;
    char *help;
} regtype_entry_t;

/* An address of a register, taken apart. */
typedef struct soc_regaddrinfo_s {
    uint32 addr;
    int valid; /* whether there is a register; else of the rest only addr counts */
    soc_reg_t reg;
    int idx;   /* element of an array of registers; 0 for others */
    soc_block_t block;
    soc_port_t port; /* REG_PORT_ANY unless the register is one of a port */
    soc_cos_t cos;
    int is_custom;
    uint8 acc_type;    /* SOC_REG_ACCESS_* */
    soc_field_t field; /* SOC_FIELD_INVALID: the whole register */
} soc_regaddrinfo_t;

/* What an access goes to: one block, or all blocks of the kind at once (reads then take the first). */
typedef enum soc_reg_access_kind_e {
    SOC_REG_ACCESS_SINGLE = 0,
    SOC_REG_ACCESS_BROADCAST = 1
} soc_reg_access_kind_t;

/* Registers that a symbolic reference names. */
typedef struct soc_regaddrlist_s {
    int count;
    soc_regaddrinfo_t *ainfo; /* room for SOC_REGADDRLIST_SIZE, from soc_regaddrlist_alloc() */
} soc_regaddrlist_t;

#define SOC_REGADDRLIST_SIZE 1024

/* Calls of these types stand in for the SDK's own accesses. All return an SDK status. */
typedef int (*soc_reg32_get_f)(int unit, soc_reg_t reg, int port, int index, uint32 *data);
typedef int (*soc_reg64_get_f)(int unit, soc_reg_t reg, int port, int index, uint64 *data);
typedef int (*soc_reg_above64_get_f)(int unit, soc_reg_t reg, int port, int index,
                                     soc_reg_above_64_val_t data);
typedef int (*soc_reg32_set_f)(int unit, soc_reg_t reg, int port, int index, uint32 data);
typedef int (*soc_reg64_set_f)(int unit, soc_reg_t reg, int port, int index, uint64 data);
typedef int (*soc_reg_above64_set_f)(int unit, soc_reg_t reg, int port, int index,
                                     soc_reg_above_64_val_t data);
/* 32 bits, unchecked: the caller knows that the register has this copy. */
typedef int (*soc_fast_reg_set_f)(int unit, soc_reg_t reg, int port, int index, uint32 data);
typedef int (*soc_fast_reg_get_f)(int unit, soc_reg_t reg, int port, int index, uint32 *data);

typedef int (*soc_mem_array_read_f)(int unit, soc_mem_t mem, unsigned int array_index, int copyno, int index,
                                    void *entry_data);
typedef int (*soc_mem_array_write_f)(int unit, soc_mem_t mem, unsigned int array_index, int copyno, int index,
                                     void *entry_data);

/* Waits until a field has a value: timeout in microseconds, and at least so many reads. */
typedef int (*soc_polling_f)(int unit, sal_usecs_t timeout, int min_polls, soc_reg_t reg, int port, int index,
                             soc_field_t field, uint32 value);

/* Writes words from an address on. */
typedef int (*soc_direct_reg_set_f)(int unit, soc_block_t block, uint32 addr, uint32 words, uint32 *data);

/* Accesses of up to 64 bits; without the cache, past any copy of registers that software keeps. */
typedef int (*soc_reg_set_f)(int unit, soc_reg_t reg, int port, int index, uint64 data);
typedef int (*soc_reg_get_f)(int unit, soc_reg_t reg, int port, int index, uint64 *data);
typedef int (*soc_reg_set_nocache_f)(int unit, soc_reg_t reg, int port, int index, uint64 data);

/* Called for each register by soc_reg_iterate(), until it returns an error. */
typedef int (*soc_reg_iter_f)(int unit, soc_regaddrinfo_t *ainfo, void *data);

/*
 * Called after each successful access that is asked for: flags is the one SOC_REG_SNOOP_* that applies, value
 * the register's words as read, or as they are after the write. Both pointers hold for the call only.
 */
typedef void (*soc_reg_snoop_cb_t)(int unit, soc_reg_t reg, soc_regaddrinfo_t *ainfo, uint32 flags,
                                   uint32 *value, void *user_data);

#define SOC_REG_SNOOP_READ 0x1
#define SOC_REG_SNOOP_WRITE 0x2

/* A field of a register or of a memory's entries. */
typedef struct soc_field_info_s {
    soc_field_t field;
    uint16 len;   /* in bits */
    uint16 bp;    /* position of its lowest bit */
    uint32 flags; /* SOCF_* */
} soc_field_info_t;

#define SOCF_RO 0x1     /* writes leave it as it is */
#define SOCF_SIGNED 0x2 /* two's complement */

/* A register's description; one wider than 64 bits has a soc_reg_above_64_info_t beside it. */
typedef struct soc_reg_info_s {
    soc_block_types_t block;
    soc_regtype_t regtype;
    int numels; /* elements of an array, else 1 */
    uint32 offset;
    uint32 flags;
    int nFields;
    soc_field_info_t *fields;
    uint32 rst_val_lo; /* after a reset */
    uint32 rst_val_hi;
    uint32 rst_mask_lo; /* bits that a reset sets */
    uint32 rst_mask_hi;
    int ctr_idx; /* statistics counter; -1 for none */
    int numelportlist_idx;
    uint32 access_latency_mode;
    soc_reg_snoop_cb_t snoop_cb;
    void *snoop_user_data;
    uint32 snoop_flags;
} soc_reg_info_t;

typedef struct soc_large_reg_info_t soc_large_reg_info_t;
typedef struct soc_large_reg_info_t {
    uint32 size;   /* in words */
    uint32 *reset; /* its words after a reset */
    uint32 *mask;  /* bits that a reset sets */
} soc_reg_above_64_info_t;

typedef struct soc_reg_array_info_s {
    uint32 element_skip; /* distance of two elements' addresses */
} soc_reg_array_info_t;

/* The blocks that one access reaches together. */
typedef struct soc_reg_brdc_block_info_s {
    soc_block_t blk_type;
    int blk_ids[128];
} soc_reg_brdc_block_info_t;

/* Where a walk over registers stands, for those that go on after an error. */
typedef struct reg_data {
    int unit;
    int start_from;
    int error;
    int flags;
} reg_data_t;

/* What stands in for the SDK's own accesses; null: nothing does. */
typedef struct soc_reg_access_s {
    soc_reg32_get_f reg32_get;
    soc_reg64_get_f reg64_get;
    soc_reg_above64_get_f reg_above64_get;
    soc_reg32_set_f reg32_set;
    soc_reg64_set_f reg64_set;
    soc_reg_above64_set_f reg_above64_set;
    soc_mem_array_read_f mem_read;
    soc_mem_array_write_f mem_write;
} soc_reg_access_t;

/* The same for the registers of some ports. */
typedef struct soc_custom_reg_access_s {
    soc_reg32_get_f custom_reg32_get;
    soc_reg64_get_f custom_reg64_get;
    soc_reg_above64_get_f custom_reg_above64_get;
    soc_reg32_set_f custom_reg32_set;
    soc_reg64_set_f custom_reg64_set;
    soc_reg_above64_set_f custom_reg_above64_set;
    soc_pbmp_t custom_port_pbmp;
} soc_custom_reg_access_t;

/* What a log of hardware accesses calls. */
typedef struct soc_hw_log_access_s {
    soc_reg32_get_f reg32_get;
    soc_reg64_get_f reg64_get;
    soc_reg_above64_get_f reg_above64_get;
    soc_reg32_set_f reg32_set;
    soc_reg64_set_f reg64_set;
    soc_reg_above64_set_f reg_above64_set;
    soc_mem_array_read_f mem_read;
    soc_mem_array_write_f mem_write;
    soc_polling_f polling;
    soc_direct_reg_set_f direct_reg_set;
    soc_fast_reg_set_f fast_reg_set;
    soc_fast_reg_get_f fast_reg_get;
    soc_reg_set_f soc_reg_set;
    soc_reg_get_f soc_reg_get;
    soc_reg_set_nocache_f soc_reg_set_nocache;
} soc_hw_log_access_t;

#ifdef __cplusplus
}
#endif

#endif
