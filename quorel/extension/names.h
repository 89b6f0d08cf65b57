// The names of constants, as the package asks for them: by prefix or by enumeration.
//
// Constants are numbered in the order in which the headers declare them, as `constant_names` and
// `constant_values` have them (module/tables.h); the generator writes the tables here (names.cpp).
#pragma once

#include "module/references.h"

#include <cstddef>
#include <cstdint>

namespace quorel {

extern const uint32_t constant_starts[];    ///< where each name begins in `constant_names`
extern const uint16_t constants_by_name[];  ///< all numbers, sorted by name

/// An enumeration under one of its names, tag or typedef.
struct CEnumeration {
    uint32_t name;   ///< where it begins in `enumeration_names`
    uint32_t first;  ///< place of its first constant in `enumerated_constants`
    uint32_t count;
};

extern const CEnumeration enumerations[];  ///< sorted by name
extern const size_t enumeration_count;
extern const char enumeration_names[];  ///< each with its NUL
extern const uint16_t enumerated_constants[];

/// The name that an enumeration has for a number, the first in the headers; null without one.
const char *enumerator_of(const char *enumeration, int32_t number);
/// The number of one of its names; false without one.
bool find_enumerator(const char *enumeration, const char *name, int32_t *number);

/// constants(group)
NewReference list_constants(PyObject *module, PyObject *group);

}  // namespace quorel
