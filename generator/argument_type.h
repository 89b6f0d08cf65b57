// What kind of argument a declared type makes. Typedefs are looked through.
#pragma once

#include "type.h"

#include <string>

namespace generator {

/// Without typedefs and const.
TypePtr resolved(const TypePtr &type);

bool same(const TypePtr &a, const TypePtr &b);

/// What it points to, without typedefs; null if it is no pointer.
TypePtr pointee(const TypePtr &type);

/// What a pointer is to, or an array of, as it is declared; null if it is neither.
TypePtr target_of(const TypePtr &type);

/// The typedef's name; empty if it is none.
std::string typedef_name(const TypePtr &type);

/// Whether a call copies it whole: a number, an enumerator or a record.
bool is_plain(const TypePtr &type);

bool is_array(const TypePtr &type);

/// Whether it is an array of known size.
bool is_sized_array(const TypePtr &type);

bool is_record_pointer(const TypePtr &type);

/// Whether it is a pointer whose value is kept as it is: to a function, or for the caller's use.
bool is_kept_pointer(const TypePtr &type);

/// Either of is_plain() and is_kept_pointer().
bool is_copied(const TypePtr &type);

}  // namespace generator
