/*
 * Where ports are on a chip of several cores. All return a status: SOC_E_UNIT, SOC_E_PARAM, SOC_E_PORT.
 */
#ifndef SOC_PORT_DATABASE_H
#define SOC_PORT_DATABASE_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The core of a port. */
int soc_port_sw_db_core_get(int unit, int port, int *core);

/* The number that the core's traffic manager has for a port, and the core. */
int soc_port_sw_db_local_to_tm_port_get(int unit, int port, uint32 *tm_port, int *core);

/*
 * The egress interface to which a core's traffic manager sends what leaves by the port, as it stands in the
 * chip's table; SOC_E_NOT_FOUND if that says none, SOC_E_INIT if the chip is down.
 */
int soc_jer_egr_port2egress_offset(int unit, int core, uint32 tm_port, uint32 *egr_if);

#ifdef __cplusplus
}
#endif

#endif
