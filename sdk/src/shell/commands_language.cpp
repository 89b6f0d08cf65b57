/// Commands that make a language of the shell: variables, tests, conditions, loops, command files.
#include "number_text.h"
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "shell_variables.h"
#include "sim_shell.h"

#include <cstdio>
#include <string>
#include <vector>

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

cmd_result_t echo(int, Arguments &args)
{
    std::printf("%s\n", args.rest().c_str());
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

cmd_result_t refuse_variable(const Arguments &args, const std::string &name)
{
    return refuse(args, "'" + name + "' cannot be a variable");
}

cmd_result_t set(int, Arguments &args)
{
    if (args.left() == 0) {
        show_variables();
        return CMD_OK;
    }
    std::string name = args.next();
    const std::size_t equals = name.find('=');
    if (equals == std::string::npos && args.left() == 0) {
        return refuse(args, "VALUE is missing");
    }
    std::string value = args.rest();
    if (equals != std::string::npos) {
        value = name.substr(equals + 1) + (value.empty() ? "" : " ") + value;
        name.erase(equals);
    }
    if (int *setting = find_setting(name)) {
        return read_setting(value, setting)
                   ? CMD_OK
                   : refuse(args, name + " is a number, on or off, not '" + value + "'");
    }
    return shell_variables().set(name, value) ? CMD_OK : refuse_variable(args, name);
}

cmd_result_t unset(int, Arguments &args)
{
    const char *name = args.next();
    return shell_variables().unset(name) ? CMD_OK : fail(args, std::string("no variable ") + name);
}

struct Relation {
    const char *name;
    bool (*holds)(int order);
};

constexpr Relation relations[] = {
    {"==", [](int order) { return order == 0; }}, {"!=", [](int order) { return order != 0; }},
    {"<", [](int order) { return order < 0; }},   {"<=", [](int order) { return order <= 0; }},
    {">", [](int order) { return order > 0; }},   {">=", [](int order) { return order >= 0; }},
};

std::vector<std::string> relation_names()
{
    std::vector<std::string> names;
    for (const Relation &relation : relations) {
        names.emplace_back(relation.name);
    }
    return names;
}

/// Below, at or above 0 as a is to b; numbers are compared as such.
int order_of(const std::string &a, const std::string &b)
{
    int64 number_a, number_b;
    const bool numbers = read_integer(a, &number_a) && read_integer(b, &number_b);
    return numbers ? (number_a > number_b) - (number_a < number_b) : a.compare(b);
}

cmd_result_t test(int, Arguments &args)
{
    const std::string left = args.next();
    std::size_t relation;
    if (!next_choice(args, relation_names(), &relation)) {
        return CMD_USAGE;
    }
    return relations[relation].holds(order_of(left, args.next())) ? CMD_OK : test_failed();
}

cmd_result_t condition(int unit, Arguments &args)
{
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

cmd_result_t loop(int unit, Arguments &args)
{
    int count;
    if (!next_number(args, "COUNT", &count, 0)) {
        return CMD_USAGE;
    }
    const char *body = args.next();
    cmd_result_t result = CMD_OK;
    while (count-- > 0 && pass(unit, body, &result)) {
    }
    return result;
}

cmd_result_t for_each(int unit, Arguments &args)
{
    const char *name = args.next();
    if (!ShellVariables::is_name(name)) {
        return refuse_variable(args, name);
    }
    int low, high;
    if (!next_number(args, "LOW", &low) || !next_number(args, "HIGH", &high)) {
        return CMD_USAGE;
    }
    const char *body = args.next();
    cmd_result_t result = CMD_OK;
    for (long long value = low; value <= high; ++value) {
        shell_variables().set(name, std::to_string(value));
        if (!pass(unit, body, &result)) {
            break;
        }
    }
    return result;
}

cmd_result_t rcload(int unit, Arguments &args)
{
    const char *file = args.next();
    return sim_sh_rcload_file(unit, args.record(), const_cast<char *>(file), 0);
}

constexpr Form echo_forms[] = {{"", "[WORD...]", echo, ""}};
constexpr Form set_forms[] = {{"", "[NAME VALUE...]", set, "show all, or set one; NAME=VALUE does it too"}};
constexpr Form unset_forms[] = {{"", "NAME", unset, ""}};
constexpr Form test_forms[] = {{"", "A RELATION B", test, "RELATION is one of ==, !=, <, <=, >, >="}};
constexpr Form if_forms[] = {{"", "'CONDITION' 'COMMANDS' ['COMMANDS']", condition, ""}};
constexpr Form loop_forms[] = {{"", "COUNT 'COMMANDS'", loop, ""}};
constexpr Form for_forms[] = {{"", "NAME LOW HIGH 'COMMANDS'", for_each, ""}};
constexpr Form rcload_forms[] = {{"", "FILE [WORD...]", rcload, ""}};

constexpr Command commands[] = {
    {"echo", "print the words", echo_forms, "echo unit $unit"},
    {"set", "show or set settings and variables", set_forms, "set uplink 63; ps $uplink"},
    {"unset", "remove a variable", unset_forms, "set uplink 63; unset uplink"},
    {"test", "fail unless it holds", test_forms, "test $unit == 0"},
    {"if", "run the second if the first succeeds, else the third", if_forms,
     "if 'test $unit == 0' 'echo first' 'echo other'"},
    {"loop", "run commands a number of times", loop_forms, "loop 3 'counters 1; sleep 10'"},
    {"for", "run commands with a variable from LOW to HIGH", for_forms,
     "for id 100 103 'vlan create $id; vlan add $id 63'"},
    {"rcload", "run the commands of a file, in which $1 is the first word", rcload_forms,
     "rcload uplinks.soc 63"},
};

}  // namespace

const CommandGroup language_commands = {"Language", commands, false};

}  // namespace sim
