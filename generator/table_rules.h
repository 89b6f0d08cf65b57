// Answers from the tables that interface files describe. Where names and types of functions do not tell how a
// table works, an entry [tables.<table>] does, by these keys; each value is a text, several words with spaces
// between:
//   key        what a record is found by, in order: members of the record, or names of parameters. "#" stands
//              for the place in an array
//   record     the record's type, if there is one; else the values are the parameters that are no keys
//   id         that of the keys which "create" chooses; it is the last one
//   with       flags by which a caller chooses the id of what is made, and replaces: two, one, or none
//   replace    the flag by which "add" replaces
//   first      the lowest id, a C expression; 1
//   capacity   records that there can be
//   refers     "part=table": a key or member that names a record of another table, or with "!" before the
//              name what a function of sdk/src/references says
//   owns       tables that refer to this one, and whose records go with the one that they name
//   counts     "parameter=table": a result that says how many records of the other table refer to this one,
//              or with "uses" in place of a table how many of all; "none" for what there is none of
//   all        the number that "clear" takes in place of a key or member, for all
//   values     flags that are values too
//   ranges     "name=low..high": of parameters, and of members of the record
//   each       the beginning of the names of many functions: one without "_get" sets, one with it finds, and
//              what follows in the name is the last key
//   also       further beginnings of the names of its functions
//   <operation>   functions whose names do not end as usual
// A function of many records that takes a member which is no key means the records that have it. Without
// `key`, the entry adds to what a rule finds by itself.
//
// The operations are those of sdk/src/rules/rules.h: create, add, set, modify, find, get, search, remove,
// clear, list, replace_all, traverse.
#pragma once

#include "rules.h"

#include <map>
#include <string>

namespace generator {

struct TableAnswers {
    Answers answers;                              ///< of the functions of these tables, and of modules
    std::map<std::string, std::string> refusals;  ///< why a function of a table is not answered
    std::map<std::string, TableText> texts;       ///< of all tables that the interface files describe
};

/// Throws std::runtime_error with all entries that are wrong, a line each.
TableAnswers find_table_answers(const Model &model);

}  // namespace generator
