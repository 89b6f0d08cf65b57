#include "argument_type.h"
#include "emit.h"
#include "output.h"
#include "quorel/extension/name_hash.h"
#include "shape.h"
#include "spelling.h"
#include "words.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace generator {

namespace {

constexpr char none[] = "none";

bool never_opaque(const std::string &)
{
    return false;
}

bool is_builtin(const TypePtr &type, const char *name)
{
    return type->kind == Type::Kind::Builtin && type->name == name;
}

// Numbers texts by where they start in one long text.
class Texts {
public:
    size_t start(const std::string &text)
    {
        auto [place, added] = starts_.emplace(text, size_);
        if (added) {
            literals_ += "    " + literal_with_nul(text) + "\n";
            size_ += text.size() + 1;
        }
        return place->second;
    }
    const std::string &literals() const { return literals_; }

private:
    std::map<std::string, size_t> starts_;
    std::string literals_;
    size_t size_ = 0;
};

// Writes the tables; everything is numbered in the order in which it is first needed.
class IndexWriter {
public:
    IndexWriter(const Model &model, const Declarations &declarations, const Numbering &numbering)
        : model_(model), declarations_(declarations), numbering_(numbering)
    {
        for (const FamilyInterface &family : model.interface) {
            for (const Entry &entry : family.opaque) {
                opaque_.insert(entry.text);
            }
            for (const auto &[name, typemap] : family.typemaps) {
                mapped_[name] = typemap.name;
            }
        }
        for (const Family &family : model.families) {
            for (const BoundRecord &record : family.records) {
                records_.emplace(record.self.descriptor, &record);
            }
        }
        number_methods();
        add_functions();
        add_records();
        add_names();
    }

    std::string index() const
    {
        return "const CType c_types[] = {\n" + joined(types_with_twins()) + "};\nconst size_t c_type_count = "
               + std::to_string(types_.size()) + ";\n\n" + buckets() + "const CParameter c_parameters[] = {\n"
               + parameters_ + "};\n\nconst CFunction c_functions[] = {\n" + functions_
               + "};\n\nconst uint16_t function_of_method[] = {\n" + joined(function_of_method_)
               + "};\nconst size_t method_count = " + std::to_string(function_of_method_.size())
               + ";\n\nnamespace {\n\n" + direct_functions_
               + "}  // namespace\n\nconst DirectCall direct_calls[] = {\n" + direct_rows_
               + "    nullptr,\n};\n\nconst CRecord c_records[] = {\n" + record_rows_
               + "};\n\nconst CMember c_members[] = {\n" + members_
               + "};\n\nconst CCallback c_callbacks[] = {\n" + joined(callbacks_)
               + "};\nconst size_t c_callback_count = " + std::to_string(callbacks_.size()) + ";\n\n"
               + "const char index_text[] =\n" + texts_.literals() + "    ;\n";
    }

    std::string trampolines() const
    {
        std::string rows;
        for (size_t i = 0; i < callback_types_.size(); ++i) {
            rows += "    slots_of<" + std::to_string(i) + ", " + callback_types_[i] + ">(),\n";
        }
        return "const Slots callback_slots[] = {\n" + rows + "};\n";
    }

private:
    static std::string joined(const std::vector<std::string> &rows)
    {
        std::string text;
        for (const std::string &row : rows) {
            text += "    " + row + ",\n";
        }
        return text;
    }

    void number_methods()
    {
        size_t number = 0;
        for (const Numbering::Group &group : numbering_.groups()) {
            for (const Numbering::Method &method : group.methods) {
                methods_[method.doc.substr(0, method.doc.find('('))] = number++;
            }
        }
        function_of_method_.assign(number, none);
    }

    std::string descriptor_of_pointer_to(const TypePtr &type) const
    {
        TypePtr full = resolve(Type::pointer_to(type),
                               [this](const std::string &name) { return opaque_.count(name) != 0; });
        return mangle(full);
    }

