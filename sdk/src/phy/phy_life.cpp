/// Tables and drivers of PHYs, from init to detach.
#include "begin.h"
#include "phy.h"
#include "sim_phy.h"
#include "sim_phyctrl.h"

using namespace sim;

namespace {

int set_common(int unit, bool present)
{
    return begin(unit, chip_runs, phy_unit).then([&](PhyUnit &phys) {
        phys.has_common = present;
        phys.shared_registers.clear();
        return SOC_E_NONE;
    });
}

int set_drivers(int unit, bool present)
{
    return begin(unit, chip_runs, phy_unit).then([&](PhyUnit &phys) {
        phys.has_drivers = present;
        for (PhyPort &port : phys.all()) {
            port.probed = port.initialised = false;
        }
        return SOC_E_NONE;
    });
}

int probe(const PhyUnit &phys, PhyPort &port)
{
    if (!phys.has_common || !phys.has_drivers) {
        return SOC_E_INIT;
    }
    port.probed = true;
    return SOC_E_NONE;
}

int initialise(PhyPort &port)
{
    if (!port.probed) {
        return SOC_E_INIT;
    }
    port.reset_phys();
    port.initialised = true;
    port.reported_link = link_of(port).up();
    return SOC_E_NONE;
}

int probe_and_initialise(const PhyUnit &phys, PhyPort &port)
{
    const int rc = probe(phys, port);
    return rc == SOC_E_NONE ? initialise(port) : rc;
}

}  // namespace

extern "C" {

int sim_soc_phy_init(int unit)
{
    return begin(unit, chip_runs, phy_unit).then([&](PhyUnit &phys) {
        remake(phys.tables);
        publish(unit, &phys.tables);
        phys.has_tables = true;
        return SOC_E_NONE;
    });
}

int sim_soc_phy_deinit(int unit)
{
    return begin(unit, chip_runs, phy_unit).then([&](PhyUnit &phys) {
        publish(unit, nullptr);
        phys.has_tables = false;
        for (PhyPort &port : phys.all()) {
            port.watchers.clear();
            port.own_reset = port.default_reset = ResetFunction();
        }
        return SOC_E_NONE;
    });
}

int sim_soc_phy_common_init(int unit)
{
    return set_common(unit, true);
}

int sim_soc_phy_common_detach(int unit)
{
    return set_common(unit, false);
}

int sim_soc_phyctrl_software_init(int unit)
{
    return set_drivers(unit, true);
}

int sim_soc_phyctrl_software_deinit(int unit)
{
    return set_drivers(unit, false);
}

int sim_soc_phyctrl_probe(int unit, soc_port_t port)
{
    return begin(unit, chip_runs, phy_port(port)).then(probe);
}

int sim_soc_phyctrl_init(int unit, soc_port_t port)
{
    return begin(unit, chip_runs, phy_port(port)).then([](PhyUnit &phys, PhyPort &own) {
        return phys.has_common && phys.has_drivers ? initialise(own) : static_cast<int>(SOC_E_INIT);
    });
}

int sim_soc_phy_port_init(int unit, soc_port_t port)
{
    return begin(unit, chip_runs, phy_port(port)).then(probe_and_initialise);
}

int sim_soc_phyctrl_software_port_init(int unit, soc_port_t port)
{
    return begin(unit, chip_runs, phy_port(port)).then([](PhyUnit &phys, PhyPort &own) {
        const int rc = probe(phys, own);
        own.initialised = own.initialised || rc == SOC_E_NONE;
        return rc;
    });
}

int sim_soc_phyctrl_detach(int unit, soc_port_t port)
{
    return begin(unit, chip_runs, phy_port(port)).then([](PhyUnit &, PhyPort &own) {
        if (!own.probed) {
            return SOC_E_INIT;
        }
        own.probed = own.initialised = false;
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_pbm_probe_init(int unit, pbmp_t pbmp, pbmp_t *okay_pbmp)
{
    return begin(unit, chip_runs, given(okay_pbmp), phy_unit).then([&](PhyUnit &) {
        pbmp_t okay = {};
        for (int port = 0; port <= port_max; ++port) {
            if (_SHR_PBMP_MEMBER(pbmp, port) && sim_soc_phy_port_init(unit, port) == SOC_E_NONE) {
                _SHR_PBMP_PORT_ADD(okay, port);
            }
        }
        *okay_pbmp = okay;
        return SOC_E_NONE;
    });
}

}  // extern "C"
