/// Commands on the property store.
#include "config.h"
#include "shell.h"
#include "shell_commands.h"
#include "sim_config.h"

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

namespace sim {

namespace {

cmd_result_t get(int unit, Arguments *args)
{
    const char *name = args->next();
    if (name == nullptr || args->left() != 0) {
        return CMD_USAGE;
    }
    const std::string *value = property(unit, name);
    if (value == nullptr) {
        return fail(*args, std::string("no property ") + name);
    }
    std::printf("%s\n", value->c_str());
    return CMD_OK;
}

cmd_result_t set(Arguments *args)
{
    std::string name, value;
    if (!args->next_setting(&name, &value)) {
        return CMD_USAGE;
    }
    if (args->left() > 0) {
        value += " " + args->rest();
    }
    return done_or_fail(*args, name, sim_sal_config_set(name.data(), value.data()));
}

cmd_result_t remove(Arguments *args)
{
    std::string name = args->left() > 0 ? args->next() : "";
    if (name.empty() || args->left() != 0) {
        return CMD_USAGE;
    }
    return done_or_fail(*args, name, sim_sal_config_set(name.data(), nullptr));
}

cmd_result_t save(Arguments *args, bool append)
{
    std::string file = args->left() > 0 ? args->next() : "";
    std::string pattern = args->left() > 0 ? args->next() : "";
    if (file.empty() || args->left() != 0) {
        return CMD_USAGE;
    }
    return done_or_fail(*args, file, sim_sal_config_save(file.data(), pattern.data(), append));
}

cmd_result_t config(int unit, args_t *a)
{
    Arguments args(a);
    const std::string action = args.left() > 0 ? args.next() : "show";
    if (action == "get") {
        return get(unit, &args);
    }
    if (action == "set") {
        return set(&args);
    }
    if (action == "remove") {
        return remove(&args);
    }
    if (action == "save" || action == "append") {
        return save(&args, action == "append");
    }
    if (args.left() != 0) {
        return CMD_USAGE;
    }
    if (action == "show") {
        sim_sal_config_show();
        return CMD_OK;
    }
    if (action == "refresh") {
        return done_or_fail(args, action, sim_sal_config_refresh());
    }
    if (action == "flush") {
        return done_or_fail(args, action, sim_sal_config_flush());
    }
    return CMD_USAGE;
}

constexpr cmd_t commands[] = {
    command("config", config,
            "[show | get NAME | set NAME=VALUE | remove NAME | save FILE [PATTERN] | append FILE [PATTERN] | "
            "refresh | flush]",
            "look at properties (get: as the unit sees them), change them, or keep them in a file"),
};

}  // namespace

const CommandGroup property_commands = {"Properties", commands, std::size(commands), false};

}  // namespace sim
