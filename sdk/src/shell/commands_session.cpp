/// Commands about the shell itself.
#include "clock.h"
#include "ctrl_c.h"
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "sim_shell.h"

#include <appl/build.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace sim {

namespace {

const char *text_or_unknown(const char *text)
{
    return text != nullptr ? text : "unknown";
}

cmd_result_t list_commands(int, Arguments &)
{
    for (const CommandGroup *group : command_groups()) {
        std::printf("%s\n", group->title);
        for (const Command &command : group->commands) {
            std::printf("    %-10s %s\n", command.name, command.help);
        }
    }
    return CMD_OK;
}

void tell(const Command &command)
{
    std::printf("%s: %s\n", command.name, command.help);
    int width = 0;
    for (const Form &form : command.forms) {
        width = std::max(width, static_cast<int>(form_text(command, form).size()));
    }
    for (const Form &form : command.forms) {
        const std::string text = form_text(command, form);
        if (*form.help != '\0') {
            std::printf("    %-*s  %s\n", width, text.c_str(), form.help);
        } else {
            std::printf("    %s\n", text.c_str());
        }
    }
    std::printf("example: %s\n", command.example);
}

cmd_result_t help(int unit, Arguments &args)
{
    if (args.left() == 0) {
        return list_commands(unit, args);
    }
    const std::string name = args.next();
    const FoundCommand found = find_command(name);
    if (found.command == nullptr) {
        return fail(args, found.candidates.empty() ? "no command '" + name + "'"
                                                   : "'" + name + "' may be " + found.candidates);
    }
    tell(*found.command);
    return CMD_OK;
}

cmd_result_t version(int, Arguments &)
{
    sim_sh_print_version(0);
    return CMD_OK;
}

cmd_result_t full_version(int, Arguments &)
{
    sim_sh_print_version(1);
    return CMD_OK;
}

cmd_result_t sleep_for(int, Arguments &args)
{
    int milliseconds;
    if (!next_number(args, "MILLISECONDS", &milliseconds, 0)) {
        return CMD_USAGE;
    }
    const bool is_interrupted =
        wait_until(ctrl_c_came, static_cast<Time>(milliseconds) * nanoseconds_per_millisecond);
    return is_interrupted ? CMD_INTR : CMD_OK;
}

cmd_result_t jobs(int, Arguments &)
{
    print_background_jobs();
    return CMD_OK;
}

cmd_result_t leave(int, Arguments &)
{
    return CMD_EXIT;
}

constexpr Form help_forms[] = {{"", "[COMMAND]", help, ""}};
constexpr Form version_forms[] = {
    {"", "", version, "tell the release"},
    {"all", "", full_version, "tell also who built it, where, when and from what"},
};
constexpr Form sleep_forms[] = {{"", "MILLISECONDS", sleep_for, ""}};
constexpr Form jobs_forms[] = {{"", "", jobs, ""}};
constexpr Form exit_forms[] = {{"", "", leave, ""}};

constexpr Command commands[] = {
    {"help", "list commands, or tell about one", help_forms, "help vlan"},
    {"version", "tell what the SDK was built from", version_forms, "version all"},
    {"sleep", "wait", sleep_forms, "sleep 50; ps 1"},
    {"jobs", "list background commands and what became of them", jobs_forms, "counters & jobs"},
    {"exit", "end the shell or command file", exit_forms, "exit"},
};

}  // namespace

const CommandGroup session_commands = {"Shell", commands, false};

}  // namespace sim

extern "C" void sim_sh_print_version(int verbose)
{
    using sim::text_or_unknown;
    std::printf("Release %s\n", text_or_unknown(_build_release));
    if (verbose) {
        std::printf("Built by %s on %s, %s (%s), from %s\n", text_or_unknown(_build_user),
                    text_or_unknown(_build_host), text_or_unknown(_build_date),
                    text_or_unknown(_build_datestamp), text_or_unknown(_build_tree));
    }
}
