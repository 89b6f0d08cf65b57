/// Crossing, medium, cable and loopback of ports.
#include "begin.h"
#include "phy_controls.h"
#include "port.h"
#include "sim_phy.h"
#include "sim_phyctrl.h"
#include "sim_port.h"

using namespace sim;

namespace {

ControlPlace line_of(PhyPort &port)
{
    return {port, port.outer(), port.outer().line, -1};
}

/// Who watches by this interface gets the medium as a value of its type, which is passed as the number is.
soc_port_medium_status_cb_t as_chip_level(bcm_port_medium_status_cb_t callback)
{
    return reinterpret_cast<soc_port_medium_status_cb_t>(callback);
}

}  // namespace

extern "C" {

int sim_bcm_port_mdix_set(int unit, bcm_port_t port, bcm_port_mdix_t mode)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_mdix_set(unit, own, mode);
    });
}

int sim_bcm_port_mdix_get(int unit, bcm_port_t port, bcm_port_mdix_t *mode)
{
    return begin(unit, given(mode), own_port(port)).then([&](soc_port_t own) {
        soc_port_mdix_t number;
        const int rc = sim_soc_phyctrl_mdix_get(unit, own, &number);
        if (rc == BCM_E_NONE) {
            *mode = static_cast<bcm_port_mdix_t>(number);
        }
        return rc;
    });
}

int sim_bcm_port_mdix_status_get(int unit, bcm_port_t port, bcm_port_mdix_status_t *status)
{
    return begin(unit, given(status), own_port(port)).then([&](soc_port_t own) {
        soc_port_mdix_status_t number;
        const int rc = sim_soc_phyctrl_mdix_status_get(unit, own, &number);
        if (rc == BCM_E_NONE) {
            *status = static_cast<bcm_port_mdix_status_t>(number);
        }
        return rc;
    });
}

int sim_bcm_port_medium_config_set(int unit, bcm_port_t port, bcm_port_medium_t medium,
                                   bcm_phy_config_t *config)
{
    return begin(unit, given(config), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_medium_config_set(unit, own, medium, config);
    });
}

int sim_bcm_port_medium_config_get(int unit, bcm_port_t port, bcm_port_medium_t medium,
                                   bcm_phy_config_t *config)
{
    return begin(unit, given(config), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_medium_config_get(unit, own, medium, config);
    });
}

int sim_bcm_port_medium_get(int unit, bcm_port_t port, bcm_port_medium_t *medium)
{
    return begin(unit, given(medium), own_port(port)).then([&](soc_port_t own) {
        soc_port_medium_t number;
        const int rc = sim_soc_phyctrl_medium_get(unit, own, &number);
        if (rc == BCM_E_NONE) {
            *medium = static_cast<bcm_port_medium_t>(number);
        }
        return rc;
    });
}

int sim_bcm_port_medium_status_register(int unit, bcm_port_t port, bcm_port_medium_status_cb_t callback,
                                        void *user_data)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phy_medium_status_register(unit, own, as_chip_level(callback), user_data);
    });
}

int sim_bcm_port_medium_status_unregister(int unit, bcm_port_t port, bcm_port_medium_status_cb_t callback,
                                          void *user_data)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phy_medium_status_unregister(unit, own, as_chip_level(callback), user_data);
    });
}

int sim_bcm_port_cable_diag(int unit, bcm_port_t port, bcm_port_cable_diag_t *status)
{
    return begin(unit, given(status), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_cable_diag(unit, own, status);
    });
}

int sim_bcm_port_loopback_set(int unit, bcm_port_t port, int loopback)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own_port) {
        return begin(unit, chip_runs, ready_phy(own_port)).then([&](PhyPort &own) {
            if (loopback < BCM_PORT_LOOPBACK_NONE || loopback > BCM_PORT_LOOPBACK_PHY_REMOTE) {
                return static_cast<int>(BCM_E_PARAM);
            }
            own.mac_loopback = loopback == BCM_PORT_LOOPBACK_MAC;
            own.serdes->line.loopback = false;
            own.outer().line.loopback = loopback == BCM_PORT_LOOPBACK_PHY;
            return set_control(line_of(own), SOC_PHY_CONTROL_LOOPBACK_REMOTE,
                               loopback == BCM_PORT_LOOPBACK_PHY_REMOTE);
        });
    });
}

int sim_bcm_port_loopback_get(int unit, bcm_port_t port, int *loopback)
{
    return begin(unit, given(loopback), own_port(port)).then([&](soc_port_t own_port) {
        return begin(unit, chip_runs, ready_phy(own_port)).then([&](PhyPort &own) {
            uint32 remote = 0;
            const int rc = get_control(line_of(own), SOC_PHY_CONTROL_LOOPBACK_REMOTE, &remote);
            if (own.mac_loopback) {
                *loopback = BCM_PORT_LOOPBACK_MAC;
            } else if (own.serdes->line.loopback || own.outer().line.loopback) {
                *loopback = BCM_PORT_LOOPBACK_PHY;
            } else {
                *loopback = remote != 0 ? BCM_PORT_LOOPBACK_PHY_REMOTE : BCM_PORT_LOOPBACK_NONE;
            }
            return rc;
        });
    });
}

}  // extern "C"
