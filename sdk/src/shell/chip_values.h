/// Values of registers and table entries as commands show and change them.
#pragma once

#include "chip_words.h"
#include "shell_arguments.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace sim {

/// A value of at most that many bits, which is `owner`'s. Refuses the word, and returns false, if it is none.
bool read_value(const Arguments &args, const std::string &word, const std::string &owner, int bits,
                Words *value);

struct FieldChange {
    const Field *field;
    Words value;
};

/// Reads the words that are left, each FIELD=VALUE; refuses what cannot be, and returns false.
bool next_changes(Arguments &args, const std::string &owner, const Layout &layout,
                  std::vector<FieldChange> *changes);

/// One register or table entry, in one core or in several.
struct Entry {
    const Layout *layout;
    std::vector<int> cores;
    int all;  ///< stands for all of them, if they are more than one
    std::function<std::string(int core)> name;
    std::function<int(int core, Words *value)> read;
    std::function<int(int core, const Words &value)> write;
};

/// Prints value and fields, once if the cores have the same. Fails as soon as one cannot be read.
cmd_result_t show(const Arguments &args, const Entry &entry);

/// Changes fields in each core, and leaves the others as they are there.
cmd_result_t change(const Arguments &args, const Entry &entry, const std::vector<FieldChange> &changes);

}  // namespace sim
