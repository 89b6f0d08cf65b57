/// Registers, firmware, resets and drivers of the PHYs of ports.
#include "begin.h"
#include "port.h"
#include "sim_phy.h"
#include "sim_phyctrl.h"
#include "sim_port.h"

#include <soc/phy_access.h>

#include <algorithm>
#include <limits>

using namespace sim;

namespace {

static_assert(BCM_PORT_PHY_INTERNAL == SOC_PHY_INTERNAL && BCM_PORT_PHY_CLAUSE45 == SOC_PHY_CLAUSE45
                  && BCM_PORT_PHY_NOMAP == SOC_PHY_NOMAP,
              "flags of accesses are passed on");

/// The own port that is meant, or the PHY address.
auto port_or_address(bcm_port_t port, uint32 flags)
{
    return [=](Switch &sw, auto next) -> int {
        int address = port;
        return flags & BCM_PORT_PHY_NOMAP ? next(address) : own_port(port)(sw, next);
    };
}

}  // namespace

extern "C" {

int sim_bcm_port_phy_set(int unit, bcm_port_t port, uint32 flags, uint32 phy_reg_addr, uint32 phy_data)
{
    return begin(unit, port_or_address(port, flags)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_reg_write(unit, own, flags, phy_reg_addr, phy_data);
    });
}

int sim_bcm_port_phy_get(int unit, bcm_port_t port, uint32 flags, uint32 phy_reg_addr, uint32 *phy_data)
{
    return begin(unit, given(phy_data), port_or_address(port, flags)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_reg_read(unit, own, flags, phy_reg_addr, phy_data);
    });
}

int sim_bcm_port_phy_modify(int unit, bcm_port_t port, uint32 flags, uint32 phy_reg_addr, uint32 phy_data,
                            uint32 phy_mask)
{
    return begin(unit, port_or_address(port, flags)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_reg_modify(unit, own, flags, phy_reg_addr, phy_data, phy_mask);
    });
}

int sim_bcm_port_phy_multi_get(int unit, bcm_port_t port, uint32 flags, uint32 dev_addr, uint32 offset,
                               uint32 max_size, uint8 *data, uint32 *actual_size)
{
    return begin(unit, given(data, actual_size), own_port(port)).then([&](soc_port_t own) {
        constexpr uint32 size_max = std::numeric_limits<int>::max();
        int size = 0;
        const int rc = sim_soc_phyctrl_port_phy_multi_get(
            unit, own, flags, dev_addr, offset, static_cast<int>(std::min(max_size, size_max)), data, &size);
        if (rc == BCM_E_NONE) {
            *actual_size = static_cast<uint32>(size);
        }
        return rc;
    });
}

int sim_bcm_port_phy_firmware_set(int unit, bcm_port_t port, uint32 flags, int offset, uint8 *array,
                                  int length)
{
    return begin(unit, given(array), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_firmware_set(unit, own, flags, offset, array, length);
    });
}

int sim_bcm_port_phy_drv_name_get(int unit, bcm_port_t port, char *name, int len)
{
    return begin(unit, given(name), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_drv_name_get(unit, own, name, len);
    });
}

int sim_bcm_port_phy_reset_register(int unit, bcm_port_t port, bcm_port_phy_reset_cb_t callback,
                                    void *user_data)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phy_reset_register(unit, own, callback, user_data, 0);
    });
}

int sim_bcm_port_phy_reset_unregister(int unit, bcm_port_t port, bcm_port_phy_reset_cb_t callback,
                                      void *user_data)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phy_reset_unregister(unit, own, callback, user_data);
    });
}

int sim_bcm_port_phy_reset(int unit, bcm_port_t port)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) { return sim_soc_phy_reset(unit, own); });
}

int sim_bcm_port_probe(int unit, bcm_pbmp_t pbmp, bcm_pbmp_t *okay_pbmp)
{
    return sim_soc_phyctrl_pbm_probe_init(unit, pbmp, okay_pbmp);
}

int sim_bcm_port_detach(int unit, bcm_pbmp_t pbmp, bcm_pbmp_t *detached)
{
    return begin(unit, chip_runs, given(detached), phy_unit).then([&](PhyUnit &) {
        bcm_pbmp_t gone = {};
        for (int port = 0; port <= port_max; ++port) {
            if (BCM_PBMP_MEMBER(pbmp, port) && sim_soc_phyctrl_detach(unit, port) == SOC_E_NONE) {
                BCM_PBMP_PORT_ADD(gone, port);
            }
        }
        *detached = gone;
        return BCM_E_NONE;
    });
}

}  // extern "C"
