#include "table_rules.h"

#include "argument_type.h"
#include "emit.h"
#include "errors.h"
#include "spelling.h"
#include "table_description.h"
#include "words.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace generator {

namespace {

using Texts = std::vector<std::string>;

bool writes(const std::string &operation)
{
    return operation == "create" || operation == "add" || operation == "set" || operation == "modify";
}

bool takes_first_keys(const std::string &operation)
{
    return operation == "clear" || operation == "list" || operation == "replace_all"
           || operation == "traverse" || operation == "size" || operation == "get_each";
}

bool is_flags(const std::string &name)
{
    return name == "flags" || name == "options";
}

// "low..high"
std::string bounds(const std::string &range)
{
    const std::size_t dots = range.find("..");
    return range.substr(0, dots) + ", " + range.substr(dots + 2);
}

// The parts of a record that a callback takes.
std::string visited(const Parameter &callback)
{
    const TypePtr function = pointee(callback.type);
    const std::vector<TypePtr> &taken = function->parameters;
    Texts parts;
    for (std::size_t i = 1; i + 1 < taken.size(); ++i) {
        parts.push_back(pointee(taken[i]) ? fmt::format("rules::At<{}>", spell_declared(target_of(taken[i])))
                                          : spell_declared(taken[i]));
    }
    return fmt::format("{}", fmt::join(parts, ", "));
}

// Finds what answers one function of a table: each of its parameters gets a part, and the parts are put together.
class RuleFinder {
public:
    /// `checks`: of keys, by typedef.
    RuleFinder(const TableDescription &table, const std::string &operation, const Function &function,
               const std::map<std::string, std::string> &checks, const Model &model)
        : table_(table),
          operation_(operation),
          function_(function),
          checks_(checks),
          lists_(operation == "list" || operation == "replace_all" || operation == "get_each")
    {
        for (const std::string &word : words(table.field("counts"))) {
            counts_.insert(divided(word));
        }
        for (const std::string &word : words(table.field("ranges"))) {
            allowed_.insert(divided(word));
        }
        for (const Parameter &parameter : function.parameters) {
            const std::string range = range_of(model, parameter);
            if (!range.empty()) {
                ranges_.push_back(fmt::format("rules::within({}, {})", parameter.name, range));
            }
        }
    }

    /// The rule; none if the function cannot be answered by one.
    std::optional<Rule> rule()
    {
        if (!give_parts() || !name_what_follows()) {
            return std::nullopt;
        }
        const std::optional<Texts> keys = key_arguments();
        if (!keys || !gives_its_id()) {
            return std::nullopt;
        }
        return put_together(*keys);
    }

    /// Why there is none.
    const std::string &refusal() const { return refusal_; }

private:
    bool refuse(const std::string &why)
    {
        refusal_ = why;
        return false;
    }

    bool has_no_part(const Parameter &parameter)
    {
        return refuse("'" + parameter.name + "' has no part in the table " + table_.name());
    }

    bool is_member(const std::string &name) const { return table_.member(name) != nullptr; }

    // Whether it is the key that is chosen, not said.
    bool is_chosen(const std::string &key) const
    {
        return (operation_ == "create" || operation_ == "number") && key == table_.id();
    }

    bool reads() const { return operation_ == "find" || operation_ == "get"; }

    bool has_records() const { return !table_.record().empty(); }

    // The number that stands for all in place of a key; empty if there is none.
    std::string all() const { return operation_ == "clear" ? table_.field("all") : ""; }

    void note(const Parameter &parameter, Role role) { rule_.parameters.push_back({parameter, role}); }

    std::string key_argument(const std::string &key, const Parameter &parameter) const
    {
        const std::string &name = parameter.name;
        if (is_sized_array(parameter.type)) {
            return fmt::format("rules::key_at({}, {})", name, size_of(parameter));
        }
        if (is_member(key)) {
            return fmt::format("rules::key_as(&{}::{}, {})", table_.record(), key, name);
        }
        const auto check = checks_.find(typedef_name(parameter.type));
        const bool checked =
            check != checks_.end() && key != table_.id() && !has(words(table_.field("unchecked")), key);
        return fmt::format("rules::{}({})", checked ? check->second : "key", name);
    }

