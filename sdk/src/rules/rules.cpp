#include "rules.h"

#include "begin.h"
#include "events.h"
#include "gport.h"
#include "rule_store.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string>

using sim::begin;
using sim::Switch;

namespace rules {

namespace {

void append(std::string &bytes, const void *object, std::size_t size)
{
    bytes.append(static_cast<const char *>(object), size);
}

int append_port(Switch &sw, std::string &key, const Argument &argument)
{
    bcm_port_t port;
    std::memcpy(&port, argument.from, sizeof port);
    if (argument.role == Argument::Role::own_port || sim::names_port(port)) {
        const int rc = sim::resolve_own_port(port, &port);
        if (rc != BCM_E_NONE) {
            return rc;
        }
    } else if (!argument.exists(sw, argument.from)) {
        return BCM_E_NOT_FOUND;
    }
    append(key, &port, sizeof port);
    return BCM_E_NONE;
}

/// The keys among the arguments, one after the other: BCM_E_PORT, BCM_E_NOT_FOUND.
int key_of(Switch &sw, Arguments arguments, std::string *key)
{
    for (const Argument &argument : arguments) {
        int rc = BCM_E_NONE;
        if (argument.role == Argument::Role::key) {
            append(*key, argument.from, argument.size);
        } else if (argument.role == Argument::Role::own_port || argument.role == Argument::Role::any_port) {
            rc = append_port(sw, *key, argument);
        }
        if (rc != BCM_E_NONE) {
            return rc;
        }
    }
    return BCM_E_NONE;
}

std::string value_of(Arguments arguments)
{
    std::string value;
    for (const Argument &argument : arguments) {
        if (argument.role == Argument::Role::given) {
            append(value, argument.from, argument.size);
        }
    }
    return value;
}

/// Writes the parts of a value to the results. One that was entered narrower is continued by zeros, one that
/// was entered wider is cut: counters have functions for 32 and for 64 bits.
void write_results(const sim::RuleStore &store, const Table &table, Arguments arguments,
                   const std::string &key, const std::string &value)
{
    std::size_t begin = 0;
    for (const Argument &argument : arguments) {
        if (argument.role == Argument::Role::result) {
            const std::size_t there = begin < value.size() ? value.size() - begin : 0;
            const std::size_t copied = std::min<std::size_t>(argument.size, there);
            std::memset(argument.to, 0, argument.size);
            std::memcpy(argument.to, value.data() + begin, copied);
            begin += argument.size;
        } else if (argument.role == Argument::Role::records || argument.role == Argument::Role::uses) {
            const bool of_others = argument.role == Argument::Role::records;
            const int count =
                of_others ? store.uses_by(argument.table, table.name, key) : store.uses(table.name, key);
            std::memcpy(argument.to, &count, sizeof count);
        }
    }
}

/// The unit's store and the key among the arguments: BCM_E_INIT, BCM_E_PARAM, BCM_E_PORT, BCM_E_NOT_FOUND.
auto entry_of(const Table &table, Arguments arguments, bool arrays_are_wrong = false)
{
    return [&table, arguments, arrays_are_wrong](sim::Switch &sw, auto next) -> int {
        sim::RuleStore &store = sim::rule_store_of(sw);
        if (!store.is_initialised(table.module)) {
            return BCM_E_INIT;
        }
        bool has_functions = false;
        for (const Argument &argument : arguments) {
            if (argument.from == nullptr || argument.role == Argument::Role::refused) {
                return BCM_E_PARAM;
            }
            has_functions = has_functions || argument.is_function;
        }
        if (arrays_are_wrong) {
            return BCM_E_PARAM;
        }
        std::string key;
        int rc = key_of(sw, arguments, &key);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (has_functions) {
            store.keeps_functions(table);
        }
        rc = next(store, key);
        if (rc == BCM_E_FULL && table.object != Table::no_object) {
            raise(sw, {bcmSwitchEventTableFull, static_cast<uint32>(table.object)});
        }
        return rc;
    };
}

/// Whether a record is one of those with the given first keys and members.
bool is_meant(Arguments arguments, const std::string &key_begin, const std::string &key,
              const std::string &value)
{
    return key.compare(0, key_begin.size(), key_begin) == 0
           && std::all_of(arguments.begin(), arguments.end(), [&](const Argument &argument) {
                  return argument.role != Argument::Role::match
                         || (argument.offset + argument.size <= value.size()
                             && std::memcmp(value.data() + argument.offset, argument.from, argument.size)
                                    == 0);
              });
}

bool is_there(Switch &sw, const Reference &reference, const std::string &part)
{
    const bool is_none = !reference.in_key && part.find_first_not_of('\0') == std::string::npos;
    return is_none
           || (reference.exists != nullptr ? reference.exists(sw, part.data())
                                           : sim::rule_store_of(sw).find(reference.table, part) != nullptr);
}

/// Whether what parts of a record refer to exists; all of them, or those of its key, which may be its first parts
/// alone. BCM_E_NOT_FOUND.
int check_references(Switch &sw, const Table &table, const std::string &key, const std::string *value)
{
    for (std::size_t i = 0; i < table.reference_count; ++i) {
        const Reference &reference = table.references[i];
        const std::string *whole = reference.in_key ? &key : value;
        if (whole != nullptr && whole->size() >= reference.offset + reference.size
            && !is_there(sw, reference, whole->substr(reference.offset, reference.size))) {
            return BCM_E_NOT_FOUND;
        }
    }
    return BCM_E_NONE;
}

/// The same of what says which records are meant: first keys, and members of the records.
int check_choice(Switch &sw, const Table &table, const std::string &key_begin, Arguments arguments)
{
    for (std::size_t i = 0; i < table.reference_count; ++i) {
        const Reference &reference = table.references[i];
        for (const Argument &argument : arguments) {
            if (argument.role == Argument::Role::match && !reference.in_key
                && argument.offset == reference.offset
                && !is_there(sw, reference, {static_cast<const char *>(argument.from), argument.size})) {
                return BCM_E_NOT_FOUND;
            }
        }
    }
    return check_references(sw, table, key_begin, nullptr);
}

/// Whether another record than that of the key has all parts that have to be unique like this one.
bool is_another_alike(const sim::RuleStore &store, const Table &table, const std::string &key,
                      const std::string &value)
{
    const auto &records = store.records(table.name);
    return table.unique_count != 0 && std::any_of(records.begin(), records.end(), [&](const auto &other) {
               return other.first != key
                      && std::all_of(table.unique, table.unique + table.unique_count, [&](const Part &part) {
                             const std::string &theirs = part.in_key ? other.first : other.second;
                             return theirs.compare(part.offset, part.size, part.in_key ? key : value,
                                                   part.offset, part.size)
                                    == 0;
                         });
           });
}

/// Whether a record can be entered: BCM_E_NOT_FOUND for what it refers to, BCM_E_EXISTS, BCM_E_FULL.
int check_entry(Switch &sw, const Table &table, const std::string &key, const std::string &value)
{
    const int rc = check_references(sw, table, key, &value);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    const sim::RuleStore &store = sim::rule_store_of(sw);
    if (is_another_alike(store, table, key, value)) {
        return BCM_E_EXISTS;
    }
    const bool has_room = store.find(table.name, key) != nullptr
                          || store.records(table.name).size() < static_cast<std::size_t>(table.capacity);
    return has_room ? BCM_E_NONE : BCM_E_FULL;
}

int enter(Switch &sw, const Table &table, const std::string &key, const std::string &value)
{
    const int rc = check_entry(sw, table, key, value);
    if (rc == BCM_E_NONE) {
        sim::rule_store_of(sw).put(table, key, value);
    }
    return rc;
}

bool has_null(Columns columns)
{
    return std::any_of(columns.begin(), columns.end(),
                       [](const Column &column) { return column.at == nullptr; });
}

/// The value among the arguments; where the place of the id is part of it, with that number there.
std::string value_with_id(Arguments arguments, const void *place, std::size_t size, std::int32_t number)
{
    std::string value;
    for (const Argument &argument : arguments) {
        if (argument.role != Argument::Role::given) {
            continue;
        }
        const char *from = static_cast<const char *>(argument.from), *at = static_cast<const char *>(place);
        const std::size_t begin = value.size();
        append(value, from, argument.size);
        const std::less_equal<const char *> up_to;
        if (at != nullptr && up_to(from, at) && up_to(at + size, from + argument.size)) {
            std::memcpy(value.data() + begin + (at - from), &number, size);
        }
    }
    return value;
}

std::string id_key(const std::string &key, const Id &id, std::int32_t number)
{
    std::string whole = key;
    append(whole, &number, id.size);
    return whole;
}

/// The lowest id that no object has, or one above all that there can be.
std::int64_t free_id(const sim::RuleStore &store, const Table &table, const Id &id)
{
    std::int64_t free = table.first_id;
    for (const std::int32_t taken : store.ids(table.name, id.size)) {
        if (taken == free) {
            ++free;
        }
    }
    return free;
}

}  // namespace

int refuse(const Table &table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(table, arguments)).then([](auto &&...) -> int { return BCM_E_PARAM; });
}

