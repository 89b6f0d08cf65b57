#include "argument_type.h"

#include "spelling.h"

namespace generator {

TypePtr resolved(const TypePtr &type)
{
    return Type::without_const(resolve(type, [](const std::string &) { return false; }));
}

bool same(const TypePtr &a, const TypePtr &b)
{
    return mangle(Type::pointer_to(resolved(a))) == mangle(Type::pointer_to(resolved(b)));
}

TypePtr pointee(const TypePtr &type)
{
    const TypePtr pointer = resolved(type);
    return pointer->kind == Type::Kind::Pointer ? pointer->target : nullptr;
}

TypePtr target_of(const TypePtr &type)
{
    const TypePtr declared = resolve_array_typedef(type);
    switch (declared->kind) {
    case Type::Kind::Typedef:
        return target_of(declared->target);
    case Type::Kind::Pointer:
    case Type::Kind::Array:
        return declared->target;
    default:
        return nullptr;
    }
}

std::string typedef_name(const TypePtr &type)
{
    return type->kind == Type::Kind::Typedef ? type->name : "";
}

bool is_plain(const TypePtr &type)
{
    const Type::Kind kind = resolved(type)->kind;
    return kind == Type::Kind::Builtin || kind == Type::Kind::Enum || kind == Type::Kind::Record;
}

bool is_array(const TypePtr &type)
{
    return resolved(type)->kind == Type::Kind::Array;
}

bool is_sized_array(const TypePtr &type)
{
    const TypePtr array = resolved(type);
    return array->kind == Type::Kind::Array && !array->extent.empty();
}

bool is_record_pointer(const TypePtr &type)
{
    const TypePtr target = pointee(type);
    return target && resolved(target)->kind == Type::Kind::Record;
}

bool is_kept_pointer(const TypePtr &type)
{
    const TypePtr target = pointee(type);
    return target
           && (target->kind == Type::Kind::Function
               || (target->kind == Type::Kind::Builtin && target->name == "void"));
}

bool is_copied(const TypePtr &type)
{
    return is_plain(type) || is_kept_pointer(type);
}

}  // namespace generator
