/*
 * Ports across the chips of a stack: their names and system port numbers.
 */
#ifndef SOC_STACK_PORT_H
#define SOC_STACK_PORT_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Fabric access processors (FAPs) of a stack are 0..SOC_FAP_ID_MAX, the ports of each 0..SOC_FAP_PORT_MAX. */
#define SOC_FAP_ID_MAX 0x3fff
#define SOC_FAP_PORT_MAX 0x3ff

/* The system port of a FAP's port; 0xffffffff if there cannot be such a port. */
uint32 fapToSystemPhyPortId(uint32 fapId, uint32 fapPortId);

/*
 * The name of a port, such as "ce0", as the unit knows it; null if it knows no such port. modid is -1 for the
 * unit's own. The text stays as it is for ever; it is not to be written to.
 */
char *mod_port_name(int unit, int modid, int port);

#ifdef __cplusplus
}
#endif

#endif
