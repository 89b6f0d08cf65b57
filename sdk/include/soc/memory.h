/*
 * Chip memories.
 */
#ifndef SOC_MEMORY_H
#define SOC_MEMORY_H

#ifdef __cplusplus
extern "C" {
#endif

/* The identifier of no memory. */
extern const int MemNoName;

#ifdef __cplusplus
}
#endif

#endif