    // Of typedefs down to `type`, the name of the first hand-written conversion; a record that is converted
    // under one name is under all.
    std::string conversion_of(const TypePtr &type) const
    {
        for (TypePtr inner = type; inner->kind == Type::Kind::Typedef; inner = inner->target) {
            auto found = mapped_.find(inner->name);
            if (found != mapped_.end()) {
                return found->second;
            }
        }
        TypePtr full = resolve(type, never_opaque);
        for (const auto &[name, conversion] : mapped_) {
            TypePtr other = resolve(declarations_.typedefs.at(name), never_opaque);
            if (full->kind == Type::Kind::Record && other->kind == Type::Kind::Record
                && full->name == other->name) {
                return conversion;
            }
        }
        return {};
    }

    // The number of a C type as a text, `none` for void, functions and classes. `descriptor`, where it is
    // known, is that of pointers to it.
    std::string number(const TypePtr &declared, std::string descriptor = {})
    {
        TypePtr type = Type::without_const(declared), full = resolve(type, never_opaque);
        bool has_values = full->kind != Type::Kind::Function && full->kind != Type::Kind::Reference
                          && !is_builtin(full, "void") && !is_class(full) && !is_class(type);
        if (!has_values) {
            return none;
        }
        if (descriptor.empty()) {
            descriptor = descriptor_of_pointer_to(type);
        }
        const std::string spelling = spell_declared(type);
        auto known = type_numbers_.find({spelling, descriptor});
        if (known != type_numbers_.end()) {
            return known->second;
        }
        std::string place = std::to_string(types_.size());
        type_numbers_[{spelling, descriptor}] = place;
        by_name_[spelling].push_back(place);
        types_.emplace_back();
        // What it refers to may come back to it.
        types_[std::stoul(place)] = row(type, full, spelling, descriptor);
        return place;
    }

    std::string row(const TypePtr &type, const TypePtr &full, const std::string &spelling,
                    const std::string &descriptor)
    {
        std::string target = none, kind;
        auto record = records_.find(descriptor);
        const std::string conversion = conversion_of(type);
        if (conversion == "mac_address" || conversion == "port_list") {
            kind = ", Kind::" + conversion;
        } else if (record != records_.end() && full->kind == Type::Kind::Record) {
            target = record_number(*record->second);
            kind = ", Kind::record";
        } else if (const BoundRecord *unbound =
                       full->kind == Type::Kind::Record ? unbound_record(type) : nullptr) {
            target = record_number(*unbound);
            kind = ", Kind::record";
        } else if (TypePtr enumeration = names_of_bits(type)) {
            target = number(enumeration);
            kind = ", Kind::bit_set";
        } else if (TypePtr inner = target_of(type)) {
            bool calls = resolve(inner, never_opaque)->kind == Type::Kind::Function;
            target = calls ? callback_number(type) : number(inner);
        }
        return "describe<" + spelling + ">(" + std::to_string(texts_.start(spelling)) + ", "
               + descriptor_number(descriptor) + ", " + own_descriptor(type, full) + ", " + target + kind
               + ")";
    }

    // The enumeration that names the bits of an opaque set: `x_reason_t` of `x_reasons_t`, a record that has
    // nothing but words. Null for other types.
    TypePtr names_of_bits(const TypePtr &type) const
    {
        static const std::string plural = "s_t", singular = "_t";
        bool may_be_set = type->kind == Type::Kind::Typedef && opaque_.count(type->name) != 0
                          && ends_with(type->name, plural);
        if (!may_be_set) {
            return nullptr;
        }
        std::string name = type->name.substr(0, type->name.size() - plural.size()) + singular;
        auto found = declarations_.typedefs.find(name);
        if (found == declarations_.typedefs.end()
            || resolve(found->second, never_opaque)->kind != Type::Kind::Enum) {
            return nullptr;
        }
        const std::string tag = resolve(type, never_opaque)->name;
        for (const Record &declared : declarations_.records) {
            bool is_it = (declared.tag == tag || declared.name == tag) && declared.members.size() == 1;
            TypePtr words = is_it ? resolve(declared.members[0].type, never_opaque) : nullptr;
            if (words && words->kind == Type::Kind::Array && is_builtin(words->target, "unsigned int")) {
                return Type::typedef_of(name, found->second);
            }
        }
        return nullptr;
    }

