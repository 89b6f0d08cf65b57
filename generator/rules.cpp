#include "rules.h"

#include "errors.h"
#include "spelling.h"

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>

namespace generator {

namespace {

TypePtr resolved(const TypePtr &type)
{
    return Type::without_const(resolve(type, [](const std::string &) { return false; }));
}

bool same(const TypePtr &a, const TypePtr &b)
{
    return mangle(Type::pointer_to(resolved(a))) == mangle(Type::pointer_to(resolved(b)));
}

bool is_void(const TypePtr &type)
{
    return type->kind == Type::Kind::Builtin && type->name == "void";
}

// What a call copies whole: a number, an enumerator or a record.
bool is_plain(const TypePtr &type)
{
    const Type::Kind kind = resolved(type)->kind;
    return kind == Type::Kind::Builtin || kind == Type::Kind::Enum || kind == Type::Kind::Record;
}

bool is_array(const TypePtr &type)
{
    TypePtr array = resolved(type);
    return array->kind == Type::Kind::Array && !array->extent.empty();
}

TypePtr pointee(const TypePtr &type)
{
    TypePtr pointer = resolved(type);
    return pointer->kind == Type::Kind::Pointer ? pointer->target : nullptr;
}

bool is_record_pointer(const TypePtr &type)
{
    TypePtr target = pointee(type);
    return target && resolved(target)->kind == Type::Kind::Record;
}

// A pointer whose value is kept as it is: to a function, or for the caller's use.
bool is_kept_pointer(const TypePtr &type)
{
    TypePtr target = pointee(type);
    return target && (target->kind == Type::Kind::Function || is_void(target));
}

bool ends_with(const std::string &text, const std::string &end)
{
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// By convention, a pointer of such a name is to as many objects as another argument says.
bool names_an_array(const std::string &name)
{
    return name.find("array") != std::string::npos || ends_with(name, "arr") || ends_with(name, "list");
}

std::vector<std::string> words(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> found;
    for (std::string word; stream >> word;) {
        found.push_back(word);
    }
    return found;
}

// What a parameter after the unit is to writer and getter of a table.
enum class Part {
    Key,
    KeyArray,
    KeyRecord,  ///< a record by pointer, some members of which are keys
    Value,
    Record,  ///< a record by pointer, which is the value; listed members of it are keys as well
};

bool is_key(Part part)
{
    return part == Part::Key || part == Part::KeyArray || part == Part::KeyRecord;
}

using Parts = std::vector<Part>;

bool has(const Parts &parts, Part part)
{
    return std::find(parts.begin(), parts.end(), part) != parts.end();
}

class Finder {
public:
    explicit Finder(const Model &model)
    {
        for (const FamilyInterface &family : model.interface) {
            for (const auto &[name, place] : family.unserved) {
                unserved_[name] = place;
            }
            for (const auto &[table, entry] : family.identified_by) {
                identified_by_[table] = {entry.place, words(entry.text)};
            }
            for (const auto &[table, entry] : family.created_with) {
                created_with_[table] = {entry.place, words(entry.text)};
            }
            for (const auto &[type, entry] : family.key_checks) {
                key_checks_[type] = {entry.place, {entry.text}};
            }
        }
        for (const Family &family : model.families) {
            for (const Function &function : family.sdk_functions) {
                names_.insert(function.name);
                if (takes_unit(function) && unserved_.count(function.name) == 0) {
                    functions_[function.name] = &function;
                }
            }
        }
    }

    Rules find()
    {
        for (const auto &[name, function] : functions_) {
            for (const std::string &suffix : {std::string("_get"), std::string("_get32")}) {
                if (ends_with(name, suffix)) {
                    serve(name.substr(0, name.size() - suffix.size()), *function, suffix == "_get32");
                }
            }
        }
        check_entries();
        return std::move(rules_);
    }

private:
    struct WordEntry {
        std::string place;
        std::vector<std::string> words;
    };

    static bool takes_unit(const Function &function)
    {
        if (function.parameters.empty() || spell(function.result) != "int") {
            return false;
        }
        const Parameter &first = function.parameters.front();
        return spell(first.type) == "int" && (first.name == "unit" || first.name == "arg1");
    }

    const Function *named(const std::string &name) const
    {
        auto found = functions_.find(name);
        return found == functions_.end() ? nullptr : found->second;
    }

    // Finds the functions that share a table. Where one that enters or removes what the others see cannot be
    // served, none is.
    void serve(const std::string &table, const Function &getter, bool narrow)
    {
        const bool created = names_.count(table + "_create") != 0, added = names_.count(table + "_add") != 0;
        const std::string setter_name = table + (narrow ? "_set32" : "_set");
        const Function *setter = named(setter_name), *adder = named(table + "_add");
        if (added && (created || names_.count(setter_name) != 0)) {
            return;
        }
        if (created) {
            serve_created(table, getter, setter);
        } else if (setter) {
            serve_pair(table, *setter, "set", getter);
        } else if (adder && !narrow) {
            serve_pair(table, *adder, "add", getter);
        }
    }

    void serve_pair(const std::string &table, const Function &writer, const std::string &writing,
                    const Function &getter)
    {
        std::optional<Parts> parts = match(table, writer.parameters, getter.parameters);
        Rules erasers;
        if (!parts || !find_erasers(table, getter.parameters, *parts, erasers)) {
            return;
        }
        auto removes = [](const auto &entry) { return entry.second.operation == "remove"; };
        const bool removable = std::any_of(erasers.begin(), erasers.end(), removes);
        // What can be entered once only must be removable, perhaps by a function that no rule fits.
        if (writing == "add" && !removable) {
            return;
        }
        const std::string reading = removable || !members(table).empty() ? "find" : "get";
        add(writer, writing, table, *parts, true);
        add(getter, reading, table, *parts, false);
        rules_.merge(erasers);
        add_traversal(table, writer.parameters, *parts);
        // Counters are read as collected last, or collected first: here both are one.
        const Function *reader = named(table + "_sync" + getter.name.substr(table.size()));
        if (reader && match(table, writer.parameters, reader->parameters) == parts) {
            add(*reader, reading, table, *parts, false);
        }
    }

    // Objects that `create` gives an id, which the others take.
    void serve_created(const std::string &table, const Function &getter, const Function *setter)
    {
        const Function *creator = named(table + "_create");
        auto entry = created_with_.find(table);
        if (!creator || entry == created_with_.end() || creator->parameters.size() < 2
            || getter.parameters.size() < 2) {
            return;
        }
        const Parameter &unit = creator->parameters.front(), &id = creator->parameters.back();
        const Parameter &key = getter.parameters[1];
        if (!pointee(id.type) || !same(pointee(id.type), key.type)
            || resolved(key.type)->kind != Type::Kind::Builtin) {
            return;
        }
        const bool takes_flags = creator->parameters[1].name == "flags";
        const std::vector<Parameter> values(creator->parameters.begin() + (takes_flags ? 2 : 1),
                                            creator->parameters.end() - 1);
        std::vector<Parameter> written = {unit, key};
        written.insert(written.end(), values.begin(), values.end());
        std::optional<Parts> parts = match(table, written, getter.parameters);
        if (setter) {
            std::optional<Parts> by_setter = match(table, setter->parameters, getter.parameters);
            if (!values.empty() && by_setter != parts) {
                return;
            }
            parts = by_setter;
        }
        Rules erasers;
        if (!parts || std::count_if(parts->begin(), parts->end(), is_key) != 1
            || !find_erasers(table, getter.parameters, *parts, erasers)) {
            return;
        }
        Rule rule = {"create", table, unit.name, {}};
        for (std::size_t i = 0; i < values.size(); ++i) {
            rule.arguments.push_back({values[i].name, false, value(values[i], true)});
        }
        rule.more = ", {" + id.name;
        for (const std::string &flag : entry->second.words) {
            rule.more += takes_flags ? ", (flags & " + flag + ") != 0" : ", " + flagged(values, flag);
        }
        rule.more += "}";
        rules_[creator->name] = rule;
        used_.insert(table);
        if (setter) {
            add(*setter, "modify", table, *parts, true);
        }
        add(getter, "find", table, *parts, false);
        rules_.merge(erasers);
        add_traversal(table, setter ? setter->parameters : written, *parts);
        const Function *finder = named(table + "_find");
        written = values;
        written.insert(written.begin(), unit);
        written.push_back(id);
        if (finder && !values.empty() && same_types(finder->parameters, written)) {
            rules_[finder->name] = found_by_value(*finder, table);
        }
    }

    static bool same_types(const std::vector<Parameter> &a, const std::vector<Parameter> &b)
    {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const Parameter &x, const Parameter &y) { return same(x.type, y.type); });
    }

