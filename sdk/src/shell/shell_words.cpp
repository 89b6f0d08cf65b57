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

char ShellLine::take()
{
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
}

std::string ShellLine::character(const Lookup &lookup, std::optional<int> unit)
{
    const char c = take();
    if (c == '\\' && !rest_.empty()) {
        return {take()};
    }
    return c == '$' ? variable(lookup, unit) : std::string{c};
}

bool ShellLine::quoted(const Lookup &lookup, std::optional<int> unit, std::string *text)
{
    const char quote = take();
    while (!rest_.empty() && rest_.front() != quote) {
        *text += quote == '\'' ? std::string{take()} : character(lookup, unit);
    }
    if (rest_.empty()) {
        *text = quote;
        return false;
    }
    take();
    return true;
}

bool ShellLine::word(const Lookup &lookup, ShellCommand *command, std::string *error)
{
    std::string word;
    while (!at_end_of_command() && !is_blank(rest_.front())) {
        if (rest_.front() != '\'' && rest_.front() != '"') {
            word += character(lookup, command->unit);
        } else if (!quoted(lookup, command->unit, &word)) {
            *error = "no closing " + word;
            return false;
        }
    }
    const bool only_unit = command->words.empty() && take_unit(&word, command);
    if (!only_unit) {
        command->words.push_back(std::move(word));
    }
    return true;
}

void ShellLine::skip_comment()
{
    rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size()));
}

ShellLine::Found ShellLine::next(const Lookup &lookup, ShellCommand *command, std::string *error)
{
    *command = {};
    const auto begun = [&] { return !command->words.empty() || command->unit.has_value(); };
    while (!rest_.empty()) {
        if (rest_.front() == '#') {
            skip_comment();
        } else if (!at_end_of_command() && is_blank(rest_.front())) {
            take();
        } else if (!at_end_of_command()) {
            if (!word(lookup, command, error)) {
                return Found::error;
            }
        } else {
            command->background = take() == '&';
            if (begun()) {
                return Found::command;
            }
            if (command->background) {
                *error = "nothing before &";
                return Found::error;
            }
        }
    }
    return begun() ? Found::command : Found::end;
}

}  // namespace sim
