/// The words of a command as its handler consumes them.
#pragma once

#include <appl/shell.h>

#include <string>
#include <vector>

namespace sim {

/// False, and *args undefined, if there are more words or longer ones than the record can hold.
bool make_arguments(const std::vector<std::string> &words, args_t *args);

/// A view of a record, which may come from anywhere and hold anything.
class Arguments {
public:
    explicit Arguments(args_t *args);

    /// Whether the record is as make_arguments makes it; one that is not seems to have no words.
    bool valid() const { return valid_; }

    const char *name() const { return valid_ && args_->count > 0 ? text(0) : ""; }
    int left() const { return valid_ ? args_->count - args_->next : 0; }

    /// The next word, consumed or not; null if there is none.
    const char *next();
    const char *peek() const;
    /// Consumes a word that is an integer; false, and nothing is consumed, if it is none.
    bool next_integer(int *value);
    /// Consumes a word "key=value" into its parts; false, and nothing is consumed, if it is none.
    bool next_setting(std::string *key, std::string *value);
    /// Consumes all words that are left, joined by blanks.
    std::string rest();

private:
    const char *text(int word) const { return args_->text + args_->word[word]; }

    args_t *args_;
    bool valid_;
};

}  // namespace sim
