/// The PHYs of one unit, and the checks with which functions on them begin.
#pragma once

#include "checked.h"
#include "chip.h"
#include "mdio_bus.h"
#include "phy_link.h"
#include "phy_tables.h"

namespace sim {

struct PhyUnit {
    explicit PhyUnit(int unit_number);

    PhyTables &tables;
    std::vector<PhyPort> ports;
    MdioBuses buses;
    std::map<int, std::array<uint16, 256>> shared_registers;  ///< by the first port of the PHY chip
    bool has_tables = true;
    bool has_common = true;
    bool has_drivers = true;

    PhyPort &of(int port) { return ports[static_cast<std::size_t>(port)]; }
};

/// Null if no such unit is attached. A unit's PHYs are ready from the start.
PhyUnit *phys_of(int unit);

/// The unit's PHYs as they are when new, and their end. A unit that is attached from the start needs neither.
void start_phys(int unit);
void stop_phys(int unit);

/// The port that a caller means: SOC_E_PORT, or the status of soc_phy_cb_xlate_port_func.
int translate_port(int unit, soc_port_t *port);

/// Calls the port's watchers if its medium has changed since the last time.
void report_medium(int unit, PhyPort &port);

/// After whatever may have changed a port's PHYs: notes it, and calls those who are to be told.
void tell_changes(int unit, PhyPort &port);

/// A PHY, and the port that it belongs to.
struct PhyPlace {
    PhyPort *port;
    Phy *phy;
};

/// The one at a PHY address; nulls if none is there.
PhyPlace phy_at(PhyUnit &phys, unsigned address);

/// body(PhyUnit &) on a unit whose chip runs; SOC_E_UNIT, SOC_E_INIT, SOC_E_PARAM for null pointers.
template <class Body>
int on_phy_unit(int unit, Pointers pointers, Body body)
{
    return on_chip(unit, [&](Chip &) {
        return any_null(pointers) ? static_cast<int>(SOC_E_PARAM) : static_cast<int>(body(*phys_of(unit)));
    });
}

/// body(PhyUnit &, int port) on a port, with or without PHY, of a unit with PHY tables; also SOC_E_PORT.
template <class Body>
int on_phy_table(int unit, soc_port_t port, Pointers pointers, Body body)
{
    return on_phy_unit(unit, pointers, [&](PhyUnit &phys) {
        const int rc = translate_port(unit, &port);
        if (rc != SOC_E_NONE) {
            return rc;
        }
        return phys.has_tables ? static_cast<int>(body(phys, port)) : static_cast<int>(SOC_E_INIT);
    });
}

/// body(PhyUnit &, PhyPort &) on a port with a PHY, whatever its driver's state; also SOC_E_UNAVAIL.
template <class Body>
int on_phy_port(int unit, soc_port_t port, Pointers pointers, Body body)
{
    return on_phy_table(unit, port, pointers, [&](PhyUnit &phys, int own) {
        PhyPort &phy_port = phys.of(own);
        if (!phy_port.serdes) {
            return static_cast<int>(SOC_E_UNAVAIL);
        }
        const int rc = body(phys, phy_port);
        tell_changes(unit, phy_port);
        return rc;
    });
}

/// Whether the port's PHY has been initialised and its driver is there.
bool is_ready(const PhyUnit &phys, const PhyPort &port);

/// body(PhyPort &) on a port whose PHY has been initialised; otherwise SOC_E_INIT.
template <class Body>
int on_phy(int unit, soc_port_t port, Pointers pointers, Body body)
{
    return on_phy_port(unit, port, pointers, [&](PhyUnit &phys, PhyPort &phy_port) {
        return is_ready(phys, phy_port) ? static_cast<int>(body(phy_port)) : static_cast<int>(SOC_E_INIT);
    });
}

}  // namespace sim