    static Rule found_by_value(const Function &finder, const std::string &table)
    {
        const std::vector<Parameter> &parameters = finder.parameters;
        Rule rule = {"search", table, parameters.front().name, {}, ", {" + parameters.back().name + "}"};
        for (std::size_t i = 1; i + 1 < parameters.size(); ++i) {
            rule.arguments.push_back({parameters[i].name, false, value(parameters[i], true)});
        }
        return rule;
    }

    static std::string flagged(const std::vector<Parameter> &values, const std::string &flag)
    {
        const std::string record = values.empty() ? "flags" : values.front().name;
        return record + " && (" + record + "->flags & " + flag + ") != 0";
    }

    // What the parameters after the unit are, if getter mirrors writer and it is known which object is meant.
    std::optional<Parts> match(const std::string &table, const std::vector<Parameter> &writer,
                               const std::vector<Parameter> &getter) const
    {
        if (writer.size() != getter.size()) {
            return std::nullopt;
        }
        Parts parts;
        std::size_t last_in_both = 0;
        for (std::size_t i = 1; i < writer.size(); ++i) {
            const TypePtr &given = writer[i].type, &got = getter[i].type;
            const bool in_both = same(given, got), mirrored = has(parts, Part::Value);
            if (names_an_array(writer[i].name) || names_an_array(getter[i].name)) {
                return std::nullopt;
            }
            if (in_both && is_plain(given)) {
                parts.push_back(Part::Key);
            } else if (in_both && is_array(given)) {
                parts.push_back(mirrored ? Part::Value : Part::KeyArray);
            } else if (in_both && is_record_pointer(given)) {
                parts.push_back(mirrored ? Part::Record : Part::KeyRecord);
            } else if (pointee(got) && same(pointee(got), given)
                       && (is_plain(given) || is_array(given) || is_kept_pointer(given))) {
                parts.push_back(Part::Value);
            } else {
                return std::nullopt;
            }
            if (parts.back() == Part::KeyArray || parts.back() == Part::KeyRecord) {
                last_in_both = parts.size();
            }
        }
        // Of what both take in the same way, the last is the value if there is no other.
        if (last_in_both != 0 && !has(parts, Part::Value)) {
            Part &last = parts[last_in_both - 1];
            last = last == Part::KeyArray ? Part::Value : Part::Record;
        }
        const bool listed = identified_by_.count(table) != 0;
        const bool keyed = std::any_of(parts.begin(), parts.end(), is_key);
        const bool has_value = has(parts, Part::Value) || has(parts, Part::Record);
        const bool identified = listed || (keyed ? !has(parts, Part::KeyRecord) : !has(parts, Part::Record));
        return has_value && identified ? std::optional<Parts>(parts) : std::nullopt;
    }

