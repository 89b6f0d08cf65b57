// The binding as data: what the emitters write out. A plain value, made by build_model() from the declarations
// and the interface files; an emitter is a function from it to text.
#pragma once

#include "conversion.h"
#include "declarations.h"
#include "interface.h"
#include "spelling.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace generator {

/// One C type at the boundary. Example, a parameter `bcm_l2_addr_t *l2addr`: Pointer, text "bcm_l2_addr_t *",
/// descriptor "_p_bcm_l2_addr_s".
struct Crossing {
    TypePtr type;
    Conversion conversion = Conversion::Int32;
    std::string text;        ///< as messages and docstrings spell it
    std::string descriptor;  ///< mangled name, where a pointer crosses
    const Typemap *typemap = nullptr;
};

/// Which way a parameter goes.
enum class Direction {
    In,
    Out,    ///< joins the result, is no argument
    InOut,  ///< both
};

struct BoundParameter {
    std::string name;
    Crossing crossing;  ///< for Direction::Out what the pointer points to
    Direction direction = Direction::In;
    bool low_bits = false;        ///< whether it takes any int, of which the low bits are passed
    TypePtr second = nullptr;     ///< of bytes and callables: type of the C parameter that goes with it
    bool datum_is_first = false;  ///< of callables: whether C gives the datum before all else
};

struct BoundFunction {
    std::string name;    ///< in Python
    std::string callee;  ///< in C
    std::string header;
    Crossing result;
    std::vector<BoundParameter> parameters;
    bool raises = false;  ///< whether it may set a Python exception
    bool of_sdk = false;  ///< whether a C header declares what is called
    bool throws = false;  ///< whether it may throw; it then raises too
};

/// What kind of storage a member is; scalars go by their conversion.
enum class Storage {
    Scalar,
    Array,
    Record,  ///< read as a pointer into the parent
    Opaque,  ///< of a type that Python does not look into: read as a copy
    Pointer,
    Mapped,
    Text,  ///< an array of char that crosses as text
    Bits,  ///< a bit-field
};

struct BoundMember {
    std::string name;
    std::string declared;  ///< type as docstrings spell it
    Storage storage = Storage::Scalar;
    Crossing crossing;       ///< for an array or record the pointer that the read accessor gives
    int bits = 0;            ///< of a bit-field
    bool is_signed = false;  ///< whether a bit-field has negative values
    bool read_only = false;  ///< there is no write accessor
    bool sized = true;       ///< of an array without bounds there is no sizeof
};

struct BoundRecord {
    std::string name;
    std::string c_name;    ///< as C spells the type: "bcm_l2_addr_t", "struct bcm_pkt_s"; empty if it cannot
    std::string cxx_name;  ///< as C++ does: "bcm_l2_addr_t", "outer::inner"
    Crossing self;         ///< "bcm_l2_addr_s *"
    std::vector<BoundMember> members;
};

struct BoundPointerClass {
    std::string name;
    Crossing self;     ///< "intp *"
    Crossing pointer;  ///< "int *"
    Crossing element;  ///< "int"
};

struct BoundArray {
    std::string name;
    Crossing pointer;
    Crossing index;
    Crossing element;
};

/// The generated header that is made of Declarations::common_header.
constexpr char common_header[] = "headers_of_c.h";

struct Family {
    std::string name;
    std::vector<std::string> headers, cxx_headers;
    std::vector<std::string>
        included;  ///< what C++ includes instead of `headers`: themselves, or common_header
    std::vector<BoundFunction> functions;
    std::vector<BoundRecord> records;
    std::vector<BoundPointerClass> pointer_classes;
    std::vector<BoundArray> arrays;
    std::vector<Function> sdk_functions;  ///< what the C headers leave to the development SDK to define
    /// Enumerators by the tag of their enumeration, in header order, for the development SDK.
    std::map<std::string, std::vector<std::string>> named_enumerations;
};

/// How a global variable is kept.
enum class VariableKind { Scalar, String, Storage, Pointer, Callback, UnboundedArray };

struct BoundVariable {
    std::string name;
    VariableKind kind = VariableKind::Scalar;
    bool read_only = false;
    Crossing crossing;  ///< for a record or array the pointer that reading gives
};

/// A type descriptor. Example: type `bcm_l2_addr_s *`, spellings "bcm_l2_addr_s *" and "bcm_l2_addr_t *".
struct Descriptor {
    TypePtr type;  ///< resolved
    std::set<std::string> spellings;
    std::string cast_from;  ///< mangled name of the pointer-class twin that converts to it, or empty
};

/// The enumerators of the least and of the greatest value.
struct Bounds {
    std::string least, greatest;
};

/// What became of a declaration. Examples: {"function", "zlibVersion", "zlib.h:220", Bound, "zlib.toml:2"},
/// {"function", "gzprintf", "zlib.h:1459", Refused, "a variable number of arguments cannot be passed on", hint}.
struct Outcome {
    enum class Kind {
        Bound,
        LeftOut,  ///< the interface does not want it
        Refused,  ///< the interface wants it, and it cannot be bound
    };
    std::string what;   ///< "function", "record", "member", "constant", "variable"
    std::string name;   ///< of a member with its record: "record.member"
    std::string place;  ///< file and line
    Kind kind = Kind::Bound;
    std::string reason;  ///< the pattern's place, or why it is refused
    std::string hint;    ///< what can be done about it
};

struct Model {
    std::vector<FamilyInterface> interface;
    std::vector<Family> families;
    std::vector<Constant> constants;                                      ///< integers of 32 bits
    std::vector<Constant> values;                                         ///< the others
    std::vector<std::string> chip_registers, chip_memories, chip_fields;  ///< enumerators, in header order
    std::vector<BoundVariable> variables;
    std::map<std::string, Descriptor> descriptors;  ///< by mangled name
    std::map<std::string, Bounds> enumerations;  ///< by tag; those of flags, which are joined, are not here

    /// Those of what is declared with the type; null if it is no such enumeration.
    const Bounds *bounds_of(const TypePtr &type) const;

    CxxNames cxx_names;
    std::vector<Outcome>
        outcomes;  ///< what became of each declaration of the listed headers, in header order
};

/// Throws std::runtime_error with all mistakes at once, a line each.
Model build_model(const Declarations &declarations, Interface interface);

}  // namespace generator
