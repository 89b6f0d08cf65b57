// The interface files: what of the headers is bound, and where a binding departs from the plain pattern.
//
// interface/binding.toml names the families in order (families), and may say
//   strict = false        that what a pattern takes in and cannot be bound is left out, and said in report.tsv; else it
//                         is an error
//   narrow_long = true    that long and unsigned long cross as 32 bits on every host; else as wide as they are there
// interface/<family>.toml has, each optional:
//   headers, cxx_headers   headers to read, as include paths (C headers of the SDK; C++ headers of helpers)
//   functions, records, constants, variables
//                          patterns ('*' and '?') over names that these headers declare; "!name" leaves out, and
//                          among the records "!record.member" a member
//   opaque                 typedefs and enumerations that are types of their own, whatever the headers say
//   opaque_here            likewise, but only in what this family declares
//   named                  tags of enumerations whose enumerators the development SDK is to know by name
//   chip_registers, chip_memories, chip_fields
//                          patterns over enumerators, whatever header has them: all but the last letter is what
//                          the package above the module calls what they number
//   [typemaps.<typedef>]   a hand-written conversion of a value type: header, name
//   [pointer_classes]      single-value pointer classes: element type, and whether they are equivalent to it
//   [arrays]               array families: element type
//   [appended]             functions whose named output parameters (with spaces between) join the result instead
//   texts                  patterns over "record.member": arrays of char that cross as text
//   [in_and_out]           functions whose named pointer parameter is read and written: it takes a number too, and
//                          joins the result
//   [low_bits]             functions whose named narrow parameter takes any int, of which the low bits are passed
//   [bytes]                functions whose named parameter, a `const unsigned char *` or `const void *`, takes what a
//                          Python object has in memory, and with it the next one, how many bytes that is; a
//                          pattern of functions takes the parameters of those names where they are such
//   [callables]            functions whose named parameter, a pointer to function, takes a Python function or None,
//                          and with it the next one, its `void *` datum, which C gives back first or last: see
//                          module/callable.h
//   variadic               functions, or patterns of them, of a variable number of arguments, which are called with the fixed
//                          ones alone
//   null_text              functions, or patterns of them, whose `char *` parameters take None for a null pointer
//   [replaced]             functions that a hand-written stand-in is bound for, under the SDK's name
//   throws                 functions, or patterns of them, that may throw; what they throw becomes a Python exception
//   raises                 helpers that may set a Python exception; their result is then not looked at
//   unserved               functions of the C headers that no rule of the development SDK may answer
//   [unavailable]          why functions that no rule answers are unavailable, by pattern; the longest one counts
//   [unmet]                why packets do not meet what functions keep, in the same way
//   [identified_by]        tables (the getter's name before "_get") whose records have key members: these, with
//                          spaces between; none, if the unit has only one such record
//   [created_with]         tables of objects whose "_create" chooses an id: the flag that makes it take one, and
//                          the one that makes it replace what the id has; none, if there are no such flags
//   [tables.<table>]       tables whose functions names and types do not tell enough about: see table_description.h
//   [key_checks]           typedefs that are checked where they are keys: function of sdk/src/rules/rules.h
//   [text]                 spellings that a declaration cannot give, by typedef name
// An entry that fits no declaration is an error, and so is a key that is none of these.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace generator {

/// A string of an interface file, and where it stands, as messages say it: "interface/l2.toml:5".
struct Entry {
    std::string text;
    std::string place;
};
using Entries = std::vector<Entry>;
/// By key.
using EntryTable = std::map<std::string, Entry>;

std::vector<std::string> texts(const Entries &entries);

struct Typemap {
    std::string header;  ///< declares to_<name>(), from_<name>(), get_<name>() and set_<name>()
    std::string name;
    std::string place;
};

struct PointerClass {
    std::string name;
    Entry element;            ///< spelling of the element type
    bool equivalent = false;  ///< whether it is accepted wherever a pointer to the element is
};

/// What is told of one table of the development SDK, by what the keys of its entry say.
struct TableEntry {
    std::string place;
    EntryTable fields;
};

struct FamilyInterface {
    std::string name;
    std::string file;
    Entries headers, cxx_headers;
    Entries functions, records, constants, variables;
    Entries opaque, opaque_here;
    Entries raises, throws;
    Entries named;
    Entries chip_registers, chip_memories, chip_fields;
    std::map<std::string, Typemap> typemaps;
    std::vector<PointerClass> pointer_classes;
    EntryTable arrays;      ///< array family to spelling of the element type
    EntryTable appended;    ///< function to parameter
    EntryTable in_and_out;  ///< function to parameter
    EntryTable low_bits;    ///< function to parameter
    EntryTable bytes;       ///< function to parameter
    EntryTable callables;   ///< function to parameter
    Entries null_text;
    Entries variadic;
    Entries texts;
    EntryTable replaced;  ///< function to stand-in
    EntryTable text;      ///< typedef to spelling
    Entries unserved;
    EntryTable unavailable;    ///< pattern of functions to reason
    EntryTable unmet;          ///< the same
    EntryTable identified_by;  ///< table to members
    EntryTable created_with;   ///< table to flags
    EntryTable key_checks;     ///< typedef to function
    std::map<std::string, TableEntry> tables;
};

/// All of an interface folder.
struct Interface {
    std::vector<FamilyInterface> families;
    bool strict = true;
    bool narrow_long = false;
};

/// Reads binding.toml and the family files beside it. Throws std::runtime_error with a line for each section that
/// is wrong, naming file and line.
Interface read_interface(const std::string &directory);

/// All that interface files may say, sorted: "binding.toml: strict", "functions", "typemaps.header".
std::vector<std::string> interface_keys();

/// For headers that no interface is written for: a family each, not strict, with all that it declares and that the
/// headers do which `below` says to belong to it and which are not another's.
Interface default_interface(const std::vector<std::string> &headers,
                            const std::function<std::vector<std::string>(const std::string &)> &below);

}  // namespace generator
