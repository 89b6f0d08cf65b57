/*
 * The memories (tables) of the chip: the block that has them, then their name there.
 */
#ifndef SOC_MEMORY_IDS_H
#define SOC_MEMORY_IDS_H

enum soc_mem_e {
    SOC_MEM_INVALID = -1,

    /* Egress queues (EGQ) */
    EGQ_TM_PORT_TO_INTERFACEm,
    EGQ_VLAN_MEMBERSHIPm,
    EGQ_PORT_CONFIGm,

    /* Ingress header builder (IHB) */
    IHB_PORT_INFOm,
    IHB_LAG_MEMBERm,
    IHB_FEC_ENTRYm,
    IHB_PROGRAM_SELECTION_TCAMm,
    IHB_TRAP_PROFILEm,
    IHB_STATISTICS_PROFILEm,

    /* Ingress header processor (IHP) */
    IHP_MAC_TABLEm,
    IHP_VSI_CONFIGm,
    IHP_VLAN_PORT_INFOm,
    IHP_VLAN_TO_VSI_MAPm,
    IHP_LIF_TABLEm,
    IHP_SPANNING_TREE_STATEm,

    /* Ingress queue manager (IQM) */
    IQM_QUEUE_PROFILEm,
    IQM_QUEUE_SIZEm,
    IQM_CREDIT_BALANCEm,
    IQM_MULTICAST_REPLICATIONm,

    /* Congestion management (CGM) */
    CGM_VSQ_PROFILEm,
    CGM_VSQ_OCCUPANCYm,
    CGM_DROP_PRECEDENCE_MAPm,
    CGM_PFC_PORT_MAPm,

    /* Credit scheduler (SCH) */
    SCH_FLOW_PARAMETERSm,
    SCH_SHAPER_DESCRIPTORm,
    SCH_SCHEDULER_ELEMENTm,

    /* Egress queue pairs (PQP) */
    PQP_QUEUE_PAIR_CONFIGm,

    /* Egress port scheduler (FQP) */
    FQP_CALENDARm,
    FQP_PORT_SHAPERm,

    /* Egress packet editor (EPE) */
    EPE_ENCAPSULATIONm,
    EPE_QOS_REMARKm,
    EPE_TAG_TABLEm,

    /* Fabric transmit (FTX) */
    FTX_REACHABILITY_MAPm,

    /* OAM processor (OAP) */
    OAP_MEP_DBm,
    OAP_REMOTE_MEP_DBm,

    /* Statistics processor (STC) */
    STC_COUNTERm,

    NUM_SOC_MEM
};

/* One of these; a number wherever it crosses an interface. */
typedef int soc_mem_t;

#endif
