/// Which lanes of a SerDes a 100 Gbit/s port uses.
#include "phy_unit.h"
#include "sim.h"

using namespace sim;

namespace {

/// body(Phy &) of a port without another PHY behind its SerDes; SOC_E_UNAVAIL.
template <class Body>
int on_serdes_port(int unit, soc_port_t port, Pointers pointers, Body body)
{
    return on_phy(unit, port, pointers, [&](PhyPort &own) {
        return own.copper ? static_cast<int>(SOC_E_UNAVAIL) : static_cast<int>(body(*own.serdes));
    });
}

}  // namespace

extern "C" {

int sim_soc_serdes_mask_100G_get(int unit, soc_port_t port, uint32 *mask)
{
    return on_serdes_port(unit, port, {mask}, [&](Phy &phy) {
        *mask = phy.lane_mask;
        return SOC_E_NONE;
    });
}

int sim_soc_serdes_mask_100G_set(int unit, soc_port_t port, uint32 mask)
{
    return on_serdes_port(unit, port, {}, [&](Phy &phy) {
        if (mask == 0 || mask >> phy.kind.lanes != 0) {
            return SOC_E_PARAM;
        }
        phy.lane_mask = mask;
        return SOC_E_NONE;
    });
}

}  // extern "C"
