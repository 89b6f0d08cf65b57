/*
 * Chip memories (tables).
 *
 * An entry is named by the memory, the copy, the index, and for an array of memories the number in the array
 * (0 if not). The copy is the block that has it, as a number of the unit's control record, or that block's
 * core; the broadcast block, SOC_CORE_BROADCAST and -1 are all copies, of which reads take the first. An
 * entry's words come least significant first; entry_data has to have room for all of them. Bits without a
 * field are 0.
 *
 * Status as for registers; SOC_E_PARAM too for a copy, an index or an array number out of range.
 */
#ifndef SOC_MEMORY_H
#define SOC_MEMORY_H

#include <sal/types.h>
#include <soc/error.h>
#include <soc/field_ids.h>
#include <soc/memory_ids.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The identifier of no memory. */
extern const int MemNoName;

int soc_mem_read(int unit, int mem, int copyno, int index, unsigned int *entry_data);
int soc_mem_write(int unit, int mem, int copyno, int index, unsigned int *entry_data);
int soc_mem_array_read(int unit, int mem, unsigned int array_index, int copyno, int index,
                       void *entry_data);
int soc_mem_array_write(int unit, int mem, unsigned int array_index, int copyno, int index,
                        void *entry_data);

/* The low 32 bits of a field in an entry; 0 if the memory has no such field. */
uint32 soc_mem_field32_get(int unit, int mem, unsigned int *entry_data, int field);

#ifdef __cplusplus
}
#endif

#endif
