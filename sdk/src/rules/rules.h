/// The room of rules: answers of the functions that nobody has written by hand but whose names and types say
/// what they do. They keep what they are given, per unit, and give it back. Generated code calls them; tables
/// are named by what the names of their functions have in common.
///
/// All give BCM_E_UNIT for a unit that is not attached, BCM_E_INIT while the module is detached, BCM_E_PARAM
/// for a null pointer or what is out of its range, BCM_E_PORT for a key that has to be a port and is none, in
/// this order. Then come BCM_E_NOT_FOUND for what is referred to and does not exist, and BCM_E_FULL.
#pragma once

#include "rule_table.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>

namespace rules {

/// One argument of a call. Objects are copied whole; their sizes are those of their types.
struct Argument {
    enum class Role : unsigned char { key, own_port, any_port, given, result, refused, match, records, uses };
    Role role;
    std::uint32_t size;
    const void *from;             ///< null only if the caller gave a null pointer
    void *to = nullptr;           ///< of a result, what `from` is
    const char *table = nullptr;  ///< of a number of records
    std::size_t offset = 0;       ///< of what records are chosen by, in their value
    bool is_function = false;
    bool (*exists)(sim::Switch &, const void *gport) = nullptr;  ///< of a gport that names an object
};

using Arguments = std::initializer_list<Argument>;

/// A key.
inline Argument key_at(const void *object, std::size_t size)
{
    return {Argument::Role::key, static_cast<std::uint32_t>(size), object};
}

template <class T>
Argument key(const T &object)
{
    return key_at(&object, sizeof object);
}

/// A key that is a member of a record.
template <class Record, class Member>
Argument member(const Record *record, Member Record::*which)
{
    return key_at(record != nullptr ? &(record->*which) : nullptr, sizeof(Member));
}

/// The same, given by itself.
template <class Record, class Member>
Argument key_as(Member Record::*, const Member &object)
{
    return key(object);
}

/// A key that is a port of the unit. All names of one port are one key.
inline Argument own_port(const int &port)
{
    return {Argument::Role::own_port, sizeof port, &port};
}

/// A key that is a gport of any kind. What names a port, of a module or not, has to be a port of the unit, as
/// above; what names an object is asked of a room: BCM_E_NOT_FOUND.
template <bool (*exists)(sim::Switch &, const void *gport)>
Argument any_port(const int &port)
{
    Argument key = {Argument::Role::any_port, sizeof port, &port};
    key.exists = exists;
    return key;
}

/// Part of the value, given by the caller.
inline Argument given_at(const void *object, std::size_t size)
{
    return {Argument::Role::given, static_cast<std::uint32_t>(size), object};
}

template <class T>
Argument given(const T &object)
{
    return given_at(&object, sizeof object);
}

template <class T>
Argument function_as(Argument::Role role, T *const &function)
{
    Argument argument = {role, sizeof function, function != nullptr ? &function : nullptr};
    argument.is_function = true;
    return argument;
}

/// A callback as a key, or as part of the value: a null pointer is none.
template <class T>
Argument callback(T *const &function)
{
    return function_as(Argument::Role::key, function);
}

template <class T>
Argument given_callback(T *const &function)
{
    return function_as(Argument::Role::given, function);
}

/// Part of the value, to be written.
inline Argument result_at(void *object, std::size_t size)
{
    return {Argument::Role::result, static_cast<std::uint32_t>(size), object, object};
}

/// A number that has to be within its range, and is no part of a record by this.
template <class T>
Argument within(T number, long long low, long long high)
{
    const bool is = static_cast<long long>(number) >= low && static_cast<long long>(number) <= high;
    return {is ? Argument::Role::given : Argument::Role::refused, 0, ""};
}

/// Only the records that have this as a member, or all for the number that stands for these.
template <class T>
Argument matching(std::size_t offset, const T &number)
{
    return {Argument::Role::match, sizeof number, &number, nullptr, nullptr, offset};
}

template <class T>
Argument matching(std::size_t offset, const T &number, long long all)
{
    return static_cast<long long>(number) == all ? within(0, 0, 0) : matching(offset, number);
}

/// A result that says how many records of another table refer to this one.
inline Argument records_of(const char *table, int *count)
{
    return {Argument::Role::records, sizeof *count, count, count, table};
}

/// A result that says how many records refer to this one.
inline Argument uses(int *count)
{
    return {Argument::Role::uses, sizeof *count, count, count};
}

/// The same of a member of a record; a null pointer is another argument's matter.
template <class Record, class Member>
Argument member_within(const Record *record, Member Record::*which, long long low, long long high)
{
    return within(record != nullptr ? static_cast<long long>(record->*which) : low, low, high);
}

/// For what is known to be wrong, or not there: the checks above, then BCM_E_PARAM, BCM_E_UNAVAIL.
int refuse(const Table &table, int unit, Arguments arguments);
int unavailable(const Table &table, int unit, Arguments arguments);

/// A module: init empties its tables and ends what detach begins, that its functions give BCM_E_INIT, detach
/// among them.
int initialise(const char *module, int unit);
int detach(const char *module, int unit);

/// Settings: set enters or replaces; get writes zeros for what was never set.
int set(const Table &table, int unit, Arguments arguments);
int get(const Table &table, int unit, Arguments arguments);

/// Records. add: BCM_E_EXISTS, unless it may replace, and of all that enter for what has to be unique; modify, find and
/// remove: BCM_E_NOT_FOUND; remove: BCM_E_BUSY while other records refer to it. A find that fails writes nothing.
int add(const Table &table, int unit, Arguments arguments, bool may_replace = false);
int modify(const Table &table, int unit, Arguments arguments);
int find(const Table &table, int unit, Arguments arguments);
int remove(const Table &table, int unit, Arguments arguments);

/// Removes all records that have the given keys, which are the first ones, or none. Who refers to them is not
/// asked.
int clear(const Table &table, int unit, Arguments arguments);

/// The id of an object to be made.
struct Id {
    template <class T>
    Id(T *id, bool is_chosen = false, bool may_replace = false)
        : at(id), size(sizeof(T)), chosen(is_chosen), replace(may_replace)
    {
        static_assert(sizeof(T) == sizeof(std::int32_t) || sizeof(T) == sizeof(std::uint16_t),
                      "ids are of 16 or 32 bits");
    }

