#include "phy.h"

#include <algorithm>
#include <utility>

namespace sim {

namespace {

PhyTables &tables_of(int unit)
{
    return unit == 0 ? first_phy_tables : *new PhyTables();
}

void tell_end(int unit, PhyPort &port)
{
    PhyUnit *phys = phys_of(unit);
    if (phys != nullptr) {
        // Links may have been asked for between the change and now.
        phys->of(port.number);
    }
    settle(port);
    report_medium(unit, port);
    // It may be gone since.
    phys = phys_of(unit);
    if (phys != nullptr && phys->link_may_have_changed != nullptr) {
        phys->link_may_have_changed(unit, port);
    }
}

void tell_partner(const PhyUnit &phys, int port)
{
    const CableEnd partner = *phys.of(port).cable.partner;
    if (PhyUnit *others = phys_of(partner.unit)) {
        tell_end(partner.unit, others->of(partner.port));
    }
}

}  // namespace

PhyUnit::PhyUnit(Switch &sw) : tables(tables_of(sw.unit))
{
    for (int port = 0; port <= port_max; ++port) {
        ports_.emplace_back(port);
    }
    if (sw.unit != 0) {
        remake(tables);
        publish(sw.unit, &tables);
    }
}

void PhyUnit::start(Switch &sw)
{
    is_there = true;
    remake(tables);
    publish(sw.unit, &tables);
    shared_registers.clear();
    has_tables = has_common = has_drivers = true;
    for (PhyPort &port : all()) {
        port.restart();
    }
    // The ports of a unit that runs on may have got links back, and those at the other ends of its cables.
    for (int port = 0; port <= port_max; ++port) {
        if (has_serdes(port) && link_may_have_changed != nullptr) {
            link_may_have_changed(sw.unit, of(port));
        }
        if (joined_.has(port)) {
            tell_partner(*this, port);
        }
    }
}

void PhyUnit::stop(Switch &sw)
{
    publish(sw.unit, nullptr);
    is_there = false;
    for (PhyPort &port : all()) {
        port.watchers.clear();
    }
    joined_.each([&](int port) { tell_partner(*this, port); });
}

void PhyUnit::forget_functions(Switch &)
{
    for (PhyPort &port : all()) {
        port.watchers.clear();
        port.own_reset = port.default_reset = ResetFunction();
    }
}

void PhyUnit::touch_partner(int port)
{
    const CableEnd partner = *ports_[static_cast<std::size_t>(port)].cable.partner;
    if (PhyUnit *others = phys_of(partner.unit)) {
        others->touched_.add(partner.port);
    }
}

const PhyPort *partner_of(const PhyPort &port)
{
    if (!port.cable.partner) {
        return nullptr;
    }
    const PhyUnit *phys = phys_of(port.cable.partner->unit);
    return phys != nullptr && phys->is_there ? &phys->of(port.cable.partner->port) : nullptr;
}

void PhyUnit::work_out_touched_links()
{
    touched_.each([this](int port) {
        Link &link = links_[static_cast<std::size_t>(port)];
        link = link_of(std::as_const(*this).of(port));
        linked_.put(port, link.up());
        looped_.put(port, is_looped(std::as_const(*this).of(port)));
    });
    touched_ = PortSet();
}

bool PhyUnit::links_are_true() const
{
    return std::all_of(ports_.begin(), ports_.end(), [this](const PhyPort &port) {
        const Link link = link_of(port);
        const Link &worked_out = links_[static_cast<std::size_t>(port.number)];
        return link.speed == worked_out.speed && link.full_duplex == worked_out.full_duplex
               && link.up() == linked_.has(port.number);
    });
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
    // The port may be gone when those at this end have been told.
    const int number = port.number;
    tell_end(unit, port);
    PhyUnit *phys = phys_of(unit);
    if (phys != nullptr && phys->joined().has(number)) {
        tell_partner(*phys, number);
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
