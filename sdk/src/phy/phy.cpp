#include "phy.h"

namespace sim {

namespace {

PhyTables &tables_of(int unit)
{
    return unit == 0 ? first_phy_tables : *new PhyTables();
}

}  // namespace

PhyUnit::PhyUnit(Switch &sw) : tables(tables_of(sw.unit))
{
    for (int port = 0; port <= port_max; ++port) {
        ports.emplace_back(port);
    }
    if (sw.unit != 0) {
        remake(tables);
        publish(sw.unit, &tables);
    }
}

void PhyUnit::start(Switch &sw)
{
    remake(tables);
    publish(sw.unit, &tables);
    shared_registers.clear();
    has_tables = has_common = has_drivers = true;
    for (PhyPort &port : ports) {
        port.restart();
    }
    // The ports of a unit that runs on may have got links back.
    for (int port = 0; port <= port_max; ++port) {
        if (has_serdes(port) && link_may_have_changed != nullptr) {
            link_may_have_changed(sw.unit, of(port));
        }
    }
}

void PhyUnit::stop(Switch &sw)
{
    publish(sw.unit, nullptr);
    for (PhyPort &port : ports) {
        port.watchers.clear();
    }
}

PhyUnit *phys_of(int unit)
{
    Switch *sw = attached(unit);
    return sw != nullptr ? &phys_of(*sw) : nullptr;
}

PhyPort restarted(int unit, int port)
{
    PhyPort fresh(port);
    if (PhyUnit *phys = phys_of(unit)) {
        fresh.cable = phys->of(port).cable;
        fresh.restart();
    }
    return fresh;
}

bool is_ready(const PhyUnit &phys, const PhyPort &port)
{
    return phys.has_common && phys.has_drivers && port.initialised;
}

void tell_changes(int unit, PhyPort &port)
{
    settle(port);
    report_medium(unit, port);
    // It may be gone since.
    PhyUnit *phys = phys_of(unit);
    if (phys != nullptr && phys->link_may_have_changed != nullptr) {
        phys->link_may_have_changed(unit, port);
    }
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
