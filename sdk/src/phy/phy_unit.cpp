#include "phy_unit.h"

#include "linkscan.h"

namespace sim {

namespace {

PhyTables &tables_of(int unit)
{
    return unit == 0 ? first_phy_tables : *new PhyTables();
}

}  // namespace

PhyUnit::PhyUnit(int unit_number) : tables(tables_of(unit_number))
{
    for (int port = 0; port <= port_max; ++port) {
        ports.emplace_back(port);
    }
    if (unit_number != 0) {
        remake(tables);
        publish(unit_number, &tables);
    }
}

PhyUnit *phys_of(int unit)
{
    // As the switches, there before other start-up code and after other clean-up.
    static std::map<int, PhyUnit> &units = *new std::map<int, PhyUnit>;
    return attached(unit) == nullptr ? nullptr : &units.try_emplace(unit, unit).first->second;
}

void start_phys(int unit)
{
    PhyUnit &phys = *phys_of(unit);
    remake(phys.tables);
    publish(unit, &phys.tables);
    phys.buses = {};
    phys.shared_registers.clear();
    phys.has_tables = phys.has_common = phys.has_drivers = true;
    for (PhyPort &port : phys.ports) {
        port.restart();
    }
    // The ports of a unit that runs on may have got links back.
    for (int port = 0; port <= port_max; ++port) {
        if (has_serdes(port)) {
            follow_link(unit, phys.of(port));
        }
    }
}

void stop_phys(int unit)
{
    publish(unit, nullptr);
}

bool is_ready(const PhyUnit &phys, const PhyPort &port)
{
    return phys.has_common && phys.has_drivers && port.initialised;
}

void tell_changes(int unit, PhyPort &port)
{
    settle(port);
    report_medium(unit, port);
    follow_link(unit, port);
}

PhyPlace phy_at(PhyUnit &phys, unsigned address)
{
    const int number = phys.tables.port_at(address);
    if (!has_serdes(number)) {
        return {nullptr, nullptr};
    }
    PhyPort &port = phys.of(number);
    const bool internal = phys.tables.of(number).phy_addr_int == address;
    return {&port, internal ? &*port.serdes : &port.outer()};
}

int translate_port(int unit, soc_port_t *port)
{
    if (soc_phy_cb_xlate_port_func != nullptr) {
        const int rc = soc_phy_cb_xlate_port_func(unit, port);
        if (rc != SOC_E_NONE) {
            return rc;
        }
    }
    return *port >= 0 && *port <= port_max ? SOC_E_NONE : SOC_E_PORT;
}

}  // namespace sim
