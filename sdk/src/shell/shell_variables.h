/// Variables of the shell: a set for each unit, and the words that a command file was given.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace sim {

class ShellVariables {
public:
    using Set = std::map<std::string, std::string>;

    /// Also "unit" and the numbers of a command file's words; empty if there is none.
    std::string value(const std::string &name, int unit) const;

    /// Whether there can be such a variable: names are of letters, digits and '_', no digit first.
    static bool is_name(const std::string &name);
    /// False if there cannot.
    bool set(const std::string &name, const std::string &value);
    bool unset(const std::string &name) { return sets_[current_].erase(name) != 0; }
    const Set &all() { return sets_[current_]; }

    /// Which unit's variables there are; returns which there were.
    int swap(int unit);
    void forget(int unit) { sets_.erase(unit); }

    void enter_file(std::vector<std::string> words) { file_words_.push_back(std::move(words)); }
    void leave_file() { file_words_.pop_back(); }

private:
    std::map<int, Set> sets_;
    int current_ = 0;
    std::vector<std::vector<std::string>> file_words_;
};

ShellVariables &shell_variables();

}  // namespace sim
