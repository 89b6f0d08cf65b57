/*
 * Names of switch controls and tunnel types: the enumerator's, "bcmSwitchL2Move", or what follows the part
 * common to all, "L2Move". Case does not matter. For other text, and for a null pointer, the value is one
 * above the highest of the enumeration's.
 */
#ifndef APPL_CONTROL_TEXT_H
#define APPL_CONTROL_TEXT_H

#include <bcm/switch.h>
#include <bcm/tunnel.h>

#ifdef __cplusplus
extern "C" {
#endif

bcm_switch_control_t parse_switch_control(char *str);
bcm_tunnel_type_t parse_tunnel_type(char *str);

#ifdef __cplusplus
}
#endif

#endif
