#include "rules.h"

#include "argument_type.h"
#include "errors.h"
#include "reasons.h"
#include "spelling.h"
#include "table_rules.h"
#include "words.h"

#include <algorithm>
#include <optional>
#include <set>

namespace generator {

namespace {

using Roles = std::vector<Role>;
using Parameters = std::vector<Parameter>;

bool is_key(Role role)
{
    return role == Role::Key || role == Role::KeyArray || role == Role::KeyRecord;
}

bool has(const Roles &roles, Role role)
{
    return std::find(roles.begin(), roles.end(), role) != roles.end();
}

bool is_keyed(const Roles &roles)
{
    return std::any_of(roles.begin(), roles.end(), is_key);
}

// How many there are if there is none.
std::size_t first_record(const Roles &roles)
{
    auto is_record = [](Role role) { return role == Role::Record || role == Role::KeyRecord; };
    return std::size_t(std::find_if(roles.begin(), roles.end(), is_record) - roles.begin());
}

// What was looked for, or why there is none.
template <class T>
struct Outcome {
    T found;
    std::string refusal = {};

    explicit operator bool() const { return refusal.empty(); }
};

// What records are found by, as their getter takes it.
struct Keys {
    Parameters parameters;
    Roles roles;
};

// How an object is made: create(unit, flags if it takes any, values, id of the object).
struct Creation {
    const Function *creator = nullptr;
    Parameters values;
    Roles roles;         // of the creator's parameters after the unit
    Parameters written;  // as a setter would take them: unit, id, values
};

// What the name of a function of a table ends with. Those for the narrow counters have rules of their own.
struct Suffix {
    const char *text;
    bool narrow = false;
};

constexpr Suffix suffixes[] = {
    {"_delete_all"}, {"_destroy_all"}, {"_sync_get"}, {"_sync_get32", true}, {"_set"},    {"_set32", true},
    {"_get"},        {"_get32", true}, {"_add"},      {"_create"},           {"_delete"}, {"_destroy"},
    {"_traverse"},   {"_find"},
};

bool gives_status(const Function &function)
{
    return spell(function.result) == "int";
}

bool takes_unit(const Function &function)
{
    if (function.parameters.empty()) {
        return false;
    }
    const Parameter &first = function.parameters.front();
    return spell(first.type) == "int" && (first.name == "unit" || first.name == "arg1");
}

bool is_initialiser(const Function &function)
{
    if (spell(function.result) != "void" || function.parameters.size() != 1) {
        return false;
    }
    const TypePtr &type = function.parameters.front().type;
    return type->kind == Type::Kind::Pointer && function.name == spell(type->target) + "_init";
}

bool same_types(const Parameters &a, const Parameters &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Parameter &x, const Parameter &y) { return same(x.type, y.type); });
}

// Whether the parameters after the unit are the first of the keys.
bool takes_first(const Function &function, const Parameters &keys)
{
    const Parameters given(function.parameters.begin() + 1, function.parameters.end());
    return given.size() <= keys.size()
           && same_types(given, {keys.begin(), keys.begin() + long(given.size())});
}

// Whether the parameters after the unit are named as the members are.
bool takes_members(const Function &function, const std::vector<std::string> &members)
{
    auto names = [](const Parameter &parameter, const std::string &member) {
        return parameter.name == member && is_plain(parameter.type);
    };
    const Parameters &parameters = function.parameters;
    return std::equal(parameters.begin() + 1, parameters.end(), members.begin(), members.end(), names);
}

// Whether a callback that takes the one can be handed what is kept of the other.
bool is_passed_as(const TypePtr &written, const TypePtr &taken)
{
    return same(written, taken)
           || (is_sized_array(written) && pointee(taken) && same(resolved(written)->target, pointee(taken)));
}