    void *at;
    std::size_t size;
    bool chosen;   ///< by the caller
    bool replace;  ///< what has it, or BCM_E_NOT_FOUND
};

/// Makes an object under the lowest free id, and writes that, or under the one that the caller chose:
/// BCM_E_PARAM if it is below the table's first, BCM_E_EXISTS. The id follows the keys; it may be a member of
/// a record among the arguments, which are the object's value. Without any, it reads as zeros.
int create(const Table &table, int unit, Arguments arguments, Id id);

/// Writes the lowest id of an object that has just this value, or BCM_E_NOT_FOUND. An id within the given
/// value does not count.
int search(const Table &table, int unit, Arguments arguments, Id id, const void *id_within = nullptr);

/// Writes the id of the object that has just this value, which is made if there is none.
int number(const Table &table, int unit, Arguments arguments, Id id);

/// How many records there can be, and are.
int size(const Table &table, int unit, Arguments arguments, int *size, int *used);

/// One part of many records: an array, and how large its elements are. Of a record that has the others as
/// members, the only one.
struct Column {
    template <class T>
    Column(T *array) : at(const_cast<std::remove_const_t<T> *>(array)), size(sizeof(T))
    {
    }

    void *at;
    std::size_t size;
};
using Columns = std::initializer_list<Column>;

/// Writes the records that have the given first keys, at most `max` of them, part by part of what follows
/// those, and how many there are.
int list(const Table &table, int unit, Arguments arguments, long long max, Columns columns, void *count,
         std::size_t count_size);

template <class Count>
int list(const Table &table, int unit, Arguments arguments, long long max, Columns columns, Count *count)
{
    return list(table, unit, arguments, max, columns, count, sizeof *count);
}

/// Replaces the records that have the given first keys by these: BCM_E_EXISTS if two of them have one key.
/// Where what follows is a value alone, its place in the array is the last key.
int replace_all(const Table &table, int unit, Arguments arguments, long long count, Columns columns,
                bool by_place);

/// Reads `count` records, whose keys are the given ones and each an element of the first column, into the second: zeros
/// for what was never entered.
int get_each(const Table &table, int unit, Arguments arguments, long long count, Columns columns);

/// A part of a record that a callback takes by address.
template <class T>
struct At {
    T object;
};

template <class T>
T &as_argument(T &part)
{
    return part;
}

template <class T>
auto as_argument(At<T> &part)
{
    if constexpr (std::is_array_v<T>) {
        return &part.object[0];
    } else {
        return &part.object;
    }
}

/// visit(bytes) for each record with the given first keys, with the last `size` bytes of its key and value,
/// or of its key; see traverse.
int visit_all(const Table &table, int unit, Arguments arguments, bool no_callback, std::size_t size,
              bool keys_alone, const std::function<int(const char *bytes)> &visit);

/// callback(unit, parts of key and value, or of the key, user_data) for each record that has the given first
/// keys, in ascending order if the key is one number. Each gets copies, and may add and remove records. Ends
/// with a negative result and returns it.
template <class... Parts, class Callback>
int traverse(const Table &table, int unit, Arguments arguments, Callback *callback, void *user_data,
             bool keys_alone = false)
{
    constexpr std::size_t size = (0 + ... + sizeof(Parts));
    return visit_all(table, unit, arguments, callback == nullptr, size, keys_alone, [&](const char *bytes) {
        std::tuple<Parts...> record;
        return std::apply(
            [&](Parts &...parts) {
                ((std::memcpy(&parts, bytes, sizeof parts), bytes += sizeof parts), ...);
                return callback(unit, as_argument(parts)..., user_data);
            },
            record);
    });
}

}  // namespace rules
