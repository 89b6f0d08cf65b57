#include "shell_words.h"

#include "number_text.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace sim {

namespace {

bool is_blank(char c)
{
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

bool is_name(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

/// Takes "N:" off a command's first word, if it begins so and none was there before. True if nothing is left.
bool take_unit(std::string *word, ShellCommand *command)
{
    const std::size_t colon = word->find(':');
    int unit;
    if (command->unit.has_value() || colon == std::string::npos || !is_digit(word->front())
        || !read_int(std::string_view(*word).substr(0, colon), &unit)) {
        return false;
    }
    command->unit = unit;
    word->erase(0, colon + 1);
    return word->empty();
}

}  // namespace

bool ShellLine::at_end_of_command() const
{
    return rest_.empty() || rest_.front() == ';' || rest_.front() == '&' || rest_.front() == '\n';
}

std::string ShellLine::variable(const Lookup &lookup, std::optional<int> unit)
{
    const bool braced = !rest_.empty() && rest_.front() == '{';
    const std::string_view after = rest_.substr(braced ? 1 : 0);
    std::size_t length = 0;
    while (length < after.size() && is_name(after[length])) {
        ++length;
    }
    const bool closed = !braced || (length < after.size() && after[length] == '}');
    if (length == 0 || !closed) {
        return "$";
    }
    rest_.remove_prefix(length + (braced ? 2 : 0));
    return lookup(std::string(after.substr(0, length)), unit);
}

bool ShellLine::word(const Lookup &lookup, ShellCommand *command, std::string *error)
{
    std::string word;
    char quote = '\0';
    while (!rest_.empty() && (quote != '\0' || (!is_blank(rest_.front()) && !at_end_of_command()))) {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        if (c == quote) {
            quote = '\0';
        } else if (quote == '\0' && (c == '\'' || c == '"')) {
            quote = c;
        } else if (c == '\\' && quote != '\'' && !rest_.empty()) {
            word += rest_.front();
            rest_.remove_prefix(1);
        } else if (c == '$' && quote != '\'') {
            word += variable(lookup, command->unit);
        } else {
            word += c;
        }
    }
    if (quote != '\0') {
        *error = std::string("no closing ") + quote;
        return false;
    }
    const bool only_unit = command->words.empty() && take_unit(&word, command);
    if (!only_unit) {
        command->words.push_back(std::move(word));
    }
    return true;
}

ShellLine::Found ShellLine::next(const Lookup &lookup, ShellCommand *command, std::string *error)
{
    *command = {};
    while (!rest_.empty()) {
        const char c = rest_.front();
        if (c == '#') {
            rest_ = rest_.substr(std::min(rest_.find('\n'), rest_.size()));
        } else if (at_end_of_command()) {
            rest_.remove_prefix(1);
            command->background = c == '&';
            if (!command->words.empty() || command->unit.has_value()) {
                break;
            }
            if (c == '&') {
                *error = "nothing before &";
                return Found::error;
            }
        } else if (is_blank(c)) {
            rest_.remove_prefix(1);
        } else {
            if (!word(lookup, command, error)) {
                return Found::error;
            }
        }
    }
    return command->words.empty() && !command->unit.has_value() ? Found::end : Found::command;
}

}  // namespace sim
