/// The grammar of the shell's lines; <appl/shell.h> tells it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct ShellCommand {
    std::optional<int> unit;
    bool background = false;
    std::vector<std::string> words;
};

/// Takes the commands from a line one by one, since each may change the variables that the next refers to.
class ShellLine {
public:
    /// The value of a variable, for a command on that unit if it names one; empty if there is none.
    using Lookup = std::function<std::string(const std::string &name, std::optional<int> unit)>;
    enum class Found { command, end, error };

    explicit ShellLine(std::string_view text) : rest_(text) {}

    /// After an error, says in *error what is wrong.
    Found next(const Lookup &lookup, ShellCommand *command, std::string *error);

private:
    bool at_end_of_command() const;
    char take();
    void skip_comment();
    /// Takes a word and adds it to the command.
    bool word(const Lookup &lookup, ShellCommand *command, std::string *error);
    /// Takes '...' or "..." and appends what is within. False if it does not end; *text is then the quote.
    bool quoted(const Lookup &lookup, std::optional<int> unit, std::string *text);
    /// Takes a character, with what belongs to it after '\' or '$'; gives what stands for it.
    std::string character(const Lookup &lookup, std::optional<int> unit);
    /// Takes what follows '$'.
    std::string variable(const Lookup &lookup, std::optional<int> unit);

    std::string_view rest_;
};

}  // namespace sim
