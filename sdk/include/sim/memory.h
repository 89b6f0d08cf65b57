/*
 * What the simulated chip knows of a memory, for the platform's libraries; and faults of memories.
 */
#ifndef SIM_MEMORY_H
#define SIM_MEMORY_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

typedef struct sim_memory_s {
    const char *name; /* never freed */
    int block;        /* the first that has the memory */
    int cores;        /* if above 1: a block each, numbered on, and one more that stands for all */
    uint32 base;      /* address of the first entry there */
    uint32 entry_words;
    uint32 entries; /* of each memory of an array */
    uint32 arrays;
} sim_memory_t;

/* SOC_E_NONE, SOC_E_UNIT or SOC_E_PARAM. */
int sim_memory_describe(int unit, int mem, sim_memory_t *memory);

/*
 * A bit of the entry turns over, as by radiation. It is noticed when the entry is read, or by a scan
 * (bcmSwitchMemScanEnable), which takes place at once where the clock stands: bcmSwitchEventParityError, and if the unit
 * corrects it, which it does at first, bcmSwitchEventParityCorrected. Else it is read that way until somebody writes the
 * entry. SOC_E_NONE, SOC_E_UNIT, SOC_E_INIT (the chip does not run) or SOC_E_PARAM, as of soc_mem_array_read.
 */
int sim_memory_damage(int unit, int mem, unsigned int array, int copy, int index);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
