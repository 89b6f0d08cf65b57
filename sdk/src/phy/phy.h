/// The room of PHYs: those of a unit's ports, the cables in them, and how functions on them begin.
///
/// They are the unit's hardware: cables stay when the unit is detached. The room above that scans links says
/// what is to be called after a change.
#pragma once

#include "begin.h"
#include "chip_runs.h"
#include "phy_link.h"
#include "phy_tables.h"
#include "port_set.h"

#include <array>
#include <cassert>
#include <map>
#include <vector>

namespace sim {

using Links = std::array<Link, port_max + 1>;

class PhyUnit : public RoomState {
public:
    static constexpr Room room = Room::phy;

    explicit PhyUnit(Switch &sw);

    /// All PHYs as they are when new.
    void start(Switch &sw) override;
    void stop(Switch &sw) override;
    void forget_functions(Switch &) override;

    PhyTables &tables;
    std::map<int, std::array<uint16, 256>> shared_registers;  ///< by the first port of the PHY chip
    bool has_tables = true;
    bool has_common = true;
    bool has_drivers = true;
    void (*link_may_have_changed)(int unit, PhyPort &port) = nullptr;  ///< or null

    /// Who gets a port's PHYs may change them: whether it has a link is worked out anew when that is asked for next.
    PhyPort &of(int port)
    {
        touch(port);
        return ports_[static_cast<std::size_t>(port)];
    }
    const PhyPort &of(int port) const { return ports_[static_cast<std::size_t>(port)]; }
    std::vector<PhyPort> &all()
    {
        PortSet::all().each([this](int port) { touch(port); });
        return ports_;
    }

    /// The ports whose cable leads to a port.
    const PortSet &joined() const { return joined_; }

    /// Those whose packets come back to them, by a loopback.
    const PortSet &looped()
    {
        work_out_links();
        return looped_;
    }

    /// Exchanges the cable in a port, which may lead to a port of a unit; the other end of either is not looked at.
    void plug(int port, const Cable &cable)
    {
        touch(port);
        ports_[static_cast<std::size_t>(port)].cable = cable;
        joined_.put(port, cable.partner.has_value());
        touch(port);
    }

    /// False between the end of the unit and the next: its ports are no partners then.
    bool is_there = true;

    /// The link of each port as its MAC sees it; of the CPU's port and others without PHY none.
    const Links &links()
    {
        work_out_links();
        return links_;
    }

    /// The ports that have one.
    const PortSet &linked()
    {
        work_out_links();
        return linked_;
    }

private:
    /// A link depends on both ends.
    void touch(int port)
    {
        touched_.add(port);
        if (joined_.has(port)) {
            touch_partner(port);
        }
    }
    void touch_partner(int port);

    void work_out_links()
    {
        if (!touched_.empty()) {
            work_out_touched_links();
        }
        assert(links_are_true());
    }
    void work_out_touched_links();
    bool links_are_true() const;

    std::vector<PhyPort> ports_;
    PortSet touched_ =
        PortSet::all();  ///< ports whose PHYs somebody has had since their links were worked out
    Links links_ = {};
    PortSet linked_;
    PortSet joined_;
    PortSet looped_;
};

inline PhyUnit &phys_of(Switch &sw)
{
    return sw.of<PhyUnit>();
}

/// Null if no such unit is attached. A unit's PHYs are ready from the start.
PhyUnit *phys_of(int unit);

/// A port's PHYs as they will be after a start of the unit. Of one that is not attached, no cable is known yet.
PhyPort restarted(int unit, int port);

/// The port that a caller means: SOC_E_PORT, or the status of soc_phy_cb_xlate_port_func.
int translate_port(int unit, soc_port_t *port);

/// Calls the port's watchers if its medium has changed since the last time.
void report_medium(int unit, PhyPort &port);

/// After whatever may have changed a port's PHYs or its cable: notes it, here and at the other end of the cable,
/// and calls those who are to be told.
void tell_changes(int unit, PhyPort &port);

/// A PHY, and the port that it belongs to.
struct PhyPlace {
    PhyPort *port;
    Phy *phy;
};

/// The one at a PHY address; nulls if none is there.
PhyPlace phy_at(PhyUnit &phys, unsigned address);

/// Whether the port's PHY has been initialised and its driver is there.
bool is_ready(const PhyUnit &phys, const PhyPort &port);

/// The unit's PHYs. This and the next ones come after chip_runs.
constexpr auto phy_unit = [](Switch &sw, auto next) -> int { return next(phys_of(sw)); };

/// The same and the number of a port, with or without PHY, of a unit with PHY tables: SOC_E_PORT, SOC_E_INIT.
inline auto phy_entry(soc_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        soc_port_t own = port;
        const int rc = translate_port(sw.unit, &own);
        if (rc != SOC_E_NONE) {
            return rc;
        }
        PhyUnit &phys = phys_of(sw);
        return phys.has_tables ? next(phys, own) : static_cast<int>(SOC_E_INIT);
    };
}

/// The unit's PHYs and a port that has one, whatever its driver's state; also SOC_E_UNAVAIL. Changes are
/// told.
inline auto phy_port(soc_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        return phy_entry(port)(sw, [&](PhyUnit &phys, int own) -> int {
            PhyPort &found = phys.of(own);
            if (!found.serdes) {
                return SOC_E_UNAVAIL;
            }
            const int rc = next(phys, found);
            tell_changes(sw.unit, found);
            return rc;
        });
    };
}

/// A port whose PHY has been initialised; also SOC_E_INIT. Changes are told.
inline auto ready_phy(soc_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        return phy_port(port)(sw, [&](PhyUnit &phys, PhyPort &own) -> int {
            return is_ready(phys, own) ? next(own) : static_cast<int>(SOC_E_INIT);
        });
    };
}

}  // namespace sim
