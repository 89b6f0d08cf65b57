/* Which way packets take through a stack of modules. */
#ifndef BCM_TOPO_H
#define BCM_TOPO_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A port of some module. */
typedef struct bcm_mod_port_s {
    bcm_module_t mod;
    bcm_port_t port;
} bcm_mod_port_t;

/* Says in *exit_port through which port of unit packets for dest_modid leave. */
typedef int (*bcm_topo_map_f)(int unit, bcm_module_t dest_modid, bcm_port_t *exit_port);

/*
 * The map of a unit. While there is none (at first, and after a null was set), the tables of the stack family
 * say the way. port_get also says how far it is, -1 if a map said the way, and gives BCM_E_NOT_FOUND for a
 * module that cannot be reached.
 */
int bcm_topo_map_set(int unit, bcm_topo_map_f map);
int bcm_topo_map_get(int unit, bcm_topo_map_f *map);
int bcm_topo_port_get(int unit, bcm_module_t dest_modid, bcm_port_t *exit_port, int *hops);

#ifdef __cplusplus
}
#endif

#endif
