/// What a unit keeps for the functions that are answered by rule: tables of records by key, both as bytes.
#pragma once

#include "switch.h"

#include <map>
#include <string>

namespace sim {

/// Orders keys that are one number by that number, as the machine keeps it: the last byte counts most.
struct KeyOrder {
    bool operator()(const std::string &a, const std::string &b) const;
};

class RuleStore {
public:
    using Table = std::map<std::string, std::string, KeyOrder>;

    const Table &table(const std::string &name) { return tables_[name]; }

    /// Null if there is none.
    const std::string *find(const std::string &table, const std::string &key) const;

    /// Enters or replaces.
    void put(const std::string &table, const std::string &key, const std::string &value);

    /// False if there is none.
    bool erase(const std::string &table, const std::string &key);

    /// Erases all records whose keys begin so.
    void erase_all(const std::string &table, const std::string &key_begin);

private:
    std::map<std::string, Table> tables_;
};

struct RuleState : RoomState {
    static constexpr Room room = Room::rules;

    RuleStore store;
};

inline RuleStore &rule_store_of(Switch &sw)
{
    return sw.of<RuleState>().store;
}

}  // namespace sim
