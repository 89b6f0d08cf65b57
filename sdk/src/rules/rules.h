/// The room of rules: answers of the functions that nobody has written by hand but whose names and types say
/// what they do. They keep what they are given, per unit, and give it back. Generated code calls them; tables
/// are named by what the names of their functions have in common.
///
/// All give BCM_E_UNIT for a unit that is not attached, BCM_E_PARAM for a null pointer, BCM_E_PORT for a key
/// that has to be a port and is none, in this order. Values are not judged.
#pragma once

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
    enum class Role : unsigned char { key, own_port, any_port, given, result };
    Role role;
    std::uint32_t size;
    const void *from;    ///< null only if the caller gave a null pointer
    void *to = nullptr;  ///< of a result, what `from` is
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
/// above; what else is behind a gport is not looked at.
inline Argument any_port(const int &port)
{
    return {Argument::Role::any_port, sizeof port, &port};
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

/// Part of the value, to be written.
inline Argument result_at(void *object, std::size_t size)
{
    return {Argument::Role::result, static_cast<std::uint32_t>(size), object, object};
}

/// For what is known to be wrong, or not there: the checks above, then BCM_E_PARAM, BCM_E_UNAVAIL.
int refuse(int unit, Arguments arguments);
int unavailable(int unit, Arguments arguments);

/// Settings: set enters or replaces; get writes zeros for what was never set.
int set(const char *table, int unit, Arguments arguments);
int get(const char *table, int unit, Arguments arguments);

/// Records. add: BCM_E_EXISTS; modify, find and remove: BCM_E_NOT_FOUND. A find that fails writes nothing.
int add(const char *table, int unit, Arguments arguments);
int modify(const char *table, int unit, Arguments arguments);
int find(const char *table, int unit, Arguments arguments);
int remove(const char *table, int unit, Arguments arguments);

/// Removes all records that have the given keys; these are the first ones, or none.
int clear(const char *table, int unit, Arguments arguments);

/// The id of an object to be made.
struct Id {
    template <class T>
    Id(T *id, bool is_chosen = false, bool may_replace = false)
        : at(id), chosen(is_chosen), replace(may_replace)
    {
        static_assert(sizeof(T) == sizeof(std::int32_t), "ids are of 32 bits");
    }

    void *at;
    bool chosen;   ///< by the caller
    bool replace;  ///< what has it, or BCM_E_NOT_FOUND
};

/// Makes an object under the lowest free id from 1 upwards, and writes that, or under the one that the caller
/// chose: BCM_E_PARAM if it is below 1, BCM_E_EXISTS. The arguments are its value; without any, it reads as
/// zeros.
int create(const char *table, int unit, Arguments arguments, Id id);

/// Writes the lowest id of an object that has just this value, or BCM_E_NOT_FOUND.
int search(const char *table, int unit, Arguments arguments, Id id);

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

/// visit(bytes) for each record, with the last `size` bytes of its key and value; see traverse.
int visit_all(const char *table, int unit, bool no_callback, std::size_t size,
              const std::function<int(const char *bytes)> &visit);

/// callback(unit, parts of key and value..., user_data) for each record, in ascending order if the key is one
/// number. Each gets copies, and may add and remove records. Ends with a negative result and returns it.
template <class... Parts, class Callback>
int traverse(const char *table, int unit, Arguments, Callback *callback, void *user_data)
{
    constexpr std::size_t size = (0 + ... + sizeof(Parts));
    return visit_all(table, unit, callback == nullptr, size, [&](const char *bytes) {
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
