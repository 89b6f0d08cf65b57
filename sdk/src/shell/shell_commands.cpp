#include "shell_commands.h"

#include <algorithm>
#include <sstream>

namespace sim {

namespace {

/// How many words an argument text speaks of.
struct WordCount {
    std::vector<std::string> needed;
    int most = 0;
    bool endless = false;
};

WordCount count_words(const std::string &arguments)
{
    WordCount count;
    int depth = 0;
    std::istringstream words(arguments);
    for (std::string word; words >> word; ++count.most) {
        if (depth == 0 && word.front() != '[') {
            count.needed.push_back(word.substr(0, word.find("...")));
        }
        depth += static_cast<int>(std::count(word.begin(), word.end(), '['));
        depth -= static_cast<int>(std::count(word.begin(), word.end(), ']'));
        count.endless = count.endless || word.find("...") != std::string::npos;
    }
    return count;
}

/// What is wrong with the number of words; nothing if they fit.
std::string wrong_count(const Form &form, const Arguments &args)
{
    const WordCount count = count_words(form.arguments);
    const auto given = static_cast<std::size_t>(args.left());
    if (given < count.needed.size()) {
        return count.needed[given] + " is missing";
    }
    if (!count.endless && args.left() > count.most) {
        return "'" + std::string(args.peek(count.most)) + "' is one word too many";
    }
    return "";
}

const Form *form_of_action(const Command &command, const std::string &action)
{
    const Form *found = std::find_if(command.forms.begin(), command.forms.end(),
                                     [&](const Form &form) { return form.action == action; });
    return found == command.forms.end() ? nullptr : found;
}

std::vector<std::string> actions(const Command &command)
{
    std::vector<std::string> words;
    for (const Form &form : command.forms) {
        if (*form.action != '\0') {
            words.emplace_back(form.action);
        }
    }
    return words;
}

}  // namespace

const std::vector<const CommandGroup *> &command_groups()
{
    static const std::vector<const CommandGroup *> &groups = *new std::vector<const CommandGroup *>{
        &language_commands,  &session_commands, &property_commands, &startup_commands,
        &port_commands,      &phy_commands,     &address_commands,  &packet_commands,
        &simulator_commands, &chip_commands,    &register_commands, &table_commands};
    return groups;
}

FoundCommand find_command(const std::string &name)
{
    FoundCommand found;
    std::vector<std::string> beginnings;
    for (const CommandGroup *group : command_groups()) {
        for (const Command &command : group->commands) {
            const std::string whole = command.name;
            if (whole == name) {
                return {&command, group, ""};
            }
            if (!name.empty() && whole.compare(0, name.size(), name) == 0) {
                found.command = &command;
                found.group = group;
                beginnings.push_back(whole);
            }
        }
    }
    return beginnings.size() > 1 ? FoundCommand{nullptr, nullptr, listed(beginnings)} : found;
}

const Form *choose_form(const Command &command, Arguments *args, std::string *wrong)
{
    const Form *form = form_of_action(command, "");
    if (args->left() == 0 && form == nullptr) {
        form = command.forms.begin();
    } else if (args->left() > 0 && *args->peek() != '\0') {
        if (const Form *named = form_of_action(command, args->peek())) {
            form = named;
            args->next();
        } else if (command.forms.size() > 1 && form != nullptr && count_words(form->arguments).most == 0) {
            form = nullptr;
        }
    }
    args->is_call_of(&command, form);
    if (form == nullptr) {
        *wrong = none_of(args->peek(), actions(command));
        return nullptr;
    }
    *wrong = wrong_count(*form, *args);
    return wrong->empty() ? form : nullptr;
}

std::string none_of(const std::string &word, const std::vector<std::string> &words)
{
    return "'" + word + "' is " + (words.size() > 1 ? "none of " : "not ") + listed(words);
}

std::string form_text(const Command &command, const Form &form)
{
    std::string text = command.name;
    const bool by_default = &form == command.forms.begin() && form_of_action(command, "") == nullptr
                            && count_words(form.arguments).needed.empty();
    if (*form.action != '\0') {
        text += std::string(by_default ? " [" : " ") + form.action + (by_default ? "]" : "");
    }
    return *form.arguments != '\0' ? text + " " + form.arguments : text;
}

std::string listed(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

}  // namespace sim