    // Adds what removes records. False if something removes them that cannot be served.
    bool find_erasers(const std::string &table, const std::vector<Parameter> &getter, const Parts &parts,
                      Rules &erasers) const
    {
        std::vector<Parameter> keys;
        Parts key_parts;
        bool by_number = true;
        const bool has_members = !members(table).empty();
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (is_key(parts[i]) || (parts[i] == Part::Record && i == first_record(parts) && has_members)) {
                keys.push_back(getter[i + 1]);
                key_parts.push_back(parts[i] == Part::Record ? Part::KeyRecord : parts[i]);
                by_number = by_number && key_parts.back() != Part::KeyRecord;
            }
        }
        for (const std::string &name : {table + "_delete", table + "_destroy"}) {
            if (names_.count(name) == 0) {
                continue;
            }
            const Function *eraser = named(name);
            if (eraser && eraser->parameters.size() == keys.size() + 1 && takes_first(*eraser, keys)) {
                erasers[name] = removal(*eraser, "remove", table, key_parts);
            } else if (eraser && key_parts == Parts{Part::KeyRecord}
                       && takes_members(*eraser, members(table))) {
                erasers[name] = removal_by_members(*eraser, table, keys.front());
            } else {
                return false;
            }
        }
        for (const std::string &name : {table + "_delete_all", table + "_destroy_all"}) {
            const Function *eraser = named(name);
            if (eraser && takes_first(*eraser, keys) && (by_number || eraser->parameters.size() == 1)) {
                erasers[name] = removal(*eraser, "clear", table, key_parts);
            }
        }
        return true;
    }