    // A record that has no class, whose members can be told all the same; null for others.
    const BoundRecord *unbound_record(const TypePtr &type)
    {
        TypePtr inner = type;
        for (; inner->kind == Type::Kind::Typedef; inner = inner->target) {
            if (opaque_.count(inner->name) != 0) {
                return nullptr;
            }
        }
        for (const Record &declared : declarations_.records) {
            bool can_be_told =
                !declared.members.empty()
                && std::none_of(declared.members.begin(), declared.members.end(),
                                [](const Member &member) { return member.bits > 0 || member.size < 0; });
            if (can_be_told && (declared.tag == inner->name || declared.name == inner->name)) {
                BoundRecord &record = unbound_[declared.name];
                if (record.name.empty()) {
                    record.name = declared.name;
                    record.self.descriptor = descriptor_of_pointer_to(type);
                    for (const Member &member : declared.members) {
                        record.members.emplace_back();
                        record.members.back().name = member.name;
                    }
                }
                return &record;
            }
        }
        return nullptr;
    }

    std::string descriptor_number(const std::string &name) const
    {
        return model_.descriptors.count(name) != 0 ? std::to_string(numbering_.type(name)) : "no_type";
    }

    // The descriptor of the type itself, if it is a pointer. An opaque pointer to a function is known as what
    // it is.
    std::string own_descriptor(const TypePtr &type, const TypePtr &full) const
    {
        TypePtr resolved_type =
            resolve(type, [this](const std::string &name) { return opaque_.count(name) != 0; });
        if (full->kind != Type::Kind::Pointer) {
            return "no_type";
        }
        return descriptor_number(mangle(resolved_type->kind == Type::Kind::Pointer ? resolved_type : full));
    }

    std::string record_number(const BoundRecord &record)
    {
        auto [place, added] = record_numbers_.emplace(record.name, record_numbers_.size());
        if (added) {
            record_order_.push_back(&record);
        }
        return std::to_string(place->second);
    }

    // Equal signatures are one callback, whatever their typedefs.
    std::string callback_number(const TypePtr &type)
    {
        TypePtr full = resolve(type, never_opaque);
        auto [place, added] = callback_numbers_.emplace(mangle(full), callback_numbers_.size());
        if (added) {
            callback_types_.push_back(spell_declared(type));
            callbacks_.emplace_back();
            std::vector<std::string> rows;
            TypePtr signature = full->target;
            // With the typedefs that the declaration has.
            for (TypePtr step = type; step; step = step->target) {
                if (step->kind == Type::Kind::Function) {
                    signature = step;
                    break;
                }
            }
            for (const TypePtr &parameter : signature->parameters) {
                bool by_address = is_array(parameter);
                rows.push_back("{" + number(parameter) + ", 0, Way::" + (by_address ? "mac_address" : "value")
                               + ", no_count, no_capacity}");
            }
            callbacks_[place->second] = "{" + parameters(rows) + ", " + std::to_string(rows.size()) + ", "
                                        + number(signature->target) + "}";
        }
        return std::to_string(place->second);
    }

    // The number of the first of a sequence of parameters; equal sequences share their place.
    std::string parameters(const std::vector<std::string> &rows)
    {
        auto [place, added] = sequences_.emplace(rows, parameter_count_);
        if (added) {
            parameters_ += joined(rows);
            parameter_count_ += rows.size();
            if (parameter_count_ > 0xfffe) {
                throw std::runtime_error("too many parameters for 16-bit numbers");
            }
        }
        return std::to_string(place->second);
    }

    void add_functions()
    {
        for (const Family &family : model_.families) {
            std::map<std::string, int> overloads;
            for (const BoundFunction &function : family.functions) {
                ++overloads[function.name];
            }
            for (const BoundFunction &function : family.functions) {
                if (overloads[function.name] == 1) {
                    add(function);
                }
            }
        }
    }

