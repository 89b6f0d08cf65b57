#include "startup_steps.h"

#include "config.h"
#include "destination.h"
#include "front_port.h"
#include "number_text.h"
#include "sim_cosq.h"
#include "sim_field.h"
#include "sim_gport.h"
#include "sim_l2.h"
#include "sim_l3.h"
#include "sim_link.h"
#include "sim_phyctrl.h"
#include "sim_policer.h"
#include "sim_port.h"
#include "sim_rx.h"
#include "sim_stat.h"
#include "sim_stk.h"
#include "sim_vlan.h"
#include "switch.h"

#include <string>

namespace sim {

namespace {

using Init = int (*)(int unit);

constexpr Init modules[] = {bcm_port_init,  bcm_vlan_init, bcm_l2_init,     bcm_l3_init,
                            bcm_field_init, bcm_stat_init, bcm_policer_init};

constexpr int link_scan_usecs = 250000;

/// Success if the chip has no such part.
int unless_unavailable(int rc)
{
    return rc == BCM_E_UNAVAIL ? static_cast<int>(BCM_E_NONE) : rc;
}

bool is_flag(int, int, int value)
{
    return value == 0 || value == 1;
}

int set_learning(int unit, int port, int learn)
{
    return bcm_port_learn_set(unit, port, BCM_PORT_LEARN_FWD | (learn ? BCM_PORT_LEARN_ARL : 0));
}

/// A property that each front port has, also as "name_<port's name>".
struct PortProperty {
    const char *name;
    bool (*possible)(int unit, int port, int value);
    int (*set)(int unit, int port, int value);
};

constexpr PortProperty port_properties[] = {
    {"port_init_speed", can_start_at, bcm_port_speed_set},
    {"port_init_autoneg", is_flag, soc_phyctrl_auto_negotiate_set},
    {"port_init_enable", is_flag, bcm_port_enable_set},
    {"port_init_learn", is_flag, set_learning},
};

const Properties::value_type *port_property(int unit, const std::string &name, int port)
{
    const auto *own = find_property(unit, name + "_" + port_name(port));
    return own != nullptr ? own : find_property(unit, name);
}

/// BCM_E_CONFIG, and it is told, if the value is no number, or possible(number) says no to it.
template <class Possible>
int read_setting(const Properties::value_type &property, const std::string &whose, int *value,
                 Possible possible)
{
    const bool number = read_int(property.second.value, value);
    if (!number || !possible(*value)) {
        refuse_property(property, number ? "impossible for " + whose : "not a number");
        return BCM_E_CONFIG;
    }
    return BCM_E_NONE;
}

int read_port_settings(int unit, std::vector<PortSetting> *settings)
{
    for (int port = cpu_port + 1; port <= port_max; ++port) {
        const std::string whose = "port " + port_name(port) + " of unit " + std::to_string(unit);
        for (const PortProperty &known : port_properties) {
            const auto *found = port_property(unit, known.name, port);
            if (found == nullptr) {
                continue;
            }
            PortSetting setting = {port, 0, known.set};
            const int rc = read_setting(*found, whose, &setting.value,
                                        [&](int value) { return known.possible(unit, port, value); });
            if (rc != BCM_E_NONE) {
                return rc;
            }
            settings->push_back(setting);
        }
    }
    return BCM_E_NONE;
}

}  // namespace

int init_modules(int unit, bool queueing)
{
    for (const Init module : modules) {
        const int rc = unless_unavailable(module(unit));
        if (rc < 0) {
            return rc;
        }
    }
    return queueing ? unless_unavailable(bcm_cosq_init(unit)) : static_cast<int>(BCM_E_NONE);
}

int init_stacking(int unit, int module)
{
    const int rc = unless_unavailable(bcm_stk_init(unit));
    return rc < 0 || module < 0 ? rc : unless_unavailable(bcm_stk_modid_set(unit, module));
}

int init_reception(int unit)
{
    return unless_unavailable(bcm_rx_init(unit));
}

int init_link_scan(int unit)
{
    return unless_unavailable(bcm_linkscan_enable_set(unit, link_scan_usecs));
}

int read_start_settings(int unit, StartSettings *settings)
{
    if (unit < 0 || unit >= unit_max) {
        return BCM_E_UNIT;
    }
    if (const auto *found = find_property(unit, "l2_age_timer")) {
        int seconds;
        const int rc = read_setting(*found, "unit " + std::to_string(unit), &seconds,
                                    [](int value) { return value >= 0; });
        if (rc != BCM_E_NONE) {
            return rc;
        }
        settings->age_seconds = seconds;
    }
    return read_port_settings(unit, &settings->ports);
}

int apply(int unit, const StartSettings &settings)
{
    int rc = settings.age_seconds ? bcm_l2_age_timer_set(unit, *settings.age_seconds) : BCM_E_NONE;
    for (const PortSetting &setting : settings.ports) {
        rc = rc < 0 ? rc : setting.set(unit, setting.port, setting.value);
    }
    return rc;
}

}  // namespace sim
