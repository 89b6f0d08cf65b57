/// What starting a unit consists of. A part that the chip has not is left out.
#pragma once

namespace sim {

/// Initialises the modules of an attached unit, with or without queueing. The error of the first that fails.
int init_modules(int unit, bool queueing);

/// Has the unit join a stack as that module; as none if it is below 0.
int init_stacking(int unit, int module);

/// Has packets come to the CPU, and links looked after.
int init_reception(int unit);
int init_link_scan(int unit);

/// Applies the properties of ports and tables to an attached unit: port_init_speed, port_init_enable and
/// port_init_learn, also with "_" and a port's name behind; l2_age_timer. BCM_E_CONFIG for a value that
/// cannot be.
int apply_properties(int unit);

}  // namespace sim