    // `traverse` hands a callback the parameters of the writer, or the record that keys and value are in.
    void add_traversal(const std::string &table, const std::vector<Parameter> &writer, const Parts &parts)
    {
        const Function *traverser = named(table + "_traverse");
        if (!traverser || traverser->parameters.size() != 3 || has(parts, Part::KeyRecord)
            || !std::is_partitioned(parts.begin(), parts.end(), is_key)) {
            return;
        }
        const Parameter &callback = traverser->parameters[1], &user_data = traverser->parameters[2];
        TypePtr function = pointee(callback.type);
        if (!function || function->kind != Type::Kind::Function || !is_kept_pointer(user_data.type)) {
            return;
        }
        const std::vector<TypePtr> &taken = function->parameters;
        if (taken.size() != writer.size() + 1 || !same(taken.front(), writer.front().type)
            || !same(taken.back(), user_data.type)) {
            return;
        }
        std::string pieces;
        for (std::size_t i = 1; i < writer.size(); ++i) {
            if (!is_passed_as(writer[i].type, taken[i])) {
                return;
            }
            pieces += (pieces.empty() ? "" : ", ") + piece(writer[i].type);
        }
        rules_[traverser->name] = {"traverse<" + pieces + ">",
                                   table,
                                   traverser->parameters.front().name,
                                   {},
                                   ", " + callback.name + ", " + user_data.name};
    }

    static bool is_passed_as(const TypePtr &written, const TypePtr &taken)
    {
        return same(written, taken)
               || (is_array(written) && pointee(taken) && same(resolved(written)->target, pointee(taken)));
    }

    static std::string piece(const TypePtr &type)
    {
        if (is_array(type)) {
            return "rules::At<" + spell_declared(type) + ">";
        }
        if (is_record_pointer(type)) {
            return "rules::At<" + resolved(pointee(type))->name + ">";
        }
        return spell_declared(type);
    }

    // Whether the parameters after the unit are named as the members are.
    static bool takes_members(const Function &function, const std::vector<std::string> &members)
    {
        auto names = [](const Parameter &parameter, const std::string &member) {
            return parameter.name == member && is_plain(parameter.type);
        };
        const std::vector<Parameter> &parameters = function.parameters;
        return std::equal(parameters.begin() + 1, parameters.end(), members.begin(), members.end(), names);
    }

    static Rule removal_by_members(const Function &eraser, const std::string &table, const Parameter &record)
    {
        Rule rule = {"remove", table, eraser.parameters.front().name, {}};
        const std::string type = resolved(pointee(record.type))->name;
        for (std::size_t i = 1; i < eraser.parameters.size(); ++i) {
            const std::string &name = eraser.parameters[i].name;
            rule.arguments.push_back(
                {name, true, "rules::key_as(&" + type + "::" + name + ", " + name + ")"});
        }
        return rule;
    }

    // Whether the parameters after the unit are the first of the keys.
    static bool takes_first(const Function &function, const std::vector<Parameter> &keys)
    {
        const std::vector<Parameter> given(function.parameters.begin() + 1, function.parameters.end());
        return given.size() <= keys.size()
               && same_types(given, {keys.begin(), keys.begin() + long(given.size())});
    }

