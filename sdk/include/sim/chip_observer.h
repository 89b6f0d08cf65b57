/*
 * Sees what is read from and written to the simulated chips, wherever the access comes from. Not part of the
 * SDK proper.
 */
#ifndef SIM_CHIP_OBSERVER_H
#define SIM_CHIP_OBSERVER_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

typedef struct sim_access_s {
    int unit;
    int is_memory;
    int id;         /* soc_reg_t, or soc_mem_t */
    uint32 address; /* of the first word, in one block */
    uint32 words;
} sim_access_t;

/* Each may be null. What they are given holds for the call only; they may not write to chips. */
typedef struct sim_chip_observer_s {
    /* After a write, with the words as they are then: a write to all copies is one access to each. */
    void (*written)(const sim_access_t *access, const uint32 *words);

    /* After a read by a caller of the SDK, with what that caller gets. */
    void (*was_read)(const sim_access_t *access, const uint32 *words);

    /* Before a memory is read: 1 if the observer put the words there that are to be read instead, or 0. */
    int (*answers)(const sim_access_t *access, uint32 *words);
} sim_chip_observer_t;

/* From now on it is this one, which has to live as long, or none (null). */
void sim_chip_observe(const sim_chip_observer_t *observer);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
