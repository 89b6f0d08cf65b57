// Answers from the tables that interface files describe, where names and types of functions do not tell how a table
// works.
#pragma once

#include "rules.h"

#include <map>
#include <string>

namespace generator {

struct TableAnswers {
    Answers answers;                              ///< of the functions of these tables, and of modules
    std::map<std::string, std::string> refusals;  ///< why a function of a table is not answered
    std::map<std::string, TableText> texts;       ///< of all tables that the interface files describe
    std::map<std::string, std::map<std::string, std::string>>
        ranges;  ///< of those, by parameter, as a rule has them
};

/// Throws std::runtime_error with all entries that are wrong, a line each.
TableAnswers find_table_answers(const Model &model);

}  // namespace generator
