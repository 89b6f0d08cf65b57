// What the development SDK answers where nobody writes a function, as the names and types of the declarations
// tell: which ones can be served from a store of what was set before. A getter takes a pointer to what its setter
// takes by value, or both take a pointer to the same record; what else both take alike are keys.
//
// What names and types cannot tell stands in the interface files: `unserved`, [identified_by], [created_with]
// and [key_checks], see interface.h; and why others are unavailable.
#pragma once

#include "model.h"

#include <map>
#include <string>
#include <vector>

namespace generator {

/// What a parameter is to a rule.
enum class Role {
    Key,
    KeyArray,
    KeyRecord,  ///< a record by pointer, some members of which are keys
    KeyMember,  ///< a key that other functions take as a member of a record, which has its name
    Value,
    Record,  ///< a record by pointer, which is the value; members of it may be keys as well
    Flags,   ///< say how the id of a new object is chosen
    Id,      ///< of the object that was made or found
    Callback,
    UserData,
};

struct RuleParameter {
    Parameter declared;
    Role role;
    std::string check = {};                 ///< of a key: what checks it, see [key_checks]
    std::vector<std::string> members = {};  ///< of a record: those that are keys
    std::string range = {};                 ///< what it has to be within, if anything: two numbers
};

/// What the interface files tell of a table, as generated code says it to sdk/src/rules/rule_table.h.
struct TableText {
    std::string references;  ///< definition of those of its records; empty if there are none
    std::string arguments;   ///< of the table's constructor, after its name and module
};

/// How a function is answered. Example, of `bcm_port_autoneg_set(int unit, bcm_port_t port, int autoneg)`:
/// operation "set", table "bcm_port_autoneg", a key `port` with the check "own_port" and a value `autoneg`.
struct Rule {
    std::string operation;  ///< function of sdk/src/rules/rules.h
    std::string table;      ///< what the functions that share it have in common, a prefix of their names
    std::string unit;       ///< name of the parameter
    std::vector<RuleParameter> parameters;  ///< those after the unit
    std::vector<std::string> flags;         ///< of "create": see [created_with]
    std::vector<TypePtr> visited;           ///< of "traverse": keys and values as they are written
    std::string record;                     ///< tag of the record whose members are taken
    std::string call = {};                  ///< the expression that answers, where it is known already
    TableText table_text = {};
    bool is_kept_by_room = false;  ///< whether a room keeps the records, so that there is no table
};

enum class AnswerKind {
    ByRule,
    Initialised,  ///< "void T_init(T *record)": the record is cleared
    Unavailable,  ///< and an interface file says why
    Unfit,        ///< unavailable, since no rule fits
};

/// What a function answers that nobody writes by hand, and why.
struct Answer {
    AnswerKind kind = AnswerKind::Unfit;
    std::string why;
    Rule rule;  ///< if there is one
};

/// What an argument has to be within by its type, as RuleParameter has it: an enumeration that is no set of flags.
std::string range_of(const Model &model, const Parameter &parameter);

/// The function of sdk/src/rules/rules.h for an initialisation or the end of one, as a Rule has it in `operation`.
constexpr const char *operation_initialise = "initialise", *operation_detach = "detach";

/// By function name.
using Answers = std::map<std::string, Answer>;

/// Those of all functions of the SDK. Throws std::runtime_error with all entries of the interface files that fit
/// no function, a line each.
Answers find_answers(const Model &model);

}  // namespace generator