    // Whether each parameter after the unit has a part: first those that types and names tell, then numbers, which
    // are what is still missing.
    bool give_parts()
    {
        for (std::size_t i = 1; i < function_.parameters.size(); ++i) {
            const Parameter &parameter = function_.parameters[i];
            if (!pointee(parameter.type)) {
                take_named(parameter);
            } else if (!take_pointer(parameter, i + 1 == function_.parameters.size())) {
                return false;
            }
        }
        for (const Parameter *parameter : unnamed_) {
            if (!take_number(*parameter)) {
                return false;
            }
        }
        auto place = [&](const RuleParameter &one) {
            const auto is = [&](const Parameter &parameter) { return parameter.name == one.declared.name; };
            return std::find_if(function_.parameters.begin(), function_.parameters.end(), is);
        };
        std::sort(rule_.parameters.begin(), rule_.parameters.end(),
                  [&](const RuleParameter &a, const RuleParameter &b) { return place(a) < place(b); });
        for (const auto &[member, range] : allowed_) {
            if (record_ && is_member(member) && writes(operation_)) {
                ranges_.push_back(fmt::format("rules::member_within({}, &{}::{}, {})", record_->name,
                                              table_.record(), member, bounds(range)));
            }
        }
        return true;
    }

    bool take_pointer(const Parameter &parameter, bool last)
    {
        const std::string &name = parameter.name;
        const TypePtr target = pointee(parameter.type);
        const auto counted = counts_.find(name);
        const bool calls = target->kind == Type::Kind::Function;
        if (operation_ == "size") {
            sizes_.push_back(name);
            note(parameter, Role::Id);
        } else if (has(table_.keys(), name) && (calls || is_kept_pointer(parameter.type))) {
            keys_[name] = fmt::format("rules::{}({})", calls ? "callback" : "key", name);
            note(parameter, calls ? Role::Callback : Role::UserData);
        } else if (operation_ != "traverse" && writes(operation_) && !has_records()
                   && (calls || is_kept_pointer(parameter.type))) {
            values_.push_back(fmt::format("rules::{}({})", calls ? "given_callback" : "given", name));
            note(parameter, calls ? Role::Callback : Role::UserData);
        } else if (calls) {
            callback_ = &parameter;
            note(parameter, Role::Callback);
        } else if (is_kept_pointer(parameter.type)) {
            user_data_ = &parameter;
            note(parameter, Role::UserData);
        } else if (table_.is_record(parameter) && !lists_) {
            if (record_) {
                return refuse("takes two records");
            }
            // What is cleared is all, whatever the record says.
            record_ = operation_ == "clear" ? nullptr : &parameter;
            note(parameter, operation_ == "clear"    ? Role::Id
                            : operation_ == "remove" ? Role::KeyRecord
                                                     : Role::Record);
        } else if (counted != counts_.end()) {
            results_.push_back(counted->second == "uses"
                                   ? fmt::format("rules::uses({})", name)
                                   : fmt::format("rules::records_of(\"{}\", {})", counted->second, name));
            note(parameter, Role::Id);
        } else if (lists_) {
            if (operation_ == "list" && last) {
                count_ = &parameter;
            } else {
                columns_.push_back(name);
            }
            note(parameter, Role::Id);
        } else if ((operation_ == "create" || operation_ == "search" || operation_ == "number")
                   && resolved(target)->kind == Type::Kind::Builtin) {
            id_ = &parameter;
            note(parameter, Role::Id);
        } else if (resolved(target)->kind != Type::Kind::Pointer && !has_records()) {
            (reads() ? results_ : values_)
                .push_back(fmt::format("rules::{}({}, {})", reads() ? "result_at" : "given_at", name,
                                       size_of(parameter)));
            note(parameter, Role::Value);
        } else {
            return has_no_part(parameter);
        }
        return true;
    }

