/// The table of commands. It is made of groups; each stands in the file that has the handlers.
#pragma once

#include <appl/shell.h>

#include <string>
#include <vector>

namespace sim {

struct CommandGroup {
    const char *title;
    const cmd_t *first;
    std::size_t count;
    bool needs_unit;  // an attached one
};

extern const CommandGroup language_commands;
extern const CommandGroup session_commands;
extern const CommandGroup property_commands;
extern const CommandGroup startup_commands;  // of the room above
extern const CommandGroup port_commands;
extern const CommandGroup address_commands;
extern const CommandGroup packet_commands;
extern const CommandGroup chip_commands;

/// A command's entry; its texts are literals that are never written to.
constexpr cmd_t command(const char *name, cmd_func_t handler, const char *usage, const char *help)
{
    return {const_cast<char *>(name), handler, usage, help};
}

const std::vector<const CommandGroup *> &command_groups();

struct FoundCommand {
    const cmd_t *command = nullptr;
    const CommandGroup *group = nullptr;
    std::string candidates;  // if it is none because it may be several: which
};

FoundCommand find_command(const std::string &name);

}  // namespace sim
