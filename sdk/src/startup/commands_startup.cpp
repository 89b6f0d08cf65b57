/// Commands that attach and start units.
#include "shell.h"
#include "shell_commands.h"
#include "sim_shell.h"
#include "sim_startup.h"
#include "switch.h"
#include "unit_attach.h"

#include <cstdio>
#include <iterator>
#include <string>

namespace sim {

namespace {

/// The unit that the words name, or the one that the command runs on.
bool read_unit(Arguments *args, int *unit)
{
    return (args->left() == 0 || args->next_integer(unit)) && args->left() == 0;
}

cmd_result_t units(int, args_t *)
{
    for (int unit = 0; unit < unit_max; ++unit) {
        if (attached(unit) != nullptr) {
            std::printf("unit %d: attached%s\n", unit, sim_pw_running(unit) ? ", packets watched" : "");
        }
    }
    return CMD_OK;
}

cmd_result_t attach_command(int unit, args_t *a)
{
    Arguments args(a);
    if (!read_unit(&args, &unit)) {
        return CMD_USAGE;
    }
    if (attached(unit) != nullptr) {
        return done_or_fail(args, "unit " + std::to_string(unit), BCM_E_EXISTS);
    }
    return done_or_fail(args, "unit " + std::to_string(unit), attach_local(unit));
}

cmd_result_t detach_command(int unit, args_t *a)
{
    Arguments args(a);
    return read_unit(&args, &unit) ? done_or_fail(args, "unit " + std::to_string(unit), detach_unit(unit))
                                   : CMD_USAGE;
}

cmd_result_t init_command(int unit, args_t *a)
{
    Arguments args(a);
    if (args.left() == 0) {
        return done_or_fail(args, "unit " + std::to_string(unit), system_init(unit));
    }
    const std::string what = args.next();
    appl_dcmn_init_param_t parameters;
    if (what != "appl") {
        return CMD_USAGE;
    }
    const cmd_result_t parsed = appl_dcmn_init_usage_parse(unit, a, &parameters);
    return parsed != CMD_OK
               ? parsed
               : done_or_fail(args, "unit " + std::to_string(unit), appl_dcmn_init(unit, &parameters));
}

cmd_result_t shutdown_command(int unit, args_t *a)
{
    Arguments args(a);
    return args.left() != 0 ? CMD_USAGE
                            : done_or_fail(args, "unit " + std::to_string(unit), system_shutdown(unit, 1));
}

constexpr cmd_t commands[] = {
    command("units", units, "", "list the units that are attached"),
    command("attach", attach_command, "[UNIT]", "attach a unit"),
    command("detach", detach_command, "[UNIT]", "detach a unit"),
    command("init", init_command, "[appl [PARAMETER=NUMBER...]]", "start the unit, or the application on it"),
    command("shutdown", shutdown_command, "", "end the unit"),
};

}  // namespace

const CommandGroup startup_commands = {"Units", commands, std::size(commands), false};

}  // namespace sim
