#include "rules.h"

#include "begin.h"
#include "rule_store.h"

#include <algorithm>
#include <cstring>
#include <string>

using sim::begin;
using sim::Switch;

namespace rules {

namespace {

void append(std::string &bytes, const void *object, std::size_t size)
{
    bytes.append(static_cast<const char *>(object), size);
}

/// Whether the gport is a port, of this module or another, and not a trunk, queue, tunnel or the like.
bool names_port(bcm_gport_t port)
{
    return !BCM_GPORT_IS_SET(port) || BCM_GPORT_IS_LOCAL(port) || BCM_GPORT_IS_MODPORT(port)
           || BCM_GPORT_IS_SYSTEM_PORT(port);
}

int append_port(std::string &key, const Argument &argument)
{
    bcm_port_t port;
    std::memcpy(&port, argument.from, sizeof port);
    if (argument.role == Argument::Role::own_port || names_port(port)) {
        const int rc = sim::resolve_own_port(port, &port);
        if (rc != BCM_E_NONE) {
            return rc;
        }
    }
    append(key, &port, sizeof port);
    return BCM_E_NONE;
}

/// The keys among the arguments, one after the other.
int key_of(Arguments arguments, std::string *key)
{
    for (const Argument &argument : arguments) {
        int rc = BCM_E_NONE;
        if (argument.role == Argument::Role::key) {
            append(*key, argument.from, argument.size);
        } else if (argument.role == Argument::Role::own_port || argument.role == Argument::Role::any_port) {
            rc = append_port(*key, argument);
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
void write_results(Arguments arguments, const std::string &value)
{
    std::size_t begin = 0;
    for (const Argument &argument : arguments) {
        if (argument.role == Argument::Role::result) {
            const std::size_t there = begin < value.size() ? value.size() - begin : 0;
            const std::size_t copied = std::min<std::size_t>(argument.size, there);
            std::memset(argument.to, 0, argument.size);
            std::memcpy(argument.to, value.data() + begin, copied);
            begin += argument.size;
        }
    }
}

/// The unit's store and the key among the arguments: BCM_E_PARAM, BCM_E_PORT.
auto entry_of(Arguments arguments)
{
    return [arguments](sim::Switch &sw, auto next) -> int {
        for (const Argument &argument : arguments) {
            if (argument.from == nullptr) {
                return BCM_E_PARAM;
            }
        }
        std::string key;
        const int rc = key_of(arguments, &key);
        return rc != BCM_E_NONE ? rc : next(sim::rule_store_of(sw), key);
    };
}

std::string id_key(std::int32_t id)
{
    std::string key;
    append(key, &id, sizeof id);
    return key;
}

}  // namespace

int refuse(int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments)).then([](auto &&...) -> int { return BCM_E_PARAM; });
}

int unavailable(int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments)).then([](auto &&...) -> int { return BCM_E_UNAVAIL; });
}

int set(const char *table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments)).then([&](sim::RuleStore &store, const std::string &key) -> int {
        store.put(table, key, value_of(arguments));
        return BCM_E_NONE;
    });
}

int get(const char *table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments)).then([&](sim::RuleStore &store, const std::string &key) -> int {
        const std::string *value = store.find(table, key);
        write_results(arguments, value != nullptr ? *value : std::string());
        return BCM_E_NONE;
    });
}

int add(const char *table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments)).then([&](sim::RuleStore &store, const std::string &key) -> int {
        if (store.find(table, key) != nullptr) {
            return BCM_E_EXISTS;
        }
        store.put(table, key, value_of(arguments));
        return BCM_E_NONE;
    });
}

int modify(const char *table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments)).then([&](sim::RuleStore &store, const std::string &key) -> int {
        if (store.find(table, key) == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        store.put(table, key, value_of(arguments));
        return BCM_E_NONE;
    });
}

int find(const char *table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments)).then([&](sim::RuleStore &store, const std::string &key) -> int {
        const std::string *value = store.find(table, key);
        if (value == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        write_results(arguments, *value);
        return BCM_E_NONE;
    });
}

int remove(const char *table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments)).then([&](sim::RuleStore &store, const std::string &key) -> int {
        return store.erase(table, key) ? BCM_E_NONE : BCM_E_NOT_FOUND;
    });
}

int clear(const char *table, int unit, Arguments arguments)
{
    return begin(unit, entry_of(arguments))
        .then([&](sim::RuleStore &store, const std::string &key_begin) -> int {
            store.erase_all(table, key_begin);
            return BCM_E_NONE;
        });
}

int create(const char *table, int unit, Arguments arguments, Id id)
{
    return begin(unit, entry_of(arguments)).then([&](sim::RuleStore &store, const std::string &) -> int {
        if (id.at == nullptr) {
            return BCM_E_PARAM;
        }
        std::int32_t chosen = 1;
        if (id.chosen || id.replace) {
            std::memcpy(&chosen, id.at, sizeof chosen);
            if (chosen < 1) {
                return BCM_E_PARAM;
            }
            const bool exists = store.find(table, id_key(chosen)) != nullptr;
            if (exists != id.replace) {
                return exists ? BCM_E_EXISTS : BCM_E_NOT_FOUND;
            }
        } else {
            while (store.find(table, id_key(chosen)) != nullptr) {
                ++chosen;
            }
        }
        store.put(table, id_key(chosen), value_of(arguments));
        std::memcpy(id.at, &chosen, sizeof chosen);
        return BCM_E_NONE;
    });
}

int search(const char *table, int unit, Arguments arguments, Id id)
{
    return begin(unit, entry_of(arguments)).then([&](sim::RuleStore &store, const std::string &) -> int {
        if (id.at == nullptr) {
            return BCM_E_PARAM;
        }
        const std::string wanted = value_of(arguments);
        for (const auto &[key, value] : store.table(table)) {
            if (value == wanted) {
                std::memcpy(id.at, key.data(), sizeof(std::int32_t));
                return BCM_E_NONE;
            }
        }
        return BCM_E_NOT_FOUND;
    });
}

int visit_all(const char *table, int unit, bool no_callback, std::size_t size,
              const std::function<int(const char *bytes)> &visit)
{
    if (sim::attached(unit) == nullptr) {
        return BCM_E_UNIT;
    }
    if (no_callback) {
        return BCM_E_PARAM;
    }
    // Looked up for each record, since a callback may change the table and even detach the unit.
    std::string last;
    bool first = true;
    while (Switch *sw = sim::attached(unit)) {
        const sim::RuleStore::Table &records = sim::rule_store_of(*sw).table(table);
        const auto next = first ? records.begin() : records.upper_bound(last);
        if (next == records.end()) {
            break;
        }
        last = next->first;
        first = false;
        std::string bytes = next->first + next->second;
        bytes.resize(std::max(bytes.size(), size));
        const int rc = visit(bytes.data() + bytes.size() - size);
        if (rc < 0) {
            return rc;
        }
    }
    return BCM_E_NONE;
}

}  // namespace rules
