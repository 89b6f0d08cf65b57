#include "port.h"

#include "driver_registers.h"
#include "phy_settings.h"

namespace sim {

PortState::PortState(Switch &sw)
{
    reset();
    phys_of(sw).link_may_have_changed = follow_link;
}

void PortState::reset()
{
    for (Port &port : ports) {
        Port fresh;
        // Whose packets are copied, policed and matched others say.
        fresh.copies_in = port.copies_in;
        fresh.copies_of_vlans = port.copies_of_vlans;
        fresh.polices_in = port.polices_in;
        fresh.matches_fields = port.matches_fields;
        port = fresh;
    }
    rates_in.fill({});
    storms.fill({});
    enabled = PortSet::all();
    tag_writers = PortSet::all();
    update_special_out();
    ports[cpu_port].speed_max = cpu_speed_max;
    ports[cpu_port].speed = cpu_speed_max;
    for (int port = first_copper_port; port <= last_copper_port; ++port) {
        ports[static_cast<std::size_t>(port)].speed_max = copper_kind.media[0].speed_max;
    }
}

PhyPort *phy_of(Switch &sw, int port)
{
    PhyPort &found = phys_of(sw).of(port);
    return found.serdes ? &found : nullptr;
}

int speed_of(Switch &sw, int port)
{
    const PhyPort *phy = phy_of(sw, port);
    return phy == nullptr ? port_of(sw, port).speed : speed_of(*phy);
}

void write_registers(Switch &sw, int port)
{
    write_port_registers(sw.unit, port, sw.of<PortState>().enabled.has(port), speed_of(sw, port));
}

}  // namespace sim
