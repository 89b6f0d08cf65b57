/// Commands on the property store.
#include "config.h"
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "sim_config.h"

#include <cstdio>
#include <string>

namespace sim {

namespace {

cmd_result_t show(int, Arguments &)
{
    sim_sal_config_show();
    return CMD_OK;
}

cmd_result_t get(int unit, Arguments &args)
{
    const std::string name = args.next();
    const std::string *value = property(unit, name);
    if (value == nullptr) {
        return fail(args, "no property " + name);
    }
    std::printf("%s\n", value->c_str());
    return CMD_OK;
}

cmd_result_t set(int, Arguments &args)
{
    std::string name, value;
    if (!next_setting(args, &name, &value)) {
        return CMD_USAGE;
    }
    if (args.left() > 0) {
        value += " " + args.rest();
    }
    return done_or_fail(args, name, sim_sal_config_set(name.data(), value.data()));
}

cmd_result_t remove(int, Arguments &args)
{
    std::string name = args.next();
    return done_or_fail(args, name, sim_sal_config_set(name.data(), nullptr));
}

cmd_result_t write_file(Arguments &args, bool append)
{
    std::string file = args.next();
    std::string pattern = args.left() > 0 ? args.next() : "";
    return done_or_fail(args, file, sim_sal_config_save(file.data(), pattern.data(), append));
}

cmd_result_t save(int, Arguments &args)
{
    return write_file(args, false);
}

cmd_result_t append(int, Arguments &args)
{
    return write_file(args, true);
}

cmd_result_t refresh(int, Arguments &args)
{
    return done_or_fail(args, "refresh", sim_sal_config_refresh());
}

cmd_result_t flush(int, Arguments &args)
{
    return done_or_fail(args, "flush", sim_sal_config_flush());
}

constexpr Form config_forms[] = {
    {"show", "", show, "list the properties"},
    {"get", "NAME", get, "show a property as the unit sees it"},
    {"set", "NAME=VALUE...", set, "set a property"},
    {"remove", "NAME", remove, "remove a property"},
    {"save", "FILE [PATTERN]", save, "write the properties to a file"},
    {"append", "FILE [PATTERN]", append, "add them to a file"},
    {"refresh", "", refresh, "read the property file again"},
    {"flush", "", flush, "write the property file"},
};

constexpr Command commands[] = {
    {"config", "look at properties, change them, or keep them in a file", config_forms,
     "config set l2_age_timer=600; config get l2_age_timer"},
};

}  // namespace

const CommandGroup property_commands = {"Properties", commands, false};

}  // namespace sim
