/// Commands that make a language of the shell: variables, tests, conditions, loops, command files.
#include "number_text.h"
#include "shell.h"
#include "shell_commands.h"
#include "shell_variables.h"
#include "sim_shell.h"

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

namespace sim {

namespace {

/// The settings of <appl/shell.h> by the names that "set" knows them under.
struct Setting {
    const char *name;
    int *value;
};

const Setting settings[] = {{"rcload", &sh_set_rcload},           {"rcerror", &sh_set_rcerror},
                            {"lperror", &sh_set_lperror},         {"iferror", &sh_set_iferror},
                            {"rctest", &sh_set_rctest},           {"more_lines", &sh_set_more_lines},
                            {"report_time", &sh_set_report_time}, {"report_status", &sh_set_report_status}};

int *find_setting(const std::string &name)
{
    for (const Setting &setting : settings) {
        if (name == setting.name) {
            return setting.value;
        }
    }
    return nullptr;
}

bool read_setting(const std::string &text, int *value)
{
    if (text == "on" || text == "off") {
        *value = text == "on";
        return true;
    }
    int number;
    if (!read_int(text, &number) || number < 0) {
        return false;
    }
    *value = number;
    return true;
}

bool ends_all(cmd_result_t result)
{
    return result == CMD_EXIT || result == CMD_INTR;
}

cmd_result_t echo(int, args_t *a)
{
    std::printf("%s\n", Arguments(a).rest().c_str());
    return CMD_OK;
}

void show_variables()
{
    for (const Setting &setting : settings) {
        std::printf("%s=%d\n", setting.name, *setting.value);
    }
    for (const auto &[name, value] : shell_variables().all()) {
        std::printf("%s=%s\n", name.c_str(), value.c_str());
    }
}

cmd_result_t set(int, args_t *a)
{
    Arguments args(a);
    if (args.left() == 0) {
        show_variables();
        return CMD_OK;
    }
    std::string name, value;
    if (!args.next_setting(&name, &value)) {
        name = args.next();
        if (args.left() == 0) {
            return CMD_USAGE;
        }
        value = args.rest();
    }
    if (args.left() != 0) {
        return CMD_USAGE;
    }
    if (int *setting = find_setting(name)) {
        return read_setting(value, setting) ? CMD_OK : fail(args, name + " is a number, on or off");
    }
    return shell_variables().set(name, value) ? CMD_OK : fail(args, "'" + name + "' cannot be a variable");
}

cmd_result_t unset(int, args_t *a)
{
    Arguments args(a);
    const char *name = args.next();
    if (name == nullptr || args.left() != 0) {
        return CMD_USAGE;
    }
    return shell_variables().unset(name) ? CMD_OK : fail(args, std::string("no variable ") + name);
}

/// Whether `a operator b` holds; numbers are compared as such. False if there is no such operator.
bool compare(const std::string &a, const std::string &relation, const std::string &b, bool *holds)
{
    int64 number_a, number_b;
    const bool numbers = read_integer(a, &number_a) && read_integer(b, &number_b);
    const int order = numbers ? (number_a > number_b) - (number_a < number_b) : a.compare(b);
    if (relation == "==") {
        *holds = order == 0;
    } else if (relation == "!=") {
        *holds = order != 0;
    } else if (relation == "<") {
        *holds = order < 0;
    } else if (relation == "<=") {
        *holds = order <= 0;
    } else if (relation == ">") {
        *holds = order > 0;
    } else if (relation == ">=") {
        *holds = order >= 0;
    } else {
        return false;
    }
    return true;
}

cmd_result_t test(int, args_t *a)
{
    Arguments args(a);
    if (args.left() != 3) {
        return CMD_USAGE;
    }
    const std::string left = args.next(), relation = args.next(), right = args.next();
    bool holds;
    if (!compare(left, relation, right, &holds)) {
        return CMD_USAGE;
    }
    return holds ? CMD_OK : test_failed();
}

cmd_result_t condition(int unit, args_t *a)
{
    Arguments args(a);
    const int words = args.left();
    if (words != 2 && words != 3) {
        return CMD_USAGE;
    }
    const cmd_result_t held = run_line(unit, args.next());
    if (ends_all(held) || held == CMD_USAGE || held == CMD_NFND) {
        return held == CMD_USAGE ? fail(args, "the condition cannot be read") : held;
    }
    const char *then = args.next();
    const char *otherwise = args.next();
    const char *chosen = held == CMD_OK ? then : otherwise;
    const cmd_result_t result = chosen != nullptr ? run_line(unit, chosen) : CMD_OK;
    return result == CMD_OK || ends_all(result) || sh_set_iferror ? result : CMD_OK;
}

/// One pass of a loop: false if the loop is to end with *result.
bool pass(int unit, const char *body, cmd_result_t *result)
{
    const cmd_result_t own = run_line(unit, body);
    if (own != CMD_OK && (ends_all(own) || sh_set_lperror)) {
        *result = own;
        return false;
    }
    return true;
}

cmd_result_t loop(int unit, args_t *a)
{
    Arguments args(a);
    int count;
    if (!args.next_integer(&count) || count < 0 || args.left() != 1) {
        return CMD_USAGE;
    }
    const char *body = args.next();
    cmd_result_t result = CMD_OK;
    while (count-- > 0 && pass(unit, body, &result)) {
    }
    return result;
}

cmd_result_t for_each(int unit, args_t *a)
{
    Arguments args(a);
    const char *name = args.next();
    int low, high;
    if (name == nullptr || !args.next_integer(&low) || !args.next_integer(&high) || args.left() != 1) {
        return CMD_USAGE;
    }
    const char *body = args.next();
    cmd_result_t result = CMD_OK;
    for (long long value = low; value <= high; ++value) {
        if (!shell_variables().set(name, std::to_string(value))) {
            return fail(args, std::string("'") + name + "' cannot be a variable");
        }
        if (!pass(unit, body, &result)) {
            break;
        }
    }
    return result;
}

cmd_result_t rcload(int unit, args_t *a)
{
    Arguments args(a);
    const char *file = args.next();
    if (file == nullptr) {
        return CMD_USAGE;
    }
    return sim_sh_rcload_file(unit, a, const_cast<char *>(file), 0);
}

constexpr cmd_t commands[] = {
    command("echo", echo, "[WORD...]", "print the words"),
    command("set", set, "[NAME VALUE | NAME=VALUE]", "show or set settings and variables"),
    command("unset", unset, "NAME", "remove a variable"),
    command("test", test, "A ==|!=|<|<=|>|>= B", "fail unless it holds"),
    command("if", condition, "'COMMANDS' 'COMMANDS' ['COMMANDS']",
            "run the second if the first succeed, else the third"),
    command("loop", loop, "COUNT 'COMMANDS'", "run commands a number of times"),
    command("for", for_each, "NAME LOW HIGH 'COMMANDS'", "run commands with a variable from LOW to HIGH"),
    command("rcload", rcload, "FILE [WORD...]", "run the commands of a file, in which $1 is the first word"),
};

}  // namespace

const CommandGroup language_commands = {"Language", commands, std::size(commands), false};

}  // namespace sim
