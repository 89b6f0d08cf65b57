/*
 * Ports of other modules as text.
 */
#ifndef APPL_MOD_PORT_TEXT_H
#define APPL_MOD_PORT_TEXT_H

#include <bcm/topo.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * "module:port" with numbers, or a port of the unit's own module by number or name, into *mp. BCM_E_NONE,
 * BCM_E_UNIT, BCM_E_BADID for a module that there cannot be, else as appl/port_text.h says.
 */
int parse_mod_port(int unit, char *s, bcm_mod_port_t *mp);

#ifdef __cplusplus
}
#endif

#endif
