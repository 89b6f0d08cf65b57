#include "emit.h"
#include "output.h"
#include "spelling.h"

namespace generator {

namespace {

std::string parameter_list(const Function &function)
{
    std::string text;
    for (const Parameter &parameter : function.parameters) {
        text += (text.empty() ? "" : ", ") + declare(parameter.type, parameter.name);
    }
    return text.empty() ? "void" : text;
}

std::string prototype(const Function &function, const std::string &prefix)
{
    return declare(function.result, prefix + function.name + "(" + parameter_list(function) + ")");
}

std::string logged(const Parameter &parameter)
{
    TypePtr type = resolve_array_typedef(parameter.type);
    if (type->kind == Type::Kind::Array && !type->extent.empty()) {
        return "{" + parameter.name + ", sizeof(" + declare(type, "") + ")}";
    }
    return "call_log::value(" + parameter.name + ")";
}

// What a function answers that ran out of memory.
std::string out_of_memory(const Function &function)
{
    TypePtr result = function.result;
    if (spell(result) == "cmd_result_t") {
        return " return CMD_FAIL; ";
    }
    while (result->kind == Type::Kind::Typedef) {
        result = result->target;
    }
    const std::string type = spell(result);
    return type == "void" ? "" : type == "int" ? " return BCM_E_MEMORY; " : " return {}; ";
}

std::string forwarder(const Function &function)
{
    std::string names, logged_arguments;
    for (const Parameter &parameter : function.parameters) {
        std::string comma = names.empty() ? "" : ", ";
        names += comma + parameter.name;
        logged_arguments += comma + logged(parameter);
    }
    std::string keyword = spell(function.result) == "void" ? "" : "return ";
    return "__attribute__((visibility(\"default\"))) " + prototype(function, "")
           + "\ntry {\n    if (call_log::on)\n        call_log::write(\"" + function.name + "\", {"
           + logged_arguments + "});\n    " + keyword + "sim_" + function.name + "(" + names
           + ");\n} catch (const std::bad_alloc &) {" + out_of_memory(function) + "}\n";
}

// What a function answers that nobody has written by hand.
std::string by_rule(const Function &function, const Rule &rule)
{
    std::string arguments;
    for (const RuleArgument &argument : rule.arguments) {
        arguments += (arguments.empty() ? "" : ", ") + argument.text;
    }
    return "__attribute__((weak)) " + prototype(function, "sim_") + "\n{\n    return rules::" + rule.operation
           + "(\"" + rule.table + "\", " + rule.unit + ", {" + arguments + "}" + rule.more + ");\n}\n\n";
}

// Whether it is "void T_init(T *record)".
bool is_initialiser(const Function &function)
{
    if (spell(function.result) != "void" || function.parameters.size() != 1) {
        return false;
    }
    const TypePtr &type = function.parameters.front().type;
    return type->kind == Type::Kind::Pointer && function.name == spell(type->target) + "_init";
}

std::string initialiser(const Function &function)
{
    const std::string &record = function.parameters.front().name;
    return "__attribute__((weak)) " + prototype(function, "sim_") + "\n{\n    if (" + record
           + " != nullptr)\n        std::memset(" + record + ", 0, sizeof *" + record + ");\n}\n\n";
}

// What a function answers that nobody has implemented.
std::string fallback(const Function &function)
{
    TypePtr result = function.result;
    while (result->kind == Type::Kind::Typedef) {
        result = result->target;
    }
    std::string body;
    if (result->kind == Type::Kind::Pointer) {
        body = " return nullptr; ";
    } else if (spell(result) == "int") {
        body = " return BCM_E_UNAVAIL; ";
    } else if (spell(result) != "void") {
        body = " return {}; ";
    }
    std::string unnamed;
    for (const Parameter &parameter : function.parameters) {
        unnamed += (unnamed.empty() ? "" : ", ") + spell(parameter.type);
    }
    return "__attribute__((weak)) "
           + declare(function.result,
                     "sim_" + function.name + "(" + (unnamed.empty() ? "void" : unnamed) + ")")
           + " {" + body + "}\n\n";
}

// "key", "value", "key,value" for a record some members of which are keys, or "other".
std::string role_of(const Parameter &parameter, const Rule &rule)
{
    bool is_key = false, is_value = false;
    for (const RuleArgument &argument : rule.arguments) {
        if (argument.parameter == parameter.name) {
            (argument.is_key ? is_key : is_value) = true;
        }
    }
    return is_key ? is_value ? "key,value" : "key" : is_value ? "value" : "other";
}

std::string enumerator_table(const std::string &tag, const std::vector<std::string> &enumerators)
{
    std::string rows;
    for (const std::string &name : enumerators) {
        rows += "    {\"" + name + "\", " + name + "},\n";
    }
    return "static const sim::Enumerator table_of_" + tag + "[] = {\n" + rows
           + "};\nconst sim::Enumerators sim::names_of_" + tag + " = {std::begin(table_of_" + tag
           + "), std::end(table_of_" + tag + ")};\n\n";
}

}  // namespace

std::string emit_simulator_header(const Family &family)
{
    const std::string subject =
        "By which functions the simulated switch answers the family '" + family.name + "'.";
    std::string text = banner(subject, "interface/" + family.name + ".toml and the headers that it names");
    text += "#pragma once\n\n";
    if (!family.named_enumerations.empty()) {
        text += "#include \"enumerators.h\"\n\n";
    }
    if (!family.sdk_functions.empty()) {
        text += includes(family.headers, {}) + "\nextern \"C\" {\n\n";
        for (const Function &function : family.sdk_functions) {
            text += prototype(function, "sim_") + ";\n";
        }
        text += "\n}\n";
    }
    if (!family.named_enumerations.empty()) {
        text += "\nnamespace sim {\n\n";
        for (const auto &entry : family.named_enumerations) {
            text += "extern const Enumerators names_of_" + entry.first + ";\n";
        }
        text += "\n}\n";
    }
    return text;
}

std::string emit_sdk_calls(const Family &family, const Rules &rules)
{
    const std::string subject = "Public functions of the family '" + family.name
                                + "': log the call, ask the simulator, let no memory failure out.";
    std::string text = banner(subject, "interface/" + family.name + ".toml and the headers that it names");
    text += "#include \"sim_" + family.name + ".h\"\n\n#include \"call_log.h\"\n#include \"rules.h\"\n\n"
            "#include <bcm/error.h>\n\n#include <cstring>\n#include <iterator>\n#include <new>\n\nextern \"C\" {\n\n";
    for (const Function &function : family.sdk_functions) {
        auto rule = rules.find(function.name);
        text += forwarder(function);
        text += rule != rules.end()        ? by_rule(function, rule->second)
                : is_initialiser(function) ? initialiser(function)
                                           : fallback(function);
    }
    text += "}\n\n";
    for (const auto &[tag, enumerators] : family.named_enumerations) {
        text += enumerator_table(tag, enumerators);
    }
    return text;
}

std::string emit_rules(const Model &model, const Rules &rules)
{
    auto transparent = [](const std::string &) { return false; };
    std::string text;
    for (const Family &family : model.families) {
        for (const Function &function : family.sdk_functions) {
            auto found = rules.find(function.name);
            if (found == rules.end()) {
                continue;
            }
            const std::string &operation = found->second.operation;
            text += function.name + "\t" + operation.substr(0, operation.find('<'));
            text += "\t" + found->second.table;
            for (std::size_t i = 1; i < function.parameters.size(); ++i) {
                const Parameter &parameter = function.parameters[i];
                text += "\t" + role_of(parameter, found->second) + "\t"
                        + declare(Type::without_const(resolve(parameter.type, transparent)), "");
            }
            text += "\n";
        }
    }
    return text;
}

}  // namespace generator
