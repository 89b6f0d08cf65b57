/// The table of commands. It is made of groups; each stands in the file that has the handlers.
#pragma once

#include "shell_arguments.h"

#include <appl/shell.h>

#include <cstddef>
#include <string>
#include <vector>

namespace sim {

/// A view of an array that stays for ever.
template <class Row>
class Table {
public:
    template <std::size_t count>
    constexpr Table(const Row (&rows)[count]) : begin_(rows), end_(rows + count)
    {
    }

    constexpr const Row *begin() const { return begin_; }
    constexpr const Row *end() const { return end_; }
    constexpr std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }

private:
    const Row *begin_, *end_;
};

/// One way to call a command, and who then does it.
struct Form {
    const char *action;  ///< the first word, by which the form is chosen; "" if there is none
    /// The other words: WORD has to be there, [WORD] may be, WORD... stands for one or more. A handler is
    /// called with as many words as this says.
    const char *arguments;
    cmd_result_t (*run)(int unit, Arguments &args);
    const char *help;  ///< what it does; "" if the command has one form only
};

struct Command {
    const char *name;  ///< a beginning that is no other's is enough to call it
    const char *help;  ///< one line that says what it does
    Table<Form> forms;
    const char *example;  ///< a line that can be run
};

struct CommandGroup {
    const char *title;
    Table<Command> commands;
    bool needs_unit;  ///< an attached one
};

extern const CommandGroup language_commands;
extern const CommandGroup session_commands;
extern const CommandGroup property_commands;
extern const CommandGroup startup_commands;  // of the room above
extern const CommandGroup port_commands;
extern const CommandGroup phy_commands;
extern const CommandGroup address_commands;
extern const CommandGroup packet_commands;
extern const CommandGroup simulator_commands;
extern const CommandGroup chip_commands;
extern const CommandGroup register_commands;
extern const CommandGroup table_commands;

const std::vector<const CommandGroup *> &command_groups();

struct FoundCommand {
    const Command *command = nullptr;
    const CommandGroup *group = nullptr;
    std::string candidates;  ///< if it is none because it may be several: which
};

FoundCommand find_command(const std::string &name);

/// The form that the words choose; the word that chose it is consumed. Without words it is the one without an
/// action, or else the first. Null, and in *wrong why, if the words fit none; args then knows what was meant.
const Form *choose_form(const Command &command, Arguments *args, std::string *wrong);

/// "vlan create ID", as users type it.
std::string form_text(const Command &command, const Form &form);

/// "'x' is none of a, b, c"
std::string none_of(const std::string &word, const std::vector<std::string> &words);

/// "a, b, c"
std::string listed(const std::vector<std::string> &words);

}  // namespace sim