int unavailable(const Table &table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(table, arguments)).then([](auto &&...) -> int { return BCM_E_UNAVAIL; });
}

int initialise(const char *module, int unit)
{
    return begin(unit).then([&](Switch &sw) { sim::rule_store_of(sw).initialise(module); });
}

int detach(const char *module, int unit)
{
    return begin(unit).then([&](Switch &sw) -> int {
        sim::RuleStore &store = sim::rule_store_of(sw);
        if (!store.is_initialised(module)) {
            return BCM_E_INIT;
        }
        store.detach(module);
        return BCM_E_NONE;
    });
}

int set(const Table &table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](Switch &sw, sim::RuleStore &, const std::string &key) -> int {
            return enter(sw, table, key, value_of(arguments));
        });
}

int get(const Table &table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &key) -> int {
            const int rc = check_references(sw, table, key, nullptr);
            if (rc == BCM_E_NONE) {
                const std::string *value = store.find(table.name, key);
                write_results(store, table, arguments, key, value != nullptr ? *value : std::string());
            }
            return rc;
        });
}

int add(const Table &table, int unit, Arguments arguments, bool may_replace)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &key) -> int {
            const bool exists = store.find(table.name, key) != nullptr;
            return exists && !may_replace ? static_cast<int>(BCM_E_EXISTS)
                                          : enter(sw, table, key, value_of(arguments));
        });
}

