// A member of any C type, by the conversions of its value: for accessors of record.h and reals.h.
#pragma once

#include "record.h"

#include <cstring>

namespace [[gnu::visibility("hidden")]] quorel {

/// What `convert` makes of the member (new), which need not be aligned; null with an exception, its own or that of
/// `self`.
template <typename Value, NewReference (*convert)(Value)>
__attribute__((noinline)) NewReference get_value_generally(const MemberRow &row, PyObject *args)
{
    HeldPointer self = self_of_getter(row, args);
    if (!self) {
        return nullptr;
    }
    Value value;
    std::memcpy(&value, self.at(row.offset), sizeof value);
    return convert(value);
}

/// Writes what `convert` makes of the value; null with an exception, and the record as it was, if it can't.
template <typename Value, Status (*convert)(PyObject *, Value *)>
__attribute__((noinline)) NewReference set_value_generally(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    Value value;
    Status status = convert(setter.value, &value);
    if (status != Status::ok) {
        return raise_value(row, status);
    }
    if (setter.self) {
        std::memcpy(setter.self.at(row.offset), &value, sizeof value);
    }
    return new_none();
}

}  // namespace quorel
