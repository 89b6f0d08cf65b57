/// Commands about the shell itself.
#include "ctrl_c.h"
#include "shell.h"
#include "shell_commands.h"
#include "sim_shell.h"

#include <time.h>

#include <appl/build.h>

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

namespace sim {

namespace {

const char *text_or_unknown(const char *text)
{
    return text != nullptr ? text : "unknown";
}

cmd_result_t help(int, args_t *a)
{
    Arguments args(a);
    if (const char *name = args.next()) {
        const FoundCommand found = find_command(name);
        if (found.command == nullptr) {
            return fail(args, std::string("no command ") + name);
        }
        std::printf("%s %s\n    %s\n", found.command->c_cmd, found.command->c_usage, found.command->c_help);
        return args.left() == 0 ? CMD_OK : CMD_USAGE;
    }
    for (const CommandGroup *group : command_groups()) {
        std::printf("%s\n", group->title);
        for (std::size_t i = 0; i < group->count; ++i) {
            std::printf("    %-10s %s\n", group->first[i].c_cmd, group->first[i].c_help);
        }
    }
    return CMD_OK;
}

cmd_result_t version(int, args_t *a)
{
    Arguments args(a);
    const char *word = args.next();
    if (args.left() != 0 || (word != nullptr && std::string(word) != "all")) {
        return CMD_USAGE;
    }
    sim_sh_print_version(word != nullptr);
    return CMD_OK;
}

/// Sleeps in short steps, so that Ctrl-C ends it soon.
cmd_result_t sleep_for(int, args_t *a)
{
    Arguments args(a);
    int milliseconds;
    if (!args.next_integer(&milliseconds) || milliseconds < 0 || args.left() != 0) {
        return CMD_USAGE;
    }
    constexpr int step_max = 50;
    while (milliseconds > 0 && !ctrl_c_came()) {
        const int step = milliseconds < step_max ? milliseconds : step_max;
        const timespec duration = {0, step * 1000000L};
        ::nanosleep(&duration, nullptr);
        milliseconds -= step;
    }
    return ctrl_c_came() ? CMD_INTR : CMD_OK;
}

cmd_result_t jobs(int, args_t *)
{
    print_background_jobs();
    return CMD_OK;
}

cmd_result_t leave(int, args_t *)
{
    return CMD_EXIT;
}

constexpr cmd_t commands[] = {
    command("help", help, "[COMMAND]", "list commands, or tell about one"),
    command("version", version, "[all]", "tell what the SDK was built from"),
    command("sleep", sleep_for, "MILLISECONDS", "wait"),
    command("jobs", jobs, "", "list background commands"),
    command("exit", leave, "", "end the shell or command file"),
};

}  // namespace

const CommandGroup session_commands = {"Shell", commands, std::size(commands), false};

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
