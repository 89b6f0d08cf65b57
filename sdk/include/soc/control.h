/*
 * What the SDK keeps of each attached unit: of this record, the copy numbers.
 */
#ifndef SOC_CONTROL_H
#define SOC_CONTROL_H

#include <soc/phy.h>

#ifdef __cplusplus
extern "C" {
#endif

#define SOC_MAX_NUM_BLOCKS 64
#define SOC_MAX_NUM_CORES 2

/* Stands for all cores at once where a core is asked for. */
#define SOC_CORE_BROADCAST (-17)

/* Block numbers of one block type that each core has. */
typedef struct soc_core_blocks_s {
    int block[SOC_MAX_NUM_CORES]; /* by core */
    int broadcast;                /* writes to both */
} soc_core_blocks_t;

typedef struct soc_control_s {
    int block_copyno[SOC_MAX_NUM_BLOCKS]; /* copy number by block; -1: no such block */
    soc_core_blocks_t egq;                /* egress queues */
    soc_core_blocks_t ihb;                /* ingress header builder */
    soc_core_blocks_t ihp;                /* ingress header processor */
    soc_core_blocks_t iqm;                /* ingress queue manager */
} soc_control_t;

/* By unit; null where none is attached. Read only. */
extern soc_control_t *soc_control[SOC_MAX_NUM_DEVICES];

#ifdef __cplusplus
}
#endif

#endif
