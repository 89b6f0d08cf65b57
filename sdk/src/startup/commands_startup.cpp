/// Commands that attach and start units.
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "sim_shell.h"
#include "sim_startup.h"
#include "switch.h"
#include "unit_attach.h"

#include <cstdio>
#include <string>

namespace sim {

namespace {

cmd_result_t unit_done(const Arguments &args, int unit, int status)
{
    return done_or_fail(args, "unit " + std::to_string(unit), status);
}

/// The unit that the next word names, or the one that the command runs on.
bool next_unit(Arguments &args, int *unit)
{
    return args.left() == 0 || next_number(args, "UNIT", unit);
}

cmd_result_t units(int, Arguments &)
{
    for (int unit = 0; unit < unit_max; ++unit) {
        if (attached(unit) != nullptr) {
            std::printf("unit %d: attached%s\n", unit, sim_pw_running(unit) ? ", packets watched" : "");
        }
    }
    return CMD_OK;
}

cmd_result_t attach_command(int unit, Arguments &args)
{
    if (!next_unit(args, &unit)) {
        return CMD_USAGE;
    }
    return unit_done(args, unit,
                     attached(unit) != nullptr ? static_cast<int>(BCM_E_EXISTS) : attach_local(unit));
}

cmd_result_t detach_command(int unit, Arguments &args)
{
    return next_unit(args, &unit) ? unit_done(args, unit, detach_unit(unit)) : CMD_USAGE;
}

cmd_result_t start(int unit, Arguments &args)
{
    return unit_done(args, unit, system_init(unit));
}

cmd_result_t start_application(int unit, Arguments &args)
{
    appl_dcmn_init_param_t parameters;
    const cmd_result_t parsed = appl_dcmn_init_usage_parse(unit, args.record(), &parameters);
    return parsed == CMD_OK ? unit_done(args, unit, appl_dcmn_init(unit, &parameters)) : parsed;
}

cmd_result_t shutdown_command(int unit, Arguments &args)
{
    return unit_done(args, unit, system_shutdown(unit, 1));
}

constexpr Form units_forms[] = {{"", "", units, ""}};
constexpr Form attach_forms[] = {{"", "[UNIT]", attach_command, ""}};
constexpr Form detach_forms[] = {{"", "[UNIT]", detach_command, ""}};
constexpr Form init_forms[] = {
    {"", "", start, "start the unit with its properties"},
    {"appl", "[PARAMETER=NUMBER...]", start_application, "start the application on it"},
};
constexpr Form shutdown_forms[] = {{"", "", shutdown_command, ""}};

constexpr Command commands[] = {
    {"units", "list the units that are attached", units_forms, "units"},
    {"attach", "attach a unit", attach_forms, "attach 4; 4: ps 1; detach 4"},
    {"detach", "detach a unit", detach_forms, "attach 4; detach 4"},
    {"init", "start the unit, or the application on it", init_forms, "init appl no_linkscan=1"},
    {"shutdown", "end the unit", shutdown_forms, "4: init; 4: shutdown"},
};

}  // namespace

const CommandGroup startup_commands = {"Units", commands, false};

}  // namespace sim
