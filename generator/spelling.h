// How types are written: in messages and docstrings, in C++, and as the key of a descriptor.
//
// Users see these texts, so they are contract: qualifiers stand after what they qualify, one space stands before
// a run of '*', '&' or '[', typedef names are kept, typedefs of arrays are resolved.
#pragma once

#include "type.h"

#include <functional>
#include <map>
#include <string>

namespace generator {

/// Whether a typedef is a type of its own, whatever the headers say it stands for.
using OpaqueTest = std::function<bool(const std::string &typedef_name)>;

/// As messages quote it: "bcm_port_t", "char const *", "int const [8]", "unsigned char (*)[16]",
/// "int (*)(int,bcm_l2_addr_t *,void *)"; "unsigned char [6]" for a typedef of that array.
std::string spell(const TypePtr &type);

/// As docstrings show it: the same, but a typedef of an array keeps its name.
std::string spell_declared(const TypePtr &type);

/// A C++ declaration of `declarator` with that type, in the same notation.
std::string declare(const TypePtr &type, const std::string &declarator);

/// The type with every typedef replaced by what it stands for, except opaque ones. References stay.
TypePtr resolve(const TypePtr &type, const OpaqueTest &opaque);

/// The mangled name of a resolved type: "_p_bcm_l2_addr_s", "_p_unsigned_int", "_p_a_16__unsigned_char",
/// "_p_f_int_p_bcm_l2_addr_s_p_void__int". The qualifiers of what a pointer points to do not count.
std::string mangle(const TypePtr &resolved);

/// A typedef of an array, resolved one step at a time down to the array; other types unchanged.
TypePtr resolve_array_typedef(const TypePtr &type);

/// Records and enumerations that C++ calls otherwise than C: see Declarations::cxx_names.
using CxxNames = std::map<std::string, std::string>;

/// The type with its records and enumerations as C++ calls them.
TypePtr in_cxx(const TypePtr &type, const CxxNames &names);

}  // namespace generator
