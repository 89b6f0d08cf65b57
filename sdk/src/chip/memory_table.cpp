/// The memories of the chip, in the order of their identifiers.
#include "chip_layout.h"

#include <iterator>

namespace sim {

namespace {

constexpr uint32 is_signed = SOCF_SIGNED;

// Identifier, name, block, first word in the block, entries, arrays, bits of an entry, fields.
// clang-format off
constexpr Memory table[] = {
    // Egress queues
    {EGQ_TM_PORT_TO_INTERFACEm, "EGQ_TM_PORT_TO_INTERFACE", SOC_BLK_EGQ, 0x0, 256, 1, 32,
     {{{INTERFACEf, 0, 8}, {VALIDf, 8, 1}}}},
    {EGQ_VLAN_MEMBERSHIPm, "EGQ_VLAN_MEMBERSHIP", SOC_BLK_EGQ, 0x20000, 4096, 1, 160,
     {{{MEMBERSf, 0, 65}, {UNTAGGEDf, 96, 64}}}},
    {EGQ_PORT_CONFIGm, "EGQ_PORT_CONFIG", SOC_BLK_EGQ, 0x40000, 256, 1, 64,
     {{{DEFAULT_VLANf, 0, 12}, {EGRESS_FILTERf, 12, 1}, {TPID_PROFILEf, 16, 2}, {SPLIT_HORIZONf, 18, 2},
       {MIRROR_PROFILEf, 32, 4}}}},
    // Ingress header builder
    {IHB_PORT_INFOm, "IHB_PORT_INFO", SOC_BLK_IHB, 0x0, 65, 1, 64,
     {{{HEADER_TYPEf, 0, 4}, {DEFAULT_PROGRAMf, 4, 8}, {LAG_MEMBERf, 12, 1}, {SYSTEM_PORTf, 16, 16},
       {TRAP_ENABLEf, 32, 1}}}},
    {IHB_LAG_MEMBERm, "IHB_LAG_MEMBER", SOC_BLK_IHB, 0x20000, 1024, 1, 32,
     {{{SYSTEM_PORTf, 0, 16}, {VALIDf, 16, 1}}}},
    {IHB_FEC_ENTRYm, "IHB_FEC_ENTRY", SOC_BLK_IHB, 0x40000, 4096, 1, 96,
     {{{DESTINATIONf, 0, 19}, {OUT_LIFf, 32, 18}, {PROTECTIONf, 64, 16}, {STATISTICSf, 80, 1}}}},
    {IHB_PROGRAM_SELECTION_TCAMm, "IHB_PROGRAM_SELECTION_TCAM", SOC_BLK_IHB, 0x60000, 128, 1, 160,
     {{{VALIDf, 0, 1}, {KEY_DATAf, 8, 64}, {KEY_MASKf, 72, 64}, {PROGRAMf, 136, 8}}}},
    {IHB_TRAP_PROFILEm, "IHB_TRAP_PROFILE", SOC_BLK_IHB, 0x80000, 256, 1, 64,
     {{{DESTINATIONf, 0, 19}, {DESTINATION_VALIDf, 19, 1}, {SNOOP_STRENGTHf, 32, 3},
       {TRAP_STRENGTHf, 35, 3}}}},
    {IHB_STATISTICS_PROFILEm, "IHB_STATISTICS_PROFILE", SOC_BLK_IHB, 0xa0000, 256, 1, 32,
     {{{ENGINEf, 0, 4}, {COUNT_FORMATf, 4, 2}, {ENABLEf, 6, 1}}}},
    // Ingress header processor
    {IHP_MAC_TABLEm, "IHP_MAC_TABLE", SOC_BLK_IHP, 0x0, 4096, 1, 128,
     {{{ADDRESSf, 0, 48}, {VSIf, 48, 15}, {DESTINATIONf, 64, 19}, {STATICf, 83, 1}, {HITf, 84, 1},
       {AGEf, 85, 2}, {OUT_LIFf, 96, 18}, {VALIDf, 114, 1}}}},
    {IHP_VSI_CONFIGm, "IHP_VSI_CONFIG", SOC_BLK_IHP, 0x20000, 4096, 1, 96,
     {{{LEARN_ENABLEf, 0, 1}, {FLOOD_PROFILEf, 1, 3}, {MULTICAST_BASEf, 8, 19}, {MY_MAC_INDEXf, 32, 3},
       {STATISTICSf, 35, 1}, {STP_INSTANCEf, 64, 8}}}},
    {IHP_VLAN_PORT_INFOm, "IHP_VLAN_PORT_INFO", SOC_BLK_IHP, 0x40000, 65, 1, 64,
     {{{DEFAULT_VLANf, 0, 12}, {INGRESS_FILTERf, 12, 1}, {TPID_PROFILEf, 16, 2}, {DEFAULT_LIFf, 32, 18}}}},
    {IHP_VLAN_TO_VSI_MAPm, "IHP_VLAN_TO_VSI_MAP", SOC_BLK_IHP, 0x60000, 4096, 1, 32,
     {{{VSIf, 0, 15}, {VALIDf, 15, 1}}}},
    {IHP_LIF_TABLEm, "IHP_LIF_TABLE", SOC_BLK_IHP, 0x80000, 4096, 1, 128,
     {{{VSIf, 0, 15}, {LEARN_ENABLEf, 16, 1}, {DESTINATIONf, 32, 19}, {QOS_PROFILEf, 64, 6},
       {STATISTICSf, 70, 1}}}},
    {IHP_SPANNING_TREE_STATEm, "IHP_SPANNING_TREE_STATE", SOC_BLK_IHP, 0xa0000, 256, 1, 160,
     {{{PORT_STATEf, 0, 130}}}},
    // Ingress queue manager
    {IQM_QUEUE_PROFILEm, "IQM_QUEUE_PROFILE", SOC_BLK_IQM, 0x0, 1024, 1, 32,
     {{{RATE_CLASSf, 0, 5}, {CREDIT_CLASSf, 5, 5}, {ECN_ENABLEf, 10, 1}}}},
    {IQM_QUEUE_SIZEm, "IQM_QUEUE_SIZE", SOC_BLK_IQM, 0x20000, 1024, 1, 64,
     {{{PACKETSf, 0, 20}, {WORDSf, 32, 24}}}},
    {IQM_CREDIT_BALANCEm, "IQM_CREDIT_BALANCE", SOC_BLK_IQM, 0x40000, 1024, 1, 32,
     {{{CREDIT_BYTESf, 0, 24, is_signed}}}},
    {IQM_MULTICAST_REPLICATIONm, "IQM_MULTICAST_REPLICATION", SOC_BLK_IQM, 0x60000, 1024, 1, 64,
     {{{OUT_PORTf, 0, 8}, {OUT_LIFf, 16, 18}, {NEXT_ENTRYf, 34, 18}, {LASTf, 52, 1}}}},
    // Congestion management
    {CGM_VSQ_PROFILEm, "CGM_VSQ_PROFILE", SOC_BLK_CGM, 0x0, 64, 1, 96,
     {{{WRED_ENABLEf, 0, 1}, {TAIL_DROPf, 1, 1}, {MAX_SIZEf, 8, 20}, {MIN_SIZEf, 28, 20},
       {AVERAGE_WEIGHTf, 48, 4}, {DROP_PROBABILITYf, 64, 7}}}},
    {CGM_VSQ_OCCUPANCYm, "CGM_VSQ_OCCUPANCY", SOC_BLK_CGM, 0x20000, 512, 1, 64,
     {{{PACKETSf, 0, 20}, {WORDSf, 32, 24}}}},
    {CGM_DROP_PRECEDENCE_MAPm, "CGM_DROP_PRECEDENCE_MAP", SOC_BLK_CGM, 0x40000, 64, 1, 32,
     {{{DROP_PRECEDENCEf, 0, 2}, {TAIL_DROPf, 2, 1}}}},
    {CGM_PFC_PORT_MAPm, "CGM_PFC_PORT_MAP", SOC_BLK_CGM, 0x60000, 64, 1, 32,
     {{{PFC_ENABLEf, 0, 8}, {OUT_PORTf, 8, 8}}}},
    // Credit scheduler
    {SCH_FLOW_PARAMETERSm, "SCH_FLOW_PARAMETERS", SOC_BLK_SCH, 0x0, 1024, 1, 64,
     {{{RATEf, 0, 24}, {MAX_BURSTf, 32, 16}, {CREDIT_CLASSf, 48, 5}, {ENABLEf, 53, 1}}}},
    {SCH_SHAPER_DESCRIPTORm, "SCH_SHAPER_DESCRIPTOR", SOC_BLK_SCH, 0x20000, 512, 1, 64,
     {{{RATEf, 0, 24}, {MAX_BURSTf, 32, 16}, {LOW_RATEf, 48, 1}}}},
    {SCH_SCHEDULER_ELEMENTm, "SCH_SCHEDULER_ELEMENT", SOC_BLK_SCH, 0x40000, 512, 1, 96,
     {{{ELEMENT_TYPEf, 0, 3}, {STRICT_PRIORITYf, 3, 1}, {WEIGHTf, 32, 32}, {PARENTf, 64, 16}}}},
    // Egress queue pairs
    {PQP_QUEUE_PAIR_CONFIGm, "PQP_QUEUE_PAIR_CONFIG", SOC_BLK_PQP, 0x0, 512, 1, 64,
     {{{MAX_SIZEf, 0, 20}, {OUT_PORTf, 32, 8}, {PRIORITYf, 40, 3}}}},
    // Egress port scheduler
    {FQP_CALENDARm, "FQP_CALENDAR", SOC_BLK_FQP, 0x0, 1024, 2, 32, {{{OUT_PORTf, 0, 8}, {VALIDf, 8, 1}}}},
    {FQP_PORT_SHAPERm, "FQP_PORT_SHAPER", SOC_BLK_FQP, 0x20000, 256, 1, 64,
     {{{RATEf, 0, 24}, {MAX_BURSTf, 32, 16}, {ENABLEf, 48, 1}}}},
    // Egress packet editor
    {EPE_ENCAPSULATIONm, "EPE_ENCAPSULATION", SOC_BLK_EPE, 0x0, 4096, 1, 160,
     {{{ENCAPSULATION_TYPEf, 0, 4}, {VLAN_EDITf, 8, 10}, {NEXT_ENTRYf, 32, 18}, {ADDRESSf, 64, 48},
       {LABELf, 112, 20}, {TTLf, 132, 8}}}},
    {EPE_QOS_REMARKm, "EPE_QOS_REMARK", SOC_BLK_EPE, 0x20000, 1024, 1, 32,
     {{{DSCPf, 0, 6}, {OUTER_PRIORITYf, 6, 3}, {INNER_PRIORITYf, 9, 3}, {EXPERIMENTALf, 12, 3}}}},
    {EPE_TAG_TABLEm, "EPE_TAG_TABLE", SOC_BLK_EPE, 0x40000, 1024, 1, 32,
     {{{OUTER_VLANf, 0, 12}, {OUTER_PRIORITYf, 12, 3}, {INNER_VLANf, 15, 12}, {INNER_PRIORITYf, 27, 3},
       {VALIDf, 30, 1}}}},
    // Fabric transmit
    {FTX_REACHABILITY_MAPm, "FTX_REACHABILITY_MAP", SOC_BLK_FTX, 0x0, 256, 1, 64, {{{LINK_MASKf, 0, 36}}}},
    // OAM processor
    {OAP_MEP_DBm, "OAP_MEP_DB", SOC_BLK_OAP, 0x0, 512, 1, 160,
     {{{MEP_IDf, 0, 13}, {LEVELf, 13, 3}, {PERIODf, 16, 3}, {DEFECTf, 19, 1}, {VSIf, 32, 15},
       {OUT_LIFf, 48, 18}, {TRANSMITTEDf, 80, 32}, {RECEIVEDf, 112, 32}}}},
    {OAP_REMOTE_MEP_DBm, "OAP_REMOTE_MEP_DB", SOC_BLK_OAP, 0x20000, 512, 1, 64,
     {{{MEP_IDf, 0, 13}, {DEFECTf, 13, 1}, {LAST_SEENf, 32, 24}}}},
    // Statistics processor
    {STC_COUNTERm, "STC_COUNTER", SOC_BLK_STC, 0x0, 2048, 16, 64,
     {{{PACKETSf, 0, 29}, {OCTETSf, 29, 35}}}},
};
// clang-format on
static_assert(std::size(table) == NUM_SOC_MEM, "");

}  // namespace

const Memory *memory_at(int id)
{
    return id >= 0 && id < NUM_SOC_MEM ? &table[id] : nullptr;
}

}  // namespace sim
