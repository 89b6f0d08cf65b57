// A table as an interface file describes it, in an entry [tables.<table>], by these keys; each value is a text, several
// words with spaces between:
//   key        what a record is found by, in order: members of the record, or names of parameters. "#" stands
//              for the place in an array
//   record     the record's type, if there is one; else the values are the parameters that are no keys
//   id         that of the keys which "create" and "number" choose; it is the last one
//   with       flags by which a caller chooses the id of what is made, and replaces: two, one, or none
//   replace    the flag by which "add" replaces
//   first      the lowest id, a C expression; 1
//   capacity   records that there can be
//   object     what an event names if there is no room for one more, a C expression
//   refers     "part=table": a key or member, or several with "+" between, that names a record of another table, or with
//              "!" before the name what a function of sdk/src/references says
//   unique     keys or members that no two records have alike
//   unchecked  keys that may be no port although their type is one's
//   owns       tables that refer to this one, and whose records go with the one that they name
//   counts     "parameter=table": a result that says how many records of the other table refer to this one,
//              or with "uses" in place of a table how many of all; "none" for what there is none of
//   all        the number that "clear" takes in place of a key or member, for all
//   values     flags that are values too
//   ranges     "name=low..high": of parameters, and of members of the record
//   each       the beginning of the names of many functions: one without "_get" sets, one with it finds, and
//              what follows in the name is the last key
//   named      with "each": what stands before that in the name of a constant, which is the key in its place
//   kept_by    a room keeps the records: sim::<operation>_<kept_by> of sdk/src/references is called, without the table
//   also       further beginnings of the names of its functions
//   <operation>   functions whose names do not end as usual
// A function of many records that takes a member which is no key means the records that have it. Without
// `key`, the entry adds to what a rule finds by itself.
//
// The operations are those of sdk/src/rules/rules.h: create, add, set, modify, find, get, search, number,
// remove, clear, list, replace_all, get_each, traverse, size. Keys can be callbacks and their data.
#pragma once

#include "errors.h"
#include "interface.h"
#include "model.h"
#include "rules.h"

#include <map>
#include <string>
#include <vector>

namespace generator {

/// The keys that an entry may have.
std::vector<std::string> table_keys();

class TableDescription {
public:
    TableDescription(const Model &model, const Family &family, std::string name, const TableEntry &entry);

    const std::string &name() const { return name_; }
    const std::vector<std::string> &keys() const { return keys_; }
    const std::string &record() const { return record_; }  ///< type of the records; empty if there is none
    const std::string &id() const { return id_; }  ///< the key that "create" chooses; empty if there is none
    const Family &family() const { return family_; }

    /// What the entry says by this key; empty if it says nothing.
    std::string field(const char *name) const;

    /// Whether its functions are answered from it: without keys it adds to what a rule finds by itself.
    bool serves() const { return !keys_.empty(); }

    /// The declared type of a member of the record; null if it has none of that name.
    TypePtr member(const std::string &name) const;

    bool is_record(const Parameter &parameter) const;  ///< whether it is a pointer to one

    /// What the function does with records of the table; empty if it is none of the table's functions.
    std::string operation_of(const Function &function) const;

    TableText text() const;

    /// Notes whatever is wrong with the entry.
    void check(Errors &errors) const;

private:
    std::string usual(const std::string &operation, const Function &function) const;
    std::string size_by_name(const std::string &name) const;
    std::string reference(const std::string &word) const;
    std::string place(const std::string &parts) const;

    const Family &family_;
    const std::string name_;
    const TableEntry &entry_;
    const std::vector<std::string> keys_;
    const std::string record_, id_;
    std::map<std::string, TypePtr> members_;
};

}  // namespace generator