int modify(const Table &table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &key) -> int {
            return store.find(table.name, key) == nullptr ? static_cast<int>(BCM_E_NOT_FOUND)
                                                          : enter(sw, table, key, value_of(arguments));
        });
}

int find(const Table &table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](sim::RuleStore &store, const std::string &key) -> int {
            const std::string *value = store.find(table.name, key);
            if (value == nullptr) {
                return BCM_E_NOT_FOUND;
            }
            write_results(store, table, arguments, key, *value);
            return BCM_E_NONE;
        });
}

int remove(const Table &table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](sim::RuleStore &store, const std::string &key) -> int {
            const bool exists = store.find(table.name, key) != nullptr;
            if (exists && store.uses_by_others(table, key) > 0) {
                return BCM_E_BUSY;
            }
            return exists && store.erase(table, key) ? BCM_E_NONE : BCM_E_NOT_FOUND;
        });
}

int clear(const Table &table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &key_begin) -> int {
            const int rc = check_choice(sw, table, key_begin, arguments);
            if (rc == BCM_E_NONE) {
                store.erase_all(table, [&](const std::string &key, const std::string &value) {
                    return is_meant(arguments, key_begin, key, value);
                });
            }
            return rc;
        });
}

int create(const Table &table, int unit, Arguments arguments, Id id)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &key) -> int {
            if (id.at == nullptr) {
                return BCM_E_PARAM;
            }
            std::int32_t number = 0;
            if (id.chosen || id.replace) {
                std::memcpy(&number, id.at, id.size);
                if (number < table.first_id) {
                    return BCM_E_PARAM;
                }
                // The id of one object stands for no other, whatever the keys before it.
                const bool exists = store.ids(table.name, id.size).count(number) != 0;
                if (exists != id.replace) {
                    return exists ? BCM_E_EXISTS : BCM_E_NOT_FOUND;
                }
                if (exists && store.find(table.name, id_key(key, id, number)) == nullptr) {
                    return BCM_E_NOT_FOUND;
                }
            } else {
                const std::int64_t free = free_id(store, table, id);
                if (free - table.first_id >= table.capacity) {
                    return BCM_E_FULL;
                }
                number = static_cast<std::int32_t>(free);
            }
            const int rc =
                enter(sw, table, id_key(key, id, number), value_with_id(arguments, id.at, id.size, number));
            if (rc == BCM_E_NONE) {
                std::memcpy(id.at, &number, id.size);
            }
            return rc;
        });
}