    void add(const BoundFunction &function)
    {
        std::vector<std::string> rows;
        const BoundParameter *appended = nullptr;
        std::vector<BoundParameter> arguments;
        for (const BoundParameter &parameter : function.parameters) {
            if (parameter.direction == Direction::Out) {
                appended = &parameter;
            } else {
                arguments.push_back(parameter);
            }
        }
        bool fills_mac = false, by_value = false, adds_output = appended != nullptr;
        for (size_t i = 0; i < arguments.size(); ++i) {
            rows.push_back(parameter_row(function, arguments, i, appended));
            adds_output = adds_output || arguments[i].direction == Direction::InOut;
            fills_mac = fills_mac || rows.back().find("Way::mac_address") != std::string::npos;
            by_value = by_value || rows.back().find("Way::by_value") != std::string::npos;
        }
        const std::string says = answer(function, adds_output);
        std::string direct = fills_mac && says == "status" ? direct_call(function) : none;
        function_of_method_[methods_.at(function.name)] = std::to_string(function_count_++);
        functions_ += "    {" + parameters(rows) + ", " + direct + ", " + std::to_string(rows.size())
                      + ", Answer::" + says + ", Keeping::" + keeping(function.name)
                      + (by_value ? ", true" : ", false") + "},  // " + function.name + "\n";
    }

    static std::string answer(const BoundFunction &function, bool adds_output)
    {
        if (adds_output) {
            return "status_first";
        }
        const Conversion conversion = function.result.conversion;
        if (conversion == Conversion::Nothing) {
            return "nothing";
        }
        // A stand-in for a function of the SDK gives its outputs as Python has them.
        if (conversion == Conversion::Object && function.callee != function.name) {
            return "status_first";
        }
        return function.of_sdk && function.result.text == "int" ? "status" : "value";
    }

    static std::string keeping(const std::string &name)
    {
        return ends_with(name, "_unregister") ? "unregisters"
               : ends_with(name, "_register") ? "registers"
                                              : "no";
    }

    // What a row says of a parameter by its conversion.
    struct Passed {
        std::string way;
        std::string type;             ///< its number
        bool may_be_several = false;  ///< whether it points to memory
    };

    Passed passed(const BoundFunction &function, const BoundParameter &parameter)
    {
        const TypePtr &type = parameter.crossing.type;
        const TypePtr inner = target_of(type);
        const bool constant = inner && inner->is_const;
        switch (parameter.crossing.conversion) {
        case Conversion::String:
        case Conversion::NullableString:
            return {constant ? "constant_text" : "text", number(Type::builtin("char")), true};
        case Conversion::Pointer:
            return {constant ? "constant" : "pointer", number(inner, parameter.crossing.descriptor), true};
        case Conversion::AnyPointer:
            return {"any_pointer", none};
        case Conversion::Value:
            return {function.of_sdk ? "by_value" : "other", number(type, parameter.crossing.descriptor)};
        case Conversion::Callback:
            return {"callback", number(type)};
        case Conversion::Mapped:
            return {inner && !constant && conversion_of(type) == "mac_address" ? "mac_address" : "value",
                    number(type)};
        case Conversion::Bytes:
        case Conversion::Callable:
        case Conversion::Object:
            return {"other", none};
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
        case Conversion::Nothing:
            return {"value", number(type)};
        }
        return {};
    }

    std::string parameter_row(const BoundFunction &function, const std::vector<BoundParameter> &arguments,
                              size_t index, const BoundParameter *appended)
    {
        const BoundParameter &parameter = arguments[index];
        const TypePtr &type = parameter.crossing.type;
        const Passed as = passed(function, parameter);
        const bool has_bound =
            parameter.crossing.conversion == Conversion::Pointer && is_array(type) && as.type != none;
        const std::string bound =
            has_bound ? "std::extent_v<" + spell_declared(Type::without_const(type)) + ">" : "0";
        const std::string way = parameter.direction == Direction::InOut ? "in_and_out" : as.way;
        const std::string count = as.may_be_several ? count_of(arguments, index, appended) : "no_count";
        return "{" + as.type + ", " + bound + ", Way::" + way + ", " + count + ", "
               + capacity_of(arguments, index, way, count) + "}";
    }

