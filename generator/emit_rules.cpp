#include "argument_type.h"
#include "emit.h"
#include "spelling.h"

#include <fmt/format.h>

#include <algorithm>

namespace generator {

namespace {

using Texts = std::vector<std::string>;

Texts keys(const RuleParameter &parameter, const std::string &record)
{
    const std::string &name = parameter.declared.name;
    switch (parameter.role) {
    case Role::Key:
        return {fmt::format("rules::{}({})", parameter.check.empty() ? "key" : parameter.check, name)};
    case Role::KeyArray:
        return {fmt::format("rules::key_at({}, {})", name, size_of(parameter.declared))};
    case Role::KeyMember:
        return {fmt::format("rules::key_as(&{}::{}, {})", record, name, name)};
    case Role::KeyRecord:
    case Role::Record: {
        Texts texts;
        for (const std::string &member : parameter.members) {
            texts.push_back(fmt::format("rules::member({}, &{}::{})", name,
                                        resolved(pointee(parameter.declared.type))->name, member));
        }
        return texts;
    }
    case Role::Value:
    case Role::Flags:
    case Role::Id:
    case Role::Callback:
    case Role::UserData:
        break;
    }
    return {};
}

bool is_value(const RuleParameter &parameter)
{
    return parameter.role == Role::Value || parameter.role == Role::Record;
}

std::string value(const Parameter &parameter, bool is_result)
{
    if (is_result) {
        return fmt::format("rules::result_at({}, {})", parameter.name, size_of(parameter));
    }
    return is_copied(parameter.type)
               ? fmt::format("rules::given({})", parameter.name)
               : fmt::format("rules::given_at({}, {})", parameter.name, size_of(parameter));
}

// Part of a record that a traversal visits.
std::string visited(const TypePtr &type)
{
    if (is_sized_array(type)) {
        return fmt::format("rules::At<{}>", spell_declared(type));
    }
    return is_record_pointer(type) ? fmt::format("rules::At<{}>", resolved(pointee(type))->name)
                                   : spell_declared(type);
}

// The id of an object, and whether a flag is given that says how it is chosen: with the flags of the call, or
// with those in its record.
std::string id(const Rule &rule, const std::string &name)
{
    auto is_flags = [](const RuleParameter &parameter) { return parameter.role == Role::Flags; };
    const bool takes_flags = std::any_of(rule.parameters.begin(), rule.parameters.end(), is_flags);
    const std::string &first = rule.parameters.front().declared.name;
    Texts texts = {name};
    for (const std::string &flag : rule.flags) {
        texts.push_back(takes_flags ? fmt::format("({} & {}) != 0", first, flag)
                                    : fmt::format("{0} && ({0}->flags & {1}) != 0", first, flag));
    }
    return fmt::format("{{{}}}", fmt::join(texts, ", "));
}

std::string role_name(const RuleParameter &parameter)
{
    const bool is_key = !keys(parameter, "").empty();
    return is_key ? is_value(parameter) ? "key,value" : "key" : is_value(parameter) ? "value" : "other";
}

}  // namespace

std::string table_constant(const std::string &table)
{
    return "table_of_" + table;
}

std::string emit_table(const std::string &table, const std::string &module, const TableText &text)
{
    return fmt::format("{}static constexpr rules::Table {}{{\"{}\", \"{}\"{}}};\n", text.references,
                       table_constant(table), table, module, text.arguments);
}

std::string size_of(const Parameter &parameter)
{
    return is_sized_array(parameter.type) ? fmt::format("sizeof({})", spell_declared(parameter.type))
                                          : fmt::format("sizeof *{}", parameter.name);
}

std::string emit_rule(const Rule &rule)
{
    if (!rule.call.empty()) {
        return rule.call;
    }
    const bool is_reading = rule.operation == "get" || rule.operation == "find";
    std::string operation = rule.operation, more;
    Texts arguments;
    for (const RuleParameter &parameter : rule.parameters) {
        for (const std::string &key : keys(parameter, rule.record)) {
            arguments.push_back(key);
        }
        if (!parameter.range.empty()) {
            arguments.push_back(
                fmt::format("rules::within({}, {})", parameter.declared.name, parameter.range));
        }
        if (is_value(parameter)) {
            arguments.push_back(value(parameter.declared, is_reading));
        } else if (parameter.role == Role::Id) {
            more += ", " + id(rule, parameter.declared.name);
        } else if (parameter.role == Role::Callback || parameter.role == Role::UserData) {
            more += ", " + parameter.declared.name;
        }
    }
    if (!rule.visited.empty()) {
        Texts types;
        std::transform(rule.visited.begin(), rule.visited.end(), std::back_inserter(types), visited);
        operation += fmt::format("<{}>", fmt::join(types, ", "));
    }
    return fmt::format("rules::{}({}, {}, {{{}}}{})", operation, table_constant(rule.table), rule.unit,
                       fmt::join(arguments, ", "), more);
}

std::string emit_rules(const Model &model, const Answers &answers)
{
    std::string text;
    for (const Family &family : model.families) {
        for (const Function &function : family.sdk_functions) {
            const Answer &answer = answers.at(function.name);
            const Rule &rule = answer.rule;
            const bool by_rule = answer.kind == AnswerKind::ByRule;
            Texts row = {function.name, family.name,
                         by_rule                                  ? rule.operation
                         : answer.kind == AnswerKind::Initialised ? "initialise"
                         : answer.kind == AnswerKind::Unavailable ? "unavailable"
                                                                  : "-",
                         rule.table.empty() ? "-" : rule.table, answer.why};
            for (const RuleParameter &parameter : rule.parameters) {
                row.push_back(role_name(parameter));
                const bool is_said = parameter.range != range_of(model, parameter.declared);
                row.push_back(declare(resolved(parameter.declared.type), "")
                              + (is_said ? " within " + parameter.range : ""));
            }
            text += fmt::format("{}\n", fmt::join(row, "\t"));
        }
    }
    return text;
}

}  // namespace generator