    void take_named(const Parameter &parameter)
    {
        const std::string &name = parameter.name;
        const auto range = allowed_.find(name);
        if (range != allowed_.end() && !is_sized_array(parameter.type)) {
            ranges_.push_back(fmt::format("rules::within({}, {})", name, bounds(range->second)));
        }
        if (has(table_.keys(), name) && !is_chosen(name) && all().empty()) {
            keys_[name] = key_argument(name, parameter);
            note(parameter, Role::Key);
        } else if (is_flags(name)) {
            flags_ = &parameter;
            if (has(words(table_.field("values")), name) && writes(operation_)) {
                values_.push_back(fmt::format("rules::given({})", name));
            }
            note(parameter, Role::Flags);
        } else {
            unnamed_.push_back(&parameter);
        }
    }

    void give(const Parameter &parameter)
    {
        values_.push_back(is_sized_array(parameter.type)
                              ? fmt::format("rules::given_at({}, {})", parameter.name, size_of(parameter))
                              : fmt::format("rules::given({})", parameter.name));
        note(parameter, Role::Value);
    }

    // Whether an array's number of elements, or the place for it, is named so.
    static bool is_named_as_count(const std::string &name)
    {
        constexpr const char *said[] = {"nstat", "max", "size", "count", "num"};
        return std::any_of(std::begin(said), std::end(said),
                           [&](const char *word) { return name.find(word) != std::string::npos; });
    }

    // The first key that no parameter has given yet; null if there is none.
    const std::string *free_key() const
    {
        // A record that is read, or whose key is said beside it, has no say.
        const bool record_says =
            record_ && (operation_ == "create" || operation_ == "add" || operation_ == "set");
        const auto found =
            std::find_if(table_.keys().begin(), table_.keys().end(), [&](const std::string &key) {
                return key != "#" && keys_.count(key) == 0 && !is_chosen(key)
                       && !(record_says && is_member(key));
            });
        return found != table_.keys().end() ? &*found : nullptr;
    }

    // Whether it says which records are meant, by a member that is no key.
    bool chooses_records(const std::string &name) const
    {
        return takes_first_keys(operation_) && is_member(name)
               && (!has(table_.keys(), name) || !all().empty());
    }

    bool take_key(const std::string &key, const Parameter &parameter)
    {
        if (is_member(key) && !is_sized_array(parameter.type) && !same(table_.member(key), parameter.type)) {
            return refuse("'" + parameter.name + "' is no key of " + table_.name());
        }
        keys_[key] = key_argument(key, parameter);
        note(parameter, Role::Key);
        return true;
    }

    bool take_number(const Parameter &parameter)
    {
        const std::string &name = parameter.name;
        if (lists_ && is_named_as_count(name)) {
            number_ = &parameter;
            note(parameter, Role::Id);
            return true;
        }
        if (chooses_records(name)) {
            ranges_.push_back(fmt::format("rules::matching(offsetof({}, {}), {}{})", table_.record(), name,
                                          name, all().empty() ? "" : ", " + all()));
            note(parameter, Role::Id);
            return true;
        }
        const bool is_value_alone = !has_records() && (operation_ == "search" || operation_ == "number");
        const std::string *key = is_value_alone ? nullptr : free_key();
        if (key != nullptr) {
            return take_key(*key, parameter);
        }
        if (is_value_alone || (!has_records() && writes(operation_))) {
            give(parameter);
            return true;
        }
        if (!has_records() && is_sized_array(parameter.type) && reads()) {
            results_.push_back(fmt::format("rules::result_at({}, {})", name, size_of(parameter)));
            note(parameter, Role::Value);
            return true;
        }
        return has_no_part(parameter);
    }

    // Of a function of "each", what follows in its name is a key; its getter gets just what it takes, and the other
    // way round.
    bool name_what_follows()
    {
        const std::string each = table_.field("each");
        if (each.empty() || has(words(table_.field("clear")), function_.name)) {
            return true;
        }
        const bool is_getter = ends_with(function_.name, "_get");
        const std::string setter =
            is_getter ? function_.name.substr(0, function_.name.size() - 4) : function_.name;
        const std::string which = setter.substr(each.size()), other = is_getter ? setter : setter + "_get";
        const std::string named = table_.field("named");
        keys_[each] = named.empty() ? fmt::format("rules::key_at(\"{}\", {})", which, which.size())
                                    : fmt::format("rules::key({}{})", named, which);
        const std::vector<Function> &functions = table_.family().sdk_functions;
        const auto found = std::find_if(functions.begin(), functions.end(),
                                        [&](const Function &any) { return any.name == other; });
        return (found != functions.end()
                && (is_getter ? is_mirrored(*found, function_) : is_mirrored(function_, *found)))
               || refuse(other + " does not mirror it");
    }

