#include "port_database.h"

#include "begin.h"
#include "destination.h"
#include "sim_chip.h"

#include <soc/control.h>
#include <soc/port_database.h>

using namespace sim;

namespace {

constexpr int ports_per_core = port_max / SOC_MAX_NUM_CORES;
constexpr uint32 cpu_interface = 128;

struct CorePort {
    int core;
    uint32 tm_port;
};

/// A core's traffic manager counts its front ports from 1; 0 is the CPU.
CorePort core_port(int port)
{
    const int core = port == cpu_port ? 0 : (port - 1) / ports_per_core;
    return {core, static_cast<uint32>(port - core * ports_per_core)};
}

bool has_port(int port)
{
    return port >= 0 && port <= port_max;
}

uint32 interface_of(const CorePort &place)
{
    return place.tm_port == 0 ? cpu_interface : place.tm_port - 1;
}

}  // namespace

namespace sim {

void map_ports_to_interfaces(Chip &chip)
{
    const Memory &memory = *memory_at(EGQ_TM_PORT_TO_INTERFACEm);
    for (int port = 0; port <= port_max; ++port) {
        const CorePort place = core_port(port);
        Words entry = {};
        put_field(entry, *memory.layout.find(INTERFACEf), words_of(interface_of(place)));
        put_field(entry, *memory.layout.find(VALIDf), words_of(1));
        MemoryPlace at;
        locate(&memory, 0, place.core, static_cast<int>(place.tm_port), &at);
        chip.write(at, entry);
    }
}

}  // namespace sim

extern "C" {

int sim_soc_port_sw_db_core_get(int unit, int port, int *core)
{
    return begin(unit, given(core)).then([&]() -> int {
        if (!has_port(port)) {
            return SOC_E_PORT;
        }
        *core = core_port(port).core;
        return SOC_E_NONE;
    });
}

int sim_soc_port_sw_db_local_to_tm_port_get(int unit, int port, uint32 *tm_port, int *core)
{
    return begin(unit, given(tm_port, core)).then([&]() -> int {
        if (!has_port(port)) {
            return SOC_E_PORT;
        }
        *tm_port = core_port(port).tm_port;
        *core = core_port(port).core;
        return SOC_E_NONE;
    });
}

int sim_soc_jer_egr_port2egress_offset(int unit, int core, uint32 tm_port, uint32 *egr_if)
{
    return begin(unit, running_chip).then([&](Chip &chip) {
        const Memory &memory = *memory_at(EGQ_TM_PORT_TO_INTERFACEm);
        MemoryPlace place;
        if (egr_if == nullptr || core < 0 || tm_port >= static_cast<uint32>(memory.entries)
            || locate(&memory, 0, core, static_cast<int>(tm_port), &place) != SOC_E_NONE) {
            return SOC_E_PARAM;
        }
        const Words entry = chip.read(place);
        if (low_64(field_of(entry, *memory.layout.find(VALIDf))) == 0) {
            return SOC_E_NOT_FOUND;
        }
        *egr_if = field_of(entry, *memory.layout.find(INTERFACEf))[0];
        return SOC_E_NONE;
    });
}

}  // extern "C"