int search(const Table &table, int unit, Arguments arguments, Id id, const void *id_within)
{
    return begin(unit, entry_of(table, arguments))
        .then([&](sim::RuleStore &store, const std::string &) -> int {
            if (id.at == nullptr) {
                return BCM_E_PARAM;
            }
            for (const auto &[key, value] : store.records(table.name)) {
                std::int32_t number = 0;
                std::memcpy(&number, key.data() + key.size() - id.size, id.size);
                if (value == value_with_id(arguments, id_within, id.size, number)) {
                    std::memcpy(id.at, &number, id.size);
                    return BCM_E_NONE;
                }
            }
            return BCM_E_NOT_FOUND;
        });
}

int number(const Table &table, int unit, Arguments arguments, Id id)
{
    return begin(unit, entry_of(table, arguments, id.at == nullptr))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &) -> int {
            const std::string value = value_of(arguments);
            for (const auto &[key, other] : store.records(table.name)) {
                if (value == other) {
                    std::memcpy(id.at, key.data(), id.size);
                    return BCM_E_NONE;
                }
            }
            const auto free = static_cast<std::int32_t>(free_id(store, table, id));
            const int rc = enter(sw, table, id_key("", id, free), value);
            if (rc == BCM_E_NONE) {
                std::memcpy(id.at, &free, id.size);
            }
            return rc;
        });
}

int size(const Table &table, int unit, Arguments arguments, int *size, int *used)
{
    return begin(unit, entry_of(table, arguments, size == nullptr || used == nullptr))
        .then([&](sim::RuleStore &store, const std::string &) {
            *size = table.capacity;
            *used = static_cast<int>(store.records(table.name).size());
        });
}

int get_each(const Table &table, int unit, Arguments arguments, long long count, Columns columns)
{
    const bool wrong = count < 0 || (count != 0 && has_null(columns));
    return begin(unit, entry_of(table, arguments, wrong))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &key_begin) -> int {
            const int rc = check_references(sw, table, key_begin, nullptr);
            if (rc != BCM_E_NONE) {
                return rc;
            }
            const Column &keys = *columns.begin(), &values = *(columns.begin() + 1);
            for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
                std::string key = key_begin;
                append(key, static_cast<const char *>(keys.at) + i * keys.size, keys.size);
                const std::string *value = store.find(table.name, key);
                char *at = static_cast<char *>(values.at) + i * values.size;
                std::memset(at, 0, values.size);
                if (value != nullptr) {
                    std::memcpy(at, value->data(), std::min(values.size, value->size()));
                }
            }
            return BCM_E_NONE;
        });
}