    bool is_mirrored(const Function &setter, const Function &getter) const
    {
        auto mirrors = [&](const Parameter &given, const Parameter &read) {
            const TypePtr target = pointee(read.type);
            return !names_an_array(given.name) && !names_an_array(read.name)
                   && ((target && same(target, given.type)
                        && (is_copied(given.type) || is_sized_array(given.type)))
                       || (is_record_pointer(given.type) && same(read.type, given.type))
                       || (has(table_.keys(), given.name) && same(given.type, read.type)));
        };
        return setter.parameters.size() == getter.parameters.size()
               && std::equal(setter.parameters.begin() + 1, setter.parameters.end(),
                             getter.parameters.begin() + 1, mirrors);
    }

    // The keys that are said, which are the first ones.
    std::optional<Texts> key_arguments()
    {
        Texts keys = table_.keys(), arguments;
        if (!table_.field("each").empty()) {
            keys.push_back(table_.field("each"));
        }
        bool complete = true;
        for (const std::string &key : keys) {
            const auto given = keys_.find(key);
            const bool in_record = record_ && is_member(key) && operation_ != "search";
            if (is_chosen(key)) {
                continue;
            }
            if (given == keys_.end() && !in_record) {
                complete = false;
            } else if (!complete) {
                refuse("takes other keys than the first ones of " + table_.name());
                return std::nullopt;
            } else {
                arguments.push_back(given != keys_.end() ? given->second
                                                         : fmt::format("rules::member({}, &{}::{})",
                                                                       record_->name, table_.record(), key));
            }
        }
        if (!complete && operation_ != "search" && !takes_first_keys(operation_)) {
            refuse("does not take all keys of " + table_.name());
            return std::nullopt;
        }
        return arguments;
    }

    bool gives_its_id()
    {
        const bool in_record = operation_ == "create" && record_ && is_member(table_.id());
        return (operation_ != "search" && operation_ != "create" && operation_ != "number") || id_
               || in_record || refuse("gives no id");
    }

    // The expression for whether the caller gave a flag; "-" and nothing stand for none.
    std::string chosen(const std::string &flag) const
    {
        if (flag.empty() || flag == "-") {
            return "false";
        }
        if (flags_) {
            return fmt::format("({} & {}) != 0", flags_->name, flag);
        }
        for (const char *member : {"flags", "l3a_flags"}) {
            if (record_ && is_member(member)) {
                return fmt::format("{0} != nullptr && ({0}->{1} & {2}) != 0", record_->name, member, flag);
            }
        }
        return "false";
    }

    std::string id_in_record() const
    {
        return fmt::format("{0} != nullptr ? &{0}->{1} : nullptr", record_->name, table_.id());
    }

    std::string id_argument() const
    {
        const Texts flags = words(table_.field("with"));
        return fmt::format("{{{}, {}, {}}}", id_ ? id_->name : id_in_record(),
                           chosen(flags.empty() ? "" : flags[0]), chosen(flags.size() < 2 ? "" : flags[1]));
    }

