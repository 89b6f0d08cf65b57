/*
 * Chip registers: access, fields, addresses.
 *
 * A register is named by its identifier, by the port, and by the index of the element if it is an array (0 if
 * not). The port is that of a per-port register; for others it is the core of a block that each core has, or
 * REG_PORT_ANY: all cores at once, of which reads take core 0. Words and bits count from the least
 * significant. Read-only fields keep their values whatever is written, bits without a field are 0.
 *
 * Status: SOC_E_UNIT, SOC_E_INIT (after soc_deinit()), SOC_E_PARAM (register, index, field, width or a null
 * pointer), SOC_E_PORT, and SOC_E_NOT_FOUND for an address at which there is no register. What a failing call
 * should have written is left as it was.
 */
#ifndef SOC_REGISTER_H
#define SOC_REGISTER_H

#include <soc/error.h>
#include <soc/register_types.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * By address. A register of more than 32 bits has a word at each of several addresses; the 64-bit calls take
 * two words. soc_reg_read() and soc_reg_write() want the address of that register, of up to 64 bits.
 */
int soc_reg32_read(int unit, uint32 addr, uint32 *data);
int soc_reg32_write(int unit, uint32 addr, uint32 data);
int soc_reg64_read(int unit, uint32 addr, uint64 *data);
int soc_reg64_write(int unit, uint32 addr, uint64 data);
int soc_reg_read(int unit, soc_reg_t reg, uint32 addr, uint64 *data);
int soc_reg_write(int unit, soc_reg_t reg, uint32 addr, uint64 data);

/* By identifier: registers of up to 32 bits, of 33 to 64, of up to 64, and of any width. */
int soc_reg32_get(int unit, soc_reg_t reg, int port, int index, uint32 *data);
int soc_reg32_set(int unit, soc_reg_t reg, int port, int index, uint32 data);
int soc_reg64_get(int unit, soc_reg_t reg, int port, int index, uint64 *data);
int soc_reg64_set(int unit, soc_reg_t reg, int port, int index, uint64 data);
int soc_reg_get(int unit, soc_reg_t reg, int port, int index, uint64 *data);
int soc_reg_set(int unit, soc_reg_t reg, int port, int index, uint64 data);
int soc_reg_above_64_get(int unit, soc_reg_t reg, int port, int index, soc_reg_above_64_val_t data);
int soc_reg_above_64_set(int unit, soc_reg_t reg, int port, int index, soc_reg_above_64_val_t data);

/*
 * Fields of values of up to 32 bits. A field that the register has not is 0 and cannot be set; setting takes
 * as many low bits of the value as the field has. To validate is to ask whether the value fits: SOC_E_NONE or
 * SOC_E_PARAM. The calls that modify read the register (index 0), change fields and write it.
 */
uint32 soc_reg_field_get(int unit, soc_reg_t reg, uint32 regval, soc_field_t field);
void soc_reg_field_set(int unit, soc_reg_t reg, uint32 *regval, soc_field_t field, uint32 value);
int soc_reg_field_length(int unit, soc_reg_t reg, soc_field_t field); /* in bits; 0 if there is none */
int soc_reg_field_valid(int unit, soc_reg_t reg, soc_field_t field);  /* 1 or 0 */
int soc_reg_field_validate(int unit, soc_reg_t reg, soc_field_t field, uint32 value);
int soc_reg_field32_modify(int unit, soc_reg_t reg, soc_port_t port, soc_field_t field, uint32 value);
int soc_reg_fields32_modify(int unit, soc_reg_t reg, soc_port_t port, int field_count, soc_field_t *fields,
                            uint32 *values);

/* A number below or above 0 as the field's bits; SOC_E_PARAM if it does not fit in them. */
int soc_reg_signed_field_mask(int unit, soc_reg_t reg, soc_field_t field, int32 value_in, uint32 *value_out);

/* Fields of values of up to 64 bits; the field32 calls are for fields of up to 32. */
uint64 soc_reg64_field_get(int unit, soc_reg_t reg, uint64 regval, soc_field_t field);
void soc_reg64_field_set(int unit, soc_reg_t reg, uint64 *regval, soc_field_t field, uint64 value);
uint32 soc_reg64_field32_get(int unit, soc_reg_t reg, uint64 regval, soc_field_t field);
void soc_reg64_field32_set(int unit, soc_reg_t reg, uint64 *regval, soc_field_t field, uint32 value);
int soc_reg64_field_validate(int unit, soc_reg_t reg, soc_field_t field, uint64 value);

/* Fields of values of any width; on a unit that is attached, field_get fills all words of field_val. */
void soc_reg_above_64_field_get(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval, soc_field_t field,
                                soc_reg_above_64_val_t field_val);
void soc_reg_above_64_field_set(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval, soc_field_t field,
                                const soc_reg_above_64_val_t value);
