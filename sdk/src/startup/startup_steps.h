/// What starting a unit consists of. A part that the chip has not is left out.
#pragma once

#include <optional>
#include <vector>

namespace sim {

/// Initialises the modules of an attached unit, with or without queueing. The error of the first that fails.
int init_modules(int unit, bool queueing);

/// Has the unit join a stack as that module; as none if it is below 0.
int init_stacking(int unit, int module);

/// Has packets come to the CPU, and links looked after.
int init_reception(int unit);
int init_link_scan(int unit);

struct PortSetting {
    int port, value;
    int (*set)(int unit, int port, int value);
};

/// What the properties of ports and tables say of a unit: port_init_speed, port_init_autoneg,
/// port_init_enable and port_init_learn, also with "_" and a port's name behind; l2_age_timer.
struct StartSettings {
    std::optional<int> age_seconds;
    std::vector<PortSetting> ports;
};

/// Of a unit that need not be attached. BCM_E_UNIT; BCM_E_CONFIG, and the property is told, for a value that
/// cannot be.
int read_start_settings(int unit, StartSettings *settings);

/// To a unit that has just been started.
int apply(int unit, const StartSettings &settings);

}  // namespace sim