    std::optional<Rule> put_together(Texts arguments)
    {
        if (record_ && (reads() || writes(operation_) || operation_ == "search")) {
            arguments.push_back(fmt::format("rules::{0}({1}, sizeof *{1})",
                                            reads() ? "result_at" : "given_at", record_->name));
        }
        for (const Texts *more : {&values_, &results_, &ranges_}) {
            arguments.insert(arguments.end(), more->begin(), more->end());
        }
        std::string called = operation_, more;
        if (operation_ == "number") {
            // What other functions number is something else.
            arguments.push_back(fmt::format("rules::given_at(\"{0}\", sizeof \"{0}\")", function_.name));
            more = ", " + id_argument();
        } else if (operation_ == "size") {
            more = fmt::format(", {}", fmt::join(sizes_, ", "));
        } else if (operation_ == "create") {
            more = ", " + id_argument();
        } else if (operation_ == "search") {
            more = fmt::format(", {}, {}", id_->name,
                               record_ && is_member(table_.id()) ? id_in_record() : "nullptr");
        } else if (operation_ == "add" && !table_.field("replace").empty()) {
            more = ", " + chosen(table_.field("replace"));
        } else if (lists_) {
            const bool list = operation_ == "list";
            if (!number_ || columns_.empty() || (list && !count_)) {
                refuse("does not say how many elements its arrays have");
                return std::nullopt;
            }
            more = fmt::format(", {}, {{{}}}", number_->name, fmt::join(columns_, ", "));
            if (operation_ != "get_each") {
                more += fmt::format(", {}", list ? count_->name : has(table_.keys(), "#") ? "true" : "false");
            }
        } else if (operation_ == "traverse") {
            if (!callback_ || !user_data_) {
                refuse("takes no callback with its data");
                return std::nullopt;
            }
            called += fmt::format("<{}>", visited(*callback_));
            const bool keys_alone =
                !has_records() && pointee(callback_->type)->parameters.size() == table_.keys().size() + 2;
            more = fmt::format(", {}, {}{}", callback_->name, user_data_->name, keys_alone ? ", true" : "");
        }
        rule_.operation = "object " + operation_;
        rule_.table = table_.name();
        rule_.unit = function_.parameters.front().name;
        rule_.table_text = table_.text();
        const std::string keeper = table_.field("kept_by");
        rule_.is_kept_by_room = !keeper.empty();
        rule_.call = keeper.empty()
                         ? fmt::format("rules::{}({}, {}, {{{}}}{})", called, table_constant(table_.name()),
                                       rule_.unit, fmt::join(arguments, ", "), more)
                         : fmt::format("sim::{}_{}({}, {{{}}}{})", called, keeper, rule_.unit,
                                       fmt::join(arguments, ", "), more);
        return rule_;
    }

    const TableDescription &table_;
    const std::string &operation_;
    const Function &function_;
    const std::map<std::string, std::string> &checks_;
    const bool lists_;
    std::map<std::string, std::string> counts_, allowed_;  // by parameter or member, what the entry says
    // The parts that parameters have.
    std::map<std::string, std::string> keys_;  // by key, the argument that says it
    Texts values_, results_, ranges_, columns_, sizes_;
    const Parameter *record_ = nullptr, *flags_ = nullptr, *id_ = nullptr, *callback_ = nullptr,
                    *user_data_ = nullptr, *number_ = nullptr, *count_ = nullptr;
    std::vector<const Parameter *> unnamed_;  // numbers that are no keys by their names
    Rule rule_;
    std::string refusal_;
};

bool is_unit(const Function &function)
{
    return spell(function.result) == "int" && !function.parameters.empty()
           && spell(function.parameters.front().type) == "int"
           && (function.parameters.front().name == "unit" || function.parameters.front().name == "arg1");
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
            const TableDescription table(model, *family, name, entry);
            table.check(errors);
            found.texts[name] = table.text();
            for (const std::string &word : words(table.field("ranges"))) {
                const auto [parameter, range] = divided(word);
                found.ranges[name][parameter] = bounds(range);
            }
            bool any = !table.serves();
            for (const Function &function : family->sdk_functions) {
                const std::string operation = table.serves() ? table.operation_of(function) : "";
                if (operation.empty() || !is_unit(function) || unserved.count(function.name) != 0) {
                    continue;
                }
                RuleFinder finder(table, operation, function, checks, model);
                if (const auto rule = finder.rule()) {
                    any = true;
                    const std::string what = operation + " in the table " + name;
                    found.answers[function.name] = {
                        AnswerKind::ByRule, rule->is_kept_by_room ? "kept for packets: " + what : what,
                        *rule};
                } else {
                    found.refusals[function.name] = finder.refusal();
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