uint32 soc_reg_above_64_field32_get(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval,
                                    soc_field_t field);
void soc_reg_above_64_field32_set(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval, soc_field_t field,
                                  uint32 value);
uint64 soc_reg_above_64_field64_get(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval,
                                    soc_field_t field);

/* Fields of the register itself. A field longer than what is read or modified is SOC_E_PARAM. */
int soc_reg_above_64_field_read(int unit, soc_reg_t reg, soc_port_t port, int index, soc_field_t field,
                                soc_reg_above_64_val_t out_field_val);
int soc_reg_above_64_field32_read(int unit, soc_reg_t reg, soc_port_t port, int index, soc_field_t field,
                                  uint32 *out_field_val);
int soc_reg_above_64_field64_read(int unit, soc_reg_t reg, soc_port_t port, int index, soc_field_t field,
                                  uint64 *out_field_val);
int soc_reg_above_64_field32_modify(int unit, soc_reg_t reg, soc_port_t port, int index, soc_field_t field,
                                    uint32 value);
int soc_reg_above_64_field64_modify(int unit, soc_reg_t reg, soc_port_t port, int index, soc_field_t field,
                                    uint64 value);

/* The bits that belong to fields, other than those with any of the SOCF_* in flags. */
uint32 soc_reg_datamask(int unit, soc_reg_t reg, int flags);
uint64 soc_reg64_datamask(int unit, soc_reg_t reg, int flags);
void soc_reg_above_64_datamask(int unit, soc_reg_t reg, int flags, soc_reg_above_64_val_t datamask);

/* The address of the first word, 0 if there is no such register; also its block and SOC_REG_ACCESS_*. */
uint32 soc_reg_addr(int unit, soc_reg_t reg, int port, int index);
uint32 soc_reg_addr_get(int unit, soc_reg_t reg, int port, int index, uint32 options, int *blk,
                        uint8 *acc_type);

/* Options: an address to read at, which is always that of one block. */
#define SOC_REG_ADDR_TO_READ 0x1

int soc_reg_bytes(int unit, soc_reg_t reg); /* of its value; 0 if there is no such register */
int soc_reg_port_idx_valid(int unit, soc_reg_t reg, soc_port_t port, int idx); /* 1 or 0 */

/* Takes an address apart; the extended call has block and SOC_REG_ACCESS_* apart from the address. */
void soc_regaddrinfo_get(int unit, soc_regaddrinfo_t *ainfo, uint32 addr);
void soc_regaddrinfo_extended_get(int unit, soc_regaddrinfo_t *ainfo, soc_block_t block, int acc_type,
                                  uint32 addr);

/* Gives the list room, and takes it back. SOC_E_PARAM for one that has other room, or none. */
int soc_regaddrlist_alloc(soc_regaddrlist_t *addrlist);
int soc_regaddrlist_free(soc_regaddrlist_t *addrlist);

/*
 * Text of an address (SOC_REG_TEXT_SIZE bytes at most): "NIF_PORT_CTRL.7" for a port, "EGQ_AGEING_CTRL.1" for
 * a core, "EGQ_AGEING_CTRL.*" for all, "CMIC_IRQ_MASK[3]" for an element.
 * Text of a value: "RX_ENABLE=1,TX_ENABLE=0", field by field in hexadecimal, with infix in place of the comma
 * unless that is null; SOC_REG_TEXT_SIZE bytes and at most seven times the infix.
 * bp has to have that room. Nothing is written for what is not a register of up to 32 bits.
 */
void soc_reg_sprint_addr(int unit, char *bp, soc_regaddrinfo_t *ainfo);
void soc_reg_sprint_data(int unit, char *bp, char *infix, soc_reg_t reg, uint32 value);

#define SOC_REG_TEXT_SIZE 256

/* Calls do_it for every element of every register at every port and core, until it returns an error. */
int soc_reg_iterate(int unit, soc_reg_iter_f do_it, void *data);

/*
 * Calls snoop_cb on accesses to the register, by identifier or by address, from now on; one per register, a
 * later one takes its place. What it accesses itself is not snooped. flags: SOC_REG_SNOOP_*.
 */
void soc_reg_snoop_register(int unit, soc_reg_t reg, uint32 flags, soc_reg_snoop_cb_t snoop_cb,
                            void *user_data);
void soc_reg_snoop_unregister(int unit, soc_reg_t reg);

/*
 * Has the functions in the record stand in for the SDK's own accesses by identifier to registers of their
 * width, each where it is not null; the record is copied. What they themselves access is not redirected, and
 * it is that which is snooped. A record of nulls ends it.
 */
int soc_reg_access_func_register(int unit, soc_reg_access_t *reg_access);

#ifdef __cplusplus
}
#endif

#endif
