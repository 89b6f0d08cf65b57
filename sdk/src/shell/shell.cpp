#include "shell.h"

#include "ctrl_c.h"
#include "shell_commands.h"
#include "shell_variables.h"
#include "shell_words.h"
#include "sim_shell.h"
#include "status_name.h"
#include "switch.h"

#include <chrono>
#include <cstdio>

namespace sim {

namespace {

int depth;
bool failure_was_a_test;

class Deeper {
public:
    Deeper() { ++depth; }
    ~Deeper() { --depth; }
    Deeper(const Deeper &) = delete;
    Deeper &operator=(const Deeper &) = delete;
};

cmd_result_t run_form(int unit, const Command &command, args_t *words)
{
    Arguments args(words);
    std::string wrong;
    const Form *form = choose_form(command, &args, &wrong);
    return form != nullptr ? form->run(unit, args) : refuse(args, wrong);
}

cmd_result_t not_found(const std::string &name, const FoundCommand &found)
{
    if (found.candidates.empty()) {
        std::printf("%s: no such command\n", name.c_str());
    } else {
        std::printf("%s: may be %s\n", name.c_str(), found.candidates.c_str());
    }
    return CMD_NFND;
}

cmd_result_t run_or_postpone(int line_unit, const ShellCommand &command)
{
    failure_was_a_test = false;
    const int unit = command.unit.value_or(line_unit);
    if (command.words.empty()) {
        std::printf("%d: no command\n", unit);
        return CMD_USAGE;
    }
    const std::string &name = command.words.front();
    const FoundCommand found = find_command(name);
    if (found.command == nullptr) {
        return not_found(name, found);
    }
    args_t args;
    if (!make_arguments(command.words, &args)) {
        std::printf("%s: more than %d words or %d characters\n", found.command->name, SH_WORDS_MAX,
                    SH_TEXT_MAX);
        return CMD_USAGE;
    }
    if (!command.background) {
        return run_command(unit, found, &args);
    }
    if (!background_allowed()) {
        std::printf("%s: no background commands here\n", found.command->name);
        return CMD_NOTIMPL;
    }
    add_background_job(unit, args);
    return CMD_OK;
}

ShellLine::Lookup variables_of(int line_unit)
{
    return [line_unit](const std::string &name, std::optional<int> unit) {
        return shell_variables().value(name, unit.value_or(line_unit));
    };
}

}  // namespace

cmd_result_t run_line(int unit, const std::string &text)
{
    if (depth >= shell_depth_max) {
        std::printf("shell: more than %d commands within each other\n", shell_depth_max);
        return CMD_FAIL;
    }
    const Deeper deeper;
    const CtrlCWaits waits;
    failure_was_a_test = false;
    ShellLine line(text);
    ShellCommand command;
    std::string error;
    for (;;) {
        const ShellLine::Found found = line.next(variables_of(unit), &command, &error);
        if (found == ShellLine::Found::error) {
            std::printf("shell: %s\n", error.c_str());
            return CMD_USAGE;
        }
        if (ctrl_c_came()) {
            return CMD_INTR;
        }
        if (found == ShellLine::Found::end) {
            return CMD_OK;
        }
        const cmd_result_t result = run_or_postpone(unit, command);
        if (result != CMD_OK) {
            return result;
        }
    }
}

cmd_result_t run_command(int unit, const FoundCommand &found, args_t *words)
{
    const char *name = found.command->name;
    if (found.group->needs_unit && sim_sh_check_attached(name, unit) != 0) {
        return CMD_FAIL;
    }
    const auto begin = std::chrono::steady_clock::now();
    const cmd_result_t result = run_form(unit, *found.command, words);
    if (sh_set_report_time) {
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
        std::printf("%s: %.6f s\n", name, seconds.count());
    }
    if (sh_set_report_status) {
        std::printf("%s: %s\n", name, result_name(result));
    }
    return result;
}

const char *result_name(cmd_result_t result)
{
    switch (result) {
    case CMD_OK:
        return "CMD_OK";
    case CMD_FAIL:
        return "CMD_FAIL";
    case CMD_USAGE:
        return "CMD_USAGE";
    case CMD_NFND:
        return "CMD_NFND";
    case CMD_EXIT:
        return "CMD_EXIT";
    case CMD_INTR:
        return "CMD_INTR";
    case CMD_NOTIMPL:
        return "CMD_NOTIMPL";
    }
    return "unknown result";
}

cmd_result_t refuse(const Arguments &args, const std::string &what)
{
    std::printf("%s: %s\n", args.name(), what.c_str());
    const char *begin = "usage:";
    for (const Form &form : args.command()->forms) {
        if (args.form() == nullptr || args.form() == &form) {
            std::printf("%-6s %s\n", begin, form_text(*args.command(), form).c_str());
            begin = "";
        }
    }
    return CMD_USAGE;
}

cmd_result_t fail(const Arguments &args, const std::string &what)
{
    std::printf("%s: %s\n", args.name(), what.c_str());
    return CMD_FAIL;
}

cmd_result_t done_or_fail(const Arguments &args, const std::string &what, int status)
{
    return status < 0 ? fail(args, what + ": " + status_name(status)) : CMD_OK;
}

cmd_result_t test_failed()
{
    failure_was_a_test = true;
    return CMD_FAIL;
}

bool last_failure_was_a_test()
{
    return failure_was_a_test;
}

}  // namespace sim

using namespace sim;

extern "C" {

cmd_result_t sim_sh_process_command(int unit, char *c)
{
    if (c == nullptr) {
        return CMD_USAGE;
    }
    const cmd_result_t result = run_line(unit, c);
    if (depth == 0) {
        run_background_jobs();
    }
    return result;
}

cmd_result_t sim_sh_process_command_check(int unit, char *c)
{
    if (c == nullptr) {
        return CMD_USAGE;
    }
    ShellLine line(c);
    ShellCommand command;
    std::string error;
    args_t words;
    switch (line.next(variables_of(unit), &command, &error)) {
    case ShellLine::Found::error:
        return CMD_USAGE;
    case ShellLine::Found::end:
        return CMD_OK;
    case ShellLine::Found::command:
        break;
    }
    if (command.words.empty() || !make_arguments(command.words, &words)) {
        return CMD_USAGE;
    }
    const FoundCommand found = find_command(command.words.front());
    if (found.command == nullptr) {
        return CMD_NFND;
    }
    Arguments args(&words);
    return choose_form(*found.command, &args, &error) != nullptr ? CMD_OK : CMD_USAGE;
}

int sim_sh_check_attached(const char *pfx, int unit)
{
    if (attached(unit) != nullptr) {
        return 0;
    }
    std::printf("%s%sunit %d is not attached\n", pfx != nullptr ? pfx : "", pfx != nullptr ? ": " : "", unit);
    return -1;
}

cmd_result_t sim_belvok_sh_process_command(int unit, char *c)
{
    sim_diag_init();
    return sim_sh_process_command(unit, c);
}

cmd_result_t sim_belvok_sh_process(int unit, const char *pfx, int eof_exit)
{
    sim_diag_init();
    return sim_sh_process(unit, pfx, eof_exit);
}

}  // extern "C"
