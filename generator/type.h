// C types as values: what a header declared, typedef names kept.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace generator {

/// The name of the builtin that a va_list is, whatever the compiler makes of it.
constexpr char variable_arguments[] = "va_list";

struct Type;
using TypePtr = std::shared_ptr<const Type>;

/// A C type. Example: `bcm_vlan_data_t **listp` is a Pointer to a Pointer to a Typedef "bcm_vlan_data_t" of a
/// Record "bcm_vlan_data_s".
struct Type {
    enum class Kind {
        Builtin,    ///< name: "unsigned int", "void", "bool" ...
        Record,     ///< name: the tag, or the typedef name of an untagged one
        Enum,       ///< name as for Record
        Typedef,    ///< name; target: what it stands for
        Pointer,    ///< target
        Reference,  ///< target
        Array,      ///< target: the element; extent as the header spells it
        Function,   ///< target: the result; parameters
    };
    Kind kind = Kind::Builtin;
    std::string name;
    bool is_const = false;
    TypePtr target;
    std::vector<TypePtr> parameters;
    std::string extent;
    /// Of a long: whether the C library's headers chose it for a type of theirs, such as uint64_t, so that its width is
    /// this host's, whatever the interface says of the SDK's own.
    bool is_exact = false;
    bool is_volatile = false;  ///< which is not spelt

    static TypePtr builtin(std::string name);
    static TypePtr record(std::string name);
    static TypePtr enumeration(std::string name);
    static TypePtr typedef_of(std::string name, TypePtr target);
    static TypePtr pointer_to(TypePtr target);
    static TypePtr reference_to(TypePtr target);
    static TypePtr array_of(TypePtr element, std::string extent);
    static TypePtr function(TypePtr result, std::vector<TypePtr> parameters);
    static TypePtr constant(TypePtr type);
    static TypePtr without_const(TypePtr type);
    static TypePtr exact(const TypePtr &type);
    static TypePtr volatile_of(const TypePtr &type);
};

}  // namespace generator