    static bool is_number(const TypePtr &type)
    {
        TypePtr full = resolve(type, never_opaque);
        return is_builtin(full, "int") || is_builtin(full, "unsigned int");
    }

    // Whether a parameter is a pointer to a whole number that C may write to.
    static bool takes_number(const BoundParameter &parameter)
    {
        TypePtr inner = target_of(parameter.crossing.type);
        return parameter.crossing.conversion == Conversion::Pointer && !inner->is_const && is_number(inner);
    }

    // Whether the header gives the parameter no name.
    static bool is_unnamed(const std::vector<BoundParameter> &arguments, size_t index)
    {
        return arguments[index].name == "arg" + std::to_string(index + 1);
    }

    // Whether a name has one of the words in it.
    static bool is_named(std::string name, std::initializer_list<const char *> words)
    {
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return std::tolower(c); });
        return std::any_of(words.begin(), words.end(),
                           [&](const char *word) { return name.find(word) != std::string::npos; });
    }

    static bool is_named_as_number(const std::string &name)
    {
        return is_named(name, {"max", "size", "num", "count", "len", "nof"}) || name == "nstat"
               || name == "nval" || name == "nport";
    }

    // Whether a parameter is a number that says how many there are of something.
    static bool says_how_many(const BoundParameter &parameter)
    {
        const Conversion conversion = parameter.crossing.conversion;
        bool is_number = conversion == Conversion::Int32 || conversion == Conversion::UInt32
                         || conversion == Conversion::UInt16;
        return is_number && is_named_as_number(parameter.name);
    }

    // Whether a parameter is a pointer to several by its name, or to bytes; how many is not declared.
    static bool names_several(const BoundParameter &parameter)
    {
        if (parameter.crossing.conversion != Conversion::Pointer || is_array(parameter.crossing.type)
            || is_named_as_number(parameter.name)) {
            return false;
        }
        TypePtr element = resolve(target_of(parameter.crossing.type), never_opaque);
        const std::string &name = parameter.name;
        bool is_plural = ends_with(name, "s") && !ends_with(name, "ss") && !ends_with(name, "us")
                         && !ends_with(name, "is") && !ends_with(name, "flags");
        return is_plural || names_an_array(name) || is_builtin(element, "unsigned char")
               || is_builtin(element, "signed char") || is_builtin(element, "char");
    }

    static bool is_pointer(const std::vector<BoundParameter> &arguments, size_t index)
    {
        return index < arguments.size() && arguments[index].crossing.conversion == Conversion::Pointer;
    }

    // The place of the number that says how many elements C may read or write in what is an array. It stands
    // before the arrays, or behind them if no further ones follow it. That a parameter is an array is said by a
    // later one that counts what was written, or by its name; without names the number is what stands before
    // the last array. That of a text stands behind it.
    static std::string capacity_of(const std::vector<BoundParameter> &arguments, size_t index,
                                   const std::string &way, const std::string &count)
    {
        auto says_capacity = [&](size_t i) { return i < arguments.size() && says_how_many(arguments[i]); };
        if (way == "text") {
            return says_capacity(index + 1) ? std::to_string(index + 1) : "no_capacity";
        }
        const bool is_counted = way == "pointer" && count != "no_count";
        const bool is_array = is_counted || names_several(arguments[index]);
        if ((way != "pointer" && way != "constant") || !is_array) {
            return "no_capacity";
        }
        size_t before = index, after = index;
        while (before > 0 && is_pointer(arguments, before - 1)) {
            --before;
        }
        while (is_pointer(arguments, after)) {
            ++after;
        }
        const bool is_last = index + 1 == arguments.size() || count == std::to_string(index + 1);
        bool is_before_last = before == index && index > 0 && is_last && is_unnamed(arguments, index - 1)
                              && arguments[index - 1].crossing.conversion == Conversion::Int32;
        if (before > 0 && (says_capacity(before - 1) || is_before_last)) {
            return std::to_string(before - 1);
        }
        bool is_between = is_counted && says_capacity(index + 1) && count == std::to_string(index + 2);
        bool is_behind = !is_counted && says_capacity(after) && !is_pointer(arguments, after + 1);
        return is_between ? std::to_string(index + 1) : is_behind ? std::to_string(after) : "no_capacity";
    }

    // The place of the later parameter that gets how many elements C wrote: the first that its name says so
    // of, or the last of all where the header gives no names and a number of elements stands before.
    static std::string count_of(const std::vector<BoundParameter> &arguments, size_t index,
                                const BoundParameter *appended)
    {
        for (size_t i = index + 1; i < arguments.size(); ++i) {
            if (takes_number(arguments[i])
                && is_named(arguments[i].name, {"count", "num", "actual", "size"})) {
                return std::to_string(i);
            }
        }
        if (appended && is_number(appended->crossing.type)) {
            return "appended_count";
        }
        const size_t last = arguments.size() - 1;
        bool unnamed = is_unnamed(arguments, last);
        bool sized = index > 0 && arguments[index - 1].crossing.conversion == Conversion::Int32;
        return unnamed && sized && index < last && takes_number(arguments[last]) ? std::to_string(last)
                                                                                 : "no_count";
    }

    std::string direct_call(const BoundFunction &function)
    {
        std::string arguments, name = "direct_" + function.name;
        for (size_t i = 0; i < function.parameters.size(); ++i) {
            TypePtr type = Type::without_const(function.parameters[i].crossing.type);
            std::string place = "values[" + std::to_string(i) + "]";
            arguments += i == 0 ? "" : ", ";
            arguments += is_array(type)
                             ? "static_cast<" + spell(Type::pointer_to(target_of(type))) + ">(" + place + ")"
                             : "*static_cast<" + spell(Type::pointer_to(type)) + ">(" + place + ")";
        }
        direct_functions_ += "int32_t " + name + "(void *const *values)\n{\n    return " + function.callee
                             + "(" + arguments + ");\n}\n\n";
        direct_rows_ += "    " + name + ",\n";
        return std::to_string(direct_count_++);
    }

    // Every record has its members listed, bound in a function or not.
    void add_records()
    {
        for (const Family &family : model_.families) {
            for (const BoundRecord &record : family.records) {
                record_number(record);
            }
        }
        // Members may bring in further types, and records without a class.
        for (size_t i = 0; i < record_order_.size(); ++i) {
            const BoundRecord &record = *record_order_[i];
            record_rows_ += "    {" + number(record_type(record), record.self.descriptor) + ", "
                            + std::to_string(member_count_) + ", " + std::to_string(record.members.size())
                            + "},  // " + record.name + "\n";
            for (const BoundMember &member : record.members) {
                bool nested = member.storage == Storage::Record || member.storage == Storage::Opaque;
                TypePtr type = member_type(record.name, member.name);
                members_ += "    {" + std::to_string(texts_.start(member.name)) + ", offsetof(" + record.name
                            + ", " + member.name + "), "
                            + number(type, nested ? member.crossing.descriptor : std::string()) + "},\n";
            }
            member_count_ += record.members.size();
        }
    }

    static TypePtr record_type(const BoundRecord &record) { return Type::record(record.name); }

    const TypePtr &member_type(const std::string &record, const std::string &member) const
    {
        for (const Record &declared : declarations_.records) {
            if (declared.name == record || declared.tag == record) {
                for (const Member &candidate : declared.members) {
                    if (candidate.name == member) {
                        return candidate.type;
                    }
                }
            }
        }
        throw std::runtime_error("no header declares the member " + record + "." + member);
    }

    // Names of types that nothing declared above spells, but that a script may ask memory of: numbers under
    // all their typedefs, pointers to what is known.
    void add_names()
    {
        for (const char *name : {"int", "unsigned int", "short", "unsigned short", "char", "signed char",
                                 "unsigned char", "unsigned long long", "long long"}) {
            number(Type::builtin(name));
        }
        // Records by their tags too.
        for (const Record &record : declarations_.records) {
            TypePtr type = Type::record(record.tag);
            if (model_.descriptors.count(descriptor_of_pointer_to(type)) != 0) {
                number(type);
            }
        }
        for (const auto &[name, target] : declarations_.typedefs) {
            TypePtr type = Type::typedef_of(name, target);
            TypePtr full = resolve(type, never_opaque);
            bool calls = full->kind == Type::Kind::Pointer && full->target->kind == Type::Kind::Function;
            if (full->kind == Type::Kind::Builtin || full->kind == Type::Kind::Enum
                || full->kind == Type::Kind::Record
                || (calls && callback_numbers_.count(mangle(full)) != 0)) {
                if (model_.descriptors.count(descriptor_of_pointer_to(type)) != 0
                    || (calls && model_.descriptors.count(mangle(full)) != 0)) {
                    number(type);
                }
            }
        }
    }

    std::vector<std::string> types_with_twins() const
    {
        std::vector<std::string> rows = types_;
        for (const auto &[name, types] : by_name_) {
            for (size_t i = 1; i < types.size(); ++i) {
                std::string &row = rows[std::stoul(types[i - 1])];
                row = "with_twin(" + row + ", " + types[i] + ")";
            }
        }
        return rows;
    }

    std::string buckets() const
    {
        size_t size = 1;
        while (size < 2 * by_name_.size()) {
            size *= 2;
        }
        std::vector<std::string> places(size, none);
        for (const auto &[name, types] : by_name_) {
            size_t place = quorel::name_hash(name) & (size - 1);
            while (places[place] != none) {
                place = (place + 1) & (size - 1);
            }
            places[place] = types.front();
        }
        return "const uint16_t type_buckets[] = {\n" + joined(places)
               + "};\nconst size_t type_bucket_count = " + std::to_string(size) + ";\n\n";
    }

    const Model &model_;
    const Declarations &declarations_;
    const Numbering &numbering_;
    std::set<std::string> opaque_;
    std::map<std::string, std::string> mapped_;           ///< typedef to conversion
    std::map<std::string, const BoundRecord *> records_;  ///< by descriptor
    std::map<std::string, BoundRecord> unbound_;          ///< by name
    std::map<std::string, size_t> methods_;               ///< by name
    std::map<std::pair<std::string, std::string>, std::string> type_numbers_;
    std::map<std::string, std::vector<std::string>> by_name_;
    std::map<std::string, size_t> callback_numbers_, record_numbers_;
    std::map<std::vector<std::string>, size_t> sequences_;
    std::vector<const BoundRecord *> record_order_;
    std::vector<std::string> types_, callbacks_, callback_types_, function_of_method_;
    std::string parameters_, functions_, record_rows_, members_, direct_functions_, direct_rows_;
    size_t parameter_count_ = 0, function_count_ = 0, member_count_ = 0, direct_count_ = 0;
    mutable Texts texts_;
};

}  // namespace

Index emit_index(const Model &model, const Declarations &declarations, const Numbering &numbering)
{
    std::vector<std::string> headers, cxx_headers;
    for (const Family &family : model.families) {
        headers.insert(headers.end(), family.included.begin(), family.included.end());
        cxx_headers.insert(cxx_headers.end(), family.cxx_headers.begin(), family.cxx_headers.end());
    }
    const std::string origin = "the interface files and the headers that they name";
    IndexWriter writer(model, declarations, numbering);
    return {
        banner("What the build knows of the SDK.", origin) + includes(headers, cxx_headers)
            + "\n#include \"module/tables.h\"\n#include \"quorel/extension/index.h\"\n\nnamespace quorel "
              "{\n\n"
            + writer.index() + "\n}  // namespace quorel\n",
        banner("The functions through which C calls Python.", origin) + includes(headers, cxx_headers)
            + "\n#include \"quorel/extension/trampoline.h\"\n\nnamespace quorel {\n\n" + writer.trampolines()
            + "\n}  // namespace quorel\n"};
}

}  // namespace generator
