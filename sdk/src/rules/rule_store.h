/// What a unit keeps for the functions that are answered by rule: tables of records by key, both as bytes.
#pragma once

#include "rule_table.h"
#include "switch.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>

namespace sim {

/// Orders keys that are one number by that number, as the machine keeps it: the last byte counts most.
struct KeyOrder {
    bool operator()(const std::string &a, const std::string &b) const;
};

class RuleStore {
public:
    using Records = std::map<std::string, std::string, KeyOrder>;

    /// Empty if nothing was ever kept.
    const Records &records(const std::string &table) const;

    /// Null if there is none.
    const std::string *find(const std::string &table, const std::string &key) const;

    /// How many records refer to that one; without those that it owns.
    int uses(const std::string &table, const std::string &key) const;
    int uses_by_others(const rules::Table &table, const std::string &key) const;

    /// How many records of a table refer to that one.
    int uses_by(const std::string &referring, const std::string &table, const std::string &key) const;

    /// Enters or replaces.
    void put(const rules::Table &table, const std::string &key, const std::string &value);

    /// False if there is none. What it owns goes too.
    bool erase(const rules::Table &table, const std::string &key);

    using Meant = std::function<bool(const std::string &key, const std::string &value)>;

    /// Erases all records that are meant, and what they own.
    void erase_all(const rules::Table &table, const Meant &meant);

    /// The table's records have functions of the SDK's caller.
    void keeps_functions(const rules::Table &table);
    /// Erases them.
    void forget_functions();

    /// The numbers that keys end in, of `size` bytes each: ids of objects.
    std::set<std::int32_t> ids(const std::string &table, std::size_t size) const;

    /// Whether a table whose ids are gports of that kind has one of that id.
    bool has_gport(bcm_gport_t gport) const;

    /// Modules are initialised at first. Either empties all tables of the module.
    bool is_initialised(const std::string &module) const { return detached_.count(module) == 0; }
    void initialise(const std::string &module);
    void detach(const std::string &module);
    void initialise_all() { detached_.clear(); }

    /// A room that acts by what a table keeps has one call when any of its records has been entered, replaced or
    /// erased. There is at most one such room for a table.
    void watch(const std::string &table, void (*changed)(void *datum), void *datum);

private:
    struct Kept {
        const rules::Table *table = nullptr;  // null while only others refer to it
        Records records;
        std::map<std::string, int> uses;         // of records, by key
        void (*changed)(void *datum) = nullptr;  // of who acts by them
        void *datum = nullptr;
        bool has_functions = false;

        void tell() const
        {
            if (changed != nullptr) {
                changed(datum);
            }
        }
    };

    template <class Use>
    void for_each_owned(const rules::Table &table, Use use) const;
    void release(const rules::Table &table, const std::string &key, const std::string &value);
    void empty(const std::string &module);
    Records::iterator erase(Kept &kept, const rules::Table &table, Records::iterator record);

    std::map<std::string, Kept> tables_;
    std::set<std::string> detached_;
};

struct RuleState : RoomState {
    static constexpr Room room = Room::rules;

    void forget_functions(Switch &) override { store.forget_functions(); }

    RuleStore store;
};

inline RuleStore &rule_store_of(Switch &sw)
{
    return sw.of<RuleState>().store;
}

}  // namespace sim
