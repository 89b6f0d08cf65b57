/// Start and end of a unit as a whole.
#include "command_files.h"
#include "destination.h"
#include "front_port.h"
#include "shell_variables.h"
#include "sim_chip.h"
#include "sim_config.h"
#include "sim_startup.h"
#include "startup_steps.h"
#include "switch.h"
#include "unit_attach.h"

#include <sim/start.h>
#include <soc/init.h>

using namespace sim;

extern "C" {

int sim_system_init(int unit)
{
    const bool was_attached = attached(unit) != nullptr;
    StartSettings settings;
    int rc = sal_config_init();
    rc = rc < 0 ? rc : read_start_settings(unit, &settings);
    rc = rc < 0 ? rc : attach_local(unit);
    if (rc < 0) {
        return rc;
    }
    rc = soc_init(unit);
    rc = rc < 0 ? rc : init_modules(unit, true);
    rc = rc < 0 ? rc : apply(unit, settings);
    if (rc < 0 && !was_attached) {
        detach_unit(unit);
    } else if (rc < 0) {
        attach_local(unit);
    }
    return rc;
}

int sim_system_shutdown(int unit, int cleanup)
{
    soc_deinit(unit);
    const int rc = detach_unit(unit);
    if (rc == BCM_E_NONE && cleanup) {
        shell_variables().forget(unit);
        forget_command_file(unit);
    }
    return rc;
}

int sim_start_check(int unit)
{
    StartSettings settings;
    return read_start_settings(unit, &settings);
}

int sim_start_speed_check(int unit, int port, int speed)
{
    if (unit < 0 || unit >= unit_max) {
        return BCM_E_UNIT;
    }
    if (port <= cpu_port || port > port_max) {
        return BCM_E_PORT;
    }
    return can_start_at(unit, port, speed) ? BCM_E_NONE : BCM_E_PARAM;
}

}  // extern "C"
