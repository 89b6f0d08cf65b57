#include "spelling.h"

#include "cxx_words.h"

#include <cctype>

namespace generator {

namespace {

std::string join(const std::vector<TypePtr> &types, std::string (*text)(const TypePtr &))
{
    std::string joined;
    for (const TypePtr &type : types) {
        joined += (joined.empty() ? "" : ",") + text(type);
    }
    return joined;
}

std::string parenthesised_if_needed(const TypePtr &target, const std::string &declarator)
{
    bool binds_tighter = target->kind == Type::Kind::Array || target->kind == Type::Kind::Function;
    return binds_tighter ? "(" + declarator + ")" : declarator;
}

// The dotted notation that mangled names are made from: "p.f(int,p.void).int", "p.a(16).unsigned char".
std::string encode(const TypePtr &type)
{
    std::string qualifier = type->is_const ? "q(const)." : "";
    switch (type->kind) {
    case Type::Kind::Pointer:
        return qualifier + "p." + encode(type->target);
    case Type::Kind::Reference:
        return qualifier + "r." + encode(type->target);
    case Type::Kind::Array:
        return qualifier + "a(" + type->extent + ")." + encode(type->target);
    case Type::Kind::Function:
        return "f(" + (type->parameters.empty() ? "void" : join(type->parameters, encode)) + ")."
               + encode(type->target);
    case Type::Kind::Builtin:
    case Type::Kind::Record:
    case Type::Kind::Enum:
    case Type::Kind::Typedef:
        break;
    }
    return qualifier + type->name;
}

// What a pointer or array is of, without its qualifiers at any depth outside function signatures.
TypePtr unqualified(const TypePtr &type)
{
    TypePtr plain = Type::without_const(type);
    if (plain->kind == Type::Kind::Pointer) {
        return Type::pointer_to(unqualified(plain->target));
    }
    if (plain->kind == Type::Kind::Array) {
        return Type::array_of(unqualified(plain->target), plain->extent);
    }
    return plain;
}

}  // namespace

std::string declare(const TypePtr &type, const std::string &declarator)
{
    switch (type->kind) {
    case Type::Kind::Pointer:
    case Type::Kind::Reference: {
        std::string mark = type->kind == Type::Kind::Pointer ? "*" : "&";
        if (type->is_const) {
            mark += "const" + std::string(declarator.empty() ? "" : " ");
        }
        return declare(type->target, parenthesised_if_needed(type->target, mark + declarator));
    }
    case Type::Kind::Array:
        return declare(type->target, declarator + "[" + type->extent + "]");
    case Type::Kind::Function:
        return declare(type->target, declarator + "(" + join(type->parameters, spell) + ")");
    case Type::Kind::Builtin:
    case Type::Kind::Record:
    case Type::Kind::Enum:
    case Type::Kind::Typedef:
        break;
    }
    std::string base = type->name + (type->is_const ? " const" : "");
    return declarator.empty() ? base : base + " " + declarator;
}

std::string spell(const TypePtr &type)
{
    TypePtr array = resolve_array_typedef(type);
    if (array == type) {
        return declare(type, "");
    }
    return declare(resolve(array, [](const std::string &) { return false; }), "");
}

std::string spell_declared(const TypePtr &type)
{
    return declare(type, "");
}

TypePtr resolve_array_typedef(const TypePtr &type)
{
    TypePtr inner = type;
    while (inner->kind == Type::Kind::Typedef) {
        inner = inner->target;
    }
    if (type->kind != Type::Kind::Typedef || inner->kind != Type::Kind::Array) {
        return type;
    }
    return type->is_const ? Type::array_of(Type::constant(inner->target), inner->extent) : inner;
}

TypePtr resolve(const TypePtr &type, const OpaqueTest &opaque)
{
    switch (type->kind) {
    case Type::Kind::Typedef: {
        if (opaque(type->name)) {
            return type;
        }
        TypePtr inner = resolve(type->target, opaque);
        if (type->is_volatile) {
            inner = Type::volatile_of(inner);
        }
        if (!type->is_const) {
            return inner;
        }
        if (inner->kind == Type::Kind::Array) {
            return Type::array_of(Type::constant(inner->target), inner->extent);
        }
        return Type::constant(inner);
    }
    case Type::Kind::Pointer:
    case Type::Kind::Reference:
    case Type::Kind::Array:
    case Type::Kind::Function: {
        Type copy = *type;
        copy.target = resolve(type->target, opaque);
        for (TypePtr &parameter : copy.parameters) {
            parameter = resolve(parameter, opaque);
        }
        return std::make_shared<const Type>(std::move(copy));
    }
    case Type::Kind::Builtin:
    case Type::Kind::Record:
    case Type::Kind::Enum:
        break;
    }
    return type;
}

std::string mangle(const TypePtr &resolved)
{
    std::string mangled = "_";
    for (char c : encode(unqualified(resolved))) {
        mangled += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    }
    return mangled;
}

TypePtr in_cxx(const TypePtr &type, const CxxNames &names)
{
    Type copy = *type;
    // What a typedef stands for is not spelt, except for an array.
    const bool is_typedef = type->kind == Type::Kind::Typedef;
    const bool is_spelt = is_typedef && resolve_array_typedef(type) == type;
    if (is_typedef || type->kind == Type::Kind::Record || type->kind == Type::Kind::Enum) {
        auto found = is_typedef ? names.end() : names.find(type->name);
        copy.name = found == names.end() ? name_in_cxx(type->name) : found->second;
    }
    if (type->target && !is_spelt) {
        copy.target = in_cxx(type->target, names);
    }
    for (TypePtr &parameter : copy.parameters) {
        parameter = in_cxx(parameter, names);
    }
    return std::make_shared<const Type>(std::move(copy));
}

}  // namespace generator
