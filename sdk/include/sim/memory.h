/*
 * What the simulated chip knows of a memory, for the platform's libraries.
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

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
