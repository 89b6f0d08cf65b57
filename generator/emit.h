// The emitters: functions from the model and its numbers to the text of one generated file each, or of a family's
// share of one.
#pragma once

#include "numbering.h"
#include "rules.h"
#include "shape.h"

#include <map>
#include <string>

namespace generator {

/// A family's share of families_<unit>.cpp: rows and stubs of constructors, destructors, registrations and member
/// accessors.
std::string emit_records(const Family &family, const Numbering &numbering);

/// names.cpp: by which names and enumerations the package above the module finds constants.
std::string emit_names(const Model &model, const Declarations &declarations);

/// chip_names.cpp: what the package above the module calls registers, memories and fields.
std::string emit_chip_names(const Model &model);

/// Whether the family has functions that may throw: what is emitted for it has to be built with exceptions.
bool throws(const Family &family);

/// Likewise: rows, typed thunks and stubs of functions.
std::string emit_calls(const Family &family, const Numbering &numbering, const CxxNames &names);

/// shapes.h and shapes.cpp: one call function per sequence of argument kinds.
std::string emit_shape_declarations(const Model &model, const Shapes &shapes);
std::string emit_shape_definitions(const Shapes &shapes);

/// variables.cpp: the rows of `cvar`.
std::string emit_variables(const Model &model, const Numbering &numbering);

/// tables.cpp: the module's name and start, the method groups and argument texts.
std::string emit_tables(const Numbering &numbering, const std::string &module);

/// types.cpp: the type descriptors.
std::string emit_types(const Model &model, const Numbering &numbering);

/// destructors.cpp: how values of C++ classes that functions return are deleted.
std::string emit_destructors(const Model &model, const Numbering &numbering);

/// constants.cpp
std::string emit_constants(const Model &model);
/// Constants that need more than 32 bits, real ones and texts.
std::string emit_values(const Model &model);

/// sim_<family>.h, and the family's share of sdk_<unit>.cpp: the development SDK's public functions, which log and
/// forward their calls.
std::string emit_simulator_header(const Family &family);
std::string emit_sdk_calls(const Family &family, const Answers &answers);

/// The expression for the size of what an array or pointer parameter says.
std::string size_of(const Parameter &parameter);

/// The expression that answers a function by rule.
std::string emit_rule(const Rule &rule);

/// The name and the definition of the constant that says what is known of a table.
std::string table_constant(const std::string &table);
std::string emit_table(const std::string &table, const std::string &module, const TableText &text);

/// rules.tsv: what the development SDK's functions answer unless they are written by hand, a line per function: name,
/// family, operation, table, and why; then "key", "value", "key,value" or "other" with the resolved type for each
/// parameter of a rule after the unit. The operation is "initialise" for what clears a record, "-" if there is none.
std::string emit_rules(const Model &model, const Answers &answers);

/// The companion of that extension module: `source` with the module's name, its manifest and its version filled in.
std::string emit_companion(const Model &model, const std::string &module, const std::string &source,
                           const std::string &version);

/// binding.tsv: the binding as a table, for tests and reports. A line is one of
///   function | overload, family, docstring, "sdk" | "helper", kind of the result, and for each parameter its kind,
///       its type as messages spell it, and its descriptor
///   pointer_class | array, family, name, kind and type of the element
///   member, family, record, name, kind, type, descriptor, type of `self`
///   constant, enumeration, name
///   variable, kind, name, type
///   type, descriptor, descriptor of the twin that converts to it
/// with tabs between, and "-" for what there is none of.
std::string emit_report(const Model &model);

/// report.tsv: what became of each declaration of the listed headers.
std::string emit_outcomes(const Model &model);

/// How a value crosses, as reports call it: the conversion's name, or what else is done with it.
std::string kind_of(const Crossing &crossing);
std::string kind_of(const BoundParameter &parameter);
std::string kind_of(const BoundMember &member);
std::string kind_of(const BoundVariable &variable);

/// reference.tsv: what the headers say of everything that is bound, in their order, for people. Lines with a name:
///   <name>, "function", beside, family, C declaration, docstring, and for each parameter its name, its kind, its
///       type, and the classes that make it, with spaces between
///   <name>, "record", beside, family, type in C; then for each member ".<name>", "member", beside, C declaration, kind
///   <name>, "enumeration", beside, tag; its enumerators follow
///   <name>, "enumerator" | "macro", beside
///   <name>, "type" | "variable", beside, C declaration
///   <name>, "pointer_class" | "array", "", type of the element
/// where "beside" is the comment that stands there. Lines without a name tell of what follows:
///   "", "header", path, what it says of itself
///   "", "group", what stands above the declarations that follow, or nothing
///   "", "part", likewise above members and enumerators
/// Between columns are tabs, in a text a line break is "\n" and a backslash "\\".
std::string emit_reference(const Model &model, const Declarations &declarations);

/// Type stubs of an extension module and its companion: texts by their paths below the folder of stubs. Functions,
/// records and constants are in files of their own, which those of the modules import.
using Stubs = std::map<std::string, std::string>;
Stubs emit_stubs(const Model &model, const Declarations &declarations, const std::string &module);

/// layout.c: a C program that prints each record's size and each member's offset and size, for tests.
std::string emit_layout(const Model &model);

/// index.cpp and callback_slots.cpp: what the package above the module knows of the SDK. After all that number
/// methods.
struct Index {
    std::string tables, callbacks;
};
Index emit_index(const Model &model, const Declarations &declarations, const Numbering &numbering);

/// Whether C++ declares the type in a scope: values of it are copied and deleted by its own rules.
bool is_class(const TypePtr &type);

/// The includes of a generated file, SDK headers as C.
std::string includes(const std::vector<std::string> &headers, const std::vector<std::string> &cxx_headers);

/// The definitions of a method group: its functions and docstrings.
std::string emit_group(const Numbering::Group &group);

}  // namespace generator
