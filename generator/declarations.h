// What the headers declare, in header order, as plain values.
#pragma once

#include "type.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace generator {

/// What a header says of a declaration (comments.h).
struct Comment {
    std::string above;   ///< before it, perhaps of several declarations; their comments have the same line
    unsigned line = 0;   ///< where that begins
    std::string beside;  ///< behind it
};

struct Parameter {
    std::string name;  ///< "arg<n>" where the header gives none
    TypePtr type;
};

/// Example: {"bcm_port_enable_get", int, {{"unit", int}, {"port", bcm_port_t}, {"enable", int *}}}.
struct Function {
    std::string name;
    std::string header;
    TypePtr result;
    std::vector<Parameter> parameters;
    std::string scope = {};  ///< "QuorelApi::" for what stands in that namespace
    unsigned line = 0;
    bool is_variadic = false;
    bool is_inline = false;   ///< whether the header itself defines it
    std::string symbol = {};  ///< what a library calls it
    Comment comment = {};
};

struct Member {
    std::string name;
    TypePtr type;
    unsigned line = 0;
    long long size = 0;      ///< bytes; of a flexible array less than 0
    int bits = 0;            ///< of a bit-field
    bool is_signed = false;  ///< whether a bit-field has negative values
    Comment comment = {};
};

/// Example: name "bcm_l2_addr_t", tag "bcm_l2_addr_s". Members of anonymous unions and structs are its own.
struct Record {
    std::string name;          ///< the typedef's name, or the tag if there is none
    std::string tag;           ///< the tag, or the typedef's name if there is none
    bool has_typedef = false;  ///< whether C knows it without "struct" or "union"
    bool is_union = false;
    std::string header;
    std::vector<Member> members;
    unsigned line = 0;
    std::string cxx_name = {};  ///< where C++ has another for it: "outer::inner", "decltype(outer::member)"
    Comment comment = {};
};

/// An enumerator, or a macro that is a number or a text.
struct Constant {
    enum class Kind {
        Integer,  ///< of 32 bits, with or without a sign
        Wide,     ///< an integer of more
        Real,
        Text,
    };
    std::string name;
    std::string header;
    unsigned line = 0, column = 0;
    /// Tag of its enumeration, or the typedef's name of one without; empty for a macro, and where it has neither.
    std::string enumeration;
    Kind kind = Kind::Integer;
    Comment comment = {};
    std::string scope = {};  ///< "vendor_record_t::" for what C++ takes for a part of that record
    long long value = 0;     ///< of an enumerator
    bool is_macro = false;
};

/// An enumeration, or a typedef of anything but a record. Example: {"bcm_l2_traverse_cb", of a pointer to a
/// function with the parameters {{"unit", int}, {"info", bcm_l2_addr_t *}, {"user_data", void *}}}.
struct NamedType {
    std::string name;  ///< of an enumeration the typedef's, or its tag if there is none
    std::string header;
    TypePtr type;  ///< the enumeration, or what the typedef stands for
    unsigned line = 0;
    std::vector<Parameter> parameters;  ///< of what points to a function
    Comment comment = {};
};

/// A global variable.
struct Variable {
    std::string name;
    std::string header;
    TypePtr type;
    unsigned line = 0;
    long long size = 0;  ///< bytes; of an array without bounds less than 0
    std::string symbol = {};
    Comment comment = {};
};

struct Declarations {
    std::vector<Function> functions;
    std::vector<Record> records;
    std::vector<Constant> constants;
    std::vector<Variable> variables;
    std::vector<NamedType> named_types;
    std::map<std::string, TypePtr> typedefs;  ///< name to what it stands for
    std::set<std::string> enumerations;       ///< names of those that anything is declared with
    std::set<std::string> wide_enumerations;  ///< those of them that are wider than an int
    /// Records and enumerations that functions have to spell otherwise in C++ than in C: those whose name a function has
    /// too, and those within records, which C++ takes for others when they are mentioned outside. Example: "stat" to
    /// "struct stat".
    std::map<std::string, std::string> cxx_names;
    std::map<std::string, std::string> header_files;  ///< listed include path to `header` of what it declares
    std::optional<std::set<std::string>> exports;     ///< symbols of the libraries, if they are known
    long long long_size = 0;                          ///< bytes of a long on the host that is built for
    std::vector<std::string> files;  ///< paths of all headers that were read, the system's too
    /// A header that generated C++ includes instead of those of C, if it cannot include them as they are and as often as
    /// it likes; else empty.
    std::string common_header;
    std::map<std::string, std::string>
        file_comments;  ///< by path, as in `header` above: what headers say of themselves
};

}  // namespace generator
