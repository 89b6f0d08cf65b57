#include "shell_commands.h"

namespace sim {

const std::vector<const CommandGroup *> &command_groups()
{
    static const std::vector<const CommandGroup *> &groups = *new std::vector<const CommandGroup *>{
        &language_commands, &session_commands, &property_commands, &startup_commands,
        &port_commands,     &address_commands, &packet_commands,   &chip_commands};
    return groups;
}

FoundCommand find_command(const std::string &name)
{
    FoundCommand found;
    int beginnings = 0;
    for (const CommandGroup *group : command_groups()) {
        for (std::size_t i = 0; i < group->count; ++i) {
            const cmd_t *command = group->first + i;
            const std::string whole = command->c_cmd;
            if (whole == name) {
                return {command, group, ""};
            }
            if (!name.empty() && whole.compare(0, name.size(), name) == 0) {
                found.command = command;
                found.group = group;
                found.candidates += (++beginnings > 1 ? ", " : "") + whole;
            }
        }
    }
    if (beginnings > 1) {
        found.command = nullptr;
    }
    return found;
}

}  // namespace sim
