#include "type.h"

#include <utility>

namespace generator {

namespace {

TypePtr make(Type type)
{
    return std::make_shared<const Type>(std::move(type));
}

}  // namespace

TypePtr Type::builtin(std::string name)
{
    return make({Kind::Builtin, std::move(name), false, nullptr, {}, {}, false, false});
}

TypePtr Type::record(std::string name)
{
    return make({Kind::Record, std::move(name), false, nullptr, {}, {}, false, false});
}

TypePtr Type::enumeration(std::string name)
{
    return make({Kind::Enum, std::move(name), false, nullptr, {}, {}, false, false});
}

TypePtr Type::typedef_of(std::string name, TypePtr target)
{
    return make({Kind::Typedef, std::move(name), false, std::move(target), {}, {}, false, false});
}

TypePtr Type::pointer_to(TypePtr target)
{
    return make({Kind::Pointer, {}, false, std::move(target), {}, {}, false, false});
}

TypePtr Type::reference_to(TypePtr target)
{
    return make({Kind::Reference, {}, false, std::move(target), {}, {}, false, false});
}

TypePtr Type::array_of(TypePtr element, std::string extent)
{
    return make({Kind::Array, {}, false, std::move(element), {}, std::move(extent), false, false});
}

TypePtr Type::function(TypePtr result, std::vector<TypePtr> parameters)
{
    return make({Kind::Function, {}, false, std::move(result), std::move(parameters), {}, false, false});
}

TypePtr Type::constant(TypePtr type)
{
    if (type->is_const) {
        return type;
    }
    Type copy = *type;
    copy.is_const = true;
    return make(std::move(copy));
}

TypePtr Type::without_const(TypePtr type)
{
    if (!type->is_const) {
        return type;
    }
    Type copy = *type;
    copy.is_const = false;
    return make(std::move(copy));
}

TypePtr Type::exact(const TypePtr &type)
{
    Type copy = *type;
    copy.is_exact = true;
    return make(std::move(copy));
}

TypePtr Type::volatile_of(const TypePtr &type)
{
    Type copy = *type;
    copy.is_volatile = true;
    return make(std::move(copy));
}

}  // namespace generator
