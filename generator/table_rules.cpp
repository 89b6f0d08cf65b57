#include "table_rules.h"

#include "argument_type.h"
#include "emit.h"
#include "errors.h"
#include "spelling.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

namespace generator {

namespace {

using Texts = std::vector<std::string>;

Texts words(const std::string &text)
{
    std::istringstream stream(text);
    Texts found;
    for (std::string word; stream >> word;) {
        found.push_back(word);
    }
    return found;
}

bool has(const Texts &texts, const std::string &text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// "part=meaning"
std::pair<std::string, std::string> divided(const std::string &word)
{
    const std::size_t sign = word.find('=');
    return sign == std::string::npos ? std::pair(word, std::string())
                                     : std::pair(word.substr(0, sign), word.substr(sign + 1));
}

struct Ending {
    const char *text, *operation;
};

// Longer ones first.
constexpr Ending endings[] = {
    {"_attach_get", "find"},   {"_delete_all", "clear"}, {"_destroy_all", "clear"}, {"_remove_all", "clear"},
    {"_detach_all", "clear"},  {"_clear_all", "clear"},  {"_multi_get", "list"},    {"_get_all", "list"},
    {"_traverse", "traverse"}, {"_destroy", "remove"},   {"_attach", "set"},        {"_create", "add"},
    {"_delete", "remove"},     {"_detach", "remove"},    {"_remove", "remove"},     {"_clear", "remove"},
    {"_find", "find"},         {"_add", "add"},          {"_set", "set"},           {"_get", "find"},
};

constexpr const char *operations[] = {"create", "add",    "set",   "modify", "find",        "get",
                                      "search", "remove", "clear", "list",   "replace_all", "traverse"};

constexpr const char *other_fields[] = {"key",    "record",   "id",     "with",   "replace",
                                        "first",  "capacity", "refers", "owns",   "counts",
                                        "ranges", "also",     "all",    "values", "each"};

bool writes(const std::string &operation)
{
    return operation == "create" || operation == "add" || operation == "set" || operation == "modify";
}

bool takes_first_keys(const std::string &operation)
{
    return operation == "clear" || operation == "list" || operation == "replace_all"
           || operation == "traverse";
}

bool ends_with(const std::string &text, const std::string &end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool is_flags(const std::string &name)
{
    return name == "flags" || name == "options";
}

bool is_unit(const Function &function)
{
    return spell(function.result) == "int" && !function.parameters.empty()
           && spell(function.parameters.front().type) == "int"
           && (function.parameters.front().name == "unit" || function.parameters.front().name == "arg1");
}

std::string typedef_name(const TypePtr &type)
{
    return type->kind == Type::Kind::Typedef ? type->name : "";
}

// By convention, a pointer of such a name is to as many objects as another argument says.
bool names_an_array(const std::string &name)
{
    return name.find("array") != std::string::npos || ends_with(name, "arr") || ends_with(name, "list");
}

std::string size_of(const Parameter &parameter)
{
    return is_array(parameter.type) ? fmt::format("sizeof({})", spell_declared(parameter.type))
                                    : fmt::format("sizeof *{}", parameter.name);
}

// A table as the interface file describes it.
class Table {
public:
    Table(const Model &model, const Family &family, std::string name, const TableEntry &entry)
        : family_(family),
          name_(std::move(name)),
          entry_(entry),
          keys_(words(field("key"))),
          record_(field("record")),
          id_(field("id"))
    {
        for (const Family &any : model.families) {
            for (const BoundRecord &record : any.records) {
                if (record.name == record_) {
                    for (const BoundMember &member : record.members) {
                        members_[member.name] = member.crossing.type;
                    }
                }
            }
        }
    }

    // Whatever is wrong with the entry.
    void check(Errors &errors) const
    {
        for (const auto &[key, field] : entry_.fields) {
            const auto is = [&key = key](const char *known) { return key == known; };
            if (std::none_of(std::begin(operations), std::end(operations), is)
                && std::none_of(std::begin(other_fields), std::end(other_fields), is)) {
                errors.add(field.place, "unknown key '" + key + "'");
            }
        }
        if (!record_.empty() && members_.empty()) {
            errors.add(entry_.place, "no record '" + record_ + "' is bound");
        }
        if (!id_.empty() && (keys_.empty() || keys_.back() != id_)) {
            errors.add(entry_.place, "the id is not the last key");
        }
    }

    bool serves() const { return !keys_.empty(); }

    std::string operation_of(const Function &function) const
    {
        for (const char *operation : operations) {
            if (has(words(field(operation)), function.name)) {
                return operation;
            }
        }
        const std::string each = field("each");
        if (!each.empty()) {
            const bool is_one = function.name.compare(0, each.size(), each) == 0 && function.name != each;
            return !is_one ? "" : ends_with(function.name, "_get") ? "find" : "set";
        }
        Texts beginnings = words(field("also"));
        beginnings.push_back(name_);
        for (const Ending &ending : endings) {
            for (const std::string &beginning : beginnings) {
                if (function.name == beginning + ending.text) {
                    return usual(ending.operation, function);
                }
            }
        }
        return "";
    }

    TableText text() const
    {
        TableText text;
        Texts references;
        for (const std::string &word : words(field("refers"))) {
            references.push_back(reference(word));
        }
        const std::string name = "references_of_" + name_;
        if (!references.empty()) {
            text.references = fmt::format("static constexpr rules::Reference {}[] = {{{}}};\n", name,
                                          fmt::join(references, ", "));
        }
        text.arguments =
            fmt::format(", {}, {}, {}, {}, \"{}\"", field("first").empty() ? "1" : field("first"),
                        field("capacity").empty() ? "INT_MAX" : field("capacity"),
                        references.empty() ? "nullptr" : name, references.size(), field("owns"));
        return text;
    }

    // The rule, or why there is none.
    std::optional<Rule> rule(const std::string &operation, const Function &function,
                             const std::map<std::string, std::string> &checks, std::string &refusal) const;

private:
    struct Binding {
        std::map<std::string, std::string> keys;  // by key, the argument that says it
        Texts values, results, ranges, columns;
        const Parameter *record = nullptr, *flags = nullptr, *id = nullptr, *callback = nullptr,
                        *user_data = nullptr, *number = nullptr, *count = nullptr;
    };

    std::string field(const char *name) const
    {
        const auto found = entry_.fields.find(name);
        return found == entry_.fields.end() ? "" : found->second.text;
    }

    std::string usual(const std::string &operation, const Function &function) const
    {
        const bool array =
            std::any_of(function.parameters.begin(), function.parameters.end(),
                        [](const Parameter &one) { return pointee(one.type) && names_an_array(one.name); });
        if (operation == "add" && !id_.empty()) {
            return "create";
        }
        if (operation == "set") {
            return array ? "replace_all" : id_.empty() ? "set" : "modify";
        }
        return operation == "find" && array ? "list" : operation;
    }

    // Of a function of "each": whether its getter gets just what it takes, and the other way round.
    bool is_mirrored(const Function &function, std::string &refusal) const
    {
        const bool is_getter = ends_with(function.name, "_get");
        const std::string other =
            is_getter ? function.name.substr(0, function.name.size() - 4) : function.name + "_get";
        const auto found = std::find_if(family_.sdk_functions.begin(), family_.sdk_functions.end(),
                                        [&](const Function &any) { return any.name == other; });
        refusal = other + " does not mirror it";
        if (found == family_.sdk_functions.end()) {
            return false;
        }
        const std::vector<Parameter> &taken = (is_getter ? *found : function).parameters,
                                     &got = (is_getter ? function : *found).parameters;
        auto mirrors = [&](const Parameter &given, const Parameter &read) {
            const TypePtr target = pointee(read.type);
            return !names_an_array(given.name) && !names_an_array(read.name)
                   && ((target && same(target, given.type) && (is_copied(given.type) || is_array(given.type)))
                       || (is_record_pointer(given.type) && same(read.type, given.type))
                       || (has(keys_, given.name) && same(given.type, read.type)));
        };
        return taken.size() == got.size()
               && std::equal(taken.begin() + 1, taken.end(), got.begin() + 1, mirrors);
    }

    bool is_member(const std::string &name) const { return members_.count(name) != 0; }

    bool is_record(const Parameter &parameter) const
    {
        const TypePtr target = pointee(parameter.type);
        return target && is_record_pointer(parameter.type)
               && typedef_name(Type::without_const(declared_pointee(parameter.type))) == record_;
    }

    // What a pointer points to, with its typedef.
    static TypePtr declared_pointee(const TypePtr &type)
    {
        return type->kind == Type::Kind::Pointer ? type->target : pointee(type);
    }

    // The size of a key or value, by the member or the first parameter that has its name.
    std::string size_by_name(const std::string &name) const
    {
        if (is_member(name)) {
            return fmt::format("sizeof({}::{})", record_, name);
        }
        for (const Function &function : family_.sdk_functions) {
            if (!operation_of(function).empty()) {
                for (const Parameter &parameter : function.parameters) {
                    if (parameter.name == name) {
                        const TypePtr target = pointee(parameter.type);
                        return fmt::format("sizeof({})", spell_declared(target ? target : parameter.type));
                    }
                }
            }
        }
        return "sizeof(int)";
    }

    std::string reference(const std::string &word) const
    {
        const auto [part, to] = divided(word);
        std::string offset = "0";
        const bool in_key = has(keys_, part);
        if (in_key) {
            for (const std::string &key : keys_) {
                if (key == part) {
                    break;
                }
                offset += " + " + size_by_name(key);
            }
        } else if (is_member(part)) {
            offset = fmt::format("offsetof({}, {})", record_, part);
        }
        const bool of_room = to.front() == '!';
        return fmt::format("{{{}, {}, {}, \"{}\", {}}}", in_key ? "true" : "false", offset,
                           size_by_name(part), of_room ? "" : to,
                           of_room ? "sim::" + to.substr(1) : "nullptr");
    }

    std::string key_argument(const std::string &key, const Parameter &parameter,
                             const std::map<std::string, std::string> &checks) const
    {
        const std::string &name = parameter.name;
        if (is_array(parameter.type)) {
            return fmt::format("rules::key_at({}, {})", name, size_of(parameter));
        }
        if (is_member(key)) {
            return fmt::format("rules::key_as(&{}::{}, {})", record_, key, name);
        }
        const auto check = checks.find(typedef_name(parameter.type));
        return fmt::format("rules::{}({})", check == checks.end() || key == id_ ? "key" : check->second,
                           name);
    }

    bool bind(const std::string &operation, const Function &function,
              const std::map<std::string, std::string> &checks, Binding &bound, Rule &rule,
              std::string &refusal) const;

    std::string chosen(const Binding &bound, const std::string &flag) const
    {
        if (flag.empty() || flag == "-") {
            return "false";
        }
        if (bound.flags) {
            return fmt::format("({} & {}) != 0", bound.flags->name, flag);
        }
        for (const char *member : {"flags", "l3a_flags"}) {
            if (bound.record && is_member(member)) {
                return fmt::format("{0} != nullptr && ({0}->{1} & {2}) != 0", bound.record->name, member,
                                   flag);
            }
        }
        return "false";
    }

    std::string id_in_record(const Binding &bound) const
    {
        return fmt::format("{0} != nullptr ? &{0}->{1} : nullptr", bound.record->name, id_);
    }

    std::string id_argument(const Binding &bound) const
    {
        const Texts flags = words(field("with"));
        const std::string at = bound.id ? bound.id->name : id_in_record(bound);
        return fmt::format("{{{}, {}, {}}}", at, chosen(bound, flags.empty() ? "" : flags[0]),
                           chosen(bound, flags.size() < 2 ? "" : flags[1]));
    }

    // The parts of a record that a callback takes.
    static std::string visited(const Parameter &callback)
    {
        const TypePtr function = pointee(callback.type);
        const std::vector<TypePtr> &taken = function->parameters;
        Texts parts;
        for (std::size_t i = 1; i + 1 < taken.size(); ++i) {
            const TypePtr target = pointee(taken[i]);
            parts.push_back(target ? fmt::format("rules::At<{}>", spell_declared(declared_pointee(taken[i])))
                                   : spell_declared(taken[i]));
        }
        return fmt::format("{}", fmt::join(parts, ", "));
    }

    const Family &family_;
    const std::string name_;
    const TableEntry &entry_;
    const Texts keys_;
    const std::string record_, id_;
    std::map<std::string, TypePtr> members_;  ///< of the record
};

bool Table::bind(const std::string &operation, const Function &function,
                 const std::map<std::string, std::string> &checks, Binding &bound, Rule &rule,
                 std::string &refusal) const
{
    const bool lists = operation == "list" || operation == "replace_all";
    std::vector<const Parameter *> unnamed;  // numbers that are no keys by their names
    std::map<std::string, std::string> counts, ranges;
    for (const std::string &word : words(field("counts"))) {
        counts.insert(divided(word));
    }
    for (const std::string &word : words(field("ranges"))) {
        ranges.insert(divided(word));
    }
    auto role = [&](const Parameter &parameter, Role is) { rule.parameters.push_back({parameter, is}); };
    auto is_id = [&](const std::string &key) { return operation == "create" && key == id_; };

    for (std::size_t i = 1; i < function.parameters.size(); ++i) {
        const Parameter &parameter = function.parameters[i];
        const std::string &name = parameter.name;
        const TypePtr target = pointee(parameter.type);
        const auto range = ranges.find(name);
        if (range != ranges.end() && !target && !is_array(parameter.type)) {
            const std::size_t dots = range->second.find("..");
            bound.ranges.push_back(fmt::format("rules::within({}, {}, {})", name,
                                               range->second.substr(0, dots),
                                               range->second.substr(dots + 2)));
        }
        if (target && target->kind == Type::Kind::Function) {
            bound.callback = &parameter;
            role(parameter, Role::Callback);
        } else if (is_kept_pointer(parameter.type)) {
            bound.user_data = &parameter;
            role(parameter, Role::UserData);
        } else if (is_record(parameter) && !lists) {
            if (bound.record) {
                refusal = "takes two records";
                return false;
            }
            // What is cleared is all, whatever the record says.
            bound.record = operation == "clear" ? nullptr : &parameter;
            role(parameter, operation == "clear"    ? Role::Id
                            : operation == "remove" ? Role::KeyRecord
                                                    : Role::Record);
        } else if (counts.count(name) != 0 && target) {
            const std::string &of = counts.at(name);
            bound.results.push_back(of == "uses" ? fmt::format("rules::uses({})", name)
                                                 : fmt::format("rules::records_of(\"{}\", {})", of, name));
            role(parameter, Role::Id);
        } else if (target && lists) {
            const bool last = i + 1 == function.parameters.size();
            if (operation == "list" && last) {
                bound.count = &parameter;
            } else {
                bound.columns.push_back(name);
            }
            role(parameter, Role::Id);
        } else if (target && (operation == "create" || operation == "search")
                   && resolved(target)->kind == Type::Kind::Builtin) {
            bound.id = &parameter;
            role(parameter, Role::Id);
        } else if (target && resolved(target)->kind != Type::Kind::Pointer && record_.empty()) {
            const bool read = operation == "find" || operation == "get";
            (read ? bound.results : bound.values)
                .push_back(fmt::format("rules::{}({}, {})", read ? "result_at" : "given_at", name,
                                       size_of(parameter)));
            role(parameter, Role::Value);
        } else if (target) {
            refusal = "'" + name + "' has no part in the table " + name_;
            return false;
        } else if (has(keys_, name) && !is_id(name) && (operation != "clear" || field("all").empty())) {
            bound.keys[name] = key_argument(name, parameter, checks);
            role(parameter, Role::Key);
        } else if (is_flags(name)) {
            bound.flags = &parameter;
            if (has(words(field("values")), name) && writes(operation)) {
                bound.values.push_back(fmt::format("rules::given({})", name));
            }
            role(parameter, Role::Flags);
        } else {
            unnamed.push_back(&parameter);
        }
    }
    for (const Parameter *parameter : unnamed) {
        auto free = [&](const std::string &key) {
            // A record that is read, or whose key is said beside it, has no say.
            const bool in_record = bound.record && is_member(key)
                                   && (operation == "create" || operation == "add" || operation == "set");
            return key != "#" && bound.keys.count(key) == 0 && !is_id(key) && !in_record;
        };
        const auto key = std::find_if(keys_.begin(), keys_.end(), free);
        const bool is_number = lists
                               && (parameter->name.find("max") != std::string::npos
                                   || parameter->name.find("size") != std::string::npos
                                   || parameter->name.find("count") != std::string::npos
                                   || parameter->name.find("num") != std::string::npos);
        const std::string &name = parameter->name, all = field("all");
        const std::string unless_all = operation == "clear" && !all.empty() ? ", " + all : "";
        const bool chooses =
            takes_first_keys(operation) && is_member(name) && (!has(keys_, name) || !unless_all.empty());
        if (is_number) {
            bound.number = parameter;
            role(*parameter, Role::Id);
        } else if (chooses) {
            bound.ranges.push_back(
                fmt::format("rules::matching(offsetof({}, {}), {}{})", record_, name, name, unless_all));
            role(*parameter, Role::Id);
        } else if (key != keys_.end() && is_member(*key) && !is_array(parameter->type)
                   && !same(members_.at(*key), parameter->type)) {
            refusal = "'" + name + "' is no key of " + name_;
            return false;
        } else if (key != keys_.end()) {
            bound.keys[*key] = key_argument(*key, *parameter, checks);
            role(*parameter, Role::Key);
        } else if (record_.empty() && (writes(operation) || operation == "search")) {
            bound.values.push_back(
                is_array(parameter->type)
                    ? fmt::format("rules::given_at({}, {})", parameter->name, size_of(*parameter))
                    : fmt::format("rules::given({})", parameter->name));
            role(*parameter, Role::Value);
        } else if (record_.empty() && is_array(parameter->type)
                   && (operation == "find" || operation == "get")) {
            bound.results.push_back(
                fmt::format("rules::result_at({}, {})", parameter->name, size_of(*parameter)));
            role(*parameter, Role::Value);
        } else {
            refusal = "'" + parameter->name + "' has no part in the table " + name_;
            return false;
        }
    }
    auto place = [&](const RuleParameter &one) {
        const auto is = [&](const Parameter &parameter) { return parameter.name == one.declared.name; };
        return std::find_if(function.parameters.begin(), function.parameters.end(), is);
    };
    std::sort(rule.parameters.begin(), rule.parameters.end(),
              [&](const RuleParameter &a, const RuleParameter &b) { return place(a) < place(b); });
    if (bound.record) {
        const std::string &name = bound.record->name;
        for (const auto &[member, range] : ranges) {
            if (is_member(member) && writes(operation)) {
                const std::size_t dots = range.find("..");
                bound.ranges.push_back(fmt::format("rules::member_within({}, &{}::{}, {}, {})", name, record_,
                                                   member, range.substr(0, dots), range.substr(dots + 2)));
            }
        }
    }
    return true;
}

std::optional<Rule> Table::rule(const std::string &operation, const Function &function,
                                const std::map<std::string, std::string> &checks, std::string &refusal) const
{
    Rule rule;
    Binding bound;
    if (!bind(operation, function, checks, bound, rule, refusal)) {
        return std::nullopt;
    }
    rule.operation = "object " + operation;
    rule.table = name_;
    rule.unit = function.parameters.front().name;
    rule.table_text = text();

    Texts arguments;
    bool complete = true;
    const std::string each = field("each");
    if (!each.empty() && !has(words(field("clear")), function.name)) {
        std::string which = function.name.substr(each.size());
        which = ends_with(which, "_get") ? which.substr(0, which.size() - 4) : which;
        bound.keys[each] = fmt::format("rules::key_at(\"{}\", {})", which, which.size());
        if (!is_mirrored(function, refusal)) {
            return std::nullopt;
        }
    }
    Texts keys = keys_;
    if (!each.empty()) {
        keys.push_back(each);
    }
    for (const std::string &key : keys) {
        const auto given = bound.keys.find(key);
        const bool in_record = bound.record && is_member(key) && operation != "search";
        if (operation == "create" && key == id_) {
            continue;
        }
        if (given == bound.keys.end() && !in_record) {
            complete = false;
        } else if (!complete) {
            refusal = "takes other keys than the first ones of " + name_;
            return std::nullopt;
        } else {
            arguments.push_back(given != bound.keys.end() ? given->second
                                                          : fmt::format("rules::member({}, &{}::{})",
                                                                        bound.record->name, record_, key));
        }
    }
    if (!complete && operation != "search" && !takes_first_keys(operation)) {
        refusal = "does not take all keys of " + name_;
        return std::nullopt;
    }
    if (operation == "search" && !bound.id) {
        refusal = "gives no id";
        return std::nullopt;
    }
    if (operation == "create" && !bound.id && !(bound.record && is_member(id_))) {
        refusal = "gives no id";
        return std::nullopt;
    }
    const bool reads = operation == "find" || operation == "get";
    if (bound.record && (reads || writes(operation) || operation == "search")) {
        arguments.push_back(fmt::format("rules::{}({}, sizeof *{})", reads ? "result_at" : "given_at",
                                        bound.record->name, bound.record->name));
    }
    for (const Texts *more : {&bound.values, &bound.results, &bound.ranges}) {
        arguments.insert(arguments.end(), more->begin(), more->end());
    }
    std::string called = operation, more;
    if (operation == "create") {
        more = ", " + id_argument(bound);
    } else if (operation == "search") {
        more = fmt::format(", {}, {}", bound.id->name,
                           bound.record && is_member(id_) ? id_in_record(bound) : "nullptr");
    } else if (operation == "add" && !field("replace").empty()) {
        more = ", " + chosen(bound, field("replace"));
    } else if (operation == "list" || operation == "replace_all") {
        const bool list = operation == "list";
        if (!bound.number || bound.columns.empty() || (list && !bound.count)) {
            refusal = "does not say how many elements its arrays have";
            return std::nullopt;
        }
        more = fmt::format(", {}, {{{}}}, {}", bound.number->name, fmt::join(bound.columns, ", "),
                           list              ? bound.count->name
                           : has(keys_, "#") ? "true"
                                             : "false");
    } else if (operation == "traverse") {
        if (!bound.callback || !bound.user_data) {
            refusal = "takes no callback with its data";
            return std::nullopt;
        }
        called += fmt::format("<{}>", visited(*bound.callback));
        const TypePtr callback = pointee(bound.callback->type);
        const bool keys_alone = record_.empty() && callback->parameters.size() == keys_.size() + 2;
        more = fmt::format(", {}, {}{}", bound.callback->name, bound.user_data->name,
                           keys_alone ? ", true" : "");
    }
    rule.call = fmt::format("rules::{}({}, {}, {{{}}}{})", called, table_constant(name_), rule.unit,
                            fmt::join(arguments, ", "), more);
    return rule;
}

// The initialisation of a family, or its end.
std::optional<Answer> module_answer(const Family &family, const Function &function)
{
    if (!is_unit(function) || function.parameters.size() != 1) {
        return std::nullopt;
    }
    const std::string beginning = "bcm_" + family.name + "_", &unit = function.parameters.front().name;
    Rule rule;
    rule.unit = unit;
    if (function.name == beginning + "init") {
        rule.operation = "module initialise";
        rule.call = fmt::format("rules::initialise(\"{}\", {})", family.name, unit);
        return Answer{AnswerKind::ByRule, "empties the tables of the family", rule};
    }
    if (function.name == beginning + "detach" || function.name == beginning + "cleanup") {
        rule.operation = "module detach";
        rule.call = fmt::format("rules::detach(\"{}\", {})", family.name, unit);
        return Answer{AnswerKind::ByRule, "ends what the family's rules answer", rule};
    }
    return std::nullopt;
}

}  // namespace

TableAnswers find_table_answers(const Model &model)
{
    std::map<std::string, std::string> checks;  // of keys, by typedef
    std::set<std::string> unserved;
    for (const FamilyInterface &family : model.interface) {
        for (const auto &[type, entry] : family.key_checks) {
            checks[type] = entry.text;
        }
        for (const Entry &entry : family.unserved) {
            unserved.insert(entry.text);
        }
    }
    TableAnswers found;
    Errors errors;
    for (const FamilyInterface &interface : model.interface) {
        const auto family = std::find_if(model.families.begin(), model.families.end(),
                                         [&](const Family &any) { return any.name == interface.name; });
        if (family == model.families.end()) {
            continue;
        }
        for (const Function &function : family->sdk_functions) {
            const auto answer = module_answer(*family, function);
            if (answer && unserved.count(function.name) == 0) {
                found.answers[function.name] = *answer;
            }
        }
        for (const auto &[name, entry] : interface.tables) {
            const Table table(model, *family, name, entry);
            table.check(errors);
            found.texts[name] = table.text();
            bool any = !table.serves();
            for (const Function &function : family->sdk_functions) {
                const std::string operation = table.serves() ? table.operation_of(function) : "";
                if (operation.empty() || !is_unit(function) || unserved.count(function.name) != 0) {
                    continue;
                }
                std::string refusal;
                const auto rule = table.rule(operation, function, checks, refusal);
                if (rule) {
                    any = true;
                    found.answers[function.name] = {AnswerKind::ByRule, operation + " in the table " + name,
                                                    *rule};
                } else {
                    found.refusals[function.name] = refusal;
                }
            }
            if (!any) {
                errors.add(entry.place,
                           "no function of the development SDK works on the table '" + name + "'");
            }
        }
    }
    errors.raise_any();
    return found;
}

}  // namespace generator