    Rule removal(const Function &eraser, const std::string &operation, const std::string &table,
                 const Parts &key_parts) const
    {
        Rule rule = {operation, table, eraser.parameters.front().name, {}};
        for (std::size_t i = 1; i < eraser.parameters.size(); ++i) {
            append_keys(rule, table, eraser.parameters[i], key_parts[i - 1]);
        }
        return rule;
    }

    void add(const Function &function, const std::string &operation, const std::string &table,
             const Parts &parts, bool writing)
    {
        Rule rule = {operation, table, function.parameters.front().name, {}};
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const Parameter &parameter = function.parameters[i + 1];
            if (is_key(parts[i]) || (parts[i] == Part::Record && i == first_record(parts))) {
                append_keys(rule, table, parameter, parts[i]);
            }
            if (!is_key(parts[i])) {
                rule.arguments.push_back({parameter.name, false, value(parameter, writing)});
            }
            note_check(parameter, parts[i]);
        }
        rules_[function.name] = rule;
        used_.insert(table);
    }

    static std::size_t first_record(const Parts &parts)
    {
        auto is_record = [](Part part) { return part == Part::Record || part == Part::KeyRecord; };
        return std::size_t(std::find_if(parts.begin(), parts.end(), is_record) - parts.begin());
    }

    std::vector<std::string> members(const std::string &table) const
    {
        auto found = identified_by_.find(table);
        return found == identified_by_.end() ? std::vector<std::string>() : found->second.words;
    }

    void append_keys(Rule &rule, const std::string &table, const Parameter &parameter, Part part) const
    {
        const std::string &name = parameter.name;
        if (part == Part::KeyArray) {
            rule.arguments.push_back({name, true, "rules::key_at(" + name + ", " + size_of(parameter) + ")"});
        } else if (part == Part::Key) {
            auto check = key_checks_.find(typedef_name(parameter));
            const std::string kind = check == key_checks_.end() ? "key" : check->second.words.front();
            rule.arguments.push_back({name, true, "rules::" + kind + "(" + name + ")"});
        } else {
            const std::string record = resolved(pointee(parameter.type))->name;
            for (const std::string &member : members(table)) {
                const std::string place = "&" + record + "::" + member;
                rule.arguments.push_back({name, true, "rules::member(" + name + ", " + place + ")"});
            }
        }
    }

    static std::string value(const Parameter &parameter, bool writing)
    {
        if (writing && (is_plain(parameter.type) || is_kept_pointer(parameter.type))) {
            return "rules::given(" + parameter.name + ")";
        }
        const std::string function = writing ? "rules::given_at(" : "rules::result_at(";
        return function + parameter.name + ", " + size_of(parameter) + ")";
    }

    static std::string size_of(const Parameter &parameter)
    {
        return is_array(parameter.type) ? "sizeof(" + spell_declared(parameter.type) + ")"
                                        : "sizeof *" + parameter.name;
    }

    static std::string typedef_name(const Parameter &parameter)
    {
        return parameter.type->kind == Type::Kind::Typedef ? parameter.type->name : "";
    }

    void note_check(const Parameter &parameter, Part part)
    {
        if (part == Part::Key) {
            used_.insert(typedef_name(parameter));
        }
    }

    void check_entries() const
    {
        Errors errors;
        for (const auto &[name, place] : unserved_) {
            if (names_.count(name) == 0) {
                errors.add(place, "no header declares '" + name + "', which is not to be served");
            }
        }
        for (const auto *entries : {&identified_by_, &created_with_, &key_checks_}) {
            for (const auto &[name, entry] : *entries) {
                if (used_.count(name) == 0) {
                    errors.add(entry.place, "no rule of the development SDK uses '" + name + "'");
                }
            }
        }
        errors.raise_any();
    }

    std::map<std::string, std::string> unserved_;                    ///< function to place
    std::map<std::string, WordEntry> identified_by_, created_with_;  ///< by table
    std::map<std::string, WordEntry> key_checks_;                    ///< by typedef
    std::set<std::string> names_;                                    ///< of all functions
    std::map<std::string, const Function *> functions_;              ///< that may be served
    std::set<std::string> used_;                                     ///< tables and typedefs
    Rules rules_;
};

}  // namespace

Rules find_rules(const Model &model)
{
    return Finder(model).find();
}

}  // namespace generator
