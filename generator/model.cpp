#include "model.h"

#include "shape.h"
#include "spelling.h"

#include <algorithm>
#include <fnmatch.h>
#include <optional>
#include <stdexcept>

namespace generator {

namespace {

bool ends_with(const std::string &text, const std::string &end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool is_builtin(const TypePtr &type, const char *name)
{
    return type->kind == Type::Kind::Builtin && type->name == name;
}

const std::map<std::string, Conversion> &scalar_conversions()
{
    static const std::map<std::string, Conversion> conversions = {
        {"int", Conversion::Int32},
        {"long", Conversion::Int32},
        {"unsigned int", Conversion::UInt32},
        {"unsigned long", Conversion::UInt32},
        {"signed char", Conversion::Int8},
        {"unsigned char", Conversion::UInt8},
        {"unsigned short", Conversion::UInt16},
        {"unsigned long long", Conversion::UInt64},
        {"bool", Conversion::Bool},
    };
    return conversions;
}

// One function or record name list of a family, with exclusions.
class Patterns {
public:
    explicit Patterns(const std::vector<std::string> &patterns) : patterns_(patterns), used_(patterns.size())
    {
    }

    bool match(const std::string &name)
    {
        bool wanted = false;
        for (size_t i = 0; i < patterns_.size(); ++i) {
            bool excludes = patterns_[i][0] == '!';
            if (fnmatch(patterns_[i].c_str() + excludes, name.c_str(), 0) == 0) {
                wanted = !excludes;
                used_[i] = true;
            }
        }
        return wanted;
    }

    std::vector<std::string> unused() const
    {
        std::vector<std::string> names;
        for (size_t i = 0; i < patterns_.size(); ++i) {
            if (!used_[i]) {
                names.push_back(patterns_[i]);
            }
        }
        return names;
    }

private:
    const std::vector<std::string> &patterns_;
    std::vector<bool> used_;
};

class Builder {
public:
    Builder(const Declarations &declarations, std::vector<FamilyInterface> interface)
        : declarations_(declarations)
    {
        model_.interface = std::move(interface);
        for (const FamilyInterface &family : model_.interface) {
            opaque_.insert(family.opaque.begin(), family.opaque.end());
            for (const auto &[name, typemap] : family.typemaps) {
                typemaps_[name] = &typemap;
            }
            for (const auto &[name, text] : family.text) {
                text_[name] = text;
            }
        }
        for (const FamilyInterface &family : model_.interface) {
            check_typedefs(family);
        }
    }

    Model build()
    {
        add_spelling(Type::pointer_to(Type::builtin("char")), "char *");
        for (const FamilyInterface &family : model_.interface) {
            model_.families.push_back(build_family(family));
        }
        add_twins();
        if (!errors_.empty()) {
            throw std::runtime_error(errors_);
        }
        return std::move(model_);
    }

private:
    void error(const std::string &where, const std::string &what) { errors_ += where + ": " + what + "\n"; }

    // As compilers say it: "include/bcm/l2.h:120".
    static std::string place(const std::string &header, unsigned line)
    {
        return header + ":" + std::to_string(line);
    }

    void check_typedefs(const FamilyInterface &family)
    {
        auto check = [&](const std::string &name) {
            if (!declarations_.typedefs.count(name)) {
                error(family.file, "no header declares the type '" + name + "'");
            }
        };
        for (const std::vector<std::string> *names : {&family.opaque, &family.opaque_here}) {
            for (const std::string &name : *names) {
                if (!declarations_.enumerations.count(name)) {
                    check(name);
                }
            }
        }
        for (const auto &entry : family.typemaps) {
            check(entry.first);
        }
        for (const auto &entry : family.text) {
            check(entry.first);
        }
    }

    TypePtr resolved(const TypePtr &type) const
    {
        return resolve(type, [this](const std::string &name) {
            return opaque_.count(name) != 0 || opaque_here_.count(name) != 0;
        });
    }

    std::string text_of(const TypePtr &type) const
    {
        auto found = type->kind == Type::Kind::Typedef ? text_.find(type->name) : text_.end();
        return found == text_.end() ? spell(type) : found->second;
    }

    std::string add_spelling(const TypePtr &resolved_type, const std::string &spelling)
    {
        std::string name = mangle(resolved_type);
        Descriptor &descriptor = model_.descriptors[name];
        descriptor.type = resolved_type;
        descriptor.spellings.insert(spelling);
        return name;
    }

    // `char const **` is spelt as `char **` is, since both are one descriptor.
    static TypePtr without_any_const(const TypePtr &type)
    {
        TypePtr plain = Type::without_const(type);
        return plain->kind == Type::Kind::Pointer ? Type::pointer_to(without_any_const(plain->target))
                                                  : plain;
    }

    // The descriptor of a pointer type, with this declaration's spelling of it.
    std::string add_descriptor(const TypePtr &declared)
    {
        TypePtr full = resolved(declared);
        bool callback = declared->kind == Type::Kind::Typedef;
        bool to_array = full->kind == Type::Kind::Pointer && full->target->kind == Type::Kind::Array;
        TypePtr plain = declared->kind == Type::Kind::Pointer ? without_any_const(declared) : declared;
        bool to_opaque = full->kind == Type::Kind::Pointer && full->target->kind == Type::Kind::Typedef;
        // A callback is known by its signature too, a pointer to an array by its elements, and a pointer to an
        // opaque type by the opaque name beside its aliases.
        if (callback || to_array || to_opaque) {
            add_spelling(full, spell(full));
        }
        return add_spelling(full, spell(plain));
    }

    Crossing pointer_crossing(const TypePtr &type, Conversion conversion, const TypePtr &pointer)
    {
        return {type, conversion, text_of(type), add_descriptor(pointer), nullptr};
    }

    std::optional<Crossing> crossing_of(const TypePtr &type)
    {
        auto mapped = type->kind == Type::Kind::Typedef ? typemaps_.find(type->name) : typemaps_.end();
        if (mapped != typemaps_.end()) {
            return Crossing{type, Conversion::Mapped, text_of(type), {}, mapped->second};
        }
        TypePtr full = Type::without_const(resolved(type));
        switch (full->kind) {
        case Type::Kind::Builtin: {
            if (full->name == "void") {
                return Crossing{type, Conversion::Nothing, "void", {}, nullptr};
            }
            auto scalar = scalar_conversions().find(full->name);
            if (scalar == scalar_conversions().end()) {
                return std::nullopt;
            }
            return Crossing{type, scalar->second, text_of(type), {}, nullptr};
        }
        case Type::Kind::Enum:
            if (opaque_.count(full->name)) {
                return pointer_crossing(type, Conversion::Value, Type::pointer_to(Type::without_const(type)));
            }
            // It crosses as a number; pointers to it, which other modules may hand over, are known all the same.
            add_descriptor(Type::pointer_to(Type::without_const(type)));
            return Crossing{type, Conversion::Int32, text_of(type), {}, nullptr};
        case Type::Kind::Record:
        case Type::Kind::Typedef:
            return pointer_crossing(type, Conversion::Value, Type::pointer_to(Type::without_const(type)));
        case Type::Kind::Reference:
            return pointer_crossing(type, Conversion::Value, Type::pointer_to(type->target));
        case Type::Kind::Array:
            return pointer_crossing(
                type, Conversion::Pointer,
                Type::pointer_to(Type::without_const(resolve_array_typedef(type)->target)));
        case Type::Kind::Pointer:
            if (is_builtin(full->target, "char")) {
                return Crossing{type, Conversion::String, text_of(type), "_p_char", nullptr};
            }
            if (is_builtin(full->target, "void")) {
                return Crossing{type, Conversion::AnyPointer, text_of(type), {}, nullptr};
            }
            if (full->target->kind == Type::Kind::Function) {
                return pointer_crossing(type, Conversion::Callback, Type::without_const(type));
            }
            if (spell(type) == "PyObject *") {
                return Crossing{type, Conversion::Object, text_of(type), {}, nullptr};
            }
            return pointer_crossing(type, Conversion::Pointer, Type::without_const(type));
        default:
            return std::nullopt;
        }
    }

    Crossing crossing_or_error(const TypePtr &type, const std::string &where)
    {
        std::optional<Crossing> crossing = crossing_of(type);
        if (!crossing) {
            error(where, "no conversion for a value of type '" + spell(type) + "'");
        }
        return crossing.value_or(Crossing{type, Conversion::Nothing, spell(type), {}, nullptr});
    }

    const Function *find_function(const std::string &name) const
    {
        for (const Function &function : declarations_.functions) {
            if (function.name == name) {
                return &function;
            }
        }
        return nullptr;
    }

    BoundFunction bind(const FamilyInterface &family, const Function &declared)
    {
        const Function *source = &declared;
        auto replaced = family.replaced.find(declared.name);
        if (replaced != family.replaced.end()) {
            source = find_function(replaced->second);
            if (!source) {
                error(family.file, "no header declares '" + replaced->second + "'");
                source = &declared;
            }
        }
        BoundFunction function{declared.name, source->scope + source->name, source->header, {}, {}, false,
                               false};
        function.of_sdk = declared_in(source->header, family.headers);
        function.raises = std::count(family.raises.begin(), family.raises.end(), declared.name) != 0;
        const std::string where = place(source->header, source->line) + ": " + source->name;
        const size_t known_errors = errors_.size();
        if (source->is_variadic) {
            error(where, "a variable number of arguments cannot be passed on");
        }
        function.result = crossing_or_error(source->result, where);
        if (function.result.conversion == Conversion::AnyPointer) {
            function.result.descriptor = add_descriptor(source->result);
        }
        for (const Parameter &parameter : source->parameters) {
            function.parameters.push_back(
                {parameter.name, crossing_or_error(parameter.type, where), Direction::In});
        }
        if (BoundParameter *output = departing_parameter(family, family.appended, function)) {
            output->direction = Direction::Out;
            output->crossing = appended_crossing(family, function.name, output->crossing.type);
        }
        if (BoundParameter *both = departing_parameter(family, family.in_and_out, function)) {
            both->direction = Direction::InOut;
            both->name = "INOUT";
            TypePtr full = resolved(both->crossing.type);
            if (full->kind != Type::Kind::Pointer || !is_builtin(full->target, "int")) {
                error(family.file, "'" + function.name + "': only a pointer to int can be in and out");
            }
        }
        if (errors_.size() == known_errors) {
            check_shape(function, where);
        }
        return function;
    }

    // Whether calls of this shape can be written.
    void check_shape(const BoundFunction &function, const std::string &where)
    {
        try {
            shape_of(function);
        } catch (const std::runtime_error &refusal) {
            error(where, refusal.what());
        }
    }

    // The parameter of `function` that a section of the interface file names, or null.
    BoundParameter *departing_parameter(const FamilyInterface &family,
                                        const std::map<std::string, std::string> &section,
                                        BoundFunction &function)
    {
        auto entry = section.find(function.name);
        if (entry == section.end()) {
            return nullptr;
        }
        for (BoundParameter &parameter : function.parameters) {
            if (parameter.name == entry->second) {
                return &parameter;
            }
        }
        error(family.file, "'" + function.name + "' has no parameter '" + entry->second + "'");
        return nullptr;
    }

    // What an output pointer points to is what joins the result.
    Crossing appended_crossing(const FamilyInterface &family, const std::string &function,
                               const TypePtr &type)
    {
        if (type->kind != Type::Kind::Pointer) {
            error(family.file, "the appended output of '" + function + "' is not a pointer");
            return {};
        }
        // The call keeps 4 bytes for it; a long has more on some hosts.
        TypePtr full = resolved(type->target);
        if (is_builtin(full, "long") || is_builtin(full, "unsigned long")) {
            error(family.file, "the appended output of '" + function + "' has no fixed size");
        }
        return crossing_or_error(type->target, family.file);
    }

    static bool has_32_bits(Conversion conversion)
    {
        return conversion == Conversion::Int32 || conversion == Conversion::UInt32;
    }

    void check_size(const Crossing &crossing, long long size, const std::string &where)
    {
        if (has_32_bits(crossing.conversion) && size != 4) {
            error(where, "'" + crossing.text + "' has " + std::to_string(size)
                             + " bytes on this host, and crosses as 4");
        }
    }

    void check_member(const Member &member, const std::string &where)
    {
        if (member.is_bit_field) {
            error(where, "a bit-field has no address");
        }
        if (member.size < 0) {
            error(where, "an array without bounds has no size");
        }
        TypePtr type = member.type;
        while (type->kind == Type::Kind::Pointer || type->kind == Type::Kind::Array) {
            type = type->target;
        }
        if (type->kind == Type::Kind::Record && type->name.empty()) {
            error(where, "its type has no name");
        }
    }

    BoundMember bind_member(const Record &record, const Member &member)
    {
        BoundMember bound{member.name, spell_declared(member.type), Storage::Scalar, {}};
        const std::string where = place(record.header, member.line) + ": " + record.name + "." + member.name;
        check_member(member, where);
        bound.crossing = crossing_or_error(member.type, where);
        check_size(bound.crossing, member.size, where);
        switch (bound.crossing.conversion) {
        case Conversion::Mapped:
            bound.storage = Storage::Mapped;
            break;
        case Conversion::Value:
            bound.storage =
                resolved(member.type)->kind == Type::Kind::Record ? Storage::Record : Storage::Opaque;
            // Messages name what the accessor takes, of a record a pointer to it.
            if (bound.storage == Storage::Record) {
                bound.crossing.text += " *";
            }
            break;
        case Conversion::Pointer:
            bound.storage =
                resolved(member.type)->kind == Type::Kind::Array ? Storage::Array : Storage::Pointer;
            break;
        case Conversion::AnyPointer:
            bound.crossing.descriptor = add_descriptor(member.type);
            bound.storage = Storage::Pointer;
            break;
        case Conversion::Callback:
            bound.storage = Storage::Pointer;
            break;
        default:
            break;
        }
        return bound;
    }

    BoundRecord bind(const Record &declared)
    {
        const std::string keyword = declared.has_typedef ? "" : declared.is_union ? "union " : "struct ";
        BoundRecord record{declared.name, keyword + declared.name, {}, {}};
        TypePtr self = Type::pointer_to(Type::record(declared.tag));
        record.self = pointer_crossing(self, Conversion::Pointer, self);
        for (const Member &member : declared.members) {
            record.members.push_back(bind_member(declared, member));
        }
        return record;
    }

    TypePtr parse_type(const FamilyInterface &family, const std::string &spelling)
    {
        auto known = declarations_.typedefs.find(spelling);
        if (known != declarations_.typedefs.end()) {
            return Type::typedef_of(spelling, known->second);
        }
        if (scalar_conversions().count(spelling)) {
            return Type::builtin(spelling);
        }
        error(family.file, "unknown element type '" + spelling + "'");
        return Type::builtin("unsigned char");
    }

    void check_element(const FamilyInterface &family, const std::string &name, const Crossing &element,
                       bool of_array)
    {
        const Conversion conversion = element.conversion;
        // Arrays are of what the runtime has get_item_<kind>() for.
        const bool fits = conversion == Conversion::Value || conversion == Conversion::UInt8
                          || conversion == Conversion::UInt32
                          || (!of_array && !scalar_name(conversion).empty());
        if (!fits || is_builtin(resolved(element.type), "unsigned long")
            || is_builtin(resolved(element.type), "long")) {
            error(family.file, "'" + name + "': elements of type '" + element.text + "' cannot be bound");
        }
    }

    BoundPointerClass bind(const FamilyInterface &family, const PointerClass &declared)
    {
        TypePtr element = parse_type(family, declared.element);
        // The class is a type of its own; only equivalence (add_twins) makes it convert to its element.
        TypePtr self = Type::pointer_to(Type::record(declared.name));
        if (declared.equivalent) {
            equivalent_[mangle(resolved(element))] = declared.name;
        }
        BoundPointerClass bound{declared.name, pointer_crossing(self, Conversion::Pointer, self),
                                crossing_or_error(Type::pointer_to(element), family.file),
                                crossing_or_error(element, family.file)};
        check_element(family, bound.name, bound.element, false);
        return bound;
    }

    BoundArray bind(const FamilyInterface &family, const ArrayFamily &declared)
    {
        TypePtr element = parse_type(family, declared.element);
        BoundArray array{declared.name, crossing_or_error(Type::pointer_to(element), family.file),
                         crossing_or_error(Type::builtin("int"), family.file),
                         crossing_or_error(element, family.file)};
        check_element(family, array.name, array.element, true);
        return array;
    }

    BoundVariable bind(const Variable &declared)
    {
        const TypePtr &type = declared.type;
        const std::string where = place(declared.header, declared.line) + ": " + declared.name;
        BoundVariable variable{declared.name, VariableKind::Scalar, crossing_or_error(type, where)};
        check_size(variable.crossing, declared.size, where);
        TypePtr full = resolved(type);
        if (type->is_const || full->is_const) {
            variable.kind = VariableKind::Constant;
        } else if (full->kind == Type::Kind::Array) {
            variable.kind = full->extent.empty() ? VariableKind::UnboundedArray : VariableKind::Storage;
        } else if (variable.crossing.conversion == Conversion::Value) {
            variable.kind = VariableKind::Storage;
        } else if (variable.crossing.conversion == Conversion::String) {
            variable.kind = VariableKind::String;
        } else if (variable.crossing.conversion == Conversion::Callback) {
            variable.kind = VariableKind::Pointer;
        }
        return variable;
    }

    static bool declared_in(const std::string &header, const std::vector<std::string> &headers)
    {
        return std::any_of(headers.begin(), headers.end(),
                           [&](const std::string &name) { return ends_with(header, "/" + name); });
    }

    Family build_family(const FamilyInterface &source)
    {
        Family family{source.name, source.headers, source.cxx_headers, {}, {}, {}, {}, {}, {}};
        opaque_here_ = {source.opaque_here.begin(), source.opaque_here.end()};
        std::vector<std::string> headers = source.headers;
        headers.insert(headers.end(), source.cxx_headers.begin(), source.cxx_headers.end());
        Patterns functions(source.functions), records(source.records), constants(source.constants);
        Patterns variables(source.variables);
        for (const PointerClass &declared : source.pointer_classes) {
            claim(source, declared.name);
            family.pointer_classes.push_back(bind(source, declared));
        }
        for (const ArrayFamily &declared : source.arrays) {
            claim(source, declared.name);
            family.arrays.push_back(bind(source, declared));
        }
        for (const Record &record : declarations_.records) {
            if (declared_in(record.header, headers) && records.match(record.name)) {
                claim(source, record.name);
                family.records.push_back(bind(record));
            }
        }
        for (const Function &function : declarations_.functions) {
            if (declared_in(function.header, source.headers) && !function.is_variadic && !function.is_inline
                && sdk_functions_.insert(function.name).second) {
                family.sdk_functions.push_back(function);
            }
            if (declared_in(function.header, headers) && functions.match(function.name)) {
                claim(source, function.name);
                family.functions.push_back(bind(source, function));
            }
        }
        for (const Constant &constant : declarations_.constants) {
            if (declared_in(constant.header, headers) && constants.match(constant.name)) {
                if (!constant.fits_32_bits) {
                    error(place(constant.header, constant.line) + ": " + constant.name, "more than 32 bits");
                }
                model_.constants.push_back(constant);
                // An enumerator is a value of its enumeration, which crosses with it.
                if (!constant.enumeration.empty()) {
                    add_descriptor(Type::pointer_to(Type::enumeration(constant.enumeration)));
                }
            }
        }
        for (const Variable &variable : declarations_.variables) {
            if (declared_in(variable.header, headers) && variables.match(variable.name)) {
                model_.variables.push_back(bind(variable));
            }
        }
        for (const std::string &tag : source.named) {
            std::vector<std::string> &enumerators = family.named_enumerations[tag];
            for (const Constant &constant : declarations_.constants) {
                if (constant.enumeration == tag) {
                    enumerators.push_back(constant.name);
                }
            }
            if (enumerators.empty()) {
                error(source.file, "no header declares the enumeration '" + tag + "'");
            }
        }
        for (const Patterns *patterns : {&functions, &records, &constants, &variables}) {
            for (const std::string &pattern : patterns->unused()) {
                error(source.file, "'" + pattern + "' fits nothing that its headers declare");
            }
        }
        check_departures(source, family, source.appended);
        check_departures(source, family, source.in_and_out);
        check_departures(source, family, source.replaced);
        for (const std::string &name : source.raises) {
            check_departures(source, family, {{name, ""}});
        }
        return family;
    }

    // A name of Python's has one family.
    void claim(const FamilyInterface &family, const std::string &name)
    {
        auto [owner, is_new] = owners_.emplace(name, &family);
        if (!is_new && owner->second != &family) {
            error(family.file, "'" + name + "' is bound by " + owner->second->file + " too");
        }
    }

    void check_departures(const FamilyInterface &source, const Family &family,
                          const std::map<std::string, std::string> &departures)
    {
        for (const auto &entry : departures) {
            bool bound =
                std::any_of(family.functions.begin(), family.functions.end(),
                            [&](const BoundFunction &function) { return function.name == entry.first; });
            if (!bound) {
                error(source.file, "'" + entry.first + "' departs from the pattern, but is not bound");
            }
        }
    }

    // The element type at the end of a pointer, array or function type, replaced by a pointer class.
    TypePtr twin_of(const TypePtr &type) const
    {
        if (type->kind == Type::Kind::Builtin) {
            auto found = equivalent_.find(mangle(type));
            return found == equivalent_.end() ? nullptr : Type::record(found->second);
        }
        // What an opaque type stands for is not known.
        if (type->kind == Type::Kind::Typedef || !type->target) {
            return nullptr;
        }
        // A pointer class holds an element, not a pointer to one; behind a function's result there may be more pointers.
        if (type->kind == Type::Kind::Pointer && type->target->kind == Type::Kind::Pointer
            && type->target->target->kind != Type::Kind::Function) {
            return nullptr;
        }
        TypePtr target = twin_of(type->target);
        if (!target) {
            return nullptr;
        }
        Type copy = *type;
        copy.target = target;
        return std::make_shared<const Type>(std::move(copy));
    }

    void add_twins()
    {
        std::vector<std::pair<std::string, TypePtr>> twins;
        for (const auto &[name, descriptor] : model_.descriptors) {
            if (TypePtr twin = twin_of(descriptor.type)) {
                twins.emplace_back(name, twin);
            }
        }
        for (const auto &[name, twin] : twins) {
            model_.descriptors[name].cast_from = add_spelling(twin, spell(twin));
        }
    }

    const Declarations &declarations_;
    Model model_;
    std::set<std::string> opaque_, opaque_here_;
    std::map<std::string, const Typemap *> typemaps_;
    std::map<std::string, std::string> text_;
    std::map<std::string, std::string> equivalent_;  ///< mangled element type to pointer class
    std::map<std::string, const FamilyInterface *> owners_;
    std::set<std::string> sdk_functions_;  ///< a header may serve several families
    std::string errors_;
};

}  // namespace

Model build_model(const Declarations &declarations, std::vector<FamilyInterface> interface)
{
    return Builder(declarations, std::move(interface)).build();
}

}  // namespace generator
