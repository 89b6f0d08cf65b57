/// Which lanes of a SerDes a 100 Gbit/s port uses.
#include "begin.h"
#include "phy.h"
#include "sim_phy.h"

using namespace sim;

namespace {

/// The SerDes of a port without another PHY behind it: SOC_E_UNAVAIL.
auto lone_serdes(soc_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        return ready_phy(port)(sw, [&](PhyPort &own) -> int {
            return own.copper ? static_cast<int>(SOC_E_UNAVAIL) : next(*own.serdes);
        });
    };
}

}  // namespace

extern "C" {

int sim_soc_serdes_mask_100G_get(int unit, soc_port_t port, uint32 *mask)
{
    return begin(unit, chip_runs, given(mask), lone_serdes(port)).then([&](Phy &phy) {
        *mask = phy.lane_mask;
        return SOC_E_NONE;
    });
}

int sim_soc_serdes_mask_100G_set(int unit, soc_port_t port, uint32 mask)
{
    return begin(unit, chip_runs, lone_serdes(port)).then([&](Phy &phy) {
        if (mask == 0 || mask >> phy.kind.lanes != 0) {
            return SOC_E_PARAM;
        }
        phy.lane_mask = mask;
        return SOC_E_NONE;
    });
}

}  // extern "C"