int list(const Table &table, int unit, Arguments arguments, long long max, Columns columns, void *count,
         std::size_t count_size)
{
    const bool wrong = count == nullptr || max < 0 || (max != 0 && has_null(columns));
    return begin(unit, entry_of(table, arguments, wrong))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &key_begin) -> int {
            const int rc = check_choice(sw, table, key_begin, arguments);
            if (rc != BCM_E_NONE) {
                return rc;
            }
            std::size_t width = 0;
            for (const Column &column : columns) {
                width += column.size;
            }
            long long found = 0;
            for (const auto &[key, value] : store.records(table.name)) {
                if (!is_meant(arguments, key_begin, key, value)) {
                    continue;
                }
                // One array is of whole records, which are the values; several are what follows the keys.
                std::string row = key.substr(key_begin.size()) + value;
                row.resize(std::max(row.size(), width));
                std::size_t begin = columns.size() == 1 ? row.size() - width : 0;
                for (const Column &column : columns) {
                    if (found < max) {
                        std::memcpy(
                            static_cast<char *>(column.at) + static_cast<std::size_t>(found) * column.size,
                            row.data() + begin, column.size);
                    }
                    begin += column.size;
                }
                ++found;
            }
            const auto number = static_cast<std::int32_t>(found);
            std::memcpy(count, &number, count_size);
            return BCM_E_NONE;
        });
}

int replace_all(const Table &table, int unit, Arguments arguments, long long count, Columns columns,
                bool by_place)
{
    const bool wrong = count < 0 || (count != 0 && has_null(columns));
    return begin(unit, entry_of(table, arguments, wrong))
        .then([&](Switch &sw, sim::RuleStore &store, const std::string &key_begin) -> int {
            const int missing = check_choice(sw, table, key_begin, arguments);
            if (missing != BCM_E_NONE) {
                return missing;
            }
            std::map<std::string, std::string> records;
            for (std::int32_t i = 0; i < count; ++i) {
                std::string row;
                for (const Column &column : columns) {
                    append(row,
                           static_cast<const char *>(column.at) + static_cast<std::size_t>(i) * column.size,
                           column.size);
                }
                std::string key = key_begin;
                append(key, by_place ? static_cast<const void *>(&i) : row.data(),
                       by_place ? sizeof i : row.size());
                const int rc = check_entry(sw, table, key, by_place ? row : "");
                if (rc != BCM_E_NONE) {
                    return rc;
                }
                if (!records.emplace(key, by_place ? row : "").second) {
                    return BCM_E_EXISTS;
                }
            }
            store.erase_all(table, [&](const std::string &key, const std::string &value) {
                return is_meant(arguments, key_begin, key, value);
            });
            for (const auto &[key, value] : records) {
                store.put(table, key, value);
            }
            return BCM_E_NONE;
        });
}

int visit_all(const Table &table, int unit, Arguments arguments, bool no_callback, std::size_t size,
              bool keys_alone, const std::function<int(const char *bytes)> &visit)
{
    // Looked up for each record, since a callback may change the table and even detach the unit.
    std::string key_begin, last;
    const int rc =
        begin(unit, entry_of(table, arguments))
            .then([&](Switch &sw, sim::RuleStore &, const std::string &key) -> int {
                key_begin = key;
                return no_callback ? static_cast<int>(BCM_E_PARAM) : check_choice(sw, table, key, arguments);
            });
    if (rc != BCM_E_NONE) {
        return rc;
    }
    bool first = true;
    while (Switch *sw = sim::attached(unit)) {
        const sim::RuleStore::Records &records = sim::rule_store_of(*sw).records(table.name);
        const auto next = first ? records.begin() : records.upper_bound(last);
        if (next == records.end()) {
            break;
        }
        last = next->first;
        first = false;
        if (!is_meant(arguments, key_begin, last, next->second)) {
            continue;
        }
        std::string bytes = keys_alone ? next->first : next->first + next->second;
        bytes.resize(std::max(bytes.size(), size));
        const int result = visit(bytes.data() + bytes.size() - size);
        if (result < 0) {
            return result;
        }
    }
    return BCM_E_NONE;
}

}  // namespace rules
