#include "emit.h"
#include "output.h"
#include "spelling.h"

#include <fmt/format.h>

#include <cctype>

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
    std::vector<std::string> names, logged_arguments;
    for (const Parameter &parameter : function.parameters) {
        names.push_back(parameter.name);
        logged_arguments.push_back(logged(parameter));
    }
    return fmt::format(
        "__attribute__((visibility(\"default\"))) {prototype}\n"
        "try {{\n"
        "    if (call_log::on)\n"
        "        call_log::write(\"{name}\", {{{logged}}});\n"
        "    {keyword}sim_{name}({names});\n"
        "}} catch (const std::bad_alloc &) {{{out_of_memory}}}\n",
        fmt::arg("prototype", prototype(function, "")), fmt::arg("name", function.name),
        fmt::arg("logged", fmt::join(logged_arguments, ", ")),
        fmt::arg("keyword", spell(function.result) == "void" ? "" : "return "),
        fmt::arg("names", fmt::join(names, ", ")), fmt::arg("out_of_memory", out_of_memory(function)));
}

// Whether the name stands in the text as a word.
bool mentions(const std::string &text, const std::string &name)
{
    auto is_of_word = [&](std::size_t place) {
        return place < text.size()
               && (std::isalnum(static_cast<unsigned char>(text[place])) != 0 || text[place] == '_');
    };
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
        const bool is_member = at > 1 && text.compare(at - 2, 2, "::") == 0;
        if (!is_member && (at == 0 || !is_of_word(at - 1)) && !is_of_word(at + name.size())) {
            return true;
        }
    }
    return false;
}

// What a function answers that nobody has written by hand, in three kinds.
std::string by_rule(const Function &function, const Rule &rule)
{
    const std::string call = emit_rule(rule);
    // What the rule has no use for has no name.
    Function named = function;
    for (Parameter &parameter : named.parameters) {
        if (!mentions(call, parameter.name)) {
            parameter.name.clear();
        }
    }
    return fmt::format("__attribute__((weak)) {}\n{{\n    return {};\n}}\n\n", prototype(named, "sim_"),
                       call);
}

std::string initialiser(const Function &function)
{
    return fmt::format(
        "__attribute__((weak)) {}\n{{\n    if ({record} != nullptr)\n"
        "        std::memset({record}, 0, sizeof *{record});\n}}\n\n",
        prototype(function, "sim_"), fmt::arg("record", function.parameters.front().name));
}

std::string unavailable(const Function &function)
{
    TypePtr result = function.result;
    while (result->kind == Type::Kind::Typedef) {
        result = result->target;
    }
    std::string body = " return {}; ";
    if (result->kind == Type::Kind::Pointer) {
        body = " return nullptr; ";
    } else if (spell(result) == "int") {
        body = " return BCM_E_UNAVAIL; ";
    } else if (spell(result) == "void") {
        body = "";
    }
    std::vector<std::string> unnamed;
    for (const Parameter &parameter : function.parameters) {
        unnamed.push_back(spell(parameter.type));
    }
    const std::string taken = unnamed.empty() ? "void" : fmt::format("{}", fmt::join(unnamed, ", "));
    return fmt::format("__attribute__((weak)) {} {{{}}}\n\n",
                       declare(function.result, fmt::format("sim_{}({})", function.name, taken)), body);
}

std::string default_answer(const Function &function, const Answer &answer)
{
    switch (answer.kind) {
    case AnswerKind::ByRule:
        return by_rule(function, answer.rule);
    case AnswerKind::Initialised:
        return initialiser(function);
    case AnswerKind::Unavailable:
    case AnswerKind::Unfit:
        break;
    }
    return unavailable(function);
}

std::string enumerator_table(const std::string &tag, const std::vector<std::string> &enumerators)
{
    std::string rows;
    for (const std::string &name : enumerators) {
        rows += fmt::format("    {{\"{0}\", {0}}},\n", name);
    }
    return fmt::format(
        "static const sim::Enumerator table_of_{tag}[] = {{\n{rows}}};\n"
        "const sim::Enumerators sim::names_of_{tag} = "
        "{{std::begin(table_of_{tag}), std::end(table_of_{tag})}};\n\n",
        fmt::arg("tag", tag), fmt::arg("rows", rows));
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

std::string emit_sdk_calls(const Family &family, const Answers &answers)
{
    const std::string subject = "Public functions of the family '" + family.name
                                + "': log the call, ask the simulator, let no memory failure out.";
    std::string text = banner(subject, "interface/" + family.name + ".toml and the headers that it names");
    text += "#include \"sim_" + family.name + ".h\"\n\n#include \"call_log.h\"\n#include \"references.h\"\n"
            "#include \"rules.h\"\n\n#include <bcm/error.h>\n\n#include <cstddef>\n#include <cstring>\n"
            "#include <iterator>\n#include <new>\n\nextern \"C\" {\n\n";
    std::map<std::string, TableText> tables;
    for (const Function &function : family.sdk_functions) {
        const Rule &rule = answers.at(function.name).rule;
        if (!rule.table.empty() && !rule.is_kept_by_room) {
            tables[rule.table] = rule.table_text;
        }
    }
    for (const auto &[table, of_table] : tables) {
        text += emit_table(table, family.name, of_table);
    }
    for (const Function &function : family.sdk_functions) {
        text += forwarder(function) + default_answer(function, answers.at(function.name));
    }
    text += "}\n\n";
    for (const auto &[tag, enumerators] : family.named_enumerations) {
        text += enumerator_table(tag, enumerators);
    }
    return text;
}

}  // namespace generator
