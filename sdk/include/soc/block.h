/*
 * The blocks that the chip is made of.
 */
#ifndef SOC_BLOCK_H
#define SOC_BLOCK_H

/* Kinds of block. Some are on the chip once, some once per core. */
typedef enum soc_block_types_e {
    SOC_BLK_NONE = -1,
    SOC_BLK_CMIC, /* host interface */
    SOC_BLK_CCS,  /* chip-wide services */
    SOC_BLK_EGQ,  /* egress queues */
    SOC_BLK_IHB,  /* ingress header builder */
    SOC_BLK_IHP,  /* ingress header processor */
    SOC_BLK_IQM,  /* ingress queue manager */
    SOC_BLK_CGM,  /* congestion management */
    SOC_BLK_SCH,  /* credit scheduler */
    SOC_BLK_PQP,  /* egress queue pairs */
    SOC_BLK_FQP,  /* egress port scheduler */
    SOC_BLK_EPE,  /* egress packet editor */
    SOC_BLK_FTX,  /* fabric transmit */
    SOC_BLK_FRX,  /* fabric receive */
    SOC_BLK_FRT,  /* fabric reachability */
    SOC_BLK_NIF,  /* network interfaces */
    SOC_BLK_OAP,  /* OAM processor */
    SOC_BLK_OLP,  /* address learning */
    SOC_BLK_STC,  /* statistics processor */
    SOC_BLK_COUNT
} soc_block_types_t;

/* One block of a unit: the number by which it is addressed, as in the unit's control record; -1 for none. */
typedef int soc_block_t;

#define SOC_BLOCK_INVALID (-1)

#endif
