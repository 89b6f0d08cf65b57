/// All ports of a unit at once.
#include "begin.h"
#include "driver_registers.h"
#include "mdio.h"
#include "phy.h"
#include "port.h"
#include "rule_store.h"
#include "sim_gport.h"
#include "sim_port.h"

using namespace sim;

extern "C" {

int sim_bcm_port_init(int unit)
{
    return begin(unit).then([](Switch &sw) -> int {
        sw.of<PortState>().reset();
        rule_store_of(sw).initialise("port");
        buses_of(sw) = {};
        phys_of(sw).start(sw);
        for (int port = 0; port <= port_max; ++port) {
            write_registers(sw, port);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_port_clear(int unit)
{
    return sim_bcm_port_init(unit);
}

void sim_bcm_port_config_t_init(bcm_port_config_t *config)
{
    if (config != nullptr) {
        *config = {};
    }
}

int sim_bcm_port_config_get(int unit, bcm_port_config_t *config)
{
    return begin(unit, given(config)).then([&](Switch &sw) -> int {
        *config = {};
        BCM_PBMP_PORT_ADD(config->cpu, cpu_port);
        config->port = config->e = config->nif = config->all = front_ports();
        BCM_PBMP_PORT_ADD(config->all, cpu_port);
        for (int port = cpu_port + 1; port <= port_max; ++port) {
            const bool fastest = port_of(sw, port).speed_max == front_speed_max;
            BCM_PBMP_PORT_ADD(fastest ? config->ce : config->xe, port);
        }
        return BCM_E_NONE;
    });
}

char *sim_bcm_port_name(int unit, bcm_port_t port)
{
    return sim_mod_port_name(unit, -1, port);
}

}  // extern "C"
