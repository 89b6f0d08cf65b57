#include "model.h"

#include "argument_type.h"
#include "cxx_words.h"
#include "errors.h"
#include "shape.h"
#include "spelling.h"
#include "words.h"

#include <algorithm>
#include <filesystem>
#include <fnmatch.h>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace generator {

namespace {

bool is_builtin(const TypePtr &type, const char *name)
{
    return type->kind == Type::Kind::Builtin && type->name == name;
}

const std::map<std::string, Conversion> &scalar_conversions()
{
    static const std::map<std::string, Conversion> conversions = {
        {"int", Conversion::Int32},
        {"unsigned int", Conversion::UInt32},
        {"short", Conversion::Int16},
        {"signed char", Conversion::Int8},
        {"unsigned char", Conversion::UInt8},
        {"unsigned short", Conversion::UInt16},
        {"long long", Conversion::Int64},
        {"unsigned long long", Conversion::UInt64},
        {"float", Conversion::Float},
        {"double", Conversion::Double},
        {"char", Conversion::Char},
        {"bool", Conversion::Bool},
        {"long double", Conversion::LongDouble},
        {"_Complex double", Conversion::Complex},
        {"_Complex float", Conversion::ComplexFloat},
    };
    return conversions;
}

// A list of patterns over names, with exclusions.
class Patterns {
public:
    explicit Patterns(const Entries &patterns) : patterns_(patterns), used_(patterns.size()) {}

    /// The pattern by which the name is wanted, or null.
    const Entry *match(const std::string &name)
    {
        const Entry *wanted = nullptr;
        for (size_t i = 0; i < patterns_.size(); ++i) {
            const std::string &pattern = patterns_[i].text;
            const bool excludes = pattern[0] == '!';
            if (fnmatch(pattern.c_str() + excludes, name.c_str(), 0) == 0) {
                wanted = excludes ? nullptr : &patterns_[i];
                used_[i] = true;
            }
        }
        return wanted;
    }

    /// Whether a pattern leaves out this part of what is wanted.
    bool leaves_out(const std::string &whole, const std::string &part)
    {
        const std::string name = whole + "." + part;
        bool left_out = false;
        for (size_t i = 0; i < patterns_.size(); ++i) {
            const std::string &pattern = patterns_[i].text;
            if (pattern[0] == '!' && pattern.find('.') != std::string::npos
                && fnmatch(pattern.c_str() + 1, name.c_str(), 0) == 0) {
                left_out = used_[i] = true;
            }
        }
        return left_out;
    }

    Entries unused() const
    {
        Entries unused;
        for (size_t i = 0; i < patterns_.size(); ++i) {
            if (!used_[i]) {
                unused.push_back(patterns_[i]);
            }
        }
        return unused;
    }

private:
    const Entries &patterns_;
    std::vector<bool> used_;
};

class Builder {
public:
    Builder(const Declarations &declarations, Interface interface)
        : declarations_(declarations), strict_(interface.strict), narrow_long_(interface.narrow_long)
    {
        model_.interface = std::move(interface.families);
        model_.cxx_names = declarations.cxx_names;
        find_bounds();
        for (const auto &[name, file] : declarations.header_files) {
            listed_names_.emplace(file, name);
        }
        for (const FamilyInterface &family : model_.interface) {
            for (const Entry &entry : family.opaque) {
                opaque_.insert(entry.text);
            }
            for (const auto &[name, typemap] : family.typemaps) {
                typemaps_[name] = &typemap;
            }
            for (const auto &[name, entry] : family.text) {
                text_[name] = entry.text;
            }
        }
        for (const FamilyInterface &family : model_.interface) {
            check_typedefs(family);
        }
        share_sdk_functions();
    }

    Model build()
    {
        add_spelling(Type::pointer_to(Type::builtin("char")), "char *");
        for (const FamilyInterface &family : model_.interface) {
            model_.families.push_back(build_family(family));
        }
        add_twins();
        errors_.raise_any();
        return std::move(model_);
    }

private:
    /// What is wrong with the interface.
    void error(const std::string &place, const std::string &what) { errors_.add(place, what); }

    /// Why a declaration cannot be bound, which is what the interface wants of it.
    void refuse(const std::string &reason, const std::string &hint = {})
    {
        refusals_.push_back({reason, hint});
    }

    // A place as the interface names the header, wherever that is found.
    std::string as_listed(const std::string &at) const
    {
        const size_t end = at.rfind(':');
        auto listed = listed_names_.find(at.substr(0, end));
        return listed == listed_names_.end() ? at : listed->second + at.substr(end);
    }

    // File and line of an interface's place, which goes on with the keys.
    static std::string line_of(const std::string &place) { return place.substr(0, place.find(": ")); }

    // A report says the same wherever the interface files are.
    static std::string in_its_folder(const std::string &place)
    {
        return std::filesystem::path(line_of(place)).filename().string();
    }

