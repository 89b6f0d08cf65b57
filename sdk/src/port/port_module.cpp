/// All ports of a unit at once.
#include "checked.h"
#include "driver_registers.h"
#include "phy_unit.h"
#include "sim.h"

using namespace sim;

extern "C" {

int sim_bcm_port_init(int unit)
{
    return on_unit(unit, {}, [unit](Switch &sw) -> int {
        sw.reset_ports();
        start_phys(unit);
        for (int port = 0; port <= port_max; ++port) {
            write_port_registers(unit, port);
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
    return on_unit(unit, {config}, [&](Switch &sw) -> int {
        *config = {};
        BCM_PBMP_PORT_ADD(config->cpu, cpu_port);
        config->port = config->e = config->nif = config->all = front_ports();
        BCM_PBMP_PORT_ADD(config->all, cpu_port);
        for (int port = cpu_port + 1; port <= port_max; ++port) {
            const bool fastest = sw.ports[static_cast<std::size_t>(port)].speed_max == front_speed_max;
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
