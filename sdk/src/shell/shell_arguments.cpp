#include "shell_arguments.h"

#include <cstring>

namespace sim {

namespace {

bool is_whole(const args_t *args)
{
    if (args == nullptr || args->count < 0 || args->count > SH_WORDS_MAX || args->next < 0
        || args->next > args->count) {
        return false;
    }
    for (int word = 0; word < args->count; ++word) {
        const std::size_t begin = args->word[word];
        if (begin >= SH_TEXT_MAX || std::memchr(args->text + begin, '\0', SH_TEXT_MAX - begin) == nullptr) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool make_arguments(const std::vector<std::string> &words, args_t *args)
{
    if (words.size() > SH_WORDS_MAX) {
        return false;
    }
    args->count = static_cast<int>(words.size());
    args->next = words.empty() ? 0 : 1;
    std::size_t used = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i].size() + 1 > SH_TEXT_MAX - used) {
            return false;
        }
        args->word[i] = static_cast<uint16>(used);
        std::memcpy(args->text + used, words[i].c_str(), words[i].size() + 1);
        used += words[i].size() + 1;
    }
    return true;
}

bool split_setting(const std::string &word, std::string *key, std::string *value)
{
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos || equals == 0) {
        return false;
    }
    *key = word.substr(0, equals);
    *value = word.substr(equals + 1);
    return true;
}

Arguments::Arguments(args_t *args) : args_(args), valid_(is_whole(args)) {}

const char *Arguments::peek(int ahead) const
{
    return ahead < left() ? text(args_->next + ahead) : nullptr;
}

const char *Arguments::next()
{
    return left() > 0 ? text(args_->next++) : nullptr;
}

void Arguments::is_call_of(const Command *command, const Form *form)
{
    command_ = command;
    form_ = form;
}

std::string Arguments::rest()
{
    std::string joined;
    const char *separator = "";
    while (const char *word = next()) {
        joined.append(separator).append(word);
        separator = " ";
    }
    return joined;
}

}  // namespace sim
