/// The words of a command as its handler consumes them.
#pragma once

#include <appl/shell.h>

#include <string>
#include <vector>

namespace sim {

struct Command;
struct Form;

/// False, and *args undefined, if there are more words or longer ones than the record can hold.
bool make_arguments(const std::vector<std::string> &words, args_t *args);

/// The parts of "key=value"; false if it is not made so.
bool split_setting(const std::string &word, std::string *key, std::string *value);

/// A view of a record, which may come from anywhere and hold anything.
class Arguments {
public:
    explicit Arguments(args_t *args);

    /// Whether the record is as make_arguments makes it; one that is not seems to have no words.
    bool valid() const { return valid_; }

    const char *name() const { return valid_ && args_->count > 0 ? text(0) : ""; }
    int left() const { return valid_ ? args_->count - args_->next : 0; }

    /// The next word, consumed or not, or one of those that follow it; null if there is none.
    const char *next();
    const char *peek(int ahead = 0) const;
    /// Consumes all words that are left, joined by blanks.
    std::string rest();

    /// For those that take the record itself, with what was consumed.
    args_t *record() const { return args_; }

    /// Tells what the words were understood as; null as far as they were not.
    void is_call_of(const Command *command, const Form *form);
    const Command *command() const { return command_; }
    const Form *form() const { return form_; }

private:
    const char *text(int word) const { return args_->text + args_->word[word]; }

    args_t *args_;
    bool valid_;
    const Command *command_ = nullptr;
    const Form *form_ = nullptr;
};

}  // namespace sim
