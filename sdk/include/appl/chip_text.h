/*
 * Registers, memories and blocks by name: that of the identifier with or without its final r or m, in either
 * case.
 *
 * Parsers of a status return BCM_E_NONE, BCM_E_UNIT, BCM_E_NOT_FOUND for an unknown name, and BCM_E_PARAM for
 * other text that they do not understand, numbers out of range, or a null pointer. What they write to is then
 * as it was.
 */
#ifndef APPL_CHIP_TEXT_H
#define APPL_CHIP_TEXT_H

#include <soc/block.h>
#include <soc/memory.h>
#include <soc/register.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Makes the table of all names anew; without this call it is made when it is first used. */
void init_symtab(void);

/* A register of the host interface, "CMIC_IRQ_MASK[3]" for an element of an array; gives its address. */
int parse_cmic_regname(int unit, char *name, uint32 *offset_ptr);

/*
 * Registers, into a list that soc_regaddrlist_alloc() made room for: "NIF_PORT_CTRL.ce0-ce3" for ports, by
 * number or name; "EGQ_AGEING_CTRL.1" for a core, ".*" for what reaches all cores at once;
 * "CMIC_IRQ_MASK[0-2]" for elements; all of them where it does not say. "0x10000010" is the register at an
 * address. BCM_E_PORT for a port or core that there is not, BCM_E_FULL if the list has no room for all.
 */
int parse_symbolic_reference(int unit, soc_regaddrlist_t *alist, char *ref);

/*
 * A memory, "IHP_MAC_TABLE.1" for one copy of it (or ".*" for all, *copyno -1, which is also what no copy
 * means), "STC_COUNTER[3]" for one of an array (0 if it does not say). copyno and array_index may be null,
 * and the text must then not say.
 */
int parse_memory_name(int unit, soc_mem_t *result, char *str, int *copyno, unsigned int *array_index);

/* A number, "min" or "max" as an index of the memory; or a negative status. */
int parse_memory_index(int unit, soc_mem_t mem, char *val_str);
/* The same as a number in an array of memories; 0xffffffff if it is none. */
unsigned int parse_memory_array_index(int unit, soc_mem_t mem, char *val_str);

/*
 * Blocks: "1" or "0-1" of the kind regtype, "egq0" or "egq0-1" by name, "egq", "all" or "*" for all of the
 * kind, into the first and last of their numbers. A name has to be that of regtype, or of mask if that is not
 * SOC_BLK_NONE.
 */
int parse_block_range(int unit, soc_block_types_t regtype, char *s, int *min, int *max,
                      soc_block_types_t mask);

#ifdef __cplusplus
}
#endif

#endif
