#include "begin.h"
#include "front_port.h"
#include "sim_gport.h"

#include <soc/stack_port.h>

#include <array>
#include <string>

using namespace sim;

namespace {

using PortNames = std::array<std::string, port_max + 1>;

PortNames port_names()
{
    PortNames names;
    names[cpu_port] = "cpu0";
    for (int port = cpu_port + 1; port <= port_max; ++port) {
        names[static_cast<std::size_t>(port)] = "ce" + std::to_string(port - cpu_port - 1);
    }
    return names;
}

}  // namespace

std::string &sim::port_name(int port)
{
    static PortNames &names = *new PortNames(port_names());
    return names[static_cast<std::size_t>(port)];
}

extern "C" {

uint32 sim_fapToSystemPhyPortId(uint32 fapId, uint32 fapPortId)
{
    if (fapId > SOC_FAP_ID_MAX || fapPortId > SOC_FAP_PORT_MAX) {
        return 0xffffffff;
    }
    // The ports of FAP 0 thus have the numbers that they have on the unit.
    return fapId * (SOC_FAP_PORT_MAX + 1) + fapPortId;
}

char *sim_mod_port_name(int unit, int modid, int port)
{
    Destination to;
    if (attached(unit) == nullptr || resolve(modid, port, &to) != BCM_E_NONE || !is_own_port(to)) {
        return nullptr;
    }
    return port_name(to.id).data();
}

}  // extern "C"