    // Whether nothing was refused since the declaration was begun; else that becomes an error where all is wanted, and else is
    // kept for the report.
    bool settle(const std::string &what, const std::string &name, const std::string &at, const Entry &wanted)
    {
        Outcome outcome{what, name, as_listed(at), Outcome::Kind::Bound, in_its_folder(wanted.place), ""};
        const bool bound = refusals_.empty();
        if (!bound) {
            outcome.kind = Outcome::Kind::Refused;
            outcome.reason = refusals_.front().reason;
            outcome.hint = refusals_.front().hint;
        }
        for (const Refusal &refusal : refusals_) {
            if (strict_) {
                error(at + ": " + name, refusal.reason);
            }
        }
        refusals_.clear();
        model_.outcomes.push_back(std::move(outcome));
        return bound;
    }

    // As compilers say it: "include/bcm/l2.h:120".
    static std::string place(const std::string &header, unsigned line)
    {
        return header + ":" + std::to_string(line);
    }

    void check_typedefs(const FamilyInterface &family)
    {
        auto check = [&](const std::string &name, const std::string &place) {
            if (!declarations_.typedefs.count(name)) {
                error(place, "no header declares the type '" + name + "'");
            }
        };
        for (const Entries *names : {&family.opaque, &family.opaque_here}) {
            for (const auto &[name, place] : *names) {
                if (!declarations_.enumerations.count(name)) {
                    check(name, place);
                }
            }
        }
        for (const auto &[name, typemap] : family.typemaps) {
            check(name, typemap.place);
        }
        for (const auto &[name, entry] : family.text) {
            check(name, entry.place);
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

    // How many bytes a long has where it crosses.
    long long crossing_size(const TypePtr &builtin) const
    {
        return narrow_long_ && !builtin->is_exact ? 4 : declarations_.long_size;
    }

    std::optional<Conversion> scalar_conversion(const TypePtr &builtin) const
    {
        if (builtin->name == "long") {
            return crossing_size(builtin) == 4 ? Conversion::Int32 : Conversion::Int64;
        }
        if (builtin->name == "unsigned long") {
            return crossing_size(builtin) == 4 ? Conversion::UInt32 : Conversion::UInt64;
        }
        auto scalar = scalar_conversions().find(builtin->name);
        return scalar == scalar_conversions().end() ? std::nullopt : std::optional(scalar->second);
    }

    // Whether it has more bytes on this host than where it crosses.
    bool is_narrowed(const TypePtr &type) const
    {
        return (is_builtin(type, "long") || is_builtin(type, "unsigned long"))
               && crossing_size(type) != declarations_.long_size;
    }

    std::optional<Crossing> crossing_of(const TypePtr &type)
    {
        auto mapped = type->kind == Type::Kind::Typedef ? typemaps_.find(type->name) : typemaps_.end();
        if (mapped != typemaps_.end()) {
            return Crossing{type, Conversion::Mapped, text_of(type), {}, mapped->second};
        }
        TypePtr full = Type::without_const(resolved(type));
        if (full->kind == Type::Kind::Pointer && is_builtin(full->target, variable_arguments)) {
            return std::nullopt;
        }
        switch (full->kind) {
        case Type::Kind::Builtin: {
            if (full->name == "void") {
                return Crossing{type, Conversion::Nothing, "void", {}, nullptr};
            }
            const std::optional<Conversion> scalar = scalar_conversion(full);
            return scalar ? std::optional(Crossing{type, *scalar, text_of(type), {}, nullptr}) : std::nullopt;
        }
        case Type::Kind::Enum:
            if (opaque_.count(full->name)) {
                return pointer_crossing(type, Conversion::Value, Type::pointer_to(Type::without_const(type)));
            }
            // It crosses as a number; pointers to it, which other modules may hand over, are known all the same.
            add_descriptor(Type::pointer_to(Type::without_const(type)));
            return Crossing{type,
                            declarations_.wide_enumerations.count(full->name) != 0 ? Conversion::Int64
                                                                                   : Conversion::Int32,
                            text_of(type),
                            {},
                            nullptr};
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
        case Type::Kind::Function:
            break;
        }
        return std::nullopt;
    }

    Crossing crossing_or_refusal(const TypePtr &type)
    {
        std::optional<Crossing> crossing = crossing_of(type);
        if (!crossing) {
            refuse(no_conversion(type), "a typemap, or a helper that takes another type, can convert it");
        }
        return crossing.value_or(Crossing{type, Conversion::Nothing, spell(type), {}, nullptr});
    }

    static std::string no_conversion(const TypePtr &type)
    {
        return "no conversion for a value of type '" + spell(type) + "'";
    }

    // The same for a type that the interface names.
    Crossing crossing_or_error(const TypePtr &type, const std::string &where)
    {
        std::optional<Crossing> crossing = crossing_of(type);
        if (!crossing) {
            error(where, no_conversion(type));
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

    BoundFunction bind(const FamilyInterface &family, const Function &declared, Patterns &variadic)
    {
        const Function *source = &declared;
        auto replaced = family.replaced.find(declared.name);
        if (replaced != family.replaced.end()) {
            const auto &[stand_in, at] = replaced->second;
            source = find_function(stand_in);
            if (!source) {
                error(at, "no header declares '" + stand_in + "'");
                source = &declared;
            }
        }
        BoundFunction function{declared.name, source->scope + source->name, source->header, {}, {}, false,
                               false};
        function.of_sdk = declared_in(source->header, texts(family.headers));
        function.raises = std::any_of(family.raises.begin(), family.raises.end(),
                                      [&](const Entry &entry) { return entry.text == declared.name; });
        const size_t known_errors = errors_.count();
        check_symbol(source->is_inline || !function.of_sdk ? std::string() : source->symbol);
        if (variadic.match(function.name)) {
            if (!source->is_variadic) {
                error(variadic.match(function.name)->place,
                      "'" + function.name + "' has a fixed number of arguments");
            }
        } else if (source->is_variadic) {
            refuse("a variable number of arguments cannot be passed on",
                   "write a helper that calls it with arguments of fixed types, or name it in \"variadic\"");
        }
        function.result = crossing_or_refusal(source->result);
        if (function.result.conversion == Conversion::AnyPointer) {
            function.result.descriptor = add_descriptor(source->result);
        }
        for (const Parameter &parameter : source->parameters) {
            function.parameters.push_back(
                {parameter.name, crossing_or_refusal(parameter.type), Direction::In});
        }
        auto appended = family.appended.find(function.name);
        if (appended != family.appended.end()) {
            append_outputs(function, appended->second);
        }
        auto in_and_out = family.in_and_out.find(function.name);
        if (in_and_out != family.in_and_out.end()) {
            pass_in_and_out(function, in_and_out->second);
        }
        pass_all_bytes(function, family.bytes);
        auto callable = family.callables.find(function.name);
        if (callable != family.callables.end()) {
            pass_callable(function, callable->second);
        }
        auto low_bits = family.low_bits.find(function.name);
        if (low_bits != family.low_bits.end()) {
            pass_low_bits(function, low_bits->second);
        }
        if (errors_.count() == known_errors && refusals_.empty()) {
            check_shape(function);
        }
        return function;
    }

    // A module that asks for what no library has cannot be imported.
    void check_symbol(const std::string &symbol)
    {
        if (!symbol.empty() && declarations_.exports && declarations_.exports->count(symbol) == 0) {
            refuse("no library exports '" + symbol + "'", "\"!NAME\" after the pattern leaves it out");
        }
    }

    static void allow_null_text(BoundFunction &function)
    {
        for (BoundParameter &parameter : function.parameters) {
            if (parameter.crossing.conversion == Conversion::String) {
                parameter.crossing.conversion = Conversion::NullableString;
            }
        }
    }

    // Whether calls of this shape can be written.
    void check_shape(const BoundFunction &function)
    {
        try {
            shape_of(function);
        } catch (const std::runtime_error &refusal) {
            refuse(refusal.what());
        }
    }

    // The parameter of `function` that an entry of the interface file names, or null.
    BoundParameter *departing_parameter(BoundFunction &function, const Entry &entry)
    {
        for (BoundParameter &parameter : function.parameters) {
            if (parameter.name == entry.text) {
                return &parameter;
            }
        }
        error(entry.place, "'" + function.name + "' has no parameter '" + entry.text + "'");
        return nullptr;
    }

    void append_outputs(BoundFunction &function, const Entry &entry)
    {
        std::istringstream names(entry.text);
        bool wraps = function.result.conversion == Conversion::Pointer
                     || function.result.conversion == Conversion::AnyPointer
                     || function.result.conversion == Conversion::Value
                     || function.result.conversion == Conversion::Callback;
        for (std::string name; names >> name;) {
            append_output(function, {name, entry.place});
        }
        for (const BoundParameter &parameter : function.parameters) {
            const Conversion conversion = parameter.crossing.conversion;
            if (parameter.direction == Direction::Out
                && (conversion == Conversion::Pointer || conversion == Conversion::AnyPointer
                    || conversion == Conversion::Value)
                && std::exchange(wraps, true)) {
                error(entry.place, "'" + function.name + "': only one result can be a pointer or record");
            }
        }
    }

    // What an output pointer points to is what joins the result.
    void append_output(BoundFunction &function, const Entry &entry)
    {
        BoundParameter *output = departing_parameter(function, entry);
        if (!output) {
            return;
        }
        output->direction = Direction::Out;
        TypePtr type = output->crossing.type;
        if (type->kind != Type::Kind::Pointer) {
            error(entry.place, "the appended output of '" + function.name + "' is not a pointer");
            return;
        }
        // The call keeps 4 bytes for it; a long has more on some hosts.
        TypePtr full = resolved(type->target);
        if (is_narrowed(full)) {
            error(entry.place, "the appended output of '" + function.name + "' has no fixed size");
        }
        output->crossing = crossing_or_error(type->target, entry.place);
        if (output->crossing.conversion == Conversion::AnyPointer) {
            output->crossing.descriptor = add_descriptor(type->target);
        }
    }

    void pass_in_and_out(BoundFunction &function, const Entry &entry)
    {
        BoundParameter *both = departing_parameter(function, entry);
        if (!both) {
            return;
        }
        both->direction = Direction::InOut;
        both->name = "INOUT";
        TypePtr full = resolved(both->crossing.type);
        if (full->kind != Type::Kind::Pointer || !is_builtin(full->target, "int")) {
            error(entry.place, "'" + function.name + "': only a pointer to int can be in and out");
        }
    }

    void pass_low_bits(BoundFunction &function, const Entry &entry)
    {
        BoundParameter *narrow = departing_parameter(function, entry);
        if (!narrow) {
            return;
        }
        Conversion &conversion = narrow->crossing.conversion;
        if (conversion != Conversion::UInt8 && conversion != Conversion::UInt16) {
            error(entry.place, "'" + entry.text + "' of '" + function.name + "' has no bits to leave out");
        }
        conversion = Conversion::Int32;
        narrow->low_bits = true;
    }

    // The type of the parameter after one that crosses together with it, which is taken out; null for none.
    static TypePtr take_next(BoundFunction &function, const BoundParameter &first)
    {
        const size_t next = static_cast<size_t>(&first - function.parameters.data()) + 1;
        if (next == function.parameters.size()) {
            return nullptr;
        }
        TypePtr type = function.parameters[next].crossing.type;
        function.parameters.erase(function.parameters.begin() + static_cast<std::ptrdiff_t>(next));
        return type;
    }

    static bool is_count(const TypePtr &type)
    {
        for (const char *name : {"int", "unsigned int", "long", "unsigned long"}) {
            if (is_builtin(type, name)) {
                return true;
            }
        }
        return false;
    }

    static bool is_constant_bytes(const TypePtr &type)
    {
        return type->kind == Type::Kind::Pointer && type->target->is_const
               && (is_builtin(type->target, "void") || is_builtin(type->target, "unsigned char"));
    }

    static bool is_pattern(const std::string &key) { return key.find_first_of("*?[") != std::string::npos; }

    // What the function's own entry names has to fit; of what patterns name that does which fits.
    void pass_all_bytes(BoundFunction &function, const EntryTable &entries)
    {
        auto own = entries.find(function.name);
        if (own != entries.end()) {
            for (const std::string &name : words(own->second.text)) {
                pass_bytes(function, {name, own->second.place});
            }
            return;
        }
        for (const auto &[pattern, entry] : entries) {
            if (is_pattern(pattern) && fnmatch(pattern.c_str(), function.name.c_str(), 0) == 0) {
                for (const std::string &name : words(entry.text)) {
                    if (has_bytes(function, name)) {
                        pass_bytes(function, {name, entry.place});
                        used_patterns_.insert(entry.place);
                    }
                }
            }
        }
    }

    bool has_bytes(const BoundFunction &function, const std::string &name) const
    {
        const std::vector<BoundParameter> &parameters = function.parameters;
        for (size_t i = 0; i + 1 < parameters.size(); ++i) {
            if (parameters[i].name == name && is_constant_bytes(resolved(parameters[i].crossing.type))
                && is_count(resolved(parameters[i + 1].crossing.type))) {
                return true;
            }
        }
        return false;
    }

    void pass_bytes(BoundFunction &function, const Entry &entry)
    {
        BoundParameter *bytes = departing_parameter(function, entry);
        if (!bytes) {
            return;
        }
        bytes->second = take_next(function, *bytes);
        if (!is_constant_bytes(resolved(bytes->crossing.type)) || !bytes->second
            || !is_count(resolved(bytes->second))) {
            error(entry.place,
                  "'" + entry.text + "' of '" + function.name + "' is no bytes and their number");
        }
        bytes->crossing.conversion = Conversion::Bytes;
        bytes->crossing.descriptor.clear();
    }

    static bool is_data_pointer(const TypePtr &type)
    {
        return type->kind == Type::Kind::Pointer && is_builtin(type->target, "void");
    }

    void pass_callable(BoundFunction &function, const Entry &entry)
    {
        BoundParameter *callable = departing_parameter(function, entry);
        if (!callable) {
            return;
        }
        callable->second = take_next(function, *callable);
        if (callable->crossing.conversion != Conversion::Callback || !callable->second
            || crossing_or_error(callable->second, entry.place).conversion != Conversion::AnyPointer) {
            error(entry.place,
                  "'" + entry.text + "' of '" + function.name + "' is no function and its datum");
            return;
        }
        const TypePtr called = resolved(callable->crossing.type)->target;
        std::vector<TypePtr> given = called->parameters;
        bool can_be_called = !given.empty();
        if (can_be_called && is_data_pointer(resolved(given.back()))) {
            given.pop_back();
        } else if (can_be_called && is_data_pointer(resolved(given.front()))) {
            given.erase(given.begin());
            callable->datum_is_first = true;
        } else {
            can_be_called = false;
        }
        bool texts_are_counted = false;
        for (size_t i = 0; can_be_called && i < given.size(); ++i) {
            const TypePtr type = Type::without_const(resolved(given[i]));
            const bool counted =
                i + 1 < given.size() && is_count(Type::without_const(resolved(given[i + 1])));
            const bool is_texts = type->kind == Type::Kind::Pointer
                                  && type->target->kind == Type::Kind::Pointer && !type->target->is_const
                                  && is_builtin(type->target->target, "char")
                                  && !type->target->target->is_const;
            texts_are_counted = is_texts ? texts_are_counted : is_builtin(type, "int");
            if (is_texts && texts_are_counted) {
                continue;
            }
            can_be_called = type->kind == Type::Kind::Enum
                            || (type->kind == Type::Kind::Builtin && scalar_conversion(type)
                                && !is_of_reals(*scalar_conversion(type)))
                            || (type->kind == Type::Kind::Pointer && is_builtin(type->target, "char"))
                            || (is_constant_bytes(type) && counted);
        }
        if (!can_be_called) {
            error(entry.place, "'" + entry.text + "' of '" + function.name + "': a Python function can be given "
                               "numbers, text, bytes followed by their number, a number followed by "
                               "arrays of so many texts, and first or last its datum");
        }
        callable->crossing.conversion = Conversion::Callable;
        callable->crossing.descriptor.clear();
        function.raises = true;
    }

    static bool has_32_bits(Conversion conversion)
    {
        return conversion == Conversion::Int32 || conversion == Conversion::UInt32;
    }

    void check_size(const Crossing &crossing, long long size)
    {
        if (has_32_bits(crossing.conversion) && size != 4) {
            refuse("'" + crossing.text + "' has " + std::to_string(size)
                   + " bytes on this host, and crosses as 4");
        }
    }

    static bool is_constant(const TypePtr &type)
    {
        const TypePtr array = resolve_array_typedef(type);
        return type->is_const || (array->kind == Type::Kind::Array && is_constant(array->target));
    }

    Storage storage_of(Conversion conversion, const TypePtr &type) const
    {
        const Type::Kind kind = resolved(type)->kind;
        switch (conversion) {
        case Conversion::Mapped:
            return Storage::Mapped;
        case Conversion::Value:
            return kind == Type::Kind::Record ? Storage::Record : Storage::Opaque;
        case Conversion::Pointer:
            return kind == Type::Kind::Array ? Storage::Array : Storage::Pointer;
        case Conversion::AnyPointer:
        case Conversion::Callback:
            return Storage::Pointer;
        case Conversion::Int32:
        case Conversion::UInt32:
        case Conversion::Int8:
        case Conversion::UInt8:
        case Conversion::UInt16:
        case Conversion::UInt64:
        case Conversion::Int16:
        case Conversion::Int64:
        case Conversion::Float:
        case Conversion::Double:
        case Conversion::LongDouble:
        case Conversion::Complex:
        case Conversion::ComplexFloat:
        case Conversion::Char:
        case Conversion::Bool:
        case Conversion::String:
        case Conversion::NullableString:
        case Conversion::Bytes:
        case Conversion::Callable:
        case Conversion::Object:
        case Conversion::Nothing:
            break;
        }
        return Storage::Scalar;
    }

    bool is_text_array(const Member &member) const
    {
        const TypePtr array = resolved(member.type);
        return array->kind == Type::Kind::Array && is_builtin(array->target, "char") && member.size > 0;
    }

    BoundMember bind_member(const Member &member, bool as_text)
    {
        BoundMember bound{member.name, spell_declared(member.type), Storage::Scalar, {}};
        if (member.name == "this" || member.name == "thisown") {
            refuse("'" + member.name + "' of an object says which memory it stands for",
                   "helpers can read and write it");
        }
        bound.crossing = crossing_or_refusal(member.type);
        bound.sized = member.size >= 0;
        bound.read_only = is_constant(resolved(member.type)) || member.size <= 0;
        if (member.bits > 0) {
            bound.storage = Storage::Bits;
            bound.bits = member.bits;
            bound.is_signed = member.is_signed;
            return bound;
        }
        if (as_text && is_text_array(member)) {
            bound.storage = Storage::Text;
            return bound;
        }
        check_size(bound.crossing, member.size);
        bound.storage = storage_of(bound.crossing.conversion, member.type);
        if (bound.storage == Storage::Record) {
            // Messages name what the accessor takes, of a record a pointer to it.
            bound.crossing.text += " *";
        }
        if (bound.crossing.conversion == Conversion::AnyPointer) {
            bound.crossing.descriptor = add_descriptor(member.type);
        }
        return bound;
    }

    BoundRecord bind(const Record &declared, const Entry &wanted, Patterns &patterns, Patterns &text_members)
    {
        auto hidden = model_.cxx_names.find(declared.name);
        const std::string keyword = declared.has_typedef ? "" : declared.is_union ? "union " : "struct ";
        // One with a typedef goes by that.
        const bool is_part = declared.cxx_name.find("::") != std::string::npos;
        const std::string cxx_name = is_part                            ? declared.cxx_name
                                     : hidden == model_.cxx_names.end() ? name_in_cxx(declared.name)
                                                                        : hidden->second;
        // C has no name either for what C++ can only say the type of.
        const bool is_nameless = cxx_name.find('(') != std::string::npos;
        BoundRecord record{declared.name, is_nameless ? "" : keyword + declared.name, cxx_name, {}, {}};
        TypePtr self = Type::pointer_to(Type::record(declared.tag));
        record.self = pointer_crossing(self, Conversion::Pointer, self);
        settle("record", declared.name, place(declared.header, declared.line), wanted);
        for (const Member &member : declared.members) {
            const std::string name = declared.name + "." + member.name;
            const std::string at = place(declared.header, member.line);
            if (patterns.leaves_out(declared.name, member.name)) {
                model_.outcomes.push_back(
                    {"member", name, as_listed(at), Outcome::Kind::LeftOut, "left out", ""});
                continue;
            }
            BoundMember bound = bind_member(member, text_members.match(name) != nullptr);
            if (settle("member", name, at, wanted) || strict_) {
                record.members.push_back(std::move(bound));
            }
        }
        return record;
    }

    TypePtr parse_type(const Entry &spelling)
    {
        auto known = declarations_.typedefs.find(spelling.text);
        if (known != declarations_.typedefs.end()) {
            return Type::typedef_of(spelling.text, known->second);
        }
        if (scalar_conversion(Type::builtin(spelling.text))) {
            return Type::builtin(spelling.text);
        }
        error(spelling.place, "unknown element type '" + spelling.text + "'");
        return Type::builtin("unsigned char");
    }

    void check_element(const std::string &place, const std::string &name, const Crossing &element,
                       bool of_array)
    {
        const Conversion conversion = element.conversion;
        // Arrays are of what the runtime has get_item_<kind>() for.
        const bool fits = conversion == Conversion::Value || conversion == Conversion::UInt8
                          || conversion == Conversion::UInt32 || (!of_array && is_scalar(conversion));
        if (!fits || is_narrowed(resolved(element.type))) {
            error(place, "'" + name + "': elements of type '" + element.text + "' cannot be bound");
        }
    }

    BoundPointerClass bind(const PointerClass &declared)
    {
        const std::string &place = declared.element.place;
        TypePtr element = parse_type(declared.element);
        // The class is a type of its own; only equivalence (add_twins) makes it convert to its element.
        TypePtr self = Type::pointer_to(Type::record(declared.name));
        if (declared.equivalent) {
            equivalent_[mangle(resolved(element))] = declared.name;
        }
        BoundPointerClass bound{declared.name, pointer_crossing(self, Conversion::Pointer, self),
                                crossing_or_error(Type::pointer_to(element), place),
                                crossing_or_error(element, place)};
        check_element(place, bound.name, bound.element, false);
        return bound;
    }

    BoundArray bind_array(const std::string &name, const Entry &declared)
    {
        const std::string &place = declared.place;
        TypePtr element = parse_type(declared);
        BoundArray array{name, crossing_or_error(Type::pointer_to(element), place),
                         crossing_or_error(Type::builtin("int"), place), crossing_or_error(element, place)};
        check_element(place, name, array.element, true);
        return array;
    }

    BoundVariable bind(const Variable &declared)
    {
        const TypePtr &type = declared.type;
        BoundVariable variable{declared.name, VariableKind::Scalar, false, crossing_or_refusal(type)};
        check_size(variable.crossing, declared.size);
        check_symbol(declared.symbol);
        TypePtr full = resolved(type);
        variable.read_only = is_constant(type) || is_constant(full);
        if (full->kind == Type::Kind::Array) {
            variable.kind = full->extent.empty() ? VariableKind::UnboundedArray : VariableKind::Storage;
        } else if (variable.crossing.conversion == Conversion::Value) {
            variable.kind = VariableKind::Storage;
        } else if (variable.crossing.conversion == Conversion::String) {
            variable.kind = VariableKind::String;
        } else if (variable.crossing.conversion == Conversion::Callback) {
            variable.kind = VariableKind::Callback;
        } else if (variable.crossing.conversion == Conversion::Pointer) {
            variable.kind = VariableKind::Pointer;
        } else if (variable.crossing.conversion == Conversion::AnyPointer) {
            variable.kind = VariableKind::Pointer;
            variable.crossing.descriptor = add_descriptor(type);
        } else if (variable.crossing.conversion == Conversion::Mapped) {
            refuse("a variable has no typemap", "helpers can read and write it");
        }
        return variable;
    }

    // Whether a declaration's file is one of those that the interface lists.
    bool declared_in(const std::string &file, const std::vector<std::string> &headers) const
    {
        return std::any_of(headers.begin(), headers.end(), [&](const std::string &name) {
            auto listed = declarations_.header_files.find(name);
            return listed != declarations_.header_files.end() && listed->second == file;
        });
    }

    // Which family defines a function for the development SDK: of those that name its header the first that
    // binds it, else the first.
    void share_sdk_functions()
    {
        std::set<std::string> bound;
        for (const FamilyInterface &family : model_.interface) {
            const std::vector<std::string> headers = texts(family.headers);
            Patterns patterns(family.functions);
            for (const Function &function : declarations_.functions) {
                if (declared_in(function.header, headers)) {
                    std::string &owner = sdk_families_[function.name];
                    const bool binds = patterns.match(function.name) && bound.insert(function.name).second;
                    owner = owner.empty() || binds ? family.name : owner;
                }
            }
        }
    }

    Family build_family(const FamilyInterface &source)
    {
        Family family;
        family.name = source.name;
        family.headers = family.included = texts(source.headers);
        if (!declarations_.common_header.empty() && !family.headers.empty()) {
            family.included = {common_header};
        }
        family.cxx_headers = texts(source.cxx_headers);
        opaque_here_.clear();
        for (const Entry &entry : source.opaque_here) {
            opaque_here_.insert(entry.text);
        }
        for (const PointerClass &declared : source.pointer_classes) {
            claim(declared.name, declared.element.place);
            family.pointer_classes.push_back(bind(declared));
        }
        for (const auto &[name, element] : source.arrays) {
            claim(name, element.place);
            family.arrays.push_back(bind_array(name, element));
        }
        Patterns text_members(source.texts), null_text(source.null_text), throws(source.throws),
            variadic(source.variadic);
        want(source, source.records, declarations_.records, "record",
             [&](const Record &record, const Entry &wanted, Patterns &patterns) {
                 family.records.push_back(bind(record, wanted, patterns, text_members));
             });
        check_used(text_members, "fits no member of the family's records");
        want(source, source.functions, declarations_.functions, "function",
             [&](const Function &function, const Entry &wanted, Patterns &) {
                 bind(source, function, wanted, family, null_text, throws, variadic);
             });
        check_used(null_text, "fits no function of the family");
        check_used(throws, "fits no function of the family");
        check_used(variadic, "fits no function of the family");
        want(source, source.constants, declarations_.constants, "constant",
             [&](const Constant &constant, const Entry &wanted, Patterns &) { bind(constant, wanted); });
        want(source, source.variables, declarations_.variables, "variable",
             [&](const Variable &declared, const Entry &wanted, Patterns &) {
                 BoundVariable variable = bind(declared);
                 if (settle("variable", declared.name, place(declared.header, declared.line), wanted)) {
                     model_.variables.push_back(std::move(variable));
                 }
             });
        add_sdk_functions(family);
        name_enumerations(source, family);
        name_chip(source.chip_registers, model_.chip_registers);
        name_chip(source.chip_memories, model_.chip_memories);
        name_chip(source.chip_fields, model_.chip_fields);
        check_departures(source, family);
        return family;
    }

    void bind(const FamilyInterface &source, const Function &declared, const Entry &wanted, Family &family,
              Patterns &null_text, Patterns &throws, Patterns &variadic)
    {
        BoundFunction function = bind(source, declared, variadic);
        if (!settle("function", declared.name, place(declared.header, declared.line), wanted)) {
            refused_functions_.insert(declared.name);
            return;
        }
        if (null_text.match(function.name)) {
            allow_null_text(function);
        }
        if (throws.match(function.name)) {
            function.throws = function.raises = true;
        }
        family.functions.push_back(std::move(function));
    }

    // Binds what the family's headers declare and its patterns want.
    template <typename Declared, typename Bind>
    void want(const FamilyInterface &family, const Entries &entries,
              const std::vector<Declared> &declarations, const std::string &what, const Bind &bind)
    {
        std::vector<std::string> headers = texts(family.headers);
        for (const Entry &header : family.cxx_headers) {
            headers.push_back(header.text);
        }
        Patterns patterns(entries);
        std::vector<std::pair<const Declared *, const Entry *>> found;
        for (const Declared &declared : declarations) {
            if (!declared_in(declared.header, headers)) {
                continue;
            }
            const std::string at = place(declared.header, declared.line);
            if (const Entry *pattern = patterns.match(declared.name)) {
                if (claim((what == "variable" ? "variable " : "") + declared.name, pattern->place)) {
                    found.emplace_back(&declared, pattern);
                } else {
                    refuse("something else is bound under the name",
                           "\"!NAME\" after the pattern leaves one out");
                    settle(what, declared.name, at, *pattern);
                }
            } else if (!declared.name.empty()) {
                model_.outcomes.push_back(
                    {what, declared.name, as_listed(at), Outcome::Kind::LeftOut, "no pattern wants it", ""});
            }
        }
        // Of records, some are about members.
        const bool is_of_members = what == "record";
        if (!is_of_members) {
            check_used(patterns, "fits nothing that its headers declare");
        }
        for (const auto &[declared, pattern] : found) {
            bind(*declared, *pattern, patterns);
        }
        if (is_of_members) {
            check_used(patterns, "fits nothing that its headers declare");
        }
    }

    void check_used(const Patterns &patterns, const std::string &otherwise)
    {
        for (const auto &[pattern, place] : patterns.unused()) {
            // Whatever there is may be nothing.
            if (pattern == "*") {
                continue;
            }
            error(place, "'" + pattern + "' " + otherwise);
        }
    }

    void bind(const Constant &constant, const Entry &wanted)
    {
        if (constant.scope == "::") {
            refuse("C++ has no name for it: it stands within a record that has none",
                   "give the record a tag, or declare the enumeration outside of it");
        }
        if (!settle("constant", constant.name, place(constant.header, constant.line), wanted)) {
            return;
        }
        (constant.kind == Constant::Kind::Integer ? model_.constants : model_.values).push_back(constant);
        // An enumerator is a value of its enumeration, which crosses with it.
        if (!constant.enumeration.empty()) {
            add_descriptor(Type::pointer_to(Type::enumeration(constant.enumeration)));
        }
    }

    void add_sdk_functions(Family &family)
    {
        for (const Function &function : declarations_.functions) {
            if (declared_in(function.header, family.headers) && !function.is_variadic && !function.is_inline
                && sdk_families_.at(function.name) == family.name) {
                family.sdk_functions.push_back(function);
            }
        }
    }

    void name_enumerations(const FamilyInterface &source, Family &family)
    {
        for (const auto &[tag, place] : source.named) {
            std::vector<std::string> &enumerators = family.named_enumerations[tag];
            for (const Constant &constant : declarations_.constants) {
                if (constant.enumeration == tag) {
                    enumerators.push_back(constant.name);
                }
            }
            if (enumerators.empty()) {
                error(place, "no header declares the enumeration '" + tag + "'");
            }
        }
    }

    void find_bounds()
    {
        std::map<std::string, std::vector<const Constant *>> enumerators;
        for (const Constant &constant : declarations_.constants) {
            if (!constant.enumeration.empty()) {
                enumerators[constant.enumeration].push_back(&constant);
            }
        }
        for (auto &[tag, constants] : enumerators) {
            if (ends_in_their_number(constants)) {
                constants.pop_back();
            }
            if (!are_flags(constants)) {
                const auto [least, greatest] = std::minmax_element(
                    constants.begin(), constants.end(),
                    [](const Constant *a, const Constant *b) { return a->value < b->value; });
                model_.enumerations[tag] = {(*least)->name, (*greatest)->name};
            }
        }
    }

    // Whether the last one says how many there are, by its name, and is none of them itself.
    static bool ends_in_their_number(const std::vector<const Constant *> &constants)
    {
        const Constant &last = *constants.back();
        const std::string ending = "Count";
        if (constants.size() < 2 || !ends_with(last.name, ending)) {
            return false;
        }
        const std::string stem = last.name.substr(0, last.name.size() - ending.size());
        return std::all_of(constants.begin(), constants.end(), [&](const Constant *constant) {
            return constant->name.compare(0, stem.size(), stem) == 0 && constant->value <= last.value;
        });
    }

    // Whether each is a bit of its own; fewer than three may be numbers as well.
    static bool are_flags(const std::vector<const Constant *> &constants)
    {
        auto is_bit = [](const Constant *constant) {
            return constant->value > 0 && (constant->value & (constant->value - 1)) == 0;
        };
        return constants.size() > 2 && std::all_of(constants.begin(), constants.end(), is_bit);
    }

    void name_chip(const Entries &entries, std::vector<std::string> &names)
    {
        Patterns patterns(entries);
        for (const Constant &constant : declarations_.constants) {
            if (!constant.enumeration.empty() && patterns.match(constant.name)) {
                names.push_back(constant.name);
            }
        }
        check_used(patterns, "fits no enumerator");
    }

    // A name of Python's is bound once; overloads of one name are by one pattern.
    bool claim(const std::string &name, const std::string &place)
    {
        auto [owner, is_new] = owners_.emplace(name, place);
        if (is_new || owner->second == place) {
            return true;
        }
        if (strict_) {
            error(place, "'" + name + "' is bound at " + line_of(owner->second) + " too");
        }
        return strict_;
    }

    void check_departures(const FamilyInterface &source, const Family &family)
    {
        std::set<std::string> bound;
        for (const BoundFunction &function : family.functions) {
            bound.insert(function.name);
        }
        auto check = [&](const std::string &name, const std::string &place) {
            if (bound.count(name) == 0 && refused_functions_.count(name) == 0) {
                error(place, "'" + name + "' departs from the pattern, but is not bound");
            }
        };
        for (const EntryTable *departures : {&source.appended, &source.in_and_out, &source.low_bits,
                                             &source.bytes, &source.callables, &source.replaced}) {
            for (const auto &[name, entry] : *departures) {
                if (departures != &source.bytes || !is_pattern(name)) {
                    check(name, entry.place);
                } else if (used_patterns_.count(entry.place) == 0) {
                    error(entry.place, "'" + name + "' fits no function with such bytes and their number");
                }
            }
        }
        for (const auto &[name, place] : source.raises) {
            check(name, place);
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

    struct Refusal {
        std::string reason, hint;
    };

    const Declarations &declarations_;
    const bool strict_, narrow_long_;
    Model model_;
    std::map<std::string, std::string> listed_names_;  ///< by file: a header's include path
    std::vector<Refusal> refusals_;                    ///< of the declaration that is being bound
    std::set<std::string> refused_functions_;
    std::set<std::string> used_patterns_;  ///< places of those that are keys
    std::set<std::string> opaque_, opaque_here_;
    std::map<std::string, const Typemap *> typemaps_;
    std::map<std::string, std::string> text_;
    std::map<std::string, std::string> equivalent_;    ///< mangled element type to pointer class
    std::map<std::string, std::string> owners_;        ///< bound name to where it is
    std::map<std::string, std::string> sdk_families_;  ///< by function: a header may serve several families
    Errors errors_;
};

}  // namespace

const Bounds *Model::bounds_of(const TypePtr &type) const
{
    const TypePtr full = resolved(type);
    const auto found = full->kind == Type::Kind::Enum ? enumerations.find(full->name) : enumerations.end();
    return found == enumerations.end() ? nullptr : &found->second;
}

Model build_model(const Declarations &declarations, Interface interface)
{
    return Builder(declarations, std::move(interface)).build();
}

}  // namespace generator