// What a parameter is that writer and getter have in the same place, if the getter mirrors the writer there.
std::optional<Role> role_of(const TypePtr &given, const TypePtr &got, bool mirrored)
{
    const bool in_both = same(given, got);
    if (in_both && is_plain(given)) {
        return Role::Key;
    }
    if (in_both && is_sized_array(given)) {
        return mirrored ? Role::Value : Role::KeyArray;
    }
    if (in_both && is_record_pointer(given)) {
        return mirrored ? Role::Record : Role::KeyRecord;
    }
    if (pointee(got) && same(pointee(got), given) && (is_copied(given) || is_sized_array(given))) {
        return Role::Value;
    }
    return std::nullopt;
}

// Of what writer and getter take in the same way, the last is the value if there is no other.
void choose_value(Roles &roles)
{
    auto may_be = [](Role role) { return role == Role::KeyArray || role == Role::KeyRecord; };
    auto last = std::find_if(roles.rbegin(), roles.rend(), may_be);
    if (!has(roles, Role::Value) && last != roles.rend()) {
        *last = *last == Role::KeyArray ? Role::Value : Role::Record;
    }
}

class Finder {
public:
    explicit Finder(const Model &model)
        : model_(model),
          tables_(find_table_answers(model)),
          unavailable_(model, &FamilyInterface::unavailable, "unavailable"),
          unmet_(model, &FamilyInterface::unmet, "kept")
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
                declared_[function.name] = &function;
                if (gives_status(function) && takes_unit(function) && unserved_.count(function.name) == 0) {
                    functions_[function.name] = &function;
                }
            }
        }
    }

    Answers find()
    {
        for (auto &[name, answer] : tables_.answers) {
            functions_.erase(name);
            answers_[name] = answer;
        }
        for (const auto &[name, function] : functions_) {
            for (const std::string &suffix : {std::string("_get"), std::string("_get32")}) {
                if (ends_with(name, suffix)) {
                    serve(name.substr(0, name.size() - suffix.size()), *function, suffix == "_get32");
                }
            }
        }
        answer_others();
        tell_what_is_unmet();
        check_entries();
        return std::move(answers_);
    }

