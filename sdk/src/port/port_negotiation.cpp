/// Autonegotiation and abilities of ports, and the settings that it replaces.
#include "begin.h"
#include "port.h"
#include "sim_phyctrl.h"
#include "sim_port.h"

using namespace sim;

namespace {

/// What the MAC adds to the PHY's abilities.
constexpr bcm_port_abil_t mac_abilities = _SHR_PM_LB_MAC;

}  // namespace

extern "C" {

int sim_bcm_port_autoneg_set(int unit, bcm_port_t port, int autoneg)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_auto_negotiate_set(unit, own, autoneg != 0);
    });
}

int sim_bcm_port_autoneg_get(int unit, bcm_port_t port, int *autoneg)
{
    return begin(unit, given(autoneg), own_port(port)).then([&](soc_port_t own) {
        int done;
        return sim_soc_phyctrl_auto_negotiate_get(unit, own, autoneg, &done);
    });
}

int sim_bcm_port_advert_set(int unit, bcm_port_t port, bcm_port_abil_t ability_mask)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_adv_local_set(unit, own, ability_mask & ~mac_abilities);
    });
}

int sim_bcm_port_advert_get(int unit, bcm_port_t port, bcm_port_abil_t *ability_mask)
{
    return begin(unit, given(ability_mask), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_adv_local_get(unit, own, ability_mask);
    });
}

int sim_bcm_port_advert_remote_get(int unit, bcm_port_t port, bcm_port_abil_t *ability_mask)
{
    return begin(unit, given(ability_mask), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_adv_remote_get(unit, own, ability_mask);
    });
}

int sim_bcm_port_ability_get(int unit, bcm_port_t port, bcm_port_abil_t *ability_mask)
{
    return begin(unit, given(ability_mask), own_port(port)).then([&](soc_port_t own) {
        const int rc = sim_soc_phyctrl_ability_get(unit, own, ability_mask);
        *ability_mask |= rc == BCM_E_NONE ? mac_abilities : 0;
        return rc;
    });
}

void sim_bcm_port_ability_t_init(bcm_port_ability_t *ability)
{
    if (ability != nullptr) {
        *ability = {};
    }
}

int sim_bcm_port_ability_advert_set(int unit, bcm_port_t port, bcm_port_ability_t *ability_mask)
{
    return begin(unit, given(ability_mask), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_ability_advert_set(unit, own, ability_mask);
    });
}

int sim_bcm_port_ability_advert_get(int unit, bcm_port_t port, bcm_port_ability_t *ability_mask)
{
    return begin(unit, given(ability_mask), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_ability_advert_get(unit, own, ability_mask);
    });
}

int sim_bcm_port_ability_remote_get(int unit, bcm_port_t port, bcm_port_ability_t *ability_mask)
{
    return begin(unit, given(ability_mask), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_ability_remote_get(unit, own, ability_mask);
    });
}

int sim_bcm_port_ability_local_get(int unit, bcm_port_t port, bcm_port_ability_t *ability_mask)
{
    return begin(unit, given(ability_mask), own_port(port)).then([&](soc_port_t own) {
        const int rc = sim_soc_phyctrl_ability_local_get(unit, own, ability_mask);
        ability_mask->loopback |= rc == BCM_E_NONE ? mac_abilities : 0;
        return rc;
    });
}

int sim_bcm_port_duplex_set(int unit, bcm_port_t port, int duplex)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_duplex_set(unit, own, duplex);
    });
}

int sim_bcm_port_duplex_get(int unit, bcm_port_t port, int *duplex)
{
    return begin(unit, given(duplex), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_duplex_get(unit, own, duplex);
    });
}

int sim_bcm_port_master_set(int unit, bcm_port_t port, int master)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_master_set(unit, own, master);
    });
}

int sim_bcm_port_master_get(int unit, bcm_port_t port, int *master)
{
    return begin(unit, given(master), own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_master_get(unit, own, master);
    });
}

int sim_bcm_port_interface_set(int unit, bcm_port_t port, bcm_port_if_t intf)
{
    return begin(unit, own_port(port)).then([&](soc_port_t own) {
        return sim_soc_phyctrl_interface_set(unit, own, intf);
    });
}

int sim_bcm_port_interface_get(int unit, bcm_port_t port, bcm_port_if_t *intf)
{
    return begin(unit, given(intf), own_port(port)).then([&](soc_port_t own) {
        soc_port_if_t number;
        const int rc = sim_soc_phyctrl_interface_get(unit, own, &number);
        if (rc == BCM_E_NONE) {
            *intf = static_cast<bcm_port_if_t>(number);
        }
        return rc;
    });
}

}  // extern "C"
