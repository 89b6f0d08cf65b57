// Rules of the development SDK: which functions can be answered from a store of what was set before, as the
// names and types of the declarations tell. A getter takes a pointer to what its setter takes by value, or both
// take a pointer to the same record; what else both take alike are keys.
//
// What names and types cannot tell stands in the interface files: `unserved`, [identified_by], [created_with]
// and [key_checks], see interface.h.
#pragma once

#include "model.h"

#include <map>
#include <string>
#include <vector>

namespace generator {

/// One C++ argument of the call that answers a function. Example: {"port", true, "rules::own_port(port)"}.
struct RuleArgument {
    std::string parameter;
    bool is_key = false;  ///< else a value
    std::string text;
};

/// How one function is answered. Example, of `bcm_port_autoneg_set(int unit, bcm_port_t port, int autoneg)`:
/// operation "set", table "bcm_port_autoneg", arguments "rules::own_port(port)" and "rules::given(autoneg)".
struct Rule {
    std::string operation;  ///< function of sdk/src/rules/rules.h
    std::string table;      ///< what the functions that share it have in common, a prefix of their names
    std::string unit;       ///< name of the parameter
    std::vector<RuleArgument> arguments;
    std::string more = {};  ///< further arguments of the operation; text that begins with a comma
};

/// By function name.
using Rules = std::map<std::string, Rule>;

/// Throws std::runtime_error with all entries of the interface files that fit no function, a line each.
Rules find_rules(const Model &model);

}  // namespace generator