private:
    struct WordEntry {
        std::string place;
        std::vector<std::string> words;
    };

    // What no rule answers.
    void answer_others()
    {
        for (const Family &family : model_.families) {
            for (const Function &function : family.sdk_functions) {
                if (answers_.count(function.name) != 0) {
                    continue;
                }
                const bool cleared = is_initialiser(function);
                const std::string *reason = cleared ? nullptr : unavailable_.of(family, function);
                answers_[function.name] = cleared
                                              ? Answer{AnswerKind::Initialised, "is named as its record", {}}
                                          : reason ? Answer{AnswerKind::Unavailable, *reason, {}}
                                                   : Answer{AnswerKind::Unfit, why_unfit(function), {}};
            }
        }
    }

    // Of functions written by hand, too, which look here as if nothing answered them.
    void tell_what_is_unmet()
    {
        for (const Family &family : model_.families) {
            for (const Function &function : family.sdk_functions) {
                Answer &answer = answers_.at(function.name);
                const bool may_keep = answer.kind == AnswerKind::ByRule || answer.kind == AnswerKind::Unfit;
                const std::string *reason = may_keep ? unmet_.of(family, function) : nullptr;
                if (reason != nullptr) {
                    answer.why = "kept, met by no packet: " + *reason;
                }
            }
        }
    }

    const Function *named(const std::string &name) const
    {
        auto found = functions_.find(name);
        return found == functions_.end() ? nullptr : found->second;
    }

    bool is_declared(const std::string &name) const { return declared_.count(name) != 0; }

    // Finds the functions that share a table. Where one that enters or removes what the others see cannot be
    // served, none is.
    void serve(const std::string &table, const Function &getter, bool narrow)
    {
        const bool created = is_declared(table + "_create"), added = is_declared(table + "_add");
        const std::string setter_name = table + (narrow ? "_set32" : "_set");
        const Function *setter = named(setter_name), *adder = named(table + "_add");
        std::string refusal;
        if (added && (created || is_declared(setter_name))) {
            refusal = "records of " + table + " are entered in several ways";
        } else if (created) {
            refusal = serve_created(table, getter, setter);
        } else if (setter) {
            refusal = serve_pair(table, *setter, "set", getter);
        } else if (adder && !narrow) {
            refusal = serve_pair(table, *adder, "add", getter);
        } else {
            refusal = is_declared(setter_name) || added ? "what enters it is not served"
                                                        : "nothing enters what " + getter.name + " gets";
        }
        refusals_[{table, narrow}] = refusal;
    }

    // Says why not, or nothing.
    std::string serve_pair(const std::string &table, const Function &writer, const std::string &writing,
                           const Function &getter)
    {
        const Outcome<Roles> roles = match(table, writer.parameters, getter.parameters);
        if (!roles) {
            return roles.refusal;
        }
        const Outcome<Answers> erasers = find_erasers(table, getter, roles.found);
        if (!erasers) {
            return erasers.refusal;
        }
        auto removes = [](const auto &entry) { return entry.second.rule.operation == "remove"; };
        const bool removable = std::any_of(erasers.found.begin(), erasers.found.end(), removes);
        // What can be entered once only must be removable, perhaps by a function that no rule fits.
        if (writing == "add" && !removable) {
            return "nothing removes what " + writer.name + " enters";
        }
        const std::string reading = removable || !members(table).empty() ? "find" : "get";
        const std::string mirrors = "mirrors " + writer.name;
        add(writer, made(writing, table, writer, roles.found), getter.name + " mirrors it");
        add(getter, made(reading, table, getter, roles.found), mirrors);
        answers_.insert(erasers.found.begin(), erasers.found.end());
        add_traversal(table, writer.name, writer.parameters, roles.found);
        // Counters are read as collected last, or collected first: here both are one.
        const Function *reader = named(table + "_sync" + getter.name.substr(table.size()));
        if (reader) {
            const Outcome<Roles> read = match(table, writer.parameters, reader->parameters);
            if (read && read.found == roles.found) {
                add(*reader, made(reading, table, *reader, roles.found), mirrors);
            }
        }
        return "";
    }

    // Objects that `create` gives an id, which the others take; says why not, or nothing.
    std::string serve_created(const std::string &table, const Function &getter, const Function *setter)
    {
        const Outcome<Creation> creation = find_creation(table, getter);
        if (!creation) {
            return creation.refusal;
        }
        const Function &creator = *creation.found.creator;
        const Outcome<Roles> roles = match_created(table, creation.found, getter, setter);
        if (!roles) {
            return roles.refusal;
        }
        const Outcome<Answers> erasers = find_erasers(table, getter, roles.found);
        if (!erasers) {
            return erasers.refusal;
        }
        Rule rule = made("create", table, creator, creation.found.roles);
        rule.flags = created_with_.at(table).words;
        add(creator, rule, "gives the id that " + getter.name + " takes");
        if (setter) {
            add(*setter, made("modify", table, *setter, roles.found), getter.name + " mirrors it");
        }
        add(getter, made("find", table, getter, roles.found),
            "mirrors " + (setter ? setter->name : creator.name));
        answers_.insert(erasers.found.begin(), erasers.found.end());
        add_traversal(table, creator.name, setter ? setter->parameters : creation.found.written, roles.found);
        add_search(table, creation.found);
        return "";
    }

    Outcome<Creation> find_creation(const std::string &table, const Function &getter) const
    {
        const Function *creator = named(table + "_create");
        if (!creator) {
            return {{}, "what creates it is not served"};
        }
        if (created_with_.count(table) == 0) {
            return {{}, "how an id is chosen is not told (created_with)"};
        }
        if (!gives_id(*creator, getter)) {
            return {{}, creator->name + " gives no number that " + getter.name + " takes first"};
        }
        Creation creation;
        creation.creator = creator;
        const bool takes_flags = creator->parameters[1].name == "flags";
        creation.values.assign(creator->parameters.begin() + (takes_flags ? 2 : 1),
                               creator->parameters.end() - 1);
        creation.roles.assign(takes_flags ? 1 : 0, Role::Flags);
        creation.roles.insert(creation.roles.end(), creation.values.size(), Role::Value);
        creation.roles.push_back(Role::Id);
        creation.written = {creator->parameters.front(), getter.parameters[1]};
        creation.written.insert(creation.written.end(), creation.values.begin(), creation.values.end());
        return {creation};
    }

    // What the getter's parameters are: those of the setter, which then has to take the values that the creator takes.
    Outcome<Roles> match_created(const std::string &table, const Creation &creation, const Function &getter,
                                 const Function *setter) const
    {
        Outcome<Roles> roles = match(table, creation.written, getter.parameters);
        if (setter) {
            const Outcome<Roles> by_setter = match(table, setter->parameters, getter.parameters);
            if (!creation.values.empty()
                && (bool(by_setter) != bool(roles) || by_setter.found != roles.found)) {
                return {{}, creation.creator->name + " takes other values than " + setter->name};
            }
            roles = by_setter;
        }
        if (roles && std::count_if(roles.found.begin(), roles.found.end(), is_key) != 1) {
            return {{}, "its objects have other keys than an id"};
        }
        return roles;
    }

    // `find` is given values and gives the id of the object that has them.
    void add_search(const std::string &table, const Creation &creation)
    {
        const Function &creator = *creation.creator;
        const Function *finder = named(table + "_find");
        Parameters sought = {creator.parameters.front()};
        sought.insert(sought.end(), creation.values.begin(), creation.values.end());
        sought.push_back(creator.parameters.back());
        if (!finder || creation.values.empty() || !same_types(finder->parameters, sought)) {
            return;
        }
        Roles seeking(creation.values.size(), Role::Value);
        seeking.push_back(Role::Id);
        add(*finder, made("search", table, *finder, seeking),
            "takes what " + creator.name + " takes and gives its id");
    }

    // Whether the last argument of the creator points to a number of the type that the getter takes first.
    static bool gives_id(const Function &creator, const Function &getter)
    {
        if (creator.parameters.size() < 2 || getter.parameters.size() < 2) {
            return false;
        }
        const TypePtr &key = getter.parameters[1].type;
        const TypePtr id = pointee(creator.parameters.back().type);
        return id && same(id, key) && resolved(key)->kind == Type::Kind::Builtin;
    }

    // What the parameters after the unit are, if getter mirrors writer and it is known which object is meant.
    Outcome<Roles> match(const std::string &table, const Parameters &writer, const Parameters &getter) const
    {
        if (writer.size() != getter.size()) {
            return {{}, "its getter has another number of parameters"};
        }
        Roles roles;
        for (std::size_t i = 1; i < writer.size(); ++i) {
            if (names_an_array(writer[i].name) || names_an_array(getter[i].name)) {
                return {{}, "'" + getter[i].name + "' is of as many objects as another argument says"};
            }
            const auto role = role_of(writer[i].type, getter[i].type, has(roles, Role::Value));
            if (!role) {
                return {{}, "'" + getter[i].name + "' of its getter mirrors nothing"};
            }
            roles.push_back(*role);
        }
        choose_value(roles);
        if (!has(roles, Role::Value) && !has(roles, Role::Record)) {
            return {{}, "its getter gets no value"};
        }
        const Role unclear = is_keyed(roles) ? Role::KeyRecord : Role::Record;
        if (identified_by_.count(table) == 0 && has(roles, unclear)) {
            return {{}, "which members of its record are keys is not told (identified_by)"};
        }
        return {roles};
    }

    // What removes records, unless something that no rule fits removes them too.
    Outcome<Answers> find_erasers(const std::string &table, const Function &getter, const Roles &roles) const
    {
        const Keys keys = keys_of(table, getter, roles);
        Answers erasers;
        for (const std::string &name : {table + "_delete", table + "_destroy"}) {
            if (!is_declared(name)) {
                continue;
            }
            const Function *eraser = named(name);
            if (eraser && eraser->parameters.size() == keys.parameters.size() + 1
                && takes_first(*eraser, keys.parameters)) {
                erasers[name] = {AnswerKind::ByRule, "takes the keys that " + getter.name + " takes",
                                 made("remove", table, *eraser, keys.roles)};
            } else if (eraser && keys.roles == Roles{Role::KeyRecord}
                       && takes_members(*eraser, members(table))) {
                Rule rule =
                    made("remove", table, *eraser, Roles(eraser->parameters.size() - 1, Role::KeyMember));
                rule.record = resolved(pointee(keys.parameters.front().type))->name;
                erasers[name] = {AnswerKind::ByRule, "takes the key members of the record", rule};
            } else {
                return {{}, name + " takes other things than keys"};
            }
        }
        const bool by_number = !has(keys.roles, Role::KeyRecord);
        for (const std::string &name : {table + "_delete_all", table + "_destroy_all"}) {
            const Function *eraser = named(name);
            if (eraser && takes_first(*eraser, keys.parameters)
                && (by_number || eraser->parameters.size() == 1)) {
                erasers[name] = {AnswerKind::ByRule,
                                 "takes the first keys that " + getter.name + " takes, or none",
                                 made("clear", table, *eraser, keys.roles)};
            }
        }
        return {erasers};
    }

    Keys keys_of(const std::string &table, const Function &getter, const Roles &roles) const
    {
        Keys keys;
        for (std::size_t i = 0; i < roles.size(); ++i) {
            const bool has_members = i == first_record(roles) && !members(table).empty();
            if (is_key(roles[i]) || (roles[i] == Role::Record && has_members)) {
                keys.parameters.push_back(getter.parameters[i + 1]);
                keys.roles.push_back(roles[i] == Role::Record ? Role::KeyRecord : roles[i]);
            }
        }
        return keys;
    }

    // `traverse` hands a callback the parameters of the writer, or the record that keys and value are in.
    void add_traversal(const std::string &table, const std::string &writer, const Parameters &written,
                       const Roles &roles)
    {
        const Function *traverser = named(table + "_traverse");
        if (!traverser || traverser->parameters.size() != 3 || has(roles, Role::KeyRecord)
            || !std::is_partitioned(roles.begin(), roles.end(), is_key)) {
            return;
        }
        const Parameter &callback = traverser->parameters[1], &user_data = traverser->parameters[2];
        const TypePtr function = pointee(callback.type);
        if (!function || function->kind != Type::Kind::Function || !is_kept_pointer(user_data.type)) {
            return;
        }
        const std::vector<TypePtr> &taken = function->parameters;
        if (taken.size() != written.size() + 1 || !same(taken.front(), written.front().type)
            || !same(taken.back(), user_data.type)) {
            return;
        }
        Rule rule = made("traverse", table, *traverser, {Role::Callback, Role::UserData});
        for (std::size_t i = 1; i < written.size(); ++i) {
            if (!is_passed_as(written[i].type, taken[i])) {
                return;
            }
            rule.visited.push_back(written[i].type);
        }
        add(*traverser, rule, "its callback takes what " + writer + " takes");
    }

    // `roles` are those of the parameters after the unit; there may be more of them.
    Rule made(const std::string &operation, const std::string &table, const Function &function,
              const Roles &roles) const
    {
        Rule rule;
        rule.operation = operation;
        rule.table = table;
        rule.unit = function.parameters.front().name;
        for (std::size_t i = 1; i < function.parameters.size(); ++i) {
            RuleParameter parameter = {function.parameters[i], roles[i - 1]};
            parameter.range = range_of(model_, parameter.declared);
            const auto ranges = tables_.ranges.find(table);
            if (ranges != tables_.ranges.end() && is_plain(parameter.declared.type)) {
                const auto said = ranges->second.find(parameter.declared.name);
                parameter.range = said != ranges->second.end() ? said->second : parameter.range;
            }
            auto check = key_checks_.find(typedef_name(parameter.declared));
            if (check != key_checks_.end()) {
                parameter.check = check->second.words.front();
            }
            if (parameter.role == Role::KeyRecord
                || (parameter.role == Role::Record && i - 1 == first_record(roles))) {
                parameter.members = members(table);
            }
            rule.parameters.push_back(parameter);
        }
        return rule;
    }

    void add(const Function &function, const Rule &rule, const std::string &why)
    {
        for (const RuleParameter &parameter : rule.parameters) {
            if (parameter.role == Role::Key) {
                used_.insert(typedef_name(parameter.declared));
            }
        }
        used_.insert(rule.table);
        answers_[function.name] = {AnswerKind::ByRule, why, rule};
        const auto text = tables_.texts.find(rule.table);
        if (text != tables_.texts.end()) {
            answers_[function.name].rule.table_text = text->second;
        }
    }

    std::vector<std::string> members(const std::string &table) const
    {
        auto found = identified_by_.find(table);
        return found == identified_by_.end() ? std::vector<std::string>() : found->second.words;
    }

    static std::string typedef_name(const Parameter &parameter)
    {
        return parameter.type->kind == Type::Kind::Typedef ? parameter.type->name : "";
    }

    std::string why_unfit(const Function &function) const
    {
        if (unserved_.count(function.name) != 0) {
            return "unserved in the interface file";
        }
        const auto refusal_of_table = tables_.refusals.find(function.name);
        if (refusal_of_table != tables_.refusals.end()) {
            return refusal_of_table->second;
        }
        if (!gives_status(function)) {
            return "gives no status";
        }
        if (!takes_unit(function)) {
            return "takes no unit";
        }
        for (const Suffix &suffix : suffixes) {
            if (!ends_with(function.name, suffix.text)) {
                continue;
            }
            const std::string table =
                function.name.substr(0, function.name.size() - std::string(suffix.text).size());
            const std::string getter = table + (suffix.narrow ? "_get32" : "_get");
            const auto refusal = refusals_.find({table, suffix.narrow});
            if (refusal == refusals_.end()) {
                return is_declared(getter) ? getter + " is not served" : "there is no " + getter;
            }
            return refusal->second.empty() ? "does not go with what " + getter + " gets" : refusal->second;
        }
        return "its name tells no operation of a rule";
    }

    void check_entries() const
    {
        Errors errors;
        unavailable_.check(errors);
        unmet_.check(errors);
        for (const auto &[name, place] : unserved_) {
            if (!is_declared(name)) {
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

    const Model &model_;
    TableAnswers tables_;
    Reasons unavailable_, unmet_;
    std::map<std::string, std::string> unserved_;                    ///< function to place
    std::map<std::string, WordEntry> identified_by_, created_with_;  ///< by table
    std::map<std::string, WordEntry> key_checks_;                    ///< by typedef
    std::map<std::string, const Function *> declared_, functions_;   ///< all, and those that may be served
    std::set<std::string> used_;                                     ///< tables and typedefs
    std::map<std::pair<std::string, bool>, std::string>
        refusals_;  ///< by table and whether narrow; "" if served
    Answers answers_;
};

}  // namespace

std::string range_of(const Model &model, const Parameter &parameter)
{
    const Bounds *bounds = model.bounds_of(parameter.type);
    return bounds ? bounds->least + ", " + bounds->greatest : "";
}

Answers find_answers(const Model &model)
{
    return Finder(model).find();
}

}  // namespace generator
